#ifndef MORTISE_PI_CABSTRACTPLATFORMINFO_H
#define MORTISE_PI_CABSTRACTPLATFORMINFO_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
} // namespace mstd

namespace mpi
{

/// Names of the platform, and how its shared objects and programs are called.
class MORTISE_API cAbstractPlatformInfo
{
public:
  virtual ~cAbstractPlatformInfo();

  virtual mstd::cAsciiString platformName() const = 0;
  virtual mstd::cAsciiString osSharedObjectFileExtension() const = 0;
  virtual mstd::cAsciiString osSharedObjectFilePrefix() const = 0;
  virtual mstd::cAsciiString osSharedObjectFileSuffix() const = 0;
  virtual mstd::cAsciiString osAppFileExtension() const = 0;
};

} // namespace mpi

#endif
