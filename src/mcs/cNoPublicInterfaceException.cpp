#include "mcs/cNoPublicInterfaceException.h"

#include "std/exceptionMessage.h"

namespace mcs
{
cNoPublicInterfaceException::cNoPublicInterfaceException()
    : cBugException(mstd::exceptionMessage("$MTR$No public interface!"), 0, 0)
{
}

cNoPublicInterfaceException::cNoPublicInterfaceException(cNoPublicInterfaceException const& other)
    : cBugException(other)
{
}

void cNoPublicInterfaceException::swap(cNoPublicInterfaceException& other) noexcept
{
  cBugException::swap(other);
}

MORTISE_EXCEPTION_BODY(cNoPublicInterfaceException)
} // namespace mcs
