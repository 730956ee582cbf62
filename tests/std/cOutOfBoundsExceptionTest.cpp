#include "std/cOutOfBoundsException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mstd::cOutOfBoundsException;
using support::messageOf;
using support::toString;

TEST(cOutOfBoundsException, WithBothNames)
{
  cOutOfBoundsException const e("tList", "operator*");
  EXPECT_EQ("Out of bounds condition detected in \"tList\" while executing \"operator*\"!", messageOf(e));
  EXPECT_EQ("Out of bounds condition detected in \"%container%\" while executing \"%operation%\"!",
            toString(e.liMessage()->key()));
  EXPECT_EQ("tList", toString(e.container()));
  EXPECT_EQ("operator*", toString(e.operation()));
  EXPECT_EQ("cOutOfBoundsException", toString(e.typeName()));
  EXPECT_STREQ("bug", e.what());
}

TEST(cOutOfBoundsException, WithTheContainerOnly)
{
  cOutOfBoundsException const e("tList", nullptr);
  EXPECT_EQ("Out of bounds condition detected in \"tList\"!", messageOf(e));
  EXPECT_EQ("Out of bounds condition detected in \"%container%\"!", toString(e.liMessage()->key()));
  EXPECT_EQ("", toString(e.operation()));
}

TEST(cOutOfBoundsException, WithoutAContainer)
{
  EXPECT_EQ("Out of bounds condition detected!", messageOf(cOutOfBoundsException(nullptr, "operator*")));
  EXPECT_EQ("Out of bounds condition detected!", messageOf(cOutOfBoundsException(nullptr, nullptr)));
  EXPECT_EQ("Out of bounds condition detected!", messageOf(cOutOfBoundsException()));
}

TEST(cOutOfBoundsException, CopySwapAndAssignmentCarryEverything)
{
  cOutOfBoundsException const e("c", "o");
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cOutOfBoundsException assigned;
  assigned = dynamic_cast<cOutOfBoundsException const&>(*clone);
  cOutOfBoundsException swapped;
  swapped.swap(assigned);
  EXPECT_EQ("c", toString(swapped.container()));
  EXPECT_EQ("o", toString(swapped.operation()));
  EXPECT_EQ(messageOf(e), messageOf(swapped));
  EXPECT_EQ("", toString(assigned.container()));
}
