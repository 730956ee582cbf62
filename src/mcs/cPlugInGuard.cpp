#include "mcs/cPlugInGuard.h"

#include "mcs/cAbstractPlugIn.h"
#include "pi/cAbstractClassLoader.h"

namespace mcs
{

cPlugInGuard::cPlugInGuard(mstd::tAutoPtr<cAbstractPlugIn> pPlugIn) : mpPlugIn(pPlugIn.release()) {}

cPlugInGuard::~cPlugInGuard()
{
  if (mpPlugIn != nullptr)
  {
    mpi::cAbstractClassLoader* const loader = mpPlugIn->classLoader(); // while the plug-in can still tell
    delete mpPlugIn;
    delete loader;
  }
}

} // namespace mcs
