#include "mcs/cRegisteredInterface.h"

#include "mcs/cAbstractInterface.h"

namespace mcs
{

cRegisteredInterface::cRegisteredInterface(mstd::tAutoPtr<cAbstractInterface> pInterface)
    : mpInterface(&*pInterface), mOwned(pInterface.type() != mstd::tAutoPtrType::NotOwned)
{
  pInterface.release();
}

cRegisteredInterface::cRegisteredInterface(cAbstractInterface& interface) : mpInterface(&interface), mOwned(false) {}

cRegisteredInterface::~cRegisteredInterface()
{
  if (mOwned)
  {
    delete mpInterface;
  }
}

} // namespace mcs
