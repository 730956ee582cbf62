#ifndef MORTISE_RMI_LOCALSIGNAL3_H
#define MORTISE_RMI_LOCALSIGNAL3_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall3.h"
#include "rmi/cLocalSignalBase.h"

namespace mrmi
{
/// Signal with three arguments: a member of the class that emits it, called like a function. `R` is always piVoid.
/// What slots may do while it runs is told at cLocalSignalBase.
template <typename R, typename A1, typename A2, typename A3>
class MORTISE_API localSignal3 : public cLocalSignalBase
{
public:
  typedef cAbstractSlotCall3<R, A1, A2, A3> cSlotCall;

  using cLocalSignalBase::connect;
  /// Adds a copy of `call` to the calling order. The same slot may be connected several times, and is then called
  /// several times. Raises std::bad_alloc, and signal and receiver stay as they were then.
  void connect(cSlotCall const& call, ConnectionPolicy policy = Append)
  {
    adopt(call.createConnectedInstance(*this), policy);
  }
  /// Calls all slots. Without a slot it raises cUnconnectedSignalException, if invocationBehavior() says so.
  /// What a slot throws goes through.
  void operator()(A1 a1, A2 a2, A3 a3) { this->template invokeSlots<cSlotCall>(a1, a2, a3); }
  /// As operator().
  virtual void invoke(A1 a1, A2 a2, A3 a3) { this->template invokeSlots<cSlotCall>(a1, a2, a3); }
};
} // namespace mrmi

#endif
