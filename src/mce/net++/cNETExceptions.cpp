#include "mce/net++/cNETExceptions.h"

#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

namespace mce
{
namespace
{
template <typename... Values>
[[noreturn]] void throwRuntime(char const* pKey, Values const&... values)
{
  throw mstd::cRuntimeException(mstd::exceptionMessage(pKey, values...), 0, 0);
}

mstd::cRuntimeException withCause(char const* pKey, mstd::cAbstractException const& cause)
{
  mstd::cRuntimeException e(mstd::exceptionMessage(pKey), 0, 0);
  e.link(cause);
  return e;
}
} // namespace

void cNETExceptions::throwNoIPAddress()
{
  throwRuntime("$MTR$Network address type is not an ip address!");
}

void cNETExceptions::throwInvalidAddress(mstd::cAbstractException const& cause)
{
  throw withCause("$MTR$Invalid network address!", cause);
}

void cNETExceptions::throwConnectionTxBusy()
{
  throwRuntime("$MTR$Unable to send packet - transmitter is busy!");
}

void cNETExceptions::throwUnableToCompleteConnectionClosedUnexpectedly(mstd::cAbstractException const& cause)
{
  throw withCause("$MTR$Unable to complete request - remote connection has been closed unexpectedly!", cause);
}

void cNETExceptions::throwConnectionClosedUnexpectedly(mstd::cAbstractException const& cause)
{
  throw withCause("$MTR$Remote connection has been closed unexpectedly!", cause);
}

void cNETExceptions::throwTransferTimeout(unsigned int iMSec)
{
  throwRuntime("$MTR$Transfer timeout after %iMSec% milliseconds!", iMSec);
}

void cNETExceptions::throwInvalidConnection(char const* pKey)
{
  throwRuntime(pKey);
}

void cNETExceptions::throwConnectionError(mstd::cAbstractException const& cause)
{
  throw connectionError(cause);
}

mstd::cRuntimeException cNETExceptions::connectionError(mstd::cAbstractException const& cause)
{
  return withCause("$MTR$Network connection error!", cause);
}

void cNETExceptions::throwSocketBug(unsigned int iReturned, unsigned int iGiven)
{
  throw mstd::cBugException(
      mstd::exceptionMessage("$MTR$Bug in socket implementation: Returned size (%returned%) > given size (%given%)!",
                             iReturned, iGiven),
      0, 0);
}

void cNETExceptions::throwClientTimeout(mstd::cAsciiString const& target)
{
  throwRuntime("$MTR$Timeout while establish network connection to %to%!", target);
}

void cNETExceptions::throwExpectingNumber()
{
  throwRuntime("$MTR$Expecting an unsigned decimal number!");
}

void cNETExceptions::throwNumberOutOfRange(int iNumber)
{
  throwRuntime("$MTR$IP number part (%number%) is not in range of 0..255!", iNumber);
}

void cNETExceptions::throwExpectingPort()
{
  throwRuntime("$MTR$Expecting port number!");
}

void cNETExceptions::throwPortOutOfRange(long long iPort)
{
  throwRuntime("$MTR$Given port number (%number%) is not in range of 0..65535", iPort);
}

} // namespace mce
