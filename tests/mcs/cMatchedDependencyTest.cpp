#include "mcs/cMatchedDependency.h"

#include "mcs/cUnmatchedInterfaceException.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cMatchedDependency;

namespace
{
std::string refusalOf(cMatchedDependency const& match)
{
  return support::messageOf(support::caught<mcs::cUnmatchedInterfaceException>([&] { match.location(); }));
}
} // namespace

TEST(cMatchedDependency, HasNoLocationAtFirst)
{
  cMatchedDependency const match;
  EXPECT_FALSE(match.valid());
  EXPECT_EQ(refusalOf(match), "Unmatched interface!");
}

TEST(cMatchedDependency, KeepsTheLocationThatItWasGiven)
{
  cMatchedDependency match;
  cComponentLocation const location(cComponentAddr(1, 7), "far", "x", 12);
  match.set(location);
  EXPECT_TRUE(match.valid());
  EXPECT_TRUE(match.location() == location);
}

TEST(cMatchedDependency, RefusesItsLocationWhenInvalidated)
{
  cMatchedDependency match;
  match.set(cComponentLocation(cComponentAddr(1, 7), "far", "x", 12));
  match.invalidate();
  EXPECT_FALSE(match.valid());
  EXPECT_EQ(refusalOf(match), "Unmatched interface!");
  cComponentLocation const other(cComponentAddr(1, 8), "near", "", 1);
  match.set(other);
  EXPECT_TRUE(match.location() == other);
}
