#include "std/cConstCStringRef.h"

#include "std/tConstArrayRef.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <string>

using mstd::cConstCStringRef;
using support::failureOf;

TEST(cConstCStringRef, TheLengthIsThatOfTheTextOrTheOneGiven)
{
  EXPECT_EQ(cConstCStringRef("abc").length(), 3u);
  EXPECT_EQ(cConstCStringRef("abc", 2).size(), 2u);
  EXPECT_TRUE(cConstCStringRef("").empty());
  EXPECT_EQ(cConstCStringRef("a\0b", 3).proxyLength(), 3u);
}

TEST(cConstCStringRef, NullIsAnAssertionFailure)
{
  EXPECT_EQ(failureOf([] { cConstCStringRef(static_cast<char const*>(nullptr)); }), "bug mpCStyleStringRef != 0");
  EXPECT_EQ(failureOf([] { cConstCStringRef(nullptr, 0); }), "bug mpCStyleStringRef != 0");
}

TEST(cConstCStringRef, TheIndexIsAsserted)
{
  cConstCStringRef const a("abc");
  EXPECT_EQ(a[2], 'c');
  EXPECT_EQ(a.proxyAt(0), 'a');
  EXPECT_EQ(failureOf([&] { a[3]; }), "bug i < miLength");
  EXPECT_EQ(failureOf([&] { a.proxyAt(3); }), "bug i < miLength");
}

TEST(cConstCStringRef, PartsAreChecked)
{
  char const* const text = "abcdef";
  cConstCStringRef const a(text);
  char part[3] = {};
  a.proxyCopyPartTo(part, 3, 2);
  EXPECT_STREQ(part, "de");
  a.proxyCopyPartTo(nullptr, 6, 0);
  EXPECT_EQ(a.proxyProvideData(2, 4), text + 2);
  EXPECT_EQ(failureOf([&] { a.proxyCopyPartTo(part, 3, 4); }), "range cConstCStringRef/copyPartTo 2 4 0 3");
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(7, 0); }), "range cConstCStringRef/provideData 0 7 0 5");
}

TEST(cConstCStringRef, ItIsItsOwnPhysicalProxy)
{
  cConstCStringRef const a("abc");
  unsigned int offset = 7;
  EXPECT_EQ(a.constProxyPhysical(offset), &a);
  EXPECT_EQ(offset, 0u);
  EXPECT_EQ(a.proxyPreferredBlockSize(), 0u);
}

TEST(cConstCStringRef, ALiteralStandsWhereAViewIsExpected)
{
  auto const second = [](mstd::tConstArrayRef<char> const& view) { return view.at(1); };
  EXPECT_EQ(second(cConstCStringRef("abc")), 'b');
}
