#include "mcs/cRegisteredInterface.h"

#include "mcs/cAbstractInterface.h"

namespace mcs
{

cRegisteredInterface::cRegisteredInterface(mstd::tAutoPtr<cAbstractInterface> pInterface)
    : mpInterface(pInterface.release()), mOwned(true)
{
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
