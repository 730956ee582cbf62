#ifndef MORTISE_TESTS_SUPPORT_MESSAGEOF_H
#define MORTISE_TESTS_SUPPORT_MESSAGEOF_H

#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "ucs/cLIMessage.h"

#include <string>

namespace support
{

/// The untranslated message of an exception.
inline std::string messageOf(mstd::cAbstractException const& e)
{
  mstd::cAsciiString text;
  if (e.liMessage() != nullptr)
  {
    e.liMessage()->untranslated(text);
  }
  return std::string(text.c_str());
}

/// Runs `body` and returns the message of the tException that it raises; other exceptions go through.
template <class tException, class tBody>
std::string messageOf(tBody const& body)
{
  try
  {
    body();
  }
  catch (tException const& e)
  {
    return messageOf(e);
  }
  return "(nothing was raised)";
}

} // namespace support

#endif
