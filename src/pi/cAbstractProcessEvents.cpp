#include "pi/cAbstractProcessEvents.h"

#include "pi/cWorkQueue.h"

namespace mpi
{

cAbstractProcessEvents::cAbstractProcessEvents()
{
  sigFinished.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cAbstractProcessEvents::~cAbstractProcessEvents() = default;

void cAbstractProcessEvents::poll() {}

bool cAbstractProcessEvents::descriptorChanges(mstd::tList<mstd::tSharedObject<cWork>> const& jobs,
                                               piUInt64& iChanges) const
{
  if (mpQueue == nullptr || &mpQueue->mJobs != &jobs)
  {
    return false;
  }
  iChanges = mpQueue->miDescriptorChanges;
  miLatestChanges = iChanges;
  return true;
}

} // namespace mpi
