#include "sa/cContext.h"

#include "sa/cAbstractContextData.h"
#include "sa/cSAExceptions.h"

namespace msa
{

void cContext::release()
{
  if (mpData == nullptr)
  {
    cSAExceptions::throwContextRefNoImpl();
  }
  mpData->release();
}

void cContext::unset()
{
  cAbstractContextData* const pData = mpData;
  mpData = nullptr;
  delete pData;
}

cAbstractContextData* cContext::unguard()
{
  if (mpData == nullptr)
  {
    cSAExceptions::throwContextRefNoImpl();
  }
  cAbstractContextData* const pData = mpData;
  mpData = nullptr;
  return pData;
}

} // namespace msa
