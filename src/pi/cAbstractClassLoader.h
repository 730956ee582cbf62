#ifndef MORTISE_PI_CABSTRACTCLASSLOADER_H
#define MORTISE_PI_CABSTRACTCLASSLOADER_H

#include "ucs/cString.h"

namespace mcs
{
class cAbstractComponent;
class cAbstractPlugIn;
class cModuleMgr;
} // namespace mcs

namespace msa
{
class cReferenceFrame;
}

namespace mpi
{

/// A loaded module library: it makes objects and counts those that live, so that their owner knows when the library may
/// go. It goes with this object, whatever the count says.
///
/// A library is a module if it exports "moduleVersion", "kroVersion" and at least one of "moduleInitPlugIn" and
/// "moduleInitComponent", undecorated; MORTISE_MODULE does it.
///
/// Threads: the count is plain; all belongs to the thread of the work queue.
class MORTISE_API cAbstractClassLoader
{
public:
  explicit cAbstractClassLoader(mucs::cString const& libFileName);
  cAbstractClassLoader(cAbstractClassLoader const&) = delete; // it owns the library
  cAbstractClassLoader& operator=(cAbstractClassLoader const&) = delete;
  virtual ~cAbstractClassLoader();

  /// Makes the plug-in of the library, which becomes the caller's, and counts it. mcs::cModuleLoadException if the
  /// library has none or makes none.
  virtual mcs::cAbstractPlugIn* instance(msa::cReferenceFrame& frame) = 0;
  /// Makes a component in the same way.
  virtual mcs::cAbstractComponent* instance(msa::cReferenceFrame& frame, mcs::cModuleMgr& manager) = 0;
  /// \name Versions
  /// What the numbers mean is between the caller and the module.
  /// @{
  virtual void getModuleVersion(unsigned int& iMajor, unsigned int& iMinor) const = 0;
  virtual void getModuleKROVersion(unsigned int& iMajor, unsigned int& iMinor) const = 0;
  /// @}

  void incRef() { ++miReferences; }
  void decRef() { --miReferences; }
  unsigned int numReferences() const { return miReferences; }
  /// True if nothing that was made here lives any more.
  bool isUnused() const { return miReferences == 0; }
  /// The name as it was given.
  mucs::cString const& libFileName() const { return mLibFileName; }

private:
  unsigned int miReferences;
  mucs::cString mLibFileName;
};

} // namespace mpi

#endif
