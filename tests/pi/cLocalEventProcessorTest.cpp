#include "pi/cLocalEventProcessor.h"

#include "pi/cFDAIOData.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "support/cSlotOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

using mpi::cWork;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;
typedef mstd::tList<tJob> tJobs;

} // namespace

TEST(cLocalEventProcessor, IsSynchronousAndKnowsNoDescriptors)
{
  mpi::cLocalEventProcessor processor;
  mpi::cAbstractProcessEvents& base = processor;
  EXPECT_FALSE(base.supportsAIO());
  EXPECT_FALSE(base.isAsynchronous());
}

TEST(cLocalEventProcessor, WaitsTheDelayWithoutJobsAndFiresFinished)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  cSlot finished;
  processor.sigFinished.connect(finished.call());
  tJobs none;
  processor.yield(0, none, 25);
  EXPECT_EQ(clock.blockedMSec(), 25);
  EXPECT_EQ(finished.calls(), 1u);
}

TEST(cLocalEventProcessor, FiringFinishedUnconnectedIsNoError)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  tJobs none;
  EXPECT_NO_THROW(processor.yield(0, none, 0));
  EXPECT_EQ(clock.blocked(), 0);
}

TEST(cLocalEventProcessor, WithAnyEntryItReturnsAtOnce)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  cSlot finished;
  processor.sigFinished.connect(finished.call());
  tJobs jobs;
  jobs.append(tJob(new cWork)); // stopped
  processor.yield(0, jobs, 1000);
  EXPECT_EQ(clock.blocked(), 0);
  EXPECT_EQ(finished.calls(), 1u);
}

TEST(cLocalEventProcessor, AWakeUpEndsTheNextWaitAtOnceAndOnlyThat)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  tJobs none;
  processor.wakeUp();
  processor.yield(0, none, 25);
  EXPECT_EQ(clock.blocked(), 0);
  processor.yield(0, none, 25);
  EXPECT_EQ(clock.blockedMSec(), 25);
}

TEST(cLocalEventProcessor, AWakeUpEndsARunningWait)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  tJobs none;
  clock.at(clock.now() + 10000, [&] { processor.wakeUp(); });
  processor.yield(0, none, 25);
  EXPECT_EQ(clock.blockedMSec(), 10);
}

TEST(cLocalEventProcessor, AWakeUpIsKeptWhileThereIsNothingToWaitFor)
{
  support::cVirtualClock clock;
  mpi::cLocalEventProcessor processor;
  tJobs jobs;
  jobs.append(tJob(new cWork));
  processor.wakeUp();
  processor.yield(0, jobs, 25);
  tJobs none;
  processor.yield(0, none, 25);
  EXPECT_EQ(clock.blocked(), 0);
}

TEST(cLocalEventProcessor, AQueueSpinsWithOneStoppedItem)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cLocalEventProcessor));
  queue.createJob();
  cSlot slot;
  tJob job = queue.createJob();
  job->sigAction.connect(slot.call());
  job->start(5, cWork::SingleTask);
  for (int i = 0; i < 100; ++i)
  {
    EXPECT_EQ(queue.process(), 1u);
  }
  EXPECT_EQ(clock.blocked(), 0);
  EXPECT_EQ(slot.calls(), 0u);
  clock.advanceMSec(5);
  EXPECT_EQ(queue.process(), 0u);
  EXPECT_EQ(slot.calls(), 1u);
}

TEST(cLocalEventProcessor, AsynchronousWorkBecomesPeriodicUnderIt)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cLocalEventProcessor));
  cSlot slot;
  tJob job = queue.createJob();
  job->sigAction.connect(slot.call());
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  EXPECT_EQ(queue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(job->type(), cWork::Periodic);
  EXPECT_EQ(job->interval(), 0u);
}
