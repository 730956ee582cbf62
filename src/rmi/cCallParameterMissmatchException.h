#ifndef MORTISE_RMI_CCALLPARAMETERMISSMATCHEXCEPTION_H
#define MORTISE_RMI_CCALLPARAMETERMISSMATCHEXCEPTION_H

#include "std/cBugException.h"
#include "std/cExceptionText.h"

namespace mrmi
{
/// A slot was called by name with arguments, or a place for the result, of other types than its own.
class MORTISE_API cCallParameterMissmatchException : public mstd::cBugException
{
public:
  /// An empty name stands for a slot that is not published.
  explicit cCallParameterMissmatchException(mstd::cAsciiString const& slotName);
  MORTISE_EXCEPTION(cCallParameterMissmatchException)

  mstd::cAsciiString slotName() const { return mSlotName.string(); }

private:
  mstd::cExceptionText mSlotName;
};
} // namespace mrmi

#endif
