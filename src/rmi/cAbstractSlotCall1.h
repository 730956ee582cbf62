#ifndef MORTISE_RMI_CABSTRACTSLOTCALL1_H
#define MORTISE_RMI_CABSTRACTSLOTCALL1_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall.h"

#include <type_traits>

namespace mrmi
{
class cAbstractSignal;

/// Call of a slot with one argument.
template <typename R, typename A1>
class MORTISE_API cAbstractSlotCall1 : public cAbstractSlotCall
{
  static_assert(std::is_same<R, piVoid>::value,
                "a slot has no result: R must be piVoid, and the slot a void member function");

public:
  using cAbstractSlotCall::call;
  /// Checks that the frame ends in a return value, and calls callRef().
  void call(msa::cReferenceFrame& frame) const override
  {
    checkFrame(frame, 1);
    callRef(frame);
  }
  virtual void call(A1 a1) const = 0;
  /// Calls with the arguments in a frame.
  virtual void callRef(msa::cReferenceFrame& frame) const = 0;
  /// A new heap object of the same class for `signal`, not called yet and listed by the receiver; the caller owns it.
  virtual cAbstractSlotCall1* createConnectedInstance(cAbstractSignal& signal) const = 0;

protected:
  cAbstractSlotCall1(cConnectable& object, cAbstractSignal* pSignal)
      : cAbstractSlotCall(object, pSignal), mpReceiver(&object)
  {
  }

  cConnectable* receiver() const { return mpReceiver; }

private:
  cConnectable* mpReceiver;
};
} // namespace mrmi

#endif
