#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "support/cByteEnDec.h"
#include "support/cCaptureOut.h"
#include "support/cImplDevice.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "support/fileContents.h"
#include "support/osFailure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <errno.h>
#include <string.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

using mio::cFileInfoFlags;
using support::cCaptureOut;
using support::cFaultShim;
using support::cImplDevice;
using support::cTempDir;
using support::fileBytes;
using support::nativePath;
using support::osFailure;
using support::osFailureOf;
using support::putFile;
using support::toString;

namespace
{

typedef mstd::tAutoPtr<mio::cAbstractDirImpl> tDir;

/// What the file system is asked for in the course of a day, each with what it needs.
struct tScenario
{
  char const* name;
  std::function<void(mio::cFs&, cTempDir const&)> prepare;
  std::function<void(mio::cFs&, cTempDir const&)> act;
  bool leaves = false;
};

void nothing(mio::cFs&, cTempDir const&) {}

void putF(mio::cFs&, cTempDir const& dir)
{
  putFile(dir.name("f"), "0123456789");
}

std::vector<tScenario> scenarios()
{
  return {
      {"exists", putF, [](mio::cFs& fs, cTempDir const& dir) { fs.exists(dir.name("f"), true); }},
      {"remove a file", putF, [](mio::cFs& fs, cTempDir const& dir) { fs.remove(dir.name("f")); }},
      {"remove a directory",
       [](mio::cFs&, cTempDir const& dir) { std::filesystem::create_directory(dir.path() + "/d"); },
       [](mio::cFs& fs, cTempDir const& dir) { fs.remove(dir.name("d")); }},
      {"cwd", nothing, [](mio::cFs& fs, cTempDir const&) { fs.cwd(); }},
      {"mkdir", nothing, [](mio::cFs& fs, cTempDir const& dir) { fs.mkdir(dir.name("d")); }},
      {"rename", putF, [](mio::cFs& fs, cTempDir const& dir) { fs.rename(dir.name("f"), dir.name("g")); }},
      {"link", nothing, [](mio::cFs& fs, cTempDir const& dir) { fs.createSymLink("f", dir.name("l")); }},
      {"chmod", putF,
       [](mio::cFs& fs, cTempDir const& dir) { fs.setPermissions(dir.name("f"), mio::cPermissions(0x18), true); }},
      {"info", putF,
       [](mio::cFs& fs, cTempDir const& dir) {
         auto const pInfo = fs.createFileInfoImpl(dir.name("f"));
         pInfo->type(true);
         pInfo->size(false);
         pInfo->readPermissions(true);
         pInfo->timeStamp(cFileInfoFlags::LastAccess, false);
       }},
      {"read a link", [](mio::cFs&, cTempDir const& dir) { std::filesystem::create_symlink("f", dir.path() + "/l"); },
       [](mio::cFs& fs, cTempDir const& dir) { fs.createFileInfoImpl(dir.name("l"))->readLink(); }},
      {"list", putF,
       [](mio::cFs& fs, cTempDir const& dir) {
         for (tDir listing = fs.createDirectoryImpl(dir.path().c_str(), 0); !listing->isEnd(); listing->setNext())
         {
           listing->createCopy();
         }
       }},
      {"read", putF,
       [](mio::cFs& fs, cTempDir const& dir) {
         cImplDevice file(fs, dir.name("f"));
         file->open(dir.name("f"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
         char bytes[4];
         file->readBytes(bytes, 4);
         file->seek(1, mio::SeekFromCurrent);
         file->pos();
         file->lastModified();
         cImplDevice copy(file);
         copy->readBytes(bytes, 4);
         copy->close();
         file->mmap();
         file->close();
       }},
      {"write", nothing,
       [](mio::cFs& fs, cTempDir const& dir) {
         cImplDevice file(fs, dir.name("f"));
         file->open(dir.name("f"), mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate, true);
         file->writeBytes("abc", 3);
         file->truncate(2);
         file->flush();
         file->rename(dir.name("g"));
         file->setRemoveOnClose();
         file->close();
       }},
      {"a removed tree",
       [](mio::cFs&, cTempDir const& dir) {
         std::filesystem::create_directories(dir.path() + "/d/e");
         putFile(dir.name("d/f"), "");
         putFile(dir.name("d/e/f"), "");
       },
       [](mio::cFs& fs, cTempDir const& dir) { fs.removeRecursive(dir.name("d"), false); }, true},
      {"a made path", nothing,
       [](mio::cFs& fs, cTempDir const& dir) { fs.createPath(mio::cPath(dir.name("d/e/f/"))); }},
  };
}

/// Runs each scenario with the first call failing, with the second one, and so on until none is left to fail.
void sweep(int iError)
{
  std::set<std::string> failures;
  for (tScenario const& scenario : scenarios())
  {
    bool isThrough = false;
    for (unsigned int iCall = 0; !isThrough; ++iCall)
    {
      ASSERT_LT(iCall, 1000u);
      cTempDir dir;
      mio::cFs fs;
      scenario.prepare(fs, dir);
      cCaptureOut mute;
      unsigned int const iBefore = cFaultShim::numDescriptors();
      bool isReported = false;
      {
        cFaultShim shim;
        shim.failNth(iCall, iError);
        try
        {
          scenario.act(fs, dir);
        }
        catch (mstd::cOSErrorException const& e)
        {
          isReported = true;
          failures.insert(toString(e.operation()));
          // Some carry the result of the call for a code; and what can't be looked at is left in a directory, which
          // then can't go.
          bool const isOther = e.osErrorCode() == -1 || (scenario.leaves && e.osErrorCode() == ENOTEMPTY);
          EXPECT_TRUE(isOther || e.osErrorCode() == iError) << scenario.name << " " << iCall << " " << e.osErrorCode();
        }
        catch (mstd::cRuntimeException const& e)
        {
          isReported = true;
          failures.insert(support::messageOf(e));
        }
        isThrough = shim.numFaults() == 0;
      }
      EXPECT_EQ(cFaultShim::numDescriptors(), iBefore) << scenario.name << " " << iCall;
      if (isThrough)
      {
        EXPECT_FALSE(isReported) << scenario.name;
      }
    }
  }
  std::set<std::string> expected = {"open",     "close",   "seek",    "truncate", "stat",
                                    "mkdir",    "unlink",  "symlink", "chmod",    "rename",
                                    "readlink", "opendir", "readdir", "seekdir",  "dup"};
  if (iError != EINTR)
  {
    expected.insert({"read", "write"});
  }
  for (std::string const& operation : expected)
  {
    EXPECT_EQ(failures.count(operation), 1u) << operation;
  }
  EXPECT_EQ(failures.count("Unable to find out current working directory!"), 1u);
}

class LinuxBadDaysFault : public testing::Test
{
public:
  std::string path(std::string const& entry) const { return dir.path() + "/" + entry; }
  mucs::cString name(std::string const& entry) const { return dir.name(entry); }

  cTempDir dir;
  mio::cFs fs;
};

/// Every byte that a name can hold, and the file system that keeps them apart.
class LinuxNamesFault : public LinuxBadDaysFault
{
public:
  LinuxNamesFault() : byteFs(endec) {}

  static std::vector<std::string> names()
  {
    std::vector<std::string> result;
    for (unsigned int c = 1; c < 256; ++c)
    {
      if (c != '/')
      {
        result.push_back("a" + std::string(1, static_cast<char>(c)) + "b");
        result.push_back(std::string(1, static_cast<char>(c)) + "x");
      }
    }
    return result;
  }

  support::cByteEnDec endec;
  mio::cFs byteFs;
};

std::vector<std::string> listed(mio::cFs& fs, mucs::cString const& path)
{
  std::vector<std::string> paths;
  for (tDir listing = fs.createDirectoryImpl(path, 3); !listing->isEnd(); listing->setNext())
  {
    paths.push_back(nativePath(listing->element().fullPath()));
  }
  std::sort(paths.begin(), paths.end());
  return paths;
}

/// A tree of directories "d" in each other, made step by step, since its path is too long for the system.
std::string makeDeepTree(std::string const& root, unsigned int iLevels)
{
  int iDir = open(root.c_str(), O_RDONLY | O_DIRECTORY);
  std::string path = root;
  for (unsigned int i = 0; i < iLevels; ++i)
  {
    if (mkdirat(iDir, "d", 0700) != 0)
    {
      ADD_FAILURE() << strerror(errno) << " at level " << i;
      break;
    }
    int const iNext = openat(iDir, "d", O_RDONLY | O_DIRECTORY);
    close(iDir);
    iDir = iNext;
    path += "/d";
  }
  close(iDir);
  return path;
}

} // namespace

TEST(LinuxSweepFault, EveryInterruptedCallIsBorneOrReportedAndNoDescriptorIsLost)
{
  sweep(EINTR);
}

TEST(LinuxSweepFault, EveryCallThatTheDiskRefusesIsReported)
{
  sweep(EIO);
}

TEST(LinuxSweepFault, EveryCallWithoutPermissionIsReported)
{
  sweep(EACCES);
}

TEST(LinuxSweepFault, EveryCallWithoutDescriptorsIsReported)
{
  sweep(EMFILE);
}

TEST(LinuxSweepFault, EveryCallWithoutSpaceIsReported)
{
  sweep(ENOSPC);
}

TEST_F(LinuxBadDaysFault, WithoutDescriptorsNothingOpensAndEverythingGoesOnAfterwards)
{
#if defined(__SANITIZE_ADDRESS__)
  GTEST_SKIP() << "the sanitizers need a pipe to see what memory can be read";
#endif
  putFile(name("f"), "x");
  std::filesystem::create_directories(path("tree/a/b"));
  rlimit former;
  ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &former), 0);
  // The lowest free descriptor is where the limit is set.
  int const iFree = dup(1);
  close(iFree);
  rlimit const none = {static_cast<rlim_t>(iFree), former.rlim_max};
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &none), 0);
  cImplDevice file(fs, name("f"));
  EXPECT_EQ(osFailureOf([&] { file->open(name("f"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true); }),
            osFailure("open", EMFILE, path("f")));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(dir.path().c_str(), 0); }),
            osFailure("opendir", EMFILE, dir.path()));
  EXPECT_THROW(fs.removeRecursive(name("tree"), false), mstd::cOSErrorException);
  ASSERT_EQ(setrlimit(RLIMIT_NOFILE, &former), 0);
  EXPECT_TRUE(std::filesystem::exists(path("tree/a/b")));
  file->open(name("f"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  fs.removeRecursive(name("tree"), false);
  EXPECT_FALSE(std::filesystem::exists(path("tree")));
}

TEST_F(LinuxBadDaysFault, WhatWasWrittenBeforeTheDiskWasFullIsStillThere)
{
  cImplDevice file(fs, name("f"));
  file->open(name("f"), mio::OpenWriteOnly, mio::CreateAlways, mio::WriteTruncate, true);
  {
    cFaultShim shim;
    shim.limitSpace(5);
    EXPECT_EQ(file->writeBytes("abc", 3), 3u);
    EXPECT_EQ(file->writeBytes("defghi", 6), 2u) << "what fits is written";
    EXPECT_EQ(osFailureOf([&] { file->writeBytes("fghi", 4); }), osFailure("write", ENOSPC, path("f")));
  }
  EXPECT_EQ(fileBytes(name("f")), "abcde");
  EXPECT_EQ(file->writeBytes("f", 1), 1u) << "there is space again";
  file->close();
  EXPECT_EQ(fileBytes(name("f")), "abcdef");
}

TEST_F(LinuxBadDaysFault, WhatWasWrittenBeforeTheDiskBrokeIsStillThere)
{
  cImplDevice file(fs, name("f"));
  file->open(name("f"), mio::OpenWriteOnly, mio::CreateAlways, mio::WriteTruncate, true);
  cFaultShim shim;
  shim.fail(cFaultShim::Write, EIO, 1, 1);
  EXPECT_EQ(file->writeBytes("abc", 3), 3u);
  EXPECT_EQ(osFailureOf([&] { file->writeBytes("def", 3); }), osFailure("write", EIO, path("f")));
  EXPECT_EQ(fileBytes(name("f")), "abc");
}

TEST_F(LinuxBadDaysFault, AFileThatShrinksWhileItIsReadEndsWhereItEndsNow)
{
  putFile(name("f"), std::string(10000, 'x'));
  cImplDevice file(fs, name("f"));
  file->open(name("f"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  std::string bytes(4000, 0);
  cFaultShim shim;
  shim.before(
      cFaultShim::Read, [&] { std::filesystem::resize_file(path("f"), 5000); }, 1);
  EXPECT_EQ(file->readBytes(&bytes[0], 4000), 4000u);
  EXPECT_EQ(file->readBytes(&bytes[0], 4000), 1000u);
  EXPECT_EQ(file->readBytes(&bytes[0], 4000), 0u);
  shim.before(cFaultShim::Read, [&] { std::filesystem::resize_file(path("f"), 10); });
  EXPECT_EQ(file->readBytes(&bytes[0], 4000), 0u);
  EXPECT_EQ(file->pos(), 5000u);
}

TEST_F(LinuxBadDaysFault, ADirectoryThatChangesWhileItIsListedLosesNothingThatStays)
{
  unsigned int const iFiles = 1500;
  for (unsigned int i = 0; i < iFiles; ++i)
  {
    putFile(name("stays" + std::to_string(i)), "");
    putFile(name("goes" + std::to_string(i)), "");
  }
  std::multiset<std::string> found;
  unsigned int iStep = 0;
  for (tDir listing = fs.createDirectoryImpl(dir.path().c_str(), 3); !listing->isEnd(); listing->setNext())
  {
    found.insert(nativePath(listing->element().fullPath()));
    std::filesystem::remove(path("goes" + std::to_string(iStep)));
    putFile(name("comes" + std::to_string(iStep)), "");
    if (++iStep == iFiles)
    {
      break;
    }
  }
  unsigned int iRest = 0;
  for (tDir listing = fs.createDirectoryImpl(dir.path().c_str(), 3); !listing->isEnd(); listing->setNext())
  {
    ++iRest;
  }
  EXPECT_EQ(iRest, 2 * iFiles);

  // All the way through, with what has been seen being removed.
  found.clear();
  for (tDir listing = fs.createDirectoryImpl(dir.path().c_str(), 3); !listing->isEnd(); listing->setNext())
  {
    found.insert(nativePath(listing->element().fullPath()));
    std::filesystem::remove(nativePath(listing->element().fullPath()));
  }
  EXPECT_EQ(std::set<std::string>(found.begin(), found.end()).size(), found.size()) << "nothing comes twice";
  EXPECT_EQ(found.size(), 2 * iFiles);
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

TEST_F(LinuxBadDaysFault, ADirectoryThatIsRemovedWhileItIsListedEnds)
{
  std::filesystem::create_directory(path("d"));
  for (unsigned int i = 0; i < 1500; ++i)
  {
    putFile(name("d/file" + std::to_string(i)), "");
  }
  tDir listing = fs.createDirectoryImpl(name("d"), 3);
  std::filesystem::remove_all(path("d"));
  unsigned int iEntries = 0;
  for (; !listing->isEnd(); listing->setNext())
  {
    ++iEntries;
  }
  EXPECT_LT(iEntries, 1500u);
  EXPECT_GT(iEntries, 0u);
}

TEST_F(LinuxBadDaysFault, FifosSocketsAndLinksAreListedAndRemovedWithoutBeingOpened)
{
  std::filesystem::create_directory(path("d"));
  ASSERT_EQ(mkfifo(path("d/fifo").c_str(), 0600), 0);
  int const iSocket = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path("d/socket").size(), sizeof(address.sun_path));
  strcpy(address.sun_path, path("d/socket").c_str());
  ASSERT_EQ(bind(iSocket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  std::filesystem::create_symlink("nowhere", path("d/dead"));
  std::filesystem::create_symlink("ring", path("d/ring"));
  EXPECT_THAT(listed(fs, name("d")),
              testing::ElementsAre(path("d/dead"), path("d/fifo"), path("d/ring"), path("d/socket")));
  EXPECT_FALSE(fs.fileExists(name("d/ring")));
  EXPECT_TRUE(fs.isDeadSymLink(name("d/dead")));
  fs.removeRecursive(name("d"), false);
  EXPECT_FALSE(std::filesystem::exists(path("d")));
  close(iSocket);
}

TEST_F(LinuxBadDaysFault, LinksInARingAreReportedByWhateverFollowsThem)
{
  std::filesystem::create_symlink("b", path("a"));
  std::filesystem::create_symlink("a", path("b"));
  EXPECT_FALSE(fs.exists(name("a"), true));
  EXPECT_TRUE(fs.exists(name("a"), false));
  cImplDevice file(fs, name("a"));
  EXPECT_EQ(osFailureOf([&] { file->open(name("a"), mio::OpenReadWrite, mio::CreateAlways, mio::WriteAppend, true); }),
            osFailure("open", ELOOP, path("a")));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(name("a"), 0); }), osFailure("opendir", ELOOP, path("a")));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(name("a/x")); }), osFailure("mkdir", ELOOP, path("a/x")));
  EXPECT_EQ(osFailureOf([&] { fs.setPermissions(name("a"), mio::cPermissions(0x18), true); }),
            osFailure("chmod", ELOOP, path("a")));
  fs.removeRecursive(name("a"), true);
  EXPECT_FALSE(fs.exists(name("a"), false));
  fs.remove(name("b"));
  EXPECT_FALSE(fs.exists(name("b"), false));
}

TEST_F(LinuxBadDaysFault, LinksThatLeadOutOfARemovedTreeTakeNothingWithThem)
{
  std::filesystem::create_directories(path("outside/deep"));
  putFile(name("outside/file"), "kept");
  putFile(name("outside/deep/file"), "kept, too");
  std::filesystem::create_directories(path("tree/a/b"));
  std::filesystem::create_directory_symlink("../outside", path("tree/relative"));
  std::filesystem::create_directory_symlink(path("outside"), path("tree/a/absolute"));
  std::filesystem::create_directory_symlink("..", path("tree/a/b/up"));
  std::filesystem::create_directory_symlink("/", path("tree/a/b/root"));
  std::filesystem::create_symlink("../../../outside/file", path("tree/a/b/file"));
  fs.removeRecursive(name("tree"), false);
  EXPECT_FALSE(std::filesystem::exists(path("tree")));
  EXPECT_EQ(fileBytes(name("outside/file")), "kept");
  EXPECT_EQ(fileBytes(name("outside/deep/file")), "kept, too");
}

TEST_F(LinuxNamesFault, EveryByteOfANameGoesThereAndBack)
{
  std::vector<std::string> expected;
  for (std::string const& entry : names())
  {
    mucs::cString const file = name(entry);
    cImplDevice device(byteFs, file);
    device->open(file, mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate, true);
    EXPECT_EQ(device->writeBytes(entry.data(), entry.size()), entry.size());
    device->close();
    EXPECT_EQ(fileBytes(file), entry);
    expected.push_back(path(entry));
  }
  std::sort(expected.begin(), expected.end());
  EXPECT_EQ(listed(byteFs, dir.path().c_str()), expected);
  for (tDir listing = byteFs.createDirectoryImpl(dir.path().c_str(), 3); !listing->isEnd(); listing->setNext())
  {
    mucs::cString const element = listing->element().fullPath();
    EXPECT_TRUE(byteFs.exists(element, true));
    mucs::cString renamed(element);
    renamed.appendC(".renamed");
    byteFs.rename(element, renamed);
    byteFs.rename(renamed, element);
    byteFs.remove(element);
  }
  EXPECT_TRUE(std::filesystem::is_empty(dir.path()));
}

TEST_F(LinuxNamesFault, TheDefaultEncodingDropsNoName)
{
  std::set<std::string> made;
  for (std::string const& entry : names())
  {
    putFile(name(entry), "");
    made.insert(entry);
  }
  unsigned int iListed = 0;
  for (tDir listing = fs.createDirectoryImpl(dir.path().c_str(), 3); !listing->isEnd(); listing->setNext())
  {
    mucs::cString const element = listing->element().fullPath();
    ASSERT_GT(element.length(), dir.path().size() + 1);
    ++iListed;
  }
  EXPECT_EQ(iListed, made.size());
}

TEST_F(LinuxNamesFault, PlainNamesOfOneByteAreFoundInTheDefaultEncoding)
{
  for (unsigned int c = 1; c < 128; ++c)
  {
    if (c != '/')
    {
      mucs::cString const file = name("a" + std::string(1, static_cast<char>(c)));
      putFile(file, "");
      EXPECT_TRUE(fs.exists(file, true)) << c;
      fs.remove(file);
      EXPECT_FALSE(fs.exists(file, true)) << c;
    }
  }
}

TEST_F(LinuxBadDaysFault, NamesOf255BytesGoAndOneMoreIsReported)
{
  std::string const longest(255, 'n');
  fs.mkdir(name(longest));
  EXPECT_THAT(listed(fs, dir.path().c_str()), testing::ElementsAre(path(longest)));
  fs.createSymLink("x", name(longest + "/" + longest));
  fs.rename(name(longest + "/" + longest), name(longest + "/short"));
  EXPECT_EQ(listed(fs, name(longest)).size(), 1u);
  std::string const over = longest + "n";
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(name(over)); }), osFailure("mkdir", ENAMETOOLONG, path(over)));
  EXPECT_FALSE(fs.exists(name(over), true));
  // 128 letters of two bytes are one byte too many.
  mucs::cString wide(path("").c_str());
  for (unsigned int i = 0; i < 127; ++i)
  {
    wide.append(0xE9u);
  }
  fs.mkdir(wide);
  EXPECT_TRUE(fs.exists(wide, true));
  fs.remove(wide);
  wide.append(0xE9u);
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(wide); }), osFailure("mkdir", ENAMETOOLONG, toString(wide)));
}

TEST_F(LinuxBadDaysFault, ADirectoryOfAHundredThousandEntriesIsListedWhole)
{
  unsigned int const iFiles = 100000;
  std::filesystem::create_directory(path("d"));
  int const iDir = open(path("d").c_str(), O_RDONLY | O_DIRECTORY);
  for (unsigned int i = 0; i < iFiles; ++i)
  {
    // Links are the cheapest of all entries to make.
    std::string const entry = std::to_string(i);
    ASSERT_EQ(symlinkat("x", iDir, entry.c_str()), 0) << strerror(errno);
  }
  close(iDir);
  unsigned int const iBefore = cFaultShim::numDescriptors();
  std::vector<bool> seen(iFiles, false);
  unsigned int iSeen = 0;
  for (tDir listing = fs.createDirectoryImpl(name("d"), 3); !listing->isEnd(); listing->setNext())
  {
    mucs::cString const element = listing->element().fullPath();
    unsigned int const i = static_cast<unsigned int>(std::stoul(toString(element).substr(path("d/").size())));
    ASSERT_FALSE(seen.at(i));
    seen[i] = true;
    ++iSeen;
  }
  EXPECT_EQ(iSeen, iFiles);
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
  fs.removeRecursive(name("d"), false);
  EXPECT_FALSE(std::filesystem::exists(path("d")));
}

TEST_F(LinuxBadDaysFault, EverythingWorksOnPathsThatAreTooLongForTheSystem)
{
  unsigned int const iBefore = cFaultShim::numDescriptors();
  std::string longer = dir.path();
  std::string const component(200, 'c');
  while (longer.size() < 9000)
  {
    longer += "/" + component;
    fs.mkdir(longer.c_str());
  }
  auto const at = [&](char const* entry) { return mucs::cString((longer + "/" + entry).c_str()); };
  cImplDevice file(fs, at("f"));
  file->open(at("f"), mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate, true);
  EXPECT_EQ(file->writeBytes("hello", 5), 5u);
  file->rename(at("g"));
  file->close();
  fs.createSymLink("g", at("l"));
  EXPECT_TRUE(fs.exists(at("g"), true));
  EXPECT_TRUE(fs.exists(at("l"), false));
  EXPECT_FALSE(fs.exists(at("f"), true));
  EXPECT_EQ(fs.createFileInfoImpl(at("l"))->size(true), 5u);
  EXPECT_EQ(fs.createFileInfoImpl(at("l"))->type(false), cFileInfoFlags::SymLink);
  EXPECT_EQ(toString(fs.createFileInfoImpl(at("l"))->readLink()), "g");
  fs.setPermissions(at("g"), mio::cPermissions(0x8), true);
  EXPECT_EQ(fs.createFileInfoImpl(at("g"))->readPermissions(true).permissions(), 0x8u);
  fs.rename(at("g"), name("short"));
  EXPECT_EQ(fileBytes(name("short")), "hello");
  fs.rename(name("short"), at("g"));
  EXPECT_THAT(listed(fs, longer.c_str()), testing::ElementsAre(longer + "/g", longer + "/l"));
  EXPECT_THAT(listed(fs, (longer + std::string(5000, '/')).c_str()).size(), 2u) << "slashes alone make it long";
  fs.remove(at("g"));
  fs.remove(at("l"));
  fs.remove(longer.c_str());
  EXPECT_FALSE(fs.exists(longer.c_str(), true));

  EXPECT_EQ(osFailureOf([&] { fs.mkdir(at("d")); }), osFailure("mkdir", ENOENT, longer + "/d"));
  EXPECT_EQ(osFailureOf([&] { file->open(at("f"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true); }),
            osFailure("open", ENOENT, longer + "/f"));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(at("d"), 0); }), osFailure("opendir", ENOENT, longer + "/d"));
  EXPECT_EQ(osFailureOf([&] { fs.createSymLink("x", at("d")); }), osFailure("symlink", ENOENT, longer + "/d"));
  EXPECT_EQ(osFailureOf([&] { fs.rename(at("d"), name("x")); }), osFailure("rename", ENOENT, longer + "/d"));
  EXPECT_EQ(osFailureOf([&] { fs.setPermissions(at("d"), mio::cPermissions(8), true); }),
            osFailure("chmod", ENOENT, longer + "/d"));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);

  // Where a directory on the way is missing the walk itself ends.
  std::string const astray = dir.path() + "/no" + longer.substr(dir.path().size());
  EXPECT_FALSE(fs.exists(astray.c_str(), true));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(astray.c_str()); }), osFailure("mkdir", ENOENT, astray));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(astray.c_str(), 0); }), osFailure("opendir", ENOENT, astray));
  EXPECT_EQ(osFailureOf([&] { fs.createSymLink("x", astray.c_str()); }), osFailure("symlink", ENOENT, astray));
  EXPECT_EQ(osFailureOf([&] { fs.rename(astray.c_str(), name("x")); }), osFailure("rename", ENOENT, astray));
  EXPECT_EQ(osFailureOf([&] { fs.rename(name("x"), astray.c_str()); }), osFailure("rename", ENOENT, path("x")));
  EXPECT_EQ(osFailureOf([&] { fs.setPermissions(astray.c_str(), mio::cPermissions(8), true); }),
            osFailure("chmod", ENOENT, astray));
  EXPECT_EQ(
      osFailureOf([&] { file->open(astray.c_str(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true); }),
      osFailure("open", ENOENT, astray));
  EXPECT_EQ(osFailureOf([&] { fs.createFileInfoImpl(astray.c_str())->readLink(); }), osFailure("stat", ENOENT, astray));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);

  // A single name that is too long stays too long.
  std::string const lump = path(std::string(5000, 'x'));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(lump.c_str()); }), osFailure("mkdir", ENAMETOOLONG, lump));
  EXPECT_EQ(osFailureOf([&] { fs.mkdir(std::string(5000, 'x').c_str()); }),
            osFailure("mkdir", ENAMETOOLONG, std::string(5000, 'x')));
  fs.removeRecursive(name(component), false);
}

TEST_F(LinuxBadDaysFault, PathsOnBothSidesOfTheSystemsLimitWork)
{
  std::string base = dir.path();
  std::string const component(100, 'c');
  while (base.size() + component.size() + 1 < 3900)
  {
    base += "/" + component;
    fs.mkdir(base.c_str());
  }
  for (unsigned int iLength = 4090; iLength < 4100; ++iLength)
  {
    std::string const file = base + "/" + std::string(iLength - base.size() - 1, 'f');
    fs.mkdir(file.c_str());
    EXPECT_TRUE(fs.exists(file.c_str(), true)) << iLength;
    EXPECT_TRUE(fs.exists((file + "/").c_str(), true)) << iLength;
    EXPECT_TRUE(listed(fs, file.c_str()).empty());
    fs.remove(file.c_str());
    EXPECT_FALSE(fs.exists(file.c_str(), true)) << iLength;
  }
  fs.removeRecursive(name(component), false);
}

/// A parameter, so that a slow machine has the time of a whole suite for it: each level is found by a path from the
/// top.
class LinuxDeepTreeFault : public LinuxBadDaysFault, public testing::WithParamInterface<unsigned int>
{
};

TEST_P(LinuxDeepTreeFault, ATreeOfAnyDepthIsRemoved)
{
  std::filesystem::create_directory(path("root"));
  std::string const deepest = makeDeepTree(path("root"), GetParam());
  ASSERT_TRUE(fs.exists(deepest.c_str(), true));
  unsigned int const iBefore = cFaultShim::numDescriptors();
  fs.removeRecursive(name("root"), false);
  EXPECT_FALSE(fs.exists(name("root"), false));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

// The time grows with the square of the depth: each level is reached by its whole path.
#ifdef MORTISE_TEST_EXHAUSTIVE
INSTANTIATE_TEST_SUITE_P(Levels, LinuxDeepTreeFault, testing::Values(100u, 10000u));
#else
INSTANTIATE_TEST_SUITE_P(Levels, LinuxDeepTreeFault, testing::Values(100u, 2000u));
#endif
