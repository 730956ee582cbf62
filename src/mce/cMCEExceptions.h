#ifndef MORTISE_MCE_CMCEEXCEPTIONS_H
#define MORTISE_MCE_CMCEEXCEPTIONS_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
}

namespace mce
{

/// The throw functions of core extensions. None of them returns.
class MORTISE_API cMCEExceptions
{
public:
  /// cUnsupportedExtensionException.
  [[noreturn]] static void throwUnsupportedExtension(mstd::cAsciiString const& className,
                                                     mstd::cAsciiString const& extensionName,
                                                     bool bOtherExtensionsFound);
};

} // namespace mce

#endif
