#ifndef MORTISE_MCE_NET_CNETABSTRACTIPV4ADDRESS_H
#define MORTISE_MCE_NET_CNETABSTRACTIPV4ADDRESS_H

#include "mce/net++/cNetAbstractIPAddress.h"

namespace mce
{

/// IPv4 address with a port, and its text: "10.0.0.1", or "10.0.0.1:8080". A derived class keeps the two numbers.
class MORTISE_API cNetAbstractIPv4Address : public cNetAbstractIPAddress
{
public:
  enum ToStringFlags
  {
    WithPort = 1
  };

  ~cNetAbstractIPv4Address() override;

  /// "TcpIpv4"
  mstd::cAsciiString addrType() const override;
  /// Four plain decimal numbers up to 255 with points between them, and a port up to 65535 behind a colon; 0 without
  /// one. What stands in the place of a colon is ignored.
  void fromString(mstd::cAsciiString const& text) override;
  mstd::cAsciiString toString(int iFlags) const override;

  /// The first number of the text is the lowest byte of `iIp`, the last one the highest.
  virtual void setAddress(unsigned int iIp, unsigned int iPort) = 0;
  virtual void getAddress(unsigned int& iIp, unsigned int& iPort) const = 0;
};

} // namespace mce

#endif
