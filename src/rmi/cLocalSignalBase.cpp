#include "rmi/cLocalSignalBase.h"

#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
cLocalSignalBase::cLocalSignalBase() : mNIC(0), mpInvocation(0) {}

cLocalSignalBase::~cLocalSignalBase()
{
  destroyCalls();
}

void cLocalSignalBase::destroyCalls()
{
  checkNIC(mNIC);
  for (cInvocation* invocation = mpInvocation; invocation != 0; invocation = invocation->mpOuter)
  {
    invocation->mpSignal = 0;
  }
  unsigned int const count = mSlots.length();
  mSlots.cut(0); // a destructor of a slot call may ask this signal to disconnect
  for (unsigned int i = 0; i < count; ++i)
  {
    destroyCall(mSlots[i]);
  }
}

void cLocalSignalBase::notifyConnectableDestroyed(cConnectable& connectable)
{
  removeCalls(connectable);
}

void cLocalSignalBase::connect(cConnectable&, mstd::cAsciiString const&, SlotResolving)
{
  cRMIExceptions::throwIndirectLocalConnection();
}

void cLocalSignalBase::disconnect(cConnectable const& connectable)
{
  removeCalls(connectable);
}

void cLocalSignalBase::addParameterInfo(cPublicSignal&) {}

void cLocalSignalBase::adopt(cAbstractSlotCall* call, ConnectionPolicy policy)
{
  if (!(call != 0))
  {
    cSTDExceptions::throwAssertionFailed("call != 0", "rmi/cLocalSignalBase", __LINE__);
  }
  bool const isAppended = policy == Append;
  try
  {
    mSlots.insert(isAppended ? mSlots.length() : 0, call);
  }
  catch (...)
  {
    destroyCall(call);
    throw;
  }
  // What comes to the front of a running signal waits for the next invocation, wherever the running one stands.
  call->mCalled = !isAppended && mNIC != 0;
}

void cLocalSignalBase::throwIfUnconnected() const
{
  if (invocationBehavior() == ThrowIfUnconnected)
  {
    cRMIExceptions::throwUnconnectedSignal();
  }
}

// Takes a call and its own entry at the receiver apart. The search for further entries of this signal, which a slot
// call that dies alone makes at its receiver, is spared: the calls of a receiver leave a signal together, and the
// search would make the death of n signals with one receiver cost n * n. Only entries that belong to no call are looked
// for, where there are any.
void cLocalSignalBase::release(cAbstractSlotCall& call)
{
  if (call.mEntry.prev != 0)
  {
    call.mObject.unlink(call.mEntry);
  }
  if (call.mpSignal != 0 && call.mObject.miHeapEntries != 0)
  {
    call.mObject.removeHeapEntries(*call.mpSignal);
  }
  call.mpSignal = 0;
}

void cLocalSignalBase::destroyCall(cAbstractSlotCall* call)
{
  release(*call);
  delete call;
}

void cLocalSignalBase::removeCalls(cConnectable const& connectable)
{
  bool isAnyRemoved = false;
  // Slot calls may have their own notion of a match. All are asked before anything changes.
  for (unsigned int i = 0; i < mSlots.length(); ++i)
  {
    cAbstractSlotCall* const call = mSlots[i];
    call->mRemoved = connectable == call;
    isAnyRemoved = isAnyRemoved || call->mRemoved;
  }
  if (!isAnyRemoved)
  {
    return;
  }

  // The calls to go are taken out first and destroyed afterwards, so the pool is whole whenever a destructor runs.
  cConnectable::cEntry* removed = 0;
  cConnectable::cEntry** removedEnd = &removed;
  unsigned int kept = 0;
  for (unsigned int i = 0; i < mSlots.length(); ++i)
  {
    cAbstractSlotCall* const call = mSlots[i];
    if (!call->mRemoved)
    {
      mSlots.set(kept, call);
      ++kept;
      continue;
    }
    release(*call);
    *removedEnd = &call->mEntry;
    removedEnd = &call->mEntry.next;
  }
  *removedEnd = 0;
  mSlots.cut(kept);

  while (removed != 0)
  {
    cAbstractSlotCall* const call = removed->call;
    removed = removed->next;
    delete call;
  }
}
} // namespace mrmi
