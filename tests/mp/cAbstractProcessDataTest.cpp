#include "mp/cAbstractProcessData.h"

#include "mp/cBasicProcessData.h"
#include "mp/cLocker.h"
#include "pi/cSystem.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <thread>
#include <type_traits>

using mp::cAbstractProcess;
using mp::cAbstractProcessData;

namespace
{

bool isFree(mp::cLocker& locker)
{
  bool taken = false;
  std::thread other([&] {
    taken = locker.doTryLock();
    if (taken)
    {
      locker.doUnlock();
    }
  });
  other.join();
  return taken;
}

/// Looks, whenever a line ends, whether the lock is free.
class cWatchingOut : public mpi::cAbstractOut
{
public:
  explicit cWatchingOut(mp::cLocker& locker) : mLocker(locker) { mpi::system().out.link(this); }
  ~cWatchingOut() override { mpi::system().out.link(nullptr); }
  void printChar(char c) override
  {
    if (c == '\n')
    {
      mSeen += isFree(mLocker) ? "free " : "held ";
    }
  }

  mp::cLocker& mLocker;
  std::string mSeen;
};

} // namespace

TEST(cAbstractProcessData, InitialValues)
{
  mp::cLocker owner;
  cAbstractProcessData data(&owner);
  EXPECT_EQ(data.ownerLocker(), &owner);
  EXPECT_EQ(data.locker(), nullptr);
  EXPECT_EQ(data.secondLocker(), nullptr);
  EXPECT_EQ(data.context(), 0);
  EXPECT_EQ(data.preferredContext(), 2);
  EXPECT_FALSE(data.isCanceled());
  EXPECT_FALSE(data.isFinished());
  EXPECT_FALSE(data.isRunning());
}

TEST(cAbstractProcessData, ContextsHaveTheirValues)
{
  EXPECT_EQ(cAbstractProcess::NoContext, 0);
  EXPECT_EQ(cAbstractProcess::PollableContext, 1);
  EXPECT_EQ(cAbstractProcess::RunnableContext, 2);
}

TEST(cAbstractProcessData, BasicDataHasNoOwnersLocker)
{
  mp::cBasicProcessData data;
  EXPECT_EQ(data.ownerLocker(), nullptr);
  EXPECT_TRUE((std::is_base_of<cAbstractProcessData, mp::cBasicProcessData>::value));
}

TEST(cAbstractProcessData, ContextAndLockersAreStored)
{
  mp::cLocker first;
  mp::cLocker second;
  mp::cBasicProcessData data;
  data.setContext(cAbstractProcess::RunnableContext, &first, &second);
  EXPECT_EQ(data.context(), 2);
  EXPECT_EQ(data.locker(), &first);
  EXPECT_EQ(data.secondLocker(), &second);
  data.setPreferredContext(cAbstractProcess::PollableContext);
  EXPECT_EQ(data.preferredContext(), 1);
  EXPECT_EQ(data.context(), 2);
}

TEST(cAbstractProcessData, SetContextTakesNoLock)
{
  mp::cLocker locker;
  mp::cBasicProcessData data;
  data.setContext(cAbstractProcess::PollableContext, &locker, nullptr);
  locker.doLock();
  std::thread other([&] { data.setContext(cAbstractProcess::NoContext, nullptr, nullptr); });
  other.join();
  locker.doUnlock();
  EXPECT_EQ(data.context(), 0);
}

TEST(cAbstractProcessData, WorksWithoutAnyLock)
{
  support::cCaptureOut capture;
  mp::cBasicProcessData data;
  data.restart();
  EXPECT_TRUE(data.isRunning());
  data.cancel();
  EXPECT_TRUE(data.isCanceled());
  EXPECT_TRUE(data.isRunning()) << "a wish, not an end";
  data.setFinished();
  EXPECT_FALSE(data.isRunning());
  EXPECT_TRUE(data.isFinished());
  EXPECT_TRUE(data.isCanceled());
  data.restart();
  EXPECT_TRUE(data.isRunning());
  EXPECT_FALSE(data.isCanceled());
  EXPECT_FALSE(data.isFinished());
}

TEST(cAbstractProcessData, FlagsAreReadAndWrittenUnderTheLocker)
{
  mp::cLocker locker;
  mp::cBasicProcessData data;
  data.setContext(cAbstractProcess::RunnableContext, &locker, nullptr);
  void (*const operations[])(mp::cBasicProcessData&) = {
      [](mp::cBasicProcessData& d) { d.cancel(); }, [](mp::cBasicProcessData& d) { d.setFinished(); },
      [](mp::cBasicProcessData& d) { d.isCanceled(); }, [](mp::cBasicProcessData& d) { d.isFinished(); },
      [](mp::cBasicProcessData& d) { d.isRunning(); }};
  for (auto operation : operations)
  {
    std::atomic<bool> done{false};
    locker.doLock();
    std::thread other([&] {
      operation(data);
      done = true;
    });
    for (int i = 0; i < 50; ++i)
    {
      std::this_thread::yield();
    }
    EXPECT_FALSE(done);
    locker.doUnlock();
    other.join();
    EXPECT_TRUE(done);
    EXPECT_TRUE(isFree(locker));
  }
}

TEST(cAbstractProcessData, RestartTellsWhatItDoes)
{
  support::cCaptureOut capture;
  mp::cBasicProcessData data;
  data.restart();
  ASSERT_EQ(capture.lines().size(), 3u);
  EXPECT_EQ(capture.lines()[0].text, "cAbstractProcessData::restart()");
  EXPECT_EQ(capture.lines()[1].text, " -- unlock --");
  EXPECT_EQ(capture.lines()[2].text, "Setting running flag...");
  EXPECT_EQ(capture.lines()[0].file, "mp/cAbstractProcessData");
  EXPECT_EQ(capture.debugFileName(), nullptr);
}

TEST(cAbstractProcessData, RestartWritesItsSecondAndThirdMessageWhileItHoldsTheLocker)
{
  mp::cLocker locker;
  mp::cBasicProcessData data;
  data.setContext(cAbstractProcess::RunnableContext, &locker, nullptr);
  cWatchingOut out(locker);
  data.restart();
  EXPECT_EQ(out.mSeen, "free held held ");
  EXPECT_TRUE(isFree(locker));
}
