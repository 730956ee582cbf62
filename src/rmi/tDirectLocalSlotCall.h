#ifndef MORTISE_RMI_TDIRECTLOCALSLOTCALL_H
#define MORTISE_RMI_TDIRECTLOCALSLOTCALL_H

#include "rmi/cAbstractSlotCall.h"
#include "rmi/cRMIExceptions.h"
#include "std/cSTDExceptions.h"

namespace mrmi
{
class cAbstractSignal;

/// What the calls of member functions, cDirectLocalSlotCall0 to cDirectLocalSlotCall3, have in common. `Self` is the
/// one that derives from it, and `Base` the base of slot calls with as many arguments.
template <typename Self, typename Base, typename T, typename... A>
class MORTISE_API tDirectLocalSlotCall : public Base
{
public:
  typedef void (T::*cMethod)(A...);

  using Base::call;
  void call(A... args) const override { (mpObject->*mMethod)(args...); }
  /// cBugException always: the slot has no description to read its arguments by.
  void call(msa::cAbstractDeserializer&, msa::cAbstractSerializer&) const override
  {
    cRMIExceptions::throwIndirectLocalSlotCall();
  }
  Base* createConnectedInstance(cAbstractSignal& signal) const override
  {
    return new Self(*mpObject, mMethod, &signal);
  }

protected:
  tDirectLocalSlotCall(T& object, cMethod method, cAbstractSignal* pSignal)
      : Base(object, pSignal), mMethod(method), mpObject(&object)
  {
  }

  static T& checked(T* pObject)
  {
    if (!(pObject != 0))
    {
      cSTDExceptions::throwAssertionFailed("pObject != 0", "rmi/tDirectLocalSlotCall", __LINE__);
    }
    return *pObject;
  }

private:
  cMethod mMethod;
  T* mpObject;
};
} // namespace mrmi

#endif
