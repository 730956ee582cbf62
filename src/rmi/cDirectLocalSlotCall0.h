#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL0_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL0_H

#include "rmi/cAbstractSlotCall0.h"
#include "rmi/tDirectLocalSlotCall.h"

namespace mrmi
{
/// Call of a void member function with no argument of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall0(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R>
class MORTISE_API cDirectLocalSlotCall0
    : public tDirectLocalSlotCall<cDirectLocalSlotCall0<T, R>, cAbstractSlotCall0<R>, T>
{
  typedef tDirectLocalSlotCall<cDirectLocalSlotCall0<T, R>, cAbstractSlotCall0<R>, T> cBase;
  friend cBase;

public:
  typedef void (T::*cMethod)();

  cDirectLocalSlotCall0(T& object, cMethod method) : cBase(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall0(T* pObject, cMethod method) : cBase(cBase::checked(pObject), method, 0) {}

  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectCallSlotCallRef(); }

private:
  cDirectLocalSlotCall0(T& object, cMethod method, cAbstractSignal* pSignal) : cBase(object, method, pSignal) {}
};

template <typename T, typename C>
cDirectLocalSlotCall0(T&, void (C::*)()) -> cDirectLocalSlotCall0<T, piVoid>;
template <typename T, typename C>
cDirectLocalSlotCall0(T*, void (C::*)()) -> cDirectLocalSlotCall0<T, piVoid>;
} // namespace mrmi

#endif
