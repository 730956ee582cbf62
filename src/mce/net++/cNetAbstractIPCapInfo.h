#ifndef MORTISE_MCE_NET_CNETABSTRACTIPCAPINFO_H
#define MORTISE_MCE_NET_CNETABSTRACTIPCAPINFO_H

#include "mce/net++/cNetAbstractAddress.h"
#include "std/tPtrList.h"

namespace mce
{

/// What a concrete network layer tells about the internet protocol on this machine.
class MORTISE_API cNetAbstractIPCapInfo
{
public:
  virtual ~cNetAbstractIPCapInfo();

  virtual bool hasIPv4() const = 0;
  virtual bool hasIPv6() const = 0;
  /// Appends the addresses of this machine, which become the list's.
  virtual void addresses(mstd::tPtrList<cNetAbstractAddress>& list) const = 0;
};

} // namespace mce

#endif
