#include "support/streamItems.h"

#include "sa/cContext.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "ucs/cString.h"

#include <cstring>
#include <sstream>
#include <stdexcept>

namespace support
{
namespace
{

mstd::cAsciiString asciiOf(std::string const& bytes)
{
  mstd::cAsciiString text;
  text.append(bytes.data(), static_cast<unsigned int>(bytes.size()));
  return text;
}

std::string stringOf(mstd::cAsciiString const& text)
{
  return std::string(text.c_str(), text.length());
}

template <class T>
bool writeNumber(char const* kind, cItem const& item, msa::cAbstractSerializer& serializer)
{
  if (item.kind != kind)
  {
    return false;
  }
  static_cast<T>(item.number) >> serializer;
  return true;
}

template <class T>
bool readNumber(char const* kind, cItem& item, msa::cAbstractDeserializer& deserializer)
{
  if (item.kind != kind)
  {
    return false;
  }
  T value = T();
  value << deserializer;
  item.number = static_cast<std::uint64_t>(static_cast<long long>(value));
  return true;
}

} // namespace

bool cItem::operator==(cItem const& other) const
{
  return kind == other.kind && bytes == other.bytes && points == other.points && number == other.number &&
         named == other.named && items == other.items;
}

void write(cItem const& item, msa::cAbstractSerializer& serializer)
{
  if (writeNumber<unsigned char>("piUChar", item, serializer) || writeNumber<signed char>("piChar", item, serializer) ||
      writeNumber<unsigned short>("piUInt16", item, serializer) || writeNumber<short>("piInt16", item, serializer) ||
      writeNumber<unsigned int>("piUInt32", item, serializer) || writeNumber<int>("piInt32", item, serializer) ||
      writeNumber<unsigned long long>("piUInt64", item, serializer) ||
      writeNumber<long long>("piInt64", item, serializer) || writeNumber<bool>("piBool", item, serializer))
  {
    return;
  }
  if (item.kind == "piDouble")
  {
    double value = 0;
    std::memcpy(&value, &item.number, sizeof value);
    value >> serializer;
  }
  else if (item.kind == "rawBytes")
  {
    serializer.storeBlock(item.bytes.empty() ? nullptr : item.bytes.data(),
                          static_cast<unsigned int>(item.bytes.size()));
  }
  else if (item.kind == "cAsciiString")
  {
    asciiOf(item.bytes) >> serializer;
  }
  else if (item.kind == "label")
  {
    serializer.newLabel(asciiOf(item.bytes));
  }
  else if (item.kind == "cString32" || item.kind == "cString8")
  {
    dynamic_cast<msa::cSerializeBinary&>(serializer)
        .setStringStoreMode(item.kind == "cString8" ? msa::cSerializeBinary::StoreUTF8
                                                    : msa::cSerializeBinary::StoreUTF32);
    mucs::cString text;
    text.append(item.points.data(), static_cast<unsigned int>(item.points.size()));
    text >> serializer;
  }
  else if (item.kind == "context")
  {
    msa::cContext context(serializer.newContext(item.named ? item.bytes.c_str() : nullptr));
    write(item.items, serializer);
    context.release();
  }
  else
  {
    throw std::invalid_argument(item.kind);
  }
}

void write(tItems const& items, msa::cAbstractSerializer& serializer)
{
  for (cItem const& item : items)
  {
    write(item, serializer);
  }
}

cItem readLike(cItem const& like, msa::cAbstractDeserializer& deserializer)
{
  cItem item;
  item.kind = like.kind;
  if (readNumber<unsigned char>("piUChar", item, deserializer) ||
      readNumber<signed char>("piChar", item, deserializer) ||
      readNumber<unsigned short>("piUInt16", item, deserializer) || readNumber<short>("piInt16", item, deserializer) ||
      readNumber<unsigned int>("piUInt32", item, deserializer) || readNumber<int>("piInt32", item, deserializer) ||
      readNumber<unsigned long long>("piUInt64", item, deserializer) ||
      readNumber<long long>("piInt64", item, deserializer) || readNumber<bool>("piBool", item, deserializer))
  {
    return item;
  }
  if (item.kind == "piDouble")
  {
    double value = 0;
    value << deserializer;
    std::memcpy(&item.number, &value, sizeof value);
  }
  else if (item.kind == "rawBytes")
  {
    mstd::tArray<char> data;
    deserializer.loadBlock(data);
    item.bytes.assign(data.data(true), data.length());
  }
  else if (item.kind == "cAsciiString")
  {
    mstd::cAsciiString text;
    text << deserializer;
    item.bytes = stringOf(text);
  }
  else if (item.kind == "label")
  {
    mstd::cAsciiString const name = deserializer.getNextLabelName();
    deserializer.findLabel(name);
    item.bytes = stringOf(name);
  }
  else if (item.kind == "cString32" || item.kind == "cString8")
  {
    mucs::cString text;
    text << deserializer;
    item.points.assign(text.data(true), text.data(true) + text.length());
  }
  else if (item.kind == "context")
  {
    item.named = like.named;
    item.bytes = stringOf(deserializer.getNextContextTypeName());
    msa::cContext context(deserializer.getContext(like.bytes.c_str()));
    item.items = readLike(like.items, deserializer);
    context.release();
  }
  else
  {
    throw std::invalid_argument(item.kind);
  }
  return item;
}

tItems readLike(tItems const& items, msa::cAbstractDeserializer& deserializer)
{
  tItems result;
  for (cItem const& item : items)
  {
    result.push_back(readLike(item, deserializer));
  }
  return result;
}

tItems parse(std::vector<std::string> const& lines, size_t& line)
{
  tItems items;
  for (; line < lines.size() && lines[line] != "end"; ++line)
  {
    std::istringstream words(lines[line]);
    cItem item;
    std::string value;
    words >> item.kind >> value;
    if (item.kind == "context")
    {
      item.named = value != "(unnamed)";
      item.bytes = item.named ? fromHex(value) : "";
      item.items = parse(lines, ++line);
    }
    else if (item.kind == "label" || item.kind == "rawBytes" || item.kind == "cAsciiString")
    {
      item.bytes = fromHex(value);
    }
    else if (item.kind == "cString32" || item.kind == "cString8")
    {
      std::istringstream points(value == "-" ? "" : value);
      for (std::string point; std::getline(points, point, ',');)
      {
        item.points.push_back(static_cast<unsigned int>(std::stoul(point, nullptr, 16)));
      }
    }
    else if (item.kind == "piDouble")
    {
      item.number = std::stoull(value, nullptr, 16);
    }
    else
    {
      item.number = value[0] == '-' ? static_cast<std::uint64_t>(std::stoll(value)) : std::stoull(value);
    }
    items.push_back(item);
  }
  return items;
}

std::string fromHex(std::string const& hex)
{
  std::string bytes;
  for (size_t i = 0; hex != "-" && i + 1 < hex.size(); i += 2)
  {
    bytes += static_cast<char>(std::stoi(hex.substr(i, 2), nullptr, 16));
  }
  return bytes;
}

std::string toHex(std::string const& bytes)
{
  std::string hex;
  for (unsigned char byte : bytes)
  {
    hex += "0123456789abcdef"[byte >> 4];
    hex += "0123456789abcdef"[byte & 15];
  }
  return hex;
}

std::string bytesOf(msa::cAbstractSerializer& serializer)
{
  mstd::tArrayRef<char> const data = serializer.data();
  std::string bytes(data.proxyLength(), '\0');
  data.proxyCopyPartTo(&bytes[0], 0, data.proxyLength());
  return bytes;
}

} // namespace support
