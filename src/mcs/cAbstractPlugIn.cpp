#include "mcs/cAbstractPlugIn.h"

#include "mcs/cMCSExceptions.h"
#include "ucs/cString.h"

namespace mcs
{

cAbstractPlugIn::cAbstractPlugIn(msa::cReferenceFrame& frame) : cAbstractModule(frame) {}

cAbstractPlugIn::~cAbstractPlugIn() {}

bool cAbstractPlugIn::isPlugIn() const
{
  return true;
}

bool cAbstractPlugIn::isComponent() const
{
  return false;
}

bool cAbstractPlugIn::isCoreExtension() const
{
  return false;
}

mce::cAbstractCoreExtension& cAbstractPlugIn::coreExtension() const
{
  cMCSExceptions::throwNoCoreExtension(mucs::cString(info().name(), '?'));
}

mstd::cAsciiString cAbstractPlugIn::pluginTypeName() const
{
  return mstd::cAsciiString("none");
}

} // namespace mcs
