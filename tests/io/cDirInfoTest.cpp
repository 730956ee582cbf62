#include "io/cDirInfo.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

using mio::cDirInfo;

namespace
{

std::string pathOf(cDirInfo const& entry)
{
  return support::toString(entry.fullPath());
}

} // namespace

TEST(cDirInfo, ItHoldsAPath)
{
  EXPECT_EQ(pathOf(cDirInfo()), "");
  EXPECT_EQ(pathOf(cDirInfo(mucs::cString("/a/b"))), "/a/b");
  mio::cFs const fs;
  EXPECT_EQ(pathOf(cDirInfo(fs, mucs::cString("/c"))), "/c");
  mucs::cString const path = cDirInfo(mucs::cString("/a/b"));
  EXPECT_EQ(support::toString(path), "/a/b");
}

TEST(cDirInfo, OnlyOneConstructorMarksTheStack)
{
  EXPECT_FALSE(cDirInfo().isStackedPath());
  EXPECT_FALSE(cDirInfo(mucs::cString("/a")).isStackedPath());
  EXPECT_FALSE(cDirInfo(mio::cFs(), mucs::cString("/a")).isStackedPath());
  cDirInfo const stacked(mucs::cString("/a"), cDirInfo::Stacked);
  EXPECT_TRUE(stacked.isStackedPath());
  EXPECT_EQ(pathOf(stacked), "/a");
}

TEST(cDirInfo, PathAndMarkMakeItEqual)
{
  cDirInfo const entry(mucs::cString("/a"));
  EXPECT_TRUE(entry == cDirInfo(mio::cFs(), mucs::cString("/a")));
  EXPECT_FALSE(entry != cDirInfo(mucs::cString("/a")));
  EXPECT_TRUE(entry != cDirInfo(mucs::cString("/b")));
  EXPECT_TRUE(entry != cDirInfo(mucs::cString("/a"), cDirInfo::Stacked));
}

TEST(cDirInfo, TextIsAppendedAsItIs)
{
  cDirInfo entry(mucs::cString("/a"));
  entry.appendPath("b");
  entry.appendPath(mucs::cString("/c/"));
  entry.appendPath("/d");
  EXPECT_EQ(pathOf(entry), "/ab/c//d");
}

TEST(cDirInfo, ClearTakesPathAndMark)
{
  cDirInfo entry(mucs::cString("/a"), cDirInfo::Stacked);
  entry.clear();
  EXPECT_EQ(pathOf(entry), "");
  EXPECT_FALSE(entry.isStackedPath());
}

TEST(cDirInfo, SwapExchangesAll)
{
  cDirInfo entry(mucs::cString("/a"), cDirInfo::Stacked);
  cDirInfo other(mucs::cString("/b"));
  entry.swap(other);
  EXPECT_EQ(pathOf(entry), "/b");
  EXPECT_FALSE(entry.isStackedPath());
  EXPECT_EQ(pathOf(other), "/a");
  EXPECT_TRUE(other.isStackedPath());
}
