#ifndef MORTISE_STD_CTYPEMISSMATCHEXCEPTION_H
#define MORTISE_STD_CTYPEMISSMATCHEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cTypeErrorException.h"

namespace mstd
{
/// One type was expected and another one found. type() is the expected one.
class MORTISE_API cTypeMissmatchException : public cTypeErrorException
{
public:
  /// As with empty names.
  cTypeMissmatchException();
  cTypeMissmatchException(cAsciiString const& assigned, cAsciiString const& expected);
  MORTISE_EXCEPTION(cTypeMissmatchException)

  cAsciiString assignedType() const { return mAssignedType.string(); }
  cAsciiString expectedType() const { return mExpectedType.string(); }

private:
  cExceptionText mAssignedType;
  cExceptionText mExpectedType;
};
} // namespace mstd

#endif
