#ifndef MORTISE_MCE_NET_CNETEXCEPTIONS_H
#define MORTISE_MCE_NET_CNETEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mce
{

/// The throw functions of the network layer. None of them returns.
class MORTISE_API cNETExceptions
{
public:
  /// mstd::cRuntimeException: an address of another kind was given where an IP address is needed.
  [[noreturn]] static void throwNoIPAddress();
};

} // namespace mce

#endif
