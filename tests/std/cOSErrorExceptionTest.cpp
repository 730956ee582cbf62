#include "std/cOSErrorException.h"

#include "pi/cPlatform.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <errno.h>
#include <string.h>

#include <memory>
#include <string>

using mstd::cOSErrorException;
using support::messageOf;
using support::toString;

TEST(cOSErrorException, WithoutAFile)
{
  cOSErrorException const e("open", ENOENT);
  EXPECT_EQ("OS-Error while trying operation \"open\"!", messageOf(e));
  EXPECT_EQ("OS-Error while trying operation \"%operation%\"!", toString(e.liMessage()->key()));
  EXPECT_EQ("open", toString(e.operation()));
  EXPECT_EQ(ENOENT, e.osErrorCode());
  EXPECT_EQ("", toString(e.fileName()));
  EXPECT_EQ("cOSErrorException", toString(e.typeName()));
}

TEST(cOSErrorException, WithAFile)
{
  cOSErrorException const e("open", ENOENT, mucs::cString("/no/such"));
  EXPECT_EQ("OS-Error while trying operation \"open\" on file \"/no/such\"!", messageOf(e));
  EXPECT_EQ("OS-Error while trying operation \"%operation%\" on file \"%file%\"!", toString(e.liMessage()->key()));
  EXPECT_EQ("/no/such", toString(e.fileName()));
}

TEST(cOSErrorException, WhatTheSystemSaidIsTheHistory)
{
  for (cOSErrorException const& e :
       {cOSErrorException("open", ENOENT), cOSErrorException("open", ENOENT, mucs::cString("/no/such"))})
  {
    ASSERT_NE(nullptr, e.history());
    EXPECT_EQ("cRuntimeException", toString(e.history()->typeName()));
    EXPECT_EQ("Error: \"%error%\"!", toString(e.history()->liMessage()->key()));
    EXPECT_EQ("Error: \"" + toString(mpi::cPlatform::osFileIOErrorString(ENOENT)) + "\"!", messageOf(*e.history()));
    EXPECT_EQ(std::string("Error: \"") + strerror(ENOENT) + "\"!", messageOf(*e.history()));
    EXPECT_EQ(nullptr, e.history()->history());
  }
}

TEST(cOSErrorException, TheUserSeesTwoLines)
{
  mucs::cString text;
  cOSErrorException("open", EACCES, mucs::cString("/x")).createMessage(text, mucs::cString("\n"), 1, nullptr);
  EXPECT_EQ(std::string("OS-Error while trying operation \"open\" on file \"/x\"!\nError: \"") + strerror(EACCES) +
                "\"!",
            toString(text));
}

TEST(cOSErrorException, CodeZeroHasAHistoryToo)
{
  EXPECT_NE(nullptr, cOSErrorException("open", 0).history());
}

TEST(cOSErrorException, TheDefaultOneHasNoMessageAndNoHistory)
{
  cOSErrorException const e;
  EXPECT_EQ("", messageOf(e));
  EXPECT_EQ(nullptr, e.history());
  EXPECT_EQ(0, e.osErrorCode());
  EXPECT_STREQ("runtime", e.what());
}

TEST(cOSErrorException, CopySwapAndAssignmentCarryEverything)
{
  cOSErrorException const e("open", ENOENT, mucs::cString("/no/such"));
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  cOSErrorException assigned;
  assigned = dynamic_cast<cOSErrorException const&>(*clone);
  cOSErrorException swapped;
  swapped.swap(assigned);
  EXPECT_EQ(messageOf(e), messageOf(swapped));
  EXPECT_EQ("open", toString(swapped.operation()));
  EXPECT_EQ(ENOENT, swapped.osErrorCode());
  EXPECT_EQ("/no/such", toString(swapped.fileName()));
  ASSERT_NE(nullptr, swapped.history());
  EXPECT_EQ(messageOf(*e.history()), messageOf(*swapped.history()));
  EXPECT_EQ(nullptr, assigned.history());
}
