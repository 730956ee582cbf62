#ifndef MORTISE_RMI_CABSTRACTSLOTCALL2_H
#define MORTISE_RMI_CABSTRACTSLOTCALL2_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall.h"

#include <type_traits>

namespace mrmi
{
class cAbstractSignal;

/// Call of a slot with two arguments.
template <typename R, typename A1, typename A2>
class MORTISE_API cAbstractSlotCall2 : public cAbstractSlotCall
{
  static_assert(std::is_same<R, piVoid>::value,
                "a slot has no result: R must be piVoid, and the slot a void member function");

public:
  using cAbstractSlotCall::call;
  /// Checks that the frame ends in a return value, and calls callRef().
  void call(msa::cReferenceFrame& frame) const override
  {
    checkFrame(frame, 2);
    callRef(frame);
  }
  virtual void call(A1 a1, A2 a2) const = 0;
  /// Calls with the arguments in a frame.
  virtual void callRef(msa::cReferenceFrame& frame) const = 0;
  /// A new heap object of the same class for `signal`, not called yet and listed by the receiver; the caller owns it.
  virtual cAbstractSlotCall2* createConnectedInstance(cAbstractSignal& signal) const = 0;

protected:
  cAbstractSlotCall2(cConnectable& object, cAbstractSignal* pSignal)
      : cAbstractSlotCall(object, pSignal), mpReceiver(&object)
  {
  }

  cConnectable* receiver() const { return mpReceiver; }

private:
  cConnectable* mpReceiver;
};
} // namespace mrmi

#endif
