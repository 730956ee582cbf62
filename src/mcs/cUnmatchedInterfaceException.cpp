#include "mcs/cUnmatchedInterfaceException.h"

#include "std/exceptionMessage.h"

namespace mcs
{
cUnmatchedInterfaceException::cUnmatchedInterfaceException()
    : cRuntimeException(mstd::exceptionMessage("$MTR$Unmatched interface!"), 0, 0)
{
}

cUnmatchedInterfaceException::cUnmatchedInterfaceException(cUnmatchedInterfaceException const& other)
    : cRuntimeException(other)
{
}

void cUnmatchedInterfaceException::swap(cUnmatchedInterfaceException& other) noexcept
{
  cRuntimeException::swap(other);
}

MORTISE_EXCEPTION_BODY(cUnmatchedInterfaceException)
} // namespace mcs
