#include "std/cOSErrorException.h"

#include "pi/cPlatform.h"
#include "std/exceptionMessage.h"
#include <utility>

namespace mstd
{
cOSErrorException::cOSErrorException() : miCode(0) {}

cOSErrorException::cOSErrorException(cAsciiString const& operation, int code)
    : cRuntimeException(exceptionMessage("$MTR$OS-Error while trying operation \"%operation%\"!", operation), 0, 0),
      mOperation(operation), miCode(code)
{
  linkSystemText();
}

cOSErrorException::cOSErrorException(cAsciiString const& operation, int code, mucs::cString const& file)
    : cRuntimeException(
          exceptionMessage("$MTR$OS-Error while trying operation \"%operation%\" on file \"%file%\"!", operation, file),
          0, 0),
      mOperation(operation), miCode(code), mFileName(file)
{
  linkSystemText();
}

cOSErrorException::cOSErrorException(cOSErrorException const& other) : cRuntimeException(other), miCode(other.miCode)
{
  copyField(mOperation, other.mOperation);
  copyField(mFileName, other.mFileName);
}

void cOSErrorException::swap(cOSErrorException& other) noexcept
{
  cRuntimeException::swap(other);
  mOperation.swap(other.mOperation);
  mFileName.swap(other.mFileName);
  std::swap(miCode, other.miCode);
}

MORTISE_EXCEPTION_BODY(cOSErrorException)

void cOSErrorException::linkSystemText()
{
  link(cRuntimeException(exceptionMessage("$MTR$Error: \"%error%\"!", mpi::cPlatform::osFileIOErrorString(miCode)), 0,
                         0));
}
} // namespace mstd
