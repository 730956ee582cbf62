#ifndef MORTISE_TESTS_UCS_TEXTSUPPORT_H
#define MORTISE_TESTS_UCS_TEXTSUPPORT_H

#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <ostream>
#include <string>
#include <vector>

namespace support
{

typedef std::vector<unsigned int> cCodePoints;

inline cCodePoints codePoints(mucs::cString const& sText)
{
  return sText.empty() ? cCodePoints() : cCodePoints(sText.data(), sText.data() + sText.length());
}

inline mucs::cString string(cCodePoints const& aCodePoints)
{
  mucs::cString sText;
  sText.append(aCodePoints.data(), static_cast<unsigned int>(aCodePoints.size()));
  return sText;
}

inline mstd::tArray<char> bytes(std::string const& sBytes)
{
  mstd::tArray<char> aBytes;
  aBytes.append(sBytes.data(), static_cast<unsigned int>(sBytes.size()));
  return aBytes;
}

inline std::string bytes(mstd::tArray<char> const& aBytes)
{
  return aBytes.empty() ? std::string() : std::string(aBytes.data(), aBytes.length());
}

inline std::string ascii(mucs::cString const& sText)
{
  return sText.ascii('?').c_str();
}

/// "41 e9 ...", for messages about data that is no text.
template <class Range>
std::string hex(Range const& rRange)
{
  std::string sResult;
  for (auto const element : rRange)
  {
    char buffer[16];
    unsigned long long const value = static_cast<unsigned long long>(element);
    snprintf(buffer, sizeof buffer, "%llx ", sizeof element == 1 ? value & 0xFF : value);
    sResult += buffer;
  }
  return sResult;
}

/// Class and text of the exception that `fAction` ends with, "cRuntimeException: ..."; empty if it ends well.
template <class Action>
std::string failureText(Action fAction)
{
  try
  {
    fAction();
  }
  catch (mstd::cAbstractException const& exception)
  {
    mstd::cAsciiString sText;
    exception.liMessage()->untranslated(sText);
    return std::string(exception.typeName().c_str()) + ": " + sText.c_str();
  }
  return std::string();
}

} // namespace support

namespace mucs
{
/// How a failed comparison shows a string.
inline void PrintTo(cString const& sText, std::ostream* pOut)
{
  *pOut << '"' << support::ascii(sText) << "\" (" << support::hex(support::codePoints(sText)) << ")";
}
} // namespace mucs

#endif
