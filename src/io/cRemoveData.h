#ifndef MORTISE_IO_CREMOVEDATA_H
#define MORTISE_IO_CREMOVEDATA_H

#include "std/tAutoPtr.h"
#include "ucs/cString.h"

namespace mio
{

class cDir;
class cFs;

/// A directory that is being removed with all that is in it: how far the walk through it has come.
///
/// Depth costs neither descriptors nor much memory: a directory far down the tree closes its listing and forgets its
/// path while the walk is below it, and lists itself anew when the walk comes back, unless it had no more to deliver.
/// What it had delivered before is gone by then.
class cRemoveData
{
public:
  /// Removes the directory at `path` and all that is in it, without following links.
  static void removeTree(cFs& fs, mucs::cString const& path);

  cRemoveData(cFs& fs, mucs::cString const& path);
  cRemoveData(cRemoveData const&) = delete; // the walk has one record for each directory
  cRemoveData& operator=(cRemoveData const&) = delete;
  ~cRemoveData();

private:
  bool isEnd();
  mucs::cString takeEntry();
  void suspend(mucs::cString const& child);
  void resume(mucs::cString const& child);

  cFs& mrFs;
  mucs::cString mPath;
  unsigned int miLength;      // of the path
  mstd::tAutoPtr<cDir> mpDir; // null while the walk is below, and behind that if nothing was left
  bool mWasAtEnd;
};

} // namespace mio

#endif
