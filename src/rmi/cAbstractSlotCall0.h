#ifndef MORTISE_RMI_CABSTRACTSLOTCALL0_H
#define MORTISE_RMI_CABSTRACTSLOTCALL0_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall.h"
#include "std/cAsciiString.h"

#include <type_traits>

namespace mrmi
{
class cAbstractSignal;

/// Call of a slot with no argument.
template <typename R>
class MORTISE_API cAbstractSlotCall0 : public cAbstractSlotCall
{
  static_assert(std::is_same<R, piVoid>::value,
                "a slot has no result: R must be piVoid, and the slot a void member function");

public:
  using cAbstractSlotCall::call;
  /// Checks that the frame ends in a return value, and calls callRef().
  void call(msa::cReferenceFrame& frame) const override
  {
    checkFrame(frame, 0);
    callRef(frame);
  }
  virtual void call() const = 0;
  virtual mstd::cAsciiString parametersTypeString() const { return mstd::cAsciiString(); }
  virtual mstd::cAsciiString returnTypeString() const { return mstd::cAsciiString("piVoid"); }
  /// Calls with the arguments in a frame.
  virtual void callRef(msa::cReferenceFrame& frame) const = 0;
  /// A new heap object of the same class for `signal`, not called yet and listed by the receiver; the caller owns it.
  virtual cAbstractSlotCall0* createConnectedInstance(cAbstractSignal& signal) const = 0;

protected:
  cAbstractSlotCall0(cConnectable& object, cAbstractSignal* pSignal)
      : cAbstractSlotCall(object, pSignal), mpReceiver(&object)
  {
  }

  cConnectable* receiver() const { return mpReceiver; }

private:
  cConnectable* mpReceiver;
};
} // namespace mrmi

#endif
