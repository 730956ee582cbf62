#include "sa/cContextRef.h"

#include "sa/cAbstractContextData.h"
#include "sa/cSAExceptions.h"

namespace msa
{

cContextRef::~cContextRef()
{
  delete mpData;
}

cAbstractContextData* cContextRef::unguardImpl()
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
