#ifndef MORTISE_MCE_CCOREEXTENSIONMGR_H
#define MORTISE_MCE_CCOREEXTENSIONMGR_H

#include "mce/cAbstractCoreExtension.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "std/tPtrList.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
class cReferenceFrame;
} // namespace msa

namespace mucs
{
class cAbstractEnDec;
class cString;
} // namespace mucs

namespace mce
{
class cExtensionPair;
class cNetAbstractAddress;

/// The core extensions of a process: makes encoders, serializers and network addresses by the name of their type, so
/// that nothing in the core knows the classes. An earlier extension wins over a later one of the same type.
///
/// What an extension from a library has made must be gone before clear(), since its code goes with the library.
class MORTISE_API cCoreExtensionMgr
{
public:
  cCoreExtensionMgr();
  cCoreExtensionMgr(cCoreExtensionMgr const&) = delete; // it owns extensions
  cCoreExtensionMgr& operator=(cCoreExtensionMgr const&) = delete;
  virtual ~cCoreExtensionMgr();

  /// Loads the library of a module and appends its extension. `file` is the plain name, with or without a directory. A
  /// library that cannot be loaded raises mcs::cModuleLoadException, one without core extension
  /// mstd::cRuntimeException; nothing stays loaded then.
  void load(mucs::cString const& file, msa::cReferenceFrame& frame);
  void load(mucs::cString const& file);
  void load(mstd::cAsciiString const& file, msa::cReferenceFrame& frame);
  /// True if the file of such a library is there; whether it is loaded is not asked.
  bool has(mucs::cString const& file) const;
  /// Appends an extension that is linked into the program.
  void add(mstd::tAutoPtr<cAbstractCoreExtension> pExtension);

  /// The first extension of any kind that supports this name in upper case, or null.
  cAbstractCoreExtension* hasExtension(mstd::cAsciiString const& name) const;
  /// Collects what the extensions of a kind offer, in their order.
  void provides(cAbstractCoreExtension::ExtensionType eType, mstd::tVector<mstd::cAsciiString>& names);
  /// \name Making
  /// A type that nobody supports raises cUnsupportedExtensionException.
  /// @{
  mstd::tAutoPtr<mucs::cAbstractEnDec> createEnDec(mstd::cAsciiString const& name) const;
  mstd::tAutoPtr<msa::cAbstractSerializer> createSerializer(mstd::cAsciiString const& type,
                                                            mstd::cAsciiString const& argument) const;
  mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mstd::cAsciiString const& type,
                                                                mstd::tConstArrayRef<char> const& data) const;
  mstd::tAutoPtr<msa::cAbstractDeserializer> createDeserializer(mstd::cAsciiString const& type,
                                                                mucs::cString const& file) const;
  mstd::tAutoPtr<cNetAbstractAddress> createNetAddress(mstd::cAsciiString const& type) const;
  /// @}

  /// Destroys the extensions from first to last, and with them their libraries.
  void clear();

private:
  template <class T>
  T& findExtension(cAbstractCoreExtension::ExtensionType eType, char const* pKind,
                   mstd::cAsciiString const& name) const;

  mstd::tPtrList<cExtensionPair> mExtensions;
};

} // namespace mce

#endif
