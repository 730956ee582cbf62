#ifndef MORTISE_PI_CGLOBALCACHES_H
#define MORTISE_PI_CGLOBALCACHES_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"
#include "std/tHash.h"
#include "ucs/cString.h"

namespace mpi
{

/// Caches that belong to the process. Each exists only if the application asks for it.
class MORTISE_API cGlobalCaches
{
public:
  /// From the text of a path to its normal form.
  typedef mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<1024u>> tPathFixupHash;

  cGlobalCaches();
  cGlobalCaches(cGlobalCaches const&) = delete; // the caches are the process's
  cGlobalCaches& operator=(cGlobalCaches const&) = delete;
  ~cGlobalCaches();

  /// The table of fixed-up paths, or null if there is none. Valid until createPathFixupHash() or clear().
  tPathFixupHash* hasPathFixupHash() const { return mpPathFixupHash.get(); }
  /// Makes a new, empty table; an older one is destroyed. Raises std::bad_alloc, with the older one kept.
  void createPathFixupHash();
  /// Destroys the table.
  void clear();

private:
  mstd::tAutoPtr<tPathFixupHash> mpPathFixupHash;
};

} // namespace mpi

#endif
