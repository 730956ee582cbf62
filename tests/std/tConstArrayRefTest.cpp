#include "std/tConstArrayRef.h"

#include "std/cAsciiString.h"
#include "std/cConstCStringRef.h"
#include "std/tArray.h"
#include "support/cBlockDeviceProxy.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <iostream>
#include <random>
#include <string>

using support::failureOf;

namespace
{
typedef mstd::tConstArrayRef<char> Ref;
typedef mstd::tArray<char> Bytes;

std::string str(mstd::tAbstractConstArrayProxy<char> const& proxy)
{
  std::string result(proxy.proxyLength(), '\0');
  if (!result.empty())
  {
    proxy.proxyCopyPartTo(&result[0], 0, proxy.proxyLength());
  }
  return result;
}
} // namespace

TEST(tConstArrayRef, ANewViewIsUnsetAndEmpty)
{
  Ref const a;
  EXPECT_FALSE(a.isSet());
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(a.length(), 0u);
  EXPECT_EQ(a.proxyPreferredBlockSize(), 0u);
  EXPECT_EQ(a.proxyProvideData(0, 0), nullptr);
  a.proxyCopyPartTo(nullptr, 0, 0);
  EXPECT_EQ(failureOf([&] { a.at(0); }), "range tArrayRef/at 0 0 0 0");
}

TEST(tConstArrayRef, AViewCoversAllTheTailOrAPart)
{
  Bytes const target("abcdef");
  EXPECT_EQ(str(Ref(target)), "abcdef");
  EXPECT_EQ(str(Ref(target, 2)), "cdef");
  EXPECT_EQ(str(Ref(target, 2, 3)), "cde");
  EXPECT_EQ(str(Ref(target, 6)), "");
  EXPECT_EQ(str(Ref(target, 6, 0)), "");
  EXPECT_EQ(Ref(target, 2).size(), 4u);
}

TEST(tConstArrayRef, StringsAndLiteralsAreTargetsToo)
{
  mstd::cAsciiString const text("abc");
  mstd::cConstCStringRef const literal("xyz");
  EXPECT_EQ(str(Ref(text, 1)), "bc");
  EXPECT_EQ(str(Ref(literal, 1)), "yz");
}

TEST(tConstArrayRef, SetFailsOutsideOfTheTargetAndKeepsTheView)
{
  Bytes const target("abcdef");
  Ref a(target, 1, 2);
  EXPECT_EQ(failureOf([&] { a.set(target, 2, 5); }), "range tConstArrayRef/set 2 5 0 4");
  EXPECT_EQ(failureOf([&] { a.set(target, 7, 0); }), "range tConstArrayRef/set 0 7 0 5");
  EXPECT_EQ(failureOf([&] { a.set(target, 7); }), "range tConstArrayRef/set 2 7 0 6");
  EXPECT_EQ(failureOf([&] { a.set(target, 2, 0xFFFFFFFFu); }), "bounds tConstArrayRef/set");
  EXPECT_EQ(str(a), "bc");
}

TEST(tConstArrayRef, AViewOfAViewRefersToTheStorage)
{
  Bytes const target("0123456789");
  Ref inner;
  {
    Ref const outer(target, 2, 6);
    inner.set(outer, 1, 3);
  }
  EXPECT_EQ(str(inner), "345"); // the outer view is gone
  unsigned int offset = 0;
  EXPECT_EQ(inner.constProxyPhysical(offset), &target);
  EXPECT_EQ(offset, 3u);
}

TEST(tConstArrayRef, AViewOfAViewNeverReachesBehindItsParent)
{
  Bytes const target("0123456789");
  Ref const outer(target, 2, 3);
  Ref inner;
  EXPECT_EQ(failureOf([&] { inner.set(outer, 1, 3); }), "range tConstArrayRef/set 2 3 0 2");
  EXPECT_EQ(failureOf([&] { inner.set(outer, 4, 0); }), "range tConstArrayRef/set 0 4 0 2");
  EXPECT_EQ(failureOf([&] { inner.set(outer, 4); }), "range tConstArrayRef/set 2 4 0 3");
  inner.set(outer, 1);
  EXPECT_EQ(str(inner), "34");
}

TEST(tConstArrayRef, AViewCanBecomeAPartOfItself)
{
  Bytes const target("0123456789");
  Ref a(target, 2, 6);
  a.set(a, 1, 4);
  EXPECT_EQ(str(a), "3456");
  a.set(a, 1);
  EXPECT_EQ(str(a), "456");
}

TEST(tConstArrayRef, AViewOfAnUnsetViewIsUnset)
{
  Ref const unset;
  Bytes const target("abc");
  Ref a(target);
  a.set(unset, 0, 0);
  EXPECT_FALSE(a.isSet());
}

TEST(tConstArrayRef, CopiesSwapAndClearTouchNoData)
{
  Bytes const target("abcdef");
  Ref a(target, 1, 2);
  Ref b(a);
  EXPECT_EQ(str(b), "bc");
  Ref c;
  c.swap(b);
  EXPECT_EQ(str(c), "bc");
  EXPECT_FALSE(b.isSet());
  b = c;
  EXPECT_EQ(str(b), "bc");
  b.clear();
  EXPECT_FALSE(b.isSet());
  EXPECT_EQ(b.length(), 0u);
  EXPECT_EQ(str(target), "abcdef");
}

TEST(tConstArrayRef, AChangeOfTheTargetsPoolIsSeen)
{
  Bytes target("abc");
  Ref const a(target, 1, 2);
  target.append(std::string(5000, 'x').c_str());
  target.at(1) = 'B';
  EXPECT_EQ(str(a), "Bc");
}

TEST(tConstArrayRef, ATargetThatBecameShorterFailsInsteadOfTheView)
{
  Bytes target("abcdef");
  Ref const a(target, 2, 4);
  target.truncate(3);
  EXPECT_EQ(a.at(0), 'c');
  EXPECT_EQ(failureOf([&] { a.at(3); }), "range tArray/at 0 5 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(0, 4); }), "range tArray/provideData 2 4 0 1");
}

TEST(tConstArrayRef, AccessIsChecked)
{
  Bytes const target("abcdef");
  Ref const a(target, 1, 3);
  EXPECT_EQ(a.at(2), 'd');
  EXPECT_EQ(a[0], 'b');
  EXPECT_EQ(a.proxyAt(1), 'c');
  EXPECT_EQ(a.proxyProvideData(1, 2), target.data() + 2);
  char part[4];
  EXPECT_EQ(failureOf([&] { a.at(3); }), "range tArrayRef/at 0 3 0 2");
  EXPECT_EQ(failureOf([&] { a[4]; }), "range tArrayRef/at 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(2, 2); }), "range tConstArrayRef/provideData 2 2 0 1");
  EXPECT_EQ(failureOf([&] { a.proxyCopyPartTo(part, 4, 0); }), "range tConstArrayRef/copyPartTo 0 4 0 2");
}

TEST(tConstArrayRef, TheBlockSizeIsThatOfTheStorage)
{
  support::cBlockDeviceProxy device("abcdef", 4);
  Ref const outer(device, 1);
  Ref const inner(outer, 1);
  EXPECT_EQ(inner.proxyPreferredBlockSize(), 4u);
}

TEST(tConstArrayRef, FindWithoutBlocksFetchesTheRangeOnce)
{
  support::cBlockDeviceProxy device("abcdefghij", 0);
  Ref const a(device, 1, 8);
  bool found = false;
  EXPECT_EQ(a.find("def", 3, found), 2u);
  EXPECT_TRUE(found);
  EXPECT_EQ(a.find("e", 1, found), 3u);
  EXPECT_TRUE(found);
  a.find("ij", 2, found);
  EXPECT_FALSE(found);
  ASSERT_EQ(device.windows().size(), 3u);
  EXPECT_EQ(device.windows()[0].start, 1u);
  EXPECT_EQ(device.windows()[0].size, 8u);
}

TEST(tConstArrayRef, FindSeesAMatchAcrossABlockBorder)
{
  support::cBlockDeviceProxy device("0123456789", 4);
  bool found = false;
  EXPECT_EQ(Ref(device).find("345", 3, found), 3u); // elements 3 to 5 of blocks of 4
  EXPECT_TRUE(found);
}

TEST(tConstArrayRef, FindWalksInOverlappingWindowsOfTheBlockSize)
{
  support::cBlockDeviceProxy device("0123456789", 4);
  bool found = true;
  Ref(device, 1).find("xyz", 3, found);
  EXPECT_FALSE(found);
  ASSERT_EQ(device.windows().size(), 4u);
  for (unsigned int i = 0; i < 4; ++i)
  {
    EXPECT_EQ(device.windows()[i].start, 1 + 2 * i);
    EXPECT_EQ(device.windows()[i].size, i < 3 ? 4u : 3u); // the last is what is left
  }
}

TEST(tConstArrayRef, FindOfANeedleLongerThanABlockTakesWindowsOfItsSize)
{
  support::cBlockDeviceProxy device("0123456789", 4);
  bool found = false;
  EXPECT_EQ(Ref(device).find("345678", 6, found), 3u);
  EXPECT_TRUE(found);
  EXPECT_EQ(device.windows()[0].size, 6u);
}

TEST(tConstArrayRef, FindKeepsWithinStartAndSize)
{
  Bytes const target("abcabcabc");
  Ref const a(target, 1, 7); // bcabcab
  bool found = false;
  EXPECT_EQ(a.find("ab", 2, found, 3), 5u);
  EXPECT_TRUE(found);
  a.find("ab", 2, found, 3, 3);
  EXPECT_FALSE(found);
  EXPECT_EQ(a.find("bc", 2, found, 1, 0xFFFFFFFFu), 3u);
  EXPECT_TRUE(found);
  EXPECT_EQ(a.find("zz", 2, found, 2), 2u);
  EXPECT_FALSE(found);
  a.find("b", 1, found, 7);
  EXPECT_FALSE(found);
  EXPECT_EQ(failureOf([&] { a.find("b", 1, found, 8); }), "range tConstArrayRef/find 0 8 0 6");
}

TEST(tConstArrayRef, NothingIsFoundForAnEmptyNeedleOrInAnUnsetView)
{
  Bytes const target("abc");
  bool found = true;
  Ref(target).find("", 0, found);
  EXPECT_FALSE(found);
  found = true;
  Ref(target).find(nullptr, 2, found);
  EXPECT_FALSE(found);
  found = true;
  EXPECT_EQ(Ref().find("a", 1, found, 5), 0u);
  EXPECT_FALSE(found);
  found = true;
  Bytes const empty; // no pool at all
  Ref(empty).find("a", 1, found);
  EXPECT_FALSE(found);
}

TEST(tConstArrayRef, FindComparesBytesAlsoInATextWithAZero)
{
  mstd::cAsciiString text;
  text.append("xa\0bc", 5);
  mstd::tConstArrayRef<char, mstd::tArrayAsciiStringTraits<char>> const a(text);
  bool found = false;
  EXPECT_EQ(a.find("\0b", 2, found), 2u);
  EXPECT_TRUE(found);
  a.find("a\0z", 3, found);
  EXPECT_FALSE(found);
}

TEST(tConstArrayRef, WideElementsMatchWholeElements)
{
  mstd::tArray<unsigned int> target;
  target.append(0x01000001u);
  target.append(0x00000100u);
  mstd::tConstArrayRef<unsigned int> const a(target);
  unsigned int const between = 0x00010000u;
  bool found = true;
  a.find(&between, 1, found);
  EXPECT_FALSE(found);
  unsigned int const whole = 0x00000100u;
  EXPECT_EQ(a.find(&whole, 1, found), 1u);
  EXPECT_TRUE(found);
}

TEST(tConstArrayRef, FindIsThatOfAPlainLoopForEveryBlockSizePropertyTest)
{
  unsigned int const seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  for (int round = 0; round < 5000; ++round)
  {
    std::string data;
    std::string needle;
    for (unsigned int n = random() % 30; n != 0; --n)
    {
      data += static_cast<char>('a' + random() % 2);
    }
    for (unsigned int n = 1 + random() % 5; n != 0; --n)
    {
      needle += static_cast<char>('a' + random() % 2);
    }
    support::cBlockDeviceProxy device(data, random() % 7);
    unsigned int const start = static_cast<unsigned int>(random() % (data.size() + 1));
    std::string::size_type const expected = data.find(needle, start);
    bool found = false;
    unsigned int const at = Ref(device).find(needle.data(), static_cast<unsigned int>(needle.size()), found, start);
    ASSERT_EQ(found, expected != std::string::npos) << "seed " << seed << " round " << round;
    if (found)
    {
      ASSERT_EQ(at, expected) << "seed " << seed << " round " << round;
    }
  }
}
