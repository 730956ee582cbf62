#include "memfs/cMemFileInfoImpl.h"

#include "io/cPermissions.h"
#include "memfs/cMemFsExceptions.h"
#include "std/cDateTime.h"

namespace mmem
{

namespace
{

/// Whether the last name of a path hides what stands there.
bool isHidden(mucs::cString const& path)
{
  unsigned int end = path.length();
  while (end > 0 && path.at(end - 1) == '/')
  {
    --end;
  }
  unsigned int begin = end;
  while (begin > 0 && path.at(begin - 1) != '/')
  {
    --begin;
  }
  unsigned int const length = end - begin;
  if (length < 2 || path.at(begin) != '.')
  {
    return false;
  }
  return length > 2 || path.at(begin + 1) != '.';
}

} // namespace

cMemFileInfoImpl::cMemFileInfoImpl(mio::cFs const& fs, mstd::tSharedObject<cMemTree> const& pTree,
                                   mucs::cString const& path)
    : mio::cAbstractFileInfoImpl(fs), mpTree(pTree), mPath(path)
{
}

cMemFileInfoImpl::~cMemFileInfoImpl() {}

cMemNode::cHandle cMemFileInfoImpl::look(bool followLinks) const
{
  cMemPlace place;
  cMemFsExceptions::throwIfError("stat", mpTree->find(mPath, followLinks, place), mPath);
  return place.mpNode;
}

mstd::cDateTime cMemFileInfoImpl::timeStamp(mio::cFileInfoFlags::TimeStamp stamp, bool followLinks) const
{
  return mstd::cDateTime(look(followLinks)->time(stamp), mstd::cDateTime::UTC);
}

mucs::cString cMemFileInfoImpl::filePath() const
{
  return mPath;
}

mucs::cString cMemFileInfoImpl::readLink() const
{
  return look(false)->target();
}

unsigned long long cMemFileInfoImpl::size(bool followLinks) const
{
  return look(followLinks)->size();
}

mio::cFileInfoFlags::Type cMemFileInfoImpl::type(bool followLinks) const
{
  return look(followLinks)->type();
}

mio::cPermissions cMemFileInfoImpl::readPermissions(bool followLinks) const
{
  unsigned long long const hidden = isHidden(mPath) ? mio::cPermissions::Hidden : 0;
  return mio::cPermissions(look(followLinks)->permissions() | hidden);
}

} // namespace mmem
