#ifndef MORTISE_EXAMPLES_NOTEBOOK_CTEXT_H
#define MORTISE_EXAMPLES_NOTEBOOK_CTEXT_H

#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mstd
{
class cAbstractException;
}

/// How this program reads and writes texts.
class cText
{
public:
  /// Text from outside: UTF-8, or bytes as code points if it is not.
  static mucs::cString decode(char const* text);
  /// Whether the text is UTF-8 that comes back as it was.
  static bool isText(char const* text);
  /// The text in UTF-8, in one line: control characters become U+FFFD.
  static mstd::cAsciiString visible(mucs::cString text);
  /// The message of an exception, in one line of UTF-8.
  static mstd::cAsciiString message(mstd::cAbstractException const& e);
};

#endif
