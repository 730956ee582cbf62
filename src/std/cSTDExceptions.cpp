#include "std/cSTDExceptions.h"

#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/cTextParseException.h"
#include "std/cTypeMissmatchException.h"
#include "std/debugLines.h"
#include "std/exceptionMessage.h"
#include "ucs/cString.h"

#include <new>

namespace
{
char const* nameOf(char const* name)
{
  return name != 0 ? name : "unknown";
}
} // namespace

void cSTDExceptions::throwCoreBug(char const* bug, char const* file, unsigned int line)
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Bug (\"%bug%\") detected!", bug), file, line);
}

void cSTDExceptions::throwUnsupportedOperation(mstd::cAsciiString const& operation)
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$The operation \"%s%\" is not supported!", operation), 0, 0);
}

void cSTDExceptions::throwUnexpectedEndOfInput()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Unexpected end of input!"), 0, 0);
}

void cSTDExceptions::throwOutOfBounds(char const* container, char const* operation)
{
  throw mstd::cOutOfBoundsException(container, operation);
}

void cSTDExceptions::throwElementNotFound(char const* container, char const* operation)
{
  throw mstd::cBugException(
      mstd::exceptionMessage("$MTR$Element could not be found in \"%container%\" while operation \"%operation%\"!",
                             nameOf(container), nameOf(operation)),
      0, 0);
}

void cSTDExceptions::throwInvalidDecimalBase(int base, int min, int max)
{
  throw mstd::cRuntimeException(
      mstd::exceptionMessage("$MTR$Invalid base for a decimal. The base must be between %min% and %max% but is %base%!",
                             min, max, base),
      0, 0);
}

void cSTDExceptions::throwInvalidDecimal(mucs::cString const& string, unsigned int index)
{
  throw mstd::cRuntimeException(
      mstd::exceptionMessage(
          "$MTR$Invalid decimal number (\"%string%\"). Character at index %index% not points to digit!", string, index),
      0, 0);
}

void cSTDExceptions::throwTextParseError(mucs::cLIMessage const& message, mstd::cAsciiString const& format,
                                         mucs::cString const& fileName, unsigned int row, unsigned int column)
{
  throw mstd::cTextParseException(message, format, fileName, row, column);
}

void cSTDExceptions::throwWrongAnyDereference(mstd::cAsciiString const& requested, mstd::cAsciiString const& contained)
{
  mstd::cTypeMissmatchException mismatch(contained, requested);
  mismatch.link(mstd::cRuntimeException(
      mstd::exceptionMessage(
          "$MTR$User requested object of wrong type (\"%type%\") from type cAny which contains \"%contains%\"!",
          requested, contained),
      0, 0));
  throw mismatch;
}

void cSTDExceptions::throwOutOfRange(char const* container, char const* operation, OutOfRangeType type, long long value,
                                     long long min, long long max)
{
  mstd::writeDebugStackTrace("std/cSTDExceptions", __LINE__);
  throw mstd::cOutOfRangeException(container, operation, type, value, min, max);
}

void cSTDExceptions::throwBadAlloc()
{
  throw std::bad_alloc();
}

void cSTDExceptions::throwAssertionFailed(char const* condition, char const* file, unsigned int line)
{
  mstd::writeDebugStackTrace("std/cSTDExceptions", __LINE__);
  mstd::cBugException::throwAssertionFailed(condition, file, line);
}
