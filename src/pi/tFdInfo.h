#ifndef MORTISE_PI_TFDINFO_H
#define MORTISE_PI_TFDINFO_H

#include "pi/piTypes.h"

namespace mpi
{

/// A file descriptor and what to watch it for. A plain value; it never closes the descriptor.
struct MORTISE_API tFdInfo
{
  /// The bits of `flags`.
  enum Flags
  {
    Readable = 1,
    Writable = 2,
    Error = 4
  };

  tFdInfo() = default;
  tFdInfo(int iFd, unsigned int iFlags) : fd(iFd), flags(iFlags) {}

  int fd = -1;            ///< the descriptor
  unsigned int flags = 0; ///< mask of Flags; 0 watches for nothing but trouble with the descriptor
};

} // namespace mpi

#endif
