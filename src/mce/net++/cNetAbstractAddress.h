#ifndef MORTISE_MCE_NET_CNETABSTRACTADDRESS_H
#define MORTISE_MCE_NET_CNETABSTRACTADDRESS_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mstd
{
class cAsciiString;
}

namespace mce
{
class cNetAbstractIPAddress;

/// Base of all network addresses. What an address names, and how it is written, is the matter of its kind.
class MORTISE_API cNetAbstractAddress
{
public:
  virtual ~cNetAbstractAddress();

  /// The name of the kind.
  virtual mstd::cAsciiString addrType() const = 0;
  /// Reads the text form. What cannot be read raises mstd::cRuntimeException, and the address stays.
  virtual void fromString(mstd::cAsciiString const& text) = 0;
  /// The text form; what `flags` mean is the matter of the kind.
  virtual mstd::cAsciiString toString(int flags) const = 0;
  /// A copy of the same concrete kind.
  virtual mstd::tAutoPtr<cNetAbstractAddress> createCopy() const = 0;
  /// Both are of the same kind and name the same.
  virtual bool isEqual(cNetAbstractAddress const& other) const = 0;
  /// True if the address is sure to name this very machine.
  virtual bool isThisHost() const = 0;
  /// A new address of the same concrete kind, which names nothing yet.
  virtual mstd::tAutoPtr<cNetAbstractAddress> newAddress() const = 0;
  /// This object if it is an IP address, else null.
  virtual cNetAbstractIPAddress* isIPAddress();
  virtual cNetAbstractIPAddress const* isIPAddress() const;

  /// isIPAddress(), or mstd::cRuntimeException if that is null.
  cNetAbstractIPAddress& ipAddress();
  cNetAbstractIPAddress const& ipAddress() const;
};

} // namespace mce

#endif
