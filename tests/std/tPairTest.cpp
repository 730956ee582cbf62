#include "std/tPair.h"

#include "support/cCountingElement.h"

#include <gtest/gtest.h>
#include <string>

using mstd::tPair;

TEST(tPair, HoldsTwoDefaultValuesAtFirst)
{
  tPair<int, std::string> const pair;
  EXPECT_EQ(pair.first, 0);
  EXPECT_EQ(pair.second, "");
}

TEST(tPair, CopiesBothFields)
{
  tPair<int, std::string> pair(3, "three");
  tPair<int, std::string> copy(pair);
  copy.second += "!";
  EXPECT_EQ(pair.second, "three");
  pair = copy;
  EXPECT_EQ(pair.second, "three!");
  EXPECT_EQ(pair.first, 3);
}

TEST(tPair, EqualsWhenBothFieldsDo)
{
  EXPECT_TRUE((tPair<int, int>(1, 2) == tPair<int, int>(1, 2)));
  EXPECT_TRUE((tPair<int, int>(1, 2) != tPair<int, int>(1, 3)));
  EXPECT_TRUE((tPair<int, int>(1, 2) != tPair<int, int>(0, 2)));
}
