#include "mcs/cAbstractComponent.h"

#include "mcs/cInterfaceDep.h"
#include "mcs/cModuleMgr.h"
#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"

namespace mcs
{
namespace
{
void writeDebugLine(char const* pText, unsigned int iLine)
{
  mpi::cAbstractOut& out = mpi::system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage("mcs/cAbstractComponent", iLine) << pText << "\n" << mpi::cAbstractOut::clearDebugMessage();
}
} // namespace

cAbstractComponent::cAbstractComponent(cModuleMgr& manager)
    : mManager(manager), mComponentDepModified(false), mToRemove(false), mInterfaceDepModified(false),
      mInterfaceDeps(mstd::tAutoPtrType::NotOwned), mAnnounced(false),
      mExceptions(mstd::tPtrList<mstd::cAbstractException>::Object)
{
}

cAbstractComponent::cAbstractComponent(cModuleMgr& manager, msa::cReferenceFrame& frame)
    : cAbstractModule(frame), mManager(manager), mComponentDepModified(false), mToRemove(false),
      mInterfaceDepModified(false), mInterfaceDeps(mstd::tAutoPtrType::NotOwned), mAnnounced(false),
      mExceptions(mstd::tPtrList<mstd::cAbstractException>::Object)
{
}

cAbstractComponent::~cAbstractComponent() {}

bool cAbstractComponent::isPlugIn() const
{
  return false;
}

bool cAbstractComponent::isComponent() const
{
  return true;
}

mstd::cAsciiString cAbstractComponent::isSpecific() const
{
  return mstd::cAsciiString();
}

bool cAbstractComponent::explicitLocal() const
{
  return false;
}

unsigned int cAbstractComponent::fixedQueueID() const
{
  return 1;
}

unsigned int cAbstractComponent::fixedModuleID() const
{
  return 0;
}

bool cAbstractComponent::isLocal() const
{
  return true;
}

void cAbstractComponent::notifyComponentRegistered() {}

void cAbstractComponent::notifyShortlyRemove() {}

bool cAbstractComponent::applicationCloseAdvisable(cAbstractKROApp&)
{
  return true;
}

mstd::tPtrVector<cInterfaceDep> const& cAbstractComponent::interfaceDeps() const
{
  return mInterfaceDeps;
}

bool cAbstractComponent::delayAnnouncement() const
{
  return false;
}

void cAbstractComponent::setComponentID(unsigned int iId)
{
  mAddress = cComponentAddr(fixedQueueID(), iId);
  if (isLocal())
  {
    mLocation.setAddress(mAddress);
  }
}

void cAbstractComponent::recalcInterfaceDeps()
{
  mstd::cLifeWatch const watch(mLife);
  for (unsigned int i = 0; !watch.isOver() && i < interfaceDeps().length(); ++i)
  {
    writeDebugLine("cAbstractComponent::Recalcing deps...", __LINE__);
    interfaceDeps()[i]->recalc();
  }
}

void cAbstractComponent::removeLater()
{
  mToRemove = true;
  mManager.handleComponentIterationLater();
}

void cAbstractComponent::modifyInterfaceDep()
{
  mInterfaceDepModified = true;
  mManager.handleComponentIterationLater();
}

void cAbstractComponent::modifyComponentDep()
{
  mComponentDepModified = true;
  mManager.handleComponentIterationLater();
}

void cAbstractComponent::addInterfaceDep(cInterfaceDep* pDep)
{
  mInterfaceDeps.append(pDep);
  modifyInterfaceDep();
  writeDebugLine("cAbstractComponent::addInterfaceDep...", __LINE__);
}

void cAbstractComponent::removeInterfaceDep(cInterfaceDep* pDep)
{
  for (unsigned int i = mInterfaceDeps.length(); i-- > 0;)
  {
    if (mInterfaceDeps[i] == pDep)
    {
      mInterfaceDeps.erase(i);
    }
  }
  modifyInterfaceDep();
}

void cAbstractComponent::addLocalRequiredComponent(cAbstractComponent* pComponent)
{
  if (pComponent != nullptr)
  {
    mRequired.append(pComponent);
    modifyComponentDep();
  }
}

bool cAbstractComponent::requiresComponent(cAbstractComponent const* pComponent) const
{
  for (cAbstractComponent const* const required : mRequired)
  {
    if (required == pComponent)
    {
      return true;
    }
  }
  return false;
}

void cAbstractComponent::registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException> pPrototype)
{
  mExceptions.append(pPrototype);
}

mstd::tAutoPtr<mstd::cAbstractException>
cAbstractComponent::tryCreateRegisteredException(mstd::cAsciiString const& typeName, msa::cAbstractDeserializer&)
{
  for (mstd::cAbstractException const* const prototype : mExceptions)
  {
    if (prototype->typeName() == typeName)
    {
      return mstd::tAutoPtr<mstd::cAbstractException>(prototype->createObject());
    }
  }
  return mstd::tAutoPtr<mstd::cAbstractException>();
}

} // namespace mcs
