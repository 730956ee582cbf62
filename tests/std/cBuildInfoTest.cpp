#include "std/cBuildInfo.h"

#include <gtest/gtest.h>
#include <type_traits>

using mstd::cBuildInfo;

TEST(cBuildInfo, IsEmptyByDefault)
{
  cBuildInfo const info;
  EXPECT_STREQ(info.compiler().c_str(), "");
  EXPECT_STREQ(info.compilerVersion().c_str(), "");
  EXPECT_STREQ(info.buildSystem().c_str(), "");
  EXPECT_STREQ(info.buildHost().c_str(), "");
  EXPECT_STREQ(info.buildDate().c_str(), "");
  EXPECT_EQ(info.buildCount(), 0u);
}

TEST(cBuildInfo, TakesItsFieldsInOrder)
{
  cBuildInfo const info("gcc", "12.2", "cmake", "host", "today", 4294967295u);
  EXPECT_STREQ(info.compiler().c_str(), "gcc");
  EXPECT_STREQ(info.compilerVersion().c_str(), "12.2");
  EXPECT_STREQ(info.buildSystem().c_str(), "cmake");
  EXPECT_STREQ(info.buildHost().c_str(), "host");
  EXPECT_STREQ(info.buildDate().c_str(), "today");
  EXPECT_EQ(info.buildCount(), 4294967295u);
  EXPECT_STREQ(cBuildInfo(nullptr, "b", "c", "d", "e", 1).compiler().c_str(), "");
}

TEST(cBuildInfo, IsCopiedAssignedAndExchanged)
{
  cBuildInfo const first("a", "b", "c", "d", "e", 1);
  cBuildInfo copy(first);
  EXPECT_STREQ(copy.buildHost().c_str(), "d");
  EXPECT_EQ(copy.buildCount(), 1u);
  cBuildInfo other("A", "B", "C", "D", "E", 2);
  copy.swap(other);
  EXPECT_STREQ(copy.compiler().c_str(), "A");
  EXPECT_STREQ(copy.buildDate().c_str(), "E");
  EXPECT_EQ(other.buildCount(), 1u);
  other = copy;
  EXPECT_STREQ(other.compilerVersion().c_str(), "B");
  EXPECT_STREQ(other.buildSystem().c_str(), "C");
  EXPECT_EQ(other.buildCount(), 2u);
  cBuildInfo& same = other;
  other = same;
  EXPECT_STREQ(other.compiler().c_str(), "A");
  EXPECT_TRUE(std::has_virtual_destructor<cBuildInfo>::value);
}
