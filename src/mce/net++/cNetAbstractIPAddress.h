#ifndef MORTISE_MCE_NET_CNETABSTRACTIPADDRESS_H
#define MORTISE_MCE_NET_CNETABSTRACTIPADDRESS_H

#include "mce/net++/cNetAbstractAddress.h"

namespace mce
{

/// Base of the addresses of the internet protocol, which have a port.
class MORTISE_API cNetAbstractIPAddress : public cNetAbstractAddress
{
public:
  ~cNetAbstractIPAddress() override;

  cNetAbstractIPAddress* isIPAddress() override;
  cNetAbstractIPAddress const* isIPAddress() const override;

  virtual unsigned int port() const = 0;
  /// 0 to 65535.
  virtual void setPort(unsigned int iPort) = 0;
};

} // namespace mce

#endif
