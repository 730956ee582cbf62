#include "sa/cLabeledTypeMissmatchException.h"

#include "std/exceptionMessage.h"

namespace msa
{

cLabeledTypeMissmatchException::cLabeledTypeMissmatchException()
    : cLabeledTypeMissmatchException(mstd::cAsciiString(), mstd::cAsciiString(), mstd::cAsciiString())
{
}

cLabeledTypeMissmatchException::cLabeledTypeMissmatchException(mstd::cAsciiString const& sGot,
                                                               mstd::cAsciiString const& sExpected,
                                                               mstd::cAsciiString const& sLastLabel)
    : cTypeMissmatchException(sGot, sExpected), mLastLabel(sLastLabel)
{
  setMsg(mstd::exceptionMessage("$MTR$Type mismatch: Expecting type \"%expected%\" but got object of type \"%got%\" - "
                                "last label was \"%label%\"!",
                                sExpected, sGot, sLastLabel));
}

cLabeledTypeMissmatchException::cLabeledTypeMissmatchException(cLabeledTypeMissmatchException const& other)
    : cTypeMissmatchException(other)
{
  copyField(mLastLabel, other.mLastLabel);
}

void cLabeledTypeMissmatchException::swap(cLabeledTypeMissmatchException& other) noexcept
{
  cTypeMissmatchException::swap(other);
  mLastLabel.swap(other.mLastLabel);
}

MORTISE_EXCEPTION_BODY(cLabeledTypeMissmatchException)

} // namespace msa
