#include "mce/cUnsupportedExtensionException.h"

#include "mce/cMCEExceptions.h"
#include "std/cOutOfBoundsException.h"
#include "support/cAllocationFault.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

using mce::cUnsupportedExtensionException;
using support::toString;

namespace
{
cUnsupportedExtensionException example(bool bOthers = true)
{
  return cUnsupportedExtensionException(mstd::cAsciiString("serializer"), mstd::cAsciiString("Xml"), bOthers);
}

std::string contentOf(cUnsupportedExtensionException const& e)
{
  return support::messageOf(e) + "|" + toString(e.className()) + "|" + toString(e.extensionName()) + "|" +
         (e.otherExtensionsFound() ? "others" : "none");
}

std::string const Content("No serializer of type \"Xml\" found!|serializer|Xml|others");

TEST(cUnsupportedExtensionException, NeverShowsTheWordsItBeganWith)
{
  EXPECT_EQ(contentOf(example()), Content);
  EXPECT_EQ(contentOf(example(false)), "No serializer of type \"Xml\" found!|serializer|Xml|none");
  EXPECT_EQ(toString(example().liMessage()->key()), "No %s% of type \"%specialized%\" found!");
  EXPECT_TRUE(example().liMessage()->isTranslatable());
}

TEST(cUnsupportedExtensionException, IsABugOfItsOwnName)
{
  cUnsupportedExtensionException const e = example();
  EXPECT_EQ(toString(e.typeName()), "cUnsupportedExtensionException");
  EXPECT_EQ(e.type(), mstd::cAbstractException::Bug);
  EXPECT_EQ(e.history(), nullptr);
  EXPECT_STREQ(e.sourceFileName(), "");
}

TEST(cUnsupportedExtensionException, IsCopiedClonedAssignedAndExchanged)
{
  cUnsupportedExtensionException const e = example();
  cUnsupportedExtensionException const copy(e);
  EXPECT_EQ(contentOf(copy), Content);
  std::unique_ptr<mstd::cAbstractException> const clone(e.createObject());
  mstd::cAbstractException const& cloned = *clone;
  ASSERT_EQ(typeid(cloned), typeid(e));
  EXPECT_EQ(contentOf(static_cast<cUnsupportedExtensionException const&>(cloned)), Content);

  cUnsupportedExtensionException other(mstd::cAsciiString("a"), mstd::cAsciiString("b"), false);
  std::string const otherContent = contentOf(other);
  cUnsupportedExtensionException target(other);
  target = e;
  EXPECT_EQ(contentOf(target), Content);
  cUnsupportedExtensionException const& self = target;
  target = self;
  EXPECT_EQ(contentOf(target), Content);
  target.swap(other);
  EXPECT_EQ(contentOf(target), otherContent);
  EXPECT_EQ(contentOf(other), Content);
}

TEST(cUnsupportedExtensionException, IsCopiedWithoutMemory)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  cUnsupportedExtensionException e = example();
  e.link(mstd::cOutOfBoundsException("container", "operation"));
  for (bool bAllLater : {false, true})
  {
    unsigned int n = 1;
    for (bool hasFired = true; hasFired; ++n)
    {
      support::cAllocationFault fault(n, bAllLater);
      cUnsupportedExtensionException const copy(e);
      fault.disarm();
      hasFired = fault.hasFired();
      EXPECT_EQ(copy.hasOutOfMemoryCondition(), hasFired) << n;
      EXPECT_TRUE(copy.otherExtensionsFound());
      EXPECT_TRUE(hasFired || contentOf(copy) == Content);
    }
    EXPECT_GT(n, 3u);
  }
}

TEST(cMCEExceptions, TellWhatNobodyMakes)
{
  cUnsupportedExtensionException const e = support::caught<cUnsupportedExtensionException>([] {
    mce::cMCEExceptions::throwUnsupportedExtension(mstd::cAsciiString("serializer"), mstd::cAsciiString("Xml"), true);
  });
  EXPECT_EQ(contentOf(e), Content);
}
} // namespace
