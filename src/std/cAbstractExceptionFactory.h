#ifndef MORTISE_STD_CABSTRACTEXCEPTIONFACTORY_H
#define MORTISE_STD_CABSTRACTEXCEPTIONFACTORY_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mstd
{
class cAbstractException;
class cAsciiString;

/// Makes the exceptions whose names come from a stream. Whoever receives exceptions supplies one; the library has
/// none of its own. cAbstractException::createFromStream() calls it once for each record.
class MORTISE_API cAbstractExceptionFactory
{
public:
  virtual ~cAbstractExceptionFactory();
  /// A default-constructed exception of the class `typeName` (without namespace). Must throw, anything, if the name
  /// is unknown, and must not return an empty pointer.
  virtual tAutoPtr<cAbstractException> createException(cAsciiString const& typeName) const = 0;
};
} // namespace mstd

#endif
