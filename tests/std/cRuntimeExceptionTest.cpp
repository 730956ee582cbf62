#include "std/cRuntimeException.h"

#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using mstd::cRuntimeException;
using support::messageOf;
using support::toString;

namespace
{
mucs::cLIMessage missing()
{
  mucs::cLIMessage message;
  message << "$MTR$%file% is missing!"
          << "x.txt";
  return message;
}
} // namespace

TEST(cRuntimeException, TheDefaultOneHasNoMessageAndAnUnknownPlace)
{
  cRuntimeException const e;
  EXPECT_STREQ("runtime", e.what());
  EXPECT_EQ(mstd::cAbstractException::Runtime, e.type());
  EXPECT_STREQ("unknown", e.sourceFileName());
  EXPECT_EQ(0u, e.sourceFileLine());
  ASSERT_NE(nullptr, e.liMessage());
  EXPECT_EQ("", messageOf(e));
  EXPECT_EQ("cRuntimeException", toString(e.typeName()));
}

TEST(cRuntimeException, ItHoldsMessageFileAndLine)
{
  mucs::cLIMessage const message = missing();
  cRuntimeException const e(message, "io/x", 70);
  EXPECT_STREQ("runtime", e.what());
  EXPECT_EQ("x.txt is missing!", messageOf(e));
  EXPECT_STREQ("io/x", e.sourceFileName());
  EXPECT_EQ(70u, e.sourceFileLine());
}

TEST(cRuntimeException, AMessageCanBeTakenOver)
{
  mucs::cLIMessage message = missing();
  cRuntimeException const e(std::move(message), nullptr, 0);
  EXPECT_EQ("x.txt is missing!", messageOf(e));
}

TEST(cRuntimeException, SetMessageReplacesTheMessage)
{
  cRuntimeException e;
  e.setMessage(missing());
  EXPECT_EQ("x.txt is missing!", messageOf(e));
}

TEST(cRuntimeException, CopySwapAndAssignmentCarryTheMessage)
{
  cRuntimeException const e(missing(), "f", 1);
  cRuntimeException const copy(e);
  EXPECT_EQ("x.txt is missing!", messageOf(copy));
  cRuntimeException target;
  target = e;
  EXPECT_EQ("x.txt is missing!", messageOf(target));
  cRuntimeException other;
  other.swap(target);
  EXPECT_EQ("x.txt is missing!", messageOf(other));
  EXPECT_EQ("", messageOf(target));
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  EXPECT_NE(nullptr, dynamic_cast<cRuntimeException*>(clone.get()));
  EXPECT_EQ("x.txt is missing!", messageOf(*clone));
}
