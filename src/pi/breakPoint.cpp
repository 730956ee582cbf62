#include "pi/breakPoint.h"

#include "pi/platform/dependend/native_linux/cLinuxBreakPoint.h"

namespace mpi
{

void breakPoint()
{
  cLinuxBreakPoint::breakPoint();
}

} // namespace mpi
