#include "pi/schedule.h"

#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "support/cCaptureOut.h"
#include "support/cSlotOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

using mpi::cWork;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

class scheduleTest : public ::testing::Test
{
protected:
  ~scheduleTest() override { mpi::cSystem::cleanup(); }

  support::cVirtualClock mClock;
  mpi::cWorkQueue& mQueue = mpi::system().wq;
};

} // namespace

TEST_F(scheduleTest, WorkByReferenceIsAddedAndReturned)
{
  cWork work;
  EXPECT_EQ(&mpi::schedule(work), &work);
  EXPECT_EQ(mQueue.jobs().length(), 1u);
  EXPECT_TRUE(work.isKeep());
  EXPECT_FALSE(work.isStarted());
}

TEST_F(scheduleTest, WorkInAHolderIsHandedOver)
{
  mstd::tAutoPtr<cWork> pWork(new cWork);
  cWork* const pRaw = pWork.get();
  tJob job = mpi::schedule(pWork);
  EXPECT_EQ(pWork.get(), nullptr);
  EXPECT_EQ(job.get(), pRaw);
  EXPECT_EQ(mQueue.jobs().first().get(), pRaw);
  EXPECT_FALSE(job->isKeep());
}

TEST_F(scheduleTest, AOneShotJobRunsOnceAfterItsDelayAndGoes)
{
  cSlot slot;
  tJob job = mpi::schedule(slot.call(), 50, "shot");
  EXPECT_TRUE(job->name() == "shot");
  EXPECT_EQ(job->type(), cWork::SingleTask);
  EXPECT_TRUE(job->isStarted());
  job.reset();
  EXPECT_EQ(mpi::cSystem::exec(), 1u);
  EXPECT_EQ(mClock.blockedMSec(), 50);
  EXPECT_EQ(slot.calls(), 0u);
  EXPECT_EQ(mpi::cSystem::exec(), 0u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(scheduleTest, APeriodicJobRunsUntilItIsUnscheduled)
{
  cSlot slot;
  tJob job = mpi::schedule(slot.call(), 50, cWork::Periodic, "beat");
  EXPECT_EQ(job->type(), cWork::Periodic);
  for (int i = 0; i < 8; ++i)
  {
    EXPECT_EQ(mpi::cSystem::exec(), 1u);
  }
  EXPECT_EQ(slot.calls(), 4u);
  EXPECT_EQ(mClock.blockedMSec(), 200);
  mpi::unschedule(*job);
  EXPECT_EQ(mpi::cSystem::exec(), 0u);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(scheduleTest, AnAIOJobByCallIsPeriodic)
{
  cSlot slot;
  tJob job = mpi::schedule(slot.call(), 50, cWork::AIO, "aio");
  EXPECT_EQ(job->type(), cWork::Periodic);
  EXPECT_EQ(job->interval(), 50u);
}

TEST_F(scheduleTest, ASingleTaskByTypeIsAOneShotJob)
{
  cSlot slot;
  tJob job = mpi::schedule(slot.call(), 50, cWork::SingleTask, "shot");
  EXPECT_EQ(job->type(), cWork::SingleTask);
}

TEST_F(scheduleTest, AJobWithoutNameIsReportedAndRuns)
{
  support::cCaptureOut capture;
  cSlot slot;
  tJob job = mpi::schedule(slot.call(), 0, nullptr);
  ASSERT_GE(capture.lines().size(), 2u);
  EXPECT_EQ(capture.lines()[0].text, "Work scheduled without name!");
  EXPECT_EQ(capture.lines()[0].file, "pi/schedule");
  EXPECT_TRUE(capture.contains("mpi::schedule"));
  EXPECT_EQ(job->name().length(), 0u);
  mpi::cSystem::exec();
  EXPECT_EQ(slot.calls(), 1u);
  capture.clear();
  mpi::schedule(slot.call(), 10, cWork::Periodic, nullptr);
  EXPECT_EQ(capture.lines()[0].text, "Work scheduled without name!");
}

TEST_F(scheduleTest, AnEmptyNameIsAName)
{
  support::cCaptureOut capture;
  cSlot slot;
  mpi::schedule(slot.call(), 0, "");
  EXPECT_TRUE(capture.lines().empty());
}

TEST_F(scheduleTest, UnschedulingWorkThatIsNotThereIsNoError)
{
  cWork work;
  EXPECT_NO_THROW(mpi::unschedule(work));
}

TEST_F(scheduleTest, AReceiverThatGoesTakesOnlyItsSlotAway)
{
  tJob job;
  {
    cSlot slot;
    job = mpi::schedule(slot.call(), 10, cWork::Periodic, "orphan");
  }
  mpi::cSystem::exec();
  EXPECT_EQ(mpi::cSystem::exec(), 1u);
  EXPECT_EQ(job->statistic().numTriggered(), 1u);
}
