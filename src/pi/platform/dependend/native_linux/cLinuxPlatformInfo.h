#ifndef MORTISE_PI_PLATFORM_CLINUXPLATFORMINFO_H
#define MORTISE_PI_PLATFORM_CLINUXPLATFORMINFO_H

#include "pi/cAbstractPlatformInfo.h"

namespace mpi
{

/// The names of Linux: shared objects are called lib...so, programs have no ending.
class cLinuxPlatformInfo : public cAbstractPlatformInfo
{
public:
  ~cLinuxPlatformInfo() override;

  mstd::cAsciiString platformName() const override;
  mstd::cAsciiString osSharedObjectFileExtension() const override;
  mstd::cAsciiString osSharedObjectFilePrefix() const override;
  mstd::cAsciiString osSharedObjectFileSuffix() const override;
  mstd::cAsciiString osAppFileExtension() const override;
};

} // namespace mpi

#endif
