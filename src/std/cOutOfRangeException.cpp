#include "std/cOutOfRangeException.h"

#include "std/exceptionMessage.h"

#include <utility>

namespace mstd
{
namespace
{
char const* keyOf(cSTDExceptions::OutOfRangeType type)
{
  switch (type)
  {
  case cSTDExceptions::ValueOutOfRange:
    return "$MTR$Value out of range in %container% / %operation%. The value should be between %min% and %max% but is "
           "%index%!";
  case cSTDExceptions::SizeOutOfRange:
    return "$MTR$Size is out of range in %container% / %operation%. The size must be a value %min% and %max% but is "
           "%size%!";
  case cSTDExceptions::IndexOrSizeOutOfRange:
    return "$MTR$Index or size is out of range in %container% / %operation%. The value must be between %min% and %max% "
           "but is %value%!";
  case cSTDExceptions::EndValueOutOfRange:
    return "$MTR$End-value is out of range in %container% / %operation%. The value must be between %min% and %max% but "
           "is %value%!";
  case cSTDExceptions::IndexOutOfRange:
    break;
  }
  return "$MTR$Index out of range in %container% / %operation%. The index should be between %min% - %max% but is "
         "%index%!";
}

char const* nameOf(char const* name)
{
  return name != 0 ? name : "unknown";
}

} // namespace

cOutOfRangeException::cOutOfRangeException() : cOutOfRangeException(0, 0, cSTDExceptions::IndexOutOfRange, 0, 0, 0) {}

cOutOfRangeException::cOutOfRangeException(char const* container, char const* operation,
                                           cSTDExceptions::OutOfRangeType type, long long value, long long min,
                                           long long max)
    : cBugException(exceptionMessage(keyOf(type), nameOf(container), nameOf(operation), min, max, value), 0, 0),
      mOutOfRangeType(type), miValue(value), miMin(min), miMax(max), mContainer(nameOf(container)),
      mOperation(nameOf(operation))
{
}

cOutOfRangeException::cOutOfRangeException(cOutOfRangeException const& other)
    : cBugException(other), mOutOfRangeType(other.mOutOfRangeType), miValue(other.miValue), miMin(other.miMin),
      miMax(other.miMax)
{
  copyField(mContainer, other.mContainer);
  copyField(mOperation, other.mOperation);
}

void cOutOfRangeException::swap(cOutOfRangeException& other) noexcept
{
  cBugException::swap(other);
  mContainer.swap(other.mContainer);
  mOperation.swap(other.mOperation);
  std::swap(mOutOfRangeType, other.mOutOfRangeType);
  std::swap(miValue, other.miValue);
  std::swap(miMin, other.miMin);
  std::swap(miMax, other.miMax);
}

MORTISE_EXCEPTION_BODY(cOutOfRangeException)
} // namespace mstd
