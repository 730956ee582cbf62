#include "io/cAbstractFileInfoImpl.h"
#include "io/cFs.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "support/fileContents.h"
#include "support/osFailure.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <errno.h>

#include <filesystem>
#include <string>

using mio::cFileInfoFlags;
using support::cFaultShim;
using support::cTempDir;
using support::osFailure;
using support::osFailureOf;
using support::putFile;
using support::toString;

namespace
{

class cLinuxFsImpl : public testing::Test
{
public:
  std::string path(std::string const& entry) const { return dir.path() + "/" + entry; }
  mucs::cString name(std::string const& entry) const { return dir.name(entry); }
  /// Whether there is anything, were it a dead link.
  bool isThere(std::string const& entry) const
  {
    return std::filesystem::exists(std::filesystem::symlink_status(path(entry)));
  }

  cTempDir dir;
  mio::cFs fs;
};

/// Works in a directory while it lives.
class cWorkingDirectory
{
public:
  explicit cWorkingDirectory(std::string const& path) : mFormer(std::filesystem::current_path())
  {
    std::filesystem::current_path(path);
  }
  cWorkingDirectory(cWorkingDirectory const&) = delete;
  ~cWorkingDirectory() { std::filesystem::current_path(mFormer); }

private:
  std::filesystem::path mFormer;
};

} // namespace

TEST_F(cLinuxFsImpl, LinksAreSupported)
{
  EXPECT_TRUE(fs.supportsSymLinks());
}

TEST_F(cLinuxFsImpl, TheWorkingDirectoryIsTheSystems)
{
  std::filesystem::create_directory(path("caf\xC3\xA9"));
  cWorkingDirectory const inside(path("caf\xC3\xA9"));
  mucs::cString expected(std::filesystem::canonical(dir.path()).c_str());
  expected.appendC("/caf");
  expected.append(0xE9u);
  expected.append(unsigned('/'));
  EXPECT_TRUE(fs.cwd().path() == expected);
}

TEST_F(cLinuxFsImpl, AWorkingDirectoryThatDoesNotDecodeComesAsItsBytes)
{
  std::filesystem::create_directory(path("caf\xE9"));
  cWorkingDirectory const inside(path("caf\xE9"));
  mucs::cString const cwd = fs.cwd().path();
  EXPECT_EQ(cwd[cwd.length() - 2], 0xE9u);
}

TEST_F(cLinuxFsImpl, TheWorkingDirectoryKeepsItsNameWhateverThatEndsIn)
{
  std::filesystem::create_directory(path("d."));
  cWorkingDirectory const inside(path("d."));
  EXPECT_EQ(toString(fs.cwd().path()), std::filesystem::canonical(dir.path()).string() + "/d./");
}

TEST_F(cLinuxFsImpl, AWorkingDirectoryThatIsGoneIsReported)
{
  std::filesystem::create_directory(path("d"));
  cWorkingDirectory const inside(path("d"));
  std::filesystem::remove(path("d"));
  auto const error = support::caught<mstd::cRuntimeException>([&] { fs.cwd(); });
  EXPECT_EQ(support::messageOf(error), "Unable to find out current working directory!");
}

TEST_F(cLinuxFsImpl, MkdirMakesOneLevelForEverybody)
{
  mode_t const former = umask(0);
  fs.mkdir(name("d"));
  umask(former);
  struct stat info;
  ASSERT_EQ(stat(path("d").c_str(), &info), 0);
  EXPECT_TRUE(S_ISDIR(info.st_mode));
  EXPECT_EQ(info.st_mode & 0777u, 0777u);
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(name("x/y")); }), osFailure("mkdir", ENOENT, path("x/y")));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(name("d")); }), osFailure("mkdir", EEXIST, path("d")));
}

TEST_F(cLinuxFsImpl, RemovingWhatIsNotThereIsNoError)
{
  EXPECT_EQ(osFailureOf([&] { fs.remove(name("missing")); }), "nothing");
  EXPECT_EQ(osFailureOf([&] { fs.remove(name("missing/too")); }), "nothing");
}

TEST_F(cLinuxFsImpl, WhatCannotBeLookedAtIsNotRemoved)
{
  putFile(name("f"), "");
  cFaultShim shim;
  shim.fail(cFaultShim::LStat, EACCES);
  EXPECT_EQ(osFailureOf([&] { fs.remove(name("f")); }), "nothing");
  EXPECT_EQ(shim.numCalls(cFaultShim::Unlink), 0u);
}

TEST_F(cLinuxFsImpl, FilesEmptyDirectoriesAndLinksAreRemoved)
{
  putFile(name("f"), "");
  std::filesystem::create_directory(path("d"));
  putFile(name("d/kept"), "");
  std::filesystem::create_directory(path("empty"));
  std::filesystem::create_symlink("d", path("link"));
  std::filesystem::create_symlink("nowhere", path("dead"));
  mkfifo(path("fifo").c_str(), 0600);
  for (char const* entry : {"f", "empty", "link", "dead", "fifo"})
  {
    fs.remove(name(entry));
    EXPECT_FALSE(isThere(entry)) << entry;
  }
  EXPECT_TRUE(isThere("d/kept"));
}

TEST_F(cLinuxFsImpl, AFailedRemovalIsAnUnlinkAlsoForADirectory)
{
  std::filesystem::create_directory(path("d"));
  putFile(name("d/f"), "");
  EXPECT_EQ(osFailureOf([&] { fs.remove(name("d")); }), osFailure("unlink", ENOTEMPTY, path("d")));
  cFaultShim shim;
  shim.fail(cFaultShim::Unlink, EACCES);
  EXPECT_EQ(osFailureOf([&] { fs.remove(name("d/f")); }), osFailure("unlink", EACCES, path("d/f")));
}

TEST_F(cLinuxFsImpl, ADeadLinkExistsOnlyIfItIsNotFollowed)
{
  putFile(name("f"), "");
  std::filesystem::create_symlink("nowhere", path("dead"));
  std::filesystem::create_symlink("f", path("link"));
  EXPECT_TRUE(fs.exists(name("f"), true));
  EXPECT_TRUE(fs.exists(name("f"), false));
  EXPECT_TRUE(fs.exists(name("link"), true));
  EXPECT_TRUE(fs.exists(name("dead"), false));
  EXPECT_FALSE(fs.exists(name("dead"), true));
  EXPECT_FALSE(fs.exists(name("missing"), false));
  EXPECT_FALSE(fs.exists("", true));
}

TEST_F(cLinuxFsImpl, ExistsTellsTheTimeThatIsAskedFor)
{
  putFile(name("f"), "");
  utimbuf const times = {1111111111, 1234567890};
  ASSERT_EQ(utime(path("f").c_str(), &times), 0);
  struct stat present;
  ASSERT_EQ(stat(path("f").c_str(), &present), 0);
  auto const time = [&](cFileInfoFlags::TimeStamp stamp) {
    mstd::cDateTime result;
    EXPECT_TRUE(fs.exists(name("f"), true, &result, stamp));
    return result.get() / 1000000;
  };
  EXPECT_EQ(time(cFileInfoFlags::LastAccess), 1111111111u);
  EXPECT_EQ(time(cFileInfoFlags::LastModification), 1234567890u);
  EXPECT_EQ(time(cFileInfoFlags::LastStatusChange), static_cast<unsigned long long>(present.st_ctime));
  mstd::cDateTime untouched(mstd::cTime(5ull), mstd::cDateTime::UTC);
  EXPECT_FALSE(fs.exists(name("missing"), true, &untouched, cFileInfoFlags::LastAccess));
  EXPECT_EQ(untouched.get(), 5u);
}

TEST_F(cLinuxFsImpl, ALinkLeadsWhereItWasToldTo)
{
  fs.createSymLink("some/where", name("link"));
  EXPECT_EQ(std::filesystem::read_symlink(path("link")).string(), "some/where");
  EXPECT_EQ(osFailureOf([&] { fs.createSymLink("else", name("link")); }), osFailure("symlink", EEXIST, path("link")));
}

TEST_F(cLinuxFsImpl, RenamingReplacesWhatIsThere)
{
  putFile(name("a"), "A");
  putFile(name("b"), "B");
  fs.rename(name("a"), name("b"));
  EXPECT_FALSE(isThere("a"));
  EXPECT_EQ(support::fileBytes(name("b")), "A");
  EXPECT_EQ(osFailureOf([&] { fs.rename(name("a"), name("b")); }), osFailure("rename", ENOENT, path("a")));
}

TEST_F(cLinuxFsImpl, PermissionsOfWhatIsNotThereAreReported)
{
  EXPECT_EQ(osFailureOf([&] { fs.setPermissions(name("a"), mio::cPermissions(8), true); }),
            osFailure("chmod", ENOENT, path("a")));
}

TEST_F(cLinuxFsImpl, PermissionsGoThroughALinkWhateverTheFlag)
{
  putFile(name("f"), "");
  std::filesystem::create_symlink("f", path("link"));
  fs.setPermissions(name("link"), mio::cPermissions(0x18), false);
  struct stat info;
  ASSERT_EQ(stat(path("f").c_str(), &info), 0);
  EXPECT_EQ(info.st_mode & 07777u, 0600u);
}

TEST_F(cLinuxFsImpl, APathWithAZeroInItNamesNothing)
{
  putFile(name("f"), "");
  mucs::cString cut(name("f"));
  cut.append(0u);
  cut.appendC("x");
  EXPECT_FALSE(fs.exists(cut, true));
  fs.remove(cut);
  EXPECT_TRUE(isThere("f"));
  EXPECT_EQ(osFailureOf([&] { fs.rename(cut, name("g")); }), osFailure("rename", ENOENT, toString(cut)));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(cut); }), osFailure("mkdir", ENOENT, toString(cut)));
}
