#ifndef MORTISE_MCS_CMATCHEDDEPENDENCY_H
#define MORTISE_MCS_CMATCHEDDEPENDENCY_H

#include "mcs/cComponentLocation.h"

namespace mcs
{

/// Where a dependency found its provider.
class MORTISE_API cMatchedDependency
{
public:
  cMatchedDependency() : mValid(false) {}

  void set(cComponentLocation const& location);
  /// Takes the validity and leaves the location.
  void invalidate() { mValid = false; }
  bool valid() const { return mValid; }
  /// cUnmatchedInterfaceException unless valid().
  cComponentLocation const& location() const;

private:
  cComponentLocation mLocation;
  bool mValid;
};

} // namespace mcs

#endif
