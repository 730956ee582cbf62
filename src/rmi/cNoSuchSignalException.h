#ifndef MORTISE_RMI_CNOSUCHSIGNALEXCEPTION_H
#define MORTISE_RMI_CNOSUCHSIGNALEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"

namespace mrmi
{
/// No signal of that name is published.
class MORTISE_API cNoSuchSignalException : public mstd::cRuntimeException
{
public:
  explicit cNoSuchSignalException(mstd::cAsciiString const& name);
  MORTISE_EXCEPTION(cNoSuchSignalException)

  mstd::cAsciiString signalName() const { return mSignalName.string(); }

private:
  mstd::cExceptionText mSignalName;
};
} // namespace mrmi

#endif
