#ifndef MORTISE_MCS_CABSTRACTMODULE_H
#define MORTISE_MCS_CABSTRACTMODULE_H

#include "mcs/cAbstractInterfaceProvider.h"
#include "mcs/cModuleInfo.h"
#include "rmi/cConnectable.h"

namespace mpi
{
class cAbstractClassLoader;
}

namespace msa
{
class cReferenceFrame;
}

namespace mcs
{

/// What the system can describe, configure and, if it came from a shared library, unload: a component or a plug-in. It
/// offers what it does through its interfaces.
class MORTISE_API cAbstractModule : public mrmi::cConnectable, public cAbstractInterfaceProvider
{
public:
  cAbstractModule();
  /// For objects made by a class loader; the frame is not read.
  explicit cAbstractModule(msa::cReferenceFrame& frame);
  /// Gives the reference to the class loader back, first of all.
  ~cAbstractModule() override;

  virtual bool isPlugIn() const = 0;
  virtual bool isComponent() const = 0;
  /// \name Settings
  /// Nothing, unless a derived class has some.
  /// @{
  virtual void storeSettings(msa::cAbstractSerializer& serializer) const;
  virtual void loadSettings(msa::cAbstractDeserializer& deserializer);
  virtual void applySettings();
  /// @}

  cModuleInfo const& info() const { return mInfo; }
  /// The information, to be changed.
  cModuleInfo& moduleInfo() { return mInfo; }

  /// True if the module is linked into the program, that is, comes from no class loader.
  bool isStatic() const { return mpClassLoader == nullptr; }
  /// The shared library it came from, or null; not owned.
  mpi::cAbstractClassLoader* classLoader() const { return mpClassLoader; }
  /// Says where the module came from. The reference to the loader was counted when it made the module; it is given back
  /// when the module goes.
  void setClassLoader(mpi::cAbstractClassLoader* pLoader, mstd::cAsciiString const& context);

private:
  mpi::cAbstractClassLoader* mpClassLoader;
  cModuleInfo mInfo;
};

} // namespace mcs

#endif
