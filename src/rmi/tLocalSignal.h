#ifndef MORTISE_RMI_TLOCALSIGNAL_H
#define MORTISE_RMI_TLOCALSIGNAL_H

#include "pi/piTypes.h"
#include "rmi/cLocalSignalBase.h"

namespace mrmi
{
/// What the signals with arguments, localSignal1 to localSignal3, have in common. `Call` is the base of slot calls with
/// as many arguments.
template <typename Call, typename... A>
class MORTISE_API tLocalSignal : public cLocalSignalBase
{
public:
  typedef Call cSlotCall;

  using cLocalSignalBase::connect;
  /// Adds a copy of `call` to the calling order. The same slot may be connected several times, and is then called
  /// several times. Raises std::bad_alloc, and signal and receiver stay as they were then.
  void connect(cSlotCall const& call, ConnectionPolicy policy = Append)
  {
    adopt(call.createConnectedInstance(*this), policy);
  }
  /// Calls all slots. Without a slot it raises cUnconnectedSignalException, if invocationBehavior() says so.
  /// What a slot throws goes through.
  void operator()(A... args) { this->template invokeSlots<cSlotCall>(args...); }
  /// As operator().
  virtual void invoke(A... args) { this->template invokeSlots<cSlotCall>(args...); }
};
} // namespace mrmi

#endif
