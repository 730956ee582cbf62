#include "pi/cWork.h"

#include "pi/cFDAIOData.h"
#include "pi/cLocalEventProcessor.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cSlotOf.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using mpi::cWork;
using support::cChangedSlot;
using support::cDestroyedSlot;
using support::cErrorSlot;
using support::cSlot;

namespace
{

long long const Start = 1000000000000000LL;

// Tells when it goes.
class cToldData : public mpi::cAbstractAIOData
{
public:
  explicit cToldData(bool& bGone) : mGone(bGone) {}
  ~cToldData() override { mGone = true; }

private:
  bool& mGone;
};

mstd::tAutoPtr<mpi::cAbstractAIOData> newData()
{
  return mstd::tAutoPtr<mpi::cAbstractAIOData>(new mpi::cFDAIOData);
}

void raiseBug()
{
  cSTDExceptions::throwCoreBug("boom", "file", 1);
}

// Fails the action of a work by a slot, as often as it is told.
class cFailing : public mrmi::cConnectable
{
public:
  explicit cFailing(cWork& work) { work.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cFailing::slt)); }
  void slt()
  {
    if (mFail)
    {
      raiseBug();
    }
  }
  bool mFail = true;
};

class cOverridden : public cWork
{
public:
  void action() override { ++miCalls; }
  unsigned int miCalls = 0;
};

} // namespace

TEST(cWork, NewWorkIsAStoppedSingleTaskWithoutName)
{
  support::cVirtualClock clock;
  cWork work;
  cWork const& constant = work;
  EXPECT_EQ(work.type(), cWork::SingleTask);
  EXPECT_EQ(work.interval(), 0u);
  EXPECT_FALSE(work.isStarted());
  EXPECT_FALSE(work.isKeep());
  EXPECT_FALSE(work.isAmuck());
  EXPECT_TRUE(work.isDelegateExceptions());
  EXPECT_EQ(work.scheduledTime().get(), 0u);
  EXPECT_EQ(work.plannedTime().get(), 0u);
  EXPECT_EQ(work.name().length(), 0u);
  EXPECT_EQ(work.hasAIOData(), nullptr);
  EXPECT_EQ(constant.hasAIOData(), nullptr);
  EXPECT_EQ(work.parent(), nullptr);
  EXPECT_EQ(constant.parent(), nullptr);
  EXPECT_EQ(constant.statistic().numStarted(), 0u);
  EXPECT_EQ(clock.numReads(), 0u);
}

TEST(cWork, TypesHaveTheirValues)
{
  EXPECT_EQ(cWork::SingleTask, 0);
  EXPECT_EQ(cWork::Periodic, 1);
  EXPECT_EQ(cWork::AIO, 2);
}

TEST(cWork, SingleTaskIsPlannedAfterItsDelayButStoresNoInterval)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(100, cWork::SingleTask);
  EXPECT_EQ(work.interval(), 0u);
  EXPECT_EQ(work.scheduledTime().get(), piUInt64(Start));
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start + 100000));
  EXPECT_EQ(work.type(), cWork::SingleTask);
  EXPECT_TRUE(work.isStarted());
  EXPECT_EQ(work.statistic().numStarted(), 1u);
}

TEST(cWork, PeriodicWorkStoresItsInterval)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(100, cWork::Periodic);
  EXPECT_EQ(work.interval(), 100u);
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start + 100000));
  EXPECT_EQ(work.type(), cWork::Periodic);
}

TEST(cWork, TheLongestDelayIsPlannedWithoutWrapping)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(0xFFFFFFFFu, cWork::SingleTask);
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start) + 4294967295ULL * 1000);
}

TEST(cWork, StartOfNeverStartedWorkIsDueAtOnce)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start();
  EXPECT_EQ(work.plannedTime(), work.scheduledTime());
  EXPECT_EQ(work.scheduledTime().get(), piUInt64(Start));
  EXPECT_TRUE(work.isStarted());
}

TEST(cWork, StartWithoutArgumentsKeepsTypeAndInterval)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(20, cWork::Periodic);
  work.stop();
  clock.advance(5);
  work.start();
  EXPECT_EQ(work.type(), cWork::Periodic);
  EXPECT_EQ(work.interval(), 20u);
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start + 5 + 20000));
  EXPECT_EQ(work.statistic().numStarted(), 2u);
}

TEST(cWork, StartAsAIOMakesPeriodicWorkOfWorkWithData)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.setAIOData(newData());
  EXPECT_EQ(work.type(), cWork::AIO);
  work.start(50, cWork::AIO);
  EXPECT_EQ(work.type(), cWork::Periodic);
  EXPECT_EQ(work.interval(), 50u);
  EXPECT_NE(work.hasAIOData(), nullptr);
}

TEST(cWork, StopClearsStartedAndTells)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(50, cWork::Periodic);
  cChangedSlot changed;
  work.sigChanged.connect(changed.call());
  work.stop();
  EXPECT_FALSE(work.isStarted());
  EXPECT_EQ(changed.calls(), 1u);
  EXPECT_EQ(changed.last(), &work);
  EXPECT_EQ(work.type(), cWork::Periodic);
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start + 50000));
}

TEST(cWork, MarkDoneClearsStartedSilently)
{
  cWork work;
  work.start();
  cChangedSlot changed;
  work.sigChanged.connect(changed.call());
  work.markDone();
  EXPECT_FALSE(work.isStarted());
  EXPECT_EQ(changed.calls(), 0u);
}

TEST(cWork, EveryRestartTellsOnce)
{
  cWork work;
  cChangedSlot changed;
  work.sigChanged.connect(changed.call());
  work.start();
  work.start(1, cWork::SingleTask);
  work.internRestart(false);
  work.internRestart(2, true, false);
  EXPECT_EQ(changed.calls(), 4u);
  EXPECT_EQ(changed.last(), &work);
}

TEST(cWork, TheChangeIsToldWhenEverythingIsInPlace)
{
  support::cVirtualClock clock(Start);
  cWork work;
  bool bSeen = false;
  cChangedSlot changed([&](cWork* pWork) {
    bSeen = pWork->isStarted() && pWork->type() == cWork::Periodic && pWork->interval() == 30 &&
            pWork->plannedTime().get() == piUInt64(Start + 30000);
  });
  work.sigChanged.connect(changed.call());
  work.start(30, cWork::Periodic);
  EXPECT_TRUE(bSeen);
}

TEST(cWork, SettingNameOrFlagsTellsNothing)
{
  cWork work;
  cChangedSlot changed;
  work.sigChanged.connect(changed.call());
  work.setName("name");
  work.setForceKeep(true);
  work.setDelegateExceptions(false);
  work.enableDebug();
  EXPECT_EQ(changed.calls(), 0u);
  EXPECT_TRUE(work.name() == "name");
  EXPECT_TRUE(work.isKeep());
  EXPECT_FALSE(work.isDelegateExceptions());
  EXPECT_NE(work.statistic().hasDebugInfo(), nullptr);
}

TEST(cWork, IsKeptByForceOrByItsType)
{
  cWork work;
  EXPECT_FALSE(work.isKeep());
  work.setForceKeep(true);
  EXPECT_TRUE(work.isKeep());
  work.setForceKeep(false);
  work.start(1, cWork::Periodic);
  EXPECT_TRUE(work.isKeep());
  work.start(1, cWork::SingleTask);
  EXPECT_FALSE(work.isKeep());
  work.setAIOData(newData());
  EXPECT_TRUE(work.isKeep());
}

TEST(cWork, AIODataStartsTheWorkWithoutTouchingItsTimes)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.start(10, cWork::Periodic);
  work.stop();
  cChangedSlot changed;
  work.sigChanged.connect(changed.call());
  clock.advance(1000);
  mstd::tAutoPtr<mpi::cAbstractAIOData> pData = newData();
  mpi::cAbstractAIOData* const pRaw = pData.get();
  work.setAIOData(pData);
  EXPECT_EQ(pData.get(), nullptr);
  EXPECT_EQ(work.hasAIOData(), pRaw);
  EXPECT_EQ(&work.aioData(), pRaw);
  EXPECT_EQ(&const_cast<cWork const&>(work).aioData(), pRaw);
  EXPECT_EQ(work.type(), cWork::AIO);
  EXPECT_TRUE(work.isStarted());
  EXPECT_EQ(work.interval(), 10u);
  EXPECT_EQ(work.plannedTime().get(), piUInt64(Start + 10000));
  EXPECT_EQ(work.statistic().numStarted(), 1u);
  EXPECT_EQ(changed.calls(), 1u);
}

TEST(cWork, TakingAIODataAwayStopsTheWork)
{
  cWork work;
  bool bGone = false;
  mstd::tAutoPtr<mpi::cAbstractAIOData> pFormer(new cToldData(bGone));
  mpi::cAbstractAIOData* const pRaw = pFormer.get();
  work.setAIOData(pFormer);
  work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
  EXPECT_FALSE(work.isStarted());
  EXPECT_EQ(work.type(), cWork::AIO);
  EXPECT_EQ(work.hasAIOData(), nullptr);
  EXPECT_FALSE(bGone);
  delete pRaw; // replaced data is its setter's again
  EXPECT_TRUE(bGone);
}

TEST(cWork, NoAIODataInPlaceOfNoneLeavesStartedAsItWas)
{
  cWork work;
  work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
  EXPECT_FALSE(work.isStarted());
  EXPECT_EQ(work.type(), cWork::AIO);
  work.start(5, cWork::Periodic);
  work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
  EXPECT_TRUE(work.isStarted());
  EXPECT_EQ(work.type(), cWork::AIO);
}

TEST(cWork, ReplacedAIODataIsNotDestroyed)
{
  bool bFirstGone = false;
  bool bSecondGone = false;
  mpi::cAbstractAIOData* const pFirst = new cToldData(bFirstGone);
  {
    cWork work;
    work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(pFirst));
    work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new cToldData(bSecondGone)));
    EXPECT_FALSE(bFirstGone);
  }
  EXPECT_FALSE(bFirstGone);
  EXPECT_TRUE(bSecondGone);
  delete pFirst;
}

TEST(cWork, AIODataOfWorkWithoutRaises)
{
  cWork work;
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { work.aioData(); }),
            "Work does not own asynchronous I/O data!");
  cWork const& constant = work;
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { constant.aioData(); }),
            "Work does not own asynchronous I/O data!");
}

TEST(cWork, ActionCountsAndFiresTheSignal)
{
  cWork work;
  cSlot slot;
  work.sigAction.connect(slot.call());
  work.action();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(work.statistic().numTriggered(), 1u);
}

TEST(cWork, ActionWithoutSlotsIsNoError)
{
  cWork work;
  work.action();
  EXPECT_EQ(work.statistic().numTriggered(), 1u);
}

TEST(cWork, TheRawOperatorOnlyFires)
{
  cWork work;
  cSlot slot;
  work.sigAction.connect(slot.call());
  work.operator void();
  EXPECT_EQ(slot.calls(), 1u);
  EXPECT_EQ(work.statistic().numTriggered(), 0u);
  slot.mBody = raiseBug;
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  EXPECT_THROW(work.operator void(), mstd::cBugException);
  EXPECT_EQ(handler.calls(), 0u);
}

TEST(cWork, UnhandledExceptionLeavesTheActionUnchanged)
{
  cWork work;
  cFailing failing(work);
  EXPECT_THROW(work.action(), mstd::cBugException);
  EXPECT_EQ(work.statistic().numTriggered(), 1u);
  EXPECT_FALSE(work.isAmuck());
}

TEST(cWork, HandlerOnTheWorkItselfGetsFalse)
{
  cWork work;
  cFailing failing(work);
  cErrorSlot handler([](mstd::cAbstractException const& e, bool) { EXPECT_EQ(e.type(), 0); });
  work.sigActionError().connect(handler.call());
  EXPECT_NO_THROW(work.action());
  EXPECT_EQ(handler.calls(), 1u);
  EXPECT_FALSE(handler.fromChild());
}

TEST(cWork, HandlerOnlyOnTheParentGetsTrue)
{
  cWork grandparent;
  cWork parent;
  cWork work;
  work.reparent(&parent);
  parent.reparent(&grandparent);
  cFailing failing(work);
  cErrorSlot handler;
  grandparent.sigActionError().connect(handler.call());
  EXPECT_NO_THROW(work.action());
  EXPECT_EQ(handler.calls(), 1u);
  EXPECT_TRUE(handler.fromChild());
}

TEST(cWork, TheNearestHandlerTakesTheError)
{
  cWork parent;
  cWork work;
  work.reparent(&parent);
  cFailing failing(work);
  cErrorSlot near;
  cErrorSlot far;
  work.sigActionError().connect(near.call());
  parent.sigActionError().connect(far.call());
  work.action();
  EXPECT_EQ(near.calls(), 1u);
  EXPECT_EQ(far.calls(), 0u);
}

TEST(cWork, AnErrorSignalWithoutSlotsIsNoHandler)
{
  cWork work;
  cFailing failing(work);
  work.sigActionError();
  EXPECT_THROW(work.action(), mstd::cBugException);
}

TEST(cWork, ForeignExceptionIsShownAsRuntimeExceptionThatNamesTheWork)
{
  cWork work;
  work.setName("reader");
  cSlot slot([] { throw 42; });
  work.sigAction.connect(slot.call());
  std::string sMessage;
  std::string sType;
  cErrorSlot handler([&](mstd::cAbstractException const& e, bool) {
    sMessage = support::messageOf(e);
    sType = e.typeName().c_str();
  });
  work.sigActionError().connect(handler.call());
  EXPECT_NO_THROW(work.action());
  EXPECT_EQ(sMessage, "Error performing work reader!");
  EXPECT_EQ(sType, "cRuntimeException");
}

TEST(cWork, ForeignExceptionThatNobodyTakesIsThrownOnAsItWas)
{
  cWork work;
  cSlot slot([] { throw 42; });
  work.sigAction.connect(slot.call());
  EXPECT_THROW(work.action(), int);
}

TEST(cWork, ForeignExceptionCountsAsFailure)
{
  cWork work;
  cSlot slot([] { throw 42; });
  work.sigAction.connect(slot.call());
  for (int i = 0; i < 3; ++i)
  {
    EXPECT_THROW(work.action(), int);
  }
  EXPECT_TRUE(work.isAmuck());
}

TEST(cWork, WithoutDelegationTheExceptionPassesAllHandlersAndDoesNotCount)
{
  cWork work;
  cFailing failing(work);
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  work.setDelegateExceptions(false);
  for (int i = 0; i < 5; ++i)
  {
    EXPECT_THROW(work.action(), mstd::cBugException);
  }
  EXPECT_EQ(handler.calls(), 0u);
  EXPECT_FALSE(work.isAmuck());
}

TEST(cWork, WithoutDelegationForeignExceptionsPassToo)
{
  cWork work;
  cSlot slot([] { throw 42; });
  work.sigAction.connect(slot.call());
  work.setDelegateExceptions(false);
  EXPECT_THROW(work.action(), int);
}

TEST(cWork, ThreeFailuresInARowOfAIOWorkAreAmuck)
{
  cWork work;
  work.setAIOData(newData());
  cFailing failing(work);
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  work.action();
  work.action();
  EXPECT_FALSE(work.isAmuck());
  work.action();
  EXPECT_TRUE(work.isAmuck());
}

TEST(cWork, OneSuccessSetsTheErrorCountBackToZero)
{
  cWork work;
  work.setAIOData(newData());
  cFailing failing(work);
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  work.action();
  work.action();
  failing.mFail = false;
  work.action();
  failing.mFail = true;
  work.action();
  work.action();
  EXPECT_FALSE(work.isAmuck());
  work.action();
  EXPECT_TRUE(work.isAmuck());
}

TEST(cWork, RestartWipesTheErrorCountAndNewDataDoesNot)
{
  cWork work;
  cFailing failing(work);
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  for (int i = 0; i < 3; ++i)
  {
    work.action();
  }
  work.setAIOData(newData());
  EXPECT_TRUE(work.isAmuck());
  work.stop();
  EXPECT_TRUE(work.isAmuck());
  work.start();
  EXPECT_FALSE(work.isAmuck());
}

TEST(cWork, OnlyTheFailingWorkCountsTheError)
{
  cWork parent;
  cWork work;
  work.reparent(&parent);
  cFailing failing(work);
  cErrorSlot handler;
  parent.sigActionError().connect(handler.call());
  for (int i = 0; i < 3; ++i)
  {
    work.action();
  }
  EXPECT_TRUE(work.isAmuck());
  EXPECT_FALSE(parent.isAmuck());
}

TEST(cWork, AHandlerThatThrowsIsReportedAndTheSearchGoesOn)
{
  support::cCaptureOut capture;
  cWork parent;
  cWork work;
  work.reparent(&parent);
  cFailing failing(work);
  cErrorSlot broken([](mstd::cAbstractException const&, bool) { throw 1; });
  cErrorSlot taker;
  work.sigActionError().connect(broken.call());
  parent.sigActionError().connect(taker.call());
  EXPECT_NO_THROW(work.action());
  EXPECT_EQ(broken.calls(), 1u);
  EXPECT_EQ(taker.calls(), 1u);
  EXPECT_TRUE(taker.fromChild());
  auto const& lines = capture.lines();
  ASSERT_EQ(lines.size(), 4u);
  EXPECT_EQ(lines[0].text, "digraph G {");
  EXPECT_EQ(lines[1].text, "}");
  EXPECT_EQ(lines[2].text, "");
  EXPECT_EQ(lines[0].file, "");
  EXPECT_EQ(lines[3].text, "WARNING: exception in cWork::handleActionError - handler - try next...");
  EXPECT_EQ(lines[3].file, "pi/cWork");
}

TEST(cWork, WhenEveryHandlerThrowsTheFirstExceptionLeavesTheAction)
{
  support::cCaptureOut capture;
  cWork work;
  cFailing failing(work);
  cErrorSlot broken([](mstd::cAbstractException const&, bool) { throw 1; });
  work.sigActionError().connect(broken.call());
  EXPECT_THROW(work.action(), mstd::cBugException);
}

TEST(cWork, HandleActionErrorTellsWhetherItWasTaken)
{
  cWork work;
  mucs::cLIMessage message;
  message << "$MTR$Text";
  mstd::cRuntimeException const e(message, nullptr, 0);
  EXPECT_FALSE(work.handleActionError(e, false));
  cErrorSlot handler;
  work.sigActionError().connect(handler.call());
  EXPECT_TRUE(work.handleActionError(e, true));
  EXPECT_FALSE(handler.fromChild());
}

TEST(cWork, AnOverrideReplacesSignalAndStatistic)
{
  cOverridden work;
  cWork& base = work;
  base.action();
  EXPECT_EQ(work.miCalls, 1u);
  EXPECT_EQ(work.statistic().numTriggered(), 0u);
}

TEST(cWork, ReparentToItselfChangesNothing)
{
  cWork parent;
  cWork work;
  work.reparent(&parent);
  work.reparent(&work);
  EXPECT_EQ(work.parent(), &parent);
  EXPECT_EQ(const_cast<cWork const&>(work).parent(), &parent);
}

TEST(cWork, ReparentMovesAndClears)
{
  cWork first;
  cWork second;
  cWork work;
  work.reparent(&first);
  work.reparent(&second);
  EXPECT_EQ(work.parent(), &second);
  work.reparent(nullptr);
  EXPECT_EQ(work.parent(), nullptr);
}

TEST(cWork, ChildrenOfADestroyedParentMoveToTheGrandparent)
{
  cWork grandparent;
  cWork firstChild;
  cWork secondChild;
  {
    cWork parent;
    parent.reparent(&grandparent);
    firstChild.reparent(&parent);
    secondChild.reparent(&parent);
  }
  EXPECT_EQ(firstChild.parent(), &grandparent);
  EXPECT_EQ(secondChild.parent(), &grandparent);
}

TEST(cWork, ChildrenOfADestroyedRootBecomeRoots)
{
  cWork child;
  {
    cWork parent;
    child.reparent(&parent);
  }
  EXPECT_EQ(child.parent(), nullptr);
}

TEST(cWork, ARingOfParentsDoesNotTrapAnError)
{
  cWork outside;
  cWork a;
  cWork b;
  cWork c;
  outside.reparent(&a);
  a.reparent(&b);
  b.reparent(&c);
  c.reparent(&a);
  cFailing failing(outside);
  EXPECT_THROW(outside.action(), mstd::cBugException);
  cErrorSlot handler;
  c.sigActionError().connect(handler.call());
  EXPECT_NO_THROW(outside.action());
  EXPECT_EQ(handler.calls(), 1u);
}

TEST(cWork, DestructionTellsTheChangeAndThenTheEnd)
{
  std::vector<std::string> order;
  bool bGone = false;
  cErrorSlot handler;
  cChangedSlot changed;
  cDestroyedSlot destroyed;
  cWork parent;
  {
    cWork work;
    work.reparent(&parent);
    work.setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new cToldData(bGone)));
    work.sigActionError().connect(handler.call());
    changed.mBody = [&](cWork* pWork) {
      order.push_back("changed");
      EXPECT_TRUE(bGone);
      EXPECT_FALSE(pWork->isStarted());
      EXPECT_EQ(pWork->hasAIOData(), nullptr);
      EXPECT_EQ(pWork->parent(), nullptr);
    };
    work.sigChanged.connect(changed.call());
    destroyed.mBody = [&](cWork const& gone) {
      order.push_back("destroyed");
      EXPECT_EQ(&gone, &work);
    };
    work.sigDestroyed().connect(destroyed.call());
  }
  EXPECT_EQ(order, (std::vector<std::string>{"changed", "destroyed"}));
}

TEST(cWork, LinksMadeBySlotsOfTheDestructorAreTakenBack)
{
  cWork child;
  cWork parent;
  cChangedSlot changed([&](cWork* pWork) {
    child.reparent(pWork);
    pWork->reparent(&parent);
  });
  {
    cWork work;
    work.sigChanged.connect(changed.call());
  }
  // The dying work left the tree: its child moved up to its parent.
  EXPECT_EQ(child.parent(), &parent);
}

TEST(cWork, WhatSlotsOfTheDestructorThrowIsReportedAndGoesNoFurther)
{
  support::cCaptureOut capture;
  cChangedSlot changed([](cWork*) { raiseBug(); });
  cDestroyedSlot destroyed([](cWork const&) { throw 1; });
  {
    cWork work;
    work.sigChanged.connect(changed.call());
    work.sigDestroyed().connect(destroyed.call());
  }
  EXPECT_EQ(changed.calls(), 1u);
  EXPECT_EQ(destroyed.calls(), 1u);
  EXPECT_EQ(capture.lines().size(), 2u);
  EXPECT_TRUE(capture.contains("WARNING: exception in cWork::~cWork - slot - ignored..."));
}

TEST(cWork, AQueueLearnsOfTheEndEvenIfASlotInFrontOfItThrows)
{
  support::cCaptureOut capture;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cLocalEventProcessor));
  cDestroyedSlot destroyed([](cWork const&) { throw 1; });
  {
    cWork work;
    work.sigDestroyed().connect(destroyed.call());
    queue.addJob(work);
  }
  EXPECT_EQ(queue.jobs().begin()->get(), nullptr);
  EXPECT_EQ(queue.process(), 0u);
  EXPECT_TRUE(queue.jobs().empty());
}

TEST(cWork, DebuggingRecordsStartsAndTriggers)
{
  support::cVirtualClock clock(Start);
  cWork work;
  work.enableDebug();
  clock.set(Start + 10);
  work.start();
  clock.set(Start + 20);
  work.action();
  ASSERT_NE(work.statistic().hasDebugInfo(), nullptr);
  EXPECT_EQ(work.statistic().hasDebugInfo()->lastStart().get(), piUInt64(Start + 10));
  EXPECT_EQ(work.statistic().hasDebugInfo()->lastTrigger().get(), piUInt64(Start + 20));
}
