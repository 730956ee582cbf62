#include "mcs/cModuleMgrImpl.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mp/cLocker.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"
#include "rmi/cDirectLocalSlotCall0.h"

namespace mcs
{
namespace
{
enum
{
  IdlePeriod = 4000 // milliseconds
};

void writeReferrer(cAbstractComponent const& referrer)
{
  mstd::cAsciiString const location = referrer.location().toString();
  mpi::cAbstractOut& out = mpi::system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage("mcs/cModuleMgr", __LINE__)
      << "cModuleMgr: Mark referencing component for removal... (" << location << ")"
      << "\n"
      << mpi::cAbstractOut::clearDebugMessage();
}

/// Keeps a flag false for a while.
class cForbid
{
public:
  explicit cForbid(bool& rAllowed) : mAllowed(rAllowed) { mAllowed = false; }
  ~cForbid() { mAllowed = true; }

private:
  bool& mAllowed;
};
} // namespace

cModuleMgrImpl::cModuleMgrImpl(cModuleMgr& manager)
    : mManager(manager), mpWorkQueue(&mpi::system().wq), mCoreExtensions(mpi::system().extensions), mPassAllowed(true),
      mComponents(mstd::tPtrList<cManagedComponent>::Object),
      mClassLoaders(mstd::tPtrList<mpi::cAbstractClassLoader>::Object), miLastModuleID(1), mpApp(nullptr), miSweeps(0)
{
  mManagementWork.setName(mstd::cAsciiString("component management (KRO Core)"));
  mIdleWork.setName(mstd::cAsciiString("idle emulation (KRO Core)"));
  mManagementWork.sigAction.connect(
      mrmi::cDirectLocalSlotCall0(*this, &cModuleMgrImpl::mngSltProcessComponentManagement));
  mManagementWork.setName(mstd::cAsciiString("ComponentManagement"));
  mIdleWork.sigAction.connect(mrmi::cDirectLocalSlotCall0(*this, &cModuleMgrImpl::mngSigCompatIdle));
  mIdleWork.setName(mstd::cAsciiString("ComapatIdle"));
  mpWorkQueue->addJob(mManagementWork);
  mpWorkQueue->addJob(mIdleWork);
  mIdleWork.start(IdlePeriod, mpi::cWork::Periodic);
}

cModuleMgrImpl::~cModuleMgrImpl()
{
  mpWorkQueue->removeJob(mManagementWork);
  mpWorkQueue->removeJob(mIdleWork);
  mComponents.clear();
  mClassLoaders.clear();
}

unsigned int cModuleMgrImpl::nextModuleID(unsigned int iFixed) const
{
  if (iFixed == 0)
  {
    return miLastModuleID + 1;
  }
  if (miLastModuleID > iFixed)
  {
    cMCSExceptions::throwComponentIdNotUnique(iFixed);
  }
  return iFixed;
}

void cModuleMgrImpl::mngComponentIteration(bool bFull)
{
  for (mstd::tPtrList<cManagedComponent>::iterator it = mComponents.begin(); it != mComponents.end(); ++it)
  {
    if (it.isMarked())
    {
      continue; // by a walk that did not come to its end
    }
    cAbstractComponent& component = (*it)->component();
    bool const isPlaceKept =
        component.toRemove() ? retire(it, bFull) : !bFull || (announce(component) && update(component));
    if (!isPlaceKept)
    {
      startPass();
      return;
    }
  }
  ++miSweeps;
  mComponents.eraseMarked();
}

bool cModuleMgrImpl::retire(mstd::tPtrList<cManagedComponent>::iterator position, bool bFull)
{
  cAbstractComponent& component = (*position)->component();
  mstd::tList<cAbstractComponent*> referrers;
  mManager.componentsReferencedBy(component, referrers);
  if (!referrers.empty())
  {
    for (cAbstractComponent* const referrer : referrers)
    {
      writeReferrer(*referrer);
      referrer->removeLater();
    }
    return true;
  }
  if (bFull)
  {
    unsigned int const sweeps = miSweeps;
    mManager.sigComponentRemoved(component);
    if (miSweeps != sweeps)
    {
      return false;
    }
  }
  position.eraseLater();
  return true;
}

bool cModuleMgrImpl::announce(cAbstractComponent& component)
{
  if (component.announced())
  {
    return true;
  }
  unsigned int const sweeps = miSweeps;
  bool const isDelayed = component.delayAnnouncement();
  if (miSweeps != sweeps)
  {
    return false;
  }
  if (isDelayed)
  {
    startPass();
    return true;
  }
  mManager.sigComponentRegistered(component);
  if (miSweeps != sweeps)
  {
    return false;
  }
  component.setAnnounced();
  try
  {
    component.notifyComponentRegistered();
  }
  catch (...)
  {
    if (miSweeps == sweeps)
    {
      component.removeLater();
    }
    throw;
  }
  return miSweeps == sweeps;
}

bool cModuleMgrImpl::update(cAbstractComponent& component)
{
  if (!component.announced())
  {
    return true;
  }
  unsigned int const sweeps = miSweeps;
  if (component.interfaceDepModified())
  {
    component.recalcInterfaceDeps();
    if (miSweeps != sweeps)
    {
      return false;
    }
    mManager.sigInterfaceDepsModified(component.location());
    if (miSweeps != sweeps)
    {
      return false;
    }
    component.resetInterfaceDepModification();
  }
  if (component.componentDepModified())
  {
    mManager.sigComponentDepsModified();
    if (miSweeps != sweeps)
    {
      return false;
    }
    component.resetComponentDepModification();
  }
  return true;
}

void cModuleMgrImpl::mngSltProcessComponentManagement()
{
  if (!mPassAllowed)
  {
    startPass();
    return;
  }
  cForbid const inPass(mPassAllowed);
  mngComponentIteration(true);
  for (mstd::tPtrList<mpi::cAbstractClassLoader>::iterator it = mClassLoaders.begin(); it != mClassLoaders.end(); ++it)
  {
    if ((*it)->isUnused())
    {
      it.eraseLater();
    }
  }
  mClassLoaders.eraseMarked();
}

void cModuleMgrImpl::mngSigCompatIdle()
{
  mManager.sigCompatIdle();
}

} // namespace mcs
