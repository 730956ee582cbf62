#include "io/cSearchPaths.h"

#include "io/cFs.h"
#include "support/cAllocationFault.h"
#include "support/cForwardFs.h"
#include "support/cTempDir.h"
#include "support/expectFailure.h"
#include "support/pathText.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <string>

using mio::cSearchPaths;
using support::latin;

namespace
{

/// The directories, with a blank between them.
std::string listed(cSearchPaths const& paths)
{
  std::string result;
  for (unsigned int i = 0; i < paths.size(); ++i)
  {
    result += (i == 0 ? "" : " ") + latin(paths[i]);
  }
  return result;
}

cSearchPaths listOf(std::initializer_list<char const*> directories)
{
  cSearchPaths paths;
  for (char const* directory : directories)
  {
    paths.addPath(directory);
  }
  return paths;
}

/// Two directories `one` and `two` with a file each of the same name, a directory in `two`, and links.
class SearchPaths : public testing::Test
{
protected:
  SearchPaths()
  {
    for (char const* name : {"/one", "/two", "/two/dir"})
    {
      std::filesystem::create_directory(mDirectory.path() + name);
    }
    for (char const* name : {"/one/file", "/two/file", "/two/second"})
    {
      std::ofstream(mDirectory.path() + name) << name;
    }
    std::filesystem::create_symlink("second", mDirectory.path() + "/two/toFile");
    std::filesystem::create_symlink("dir", mDirectory.path() + "/two/toDir");
    std::filesystem::create_symlink("nothing", mDirectory.path() + "/two/dead");
    mPaths.addPath(mDirectory.name("one"));
    mPaths.addPath(mDirectory.name("two/"));
  }

  std::string found(char const* name, cSearchPaths::Type type)
  {
    mucs::cString result("old");
    bool const isFound = mPaths.tryFindFile(name, result, type);
    EXPECT_EQ(isFound, !result.empty());
    EXPECT_TRUE(result == mPaths.tryFindFile(name, type));
    std::string const text = latin(result);
    return text.compare(0, mDirectory.path().size(), mDirectory.path()) == 0 ? text.substr(mDirectory.path().size())
                                                                             : text;
  }

  support::cTempDir mDirectory;
  cSearchPaths mPaths;
};

} // namespace

TEST(cSearchPaths, KeepsTheOrderOfAdding)
{
  EXPECT_EQ(cSearchPaths().size(), 0u);
  EXPECT_EQ(listed(listOf({"/b", "/a", "c"})), "/b /a c");
}

TEST(cSearchPaths, ADirectoryIsAddedOnce)
{
  cSearchPaths paths;
  EXPECT_TRUE(paths.addPath("/a"));
  EXPECT_FALSE(paths.addPath("/a"));
  EXPECT_EQ(listed(paths), "/a");
}

TEST(cSearchPaths, TwoSpellingsOfADirectoryAreTwoEntries)
{
  cSearchPaths paths;
  EXPECT_TRUE(paths.addPath("/a/"));
  EXPECT_TRUE(paths.addPath("/a"));
  EXPECT_EQ(listed(paths), "/a/ /a");
}

TEST(cSearchPaths, AnotherListIsAddedInItsOrderWithoutDoubles)
{
  cSearchPaths paths(listOf({"/a", "/b"}));
  paths.add(listOf({"/c", "/b", "/d"}));
  EXPECT_EQ(listed(paths), "/a /b /c /d");
  paths.add(paths);
  EXPECT_EQ(listed(paths), "/a /b /c /d");
}

TEST(cSearchPaths, RemovingClosesTheGap)
{
  cSearchPaths paths(listOf({"/a", "/b", "/c"}));
  paths.removePath("/b");
  EXPECT_EQ(listed(paths), "/a /c");
  paths.removePath("/x");
  EXPECT_EQ(listed(paths), "/a /c");
  paths.removePath(paths[0]);
  EXPECT_EQ(listed(paths), "/c");
  paths.addPath("/d");
  paths.removePath(paths[1]); // the text goes while the others are still looked at
  EXPECT_EQ(listed(paths), "/c");
}

TEST(cSearchPaths, ClearRemovesEverything)
{
  cSearchPaths paths(listOf({"/a", "/b"}));
  paths.clear();
  EXPECT_EQ(paths.size(), 0u);
}

TEST(cSearchPaths, AnIndexBeyondTheEndIsRefused)
{
  cSearchPaths const paths(listOf({"/a"}));
  support::expectOutOfRange([&paths] { paths[1]; }, "tVector", "at", cSTDExceptions::IndexOutOfRange, 1, 0);
}

TEST(cSearchPaths, CopiesAreIndependent)
{
  cSearchPaths paths(listOf({"/a"}));
  cSearchPaths copy(paths);
  copy.addPath("/b");
  EXPECT_EQ(listed(paths), "/a");
  EXPECT_EQ(listed(copy), "/a /b");
  paths = copy;
  copy.clear();
  EXPECT_EQ(listed(paths), "/a /b");
  cSearchPaths& same = paths;
  paths = same;
  EXPECT_EQ(listed(paths), "/a /b");
}

TEST(cSearchPaths, AreSwapped)
{
  cSearchPaths left(listOf({"/a"}));
  cSearchPaths right(listOf({"/b", "/c"}));
  swap(left, right);
  EXPECT_EQ(listed(left), "/b /c");
  EXPECT_EQ(listed(right), "/a");
}

TEST_F(SearchPaths, TheFirstDirectoryThatHasTheNameWins)
{
  EXPECT_EQ(found("file", cSearchPaths::TypeFile), "/one/file");
  EXPECT_EQ(found("second", cSearchPaths::TypeFile), "/two/second");
  EXPECT_EQ(found("dir/../file", cSearchPaths::TypeFile), "/two/dir/../file");
}

TEST_F(SearchPaths, ANameThatNoDirectoryHasLeavesTheResultEmpty)
{
  EXPECT_EQ(found("third", cSearchPaths::TypeAny), "");
  mPaths.clear();
  EXPECT_EQ(found("file", cSearchPaths::TypeAny), "");
}

TEST_F(SearchPaths, TheTypeSelectsWhatCounts)
{
  EXPECT_EQ(found("dir", cSearchPaths::TypeFile), "");
  EXPECT_EQ(found("dir", cSearchPaths::TypeDirectory), "/two/dir");
  EXPECT_EQ(found("dir", cSearchPaths::TypeAny), "/two/dir");
  EXPECT_EQ(found("file", cSearchPaths::TypeDirectory), "");
  EXPECT_EQ(found("file", cSearchPaths::TypeAny), "/one/file");
  EXPECT_EQ(found("file", static_cast<cSearchPaths::Type>(3)), "");
  EXPECT_EQ(found("file", static_cast<cSearchPaths::Type>(-1)), "");
}

TEST_F(SearchPaths, LinksAreFollowed)
{
  EXPECT_EQ(found("toFile", cSearchPaths::TypeFile), "/two/toFile");
  EXPECT_EQ(found("toDir", cSearchPaths::TypeFile), "");
  EXPECT_EQ(found("toDir", cSearchPaths::TypeDirectory), "/two/toDir");
  EXPECT_EQ(found("dead", cSearchPaths::TypeAny), "");
}

TEST_F(SearchPaths, AnotherFileSystemIsLookedAtIfGiven)
{
  mio::cFs const fs;
  cSearchPaths paths(fs);
  paths.addPath(mDirectory.name("one"));
  EXPECT_TRUE(paths.exists(mDirectory.name("one"), cSearchPaths::TypeDirectory));
  EXPECT_FALSE(paths.tryFindFile("file", cSearchPaths::TypeFile).empty());
  mPaths = paths;
  EXPECT_EQ(found("second", cSearchPaths::TypeFile), "");
}

TEST_F(SearchPaths, SwappedListsSwapTheirFileSystems)
{
  mio::cFs fs;
  support::cForwardFs* const pImpl = new support::cForwardFs(fs);
  fs.setImpl(mstd::tAutoPtr<mio::cAbstractFsImpl>(pImpl));
  cSearchPaths other(fs);
  other.swap(mPaths);
  other.exists("/", cSearchPaths::TypeAny);
  EXPECT_EQ(pImpl->numExists(), 0u);
  mPaths.exists("/", cSearchPaths::TypeAny);
  EXPECT_EQ(pImpl->numExists(), 1u);
  cSearchPaths const copy(mPaths);
  copy.exists("/", cSearchPaths::TypeAny);
  EXPECT_EQ(pImpl->numExists(), 2u);
}

TEST_F(SearchPaths, TheResultMayBeTheName)
{
  mucs::cString text("second");
  EXPECT_TRUE(mPaths.tryFindFile(text, text, cSearchPaths::TypeFile));
  EXPECT_TRUE(text == mDirectory.name("two/second"));
}

TEST(cSearchPaths, WithoutMemoryTheListStaysAsItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  cSearchPaths const more(listOf({"/c", "/a", "/d"}));
  for (bool addsList : {false, true})
  {
    unsigned int failed = 0;
    for (unsigned int nth = 1; failed + 1 == nth; ++nth)
    {
      cSearchPaths paths(listOf({"/a", "/b"}));
      support::cAllocationFault fault(nth);
      try
      {
        if (addsList)
        {
          paths.add(more);
        }
        else
        {
          paths.addPath("/c");
        }
        fault.disarm();
        EXPECT_EQ(listed(paths), addsList ? "/a /b /c /d" : "/a /b /c");
      }
      catch (std::bad_alloc const&)
      {
        fault.disarm();
        EXPECT_EQ(listed(paths), "/a /b");
        ++failed;
      }
    }
    EXPECT_GT(failed, 0u);
  }
}
