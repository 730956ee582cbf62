#ifndef MORTISE_TESTS_SUPPORT_CFAKEPROCESSOR_H
#define MORTISE_TESTS_SUPPORT_CFAKEPROCESSOR_H

#include "pi/cAbstractProcessEvents.h"

#include <functional>
#include <vector>

namespace support
{

/// Event processor that never waits and records what the queue asks of it.
class cFakeProcessor : public mpi::cAbstractProcessEvents
{
public:
  struct cYield
  {
    unsigned int level;
    unsigned int delay;
  };

  explicit cFakeProcessor(bool bAIO = true, bool bAsynchronous = false) : mAIO(bAIO), mAsynchronous(bAsynchronous) {}
  ~cFakeProcessor() override
  {
    if (mOnDestruction)
    {
      mOnDestruction();
    }
  }

  bool supportsAIO() const override { return mAIO; }
  bool isAsynchronous() const override { return mAsynchronous; }
  void yield(unsigned int iLevel, mstd::tList<mstd::tSharedObject<mpi::cWork>>& jobs, unsigned int iDelay) override
  {
    mYields.push_back(cYield{iLevel, iDelay});
    mpJobs = &jobs;
    if (mOnYield)
    {
      mOnYield();
    }
    if (!mAsynchronous)
    {
      sigFinished();
    }
  }
  void wakeUp() override { ++miWakeUps; }
  void poll() override
  {
    ++miPolls;
    mpi::cAbstractProcessEvents::poll();
  }

  bool mAIO;
  bool mAsynchronous;
  std::vector<cYield> mYields;
  mstd::tList<mstd::tSharedObject<mpi::cWork>>* mpJobs = nullptr;
  unsigned int miWakeUps = 0;
  unsigned int miPolls = 0;
  std::function<void()> mOnYield;
  std::function<void()> mOnDestruction;
};

} // namespace support

#endif
