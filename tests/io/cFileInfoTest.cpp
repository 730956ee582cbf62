#include "io/cFileInfo.h"

#include "io/cDirInfo.h"
#include "pi/cSystem.h"
#include "std/cOSErrorException.h"
#include "support/cTempDir.h"
#include "support/exceptionText.h"
#include "ucs/cEnDecUTF8.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>

namespace
{

using mio::cFileInfo;

class cFileInfoTest : public testing::Test
{
protected:
  cFileInfoTest()
  {
    std::ofstream(of("file")) << "12345";
    std::ofstream(of(".hidden")) << "1";
    std::filesystem::create_directory(of("dir"));
    std::filesystem::create_symlink("file", of("link"));
    std::filesystem::create_symlink("dir", of("dirLink"));
    std::filesystem::create_symlink("nowhere", of("dead"));
    std::filesystem::create_symlink(".hidden", of("toHidden"));
  }
  std::string of(std::string const& entry) const { return mDir.path() + "/" + entry; }
  cFileInfo info(std::string const& entry) const { return cFileInfo(mDir.name(entry)); }

  support::cTempDir mDir;
};

} // namespace

TEST_F(cFileInfoTest, ItIsMadeFromAPathInSeveralWays)
{
  EXPECT_EQ(support::toString(cFileInfo(mDir.name("file")).fullPath()), of("file"));
  EXPECT_EQ(support::toString(cFileInfo(of("file").c_str()).fullPath()), of("file"));
  EXPECT_EQ(support::toString(cFileInfo(mio::cFs(), mDir.name("file")).fullPath()), of("file"));
  EXPECT_EQ(support::toString(cFileInfo(mio::cDirInfo(mDir.name("file"))).fullPath()), of("file"));
}

TEST_F(cFileInfoTest, AFileADirectoryAndALinkAreToldApart)
{
  EXPECT_EQ(info("file").type(), mio::cFileInfoFlags::File);
  EXPECT_TRUE(info("file").isFile());
  EXPECT_FALSE(info("file").isDir());
  EXPECT_FALSE(info("file").isSymLink());
  EXPECT_TRUE(info("dir").isDir());
  EXPECT_FALSE(info("dir").isFile());
  EXPECT_TRUE(info("link").isFile(true));
  EXPECT_FALSE(info("link").isFile(false));
  EXPECT_TRUE(info("link").isSymLink());
  EXPECT_TRUE(info("dirLink").isDir(true));
  EXPECT_FALSE(info("dirLink").isDir(false));
  EXPECT_EQ(info("dirLink").type(false), mio::cFileInfoFlags::SymLink);
  EXPECT_EQ(cFileInfo("/dev/null").type(), mio::cFileInfoFlags::CharacterDevice);
}

TEST_F(cFileInfoTest, ExistenceIsThatOfTheLinkOrOfItsTarget)
{
  EXPECT_TRUE(info("file").exists());
  EXPECT_FALSE(info("missing").exists());
  EXPECT_TRUE(info("dead").exists(false));
  EXPECT_FALSE(info("dead").exists(true));
}

TEST_F(cFileInfoTest, ExistenceBringsATime)
{
  timespec const times[2] = {{1000000000, 0}, {1234567890, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, of("file").c_str(), times, 0), 0);
  mstd::cDateTime time;
  EXPECT_TRUE(info("file").exists(true, &time));
  EXPECT_EQ(time.toSec(), 1234567890u);
  EXPECT_TRUE(info("file").exists(true, &time, mio::cFileInfoFlags::LastAccess));
  EXPECT_EQ(time.toSec(), 1000000000u);
  EXPECT_FALSE(info("missing").exists(true, &time));
  EXPECT_EQ(time.toSec(), 1000000000u);
  EXPECT_EQ(info("file").timeStamp().toSec(), 1234567890u);
  EXPECT_EQ(info("file").timeStamp(mio::cFileInfoFlags::LastAccess).toSec(), 1000000000u);
  EXPECT_EQ(info("link").timeStamp(mio::cFileInfoFlags::LastModification, true).toSec(), 1234567890u);
  EXPECT_NE(info("link").timeStamp(mio::cFileInfoFlags::LastModification, false).toSec(), 1234567890u);
}

TEST_F(cFileInfoTest, OnlyALinkThatLeadsNowhereIsDead)
{
  EXPECT_TRUE(info("dead").isDeadSymLink());
  EXPECT_FALSE(info("link").isDeadSymLink());
  EXPECT_FALSE(info("file").isDeadSymLink());
  EXPECT_FALSE(info("missing").isDeadSymLink());
}

TEST_F(cFileInfoTest, TheSizeIsThatOfTheLinkOrOfItsTarget)
{
  EXPECT_EQ(info("file").size(), 5u);
  EXPECT_EQ(info("link").size(true), 5u);
  EXPECT_EQ(info("link").size(false), 4u);
}

TEST_F(cFileInfoTest, PermissionsAreReadAnew)
{
  cFileInfo const file = info("file");
  ASSERT_EQ(chmod(of("file").c_str(), 0751), 0);
  EXPECT_EQ(file.permissions().permissions(), 0x8u | 0x10 | 0x20 | 0x40 | 0x100 | 0x800);
  ASSERT_EQ(chmod(of("file").c_str(), 0400), 0);
  EXPECT_EQ(file.permissions().permissions(), 0x8u);
  EXPECT_TRUE(file.permissions().isReadable());
  EXPECT_FALSE(file.permissions().isWriteable());
}

TEST_F(cFileInfoTest, AHiddenFileBeginsWithADot)
{
  EXPECT_TRUE(info(".hidden").isHidden());
  EXPECT_FALSE(info("file").isHidden());
  EXPECT_FALSE(info("toHidden").isHidden());
  std::filesystem::create_symlink("nowhere", of(".dead"));
  EXPECT_THROW(info(".dead").isHidden(), mstd::cOSErrorException); // its link is followed
}

TEST_F(cFileInfoTest, ALinkTellsWhereItLeads)
{
  EXPECT_EQ(support::toString(info("dead").readLink()), "nowhere");
  EXPECT_EQ(support::toString(info("file").readLink()), "");
}

TEST_F(cFileInfoTest, QueriesOfAMissingPathFail)
{
  EXPECT_THROW(info("missing").type(), mstd::cOSErrorException);
  EXPECT_THROW(info("missing").size(), mstd::cOSErrorException);
  EXPECT_THROW(info("missing").permissions(), mstd::cOSErrorException);
  EXPECT_THROW(info("missing").timeStamp(), mstd::cOSErrorException);
  EXPECT_THROW(info("missing").isHidden(), mstd::cOSErrorException);
}

TEST_F(cFileInfoTest, CopiesAnswerForTheSamePath)
{
  cFileInfo first = info("file");
  cFileInfo second(first);
  EXPECT_EQ(support::toString(second.fullPath()), of("file"));
  second = info("dir");
  EXPECT_TRUE(second.isDir());
  first.swap(second);
  EXPECT_TRUE(first.isDir());
  EXPECT_TRUE(second.isFile());
}

TEST_F(cFileInfoTest, ItStaysWithItsFileSystem)
{
  mucs::cEnDecUTF8 const enDec;
  mio::cFs const fs(enDec);
  cFileInfo own(fs, "/");
  cFileInfo const ofEntry{mio::cDirInfo(fs, "/")};
  EXPECT_EQ(&own.fs().endec(), &enDec);
  EXPECT_EQ(&ofEntry.fs().endec(), &enDec);
  EXPECT_EQ(&cFileInfo(own).fs().endec(), &enDec);
  cFileInfo other("/");
  EXPECT_EQ(&other.fs().endec(), &mpi::system().defaults.enDec);
  other.swap(own);
  EXPECT_EQ(&other.fs().endec(), &enDec);
  EXPECT_EQ(&own.fs().endec(), &mpi::system().defaults.enDec);
  own = ofEntry;
  EXPECT_EQ(&own.fs().endec(), &enDec);
}
