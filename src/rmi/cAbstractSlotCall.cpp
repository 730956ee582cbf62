#include "rmi/cAbstractSlotCall.h"

#include "rmi/cPublicSlot.h"
#include "rmi/cRMIExceptions.h"
#include "sa/cReferenceFrame.h"
#include "std/cAbstractException.h"
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

mstd::cAsciiString cAbstractSlotCall::publicSlotName() const
{
  if (mpPublicSlot == 0)
  {
    cRMIExceptions::throwSlotNotPublic();
  }
  return mpPublicSlot->name();
}

cPublicSlot& cAbstractSlotCall::registerSlotByInterface(mstd::cAsciiString const& name,
                                                        mstd::cAsciiString const& returnType,
                                                        mstd::cAsciiString const& paramTypes,
                                                        mstd::cAsciiString const& description,
                                                        mstd::tAutoPtr<cAbstractSlotCall> call)
{
  return mObject.registerSlot(name, returnType, paramTypes, description, call);
}

void cAbstractSlotCall::checkFrame(msa::cReferenceFrame& frame, unsigned int arguments)
{
  frame.restartReading();
  if (arguments == 0)
  {
    frame.readNext<piVoid>();
  }
  else
  {
    try
    {
      for (unsigned int i = 0; i < arguments; ++i)
      {
        frame.skipNext();
      }
      frame.readNext<piVoid>();
    }
    catch (mstd::cAbstractException const& e)
    {
      cRMIExceptions::throwMissingReturnValue(e);
    }
  }
  frame.restartReading();
}

void cAbstractSlotCall::invokeByName(cConnectable const& target, mstd::cAsciiString const& slotName)
{
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(result, true, false);
  target.invokeIndirectSlot(slotName, frame);
}

void cAbstractSlotCall::invokeResolved(cConnectable const& target, cAbstractSlotCall const& call)
{
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(result, true, false);
  target.callPublicSlot(call, frame);
}
} // namespace mrmi
