#ifndef MORTISE_MEMFS_CMEMNODE_H
#define MORTISE_MEMFS_CMEMNODE_H

#include "io/ioTypes.h"
#include "std/cTime.h"
#include "std/tArray.h"
#include "std/tSharedObject.h"
#include "std/tVector.h"
#include "ucs/cString.h"

namespace mmem
{

/// The room that a tree may take.
class cMemSpace
{
public:
  explicit cMemSpace(unsigned long long iCapacity) : miCapacity(iCapacity), miUsed(0) {}

  unsigned long long capacity() const { return miCapacity; }
  void setCapacity(unsigned long long iCapacity) { miCapacity = iCapacity; }
  unsigned long long used() const { return miUsed; }
  unsigned long long left() const { return miUsed < miCapacity ? miCapacity - miUsed : 0; }
  void take(unsigned long long iSize) { miUsed += iSize; }
  void give(unsigned long long iSize) { miUsed -= iSize; }

private:
  unsigned long long miCapacity;
  unsigned long long miUsed;
};

/// A file, a directory or a link. It lives while it has a name or is open.
class cMemNode
{
public:
  typedef mstd::tSharedObject<cMemNode> cHandle;

  class cEntry
  {
  public:
    cEntry(mucs::cString const& name, cHandle const& pNode) : mName(name), mpNode(pNode) {}

    mucs::cString mName;
    cHandle mpNode;
  };

  /// What a node takes beside its content.
  static constexpr unsigned int cost = 256;

  cMemNode(mstd::tSharedObject<cMemSpace> const& pSpace, mio::cFileInfoFlags::Type type,
           unsigned long long iPermissions);
  cMemNode(cMemNode const&) = delete;
  cMemNode& operator=(cMemNode const&) = delete;
  ~cMemNode();

  mio::cFileInfoFlags::Type type() const { return mType; }
  bool isDirectory() const { return mType == mio::cFileInfoFlags::Directory; }
  bool isLink() const { return mType == mio::cFileInfoFlags::SymLink; }
  unsigned long long size() const;

  unsigned long long permissions() const { return miPermissions; }
  void setPermissions(unsigned long long iPermissions);
  /// Whether the owner has all of these permissions.
  bool permits(unsigned long long iPermissions) const { return (miPermissions & iPermissions) == iPermissions; }

  mstd::cTime time(mio::cFileInfoFlags::TimeStamp stamp) const;
  void touchRead();
  void touchChanged();  ///< The status has changed.
  void touchModified(); ///< The content has changed, and with it the status.

  // Of a file.
  mstd::tArray<char> const& content() const { return mContent; }
  /// Cuts, or fills up with zeros. False, with nothing changed, without room for that.
  bool resize(unsigned int iSize);
  /// Writes behind or over what is there, with zeros in a gap; the room has to be there, see roomAt().
  void write(unsigned int iPos, char const* pData, unsigned int iSize);
  /// How much of `iSize` bytes can be written at `iPos`.
  unsigned int roomAt(unsigned int iPos, unsigned long long iSize) const;

  // Of a link.
  mucs::cString const& target() const { return mTarget; }
  void setTarget(mucs::cString const& target);

  // Of a directory.
  cMemNode* parent() const { return mpParent; }
  unsigned int length() const { return mEntries.length(); }
  cEntry const& entry(unsigned int i) const { return mEntries.at(i); }
  cMemNode* find(mucs::cString const& name) const;
  cHandle handleOf(cMemNode const& child) const;
  /// Puts a node under a name that is free.
  void link(mucs::cString const& name, cHandle const& pNode);
  /// Takes an entry away.
  void unlink(mucs::cString const& name);
  /// Puts another node in the place of an entry.
  void replace(mucs::cString const& name, cHandle const& pNode);
  /// Makes `directory` the parent of this node, which has an entry there.
  void setParent(cMemNode& directory) { mpParent = &directory; }
  /// Removes all below, however deep it is.
  void clear();

private:
  bool search(mucs::cString const& name, unsigned int& index) const;

  mstd::tSharedObject<cMemSpace> mpSpace;
  mio::cFileInfoFlags::Type mType;
  unsigned long long miPermissions;
  mstd::cTime mRead;
  mstd::cTime mModified;
  mstd::cTime mChanged;
  cMemNode* mpParent; // null for the root and for what has no name any more
  mstd::tArray<char> mContent;
  mucs::cString mTarget;
  mstd::tVector<cEntry> mEntries; // sorted by name
};

} // namespace mmem

#endif
