#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "support/pathText.h"

#include <gtest/gtest.h>
#include <string>

using support::held;
using support::latin;
using support::wide;

namespace
{

/// What is left of a path behind an operation on its name.
template <class Operation, class... Arguments>
std::string changed(Operation operation, std::string const& text, Arguments const&... arguments)
{
  mucs::cString path(wide(text));
  operation(path, arguments...);
  return latin(path);
}

/// Base name, extension and path component of a path.
std::string split(std::string const& text)
{
  mio::cFileInfo const info(wide(text));
  EXPECT_EQ(latin(info.fileName()), latin(info.fileBaseName()) + latin(info.fileExtension()));
  return latin(info.pathComponent()) + " + " + latin(info.fileBaseName()) + " + " + latin(info.fileExtension());
}

} // namespace

TEST(cFileInfoNames, TheExtensionBeginsAtTheFirstDotOfTheName)
{
  EXPECT_EQ(split("a.tar.gz"), " + a + .tar.gz");
  EXPECT_EQ(split("dir.d/a.tar.gz"), "dir.d/ + a + .tar.gz");
  EXPECT_EQ(split("dir.d/a"), "dir.d/ + a + ");
  EXPECT_EQ(split("dir.d\\a.b"), "dir.d\\ + a + .b");
  EXPECT_EQ(split(".hidden"), " +  + .hidden");
  EXPECT_EQ(split("a."), " + a + .");
  EXPECT_EQ(split("C:x.y"), "C:/ + x + .y");
}

TEST(cFileInfoNames, APathThatNamesADirectoryHasNoName)
{
  EXPECT_EQ(split("a.b/"), "a.b/ +  + ");
  EXPECT_EQ(split(".."), "../ +  + ");
  EXPECT_EQ(split("a/."), "a/./ +  + ");
}

TEST(cFileInfoNames, ToPathIsTheNormalisedPathComponent)
{
  EXPECT_EQ(held(mio::cFileInfo(mucs::cString("/a/b/../c.d/e.f")).toPath()), "|/a/c.d/");
  EXPECT_EQ(held(mio::cFileInfo(mucs::cString("c:\\x\\y")).toPath()), "C|/x/");
  EXPECT_EQ(held(mio::cFileInfo(mucs::cString("name")).toPath()), "|./");
}

TEST(cFileInfoNames, ANewNameReplacesTheOldOne)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "/a/b.c", "d", false), "/a/d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "b.c", "d", false), "d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "a\\b", "d", false), "a\\d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "C:x", "d", false), "C:/d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "a/..", "d", false), "a/../d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "a/b", "", false), "a/");
}

TEST(cFileInfoNames, ANewNameGoesBehindAPathThatIsKept)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "/a/b.c", "d", true), "/a/b.c/d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "/a/", "d", true), "/a/d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "a\\", "d", true), "a\\d");
  EXPECT_EQ(changed(mio::cFileInfo::setFileName, "", "d", true), "d");
}

TEST(cFileInfoNames, ANewDirectoryKeepsTheName)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFilePath, "/a/b.c", "d"), "d/b.c");
  EXPECT_EQ(changed(mio::cFileInfo::setFilePath, "b.c", "d/"), "d/b.c");
  EXPECT_EQ(changed(mio::cFileInfo::setFilePath, "b.c", "d\\"), "d\\b.c");
  EXPECT_EQ(changed(mio::cFileInfo::setFilePath, "/a/b.c", ""), "b.c");
  EXPECT_EQ(changed(mio::cFileInfo::setFilePath, "/a/..", "d"), "d/");
}

TEST(cFileInfoNames, ANewExtensionReplacesAllOfTheOldOne)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameExtension, "dir.d/a.tar.gz", ".zip"), "dir.d/a.zip");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameExtension, "dir.d/a", ".zip"), "dir.d/a.zip");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameExtension, "a.b", "zip"), "azip");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameExtension, "a.b", ""), "a");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameExtension, "..", ".x"), "...x");
}

TEST(cFileInfoNames, ASuffixIsPutInFrontOfTheExtensionOnce)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "a.txt", "_v2"), "a_v2.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "a_v2.txt", "_v2"), "a_v2.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "d.d/a", "_v2"), "d.d/a_v2");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "d.d/a_v2", "_v2"), "d.d/a_v2");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "v2.txt", "_v2"), "v2_v2.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "a.txt", ""), "a.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNameSuffix, "", "_v2"), "_v2");
}

TEST(cFileInfoNames, APrefixIsPutInFrontOfTheNameOnce)
{
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "d/a.txt", "p_"), "d/p_a.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "d/p_a.txt", "p_"), "d/p_a.txt");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "a", "p_"), "p_a");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "p", "p_"), "p_p");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "d/", "p_"), "d/p_");
  EXPECT_EQ(changed(mio::cFileInfo::setFileNamePrefix, "d/a", ""), "d/a");
}

TEST(cFileInfoNames, APathCanBeItsOwnArgument)
{
  mucs::cString path("a.b");
  mio::cFileInfo::setFileName(path, path, true);
  EXPECT_EQ(latin(path), "a.b/a.b");
  mio::cFileInfo::setFilePath(path, path);
  EXPECT_EQ(latin(path), "a.b/a.b/a.b");
  path = "x.y";
  mio::cFileInfo::setFileNameExtension(path, path);
  EXPECT_EQ(latin(path), "xx.y");
  mio::cFileInfo::setFileNameSuffix(path, path);
  EXPECT_EQ(latin(path), "xxxx.y.y");
  path = "d/x";
  mio::cFileInfo::setFileNamePrefix(path, path);
  EXPECT_EQ(latin(path), "d/d/xx");
}
