#ifndef MORTISE_MCS_CMODULEMGR_H
#define MORTISE_MCS_CMODULEMGR_H

#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"
#include "std/tAutoPtr.h"
#include "std/tPtrList.h"

class cAbstractKROApp;

namespace mce
{
class cCoreExtensionMgr;
}

namespace mpi
{
class cAbstractClassLoader;
}

namespace msa
{
class cAbstractDeserializer;
}

namespace mstd
{
class cAbstractException;
class cAsciiString;
} // namespace mstd

namespace mcs
{
class cAbstractComponent;
class cComponentAddr;
class cComponentLocation;
class cManagedComponent;
class cModuleMgrImpl;

/// The components of a process and their life: it numbers and announces them, keeps their interface dependencies up to
/// date, removes them in order, and unloads the libraries that nobody uses any more.
///
/// All of this is done in a pass over the list, which runs as a work item of the work queue of mpi::system(), so that
/// no component is announced or destroyed in the middle of somebody else's call. Whatever changes only asks for a pass.
///
/// A component that came from a library is added in these steps: mpi::cPlatform::createClassLoader(), instance() of the
/// loader, setClassLoader() of the component, addComponent(), registerClassLoader().
///
/// What is called in a pass may do anything: add components, ask for removal, enter the event loop, even remove all
/// components. A component that is taken out of the list while somebody is being called with it is destroyed when that
/// call is over. Only the manager itself must outlive its passes, and the components and dependencies that know it.
///
/// Threads: that of the work queue; nothing is locked.
/// Cost:    every look-up is a walk of the list. To ask for a pass again costs nothing more. A pass is a walk, too,
/// plus
///          a walk for every component that is to be removed.
class MORTISE_API cModuleMgr
{
public:
  /// The argument is not kept: coreExtensions() gives the system's manager.
  explicit cModuleMgr(mce::cCoreExtensionMgr const& extensions);
  cModuleMgr(cModuleMgr const&) = delete; // it owns components
  cModuleMgr& operator=(cModuleMgr const&) = delete;
  /// Destroys all components, whatever they require of each other, and then the class loaders. Fires no signal.
  virtual ~cModuleMgr();

  /// \name Signals
  /// All may stay unconnected. What a slot throws out of a pass ends that pass.
  /// @{
  mrmi::localSignal0<piVoid> sigCompatIdle;                               ///< every 4 seconds
  mrmi::localSignal1<piVoid, cAbstractComponent&> sigComponentAdded;      ///< from addComponent()
  mrmi::localSignal1<piVoid, cAbstractComponent&> sigComponentRegistered; ///< a component is announced
  mrmi::localSignal1<piVoid, cAbstractComponent&> sigComponentRemoved;    ///< it lives until the end of the pass
  mrmi::localSignal0<piVoid> sigComponentDepsModified;                    ///< what a component requires has changed
  mrmi::localSignal1<piVoid, cComponentLocation const&> sigInterfaceDepsModified; ///< its dependencies were searched
  /// @}

  mce::cCoreExtensionMgr& coreExtensions() const;
  /// In the order of adding.
  mstd::tPtrList<cManagedComponent> const& components() const;
  mstd::tPtrList<cManagedComponent>& components();

  void setApp(cAbstractKROApp& app);
  /// mstd::cBugException if none was set.
  cAbstractKROApp const& app() const;
  cAbstractKROApp& app();

  /// Numbers a component, appends it and asks for a pass. The number is the next one, or the one on which the component
  /// insists: mstd::cRuntimeException if that is below the last number given, and nothing is added then. To insist on
  /// the last number given is allowed: two components have it then. The first form borrows the component, the second
  /// one takes it over, also if it fails. What a slot of sigComponentAdded throws leaves the component added.
  cAbstractComponent& addComponent(cAbstractComponent& component, cComponentAddr const& deployedBy);
  cAbstractComponent& addComponent(mstd::tAutoPtr<cAbstractComponent> pComponent, cComponentAddr const& deployedBy);
  /// Marks a component for removal. cNoSuchModuleException if there is none.
  void removeComponent(cComponentAddr const& address);
  /// Asks for a pass.
  void handleComponentIterationLater();
  /// Removes all components in the caller's stack, those that others require last, and those that they add when they
  /// go, too. No signal is fired and no library unloaded. Components that require each other in a circle make this
  /// loop endless: findRequirementCycle() finds such a circle beforehand. Called by somebody whom a pass has called, it
  /// empties the list, too, but what is owned is destroyed only behind that call.
  void removeAllComponentsNow();
  /// Takes over a loader; its library goes, at the end of a pass, when no module from it is left.
  void registerClassLoader(mstd::tAutoPtr<mpi::cAbstractClassLoader> pLoader);

  /// Tells every component that it is to go soon.
  void submitShortlyRemove();
  /// Asks every component; true if all agree.
  bool applicationCloseAdvisable(cAbstractKROApp& app);
  /// Replaces the list by all components that require `component`, in their order.
  void componentsReferencedBy(cAbstractComponent const& component, mstd::tList<cAbstractComponent*>& referrers) const;

  /// An exception object for one that came from `location`: of the first component that knows the class, else a
  /// mstd::cRuntimeException that names it. It is marked as remote. The stream is not read: the caller fills it.
  mstd::tAutoPtr<mstd::cAbstractException> createRemoteException(cComponentLocation const& location,
                                                                 mstd::cAsciiString const& typeName,
                                                                 msa::cAbstractDeserializer& deserializer);

  /// \name Look-up
  /// The first hit from the beginning, also of a component that is to be removed. A text is compared with the context
  /// of the module's information. What is missing is null, or raises cNoSuchModuleException.
  /// @{
  cAbstractComponent* hasComponent(mstd::cAsciiString const& context) const;
  cAbstractComponent* hasComponent(cComponentAddr const& address) const;
  cAbstractComponent* hasComponent(cComponentLocation const& location) const;
  bool exists(cComponentLocation const& location) const;
  cAbstractComponent& findComponent(mstd::cAsciiString const& context) const;
  cAbstractComponent& findComponent(cComponentAddr const& address) const;
  cAbstractComponent& findComponent(cComponentLocation const& location) const;
  /// The component that offers this interface; cNoPublicInterfaceException.
  cAbstractComponent& findComponent(mrmi::cConnectable const& connectable) const;
  /// @}

private:
  friend class cComponentWalk;

  cModuleMgrImpl* mpImpl;
};

} // namespace mcs

#endif
