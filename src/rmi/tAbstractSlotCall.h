#ifndef MORTISE_RMI_TABSTRACTSLOTCALL_H
#define MORTISE_RMI_TABSTRACTSLOTCALL_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall.h"

#include <type_traits>

namespace mrmi
{
class cAbstractSignal;

/// What the bases of slot calls with arguments, cAbstractSlotCall1 to cAbstractSlotCall3, have in common. `Self` is the
/// one that derives from it.
template <typename Self, typename R, typename... A>
class MORTISE_API tAbstractSlotCall : public cAbstractSlotCall
{
  static_assert(std::is_same<R, piVoid>::value,
                "a slot has no result: R must be piVoid, and the slot a void member function");

public:
  using cAbstractSlotCall::call;
  /// Checks that the frame ends in a return value, and calls callRef().
  void call(msa::cReferenceFrame& frame) const override
  {
    checkFrame(frame, sizeof...(A));
    callRef(frame);
  }
  virtual void call(A... args) const = 0;
  /// Calls with the arguments in a frame.
  virtual void callRef(msa::cReferenceFrame& frame) const = 0;
  /// A new heap object of the same class for `signal`, not called yet and listed by the receiver; the caller owns it.
  virtual Self* createConnectedInstance(cAbstractSignal& signal) const = 0;

protected:
  tAbstractSlotCall(cConnectable& object, cAbstractSignal* pSignal)
      : cAbstractSlotCall(object, pSignal), mpReceiver(&object)
  {
  }

  cConnectable* receiver() const { return mpReceiver; }

private:
  cConnectable* mpReceiver;
};
} // namespace mrmi

#endif
