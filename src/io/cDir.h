#ifndef MORTISE_IO_CDIR_H
#define MORTISE_IO_CDIR_H

#include "io/cDirInfo.h"
#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"
#include "std/tConstListRef.h"

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

class cAbstractDirImpl;
class cFs;

/// Place in the listing of a directory: at an entry, or behind the last one.
///
/// A fresh one stands at the first entry. The order of the entries is that of the file system.
///
/// Ownership: a copy is a walk of its own, from the same place.
/// Errors:    what the file system raises, e.g. for a path where no directory is.
/// Threads:   one object belongs to one thread.
class MORTISE_API cDir : public mstd::tConstListRefNode
{
public:
  /// A directory of the system's file system. `flags` are DirFlags.
  cDir(mucs::cString const& path, int flags);
  cDir(char const* path, int flags);
  cDir(cFs const& fs, mucs::cString const& path, int flags);
  cDir(cDir const& other);
  ~cDir();
  cDir& operator=(cDir const& other);
  void swap(cDir& other) noexcept;

  /// Goes to the next entry.
  void setNext();
  /// The entry here. Behind the last one it means nothing.
  cDirInfo element() const;
  bool isEnd() const;
  /// Whether both are behind the end, or at an entry of the same path.
  bool operator==(cDir const& other) const;
  bool operator!=(cDir const& other) const { return !(*this == other); }

  /// The entries from here on, for a loop; they are walked over without moving this.
  mstd::tConstListRef<cDir> list() const;

private:
  cAbstractDirImpl& impl() const;

  mstd::tAutoPtr<cAbstractDirImpl> mpImpl;
};

} // namespace mio

#endif
