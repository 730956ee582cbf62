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
class cComponentWalk;
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

  unsigned int lastModuleID() const { return miLastModuleID; }
  void setLastModuleID(unsigned int iId) { miLastModuleID = iId; }
  /// Counts on for a component that insists on the number `iFixed`, or on none (0), and returns its number.
  unsigned int takeModuleID(unsigned int iFixed);

  void startPass() { mManagementWork.start(); }
  /// One walk along the components. With `bFull` components are announced, and signals fired.
  void mngComponentIteration(bool bFull);

  void mngSltProcessComponentManagement();
  void mngSigCompatIdle();

private:
  friend class cComponentWalk;

  void retire(cComponentWalk& walk, bool bFull);
  void announce(cComponentWalk& walk);
  void update(cComponentWalk& walk);
  void sweep();
  void bury();

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
  cComponentWalk* mpWalk;          // the innermost one
  cManagedComponent* mpFirstSwept; // entries that wait for the end of the walks, in the order of their sweep
  cManagedComponent* mpLastSwept;
};

} // namespace mcs

#endif
