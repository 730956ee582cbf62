#include "mp/cAbstractPollable.h"

#include "mp/cAbstractProcessData.h"
#include "pi/cPIExceptions.h"

namespace mp
{

namespace
{

// Asked before the base is made: the destructor of a base that was made would set free what another process uses.
mp::cAbstractProcessData& unused(mp::cAbstractProcessData& data)
{
  if (data.context() != cAbstractProcess::NoContext)
  {
    mpi::cPIExceptions::throwProcessDataInUse();
  }
  return data;
}

} // namespace

cAbstractPollable::cAbstractPollable()
{
  processData().setContext(PollableContext, 0, 0);
}

cAbstractPollable::cAbstractPollable(mp::cAbstractProcessData& data) : cAbstractProcess(unused(data))
{
  data.setContext(PollableContext, 0, 0);
}

cAbstractPollable::~cAbstractPollable() = default;

cAbstractPollable* cAbstractPollable::isPollable()
{
  return this;
}

cAbstractRunnable* cAbstractPollable::isRunnable()
{
  return 0;
}

void cAbstractPollable::interrupt(bool) {}

} // namespace mp
