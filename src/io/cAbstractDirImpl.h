#ifndef MORTISE_IO_CABSTRACTDIRIMPL_H
#define MORTISE_IO_CABSTRACTDIRIMPL_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

class cDirInfo;
class cFs;

/// What stands behind a cDir: a position in the listing of a directory. A fresh one stands at the first entry.
class MORTISE_API cAbstractDirImpl
{
public:
  cAbstractDirImpl(cFs const& fs, mucs::cString const& path);
  cAbstractDirImpl(cAbstractDirImpl const&) = default;
  cAbstractDirImpl& operator=(cAbstractDirImpl const&) = delete;
  virtual ~cAbstractDirImpl();

  virtual void setNext() = 0;
  /// The entry, with its path as it can be used.
  virtual cDirInfo element() const = 0;
  virtual bool isEnd() const = 0;
  /// Another one at the same position.
  virtual mstd::tAutoPtr<cAbstractDirImpl> createCopy() const = 0;
};

} // namespace mio

#endif
