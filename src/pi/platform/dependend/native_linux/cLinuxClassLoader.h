#ifndef MORTISE_PI_PLATFORM_CLINUXCLASSLOADER_H
#define MORTISE_PI_PLATFORM_CLINUXCLASSLOADER_H

#include "mcs/module.h"
#include "pi/cAbstractClassLoader.h"

namespace mpi
{

/// Module library held by the dynamic loader, with all its symbols bound at once and in a scope of its own.
class MORTISE_API cLinuxClassLoader : public cAbstractClassLoader
{
public:
  /// Loads the library; mcs::cModuleLoadException if that fails or if it is no module. Nothing stays mapped then.
  explicit cLinuxClassLoader(mucs::cString const& fileName);
  ~cLinuxClassLoader() override;

  /// Unloads what is loaded and loads this. A library that turns out to be no module stays loaded, with the entry
  /// points found so far, and those alone.
  void loadLibrary(mucs::cString const& fileName);
  /// The entry points are not to be used from then on.
  void unloadLibrary();

  mcs::cAbstractPlugIn* instance(msa::cReferenceFrame& frame) override;
  mcs::cAbstractComponent* instance(msa::cReferenceFrame& frame, mcs::cModuleMgr& manager) override;
  void getModuleVersion(unsigned int& iMajor, unsigned int& iMinor) const override;
  void getModuleKROVersion(unsigned int& iMajor, unsigned int& iMinor) const override;

private:
  template <typename Function>
  bool find(char const* pName, Function*& rpFound) const;

  mcs::tModuleInitPlugIn* mpInitPlugIn;
  mcs::tModuleInitComponent* mpInitComponent;
  mcs::tModuleVersion* mpModuleVersion;
  mcs::tModuleVersion* mpKROVersion;
  void* mpHandle;
};

} // namespace mpi

#endif
