#ifndef MORTISE_TESTS_SUPPORT_EXCEPTIONTEXT_H
#define MORTISE_TESTS_SUPPORT_EXCEPTIONTEXT_H

#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <string>

namespace support
{

inline std::string toString(mstd::cAsciiString const& text)
{
  return std::string(text.c_str(), text.length());
}

/// Code points above 127 read "?".
inline std::string toString(mucs::cString const& text)
{
  return toString(text.ascii('?'));
}

inline std::string toString(mucs::cLIMessage const& message)
{
  mstd::cAsciiString text;
  message.untranslated(text);
  return toString(text);
}

/// The English wording of the exception alone, or "(none)" if it has no message.
inline std::string messageOf(mstd::cAbstractException const& e)
{
  return e.liMessage() != nullptr ? toString(*e.liMessage()) : "(none)";
}

/// Runs `action` and gives the exception of type `E` that it raises. Any other outcome is a failure of the test.
template <class E, class Action>
E caught(Action action)
{
  try
  {
    action();
  }
  catch (E const& e)
  {
    return e;
  }
  throw std::string("nothing of the expected type was raised");
}

} // namespace support

#endif
