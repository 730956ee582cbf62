#ifndef MORTISE_TESTS_SUPPORT_CPLAINIPV4ADDRESS_H
#define MORTISE_TESTS_SUPPORT_CPLAINIPV4ADDRESS_H

#include "mce/net++/cNetAbstractIPv4Address.h"
#include "std/cAsciiString.h"

namespace support
{

/// An IPv4 address that does nothing but to keep its numbers.
class cPlainIPv4Address : public mce::cNetAbstractIPv4Address
{
public:
  cPlainIPv4Address() = default;
  cPlainIPv4Address(unsigned int iIp, unsigned int iPort) : miIp(iIp), miPort(iPort) {}

  mstd::tAutoPtr<mce::cNetAbstractAddress> createCopy() const override
  {
    return mstd::tAutoPtr<mce::cNetAbstractAddress>(new cPlainIPv4Address(*this));
  }
  bool isEqual(mce::cNetAbstractAddress const& other) const override
  {
    return other.addrType() == addrType() && other.toString(WithPort) == toString(WithPort);
  }
  bool isThisHost() const override { return (miIp & 0xFF) == 127; }
  mstd::tAutoPtr<mce::cNetAbstractAddress> newAddress() const override
  {
    return mstd::tAutoPtr<mce::cNetAbstractAddress>(new cPlainIPv4Address);
  }
  unsigned int port() const override { return miPort; }
  void setPort(unsigned int iPort) override { miPort = iPort; }
  void setAddress(unsigned int iIp, unsigned int iPort) override
  {
    miIp = iIp;
    miPort = iPort;
    ++miSets;
  }
  void getAddress(unsigned int& iIp, unsigned int& iPort) const override
  {
    iIp = miIp;
    iPort = miPort;
  }

  unsigned int miIp = 0;
  unsigned int miPort = 0;
  unsigned int miSets = 0;
};

} // namespace support

#endif
