#include "io/cProxyFs.h"

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cIOExceptions.h"
#include "io/cPath.h"
#include "std/cSTDExceptions.h"
#include "ucs/cString.h"

namespace mio
{

cProxyFs::cProxyFs(cFs& fs) : cAbstractFsImpl(fs) {}

cProxyFs::cProxyFs(cFs& fs, mstd::tSharedObject<cAbstractFsImpl> const& pNativeFs)
    : cAbstractFsImpl(fs), mNativeFs(pNativeFs)
{
}

cProxyFs::~cProxyFs() {}

cAbstractFsImpl* cProxyFs::findDelegate(mucs::cString& path, Operation operation)
{
  for (mstd::tSharedObject<cAbstractFsImpl> const& pDelegate : mDelegates)
  {
    if (pDelegate->matches(path, operation))
    {
      return pDelegate.get();
    }
  }
  return mNativeFs.get();
}

cAbstractFsImpl const* cProxyFs::findDelegate(mucs::cString& path, Operation operation) const
{
  return const_cast<cProxyFs*>(this)->findDelegate(path, operation);
}

cAbstractFsImpl& cProxyFs::delegate(mucs::cString& path, Operation operation)
{
  cAbstractFsImpl* pDelegate = findDelegate(path, operation);
  if (pDelegate == 0)
  {
    cIOExceptions::throwNoFilesystem(path);
  }
  return *pDelegate;
}

cAbstractFsImpl const& cProxyFs::delegate(mucs::cString& path, Operation operation) const
{
  cAbstractFsImpl const* pDelegate = findDelegate(path, operation);
  if (pDelegate == 0)
  {
    cIOExceptions::throwNoFilesystem(path);
  }
  return *pDelegate;
}

cAbstractFsImpl& cProxyFs::commonDelegate(mucs::cString& from, mucs::cString& to)
{
  cAbstractFsImpl* pFrom = findDelegate(from, OpRename);
  cAbstractFsImpl* pTo = findDelegate(to, OpRename);
  if (pFrom != pTo)
  {
    cIOExceptions::throwRenameAcrossFilesystems(from, to);
  }
  if (pTo == 0)
  {
    cIOExceptions::throwNoFilesystem(to);
  }
  return *pTo;
}

bool cProxyFs::exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
                      cFileInfoFlags::TimeStamp stamp) const
{
  mucs::cString copy(path);
  return delegate(copy, OpExists).exists(copy, followLinks, pDateTime, stamp);
}

void cProxyFs::remove(mucs::cString const& path)
{
  mucs::cString copy(path);
  delegate(copy, OpRemove).remove(copy);
}

cPath cProxyFs::cwd() const
{
  mucs::cString none;
  return delegate(none, OpCwd).cwd();
}

void cProxyFs::mkdir(mucs::cString const& path)
{
  mucs::cString copy(path);
  delegate(copy, OpMkdir).mkdir(copy);
}

void cProxyFs::rename(mucs::cString const& from, mucs::cString const& to)
{
  mucs::cString fromCopy(from);
  mucs::cString toCopy(to);
  commonDelegate(fromCopy, toCopy).rename(fromCopy, toCopy);
}

bool cProxyFs::supportsSymLinks() const
{
  mucs::cString none;
  return delegate(none, OpSupportsSymLinks).supportsSymLinks();
}

void cProxyFs::createSymLink(mucs::cString const& target, mucs::cString const& link)
{
  mucs::cString targetCopy(target);
  mucs::cString linkCopy(link);
  commonDelegate(targetCopy, linkCopy).createSymLink(targetCopy, linkCopy);
}

void cProxyFs::setPermissions(mucs::cString const& path, cPermissions const& permissions, bool followLinks)
{
  mucs::cString copy(path);
  delegate(copy, OpSetPermissions).setPermissions(copy, permissions, followLinks);
}

mstd::tAutoPtr<cAbstractDirImpl> cProxyFs::createDirImpl(cFs const& fs, mucs::cString const& path, int flags) const
{
  mucs::cString copy(path);
  return delegate(copy, OpCreateDir).createDirImpl(fs, copy, flags);
}

mstd::tAutoPtr<cAbstractFileInfoImpl> cProxyFs::createFileInfoImpl(cFs const& fs, mucs::cString const& path) const
{
  mucs::cString copy(path);
  return delegate(copy, OpCreateFileInfo).createFileInfoImpl(fs, copy);
}

mstd::tAutoPtr<cAbstractFileImpl> cProxyFs::createFileImpl(cFs& fs, cAbstractIOBlockDevice& device,
                                                           mucs::cString const& path) const
{
  mucs::cString copy(path);
  return delegate(copy, OpCreateFile).createFileImpl(fs, device, copy);
}

void cProxyFs::bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl)
{
  if (pImpl.get() == 0)
  {
    cSTDExceptions::throwAssertionFailed("pImpl.get() != 0", "io/cProxyFs", __LINE__);
  }
  mstd::tSharedObject<cAbstractFsImpl> pShared(pImpl);
  mucs::cString none;
  if (pShared->matches(none, OpBind) && !mNativeFs.isValid())
  {
    mNativeFs.swap(pShared);
  }
  else
  {
    mDelegates.append(pShared);
  }
}

void cProxyFs::unbind(mucs::cString const& path)
{
  mucs::cString copy(path);
  bool found = false;
  for (cDelegates::iterator it = mDelegates.begin(); it != mDelegates.end(); ++it)
  {
    if ((*it)->matches(copy, OpUnbind))
    {
      if ((*it)->isUsed())
      {
        cIOExceptions::throwFilesystemInUse(path);
      }
      it.eraseLater();
      found = true;
    }
  }
  mDelegates.eraseMarked();
  if (!found && copy.empty())
  {
    if (mNativeFs.isValid() && mNativeFs->isUsed())
    {
      cIOExceptions::throwNativeFilesystemInUse();
    }
    mNativeFs.reset();
  }
}

cAbstractFsImpl& cProxyFs::nativeFs() const
{
  if (!mNativeFs.isValid())
  {
    cIOExceptions::throwNoFilesystem(mucs::cString());
  }
  return *mNativeFs;
}

} // namespace mio
