#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"

#include "pi/cFDAIOData.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "std/cBugException.h"
#include "support/cSlotOf.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdio.h>
#include <stdlib.h>

#include <algorithm>
#include <memory>
#include <vector>

using mpi::cWork;
using mpi::tFdInfo;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;
typedef mstd::tList<tJob> tJobs;

class cPipe
{
public:
  cPipe() { EXPECT_EQ(pipe2(mFds, O_NONBLOCK | O_CLOEXEC), 0); }
  cPipe(cPipe const&) = delete;
  ~cPipe()
  {
    closeIn();
    closeOut();
  }
  int in() const { return mFds[0]; }
  int out() const { return mFds[1]; }
  void write() { EXPECT_EQ(::write(mFds[1], "x", 1), 1); }
  void read()
  {
    char c;
    EXPECT_EQ(::read(mFds[0], &c, 1), 1);
  }
  void closeIn() { closeOnce(mFds[0]); }
  void closeOut() { closeOnce(mFds[1]); }

private:
  static void closeOnce(int& fd)
  {
    if (fd >= 0)
    {
      close(fd);
      fd = -1;
    }
  }
  int mFds[2];
};

class cOtherAIOData : public mpi::cAbstractAIOData
{
};

class cPosixProcessEventsTest : public ::testing::Test
{
protected:
  cPosixProcessEventsTest()
  {
    mQueue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cPosixProcessEvents));
  }

  tJob addAIO(cSlot& slot, std::vector<tFdInfo> const& fds)
  {
    tJob job = mQueue.createJob();
    job->sigAction.connect(slot.call());
    mstd::tAutoPtr<mpi::cAbstractAIOData> pData(new mpi::cFDAIOData);
    for (tFdInfo const& info : fds)
    {
      pData->fdAIOData().addFd(info.fd, info.flags);
    }
    job->setAIOData(pData);
    return job;
  }

  support::cVirtualClock mClock;
  mpi::cWorkQueue mQueue;
  cSlot mSlot;
};

// A work with the given descriptors, in a list of its own.
tJob newAIO(std::vector<tFdInfo> const& fds)
{
  tJob job(new cWork);
  mstd::tAutoPtr<mpi::cAbstractAIOData> pData(new mpi::cFDAIOData);
  for (tFdInfo const& info : fds)
  {
    pData->fdAIOData().addFd(info.fd, info.flags);
  }
  job->setAIOData(pData);
  return job;
}

} // namespace

TEST_F(cPosixProcessEventsTest, IsSynchronousAndWatchesDescriptors)
{
  mpi::cPosixProcessEvents processor;
  mpi::cAbstractProcessEvents& base = processor;
  EXPECT_TRUE(base.supportsAIO());
  EXPECT_FALSE(base.isAsynchronous());
  EXPECT_NO_THROW(base.wakeUp());
  EXPECT_NO_THROW(base.poll());
}

TEST_F(cPosixProcessEventsTest, FiresFinishedAsItsLastAct)
{
  mpi::cPosixProcessEvents processor;
  bool bWaited = false;
  cSlot finished([&] { bWaited = mClock.blockedMSec() == 7; });
  processor.sigFinished.connect(finished.call());
  tJobs none;
  processor.yield(0, none, 7);
  EXPECT_EQ(finished.calls(), 1u);
  EXPECT_TRUE(bWaited);
}

TEST_F(cPosixProcessEventsTest, WithoutDescriptorsItSleepsInSelect)
{
  mpi::cPosixProcessEvents processor;
  tJobs none;
  processor.yield(0, none, 12345);
  EXPECT_EQ(mClock.numPolls(), 0u);
  EXPECT_EQ(mClock.numSelects(), 1u);
  EXPECT_EQ(mClock.lastSelectSec(), 12);
  EXPECT_EQ(mClock.lastSelectUSec(), 345000);
  EXPECT_EQ(mClock.blockedMSec(), 12345);
}

TEST_F(cPosixProcessEventsTest, TheMicrosecondsOfTheSleepAreComputedIn32Bits)
{
  mpi::cPosixProcessEvents processor;
  tJobs none;
  processor.yield(0, none, 5000123);
  EXPECT_EQ(mClock.lastSelectSec(), 5000);
  EXPECT_EQ(mClock.lastSelectUSec(), (5000123u * 1000u) % 1000000u);
  EXPECT_NE(mClock.lastSelectUSec(), 123000);
}

TEST_F(cPosixProcessEventsTest, AZeroDelayReturnsAtOnce)
{
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  processor.yield(0, jobs, 0);
  EXPECT_EQ(mClock.numSelects(), 1u);
  cPipe pipe;
  jobs.append(newAIO({{pipe.in(), tFdInfo::Readable}}));
  processor.yield(0, jobs, 0);
  EXPECT_EQ(mClock.numPolls(), 1u);
  EXPECT_EQ(mClock.blocked(), 0);
  EXPECT_FALSE(jobs.first()->aioData().isEvent());
}

TEST_F(cPosixProcessEventsTest, TheDelayGoesToPollAsItStands)
{
  mpi::cPosixProcessEvents processor;
  cPipe pipe;
  tJobs jobs;
  jobs.append(newAIO({{pipe.in(), tFdInfo::Readable}}));
  processor.yield(0, jobs, 1234);
  EXPECT_EQ(mClock.lastPollTimeout(), 1234);
  EXPECT_EQ(mClock.blockedMSec(), 1234);
  EXPECT_EQ(mClock.numSelects(), 0u);
  processor.yield(0, jobs, 0xFFFFFFFFu);
  EXPECT_EQ(mClock.lastPollTimeout(), -1);
}

TEST_F(cPosixProcessEventsTest, AStartedAIOWorkWithoutDescriptorsSleepsTenSecondsAndNeverRuns)
{
  addAIO(mSlot, {});
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(mClock.numPolls(), 0u);
  EXPECT_EQ(mClock.numSelects(), 2u);
  EXPECT_EQ(mClock.blockedMSec(), 20000);
  EXPECT_EQ(mSlot.calls(), 0u);
}

TEST_F(cPosixProcessEventsTest, OnlyAIOWorkWithoutEventsBlocksTenSeconds)
{
  cPipe pipe;
  addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(mClock.blockedMSec(), 10000);
}

TEST_F(cPosixProcessEventsTest, AReadableDescriptorRunsItsWorkInTheNextTurn)
{
  cPipe pipe;
  tJob job = addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  mSlot.mBody = [&] { pipe.read(); };
  pipe.write();
  mQueue.process();
  EXPECT_EQ(mSlot.calls(), 0u);
  EXPECT_TRUE(job->aioData().isEvent());
  EXPECT_EQ(mClock.blocked(), 0);
  mQueue.process();
  EXPECT_EQ(mSlot.calls(), 1u);
  EXPECT_FALSE(job->aioData().isEvent());
}

TEST_F(cPosixProcessEventsTest, ADescriptorEndsTheWaitEarly)
{
  cPipe pipe;
  addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  mClock.at(mClock.now() + 3000000, [&] { pipe.write(); });
  mQueue.process();
  EXPECT_EQ(mClock.blockedMSec(), 3000);
}

TEST_F(cPosixProcessEventsTest, TheAIOWorkWaitsNoLongerThanTheNextTimedItem)
{
  cPipe pipe;
  cSlot timed;
  addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  tJob job = mQueue.createJob();
  job->sigAction.connect(timed.call());
  job->start(50, cWork::SingleTask);
  mQueue.process();
  EXPECT_EQ(mClock.lastPollTimeout(), 50);
  mQueue.process();
  EXPECT_EQ(timed.calls(), 1u);
  EXPECT_EQ(mClock.lastPollTimeout(), 0);
}

TEST_F(cPosixProcessEventsTest, FlagsSelectWhatIsWatched)
{
  cPipe pipe;
  pipe.write();
  // The reading end has data, the writing end has room.
  struct
  {
    int fd;
    unsigned int flags;
    bool event;
  } const cases[] = {
      {pipe.in(), tFdInfo::Readable, true},
      {pipe.in(), tFdInfo::Writable, false},
      {pipe.in(), tFdInfo::Error, false},
      {pipe.in(), 0, false},
      {pipe.in(), tFdInfo::Readable | tFdInfo::Error, true},
      {pipe.out(), tFdInfo::Writable, true},
      {pipe.out(), tFdInfo::Readable, false},
      {pipe.out(), tFdInfo::Readable | tFdInfo::Writable, true},
  };
  for (auto const& c : cases)
  {
    mpi::cPosixProcessEvents processor;
    tJobs jobs;
    jobs.append(newAIO({{c.fd, c.flags}}));
    processor.yield(0, jobs, 0);
    EXPECT_EQ(jobs.first()->aioData().isEvent(), c.event) << c.fd << " " << c.flags;
  }
}

TEST_F(cPosixProcessEventsTest, UrgentDataCountsAsReadable)
{
  // Out-of-band data reports POLLPRI only.
  int const listener = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (listener < 0 || listen(listener, 1) != 0)
  {
    FAIL() << "no local sockets here";
  }
  sockaddr_storage address;
  socklen_t length = sizeof(address);
  ASSERT_EQ(getsockname(listener, reinterpret_cast<sockaddr*>(&address), &length), 0);
  int const client = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  ASSERT_EQ(connect(client, reinterpret_cast<sockaddr*>(&address), length), 0);
  int const server = accept(listener, nullptr, nullptr);
  ASSERT_GE(server, 0);
  ASSERT_EQ(send(client, "!", 1, MSG_OOB), 1);
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  jobs.append(newAIO({{server, tFdInfo::Readable}}));
  processor.yield(0, jobs, 0);
  EXPECT_TRUE(jobs.first()->aioData().isEvent());
  close(server);
  close(client);
  close(listener);
}

TEST_F(cPosixProcessEventsTest, AClosedPeerIsAnErrorEventEvenIfOnlyErrorsAreWatched)
{
  cPipe pipe;
  pipe.closeOut();
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  jobs.append(newAIO({{pipe.in(), tFdInfo::Error}}));
  processor.yield(0, jobs, 0);
  EXPECT_TRUE(jobs.first()->aioData().isEvent());
}

TEST_F(cPosixProcessEventsTest, ADescriptorClosedBehindTheBackOfItsWorkIsAnEvent)
{
  cPipe pipe;
  int const fd = pipe.in();
  tJob job = addAIO(mSlot, {{fd, tFdInfo::Readable}});
  pipe.closeIn();
  mQueue.process();
  EXPECT_TRUE(job->aioData().isEvent());
  mQueue.process();
  EXPECT_EQ(mSlot.calls(), 1u);
}

TEST_F(cPosixProcessEventsTest, TwoReadyDescriptorsOfOneWorkMakeOneDispatch)
{
  cPipe first;
  cPipe second;
  cPipe third;
  first.write();
  second.write();
  third.write();
  cSlot other;
  tJob job = addAIO(mSlot, {{first.in(), tFdInfo::Readable}, {second.in(), tFdInfo::Readable}});
  tJob behind = addAIO(other, {{third.in(), tFdInfo::Readable}});
  mSlot.mBody = [&] {
    first.read();
    second.read();
  };
  other.mBody = [&] { third.read(); };
  mQueue.process();
  EXPECT_TRUE(behind->aioData().isEvent()); // both descriptors in front of it were consumed, and counted
  mQueue.process();
  mQueue.process();
  EXPECT_EQ(mSlot.calls(), 1u);
  EXPECT_EQ(other.calls(), 1u);
}

TEST_F(cPosixProcessEventsTest, OnlyStartedAIOWorkIsWatched)
{
  cPipe pipe;
  pipe.write();
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  tJob stopped = newAIO({{pipe.in(), tFdInfo::Readable}});
  stopped->stop();
  tJob periodic = newAIO({{pipe.in(), tFdInfo::Readable}});
  periodic->start(10, cWork::Periodic);
  jobs.append(stopped);
  jobs.append(periodic);
  jobs.append(tJob());
  processor.yield(0, jobs, 0);
  EXPECT_EQ(mClock.numPolls(), 0u);
  EXPECT_FALSE(stopped->aioData().isEvent());
  EXPECT_FALSE(periodic->aioData().isEvent());
}

TEST_F(cPosixProcessEventsTest, DescriptorsMayChangeBetweenTwoTurnsWithoutNotice)
{
  cPipe first;
  cPipe second;
  first.write();
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  jobs.append(newAIO({{second.in(), tFdInfo::Readable}}));
  mstd::tVector<tFdInfo>& fds = jobs.first()->aioData().fdAIOData().fds();
  processor.yield(0, jobs, 0);
  EXPECT_FALSE(jobs.first()->aioData().isEvent());
  fds.at(0).fd = first.in();
  processor.yield(0, jobs, 0);
  EXPECT_TRUE(jobs.first()->aioData().isEvent());
  jobs.first()->aioData().setEvent(false);
  fds.at(0).flags = tFdInfo::Writable;
  processor.yield(0, jobs, 0);
  EXPECT_FALSE(jobs.first()->aioData().isEvent());
  fds.append(tFdInfo(first.in(), tFdInfo::Readable));
  processor.yield(0, jobs, 0);
  EXPECT_TRUE(jobs.first()->aioData().isEvent());
  EXPECT_EQ(mClock.lastPolled().size(), 2u);
  fds.clear();
  processor.yield(0, jobs, 0);
  EXPECT_EQ(mClock.numPolls(), 4u);
  EXPECT_EQ(mClock.numSelects(), 1u);
}

TEST_F(cPosixProcessEventsTest, ManyDescriptorsKeepTheirWorks)
{
  std::vector<std::unique_ptr<cPipe>> pipes;
  mpi::cPosixProcessEvents processor;
  tJobs jobs;
  for (int i = 0; i < 100; ++i)
  {
    pipes.push_back(std::make_unique<cPipe>());
    jobs.append(newAIO({{pipes.back()->in(), tFdInfo::Readable}}));
  }
  pipes[0]->write();
  pipes[57]->write();
  pipes[99]->write();
  processor.yield(0, jobs, 0);
  int i = 0;
  for (tJob const& job : jobs)
  {
    EXPECT_EQ(job->aioData().isEvent(), i == 0 || i == 57 || i == 99) << i;
    ++i;
  }
}

TEST_F(cPosixProcessEventsTest, WorkThatGoesDuringTheWaitIsLeftAlone)
{
  cPipe pipe;
  std::unique_ptr<cWork> pWork(new cWork);
  mstd::tAutoPtr<mpi::cAbstractAIOData> pData(new mpi::cFDAIOData);
  pData->fdAIOData().addFd(pipe.in(), tFdInfo::Readable);
  pWork->setAIOData(pData);
  mQueue.addJob(*pWork);
  mClock.at(mClock.now() + 1000, [&] {
    pWork.reset();
    pipe.write();
  });
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cPosixProcessEventsTest, AnInterruptedPollOnlyEndsTheTurn)
{
  cPipe pipe;
  pipe.write();
  tJob job = addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  mClock.interruptNextPoll();
  EXPECT_EQ(mQueue.process(), 1u);
  EXPECT_FALSE(job->aioData().isEvent());
  mQueue.process();
  EXPECT_TRUE(job->aioData().isEvent());
}

TEST_F(cPosixProcessEventsTest, StartedAIOWorkWithoutDataRaisesOutOfTheTurn)
{
  tJob job = mQueue.createJob();
  job->start();
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { mQueue.process(); }),
            "Work does not own asynchronous I/O data!");
  job->stop();
  EXPECT_EQ(mQueue.process(), 0u);
}

TEST_F(cPosixProcessEventsTest, DataWithoutDescriptorInformationRaisesOutOfTheTurn)
{
  tJob job = mQueue.createJob();
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new cOtherAIOData));
  EXPECT_EQ(support::messageOf<mstd::cBugException>([&] { mQueue.process(); }),
            "Asynchronous I/O data does not have file descriptor information!");
  EXPECT_EQ(mQueue.level(), 0u);
}

TEST_F(cPosixProcessEventsTest, TimedWorkAloneSleepsItsExactTime)
{
  tJob job = mQueue.createJob();
  job->sigAction.connect(mSlot.call());
  job->start(1500, cWork::Periodic);
  for (int i = 0; i < 20; ++i)
  {
    mQueue.process();
  }
  EXPECT_EQ(mSlot.calls(), 10u);
  EXPECT_EQ(mClock.blockedMSec(), 15000);
}

TEST_F(cPosixProcessEventsTest, ABusyLoopLooksBeforeItWaits)
{
  cPipe pipe;
  tJob job = addAIO(mSlot, {{pipe.in(), tFdInfo::Readable}});
  mSlot.mBody = [&] { pipe.read(); };
  pipe.write();
  mQueue.process();
  EXPECT_EQ(mClock.lastPollTimeout(), 10000);
  EXPECT_EQ(mClock.numPolls(), 1u);
  mQueue.process();
  pipe.write();
  mQueue.process();
  EXPECT_EQ(mClock.lastPollTimeout(), 0); // the last wait was not in vain, and this look is none either
  EXPECT_TRUE(job->aioData().isEvent());
  mQueue.process();
  mQueue.process();
  EXPECT_EQ(mClock.numPolls(), 6u); // nothing is ready: the look, and then the wait
  EXPECT_EQ(mClock.lastPollTimeout(), 10000);
  EXPECT_EQ(mClock.blockedMSec(), 10000);
  mQueue.process();
  EXPECT_EQ(mClock.numPolls(), 7u); // idle again: no more looks
}

// ---------------------------------------------------------------------------------------------------------------------

namespace
{

typedef support::cVirtualClock::cWatched tWatched;

// Gives out another list each time it is asked.
class cMovingData : public mpi::cAbstractAIOData
{
public:
  cMovingData(int fd, int other)
  {
    mFirst.addFd(fd, tFdInfo::Readable);
    mSecond.addFd(other, tFdInfo::Readable);
  }
  mpi::cFDAIOData* isFDAIOData() override
  {
    mTurn = !mTurn;
    return mTurn ? &mFirst : &mSecond;
  }

private:
  mpi::cFDAIOData mFirst;
  mpi::cFDAIOData mSecond;
  bool mTurn = false;
};

} // namespace

TEST_F(cPosixProcessEventsTest, DataThatGivesOutAnotherListEachTimeIsAskedEachTurn)
{
  cPipe first;
  cPipe second;
  tJob job = mQueue.createJob();
  job->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>(new cMovingData(first.in(), second.in())));
  mQueue.process();
  EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{first.in(), 0xC3}}));
  mQueue.process();
  EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{second.in(), 0xC3}}));
}

TEST_F(cPosixProcessEventsTest, WatchesOfAQueueFollowAListThatWasGivenOutForWriting)
{
  cPipe first;
  cPipe second;
  tJob job = addAIO(mSlot, {{first.in(), tFdInfo::Readable}});
  mQueue.process();
  mstd::tVector<tFdInfo>& fds = job->aioData().fdAIOData().fds();
  mQueue.process();
  fds.at(0).fd = second.in();
  mQueue.process();
  EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{second.in(), 0xC3}}));
  fds.at(0).flags = tFdInfo::Error;
  mQueue.process();
  EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{second.in(), 0x18}}));
  fds.append(tFdInfo(first.in(), tFdInfo::Writable));
  mQueue.process();
  EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{second.in(), 0x18}, {first.in(), 0x304}}));
}

TEST_F(cPosixProcessEventsTest, AProcessorThatChangesItsQueueWatchesTheNewOne)
{
  mpi::cPosixProcessEvents processor;
  for (int fd = 1000; fd < 1003; ++fd)
  {
    mpi::cWorkQueue queue;
    queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(&processor, mstd::tAutoPtrType::NotOwned));
    queue.addJob(newAIO({{fd, tFdInfo::Readable}}));
    queue.process();
    EXPECT_EQ(mClock.lastPolled(), (std::vector<tWatched>{{fd, 0xC3}}));
  }
}

TEST_F(cPosixProcessEventsTest, RandomChangesOfWorkAreWatchedFromTheNextTurnOn)
{
  // No descriptor that really is open: they report trouble at once, and nothing waits.
  unsigned int const iSeed = static_cast<unsigned int>(getpid());
  printf("seed %u\n", iSeed);
  srand(iSeed);
  struct cItem
  {
    std::unique_ptr<cWork> mpWork;
    std::unique_ptr<mpi::cAbstractAIOData> mpFormer; // replaced data is ours
    std::vector<int> mFds;
    bool mInQueue = false;
  };
  std::vector<cItem> items(12);
  int iNextFd = 1000;
  auto const give = [&](cItem& item, unsigned int iFds) {
    mstd::tAutoPtr<mpi::cAbstractAIOData> pData(new mpi::cFDAIOData);
    item.mFds.clear();
    for (unsigned int i = 0; i < iFds; ++i)
    {
      item.mFds.push_back(++iNextFd);
      pData->fdAIOData().addFd(iNextFd, tFdInfo::Readable);
    }
    item.mpFormer.reset(item.mpWork->hasAIOData());
    item.mpWork->setAIOData(pData);
  };
  std::vector<cItem*> order; // of the entries
  auto const leave = [&](cItem& item) {
    order.erase(std::remove(order.begin(), order.end(), &item), order.end());
    item.mInQueue = false;
  };
  for (int step = 0; step < 5000; ++step)
  {
    cItem& item = items[static_cast<unsigned int>(rand()) % items.size()];
    if (!item.mpWork)
    {
      item.mpWork.reset(new cWork);
    }
    switch (rand() % 9)
    {
    case 0:
      if (!item.mInQueue)
      {
        mQueue.addJob(*item.mpWork);
        order.push_back(&item);
        item.mInQueue = true;
      }
      break;
    case 1:
      give(item, static_cast<unsigned int>(rand()) % 4);
      break;
    case 2:
      if (item.mpWork->hasAIOData() != nullptr)
      {
        item.mFds.push_back(++iNextFd);
        item.mpWork->aioData().fdAIOData().addFd(iNextFd, tFdInfo::Readable);
      }
      break;
    case 3:
      item.mpWork->stop();
      break;
    case 4:
      item.mpWork->start();
      break;
    case 5:
      item.mpWork->start(1000000, cWork::Periodic);
      break;
    case 6:
      mQueue.removeJob(*item.mpWork);
      leave(item);
      break;
    case 7:
      item.mpWork.reset();
      leave(item);
      break;
    default:
      if (item.mpWork->hasAIOData() != nullptr)
      {
        item.mpFormer.reset(item.mpWork->hasAIOData());
        item.mpWork->setAIOData(mstd::tAutoPtr<mpi::cAbstractAIOData>());
      }
      break;
    }
    for (cItem& each : items)
    {
      // Started asynchronous work without data would raise out of the turn.
      if (each.mpWork && each.mpWork->type() == cWork::AIO && each.mpWork->hasAIOData() == nullptr)
      {
        each.mpWork->stop();
      }
    }
    std::vector<tWatched> expected;
    for (cItem const* pItem : order)
    {
      if (pItem->mpWork->type() == cWork::AIO && pItem->mpWork->isStarted())
      {
        for (int fd : pItem->mFds)
        {
          expected.push_back(tWatched{fd, 0xC3});
        }
      }
    }
    unsigned int const iPolls = mClock.numPolls();
    mQueue.process();
    if (expected.empty())
    {
      ASSERT_EQ(mClock.numPolls(), iPolls) << step;
    }
    else
    {
      ASSERT_GT(mClock.numPolls(), iPolls) << step;
      ASSERT_EQ(mClock.lastPolled(), expected) << step;
    }
  }
  for (cItem& item : items)
  {
    item.mpWork.reset();
  }
}
