#include "io/cAbstractFileInfoImpl.h"
#include "io/cFs.h"
#include "io/cPermissions.h"
#include "std/cDateTime.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "support/fileContents.h"
#include "support/osFailure.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/un.h>
#include <unistd.h>
#include <utime.h>

#include <errno.h>
#include <string.h>

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

typedef mstd::tAutoPtr<mio::cAbstractFileInfoImpl> tInfo;

class cLinuxFileInfoImpl : public testing::Test
{
public:
  std::string path(std::string const& entry) const { return dir.path() + "/" + entry; }
  tInfo info(std::string const& entry) const { return fs.createFileInfoImpl(dir.name(entry)); }
  tInfo at(char const* path) const { return fs.createFileInfoImpl(path); }
  void put(std::string const& entry, std::string const& bytes = "") const { putFile(dir.name(entry), bytes); }
  void link(std::string const& target, std::string const& entry) const
  {
    ASSERT_EQ(symlink(target.c_str(), path(entry).c_str()), 0);
  }

  cTempDir dir;
  mio::cFs fs;
};

} // namespace

TEST_F(cLinuxFileInfoImpl, ThePathIsTheOneGivenAndNeedNotExist)
{
  EXPECT_EQ(toString(info("a/../b")->filePath()), path("a/../b"));
}

TEST_F(cLinuxFileInfoImpl, EachKindOfThingHasItsType)
{
  put("file");
  ASSERT_EQ(mkfifo(path("fifo").c_str(), 0600), 0);
  int const iSocket = socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address = {};
  address.sun_family = AF_UNIX;
  ASSERT_LT(path("socket").size(), sizeof(address.sun_path));
  strcpy(address.sun_path, path("socket").c_str());
  ASSERT_EQ(bind(iSocket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
  close(iSocket);
  link("file", "link");
  EXPECT_EQ(info("file")->type(true), 0);
  EXPECT_EQ(info("")->type(true), 1);
  EXPECT_EQ(at("/dev/null")->type(true), 2);
  EXPECT_EQ(info("fifo")->type(true), 4);
  EXPECT_EQ(info("link")->type(false), 5);
  EXPECT_EQ(info("link")->type(true), 0);
  EXPECT_EQ(info("socket")->type(true), 6);
}

TEST_F(cLinuxFileInfoImpl, ABlockDeviceHasItsType)
{
  std::string const device = path("block");
  if (mknod(device.c_str(), S_IFBLK | 0600, makedev(7, 0)) != 0)
  {
    GTEST_SKIP() << "No right to make a device";
  }
  EXPECT_EQ(at(device.c_str())->type(true), cFileInfoFlags::BlockDevice);
}

TEST_F(cLinuxFileInfoImpl, TheSizeHas64Bits)
{
  put("file", "12345");
  link("file", "link");
  EXPECT_EQ(info("file")->size(true), 5u);
  EXPECT_EQ(info("link")->size(true), 5u);
  EXPECT_EQ(info("link")->size(false), 4u);
  std::filesystem::resize_file(path("file"), 0x512345678ull);
  EXPECT_EQ(info("file")->size(true), 0x512345678ull);
}

TEST_F(cLinuxFileInfoImpl, WhatIsNotThereFailsWithThePathAndTheSizeWithTheResultAsCode)
{
  tInfo const missing = info("missing");
  for (bool const follow : {false, true})
  {
    EXPECT_EQ(osFailureOf([&] { missing->type(follow); }), osFailure("stat", ENOENT, path("missing")));
    EXPECT_EQ(osFailureOf([&] { missing->size(follow); }), osFailure("stat", -1, path("missing")));
    EXPECT_EQ(osFailureOf([&] { missing->timeStamp(cFileInfoFlags::LastAccess, follow); }),
              osFailure("stat", ENOENT, path("missing")));
    EXPECT_EQ(osFailureOf([&] { missing->readPermissions(follow); }), osFailure("stat", ENOENT, path("missing")));
  }
  EXPECT_EQ(osFailureOf([&] { missing->readLink(); }), osFailure("stat", ENOENT, path("missing")));
}

TEST_F(cLinuxFileInfoImpl, ADeadLinkIsThereOnlyIfItIsNotFollowed)
{
  link("nowhere", "dead");
  EXPECT_EQ(info("dead")->type(false), cFileInfoFlags::SymLink);
  EXPECT_EQ(osFailureOf([&] { info("dead")->type(true); }), osFailure("stat", ENOENT, path("dead")));
  EXPECT_EQ(toString(info("dead")->readLink()), "nowhere");
}

TEST_F(cLinuxFileInfoImpl, LinksInARingAreReported)
{
  link("b", "a");
  link("a", "b");
  EXPECT_EQ(osFailureOf([&] { info("a")->size(true); }), osFailure("stat", -1, path("a")));
  EXPECT_EQ(osFailureOf([&] { info("a")->type(true); }), osFailure("stat", ELOOP, path("a")));
  EXPECT_EQ(osFailureOf([&] { info("a/x")->type(false); }), osFailure("stat", ELOOP, path("a/x")));
  EXPECT_EQ(toString(info("a")->readLink()), "b");
}

TEST_F(cLinuxFileInfoImpl, EachTimeStampIsTheSystemsToTheSecond)
{
  put("file");
  utimbuf const times = {1111111111, 1234567890};
  ASSERT_EQ(utime(path("file").c_str(), &times), 0);
  struct stat present;
  ASSERT_EQ(stat(path("file").c_str(), &present), 0);
  tInfo const file = info("file");
  EXPECT_EQ(file->timeStamp(cFileInfoFlags::LastAccess, true).get(), 1111111111000000ull);
  EXPECT_EQ(file->timeStamp(cFileInfoFlags::LastModification, true).get(), 1234567890000000ull);
  EXPECT_EQ(file->timeStamp(cFileInfoFlags::LastStatusChange, true).get(),
            static_cast<unsigned long long>(present.st_ctime) * 1000000);
  EXPECT_EQ(file->timeStamp(cFileInfoFlags::TimeStamp(3), true).get(), 1234567890000000ull);
}

TEST_F(cLinuxFileInfoImpl, TimesBefore1970AreItsBeginningAndThoseBehind2038AreThemselves)
{
  put("file");
  timespec times[2] = {{-5, 0}, {4102444800, 0}};
  if (utimensat(AT_FDCWD, path("file").c_str(), times, 0) != 0 || sizeof(time_t) < 8)
  {
    GTEST_SKIP() << "The file system knows no such times";
  }
  struct stat present;
  ASSERT_EQ(stat(path("file").c_str(), &present), 0);
  if (present.st_atime != -5 || present.st_mtime != 4102444800)
  {
    GTEST_SKIP() << "The file system knows no such times";
  }
  EXPECT_EQ(info("file")->timeStamp(cFileInfoFlags::LastAccess, true).get(), 0u);
  EXPECT_EQ(info("file")->timeStamp(cFileInfoFlags::LastModification, true).get(), 4102444800000000ull);
}

TEST_F(cLinuxFileInfoImpl, EachPermissionOfTheSystemHasItsBit)
{
  put("file");
  struct tBit
  {
    unsigned long long ours;
    mode_t theirs;
  };
  tBit const bits[] = {{0x001, 0x800}, {0x002, 0x400}, {0x004, 0x200}, {0x008, 0x100}, {0x010, 0x080}, {0x020, 0x040},
                       {0x040, 0x020}, {0x080, 0x010}, {0x100, 0x008}, {0x200, 0x004}, {0x400, 0x002}, {0x800, 0x001}};
  for (tBit const& bit : bits)
  {
    // What the sticky bit of a file means is up to the system, but the owner may set it.
    if (chmod(path("file").c_str(), bit.theirs) == 0)
    {
      EXPECT_EQ(info("file")->readPermissions(true).permissions(), bit.ours);
    }
    else
    {
      ADD_FAILURE() << "chmod " << bit.theirs;
    }
    chmod(path("file").c_str(), 0600);
    fs.setPermissions(dir.name("file"), mio::cPermissions(bit.ours), true);
    struct stat present;
    ASSERT_EQ(stat(path("file").c_str(), &present), 0);
    EXPECT_EQ(present.st_mode & 07777u, bit.theirs);
  }
}

TEST_F(cLinuxFileInfoImpl, PermissionsThatTheSystemDoesNotKnowAreNotSet)
{
  put("file");
  fs.setPermissions(dir.name("file"), mio::cPermissions(0xFFFFFFFFFFFFF000ull | 0x18), true);
  EXPECT_EQ(info("file")->readPermissions(true).permissions(), 0x18u);
}

TEST_F(cLinuxFileInfoImpl, AFileIsHiddenByTheFirstCharacterOfItsLastName)
{
  auto const isHidden = [&](std::string const& entry) {
    return (info(entry)->readPermissions(true).permissions() & 0x2000) != 0;
  };
  put(".profile");
  put("profile.");
  put("..x");
  put("...");
  mkdir(path(".d").c_str(), 0700);
  put(".d/seen");
  EXPECT_TRUE(isHidden(".profile"));
  EXPECT_TRUE(isHidden("..x"));
  EXPECT_TRUE(isHidden("..."));
  EXPECT_TRUE(isHidden(".d"));
  EXPECT_TRUE(isHidden(".d/"));
  EXPECT_FALSE(isHidden("profile."));
  EXPECT_FALSE(isHidden(".d/seen"));
  EXPECT_FALSE(isHidden(".d/."));
  EXPECT_FALSE(isHidden(".d/.."));
}

TEST_F(cLinuxFileInfoImpl, DotAndDotDotAreNotHidden)
{
  EXPECT_EQ(at(".")->readPermissions(true).permissions() & 0x2000, 0u);
  EXPECT_EQ(at("..")->readPermissions(true).permissions() & 0x2000, 0u);
  EXPECT_EQ(at("/")->readPermissions(true).permissions() & 0x2000, 0u);
}

TEST_F(cLinuxFileInfoImpl, WhatIsNoLinkLeadsNowhere)
{
  put("file");
  EXPECT_TRUE(info("file")->readLink().empty());
  EXPECT_TRUE(info("")->readLink().empty());
}

TEST_F(cLinuxFileInfoImpl, ALinkIsReadWhateverItsLength)
{
  for (unsigned int const iLength : {1u, 255u, 256u, 257u, 512u, 4000u})
  {
    std::string const target(iLength, 'x');
    link(target, "link");
    EXPECT_EQ(toString(info("link")->readLink()), target);
    ::unlink(path("link").c_str());
  }
}

TEST_F(cLinuxFileInfoImpl, ALinkThatDoesNotDecodeGivesItsBytes)
{
  link("t\xE9", "link");
  mucs::cString const target = info("link")->readLink();
  ASSERT_EQ(target.length(), 2u);
  EXPECT_EQ(target[0], unsigned('t'));
  EXPECT_EQ(target[1], 0xE9u);
}

TEST_F(cLinuxFileInfoImpl, ALinkThatCannotBeReadIsReported)
{
  link("x", "link");
  cFaultShim shim;
  shim.fail(cFaultShim::ReadLink, EIO);
  EXPECT_EQ(osFailureOf([&] { info("link")->readLink(); }), osFailure("readlink", EIO, path("link")));
}
