#ifndef MORTISE_MCS_CNOSUCHMODULEEXCEPTION_H
#define MORTISE_MCS_CNOSUCHMODULEEXCEPTION_H

#include "mcs/cComponentAddr.h"
#include "std/cBugException.h"

namespace mcs
{
class cComponentLocation;

/// No module has this address, location or name.
class MORTISE_API cNoSuchModuleException : public mstd::cBugException
{
public:
  explicit cNoSuchModuleException(cComponentAddr const& address);
  explicit cNoSuchModuleException(cComponentLocation const& location);
  explicit cNoSuchModuleException(mstd::cAsciiString const& name);
  MORTISE_EXCEPTION(cNoSuchModuleException)

  /// What was looked for; not valid if that was a name.
  cComponentAddr const& address() const { return mAddress; }

private:
  cComponentAddr mAddress;
};
} // namespace mcs

#endif
