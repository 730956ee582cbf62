#ifndef MORTISE_PI_CUNSUPPORTEDPLATFORMEXCEPTION_H
#define MORTISE_PI_CUNSUPPORTEDPLATFORMEXCEPTION_H

#include "std/cBugException.h"

namespace mpi
{

/// The platform doesn't offer an operation.
class MORTISE_API cUnsupportedPlatformException : public mstd::cBugException
{
public:
  /// Names an operation that has no name, for whoever fills the object afterwards.
  cUnsupportedPlatformException();
  explicit cUnsupportedPlatformException(mstd::cAsciiString const& operation);
  MORTISE_EXCEPTION(cUnsupportedPlatformException)
};

} // namespace mpi

#endif
