#include "memfs/cMemTree.h"

#include "io/cPermissions.h"

#include <errno.h>

namespace mmem
{

namespace
{

unsigned int const maximumLinks = 40;
unsigned int const maximumName = 255;
unsigned long long const directoryPermissions = mio::cPermissions::OwnerRead | mio::cPermissions::OwnerWrite |
                                                mio::cPermissions::OwnerExecute | mio::cPermissions::GroupRead |
                                                mio::cPermissions::GroupExecute | mio::cPermissions::OthersRead |
                                                mio::cPermissions::OthersExecute;
unsigned long long const linkPermissions = 0xFF8; // all may do all: what counts is what the link leads to

bool isDot(mucs::cString const& name)
{
  return name.length() == 1 && name.at(0) == '.';
}

bool isDotDot(mucs::cString const& name)
{
  return name.length() == 2 && name.at(0) == '.' && name.at(1) == '.';
}

bool hasFinalSlash(mucs::cString const& path)
{
  return !path.empty() && path.at(path.length() - 1) == '/';
}

/// The names of a path, without those that lead nowhere.
void split(mucs::cString const& path, mstd::tVector<mucs::cString>& names)
{
  unsigned int begin = 0;
  for (unsigned int i = 0; i <= path.length(); ++i)
  {
    if (i == path.length() || path.at(i) == '/')
    {
      if (i > begin)
      {
        mucs::cString name;
        name.append(path.data(begin, i - begin), i - begin);
        if (!isDot(name))
        {
          names.append(name);
        }
      }
      begin = i + 1;
    }
  }
}

/// The names with each ".." and what it takes back left out, without a look at what stands there.
void reduce(mstd::tVector<mucs::cString>& names)
{
  mstd::tVector<mucs::cString> reduced;
  for (unsigned int i = 0; i < names.length(); ++i)
  {
    if (!isDotDot(names.at(i)))
    {
      reduced.append(names.at(i));
    }
    else if (!reduced.empty())
    {
      reduced.erase(reduced.length() - 1);
    }
  }
  names.swap(reduced);
}

bool beginsWith(mstd::tVector<mucs::cString> const& names, mstd::tVector<mucs::cString> const& start)
{
  if (names.length() < start.length())
  {
    return false;
  }
  for (unsigned int i = 0; i < start.length(); ++i)
  {
    if (names.at(i) != start.at(i))
    {
      return false;
    }
  }
  return true;
}

} // namespace

cMemTree::cMemTree(mucs::cString const& mountPoint, unsigned long long iCapacity)
    : mpSpace(new cMemSpace(iCapacity)),
      mpRoot(new cMemNode(mpSpace, mio::cFileInfoFlags::Directory, directoryPermissions)), miUsers(0)
{
  split(mountPoint, mMountNames);
  reduce(mMountNames);
  mMountPoint = "/";
  for (unsigned int i = 0; i < mMountNames.length(); ++i)
  {
    mMountPoint += mMountNames.at(i);
    mMountPoint.appendC("/");
  }
}

cMemTree::~cMemTree()
{
  mpRoot->clear();
}

bool cMemTree::relativeNames(mucs::cString const& path, cNames& names) const
{
  if (path.empty() || (path.at(0) != '/' && !mMountNames.empty()))
  {
    return false;
  }
  split(path, names);
  cNames reduced(names);
  reduce(reduced);
  if (!beginsWith(reduced, mMountNames))
  {
    return false;
  }
  // What stands behind the mount point is walked name by name, since a ".." behind a link leads elsewhere. A path that
  // comes there on other ways is taken as its text says.
  if (!beginsWith(names, mMountNames))
  {
    names.swap(reduced);
  }
  cNames rest;
  for (unsigned int i = mMountNames.length(); i < names.length(); ++i)
  {
    rest.append(names.at(i));
  }
  names.swap(rest);
  return true;
}

bool cMemTree::contains(mucs::cString const& path) const
{
  cNames names;
  return relativeNames(path, names);
}

bool cMemTree::isMountPoint(mucs::cString const& path) const
{
  cNames names;
  if (!relativeNames(path, names))
  {
    return false;
  }
  reduce(names);
  return names.empty();
}

int cMemTree::find(mucs::cString const& path, bool followLast, cMemPlace& place) const
{
  cNames names;
  if (!relativeNames(path, names))
  {
    return ENOENT;
  }
  place.mHasFinalSlash = hasFinalSlash(path);
  cNames todo; // the next one last
  for (unsigned int i = names.length(); i > 0; --i)
  {
    todo.append(names.at(i - 1));
  }
  cMemNode* pCurrent = mpRoot.get();
  unsigned int links = 0;
  while (!todo.empty())
  {
    mucs::cString const name = todo.at(todo.length() - 1);
    todo.erase(todo.length() - 1);
    bool const isLast = todo.empty();
    if (!pCurrent->isDirectory())
    {
      return ENOTDIR;
    }
    if (!pCurrent->permits(mio::cPermissions::OwnerExecute))
    {
      return EACCES;
    }
    place.mpParent = 0;
    place.mName = name;
    if (isDotDot(name))
    {
      pCurrent = pCurrent->parent() != 0 ? pCurrent->parent() : mpRoot.get();
      continue;
    }
    if (name.length() > maximumName)
    {
      return ENAMETOOLONG;
    }
    cMemNode* pNext = pCurrent->find(name);
    if (pNext == 0)
    {
      place.mpParent = isLast ? pCurrent : 0;
      return ENOENT;
    }
    if (pNext->isLink() && (!isLast || followLast || place.mHasFinalSlash))
    {
      if (++links > maximumLinks)
      {
        return ELOOP;
      }
      mucs::cString const& target = pNext->target();
      cNames targetNames;
      if (!target.empty() && target.at(0) == '/')
      {
        if (!relativeNames(target, targetNames))
        {
          return ENOENT; // out of this tree
        }
        pCurrent = mpRoot.get();
      }
      else
      {
        split(target, targetNames);
      }
      if (isLast && hasFinalSlash(target))
      {
        place.mHasFinalSlash = true;
      }
      for (unsigned int i = targetNames.length(); i > 0; --i)
      {
        todo.append(targetNames.at(i - 1));
      }
      continue;
    }
    if (isLast)
    {
      place.mpParent = pCurrent;
    }
    pCurrent = pNext;
  }
  if (place.mHasFinalSlash && !pCurrent->isDirectory())
  {
    return ENOTDIR;
  }
  place.mpNode = pCurrent == mpRoot.get() ? mpRoot : pCurrent->parent()->handleOf(*pCurrent);
  return 0;
}

int cMemTree::mayChange(cMemNode const& directory)
{
  return directory.permits(mio::cPermissions::OwnerWrite | mio::cPermissions::OwnerExecute) ? 0 : EACCES;
}

int cMemTree::create(cMemPlace& place, mio::cFileInfoFlags::Type type, unsigned long long iPermissions)
{
  int const iCode = mayChange(*place.mpParent);
  if (iCode != 0)
  {
    return iCode;
  }
  if (mpSpace->left() < cMemNode::cost)
  {
    return ENOSPC;
  }
  cMemNode::cHandle const pNode(new cMemNode(mpSpace, type, iPermissions));
  place.mpParent->link(place.mName, pNode);
  place.mpNode = pNode;
  return 0;
}

int cMemTree::makeDirectory(mucs::cString const& path)
{
  cMemPlace place;
  // A link stands in the way, wherever it leads.
  mucs::cString text(path);
  while (text.length() > 1 && hasFinalSlash(text))
  {
    text.erase(1);
  }
  int const iCode = find(text, false, place);
  if (iCode == 0)
  {
    return EEXIST;
  }
  return iCode == ENOENT && place.mpParent != 0 ? create(place, mio::cFileInfoFlags::Directory, directoryPermissions)
                                                : iCode;
}

int cMemTree::makeLink(mucs::cString const& target, mucs::cString const& path)
{
  if (target.empty())
  {
    return ENOENT;
  }
  cMemPlace place;
  int iCode = find(path, false, place);
  if (iCode == 0)
  {
    return EEXIST;
  }
  if (iCode != ENOENT || place.mpParent == 0 || place.mHasFinalSlash)
  {
    return iCode;
  }
  if (mpSpace->left() < cMemNode::cost + static_cast<unsigned long long>(target.length()))
  {
    return ENOSPC;
  }
  iCode = create(place, mio::cFileInfoFlags::SymLink, linkPermissions);
  if (iCode == 0)
  {
    place.mpNode->setTarget(target);
  }
  return iCode;
}

int cMemTree::remove(mucs::cString const& path, bool mayBeDirectory)
{
  cMemPlace place;
  int const iCode = find(path, false, place);
  if (iCode != 0)
  {
    return iCode;
  }
  if (place.mpParent == 0)
  {
    return EBUSY; // the mount point, or a way up that names no entry
  }
  if (place.mpNode->isDirectory())
  {
    if (!mayBeDirectory)
    {
      return EISDIR;
    }
    if (place.mpNode->length() != 0)
    {
      return ENOTEMPTY;
    }
  }
  int const iDenied = mayChange(*place.mpParent);
  if (iDenied == 0)
  {
    place.mpParent->unlink(place.mName);
  }
  return iDenied;
}

int cMemTree::rename(mucs::cString const& from, mucs::cString const& to)
{
  if (!contains(from) || !contains(to))
  {
    return EXDEV;
  }
  cMemPlace source;
  int iCode = find(from, false, source);
  if (iCode != 0)
  {
    return iCode;
  }
  cMemPlace target;
  iCode = find(to, false, target);
  if (iCode == ENOENT && target.mpParent != 0 && target.mHasFinalSlash && !source.mpNode->isDirectory())
  {
    return ENOTDIR;
  }
  if (iCode != 0 && (iCode != ENOENT || target.mpParent == 0))
  {
    return iCode;
  }
  if (source.mpParent == 0 || target.mpParent == 0)
  {
    return EBUSY;
  }
  if (source.mpNode == target.mpNode)
  {
    return 0;
  }
  for (cMemNode* pUp = target.mpParent; pUp != 0; pUp = pUp->parent())
  {
    if (pUp == source.mpNode.get())
    {
      return EINVAL; // a directory into itself
    }
  }
  if (target.mpNode.isValid())
  {
    if (source.mpNode->isDirectory() && !target.mpNode->isDirectory())
    {
      return ENOTDIR;
    }
    if (!source.mpNode->isDirectory() && target.mpNode->isDirectory())
    {
      return EISDIR;
    }
    if (target.mpNode->length() != 0)
    {
      return ENOTEMPTY;
    }
  }
  iCode = mayChange(*source.mpParent);
  if (iCode == 0)
  {
    iCode = mayChange(*target.mpParent);
  }
  if (iCode != 0)
  {
    return iCode;
  }
  // The new name first: what can run out of memory has then happened before the old one goes.
  if (target.mpNode.isValid())
  {
    target.mpParent->replace(target.mName, source.mpNode);
  }
  else
  {
    target.mpParent->link(target.mName, source.mpNode);
  }
  source.mpParent->unlink(source.mName);
  source.mpNode->setParent(*target.mpParent);
  return 0;
}

} // namespace mmem
