#ifndef MORTISE_STD_CTYPEERROREXCEPTION_H
#define MORTISE_STD_CTYPEERROREXCEPTION_H

#include "std/cBugException.h"
#include "std/cExceptionText.h"

namespace mstd
{
/// An object in a stream is not what its type says.
class MORTISE_API cTypeErrorException : public cBugException
{
public:
  /// As with an empty name.
  cTypeErrorException();
  explicit cTypeErrorException(cAsciiString const& type);
  MORTISE_EXCEPTION(cTypeErrorException)

  /// Name of the type concerned. (cAbstractException::type(), the family, is reached through the base class.)
  cAsciiString type() const { return mTypeName.string(); }

private:
  cExceptionText mTypeName;
};
} // namespace mstd

#endif
