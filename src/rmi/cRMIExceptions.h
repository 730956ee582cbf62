#ifndef MORTISE_RMI_CRMIEXCEPTIONS_H
#define MORTISE_RMI_CRMIEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mrmi
{
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
};
} // namespace mrmi

#endif
