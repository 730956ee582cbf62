#ifndef MORTISE_MCE_CGENERICEXTENSION_H
#define MORTISE_MCE_CGENERICEXTENSION_H

#include "mce/cAbstractCoreExtension.h"
#include "std/cBuildInfo.h"

namespace mce
{

/// An extension that reports itself and can make nothing.
class MORTISE_API cGenericExtension : public cAbstractCoreExtension
{
public:
  cGenericExtension(mstd::cAsciiString const& description, ExtensionType eType);
  ~cGenericExtension() override;

  ExtensionType extensionType() const override;
  mstd::cAsciiString description() const override;
  mstd::cBuildInfo const& buildInfo() const override;
  bool supports(mstd::cAsciiString const& name) const override;

private:
  mstd::cBuildInfo mBuildInfo;
  mstd::cAsciiString mDescription;
  ExtensionType mType;
};

} // namespace mce

#endif
