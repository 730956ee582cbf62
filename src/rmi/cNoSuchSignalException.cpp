#include "rmi/cNoSuchSignalException.h"

#include "std/exceptionMessage.h"

namespace mrmi
{
cNoSuchSignalException::cNoSuchSignalException(mstd::cAsciiString const& name)
    : cRuntimeException(mstd::exceptionMessage("$MTR$Signal \"%s%\" could not be found in interface!", name), 0, 0),
      mSignalName(name)
{
}

cNoSuchSignalException::cNoSuchSignalException(cNoSuchSignalException const& other) : cRuntimeException(other)
{
  copyField(mSignalName, other.mSignalName);
}

void cNoSuchSignalException::swap(cNoSuchSignalException& other) noexcept
{
  cRuntimeException::swap(other);
  mSignalName.swap(other.mSignalName);
}

MORTISE_EXCEPTION_BODY(cNoSuchSignalException)
} // namespace mrmi
