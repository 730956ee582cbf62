#ifndef MORTISE_PI_CABSTRACTPROCESSEVENTS_H
#define MORTISE_PI_CABSTRACTPROCESSEVENTS_H

#include "pi/piTypes.h"
#include "rmi/localSignal0.h"
#include "std/tList.h"
#include "std/tSharedObject.h"

namespace mpi
{

class cWork;
class cWorkQueue;

/// The part of the main loop that waits: for a time-out, or for whatever asynchronous work waits for.
///
/// A work queue owns one and calls it. A synchronous processor is driven: the queue calls yield() at
/// most once a turn. An asynchronous one runs by itself; it is told by yield() when to come back and
/// then fires sigFinished, which makes the queue run its due work.
///
/// Threads: called on the thread of the queue.
class MORTISE_API cAbstractProcessEvents
{
public:
  cAbstractProcessEvents();
  cAbstractProcessEvents(cAbstractProcessEvents const&) = delete;
  cAbstractProcessEvents& operator=(cAbstractProcessEvents const&) = delete;
  virtual ~cAbstractProcessEvents();

  /// True if it can watch asynchronous work. Where it cannot, the queue turns such work into periodic work.
  virtual bool supportsAIO() const = 0;
  /// True if it runs by itself and calls back; false if it is driven once a turn.
  virtual bool isAsynchronous() const = 0;
  /// Waits up to `iDelayMSec` milliseconds, sets the event flag of asynchronous work in `jobs` that became
  /// ready, and fires sigFinished as its last act. `iLevel` is the nesting depth of the queue. Entries of
  /// `jobs` may be dead, and an implementation neither adds, removes nor replaces entries.
  virtual void yield(unsigned int iLevel, mstd::tList<mstd::tSharedObject<cWork>>& jobs, unsigned int iDelayMSec) = 0;
  /// Ends a wait early, as far as the processor can.
  virtual void wakeUp() = 0;
  /// Called in place of a turn if the processor is asynchronous. Does nothing by default.
  virtual void poll();

  /// Fired at the end of each yield(). May be fired with nothing connected.
  mrmi::localSignal0<piVoid> sigFinished;

protected:
  /// True if `jobs` are those of the queue that owns this processor. `iChanges` is then a number that changes with
  /// every change of what there is to watch: of the entries, of whether they are started asynchronous work, and of
  /// their data, apart from descriptor lists that were given out for writing (cFDAIOData::isListShared()).
  bool descriptorChanges(mstd::tList<mstd::tSharedObject<cWork>> const& jobs, piUInt64& iChanges) const;

private:
  friend class cWorkQueue;

  cWorkQueue const* mpQueue = nullptr;  // the owner
  mutable piUInt64 miLatestChanges = 0; // the last number that was given out
};

} // namespace mpi

#endif
