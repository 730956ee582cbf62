#ifndef MORTISE_STD_CASCIISTRINGSTREAM_H
#define MORTISE_STD_CASCIISTRINGSTREAM_H

#include "std/cAsciiString.h"

namespace mstd
{
/// \name Building a string as a stream
/// Each appends to `string` and returns it. Errors: null is an assertion failure; std::bad_alloc. The string is
/// then as it was.
/// @{
MORTISE_API cAsciiString& operator<<(cAsciiString& string, char const* sCat);
MORTISE_API cAsciiString& operator<<(cAsciiString& string, cAsciiString const& sCat);
/// Always in base 10, whatever the system's default format is.
MORTISE_API cAsciiString& operator<<(cAsciiString& string, long long value);
MORTISE_API cAsciiString& operator<<(cAsciiString& string, unsigned long long value);
// The narrower numbers have forms of their own, else a plain 0 could also be a pointer.
inline cAsciiString& operator<<(cAsciiString& string, int value)
{
  return string << static_cast<long long>(value);
}
inline cAsciiString& operator<<(cAsciiString& string, long value)
{
  return string << static_cast<long long>(value);
}
inline cAsciiString& operator<<(cAsciiString& string, unsigned int value)
{
  return string << static_cast<unsigned long long>(value);
}
inline cAsciiString& operator<<(cAsciiString& string, unsigned long value)
{
  return string << static_cast<unsigned long long>(value);
}
/// @}
} // namespace mstd

#endif
