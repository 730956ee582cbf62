#include "rmi/cAbstractSlotCall.h"

#include "rmi/cRMIExceptions.h"
#include "std/cAsciiString.h"
#include "std/cSTDExceptions.h"
#include "std/debugLines.h"

namespace mrmi
{
cAbstractSlotCall::cAbstractSlotCall(cConnectable& object, cAbstractSignal* pSignal)
    : mObject(object), mpSignal(pSignal), mpPublicSlot(0), mCalled(false), mRemoved(false)
{
  mEntry.prev = 0;
  mEntry.next = 0;
  mEntry.signal = pSignal;
  mEntry.call = this;
  if (pSignal != 0)
  {
    mObject.append(mEntry);
  }
}

cAbstractSlotCall::cAbstractSlotCall(cAbstractSlotCall const& other) : cAbstractSlotCall(other.mObject, 0) {}

cAbstractSlotCall::~cAbstractSlotCall()
{
  if (mpSignal == 0)
  {
    return;
  }
  // The entry lives in this call and must go even while the receiver detaches.
  if (mEntry.prev != 0)
  {
    mObject.unlink(mEntry);
  }
  mObject.notifySignalDetached(*mpSignal);
}

bool cAbstractSlotCall::matchSlotOfObject(cConnectable const* object) const
{
  return object == &mObject;
}

void cAbstractSlotCall::call(msa::cReferenceFrame&) const
{
  mstd::writeDebugLine("rmi/cAbstractSlotCall", 54, "DummyCall (1)");
}

void cAbstractSlotCall::call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const
{
  mstd::writeDebugStackTrace("rmi/cAbstractSlotCall", 65);
  mstd::writeDebugLine("rmi/cAbstractSlotCall", 66, "DummyCall (2)");
}

void cAbstractSlotCall::reAssign(cAbstractSignal* signal)
{
  if (!(signal != 0))
  {
    cSTDExceptions::throwAssertionFailed("signal != 0", "rmi/cAbstractSlotCall", __LINE__);
  }
  if (mpSignal != 0)
  {
    mObject.reAssign(*mpSignal, *signal);
  }
}

// As long as setPublicSlot() is only declared there is no public slot.
mstd::cAsciiString cAbstractSlotCall::publicSlotName() const
{
  cRMIExceptions::throwSlotNotPublic();
}
} // namespace mrmi
