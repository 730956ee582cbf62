#ifndef MORTISE_MCE_CGENERICPLUGIN_H
#define MORTISE_MCE_CGENERICPLUGIN_H

#include "mce/cGenericExtension.h"
#include "mcs/cAbstractPlugIn.h"

namespace mce
{

/// A plug-in with a cGenericExtension, which counts as one for encoders.
class MORTISE_API cGenericPlugIn : public mcs::cAbstractPlugIn
{
public:
  cGenericPlugIn(msa::cReferenceFrame& frame, mstd::cAsciiString const& description);
  ~cGenericPlugIn() override;

  bool isCoreExtension() const override;
  cAbstractCoreExtension& coreExtension() const override;

private:
  mutable cGenericExtension mExtension;
};

} // namespace mce

#endif
