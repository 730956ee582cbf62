#include "std/cRuntimeException.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

namespace mstd
{
cRuntimeException::cRuntimeException(cRuntimeException const& other) : cAbstractException(other)
{
  copyField(mMessage, other.mMessage);
}

void cRuntimeException::swap(cRuntimeException& other) noexcept
{
  cAbstractException::swap(other);
  mMessage.swap(other.mMessage);
}

MORTISE_EXCEPTION_BODY(cRuntimeException)

mucs::cLIMessage const* cRuntimeException::liMessage() const
{
  return &mMessage;
}

void cRuntimeException::store(msa::cAbstractSerializer& serializer) const
{
  cAbstractException::store(serializer);
  mMessage >> serializer;
}

void cRuntimeException::load(msa::cAbstractDeserializer& deserializer)
{
  cMarks const marks = loadMarks(deserializer);
  mMessage << deserializer;
  setMarks(marks);
}

void cRuntimeException::setMessage(mucs::cLIMessage const& message)
{
  mMessage = message;
}
} // namespace mstd
