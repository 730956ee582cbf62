#include "rmi/cConnectable.h"

#include "rmi/cAbstractRMIFactory.h"
#include "rmi/cAbstractSignal.h"
#include "rmi/cAbstractSlotCall.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/cRMIExceptions.h"
#include "std/cAsciiString.h"
#include "std/cSTDExceptions.h"
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

/// A call by name that runs. The outermost one keeps the published slots that go meanwhile until it ends.
class cConnectable::cRunning
{
public:
  explicit cRunning(cConnectable const& object)
      : mpObject(&object), mpOuter(object.mpRunning), mpKept(0), mppKeptEnd(&mpKept)
  {
    object.mpRunning = this;
  }
  cRunning(cRunning const&) = delete;
  cRunning& operator=(cRunning const&) = delete;
  ~cRunning()
  {
    if (mpObject != 0)
    {
      mpObject->mpRunning = mpOuter;
    }
    while (mpKept != 0)
    {
      cPublicSlot* const slot = mpKept;
      mpKept = slot->mpNextKept;
      delete slot;
    }
  }

  /// Takes `slot` over.
  void keep(cPublicSlot* slot)
  {
    cRunning* outermost = this;
    while (outermost->mpOuter != 0)
    {
      outermost = outermost->mpOuter;
    }
    slot->mpNextKept = 0;
    *outermost->mppKeptEnd = slot;
    outermost->mppKeptEnd = &slot->mpNextKept;
  }

  /// Tells all calls that run that the object is gone.
  void forgetObject()
  {
    for (cRunning* running = this; running != 0; running = running->mpOuter)
    {
      running->mpObject = 0;
    }
  }

private:
  cConnectable const* mpObject; // null: gone
  cRunning* mpOuter;
  cPublicSlot* mpKept; // owned chain
  cPublicSlot** mppKeptEnd;
};

cConnectable::cConnectable()
    : miHeapEntries(0), mpPublicSlots(0), mpPublicSignals(0), mDetaching(false), miIndex(0), mpWalk(0), mpRunning(0)
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
  if (mpPublicSlots != 0)
  {
    dropPublicSlots();
    delete mpPublicSlots;
    mpPublicSlots = 0;
  }
  if (mpPublicSignals != 0)
  {
    delete mpPublicSignals;
    mpPublicSignals = 0;
  }
  if (mpRunning != 0)
  {
    mpRunning->forgetObject();
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
  ++miHeapEntries;
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
  if (mpPublicSlots != 0)
  {
    dropPublicSlots();
  }
  if (mpPublicSignals != 0)
  {
    mpPublicSignals->clear();
  }
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
      ++miHeapEntries;
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

namespace
{
// The first element with that name, or null.
template <typename Description>
Description* findByName(mstd::tPtrList<Description> const* list, mstd::cAsciiString const& name)
{
  if (list != 0)
  {
    for (Description* element : *list)
    {
      if (element->matchName(name))
      {
        return element;
      }
    }
  }
  return 0;
}

template <typename Description>
mstd::tPtrList<Description>& createOnDemand(mstd::tPtrList<Description>*& list)
{
  if (list == 0)
  {
    list = new mstd::tPtrList<Description>(mstd::tPtrList<Description>::Object);
  }
  return *list;
}

cAbstractSlotCall& present(mstd::tAutoPtr<cAbstractSlotCall> const& call)
{
  if (!(call.get() != 0))
  {
    cSTDExceptions::throwAssertionFailed("call.get() != 0", "rmi/cConnectable", __LINE__);
  }
  return *call;
}

cPublicSlot& append(mstd::tPtrList<cPublicSlot>& list, cPublicSlot* description)
{
  mstd::tAutoPtr<cPublicSlot> const slot(description);
  list.append(slot);
  description->slot()->setPublicSlot(description);
  return *description;
}

cPublicSignal& append(mstd::tPtrList<cPublicSignal>& list, cPublicSignal* description)
{
  mstd::tAutoPtr<cPublicSignal> const signal(description);
  list.append(signal);
  description->signal()->setPublicSignal(description);
  return *description;
}

char const* const UnknownArguments = "(?)";
} // namespace

mstd::tPtrList<cPublicSlot>& cConnectable::codRSlots()
{
  return createOnDemand(mpPublicSlots);
}

mstd::tPtrList<cPublicSignal>& cConnectable::codRSignals()
{
  return createOnDemand(mpPublicSignals);
}

cPublicSlot& cConnectable::registerSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                                        mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description,
                                        mstd::tAutoPtr<cAbstractSlotCall> call)
{
  present(call);
  mstd::tPtrList<cPublicSlot>& list = codRSlots();
  return mrmi::append(list, new cPublicSlot(name, returnType, paramTypes, description, call));
}

cPublicSignal& cConnectable::registerSignal(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                                            mstd::cAsciiString const& paramTypes, unsigned int type,
                                            mstd::cAsciiString const& description, cAbstractSignal& signal)
{
  mstd::tPtrList<cPublicSignal>& list = codRSignals();
  return mrmi::append(list, new cPublicSignal(name, returnType, paramTypes, type, description, signal));
}

cPublicSlot& cConnectable::registerRemoteSlot(msa::cAbstractDeserializer& deserializer, cAbstractRMIFactory& factory)
{
  mstd::tPtrList<cPublicSlot>& list = codRSlots();
  mstd::tAutoPtr<cAbstractSlotCall> const call(factory.createRemoteSlotCall(*this));
  present(call);
  return mrmi::append(list, new cPublicSlot(deserializer, call));
}

cPublicSlot& cConnectable::registerRemoteSlot(mstd::cAsciiString const& name, mstd::tAutoPtr<cAbstractSlotCall> call)
{
  return registerSlot(name, "", "", "tmp remoteslot", call);
}

cPublicSignal& cConnectable::registerRemoteSignal(msa::cAbstractDeserializer& deserializer,
                                                  cAbstractRMIFactory& factory)
{
  mstd::tPtrList<cPublicSignal>& list = codRSignals();
  cAbstractSignal* const signal = factory.createRemoteSignal(index());
  if (!(signal != 0))
  {
    cSTDExceptions::throwAssertionFailed("signal != 0", "rmi/cConnectable", __LINE__);
  }
  return mrmi::append(list, new cPublicSignal(deserializer, *signal));
}

cPublicSlot& cConnectable::findPublicSlot(mstd::cAsciiString const& name) const
{
  cPublicSlot* const slot = findSlotOf(name);
  if (slot == 0)
  {
    cRMIExceptions::throwNoSuchSlot(name, UnknownArguments);
  }
  return *slot;
}

cAbstractSlotCall* cConnectable::tryFindSlot(mstd::cAsciiString const& name) const
{
  cPublicSlot const* const slot = findSlotOf(name);
  return slot != 0 ? slot->slot() : 0;
}

cPublicSlot* cConnectable::tryFindPublicSlot(cAbstractSlotCall const& call) const
{
  if (mpPublicSlots != 0)
  {
    for (cPublicSlot* slot : *mpPublicSlots)
    {
      if (slot->slot() == &call)
      {
        return slot;
      }
    }
  }
  return 0;
}

mstd::cAsciiString cConnectable::publicSlotName(cAbstractSlotCall const& call) const
{
  cPublicSlot const* const slot = tryFindPublicSlot(call);
  return slot != 0 ? slot->name() : mstd::cAsciiString("unknown");
}

cAbstractSignal& cConnectable::findSignal(mstd::cAsciiString const& name)
{
  return *findPublicSignal(name).signal();
}

cPublicSignal& cConnectable::findPublicSignal(mstd::cAsciiString const& name) const
{
  cPublicSignal* const signal = findSignalOf(name);
  if (signal == 0)
  {
    cRMIExceptions::throwNoSuchSignal(name);
  }
  return *signal;
}

void cConnectable::invokeIndirectSlot(mstd::cAsciiString const& name, msa::cReferenceFrame& frame) const
{
  cAbstractSlotCall const* const call = tryFindSlot(name);
  if (call == 0)
  {
    cRMIExceptions::throwNoSuchSlot(name, frame);
  }
  callPublicSlot(*call, frame);
}

void cConnectable::invokeIndirectRemoteSlot(mstd::cAsciiString const& name, msa::cAbstractDeserializer& arguments,
                                            msa::cAbstractSerializer& results) const
{
  cAbstractSlotCall const* const call = tryFindSlot(name);
  if (call == 0)
  {
    cRMIExceptions::throwNoSuchSlot(name, UnknownArguments);
  }
  cRunning const running(*this);
  call->call(arguments, results);
}

void cConnectable::callPublicSlot(cAbstractSlotCall const& call, msa::cReferenceFrame& frame) const
{
  cRunning const running(*this);
  call.call(frame);
}

cPublicSlot* cConnectable::findSlotOf(mstd::cAsciiString const& name) const
{
  return findByName(mpPublicSlots, name);
}

cPublicSignal* cConnectable::findSignalOf(mstd::cAsciiString const& name) const
{
  return findByName(mpPublicSignals, name);
}

void cConnectable::dropPublicSlots()
{
  if (mpRunning != 0)
  {
    for (cPublicSlot*& slot : *mpPublicSlots)
    {
      mpRunning->keep(slot);
      slot = 0;
    }
  }
  mpPublicSlots->clear();
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
    --miHeapEntries;
    delete &entry;
  }
}

void cConnectable::removeHeapEntries(cAbstractSignal& signal)
{
  if (mDetaching)
  {
    return;
  }
  cEntry* entry = mSignals.next;
  while (entry != &mSignals && miHeapEntries != 0)
  {
    cEntry* const next = entry->next;
    if (entry->call == 0 && entry->signal == &signal)
    {
      removeEntry(*entry);
    }
    entry = next;
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
