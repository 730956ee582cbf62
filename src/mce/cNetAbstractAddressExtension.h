#ifndef MORTISE_MCE_CNETABSTRACTADDRESSEXTENSION_H
#define MORTISE_MCE_CNETABSTRACTADDRESSEXTENSION_H

#include "mce/cAbstractCoreExtension.h"
#include "std/tAutoPtr.h"

namespace mce
{
class cNetAbstractAddress;

/// Makes network addresses.
class MORTISE_API cNetAbstractAddressExtension : public cAbstractCoreExtension
{
public:
  ~cNetAbstractAddressExtension() override;
  ExtensionType extensionType() const override;
  /// The name comes as the caller wrote it.
  virtual mstd::tAutoPtr<cNetAbstractAddress> createNetAddress(mstd::cAsciiString const& name) = 0;
};

} // namespace mce

#endif
