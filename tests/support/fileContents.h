#ifndef MORTISE_TESTS_SUPPORT_FILECONTENTS_H
#define MORTISE_TESTS_SUPPORT_FILECONTENTS_H

#include "support/exceptionText.h"
#include "ucs/cString.h"

#include <fstream>
#include <iterator>
#include <string>

namespace support
{

/// Writes a file by means of the standard library.
inline void putFile(mucs::cString const& name, std::string const& bytes)
{
  std::ofstream(toString(name), std::ios::binary) << bytes;
}

/// The bytes of a file; empty if there is none.
inline std::string fileBytes(mucs::cString const& name)
{
  std::ifstream file(toString(name), std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

} // namespace support

#endif
