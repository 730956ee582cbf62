#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL3_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL3_H

#include "rmi/cAbstractSlotCall3.h"
#include "rmi/tDirectLocalSlotCall.h"

namespace mrmi
{
/// Call of a void member function with three arguments of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall3(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1, typename A2, typename A3>
class MORTISE_API cDirectLocalSlotCall3 : public tDirectLocalSlotCall<cDirectLocalSlotCall3<T, R, A1, A2, A3>,
                                                                      cAbstractSlotCall3<R, A1, A2, A3>, T, A1, A2, A3>
{
  typedef tDirectLocalSlotCall<cDirectLocalSlotCall3<T, R, A1, A2, A3>, cAbstractSlotCall3<R, A1, A2, A3>, T, A1, A2,
                               A3>
      cBase;
  friend cBase;

public:
  typedef void (T::*cMethod)(A1, A2, A3);

  cDirectLocalSlotCall3(T& object, cMethod method) : cBase(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall3(T* pObject, cMethod method) : cBase(cBase::checked(pObject), method, 0) {}

  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }

private:
  cDirectLocalSlotCall3(T& object, cMethod method, cAbstractSignal* pSignal) : cBase(object, method, pSignal) {}
};

template <typename T, typename C, typename A1, typename A2, typename A3>
cDirectLocalSlotCall3(T&, void (C::*)(A1, A2, A3)) -> cDirectLocalSlotCall3<T, piVoid, A1, A2, A3>;
template <typename T, typename C, typename A1, typename A2, typename A3>
cDirectLocalSlotCall3(T*, void (C::*)(A1, A2, A3)) -> cDirectLocalSlotCall3<T, piVoid, A1, A2, A3>;
} // namespace mrmi

#endif
