#include "std/cTypeErrorException.h"

#include "std/exceptionMessage.h"

namespace mstd
{
cTypeErrorException::cTypeErrorException() : cTypeErrorException(cAsciiString()) {}

cTypeErrorException::cTypeErrorException(cAsciiString const& type)
    : cBugException(exceptionMessage("$MTR$Type error while deserializing of %type%!", type), 0, 0), mTypeName(type)
{
}

cTypeErrorException::cTypeErrorException(cTypeErrorException const& other) : cBugException(other)
{
  copyField(mTypeName, other.mTypeName);
}

void cTypeErrorException::swap(cTypeErrorException& other) noexcept
{
  cBugException::swap(other);
  mTypeName.swap(other.mTypeName);
}

MORTISE_EXCEPTION_BODY(cTypeErrorException)
} // namespace mstd
