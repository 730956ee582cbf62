#include "pi/cWorkQueue.h"

#include "mp/cLocker.h"
#include "pi/cAbstractAIOData.h"
#include "pi/cAbstractOut.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cPIExceptions.h"
#include "pi/cSysTime.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/piStackTrace.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cDateTime.h"

namespace mpi
{

namespace
{

char const* const SourceMark = "pi/cWorkQueue";

// With nothing but descriptors to wait for the process still wakes this often.
unsigned int const AIOOnlySleepMSec = 10000;

unsigned int const FetchAhead = 6;

piInt64 mSecUntil(piUInt64 iPlanned, piUInt64 iNow)
{
  return static_cast<piInt64>((mstd::cTime(iPlanned) - mstd::cTime(iNow)).toMSec());
}

// One up for the life of the guard.
class cCountGuard
{
public:
  explicit cCountGuard(unsigned int& iCount) : miCount(iCount) { ++miCount; }
  cCountGuard(cCountGuard const&) = delete;
  cCountGuard& operator=(cCountGuard const&) = delete;
  ~cCountGuard() { --miCount; }

private:
  unsigned int& miCount;
};

// Makes a work the current one for the life of the guard.
class cCurrentGuard
{
public:
  cCurrentGuard(cWork*& pCurrent, cWork& work) : mpCurrent(pCurrent), mpFormer(pCurrent) { pCurrent = &work; }
  cCurrentGuard(cCurrentGuard const&) = delete;
  cCurrentGuard& operator=(cCurrentGuard const&) = delete;
  ~cCurrentGuard() { mpCurrent = mpFormer; }

private:
  cWork*& mpCurrent;
  cWork* mpFormer;
};

// One line of a report.
class cDebugLine
{
public:
  explicit cDebugLine(unsigned int iLine) : mOut(system().out), mLock(mOut.mutex())
  {
    mOut.debugMessage(SourceMark, iLine);
  }
  cDebugLine(cDebugLine const&) = delete;
  cDebugLine& operator=(cDebugLine const&) = delete;
  ~cDebugLine()
  {
    try
    {
      mOut << "\n" << cAbstractOut::clearDebugMessage();
    }
    catch (...)
    {
      // A line that can't be finished for lack of memory; the next one sets its own position.
    }
  }

  template <class tValue>
  cDebugLine& operator<<(tValue const& value)
  {
    mOut << value;
    return *this;
  }

private:
  cAbstractOut& mOut;
  mp::cLocker::cLock mLock;
};

} // namespace

// Adds an entry, and takes it back unless the rest of the addition succeeds too.
class cWorkQueue::cAdding
{
public:
  cAdding(cWorkQueue& queue, mstd::tSharedObject<cWork> const& job, bool bOwned)
      : mQueue(queue), miIndex(queue.append(job, bOwned))
  {
  }
  cAdding(cAdding const&) = delete;
  cAdding& operator=(cAdding const&) = delete;
  ~cAdding()
  {
    if (!mFinished)
    {
      mQueue.drop(miIndex);
    }
  }
  void finish() { mFinished = true; }

private:
  cWorkQueue& mQueue;
  unsigned int miIndex;
  bool mFinished = false;
};

// What one walk has found so far. The shortest wait is kept as the time at which it ends, so that it is compared with
// planned times as they stand.
class cWorkQueue::cWalk
{
public:
  cWalk(piUInt64 now, bool bRun)
      : miNow(now), miDueBefore(now + USecPerMSec), miFarFrom(now + MaxSignedMSec * USecPerMSec), mRun(bRun)
  {
  }

  // The minimum is kept in 32 bits and compared as a signed number: once it is beyond 2^31 ms it stays.
  void limitSleep(piInt64 iWait)
  {
    if (miSleepEnd == NoMinimum || iWait < static_cast<piInt32>(sleep()))
    {
      miFarSleep = static_cast<unsigned int>(iWait);
      miSleepEnd = static_cast<piInt32>(miFarSleep) < 0 ? 0 : miNow + miFarSleep * USecPerMSec;
    }
  }
  unsigned int sleep() const
  {
    if (miSleepEnd == NoMinimum)
    {
      return 0;
    }
    return miSleepEnd == 0 ? miFarSleep : static_cast<unsigned int>((miSleepEnd - miNow) / USecPerMSec);
  }

  static piUInt64 const USecPerMSec = 1000;
  static piUInt64 const MaxSignedMSec = 1ULL << 31;
  static piUInt64 const NoMinimum = ~0ULL;

  piUInt64 const miNow;
  piUInt64 const miDueBefore; // planned before this: nothing to wait for
  piUInt64 const miFarFrom;   // planned from this on: the wait has no place in 31 bits
  bool const mRun;
  unsigned int miNumRun = 0;
  piUInt64 miSleepEnd = NoMinimum; // 0: the minimum is miFarSleep, and nothing is less
  unsigned int miFarSleep = 0;
  bool mEraseWanted = false;
};

cWorkQueue::cWorkQueue()
    : miLevel(0), mChanged(false), miLocalLoops(0), miClearing(0), mpCurrent(nullptr), miTimedCount(0), miAIOCount(0),
      miWalks(0), miDescriptorChanges(0)
{
}

cWorkQueue::~cWorkQueue()
{
  clear();
}

unsigned int cWorkQueue::process()
{
  if (mpEvents.get() == nullptr)
  {
    return 0;
  }
  if (mpEvents->isAsynchronous())
  {
    mpEvents->poll();
    return 0;
  }
  return processEvents(true);
}

unsigned int cWorkQueue::processEvents(bool bRun)
{
  checkEvents();
  unsigned int iDelay = 0;
  bool const bBlock = updateTimer(bRun, &iDelay);
  // An action may have taken the processor away.
  if (mpEvents.get() != nullptr && (bBlock || mpEvents->isAsynchronous()))
  {
    mpEvents->yield(miLevel, mJobs, iDelay);
  }
  return miTimedCount + miAIOCount;
}

bool cWorkQueue::updateTimer(bool bRun, unsigned int* pDelay)
{
  cCountGuard level(miLevel);
  bool bRan = false;
  unsigned int iSleep = 0;
  do
  {
    mChanged = false;
    unsigned int iNumRun = 0;
    iSleep = internProcess(bRun, iNumRun);
    bRan = bRan || iNumRun != 0;
    bRun = false;
  } while (mChanged);

  // A synchronous loop that has done anything gets back to its caller first.
  if (bRan && (mpEvents.get() == nullptr || !mpEvents->isAsynchronous()))
  {
    iSleep = 0;
  }
  if (pDelay != nullptr)
  {
    *pDelay = iSleep;
  }
  return (miTimedCount != 0 && iSleep != 0) || miAIOCount != 0;
}

unsigned int cWorkQueue::internProcess(bool bRun, unsigned int& iNumRun)
{
  iNumRun = 0;
  checkEvents();
  miTimedCount = 0;
  miAIOCount = 0;
  cWalk walk(static_cast<piUInt64>(usecSinceEpoch()), bRun);
  cCountGuard walks(miWalks);
  for (unsigned int i = 0; i < mTable.length(); ++i)
  {
    if (mTable.keys()[i] >= walk.miDueBefore)
    {
      i = skipIdle(i, walk);
      if (i == mTable.length())
      {
        break;
      }
    }
    fetchAhead(i + FetchAhead);
    visit(i, walk);
  }
  iNumRun = walk.miNumRun;

  // An outer walk may stand on any node.
  if (miLevel == 1 && miWalks == 1 && walk.mEraseWanted)
  {
    sweep();
  }
  if (miTimedCount == 0 && miAIOCount != 0)
  {
    return AIOOnlySleepMSec;
  }
  return walk.sleep();
}

// Passes over the entries from `index` on with which there is nothing to do but to count them, and returns the index of
// the first other one, or the number of entries.
unsigned int cWorkQueue::skipIdle(unsigned int index, cWalk& walk)
{
  bool bWatchesAIO = false;
  piUInt64 const* const pKeys = mTable.keys();
  unsigned int const length = mTable.length();
  unsigned int iTimed = 0;
  unsigned int iAIO = 0;
  piUInt64 iSleepEnd = walk.miSleepEnd;
  for (; index < length; ++index)
  {
    piUInt64 const iKey = pKeys[index];
    if (iKey < walk.miDueBefore)
    {
      break;
    }
    if (iKey < walk.miFarFrom)
    {
      ++iTimed;
      iSleepEnd = iKey < iSleepEnd ? iKey : iSleepEnd;
    }
    else if (iKey != cWorkTable::Stopped)
    {
      // Asked anew each time: an action may have replaced the processor, or taken it away.
      bWatchesAIO =
          bWatchesAIO || (iKey == cWorkTable::NoEvent && mpEvents.get() != nullptr && mpEvents->supportsAIO());
      if (iKey != cWorkTable::NoEvent || !bWatchesAIO)
      {
        break;
      }
      ++iAIO;
    }
  }
  miTimedCount += iTimed;
  miAIOCount += iAIO;
  walk.miSleepEnd = iSleepEnd;
  return index;
}

// Many due entries in a row would wait for memory one after the other.
inline void cWorkQueue::fetchAhead(unsigned int index)
{
  if (index < mTable.length())
  {
    char const* const pWork = reinterpret_cast<char const*>(mTable.slot(index).mpWork);
    for (unsigned int i = 0; i < 4; ++i)
    {
      __builtin_prefetch(pWork + static_cast<size_t>(i) * 64, 1);
    }
  }
}

void cWorkQueue::visit(unsigned int index, cWalk& walk)
{
  cWork* const pWork = mTable.slot(index).mpWork;
  if (pWork == nullptr)
  {
    mTable.mark(index);
    walk.mEraseWanted = true;
    return;
  }
  piUInt64 const planned = pWork->mPlannedTime.get();
  piInt64 iWait = planned > walk.miNow ? mSecUntil(planned, walk.miNow) : 0;
  bool bIsAIO = pWork->mType == cWork::AIO;
  bool bDue = iWait <= 0;
  if (bIsAIO)
  {
    bDue = pWork->mpAIOData != nullptr && pWork->mpAIOData->isEvent();
    checkEvents();
    if (!mpEvents->supportsAIO())
    {
      pWork->internRestart(pWork->miInterval, true, false);
      bIsAIO = false;
      bDue = true;
    }
  }
  ++countOf(*pWork);

  if (walk.mRun && bDue)
  {
    // Owned work that is dropped by its own action lives until this dispatch is over.
    mstd::tSharedObject<cWork> const hold(mTable.slot(index).mOwned ? *mTable.entry(index)
                                                                    : mstd::tSharedObject<cWork>());
    dispatch(*pWork, walk.miNow, iWait);
    ++walk.miNumRun;
    if (!pWork->mStarted && !pWork->isKeep())
    {
      mTable.mark(index);
      --countOf(*pWork);
      walk.mEraseWanted = true;
    }
  }
  if (!bIsAIO)
  {
    walk.limitSleep(iWait);
  }
}

void cWorkQueue::dispatch(cWork& work, piUInt64 iNow, piInt64& iWait)
{
  switch (work.mType)
  {
  case cWork::SingleTask:
    work.markDone();
    break;
  case cWork::Periodic:
    work.markDone();
    work.internRestart(false);
    iWait = mSecUntil(work.mPlannedTime.get(), iNow);
    break;
  case cWork::AIO:
    break;
  }
  if (work.isAmuck())
  {
    work.stop();
    cPIExceptions::throwAmuckWork(work.mName);
  }
  cCurrentGuard current(mpCurrent, work);
  work.action();
  if (work.mpAIOData != nullptr)
  {
    work.mpAIOData->setEvent(false);
  }
}

void cWorkQueue::sweep()
{
  for (unsigned int i = mTable.takeFirstMarked(); i < mTable.length() && mTable.hasMarked(); ++i)
  {
    if (mTable.slot(i).mMarked)
    {
      // The work's destructor may use this queue: it finds the list whole, without the entry.
      mstd::tSharedObject<cWork> const job = detach(i);
      mJobs.erase(mTable.entry(i));
      mTable.makeGap(i);
    }
  }
  if (mTable.closeGaps())
  {
    updateLinks();
  }
}

unsigned int& cWorkQueue::countOf(cWork const& work)
{
  return work.mType == cWork::AIO ? miAIOCount : miTimedCount;
}

void cWorkQueue::checkEvents()
{
  if (mpEvents.get() == nullptr)
  {
    cDebugLine(__LINE__) << "*** WORKQUEUE HAS BEEN FOUND A BUG ***";
    debugDump();
    cDebugLine(__LINE__) << piStackTrace(128);
    cPIExceptions::throwNoProcessEvents();
  }
}

void cWorkQueue::setEvents(mstd::tAutoPtr<cAbstractProcessEvents> pEvents)
{
  if (pEvents.get() == nullptr)
  {
    clear();
  }
  cAbstractProcessEvents* const pNew = pEvents.get();
  if (pNew != mpEvents.get())
  {
    // The queue is without a processor while the former one goes.
    mstd::tAutoPtr<cAbstractProcessEvents> const pFormer(mpEvents);
  }
  mpEvents = pEvents;
  if (pNew != nullptr)
  {
    pNew->mpQueue = this;
    // A processor that served another queue before must not take this one's numbers for those it has seen there.
    if (miDescriptorChanges <= pNew->miLatestChanges)
    {
      miDescriptorChanges = pNew->miLatestChanges + 1;
    }
    pNew->sigFinished.connect(mrmi::cDirectLocalSlotCall0(*this, &cWorkQueue::sltNotifyPEFinished),
                              mrmi::cAbstractSignal::Append);
  }
}

void cWorkQueue::addJob(cWork& work)
{
  if (linkOf(work) != nullptr)
  {
    sltNotifyWorkChanged(nullptr);
    return;
  }
  cAdding adding(*this, mstd::tSharedObject<cWork>(&work, false), false);
  work.sigDestroyed().connect(mrmi::cDirectLocalSlotCall1(*this, &cWorkQueue::sltWorkDestroyed),
                              mrmi::cAbstractSignal::Append);
  connectChanged(work);
  work.reparent(mpCurrent);
  adding.finish();
  work.setForceKeep(true);
  sltNotifyWorkChanged(nullptr);
}

void cWorkQueue::addJob(mstd::tSharedObject<cWork> job)
{
  if (linkOf(*job) == nullptr)
  {
    addNew(job);
  }
}

mstd::tSharedObject<cWork> cWorkQueue::createJob()
{
  mstd::tSharedObject<cWork> job(new cWork);
  addNew(job);
  return job;
}

void cWorkQueue::addNew(mstd::tSharedObject<cWork> const& job)
{
  cAdding adding(*this, job, true);
  connectChanged(*job);
  job->reparent(mpCurrent);
  adding.finish();
  sltNotifyWorkChanged(nullptr);
}

void cWorkQueue::connectChanged(cWork& work)
{
  work.sigChanged.connect(mrmi::cDirectLocalSlotCall1(*this, &cWorkQueue::sltNotifyWorkChanged),
                          mrmi::cAbstractSignal::Append);
}

unsigned int cWorkQueue::append(mstd::tSharedObject<cWork> const& job, bool bOwned)
{
  cWorkQueueLink& first = job->mQueueLink;
  mstd::tAutoPtr<cWorkQueueLink> pFurther;
  if (first.mpQueue != nullptr)
  {
    pFurther.reinit(new cWorkQueueLink);
  }
  if (mTable.reserve())
  {
    updateLinks();
  }
  unsigned int const index = mTable.append(*job, mJobs.append(job), bOwned, job->key());
  noteDescriptors(*job);
  cWorkQueueLink& link = pFurther.get() != nullptr ? *pFurther : first;
  link.mpQueue = this;
  link.miIndex = index;
  link.mpKey = mTable.keys() + index;
  if (pFurther.get() != nullptr)
  {
    link.mpNext = first.mpNext;
    first.mpNext = pFurther.release();
  }
  return index;
}

// Entries have moved within the table.
void cWorkQueue::updateLinks()
{
  for (unsigned int i = 0; i < mTable.length(); ++i)
  {
    if (cWork const* const pWork = mTable.slot(i).mpWork)
    {
      cWorkQueueLink& link = *linkOf(*pWork);
      link.miIndex = i;
      link.mpKey = mTable.keys() + i;
    }
  }
}

// An entry of asynchronous work has come or goes.
void cWorkQueue::noteDescriptors(cWork const& work)
{
  if (work.mType == cWork::AIO)
  {
    ++miDescriptorChanges;
  }
}

cWorkQueueLink* cWorkQueue::linkOf(cWork const& work) const
{
  for (cWorkQueueLink* pLink = &const_cast<cWork&>(work).mQueueLink; pLink != nullptr; pLink = pLink->mpNext)
  {
    if (pLink->mpQueue == this)
    {
      return pLink;
    }
  }
  return nullptr;
}

void cWorkQueue::dropLink(cWork& work)
{
  cWorkQueueLink& first = work.mQueueLink;
  if (first.mpQueue == this)
  {
    cWorkQueueLink* const pNext = first.mpNext;
    if (pNext == nullptr)
    {
      first = cWorkQueueLink();
    }
    else
    {
      first = *pNext;
      delete pNext;
    }
    return;
  }
  for (cWorkQueueLink* pLink = &first; pLink->mpNext != nullptr; pLink = pLink->mpNext)
  {
    cWorkQueueLink* const pNext = pLink->mpNext;
    if (pNext->mpQueue == this)
    {
      pLink->mpNext = pNext->mpNext;
      delete pNext;
      return;
    }
  }
}

// Empties an entry that is linked, and gives its work to the caller.
mstd::tSharedObject<cWork> cWorkQueue::detach(unsigned int index)
{
  mstd::tSharedObject<cWork> job;
  job.swap(*mTable.entry(index));
  cWork*& pWork = mTable.slot(index).mpWork;
  if (pWork != nullptr)
  {
    noteDescriptors(*pWork);
    dropLink(*pWork);
    pWork = nullptr;
    mTable.setKey(index, cWorkTable::Dead);
  }
  return job;
}

void cWorkQueue::drop(unsigned int index)
{
  mTable.mark(index);
  // The work goes when nothing else is left to do here: its destructor may use this queue.
  detach(index);
}

void cWorkQueue::removeJob(cWork const& work)
{
  if (mpCurrent == &work)
  {
    mpCurrent = nullptr;
  }
  if (cWorkQueueLink const* const pLink = linkOf(work))
  {
    drop(pLink->miIndex);
  }
}

void cWorkQueue::clear()
{
  cCountGuard clearing(miClearing);
  cCountGuard walk(miWalks);
  for (unsigned int i = 0; i < mTable.length(); ++i)
  {
    if (mTable.slot(i).mpNode != nullptr)
    {
      drop(i);
    }
  }
  sltNotifyWorkChanged(nullptr);
}

void cWorkQueue::debugDump()
{
  cDebugLine(__LINE__) << "WorkQueue status:";
  if (mpEvents.get() != nullptr)
  {
    cDebugLine(__LINE__) << "Have event object ("
                         << (mpEvents->isAsynchronous() ? "asynchronous event processor"
                                                        : "synchronous event processor")
                         << ")";
  }
  else
  {
    cDebugLine(__LINE__) << "No event processor!";
  }
  cDebugLine(__LINE__) << "";
  cDebugLine(__LINE__) << "Tasks:";
  cCountGuard walk(miWalks);
  for (tJobs::iterator it = mJobs.begin(), end = mJobs.end(); it != end; ++it)
  {
    mstd::tSharedObject<cWork> const job(*it);
    if (job.get() == nullptr)
    {
      cDebugLine(__LINE__) << " * zero item";
      continue;
    }
    dumpWork(*job);
    job->enableDebug();
  }
}

void cWorkQueue::dumpWork(cWork const& work)
{
  cDebugLine(__LINE__) << " * Work (" << work.name() << ")";
  {
    cDebugLine line(__LINE__);
    line << "   * ";
    switch (work.type())
    {
    case cWork::SingleTask: {
      mstd::cTime const now;
      mstd::cTime const planned = work.plannedTime();
      line << "Single task (planned in " << (planned > now ? (planned - now).toMSec() : piUInt64(0)) << "ms)";
      break;
    }
    case cWork::Periodic:
      line << "Periodic (" << work.interval() << "ms interval)";
      break;
    case cWork::AIO:
      line << "Asynchronous I/O";
      break;
    default:
      line << "unknown";
      break;
    }
    line << (work.isStarted() ? " (scheduled)" : "") << (work.isKeep() ? " (keep)" : "");
  }
  cWorkStat const& statistic = work.statistic();
  cDebugLine(__LINE__) << "   * Triggered: " << statistic.numTriggered() << " / numStarted: " << statistic.numStarted();
  if (cWorkStat::cDebugInfo const* const pInfo = statistic.hasDebugInfo())
  {
    if (statistic.numStarted() != 0)
    {
      cDebugLine(__LINE__) << "   * Last start at: " << mstd::cDateTime::formatString(pInfo->lastStart(), "HH:MM:SS");
    }
    if (statistic.numTriggered() != 0)
    {
      cDebugLine(__LINE__) << "   * Last triggered: "
                           << mstd::cDateTime::formatString(pInfo->lastTrigger(), "HH:MM:SS");
    }
    cDebugLine(__LINE__) << pInfo->creationStack();
  }
  cDebugLine(__LINE__) << "";
}

void cWorkQueue::sltNotifyWorkChanged(cWork*)
{
  if (miClearing != 0 || mpEvents.get() == nullptr)
  {
    return;
  }
  bool const bAsynchronous = mpEvents->isAsynchronous();
  if (miLevel == 0 && bAsynchronous)
  {
    processEvents(false);
    return;
  }
  mChanged = true;
  if (miLocalLoops >= miLevel)
  {
    mpEvents->wakeUp();
  }
}

void cWorkQueue::sltWorkDestroyed(cWork const& work)
{
  removeJob(work);
}

void cWorkQueue::sltNotifyPEFinished()
{
  if (mpEvents.get() == nullptr || !mpEvents->isAsynchronous())
  {
    return;
  }
  unsigned int iDelay = 0;
  updateTimer(true, &iDelay);
  if (mpEvents.get() != nullptr && mpEvents->isAsynchronous() && (miTimedCount != 0 || miAIOCount != 0))
  {
    mpEvents->yield(miLevel, mJobs, iDelay);
  }
}

} // namespace mpi
