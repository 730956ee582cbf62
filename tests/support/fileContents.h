#ifndef MORTISE_TESTS_SUPPORT_FILECONTENTS_H
#define MORTISE_TESTS_SUPPORT_FILECONTENTS_H

#include "ucs/cString.h"

#include <fstream>
#include <iterator>
#include <string>

namespace support
{

/// The path whose bytes are the code points of `name`.
inline std::string nativePath(mucs::cString const& name)
{
  std::string bytes;
  for (unsigned int i = 0; i < name.length(); ++i)
  {
    bytes += static_cast<char>(name[i]);
  }
  return bytes;
}

/// Writes a file by means of the standard library.
inline void putFile(mucs::cString const& name, std::string const& bytes)
{
  std::ofstream(nativePath(name), std::ios::binary) << bytes;
}

/// The bytes of a file; empty if there is none.
inline std::string fileBytes(mucs::cString const& name)
{
  std::ifstream file(nativePath(name), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace support

#endif
