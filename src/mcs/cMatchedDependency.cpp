#include "mcs/cMatchedDependency.h"

#include "mcs/cMCSExceptions.h"

namespace mcs
{

void cMatchedDependency::set(cComponentLocation const& location)
{
  mLocation = location;
  mValid = true;
}

cComponentLocation const& cMatchedDependency::location() const
{
  if (!mValid)
  {
    cMCSExceptions::throwUnmatchedInterface();
  }
  return mLocation;
}

} // namespace mcs
