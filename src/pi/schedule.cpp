#include "pi/schedule.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "pi/piStackTrace.h"

namespace mpi
{

namespace
{

void writeDebugLine(mstd::cAsciiString const& sText, unsigned int iLine)
{
  cAbstractOut& out = system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage("pi/schedule", iLine) << sText << "\n" << cAbstractOut::clearDebugMessage();
}

} // namespace

cWork& schedule(cWork& work)
{
  system().wq.addJob(work);
  return work;
}

mstd::tSharedObject<cWork> schedule(mstd::tAutoPtr<cWork> pWork)
{
  mstd::tSharedObject<cWork> job(pWork);
  system().wq.addJob(job);
  return job;
}

mstd::tSharedObject<cWork> schedule(mrmi::cAbstractSlotCall0<piVoid> const& call, unsigned int iDelayMSec,
                                    char const* pName)
{
  return schedule(call, iDelayMSec, cWork::SingleTask, pName);
}

mstd::tSharedObject<cWork> schedule(mrmi::cAbstractSlotCall0<piVoid> const& call, unsigned int iIntervalMSec,
                                    cWork::Type iType, char const* pName)
{
  mstd::tSharedObject<cWork> job = system().wq.createJob();
  try
  {
    if (pName != nullptr)
    {
      job->setName(pName);
    }
    else
    {
      writeDebugLine("Work scheduled without name!", __LINE__);
      writeDebugLine(piStackTrace(128), __LINE__);
    }
    job->sigAction.connect(call, mrmi::cAbstractSignal::Append);
    job->start(iIntervalMSec, iType);
  }
  catch (...)
  {
    // Nobody would ever start it, nor take it away.
    system().wq.removeJob(*job);
    throw;
  }
  return job;
}

void unschedule(cWork& work)
{
  system().wq.removeJob(work);
}

} // namespace mpi
