#include "mp/cAbstractRunnable.h"

#include "mp/cLocker.h"
#include "pi/cAbstractRunnableImpl.h"
#include "pi/cPIExceptions.h"
#include "pi/cPlatform.h"
#include "std/tAutoPtr.h"

namespace mp
{

struct cAbstractRunnable::cImpl
{
  State mState;
  cLocker mStateLocker;
  mstd::tAutoPtr<mpi::cAbstractRunnableImpl> mpThread;

  cImpl() : mState(NeverStarted) {}

  void setState(State state)
  {
    cLocker::cLock const lock(&mStateLocker);
    mState = state;
  }

  State state()
  {
    cLocker::cLock const lock(&mStateLocker);
    return mState;
  }

  /// The body of the new thread.
  static void thread(void* self);
};

void cAbstractRunnable::cImpl::thread(void* self)
{
  cAbstractRunnable* pRunnable = static_cast<cAbstractRunnable*>(self);
  cImpl* pImpl = pRunnable->mpImpl;
  {
    cLocker::cLock const lock(&pImpl->mStateLocker);
    // A request to stop that came before the thread's first step must not be lost.
    if (pImpl->mState != StopRequested)
    {
      pImpl->mState = Running;
    }
  }
  pRunnable->run();
  pImpl->setState(Finished);
}

cAbstractRunnable::cAbstractRunnable() : mpImpl(new cImpl) {}

cAbstractRunnable::cAbstractRunnable(cAbstractRunnable const&) : mpImpl(0)
{
  mpi::cPIExceptions::throwRunnableCopyCode();
}

cAbstractRunnable& cAbstractRunnable::operator=(cAbstractRunnable const&)
{
  mpi::cPIExceptions::throwRunnableCopyCode();
}

cAbstractRunnable::~cAbstractRunnable()
{
  stop();
  delete mpImpl;
}

void cAbstractRunnable::run() {}

void cAbstractRunnable::start()
{
  if (mpImpl->mpThread.get() != 0)
  {
    mpImpl->mpThread->stop();
    mpImpl->mpThread.reinit(0);
  }
  // No thread is there to compete, so the state is written without its locker.
  State const before = mpImpl->mState;
  mpImpl->mState = Started;
  try
  {
    mpImpl->mpThread = mpi::cPlatform::createThread(&cImpl::thread, this);
    mpImpl->mpThread->start();
  }
  catch (...)
  {
    mpImpl->mpThread.reinit(0);
    mpImpl->mState = before;
    throw;
  }
}

void cAbstractRunnable::stop()
{
  mpImpl->setState(StopRequested);
  if (mpImpl->mpThread.get() != 0)
  {
    mpImpl->mpThread->stop();
  }
}

cAbstractRunnable::State cAbstractRunnable::state() const
{
  return mpImpl->state();
}

bool cAbstractRunnable::isRunning() const
{
  return state() == Running;
}

bool cAbstractRunnable::isStopInProgress() const
{
  return state() == StopRequested;
}

bool cAbstractRunnable::isActive() const
{
  State const current = state();
  return current == Started || current == Running || current == StopRequested;
}

} // namespace mp
