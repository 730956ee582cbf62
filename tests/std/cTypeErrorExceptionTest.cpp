#include "std/cTypeErrorException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mstd::cTypeErrorException;
using support::messageOf;
using support::toString;

TEST(cTypeErrorException, ItNamesTheType)
{
  cTypeErrorException const e("cFoo");
  EXPECT_EQ("Type error while deserializing of cFoo!", messageOf(e));
  EXPECT_EQ("Type error while deserializing of %type%!", toString(e.liMessage()->key()));
  EXPECT_EQ("cFoo", toString(e.type()));
  EXPECT_EQ(mstd::cAbstractException::Bug, static_cast<mstd::cAbstractException const&>(e).type());
  EXPECT_EQ("cTypeErrorException", toString(e.typeName()));
}

TEST(cTypeErrorException, TheDefaultOneHasAnEmptyName)
{
  EXPECT_EQ("", toString(cTypeErrorException().type()));
}

TEST(cTypeErrorException, CopySwapAndAssignmentCarryEverything)
{
  cTypeErrorException const e("cFoo");
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cTypeErrorException assigned;
  assigned = dynamic_cast<cTypeErrorException const&>(*clone);
  cTypeErrorException swapped;
  swapped.swap(assigned);
  EXPECT_EQ("cFoo", toString(swapped.type()));
  EXPECT_EQ(messageOf(e), messageOf(swapped));
}
