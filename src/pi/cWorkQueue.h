#ifndef MORTISE_PI_CWORKQUEUE_H
#define MORTISE_PI_CWORKQUEUE_H

#include "pi/cWorkTable.h"
#include "pi/piTypes.h"
#include "rmi/cConnectable.h"
#include "std/tAutoPtr.h"
#include "std/tList.h"
#include "std/tSharedObject.h"

namespace mpi
{

class cAbstractProcessEvents;
class cLocalEventLoop;
class cWork;
struct cWorkQueueLink;

/// The brain of the main loop: a cooperative scheduler on one thread.
///
/// A turn walks the list of work once, runs what is due, each item to its end, works out how long the
/// process may sleep, and leaves the sleeping to the event processor. A turn that ran something does not
/// sleep. Actions may add, start, stop and destroy work, and may run the queue themselves (cLocalEventLoop).
///
/// Ownership: owns its event processor and the work that comes in a shared object or from createJob().
///            Work added by reference stays its owner's; the queue drops it when it is destroyed.
/// Errors:    what leaves an action leaves the turn. The queue stays usable: the next turn takes a fresh walk.
/// Threads:   no lock. Everything belongs to the thread that calls process(), except while that is stopped.
/// Cost:      a turn is one walk of the list and one look at the clock, plus one look for each restart, and a
///            further walk only if work changed meanwhile. Adding and removing do not depend on the length.
class MORTISE_API cWorkQueue : public mrmi::cConnectable
{
public:
  typedef mstd::tList<mstd::tSharedObject<cWork>> tJobs;

  /// Without work and without event processor.
  cWorkQueue();
  cWorkQueue(cWorkQueue const&) = delete;
  cWorkQueue& operator=(cWorkQueue const&) = delete;
  /// Drops all work, then the event processor. The owned work may still use this queue in its destructor.
  ~cWorkQueue() override;

  /// One turn. Returns the number of work items still active; 0 without event processor, and with an asynchronous
  /// one, which does the work of the turn when it calls back. After a turn with nested turns in it the number is not to
  /// be relied on: nested walks count anew, and the outer walk goes on from there.
  unsigned int process();

  /// One pass: updateTimer() and, if there is something to wait for, a wait of the event processor. With
  /// `bRun` false nothing runs. Returns the number of active items. No event processor: mstd::cBugException.
  unsigned int processEvents(bool bRun);

  /// Runs what is due (if `bRun`) and walks again as long as work changes. Stores the milliseconds to sleep through
  /// `pDelay` unless that is null. Returns whether there is anything to wait for.
  bool updateTimer(bool bRun, unsigned int* pDelay);

  /// One walk of the list. Returns the milliseconds to sleep, and in `iNumRun` how many actions it ran. Work that
  /// failed three times in a row is stopped and reported by a mstd::cBugException that ends the walk.
  unsigned int internProcess(bool bRun, unsigned int& iNumRun);

  /// Takes over the processor in `pEvents`; the former one is destroyed. An empty holder clears the queue first.
  void setEvents(mstd::tAutoPtr<cAbstractProcessEvents> pEvents);
  /// The event processor, or null.
  cAbstractProcessEvents* events() const { return mpEvents.get(); }

  /// Adds work that stays its owner's. It is kept until it is removed or destroyed. O(1).
  void addJob(cWork& work);
  /// Adds work that the queue holds a share of. Work that is there already is not added again. O(1).
  /// An empty holder raises mstd::cBugException.
  void addJob(mstd::tSharedObject<cWork> job);
  /// Adds a new, stopped work. O(1).
  mstd::tSharedObject<cWork> createJob();
  /// Drops `work`; owned work is destroyed here, unless others hold it too. Unknown work is no error. O(1).
  void removeJob(cWork const& work);
  /// Drops all work.
  void clear();

  /// All entries in the order of addition. Entries of dropped work stay, empty, until the next turn.
  tJobs const& jobs() const { return mJobs; }
  /// Nesting depth of updateTimer(): 0 between turns.
  unsigned int level() const { return miLevel; }
  /// The work whose action is running, or null.
  cWork* current() const { return mpCurrent; }

  /// Writes a status report to the debug output. Debugging of each item is on afterwards, so that the next
  /// report tells more.
  void debugDump();

  /// \name Slots
  /// @{
  void sltNotifyWorkChanged(cWork* pWork);
  void sltWorkDestroyed(cWork const& work);
  void sltNotifyPEFinished();
  /// @}

private:
  friend class cAbstractProcessEvents;
  friend class cLocalEventLoop;
  friend class cWork;

  class cAdding;
  class cWalk;

  void checkEvents();
  unsigned int skipIdle(unsigned int index, cWalk& walk);
  void fetchAhead(unsigned int index);
  void visit(unsigned int index, cWalk& walk);
  void dispatch(cWork& work, piUInt64 iNow, piInt64& iWait);
  void sweep();
  unsigned int& countOf(cWork const& work);
  void connectChanged(cWork& work);
  void addNew(mstd::tSharedObject<cWork> const& job);
  unsigned int append(mstd::tSharedObject<cWork> const& job, bool bOwned);
  void updateLinks();
  void noteDescriptors(cWork const& work);
  cWorkQueueLink* linkOf(cWork const& work) const;
  void dropLink(cWork& work);
  mstd::tSharedObject<cWork> detach(unsigned int index);
  void drop(unsigned int index);
  void dumpWork(cWork const& work);

  mstd::tAutoPtr<cAbstractProcessEvents> mpEvents;
  tJobs mJobs;
  unsigned int miLevel;
  bool mChanged;
  unsigned int miLocalLoops;
  unsigned int miClearing;
  cWork* mpCurrent;
  unsigned int miTimedCount;
  unsigned int miAIOCount;
  unsigned int miWalks; // walks under way, of whatever kind: no node goes while an outer one may stand on it
  cWorkTable mTable;    // the nodes of mJobs as arrays
  piUInt64 miDescriptorChanges;
};

} // namespace mpi

#endif
