#include "pi/cUnsupportedPlatformException.h"

#include "std/cAsciiString.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

std::string textOf(mstd::cAbstractException const& e)
{
  mucs::cString text;
  e.createMessage(text, mucs::cString(""), 0, nullptr);
  return text.ascii('?').c_str();
}

} // namespace

TEST(cUnsupportedPlatformException, IsABugThatNamesTheOperation)
{
  mpi::cUnsupportedPlatformException e("file implementation");
  EXPECT_TRUE((std::is_base_of<mstd::cBugException, mpi::cUnsupportedPlatformException>::value));
  EXPECT_EQ(textOf(e), "Operation (\"file implementation\") not supported for this platform!");
  EXPECT_STREQ(e.typeName().c_str(), "cUnsupportedPlatformException");
  EXPECT_EQ(e.type(), 0);
  EXPECT_STREQ(e.sourceFileName(), "");
  EXPECT_EQ(e.sourceFileLine(), 0u);
}

TEST(cUnsupportedPlatformException, TheDefaultOneNamesNothing)
{
  mpi::cUnsupportedPlatformException e;
  EXPECT_EQ(textOf(e), "Operation (\"\") not supported for this platform!");
}

TEST(cUnsupportedPlatformException, CopiesAreWhole)
{
  mpi::cUnsupportedPlatformException e("one");
  mstd::tAutoPtr<mstd::cAbstractException> pCopy(e.createObject());
  EXPECT_NE(dynamic_cast<mpi::cUnsupportedPlatformException*>(pCopy.get()), nullptr);
  EXPECT_EQ(textOf(*pCopy.get()), textOf(e));

  mpi::cUnsupportedPlatformException other("two");
  other = e;
  EXPECT_EQ(textOf(other), textOf(e));
  other = *&other;
  EXPECT_EQ(textOf(other), textOf(e));

  mpi::cUnsupportedPlatformException third("three");
  third.swap(e);
  EXPECT_EQ(textOf(e), "Operation (\"three\") not supported for this platform!");
  EXPECT_EQ(textOf(third), textOf(other));
}
