#include "pi/cUnsupportedPlatformException.h"

#include "std/cAsciiString.h"
#include "ucs/cLIMessage.h"

namespace mpi
{

namespace
{

mucs::cLIMessage unsupported(mstd::cAsciiString const& operation)
{
  mucs::cLIMessage message;
  message << "$MTR$Operation (\"%operation%\") not supported for this platform!" << operation;
  return message;
}

} // namespace

cUnsupportedPlatformException::cUnsupportedPlatformException() : cUnsupportedPlatformException(mstd::cAsciiString()) {}

cUnsupportedPlatformException::cUnsupportedPlatformException(mstd::cAsciiString const& operation)
    : mstd::cBugException(unsupported(operation), 0, 0)
{
}

cUnsupportedPlatformException::cUnsupportedPlatformException(cUnsupportedPlatformException const& other)
    : mstd::cBugException(other)
{
}

void cUnsupportedPlatformException::swap(cUnsupportedPlatformException& other) noexcept
{
  mstd::cBugException::swap(other);
}

MORTISE_EXCEPTION_BODY(cUnsupportedPlatformException)

} // namespace mpi
