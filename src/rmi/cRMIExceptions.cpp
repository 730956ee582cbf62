#include "rmi/cRMIExceptions.h"

#include "rmi/cCallParameterMissmatchException.h"
#include "rmi/cNoSuchSignalException.h"
#include "rmi/cNoSuchSlotException.h"
#include "rmi/cPublicSlot.h"
#include "rmi/cUnconnectedSignalException.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
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

void cRMIExceptions::throwNoSuchSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& argsText)
{
  throw cNoSuchSlotException(name, argsText);
}

void cRMIExceptions::throwNoSuchSlot(mstd::cAsciiString const& name, msa::cReferenceFrame const& frame)
{
  throw cNoSuchSlotException(name, frame);
}

void cRMIExceptions::throwNoSuchSignal(mstd::cAsciiString const& name)
{
  throw cNoSuchSignalException(name);
}

void cRMIExceptions::throwParameterMissmatch(cPublicSlot const* slot, mstd::cAbstractException const& cause)
{
  cCallParameterMissmatchException missmatch(slot != 0 ? slot->name() : mstd::cAsciiString());
  if (slot != 0)
  {
    missmatch.link(
        mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Definition: \"%returnValue% %slotName%(%arguments%)\"",
                                                       slot->returnTypeName(), slot->name(), slot->paramTypeNames()),
                                0, 0));
  }
  missmatch.link(cause);
  throw missmatch;
}

void cRMIExceptions::throwMissingReturnValue(mstd::cAbstractException const& cause)
{
  mstd::cBugException missing(
      mstd::exceptionMessage("$MTR$Missing return value on reference frame while indirect slot call!"), 0, 0);
  missing.link(cause);
  throw missing;
}
} // namespace mrmi
