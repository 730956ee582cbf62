#include "std/cTimer.h"

#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"

#include <new>

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
  mWork->sigAction.connect(mrmi::cDirectLocalSlotCall0<cTimer, piVoid>(*this, &cTimer::sltPoll));
}

cTimer::cTimer(unsigned int iIntervalMSec) : cTimer()
{
  setInterval(iIntervalMSec);
}

cTimer::~cTimer()
{
  if (mpPoll == nullptr)
  {
    return;
  }
  for (cPoll* pPoll = mpPoll; pPoll != nullptr; pPoll = pPoll->mpOuter)
  {
    pPoll->mpTimer = nullptr;
  }
  retireWork();
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
  mpi::schedule(*mWork);
  mWork->start(iMSec, isPeriodic ? mpi::cWork::Periodic : mpi::cWork::SingleTask);
  mElapsed = false;
}

void cTimer::retireWork()
{
  // The queue is in the midst of the work's action, so the work can't go yet. As work that the queue owns, it
  // has one more, empty run, and goes when the outermost turn sweeps.
  try
  {
    mpi::cWorkQueue& queue = mpi::system().wq;
    queue.removeJob(*mWork);
    mWork->setForceKeep(false);
    mWork->start(0, mpi::cWork::SingleTask);
    queue.addJob(mWork);
  }
  catch (...)
  {
    // without memory for an entry in the queue the work stays for good, rather than go under the queue's feet
    mWork->markDone();
    alignas(tSharedObject<mpi::cWork>) char reference[sizeof(mWork)];
    new (reference) tSharedObject<mpi::cWork>(mWork);
  }
}

} // namespace mstd
