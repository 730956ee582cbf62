#include "mce/cUnsupportedExtensionException.h"

#include "std/exceptionMessage.h"

#include <utility>

namespace mce
{
cUnsupportedExtensionException::cUnsupportedExtensionException(mstd::cAsciiString const& className,
                                                               mstd::cAsciiString const& extensionName,
                                                               bool bOtherExtensionsFound)
    : cBugException(mstd::exceptionMessage("$MTR$Extension type \"%type%\" not supported in \"%extension%\"!",
                                           className, extensionName),
                    0, 0),
      mClassName(className), mExtensionName(extensionName), mOtherExtensionsFound(bOtherExtensionsFound)
{
  setMsg(mstd::exceptionMessage("$MTR$No %s% of type \"%specialized%\" found!", className, extensionName));
}

cUnsupportedExtensionException::cUnsupportedExtensionException(cUnsupportedExtensionException const& other)
    : cBugException(other), mOtherExtensionsFound(other.mOtherExtensionsFound)
{
  copyField(mClassName, other.mClassName);
  copyField(mExtensionName, other.mExtensionName);
}

void cUnsupportedExtensionException::swap(cUnsupportedExtensionException& other) noexcept
{
  cBugException::swap(other);
  mClassName.swap(other.mClassName);
  mExtensionName.swap(other.mExtensionName);
  std::swap(mOtherExtensionsFound, other.mOtherExtensionsFound);
}

MORTISE_EXCEPTION_BODY(cUnsupportedExtensionException)
} // namespace mce
