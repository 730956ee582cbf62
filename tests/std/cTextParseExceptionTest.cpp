#include "std/cTextParseException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mstd::cTextParseException;
using support::messageOf;
using support::toString;

namespace
{
mucs::cLIMessage bracket()
{
  mucs::cLIMessage message;
  message << "$MTR$Bracket expected!";
  return message;
}
} // namespace

TEST(cTextParseException, OfATextInNoFile)
{
  cTextParseException const e(bracket(), "json", 5, 6);
  EXPECT_EQ("Bracket expected!", messageOf(e));
  EXPECT_EQ("", toString(e.fileName()));
  EXPECT_EQ("json", toString(e.format()));
  EXPECT_EQ(5u, e.row());
  EXPECT_EQ(6u, e.column());
  EXPECT_EQ("cTextParseException", toString(e.typeName()));
  EXPECT_STREQ("runtime", e.what());
}

TEST(cTextParseException, OfAFile)
{
  cTextParseException const e(bracket(), "json", mucs::cString("a.json"), 0xFFFFFFFFu, 0);
  EXPECT_EQ("a.json", toString(e.fileName()));
  EXPECT_EQ(0xFFFFFFFFu, e.row());
  EXPECT_EQ(0u, e.column());
}

TEST(cTextParseException, TheDefaultOneIsEmpty)
{
  cTextParseException const e;
  EXPECT_EQ("", messageOf(e));
  EXPECT_EQ("", toString(e.format()));
  EXPECT_EQ(0u, e.row());
  EXPECT_EQ(0u, e.column());
}

TEST(cTextParseException, CopySwapAndAssignmentCarryEverything)
{
  cTextParseException const e(bracket(), "json", mucs::cString("a.json"), 5, 6);
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cTextParseException assigned;
  assigned = dynamic_cast<cTextParseException const&>(*clone);
  cTextParseException swapped;
  swapped.swap(assigned);
  EXPECT_EQ("Bracket expected!", messageOf(swapped));
  EXPECT_EQ("a.json", toString(swapped.fileName()));
  EXPECT_EQ("json", toString(swapped.format()));
  EXPECT_EQ(5u, swapped.row());
  EXPECT_EQ(6u, swapped.column());
}
