#include "std/cBugException.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "std/exceptionMessage.h"

namespace mstd
{
cBugException::cBugException(cBugException const& other) : cAbstractException(other)
{
  copyField(mMessage, other.mMessage);
}

void cBugException::swap(cBugException& other) noexcept
{
  cAbstractException::swap(other);
  mMessage.swap(other.mMessage);
}

MORTISE_EXCEPTION_BODY(cBugException)

mucs::cLIMessage const* cBugException::liMessage() const
{
  return &mMessage;
}

void cBugException::store(msa::cAbstractSerializer& serializer) const
{
  cAbstractException::store(serializer);
  mMessage >> serializer;
}

void cBugException::load(msa::cAbstractDeserializer& deserializer)
{
  cMarks const marks = loadMarks(deserializer);
  mMessage << deserializer;
  setMarks(marks);
}

void cBugException::setMsg(mucs::cLIMessage const& message)
{
  mMessage = message;
}

void cBugException::throwAssertionFailed(char const* condition, char const* file, unsigned int line)
{
  throw cBugException(exceptionMessage("$MTR$Assertion failed in file %file%:%line%. (%operation%)!",
                                       (file != 0 ? file : "unknown file"), line,
                                       (condition != 0 ? condition : "unknown")),
                      0, 0);
}
} // namespace mstd
