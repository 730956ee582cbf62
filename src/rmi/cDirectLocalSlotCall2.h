#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL2_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL2_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall2.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
/// Call of a void member function with two arguments of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall2(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1, typename A2>
class MORTISE_API cDirectLocalSlotCall2 : public cAbstractSlotCall2<R, A1, A2>
{
public:
  typedef void (T::*cMethod)(A1, A2);

  cDirectLocalSlotCall2(T& object, cMethod method) : cDirectLocalSlotCall2(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall2(T* pObject, cMethod method) : cDirectLocalSlotCall2(checked(pObject), method, 0) {}

  using cAbstractSlotCall2<R, A1, A2>::call;
  void call(A1 a1, A2 a2) const override { (mpObject->*mMethod)(a1, a2); }
  /// cBugException always: the slot has no description to read its arguments by.
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override
  {
    cRMIExceptions::throwIndirectLocalSlotCall();
  }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }
  cAbstractSlotCall2<R, A1, A2>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cDirectLocalSlotCall2(*mpObject, mMethod, &signal);
  }

private:
  cDirectLocalSlotCall2(T& object, cMethod method, cAbstractSignal* pSignal)
      : cAbstractSlotCall2<R, A1, A2>(object, pSignal), mMethod(method), mpObject(&object)
  {
  }

  static T& checked(T* pObject)
  {
    if (!(pObject != 0))
    {
      cSTDExceptions::throwAssertionFailed("pObject != 0", "rmi/cDirectLocalSlotCall2", __LINE__);
    }
    return *pObject;
  }

  cMethod mMethod;
  T* mpObject;
};

template <typename T, typename C, typename A1, typename A2>
cDirectLocalSlotCall2(T&, void (C::*)(A1, A2)) -> cDirectLocalSlotCall2<T, piVoid, A1, A2>;
template <typename T, typename C, typename A1, typename A2>
cDirectLocalSlotCall2(T*, void (C::*)(A1, A2)) -> cDirectLocalSlotCall2<T, piVoid, A1, A2>;
} // namespace mrmi

#endif
