#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL1_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL1_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall1.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
/// Call of a void member function with one argument of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall1(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R, typename A1>
class MORTISE_API cDirectLocalSlotCall1 : public cAbstractSlotCall1<R, A1>
{
public:
  typedef void (T::*cMethod)(A1);

  cDirectLocalSlotCall1(T& object, cMethod method) : cDirectLocalSlotCall1(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall1(T* pObject, cMethod method) : cDirectLocalSlotCall1(checked(pObject), method, 0) {}

  using cAbstractSlotCall1<R, A1>::call;
  void call(A1 a1) const override { (mpObject->*mMethod)(a1); }
  /// cBugException always: the slot has no description to read its arguments by.
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override
  {
    cRMIExceptions::throwIndirectLocalSlotCall();
  }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectLocalConnection(); }
  cAbstractSlotCall1<R, A1>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cDirectLocalSlotCall1(*mpObject, mMethod, &signal);
  }

private:
  cDirectLocalSlotCall1(T& object, cMethod method, cAbstractSignal* pSignal)
      : cAbstractSlotCall1<R, A1>(object, pSignal), mMethod(method), mpObject(&object)
  {
  }

  static T& checked(T* pObject)
  {
    if (!(pObject != 0))
    {
      cSTDExceptions::throwAssertionFailed("pObject != 0", "rmi/cDirectLocalSlotCall1", __LINE__);
    }
    return *pObject;
  }

  cMethod mMethod;
  T* mpObject;
};

template <typename T, typename C, typename A1>
cDirectLocalSlotCall1(T&, void (C::*)(A1)) -> cDirectLocalSlotCall1<T, piVoid, A1>;
template <typename T, typename C, typename A1>
cDirectLocalSlotCall1(T*, void (C::*)(A1)) -> cDirectLocalSlotCall1<T, piVoid, A1>;
} // namespace mrmi

#endif
