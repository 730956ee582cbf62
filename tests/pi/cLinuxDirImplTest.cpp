#include "io/cAbstractDirImpl.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "support/cByteEnDec.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "support/fileContents.h"
#include "support/osFailure.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <errno.h>

#include <filesystem>
#include <set>
#include <string>
#include <vector>

using support::cFaultShim;
using support::cTempDir;
using support::nativePath;
using support::osFailure;
using support::osFailureOf;
using support::putFile;
using support::toString;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{

typedef mstd::tAutoPtr<mio::cAbstractDirImpl> tDir;

/// What is left in a listing, as text.
std::vector<std::string> rest(tDir const& pDir)
{
  std::vector<std::string> paths;
  for (; !pDir->isEnd(); pDir->setNext())
  {
    paths.push_back(nativePath(pDir->element().fullPath()));
  }
  return paths;
}

std::vector<std::string> sorted(std::vector<std::string> paths)
{
  std::sort(paths.begin(), paths.end());
  return paths;
}

class cLinuxDirImpl : public testing::Test
{
public:
  std::string path(std::string const& entry) const { return dir.path() + "/" + entry; }
  tDir list(int flags = 3) const { return fs.createDirectoryImpl(dir.path().c_str(), flags); }
  void put(std::string const& entry) const { putFile(dir.name(entry), ""); }
  void putMany(unsigned int iFiles) const
  {
    for (unsigned int i = 0; i < iFiles; ++i)
    {
      put("file number " + std::to_string(i));
    }
  }

  cTempDir dir;
  mio::cFs fs;
};

} // namespace

TEST_F(cLinuxDirImpl, AFreshListingStandsAtItsFirstEntry)
{
  put("only");
  tDir const listing = list();
  ASSERT_FALSE(listing->isEnd());
  EXPECT_EQ(toString(listing->element().fullPath()), path("only"));
  listing->setNext();
  EXPECT_TRUE(listing->isEnd());
}

TEST_F(cLinuxDirImpl, AnEmptyDirectoryIsAtItsEndAtOnce)
{
  tDir const listing = list();
  EXPECT_TRUE(listing->isEnd());
  listing->setNext();
  EXPECT_TRUE(listing->isEnd());
  EXPECT_TRUE(listing->element().fullPath().empty());
}

TEST_F(cLinuxDirImpl, TheFlagsHideDotAndDotDotEachForItself)
{
  put("..."); // both flags leave such names alone
  put(".x");
  EXPECT_THAT(sorted(rest(list(0))), ElementsAre(path("."), path(".."), path("..."), path(".x")));
  EXPECT_THAT(sorted(rest(list(1))), ElementsAre(path(".."), path("..."), path(".x")));
  EXPECT_THAT(sorted(rest(list(2))), ElementsAre(path("."), path("..."), path(".x")));
  EXPECT_THAT(sorted(rest(list(3))), ElementsAre(path("..."), path(".x")));
}

TEST_F(cLinuxDirImpl, TheSeparatorIsAddedOnceIfItIsMissing)
{
  put("f");
  EXPECT_THAT(rest(fs.createDirectoryImpl(dir.path().c_str(), 3)), ElementsAre(path("f")));
  EXPECT_THAT(rest(fs.createDirectoryImpl((dir.path() + "/").c_str(), 3)), ElementsAre(path("f")));
  EXPECT_THAT(rest(fs.createDirectoryImpl((dir.path() + "//").c_str(), 3)), ElementsAre(path("/f")));
}

TEST_F(cLinuxDirImpl, TheElementsBelongToTheFileSystemOfTheListing)
{
  support::cByteEnDec bytes;
  mio::cFs byteFs(bytes);
  put("caf\xC3\xA9");
  tDir const listing = byteFs.createDirectoryImpl(dir.path().c_str(), 3);
  EXPECT_EQ(&listing->element().fs().endec(), &bytes);
  EXPECT_THAT(rest(listing), ElementsAre(path("caf\xC3\xA9")));
  mucs::cString decoded(path("caf").c_str());
  decoded.append(0xE9u);
  EXPECT_TRUE(list()->element().fullPath() == decoded);
}

TEST_F(cLinuxDirImpl, WhatIsNoDirectoryIsReportedWithItsPath)
{
  put("f");
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(dir.name("missing"), 3); }),
            osFailure("opendir", ENOENT, path("missing")));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl(dir.name("f"), 3); }), osFailure("opendir", ENOTDIR, path("f")));
  EXPECT_EQ(osFailureOf([&] { fs.createDirectoryImpl("", 3); }), osFailure("opendir", ENOENT));
}

TEST_F(cLinuxDirImpl, ASmallDirectoryHoldsNoDescriptorWhileItIsWalked)
{
  putMany(100);
  unsigned int const iBefore = cFaultShim::numDescriptors();
  tDir const listing = list();
  tDir const copy = listing->createCopy();
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
  EXPECT_EQ(rest(listing).size(), 100u);
}

TEST_F(cLinuxDirImpl, ALargeDirectoryHoldsADescriptorUntilItsEndIsNear)
{
  putMany(1500);
  unsigned int const iBefore = cFaultShim::numDescriptors();
  {
    tDir const listing = list();
    EXPECT_EQ(cFaultShim::numDescriptors(), iBefore + 1);
    std::vector<std::string> const paths = rest(listing);
    EXPECT_EQ(paths.size(), 1500u);
    EXPECT_EQ(std::set<std::string>(paths.begin(), paths.end()).size(), 1500u);
    EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
  }
  {
    tDir const listing = list();
  }
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

TEST_F(cLinuxDirImpl, ACopyGoesOnFromTheSamePlace)
{
  putMany(1200);
  std::vector<std::string> const all = rest(list());
  tDir const listing = list();
  for (unsigned int i = 0; i < all.size(); ++i)
  {
    // Around the borders of what is read ahead, too.
    if (i % 97 == 0 || i + 1 == all.size())
    {
      tDir const copy = listing->createCopy();
      EXPECT_EQ(rest(copy), std::vector<std::string>(all.begin() + i, all.end())) << i;
      tDir const second = listing->createCopy()->createCopy();
      EXPECT_EQ(rest(second).size(), all.size() - i);
    }
    ASSERT_EQ(nativePath(listing->element().fullPath()), all[i]) << "the copies don't move the original";
    listing->setNext();
  }
  EXPECT_TRUE(listing->isEnd());
  EXPECT_TRUE(listing->createCopy()->isEnd());
}

TEST_F(cLinuxDirImpl, ACopyHidesWhatItsOriginalHides)
{
  put("f");
  tDir const listing = list(2);
  tDir const copy = listing->createCopy();
  EXPECT_THAT(sorted(rest(copy)), ElementsAre(path("."), path("f")));
}

TEST_F(cLinuxDirImpl, ACopyKeepsTheElementEvenIfItIsGone)
{
  putMany(10);
  tDir const listing = list();
  std::string const first = nativePath(listing->element().fullPath());
  std::filesystem::remove(first);
  tDir const copy = listing->createCopy();
  EXPECT_EQ(nativePath(copy->element().fullPath()), first);
  EXPECT_EQ(rest(copy).size(), 10u);
}

TEST_F(cLinuxDirImpl, ACopySeesTheDirectoryAsItIsWhenTheCopyIsMade)
{
  putMany(10);
  tDir const listing = list();
  for (std::string const& entry : rest(list()))
  {
    if (entry != nativePath(listing->element().fullPath()))
    {
      std::filesystem::remove(entry);
    }
  }
  EXPECT_EQ(rest(listing->createCopy()).size(), 1u);
}

TEST_F(cLinuxDirImpl, ACopyOfAListingWhoseDirectoryIsGoneIsReported)
{
  std::filesystem::create_directory(path("d"));
  put("d/f");
  tDir const listing = fs.createDirectoryImpl(dir.name("d"), 3);
  std::filesystem::remove_all(path("d"));
  EXPECT_EQ(osFailureOf([&] { listing->createCopy(); }), osFailure("opendir", ENOENT, path("d/")));
  listing->setNext();
  EXPECT_TRUE(listing->createCopy()->isEnd()) << "at the end nothing has to be opened";
}

TEST_F(cLinuxDirImpl, ACopyThatCannotFindItsPlaceIsReported)
{
  put("f");
  tDir const listing = list();
  unsigned int const iBefore = cFaultShim::numDescriptors();
  cFaultShim shim;
  shim.fail(cFaultShim::Seek, EINVAL);
  EXPECT_EQ(osFailureOf([&] { listing->createCopy(); }), osFailure("seekdir", EINVAL, path("")));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

TEST_F(cLinuxDirImpl, AListingThatCannotBeReadIsReportedAndGivesItsDescriptorBack)
{
  put("f");
  unsigned int const iBefore = cFaultShim::numDescriptors();
  cFaultShim shim;
  shim.fail(cFaultShim::ReadDir, EIO);
  EXPECT_EQ(osFailureOf([&] { list(); }), osFailure("readdir", EIO, path("")));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

TEST_F(cLinuxDirImpl, AFailureInTheMiddleComesBehindTheNamesThatWereRead)
{
  putMany(10);
  std::vector<std::string> const all = rest(list());
  cFaultShim shim;
  shim.fail(cFaultShim::ReadDir, EIO, 1, 4);
  tDir const listing = list(0);
  for (unsigned int i = 0; i < 3; ++i)
  {
    listing->setNext();
  }
  std::string const last = nativePath(listing->element().fullPath());
  EXPECT_EQ(osFailureOf([&] { listing->setNext(); }), osFailure("readdir", EIO, path("")));
  EXPECT_FALSE(listing->isEnd());
  EXPECT_EQ(nativePath(listing->element().fullPath()), last) << "it stands where it was";
  listing->setNext();
  EXPECT_EQ(rest(listing).size(), 8u) << "and goes on when it can";
}

TEST_F(cLinuxDirImpl, AFailureInALargeDirectoryKeepsThePlaceToo)
{
  putMany(1500);
  cFaultShim shim;
  shim.fail(cFaultShim::ReadDir, EIO, 1, 1000);
  tDir const listing = list();
  unsigned int iEntries = 1;
  unsigned int iFailures = 0;
  while (!listing->isEnd() && iFailures < 5)
  {
    if (osFailureOf([&] { listing->setNext(); }) == "nothing")
    {
      iEntries += !listing->isEnd();
    }
    else
    {
      ++iFailures;
    }
  }
  EXPECT_EQ(iFailures, 1u);
  EXPECT_EQ(iEntries, 1500u);
}

TEST_F(cLinuxDirImpl, ANameThatDoesNotDecodeIsDeliveredWithItsBytesAsCodePoints)
{
  put("caf\xE9");
  put("\xFF\xFE");
  mucs::cString cafe(path("caf").c_str());
  cafe.append(0xE9u);
  mucs::cString high(path("").c_str());
  high.append(0xFFu);
  high.append(0xFEu);
  std::vector<mucs::cString> found;
  for (tDir listing = list(); !listing->isEnd(); listing->setNext())
  {
    found.push_back(listing->element().fullPath());
  }
  ASSERT_EQ(found.size(), 2u);
  EXPECT_TRUE(found[0] == cafe || found[1] == cafe);
  EXPECT_TRUE(found[0] == high || found[1] == high);
}
