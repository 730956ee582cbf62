#ifndef MORTISE_RMI_CINDIRECTRESOLVINGSLOTCALL0_H
#define MORTISE_RMI_CINDIRECTRESOLVINGSLOTCALL0_H

#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cConnectable.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
/// Call of a published slot without arguments that was looked up before. signal0 makes these.
///
/// Not to be called any more when the target was cleared: the slot call that was found is gone then.
template <typename R>
class MORTISE_API cIndirectResolvingSlotCall0 : public cAbstractSlotCall0<R>
{
public:
  /// `call` is a slot call that `target` publishes, and stays owned there.
  cIndirectResolvingSlotCall0(cConnectable& target, cAbstractSlotCall const* call)
      : cIndirectResolvingSlotCall0(target, call, 0)
  {
  }

  using cAbstractSlotCall0<R>::call;
  void call() const override { cAbstractSlotCall::invokeResolved(*mpTarget, *mpCall); }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectCallSlotCallRef(); }
  /// No slot call is an assertion failure.
  cAbstractSlotCall0<R>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    if (!(mpCall != 0))
    {
      cSTDExceptions::throwAssertionFailed("mpCall != 0", "rmi/signal0", 239);
    }
    return new cIndirectResolvingSlotCall0(*mpTarget, mpCall, &signal);
  }

private:
  cIndirectResolvingSlotCall0(cConnectable& target, cAbstractSlotCall const* call, cAbstractSignal* signal)
      : cAbstractSlotCall0<R>(target, signal), mpCall(call), mpTarget(&target)
  {
  }

  cAbstractSlotCall const* mpCall; // not owned
  cConnectable* mpTarget;
};
} // namespace mrmi

#endif
