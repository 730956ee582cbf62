#include "pi/platform/dependend/native_linux/cLinuxPlatformInfo.h"

#include "std/cAsciiString.h"

namespace mpi
{

cLinuxPlatformInfo::~cLinuxPlatformInfo() = default;

mstd::cAsciiString cLinuxPlatformInfo::platformName() const
{
  return "Linux";
}

mstd::cAsciiString cLinuxPlatformInfo::osSharedObjectFileExtension() const
{
  return ".so";
}

mstd::cAsciiString cLinuxPlatformInfo::osSharedObjectFilePrefix() const
{
  return "lib";
}

mstd::cAsciiString cLinuxPlatformInfo::osSharedObjectFileSuffix() const
{
  return "";
}

mstd::cAsciiString cLinuxPlatformInfo::osAppFileExtension() const
{
  return "";
}

} // namespace mpi
