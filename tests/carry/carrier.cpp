// Writes random values to a file, and reads, checks and writes again what another program of the same name wrote, on
// another processor. carryTest.py carries the files.
//
//   mortise-carrier write SEED COUNT OUT       COUNT streams
//   mortise-carrier again SEED COUNT IN OUT    the same, made from what is read from IN; fails if that is something
//   else

#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "sa/containerStream.h"
#include "std/cAbstractException.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cBuildInfo.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "std/tList.h"
#include "std/tVector.h"
#include "support/cCaptureOut.h"
#include "support/goldenStreams.h"
#include "support/randomItems.h"
#include "support/streamItems.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <random>
#include <stdexcept>
#include <string>

namespace
{

class cFactory : public mstd::cAbstractExceptionFactory
{
public:
  mstd::tAutoPtr<mstd::cAbstractException> createException(mstd::cAsciiString const& typeName) const override
  {
    typedef mstd::tAutoPtr<mstd::cAbstractException> tMade;
    if (typeName == "cBugException")
    {
      return tMade(new mstd::cBugException);
    }
    if (typeName == "cRuntimeException")
    {
      return tMade(new mstd::cRuntimeException);
    }
    cSTDExceptions::throwElementNotFound("cFactory", "createException");
  }
};

/// A member of each class that has a record of its own.
struct cRecord
{
  mstd::tVector<double> numbers;
  mstd::tList<mucs::cString> texts;
  mstd::tArray<char> bytes;
  mstd::cDateTime time;
  mstd::cBuildInfo build;
  mucs::cLIMessage message;
  mstd::tAutoPtr<mstd::cAbstractException> failure;

  void write(msa::cAbstractSerializer& serializer) const
  {
    msa::cContext context(serializer.newContext("record"));
    numbers >> serializer;
    texts >> serializer;
    bytes >> serializer;
    time >> serializer;
    build >> serializer;
    message >> serializer;
    failure->storeRecursive(serializer);
    context.release();
  }

  void read(msa::cAbstractDeserializer& deserializer)
  {
    msa::cContext context(deserializer.getContext("record"));
    numbers << deserializer;
    texts << deserializer;
    bytes << deserializer;
    time << deserializer;
    build << deserializer;
    message << deserializer;
    failure = mstd::cAbstractException::createFromStream(deserializer, cFactory());
    context.release();
  }
};

mucs::cString randomText(std::mt19937& random)
{
  mucs::cString text;
  for (unsigned int i = random() % 20; i != 0; --i)
  {
    unsigned int const c = static_cast<unsigned int>(1 + random() % 199999); // UTF-8 does not bring back more
    text.append(&c, 1);
  }
  return text;
}

mucs::cLIMessage randomMessage(std::mt19937& random)
{
  mucs::cLIMessage message(random() % 2 != 0 ? "$MTR$%a% has %b% of %c%" : "$MNTR$%a% and %b% and %c%");
  message << randomText(random) << static_cast<int>(random());
  if (random() % 2 != 0)
  {
    message << static_cast<double>(static_cast<int>(random())) / 1024;
  }
  return message;
}

void fill(cRecord& record, std::mt19937& random)
{
  for (unsigned int i = random() % 10; i != 0; --i)
  {
    record.numbers.append((static_cast<double>(random()) - 2147483648.0) / 3);
  }
  for (unsigned int i = random() % 10; i != 0; --i)
  {
    record.texts.append(randomText(random));
  }
  record.bytes.setGrowStep(random() % 10);
  for (unsigned int i = random() % 100; i != 0; --i)
  {
    record.bytes.append(static_cast<char>(random() % 256));
  }
  std::uint64_t const days = random() % 100000;
  record.time =
      mstd::cDateTime(mstd::cTime(static_cast<piUInt64>(days * 86400000000ull + random())), mstd::cDateTime::UTC);
  record.build = mstd::cBuildInfo("compiler", "1.2", "system", "host", "date", static_cast<unsigned int>(random()));
  record.message = randomMessage(random);
  record.failure.reinit(new mstd::cRuntimeException(randomMessage(random), "file", 1));
  record.failure->link(mstd::cBugException(randomMessage(random), "file", 2));
}

struct cStream
{
  support::tItems items;
  cRecord record;
};

/// The same on every processor.
void make(cStream& stream, std::mt19937& random)
{
  stream.items = support::randomItems(random, 4);
  fill(stream.record, random);
}

/// Without labels, and with them.
std::string written(cStream const& stream)
{
  support::cCaptureOut const quiet; // of what exceptions say when they are stored
  msa::cSerializeBinary serializer;
  support::write(stream.items, serializer);
  stream.record.write(serializer);
  serializer.setPreferNoLabels(false);
  stream.record.write(serializer);
  return support::bytesOf(serializer);
}

/// Reads what is like `like`.
void read(cStream& stream, support::tItems const& like, std::string const& bytes)
{
  msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytes));
  stream.items = support::readLike(like, deserializer);
  stream.record.read(deserializer);
  deserializer.setPreferNoLabels(false);
  stream.record.read(deserializer);
  if (!deserializer.eoc())
  {
    throw std::runtime_error("something is left over");
  }
}

std::string copied(std::string const& bytes)
{
  msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytes));
  msa::cSerializeBinary target;
  target.setPreferNoLabels(false);
  deserializer.reserialize(target);
  return support::bytesOf(target);
}

void put(std::ostream& out, std::string const& bytes)
{
  out << bytes.size() << '\n';
  out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

std::string get(std::istream& in)
{
  size_t size = 0;
  in >> size;
  in.get();
  std::string bytes(in ? size : 0, '\0');
  in.read(&bytes[0], static_cast<std::streamsize>(bytes.size()));
  if (!in)
  {
    throw std::runtime_error("the file ends too early");
  }
  return bytes;
}

void carry(char const* pSeed, char const* pCount, std::istream* pIn, std::ostream& out)
{
  std::mt19937 random(static_cast<unsigned int>(std::strtoul(pSeed, nullptr, 10)));
  unsigned long const count = std::strtoul(pCount, nullptr, 10);
  for (unsigned long i = 0; i < count; ++i)
  {
    cStream own;
    make(own, random);
    std::string bytes = written(own);
    if (pIn != nullptr)
    {
      std::string const foreign = get(*pIn);
      cStream stream;
      read(stream, own.items, foreign);
      if (stream.items != own.items)
      {
        throw std::runtime_error("stream " + std::to_string(i) + " has other values");
      }
      if (foreign != bytes)
      {
        throw std::runtime_error("stream " + std::to_string(i) + " has other bytes");
      }
      if (copied(foreign) != copied(bytes))
      {
        throw std::runtime_error("stream " + std::to_string(i) + " has another copy");
      }
      bytes = written(stream); // what was read goes on, not what was made here
    }
    put(out, bytes);
  }
  out.flush();
  if (!out || (pIn != nullptr && pIn->peek() != EOF))
  {
    throw std::runtime_error("wrong number of streams");
  }
}

} // namespace

int main(int iCount, char** pArguments)
{
  try
  {
    std::string const mode = iCount > 1 ? pArguments[1] : "";
    if (mode == "write" && iCount == 5)
    {
      std::ofstream out(pArguments[4], std::ios::binary);
      carry(pArguments[2], pArguments[3], nullptr, out);
      return 0;
    }
    if (mode == "again" && iCount == 6)
    {
      std::ifstream in(pArguments[4], std::ios::binary);
      std::ofstream out(pArguments[5], std::ios::binary);
      carry(pArguments[2], pArguments[3], &in, out);
      return 0;
    }
    std::cerr << "usage: mortise-carrier write SEED COUNT OUT | again SEED COUNT IN OUT\n";
    return 2;
  }
  catch (mstd::cAbstractException const& e)
  {
    mucs::cString text;
    e.createMessage(text, mucs::cString("; "), 1, nullptr);
    std::cerr << "mortise-carrier: " << text.ascii('?').c_str() << '\n';
  }
  catch (std::exception const& e)
  {
    std::cerr << "mortise-carrier: " << e.what() << '\n';
  }
  return 1;
}
