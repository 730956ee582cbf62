#include "io/cDir.h"

#include "io/cAbstractDirImpl.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "io/cProxyFs.h"
#include "pi/cSystem.h"
#include "std/cOSErrorException.h"
#include "support/cForwardFs.h"
#include "support/cTempDir.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <fstream>
#include <set>

namespace
{

using mio::cDir;
using mio::cDirInfo;
typedef std::set<std::string> tNames;

int const HideDots = mio::DirHideDot | mio::DirHideDotDot;

class cDirTest : public testing::Test
{
protected:
  cDirTest()
  {
    for (char const* entry : {"one", "two", "three"})
    {
      std::ofstream(mDir.path() + "/" + entry) << entry;
    }
  }
  mucs::cString dir() const { return mucs::cString((mDir.path() + "/").c_str()); }
  std::string of(std::string const& entry) const { return mDir.path() + "/" + entry; }
  tNames all() const { return {of("one"), of("two"), of("three")}; }

  support::cTempDir mDir;
};

std::string pathOf(cDirInfo const& entry)
{
  return support::toString(entry.fullPath());
}

tNames namesFrom(cDir& dir)
{
  tNames names;
  for (; !dir.isEnd(); dir.setNext())
  {
    EXPECT_TRUE(names.insert(pathOf(dir.element())).second);
  }
  return names;
}

} // namespace

TEST_F(cDirTest, ItWalksOverAllEntries)
{
  cDir walk(dir(), HideDots);
  EXPECT_EQ(namesFrom(walk), all());
  cDir other((mDir.path() + "/").c_str(), HideDots);
  EXPECT_EQ(namesFrom(other), all());
  mio::cFs const fs;
  cDir third(fs, dir(), HideDots);
  EXPECT_EQ(namesFrom(third), all());
}

TEST_F(cDirTest, FlagsHideTheDots)
{
  cDir everything(dir(), mio::DirShowAll);
  tNames names = namesFrom(everything);
  EXPECT_EQ(names.count(of(".")), 1u);
  EXPECT_EQ(names.count(of("..")), 1u);
  cDir withoutDot(dir(), mio::DirHideDot);
  names = namesFrom(withoutDot);
  EXPECT_EQ(names.count(of(".")), 0u);
  EXPECT_EQ(names.count(of("..")), 1u);
  cDir withoutDots(dir(), mio::DirHideDotDot);
  EXPECT_EQ(namesFrom(withoutDots).count(of("..")), 0u);
}

TEST_F(cDirTest, ALoopWalksOverTheList)
{
  cDir const walk(dir(), HideDots);
  for (int i = 0; i < 2; ++i)
  {
    tNames names;
    for (cDirInfo const& entry : walk.list())
    {
      names.insert(pathOf(entry));
    }
    EXPECT_EQ(names, all());
  }
  tNames names;
  for (cDirInfo const& entry : mpi::system().fs.openDir(dir(), HideDots))
  {
    names.insert(pathOf(entry));
  }
  EXPECT_EQ(names, all());
}

TEST_F(cDirTest, ACopyIsAWalkOfItsOwn)
{
  cDir walk(dir(), HideDots);
  walk.setNext();
  cDir copy(walk);
  EXPECT_TRUE(copy == walk);
  std::string const second = pathOf(walk.element());
  copy.setNext();
  EXPECT_TRUE(copy != walk);
  EXPECT_EQ(pathOf(walk.element()), second);
  EXPECT_NE(pathOf(copy.element()), second);
  copy.setNext();
  EXPECT_TRUE(copy.isEnd());
  EXPECT_TRUE(copy != walk);
  EXPECT_TRUE(walk != copy);
}

TEST_F(cDirTest, AssignmentAndSwapMoveTheWalk)
{
  support::cTempDir const empty;
  cDir nothing(mucs::cString((empty.path() + "/").c_str()), HideDots);
  EXPECT_TRUE(nothing.isEnd());
  cDir walk(dir(), HideDots);
  std::string const first = pathOf(walk.element());
  walk.swap(nothing);
  EXPECT_TRUE(walk.isEnd());
  EXPECT_EQ(pathOf(nothing.element()), first);
  walk = nothing;
  EXPECT_TRUE(walk == nothing);
  EXPECT_EQ(pathOf(walk.element()), first);
}

TEST_F(cDirTest, TheEndsOfAllWalksAreEqual)
{
  support::cTempDir const empty;
  cDir const nothing(mucs::cString((empty.path() + "/").c_str()), HideDots);
  cDir walk(dir(), HideDots);
  namesFrom(walk);
  EXPECT_TRUE(walk == nothing);
}

TEST_F(cDirTest, TheElementOfAnEndIsNotAskedFor)
{
  mio::cFs fs;
  fs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(new support::cForwardFs(fs))); // has none
  cDir first(fs, dir(), HideDots);
  cDir second(fs, dir(), HideDots);
  namesFrom(first);
  EXPECT_FALSE(first == second);
  EXPECT_FALSE(second == first);
  namesFrom(second);
  EXPECT_TRUE(first == second);
}

TEST_F(cDirTest, APathWithoutADirectoryFails)
{
  EXPECT_THROW(cDir(mDir.name("one"), 0), mstd::cOSErrorException);
  EXPECT_THROW(cDir(mDir.name("missing"), 0), mstd::cOSErrorException);
}

namespace
{

/// A file system that gives no listings.
class cNoListings : public mio::cProxyFs
{
public:
  explicit cNoListings(mio::cFs& fs) : mio::cProxyFs(fs) {}
  mstd::tAutoPtr<mio::cAbstractDirImpl> createDirImpl(mio::cFs const&, mucs::cString const&, int) const override
  {
    return mstd::tAutoPtr<mio::cAbstractDirImpl>();
  }
};

} // namespace

TEST_F(cDirTest, WithoutAnImplementationEveryUseIsAnAssertionFailure)
{
  mio::cFs fs;
  fs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(new cNoListings(fs)));
  cDir walk(fs, dir(), 0);
  support::expectAssertion([&] { walk.element(); }, "mpImpl.get() != 0", "io/cDir");
  support::expectAssertion([&] { walk.setNext(); }, "mpImpl.get() != 0", "io/cDir");
  support::expectAssertion([&] { walk.isEnd(); }, "mpImpl.get() != 0", "io/cDir");
  support::expectAssertion([&] { cDir const copy(walk); }, "mpImpl.get() != 0", "io/cDir");
}
