#include "mce/cAbstractSAExtension.h"

namespace mce
{

cAbstractSAExtension::~cAbstractSAExtension() {}

cAbstractCoreExtension::ExtensionType cAbstractSAExtension::extensionType() const
{
  return SA;
}

} // namespace mce
