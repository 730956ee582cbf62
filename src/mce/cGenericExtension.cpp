#include "mce/cGenericExtension.h"

namespace mce
{

cGenericExtension::cGenericExtension(mstd::cAsciiString const& description, ExtensionType eType)
    : mDescription(description), mType(eType)
{
}

cGenericExtension::~cGenericExtension() {}

cAbstractCoreExtension::ExtensionType cGenericExtension::extensionType() const
{
  return mType;
}

mstd::cAsciiString cGenericExtension::description() const
{
  return mDescription;
}

mstd::cBuildInfo const& cGenericExtension::buildInfo() const
{
  return mBuildInfo;
}

bool cGenericExtension::supports(mstd::cAsciiString const&) const
{
  return false;
}

} // namespace mce
