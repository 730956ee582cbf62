#ifndef MORTISE_SA_CLABELEDTYPEMISSMATCHEXCEPTION_H
#define MORTISE_SA_CLABELEDTYPEMISSMATCHEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cTypeMissmatchException.h"

namespace msa
{

/// A stream held another type than the reader asked for; tells the last label that the reader passed before.
class MORTISE_API cLabeledTypeMissmatchException : public mstd::cTypeMissmatchException
{
public:
  /// As with empty names.
  cLabeledTypeMissmatchException();
  cLabeledTypeMissmatchException(mstd::cAsciiString const& sGot, mstd::cAsciiString const& sExpected,
                                 mstd::cAsciiString const& sLastLabel);
  MORTISE_EXCEPTION(cLabeledTypeMissmatchException)

  mstd::cAsciiString lastLabel() const { return mLastLabel.string(); }

private:
  mstd::cExceptionText mLastLabel;
};

} // namespace msa

#endif
