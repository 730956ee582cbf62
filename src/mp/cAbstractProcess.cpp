#include "mp/cAbstractProcess.h"

#include "mp/cAbstractProcessData.h"
#include "mp/cBasicProcessData.h"

namespace mp
{

cAbstractProcess::cAbstractProcess() : mpOwnData(new cBasicProcessData), mData(*mpOwnData.get()) {}

cAbstractProcess::cAbstractProcess(mp::cAbstractProcessData& data) : mData(data) {}

cAbstractProcess::~cAbstractProcess()
{
  mData.setContext(NoContext, 0, 0);
}

bool cAbstractProcess::isFinished() const
{
  return mData.isFinished();
}

bool cAbstractProcess::isRunning() const
{
  return mData.isRunning();
}

} // namespace mp
