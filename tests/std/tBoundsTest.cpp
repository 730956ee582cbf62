#include "std/tBounds.h"

#include "support/rangeChecks.h"

#include <gtest/gtest.h>

using mstd::tBounds;
using support::failureOf;

namespace
{
std::string check(unsigned int total, unsigned int start, unsigned int size)
{
  return failureOf([&] { tBounds::startSize2End(total, start, size, "box", "op"); });
}
} // namespace

TEST(tBounds, StartAndSizeWithinTheTotalYieldTheEnd)
{
  EXPECT_EQ(tBounds::startSize2End(10u, 3u, 4u, "box", "op"), 7u);
  EXPECT_EQ(tBounds::startSize2End(10u, 0u, 10u, "box", "op"), 10u);
}

TEST(tBounds, StartAtTheEndWithSizeZeroIsLegal)
{
  EXPECT_EQ(tBounds::startSize2End(10u, 10u, 0u, "box", "op"), 10u);
  EXPECT_EQ(tBounds::startSize2End(0u, 0u, 0u, "box", "op"), 0u);
}

TEST(tBounds, AnOverflowingEndIsOutOfBoundsBeforeAnythingElse)
{
  EXPECT_EQ(check(10, 20, 0xFFFFFFFFu), "bounds box/op");
  EXPECT_EQ(check(10, 1, 0xFFFFFFFFu), "bounds box/op");
}

TEST(tBounds, AStartBehindTheEndIsAnIndexOutOfRange)
{
  EXPECT_EQ(check(10, 11, 0), "range box/op 0 11 0 9");
  EXPECT_EQ(check(10, 11, 5), "range box/op 0 11 0 9");
  EXPECT_EQ(check(0, 1, 0), "range box/op 0 1 0 0");
}

TEST(tBounds, AnEndBehindTheTotalIsASizeOutOfRange)
{
  EXPECT_EQ(check(10, 3, 8), "range box/op 2 8 0 7");
  EXPECT_EQ(check(10, 10, 1), "range box/op 2 1 0 0");
}

TEST(tBounds, TheLargestNumbersAreStillToldApart)
{
  EXPECT_EQ(tBounds::startSize2End(0xFFFFFFFFu, 0xFFFFFFFFu, 0u, "box", "op"), 0xFFFFFFFFu);
  EXPECT_EQ(check(0xFFFFFFFEu, 0xFFFFFFFFu, 0), "range box/op 0 4294967295 0 4294967293");
  EXPECT_EQ(check(0xFFFFFFFFu, 0xFFFFFFFFu, 1), "bounds box/op");
}

TEST(tBounds, WiderTypesAreCheckedInTheirOwnWidth)
{
  EXPECT_EQ(tBounds::startSize2End(0x300000000ull, 0x100000000ull, 0x200000000ull, "box", "op"), 0x300000000ull);
  EXPECT_EQ(failureOf([] { tBounds::startSize2End(5ull, 2ull, 0x100000000ull, "box", "op"); }),
            "range box/op 2 4294967296 0 3");
}

TEST(tBounds, TheSingleFailuresNameTheirType)
{
  EXPECT_EQ(failureOf([] { tBounds::throwIndexOutOfRange("box", "op", 4, 3); }), "range box/op 0 4 0 2");
  EXPECT_EQ(failureOf([] { tBounds::throwIndexOutOfRange("box", "op", 0, 0); }), "range box/op 0 0 0 0");
  EXPECT_EQ(failureOf([] { tBounds::throwValueOutOfRange("box", "op", 4, 3); }), "range box/op 1 4 0 3");
  EXPECT_EQ(failureOf([] { tBounds::throwSizeOutOfRange("box", "op", 4, 3); }), "range box/op 2 4 0 3");
}
