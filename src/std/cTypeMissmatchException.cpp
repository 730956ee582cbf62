#include "std/cTypeMissmatchException.h"

#include "std/exceptionMessage.h"

namespace mstd
{
cTypeMissmatchException::cTypeMissmatchException() : cTypeMissmatchException(cAsciiString(), cAsciiString()) {}

cTypeMissmatchException::cTypeMissmatchException(cAsciiString const& assigned, cAsciiString const& expected)
    : cTypeErrorException(expected), mAssignedType(assigned), mExpectedType(expected)
{
  setMsg(exceptionMessage("$MTR$Type mismatch: Expecting type \"%expected%\" but got object of type \"%got%\"!",
                          expected, assigned));
}

cTypeMissmatchException::cTypeMissmatchException(cTypeMissmatchException const& other) : cTypeErrorException(other)
{
  copyField(mAssignedType, other.mAssignedType);
  copyField(mExpectedType, other.mExpectedType);
}

void cTypeMissmatchException::swap(cTypeMissmatchException& other) noexcept
{
  cTypeErrorException::swap(other);
  mAssignedType.swap(other.mAssignedType);
  mExpectedType.swap(other.mExpectedType);
}

MORTISE_EXCEPTION_BODY(cTypeMissmatchException)
} // namespace mstd
