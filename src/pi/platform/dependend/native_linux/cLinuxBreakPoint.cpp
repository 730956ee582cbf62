#include "pi/platform/dependend/native_linux/cLinuxBreakPoint.h"

#include <signal.h>
#include <unistd.h>

namespace mpi
{

void cLinuxBreakPoint::breakPoint()
{
  kill(getpid(), SIGTRAP);
}

} // namespace mpi
