#ifndef MORTISE_RMI_CINDIRECTLAZYSLOTCALL0_H
#define MORTISE_RMI_CINDIRECTLAZYSLOTCALL0_H

#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cConnectable.h"
#include "rmi/cRMIExceptions.h"

namespace mrmi
{
/// Call of a published slot without arguments whose name is looked up at each call. signal0 makes these.
template <typename R>
class MORTISE_API cIndirectLazySlotCall0 : public cAbstractSlotCall0<R>
{
public:
  cIndirectLazySlotCall0(cConnectable& target, mstd::cAsciiString const& slotName)
      : cIndirectLazySlotCall0(target, slotName, 0)
  {
  }

  using cAbstractSlotCall0<R>::call;
  /// cNoSuchSlotException if the target has no such slot now.
  void call() const override { cAbstractSlotCall::invokeByName(*mpTarget, mSlotName); }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectCallSlotCallRef(); }
  cAbstractSlotCall0<R>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cIndirectLazySlotCall0(*mpTarget, mSlotName, &signal);
  }

private:
  cIndirectLazySlotCall0(cConnectable& target, mstd::cAsciiString const& slotName, cAbstractSignal* signal)
      : cAbstractSlotCall0<R>(target, signal), mpTarget(&target), mSlotName(slotName)
  {
  }

  cConnectable* mpTarget;
  mstd::cAsciiString mSlotName;
};
} // namespace mrmi

#endif
