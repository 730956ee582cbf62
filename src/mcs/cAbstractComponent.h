#ifndef MORTISE_MCS_CABSTRACTCOMPONENT_H
#define MORTISE_MCS_CABSTRACTCOMPONENT_H

#include "mcs/cAbstractModule.h"
#include "mcs/cComponentLocation.h"
#include "std/cLife.h"
#include "std/tList.h"

class cAbstractKROApp;

namespace mstd
{
class cAbstractException;
}

namespace mcs
{
class cInterfaceDep;
class cModuleMgr;

/// A module that lives in a module manager: it has a number, an address and a location, is announced to the others
/// once, can require other components to outlive it, and can depend on interfaces of others.
///
/// Nothing happens at the moment it is asked for: to add a dependency, to change a requirement or to remove a component
/// only sets a mark and asks for a pass of the manager, which does the work on the thread of the work queue.
///
/// A component must not require, over however many others, itself: see findRequirementCycle().
class MORTISE_API cAbstractComponent : public cAbstractModule
{
public:
  explicit cAbstractComponent(cModuleMgr& manager);
  /// For components made by a class loader.
  cAbstractComponent(cModuleMgr& manager, msa::cReferenceFrame& frame);
  ~cAbstractComponent() override;

  bool isPlugIn() const override;
  bool isComponent() const override;
  /// A text for derived classes; the library does not read it.
  virtual mstd::cAsciiString isSpecific() const;
  /// For derived classes; the library does not read it. False.
  virtual bool explicitLocal() const;
  /// The number of its work queue in its address: 1.
  virtual unsigned int fixedQueueID() const;
  /// The number that it insists on, or 0 for any.
  virtual unsigned int fixedModuleID() const;
  /// True if it runs in this process. Otherwise it stands for a component elsewhere, and its location is its own to
  /// set.
  virtual bool isLocal() const;
  /// Called once, right after the announcement. What it throws marks the component for removal.
  virtual void notifyComponentRegistered();
  /// Called by cModuleMgr::submitShortlyRemove().
  virtual void notifyShortlyRemove();
  /// Its vote on closing the application: true.
  virtual bool applicationCloseAdvisable(cAbstractKROApp& app);
  /// The dependencies that it owns, in the order in which they were added.
  virtual mstd::tPtrVector<cInterfaceDep> const& interfaceDeps() const;
  /// While true, the component stays unannounced, and pass follows upon pass.
  virtual bool delayAnnouncement() const;

  cModuleMgr& moduleMgr() const { return mManager; }
  /// Not valid until the component is added to the manager.
  cComponentAddr const& address() const { return mAddress; }
  /// The address of whoever added it.
  cComponentAddr const& deployedBy() const { return mDeployedBy; }
  /// The components that are to outlive it; not owned.
  mstd::tList<cAbstractComponent*> const& localRequiredComponents() const { return mRequired; }
  bool componentDepModified() const { return mComponentDepModified; }
  cComponentLocation const& location() const { return mLocation; }
  /// The location, to be changed.
  cComponentLocation& componentLocation() { return mLocation; }
  /// True from removeLater() on, for ever.
  bool toRemove() const { return mToRemove; }
  bool interfaceDepModified() const { return mInterfaceDepModified; }
  bool announced() const { return mAnnounced; }

  /// Gives the component its number. The location of one that is not local keeps its address.
  void setComponentID(unsigned int iId);
  void setDeployedBy(cComponentAddr const& address) { mDeployedBy = address; }
  /// \name For the pass of the manager
  /// @{
  void setAnnounced() { mAnnounced = true; }
  void resetInterfaceDepModification() { mInterfaceDepModified = false; }
  void resetComponentDepModification() { mComponentDepModified = false; }
  /// Recalculates every dependency, also those that are added meanwhile. One that goes meanwhile moves the others up,
  /// so that the one behind the current one may be left out.
  void recalcInterfaceDeps();
  /// @}

  /// Marks the component for removal, and asks for a pass. It goes as soon as no other one requires it; those that do
  /// are marked, too. In a circle of requirements nobody ever goes, and pass follows upon pass.
  void removeLater();
  /// Marks the dependencies as changed, and asks for a pass.
  void modifyInterfaceDep();
  /// Marks the required components as changed, and asks for a pass.
  void modifyComponentDep();

  /// Appends a dependency, which stays its owner's; dependencies do this by themselves.
  void addInterfaceDep(cInterfaceDep* pDep);
  /// Takes a dependency out wherever it stands, without deleting it.
  void removeInterfaceDep(cInterfaceDep* pDep);

  /// Says that `pComponent`, which is not owned, must outlive this one. Null is ignored, and nothing said twice is
  /// dropped.
  void addLocalRequiredComponent(cAbstractComponent* pComponent);
  bool requiresComponent(cAbstractComponent const* pComponent) const;
#if __cplusplus < 202002L
  /// requiresComponent(); a keyword from C++20 on.
  bool requires(cAbstractComponent const* pComponent) const
  {
    return requiresComponent(pComponent);
  }
#endif

  /// Appends a prototype, which becomes owned, of an exception that may come from elsewhere.
  void registerRemoteException(mstd::tAutoPtr<mstd::cAbstractException> pPrototype);
  /// A new exception of the first prototype with this class name, or nothing. The stream is not read: to fill the
  /// exception from it is the caller's.
  mstd::tAutoPtr<mstd::cAbstractException> tryCreateRegisteredException(mstd::cAsciiString const& typeName,
                                                                        msa::cAbstractDeserializer& deserializer);

private:
  cModuleMgr& mManager;
  cComponentAddr mAddress;
  cComponentAddr mDeployedBy;
  mstd::tList<cAbstractComponent*> mRequired;
  bool mComponentDepModified;
  cComponentLocation mLocation;
  bool mToRemove;
  bool mInterfaceDepModified;
  mstd::tPtrVector<cInterfaceDep> mInterfaceDeps; // not owned
  bool mAnnounced;
  mstd::tPtrList<mstd::cAbstractException> mExceptions;
  mstd::cLife mLife;
};

} // namespace mcs

#endif
