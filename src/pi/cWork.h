#ifndef MORTISE_PI_CWORK_H
#define MORTISE_PI_CWORK_H

#include "pi/cWorkStat.h"
#include "pi/cWorkTable.h"
#include "pi/piTypes.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "rmi/localSignal2.h"
#include "std/cAsciiString.h"
#include "std/cTime.h"
#include "std/tAutoPtr.h"
#include "std/tList.h"
#include "std/tParentWatch.h"
#include "std/tSharedObject.h"

namespace mstd
{
class cAbstractException;
}

namespace mpi
{

class cAbstractAIOData;
class cWork;
class cWorkQueue;

// Where a queue holds a work: the queue searches its list neither for duplicates nor for the entry to remove, and the
// work tells it what has changed without a search. Work in one queue is the rule and costs no allocation.
struct cWorkQueueLink
{
  cWorkQueue* mpQueue = nullptr; // null only in the first link, and only if there is no queue
  piUInt64* mpKey = nullptr;     // the key of the entry in the table of the queue; null as mpQueue
  unsigned int miIndex = 0;      // of the entry in that table
  cWorkQueueLink* mpNext = nullptr;
};

/// The unit of scheduling: a one-shot task, a periodic task, or a task bound to asynchronous I/O.
///
/// A work item holds its own timing, signals and error count. What it does is whatever is connected to
/// sigAction, or what a derived class puts in its action(). It knows nothing of the queue that runs it:
/// it tells of each change through sigChanged.
///
/// Work items form a tree, which owns nothing: errors climb it to the first handler, and graphs draw it.
///
/// Units:     delays and intervals are milliseconds, times are microseconds since the epoch, in UTC.
/// Ownership: owns its asynchronous I/O data. It does not own its children.
/// Threads:   no lock; belongs to the thread that runs its queue. sigChanged fires on the caller's thread.
/// Cost:      without debugging a dispatch only counts. The rarely used signals are made on first use.
class MORTISE_API cWork
{
public:
  enum Type
  {
    SingleTask = 0, ///< runs once, at its planned time
    Periodic = 1,   ///< runs every interval() milliseconds; each period begins with the dispatch
    AIO = 2         ///< runs when its asynchronous I/O data reports an event
  };

  /// A stopped `SingleTask` without a name, known to no queue.
  cWork();
  cWork(cWork const&) = delete;
  cWork& operator=(cWork const&) = delete;
  /// Tells the queues and whoever listens to sigDestroyed(). Its children go to its parent.
  /// Must not run while the work's own action does.
  virtual ~cWork();

  /// What the work does; called by the queue. Counts, fires sigAction and settles the error count. What comes
  /// out of a slot is offered to the handlers (handleActionError()) and thrown on if none takes it; something
  /// that is no mstd::cAbstractException is shown to the handlers as a mstd::cRuntimeException.
  virtual void action();

  /// Fired by action(): the job.
  mrmi::localSignal0<piVoid> sigAction;
  /// Fired with this work after each change of timing or state.
  mrmi::localSignal1<piVoid, cWork*> sigChanged;

  /// (Re)starts with the type and interval that the work has.
  void start();
  /// (Re)starts `SingleTask` with a delay of `iInterval` milliseconds, or, with any other type, as `Periodic`
  /// work with that interval. Asynchronous work is made by setAIOData() only.
  void start(unsigned int iInterval, Type iType);
  /// Nothing runs until the next start. The work stays with its queue.
  void stop();
  /// As stop(), without telling anybody: for the queue.
  void markDone()
  {
    mStarted = false;
    publishKey(cWorkTable::Stopped);
    if (mType == AIO)
    {
      publishDescriptors();
    }
  }

  /// Makes this asynchronous work: takes over the object in `pData`, and starts. An empty holder stops
  /// work that had data. Former data is not destroyed: whoever replaces it takes it over before.
  void setAIOData(mstd::tAutoPtr<cAbstractAIOData> pData);
  /// The asynchronous I/O data; work without raises mstd::cBugException.
  cAbstractAIOData& aioData();
  cAbstractAIOData const& aioData() const;
  /// As aioData(), or null.
  cAbstractAIOData* hasAIOData() { return mpAIOData; }
  cAbstractAIOData const* hasAIOData() const { return mpAIOData; }

  void setName(mstd::cAsciiString const& sName);
  mstd::cAsciiString const& name() const { return mName; }

  /// Moment of the last (re)start, 0 before.
  mstd::cTime const& scheduledTime() const { return mScheduledTime; }
  /// When the work falls due, 0 before the first start.
  mstd::cTime const& plannedTime() const { return mPlannedTime; }
  Type type() const { return mType; }
  /// Milliseconds between two runs of `Periodic` work, 0 for a `SingleTask` whatever its delay was.
  unsigned int interval() const { return miInterval; }
  /// Only started work is looked at by the queue.
  bool isStarted() const { return mStarted; }

  /// With true a `SingleTask` stays with its queue after its run.
  void setForceKeep(bool bKeep);
  /// False for the only kind of work that the queue removes by itself: a `SingleTask` that is not kept by force.
  bool isKeep() const { return mForceKeep || mType == Periodic || mType == AIO; }

  /// With false, exceptions of the action go past all handlers, straight out of action(), and do not count.
  void setDelegateExceptions(bool bDelegate);
  bool isDelegateExceptions() const { return mDelegateExceptions; }

  /// Three or more failures since the last success or restart: the queue stops such work.
  bool isAmuck() const { return miErrorCount > 2; }

  cWorkStat& statistic() { return mStatistic; }
  cWorkStat const& statistic() const { return mStatistic; }
  /// Records times and stacks of starts and triggers from now on.
  void enableDebug();

  /// The parent work, or null.
  cWork* parent();
  cWork const* parent() const;
  /// Makes this the last child of `pParent`, or a root if that is null. This work itself as parent changes
  /// nothing. O(children of the former parent).
  void reparent(cWork* pParent);

  /// Fired by handleActionError() with the exception, and true if the error comes from a descendant.
  /// Whoever connects takes the error. A handler that throws passes it on to the parent.
  mrmi::localSignal2<piVoid, mstd::cAbstractException const&, bool>& sigActionError();
  /// Fired by the destructor.
  mrmi::localSignal1<piVoid, cWork const&>& sigDestroyed();

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wclass-conversion" // it is called by its name
  /// Fires sigAction and nothing else: no count, no handling of exceptions.
  operator void()
  {
    sigAction();
  }
#pragma GCC diagnostic pop

  /// Counts a failure and offers `e` to the handlers of this work and then of its ancestors; true if one took it.
  /// False at once, and nothing counted, without delegation of exceptions. The bool has no meaning.
  bool handleActionError(mstd::cAbstractException const& e, bool);

  /// The restart with the stored type and interval. The bool has no meaning.
  void internRestart(bool);
  /// The restart as `Periodic` or `SingleTask` work. The last bool has no meaning.
  void internRestart(unsigned int iInterval, bool bPeriodic, bool);

private:
  friend class cAbstractAIOData;
  friend class cWorkQueue;

  typedef mrmi::localSignal1<piVoid, cWork const&> tDestroyedSignal;
  typedef mrmi::localSignal2<piVoid, mstd::cAbstractException const&, bool> tActionErrorSignal;

  void planIn(unsigned int iDelayMSec);
  piUInt64 key() const;
  void publishKey()
  {
    publishKey(key());
  }
  void publishKey(piUInt64 iKey)
  {
    if (mQueueLink.mpKey != nullptr)
    {
      *mQueueLink.mpKey = iKey;
      if (__builtin_expect(mQueueLink.mpNext != nullptr, 0))
      {
        publishKeyToOthers(iKey);
      }
    }
  }
  void publishKeyToOthers(piUInt64 iKey);
  void publishDescriptors();
  bool offerActionError(cWork& handler, mstd::cAbstractException const& e);

  // What every dispatch and restart touches stands together, behind the signals that they fire.
  mstd::cTime mScheduledTime;
  mstd::cTime mPlannedTime;
  Type mType;
  unsigned int miInterval;
  bool mStarted;
  bool mForceKeep;
  bool mDelegateExceptions;
  unsigned int miErrorCount;
  cAbstractAIOData* mpAIOData; // owned; a plain pointer since replaced data is left to the caller
  cWorkQueueLink mQueueLink;
  cWorkStat mStatistic;

  mstd::tAutoPtr<tDestroyedSignal> mpSigDestroyed;
  mstd::tAutoPtr<tActionErrorSignal> mpSigActionError;
  mstd::cAsciiString mName;
  mstd::tParentWatch<cWork> mParentWatch;
};

} // namespace mpi

#endif
