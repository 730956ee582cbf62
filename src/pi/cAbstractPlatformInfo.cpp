#include "pi/cAbstractPlatformInfo.h"

#include "io/cFileInfo.h"
#include "std/cAsciiString.h"
#include "ucs/cString.h"

namespace mpi
{

cAbstractPlatformInfo::~cAbstractPlatformInfo() = default;

void cAbstractPlatformInfo::osSpecificSOName(mucs::cString& name) const
{
  mucs::cString fileName(name);
  mio::cFileInfo::setFileNamePrefix(fileName, mucs::cString(osSharedObjectFilePrefix(), '?'));
  mio::cFileInfo::setFileNameSuffix(fileName, mucs::cString(osSharedObjectFileSuffix(), '?'));
  mio::cFileInfo::setFileNameExtension(fileName, mucs::cString(osSharedObjectFileExtension(), '?'));
  name.swap(fileName);
}

} // namespace mpi
