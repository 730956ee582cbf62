#ifndef MORTISE_RMI_CNOSUCHSLOTEXCEPTION_H
#define MORTISE_RMI_CNOSUCHSLOTEXCEPTION_H

#include "std/cExceptionText.h"
#include "std/cRuntimeException.h"

namespace msa
{
class cReferenceFrame;
}

namespace mrmi
{
/// No slot of that name is published.
class MORTISE_API cNoSuchSlotException : public mstd::cRuntimeException
{
public:
  /// With the text of the arguments.
  cNoSuchSlotException(mstd::cAsciiString const& name, mstd::cAsciiString const& argsText);
  /// With the names of the types in the frame, in parentheses. A frame that holds something with a context raises what
  /// msa::cSerializeToTypeString raises.
  cNoSuchSlotException(mstd::cAsciiString const& name, msa::cReferenceFrame const& frame);
  MORTISE_EXCEPTION(cNoSuchSlotException)

  mstd::cAsciiString slotName() const { return mSlotName.string(); }
  mstd::cAsciiString slotArgs() const { return mSlotArgs.string(); }

private:
  cNoSuchSlotException(char const* key, mstd::cAsciiString const& name, mstd::cAsciiString const& argsText);

  mstd::cExceptionText mSlotName;
  mstd::cExceptionText mSlotArgs;
};
} // namespace mrmi

#endif
