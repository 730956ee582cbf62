#include "mce/net++/cNetAbstractAddress.h"

#include "mce/net++/cNETExceptions.h"

namespace mce
{
namespace
{
template <class IPAddress>
IPAddress& existing(IPAddress* pAddress)
{
  if (pAddress == nullptr)
  {
    cNETExceptions::throwNoIPAddress();
  }
  return *pAddress;
}
} // namespace

cNetAbstractAddress::~cNetAbstractAddress() {}

cNetAbstractIPAddress* cNetAbstractAddress::isIPAddress()
{
  return nullptr;
}

cNetAbstractIPAddress const* cNetAbstractAddress::isIPAddress() const
{
  return nullptr;
}

cNetAbstractIPAddress& cNetAbstractAddress::ipAddress()
{
  return existing(isIPAddress());
}

cNetAbstractIPAddress const& cNetAbstractAddress::ipAddress() const
{
  return existing(isIPAddress());
}

} // namespace mce
