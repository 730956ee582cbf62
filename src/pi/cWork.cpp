#include "pi/cWork.h"

#include "mp/cLocker.h"
#include "pi/cAbstractAIOData.h"
#include "pi/cAbstractOut.h"
#include "pi/cPIExceptions.h"
#include "pi/cSysTime.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "pi/cWqDebug.h"
#include "std/cRuntimeException.h"
#include "ucs/cLIMessage.h"

namespace mpi
{

namespace
{

char const* const SourceMark = "pi/cWork";
piUInt64 const USecPerMSec = 1000;

void writeDebugLine(char const* pText, unsigned int iLine)
{
  cAbstractOut& out = system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage(SourceMark, iLine) << pText << "\n" << cAbstractOut::clearDebugMessage();
}

// The search for a handler goes on whether or not this can be written.
void reportFailedHandler()
{
  try
  {
    mstd::cAsciiString const graph = cWqDebug::dot();
    cAbstractOut& out = system().out;
    {
      mp::cLocker::cLock lock(out.mutex());
      out << graph << "\n";
    }
    writeDebugLine("WARNING: exception in cWork::handleActionError - handler - try next...", __LINE__);
  }
  catch (...)
  {
  }
}

// Fires a signal of a dying work: nothing may come out of a destructor.
template <class tFire>
void fireFromDestructor(tFire const& fire)
{
  try
  {
    fire();
  }
  catch (...)
  {
    try
    {
      writeDebugLine("WARNING: exception in cWork::~cWork - slot - ignored...", __LINE__);
    }
    catch (...)
    {
      // Not even the message can be written: there is nobody left to tell.
    }
  }
}

} // namespace

cWork::cWork()
    : mScheduledTime(piUInt64(0)), mPlannedTime(piUInt64(0)), mType(SingleTask), miInterval(0), mStarted(false),
      mForceKeep(false), mDelegateExceptions(true), miErrorCount(0), mpAIOData(nullptr), mParentWatch(this)
{
  sigAction.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  sigChanged.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cWork::~cWork()
{
  mParentWatch.unlinkAndReparentChildren();
  mpSigActionError.reinit(nullptr);

  cAbstractAIOData* const pData = mpAIOData;
  mpAIOData = nullptr;
  if (pData != nullptr)
  {
    publishDescriptors();
    pData->mpWork = nullptr;
    delete pData;
  }
  mStarted = false;
  publishKey();

  fireFromDestructor([this] { sigChanged(this); });
  if (mpSigDestroyed.get() != nullptr)
  {
    fireFromDestructor([this] { (*mpSigDestroyed)(*this); });
    mpSigDestroyed.reinit(nullptr);
  }
  // A slot may have made this work a parent or a child again.
  mParentWatch.unlinkAndReparentChildren();

  // A slot in front of a queue's own that threw has kept the news from that queue.
  while (mQueueLink.mpQueue != nullptr)
  {
    mQueueLink.mpQueue->removeJob(*this);
  }
}

void cWork::action()
{
  mStatistic.notifyTrigger();
  try
  {
    sigAction();
  }
  catch (mstd::cAbstractException const& e)
  {
    if (!handleActionError(e, false))
    {
      throw;
    }
    return;
  }
  catch (...)
  {
    mucs::cLIMessage message;
    message << "$MTR$Error performing work %name%!" << mName;
    if (!handleActionError(mstd::cRuntimeException(message, nullptr, 0), false))
    {
      throw;
    }
    return;
  }
  miErrorCount = 0;
}

void cWork::start()
{
  internRestart(true);
}

void cWork::start(unsigned int iInterval, Type iType)
{
  internRestart(iInterval, iType != SingleTask, true);
}

void cWork::stop()
{
  markDone();
  sigChanged(this);
}

void cWork::setAIOData(mstd::tAutoPtr<cAbstractAIOData> pData)
{
  bool const hadData = mpAIOData != nullptr;
  if (hadData)
  {
    mpAIOData->mpWork = nullptr;
  }
  mType = AIO;
  mpAIOData = pData.release();
  if (mpAIOData != nullptr)
  {
    mpAIOData->mpWork = this;
    mStarted = true;
  }
  else if (hadData)
  {
    mStarted = false;
  }
  publishDescriptors();
  publishKey();
  sigChanged(this);
}

cAbstractAIOData& cWork::aioData()
{
  if (mpAIOData == nullptr)
  {
    cPIExceptions::throwNoAIOData();
  }
  return *mpAIOData;
}

cAbstractAIOData const& cWork::aioData() const
{
  return const_cast<cWork*>(this)->aioData();
}

void cWork::setName(mstd::cAsciiString const& sName)
{
  mName = sName;
}

void cWork::setForceKeep(bool bKeep)
{
  mForceKeep = bKeep;
}

void cWork::setDelegateExceptions(bool bDelegate)
{
  mDelegateExceptions = bDelegate;
}

void cWork::enableDebug()
{
  mStatistic.setDebug(true);
}

cWork* cWork::parent()
{
  mstd::tParentWatch<cWork>* const pParent = mParentWatch.parent();
  return pParent != nullptr ? &pParent->object() : nullptr;
}

cWork const* cWork::parent() const
{
  return const_cast<cWork*>(this)->parent();
}

void cWork::reparent(cWork* pParent)
{
  if (pParent != this)
  {
    mParentWatch.setParent(pParent != nullptr ? &pParent->mParentWatch : nullptr);
  }
}

cWork::tActionErrorSignal& cWork::sigActionError()
{
  if (mpSigActionError.get() == nullptr)
  {
    mstd::tAutoPtr<tActionErrorSignal> pSignal(new tActionErrorSignal);
    pSignal->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
    mpSigActionError = pSignal;
  }
  return *mpSigActionError;
}

cWork::tDestroyedSignal& cWork::sigDestroyed()
{
  if (mpSigDestroyed.get() == nullptr)
  {
    mstd::tAutoPtr<tDestroyedSignal> pSignal(new tDestroyedSignal);
    pSignal->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
    mpSigDestroyed = pSignal;
  }
  return *mpSigDestroyed;
}

bool cWork::handleActionError(mstd::cAbstractException const& e, bool)
{
  if (!mDelegateExceptions)
  {
    return false;
  }
  ++miErrorCount;

  // Re-added work may have become an ancestor of itself. The mark follows the climb at growing distances
  // and is met again exactly if there is a ring.
  cWork* pMark = nullptr;
  unsigned int iSteps = 0;
  unsigned int iNextMark = 1;
  for (cWork* w = this; w != nullptr && w != pMark; w = w->parent())
  {
    if (offerActionError(*w, e))
    {
      return true;
    }
    if (++iSteps == iNextMark)
    {
      iNextMark *= 2;
      pMark = w;
    }
  }
  return false;
}

bool cWork::offerActionError(cWork& handler, mstd::cAbstractException const& e)
{
  if (handler.mpSigActionError.get() == nullptr || handler.mpSigActionError->slotCount() == 0)
  {
    return false;
  }
  try
  {
    (*handler.mpSigActionError)(e, &handler != this);
    return true;
  }
  catch (...)
  {
    reportFailedHandler();
    return false;
  }
}

// What a walk of a queue has to know of this work while nothing is to be done with it.
piUInt64 cWork::key() const
{
  if (!mStarted)
  {
    return cWorkTable::Stopped;
  }
  if (mType != AIO)
  {
    return mPlannedTime.get();
  }
  return mpAIOData != nullptr && mpAIOData->isEvent() ? cWorkTable::Event : cWorkTable::NoEvent;
}

void cWork::publishKeyToOthers(piUInt64 iKey)
{
  for (cWorkQueueLink const* pLink = mQueueLink.mpNext; pLink != nullptr; pLink = pLink->mpNext)
  {
    *pLink->mpKey = iKey;
  }
}

// The descriptors that the queues of this work have to watch are no longer the same.
void cWork::publishDescriptors()
{
  if (mQueueLink.mpQueue == nullptr)
  {
    return;
  }
  for (cWorkQueueLink const* pLink = &mQueueLink; pLink != nullptr; pLink = pLink->mpNext)
  {
    ++pLink->mpQueue->miDescriptorChanges;
  }
}

inline void cWork::planIn(unsigned int iDelayMSec)
{
  piUInt64 const now = static_cast<piUInt64>(usecSinceEpoch());
  mScheduledTime.set(now);
  mPlannedTime.set(now + iDelayMSec * USecPerMSec);
  mStarted = true;
  miErrorCount = 0;
}

void cWork::internRestart(bool)
{
  mStatistic.notifyStart();
  planIn(miInterval);
  if (mType != AIO)
  {
    publishKey(mPlannedTime.get());
  }
  else
  {
    publishDescriptors();
    publishKey();
  }
  sigChanged(this);
}

void cWork::internRestart(unsigned int iInterval, bool bPeriodic, bool)
{
  mStatistic.notifyStart();
  miInterval = bPeriodic ? iInterval : 0;
  planIn(iInterval);
  if (mType == AIO)
  {
    publishDescriptors();
  }
  mType = bPeriodic ? Periodic : SingleTask;
  publishKey(mPlannedTime.get());
  sigChanged(this);
}

} // namespace mpi
