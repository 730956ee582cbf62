#ifndef MORTISE_MCS_CPLUGINMGR_H
#define MORTISE_MCS_CPLUGINMGR_H

#include "std/tAutoPtr.h"
#include "std/tPtrList.h"

namespace msa
{
class cReferenceFrame;
}

namespace mucs
{
class cString;
}

namespace mcs
{
class cAbstractPlugIn;
class cPlugInGuard;

/// Loads plug-ins from shared libraries and keeps them. Plug-ins that use each other are to be unloaded in order by
/// their owner: the list goes from first to last.
class MORTISE_API cPlugInMgr
{
public:
  cPlugInMgr();
  cPlugInMgr(cPlugInMgr const&) = delete; // it owns plug-ins
  cPlugInMgr& operator=(cPlugInMgr const&) = delete;
  virtual ~cPlugInMgr();

  /// In the order of registration.
  mstd::tPtrList<cPlugInGuard> const& plugIns() const { return mPlugIns; }

  /// Loads the library of a module and makes its plug-in. `name` is the plain name, with or without a directory; prefix
  /// and ending of the system's file names are put to it. The guard is the caller's: drop it to unload the library, or
  /// register it. A failure raises cModuleLoadException, or what the plug-in raises, and leaves nothing loaded.
  mstd::tAutoPtr<cPlugInGuard> loadPlugIn(mucs::cString const& name, msa::cReferenceFrame& frame);
  /// The same with an empty frame.
  mstd::tAutoPtr<cPlugInGuard> loadPlugIn(mucs::cString const& name);
  void registerPlugIn(mstd::tAutoPtr<cPlugInGuard> pGuard);
  /// Destroys every entry of this plug-in at once; an unknown one changes nothing.
  void unloadPlugIn(cAbstractPlugIn* pPlugIn);
  void unloadAll();

private:
  mstd::tPtrList<cPlugInGuard> mPlugIns;
};

} // namespace mcs

#endif
