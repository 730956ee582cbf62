#ifndef MORTISE_EXAMPLES_PLANT_SHARED_CTEXT_H
#define MORTISE_EXAMPLES_PLANT_SHARED_CTEXT_H

#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mstd
{
class cAbstractException;
}

namespace mucs
{
class cLIMessage;
}

/// How program and modules write things for people: in the language of the system's locale, as UTF-8.
class cText
{
public:
  /// Text from outside: UTF-8, or bytes as code points if it is not.
  static mucs::cString decode(mstd::cAsciiString const& text);
  static mstd::cAsciiString encode(mucs::cString const& text);
  static mstd::cAsciiString message(mucs::cLIMessage const& message);
  /// The message of an exception and of the errors that led to it.
  static mstd::cAsciiString message(mstd::cAbstractException const& e);
};

#endif
