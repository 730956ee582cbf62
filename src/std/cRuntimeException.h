#ifndef MORTISE_STD_CRUNTIMEEXCEPTION_H
#define MORTISE_STD_CRUNTIMEEXCEPTION_H

#include "std/cAbstractException.h"
#include "ucs/cLIMessage.h"

namespace mstd
{
/// A condition that a correct program must expect: an error of the operating system, malformed text, a bad number.
class MORTISE_API cRuntimeException : public cAbstractException
{
public:
  /// Empty message, file "unknown", line 0.
  cRuntimeException();
  /// `file` may be null: the place is then left empty.
  cRuntimeException(mucs::cLIMessage const& message, char const* file, unsigned int line);
  cRuntimeException(mucs::cLIMessage&& message, char const* file, unsigned int line); ///< Takes the message over.
  MORTISE_EXCEPTION(cRuntimeException)

  /// Never null.
  mucs::cLIMessage const* liMessage() const override;
  void store(msa::cAbstractSerializer& serializer) const override;
  void load(msa::cAbstractDeserializer& deserializer) override;
  void setMessage(mucs::cLIMessage const& message);

private:
  mucs::cLIMessage mMessage;
};
} // namespace mstd

#endif
