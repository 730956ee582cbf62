#ifndef MORTISE_MP_CSYNCHRONIZABLE_H
#define MORTISE_MP_CSYNCHRONIZABLE_H

#include "mp/cLocker.h"

namespace mp
{

/// Base of objects that threads share: carries the locker that guards them.
class MORTISE_API cSynchronizable
{
public:
  cSynchronizable();
  virtual ~cSynchronizable();

  /// Never null; valid as long as this object.
  mp::cLocker* mutex() { return &mLocker; }

private:
  mp::cLocker mLocker;
};

} // namespace mp

#endif
