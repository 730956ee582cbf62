#include "sa/cDummyContextData.h"

#include "sa/cAbstractSerializer.h"
#include "std/debugLines.h"

namespace msa
{

cDummyContextData::~cDummyContextData()
{
  if (!mReleased)
  {
    return;
  }
  try
  {
    mSerializer.releaseCurrentContext();
  }
  catch (...)
  {
    mstd::writeCaughtException("sa/cDummyContextData", __LINE__);
  }
}

void cDummyContextData::release()
{
  mReleased = true;
}

} // namespace msa
