#include "mce/cExtensionPair.h"

#include "mce/cAbstractCoreExtension.h"
#include "mcs/cAbstractPlugIn.h"
#include "pi/cAbstractClassLoader.h"

namespace mce
{

cExtensionPair::cExtensionPair(mstd::tAutoPtr<cAbstractCoreExtension> pExtension)
    : mpExtension(&*pExtension), mpPlugIn(nullptr), mpHolder(pExtension)
{
}

cExtensionPair::cExtensionPair(mstd::tAutoPtr<mcs::cAbstractPlugIn> pPlugIn)
    : mpExtension(&pPlugIn->coreExtension()), mpPlugIn(pPlugIn.release())
{
}

cExtensionPair::~cExtensionPair()
{
  if (mpPlugIn != nullptr)
  {
    mpi::cAbstractClassLoader* const loader = mpPlugIn->classLoader(); // while the plug-in can still tell
    delete mpPlugIn;
    delete loader;
  }
}

} // namespace mce
