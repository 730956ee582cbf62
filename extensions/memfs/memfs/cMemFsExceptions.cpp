#include "memfs/cMemFsExceptions.h"

#include "std/cAsciiString.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"
#include "ucs/cString.h"

namespace mmem
{

void cMemFsExceptions::throwOSError(char const* operation, int iCode, mucs::cString const& path)
{
  throw mstd::cOSErrorException(operation, iCode, path);
}

void cMemFsExceptions::throwUnableMapWriteable()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$MMAP not supported in r/w mode!"), 0, 0);
}

void cMemFsExceptions::throwAlreadyMapped()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$File is already memory mapped!"), 0, 0);
}

} // namespace mmem
