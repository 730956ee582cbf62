#ifndef MORTISE_MCE_CUNSUPPORTEDEXTENSIONEXCEPTION_H
#define MORTISE_MCE_CUNSUPPORTEDEXTENSIONEXCEPTION_H

#include "std/cBugException.h"
#include "std/cExceptionText.h"

namespace mce
{
/// No core extension makes this type.
class MORTISE_API cUnsupportedExtensionException : public mstd::cBugException
{
public:
  cUnsupportedExtensionException(mstd::cAsciiString const& className, mstd::cAsciiString const& extensionName,
                                 bool bOtherExtensionsFound);
  MORTISE_EXCEPTION(cUnsupportedExtensionException)

  /// The kind of extension that was asked for, in words.
  mstd::cAsciiString className() const { return mClassName.string(); }
  /// The type that was asked for.
  mstd::cAsciiString extensionName() const { return mExtensionName.string(); }
  /// True if there are extensions of this kind for other types.
  bool otherExtensionsFound() const { return mOtherExtensionsFound; }

private:
  mstd::cExceptionText mClassName;
  mstd::cExceptionText mExtensionName;
  bool mOtherExtensionsFound;
};
} // namespace mce

#endif
