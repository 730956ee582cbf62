#ifndef MORTISE_RMI_CABSTRACTSLOTCALL_H
#define MORTISE_RMI_CABSTRACTSLOTCALL_H

#include "pi/piTypes.h"
#include "rmi/cConnectable.h"
#include "std/tAutoPtr.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
class cReferenceFrame;
} // namespace msa

namespace mstd
{
class cAsciiString;
}

namespace mrmi
{
class cAbstractSignal;
class cLocalSignalBase;
class cPublicSlot;

/// The call of one slot of one object.
///
/// A slot call without a signal is a template: it lives on the stack, is given to connect() and registers nothing. A
/// connected slot call is made by createConnectedInstance(), belongs to the signal and stands in the receiver's list.
///
/// Ownership: refers to receiver, signal and published description, and owns none of them.
class MORTISE_API cAbstractSlotCall
{
public:
  virtual ~cAbstractSlotCall();
  /// True if `object` is the receiver.
  virtual bool matchSlotOfObject(cConnectable const* object) const;
  /// Calls with the arguments in a frame. Here it only tells, on the debug output, that it was reached.
  virtual void call(msa::cReferenceFrame& frame) const;
  /// Calls with arguments from a stream, and writes the results to another one. Here it only tells, on the debug
  /// output, that it was reached.
  virtual void call(msa::cAbstractDeserializer& arguments, msa::cAbstractSerializer& results) const;

  cAbstractSlotCall& operator=(cAbstractSlotCall const&) = delete;

  /// Tells the receiver to list `signal` wherever it lists the signal of this call. The call itself keeps its signal.
  /// Does nothing on a template. Null is an assertion failure.
  void reAssign(cAbstractSignal* signal);
  /// The receiver.
  cConnectable& assignedObject() const { return mObject; }
  /// The published description, which stays its connectable's; null takes it away.
  void setPublicSlot(cPublicSlot const* publicSlot) { mpPublicSlot = publicSlot; }
  /// Null if the slot was not published.
  cPublicSlot const* publicSlot() const { return mpPublicSlot; }
  bool isPublicSlot() const { return mpPublicSlot != 0; }
  /// Name under which the slot is published. cBugException if it is not.
  mstd::cAsciiString publicSlotName() const;
  /// Publishes `call` on the receiver of this call.
  cPublicSlot& registerSlotByInterface(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                                       mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description,
                                       mstd::tAutoPtr<cAbstractSlotCall> call);

protected:
  /// `pSignal` is null for a template. Otherwise the call enters the receiver's list.
  cAbstractSlotCall(cConnectable& object, cAbstractSignal* pSignal);
  /// A copy is a template.
  cAbstractSlotCall(cAbstractSlotCall const& other);

  /// What comes before callRef(): checks that the frame has a return value behind `arguments` references, and leaves
  /// its reading position at the start. A frame that has none raises mstd::cBugException if there are arguments, and
  /// else goes through as the frame's own failure.
  static void checkFrame(msa::cReferenceFrame& frame, unsigned int arguments);
  /// Call a published slot that has no arguments and no result: by its name, and one found before.
  static void invokeByName(cConnectable const& target, mstd::cAsciiString const& slotName);
  static void invokeResolved(cConnectable const& target, cAbstractSlotCall const& call);

private:
  friend class cConnectable;
  friend class cLocalSignalBase;

  cConnectable& mObject;
  cAbstractSignal* mpSignal;
  cPublicSlot const* mpPublicSlot;
  cConnectable::cEntry mEntry;
  bool mCalled;  // by the invocation that now runs
  bool mRemoved; // chosen by the disconnect that now runs
};
} // namespace mrmi

#endif
