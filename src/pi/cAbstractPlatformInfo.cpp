#include "pi/cAbstractPlatformInfo.h"

namespace mpi
{

cAbstractPlatformInfo::~cAbstractPlatformInfo() = default;

} // namespace mpi
