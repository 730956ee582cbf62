#include "io/cFileWatch.h"

#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cRuntimeException.h"
#include "support/cTempDir.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace
{

/// Counts what it is told.
struct cListener : mrmi::cConnectable
{
  void sltChanged() { ++mTimes; }
  int mTimes = 0;
};

class cFileWatchTest : public testing::Test
{
protected:
  cFileWatchTest()
  {
    std::ofstream(path()) << "text";
    setTime(1000000000);
  }
  std::string path() const { return mDir.path() + "/file"; }
  void setTime(long long seconds) const { setTime(path(), seconds); }
  void setTime(std::string const& path, long long seconds) const
  {
    timespec const times[2] = {{0, 0}, {static_cast<time_t>(seconds), 0}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
  }
  void listen(mio::cFileWatch& watch)
  {
    watch.sigChanged.connect(mrmi::cDirectLocalSlotCall0<cListener, piVoid>(mListener, &cListener::sltChanged));
  }

  support::cTempDir mDir;
  cListener mListener;
};

} // namespace

TEST_F(cFileWatchTest, AnUnchangedFileFiresNothing)
{
  mio::cFileWatch watch(mDir.name("file"));
  listen(watch);
  EXPECT_EQ(watch.lastStamp().toSec(), 1000000000u);
  watch.poll();
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 0);
}

TEST_F(cFileWatchTest, EachTimeThatAPollSeesFiresOnce)
{
  mio::cFileWatch watch(mDir.name("file"));
  listen(watch);
  setTime(1000000001);
  watch.poll();
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 1);
  setTime(1000000002);
  setTime(1000000003);
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 2);
  EXPECT_EQ(watch.lastStamp().toSec(), 1000000003u);
  setTime(1000000000); // an earlier one is another one
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 3);
}

TEST_F(cFileWatchTest, AListenerThatPollsIsNotToldAgain)
{
  struct cPolling : mrmi::cConnectable
  {
    void sltChanged()
    {
      ++mTimes;
      mStamp = mpWatch->lastStamp();
      if (mTimes == 1)
      {
        mpWatch->poll();
      }
    }
    mio::cFileWatch* mpWatch = nullptr;
    mstd::cTime mStamp;
    int mTimes = 0;
  };
  mio::cFileWatch watch(mDir.name("file"));
  cPolling polling;
  polling.mpWatch = &watch;
  watch.sigChanged.connect(mrmi::cDirectLocalSlotCall0<cPolling, piVoid>(polling, &cPolling::sltChanged));
  setTime(1000000001);
  watch.poll();
  EXPECT_EQ(polling.mTimes, 1);
  EXPECT_EQ(polling.mStamp.toSec(), 1000000001u);
}

TEST_F(cFileWatchTest, NobodyNeedsToListen)
{
  mio::cFileWatch watch(mDir.name("file"));
  EXPECT_EQ(watch.sigChanged.invocationBehavior(), mrmi::cAbstractSignal::IgnoreIfUnconnected);
  setTime(1000000001);
  EXPECT_NO_THROW(watch.poll());
}

TEST_F(cFileWatchTest, TheWorkHasTheNameOfTheFile)
{
  mio::cFileWatch const watch(mDir.name("file"));
  EXPECT_EQ(std::string(watch.work().name().c_str()), "File I/O change notifier (" + path() + ")");
  EXPECT_FALSE(watch.work().isStarted());
}

TEST_F(cFileWatchTest, ItIsPolledInTurnsOfTheQueue)
{
  support::cVirtualClock clock;
  mio::cFileWatch watch(mDir.name("file"));
  listen(watch);
  watch.start(250);
  EXPECT_EQ(watch.work().type(), mpi::cWork::Periodic);
  EXPECT_EQ(watch.work().interval(), 250u);
  clock.advanceMSec(300);
  mpi::cSystem::exec();
  EXPECT_EQ(mListener.mTimes, 0);
  setTime(1000000001);
  clock.advanceMSec(100);
  mpi::cSystem::exec();
  for (int i = 0; i < 5 && mListener.mTimes == 0; ++i)
  {
    mpi::cSystem::exec();
  }
  EXPECT_EQ(mListener.mTimes, 1);
  watch.stop();
  EXPECT_FALSE(watch.work().isStarted());
  setTime(1000000002);
  clock.advanceMSec(1000);
  mpi::cSystem::exec();
  EXPECT_EQ(mListener.mTimes, 1);
  watch.start(10);
  clock.advanceMSec(20);
  mpi::cSystem::exec();
  EXPECT_EQ(mListener.mTimes, 2);
}

TEST_F(cFileWatchTest, ItFollowsTheFileAndNotThePath)
{
  mio::cFileWatch watch(mDir.name("file"));
  listen(watch);
  std::filesystem::rename(path(), path() + ".1");
  std::ofstream(path()) << "new";
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 0);
  setTime(path() + ".1", 1000000001);
  watch.poll();
  EXPECT_EQ(mListener.mTimes, 1);
}

TEST_F(cFileWatchTest, AMissingFileCannotBeWatched)
{
  EXPECT_THROW(mio::cFileWatch(mDir.name("missing")), mstd::cRuntimeException);
}
