#include "pi/cAbstractProcessEvents.h"

namespace mpi
{

cAbstractProcessEvents::cAbstractProcessEvents()
{
  sigFinished.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cAbstractProcessEvents::~cAbstractProcessEvents() = default;

void cAbstractProcessEvents::poll() {}

} // namespace mpi
