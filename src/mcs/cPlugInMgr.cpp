#include "mcs/cPlugInMgr.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/cPlugInGuard.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractPlatformInfo.h"
#include "pi/cPlatform.h"
#include "sa/cReferenceFrame.h"
#include "ucs/cString.h"

namespace mcs
{

cPlugInMgr::cPlugInMgr() : mPlugIns(mstd::tPtrList<cPlugInGuard>::Object) {}

cPlugInMgr::~cPlugInMgr() {}

mstd::tAutoPtr<cPlugInGuard> cPlugInMgr::loadPlugIn(mucs::cString const& name, msa::cReferenceFrame& frame)
{
  mucs::cString fileName(name);
  mpi::cPlatform::createPlatformInfo()->osSpecificSOName(fileName);
  mstd::tAutoPtr<mpi::cAbstractClassLoader> loader(mpi::cPlatform::createClassLoader(fileName));
  mstd::tAutoPtr<cAbstractPlugIn> plugIn(loader->instance(frame));
  plugIn->setClassLoader(loader.get(), mstd::cAsciiString());
  mstd::tAutoPtr<cPlugInGuard> guard(new cPlugInGuard(plugIn));
  loader.release(); // the guard deletes it from here on
  return guard;
}

mstd::tAutoPtr<cPlugInGuard> cPlugInMgr::loadPlugIn(mucs::cString const& name)
{
  msa::cReferenceFrame frame;
  return loadPlugIn(name, frame);
}

void cPlugInMgr::registerPlugIn(mstd::tAutoPtr<cPlugInGuard> pGuard)
{
  mPlugIns.append(pGuard);
}

void cPlugInMgr::unloadPlugIn(cAbstractPlugIn* pPlugIn)
{
  for (mstd::tPtrList<cPlugInGuard>::iterator it = mPlugIns.begin(); it != mPlugIns.end(); ++it)
  {
    if ((*it)->plugIn() == pPlugIn)
    {
      it.eraseLater();
    }
  }
  mPlugIns.eraseMarked();
}

void cPlugInMgr::unloadAll()
{
  mPlugIns.clear();
}

} // namespace mcs
