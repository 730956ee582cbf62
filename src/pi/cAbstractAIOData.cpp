#include "pi/cAbstractAIOData.h"

#include "pi/cPIExceptions.h"

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

} // namespace mpi
