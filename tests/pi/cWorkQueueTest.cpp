#include "pi/cWorkQueue.h"

#include "pi/cFDAIOData.h"
#include "pi/cLocalEventLoop.h"
#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cFakeProcessor.h"
#include "support/cSlotOf.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

using mpi::cWork;
using mpi::cWorkQueue;
using support::cFakeProcessor;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

// A queue on a processor that never waits, in virtual time.
class cWorkQueueTest : public ::testing::Test
{
protected:
  cWorkQueueTest() : mpProcessor(new cFakeProcessor)
  {
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(mpProcessor));
  }

  tJob addTask(cSlot& slot, unsigned int iDelay, cWork::Type iType = cWork::SingleTask)
  {
    tJob job = mQueue.createJob();
    job->sigAction.connect(slot.call());
    job->start(iDelay, iType);
    return job;
  }

  tJob addAIO(cSlot& slot)
  {
    tJob job = mQueue.createJob();
    job->sigAction.connect(slot.call());
    job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
    return job;
  }

  unsigned int lastDelay() const { return mpProcessor->mYields.back().delay; }
  size_t numYields() const { return mpProcessor->mYields.size(); }

  support::cVirtualClock mClock;
  cFakeProcessor* mpProcessor;
  cWorkQueue mQueue;
};

unsigned int length(cWorkQueue const& queue)
{
  return queue.jobs().length();
}

// Runs something when it goes.
class cFarewell : public cWork
{
public:
  explicit cFarewell(std::function<void()> body) : mBody(std::move(body)) {}
  ~cFarewell() override { mBody(); }

private:
  std::function<void()> mBody;
};

tJob newFarewell(std::function<void()> body)
{
  return tJob(mstd::tAutoPtr<cWork>(new cFarewell(std::move(body))));
}

} // namespace

TEST_F(cWorkQueueTest, AnEmptyQueueReturnsZeroAndDoesNotBlock)
{
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(numYields(), 0u);
  EXPECT_EQ(mQueue.level(), 0u);
  EXPECT_EQ(mQueue.current(), nullptr);
}

TEST_F(cWorkQueueTest, OnlyStoppedItemsReturnZeroAndDoNotBlock)
{
  mQueue.createJob();
  mQueue.createJob();
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(numYields(), 0u);
  EXPECT_EQ(length(mQueue), 2u);
}

TEST_F(cWorkQueueTest, WithoutProcessorProcessReturnsZeroAtOnce)
{
  cWorkQueue queue;
  cWork work;
  work.start();
  queue.addJob(work);
  EXPECT_EQ(queue.process(), 0u);
  EXPECT_EQ(work.statistic().numTriggered(), 0u);
}

TEST_F(cWorkQueueTest, PeriodicItemSleepsThenRunsAndTheTurnThatRanDoesNotBlock)
{
  cSlot slot;
  addTask(slot, 1000, cWork::Periodic);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 0u);
  ASSERT_EQ(numYields(), 1u);
  EXPECT_EQ(lastDelay(), 1000u);
  mClock.advanceMSec(1000);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(numYields(), 1u);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  ASSERT_EQ(numYields(), 2u);
  EXPECT_EQ(lastDelay(), 1000u);
}

TEST_F(cWorkQueueTest, EachPeriodBeginsAtItsDispatch)
{
  cSlot slot;
  tJob job = addTask(slot, 1000, cWork::Periodic);
  long long const start = mClock.now();
  mClock.advanceMSec(1300);
  mQueue.process();
  EXPECT_EQ(job->plannedTime().get(), piUInt64(start + 1300000 + 1000000));
}

TEST_F(cWorkQueueTest, OnlyAIOItemsWithoutEventsWaitTenSeconds)
{
  cSlot slot;
  addAIO(slot);
  EXPECT_EQ(mQueue.process(), 1u);
  ASSERT_EQ(numYields(), 1u);
  EXPECT_EQ(lastDelay(), 10000u);
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, AnAIOItemBesideASingleTaskWaitsForTheTask)
{
  cSlot slot;
  addAIO(slot);
  addTask(slot, 50);
  EXPECT_EQ(mQueue.process(), 2u);
  EXPECT_EQ(lastDelay(), 50u);
}

TEST_F(cWorkQueueTest, TheEarliestTimedItemLimitsTheSleep)
{
  cSlot slot;
  addTask(slot, 300);
  addTask(slot, 20, cWork::Periodic);
  addTask(slot, 100);
  EXPECT_EQ(mQueue.process(), 3u);
  EXPECT_EQ(lastDelay(), 20u);
}

TEST_F(cWorkQueueTest, TheSleepIsTruncatedToMilliseconds)
{
  cSlot slot;
  addTask(slot, 3);
  mClock.advance(1);
  mQueue.process();
  EXPECT_EQ(lastDelay(), 2u);
}

TEST_F(cWorkQueueTest, WorkLessThanAMillisecondAheadIsDue)
{
  cSlot slot;
  addTask(slot, 3);
  mClock.advance(2001);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
}

TEST_F(cWorkQueueTest, AClockSetBackOnlyDelaysTheWork)
{
  cSlot slot;
  addTask(slot, 10);
  mClock.set(mClock.now() - 5000000);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 0u);
  EXPECT_EQ(lastDelay(), 5010u);
}

TEST_F(cWorkQueueTest, TheMinimumIsComparedAsASigned32BitNumber)
{
  // 30 days in milliseconds do not fit into 31 bits: as a signed number it is below everything that follows.
  cSlot slot;
  addTask(slot, 2592000000u);
  addTask(slot, 10);
  mQueue.process();
  EXPECT_EQ(lastDelay(), 2592000000u);
}

TEST_F(cWorkQueueTest, AFinishedSingleTaskIsRemoved)
{
  cSlot slot;
  std::vector<bool> gone;
  tJob job = newFarewell([&] { gone.push_back(true); });
  job->sigAction.connect(slot.call());
  mQueue.addJob(job);
  job->start();
  job.reset();
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(gone.size(), 1u);
  EXPECT_TRUE(mQueue.jobs().empty());
  EXPECT_EQ(numYields(), 0u);
}

TEST_F(cWorkQueueTest, ASingleTaskThatRestartsItselfStays)
{
  cSlot slot;
  tJob job = addTask(slot, 0);
  slot.mBody = [&] { job->start(40, cWork::SingleTask); };
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, AForciblyKeptSingleTaskStaysStopped)
{
  cSlot slot;
  tJob job = addTask(slot, 0);
  job->setForceKeep(true);
  // It was counted before it ran, and the count stays with a kept one.
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_FALSE(job->isStarted());
  EXPECT_EQ(length(mQueue), 1u);
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cWorkQueueTest, AStoppedSingleTaskIsNotRemovedByTheWalk)
{
  cSlot slot;
  tJob job = addTask(slot, 10);
  job->stop();
  mQueue.process();
  mQueue.process();
  EXPECT_EQ(length(mQueue), 1u);
  mQueue.removeJob(*job);
  mQueue.process();
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, CountsAreTimedPlusAIO)
{
  cSlot slot;
  addTask(slot, 10);
  addTask(slot, 10, cWork::Periodic);
  addAIO(slot);
  mQueue.createJob();
  EXPECT_EQ(mQueue.process(), 3u);
}

TEST_F(cWorkQueueTest, ItemsRunInTheOrderOfAddition)
{
  std::vector<int> order;
  cSlot first([&] { order.push_back(1); });
  cSlot second([&] { order.push_back(2); });
  cSlot third([&] { order.push_back(3); });
  addTask(first, 2);
  addTask(second, 0);
  addTask(third, 1);
  mClock.advanceMSec(5);
  mQueue.process();
  EXPECT_EQ(order, (std::vector<int>{1, 2, 3}));
}

TEST_F(cWorkQueueTest, TheClockIsReadOnceForAWalk)
{
  cSlot slot;
  for (int i = 0; i < 10; ++i)
  {
    addTask(slot, 1000);
  }
  unsigned int const before = mClock.numReads();
  mQueue.process();
  EXPECT_EQ(mClock.numReads() - before, 1u);
}

TEST_F(cWorkQueueTest, APeriodicRunCostsOneMoreReadForTheRestartAndOneMoreWalk)
{
  cSlot slot;
  tJob job = addTask(slot, 10, cWork::Periodic);
  mClock.advanceMSec(10);
  unsigned int const before = mClock.numReads();
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(mClock.numReads() - before, 3u);
}

TEST_F(cWorkQueueTest, TheActionSeesItsWorkAsCurrentAtLevelOne)
{
  cSlot slot;
  tJob job = addTask(slot, 0);
  slot.mBody = [&] {
    EXPECT_EQ(mQueue.current(), job.get());
    EXPECT_EQ(mQueue.level(), 1u);
    EXPECT_FALSE(job->isStarted());
  };
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(mQueue.current(), nullptr);
  EXPECT_EQ(mQueue.level(), 0u);
}

TEST_F(cWorkQueueTest, PeriodicWorkIsRestartedBeforeItsAction)
{
  cSlot slot;
  tJob job = addTask(slot, 10, cWork::Periodic);
  mClock.advanceMSec(10);
  slot.mBody = [&] {
    EXPECT_TRUE(job->isStarted());
    EXPECT_EQ(job->plannedTime().get(), piUInt64(mClock.now() + 10000));
    EXPECT_EQ(job->statistic().numStarted(), 2u);
  };
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
}

TEST_F(cWorkQueueTest, PeriodicWorkEndsItselfByStop)
{
  cSlot slot;
  tJob job = addTask(slot, 10, cWork::Periodic);
  slot.mBody = [&] { job->stop(); };
  mClock.advanceMSec(10);
  // A change during the walk makes it walk again, which finds nothing active.
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, WorkAddedInAnActionBecomesItsChild)
{
  cSlot slot;
  tJob job = addTask(slot, 0);
  cWork byReference;
  tJob created;
  tJob shared(new cWork);
  slot.mBody = [&] {
    created = mQueue.createJob();
    mQueue.addJob(byReference);
    mQueue.addJob(shared);
  };
  mQueue.process();
  EXPECT_EQ(created->parent(), job.get());
  EXPECT_EQ(byReference.parent(), job.get());
  EXPECT_EQ(shared->parent(), job.get());
}

TEST_F(cWorkQueueTest, WorkAddedOutsideAnyActionLosesItsParent)
{
  cWork parent;
  cWork work;
  work.reparent(&parent);
  mQueue.addJob(work);
  EXPECT_EQ(work.parent(), nullptr);
}

TEST_F(cWorkQueueTest, ATaskWithoutDelayScheduledByAnActionRunsInTheSameWalk)
{
  cSlot child;
  tJob job;
  cSlot slot([&] {
    mClock.advance(5);
    tJob made = addTask(child, 0);
    EXPECT_EQ(made->parent(), job.get());
  });
  job = addTask(slot, 0);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(child.calls(), 1u);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cWorkQueueTest, ATaskWithADelayScheduledByAnActionWaitsForALaterTurn)
{
  cSlot child;
  cSlot slot([&] { addTask(child, 1); });
  addTask(slot, 0);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(child.calls(), 0u);
  mClock.advanceMSec(1);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(child.calls(), 1u);
}

TEST_F(cWorkQueueTest, NothingRunsTwiceInATurnAlthoughTheWalkIsRepeated)
{
  cSlot second;
  tJob kept = addTask(second, 0);
  kept->setForceKeep(true);
  kept->stop();
  // The first item's action starts an item that stands in front of it: the extra pass does not run it.
  cSlot slot([&] { kept->start(); });
  addTask(slot, 0);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(second.calls(), 0u);
  EXPECT_EQ(numYields(), 0u);
  mQueue.process();
  EXPECT_EQ(second.calls(), 1u);
}

TEST_F(cWorkQueueTest, AIOWorkRunsWhenItsEventIsSetAndTheFlagIsClearedAfterTheAction)
{
  cSlot slot;
  tJob job = addAIO(slot);
  slot.mBody = [&] { EXPECT_TRUE(job->aioData().isEvent()); };
  job->aioData().setEvent(true);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_FALSE(job->aioData().isEvent());
  // A turn that ran something waits for descriptors, but without time.
  ASSERT_EQ(numYields(), 1u);
  EXPECT_EQ(lastDelay(), 0u);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(lastDelay(), 10000u);
}

TEST_F(cWorkQueueTest, AIOWorkNeverRunsInTheTurnThatFoundItsEvent)
{
  cSlot slot;
  tJob job = addAIO(slot);
  mpProcessor->mOnYield = [&] { job->aioData().setEvent(true); };
  mQueue.process();
  EXPECT_EQ(slot.calls(), 0u);
  mpProcessor->mOnYield = nullptr;
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
}

TEST_F(cWorkQueueTest, AnEventOfStoppedAIOWorkStaysSet)
{
  cSlot slot;
  tJob job = addAIO(slot);
  job->stop();
  job->aioData().setEvent(true);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(slot.calls(), 0u);
  EXPECT_TRUE(job->aioData().isEvent());
}

TEST_F(cWorkQueueTest, PlannedTimeDoesNotCountForAIOWork)
{
  cSlot slot;
  tJob job = addTask(slot, 100000);
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  mQueue.process();
  EXPECT_EQ(slot.calls(), 0u);
  EXPECT_EQ(lastDelay(), 10000u);
  job->aioData().setEvent(true);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
}

TEST_F(cWorkQueueTest, StartedAIOWorkWithoutDataIsCountedButNeverDue)
{
  cSlot slot;
  tJob job = addTask(slot, 0);
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
  EXPECT_TRUE(job->isStarted());
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, TheFlagStaysSetAfterAnActionThatThrew)
{
  cSlot slot([] { throw 1; });
  tJob job = addAIO(slot);
  job->aioData().setEvent(true);
  EXPECT_THROW(mQueue.process(), int);
  EXPECT_TRUE(job->aioData().isEvent());
}

TEST_F(cWorkQueueTest, OnAProcessorWithoutAIOSuchWorkBecomesPeriodicAndRunsAtOnce)
{
  mpProcessor->mAIO = false;
  cSlot slot;
  tJob job = mQueue.createJob();
  job->sigAction.connect(slot.call());
  job->start(25, cWork::Periodic);
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  EXPECT_EQ(job->type(), cWork::AIO);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(job->type(), cWork::Periodic);
  EXPECT_EQ(job->interval(), 25u);
  EXPECT_EQ(job->plannedTime().get(), piUInt64(mClock.now() + 25000));
  // Once as the change of type, once as the restart of a period.
  EXPECT_EQ(job->statistic().numStarted(), 3u);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(lastDelay(), 25u);
}

TEST_F(cWorkQueueTest, WorkTurnedPeriodicLimitsTheSleepByItsFormerPlan)
{
  mpProcessor->mAIO = false;
  cSlot slot;
  tJob job = addTask(slot, 25, cWork::Periodic);
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  mClock.advanceMSec(5);
  unsigned int iNumRun = 7;
  EXPECT_EQ(mQueue.internProcess(false, iNumRun), 20u);
  EXPECT_EQ(job->plannedTime().get(), piUInt64(mClock.now() + 25000));
  EXPECT_EQ(mQueue.internProcess(false, iNumRun), 25u);
}

TEST_F(cWorkQueueTest, ATaskThatIsStartedAgainAfterItsEndWasMarkedGoesWithTheSweep)
{
  cSlot done;
  tJob job = addTask(done, 0);
  cSlot starter([&] { job->start(1000, cWork::SingleTask); });
  addTask(starter, 0);
  mQueue.process();
  EXPECT_EQ(done.calls(), 1u);
  EXPECT_TRUE(job->isStarted());
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, AMarkedNodeRunsAgainInANestedWalkIfItsTaskIsStarted)
{
  cSlot done;
  tJob job = addTask(done, 0);
  cSlot starter([&] {
    job->start(0, cWork::SingleTask);
    mpi::cLocalEventLoop loop(&mQueue);
    loop.process();
    EXPECT_EQ(done.calls(), 2u);
    EXPECT_EQ(length(mQueue), 2u);
  });
  addTask(starter, 0);
  mQueue.process();
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, AWalkOutsideOfATurnDoesNotSweep)
{
  cSlot slot;
  addTask(slot, 0);
  unsigned int iNumRun = 0;
  mQueue.internProcess(true, iNumRun);
  EXPECT_EQ(iNumRun, 1u);
  EXPECT_EQ(length(mQueue), 1u);
  mQueue.process(); // the walk has no reason of its own
  EXPECT_EQ(length(mQueue), 1u);
  addTask(slot, 0);
  mQueue.process();
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, WithoutRunningAIOWorkIsTurnedButNotRun)
{
  mpProcessor->mAIO = false;
  cSlot slot;
  tJob job = addAIO(slot);
  unsigned int iNumRun = 7;
  EXPECT_EQ(mQueue.internProcess(false, iNumRun), 0u);
  EXPECT_EQ(iNumRun, 0u);
  EXPECT_EQ(job->type(), cWork::Periodic);
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, InternProcessReportsRunsAndSleep)
{
  cSlot slot;
  addTask(slot, 0);
  addTask(slot, 0);
  addTask(slot, 30);
  unsigned int iNumRun = 7;
  EXPECT_EQ(mQueue.internProcess(true, iNumRun), 0u);
  EXPECT_EQ(iNumRun, 2u);
  EXPECT_EQ(mQueue.internProcess(true, iNumRun), 30u);
  EXPECT_EQ(iNumRun, 0u);
}

TEST_F(cWorkQueueTest, UpdateTimerTellsWhetherThereIsSomethingToWaitFor)
{
  unsigned int iDelay = 7;
  EXPECT_FALSE(mQueue.updateTimer(true, &iDelay));
  EXPECT_EQ(iDelay, 0u);
  cSlot slot;
  tJob job = addTask(slot, 12);
  EXPECT_TRUE(mQueue.updateTimer(true, &iDelay));
  EXPECT_EQ(iDelay, 12u);
  EXPECT_TRUE(mQueue.updateTimer(false, nullptr));
  mClock.advanceMSec(12);
  EXPECT_FALSE(mQueue.updateTimer(false, &iDelay)); // due: no time to wait
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, ProcessEventsWithoutRunningOnlyWaits)
{
  cSlot slot;
  addTask(slot, 0);
  cSlot late;
  addTask(late, 5);
  EXPECT_EQ(mQueue.processEvents(false), 2u);
  EXPECT_EQ(slot.calls(), 0u);
  EXPECT_EQ(numYields(), 0u);
}

TEST_F(cWorkQueueTest, TheProcessorGetsLevelZeroAndTheListOfTheQueue)
{
  cSlot slot;
  addTask(slot, 10);
  mQueue.process();
  EXPECT_EQ(mpProcessor->mYields.back().level, 0u);
  EXPECT_EQ(mpProcessor->mpJobs, &mQueue.jobs());
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, AIOWorkIsStoppedOnTheDispatchAfterTheThirdFailure)
{
  cSlot slot([] { cSTDExceptions::throwCoreBug("boom", "file", 1); });
  tJob job = addAIO(slot);
  job->setName("reader");
  support::cErrorSlot handler;
  job->sigActionError().connect(handler.call());
  for (int i = 0; i < 3; ++i)
  {
    job->aioData().setEvent(true);
    EXPECT_EQ(mQueue.process(), 1u);
  }
  EXPECT_EQ(handler.calls(), 3u);
  EXPECT_TRUE(job->isAmuck());
  EXPECT_TRUE(job->isStarted());
  EXPECT_EQ(mQueue.process(), 1u); // not due: nothing happens
  job->aioData().setEvent(true);
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { mQueue.process(); }), "Stopping amuck work \"reader\"!");
  EXPECT_FALSE(job->isStarted());
  EXPECT_EQ(slot.calls(), 3u);
  EXPECT_EQ(mQueue.level(), 0u);
  EXPECT_EQ(mQueue.current(), nullptr);
  EXPECT_EQ(length(mQueue), 1u);
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cWorkQueueTest, PeriodicWorkNeverGoesAmuck)
{
  cSlot slot([] { cSTDExceptions::throwCoreBug("boom", "file", 1); });
  tJob job = addTask(slot, 10, cWork::Periodic);
  support::cErrorSlot handler;
  job->sigActionError().connect(handler.call());
  for (int i = 0; i < 10; ++i)
  {
    mClock.advanceMSec(10);
    EXPECT_NO_THROW(mQueue.process());
  }
  EXPECT_EQ(slot.calls(), 10u);
}

TEST_F(cWorkQueueTest, AnExceptionOutOfAnActionLeavesTheTurnAndTheQueueStaysUsable)
{
  cSlot failing([] { throw 1; });
  cSlot later;
  tJob first = addTask(failing, 0);
  addTask(later, 0);
  EXPECT_THROW(mQueue.process(), int);
  EXPECT_EQ(mQueue.level(), 0u);
  EXPECT_EQ(mQueue.current(), nullptr);
  EXPECT_EQ(later.calls(), 0u);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(later.calls(), 1u);
  // The failed task is stopped and has left no mark.
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, MarkedNodesOfAnAbortedWalkWaitForTheNextThatWantsASweep)
{
  cSlot done;
  cSlot failing([] { throw 1; });
  addTask(done, 0);
  tJob failed = addTask(failing, 0);
  EXPECT_THROW(mQueue.process(), int);
  EXPECT_EQ(length(mQueue), 2u);
  mQueue.process(); // nothing to sweep for
  EXPECT_EQ(length(mQueue), 2u);
  addTask(done, 0);
  mQueue.process();
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, WithoutProcessorAPassReportsAndRaises)
{
  support::cCaptureOut capture;
  cWorkQueue queue;
  queue.createJob()->setName("orphan");
  std::string const sExpected = "No process event manager for workqueue!";
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { queue.processEvents(true); }), sExpected);
  ASSERT_GE(capture.lines().size(), 6u);
  EXPECT_EQ(capture.lines()[0].text, "*** WORKQUEUE HAS BEEN FOUND A BUG ***");
  EXPECT_EQ(capture.lines()[0].file, "pi/cWorkQueue");
  EXPECT_EQ(capture.lines()[1].text, "WorkQueue status:");
  EXPECT_EQ(capture.lines()[2].text, "No event processor!");
  EXPECT_EQ(capture.lines()[5].text, " * Work (orphan)");
  EXPECT_TRUE(capture.contains("processEvents"));
  unsigned int iNumRun = 0;
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { queue.internProcess(true, iNumRun); }), sExpected);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, AddingTheSameWorkTwiceMakesOneEntry)
{
  cWork work;
  mQueue.addJob(work);
  mQueue.addJob(work);
  EXPECT_EQ(length(mQueue), 1u);
  tJob job(new cWork);
  mQueue.addJob(job);
  mQueue.addJob(job);
  mQueue.addJob(*job);
  EXPECT_EQ(length(mQueue), 2u);
}

TEST_F(cWorkQueueTest, AddingByReferenceAgainOnlyTellsOfAChange)
{
  cWork work;
  mQueue.addJob(work);
  mpi::cLocalEventLoop loop(&mQueue);
  mpProcessor->miWakeUps = 0;
  mQueue.addJob(work);
  EXPECT_EQ(mpProcessor->miWakeUps, 1u);
  tJob job(new cWork);
  mQueue.addJob(job);
  mpProcessor->miWakeUps = 0;
  mQueue.addJob(job);
  EXPECT_EQ(mpProcessor->miWakeUps, 0u);
}

TEST_F(cWorkQueueTest, AddingAnEmptyShareRaises)
{
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { mQueue.addJob(tJob()); }),
            "Invalid shared object dereference!");
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cWorkQueueTest, WorkAddedByReferenceIsKeptByForce)
{
  cWork work;
  cSlot slot;
  work.sigAction.connect(slot.call());
  mQueue.addJob(work);
  EXPECT_TRUE(work.isKeep());
  work.start();
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(length(mQueue), 1u);
  work.start();
  mQueue.process();
  EXPECT_EQ(slot.calls(), 2u);
}

TEST_F(cWorkQueueTest, SharedWorkIsNotKeptByForce)
{
  tJob job(new cWork);
  mQueue.addJob(job);
  EXPECT_FALSE(job->isKeep());
}

TEST_F(cWorkQueueTest, CreatedWorkIsStopped)
{
  tJob job = mQueue.createJob();
  EXPECT_FALSE(job->isStarted());
  EXPECT_EQ(length(mQueue), 1u);
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cWorkQueueTest, DestroyedWorkLeavesADeadEntryForTheNextWalk)
{
  {
    cWork work;
    work.start();
    mQueue.addJob(work);
  }
  ASSERT_EQ(length(mQueue), 1u);
  EXPECT_EQ(mQueue.jobs().begin()->get(), nullptr);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, AQueueWhoseWorkIsAllDestroyedIsEmptyAfterTheNextWalk)
{
  {
    std::vector<std::unique_ptr<cWork>> works;
    for (int i = 0; i < 5; ++i)
    {
      works.push_back(std::make_unique<cWork>());
      mQueue.addJob(*works.back());
    }
  }
  EXPECT_EQ(length(mQueue), 5u);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, RemovedWorkThatTheQueueOwnsIsDestroyedAtOnce)
{
  bool bGone = false;
  tJob job = newFarewell([&] { bGone = true; });
  cWork& work = *job;
  mQueue.addJob(job);
  job.reset();
  EXPECT_FALSE(bGone);
  mQueue.removeJob(work);
  EXPECT_TRUE(bGone);
  EXPECT_EQ(length(mQueue), 1u);
  mQueue.process();
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, RemovedWorkThatOthersHoldLives)
{
  tJob job = mQueue.createJob();
  mQueue.removeJob(*job);
  EXPECT_TRUE(job.isValid());
  mQueue.addJob(job);
  EXPECT_EQ(length(mQueue), 2u);
}

TEST_F(cWorkQueueTest, RemovingUnknownWorkIsNoError)
{
  cWork work;
  mQueue.createJob();
  EXPECT_NO_THROW(mQueue.removeJob(work));
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, RemovalLeavesTheChangeSignalConnected)
{
  cWork work;
  mQueue.addJob(work);
  mQueue.removeJob(work);
  mpi::cLocalEventLoop loop(&mQueue);
  mpProcessor->miWakeUps = 0;
  work.start();
  EXPECT_EQ(mpProcessor->miWakeUps, 1u);
}

TEST_F(cWorkQueueTest, RemovingTheCurrentWorkClearsCurrentUntilItsActionEnds)
{
  cWork work;
  cSlot slot;
  work.sigAction.connect(slot.call());
  slot.mBody = [&] {
    EXPECT_EQ(mQueue.current(), &work);
    mQueue.removeJob(work);
    EXPECT_EQ(mQueue.current(), nullptr);
    EXPECT_EQ(mQueue.createJob()->parent(), nullptr);
  };
  mQueue.addJob(work);
  work.start();
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(mQueue.current(), nullptr);
}

TEST_F(cWorkQueueTest, OwnedWorkThatRemovesItselfLivesUntilItsActionEnds)
{
  bool bGone = false;
  tJob job = newFarewell([&] { bGone = true; });
  cWork& work = *job;
  cSlot slot([&] {
    mQueue.removeJob(work);
    EXPECT_FALSE(bGone);
  });
  work.sigAction.connect(slot.call());
  mQueue.addJob(job);
  work.start(10, cWork::Periodic);
  job.reset();
  mClock.advanceMSec(10);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_TRUE(bGone);
}

TEST_F(cWorkQueueTest, TheSameWorkMayStandInSeveralQueues)
{
  cWorkQueue second;
  second.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  cWorkQueue third;
  third.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  cSlot slot;
  tJob job = mQueue.createJob();
  job->sigAction.connect(slot.call());
  second.addJob(job);
  third.addJob(job);
  second.addJob(job);
  third.addJob(job);
  EXPECT_EQ(length(mQueue), 1u);
  EXPECT_EQ(length(second), 1u);
  EXPECT_EQ(length(third), 1u);
  job->start(10, cWork::Periodic);
  mClock.advanceMSec(10);
  EXPECT_EQ(second.process(), 1u);
  EXPECT_EQ(slot.calls(), 1u);
  second.removeJob(*job);
  mQueue.removeJob(*job);
  mClock.advanceMSec(10);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(second.process(), 0u);
  EXPECT_EQ(third.process(), 1u);
  EXPECT_EQ(slot.calls(), 2u);
  second.addJob(job);
  EXPECT_EQ(length(second), 1u);
  third.removeJob(*job);
  EXPECT_EQ(second.process(), 1u);
}

TEST_F(cWorkQueueTest, WorkInSeveralQueuesLeavesThemAllWhenItIsDestroyed)
{
  cWorkQueue second;
  second.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  {
    cWork work;
    mQueue.addJob(work);
    second.addJob(work);
  }
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(second.process(), 0u);
  EXPECT_TRUE(mQueue.jobs().empty());
  EXPECT_TRUE(second.jobs().empty());
}

TEST_F(cWorkQueueTest, WorkOutlivesItsQueue)
{
  cWork work;
  tJob job(new cWork);
  {
    cWorkQueue queue;
    queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
    queue.addJob(work);
    queue.addJob(job);
  }
  work.start();
  job->start();
  mQueue.addJob(work);
  mQueue.addJob(job);
  EXPECT_EQ(length(mQueue), 2u);
}

TEST_F(cWorkQueueTest, ARemovedWorkThatItsChildSchedulesAgainBecomesTheChildsChild)
{
  cWork parent;
  cWork child;
  cSlot slot([&] { mQueue.addJob(parent); });
  child.sigAction.connect(slot.call());
  mQueue.addJob(child);
  child.reparent(&parent);
  child.start();
  mQueue.process();
  EXPECT_EQ(parent.parent(), &child);
  EXPECT_EQ(child.parent(), &parent);
}

TEST_F(cWorkQueueTest, ClearDropsEverything)
{
  bool bGone = false;
  tJob job = newFarewell([&] { bGone = true; });
  mQueue.addJob(job);
  job.reset();
  cWork work;
  mQueue.addJob(work);
  mpi::cLocalEventLoop loop(&mQueue);
  mpProcessor->miWakeUps = 0;
  mQueue.clear();
  EXPECT_TRUE(bGone);
  EXPECT_EQ(mpProcessor->miWakeUps, 0u); // nothing is told while it clears
  EXPECT_EQ(length(mQueue), 2u);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(length(mQueue), 0u);
  mQueue.addJob(work);
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, AWorksDestructorMayUseTheQueueWhileItClears)
{
  support::cCaptureOut capture;
  cWork byReference;
  tJob removed = mQueue.createJob();
  tJob job = newFarewell([&] {
    mQueue.createJob();
    mQueue.addJob(byReference);
    mQueue.removeJob(*removed);
    mQueue.process();
    mQueue.debugDump();
  });
  mQueue.addJob(job);
  mQueue.createJob();
  job.reset();
  mQueue.clear();
  EXPECT_TRUE(capture.contains(" * zero item"));
  // What came in meanwhile was cleared by the same walk.
  mQueue.process();
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cWorkQueueTest, AWorksDestructorMayUseTheQueueDuringTheSweep)
{
  cSlot slot;
  tJob other = mQueue.createJob();
  tJob job = newFarewell([&] {
    addTask(slot, 5);
    mQueue.removeJob(*other);
    mQueue.process();
  });
  mQueue.addJob(job);
  job->start();
  job.reset();
  mQueue.process();
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(length(mQueue), 1u);
}

TEST_F(cWorkQueueTest, AWorksDestructorMayUseTheDyingQueue)
{
  support::cCaptureOut capture;
  bool bProcessorGone = false;
  bool bSeenProcessor = false;
  {
    cWorkQueue queue;
    cFakeProcessor* const pProcessor = new cFakeProcessor;
    pProcessor->mOnDestruction = [&] { bProcessorGone = true; };
    queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(pProcessor));
    queue.addJob(newFarewell([&] {
      bSeenProcessor = !bProcessorGone;
      queue.createJob();
      queue.addJob(newFarewell([&] { queue.createJob(); }));
      queue.debugDump();
    }));
  }
  EXPECT_TRUE(bSeenProcessor);
  EXPECT_TRUE(bProcessorGone);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, SettingAnEmptyProcessorWipesAllWork)
{
  cSlot slot;
  addTask(slot, 10);
  bool bGone = false;
  mQueue.addJob(newFarewell([&] { bGone = true; }));
  bool bProcessorGone = false;
  mpProcessor->mOnDestruction = [&] { bProcessorGone = true; };
  mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>());
  EXPECT_TRUE(bGone);
  EXPECT_TRUE(bProcessorGone);
  EXPECT_EQ(mQueue.events(), nullptr);
  EXPECT_EQ(mQueue.process(), 0u);
  mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cWorkQueueTest, ReplacingTheProcessorKeepsTheWorkAndDestroysTheFormerOne)
{
  cSlot slot;
  addTask(slot, 10);
  bool bProcessorGone = false;
  mpProcessor->mOnDestruction = [&] { bProcessorGone = true; };
  cFakeProcessor* const pSecond = new cFakeProcessor;
  mstd::tAutoPtr<mpi::cAbstractProcessEvents> holder(pSecond);
  mQueue.setEvents(holder);
  EXPECT_EQ(holder.get(), nullptr);
  EXPECT_TRUE(bProcessorGone);
  EXPECT_EQ(mQueue.events(), pSecond);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(pSecond->mYields.size(), 1u);
}

TEST_F(cWorkQueueTest, AnActionMayTakeTheProcessorAway)
{
  cSlot slot([&] { mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>()); });
  addTask(slot, 0);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(mQueue.level(), 0u);
}

TEST_F(cWorkQueueTest, AnActionMayTakeTheProcessorAwayBeforeAIOWorkComes)
{
  support::cCaptureOut capture;
  tJob job = mQueue.createJob();
  cSlot slot([&] {
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>());
    mQueue.addJob(job);
    job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  });
  addTask(slot, 0);
  EXPECT_THROW(mQueue.process(), mstd::cBugException);
  EXPECT_EQ(mQueue.level(), 0u);
}

TEST_F(cWorkQueueTest, TheFinishedSignalOfASynchronousProcessorStartsNothing)
{
  cSlot slot;
  addTask(slot, 0);
  mpProcessor->sigFinished();
  EXPECT_EQ(slot.calls(), 0u);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, AnAsynchronousProcessorIsPolledInPlaceOfATurn)
{
  cSlot slot;
  addTask(slot, 0);
  mpProcessor->mAsynchronous = true;
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(mpProcessor->miPolls, 1u);
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, AChangeOutsideATurnRearmsAnAsynchronousProcessor)
{
  mpProcessor->mAsynchronous = true;
  cSlot slot;
  tJob job = mQueue.createJob();
  // Even with nothing to wait for: the processor is told.
  ASSERT_EQ(numYields(), 1u);
  job->sigAction.connect(slot.call());
  job->start(70, cWork::Periodic);
  ASSERT_EQ(numYields(), 2u);
  EXPECT_EQ(lastDelay(), 70u);
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, TheFinishedSignalOfAnAsynchronousProcessorRunsWhatIsDueAndRearms)
{
  mpProcessor->mAsynchronous = true;
  cSlot slot;
  addTask(slot, 70, cWork::Periodic);
  size_t const before = numYields();
  mClock.advanceMSec(70);
  mpProcessor->sigFinished();
  EXPECT_EQ(slot.calls(), 1u);
  ASSERT_EQ(numYields(), before + 1);
  EXPECT_EQ(lastDelay(), 70u); // it sleeps although something ran
}

TEST_F(cWorkQueueTest, AnAsynchronousProcessorIsNotRearmedWithoutWork)
{
  mpProcessor->mAsynchronous = true;
  size_t const before = numYields();
  mpProcessor->sigFinished();
  EXPECT_EQ(numYields(), before);
}

TEST_F(cWorkQueueTest, AnAsynchronousPassAlwaysCallsTheProcessor)
{
  mpProcessor->mAsynchronous = true;
  EXPECT_EQ(mQueue.processEvents(true), 0u);
  EXPECT_EQ(numYields(), 1u);
}

TEST_F(cWorkQueueTest, AWorkThatGoesByAsynchronousChangesIsSurvived)
{
  mpProcessor->mAsynchronous = true;
  cSlot slot;
  tJob job = addTask(slot, 10);
  cWork& work = *job;
  job.reset();
  mQueue.removeJob(work); // its destructor tells of a change, which walks the queue
  EXPECT_TRUE(mQueue.jobs().empty() || mQueue.jobs().begin()->get() == nullptr);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, ChangesWakeTheProcessorOnlyUpToTheNumberOfLocalLoops)
{
  cSlot slot;
  tJob job = mQueue.createJob();
  // Outside a turn the level is 0, which is never above the number of loops.
  mpProcessor->miWakeUps = 0;
  job->stop();
  EXPECT_EQ(mpProcessor->miWakeUps, 1u);
  // Inside a turn the level is 1: without a loop nothing is woken.
  slot.mBody = [&] {
    mpProcessor->miWakeUps = 0;
    job->stop();
    EXPECT_EQ(mpProcessor->miWakeUps, 0u);
    mpi::cLocalEventLoop loop(&mQueue);
    job->stop();
    EXPECT_EQ(mpProcessor->miWakeUps, 1u);
  };
  addTask(slot, 0);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 1u);
}

TEST_F(cWorkQueueTest, ANestedWalkDoesNotSweep)
{
  cSlot inner;
  tJob dead = mQueue.createJob();
  cSlot outer([&] {
    mQueue.removeJob(*dead);
    mpi::cLocalEventLoop loop(&mQueue);
    unsigned int const before = length(mQueue);
    loop.process();
    EXPECT_EQ(length(mQueue), before);
  });
  addTask(outer, 0);
  addTask(inner, 0);
  mQueue.process();
  EXPECT_EQ(outer.calls(), 1u);
  EXPECT_EQ(inner.calls(), 1u); // once, by the nested walk
  // What the nested walk has only marked goes with the task that the outer walk ended.
  EXPECT_EQ(length(mQueue), 0u);
}

TEST_F(cWorkQueueTest, ANestedLoopRunsTheAIOWorkItIsInAgain)
{
  cSlot slot;
  tJob job = addAIO(slot);
  slot.mBody = [&] {
    if (slot.calls() < 3)
    {
      mpi::cLocalEventLoop loop(&mQueue);
      loop.process();
    }
  };
  job->aioData().setEvent(true);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 3u);
  EXPECT_FALSE(job->aioData().isEvent());
}

TEST_F(cWorkQueueTest, ANestedLoopDoesNotRunTheTimedWorkItIsInAgain)
{
  for (cWork::Type iType : {cWork::SingleTask, cWork::Periodic})
  {
    cSlot slot;
    tJob job = addTask(slot, 10, iType);
    slot.mBody = [&] {
      mpi::cLocalEventLoop loop(&mQueue);
      loop.process();
      loop.process();
    };
    mClock.advanceMSec(10);
    mQueue.process();
    EXPECT_EQ(slot.calls(), 1u);
    mQueue.clear();
  }
}

TEST_F(cWorkQueueTest, ANestedWalkCountsAnewAndTheOuterOneGoesOnFromThere)
{
  cSlot idle;
  addTask(idle, 1000);
  cSlot outer([&] { EXPECT_EQ(mQueue.process(), 3u); });
  tJob held = addTask(outer, 0); // its destruction would make the queue walk, and count, once more
  addTask(idle, 1000);
  addTask(idle, 1000);
  // The nested walk left 3, the finished task takes one away, and the two behind it are counted once more.
  EXPECT_EQ(mQueue.process(), 4u);
  EXPECT_EQ(mQueue.process(), 3u);
}

TEST_F(cWorkQueueTest, AFinishedTaskIsTakenOutOfACountThatANestedWalkHasSetBack)
{
  cSlot outer([&] { EXPECT_EQ(mQueue.process(), 0u); });
  tJob held = addTask(outer, 0);
  EXPECT_EQ(mQueue.process(), 0u - 1u);
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cWorkQueueTest, CurrentIsRestoredAfterANestedRun)
{
  cSlot inner;
  cSlot outer;
  tJob outerJob = addTask(outer, 0);
  tJob innerJob = addTask(inner, 0);
  inner.mBody = [&] {
    EXPECT_EQ(mQueue.current(), innerJob.get());
    EXPECT_EQ(mQueue.level(), 2u);
  };
  outer.mBody = [&] {
    mQueue.process();
    EXPECT_EQ(mQueue.current(), outerJob.get());
    EXPECT_EQ(mQueue.level(), 1u);
  };
  mQueue.process();
  EXPECT_EQ(inner.calls(), 1u);
}

TEST_F(cWorkQueueTest, CurrentIsRestoredAfterANestedFailure)
{
  cSlot inner([] { throw 1; });
  cSlot outer;
  tJob outerJob = addTask(outer, 0);
  addTask(inner, 0);
  outer.mBody = [&] {
    EXPECT_THROW(mQueue.process(), int);
    EXPECT_EQ(mQueue.current(), outerJob.get());
    EXPECT_EQ(mQueue.level(), 1u);
  };
  mQueue.process();
  EXPECT_EQ(outer.calls(), 1u);
  EXPECT_EQ(mQueue.level(), 0u);
}

// ---------------------------------------------------------------------------------------------------------------------

TEST_F(cWorkQueueTest, TheStatusReportTellsOfEachItem)
{
  support::cCaptureOut capture;
  cSlot slot;
  tJob single = addTask(slot, 40);
  single->setName("one");
  tJob periodic = addTask(slot, 1000, cWork::Periodic);
  periodic->setName("two");
  tJob aio = addAIO(slot);
  aio->setName("three");
  tJob stopped = mQueue.createJob();
  stopped->setName("four");
  tJob dead = mQueue.createJob();
  mQueue.removeJob(*dead);
  mClock.advanceMSec(15);
  mQueue.debugDump();
  std::vector<std::string> lines;
  for (auto const& line : capture.lines())
  {
    lines.push_back(line.text);
    EXPECT_EQ(line.file, "pi/cWorkQueue");
  }
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "WorkQueue status:",
                       "Have event object (synchronous event processor)",
                       "",
                       "Tasks:",
                       " * Work (one)",
                       "   * Single task (planned in 25ms) (scheduled)",
                       "   * Triggered: 0 / numStarted: 1",
                       "",
                       " * Work (two)",
                       "   * Periodic (1000ms interval) (scheduled) (keep)",
                       "   * Triggered: 0 / numStarted: 1",
                       "",
                       " * Work (three)",
                       "   * Asynchronous I/O (scheduled) (keep)",
                       "   * Triggered: 0 / numStarted: 0",
                       "",
                       " * Work (four)",
                       "   * Single task (planned in 0ms)",
                       "   * Triggered: 0 / numStarted: 0",
                       "",
                       " * zero item",
                   }));
}

TEST_F(cWorkQueueTest, TheSecondStatusReportShowsTheDebugRecord)
{
  support::cCaptureOut capture;
  mClock.set(1000000000000000LL); // 01:46:40
  cSlot slot;
  tJob job = addTask(slot, 10, cWork::Periodic);
  tJob fresh = mQueue.createJob();
  mQueue.debugDump();
  EXPECT_FALSE(capture.contains("Last start at"));
  ASSERT_NE(job->statistic().hasDebugInfo(), nullptr);
  mClock.advanceMSec(20000);
  mQueue.process();
  capture.clear();
  mClock.advanceMSec(1000);
  mQueue.debugDump();
  std::vector<std::string> lines;
  for (auto const& line : capture.lines())
  {
    lines.push_back(line.text);
  }
  ASSERT_GE(lines.size(), 9u);
  EXPECT_EQ(lines[6], "   * Triggered: 1 / numStarted: 2");
  EXPECT_EQ(lines[7], "   * Last start at: 01:47:00");
  EXPECT_EQ(lines[8], "   * Last triggered: 01:47:00");
  EXPECT_TRUE(capture.contains("TheSecondStatusReportShowsTheDebugRecord") || capture.contains("main"));
  // Never started and never triggered: only the creation stack.
  size_t iFresh = 9;
  while (iFresh < lines.size() && lines[iFresh] != " * Work ()")
  {
    ++iFresh;
  }
  ASSERT_LT(iFresh + 3, lines.size());
  EXPECT_EQ(lines[iFresh + 2], "   * Triggered: 0 / numStarted: 0");
  EXPECT_EQ(lines[iFresh + 3], "");
  EXPECT_EQ(lines.back(), "");
}

TEST_F(cWorkQueueTest, TheStatusReportNamesAnAsynchronousProcessor)
{
  support::cCaptureOut capture;
  mpProcessor->mAsynchronous = true;
  mQueue.debugDump();
  ASSERT_EQ(capture.lines().size(), 4u);
  EXPECT_EQ(capture.lines()[1].text, "Have event object (asynchronous event processor)");
}

TEST_F(cWorkQueueTest, AddingTenThousandJobsIsNotQuadratic)
{
  // Every addition looks for a duplicate; the clock of the test counts nothing here, the limit of the test run does.
  std::vector<tJob> jobs;
  for (int i = 0; i < 10000; ++i)
  {
    jobs.push_back(mQueue.createJob());
  }
  for (tJob const& job : jobs)
  {
    mQueue.addJob(job);
  }
  EXPECT_EQ(length(mQueue), 10000u);
  for (tJob const& job : jobs)
  {
    mQueue.removeJob(*job);
  }
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_TRUE(mQueue.jobs().empty());
}

TEST_F(cWorkQueueTest, WorkIsFoundAgainAfterMostOfTheOthersHaveGone)
{
  // Entries that go leave gaps, which are closed from time to time: what stays must be reached by its changes.
  std::vector<std::unique_ptr<cSlot>> slots;
  std::vector<tJob> kept;
  for (int i = 0; i < 400; ++i)
  {
    slots.push_back(std::make_unique<cSlot>());
    bool const bKept = i % 7 == 3;
    tJob job = addTask(*slots.back(), bKept ? 1000 : 0, bKept ? cWork::Periodic : cWork::SingleTask);
    if (bKept)
    {
      kept.push_back(job);
    }
  }
  cWorkQueue second;
  second.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cFakeProcessor));
  second.addJob(kept[5]);
  EXPECT_EQ(mQueue.process(), kept.size());
  EXPECT_EQ(length(mQueue), kept.size());
  for (tJob const& job : kept)
  {
    job->stop();
  }
  EXPECT_EQ(mQueue.process(), 0u);
  kept[5]->start(20, cWork::Periodic);
  kept[50]->start(10, cWork::Periodic);
  EXPECT_EQ(mQueue.process(), 2u);
  EXPECT_EQ(lastDelay(), 10u);
  EXPECT_EQ(second.process(), 1u);
  mQueue.removeJob(*kept[50]);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(lastDelay(), 20u);
  mQueue.removeJob(*kept[5]);
  EXPECT_EQ(mQueue.process(), 0u);
  EXPECT_EQ(second.process(), 1u);
  EXPECT_EQ(length(mQueue), kept.size() - 2);
}

TEST_F(cWorkQueueTest, AnEventOfDetachedDataReachesNobody)
{
  cSlot slot;
  tJob job = addAIO(slot);
  std::unique_ptr<mpi::cAbstractAIOData> const pFormer(&job->aioData());
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData));
  pFormer->setEvent(true);
  mQueue.process();
  EXPECT_EQ(slot.calls(), 0u);
}

TEST_F(cWorkQueueTest, AFarTimerDoesNotHideANearOneInFrontOfIt)
{
  cSlot slot;
  addTask(slot, 10);
  addTask(slot, 3000000000u);
  addTask(slot, 20);
  mQueue.process();
  // Only the minimum found so far is cut to 32 bits; the wait that is compared with it is not.
  EXPECT_EQ(lastDelay(), 10u);
}
