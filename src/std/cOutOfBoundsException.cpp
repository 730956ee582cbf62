#include "std/cOutOfBoundsException.h"

#include "std/exceptionMessage.h"

namespace mstd
{
namespace
{
mucs::cLIMessage makeMessage(char const* container, char const* operation)
{
  if (container == 0)
  {
    return exceptionMessage("$MTR$Out of bounds condition detected!");
  }
  if (operation == 0)
  {
    return exceptionMessage("$MTR$Out of bounds condition detected in \"%container%\"!", container);
  }
  return exceptionMessage("$MTR$Out of bounds condition detected in \"%container%\" while executing \"%operation%\"!",
                          container, operation);
}
} // namespace

cOutOfBoundsException::cOutOfBoundsException() : cOutOfBoundsException(0, 0) {}

cOutOfBoundsException::cOutOfBoundsException(char const* container, char const* operation)
    : cBugException(makeMessage(container, operation), 0, 0), mContainer(container), mOperation(operation)
{
}

cOutOfBoundsException::cOutOfBoundsException(cOutOfBoundsException const& other) : cBugException(other)
{
  copyField(mContainer, other.mContainer);
  copyField(mOperation, other.mOperation);
}

void cOutOfBoundsException::swap(cOutOfBoundsException& other) noexcept
{
  cBugException::swap(other);
  mContainer.swap(other.mContainer);
  mOperation.swap(other.mOperation);
}

MORTISE_EXCEPTION_BODY(cOutOfBoundsException)
} // namespace mstd
