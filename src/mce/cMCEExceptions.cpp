#include "mce/cMCEExceptions.h"

#include "mce/cUnsupportedExtensionException.h"

namespace mce
{

void cMCEExceptions::throwUnsupportedExtension(mstd::cAsciiString const& className,
                                               mstd::cAsciiString const& extensionName, bool bOtherExtensionsFound)
{
  throw cUnsupportedExtensionException(className, extensionName, bOtherExtensionsFound);
}

} // namespace mce
