#include "mcs/cManagedComponent.h"

#include "mcs/cAbstractComponent.h"
#include "std/cSTDExceptions.h"

namespace mcs
{

cManagedComponent::cManagedComponent(mstd::tAutoPtr<cAbstractComponent> pComponent)
    : mpComponentGuard(pComponent), mpComponent(mpComponentGuard.get()), mpNextSwept(nullptr)
{
  if (!(mpComponentGuard.get()))
  {
    cSTDExceptions::throwAssertionFailed("mpComponentGuard.get()", "mcs/cManagedComponent", __LINE__);
  }
}

cManagedComponent::cManagedComponent(cAbstractComponent& component) : mpComponent(&component), mpNextSwept(nullptr) {}

cManagedComponent::~cManagedComponent() {}

} // namespace mcs
