#ifndef MORTISE_RMI_SIGNAL0_H
#define MORTISE_RMI_SIGNAL0_H

#include "rmi/cIndirectLazySlotCall0.h"
#include "rmi/cIndirectResolvingSlotCall0.h"
#include "rmi/cPublicSignal.h"
#include "rmi/localSignal0.h"

namespace mrmi
{
/// Signal without arguments that can also be connected to a published slot by its name, and that describes itself when
/// it is published.
template <typename R>
class MORTISE_API signal0 : public localSignal0<R>
{
public:
  typedef cAbstractSignal::SlotResolving SlotResolving;

  signal0() {}
  ~signal0() override { this->destroyCalls(); }

  using localSignal0<R>::connect;
  /// Appends a call of the slot that `target` publishes as `slotName`. With ResolveOnConnect the slot is looked up now:
  /// cNoSuchSlotException if there is none, and nothing is connected then. With ResolveOnCall it is looked up at each
  /// call, which fails in the same way then.
  void connect(cConnectable& target, mstd::cAsciiString const& slotName, SlotResolving resolving) override
  {
    if (resolving == cAbstractSignal::ResolveOnConnect)
    {
      cAbstractSlotCall const* const call = target.tryFindSlot(slotName);
      if (call == 0)
      {
        cRMIExceptions::throwNoSuchSlot(slotName, "(?)");
      }
      connect(cIndirectResolvingSlotCall0<R>(target, call), cAbstractSignal::Append);
    }
    else
    {
      connect(cIndirectLazySlotCall0<R>(target, slotName), cAbstractSignal::Append);
    }
  }
  /// Sets the return value, which is none.
  void addParameterInfo(cPublicSignal& publicSignal) override { publicSignal.returnValue().set("piVoid", false, true); }
  /// Empty.
  mstd::cAsciiString parametersTypeString() const override { return mstd::cAsciiString(); }
  mstd::cAsciiString returnTypeString() const override { return mstd::cAsciiString("piVoid"); }
};
} // namespace mrmi

#endif
