#include "std/cAsciiString.h"

#include "std/cConstCStringRef.h"
#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <iostream>
#include <limits>
#include <new>
#include <random>
#include <string>
#include <utility>

using mstd::cAsciiString;
using mstd::cNumberConversionFormat;
using support::failureOf;

namespace
{
std::string str(cAsciiString const& s)
{
  return std::string(s.c_str(), s.length());
}

char const* const Null = nullptr;

cNumberConversionFormat hex()
{
  return cNumberConversionFormat(16);
}
} // namespace

// construction

TEST(cAsciiString, ANewStringIsEmptyWithASectorAndAText)
{
  cAsciiString const a;
  EXPECT_EQ(a.length(), 0u);
  EXPECT_EQ(a.capacity(), 32u);
  EXPECT_STREQ(a.c_str(), "");
}

TEST(cAsciiString, AppendingThe33rdCharacterReallocatesOnceTo64)
{
  cAsciiString a;
  unsigned int changes = 0;
  for (int i = 0; i < 33; ++i)
  {
    unsigned int const before = a.capacity();
    a += 'x';
    changes += before != a.capacity();
  }
  EXPECT_EQ(changes, 1u);
  EXPECT_EQ(a.capacity(), 64u);
}

TEST(cAsciiString, ErasingOneOfFortyLeaves39OrWithoutFit64)
{
  cAsciiString a(std::string(40, 'x').c_str());
  cAsciiString b(a);
  a.erase(0, 1);
  EXPECT_EQ(a.capacity(), 39u);
  b.setFitOnErase(false);
  b.erase(0, 1);
  EXPECT_EQ(b.capacity(), 64u);
}

TEST(cAsciiString, ItIsMadeFromTextsTailsAndViews)
{
  EXPECT_STREQ(cAsciiString("abc").c_str(), "abc");
  EXPECT_STREQ(cAsciiString(Null).c_str(), "");
  cAsciiString const a("abcdef");
  EXPECT_STREQ(cAsciiString(a).c_str(), "abcdef");
  EXPECT_STREQ(cAsciiString(a, 2).c_str(), "cdef");
  EXPECT_STREQ(cAsciiString(a, 6).c_str(), "");
  EXPECT_EQ(failureOf([&] { cAsciiString(a, 7); }), "range tConstArrayRef/set 2 7 0 6");
  mstd::tArray<char> const bytes("abcdef");
  EXPECT_STREQ(cAsciiString(mstd::tConstArrayRef<char>(bytes, 1, 3)).c_str(), "bcd");
  EXPECT_STREQ(cAsciiString(mstd::tConstArrayRef<char>()).c_str(), "");
  EXPECT_STREQ(cAsciiString(mstd::tConstArrayRef<char>(mstd::cConstCStringRef("xyz"))).c_str(), "xyz");
}

TEST(cAsciiString, EveryStringHasASectorFromTheStart)
{
  EXPECT_EQ(cAsciiString("").capacity(), 32u);
  EXPECT_EQ(cAsciiString(Null).capacity(), 32u);
  EXPECT_EQ(cAsciiString(cAsciiString()).capacity(), 32u);
  EXPECT_EQ(cAsciiString(cAsciiString("abc"), 3).capacity(), 32u);
  EXPECT_EQ(cAsciiString(mstd::tConstArrayRef<char>()).capacity(), 32u);
}

TEST(cAsciiString, MovingLeavesAnEmptyString)
{
  cAsciiString a("abc");
  cAsciiString b(std::move(a));
  EXPECT_STREQ(b.c_str(), "abc");
  EXPECT_STREQ(a.c_str(), "");
  a = std::move(b);
  EXPECT_STREQ(a.c_str(), "abc");
  EXPECT_STREQ(b.c_str(), "");
}

// characters

TEST(cAsciiString, PrintableIsFromBlankToTilde)
{
  for (int i = 0; i < 256; ++i)
  {
    EXPECT_EQ(cAsciiString::isPrintable(static_cast<char>(i)), i >= 0x20 && i <= 0x7E) << i;
  }
}

TEST(cAsciiString, OnlyLettersOfAsciiChangeTheirCase)
{
  for (int i = 0; i < 256; ++i)
  {
    char const c = static_cast<char>(i);
    char const upper = i >= 'a' && i <= 'z' ? static_cast<char>(i - 32) : c;
    char const lower = i >= 'A' && i <= 'Z' ? static_cast<char>(i + 32) : c;
    EXPECT_EQ(cAsciiString::upperCase(c), upper) << i;
    EXPECT_EQ(cAsciiString::lowerCase(c), lower) << i;
  }
}

TEST(cAsciiString, TheCaseOfAStringIsChangedInPlaceOrInACopy)
{
  cAsciiString a("aBc1{`@[zZ");
  EXPECT_STREQ(a.upperCase().c_str(), "ABC1{`@[ZZ");
  EXPECT_STREQ(a.c_str(), "aBc1{`@[zZ");
  a.toUpper();
  EXPECT_STREQ(a.c_str(), "ABC1{`@[ZZ");
  a.toLower();
  EXPECT_STREQ(a.c_str(), "abc1{`@[zz");
}

TEST(cAsciiString, ToUpperLeavesBytesAbove7FUntouched)
{
  std::string all;
  for (int i = 0x80; i < 0x100; ++i)
  {
    all += static_cast<char>(i);
  }
  cAsciiString a(all.c_str());
  a.toUpper();
  EXPECT_EQ(str(a), all);
  a.toLower();
  EXPECT_EQ(str(a), all);
}

// trimming

TEST(cAsciiString, TrimmingRemovesBlanksOnly)
{
  cAsciiString a("  \t a b \n ");
  a.ltrim();
  EXPECT_STREQ(a.c_str(), "\t a b \n ");
  a.rtrim();
  EXPECT_STREQ(a.c_str(), "\t a b \n");
  cAsciiString b("  a b  ");
  b.trim();
  EXPECT_STREQ(b.c_str(), "a b");
  cAsciiString c("    ");
  c.trim();
  EXPECT_STREQ(c.c_str(), "");
  cAsciiString d("   ");
  d.rtrim();
  EXPECT_STREQ(d.c_str(), "");
  cAsciiString e;
  e.trim();
  EXPECT_STREQ(e.c_str(), "");
}

TEST(cAsciiString, TrimmingWithoutBlanksLeavesThePool)
{
  cAsciiString a("abc");
  a.trim();
  EXPECT_EQ(a.capacity(), 32u);
}

// comparison

TEST(cAsciiString, ItComparesWithTextsAndStrings)
{
  cAsciiString const a("abc");
  EXPECT_TRUE(a == "abc");
  EXPECT_FALSE(a == "ab");
  EXPECT_FALSE(a == "abd");
  EXPECT_TRUE(a != "abcd");
  EXPECT_FALSE(a != "abc");
  EXPECT_TRUE(a == cAsciiString("abc"));
  EXPECT_TRUE(a != cAsciiString("abx"));
}

TEST(cAsciiString, NoStringEqualsNull)
{
  EXPECT_FALSE(cAsciiString() == Null);
  EXPECT_FALSE(cAsciiString("abc") == Null);
  EXPECT_TRUE(cAsciiString() != Null);
}

TEST(cAsciiString, ComparisonEndsAtAZeroInside)
{
  cAsciiString a;
  cAsciiString b;
  a.append("a\0b", 3);
  b.append("a\0c", 3);
  EXPECT_TRUE(a == b);
  EXPECT_FALSE(a == "a");
}

TEST(cAsciiString, TheOrderIsThatOfUnsignedBytes)
{
  EXPECT_TRUE(cAsciiString("abc") < cAsciiString("abd"));
  EXPECT_TRUE(cAsciiString("ab") < cAsciiString("abc"));
  EXPECT_FALSE(cAsciiString("abc") < cAsciiString("abc"));
  EXPECT_FALSE(cAsciiString("b") < cAsciiString("abc"));
  EXPECT_TRUE(cAsciiString("z") < cAsciiString("\x80"));
}

// appending and setting

TEST(cAsciiString, TextsStringsAndCharactersAreAppended)
{
  cAsciiString a("a");
  a += "bc";
  a += cAsciiString("de");
  a += 'f';
  a += Null;
  a.addString("gh").addString(cAsciiString("i"));
  a.addString(Null);
  EXPECT_STREQ(a.c_str(), "abcdefghi");
}

TEST(cAsciiString, AStringCanBeAppendedToItself)
{
  cAsciiString a("0123456789");
  a += a;
  a += a.c_str();
  a.addString(a);
  EXPECT_EQ(a.length(), 80u);
  EXPECT_EQ(str(a).substr(70), "0123456789");
}

TEST(cAsciiString, NumbersAreAppendedInTheFormatGiven)
{
  cAsciiString a("n=");
  a.addNum(-1ll, cNumberConversionFormat(10)).addUNum(255, hex()).addNum32(-2, cNumberConversionFormat(10));
  a.addUNum32(0xFFFFFFFFu, hex()).addDouble(1.5, cNumberConversionFormat(10));
  EXPECT_STREQ(a.c_str(), "n=-1ff-2ffffffff1.5");
}

TEST(cAsciiString, NumbersWithoutAFormatTakeTheDefaultOne)
{
  cAsciiString a;
  a.addNum(std::numeric_limits<long long>::min());
  a += ' ';
  a.addUNum(std::numeric_limits<unsigned long long>::max());
  a += ' ';
  a.addNum32(std::numeric_limits<int>::min());
  a += ' ';
  a.addUNum32(std::numeric_limits<unsigned int>::max());
  a += ' ';
  a.addDouble(-0.25);
  EXPECT_STREQ(a.c_str(), "-9223372036854775808 18446744073709551615 -2147483648 4294967295 -0.25");
}

TEST(cAsciiString, TheDefaultFormatIsThatOfTheSystem)
{
  cNumberConversionFormat const before = cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
  mpi::system().defaults.numberFormat = hex();
  cAsciiString a;
  a.setNum32(255);
  a.addUNum(16);
  long long const read = cAsciiString("ff").toInt();
  mpi::system().defaults.numberFormat = before;
  EXPECT_STREQ(a.c_str(), "ff10");
  EXPECT_EQ(read, 255);
}

TEST(cAsciiString, WhatIsNoNumberIsAppendedToo)
{
  cAsciiString a("x ");
  a.addDouble(std::numeric_limits<double>::infinity(), cNumberConversionFormat(10));
  a += ' ';
  a.addDouble(-std::numeric_limits<double>::infinity(), cNumberConversionFormat(10));
  a += ' ';
  a.addDouble(std::numeric_limits<double>::quiet_NaN(), cNumberConversionFormat(10));
  EXPECT_STREQ(a.c_str(), "x +inf -inf nan");
}

TEST(cAsciiString, SettingReplacesTheContents)
{
  cAsciiString a("before");
  EXPECT_STREQ(a.setNum(-5).c_str(), "-5");
  EXPECT_STREQ(a.setNum(-31, hex()).c_str(), "-1f");
  EXPECT_STREQ(a.setUNum(5).c_str(), "5");
  EXPECT_STREQ(a.setUNum(31, hex()).c_str(), "1f");
  EXPECT_STREQ(a.setNum32(-6).c_str(), "-6");
  EXPECT_STREQ(a.setNum32(-32, hex()).c_str(), "-20");
  EXPECT_STREQ(a.setUNum32(6).c_str(), "6");
  EXPECT_STREQ(a.setUNum32(32, hex()).c_str(), "20");
  EXPECT_STREQ(a.setDouble(2.5).c_str(), "2.5");
  EXPECT_STREQ(a.setDouble(-2.5, cNumberConversionFormat(10)).c_str(), "-2.5");
}

TEST(cAsciiString, AssignmentTakesTextsStringsAndArrays)
{
  cAsciiString a("before");
  a = "text";
  EXPECT_STREQ(a.c_str(), "text");
  a = Null;
  EXPECT_STREQ(a.c_str(), "");
  a = cAsciiString("string");
  EXPECT_STREQ(a.c_str(), "string");
  mstd::tArray<char, mstd::tArrayAsciiStringTraits<char>> base;
  base.append("base");
  base.setGrowStep(3);
  a = base;
  EXPECT_STREQ(a.c_str(), "base");
  EXPECT_EQ(a.growStep(), 3u);
  mstd::tArray<char> bytes("bytes");
  bytes.setGrowStep(2);
  bytes.setFitOnErase(false);
  a = bytes;
  EXPECT_STREQ(a.c_str(), "bytes");
  EXPECT_EQ(a.growStep(), 2u);
  EXPECT_FALSE(a.fitOnErase());
  a = mstd::tArray<char>();
  EXPECT_STREQ(a.c_str(), "");
}

TEST(cAsciiString, AStringCanBeAssignedFromItself)
{
  cAsciiString a("abcdef");
  a = a.c_str() + 2;
  EXPECT_STREQ(a.c_str(), "cdef");
  cAsciiString const& same = a;
  a = same;
  EXPECT_STREQ(a.c_str(), "cdef");
}

// conversion

TEST(cAsciiString, NumbersAreRead)
{
  EXPECT_EQ(cAsciiString("-123").toInt(), -123);
  EXPECT_EQ(cAsciiString("ff").toInt(hex()), 255);
  EXPECT_EQ(cAsciiString("123").toUInt(), 123u);
  EXPECT_EQ(cAsciiString("18446744073709551615").toUInt(), std::numeric_limits<unsigned long long>::max());
  EXPECT_EQ(cAsciiString("ff").toUInt(hex()), 255u);
  EXPECT_EQ(cAsciiString("-1.5").toDouble(), -1.5);
  EXPECT_EQ(cAsciiString("2.5").toDouble(hex()), 2.5);
  EXPECT_EQ(cAsciiString("0x1F").toInt(), 31);
  EXPECT_THROW(cAsciiString("12x").toInt(), mstd::cRuntimeException);
}

// padding

TEST(cAsciiString, LeftAdjustFillsAtTheEnd)
{
  cAsciiString a("abc");
  a.leftAdjust(6, '.');
  EXPECT_STREQ(a.c_str(), "abc...");
  a.leftAdjust(6, 'x');
  a.leftAdjust(2, 'x');
  EXPECT_STREQ(a.c_str(), "abc...");
  a.leftAdjust(40);
  EXPECT_EQ(str(a), "abc..." + std::string(34, ' '));
}

TEST(cAsciiString, RightAdjustFillsAtTheFront)
{
  cAsciiString a("abc");
  a.rightAdjust(6, '.');
  EXPECT_STREQ(a.c_str(), "...abc");
  a.rightAdjust(6, 'x');
  a.rightAdjust(5, 'x');
  EXPECT_STREQ(a.c_str(), "...abc");
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(cAsciiString, AdjustCentresWithTheOddCharacterBehind)
{
  cAsciiString a("abc");
  a.adjust(8, '.');
  EXPECT_STREQ(a.c_str(), "..abc...");
  a.adjust(10, '_');
  EXPECT_STREQ(a.c_str(), "_..abc..._");
  a.adjust(10, 'x');
  EXPECT_STREQ(a.c_str(), "_..abc..._");
  cAsciiString b;
  b.adjust(3, '-');
  EXPECT_STREQ(b.c_str(), "---");
}

TEST(cAsciiString, FixedLengthCutsWithASuffixAndFills)
{
  cAsciiString a("abcdefgh");
  a.setFixedLength(5, "..", ' ');
  EXPECT_STREQ(a.c_str(), "abc..");
  cAsciiString b("ab");
  b.setFixedLength(5, "..", ' ');
  EXPECT_STREQ(b.c_str(), "ab   ");
}

TEST(cAsciiString, FixedLengthIsAtLeastThatOfTheSuffix)
{
  cAsciiString a("abcdefgh");
  a.setFixedLength(2, "...", ' ');
  EXPECT_STREQ(a.c_str(), "...");
  cAsciiString b("a");
  b.setFixedLength(0, "...", ' ');
  EXPECT_STREQ(b.c_str(), "a  ");
  cAsciiString c("abc");
  c.setFixedLength(3, "...", ' ');
  EXPECT_STREQ(c.c_str(), "abc");
  c.setFixedLength(1, c, ' ');
  EXPECT_STREQ(c.c_str(), "abc");
  c.setFixedLength(0, "", ' ');
  EXPECT_STREQ(c.c_str(), "");
}

// concatenation

TEST(cAsciiString, AddingYieldsANewString)
{
  cAsciiString const a("abc");
  EXPECT_STREQ((a + cAsciiString("def")).c_str(), "abcdef");
  EXPECT_STREQ((a + "x" + "y").c_str(), "abcxy");
  EXPECT_STREQ((a + a).c_str(), "abcabc");
  EXPECT_STREQ(a.c_str(), "abc");
}

TEST(cAsciiString, ATextPlusAStringChangesTheString)
{
  cAsciiString a("abc");
  EXPECT_EQ(&("x" + a), &a);
  EXPECT_STREQ(a.c_str(), "xabc");
  Null + a;
  EXPECT_STREQ(a.c_str(), "xabc");
}

// failures

TEST(cAsciiString, PaddingBehind32BitsIsBadAllocAndChangesNothing)
{
  cAsciiString a("abc");
  EXPECT_THROW(a.leftAdjust(0xFFFFFFFFu, '.'), std::bad_alloc);
  if (sizeof(void*) == 4)
  {
    EXPECT_THROW(a.rightAdjust(0xFFFFFFFFu, '.'), std::bad_alloc);
    EXPECT_THROW(a.adjust(0xFFFFFFFFu, '.'), std::bad_alloc);
    EXPECT_THROW(a.setFixedLength(0x90000000u, "", '.'), std::bad_alloc);
  }
  EXPECT_STREQ(a.c_str(), "abc");
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(cAsciiString, FaultEveryFailingAllocationLeavesTheStringUnchanged)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this allocator cannot be made to fail";
  }
  cAsciiString const other("some other text that is longer than a single sector");
  cAsciiString a("0123456789abcdef0123456789abcdef");
  std::string const before = str(a);
  unsigned int failures = 0;
  auto const failing = [&](auto const& operation) {
    for (unsigned int n = 1;; ++n)
    {
      cAsciiString copy(a);
      bool threw = false;
      support::cAllocationFault fault(n);
      try
      {
        operation(copy);
      }
      catch (std::bad_alloc const&)
      {
        threw = true;
      }
      bool const fired = fault.hasFired();
      fault.disarm();
      ASSERT_EQ(threw, fired) << n;
      if (!fired)
      {
        break;
      }
      ++failures;
      ASSERT_EQ(str(copy), before);
      ASSERT_EQ(copy.c_str()[copy.length()], 0);
    }
  };
  cNumberConversionFormat const format(10);
  failing([&](cAsciiString& s) { s += 'x'; });
  failing([&](cAsciiString& s) { s += "x"; });
  failing([&](cAsciiString& s) { s += other; });
  failing([&](cAsciiString& s) { s = other; });
  failing([&](cAsciiString& s) { s = "text"; });
  failing([&](cAsciiString& s) { s.upperCase(); });
  failing([&](cAsciiString& s) { s + other; });
  failing([&](cAsciiString& s) { "x" + s; });
  failing([&](cAsciiString& s) { s.leftAdjust(100); });
  failing([&](cAsciiString& s) { s.rightAdjust(100); });
  failing([&](cAsciiString& s) { s.adjust(100); });
  failing([&](cAsciiString& s) { s.setFixedLength(10, other); });
  failing([&](cAsciiString& s) { s.addNum(-12345, format); });
  failing([&](cAsciiString& s) { s.addUNum(12345, format); });
  failing([&](cAsciiString& s) { s.addDouble(1.5, format); });
  failing([&](cAsciiString& s) { s.setNum(-12345, format); });
  failing([&](cAsciiString& s) { s.setDouble(1.5, format); });
  EXPECT_GE(failures, 17u);
}

// random operations beside std::string

TEST(cAsciiString, ModelTestBesideAStandardString)
{
  unsigned int const seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  std::mt19937 random(seed);
  auto const below = [&](std::size_t n) { return static_cast<unsigned int>(random() % n); };
  auto const some = [&](unsigned int most) {
    std::string result(below(most + 1), ' ');
    for (char& c : result)
    {
      c = "  abAB"[below(6)];
    }
    return result;
  };
  cAsciiString a;
  std::string model;
  for (int step = 0; step < 60000; ++step)
  {
    switch (below(17))
    {
    case 0: {
      std::string const s = some(50);
      a += s.c_str();
      model += s;
      break;
    }
    case 1: {
      std::string const s = some(50);
      a += cAsciiString(s.c_str());
      model += s;
      break;
    }
    case 2:
      a += 'x';
      model += 'x';
      break;
    case 3:
      a.toUpper();
      for (char& c : model)
      {
        c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c;
      }
      break;
    case 4:
      a.toLower();
      for (char& c : model)
      {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
      }
      break;
    case 5:
      a.ltrim();
      model.erase(0, std::min(model.find_first_not_of(' '), model.size()));
      break;
    case 6:
      a.rtrim();
      model.erase(model.find_last_not_of(' ') + 1);
      break;
    case 7: {
      unsigned int const width = below(80);
      a.leftAdjust(width, '.');
      model.resize(std::max<std::size_t>(model.size(), width), '.');
      break;
    }
    case 8: {
      unsigned int const width = below(80);
      a.rightAdjust(width, '.');
      model.insert(0, width > model.size() ? width - model.size() : 0, '.');
      break;
    }
    case 9: {
      unsigned int const width = below(80);
      a.adjust(width, '.');
      std::size_t const fill = width > model.size() ? width - model.size() : 0;
      model = std::string(fill / 2, '.') + model + std::string(fill - fill / 2, '.');
      break;
    }
    case 10: {
      unsigned int const width = below(80);
      std::string const suffix = some(4);
      a.setFixedLength(width, suffix.c_str(), '.');
      std::size_t const length = std::max<std::size_t>(width, suffix.size());
      if (model.size() > length)
      {
        model = model.substr(0, length - suffix.size()) + suffix;
      }
      model.resize(length > model.size() ? length : model.size(), '.');
      break;
    }
    case 11: {
      std::string const s = some(40);
      a = s.c_str();
      model = s;
      break;
    }
    case 12: {
      unsigned int const start = below(model.size() + 1);
      a = cAsciiString(a, start);
      model.erase(0, start);
      break;
    }
    case 13: {
      std::string const s = some(5);
      s.c_str() + a;
      model.insert(0, s);
      break;
    }
    case 14:
      a = a + a;
      model += model;
      if (model.size() > 3000)
      {
        a.clear();
        model.clear();
      }
      break;
    case 15: {
      std::string const s = some(8);
      unsigned int const position = below(model.size() + 1);
      a.insert(position, s.c_str());
      model.insert(position, s);
      break;
    }
    case 16: {
      unsigned int const start = below(model.size() + 1);
      unsigned int const size = below(std::min<std::size_t>(model.size() - start, 40) + 1);
      a.erase(start, size);
      model.erase(start, size);
      break;
    }
    }
    ASSERT_EQ(a.length(), model.size()) << "seed " << seed << " step " << step;
    ASSERT_EQ(str(a), model) << "seed " << seed << " step " << step;
    ASSERT_EQ(std::string(a.c_str()), model) << "seed " << seed << " step " << step;
    ASSERT_LE(a.length(), a.capacity());
  }
}
