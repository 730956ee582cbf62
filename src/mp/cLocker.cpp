#include "mp/cLocker.h"

#include "pi/cPlatform.h"
#include "std/cSTDExceptions.h"

namespace mp
{

cLocker::cLock::cLock(cLocker* pLocker) : mpLocker(pLocker), mIsLocked(true)
{
  if (mpLocker != 0)
  {
    mpLocker->doLock();
  }
}

cLocker::cLock::cLock(cLockRef const& request) : mpLocker(&request.mLocker), mIsLocked(true)
{
  if (request.mIsTry)
  {
    mIsLocked = mpLocker->doTryLock();
    return;
  }
  mpLocker->doLock();
}

cLocker::cLock::~cLock()
{
  if (mpLocker != 0 && mIsLocked)
  {
    mpLocker->doUnlock();
  }
}

cLocker::cUnlock::cUnlock(cLocker* pLocker) : mpLocker(pLocker)
{
  if (mpLocker != 0)
  {
    mpLocker->doUnlock();
  }
}

cLocker::cUnlock::cUnlock(cUnlockRef const& request) : mpLocker(&request.mLocker)
{
  mpLocker->doUnlock();
}

cLocker::cUnlock::~cUnlock()
{
  if (mpLocker != 0)
  {
    mpLocker->doLock();
  }
}

cLocker::cLocker() : mpImpl(mpi::cPlatform::createMutexImpl()) {}

cLocker::cLocker(cLocker const&) {}

cLocker& cLocker::operator=(cLocker const&)
{
  return *this;
}

cLocker::~cLocker() = default;

void cLocker::doLock()
{
  impl().lock();
}

bool cLocker::doTryLock()
{
  return impl().tryLock();
}

void cLocker::doUnlock()
{
  impl().unlock();
}

mpi::cAbstractMutexImpl& cLocker::impl() const
{
  if (!(mpImpl.get() != 0))
  {
    cSTDExceptions::throwAssertionFailed("mpImpl != 0", "mp/cLocker", __LINE__);
  }
  return *mpImpl.get();
}

} // namespace mp
