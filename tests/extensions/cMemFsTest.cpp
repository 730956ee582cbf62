#include "memfs/cMemFs.h"

#include "extensions/cFileSystem.h"
#include "io/cDir.h"
#include "io/cDirInfo.h"
#include "io/cFile.h"
#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "io/cProxyFs.h"
#include "pi/cSystem.h"
#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "std/tAutoPtr.h"
#include "support/exceptionText.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <errno.h>

#include <string>

namespace
{

using mmem::cMemFs;
using support::caught;
using support::failure;
using support::failureOf;
using support::messageOf;
using support::toString;

typedef mstd::tAutoPtr<mio::cAbstractFsImpl> tImpl;

/// Mounted on /mem, in front of the platform's file system.
class cMemFsTest : public testing::Test
{
protected:
  cMemFsTest()
  {
    mFs.installProxy();
    mpMem = new cMemFs(mFs, "/mem");
    mFs.bind(tImpl(mpMem));
  }

  void put(char const* path, std::string const& bytes)
  {
    mio::cFile file = mFs.fileOpenWrite(path, mio::CreateAlways, mio::WriteTruncate);
    ASSERT_EQ(file.write(bytes.data(), bytes.size()), bytes.size());
    file.close();
  }
  std::string bytesOf(char const* path)
  {
    mio::cFile file = mFs.fileOpenRead(path);
    std::string bytes(100000, '\0');
    bytes.resize(static_cast<size_t>(file.read(&bytes[0], bytes.size())));
    return bytes;
  }
  bool matches(char const* path, mio::cAbstractFsImpl::Operation operation = mio::cAbstractFsImpl::OpExists)
  {
    mucs::cString text(path);
    bool const result = mpMem->matches(text, operation);
    EXPECT_EQ(toString(text), path);
    return result;
  }

  mio::cFs mFs;
  cMemFs* mpMem;
};

// Mounting

TEST_F(cMemFsTest, ItTakesThePathsAtAndBelowItsMountPoint)
{
  EXPECT_TRUE(matches("/mem"));
  EXPECT_TRUE(matches("/mem/"));
  EXPECT_TRUE(matches("/mem/a/b"));
  EXPECT_TRUE(matches("//mem//a"));
  EXPECT_TRUE(matches("/./mem/a"));
  EXPECT_TRUE(matches("/other/../mem/a"));
  EXPECT_TRUE(matches("/mem/../mem/a"));
  EXPECT_FALSE(matches("/memory"));
  EXPECT_FALSE(matches("/"));
  EXPECT_FALSE(matches("mem/a"));
  EXPECT_FALSE(matches("/mem/.."));
  EXPECT_FALSE(matches("/mem/../other"));
  EXPECT_FALSE(matches(""));
}

TEST_F(cMemFsTest, APathThatComesThereOnOtherWaysLeadsToTheSameFile)
{
  put("/mem/file", "x");
  EXPECT_EQ(bytesOf("/other/../mem/file"), "x");
  EXPECT_EQ(bytesOf("//mem/./file"), "x");
}

TEST_F(cMemFsTest, MountedItIsNotNativeAndHasNoWorkingDirectory)
{
  EXPECT_FALSE(matches("", cMemFs::OpBind));
  EXPECT_FALSE(matches("", cMemFs::OpCwd));
  EXPECT_FALSE(matches("", cMemFs::OpSupportsSymLinks));
  EXPECT_EQ(toString(mpMem->mountPoint()), "/mem/");
}

TEST_F(cMemFsTest, OnTheRootItTakesEverythingAndMayBeNative)
{
  cMemFs all(mFs);
  mucs::cString none;
  mucs::cString relative("a/b");
  EXPECT_EQ(toString(all.mountPoint()), "/");
  EXPECT_TRUE(all.matches(none, cMemFs::OpBind));
  EXPECT_TRUE(all.matches(none, cMemFs::OpCwd));
  EXPECT_TRUE(all.matches(none, cMemFs::OpSupportsSymLinks));
  EXPECT_TRUE(all.matches(relative, cMemFs::OpExists));
  EXPECT_EQ(toString(all.cwd().path()), "/");
}

TEST_F(cMemFsTest, ItsWorkingDirectoryIsTheMountPointWhateverThatEndsIn)
{
  EXPECT_EQ(toString(cMemFs(mFs, "/m./").cwd().path()), "/m./");
}

TEST_F(cMemFsTest, OnTheRootARelativePathBeginsThere)
{
  mio::cFs fs;
  fs.setImpl(tImpl(new cMemFs(fs)));
  fs.mkdir("dir");
  EXPECT_TRUE(fs.exists("/dir"));
  EXPECT_TRUE(fs.exists("dir/../dir"));
}

TEST_F(cMemFsTest, WhatIsElsewhereGoesToThePlatform)
{
  support::cTempDir dir;
  mFs.mkdir(dir.name("sub"));
  EXPECT_TRUE(mio::cFs().exists(dir.name("sub")));
  EXPECT_FALSE(mio::cFs().exists("/mem"));
  EXPECT_TRUE(mFs.exists("/mem"));
}

TEST_F(cMemFsTest, ARenameAcrossTheBorderIsRefused)
{
  support::cTempDir dir;
  put("/mem/a", "x");
  EXPECT_EQ(messageOf(caught<mstd::cRuntimeException>([&] {
              mFs.rename("/mem/a", dir.name("a"));
            })).find("Rename across filesystem boundaries is not supported (/mem/a -> "),
            0u);
  mio::cFile file = mFs.fileOpenRead("/mem/a");
  EXPECT_EQ(failureOf([&] { file.rename(dir.name("a")); }), failure("rename", EXDEV));
  EXPECT_EQ(bytesOf("/mem/a"), "x");
}

TEST_F(cMemFsTest, ItIsUnmountedByItsMountPointOnly)
{
  mFs.mkdir("/mem/a");
  mFs.unbind("/mem/a");
  EXPECT_TRUE(mFs.exists("/mem/a"));
  mFs.unbind("/mem");
  EXPECT_FALSE(mFs.exists("/mem"));
}

TEST_F(cMemFsTest, ItIsInUseWhileAFileIsOpen)
{
  put("/mem/a", "x");
  EXPECT_FALSE(mpMem->isUsed());
  mio::cFile file = mFs.fileOpenRead("/mem/a");
  mio::cFile copy(file);
  EXPECT_TRUE(mpMem->isUsed());
  EXPECT_EQ(messageOf(caught<mstd::cRuntimeException>([&] { mFs.unbind("/mem/"); })), "Filesystem (/mem/) is in use!");
  file.close();
  EXPECT_TRUE(mpMem->isUsed());
  copy.close();
  EXPECT_FALSE(mpMem->isUsed());
  mFs.unbind("/mem/");
  EXPECT_FALSE(mFs.exists("/mem/"));
}

TEST_F(cMemFsTest, ItIsInUseWhileADirectoryIsListed)
{
  {
    mio::cDir dir(mFs, "/mem", 0);
    EXPECT_TRUE(mpMem->isUsed());
    mio::cDir copy(dir);
  }
  EXPECT_FALSE(mpMem->isUsed());
  EXPECT_EQ(failureOf([&] { mio::cDir(mFs, "/mem/no", 0); }), failure("opendir", ENOENT));
  EXPECT_FALSE(mpMem->isUsed());
}

TEST_F(cMemFsTest, AnOpenFileOutlivesTheFileSystem)
{
  mio::cFs fs;
  fs.setImpl(tImpl(new cMemFs(fs)));
  mio::cFile file = fs.fileOpenWrite("/a", mio::CreateAlways, mio::WriteTruncate);
  file.write("abc", 3);
  fs.setImpl(tImpl(new cMemFs(fs)));
  file.seek(0, mio::SeekFromStart);
  char bytes[3];
  EXPECT_EQ(file.read(bytes, 3), 3u);
  EXPECT_EQ(std::string(bytes, 3), "abc");
  EXPECT_FALSE(fs.exists("/a"));
}

TEST_F(cMemFsTest, TwoMountsDoNotMeet)
{
  mFs.bind(tImpl(new cMemFs(mFs, "/second/")));
  put("/mem/a", "1");
  put("/second/a", "2");
  EXPECT_EQ(bytesOf("/mem/a"), "1");
  EXPECT_EQ(bytesOf("/second/a"), "2");
  EXPECT_THROW(mFs.rename("/mem/a", "/second/b"), mstd::cRuntimeException);
}

TEST_F(cMemFsTest, TheMountPointItselfStays)
{
  EXPECT_EQ(failureOf([&] { mFs.remove("/mem"); }), failure("unlink", EBUSY));
  EXPECT_EQ(failureOf([&] { mFs.rename("/mem", "/mem/x"); }), failure("rename", EBUSY));
  mFs.mkdir("/mem/d");
  EXPECT_EQ(failureOf([&] { mFs.rename("/mem/d", "/mem/"); }), failure("rename", EBUSY));
  EXPECT_EQ(failureOf([&] { mFs.mkdir("/mem"); }), failure("mkdir", EEXIST));
}

TEST_F(cMemFsTest, UpFromARootInsideStaysThere)
{
  mio::cFs fs;
  fs.setImpl(tImpl(new cMemFs(fs)));
  fs.mkdir("/a");
  EXPECT_TRUE(fs.exists("/../../a"));
}

// Links

TEST_F(cMemFsTest, ItsTimesAreThoseOfTheClock)
{
  typedef mio::cFileInfoFlags tFlags;
  support::cVirtualClock clock;
  unsigned long long const start = static_cast<unsigned long long>(clock.now()) / 1000000;
  mio::cFileInfo const info(mFs, "/mem/file");
  put("/mem/file", "one");
  EXPECT_EQ(info.timeStamp(tFlags::LastModification).toSec(), start);
  clock.advanceMSec(1000);
  bytesOf("/mem/file");
  EXPECT_EQ(info.timeStamp(tFlags::LastAccess).toSec(), start + 1);
  EXPECT_EQ(info.timeStamp(tFlags::LastModification).toSec(), start);
  EXPECT_EQ(info.timeStamp(tFlags::LastStatusChange).toSec(), start);
  clock.advanceMSec(1000);
  mFs.rename("/mem/file", "/mem/other");
  mFs.rename("/mem/other", "/mem/file");
  EXPECT_EQ(info.timeStamp(tFlags::LastModification).toSec(), start);
  EXPECT_EQ(info.timeStamp(tFlags::LastStatusChange).toSec(), start + 2);
  clock.advanceMSec(1000);
  put("/mem/file", ""); // no byte is written: emptying is a change
  EXPECT_EQ(info.timeStamp(tFlags::LastModification).toSec(), start + 3);
  EXPECT_EQ(info.timeStamp(tFlags::LastStatusChange).toSec(), start + 3);
}

TEST_F(cMemFsTest, ALinkOutOfTheTreeLeadsNowhere)
{
  mmem::cMemFs mem(mFs, "/m");
  mem.createSymLink("/etc", "/m/out");
  mem.createSymLink("/m/../etc", "/m/around");
  EXPECT_FALSE(mem.exists("/m/out", true, nullptr, mio::cFileInfoFlags::LastModification));
  EXPECT_FALSE(mem.exists("/m/around", true, nullptr, mio::cFileInfoFlags::LastModification));
  EXPECT_TRUE(mem.exists("/m/out", false, nullptr, mio::cFileInfoFlags::LastModification));
}

TEST_F(cMemFsTest, ARelativeTargetBeginsWhereTheLinkStands)
{
  mio::cFs fs;
  fs.setImpl(tImpl(new cMemFs(fs)));
  fs.createPath(mio::cPath("/a/b"));
  fs.createSymLink("../c", "/a/b/link");
  fs.mkdir("/a/c");
  EXPECT_TRUE(fs.fileInfo("/a/b/link").isDir(true));
  EXPECT_EQ(toString(fs.fileInfo("/a/b/link").readLink()), "../c");
  EXPECT_EQ(failureOf([&] { fs.createSymLink("", "/empty"); }), failure("symlink", ENOENT));
}

TEST_F(cMemFsTest, FortyLinksAreFollowedAndNoMore)
{
  mFs.mkdir("/mem/0");
  for (unsigned int i = 1; i <= 41; ++i)
  {
    mFs.createSymLink(("/mem/" + std::to_string(i - 1)).c_str(), ("/mem/" + std::to_string(i)).c_str());
  }
  EXPECT_TRUE(mFs.exists("/mem/40"));
  EXPECT_EQ(failureOf([&] { mFs.fileInfo("/mem/41").type(true); }), failure("stat", ELOOP));
}

TEST_F(cMemFsTest, ALinkThatAsksForADirectoryDoesNotLeadToAFile)
{
  put("/mem/file", "");
  mFs.createSymLink("/mem/file/", "/mem/link");
  EXPECT_EQ(failureOf([&] { mFs.fileInfo("/mem/link").type(true); }), failure("stat", ENOTDIR));
}

// Permissions of the owner

TEST_F(cMemFsTest, AFileIsOpenedOnlyForWhatItsOwnerMay)
{
  put("/mem/file", "x");
  mFs.setPermissions("/mem/file", mio::cPermissions(mio::cPermissions::OwnerRead));
  EXPECT_EQ(bytesOf("/mem/file"), "x");
  EXPECT_EQ(failureOf([&] { mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteTruncate); }),
            failure("open", EACCES));
  mFs.setPermissions("/mem/file", mio::cPermissions(mio::cPermissions::OwnerWrite));
  EXPECT_EQ(failureOf([&] { mFs.fileOpenRead("/mem/file"); }), failure("open", EACCES));
  mFs.openFile("/mem/file", mio::OpenWriteOnly, mio::CreateNever, mio::WriteAppend);
  mFs.setPermissions("/mem/file", mio::cPermissions(0x18));
  EXPECT_EQ(bytesOf("/mem/file"), "x");
}

TEST_F(cMemFsTest, ADirectoryIsChangedListedAndPassedOnlyIfItsOwnerMay)
{
  unsigned long long const r = mio::cPermissions::OwnerRead;
  unsigned long long const w = mio::cPermissions::OwnerWrite;
  unsigned long long const x = mio::cPermissions::OwnerExecute;
  mFs.mkdir("/mem/dir");
  put("/mem/dir/file", "");
  mFs.setPermissions("/mem/dir", mio::cPermissions(r | x));
  EXPECT_EQ(failureOf([&] { mFs.mkdir("/mem/dir/sub"); }), failure("mkdir", EACCES));
  EXPECT_EQ(failureOf([&] { mFs.remove("/mem/dir/file"); }), failure("unlink", EACCES));
  EXPECT_EQ(failureOf([&] { mFs.rename("/mem/dir/file", "/mem/moved"); }), failure("rename", EACCES));
  EXPECT_EQ(failureOf([&] { mFs.createSymLink("/mem/dir/file", "/mem/dir/link"); }), failure("symlink", EACCES));
  EXPECT_EQ(failureOf([&] { put("/mem/dir/new", ""); }), failure("open", EACCES));
  EXPECT_EQ(bytesOf("/mem/dir/file"), "");
  put("/mem/other", "");
  EXPECT_EQ(failureOf([&] { mFs.rename("/mem/other", "/mem/dir/moved"); }), failure("rename", EACCES));
  mFs.setPermissions("/mem/dir", mio::cPermissions(w | x));
  EXPECT_EQ(failureOf([&] { mio::cDir(mFs, "/mem/dir", 0); }), failure("opendir", EACCES));
  mFs.setPermissions("/mem/dir", mio::cPermissions(r | w));
  EXPECT_EQ(failureOf([&] { mFs.fileInfo("/mem/dir/file").type(true); }), failure("stat", EACCES));
  EXPECT_FALSE(mFs.exists("/mem/dir/file"));
  mFs.setPermissions("/mem/dir", mio::cPermissions(r | w | x));
  mFs.removeRecursive("/mem/dir", false);
  EXPECT_FALSE(mFs.exists("/mem/dir"));
}

TEST_F(cMemFsTest, TheArchiveBitIsKeptAndTheHiddenOneIsNot)
{
  put("/mem/file", "");
  mFs.setPermissions("/mem/file", mio::cPermissions(0x18 | mio::cPermissions::Archive | mio::cPermissions::Hidden));
  EXPECT_TRUE(mFs.fileInfo("/mem/file").permissions(true).isArchive());
  EXPECT_FALSE(mFs.fileInfo("/mem/file").isHidden());
}

TEST_F(cMemFsTest, AHiddenDirectoryIsSoWithItsSlashToo)
{
  mFs.mkdir("/mem/.dir");
  EXPECT_TRUE(mFs.fileInfo("/mem/.dir/").isHidden());
}

TEST_F(cMemFsTest, ADirectoryIsAsLargeAsWhatStandsInIt)
{
  mFs.mkdir("/mem/dir");
  EXPECT_EQ(mFs.fileInfo("/mem/dir").size(true), 0u);
  mFs.mkdir("/mem/dir/sub");
  EXPECT_EQ(mFs.fileInfo("/mem/dir").size(true), cMemFs::nodeCost);
}

TEST_F(cMemFsTest, AFileThatBecameADirectoryIsNotRemovedThroughItsHandle)
{
  put("/mem/a", "");
  mio::cFile file = mFs.fileOpenRead("/mem/a");
  mFs.remove("/mem/a");
  mFs.mkdir("/mem/a");
  EXPECT_EQ(failureOf([&] { file.remove(); }), failure("unlink", EISDIR));
  EXPECT_TRUE(mFs.exists("/mem/a"));
}

TEST_F(cMemFsTest, TheLinkItselfHasPermissionsToo)
{
  put("/mem/file", "");
  mFs.createSymLink("/mem/file", "/mem/link");
  mFs.setPermissions("/mem/link", mio::cPermissions(0x8), false);
  EXPECT_EQ(mFs.fileInfo("/mem/link").permissions(false).permissions(), 0x8u);
  EXPECT_NE(mFs.fileInfo("/mem/file").permissions(false).permissions(), 0x8u);
}

// Capacity

class cMemFsCapacity : public cMemFsTest
{
protected:
  /// Leaves room for so many bytes.
  void leave(unsigned long long iSize) { mpMem->setCapacity(mpMem->used() + iSize); }
};

TEST_F(cMemFsCapacity, ItIsUnlimitedUnlessToldSo)
{
  EXPECT_EQ(mpMem->capacity(), cMemFs::unlimited);
  cMemFs small(mFs, "/small", 1000);
  EXPECT_EQ(small.capacity(), 1000u);
  EXPECT_EQ(small.used(), cMemFs::nodeCost);
}

TEST_F(cMemFsCapacity, EverythingTakesItsShareAndGivesItBack)
{
  unsigned long long const empty = mpMem->used();
  put("/mem/file", "12345");
  EXPECT_EQ(mpMem->used(), empty + cMemFs::nodeCost + 5);
  mFs.mkdir("/mem/dir");
  mFs.createSymLink("/mem/file", "/mem/link");
  EXPECT_EQ(mpMem->used(), empty + 3 * cMemFs::nodeCost + 5 + 9);
  put("/mem/file", "1");
  EXPECT_EQ(mpMem->used(), empty + 3 * cMemFs::nodeCost + 1 + 9);
  mFs.rename("/mem/file", "/mem/link");
  EXPECT_EQ(mpMem->used(), empty + 2 * cMemFs::nodeCost + 1);
  mFs.remove("/mem/link");
  mFs.remove("/mem/dir");
  EXPECT_EQ(mpMem->used(), empty);
}

TEST_F(cMemFsCapacity, AnOpenFileGivesItsShareBackWhenItIsClosed)
{
  unsigned long long const empty = mpMem->used();
  put("/mem/file", "12345");
  mio::cFile file = mFs.fileOpenRead("/mem/file");
  mFs.remove("/mem/file");
  EXPECT_EQ(mpMem->used(), empty + cMemFs::nodeCost + 5);
  file.close();
  EXPECT_EQ(mpMem->used(), empty);
}

TEST_F(cMemFsCapacity, AWriteDoesWhatFitsAndFailsWhenNothingDoes)
{
  put("/mem/file", "");
  leave(4);
  mio::cFile file = mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(file.write("123456", 6), 4u);
  EXPECT_EQ(failureOf([&] { file.write("x", 1); }), failure("write", ENOSPC));
  EXPECT_EQ(file.write("", 0), 0u);
  file.close();
  EXPECT_EQ(bytesOf("/mem/file"), "1234");
}

TEST_F(cMemFsCapacity, WhatIsThereCanBeWrittenOverWithoutRoom)
{
  put("/mem/file", "1234");
  leave(0);
  mio::cFile file = mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteInPlace);
  EXPECT_EQ(file.write("abcdef", 6), 4u);
  file.close();
  EXPECT_EQ(bytesOf("/mem/file"), "abcd");
}

TEST_F(cMemFsCapacity, AGapNeedsRoomToo)
{
  put("/mem/file", "");
  leave(10);
  mio::cFile file = mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteInPlace);
  file.seek(10, mio::SeekFromStart);
  EXPECT_EQ(failureOf([&] { file.write("x", 1); }), failure("write", ENOSPC));
  file.seek(9, mio::SeekFromStart);
  EXPECT_EQ(file.write("xy", 2), 1u);
  EXPECT_EQ(file.size(true), 10u);
}

TEST_F(cMemFsCapacity, WithoutRoomNothingIsMadeOrExtended)
{
  put("/mem/file", "1234");
  leave(cMemFs::nodeCost - 1);
  EXPECT_EQ(failureOf([&] { mFs.mkdir("/mem/dir"); }), failure("mkdir", ENOSPC));
  EXPECT_EQ(failureOf([&] { put("/mem/new", ""); }), failure("open", ENOSPC));
  EXPECT_EQ(failureOf([&] { mFs.createSymLink("/mem/file", "/mem/link"); }), failure("symlink", ENOSPC));
  mio::cFile file = mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteInPlace);
  EXPECT_EQ(failureOf([&] { file.truncate(4 + cMemFs::nodeCost); }), failure("truncate", ENOSPC));
  EXPECT_EQ(file.size(true), 4u);
  leave(cMemFs::nodeCost + 8);
  EXPECT_EQ(failureOf([&] { mFs.createSymLink("/mem/file", "/mem/link"); }), failure("symlink", ENOSPC));
  leave(cMemFs::nodeCost + 9);
  mFs.createSymLink("/mem/file", "/mem/link");
}

TEST_F(cMemFsCapacity, TheFailureSaysThatThereIsNoSpace)
{
  leave(0);
  auto const e = caught<mstd::cOSErrorException>([&] { mFs.mkdir("/mem/dir"); });
  EXPECT_EQ(toString(e.fileName()), "/mem/dir");
  ASSERT_NE(e.history(), nullptr);
  EXPECT_NE(messageOf(*e.history()).find("No space left on device"), std::string::npos);
}

TEST_F(cMemFsCapacity, AFileEndsBeforeFourGibibytes)
{
  put("/mem/file", "");
  mio::cFile file = mFs.fileOpenWrite("/mem/file", mio::CreateNever, mio::WriteInPlace);
  file.seek(0xFFFFFFFFll, mio::SeekFromStart);
  EXPECT_EQ(failureOf([&] { file.write("x", 1); }), failure("write", EFBIG));
  file.seek(0x7FFFFFFFFFFFFFFFll, mio::SeekFromStart);
  EXPECT_EQ(file.pos(), 0x7FFFFFFFFFFFFFFFull);
  EXPECT_EQ(failureOf([&] { file.seek(1, mio::SeekFromCurrent); }), failure("seek", EINVAL));
}

// Life

TEST_F(cMemFsTest, ADeepTreeGoesWithoutRecursion)
{
  mio::cFs fs;
  cMemFs* const pMem = new cMemFs(fs);
  fs.setImpl(tImpl(pMem));
  // Built from below, since a path of that depth takes its time.
  fs.mkdir("/a");
  for (int i = 0; i < 20000; ++i)
  {
    fs.mkdir("/b");
    fs.rename("/a", "/b/a");
    fs.rename("/b", "/a");
  }
  EXPECT_EQ(pMem->used(), 20002ull * cMemFs::nodeCost);
}

TEST_F(cMemFsTest, TheSystemsFileSystemCanBeMountedOn)
{
  mio::cFs& fs = mpi::system().fs;
  fs.installProxy();
  fs.bind(tImpl(new cMemFs(fs, "/mem/")));
  {
    mio::cFile file("/mem/file", mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate);
    file.write("x", 1);
  }
  EXPECT_TRUE(mio::cFileInfo("/mem/file").exists(true, nullptr, mio::cFileInfoFlags::LastModification));
  mpi::cSystem::cleanup();
  EXPECT_FALSE(mpi::system().fs.exists("/mem/file"));
}

} // namespace
