#include "mcs/cModuleMgrImpl.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cComponentWalk.h"
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
      mClassLoaders(mstd::tPtrList<mpi::cAbstractClassLoader>::Object), miLastModuleID(1), mpApp(nullptr),
      mpWalk(nullptr), mpFirstSwept(nullptr), mpLastSwept(nullptr)
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
  while (!mComponents.empty()) // again, if a component that goes adds another one: its library must not go first
  {
    mComponents.clear();
  }
  mClassLoaders.clear();
}

unsigned int cModuleMgrImpl::takeModuleID(unsigned int iFixed)
{
  if (iFixed == 0)
  {
    return ++miLastModuleID;
  }
  if (miLastModuleID > iFixed)
  {
    cMCSExceptions::throwComponentIdNotUnique(iFixed);
  }
  miLastModuleID = iFixed;
  return iFixed;
}

void cModuleMgrImpl::mngComponentIteration(bool bFull)
{
  for (cComponentWalk walk(*this); !walk.isEnd(); walk.next())
  {
    if (walk.isMarked())
    {
      continue; // by a pass that did not come to its end
    }
    if (walk.component().toRemove())
    {
      retire(walk, bFull);
    }
    else if (bFull)
    {
      announce(walk);
      update(walk);
    }
  }
  sweep();
}

void cModuleMgrImpl::retire(cComponentWalk& walk, bool bFull)
{
  cAbstractComponent& component = walk.component();
  mstd::tList<cAbstractComponent*> referrers;
  mManager.componentsReferencedBy(component, referrers);
  for (cAbstractComponent* const referrer : referrers)
  {
    writeReferrer(*referrer);
    referrer->removeLater();
  }
  if (!referrers.empty())
  {
    return;
  }
  if (bFull)
  {
    mManager.sigComponentRemoved(component);
  }
  if (!walk.isGone())
  {
    walk.eraseLater();
  }
}

void cModuleMgrImpl::announce(cComponentWalk& walk)
{
  cAbstractComponent& component = walk.component();
  if (component.announced())
  {
    return;
  }
  if (component.delayAnnouncement())
  {
    startPass();
    return;
  }
  if (walk.isGone())
  {
    return;
  }
  mManager.sigComponentRegistered(component);
  if (walk.isGone())
  {
    return;
  }
  component.setAnnounced();
  try
  {
    component.notifyComponentRegistered();
  }
  catch (...)
  {
    if (!walk.isGone())
    {
      component.removeLater();
    }
    throw;
  }
}

void cModuleMgrImpl::update(cComponentWalk& walk)
{
  if (walk.isGone() || !walk.component().announced())
  {
    return;
  }
  cAbstractComponent& component = walk.component();
  if (component.interfaceDepModified())
  {
    component.recalcInterfaceDeps();
    if (walk.isGone())
    {
      return;
    }
    mManager.sigInterfaceDepsModified(component.location());
    if (walk.isGone())
    {
      return;
    }
    component.resetInterfaceDepModification();
  }
  if (component.componentDepModified())
  {
    mManager.sigComponentDepsModified();
    if (walk.isGone())
    {
      return;
    }
    component.resetComponentDepModification();
  }
}

void cModuleMgrImpl::sweep()
{
  if (mpWalk != nullptr)
  {
    for (cComponentWalk* walk = mpWalk; walk != nullptr; walk = walk->mpOuter)
    {
      walk->leaveMarked();
    }
    for (mstd::tPtrList<cManagedComponent>::iterator it = mComponents.begin(); it != mComponents.end(); ++it)
    {
      if (it.isMarked())
      {
        cManagedComponent* const swept = *it;
        *it = nullptr;
        (mpLastSwept != nullptr ? mpLastSwept->mpNextSwept : mpFirstSwept) = swept;
        mpLastSwept = swept;
      }
    }
  }
  mComponents.eraseMarked();
}

void cModuleMgrImpl::bury()
{
  if (mpFirstSwept != nullptr)
  {
    startPass(); // the library of a component that goes late can go only then
  }
  while (mpFirstSwept != nullptr)
  {
    cManagedComponent* const swept = mpFirstSwept;
    mpFirstSwept = swept->mpNextSwept;
    if (mpFirstSwept == nullptr)
    {
      mpLastSwept = nullptr;
    }
    delete swept;
  }
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
