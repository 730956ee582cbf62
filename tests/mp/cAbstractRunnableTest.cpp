#include "mp/cAbstractRunnable.h"

#include "mp/cSynchronizable.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "std/cOSErrorException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <errno.h>
#include <pthread.h>

#include <algorithm>
#include <atomic>
#include <future>
#include <memory>
#include <new>
#include <string>
#include <thread>
#include <type_traits>

using mp::cAbstractRunnable;

// The program's own pthread_create() comes before the C library's, so a test can let it fail, or let the new thread
// begin as late as it likes.
namespace
{

std::atomic<int> failure{0};
std::atomic<std::shared_future<void>*> pGate{nullptr};

struct cGated
{
  void* (*body)(void*);
  void* argument;
  std::shared_future<void> gate;
};

void* waitThenRun(void* argument)
{
  std::unique_ptr<cGated> pGated(static_cast<cGated*>(argument));
  pGated->gate.wait();
  return pGated->body(pGated->argument);
}

} // namespace

extern "C" __attribute__((visibility("default"))) int
pthread_create(pthread_t* thread, pthread_attr_t const* attributes, void* (*body)(void*), void* argument) noexcept
{
  typedef int (*tCreate)(pthread_t*, pthread_attr_t const*, void* (*)(void*), void*);
  static auto const real = reinterpret_cast<tCreate>(dlsym(RTLD_NEXT, "pthread_create"));
  if (failure != 0)
  {
    return failure;
  }
  if (std::shared_future<void>* gate = pGate.load())
  {
    return real(thread, attributes, &waitThenRun, new cGated{body, argument, *gate});
  }
  return real(thread, attributes, body, argument);
}

namespace
{

class cFailureScope
{
public:
  explicit cFailureScope(int result) { failure = result; }
  ~cFailureScope() { failure = 0; }
};

/// Runs until the test lets it go, or until it is asked to stop.
class cWaiting : public cAbstractRunnable
{
public:
  ~cWaiting() override
  {
    letGo();
    stop();
  }

  void run() override
  {
    ++mNumRuns;
    mStateInRun = state();
    mEntered.set_value();
    while (!isStopInProgress() && !mMayGo)
    {
      std::this_thread::yield();
    }
    mSawStop = isStopInProgress();
  }

  void waitUntilEntered()
  {
    mEntered.get_future().wait();
    mEntered = std::promise<void>();
  }
  void letGo() { mMayGo = true; }

  std::atomic<unsigned int> mNumRuns{0};
  std::atomic<int> mStateInRun{-1};
  std::atomic<bool> mSawStop{false};

private:
  std::promise<void> mEntered;
  std::atomic<bool> mMayGo{false};
};

/// Does nothing but to count.
class cCounting : public cAbstractRunnable
{
public:
  ~cCounting() override { stop(); }
  void run() override { ++mNumRuns; }

  unsigned int mNumRuns = 0;
};

template <typename T>
void waitForState(T const& runnable, int state)
{
  while (runnable.state() != state)
  {
    std::this_thread::yield();
  }
}

} // namespace

TEST(cAbstractRunnable, StatesHaveTheirValues)
{
  EXPECT_EQ(cAbstractRunnable::NeverStarted, 0);
  EXPECT_EQ(cAbstractRunnable::Started, 1);
  EXPECT_EQ(cAbstractRunnable::Running, 2);
  EXPECT_EQ(cAbstractRunnable::StopRequested, 3);
  EXPECT_EQ(cAbstractRunnable::Finished, 4);
}

TEST(cAbstractRunnable, AFreshOneWasNeverStarted)
{
  cAbstractRunnable runnable;
  EXPECT_EQ(runnable.state(), 0);
  EXPECT_FALSE(runnable.isRunning());
  EXPECT_FALSE(runnable.isStopInProgress());
  EXPECT_FALSE(runnable.isActive());
}

TEST(cAbstractRunnable, TheBodyOfTheBaseIsEmpty)
{
  cAbstractRunnable runnable;
  runnable.start();
  waitForState(runnable, 4);
  EXPECT_FALSE(runnable.isActive());
}

TEST(cAbstractRunnable, RunsInStateTwoAndEndsInStateFour)
{
  cWaiting runnable;
  runnable.start();
  runnable.waitUntilEntered();
  EXPECT_EQ(runnable.mStateInRun, 2);
  EXPECT_EQ(runnable.state(), 2);
  EXPECT_TRUE(runnable.isRunning());
  EXPECT_TRUE(runnable.isActive());
  EXPECT_FALSE(runnable.isStopInProgress());
  runnable.letGo();
  waitForState(runnable, 4);
  EXPECT_FALSE(runnable.isRunning());
  EXPECT_FALSE(runnable.isActive());
  EXPECT_FALSE(runnable.mSawStop);
}

TEST(cAbstractRunnable, AStartedThreadThatHasNotBegunIsInStateOne)
{
  std::promise<void> open;
  std::shared_future<void> gate = open.get_future().share();
  pGate = &gate;
  cWaiting runnable;
  runnable.start();
  pGate = nullptr;
  EXPECT_EQ(runnable.state(), 1);
  EXPECT_TRUE(runnable.isActive());
  EXPECT_FALSE(runnable.isRunning());
  open.set_value();
  runnable.waitUntilEntered();
  EXPECT_EQ(runnable.state(), 2);
}

TEST(cAbstractRunnable, ARequestToStopBeforeTheThreadBeginsIsNotLost)
{
  std::promise<void> open;
  std::shared_future<void> gate = open.get_future().share();
  pGate = &gate;
  cWaiting runnable;
  runnable.start();
  pGate = nullptr;
  std::thread stopper([&] { runnable.stop(); });
  waitForState(runnable, 3);
  open.set_value();
  stopper.join();
  EXPECT_EQ(runnable.mNumRuns, 1u);
  EXPECT_EQ(runnable.mStateInRun, 3);
  EXPECT_TRUE(runnable.mSawStop);
  EXPECT_EQ(runnable.state(), 4);
}

TEST(cAbstractRunnable, StopRequestsTheEndAndWaitsForIt)
{
  cWaiting runnable;
  runnable.start();
  runnable.waitUntilEntered();
  runnable.stop();
  EXPECT_TRUE(runnable.mSawStop);
  EXPECT_EQ(runnable.state(), 4);
  EXPECT_FALSE(runnable.isActive());
}

TEST(cAbstractRunnable, StopOfOneThatWasNeverStartedLeavesStateThree)
{
  cAbstractRunnable runnable;
  runnable.stop();
  EXPECT_EQ(runnable.state(), 3);
  EXPECT_TRUE(runnable.isStopInProgress());
  EXPECT_TRUE(runnable.isActive());
}

TEST(cAbstractRunnable, StopOfAThreadThatHasEndedLeavesStateThree)
{
  cCounting runnable;
  runnable.start();
  waitForState(runnable, 4);
  runnable.stop();
  EXPECT_EQ(runnable.state(), 3);
  runnable.stop();
  EXPECT_EQ(runnable.state(), 3);
}

TEST(cAbstractRunnable, CanBeStartedAgainAfterItsEndAndAfterStop)
{
  cCounting runnable;
  runnable.start();
  waitForState(runnable, 4);
  runnable.start();
  waitForState(runnable, 4);
  EXPECT_EQ(runnable.mNumRuns, 2u);
  runnable.stop();
  EXPECT_EQ(runnable.state(), 3);
  runnable.start();
  waitForState(runnable, 4);
  EXPECT_EQ(runnable.mNumRuns, 3u);
}

TEST(cAbstractRunnable, StartWhileRunningWaitsForTheEndOfTheFirstRun)
{
  cWaiting runnable;
  runnable.start();
  runnable.waitUntilEntered();
  std::atomic<bool> restarted{false};
  std::thread starter([&] {
    runnable.start();
    restarted = true;
  });
  for (int i = 0; i < 100; ++i)
  {
    std::this_thread::yield();
  }
  EXPECT_FALSE(restarted);
  EXPECT_EQ(runnable.mNumRuns, 1u);
  runnable.letGo();
  starter.join();
  runnable.waitUntilEntered();
  runnable.stop();
  EXPECT_EQ(runnable.mNumRuns, 2u);
}

TEST(cAbstractRunnable, TheDestructorWaitsForTheThread)
{
  std::atomic<bool> ended{false};
  struct cEnding : cAbstractRunnable
  {
    explicit cEnding(std::atomic<bool>& rEnded) : mEnded(rEnded) {}
    ~cEnding() override { stop(); }
    void run() override
    {
      while (!isStopInProgress())
      {
        std::this_thread::yield();
      }
      mEnded = true;
    }
    std::atomic<bool>& mEnded;
  };
  {
    cEnding runnable(ended);
    runnable.start();
  }
  EXPECT_TRUE(ended);
}

TEST(cAbstractRunnable, CopyingRaisesTheNumberTwelve)
{
  cAbstractRunnable runnable;
  int code = 0;
  try
  {
    cAbstractRunnable copy(runnable);
  }
  catch (int raised)
  {
    code = raised;
  }
  EXPECT_EQ(code, 12);

  code = 0;
  cAbstractRunnable other;
  try
  {
    other = runnable;
  }
  catch (int raised)
  {
    code = raised;
  }
  EXPECT_EQ(code, 12);
}

TEST(cAbstractRunnable, ANegativeResultOfThreadCreationIsAnOSError)
{
  cCounting runnable;
  {
    cFailureScope scope(-1);
    try
    {
      runnable.start();
      FAIL();
    }
    catch (mstd::cOSErrorException const& e)
    {
      EXPECT_STREQ(e.operation().c_str(), "pthread_create");
      EXPECT_EQ(e.osErrorCode(), 1);
      mucs::cString text;
      e.createMessage(text, mucs::cString("|"), 1, nullptr);
      EXPECT_STREQ(text.ascii('?').c_str(),
                   "OS-Error while trying operation \"pthread_create\"!|Error: \"Operation not "
                   "permitted\"!|Unable to create thread!");
    }
  }
  EXPECT_EQ(runnable.state(), 0) << "it is as it was";
  EXPECT_FALSE(runnable.isActive());
  runnable.start();
  waitForState(runnable, 4);
  EXPECT_EQ(runnable.mNumRuns, 1u);
}

TEST(cAbstractRunnable, APositiveResultOfThreadCreationGoesUnnoticed)
{
  cCounting runnable;
  {
    cFailureScope scope(EAGAIN);
    EXPECT_NO_THROW(runnable.start());
  }
  EXPECT_EQ(runnable.state(), 1);
  EXPECT_TRUE(runnable.isActive());
  EXPECT_EQ(runnable.mNumRuns, 0u);
  runnable.stop();
  EXPECT_EQ(runnable.state(), 3) << "there is nothing to wait for";
  runnable.start();
  waitForState(runnable, 4);
  EXPECT_EQ(runnable.mNumRuns, 1u);
}

TEST(cAbstractRunnable, AnAllocationFaultInStartLeavesItAsItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations can't be made to fail under this sanitizer";
  }
  cCounting runnable;
  bool failed = false;
  {
    support::cAllocationFault fault(1);
    try
    {
      runnable.start();
    }
    catch (std::bad_alloc const&)
    {
      failed = true;
    }
  }
  EXPECT_TRUE(failed);
  EXPECT_EQ(runnable.state(), 0);
  runnable.start();
  waitForState(runnable, 4);
}

// A misuse, which the thread sanitizer takes for the race that it is.
#if !defined(__SANITIZE_THREAD__)
TEST(cAbstractRunnable, StopFromItsOwnThreadDoesNotHang)
{
  struct cSelfStopping : cAbstractRunnable
  {
    ~cSelfStopping() override { stop(); }
    void run() override { stop(); }
  };
  cSelfStopping runnable;
  runnable.start();
  waitForState(runnable, 4);
}
#endif

// The lock of the debug output is what keeps the messages of several threads apart.
TEST(cAbstractRunnable, MessagesOfSeveralThreadsStayWhole)
{
  struct cTalking : cAbstractRunnable
  {
    explicit cTalking(char const* name) : mpName(name) {}
    ~cTalking() override { stop(); }
    void run() override
    {
      mpi::cAbstractOut& out = mpi::system().out;
      for (unsigned int i = 0; i < 200; ++i)
      {
        mp::cLocker::cLock lock(out.mutex());
        out.debugMessage(mpName, i) << "one "
                                    << "two " << i << "\n"
                                    << mpi::cAbstractOut::clearDebugMessage();
      }
    }
    char const* mpName;
  };
  support::cCaptureOut capture;
  {
    cTalking first("a/first");
    cTalking second("b/second");
    first.start();
    second.start();
    first.stop();
    second.stop();
  }
  ASSERT_EQ(capture.lines().size(), 400u);
  for (auto const& line : capture.lines())
  {
    EXPECT_EQ(line.text, "one two " + std::to_string(line.line));
    EXPECT_TRUE(line.file == "a/first" || line.file == "b/second");
  }
}
