#ifndef MORTISE_MEMFS_CMEMTREE_H
#define MORTISE_MEMFS_CMEMTREE_H

#include "memfs/cMemNode.h"
#include "std/tSharedObject.h"
#include "std/tVector.h"
#include "ucs/cString.h"

namespace mmem
{

/// Where a path leads.
class cMemPlace
{
public:
  cMemPlace() : mpParent(0), mHasFinalSlash(false) {}

  cMemNode* mpParent;  ///< The directory in which the last name stands or would stand; null for the root and for "..".
  mucs::cString mName; ///< The last name.
  cMemNode::cHandle mpNode; ///< Empty if there is nothing.
  bool mHasFinalSlash;      ///< The path means a directory.
};

/// The files of a memory file system. It lives while the file system does, and while something of it is open.
///
/// The operations return 0 or an error number.
class cMemTree
{
public:
  cMemTree(mucs::cString const& mountPoint, unsigned long long iCapacity);
  cMemTree(cMemTree const&) = delete;
  cMemTree& operator=(cMemTree const&) = delete;
  ~cMemTree();

  /// Ends in a slash.
  mucs::cString const& mountPoint() const { return mMountPoint; }
  bool isMountPoint(mucs::cString const& path) const;
  /// Whether a path stands at or below the mount point.
  bool contains(mucs::cString const& path) const;
  cMemSpace& space() const { return *mpSpace; }

  /// How many files and listings are open.
  unsigned int users() const { return miUsers; }
  void addUser() { ++miUsers; }
  void removeUser() { --miUsers; }

  /// Where `path` leads. Without a node there, ENOENT; the place then has a parent if only the last name is missing.
  int find(mucs::cString const& path, bool followLast, cMemPlace& place) const;
  /// Makes a node at a place where there is none.
  int create(cMemPlace& place, mio::cFileInfoFlags::Type type, unsigned long long iPermissions);
  int makeDirectory(mucs::cString const& path);
  int makeLink(mucs::cString const& target, mucs::cString const& path);
  /// Removes a file, a link or an empty directory.
  int remove(mucs::cString const& path, bool mayBeDirectory);
  int rename(mucs::cString const& from, mucs::cString const& to);

private:
  typedef mstd::tVector<mucs::cString> cNames;

  bool relativeNames(mucs::cString const& path, cNames& names) const;
  static int mayChange(cMemNode const& directory);

  mucs::cString mMountPoint;
  cNames mMountNames;
  mstd::tSharedObject<cMemSpace> mpSpace;
  cMemNode::cHandle mpRoot;
  unsigned int miUsers;
};

} // namespace mmem

#endif
