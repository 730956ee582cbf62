#include "io/cFs.h"

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cAbstractFsImpl.h"
#include "io/cDir.h"
#include "io/cFile.h"
#include "io/cFileInfo.h"
#include "io/cIOExceptions.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "io/cProxyFs.h"
#include "io/cRemoveData.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "std/exceptionMessage.h"
#include "std/tConstListRef.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cString.h"

#include <utility>

namespace mio
{

namespace
{

/// A directory's path that ends in "/" asks about what a link leads to, not about the link. The root keeps its slash.
mucs::cString withoutFinalSlash(mucs::cString const& path)
{
  mucs::cString text(path);
  unsigned int length = text.length();
  while (length > 1 && text.at(length - 1) == '/')
  {
    --length;
  }
  text.erase(length, text.length() - length);
  return text;
}

bool existsFollowed(cFileInfo const& info)
{
  return info.exists(true, 0, cFileInfoFlags::LastModification);
}

} // namespace

cFs::cFs() : cFs(mpi::system().defaults.enDec) {}

cFs::cFs(mucs::cAbstractEnDec const& endec) : mpEnDec(&endec, false), mpFirst(0)
{
  mpImpl = mstd::tSharedObject<cAbstractFsImpl>(mpi::cPlatform::createFsImpl(*this));
}

cFs::cFs(cFs const& other) : mpImpl(other.mpImpl), mpEnDec(other.mpEnDec), mpFirst(0) {}

cFs::cFs(cFs const& encoderOf, cNoImpl) : mpEnDec(encoderOf.mpEnDec), mpFirst(0) {}

cFs::~cFs()
{
  // What was made for this handle may live on behind others.
  while (mpFirst != 0)
  {
    mpFirst->leave();
  }
}

cFs& cFs::operator=(cFs const& other)
{
  if (mpImpl != other.mpImpl || mpEnDec != other.mpEnDec)
  {
    cFs copy(other);
    swap(copy);
  }
  return *this;
}

void cFs::swap(cFs& other) noexcept
{
  mpImpl.swap(other.mpImpl);
  mpEnDec.swap(other.mpEnDec);
  std::swap(mpFirst, other.mpFirst);
  adoptImpls();
  other.adoptImpls();
}

void cFs::adoptImpls() noexcept
{
  if (mpFirst != 0)
  {
    mpFirst->mppLink = &mpFirst;
  }
  for (cAbstractFsImpl* pImpl = mpFirst; pImpl != 0; pImpl = pImpl->mpNext)
  {
    pImpl->mpFs = this;
  }
}

void cFs::setImpl(mstd::tAutoPtr<cAbstractFsImpl> pImpl)
{
  if (pImpl.get() == 0)
  {
    cSTDExceptions::throwAssertionFailed("pImpl.get() != 0", "io/cFs", __LINE__);
  }
  mpImpl = mstd::tSharedObject<cAbstractFsImpl>(pImpl);
}

void cFs::installProxy()
{
  if (dynamic_cast<cProxyFs*>(mpImpl.get()) == 0)
  {
    setImpl(mstd::tAutoPtr<cAbstractFsImpl>(new cProxyFs(*this, mpImpl)));
  }
}

bool cFs::exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
                 cFileInfoFlags::TimeStamp stamp) const
{
  return mpImpl->exists(path, followLinks, pDateTime, stamp);
}

void cFs::remove(mucs::cString const& path)
{
  mpImpl->remove(path);
}

cPath cFs::cwd() const
{
  return mpImpl->cwd();
}

void cFs::mkdir(mucs::cString const& path)
{
  mpImpl->mkdir(path);
}

void cFs::rename(mucs::cString const& from, mucs::cString const& to)
{
  mpImpl->rename(from, to);
}

bool cFs::supportsSymLinks() const
{
  return mpImpl->supportsSymLinks();
}

void cFs::createSymLink(mucs::cString const& target, mucs::cString const& link)
{
  mpImpl->createSymLink(target, link);
}

void cFs::setPermissions(mucs::cString const& path, cPermissions const& permissions, bool followLinks)
{
  mpImpl->setPermissions(path, permissions, followLinks);
}

void cFs::bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl)
{
  mpImpl->bind(pImpl);
}

void cFs::unbind(mucs::cString const& path)
{
  mpImpl->unbind(path);
}

mstd::tAutoPtr<cAbstractFileImpl> cFs::createFileImpl(cAbstractIOBlockDevice& device, mucs::cString const& path)
{
  return mpImpl->createFileImpl(*this, device, path);
}

mstd::tAutoPtr<cAbstractDirImpl> cFs::createDirectoryImpl(mucs::cString const& path, int flags) const
{
  return mpImpl->createDirImpl(*this, path, flags);
}

mstd::tAutoPtr<cAbstractFileInfoImpl> cFs::createFileInfoImpl(mucs::cString const& path) const
{
  return mpImpl->createFileInfoImpl(*this, path);
}

mucs::cAbstractEnDec const& cFs::endec() const
{
  return *mpEnDec;
}

cFile cFs::fileOpenRead(mucs::cString const& path)
{
  return openFile(path, OpenReadOnly, CreateNever, WriteTruncate);
}

cFile cFs::fileOpenWrite(mucs::cString const& path, CreateMode create, WriteMode write)
{
  return openFile(path, OpenReadWrite, create, write);
}

cFile cFs::openFile(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write)
{
  cFile file(*this, path);
  file.open(path, mode, create, write, true);
  return file;
}

bool cFs::fileExists(mucs::cString const& path, bool followLinks) const
{
  cFileInfo const info(*this, path);
  return info.exists(followLinks, 0, cFileInfoFlags::LastModification) && info.isFile(followLinks);
}

bool cFs::isDeadSymLink(mucs::cString const& path) const
{
  return cFileInfo(*this, path).isDeadSymLink();
}

cFileInfo cFs::fileInfo(mucs::cString const& path) const
{
  return cFileInfo(*this, path);
}

mstd::tConstListRef<cDir> cFs::openDir(mucs::cString const& path, int flags) const
{
  return cDir(*this, path, flags).list();
}

void cFs::createPath(cPath const& path)
{
  for (unsigned int i = 0;; ++i)
  {
    mucs::cString const part = path.getParts(i);
    if (part.empty())
    {
      return;
    }
    cFileInfo const info(*this, part);
    mucs::cString const item = withoutFinalSlash(part);
    if (existsFollowed(info))
    {
      if (info.isDir(true))
      {
        continue;
      }
    }
    // With its final slash a path leads to nothing where a plain file stands.
    else if (!existsFollowed(cFileInfo(*this, item)))
    {
      mkdir(item);
      continue;
    }
    mstd::cRuntimeException const cause(mstd::exceptionMessage("$MTR$Item \"%en%\" is not a directory!", item), 0, 0);
    cIOExceptions::throwUnableCreatePath(cause, path.path());
  }
}

mucs::cString cFs::tryFindInPath(cPath const& path, mucs::cString const& name) const
{
  mucs::cString file = path.path();
  cFileInfo::setFileName(file, name, false);
  return fileExists(file, true) ? file : mucs::cString();
}

void cFs::removeRecursive(mucs::cString const& path, bool followLinks)
{
  mucs::cString const item = withoutFinalSlash(path);
  cFileInfo const info(*this, item);
  if (!info.exists(false, 0, cFileInfoFlags::LastModification))
  {
    return;
  }
  // A link that leads nowhere can only be removed itself.
  bool const isTree = info.isSymLink() ? followLinks && existsFollowed(info) && info.isDir(true) : info.isDir(true);
  if (isTree)
  {
    cRemoveData::removeTree(*this, item);
  }
  else
  {
    remove(item);
  }
}

} // namespace mio
