#ifndef MORTISE_RMI_CABSTRACTSIGNAL_H
#define MORTISE_RMI_CABSTRACTSIGNAL_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
}

namespace mrmi
{
class cConnectable;
class cPublicSignal;

/// What all signals have in common, whatever their arguments. Applications use localSignal0 to localSignal3.
class MORTISE_API cAbstractSignal
{
public:
  /// What a call of the signal does when no slot is connected.
  enum InvocationBehavior
  {
    ThrowIfUnconnected = 0, ///< cUnconnectedSignalException
    IgnoreIfUnconnected = 1 ///< nothing
  };

  /// Where a new slot call goes in the calling order.
  enum ConnectionPolicy
  {
    Prepend = 0,
    Append = 1
  };

  /// When the name of a slot is looked up.
  enum SlotResolving
  {
    ResolveOnCall = 0,
    ResolveOnConnect = 1
  };

  /// Free number that is carried with a published signal.
  typedef unsigned int InterfaceType;

  cAbstractSignal();
  cAbstractSignal(cAbstractSignal const& other);
  virtual ~cAbstractSignal();
  /// Called by a connectable that goes: drop all calls to it. It may be called again for the same object.
  virtual void notifyConnectableDestroyed(cConnectable& connectable) = 0;
  /// Connects the slot that `connectable` published as `slotName`.
  virtual void connect(cConnectable& connectable, mstd::cAsciiString const& slotName, SlotResolving resolving) = 0;
  /// Drops all calls to `connectable`.
  virtual void disconnect(cConnectable const& connectable) = 0;
  /// Describes arguments and result.
  virtual void addParameterInfo(cPublicSignal& publicSignal) = 0;
  virtual mstd::cAsciiString parametersTypeString() const; ///< Empty here.
  virtual mstd::cAsciiString returnTypeString() const;     ///< Empty here.

  /// Exchanges the invocation behaviours; all else stays.
  void swap(cAbstractSignal& other) noexcept;

  InvocationBehavior invocationBehavior() const { return mInvocationBehavior; }
  void setInvocationBehavior(InvocationBehavior behavior) { mInvocationBehavior = behavior; }

  /// The published description, which stays its connectable's; null takes it away.
  void setPublicSignal(cPublicSignal const* publicSignal) { mpPublicSignal = publicSignal; }
  bool isPublicSignal() const { return mpPublicSignal != 0; }
  /// Name under which the signal is published. cBugException if it is not.
  mstd::cAsciiString publicSignalName() const;
  /// Publishes the signal on `connectable`, with the types that it tells of itself. The description goes with the
  /// connectable, or when that is cleared: a signal that lives on has to lose it by setPublicSignal(0), or may not be
  /// asked for its name any more. A failure publishes nothing, and the signal keeps the name that it had.
  void exportSignal(cConnectable& connectable, mstd::cAsciiString const& name, InterfaceType type,
                    mstd::cAsciiString const& description);

protected:
  /// Reports the destruction of a running signal: if `count`, the number of invocations now running, is not 0, a line
  /// and a stack trace go to the debug output. Throws nothing.
  static void checkNIC(unsigned int count);

private:
  InvocationBehavior mInvocationBehavior;
  cPublicSignal const* mpPublicSignal; // not owned
};
} // namespace mrmi

#endif
