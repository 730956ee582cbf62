#ifndef MORTISE_RMI_CDIRECTLOCALSLOTCALL0_H
#define MORTISE_RMI_CDIRECTLOCALSLOTCALL0_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSlotCall0.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
/// Call of a void member function with no argument of one object. Made on the stack and given to a signal:
/// `signal.connect(mrmi::cDirectLocalSlotCall0(object, &cFoo::sltBar))`.
///
/// `T` derives from cConnectable. The object must outlive this template; connections end by themselves when it goes.
template <typename T, typename R>
class MORTISE_API cDirectLocalSlotCall0 : public cAbstractSlotCall0<R>
{
public:
  typedef void (T::*cMethod)();

  cDirectLocalSlotCall0(T& object, cMethod method) : cDirectLocalSlotCall0(object, method, 0) {}
  /// A null pointer is an assertion failure.
  cDirectLocalSlotCall0(T* pObject, cMethod method) : cDirectLocalSlotCall0(checked(pObject), method, 0) {}

  using cAbstractSlotCall0<R>::call;
  void call() const override { (mpObject->*mMethod)(); }
  /// cBugException always: the slot has no description to read its arguments by.
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override
  {
    cRMIExceptions::throwIndirectLocalSlotCall();
  }
  /// cBugException always.
  void callRef(msa::cReferenceFrame&) const override { cRMIExceptions::throwIndirectCallSlotCallRef(); }
  cAbstractSlotCall0<R>* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new cDirectLocalSlotCall0(*mpObject, mMethod, &signal);
  }

private:
  cDirectLocalSlotCall0(T& object, cMethod method, cAbstractSignal* pSignal)
      : cAbstractSlotCall0<R>(object, pSignal), mMethod(method), mpObject(&object)
  {
  }

  static T& checked(T* pObject)
  {
    if (!(pObject != 0))
    {
      cSTDExceptions::throwAssertionFailed("pObject != 0", "rmi/cDirectLocalSlotCall0", __LINE__);
    }
    return *pObject;
  }

  cMethod mMethod;
  T* mpObject;
};

template <typename T, typename C>
cDirectLocalSlotCall0(T&, void (C::*)()) -> cDirectLocalSlotCall0<T, piVoid>;
template <typename T, typename C>
cDirectLocalSlotCall0(T*, void (C::*)()) -> cDirectLocalSlotCall0<T, piVoid>;
} // namespace mrmi

#endif
