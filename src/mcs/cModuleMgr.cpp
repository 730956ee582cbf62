#include "mcs/cModuleMgr.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cComponentWalk.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgrImpl.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cPIExceptions.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

namespace mcs
{
namespace
{
/// The first component for which `isIt` is true, or null.
template <class Test>
cAbstractComponent* findFirst(mstd::tPtrList<cManagedComponent> const& components, Test const& isIt)
{
  for (cManagedComponent* const managed : components)
  {
    if (isIt(*managed->component()))
    {
      return managed->component();
    }
  }
  return nullptr;
}

template <class Key>
cAbstractComponent& existing(cAbstractComponent* pComponent, Key const& key)
{
  if (pComponent == nullptr)
  {
    cMCSExceptions::throwNoSuchModule(key);
  }
  return *pComponent;
}

/// Gives a number that was taken back unless it comes to be used.
class cTakenNumber
{
public:
  cTakenNumber(cModuleMgrImpl& impl, cAbstractComponent const& component)
      : mImpl(impl), miFormer(impl.lastModuleID()), miNumber(impl.takeModuleID(component.fixedModuleID())), mUsed(false)
  {
  }
  cTakenNumber(cTakenNumber const&) = delete;
  cTakenNumber& operator=(cTakenNumber const&) = delete;
  ~cTakenNumber()
  {
    if (!mUsed && mImpl.lastModuleID() == miNumber)
    {
      mImpl.setLastModuleID(miFormer);
    }
  }

  unsigned int number() const { return miNumber; }
  void use() { mUsed = true; }

private:
  cModuleMgrImpl& mImpl;
  unsigned int miFormer;
  unsigned int miNumber;
  bool mUsed;
};

cAbstractComponent& add(cModuleMgr& manager, cModuleMgrImpl& impl, mstd::tAutoPtr<cManagedComponent> entry,
                        cComponentAddr const& deployedBy)
{
  cAbstractComponent& component = *entry->component();
  cTakenNumber taken(impl, component);
  component.setComponentID(taken.number());
  component.setDeployedBy(deployedBy);
  impl.components().append(entry);
  taken.use();
  manager.handleComponentIterationLater();
  cComponentWalk const keep(impl); // a slot may remove the component
  manager.sigComponentAdded(component);
  return component;
}
} // namespace

cModuleMgr::cModuleMgr(mce::cCoreExtensionMgr const&) : mpImpl(nullptr)
{
  mrmi::cAbstractSignal* const signals[] = {&sigCompatIdle,       &sigComponentAdded,        &sigComponentRegistered,
                                            &sigComponentRemoved, &sigComponentDepsModified, &sigInterfaceDepsModified};
  for (mrmi::cAbstractSignal* const signal : signals)
  {
    signal->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  }
  mpImpl = new cModuleMgrImpl(*this);
}

cModuleMgr::~cModuleMgr()
{
  delete mpImpl; // components that go ask for a pass still
}

mce::cCoreExtensionMgr& cModuleMgr::coreExtensions() const
{
  return mpImpl->coreExtensions();
}

mstd::tPtrList<cManagedComponent> const& cModuleMgr::components() const
{
  return mpImpl->components();
}

mstd::tPtrList<cManagedComponent>& cModuleMgr::components()
{
  return mpImpl->components();
}

void cModuleMgr::setApp(cAbstractKROApp& app)
{
  mpImpl->setApp(app);
}

cAbstractKROApp const& cModuleMgr::app() const
{
  return const_cast<cModuleMgr*>(this)->app();
}

cAbstractKROApp& cModuleMgr::app()
{
  if (mpImpl->app() == nullptr)
  {
    mpi::cPIExceptions::throwNoApplication();
  }
  return *mpImpl->app();
}

cAbstractComponent& cModuleMgr::addComponent(cAbstractComponent& component, cComponentAddr const& deployedBy)
{
  return add(*this, *mpImpl, mstd::tAutoPtr<cManagedComponent>(new cManagedComponent(component)), deployedBy);
}

cAbstractComponent& cModuleMgr::addComponent(mstd::tAutoPtr<cAbstractComponent> pComponent,
                                             cComponentAddr const& deployedBy)
{
  return add(*this, *mpImpl, mstd::tAutoPtr<cManagedComponent>(new cManagedComponent(pComponent)), deployedBy);
}

void cModuleMgr::removeComponent(cComponentAddr const& address)
{
  findComponent(address).removeLater();
  handleComponentIterationLater();
}

void cModuleMgr::handleComponentIterationLater()
{
  mpImpl->startPass();
}

void cModuleMgr::removeAllComponentsNow()
{
  while (!components().empty())
  {
    for (cManagedComponent* const managed : components())
    {
      managed->component()->removeLater(); // also one that a component has added when it went
    }
    mpImpl->mngComponentIteration(false);
  }
}

void cModuleMgr::registerClassLoader(mstd::tAutoPtr<mpi::cAbstractClassLoader> pLoader)
{
  mpImpl->classLoaders().append(pLoader);
}

void cModuleMgr::submitShortlyRemove()
{
  for (cComponentWalk walk(*mpImpl); !walk.isEnd(); walk.next())
  {
    walk.component().notifyShortlyRemove();
  }
}

bool cModuleMgr::applicationCloseAdvisable(cAbstractKROApp& app)
{
  bool isAdvisable = true;
  for (cComponentWalk walk(*mpImpl); !walk.isEnd(); walk.next())
  {
    isAdvisable = walk.component().applicationCloseAdvisable(app) && isAdvisable;
  }
  return isAdvisable;
}

void cModuleMgr::componentsReferencedBy(cAbstractComponent const& component,
                                        mstd::tList<cAbstractComponent*>& referrers) const
{
  referrers.clear();
  for (cManagedComponent* const managed : components())
  {
    if (managed->component()->requiresComponent(&component))
    {
      referrers.append(managed->component());
    }
  }
}

mstd::tAutoPtr<mstd::cAbstractException> cModuleMgr::createRemoteException(cComponentLocation const& location,
                                                                           mstd::cAsciiString const& typeName,
                                                                           msa::cAbstractDeserializer& deserializer)
{
  mstd::tAutoPtr<mstd::cAbstractException> exception;
  for (cComponentWalk walk(*mpImpl); !walk.isEnd() && exception.get() == nullptr; walk.next())
  {
    exception = walk.component().tryCreateRegisteredException(typeName, deserializer);
  }
  if (exception.get() == nullptr)
  {
    exception = mstd::tAutoPtr<mstd::cAbstractException>(new mstd::cRuntimeException(
        mstd::exceptionMessage("$MTR$Unknown remote exception of type %type%!", typeName), 0, 0));
  }
  exception->setRemoteInfo(location);
  return exception;
}

cAbstractComponent* cModuleMgr::hasComponent(mstd::cAsciiString const& context) const
{
  return findFirst(components(), [&context](cAbstractComponent const& c) { return c.info().context() == context; });
}

cAbstractComponent* cModuleMgr::hasComponent(cComponentAddr const& address) const
{
  return findFirst(components(), [&address](cAbstractComponent const& c) { return c.address() == address; });
}

cAbstractComponent* cModuleMgr::hasComponent(cComponentLocation const& location) const
{
  return findFirst(components(), [&location](cAbstractComponent const& c) { return c.location() == location; });
}

bool cModuleMgr::exists(cComponentLocation const& location) const
{
  return hasComponent(location) != nullptr;
}

cAbstractComponent& cModuleMgr::findComponent(mstd::cAsciiString const& context) const
{
  return existing(hasComponent(context), context);
}

cAbstractComponent& cModuleMgr::findComponent(cComponentAddr const& address) const
{
  return existing(hasComponent(address), address);
}

cAbstractComponent& cModuleMgr::findComponent(cComponentLocation const& location) const
{
  return existing(hasComponent(location), location);
}

cAbstractComponent& cModuleMgr::findComponent(mrmi::cConnectable const& connectable) const
{
  cAbstractComponent* const found = findFirst(
      components(), [&connectable](cAbstractComponent const& c) { return c.hasInterface(connectable) != nullptr; });
  if (found == nullptr)
  {
    cMCSExceptions::throwNoPublicInterface(connectable);
  }
  return *found;
}

} // namespace mcs
