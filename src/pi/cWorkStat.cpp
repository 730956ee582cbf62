#include "pi/cWorkStat.h"

#include "pi/piStackTrace.h"

namespace mpi
{

namespace
{
unsigned int const StackLevels = 128;
}

cWorkStat::cDebugInfo::cDebugInfo() : mCreationStack(piStackTrace(StackLevels)) {}

cWorkStat::~cWorkStat() = default;

void cWorkStat::setDebug(bool bDebug)
{
  if (!bDebug)
  {
    mpDebugInfo.reinit(nullptr);
  }
  else if (mpDebugInfo.get() == nullptr)
  {
    mpDebugInfo.reinit(new cDebugInfo);
  }
}

void cWorkStat::recordStart()
{
  mstd::cAsciiString stack = piStackTrace(StackLevels);
  mpDebugInfo->mLastStart = mstd::cTime();
  mpDebugInfo->mLastStartStack.swap(stack);
}

void cWorkStat::recordTrigger()
{
  mpDebugInfo->mLastTrigger = mstd::cTime();
}

} // namespace mpi
