#ifndef MORTISE_EXAMPLES_PLANT_SHARED_CCALL_H
#define MORTISE_EXAMPLES_PLANT_SHARED_CCALL_H

#include "rmi/cConnectable.h"
#include "sa/cReferenceFrame.h"
#include "std/cAsciiString.h"

/// Call of a slot by its name, wherever the slot is:
///
///     double value = 0;
///     cCall(meter, "value").in(name).result(value);
///
/// The arguments come in the order of the parameters; result() or run() makes the call.
class cCall
{
public:
  cCall(mrmi::cConnectable& target, char const* pSlot) : mTarget(target), mSlot(pSlot) {}

  /// An argument that the slot reads.
  template <class T>
  cCall& in(T const& value)
  {
    // A frame refers to variables. This one is not alterable, so nobody writes to it.
    mFrame.addRef(const_cast<T&>(value), false, true);
    return *this;
  }
  /// An argument that the slot changes.
  template <class T>
  cCall& inOut(T& rValue)
  {
    mFrame.addRef(rValue, true, true);
    return *this;
  }
  /// Calls a slot with a result.
  template <class T>
  void result(T& rResult)
  {
    mFrame.addRef(rResult, true, false);
    mTarget.invokeIndirectSlot(mSlot, mFrame);
  }
  /// Calls a slot without a result.
  void run()
  {
    piVoid nothing;
    result(nothing);
  }

private:
  mrmi::cConnectable& mTarget;
  mstd::cAsciiString mSlot;
  msa::cReferenceFrame mFrame;
};

#endif
