#include "rmi/cUnconnectedSignalException.h"

#include "std/exceptionMessage.h"

namespace mrmi
{
cUnconnectedSignalException::cUnconnectedSignalException()
    : cRuntimeException(mstd::exceptionMessage("$MTR$Call of an unconnected signal"), 0, 0)
{
}

cUnconnectedSignalException::cUnconnectedSignalException(cUnconnectedSignalException const& other)
    : cRuntimeException(other)
{
}

void cUnconnectedSignalException::swap(cUnconnectedSignalException& other) noexcept
{
  cRuntimeException::swap(other);
}

MORTISE_EXCEPTION_BODY(cUnconnectedSignalException)
} // namespace mrmi
