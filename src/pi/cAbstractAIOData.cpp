#include "pi/cAbstractAIOData.h"

#include "pi/cPIExceptions.h"
#include "pi/cWork.h"

namespace mpi
{

cAbstractAIOData::~cAbstractAIOData() = default;

cFDAIOData* cAbstractAIOData::isFDAIOData()
{
  return nullptr;
}

cFDAIOData& cAbstractAIOData::fdAIOData()
{
  cFDAIOData* const pData = isFDAIOData();
  if (pData == nullptr)
  {
    cPIExceptions::throwNoFDAIOData();
  }
  return *pData;
}

void cAbstractAIOData::setEvent(bool bEvent)
{
  mEvent = bEvent;
  if (mpWork != nullptr)
  {
    mpWork->publishKey();
  }
}

void cAbstractAIOData::publishDescriptors()
{
  if (mpWork != nullptr)
  {
    mpWork->publishDescriptors();
  }
}

} // namespace mpi
