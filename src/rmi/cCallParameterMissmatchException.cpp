#include "rmi/cCallParameterMissmatchException.h"

#include "std/exceptionMessage.h"

namespace mrmi
{
namespace
{
mucs::cLIMessage messageFor(mstd::cAsciiString const& slotName)
{
  if (slotName.empty())
  {
    return mstd::exceptionMessage("$MTR$Slot parameter or return value missmatch on unregistered slot!");
  }
  return mstd::exceptionMessage("$MTR$Slot parameter of (%slot%) or return value missmatch!", slotName);
}
} // namespace

cCallParameterMissmatchException::cCallParameterMissmatchException(mstd::cAsciiString const& slotName)
    : cBugException(messageFor(slotName), 0, 0), mSlotName(slotName)
{
}

cCallParameterMissmatchException::cCallParameterMissmatchException(cCallParameterMissmatchException const& other)
    : cBugException(other)
{
  copyField(mSlotName, other.mSlotName);
}

void cCallParameterMissmatchException::swap(cCallParameterMissmatchException& other) noexcept
{
  cBugException::swap(other);
  mSlotName.swap(other.mSlotName);
}

MORTISE_EXCEPTION_BODY(cCallParameterMissmatchException)
} // namespace mrmi
