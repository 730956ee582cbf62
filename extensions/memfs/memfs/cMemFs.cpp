#include "memfs/cMemFs.h"

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "memfs/cMemDirImpl.h"
#include "memfs/cMemFileImpl.h"
#include "memfs/cMemFileInfoImpl.h"
#include "memfs/cMemFsExceptions.h"
#include "memfs/cMemTree.h"
#include "std/cDateTime.h"

#include <errno.h>

namespace mmem
{

static_assert(cMemFs::nodeCost == cMemNode::cost, "users are told what a node costs");

cMemFs::cMemFs(mio::cFs& fs, mucs::cString const& mountPoint, unsigned long long capacity)
    : mio::cAbstractFsImpl(fs), mpTree(new cMemTree(mountPoint, capacity))
{
}

cMemFs::~cMemFs() {}

mucs::cString const& cMemFs::mountPoint() const
{
  return mpTree->mountPoint();
}

unsigned long long cMemFs::capacity() const
{
  return mpTree->space().capacity();
}

void cMemFs::setCapacity(unsigned long long capacity)
{
  mpTree->space().setCapacity(capacity);
}

unsigned long long cMemFs::used() const
{
  return mpTree->space().used();
}

bool cMemFs::exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
                    mio::cFileInfoFlags::TimeStamp stamp) const
{
  cMemPlace place;
  if (mpTree->find(path, followLinks, place) != 0)
  {
    return false;
  }
  if (pDateTime != 0)
  {
    *pDateTime = mstd::cDateTime(place.mpNode->time(stamp), mstd::cDateTime::UTC);
  }
  return true;
}

void cMemFs::remove(mucs::cString const& path)
{
  cMemPlace place;
  if (mpTree->find(path, false, place) == 0)
  {
    cMemFsExceptions::throwIfError("unlink", mpTree->remove(path, true), path);
  }
}

mio::cPath cMemFs::cwd() const
{
  return mio::cPath(mpTree->mountPoint(), false);
}

void cMemFs::mkdir(mucs::cString const& path)
{
  cMemFsExceptions::throwIfError("mkdir", mpTree->makeDirectory(path), path);
}

void cMemFs::rename(mucs::cString const& from, mucs::cString const& to)
{
  cMemFsExceptions::throwIfError("rename", mpTree->rename(from, to), from);
}

bool cMemFs::supportsSymLinks() const
{
  return true;
}

void cMemFs::createSymLink(mucs::cString const& target, mucs::cString const& link)
{
  cMemFsExceptions::throwIfError("symlink", mpTree->makeLink(target, link), link);
}

void cMemFs::setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool followLinks)
{
  cMemPlace place;
  cMemFsExceptions::throwIfError("chmod", mpTree->find(path, followLinks, place), path);
  place.mpNode->setPermissions(permissions.permissions());
}

mstd::tAutoPtr<mio::cAbstractDirImpl> cMemFs::createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                            int flags) const
{
  return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cMemDirImpl(fs, mpTree, path, flags));
}

mstd::tAutoPtr<mio::cAbstractFileInfoImpl> cMemFs::createFileInfoImpl(mio::cFs const& fs,
                                                                      mucs::cString const& path) const
{
  return mstd::tAutoPtr<mio::cAbstractFileInfoImpl>(new cMemFileInfoImpl(fs, mpTree, path));
}

mstd::tAutoPtr<mio::cAbstractFileImpl> cMemFs::createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                              mucs::cString const& path) const
{
  return mstd::tAutoPtr<mio::cAbstractFileImpl>(new cMemFileImpl(fs, device, mpTree, path));
}

bool cMemFs::isUsed() const
{
  return mpTree->users() != 0;
}

bool cMemFs::matches(mucs::cString& path, Operation operation)
{
  switch (operation)
  {
  case OpCwd:
  case OpSupportsSymLinks:
  case OpBind:
    return mpTree->mountPoint().length() == 1; // only where it is all that there is
  case OpUnbind:
    return mpTree->isMountPoint(path);
  default:
    return mpTree->contains(path);
  }
}

} // namespace mmem
