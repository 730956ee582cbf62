#include "std/cBugException.h"

#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <utility>

using mstd::cBugException;
using support::messageOf;
using support::toString;

namespace
{
mucs::cLIMessage broken()
{
  mucs::cLIMessage message;
  message << "$MTR$%part% is broken!"
          << "wheel";
  return message;
}
} // namespace

TEST(cBugException, TheDefaultOneHasNoMessageAndAnUnknownPlace)
{
  cBugException const e;
  EXPECT_STREQ("bug", e.what());
  EXPECT_EQ(mstd::cAbstractException::Bug, e.type());
  EXPECT_STREQ("unknown", e.sourceFileName());
  EXPECT_EQ(0u, e.sourceFileLine());
  ASSERT_NE(nullptr, e.liMessage());
  EXPECT_EQ("", messageOf(e));
  EXPECT_EQ("cBugException", toString(e.typeName()));
}

TEST(cBugException, ItHoldsMessageFileAndLine)
{
  mucs::cLIMessage const message = broken();
  cBugException const e(message, "std/wheel", 7);
  EXPECT_STREQ("bug", e.what());
  EXPECT_EQ("wheel is broken!", messageOf(e));
  EXPECT_STREQ("std/wheel", e.sourceFileName());
  EXPECT_EQ(7u, e.sourceFileLine());
  EXPECT_EQ("wheel is broken!", toString(message));
}

TEST(cBugException, AMessageCanBeTakenOver)
{
  mucs::cLIMessage message = broken();
  cBugException const e(std::move(message), nullptr, 0);
  EXPECT_EQ("wheel is broken!", messageOf(e));
  EXPECT_STREQ("", e.sourceFileName());
}

TEST(cBugException, SetMsgReplacesTheMessage)
{
  cBugException e;
  e.setMsg(broken());
  EXPECT_EQ("wheel is broken!", messageOf(e));
}

TEST(cBugException, CopySwapAndAssignmentCarryTheMessage)
{
  cBugException const e(broken(), "f", 1);
  cBugException const copy(e);
  EXPECT_EQ("wheel is broken!", messageOf(copy));
  cBugException target;
  target = e;
  EXPECT_EQ("wheel is broken!", messageOf(target));
  EXPECT_STREQ("f", target.sourceFileName());
  cBugException other;
  other.swap(target);
  EXPECT_EQ("wheel is broken!", messageOf(other));
  EXPECT_EQ("", messageOf(target));
  EXPECT_STREQ("unknown", target.sourceFileName());
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  EXPECT_NE(nullptr, dynamic_cast<cBugException*>(clone.get()));
  EXPECT_EQ("wheel is broken!", messageOf(*clone));
}

TEST(cBugException, AFailedAssertionTellsFileLineAndCondition)
{
  cBugException const e =
      support::caught<cBugException>([] { cBugException::throwAssertionFailed("a != b", "std/x", 31); });
  EXPECT_EQ("Assertion failed in file std/x:31. (a != b)!", messageOf(e));
  EXPECT_EQ("Assertion failed in file %file%:%line%. (%operation%)!", toString(e.liMessage()->key()));
  EXPECT_STREQ("", e.sourceFileName());
  EXPECT_EQ(0u, e.sourceFileLine());
}

TEST(cBugException, AFailedAssertionReadsUnknownForNullTexts)
{
  cBugException const e =
      support::caught<cBugException>([] { cBugException::throwAssertionFailed(nullptr, nullptr, 3); });
  EXPECT_EQ("Assertion failed in file unknown file:3. (unknown)!", messageOf(e));
}

TEST(cBugException, ItsOwnThrowFunctionWritesNoStackTrace)
{
  support::cCaptureOut capture;
  EXPECT_THROW(cBugException::throwAssertionFailed("a", "b", 1), cBugException);
  EXPECT_EQ("", capture.text());
}
