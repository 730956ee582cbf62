#include "rmi/cRMIExceptions.h"

#include "rmi/cUnconnectedSignalException.h"
#include "std/cBugException.h"
#include "std/exceptionMessage.h"

namespace mrmi
{
namespace
{
[[noreturn]] void throwBug(char const* key)
{
  throw mstd::cBugException(mstd::exceptionMessage(key), 0, 0);
}
} // namespace

void cRMIExceptions::throwUnconnectedSignal()
{
  throw cUnconnectedSignalException();
}

void cRMIExceptions::throwIndirectLocalConnection()
{
  throwBug("$MTR$Indirect connections not possible with explicit local signals!");
}

void cRMIExceptions::throwIndirectLocalSlotCall()
{
  throwBug("$MTR$Slots connected to an explicit local signal cannot be called indirectly!");
}

void cRMIExceptions::throwIndirectCallSlotCallRef()
{
  throwBug("$MTR$Indirect slots cannot be called by reference!");
}

void cRMIExceptions::throwSlotNotPublic()
{
  throwBug("$MTR$Slot is not a public one!");
}

void cRMIExceptions::throwSignalNotPublic()
{
  throwBug("$MTR$Signal is not a public one!");
}
} // namespace mrmi
