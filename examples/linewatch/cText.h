#ifndef MORTISE_EXAMPLES_LINEWATCH_CTEXT_H
#define MORTISE_EXAMPLES_LINEWATCH_CTEXT_H

#include "pi/piTypes.h"
#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mstd
{
class cAbstractException;
}

/// How this program writes things for people.
class cText
{
public:
  /// Text from outside: UTF-8, or bytes as code points if it is not.
  static mucs::cString decode(char const* text);
  /// The name of a work item: quotes, backslashes and what can't be printed become underlines.
  static mstd::cAsciiString label(mstd::cAsciiString const& name);
  /// `iSize` bytes of UTF-8; control characters and bytes that are no text become \xHH.
  static mstd::cAsciiString visible(char const* pBytes, unsigned int iSize);
  /// The message of an exception and of the errors that led to it, in the chosen language and in UTF-8.
  static mstd::cAsciiString message(mstd::cAbstractException const& e);
  /// A number of bytes with a unit: "512 B", "1.5 MB".
  static mstd::cAsciiString size(piUInt64 iBytes);
};

#endif
