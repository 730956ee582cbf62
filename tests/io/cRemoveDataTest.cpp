#include "io/cFs.h"
#include "support/cForwardFs.h"
#include "support/cTempDir.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace
{

class cRemoveDataTest : public testing::Test
{
protected:
  cRemoveDataTest() : mpImpl(new support::cForwardFs(mFs))
  {
    mFs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(mpImpl));
  }

  /// A directory below the other, `depth` of them; with neighbours each holds a file in front of and one behind the
  /// next one.
  void makeTree(unsigned int depth, bool hasNeighbours)
  {
    std::string path = mDir.path() + "/tree";
    for (unsigned int i = 0; i < depth; ++i)
    {
      std::filesystem::create_directory(path);
      if (hasNeighbours)
      {
        std::ofstream(path + "/a");
        std::ofstream(path + "/z");
      }
      path += "/m";
    }
  }
  void removeTree() { mFs.removeRecursive(mDir.name("tree"), false); }
  bool isGone() const { return !std::filesystem::exists(mDir.path() + "/tree"); }

  support::cTempDir mDir;
  mio::cFs mFs;
  support::cForwardFs* mpImpl;
};

} // namespace

TEST_F(cRemoveDataTest, ADeepTreeTakesAFewDozenListingsAtATime)
{
  makeTree(150, true);
  removeTree();
  EXPECT_TRUE(isGone());
  EXPECT_LE(mpImpl->mostListings(), 65u);
}

TEST_F(cRemoveDataTest, AListingThatHadNoMoreIsNotMadeAgain)
{
  makeTree(150, false);
  removeTree();
  EXPECT_TRUE(isGone());
  EXPECT_EQ(mpImpl->numListings(), 150u);
}

TEST_F(cRemoveDataTest, AnElementNeedNotBeginWithThePathOfItsDirectory)
{
  makeTree(80, true);
  mpImpl->mElementPrefix = "/"; // one more than the directory has
  removeTree();
  EXPECT_TRUE(isGone());
}
