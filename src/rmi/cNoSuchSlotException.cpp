#include "rmi/cNoSuchSlotException.h"

#include "sa/cReferenceFrame.h"
#include "sa/cSerializeToTypeString.h"
#include "std/exceptionMessage.h"

namespace mrmi
{
namespace
{
mstd::cAsciiString argumentTypes(msa::cReferenceFrame const& frame)
{
  msa::cSerializeToTypeString types;
  frame.store(types);
  mstd::cAsciiString text("(");
  text += types.typeString();
  text += ')';
  return text;
}
} // namespace

cNoSuchSlotException::cNoSuchSlotException(char const* key, mstd::cAsciiString const& name,
                                           mstd::cAsciiString const& argsText)
    : cRuntimeException(mstd::exceptionMessage(key, name, argsText), 0, 0), mSlotName(name), mSlotArgs(argsText)
{
}

cNoSuchSlotException::cNoSuchSlotException(mstd::cAsciiString const& name, mstd::cAsciiString const& argsText)
    : cNoSuchSlotException("$MTR$Slot \"%slot%(%args%)\" not found in interface!", name, argsText)
{
}

cNoSuchSlotException::cNoSuchSlotException(mstd::cAsciiString const& name, msa::cReferenceFrame const& frame)
    : cNoSuchSlotException("$MTR$Slot \"%slot%(%args%)\" not found in interface", name, argumentTypes(frame))
{
}

cNoSuchSlotException::cNoSuchSlotException(cNoSuchSlotException const& other) : cRuntimeException(other)
{
  copyField(mSlotName, other.mSlotName);
  copyField(mSlotArgs, other.mSlotArgs);
}

void cNoSuchSlotException::swap(cNoSuchSlotException& other) noexcept
{
  cRuntimeException::swap(other);
  mSlotName.swap(other.mSlotName);
  mSlotArgs.swap(other.mSlotArgs);
}

MORTISE_EXCEPTION_BODY(cNoSuchSlotException)
} // namespace mrmi
