#ifndef MORTISE_SA_CSAEXCEPTIONS_H
#define MORTISE_SA_CSAEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace msa
{

/// The throw functions of the serialization. None of them returns.
class MORTISE_API cSAExceptions
{
public:
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwEndOfContext();
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwLabelNotFound(mstd::cAsciiString const& sLabel);
  /// mstd::cRuntimeException with a copy of `cause` linked behind it: what the writer of a compound raises
  /// from its catch handler, so that the chain of causes shows the nesting.
  [[noreturn]] static void throwSerializationError(mstd::cAbstractException const& cause,
                                                   mstd::cAsciiString const& sClassName);
  /// The same for a reader.
  [[noreturn]] static void throwDeserializationError(mstd::cAbstractException const& cause,
                                                     mstd::cAsciiString const& sClassName);
  /// mstd::cBugException.
  [[noreturn]] static void throwContextRefNoImpl();
  /// mstd::cBugException, for the stream operator of a type that may not leave the process. Null reads "unknown".
  [[noreturn]] static void throwUnserializable(char const* pTypeName);
  /// mstd::cBugException.
  [[noreturn]] static void throwSerializerClearWithOpenContexts();
  /// mstd::cBugException.
  [[noreturn]] static void throwSerializerDataWithOpenContexts();
  /// mstd::cRuntimeException.
  [[noreturn]] static void throwInvalidTypeId(unsigned int iId);
  /// mstd::cTypeMissmatchException, or cLabeledTypeMissmatchException if `sLastLabel` is not empty.
  [[noreturn]] static void throwTypeMissmatch(mstd::cAsciiString const& sGot, mstd::cAsciiString const& sExpected,
                                              mstd::cAsciiString const& sLastLabel);
};

} // namespace msa

#endif
