#include "pi/platform/dependend/native_linux/cLinuxExceptions.h"

#include "std/cAsciiString.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

#include <errno.h>

namespace mpi
{

void cLinuxExceptions::throwOSError(char const* operation, int iCode, mucs::cString const& path)
{
  throw mstd::cOSErrorException(operation, iCode, path);
}

void cLinuxExceptions::throwOSError(char const* operation, mucs::cString const& path)
{
  throwOSError(operation, errno, path);
}

void cLinuxExceptions::throwUnableMapWriteable()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$MMAP not supported in r/w mode!"), 0, 0);
}

void cLinuxExceptions::throwAlreadyMapped()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$File is already memory mapped!"), 0, 0);
}

} // namespace mpi
