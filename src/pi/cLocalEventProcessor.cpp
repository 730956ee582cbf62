#include "pi/cLocalEventProcessor.h"

#include "pi/cPlatform.h"
#include "std/cTime.h"

namespace mpi
{

cLocalEventProcessor::~cLocalEventProcessor() = default;

bool cLocalEventProcessor::supportsAIO() const
{
  return false;
}

bool cLocalEventProcessor::isAsynchronous() const
{
  return false;
}

void cLocalEventProcessor::yield(unsigned int, mstd::tList<mstd::tSharedObject<cWork>>& jobs, unsigned int iDelayMSec)
{
  if (jobs.empty())
  {
    mstd::cTime const start;
    while (!mWakeUp && start.diff().toMSec() < iDelayMSec)
    {
      cPlatform::yield();
    }
    mWakeUp = false;
  }
  sigFinished();
}

void cLocalEventProcessor::wakeUp()
{
  mWakeUp = true;
}

} // namespace mpi
