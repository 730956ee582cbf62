#include "mce/cNetAbstractAddressExtension.h"

namespace mce
{

cNetAbstractAddressExtension::~cNetAbstractAddressExtension() {}

cAbstractCoreExtension::ExtensionType cNetAbstractAddressExtension::extensionType() const
{
  return NetAddress;
}

} // namespace mce
