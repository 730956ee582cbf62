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
  cAdding(cWorkQueue& queue, mstd::tSharedObject<cWork> const& job) : mQueue(queue), mEntry(queue.append(job)) {}
  cAdding(cAdding const&) = delete;
  cAdding& operator=(cAdding const&) = delete;
  ~cAdding()
  {
    if (!mFinished)
    {
      mQueue.drop(mEntry);
    }
  }
  void finish() { mFinished = true; }

private:
  cWorkQueue& mQueue;
  tJobs::iterator mEntry;
  bool mFinished = false;
};

cWorkQueue::cWorkQueue()
    : miLevel(0), mChanged(false), miLocalLoops(0), miClearing(0), mpCurrent(nullptr), miTimedCount(0), miAIOCount(0),
      miWalks(0)
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
  piUInt64 const now = static_cast<piUInt64>(usecSinceEpoch());
  unsigned int iMinSleep = 0;
  bool bNoMinimum = true;
  bool bEraseWanted = false;
  cCountGuard walk(miWalks);

  for (tJobs::iterator it = mJobs.begin(), end = mJobs.end(); it != end; ++it)
  {
    cWork* const pWork = (*it).get();
    if (pWork == nullptr)
    {
      it.eraseLater();
      bEraseWanted = true;
      continue;
    }
    if (!pWork->mStarted)
    {
      continue;
    }
    piUInt64 const planned = pWork->mPlannedTime.get();
    piInt64 iWait = planned > now ? mSecUntil(planned, now) : 0;
    bool bIsAIO = pWork->mType == cWork::AIO;
    bool bDue = iWait <= 0;
    if (bIsAIO)
    {
      bDue = pWork->mpAIOData != nullptr && pWork->mpAIOData->isEvent();
      checkEvents(); // an action of this walk may have taken the processor away
      if (!mpEvents->supportsAIO())
      {
        pWork->internRestart(pWork->miInterval, true, false);
        bIsAIO = false;
        bDue = true;
      }
    }
    ++countOf(*pWork);

    if (bRun && bDue)
    {
      // Work that is dropped by its own action lives until this dispatch is over.
      mstd::tSharedObject<cWork> const hold(*it);
      dispatch(*pWork, now, iWait);
      ++iNumRun;
      if (!pWork->mStarted && !pWork->isKeep())
      {
        it.eraseLater();
        --countOf(*pWork);
        bEraseWanted = true;
      }
    }

    // The minimum is kept in 32 bits and compared as a signed number: beyond 2^31 ms it stays as it is.
    if (!bIsAIO && (bNoMinimum || iWait < static_cast<piInt32>(iMinSleep)))
    {
      iMinSleep = static_cast<unsigned int>(iWait);
      bNoMinimum = false;
    }
  }

  // An outer walk may stand on any node.
  if (miLevel == 1 && miWalks == 1 && bEraseWanted)
  {
    sweep();
  }
  if (miTimedCount == 0 && miAIOCount != 0)
  {
    return AIOOnlySleepMSec;
  }
  return iMinSleep;
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
  for (tJobs::iterator it = mJobs.begin(); it != mJobs.end();)
  {
    if (!it.isMarked())
    {
      ++it;
      continue;
    }
    // The work's destructor may use this queue: it finds the list whole, without the entry.
    mstd::tSharedObject<cWork> const job = detach(it);
    it = mJobs.erase(it);
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
  cAdding adding(*this, mstd::tSharedObject<cWork>(&work, false));
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
  cAdding adding(*this, job);
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

cWorkQueue::tJobs::iterator cWorkQueue::append(mstd::tSharedObject<cWork> const& job)
{
  cWorkQueueLink& first = job->mQueueLink;
  mstd::tAutoPtr<cWorkQueueLink> pFurther;
  if (first.mpQueue != nullptr)
  {
    pFurther.reinit(new cWorkQueueLink);
  }
  tJobs::iterator const entry = mJobs.append(job);
  cWorkQueueLink& link = pFurther.get() != nullptr ? *pFurther : first;
  link.mpQueue = this;
  link.mEntry = entry;
  if (pFurther.get() != nullptr)
  {
    link.mpNext = first.mpNext;
    first.mpNext = pFurther.release();
  }
  return entry;
}

cWorkQueueLink const* cWorkQueue::linkOf(cWork const& work) const
{
  for (cWorkQueueLink const* pLink = &work.mQueueLink; pLink != nullptr; pLink = pLink->mpNext)
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

mstd::tSharedObject<cWork> cWorkQueue::detach(tJobs::iterator const& entry)
{
  mstd::tSharedObject<cWork> job;
  job.swap(*entry);
  if (job.get() != nullptr)
  {
    dropLink(*job);
  }
  return job;
}

void cWorkQueue::drop(tJobs::iterator& entry)
{
  entry.eraseLater();
  // The work goes when nothing else is left to do here: its destructor may use this queue.
  detach(entry);
}

void cWorkQueue::removeJob(cWork const& work)
{
  if (mpCurrent == &work)
  {
    mpCurrent = nullptr;
  }
  cWorkQueueLink const* const pLink = linkOf(work);
  if (pLink == nullptr)
  {
    return;
  }
  tJobs::iterator entry = pLink->mEntry;
  drop(entry);
}

void cWorkQueue::clear()
{
  cCountGuard clearing(miClearing);
  cCountGuard walk(miWalks);
  for (tJobs::iterator it = mJobs.begin(), end = mJobs.end(); it != end; ++it)
  {
    drop(it);
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
