#include "pi/cLocalEventLoop.h"

#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "support/cFakeProcessor.h"
#include "support/cSlotOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

using mpi::cWork;
using support::cFakeProcessor;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

// The number of loops of a queue shows in whether a change inside a turn wakes its processor.
bool isWokenInTurn(mpi::cWorkQueue& queue, cFakeProcessor& processor)
{
  unsigned int iWakeUps = 0;
  cSlot slot;
  tJob job = queue.createJob();
  slot.mBody = [&] {
    unsigned int const before = processor.miWakeUps;
    job->stop();
    iWakeUps = processor.miWakeUps - before;
  };
  job->sigAction.connect(slot.call());
  job->start();
  queue.process();
  EXPECT_EQ(slot.calls(), 1u);
  queue.removeJob(*job);
  return iWakeUps != 0;
}

} // namespace

TEST(cLocalEventLoop, CountsOnTheQueueItIsGivenForItsLifetime)
{
  mpi::cWorkQueue queue;
  cFakeProcessor* const pProcessor = new cFakeProcessor;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(pProcessor));
  EXPECT_FALSE(isWokenInTurn(queue, *pProcessor));
  {
    mpi::cLocalEventLoop loop(&queue);
    EXPECT_TRUE(isWokenInTurn(queue, *pProcessor));
    {
      mpi::cLocalEventLoop second(&queue);
      EXPECT_TRUE(isWokenInTurn(queue, *pProcessor));
    }
    EXPECT_TRUE(isWokenInTurn(queue, *pProcessor));
  }
  EXPECT_FALSE(isWokenInTurn(queue, *pProcessor));
}

TEST(cLocalEventLoop, WithoutQueueItCountsOnTheQueueOfTheSystem)
{
  cFakeProcessor* const pProcessor = new cFakeProcessor;
  mpi::cWorkQueue& queue = mpi::system().wq;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(pProcessor));
  {
    mpi::cLocalEventLoop loop(nullptr);
    EXPECT_TRUE(isWokenInTurn(queue, *pProcessor));
    mpi::cLocalEventLoop second;
    EXPECT_TRUE(isWokenInTurn(queue, *pProcessor));
  }
  EXPECT_FALSE(isWokenInTurn(queue, *pProcessor));
  mpi::cSystem::cleanup();
}

TEST(cLocalEventLoop, ProcessTakesATurnOfItsQueue)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  cSlot slot;
  tJob job = queue.createJob();
  job->sigAction.connect(slot.call());
  job->start(10, cWork::Periodic);
  mpi::cLocalEventLoop loop(&queue);
  EXPECT_EQ(loop.process(), 1u);
  EXPECT_EQ(slot.calls(), 0u);
  clock.advanceMSec(10);
  EXPECT_EQ(loop.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
}

TEST(cLocalEventLoop, AnActionSpinsTheQueueUntilSomethingHappens)
{
  support::cVirtualClock clock;
  mpi::system();
  bool bAnswered = false;
  cSlot answer([&] { bAnswered = true; });
  cSlot question([&] {
    tJob job = mpi::system().wq.createJob();
    job->sigAction.connect(answer.call());
    job->start(30, cWork::SingleTask);
    mpi::cLocalEventLoop loop;
    while (!bAnswered)
    {
      loop.process();
    }
  });
  tJob job = mpi::system().wq.createJob();
  job->sigAction.connect(question.call());
  job->start();
  mpi::cSystem::exec();
  EXPECT_TRUE(bAnswered);
  EXPECT_EQ(clock.blockedMSec(), 30);
  mpi::cSystem::cleanup();
}
