#ifndef MORTISE_STD_COUTOFRANGEEXCEPTION_H
#define MORTISE_STD_COUTOFRANGEEXCEPTION_H

#include "std/cBugException.h"
#include "std/cExceptionText.h"
#include "std/cSTDExceptions.h"

namespace mstd
{
/// A value, an index or a size left its range.
class MORTISE_API cOutOfRangeException : public cBugException
{
public:
  /// As with no names and every number 0.
  cOutOfRangeException();
  /// The type selects the wording. A null name reads "unknown".
  cOutOfRangeException(char const* container, char const* operation, cSTDExceptions::OutOfRangeType type,
                       long long value, long long min, long long max);
  MORTISE_EXCEPTION(cOutOfRangeException)

  cSTDExceptions::OutOfRangeType outOfRangeType() const { return mOutOfRangeType; }
  long long errornousValue() const { return miValue; }
  long long minValue() const { return miMin; }
  long long maxValue() const { return miMax; }
  cAsciiString container() const { return mContainer.string(); }
  cAsciiString operation() const { return mOperation.string(); }

private:
  cSTDExceptions::OutOfRangeType mOutOfRangeType;
  long long miValue;
  long long miMin;
  long long miMax;
  cExceptionText mContainer;
  cExceptionText mOperation;
};
} // namespace mstd

#endif
