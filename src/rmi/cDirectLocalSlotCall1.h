#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL1_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL1_H

#include "rmi/cAbstractSlotCall1.h"
#include "rmi/tDirectLocalSlotCall.h"

namespace mrmi
{
/// Call of a void member function with one argument of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall1(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1>
class MORTISE_API cDirectLocalSlotCall1
    : public tDirectLocalSlotCall<cDirectLocalSlotCall1<T, R, A1>, cAbstractSlotCall1<R, A1>, T, A1>
{
  typedef tDirectLocalSlotCall<cDirectLocalSlotCall1<T, R, A1>, cAbstractSlotCall1<R, A1>, T, A1> cBase;
  friend cBase;

public:
  typedef void (T::*cMethod)(A1);

  cDirectLocalSlotCall1(T& object, cMethod method) : cBase(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall1(T* pObject, cMethod method) : cBase(cBase::checked(pObject), method, 0) {}

  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }

private:
  cDirectLocalSlotCall1(T& object, cMethod method, cAbstractSignal* pSignal) : cBase(object, method, pSignal) {}
};

template <typename T, typename C, typename A1>
cDirectLocalSlotCall1(T&, void (C::*)(A1)) -> cDirectLocalSlotCall1<T, piVoid, A1>;
template <typename T, typename C, typename A1>
cDirectLocalSlotCall1(T*, void (C::*)(A1)) -> cDirectLocalSlotCall1<T, piVoid, A1>;
} // namespace mrmi

#endif
