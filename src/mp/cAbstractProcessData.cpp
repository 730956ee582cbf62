#include "mp/cAbstractProcessData.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"

namespace mp
{

namespace
{

void tell(char const* text, unsigned int line)
{
  mpi::cAbstractOut& out = mpi::system().out;
  cLocker::cLock const lock(out.mutex());
  out.debugMessage("mp/cAbstractProcessData", line) << text << "\n" << mpi::cAbstractOut::clearDebugMessage();
}

} // namespace

cAbstractProcessData::cAbstractProcessData(mp::cLocker* pOwnerLocker)
    : mpOwnerLocker(pOwnerLocker), mpLocker(0), mpSecondLocker(0), mContext(cAbstractProcess::NoContext),
      mPreferredContext(cAbstractProcess::RunnableContext), mIsCanceled(false), mIsFinished(false), mIsRunning(false)
{
}

cAbstractProcessData::~cAbstractProcessData() = default;

void cAbstractProcessData::restart()
{
  tell("cAbstractProcessData::restart()", __LINE__);
  cLocker::cLock const lock(mpLocker);
  tell(" -- unlock --", __LINE__);
  mIsCanceled = false;
  mIsRunning = true;
  mIsFinished = false;
  tell("Setting running flag...", __LINE__);
}

void cAbstractProcessData::setContext(mp::cAbstractProcess::Context context, mp::cLocker* pLocker,
                                      mp::cLocker* pSecondLocker)
{
  mContext = context;
  mpLocker = pLocker;
  mpSecondLocker = pSecondLocker;
}

void cAbstractProcessData::cancel()
{
  cLocker::cLock const lock(mpLocker);
  mIsCanceled = true;
}

bool cAbstractProcessData::isCanceled() const
{
  cLocker::cLock const lock(mpLocker);
  return mIsCanceled;
}

void cAbstractProcessData::setFinished()
{
  cLocker::cLock const lock(mpLocker);
  mIsRunning = false;
  mIsFinished = true;
}

bool cAbstractProcessData::isFinished() const
{
  cLocker::cLock const lock(mpLocker);
  return mIsFinished;
}

bool cAbstractProcessData::isRunning() const
{
  cLocker::cLock const lock(mpLocker);
  return mIsRunning;
}

} // namespace mp
