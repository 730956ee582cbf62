#include "mcs/cNoSuchModuleException.h"

#include "mcs/cComponentLocation.h"
#include "std/exceptionMessage.h"

namespace mcs
{
namespace
{
char const NotFound[] = "$MTR$Module (%addr%) not found!";
} // namespace

cNoSuchModuleException::cNoSuchModuleException(cComponentAddr const& address)
    : cBugException(mstd::exceptionMessage(NotFound, address.toString()), 0, 0), mAddress(address)
{
}

cNoSuchModuleException::cNoSuchModuleException(cComponentLocation const& location)
    : cBugException(mstd::exceptionMessage(NotFound, location.toString()), 0, 0), mAddress(location.address())
{
}

cNoSuchModuleException::cNoSuchModuleException(mstd::cAsciiString const& name)
    : cBugException(mstd::exceptionMessage(NotFound, name), 0, 0)
{
}

cNoSuchModuleException::cNoSuchModuleException(cNoSuchModuleException const& other)
    : cBugException(other), mAddress(other.mAddress)
{
}

void cNoSuchModuleException::swap(cNoSuchModuleException& other) noexcept
{
  cBugException::swap(other);
  mAddress.swap(other.mAddress);
}

MORTISE_EXCEPTION_BODY(cNoSuchModuleException)
} // namespace mcs
