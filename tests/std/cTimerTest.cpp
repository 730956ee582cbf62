#include "std/cTimer.h"

#include "pi/cSystem.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "pi/schedule.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "std/cRuntimeException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/virtualclock.h"

#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <new>

using mstd::cTimer;

namespace
{

/// Counts what a timer fires, and does something each time.
class cReceiver : public mrmi::cConnectable
{
public:
  void sltFired()
  {
    ++count;
    if (action)
    {
      std::function<void()> const now = action; // the receiver's action may exchange itself
      now();
    }
  }

  void listenTo(cTimer& timer)
  {
    timer.sigElapsed.connect(mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(*this, &cReceiver::sltFired));
  }

  unsigned int count = 0;
  std::function<void()> action;
};

class cTimerTest : public testing::Test
{
protected:
  ~cTimerTest() override { mpi::cSystem::cleanup(); }

  /// Lets time pass, one turn of the queue at each millisecond.
  void pass(unsigned int iMSec)
  {
    turn();
    for (; iMSec != 0; --iMSec)
    {
      clock.advanceMSec(1);
      turn();
    }
  }

  void turn()
  {
    unsigned int delay = 0;
    mpi::system().wq.updateTimer(true, &delay);
  }

  unsigned int numJobs()
  {
    unsigned int count = 0;
    for (auto const& job : mpi::system().wq.jobs())
    {
      count += job.isValid() ? 1 : 0;
    }
    return count;
  }

  support::cVirtualClock clock;
  cReceiver receiver;
};

class cTimerFault : public cTimerTest
{
};

} // namespace

TEST_F(cTimerTest, AFreshTimerStandsStill)
{
  cTimer timer;
  receiver.listenTo(timer);
  pass(100);
  EXPECT_EQ(receiver.count, 0u);
  EXPECT_FALSE(timer.isElapsed());
  EXPECT_FALSE(timer());
  EXPECT_EQ(numJobs(), 0u);
}

TEST_F(cTimerTest, AnIntervalFiresAgainAndAgain)
{
  cTimer timer;
  receiver.listenTo(timer);
  timer.setInterval(10);
  pass(9);
  EXPECT_EQ(receiver.count, 0u);
  pass(1);
  EXPECT_EQ(receiver.count, 1u);
  pass(30);
  EXPECT_EQ(receiver.count, 4u);
  timer.setInterval(7);
  pass(6);
  EXPECT_EQ(receiver.count, 4u);
  pass(1);
  EXPECT_EQ(receiver.count, 5u);
  EXPECT_EQ(numJobs(), 1u);
}

TEST_F(cTimerTest, TheConstructorMaySetTheInterval)
{
  cTimer timer(5);
  receiver.listenTo(timer);
  pass(15);
  EXPECT_EQ(receiver.count, 3u);
}

TEST_F(cTimerTest, ASingleShotIsElapsedUntilReset)
{
  cTimer timer;
  receiver.listenTo(timer);
  timer.setSingleShot(10);
  pass(9);
  EXPECT_FALSE(timer.isElapsed());
  pass(1);
  EXPECT_TRUE(timer.isElapsed());
  EXPECT_TRUE(timer());
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
  EXPECT_TRUE(timer.isElapsed());
  timer.reset();
  EXPECT_FALSE(timer.isElapsed());
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
}

TEST_F(cTimerTest, ASingleShotMayBeSetAgain)
{
  cTimer timer;
  receiver.listenTo(timer);
  for (unsigned int i = 1; i <= 3; ++i)
  {
    timer.setSingleShot(10);
    EXPECT_FALSE(timer.isElapsed());
    pass(20);
    EXPECT_EQ(receiver.count, i);
    EXPECT_TRUE(timer.isElapsed());
  }
}

TEST_F(cTimerTest, ASingleShotMayBeSetAgainByOtherWorkOfTheSameTurn)
{
  cTimer first;
  cTimer second;
  cReceiver other;
  receiver.listenTo(first);
  other.listenTo(second);
  other.action = [&] { first.setSingleShot(10); };
  first.setSingleShot(10);
  second.setSingleShot(10);
  pass(10);
  EXPECT_EQ(receiver.count, 1u);
  EXPECT_EQ(other.count, 1u);
  pass(10);
  EXPECT_EQ(receiver.count, 2u);
}

TEST_F(cTimerTest, AnIntervalIsElapsedOnlyWhileItFires)
{
  cTimer timer(10);
  bool wasElapsed = false;
  receiver.listenTo(timer);
  receiver.action = [&] { wasElapsed = timer.isElapsed(); };
  pass(10);
  EXPECT_TRUE(wasElapsed);
  EXPECT_FALSE(timer.isElapsed());
}

TEST_F(cTimerTest, ResetStopsAnInterval)
{
  cTimer timer(10);
  receiver.listenTo(timer);
  pass(10);
  timer.reset();
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
  timer.setInterval(10);
  pass(10);
  EXPECT_EQ(receiver.count, 2u);
}

TEST_F(cTimerTest, ItsWorkHasAName)
{
  cTimer timer(10);
  ASSERT_EQ(numJobs(), 1u);
  for (auto const& job : mpi::system().wq.jobs())
  {
    EXPECT_STREQ(job->name().c_str(), "mstd::cTimer");
    EXPECT_EQ(job->type(), mpi::cWork::Periodic);
    EXPECT_EQ(job->interval(), 10u);
  }
}

TEST_F(cTimerTest, NobodyNeedsToListen)
{
  cTimer timer;
  timer.setSingleShot(1);
  pass(1);
  EXPECT_TRUE(timer.isElapsed());
}

TEST_F(cTimerTest, ASlotMaySetItsTimerAnew)
{
  cTimer timer;
  receiver.listenTo(timer);
  receiver.action = [&] { timer.setSingleShot(5); };
  timer.setSingleShot(5);
  pass(20);
  EXPECT_EQ(receiver.count, 4u);
  EXPECT_FALSE(timer.isElapsed()) << "it waits for its next shot";
  receiver.action = [&] { timer.setInterval(2); };
  pass(5);
  EXPECT_EQ(receiver.count, 5u);
  EXPECT_FALSE(timer.isElapsed());
  receiver.action = nullptr;
  pass(4);
  EXPECT_EQ(receiver.count, 7u);
  receiver.action = [&] { timer.reset(); };
  pass(10);
  EXPECT_EQ(receiver.count, 8u);
  EXPECT_FALSE(timer.isElapsed());
}

TEST_F(cTimerTest, AThrowingSlotLeavesTheTimerInOrder)
{
  cTimer timer(10);
  receiver.listenTo(timer);
  receiver.action = [] { throw mstd::cRuntimeException(); };
  EXPECT_THROW(pass(10), mstd::cRuntimeException);
  EXPECT_FALSE(timer.isElapsed());
  receiver.action = nullptr;
  pass(10);
  EXPECT_EQ(receiver.count, 2u);
}

TEST_F(cTimerTest, MayBeDestroyedInAnyState)
{
  {
    cTimer idle;
    cTimer interval(10);
    cTimer waiting;
    waiting.setSingleShot(10);
    cTimer done;
    done.setSingleShot(1);
    cTimer stopped(10);
    stopped.reset();
    pass(5);
    EXPECT_EQ(numJobs(), 4u);
  }
  EXPECT_EQ(numJobs(), 0u);
  pass(100);
  EXPECT_EQ(mpi::system().wq.process(), 0u);
}

TEST_F(cTimerTest, MayBeDestroyedByItsOwnSlot)
{
  for (bool isPeriodic : {false, true})
  {
    support::cCaptureOut mute; // the signal tells of its destruction
    std::unique_ptr<cTimer> timer(new cTimer);
    receiver.count = 0;
    receiver.listenTo(*timer);
    receiver.action = [&] { timer.reset(); };
    if (isPeriodic)
    {
      timer->setInterval(10);
    }
    else
    {
      timer->setSingleShot(10);
    }
    pass(10);
    EXPECT_EQ(receiver.count, 1u);
    EXPECT_FALSE(timer);
    pass(100);
    EXPECT_EQ(receiver.count, 1u);
    EXPECT_EQ(numJobs(), 0u);
  }
}

TEST_F(cTimerTest, MayBeDestroyedByItsOwnSlotThatThrows)
{
  support::cCaptureOut mute;
  std::unique_ptr<cTimer> timer(new cTimer(10));
  receiver.listenTo(*timer);
  receiver.action = [&] {
    timer.reset();
    throw mstd::cRuntimeException();
  };
  EXPECT_THROW(pass(10), mstd::cRuntimeException);
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
  EXPECT_EQ(numJobs(), 0u);
}

TEST_F(cTimerTest, MayBeDestroyedByItsOwnSlotIfAListenerToItsWorkThrows)
{
  class cThrower : public mrmi::cConnectable
  {
  public:
    void sltChanged(mpi::cWork*) { throw mstd::cRuntimeException(); }
  };
  support::cCaptureOut mute;
  std::unique_ptr<cTimer> timer(new cTimer(10));
  cThrower thrower;
  receiver.listenTo(*timer);
  receiver.action = [&] {
    for (auto const& job : mpi::system().wq.jobs())
    {
      job->sigChanged.connect(
          mrmi::cDirectLocalSlotCall1<cThrower, piVoid, mpi::cWork*>(thrower, &cThrower::sltChanged),
          mrmi::cAbstractSignal::Append);
    }
    timer.reset();
  };
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
  EXPECT_EQ(numJobs(), 0u);
}

TEST_F(cTimerTest, MayBeDestroyedInANestedRunOfItsOwnSlot)
{
  support::cCaptureOut mute;
  std::unique_ptr<cTimer> timer(new cTimer(10));
  receiver.listenTo(*timer);
  unsigned int depth = 0;
  receiver.action = [&] {
    if (++depth == 3)
    {
      timer.reset();
    }
    pass(20); // fires again while the slot runs
    EXPECT_FALSE(timer);
  };
  pass(10);
  EXPECT_EQ(depth, 3u);
  pass(100);
  EXPECT_EQ(depth, 3u);
  EXPECT_EQ(numJobs(), 0u);
}

TEST_F(cTimerTest, NestedRunsEndOneByOne)
{
  cTimer timer(10);
  receiver.listenTo(timer);
  receiver.action = [&] {
    receiver.action = nullptr;
    pass(10);
    EXPECT_FALSE(timer.isElapsed()) << "the inner run is over";
  };
  pass(10);
  EXPECT_EQ(receiver.count, 2u);
  pass(10);
  EXPECT_EQ(receiver.count, 3u);
}

TEST_F(cTimerTest, SurvivesTheSystem)
{
  cTimer timer(10);
  receiver.listenTo(timer);
  pass(10);
  mpi::cSystem::cleanup();
  pass(100);
  EXPECT_EQ(receiver.count, 1u);
  timer.setInterval(10);
  pass(10);
  EXPECT_EQ(receiver.count, 2u);
}

TEST_F(cTimerFault, IfItCannotBeSetItStaysAsItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not counted here";
  }
  for (unsigned int n = 1;; ++n)
  {
    cTimer timer;
    receiver.count = 0;
    receiver.listenTo(timer);
    bool failed = false;
    {
      support::cAllocationFault fault(n);
      try
      {
        timer.setSingleShot(10);
      }
      catch (std::bad_alloc const&)
      {
        failed = true;
      }
    }
    pass(20);
    EXPECT_EQ(receiver.count, failed ? 0u : 1u);
    if (!failed)
    {
      break;
    }
    timer.setSingleShot(10);
    pass(20);
    EXPECT_EQ(receiver.count, 1u);
  }
}

TEST_F(cTimerFault, WithoutMemoryItsDestructionInItsOwnSlotStillIsSafe)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not counted here";
  }
  bool fired = true;
  for (unsigned int n = 1; fired; ++n)
  {
    support::cCaptureOut mute;
    std::unique_ptr<cTimer> timer(new cTimer(10));
    receiver.count = 0;
    receiver.listenTo(*timer);
    receiver.action = [&] {
      support::cAllocationFault fault(n);
      timer.reset();
      fired = fault.hasFired();
    };
    pass(10);
    EXPECT_EQ(receiver.count, 1u);
    receiver.action = nullptr;
    pass(100);
    EXPECT_EQ(receiver.count, 1u);
    EXPECT_EQ(numJobs(), 0u);
  }
}
