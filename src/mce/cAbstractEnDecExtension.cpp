#include "mce/cAbstractEnDecExtension.h"

namespace mce
{

cAbstractEnDecExtension::~cAbstractEnDecExtension() {}

cAbstractCoreExtension::ExtensionType cAbstractEnDecExtension::extensionType() const
{
  return EnDec;
}

} // namespace mce
