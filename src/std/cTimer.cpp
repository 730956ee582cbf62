#include "std/cTimer.h"

#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/tSharedObjectWatch.h"

namespace mstd
{

/// One run of sltPoll(), which its slots may nest and in which they may destroy the timer.
struct cTimer::cPoll
{
  explicit cPoll(cTimer& timer) : mpTimer(&timer), mpOuter(timer.mpPoll) { timer.mpPoll = this; }
  ~cPoll()
  {
    if (mpTimer == nullptr)
    {
      return;
    }
    if (mpTimer->mWork->type() == mpi::cWork::Periodic)
    {
      mpTimer->mElapsed = false;
    }
    mpTimer->mpPoll = mpOuter;
  }

  cTimer* mpTimer; // null when it has been destroyed
  cPoll* mpOuter;
};

cTimer::cTimer() : mWork(new mpi::cWork), mpPoll(nullptr), mElapsed(false)
{
  sigElapsed.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  mWork->setName("mstd::cTimer");
  mWork->setForceKeep(true); // also after a single shot, so that it may be set again at any moment
  mWork->sigAction.connect(mrmi::cDirectLocalSlotCall0<cTimer, piVoid>(*this, &cTimer::sltPoll));
}

cTimer::cTimer(unsigned int iIntervalMSec) : cTimer()
{
  setInterval(iIntervalMSec);
}

cTimer::~cTimer()
{
  bool const isRunning = mpPoll != nullptr;
  for (cPoll* pPoll = mpPoll; pPoll != nullptr; pPoll = pPoll->mpOuter)
  {
    pPoll->mpTimer = nullptr;
  }
  tSharedObjectWatch<mpi::cWork> const watch(mWork);
  mWork.reset();
  mpi::cWork* const pWork = watch.get();
  if (pWork == nullptr)
  {
    return; // never set, or the queue has gone before
  }
  if (!isRunning)
  {
    mpi::system().wq.removeJob(*pWork);
    return;
  }
  // The queue is in the midst of the work's action. It keeps the work for one more, empty run and drops it then.
  try
  {
    pWork->setForceKeep(false);
    pWork->statistic().setDebug(false); // whose records could fail
    pWork->start(0, mpi::cWork::SingleTask);
  }
  catch (...)
  {
    // of a listener to the change; the work has been started before
  }
}

void cTimer::setInterval(unsigned int iIntervalMSec)
{
  start(iIntervalMSec, true);
}

void cTimer::setSingleShot(unsigned int iDelayMSec)
{
  start(iDelayMSec, false);
}

void cTimer::reset()
{
  mElapsed = false;
  mWork->stop();
}

void cTimer::sltPoll()
{
  cPoll const poll(*this);
  mElapsed = true;
  sigElapsed();
}

void cTimer::start(unsigned int iMSec, bool isPeriodic)
{
  mpi::system().wq.addJob(mWork);
  mWork->start(iMSec, isPeriodic ? mpi::cWork::Periodic : mpi::cWork::SingleTask);
  mElapsed = false;
}

} // namespace mstd
