#include "mcs/cManagedComponent.h"

#include "mcs/cAbstractComponent.h"

namespace mcs
{

cManagedComponent::cManagedComponent(mstd::tAutoPtr<cAbstractComponent> pComponent)
    : mpComponentGuard(pComponent), mpComponent(mpComponentGuard.get())
{
  if (!(mpComponentGuard.get()))
  {
    cSTDExceptions::throwAssertionFailed("mpComponentGuard.get()", "mcs/cManagedComponent", __LINE__);
  }
}

cManagedComponent::cManagedComponent(cAbstractComponent& component) : mpComponent(&component) {}

cManagedComponent::~cManagedComponent() {}

} // namespace mcs
