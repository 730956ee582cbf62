#ifndef MORTISE_MCE_CABSTRACTENDECEXTENSION_H
#define MORTISE_MCE_CABSTRACTENDECEXTENSION_H

#include "mce/cAbstractCoreExtension.h"
#include "std/tAutoPtr.h"

namespace mucs
{
class cAbstractEnDec;
}

namespace mce
{

/// Makes text encoders.
class MORTISE_API cAbstractEnDecExtension : public cAbstractCoreExtension
{
public:
  ~cAbstractEnDecExtension() override;
  ExtensionType extensionType() const override;
  /// The name comes in upper case.
  virtual mstd::tAutoPtr<mucs::cAbstractEnDec> createEnDec(mstd::cAsciiString const& name) = 0;
};

} // namespace mce

#endif
