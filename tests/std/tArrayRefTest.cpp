#include "std/tArrayRef.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "support/cBlockDeviceProxy.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

using support::failureOf;

namespace
{
typedef mstd::tArrayRef<char> Ref;
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

TEST(tArrayRef, ANewViewIsUnsetAndEmpty)
{
  Ref a;
  EXPECT_FALSE(a.isSet());
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(a.size(), 0u);
  EXPECT_EQ(a.proxyPreferredBlockSize(), 0u);
  EXPECT_EQ(a.proxyProvideData(0, 0), nullptr);
  EXPECT_EQ(a.proxyProvideWriteableData(0, 0), nullptr);
  a.proxyCopyPartTo(nullptr, 0, 0);
  a.proxyPatchData(0, 0, nullptr);
  a.proxySetSize(0);
  bool found = true;
  EXPECT_EQ(a.find("a", 1, found), 0u);
  EXPECT_FALSE(found);
}

TEST(tArrayRef, AnUnsetViewCannotBeChanged)
{
  Ref a;
  EXPECT_EQ(failureOf([&] { a.append("x"); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.append('x'); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.append("x", 1); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.erase(0, 0); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.proxyInsert(0, "x", 1); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.proxyInsertDefaultObjects(0, 1); }), "bug mpData != 0");
  EXPECT_EQ(failureOf([&] { a.at(0); }), "range tArrayRef/at 0 0 0 0");
  a.truncate(0);
}

TEST(tArrayRef, AViewCoversAllTheTailOrAPart)
{
  Bytes target("abcdef");
  EXPECT_EQ(str(Ref(target)), "abcdef");
  EXPECT_EQ(str(Ref(target, 2)), "cdef");
  EXPECT_EQ(str(Ref(target, 2, 3)), "cde");
}

TEST(tArrayRef, SetSharesTheNameOfTheReadingView)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  EXPECT_EQ(failureOf([&] { a.set(target, 2, 5); }), "range tConstArrayRef/set 2 5 0 4");
  EXPECT_EQ(failureOf([&] { a.set(target, 7); }), "range tConstArrayRef/set 2 7 0 6");
  EXPECT_EQ(str(a), "bc");
}

TEST(tArrayRef, AViewOfAViewRefersToTheStorageAndKeepsWithinItsParent)
{
  Bytes target("0123456789");
  Ref inner;
  {
    Ref outer(target, 2, 6);
    inner.set(outer, 1, 3);
    EXPECT_EQ(failureOf([&] { inner.set(outer, 1, 6); }), "range tConstArrayRef/set 2 6 0 5");
  }
  EXPECT_EQ(str(inner), "345");
  unsigned int offset = 0;
  EXPECT_EQ(inner.proxyPhysical(offset), &target);
  EXPECT_EQ(offset, 3u);
  offset = 0;
  EXPECT_EQ(static_cast<Ref const&>(inner).constProxyPhysical(offset), &target);
  EXPECT_EQ(offset, 3u);
  mstd::tConstArrayRef<char> reading(inner, 1);
  EXPECT_EQ(str(reading), "45");
}

TEST(tArrayRef, AViewOfAnUnsetViewIsUnset)
{
  Ref unset;
  Bytes target("abc");
  Ref a(target);
  a.set(unset);
  EXPECT_FALSE(a.isSet());
}

TEST(tArrayRef, CopiesSwapAndClearTouchNoData)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  Ref b(a);
  Ref c;
  c.swap(b);
  EXPECT_EQ(str(c), "bc");
  EXPECT_FALSE(b.isSet());
  b = c;
  b.clear();
  EXPECT_FALSE(b.isSet());
  EXPECT_EQ(str(target), "abcdef");
}

TEST(tArrayRef, AccessIsCheckedAndWritesThrough)
{
  Bytes target("abcdef");
  Ref a(target, 1, 3);
  Ref const& c = a;
  a.at(0) = 'B';
  a[1] = 'C';
  a.proxyAt(2) = 'D';
  EXPECT_EQ(str(target), "aBCDef");
  EXPECT_EQ(c.at(0), 'B');
  EXPECT_EQ(c[1], 'C');
  EXPECT_EQ(c.proxyAt(2), 'D');
  EXPECT_EQ(failureOf([&] { a.at(3); }), "range tArrayRef/at 0 3 0 2");
  EXPECT_EQ(failureOf([&] { c.at(3); }), "range tArrayRef/at 0 3 0 2");
}

TEST(tArrayRef, PartsAreReadAndPatched)
{
  Bytes target("abcdef");
  Ref a(target, 1, 4);
  EXPECT_EQ(a.proxyProvideData(1, 2), target.data() + 2);
  EXPECT_EQ(a.proxyProvideWriteableData(1, 2), target.data() + 2);
  a.proxyPatchData(1, 2, "xy");
  EXPECT_EQ(str(target), "abxyef");
  char part[5];
  EXPECT_EQ(failureOf([&] { a.proxyCopyPartTo(part, 0, 5); }), "range tArrayRef/copyPartTo 2 5 0 4");
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(5, 0); }), "range tArrayRef/provideData 0 5 0 3");
  EXPECT_EQ(failureOf([&] { a.proxyProvideWriteableData(5, 0); }), "range tArrayRef/proxyProvideWriteableData 0 5 0 3");
  EXPECT_EQ(failureOf([&] { a.proxyPatchData(3, 2, part); }), "range tArrayRef/proxyPatchData 2 2 0 1");
}

TEST(tArrayRef, AProxyThatHidesItsStoreIsPatched)
{
  support::cBlockDeviceProxy device("abcdef", 4);
  Ref a(device, 1);
  EXPECT_EQ(a.proxyProvideWriteableData(0, 2), nullptr);
  a.proxyPatchData(0, 2, "xy");
  EXPECT_EQ(device.contents(), "axydef");
  EXPECT_EQ(a.proxyPreferredBlockSize(), 4u);
}

TEST(tArrayRef, AppendingInsertsIntoTheTargetBehindTheView)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  a.append("xy");
  a.append('z');
  a.append("12", 2);
  EXPECT_EQ(str(target), "abcxyz12def");
  EXPECT_EQ(str(a), "bcxyz12");
  EXPECT_EQ(failureOf([&] { a.append(static_cast<char const*>(nullptr)); }), "bug pData != 0");
  EXPECT_EQ(failureOf([&] { a.append(nullptr, 1); }), "bug pData != 0");
  EXPECT_EQ(str(a), "bcxyz12");
}

TEST(tArrayRef, AViewCanBeAppendedToItself)
{
  Bytes target("abcdef");
  Ref a(target, 1, 3);
  a.append(target.data() + 1, 3);
  EXPECT_EQ(str(target), "abcdbcdef");
  a.append(a[0]);
  EXPECT_EQ(str(a), "bcdbcdb");
}

TEST(tArrayRef, ErasingRemovesFromTheTarget)
{
  Bytes target("abcdef");
  Ref a(target, 1, 4);
  a.erase(1, 2);
  EXPECT_EQ(str(target), "abef");
  EXPECT_EQ(str(a), "be");
  EXPECT_EQ(failureOf([&] { a.erase(1, 2); }), "range tArrayRef/erase 2 2 0 1");
  EXPECT_EQ(failureOf([&] { a.erase(3, 0); }), "range tArrayRef/erase 0 3 0 1");
  a.erase(2, 0);
  a.proxyErase(0, 1);
  EXPECT_EQ(str(a), "e");
  EXPECT_EQ(str(target), "aef");
}

TEST(tArrayRef, TruncateErasesTheTailOfTheView)
{
  Bytes target("abcdef");
  Ref a(target, 1, 4);
  a.truncate(2);
  EXPECT_EQ(str(target), "abcf");
  EXPECT_EQ(str(a), "bc");
  EXPECT_EQ(failureOf([&] { a.truncate(2); }), "range tArrayRef/truncate 0 2 0 1");
  a.truncate(0);
  EXPECT_EQ(str(target), "af");
  a.truncate(7); // an empty view has nothing to cut
}

TEST(tArrayRef, InsertingAdjustsTheView)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  a.proxyInsert(1, "xy", 2);
  EXPECT_EQ(str(target), "abxycdef");
  EXPECT_EQ(str(a), "bxyc");
  a.proxyInsertDefaultObjects(4, 2);
  EXPECT_EQ(a.length(), 6u);
  EXPECT_EQ(target.length(), 10u);
  EXPECT_EQ(failureOf([&] { a.proxyInsert(7, "x", 1); }), "range tArrayRef/insert 1 7 0 6");
  EXPECT_EQ(failureOf([&] { a.proxyInsertDefaultObjects(7, 1); }), "range tArrayRef/insert 1 7 0 6");
}

TEST(tArrayRef, SettingTheSizeWorksAtTheEndOfTheView)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  a.proxySetSize(4);
  EXPECT_EQ(target.length(), 8u);
  EXPECT_EQ(a.length(), 4u);
  a.proxyPatchData(2, 2, "xy");
  EXPECT_EQ(str(target), "abcxydef");
  a.proxySetSize(4);
  a.proxySetSize(1);
  EXPECT_EQ(str(target), "abdef");
  EXPECT_EQ(str(a), "b");
}

TEST(tArrayRef, ClearDetachesAndLeavesTheTarget)
{
  Bytes target("abcdef");
  Ref a(target);
  a.clear();
  EXPECT_FALSE(a.isSet());
  EXPECT_EQ(str(target), "abcdef");
}

TEST(tArrayRef, FindWorksAsInTheReadingView)
{
  support::cBlockDeviceProxy device("0123456789", 4);
  Ref const a(device, 1);
  bool found = false;
  EXPECT_EQ(a.find("345", 3, found), 2u);
  EXPECT_TRUE(found);
  a.find("", 0, found);
  EXPECT_FALSE(found);
  EXPECT_EQ(failureOf([&] { a.find("3", 1, found, 10); }), "range tConstArrayRef/find 0 10 0 8");
}

TEST(tArrayRef, LengthsBehind32BitsAreBadAllocAndChangeNothing)
{
  Bytes target("abcdef");
  Ref a(target, 1, 2);
  EXPECT_THROW(a.append("x", 0xFFFFFFFEu), std::bad_alloc);
  EXPECT_THROW(a.append("x", 0xFFFFFFFBu), std::bad_alloc); // fits the view, but not the target
  EXPECT_THROW(a.proxyInsert(0, "x", 0xFFFFFFFEu), std::bad_alloc);
  EXPECT_THROW(a.proxyInsertDefaultObjects(0, 0xFFFFFFFEu), std::bad_alloc);
  EXPECT_EQ(str(a), "bc");
  EXPECT_EQ(str(target), "abcdef");
}
