#ifndef MORTISE_TESTS_SUPPORT_STREAMBYTES_H
#define MORTISE_TESTS_SUPPORT_STREAMBYTES_H

#include "sa/cSerializeBinary.h"
#include "std/tArray.h"

#include <cstdlib>
#include <string>

namespace support
{

/// Bytes from a listing such as "0C 00 'rec' FF": two hexadecimal digits for each, or text in quotes.
inline std::string bytes(std::string const& listing)
{
  std::string result;
  for (size_t i = 0; i < listing.size();)
  {
    if (listing[i] == ' ')
    {
      ++i;
    }
    else if (listing[i] == '\'')
    {
      size_t const close = listing.find('\'', i + 1);
      result += listing.substr(i + 1, close - i - 1);
      i = close + 1;
    }
    else
    {
      result += static_cast<char>(std::strtoul(listing.substr(i, 2).c_str(), nullptr, 16));
      i += 2;
    }
  }
  return result;
}

/// A word as it stands in a stream.
inline std::string word(unsigned int value)
{
  std::string result;
  for (int i = 0; i < 4; ++i)
  {
    result += static_cast<char>(value >> (8 * i));
  }
  return result;
}

inline mstd::tArray<char> arrayOf(std::string const& text)
{
  mstd::tArray<char> array;
  array.append(text.data(), static_cast<unsigned int>(text.size()));
  return array;
}

inline std::string stringOf(mstd::tArray<char> const& array)
{
  return array.empty() ? std::string() : std::string(array.data(), array.length());
}

/// What a serializer with a buffer of its own has written.
inline std::string written(msa::cSerializeBinary& serializer)
{
  return stringOf(serializer.ownData());
}

} // namespace support

#endif
