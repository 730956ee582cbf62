#ifndef MORTISE_MCS_CMODULEMGRIMPL_H
#define MORTISE_MCS_CMODULEMGRIMPL_H

#include "pi/cWork.h"
#include "rmi/cConnectable.h"
#include "std/tPtrList.h"

class cAbstractKROApp;

namespace mce
{
class cCoreExtensionMgr;
}

namespace mpi
{
class cAbstractClassLoader;
class cWorkQueue;
} // namespace mpi

namespace mcs
{
class cAbstractComponent;
class cManagedComponent;
class cModuleMgr;

/// Data of a cModuleMgr, and its pass over the components.
class cModuleMgrImpl : public mrmi::cConnectable
{
public:
  explicit cModuleMgrImpl(cModuleMgr& manager);
  ~cModuleMgrImpl() override;

  mce::cCoreExtensionMgr& coreExtensions() const { return mCoreExtensions; }
  mstd::tPtrList<cManagedComponent>& components() { return mComponents; }
  mstd::tPtrList<mpi::cAbstractClassLoader>& classLoaders() { return mClassLoaders; }
  cAbstractKROApp* app() const { return mpApp; }
  void setApp(cAbstractKROApp& app) { mpApp = &app; }

  /// The number for a component that insists on `iFixed`, or on none (0). It is taken by takeModuleID() only, so that
  /// nothing is lost if adding the component fails.
  unsigned int nextModuleID(unsigned int iFixed) const;
  void takeModuleID(unsigned int iId) { miLastModuleID = iId; }

  void startPass() { mManagementWork.start(); }
  /// One walk along the components. With `bFull` components are announced, and signals fired.
  void mngComponentIteration(bool bFull);

  void mngSltProcessComponentManagement();
  void mngSigCompatIdle();

private:
  // Each of these is false if the list was swept meanwhile, by a slot: its component may be gone then.
  bool retire(mstd::tPtrList<cManagedComponent>::iterator position, bool bFull);
  bool announce(cAbstractComponent& component);
  bool update(cAbstractComponent& component);

  cModuleMgr& mManager;
  mpi::cWorkQueue* mpWorkQueue;
  mce::cCoreExtensionMgr& mCoreExtensions;
  mpi::cWork mManagementWork;
  mpi::cWork mIdleWork;
  bool mPassAllowed;
  mstd::tPtrList<cManagedComponent> mComponents;
  mstd::tPtrList<mpi::cAbstractClassLoader> mClassLoaders;
  unsigned int miLastModuleID;
  cAbstractKROApp* mpApp;
  unsigned int miSweeps;
};

} // namespace mcs

#endif
