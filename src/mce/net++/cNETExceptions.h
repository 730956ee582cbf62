#ifndef MORTISE_MCE_NET_CNETEXCEPTIONS_H
#define MORTISE_MCE_NET_CNETEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAbstractException;
class cAsciiString;
class cRuntimeException;
} // namespace mstd

namespace mce
{

/// The throw functions of the network layer. None of them returns.
class MORTISE_API cNETExceptions
{
public:
  /// mstd::cRuntimeException: an address of another kind was given where an IP address is needed.
  [[noreturn]] static void throwNoIPAddress();

  /// \name Connections
  /// All raise mstd::cRuntimeException; a cause stands behind it as a copy.
  /// @{
  /// For concrete network layers: the text of an address cannot be read.
  [[noreturn]] static void throwInvalidAddress(mstd::cAbstractException const& cause);
  /// A buffer is still on its way out.
  [[noreturn]] static void throwConnectionTxBusy();
  /// For those that wait for an answer.
  [[noreturn]] static void throwUnableToCompleteConnectionClosedUnexpectedly(mstd::cAbstractException const& cause);
  [[noreturn]] static void throwConnectionClosedUnexpectedly(mstd::cAbstractException const& cause);
  [[noreturn]] static void throwTransferTimeout(unsigned int iMSec);
  /// The connection is invalid; `pKey` is the message, which tells the operation.
  [[noreturn]] static void throwInvalidConnection(char const* pKey);
  /// An operation on a connection has failed, and nobody handles it there.
  [[noreturn]] static void throwConnectionError(mstd::cAbstractException const& cause);
  /// What throwConnectionError() raises.
  static mstd::cRuntimeException connectionError(mstd::cAbstractException const& cause);
  /// mstd::cBugException: a socket claims to have transferred more bytes than it was given.
  [[noreturn]] static void throwSocketBug(unsigned int iReturned, unsigned int iGiven);
  /// The time limit of a client has passed.
  [[noreturn]] static void throwClientTimeout(mstd::cAsciiString const& target);
  /// @}

  /// \name Texts of IP addresses
  /// All raise mstd::cRuntimeException.
  /// @{
  [[noreturn]] static void throwExpectingNumber();
  [[noreturn]] static void throwNumberOutOfRange(int iNumber);
  [[noreturn]] static void throwExpectingPort();
  [[noreturn]] static void throwPortOutOfRange(long long iPort);
  /// @}
};

} // namespace mce

#endif
