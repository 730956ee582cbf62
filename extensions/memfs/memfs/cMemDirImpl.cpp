#include "memfs/cMemDirImpl.h"

#include "io/cDirInfo.h"
#include "io/cPermissions.h"
#include "memfs/cMemFsExceptions.h"

#include <errno.h>

namespace mmem
{

cMemDirImpl::cMemDirImpl(mio::cFs const& fs, mstd::tSharedObject<cMemTree> const& pTree, mucs::cString const& path,
                         int flags)
    : mio::cAbstractDirImpl(fs, path), mFs(fs), mpTree(pTree), mPath(path), mpNames(new cNames), miIndex(0)
{
  cMemPlace place;
  cMemFsExceptions::throwIfError("opendir", mpTree->find(path, true, place), path);
  cMemNode& directory = *place.mpNode;
  if (!directory.isDirectory())
  {
    cMemFsExceptions::throwOSError("opendir", ENOTDIR, path);
  }
  if (!directory.permits(mio::cPermissions::OwnerRead))
  {
    cMemFsExceptions::throwOSError("opendir", EACCES, path);
  }
  if (mPath.at(mPath.length() - 1) != '/')
  {
    mPath.appendC("/");
  }
  if ((flags & mio::DirHideDot) == 0)
  {
    mpNames->append(".");
  }
  if ((flags & mio::DirHideDotDot) == 0)
  {
    mpNames->append("..");
  }
  for (unsigned int i = 0; i < directory.length(); ++i)
  {
    mpNames->append(directory.entry(i).mName);
  }
  directory.touchRead();
  mpTree->addUser();
}

cMemDirImpl::cMemDirImpl(cMemDirImpl const& other)
    : mio::cAbstractDirImpl(other), mFs(other.mFs), mpTree(other.mpTree), mPath(other.mPath), mpNames(other.mpNames),
      miIndex(other.miIndex)
{
  mpTree->addUser();
}

cMemDirImpl::~cMemDirImpl()
{
  mpTree->removeUser();
}

void cMemDirImpl::setNext()
{
  if (!isEnd())
  {
    ++miIndex;
  }
}

mio::cDirInfo cMemDirImpl::element() const
{
  mucs::cString path(mPath);
  if (!isEnd())
  {
    path += mpNames->at(miIndex);
  }
  return mio::cDirInfo(mFs, path);
}

bool cMemDirImpl::isEnd() const
{
  return miIndex == mpNames->length();
}

mstd::tAutoPtr<mio::cAbstractDirImpl> cMemDirImpl::createCopy() const
{
  return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cMemDirImpl(*this));
}

} // namespace mmem
