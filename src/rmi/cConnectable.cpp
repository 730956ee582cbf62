#include "rmi/cConnectable.h"

#include "rmi/cAbstractSignal.h"
#include "rmi/cAbstractSlotCall.h"
#include "std/debugLines.h"

namespace mrmi
{
/// The span of detachAllSignals(): its mark, and its place in the list.
class cConnectable::cDetaching
{
public:
  explicit cDetaching(cConnectable& object) : mObject(object), mWasDetaching(object.mDetaching)
  {
    mWalk.pos = &object.mSignals;
    mWalk.outer = object.mpWalk;
    object.mpWalk = &mWalk;
    object.mDetaching = true;
  }
  cDetaching(cDetaching const&) = delete;
  cDetaching& operator=(cDetaching const&) = delete;
  ~cDetaching()
  {
    mObject.mDetaching = mWasDetaching;
    mObject.mpWalk = mWalk.outer;
  }

  /// Signal of the next entry, or null behind the last one.
  cAbstractSignal* next()
  {
    mWalk.pos = mWalk.pos->next;
    return mWalk.pos != &mObject.mSignals ? mWalk.pos->signal : 0;
  }

private:
  cConnectable& mObject;
  bool mWasDetaching;
  cWalk mWalk;
};

cConnectable::cConnectable() : mpPublicSlots(0), mpPublicSignals(0), mDetaching(false), miIndex(0), mpWalk(0)
{
  mSignals.prev = &mSignals;
  mSignals.next = &mSignals;
  mSignals.signal = 0;
  mSignals.call = 0;
}

cConnectable::~cConnectable()
{
  {
    cDetaching detaching(*this);
    while (cAbstractSignal* signal = detaching.next())
    {
      // A signal that fails must not keep the others from dropping their calls.
      try
      {
        signal->notifyConnectableDestroyed(*this);
      }
      catch (...)
      {
        mstd::writeCaughtException("rmi/cConnectable", __LINE__);
      }
    }
  }
  // A slot call that no signal took away must not come back to this object.
  for (cEntry* entry = mSignals.next; entry != &mSignals; entry = entry->next)
  {
    if (entry->call != 0)
    {
      entry->call->mpSignal = 0;
    }
  }
  removeAllEntries();
}

bool cConnectable::operator==(cAbstractSlotCall const* call) const
{
  return call->matchSlotOfObject(this);
}

void cConnectable::notifySignalAttached(cAbstractSignal& signal)
{
  cEntry* const entry = new cEntry;
  entry->signal = &signal;
  entry->call = 0;
  append(*entry);
}

void cConnectable::notifySignalDetached(cAbstractSignal& signal)
{
  if (mDetaching)
  {
    return;
  }
  cEntry* entry = mSignals.next;
  while (entry != &mSignals)
  {
    cEntry* const next = entry->next;
    if (entry->signal == &signal)
    {
      removeEntry(*entry);
    }
    entry = next;
  }
}

void cConnectable::detachAllSignals()
{
  cDetaching detaching(*this);
  while (cAbstractSignal* signal = detaching.next())
  {
    signal->notifyConnectableDestroyed(*this);
  }
}

void cConnectable::clear()
{
  detachAllSignals();
  removeAllEntries();
}

void cConnectable::reAssign(cAbstractSignal& oldSignal, cAbstractSignal& newSignal)
{
  // An entry that is renamed no longer belongs to its slot call, which keeps the old signal: when the call goes, the
  // entry stays. So it moves to the heap. All memory is taken first, and then nothing can fail.
  cEntry* fresh = 0;
  try
  {
    for (cEntry* entry = mSignals.next; entry != &mSignals; entry = entry->next)
    {
      if (entry->signal == &oldSignal && entry->call != 0)
      {
        cEntry* const replacement = new cEntry;
        replacement->next = fresh;
        fresh = replacement;
      }
    }
  }
  catch (...)
  {
    while (fresh != 0)
    {
      cEntry* const next = fresh->next;
      delete fresh;
      fresh = next;
    }
    throw;
  }

  for (cEntry* entry = mSignals.next; entry != &mSignals; entry = entry->next)
  {
    if (entry->signal != &oldSignal)
    {
      continue;
    }
    if (entry->call != 0)
    {
      cEntry* const replacement = fresh;
      fresh = fresh->next;
      replacement->call = 0;
      replacement->prev = entry;
      replacement->next = entry->next;
      entry->next->prev = replacement;
      entry->next = replacement;
      for (cWalk* walk = mpWalk; walk != 0; walk = walk->outer)
      {
        if (walk->pos == entry)
        {
          walk->pos = replacement;
        }
      }
      unlink(*entry);
      entry = replacement;
    }
    entry->signal = &newSignal;
  }
}

void cConnectable::append(cEntry& entry)
{
  entry.prev = mSignals.prev;
  entry.next = &mSignals;
  mSignals.prev->next = &entry;
  mSignals.prev = &entry;
}

void cConnectable::unlink(cEntry& entry)
{
  for (cWalk* walk = mpWalk; walk != 0; walk = walk->outer)
  {
    if (walk->pos == &entry)
    {
      walk->pos = entry.prev;
    }
  }
  entry.prev->next = entry.next;
  entry.next->prev = entry.prev;
  entry.prev = 0;
  entry.next = 0;
}

void cConnectable::removeEntry(cEntry& entry)
{
  unlink(entry);
  if (entry.call == 0)
  {
    delete &entry;
  }
}

void cConnectable::removeAllEntries()
{
  while (mSignals.next != &mSignals)
  {
    removeEntry(*mSignals.next);
  }
}
} // namespace mrmi
