#ifndef MORTISE_TESTS_SUPPORT_CTRACEFS_H
#define MORTISE_TESTS_SUPPORT_CTRACEFS_H

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cAbstractFsImpl.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "std/cAsciiString.h"
#include "ucs/cString.h"

#include <string>
#include <vector>

namespace support
{

inline std::string toText(mucs::cString const& text)
{
  return std::string(text.ascii('?').c_str());
}

/// A file system that only writes down what it is called with, in a record that may be shared with others. It takes the
/// paths that begin with its prefix, and with a rewritten prefix these get another one.
class cTraceFs : public mio::cAbstractFsImpl
{
public:
  typedef std::vector<std::string> cRecord;

  cTraceFs(mio::cFs& fs, std::string const& name, std::string const& prefix, cRecord& record)
      : mio::cAbstractFsImpl(fs), mName(name), mPrefix(prefix), mpRecord(&record)
  {
  }
  ~cTraceFs() override { mpRecord->push_back(mName + " gone"); }

  bool mIsNative = false;
  bool mIsUsed = false;
  bool mTakesEmpty = false;
  std::string mRewritten; ///< Replaces the prefix if not empty.
  bool mDoesRecordMatches = false;

  bool exists(mucs::cString const& path, bool followLinks, mstd::cDateTime* pDateTime,
              mio::cFileInfoFlags::TimeStamp stamp) const override
  {
    record("exists " + toText(path) + (followLinks ? " followed " : " ") + (pDateTime != nullptr ? "time " : "") +
           std::to_string(static_cast<int>(stamp)));
    return true;
  }
  void remove(mucs::cString const& path) override { record("remove " + toText(path)); }
  mio::cPath cwd() const override
  {
    record("cwd");
    return mio::cPath(("/cwd/of/" + mName).c_str());
  }
  void mkdir(mucs::cString const& path) override { record("mkdir " + toText(path)); }
  void rename(mucs::cString const& from, mucs::cString const& to) override
  {
    record("rename " + toText(from) + " " + toText(to));
  }
  bool supportsSymLinks() const override
  {
    record("supportsSymLinks");
    return true;
  }
  void createSymLink(mucs::cString const& target, mucs::cString const& link) override
  {
    record("createSymLink " + toText(target) + " " + toText(link));
  }
  void setPermissions(mucs::cString const& path, mio::cPermissions const& permissions, bool followLinks) override
  {
    record("setPermissions " + toText(path) + " " + std::to_string(permissions.permissions()) +
           (followLinks ? " followed" : ""));
  }
  mstd::tAutoPtr<mio::cAbstractDirImpl> createDirImpl(mio::cFs const& fs, mucs::cString const& path,
                                                      int flags) const override
  {
    mpLastFs = &fs;
    record("createDirImpl " + toText(path) + " " + std::to_string(flags));
    return mstd::tAutoPtr<mio::cAbstractDirImpl>();
  }
  mstd::tAutoPtr<mio::cAbstractFileInfoImpl> createFileInfoImpl(mio::cFs const& fs,
                                                                mucs::cString const& path) const override
  {
    mpLastFs = &fs;
    record("createFileInfoImpl " + toText(path));
    return mstd::tAutoPtr<mio::cAbstractFileInfoImpl>();
  }
  mstd::tAutoPtr<mio::cAbstractFileImpl> createFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device,
                                                        mucs::cString const& path) const override
  {
    mpLastFs = &fs;
    mpLastDevice = &device;
    record("createFileImpl " + toText(path));
    return mstd::tAutoPtr<mio::cAbstractFileImpl>();
  }
  bool isUsed() const override { return mIsUsed; }
  bool matches(mucs::cString& path, Operation operation) override
  {
    std::string const text = toText(path);
    if (mDoesRecordMatches)
    {
      record("matches " + text + " " + std::to_string(static_cast<int>(operation)));
    }
    if (operation == OpBind)
    {
      return mIsNative;
    }
    if (text.empty())
    {
      return mTakesEmpty;
    }
    if (text.compare(0, mPrefix.size(), mPrefix) != 0)
    {
      return false;
    }
    if (!mRewritten.empty())
    {
      path = (mRewritten + text.substr(mPrefix.size())).c_str();
    }
    return true;
  }

  mutable mio::cFs const* mpLastFs = nullptr;
  mutable mio::cAbstractIOBlockDevice* mpLastDevice = nullptr;

private:
  void record(std::string const& what) const { mpRecord->push_back(mName + " " + what); }

  std::string mName;
  std::string mPrefix;
  cRecord* mpRecord;
};

} // namespace support

#endif
