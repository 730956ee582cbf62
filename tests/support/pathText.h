#ifndef MORTISE_TESTS_SUPPORT_PATHTEXT_H
#define MORTISE_TESTS_SUPPORT_PATHTEXT_H

#include "io/cPath.h"
#include "ucs/cString.h"

#include <string>

namespace support
{

/// A text of code points below 256, one byte each.
inline std::string latin(mucs::cString const& text)
{
  std::string result;
  for (unsigned int i = 0; i < text.length(); ++i)
  {
    result += static_cast<char>(text[i]);
  }
  return result;
}

inline mucs::cString wide(std::string const& text)
{
  mucs::cString result;
  result.appendC(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

/// Drive letter, if any, `|`, and text: what a path holds.
inline std::string held(mio::cPath const& path)
{
  std::string const letter(path.driveLetter() != 0 ? 1 : 0, path.driveLetter());
  return letter + "|" + latin(path.unixEquivalent());
}

} // namespace support

#endif
