#ifndef MORTISE_MCS_CPLUGINGUARD_H
#define MORTISE_MCS_CPLUGINGUARD_H

#include "std/tAutoPtr.h"

namespace mcs
{
class cAbstractPlugIn;

/// Owns a plug-in and the class loader that it came from, so that the library stays exactly as long as the plug-in's
/// code can run: the plug-in goes first, then the loader.
class MORTISE_API cPlugInGuard
{
public:
  explicit cPlugInGuard(mstd::tAutoPtr<cAbstractPlugIn> pPlugIn);
  cPlugInGuard(cPlugInGuard const&) = delete; // one guard owns the plug-in
  cPlugInGuard& operator=(cPlugInGuard const&) = delete;
  ~cPlugInGuard();

  /// Null if the guard was made from nothing.
  cAbstractPlugIn* plugIn() const { return mpPlugIn; }
  cAbstractPlugIn* operator->() const { return mpPlugIn; }

private:
  cAbstractPlugIn* mpPlugIn;
};

} // namespace mcs

#endif
