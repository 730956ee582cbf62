#ifndef MORTISE_TESTS_SUPPORT_CFORWARDFS_H
#define MORTISE_TESTS_SUPPORT_CFORWARDFS_H

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cAbstractFsImpl.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "std/cDateTime.h"
#include "support/pathText.h"
#include "ucs/cString.h"

#include <algorithm>
#include <string>
#include <vector>

namespace support
{

/// The platform's file system, watched: what is asked of it is counted, and listings are in the order of the names.
class cForwardFs : public mio::cAbstractFsImpl
{
public:
  explicit cForwardFs(mio::cFs& fs) : mio::cAbstractFsImpl(fs) {}

  std::string mElementPrefix; ///< Stands in front of the path of each element of a listing.

  unsigned int numExists() const { return miExists; }
  std::vector<std::string> const& made() const { return mMade; }
  /// How many listings there were, and how many of them at a time at most.
  unsigned int numListings() const { return miListings; }
  unsigned int mostListings() const { return miMost; }

  bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
              mio::cFileInfoFlags::TimeStamp stamp) const override
  {
    ++miExists;
    return mPlatform.exists(path, followLinks, pDateTime, stamp);
  }
  void remove(mucs::cString const& path) override { mPlatform.remove(path); }
  mio::cPath cwd() const override { return mPlatform.cwd(); }
  void mkdir(mucs::cString const& path) override
  {
    mMade.push_back(latin(path));
    mPlatform.mkdir(path);
  }
  void rename(mucs::cString const& from, mucs::cString const& to) override { mPlatform.rename(from, to); }
  bool supportsSymLinks() const override { return mPlatform.supportsSymLinks(); }
  void createSymLink(mucs::cString const& target, mucs::cString const& link) override
  {
    mPlatform.createSymLink(target, link);
  }
  void setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool followLinks) override
  {
    mPlatform.setPermissions(path, permissions, followLinks);
  }
  mstd::tAutoPtr<mio::cAbstractDirImpl> createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                      int flags) const override
  {
    return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cListing(*this, fs, path, flags));
  }
  mstd::tAutoPtr<mio::cAbstractFileInfoImpl> createFileInfoImpl(mio::cFs const&,
                                                                mucs::cString const& path) const override
  {
    return mPlatform.createFileInfoImpl(path);
  }
  mstd::tAutoPtr<mio::cAbstractFileImpl> createFileImpl(mio::cFs&, mio::cAbstractIOBlockDevice& device,
                                                        mucs::cString const& path) const override
  {
    return mPlatform.createFileImpl(device, path);
  }

private:
  class cListing : public mio::cAbstractDirImpl
  {
  public:
    cListing(cForwardFs const& owner, mio::cFs const& fs, mucs::cString const& path, int flags)
        : mio::cAbstractDirImpl(fs, path), mOwner(owner), mFs(fs)
    {
      mstd::tAutoPtr<mio::cAbstractDirImpl> const pDir(owner.mPlatform.createDirectoryImpl(path, flags));
      for (; !pDir->isEnd(); pDir->setNext())
      {
        mPaths.push_back(owner.mElementPrefix + latin(pDir->element().fullPath()));
      }
      std::sort(mPaths.begin(), mPaths.end());
      begin();
    }
    cListing(cListing const& other)
        : mio::cAbstractDirImpl(other), mOwner(other.mOwner), mFs(other.mFs), mPaths(other.mPaths), miNext(other.miNext)
    {
      begin();
    }
    ~cListing() override { --mOwner.miOpen; }

    void setNext() override { ++miNext; }
    mio::cDirInfo element() const override { return mio::cDirInfo(mFs, wide(mPaths.at(miNext))); }
    bool isEnd() const override { return miNext == mPaths.size(); }
    mstd::tAutoPtr<mio::cAbstractDirImpl> createCopy() const override
    {
      return mstd::tAutoPtr<mio::cAbstractDirImpl>(new cListing(*this));
    }

  private:
    void begin() const
    {
      ++mOwner.miListings;
      mOwner.miMost = std::max(mOwner.miMost, ++mOwner.miOpen);
    }

    cForwardFs const& mOwner;
    mio::cFs mFs;
    std::vector<std::string> mPaths;
    size_t miNext = 0;
  };

  mutable mio::cFs mPlatform;
  std::vector<std::string> mMade;
  mutable unsigned int miExists = 0;
  mutable unsigned int miListings = 0;
  mutable unsigned int miOpen = 0;
  mutable unsigned int miMost = 0;
};

} // namespace support

#endif
