#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL3_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL3_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall3.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
/// Call of a void member function with three arguments of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall3(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1, typename A2, typename A3>
class MORTISE_API cDirectLocalSlotCall3 : public cAbstractSlotCall3<R, A1, A2, A3>
{
public:
  typedef void (T::*cMethod)(A1, A2, A3);

  cDirectLocalSlotCall3(T& object, cMethod method) : cDirectLocalSlotCall3(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall3(T* pObject, cMethod method) : cDirectLocalSlotCall3(checked(pObject), method, 0) {}

  using cAbstractSlotCall3<R, A1, A2, A3>::call;
  void call(A1 a1, A2 a2, A3 a3) const override { (mpObject->*mMethod)(a1, a2, a3); }
  /// cBugException always: the slot has no description to read its arguments by.
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override
  {
    cRMIExceptions::throwIndirectLocalSlotCall();
  }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }
  cAbstractSlotCall3<R, A1, A2, A3>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cDirectLocalSlotCall3(*mpObject, mMethod, &signal);
  }

private:
  cDirectLocalSlotCall3(T& object, cMethod method, cAbstractSignal* pSignal)
      : cAbstractSlotCall3<R, A1, A2, A3>(object, pSignal), mMethod(method), mpObject(&object)
  {
  }

  static T& checked(T* pObject)
  {
    if (!(pObject != 0))
    {
      cSTDExceptions::throwAssertionFailed("pObject != 0", "rmi/cDirectLocalSlotCall3", __LINE__);
    }
    return *pObject;
  }

  cMethod mMethod;
  T* mpObject;
};

template <typename T, typename C, typename A1, typename A2, typename A3>
cDirectLocalSlotCall3(T&, void (C::*)(A1, A2, A3)) -> cDirectLocalSlotCall3<T, piVoid, A1, A2, A3>;
template <typename T, typename C, typename A1, typename A2, typename A3>
cDirectLocalSlotCall3(T*, void (C::*)(A1, A2, A3)) -> cDirectLocalSlotCall3<T, piVoid, A1, A2, A3>;
} // namespace mrmi

#endif
