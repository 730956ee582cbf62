#ifndef MORTISE_STD_COUTOFBOUNDSEXCEPTION_H
#define MORTISE_STD_COUTOFBOUNDSEXCEPTION_H

#include "std/cBugException.h"
#include "std/cExceptionText.h"

namespace mstd
{
/// Something went over the end of a container.
class MORTISE_API cOutOfBoundsException : public cBugException
{
public:
  /// As with no names.
  cOutOfBoundsException();
  /// Each name may be null; the message then leaves it out. Without a container the operation is left out, too.
  cOutOfBoundsException(char const* container, char const* operation);
  MORTISE_EXCEPTION(cOutOfBoundsException)

  cAsciiString container() const { return mContainer.string(); }
  cAsciiString operation() const { return mOperation.string(); }

private:
  cExceptionText mContainer;
  cExceptionText mOperation;
};
} // namespace mstd

#endif
