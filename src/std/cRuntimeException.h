#ifndef MORTISE_STD_CRUNTIMEEXCEPTION_H
#define MORTISE_STD_CRUNTIMEEXCEPTION_H

#include "std/cAbstractException.h"
#include "ucs/cLIMessage.h"

#include <utility>

namespace mstd
{
/// A condition that a correct program must expect: an error of the operating system, malformed text, a bad number.
class MORTISE_API cRuntimeException : public cAbstractException
{
public:
  // Inline, since each call level makes the back trace longer and dearer.
  /// Empty message, file "unknown", line 0.
  cRuntimeException() : cAbstractException("runtime", Runtime, "unknown", 0) {}
  /// `file` may be null: the place is then left empty.
  cRuntimeException(mucs::cLIMessage const& message, char const* file, unsigned int line)
      : cAbstractException("runtime", Runtime, file, line), mMessage(message)
  {
  }
  /// Takes the message over.
  cRuntimeException(mucs::cLIMessage&& message, char const* file, unsigned int line)
      : cAbstractException("runtime", Runtime, file, line), mMessage(std::move(message))
  {
  }
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
