#include "mce/net++/cNetAbstractIPAddress.h"

namespace mce
{

cNetAbstractIPAddress::~cNetAbstractIPAddress() {}

cNetAbstractIPAddress* cNetAbstractIPAddress::isIPAddress()
{
  return this;
}

cNetAbstractIPAddress const* cNetAbstractIPAddress::isIPAddress() const
{
  return this;
}

} // namespace mce
