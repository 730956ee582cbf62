#ifndef MORTISE_MCE_CABSTRACTCOREEXTENSION_H
#define MORTISE_MCE_CABSTRACTCOREEXTENSION_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
class cBuildInfo;
template <class T>
class tVector;
} // namespace mstd

namespace mce
{

/// Something that makes objects by the name of their type: encoders, serializers or network addresses. What it makes is
/// the matter of the typed bases.
class MORTISE_API cAbstractCoreExtension
{
public:
  enum ExtensionType
  {
    NetAddress = 1, ///< cNetAbstractAddressExtension
    SA = 2,         ///< cAbstractSAExtension
    EnDec = 3       ///< cAbstractEnDecExtension
  };

  cAbstractCoreExtension() = default;
  cAbstractCoreExtension(cAbstractCoreExtension const&) = delete; // somebody may hold its objects
  cAbstractCoreExtension& operator=(cAbstractCoreExtension const&) = delete;
  virtual ~cAbstractCoreExtension();

  virtual ExtensionType extensionType() const = 0;
  virtual mstd::cAsciiString description() const = 0;
  virtual mstd::cBuildInfo const& buildInfo() const = 0;
  /// True if it can make the type of this name, which comes in upper case.
  virtual bool supports(mstd::cAsciiString const& name) const = 0;
  /// Appends the names of what it makes; nothing by default.
  virtual void provides(mstd::tVector<mstd::cAsciiString>& names) const;
};

} // namespace mce

#endif
