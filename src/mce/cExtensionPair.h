#ifndef MORTISE_MCE_CEXTENSIONPAIR_H
#define MORTISE_MCE_CEXTENSIONPAIR_H

#include "mcs/cPlugInGuard.h"

namespace mce
{
class cAbstractCoreExtension;

/// An extension, and what keeps it: the plug-in that it is part of, with the class loader of that, or this entry.
class MORTISE_API cExtensionPair
{
public:
  /// Takes the extension over. No extension is an assertion failure.
  explicit cExtensionPair(mstd::tAutoPtr<cAbstractCoreExtension> pExtension);
  /// Takes the plug-in over, with the class loader that it came from. No plug-in is an assertion failure; that and what
  /// the plug-in raises when it is asked for its extension destroy the plug-in, and leave the class loader alone.
  explicit cExtensionPair(mstd::tAutoPtr<mcs::cAbstractPlugIn> pPlugIn);
  cExtensionPair(cExtensionPair const&) = delete; // it owns the extension
  cExtensionPair& operator=(cExtensionPair const&) = delete;
  /// The plug-in goes first, then its class loader, and with that the library.
  ~cExtensionPair();

  cAbstractCoreExtension& extension() const { return *mpExtension; }
  mcs::cAbstractPlugIn* plugIn() const { return mPlugIn.plugIn(); }

private:
  cAbstractCoreExtension* mpExtension;
  mcs::cPlugInGuard mPlugIn;
  mstd::tAutoPtr<cAbstractCoreExtension> mpHolder;
};

} // namespace mce

#endif
