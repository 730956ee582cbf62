#include "sa/cSAExceptions.h"

#include "sa/cLabeledTypeMissmatchException.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

namespace msa
{

void cSAExceptions::throwEndOfContext()
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Unable to deserialize - end of context!"), nullptr, 0);
}

void cSAExceptions::throwLabelNotFound(mstd::cAsciiString const& sLabel)
{
  throw mstd::cRuntimeException(
      mstd::exceptionMessage("$MTR$Unable to deserialize - label (\"%label%\") not found in current context!", sLabel),
      nullptr, 0);
}

void cSAExceptions::throwSerializationError(mstd::cAbstractException const& cause, mstd::cAsciiString const& sClassName)
{
  mstd::cRuntimeException error(mstd::exceptionMessage("$MTR$Serialization error (%class%)!", sClassName), nullptr, 0);
  error.link(cause);
  throw error;
}

void cSAExceptions::throwDeserializationError(mstd::cAbstractException const& cause,
                                              mstd::cAsciiString const& sClassName)
{
  mstd::cRuntimeException error(mstd::exceptionMessage("$MTR$Deserialization error in (%class%)!", sClassName), nullptr,
                                0);
  error.link(cause);
  throw error;
}

void cSAExceptions::throwContextRefNoImpl()
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$cContextRef::unguardImpl(): no valid reference!"), nullptr, 0);
}

void cSAExceptions::throwUnserializable(char const* pTypeName)
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Attempt to serialize the local type %type%!",
                                                   pTypeName != nullptr ? pTypeName : "unknown"),
                            nullptr, 0);
}

void cSAExceptions::throwSerializerClearWithOpenContexts()
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Calling erase() with open contexts is invalid!"), nullptr, 0);
}

void cSAExceptions::throwSerializerDataWithOpenContexts()
{
  throw mstd::cBugException(mstd::exceptionMessage("$MTR$Calling data() with open contexts is invalid!"), nullptr, 0);
}

void cSAExceptions::throwInvalidTypeId(unsigned int iId)
{
  throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$Invalid type id (%id%) while deserializing!", iId),
                                nullptr, 0);
}

void cSAExceptions::throwTypeMissmatch(mstd::cAsciiString const& sGot, mstd::cAsciiString const& sExpected,
                                       mstd::cAsciiString const& sLastLabel)
{
  if (sLastLabel.empty())
  {
    throw mstd::cTypeMissmatchException(sGot, sExpected);
  }
  throw cLabeledTypeMissmatchException(sGot, sExpected, sLastLabel);
}

} // namespace msa
