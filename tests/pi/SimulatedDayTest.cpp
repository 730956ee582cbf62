// A day of the main loop in virtual time. The clock stands still except in waits, so what has to happen in a day
// follows from the intervals alone.

#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"
#include "support/cFakeProcessor.h"
#include "support/cSlotOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <malloc.h>

#include <memory>
#include <vector>

using mpi::cWork;
using support::cSlot;

namespace
{

typedef mstd::tSharedObject<cWork> tJob;

long long const MSecPerDay = 24LL * 60 * 60 * 1000;

size_t bytesInUse()
{
  return mallinfo2().uordblks;
}

// Half a minute to an hour, no two works alike.
unsigned int intervalOf(unsigned int i)
{
  return 30000 + (i * 3571) % 3570001;
}

} // namespace

TEST(SimulatedDaySlow, AThousandPeriodicWorksRunAsOftenAsTheirIntervalsFitIntoADay)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cPosixProcessEvents));
  std::vector<std::unique_ptr<cSlot>> slots;
  for (unsigned int i = 0; i < 1000; ++i)
  {
    slots.push_back(std::make_unique<cSlot>());
    tJob job = queue.createJob();
    job->sigAction.connect(slots.back()->call());
    job->start(intervalOf(i), cWork::Periodic);
  }
  // Each run of the first work leaves a one-shot job behind, which comes and goes within the second.
  cSlot shot;
  slots[0]->mBody = [&] {
    tJob job = queue.createJob();
    job->sigAction.connect(shot.call());
    job->start(500, cWork::SingleTask);
  };

  long long const start = clock.now();
  long long const end = start + MSecPerDay * 1000;
  while (clock.now() < end)
  {
    ASSERT_GE(queue.process(), 1000u);
  }
  // The last wait ended at or behind midnight; what was due by then ran or is due right now.
  long long const elapsed = (clock.now() - start) / 1000;
  EXPECT_LT(elapsed, MSecPerDay + 60000);
  queue.process();
  for (unsigned int i = 0; i < 1000; ++i)
  {
    EXPECT_EQ(slots[i]->calls(), elapsed / intervalOf(i)) << "work " << i;
  }
  EXPECT_GE(shot.calls() + 1, slots[0]->calls());
}

TEST(SimulatedDaySlow, ADayLeavesNoMemoryBehind)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new mpi::cPosixProcessEvents));
  cSlot shot;
  cSlot beat;
  beat.mBody = [&] {
    tJob job = queue.createJob();
    job->setName("a name that is long enough to need memory of its own, beyond what an object holds in itself");
    job->sigAction.connect(shot.call());
    job->start(500, cWork::SingleTask);
  };
  tJob job = queue.createJob();
  job->sigAction.connect(beat.call());
  job->start(1000, cWork::Periodic);
  auto const runUntil = [&](long long time) {
    while (clock.now() < time)
    {
      queue.process();
    }
  };
  long long const start = clock.now();
  runUntil(start + MSecPerDay * 1000 / 24);
  size_t const iFirstHour = bytesInUse();
  runUntil(start + MSecPerDay * 1000);
  EXPECT_EQ(bytesInUse(), iFirstHour);
  EXPECT_EQ(queue.jobs().length(), 1u);
  EXPECT_GE(beat.calls(), 86399u);
  EXPECT_GE(shot.calls() + 1, beat.calls());
}

TEST(SimulatedDaySlow, TheLatenessOfOneRunMovesAllThatFollow)
{
  support::cVirtualClock clock;
  mpi::cWorkQueue queue;
  support::cFakeProcessor* const pProcessor = new support::cFakeProcessor;
  queue.setEvents(mstd::tAutoPtr<mpi::cAbstractProcessEvents>(pProcessor));
  // Every wait takes 3 ms longer than asked for.
  pProcessor->mOnYield = [&] {
    clock.advanceMSec(pProcessor->mYields.back().delay + 3);
    pProcessor->mYields.clear();
  };
  cSlot slot;
  tJob job = queue.createJob();
  job->sigAction.connect(slot.call());
  job->start(1000, cWork::Periodic);
  long long const start = clock.now();
  while (clock.now() < start + MSecPerDay * 1000)
  {
    queue.process();
  }
  queue.process();
  long long const elapsed = (clock.now() - start) / 1000;
  EXPECT_EQ(slot.calls(), elapsed / 1003);
  EXPECT_LT(slot.calls(), 86400u - 250u);
}
