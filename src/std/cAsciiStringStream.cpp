#include "std/cAsciiStringStream.h"

#include "std/cNumberConversionFormat.h"

mstd::cAsciiString& mstd::operator<<(cAsciiString& string, char const* sCat)
{
  if (sCat == nullptr)
  {
    cSTDExceptions::throwAssertionFailed("sCat != 0", "std/cAsciiStringStream", __LINE__);
  }
  return string += sCat;
}

mstd::cAsciiString& mstd::operator<<(cAsciiString& string, cAsciiString const& sCat)
{
  return string += sCat;
}

mstd::cAsciiString& mstd::operator<<(cAsciiString& string, long long value)
{
  return string.addNum(value, cNumberConversionFormat(10));
}

mstd::cAsciiString& mstd::operator<<(cAsciiString& string, unsigned long long value)
{
  return string.addUNum(value, cNumberConversionFormat(10));
}
