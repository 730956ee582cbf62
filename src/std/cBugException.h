#ifndef MORTISE_STD_CBUGEXCEPTION_H
#define MORTISE_STD_CBUGEXCEPTION_H

#include "std/cAbstractException.h"
#include "ucs/cLIMessage.h"

#include <utility>

namespace mstd
{
/// A programming error that the system detected: a broken assertion, an index out of range, a wrong type.
class MORTISE_API cBugException : public cAbstractException
{
public:
  // Inline, since each call level makes the back trace longer and dearer.
  /// Empty message, file "unknown", line 0.
  cBugException() : cAbstractException("bug", Bug, "unknown", 0) {}
  /// `file` may be null: the place is then left empty.
  cBugException(mucs::cLIMessage const& message, char const* file, unsigned int line)
      : cAbstractException("bug", Bug, file, line), mMessage(message)
  {
  }
  /// Takes the message over.
  cBugException(mucs::cLIMessage&& message, char const* file, unsigned int line)
      : cAbstractException("bug", Bug, file, line), mMessage(std::move(message))
  {
  }
  MORTISE_EXCEPTION(cBugException)

  /// Never null.
  mucs::cLIMessage const* liMessage() const override;
  void store(msa::cAbstractSerializer& serializer) const override;
  void load(msa::cAbstractDeserializer& deserializer) override;
  void setMsg(mucs::cLIMessage const& message);

  /// Raises a cBugException whose message tells condition, file and line. Null names read "unknown" and "unknown
  /// file". The exception itself carries no place. Assertions go through cSTDExceptions::throwAssertionFailed().
  [[noreturn]] static void throwAssertionFailed(char const* condition, char const* file, unsigned int line);

private:
  mucs::cLIMessage mMessage;
};
} // namespace mstd

#endif
