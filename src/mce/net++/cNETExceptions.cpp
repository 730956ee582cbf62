#include "mce/net++/cNETExceptions.h"

#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

namespace mce
{

void cNETExceptions::throwNoIPAddress()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Network address type is not an ip address!"), 0, 0);
}

} // namespace mce
