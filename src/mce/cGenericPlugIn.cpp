#include "mce/cGenericPlugIn.h"

namespace mce
{

cGenericPlugIn::cGenericPlugIn(msa::cReferenceFrame& frame, mstd::cAsciiString const& description)
    : cAbstractPlugIn(frame), mExtension(description, cAbstractCoreExtension::EnDec)
{
}

cGenericPlugIn::~cGenericPlugIn() {}

bool cGenericPlugIn::isCoreExtension() const
{
  return true;
}

cAbstractCoreExtension& cGenericPlugIn::coreExtension() const
{
  return mExtension;
}

} // namespace mce
