#include "std/cTypeMissmatchException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>

using mstd::cTypeMissmatchException;
using support::messageOf;
using support::toString;

TEST(cTypeMissmatchException, ItNamesTheExpectedTypeFirst)
{
  cTypeMissmatchException const e("cAssigned", "cExpected");
  EXPECT_EQ("Type mismatch: Expecting type \"cExpected\" but got object of type \"cAssigned\"!", messageOf(e));
  EXPECT_EQ("Type mismatch: Expecting type \"%expected%\" but got object of type \"%got%\"!",
            toString(e.liMessage()->key()));
  EXPECT_EQ("cAssigned", toString(e.assignedType()));
  EXPECT_EQ("cExpected", toString(e.expectedType()));
  EXPECT_EQ("cExpected", toString(e.type()));
  EXPECT_EQ("cTypeMissmatchException", toString(e.typeName()));
}

TEST(cTypeMissmatchException, ItIsATypeError)
{
  EXPECT_THROW(cSTDExceptions::throwWrongAnyDereference("a", "b"), mstd::cTypeErrorException);
}

TEST(cTypeMissmatchException, TheDefaultOneHasEmptyNames)
{
  cTypeMissmatchException const e;
  EXPECT_EQ("", toString(e.assignedType()));
  EXPECT_EQ("", toString(e.expectedType()));
}

TEST(cTypeMissmatchException, CopySwapAndAssignmentCarryEverything)
{
  cTypeMissmatchException const e("cAssigned", "cExpected");
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cTypeMissmatchException assigned;
  assigned = dynamic_cast<cTypeMissmatchException const&>(*clone);
  cTypeMissmatchException swapped;
  swapped.swap(assigned);
  EXPECT_EQ("cAssigned", toString(swapped.assignedType()));
  EXPECT_EQ("cExpected", toString(swapped.expectedType()));
  EXPECT_EQ("cExpected", toString(swapped.type()));
  EXPECT_EQ(messageOf(e), messageOf(swapped));
}
