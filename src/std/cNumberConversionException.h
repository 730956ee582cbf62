#ifndef MORTISE_STD_CNUMBERCONVERSIONEXCEPTION_H
#define MORTISE_STD_CNUMBERCONVERSIONEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"

namespace mstd
{
/// A text is not the number that it should be.
class MORTISE_API cNumberConversionException : public cRuntimeException
{
public:
  /// As with an empty text and index 0.
  cNumberConversionException();
  cNumberConversionException(cAsciiString const& number, unsigned int index);
  MORTISE_EXCEPTION(cNumberConversionException)

  cAsciiString errornousNumber() const { return mNumber.string(); }
  /// Index of the first character that is wrong.
  unsigned int errornousIndex() const { return miIndex; }

private:
  cExceptionText mNumber;
  unsigned int miIndex;
};
} // namespace mstd

#endif
