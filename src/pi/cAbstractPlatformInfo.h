#ifndef MORTISE_PI_CABSTRACTPLATFORMINFO_H
#define MORTISE_PI_CABSTRACTPLATFORMINFO_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

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

  /// Makes the file name of a shared object from the plain name of a module, with its directory if it has one: "foo" is
  /// "libfoo.so" on Linux. What stands behind the first point of the name is lost.
  void osSpecificSOName(mucs::cString& name) const;
};

} // namespace mpi

#endif
