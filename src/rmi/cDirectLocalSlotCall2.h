#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL2_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL2_H

#include "rmi/cAbstractSlotCall2.h"
#include "rmi/tDirectLocalSlotCall.h"

namespace mrmi
{
/// Call of a void member function with two arguments of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall2(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1, typename A2>
class MORTISE_API cDirectLocalSlotCall2
    : public tDirectLocalSlotCall<cDirectLocalSlotCall2<T, R, A1, A2>, cAbstractSlotCall2<R, A1, A2>, T, A1, A2>
{
  typedef tDirectLocalSlotCall<cDirectLocalSlotCall2<T, R, A1, A2>, cAbstractSlotCall2<R, A1, A2>, T, A1, A2> cBase;
  friend cBase;

public:
  typedef void (T::*cMethod)(A1, A2);

  cDirectLocalSlotCall2(T& object, cMethod method) : cBase(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall2(T* pObject, cMethod method) : cBase(cBase::checked(pObject), method, 0) {}

  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }

private:
  cDirectLocalSlotCall2(T& object, cMethod method, cAbstractSignal* pSignal) : cBase(object, method, pSignal) {}
};

template <typename T, typename C, typename A1, typename A2>
cDirectLocalSlotCall2(T&, void (C::*)(A1, A2)) -> cDirectLocalSlotCall2<T, piVoid, A1, A2>;
template <typename T, typename C, typename A1, typename A2>
cDirectLocalSlotCall2(T*, void (C::*)(A1, A2)) -> cDirectLocalSlotCall2<T, piVoid, A1, A2>;
} // namespace mrmi

#endif
