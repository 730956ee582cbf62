#ifndef MORTISE_TESTS_SUPPORT_OSFAILURE_H
#define MORTISE_TESTS_SUPPORT_OSFAILURE_H

#include "std/cOSErrorException.h"
#include "support/exceptionText.h"

#include <string>

namespace support
{

/// A failed system call as text, to be compared with osFailureOf().
inline std::string osFailure(std::string const& operation, int iCode, std::string const& path = std::string())
{
  return operation + " " + std::to_string(iCode) + (path.empty() ? "" : " " + path);
}

/// The failed system call that `action` reports, "nothing" if it goes through. Other exceptions pass.
template <class Action>
std::string osFailureOf(Action const& action)
{
  try
  {
    action();
  }
  catch (mstd::cOSErrorException const& e)
  {
    return osFailure(toString(e.operation()), e.osErrorCode(), toString(e.fileName()));
  }
  return "nothing";
}

} // namespace support

#endif
