#ifndef MORTISE_MCS_CMANAGEDCOMPONENT_H
#define MORTISE_MCS_CMANAGEDCOMPONENT_H

#include "std/tAutoPtr.h"

namespace mcs
{
class cAbstractComponent;

/// Entry of a component in its manager; owns the component if that was handed over.
class MORTISE_API cManagedComponent
{
public:
  /// No component is an assertion failure.
  explicit cManagedComponent(mstd::tAutoPtr<cAbstractComponent> pComponent);
  explicit cManagedComponent(cAbstractComponent& component);
  cManagedComponent(cManagedComponent const&) = delete; // one entry owns the component
  cManagedComponent& operator=(cManagedComponent const&) = delete;
  ~cManagedComponent();

  /// Never null.
  cAbstractComponent* component() const { return mpComponent; }

private:
  friend class cModuleMgrImpl;

  mstd::tAutoPtr<cAbstractComponent> mpComponentGuard;
  cAbstractComponent* mpComponent;
  cManagedComponent* mpNextSwept; // of the entries that have left the list and wait for the end of the walks
};

} // namespace mcs

#endif
