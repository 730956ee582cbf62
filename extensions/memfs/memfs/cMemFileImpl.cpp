#include "memfs/cMemFileImpl.h"

#include "io/cAbstractIOBlockDevice.h"
#include "io/cPermissions.h"
#include "memfs/cMemFsExceptions.h"
#include "std/cDateTime.h"

#include <errno.h>
#include <limits>
#include <string.h>

namespace mmem
{

namespace
{

unsigned long long const filePermissions = mio::cPermissions::OwnerRead | mio::cPermissions::OwnerWrite |
                                           mio::cPermissions::GroupRead | mio::cPermissions::OthersRead;

} // namespace

cMemFileImpl::cOpen::cOpen(mstd::tSharedObject<cMemTree> const& pTree, cMemNode::cHandle const& pNode)
    : mpTree(pTree), mpNode(pNode), miPos(0), mIsReadable(false), mIsWriteable(false), mDoesAppend(false)
{
  mpTree->addUser();
}

cMemFileImpl::cOpen::~cOpen()
{
  mpTree->removeUser();
}

cMemFileImpl::cMemFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                           mstd::tSharedObject<cMemTree> const& pTree, mucs::cString const& path)
    : mio::cAbstractFileImpl(fs, device), mpTree(pTree), mName(path), mRemoveOnClose(false), mIsMapped(false)
{
}

cMemFileImpl::~cMemFileImpl()
{
  if (mpOpen.isValid() && mRemoveOnClose)
  {
    try
    {
      mpTree->remove(mName, false);
    }
    catch (...)
    {
      // No memory for the walk: nobody is left who could be told.
    }
  }
}

cMemFileImpl::cOpen& cMemFileImpl::opened(char const* operation) const
{
  if (!mpOpen.isValid())
  {
    cMemFsExceptions::throwOSError(operation, EBADFD, mName);
  }
  return *mpOpen;
}

mstd::tAutoPtr<mio::cAbstractFileImpl> cMemFileImpl::deepCopy(mio::cAbstractIOBlockDevice& device) const
{
  mstd::tAutoPtr<cMemFileImpl> pCopy(new cMemFileImpl(fs(), device, mpTree, mName));
  pCopy->mpOpen = mpOpen;
  pCopy->mRemoveOnClose = mRemoveOnClose;
  return pCopy;
}

mucs::cString cMemFileImpl::name() const
{
  return mName;
}

void cMemFileImpl::remove()
{
  cMemFsExceptions::throwIfError("unlink", mpTree->remove(mName, false), mName);
}

void cMemFileImpl::setRemoveOnClose()
{
  mRemoveOnClose = true;
}

void cMemFileImpl::release()
{
  mRemoveOnClose = false;
}

void cMemFileImpl::rename(mucs::cString const& name)
{
  mucs::cString copy(name);
  cMemFsExceptions::throwIfError("rename", mpTree->rename(mName, name), mName);
  mName.swap(copy);
}

mstd::cDateTime cMemFileImpl::lastModified() const
{
  return mstd::cDateTime(opened("stat").mpNode->time(mio::cFileInfoFlags::LastModification), mstd::cDateTime::UTC);
}

void cMemFileImpl::open(mucs::cString const& name, mio::OpenMode mode, mio::CreateMode create, mio::WriteMode write,
                        bool followLinks)
{
  close();
  mucs::cString copy(name);
  bool const isReadable = mode != mio::OpenWriteOnly;
  bool const isWriteable = mode == mio::OpenWriteOnly || mode == mio::OpenReadWrite;
  cMemPlace place;
  int iCode = mpTree->find(name, followLinks, place);
  if (iCode == ENOENT && place.mpParent != 0 && isWriteable && create != mio::CreateNever)
  {
    iCode = place.mHasFinalSlash ? EISDIR : mpTree->create(place, mio::cFileInfoFlags::File, filePermissions);
  }
  else if (iCode == 0)
  {
    cMemNode const& node = *place.mpNode;
    unsigned long long const wanted =
        (isReadable ? mio::cPermissions::OwnerRead : 0) | (isWriteable ? mio::cPermissions::OwnerWrite : 0);
    if (node.isLink())
    {
      iCode = ELOOP;
    }
    else if (node.isDirectory() && isWriteable)
    {
      iCode = EISDIR;
    }
    else if (!node.permits(wanted))
    {
      iCode = EACCES;
    }
  }
  cMemFsExceptions::throwIfError("open", iCode, name);
  mstd::tSharedObject<cOpen> pOpen(new cOpen(mpTree, place.mpNode));
  pOpen->mIsReadable = isReadable;
  pOpen->mIsWriteable = isWriteable;
  pOpen->mDoesAppend = isWriteable && write == mio::WriteAppend;
  if (isWriteable && write == mio::WriteTruncate)
  {
    place.mpNode->resize(0);
    place.mpNode->touchModified();
  }
  mpOpen.swap(pOpen);
  mName.swap(copy);
}

void cMemFileImpl::close()
{
  if (!mpOpen.isValid())
  {
    return;
  }
  bd().touchSize();
  munmap();
  if (mpOpen->mIsWriteable)
  {
    flush();
  }
  mpOpen.reset();
  if (mRemoveOnClose)
  {
    remove();
  }
}

void cMemFileImpl::truncate(unsigned int size)
{
  cOpen& open = opened("truncate");
  if (!open.mIsWriteable)
  {
    cMemFsExceptions::throwOSError("truncate", EINVAL, mName);
  }
  if (!open.mpNode->resize(size))
  {
    cMemFsExceptions::throwOSError("truncate", ENOSPC, mName);
  }
  open.mpNode->touchModified();
  bd().touchSize();
}

unsigned long long cMemFileImpl::readBytes(char* pData, unsigned long long count)
{
  cOpen& open = opened("read");
  if (!open.mIsReadable)
  {
    cMemFsExceptions::throwOSError("read", EBADF, mName);
  }
  if (open.mpNode->isDirectory())
  {
    cMemFsExceptions::throwOSError("read", EISDIR, mName);
  }
  mstd::tArray<char> const& content = open.mpNode->content();
  if (open.miPos >= content.length())
  {
    return 0;
  }
  unsigned int const start = static_cast<unsigned int>(open.miPos);
  unsigned int const left = content.length() - start;
  unsigned int const size = count < left ? static_cast<unsigned int>(count) : left;
  if (size != 0)
  {
    memcpy(pData, content.data(start, size), size);
    open.miPos += size;
    open.mpNode->touchRead();
  }
  return size;
}

unsigned long long cMemFileImpl::writeBytes(char const* pData, unsigned long long count)
{
  cOpen& open = opened("write");
  if (!open.mIsWriteable)
  {
    cMemFsExceptions::throwOSError("write", EBADF, mName);
  }
  bd().touchSize();
  if (count == 0)
  {
    return 0;
  }
  cMemNode& node = *open.mpNode;
  unsigned long long const start = open.mDoesAppend ? node.content().length() : open.miPos;
  if (start >= std::numeric_limits<unsigned int>::max())
  {
    cMemFsExceptions::throwOSError("write", EFBIG, mName);
  }
  unsigned int const size = node.roomAt(static_cast<unsigned int>(start), count);
  if (size == 0)
  {
    cMemFsExceptions::throwOSError("write", ENOSPC, mName);
  }
  node.write(static_cast<unsigned int>(start), pData, size);
  node.touchModified();
  open.miPos = start + size;
  return size;
}

void cMemFileImpl::mmap()
{
  cOpen const& open = opened("mmap");
  if (open.mIsWriteable)
  {
    cMemFsExceptions::throwUnableMapWriteable();
  }
  if (mIsMapped)
  {
    cMemFsExceptions::throwAlreadyMapped();
  }
  mIsMapped = true; // the content is in memory as it is
}

void cMemFileImpl::seek(long long offset, mio::SeekMode mode)
{
  cOpen& open = opened("seek");
  bd().touchSize();
  unsigned long long const from = mode == mio::SeekFromStart     ? 0
                                  : mode == mio::SeekFromCurrent ? open.miPos
                                                                 : open.mpNode->content().length();
  unsigned long long const longest = std::numeric_limits<long long>::max();
  unsigned long long const back = offset < 0 ? 0 - static_cast<unsigned long long>(offset) : 0;
  unsigned long long const ahead = offset < 0 ? 0 : static_cast<unsigned long long>(offset);
  if (back > from || ahead > longest - from)
  {
    cMemFsExceptions::throwOSError("seek", EINVAL, mName);
  }
  open.miPos = from - back + ahead;
}

unsigned long long cMemFileImpl::pos() const
{
  return opened("seek").miPos;
}

void cMemFileImpl::flush()
{
  bd().flush();
  opened("flush");
}

void cMemFileImpl::munmap()
{
  mIsMapped = false;
}

} // namespace mmem
