#include "std/cNumberConversionException.h"

#include "std/exceptionMessage.h"

#include <utility>

namespace mstd
{
cNumberConversionException::cNumberConversionException() : cNumberConversionException(cAsciiString(), 0) {}

cNumberConversionException::cNumberConversionException(cAsciiString const& number, unsigned int index)
    : cRuntimeException(exceptionMessage("$MTR$Number conversion error. \"%string%\" contains invalid characters at "
                                         "index %index%!",
                                         number, index),
                        0, 0),
      mNumber(number), miIndex(index)
{
}

cNumberConversionException::cNumberConversionException(cNumberConversionException const& other)
    : cRuntimeException(other), miIndex(other.miIndex)
{
  copyField(mNumber, other.mNumber);
}

void cNumberConversionException::swap(cNumberConversionException& other) noexcept
{
  cRuntimeException::swap(other);
  mNumber.swap(other.mNumber);
  std::swap(miIndex, other.miIndex);
}

MORTISE_EXCEPTION_BODY(cNumberConversionException)
} // namespace mstd
