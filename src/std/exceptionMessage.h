#ifndef MORTISE_STD_EXCEPTIONMESSAGE_H
#define MORTISE_STD_EXCEPTIONMESSAGE_H

#include "ucs/cLIMessage.h"

namespace mstd
{
/// A message with its parameters, as a temporary that an exception can take over instead of copying it.
template <typename... Values>
mucs::cLIMessage exceptionMessage(char const* key, Values const&... values)
{
  mucs::cLIMessage message;
  message << key;
  static_cast<void>((message << ... << values));
  return message;
}
} // namespace mstd

#endif
