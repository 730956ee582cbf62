#ifndef MORTISE_RMI_CRMIEXCEPTIONS_H
#define MORTISE_RMI_CRMIEXCEPTIONS_H

#include "pi/piTypes.h"

namespace msa
{
class cReferenceFrame;
}

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace mrmi
{
class cPublicSlot;

/// The throw functions of signals and slots. None of them returns.
class MORTISE_API cRMIExceptions
{
public:
  /// cUnconnectedSignalException.
  [[noreturn]] static void throwUnconnectedSignal();
  /// cBugException: a local signal takes no connection by name.
  [[noreturn]] static void throwIndirectLocalConnection();
  /// cBugException: a slot of a local signal can't be called through streams.
  [[noreturn]] static void throwIndirectLocalSlotCall();
  /// cBugException: the slot call takes no reference frame.
  [[noreturn]] static void throwIndirectCallSlotCallRef();
  /// cBugException: the slot was not published.
  [[noreturn]] static void throwSlotNotPublic();
  /// cBugException: the signal was not published.
  [[noreturn]] static void throwSignalNotPublic();
  /// cNoSuchSlotException.
  [[noreturn]] static void throwNoSuchSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& argsText);
  /// cNoSuchSlotException, with the types of the values in the frame.
  [[noreturn]] static void throwNoSuchSlot(mstd::cAsciiString const& name, msa::cReferenceFrame const& frame);
  /// cNoSuchSignalException.
  [[noreturn]] static void throwNoSuchSignal(mstd::cAsciiString const& name);
  /// cCallParameterMissmatchException. Behind it in the chain stand the slot's definition, a mstd::cRuntimeException,
  /// and a copy of `cause`; for a slot that is not published, null, only `cause`. What a slot call raises that can't
  /// read its arguments.
  [[noreturn]] static void throwParameterMissmatch(cPublicSlot const* slot, mstd::cAbstractException const& cause);
  /// mstd::cBugException with a copy of `cause` behind it: the frame of a call by name does not end in a return value.
  [[noreturn]] static void throwMissingReturnValue(mstd::cAbstractException const& cause);
};
} // namespace mrmi

#endif
