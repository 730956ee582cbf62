#include "pi/cSystem.h"

#include "pi/cAbstractProcessEvents.h"
#include "pi/cPIExceptions.h"
#include "pi/cPlatform.h"
#include "pi/cSystemImpl.h"
#include "std/tAutoPtr.h"

#include <new>

namespace
{

/// An owning pointer that no exit handler destroys: the root can be asked for, and is then built anew, even behind the
/// handlers below.
template <typename T>
union uHolder
{
  uHolder() : mpObject() {}
  ~uHolder() {}

  mstd::tAutoPtr<T> mpObject;
};

uHolder<cSystemImpl> implHolder;
uHolder<mpi::cSystem::cSystemFactory> facadeHolder;

// What destructors see that ask for the root while it is torn down. It lives in a place of its own, which is never
// given back, so that it costs no allocation and can be kept as long as the destructors like.
alignas(mpi::cSystem) unsigned char dyingFacade[sizeof(mpi::cSystem)];
mpi::cSystem* pDyingFacade = 0; // set while the root is torn down and has been asked for
bool isTearingDown = false;

cSystemImpl* buildImpl()
{
  mstd::tAutoPtr<cSystemImpl> pImpl(new cSystemImpl);
  pImpl->mWorkQueue.setEvents(mpi::cPlatform::createProcessEvents());
  return pImpl.release();
}

void destroyFacade()
{
  facadeHolder.mpObject.reinit(0);
}

void destroyImpl()
{
  if (isTearingDown || implHolder.mpObject.get() == 0)
  {
    return;
  }
  isTearingDown = true;
  // The holder keeps the object until its destructor has ended, since the destructors of members and of work may ask
  // for the root.
  delete implHolder.mpObject.get();
  implHolder.mpObject.release();
  pDyingFacade = 0;
  isTearingDown = false;
}

// The exit handlers. They run in reverse order, the facade first.
struct cImplGuard
{
  ~cImplGuard() { destroyImpl(); }
} implGuard;

struct cFacadeGuard
{
  ~cFacadeGuard() { destroyFacade(); }
} facadeGuard;

} // namespace

namespace mpi
{

cSystem::cDefaults::cDefaults(mstd::cNumberConversionFormat& rNumberFormat, mucs::cAbstractEnDec& rEnDec)
    : numberFormat(rNumberFormat), enDec(rEnDec)
{
}

cSystem::cSystem(cSystemImpl& impl)
    : defaults(impl.mNumberFormat, impl.mEnDec), fs(impl.mFs), extensions(impl.mExtensions), locale(impl.mLocale),
      wq(impl.mWorkQueue), out(impl.mOut), caches(impl.mCaches)
{
}

unsigned int cSystem::exec()
{
  return implHolder.mpObject.get()->mWorkQueue.process();
}

cAbstractKROApp& cSystem::app()
{
  cSystemImpl* pImpl = implHolder.mpObject.get();
  if (pImpl == 0 || pImpl->mpApp == 0)
  {
    cPIExceptions::throwNoApplication();
  }
  return *pImpl->mpApp;
}

void cSystem::setApp(cAbstractKROApp* pApp)
{
  cSystemImpl* pImpl = implHolder.mpObject.get();
  if (pImpl != 0)
  {
    pImpl->mpApp = pApp;
  }
}

void cSystem::cleanup()
{
  if (isTearingDown)
  {
    return;
  }
  cSystemImpl* pImpl = implHolder.mpObject.get();
  if (pImpl != 0)
  {
    pImpl->mExtensions.clear(); // while everything that they may use is alive
    pImpl->mCaches.clear();
  }
  destroyFacade();
  destroyImpl();
}

cSystem& system()
{
  cSystem* pFacade = facadeHolder.mpObject.get();
  if (pFacade != 0)
  {
    return *pFacade;
  }
  if (implHolder.mpObject.get() == 0)
  {
    implHolder.mpObject.reinit(buildImpl());
  }
  cPlatform::buildChecks();
  if (isTearingDown)
  {
    // Never stored: the holder would hand out the dead root after the tear-down.
    if (pDyingFacade == 0)
    {
      pDyingFacade = new (dyingFacade) cSystem(*implHolder.mpObject.get());
    }
    return *pDyingFacade;
  }
  facadeHolder.mpObject.reinit(new cSystem(*implHolder.mpObject.get()));
  return *facadeHolder.mpObject.get();
}

} // namespace mpi
