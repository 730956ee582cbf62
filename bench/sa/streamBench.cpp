#include "support/bench.h"

#include "sa/record.pb.h"

#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "sa/containerStream.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "std/tVector.h"
#include "ucs/cString.h"

#include <boost/archive/binary_iarchive.hpp>
#include <boost/archive/binary_oarchive.hpp>
#include <boost/serialization/string.hpp>
#include <boost/serialization/vector.hpp>
#include <cereal/archives/binary.hpp>
#include <cereal/types/string.hpp>
#include <cereal/types/vector.hpp>
#include <msgpack.hpp>

#include <QtCore/QByteArray>
#include <QtCore/QCborStreamReader>
#include <QtCore/QCborStreamWriter>
#include <QtCore/QDataStream>
#include <QtCore/QIODevice>
#include <QtCore/QList>
#include <QtCore/QString>

#include <cstdint>
#include <cstring>
#include <sstream>
#include <string>
#include <vector>

// The record of all contenders: an int32, a uint64, a double, a bool, a string of 16 bytes, a text of 12 characters,
// 100 int32 and a nested record of three members. Encoding starts with an empty target, decoding ends with a new
// object.

namespace
{

struct cInner
{
  int a = 7;
  double b = 2.5;
  bool c = true;

  template <class Archive>
  void serialize(Archive& archive)
  {
    archive(a, b, c);
  }
  MSGPACK_DEFINE(a, b, c)
};

/// For the peers of the standard library.
struct cRecord
{
  std::int32_t number = -5;
  std::uint64_t big = 0x123456789ABCDEFull;
  double real = 3.25;
  bool flag = true;
  std::string ascii = "sixteen of them!";
  std::string text = "Zw\xc3\xb6lf Zeichen";
  std::vector<std::int32_t> numbers = std::vector<std::int32_t>(100, 100000);
  cInner inner;

  template <class Archive>
  void serialize(Archive& archive)
  {
    archive(number, big, real, flag, ascii, text, numbers, inner);
  }
  MSGPACK_DEFINE(number, big, real, flag, ascii, text, numbers, inner)
};

} // namespace

// Apart from the members, which another peer would take for its own.
namespace boost::serialization
{
template <class Archive>
void serialize(Archive& archive, cInner& inner, unsigned int)
{
  archive& inner.a& inner.b& inner.c;
}
template <class Archive>
void serialize(Archive& archive, cRecord& r, unsigned int)
{
  archive& r.number& r.big& r.real& r.flag& r.ascii& r.text& r.numbers& r.inner;
}
} // namespace boost::serialization

namespace
{

/// The same in types of the library.
class cOurRecord
{
public:
  cOurRecord() : mAscii("sixteen of them!"), mText(L"Zw\u00f6lf Zeichen") {}

  void fill()
  {
    mNumbers.setSize(100);
    mNumbers.fill(100000);
  }

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const
  {
    msa::cContext context(serializer.newContext("cRecord"));
    miNumber >> serializer;
    miBig >> serializer;
    mReal >> serializer;
    mFlag >> serializer;
    mAscii >> serializer;
    mText >> serializer;
    mNumbers.length() >> serializer;
    int const* const pNumbers = mNumbers.data(true);
    for (unsigned int i = 0; i < mNumbers.length(); ++i)
    {
      pNumbers[i] >> serializer;
    }
    msa::cContext inner(serializer.newContext("cInner"));
    mInner.a >> serializer;
    mInner.b >> serializer;
    mInner.c >> serializer;
    inner.release();
    inner.unset();
    context.release();
    return serializer;
  }

  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer)
  {
    msa::cContext context(deserializer.getContext("cRecord"));
    miNumber << deserializer;
    miBig << deserializer;
    mReal << deserializer;
    mFlag << deserializer;
    mAscii << deserializer;
    mText << deserializer;
    unsigned int iCount = 0;
    iCount << deserializer;
    if (iCount > 1000)
    {
      cSTDExceptions::throwUnexpectedEndOfInput();
    }
    mNumbers.setSize(iCount);
    int* const pNumbers = mNumbers.data(true);
    for (unsigned int i = 0; i < iCount; ++i)
    {
      pNumbers[i] << deserializer;
    }
    msa::cContext inner(deserializer.getContext("cInner"));
    mInner.a << deserializer;
    mInner.b << deserializer;
    mInner.c << deserializer;
    inner.release();
    inner.unset();
    context.release();
    return deserializer;
  }

  int miNumber = -5;
  unsigned long long miBig = 0x123456789ABCDEFull;
  double mReal = 3.25;
  bool mFlag = true;
  mstd::cAsciiString mAscii;
  mucs::cString mText;
  mstd::tArray<int> mNumbers;
  cInner mInner;
};

bench::Record protoRecord()
{
  cRecord const from;
  bench::Record record;
  record.set_number(from.number);
  record.set_big(from.big);
  record.set_real(from.real);
  record.set_flag(from.flag);
  record.set_ascii(from.ascii);
  record.set_text(from.text);
  for (std::int32_t number : from.numbers)
  {
    record.add_numbers(number);
  }
  record.mutable_inner()->set_a(from.inner.a);
  record.mutable_inner()->set_b(from.inner.b);
  record.mutable_inner()->set_c(from.inner.c);
  return record;
}

QDataStream& operator<<(QDataStream& stream, cRecord const& r)
{
  stream << r.number << quint64(r.big) << r.real << r.flag
         << QByteArray::fromRawData(r.ascii.data(), static_cast<qsizetype>(r.ascii.size()))
         << QByteArray::fromRawData(r.text.data(), static_cast<qsizetype>(r.text.size()))
         << static_cast<quint32>(r.numbers.size());
  for (std::int32_t number : r.numbers)
  {
    stream << number;
  }
  return stream << r.inner.a << r.inner.b << r.inner.c;
}

QDataStream& operator>>(QDataStream& stream, cRecord& r)
{
  quint64 big = 0;
  quint32 count = 0;
  QByteArray ascii;
  QByteArray text;
  stream >> r.number >> big >> r.real >> r.flag >> ascii >> text >> count;
  r.big = big;
  r.ascii = ascii.toStdString();
  r.text = text.toStdString();
  r.numbers.resize(count);
  for (std::int32_t& number : r.numbers)
  {
    stream >> number;
  }
  return stream >> r.inner.a >> r.inner.b >> r.inner.c;
}

void writeCbor(QCborStreamWriter& writer, cRecord const& r)
{
  writer.startArray(8);
  writer.append(r.number);
  writer.append(quint64(r.big));
  writer.append(r.real);
  writer.append(r.flag);
  writer.appendByteString(r.ascii.data(), static_cast<qsizetype>(r.ascii.size()));
  writer.appendTextString(r.text.data(), static_cast<qsizetype>(r.text.size()));
  writer.startArray(r.numbers.size());
  for (std::int32_t number : r.numbers)
  {
    writer.append(number);
  }
  writer.endArray();
  writer.startArray(3);
  writer.append(r.inner.a);
  writer.append(r.inner.b);
  writer.append(r.inner.c);
  writer.endArray();
  writer.endArray();
}

/// The least that a tagged form can be: an id in front of each value, counts in front of each run, no check of
/// anything.
class cHandWriter
{
public:
  template <class T>
  void put(std::uint32_t id, T value)
  {
    grow(4 + sizeof value);
    std::memcpy(&mBytes[mPos], &id, 4);
    std::memcpy(&mBytes[mPos + 4], &value, sizeof value);
    mPos += 4 + sizeof value;
  }
  void put(std::uint32_t id, std::string const& text)
  {
    put(id, static_cast<std::uint32_t>(text.size()));
    grow(text.size());
    std::memcpy(&mBytes[mPos], text.data(), text.size());
    mPos += text.size();
  }
  size_t size() const { return mPos; }
  std::string bytes() const { return mBytes.substr(0, mPos); }

private:
  void grow(size_t more)
  {
    if (mPos + more > mBytes.size())
    {
      mBytes.resize((mPos + more) * 2);
    }
  }
  std::string mBytes;
  size_t mPos = 0;
};

void writeByHand(cHandWriter& writer, cRecord const& r)
{
  writer.put(5, r.number);
  writer.put(6, r.big);
  writer.put(9, r.real);
  writer.put(8, static_cast<std::uint32_t>(r.flag));
  writer.put(10, r.ascii);
  writer.put(16, r.text);
  writer.put(12, static_cast<std::uint32_t>(r.numbers.size()));
  for (std::int32_t number : r.numbers)
  {
    writer.put(5, number);
  }
  writer.put(5, r.inner.a);
  writer.put(9, r.inner.b);
  writer.put(8, static_cast<std::uint32_t>(r.inner.c));
}

class cHandReader
{
public:
  explicit cHandReader(std::string const& bytes) : mpNext(bytes.data()) {}
  template <class T>
  T get()
  {
    T value;
    std::memcpy(&value, mpNext + 4, sizeof value);
    mpNext += 4 + sizeof value;
    return value;
  }
  std::string text()
  {
    std::uint32_t const size = get<std::uint32_t>();
    mpNext += size;
    return std::string(mpNext - size, size);
  }

private:
  char const* mpNext;
};

cRecord readByHand(std::string const& bytes)
{
  cHandReader reader(bytes);
  cRecord r;
  r.number = reader.get<std::int32_t>();
  r.big = reader.get<std::uint64_t>();
  r.real = reader.get<double>();
  r.flag = reader.get<std::uint32_t>() != 0;
  r.ascii = reader.text();
  r.text = reader.text();
  r.numbers.resize(reader.get<std::uint32_t>());
  for (std::int32_t& number : r.numbers)
  {
    number = reader.get<std::int32_t>();
  }
  r.inner.a = reader.get<std::int32_t>();
  r.inner.b = reader.get<double>();
  r.inner.c = reader.get<std::uint32_t>() != 0;
  return r;
}

mstd::tConstArrayRef<char> viewOf(mstd::tArray<char> const& bytes)
{
  mstd::tConstArrayRef<char> view;
  view.set(bytes, 0, bytes.length());
  return view;
}

unsigned int const Many = 1000000;
size_t const BlockSize = 1u << 20;

void countPayload(benchmark::State& state)
{
  state.SetBytesProcessed(state.iterations() * Many * 4);
}

std::vector<std::int32_t> const& manyNumbers()
{
  static std::vector<std::int32_t> const numbers = [] {
    std::vector<std::int32_t> result;
    for (unsigned int i = 0; i < Many; ++i)
    {
      result.push_back(static_cast<std::int32_t>(i * 2654435761u));
    }
    return result;
  }();
  return numbers;
}

/// A stream of many values of mixed kinds in contexts, of about `iSize` bytes.
mstd::tArray<char> mixedStream(unsigned int iSize)
{
  msa::cSerializeBinary serializer;
  cOurRecord record;
  record.fill();
  while (serializer.currentPos() < iSize)
  {
    record >> serializer;
  }
  mstd::tArray<char> bytes;
  serializer.swapData(bytes);
  return bytes;
}

} // namespace

BENCH("streams", "encode a record", "mortise")
{
  cOurRecord record;
  record.fill();
  msa::cSerializeBinary serializer;
  serializer.setStringStoreMode(msa::cSerializeBinary::StoreUTF8);
  for (auto _ : state)
  {
    serializer.rewind();
    record >> serializer;
    benchmark::DoNotOptimize(serializer.currentPos());
  }
}
BENCH("streams", "encode a record", "protobuf")
{
  bench::Record const record = protoRecord();
  std::string bytes;
  for (auto _ : state)
  {
    record.SerializeToString(&bytes);
    benchmark::DoNotOptimize(bytes.data());
  }
}
BENCH("streams", "encode a record", "msgpack")
{
  cRecord const record;
  msgpack::sbuffer buffer;
  for (auto _ : state)
  {
    buffer.clear();
    msgpack::pack(buffer, record);
    benchmark::DoNotOptimize(buffer.data());
  }
}
BENCH("streams", "encode a record", "cereal")
{
  cRecord record;
  for (auto _ : state)
  {
    std::ostringstream stream;
    cereal::BinaryOutputArchive archive(stream);
    archive(record);
    benchmark::DoNotOptimize(&stream);
  }
}
BENCH("streams", "encode a record", "Boost.Serialization")
{
  cRecord const record;
  for (auto _ : state)
  {
    std::ostringstream stream;
    boost::archive::binary_oarchive archive(stream, boost::archive::no_header);
    archive << record;
    benchmark::DoNotOptimize(&stream);
  }
}
BENCH("streams", "encode a record", "QDataStream")
{
  cRecord const record;
  QByteArray bytes;
  for (auto _ : state)
  {
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << record;
    benchmark::DoNotOptimize(bytes.data());
  }
}
BENCH("streams", "encode a record", "CBOR of Qt")
{
  cRecord const record;
  for (auto _ : state)
  {
    QByteArray bytes;
    QCborStreamWriter writer(&bytes);
    writeCbor(writer, record);
    benchmark::DoNotOptimize(bytes.data());
  }
}
BENCH("streams", "encode a record", "limit: by hand")
{
  cRecord const record;
  for (auto _ : state)
  {
    cHandWriter writer;
    writeByHand(writer, record);
    benchmark::DoNotOptimize(writer.size());
  }
}

BENCH("streams", "decode a record", "mortise")
{
  cOurRecord from;
  from.fill();
  msa::cSerializeBinary serializer;
  serializer.setStringStoreMode(msa::cSerializeBinary::StoreUTF8);
  from >> serializer;
  mstd::tArray<char> bytes;
  serializer.swapData(bytes);
  msa::cDeserializeBinary deserializer(viewOf(bytes));
  for (auto _ : state)
  {
    cOurRecord record;
    deserializer.rewind();
    record << deserializer;
    benchmark::DoNotOptimize(record.miNumber);
  }
}
BENCH("streams", "decode a record", "protobuf")
{
  std::string const bytes = protoRecord().SerializeAsString();
  for (auto _ : state)
  {
    bench::Record record;
    benchmark::DoNotOptimize(record.ParseFromString(bytes));
  }
}
BENCH("streams", "decode a record", "msgpack")
{
  msgpack::sbuffer buffer;
  msgpack::pack(buffer, cRecord());
  for (auto _ : state)
  {
    cRecord record;
    msgpack::unpack(buffer.data(), buffer.size()).get().convert(record);
    benchmark::DoNotOptimize(record.number);
  }
}
BENCH("streams", "decode a record", "cereal")
{
  cRecord from;
  std::ostringstream out;
  cereal::BinaryOutputArchive archive(out);
  archive(from);
  std::string const bytes = out.str();
  for (auto _ : state)
  {
    cRecord record;
    std::istringstream stream(bytes);
    cereal::BinaryInputArchive reader(stream);
    reader(record);
    benchmark::DoNotOptimize(record.number);
  }
}
BENCH("streams", "decode a record", "Boost.Serialization")
{
  cRecord const from;
  std::ostringstream out;
  boost::archive::binary_oarchive(out, boost::archive::no_header) << from;
  std::string const bytes = out.str();
  for (auto _ : state)
  {
    cRecord record;
    std::istringstream stream(bytes);
    boost::archive::binary_iarchive archive(stream, boost::archive::no_header);
    archive >> record;
    benchmark::DoNotOptimize(record.number);
  }
}
BENCH("streams", "decode a record", "QDataStream")
{
  QByteArray bytes;
  QDataStream out(&bytes, QIODevice::WriteOnly);
  out << cRecord();
  for (auto _ : state)
  {
    cRecord record;
    QDataStream stream(bytes);
    stream >> record;
    benchmark::DoNotOptimize(record.number);
  }
}
BENCH("streams", "decode a record", "limit: by hand")
{
  cHandWriter writer;
  writeByHand(writer, cRecord());
  std::string const bytes = writer.bytes();
  for (auto _ : state)
  {
    cRecord const record = readByHand(bytes);
    benchmark::DoNotOptimize(record.number);
  }
}

// Only self-describing forms: those that mark each value with its type.

BENCH("streams", "encode 1,000,000 int32, each by itself", "mortise")
{
  std::vector<std::int32_t> const& numbers = manyNumbers();
  msa::cSerializeBinary serializer;
  msa::cAbstractSerializer& target = serializer;
  for (auto _ : state)
  {
    target.rewind();
    for (std::int32_t number : numbers)
    {
      number >> target;
    }
  }
  countPayload(state);
}
BENCH("streams", "encode 1,000,000 int32, each by itself", "msgpack")
{
  std::vector<std::int32_t> const& numbers = manyNumbers();
  msgpack::sbuffer buffer;
  for (auto _ : state)
  {
    buffer.clear();
    msgpack::packer<msgpack::sbuffer> packer(buffer);
    for (std::int32_t number : numbers)
    {
      packer.pack(number);
    }
  }
  countPayload(state);
}
BENCH("streams", "encode 1,000,000 int32, each by itself", "CBOR of Qt")
{
  std::vector<std::int32_t> const& numbers = manyNumbers();
  for (auto _ : state)
  {
    QByteArray bytes;
    QCborStreamWriter writer(&bytes);
    for (std::int32_t number : numbers)
    {
      writer.append(number);
    }
  }
  countPayload(state);
}

BENCH("streams", "decode 1,000,000 int32, each by itself", "mortise")
{
  msa::cSerializeBinary serializer;
  for (std::int32_t number : manyNumbers())
  {
    number >> serializer;
  }
  mstd::tArray<char> bytes;
  serializer.swapData(bytes);
  msa::cDeserializeBinary deserializer(viewOf(bytes));
  msa::cAbstractDeserializer& source = deserializer;
  for (auto _ : state)
  {
    source.rewind();
    for (unsigned int i = 0; i < Many; ++i)
    {
      int iNumber = 0;
      iNumber << source;
      benchmark::DoNotOptimize(iNumber);
    }
  }
  countPayload(state);
}
BENCH("streams", "decode 1,000,000 int32, each by itself", "msgpack")
{
  msgpack::sbuffer buffer;
  for (std::int32_t number : manyNumbers())
  {
    msgpack::pack(buffer, number);
  }
  for (auto _ : state)
  {
    size_t offset = 0;
    for (unsigned int i = 0; i < Many; ++i)
    {
      benchmark::DoNotOptimize(msgpack::unpack(buffer.data(), buffer.size(), offset).get().as<std::int32_t>());
    }
  }
  countPayload(state);
}
BENCH("streams", "decode 1,000,000 int32, each by itself", "CBOR of Qt")
{
  QByteArray bytes;
  QCborStreamWriter writer(&bytes);
  for (std::int32_t number : manyNumbers())
  {
    writer.append(number);
  }
  for (auto _ : state)
  {
    QCborStreamReader reader(bytes);
    for (unsigned int i = 0; i < Many; ++i)
    {
      benchmark::DoNotOptimize(reader.toInteger());
      reader.next();
    }
  }
  countPayload(state);
}

BENCH("streams", "store a block of 1 MiB", "mortise")
{
  std::string const block(BlockSize, 'x');
  msa::cSerializeBinary serializer;
  for (auto _ : state)
  {
    serializer.rewind();
    serializer.storeBlock(block.data(), BlockSize);
  }
  state.SetBytesProcessed(state.iterations() * BlockSize);
}
BENCH("streams", "store a block of 1 MiB", "limit: memcpy")
{
  std::string const block(BlockSize, 'x');
  std::string target(BlockSize, ' ');
  for (auto _ : state)
  {
    std::memcpy(&target[0], block.data(), BlockSize);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * BlockSize);
}
BENCH("streams", "load a block of 1 MiB", "mortise")
{
  std::string const block(BlockSize, 'x');
  msa::cSerializeBinary serializer;
  serializer.storeBlock(block.data(), BlockSize);
  mstd::tArray<char> bytes;
  serializer.swapData(bytes);
  msa::cDeserializeBinary deserializer(viewOf(bytes));
  mstd::tArray<char> target;
  for (auto _ : state)
  {
    deserializer.rewind();
    deserializer.loadBlock(target);
  }
  state.SetBytesProcessed(state.iterations() * BlockSize);
}
BENCH("streams", "load a block of 1 MiB", "limit: memcpy")
{
  std::string const block(BlockSize, 'x');
  std::string target(BlockSize, ' ');
  for (auto _ : state)
  {
    std::memcpy(&target[0], block.data(), BlockSize);
    benchmark::ClobberMemory();
  }
  state.SetBytesProcessed(state.iterations() * BlockSize);
}

BENCH("streams", "skip to a label behind 10,000 values", "mortise")
{
  msa::cSerializeBinary serializer;
  for (int i = 0; i < 10000; ++i)
  {
    i >> serializer;
  }
  serializer.newLabel("end");
  unsigned int const size = serializer.currentPos();
  mstd::tArray<char> bytes;
  serializer.swapData(bytes);
  msa::cDeserializeBinary deserializer(viewOf(bytes));
  mstd::cAsciiString const label("end");
  for (auto _ : state)
  {
    deserializer.rewind();
    deserializer.findLabel(label);
  }
  state.SetBytesProcessed(state.iterations() * size);
}

BENCH("streams", "copy 10 MB of stream value by value", "mortise")
{
  mstd::tArray<char> const bytes = mixedStream(10000000);
  msa::cDeserializeBinary deserializer(viewOf(bytes));
  msa::cSerializeBinary target;
  for (auto _ : state)
  {
    target.rewind();
    deserializer.reserialize(target);
  }
  state.SetBytesProcessed(state.iterations() * bytes.length());
}
