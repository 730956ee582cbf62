#include "std/tArray.h"

#include "std/cAsciiString.h"
#include "support/cAllocationFault.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <iostream>
#include <new>
#include <random>
#include <string>
#include <utility>
#include <vector>

using support::failureOf;

namespace
{
typedef mstd::tArray<char, mstd::tArrayAsciiStringTraits<char>> Text;
typedef mstd::tArray<char> Bytes;
typedef mstd::tArray<unsigned int> Words;

std::string str(Text const& text)
{
  return std::string(text.data(), text.length());
}
std::string str(Bytes const& bytes)
{
  return bytes.empty() ? std::string() : std::string(bytes.data(), bytes.length());
}
Text text(char const* s)
{
  Text result;
  result.append(s);
  return result;
}
std::vector<unsigned int> vec(Words const& words)
{
  return std::vector<unsigned int>(words.data(true), words.data(true) + words.length());
}

/// Gives the protected parts to the tests.
template <class T, class Traits>
class tOpenArray : public mstd::tArray<T, Traits>
{
public:
  using mstd::tArray<T, Traits>::sizeToSectors;
  using mstd::tArray<T, Traits>::resizePool;
  using mstd::tArray<T, Traits>::destroy;
};
typedef tOpenArray<char, mstd::tArrayAsciiStringTraits<char>> OpenText;
typedef tOpenArray<char, mstd::tArrayByteLevelTraits<char>> OpenBytes;
} // namespace

// construction

TEST(tArray, ANewTextIsEmptyWithOneSectorAndATerminator)
{
  Text const a;
  EXPECT_EQ(a.length(), 0u);
  EXPECT_TRUE(a.empty());
  EXPECT_EQ(a.capacity(), 32u);
  EXPECT_EQ(a.growStep(), 5u);
  EXPECT_TRUE(a.fitOnErase());
  EXPECT_STREQ(a.data(), "");
}

TEST(tArray, ANewByteArrayHasNoPool)
{
  Bytes const a;
  EXPECT_EQ(a.capacity(), 0u);
  EXPECT_EQ(a.data(true), nullptr);
}

TEST(tArray, AByteArrayOfLengthZeroHasNoPoolAndItsDataFailsUnlessNullIsAllowed)
{
  Bytes a(0u);
  EXPECT_EQ(a.data(true), nullptr);
  EXPECT_EQ(failureOf([&] { a.data(false); }), "bug mpPool != 0");
  EXPECT_EQ(failureOf([&] { static_cast<Bytes const&>(a).data(false); }), "bug mpPool != 0");
  EXPECT_EQ(failureOf([&] { a.data(0, 0, false); }), "bug mpPool != 0");
  EXPECT_EQ(a.data(0, 0, true), nullptr);
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(0, 0); }), "bug mpPool != 0");
  EXPECT_EQ(failureOf([&] { a.proxyProvideWriteableData(0, 0); }), "bug mpPool != 0");
}

TEST(tArray, AGivenLengthTakesWholeSectors)
{
  EXPECT_EQ(Bytes(1u).capacity(), 32u);
  EXPECT_EQ(Bytes(32u).capacity(), 32u);
  EXPECT_EQ(Bytes(33u).capacity(), 64u);
  EXPECT_EQ(Bytes(33u).length(), 33u);
  Text const a(40u);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_EQ(a.data()[40], 0);
}

TEST(tArray, AByteArrayIsMadeFromATextWithoutItsZero)
{
  EXPECT_EQ(str(Bytes("abc")), "abc");
  EXPECT_EQ(Bytes(static_cast<char const*>(nullptr)).length(), 0u);
}

TEST(tArray, ACopyHasItsOwnPoolAndTheSettings)
{
  Text a = text("abc");
  a.setGrowStep(2);
  a.setFitOnErase(false);
  Text b(a);
  b.at(0) = 'x';
  EXPECT_EQ(str(a), "abc");
  EXPECT_EQ(str(b), "xbc");
  EXPECT_EQ(b.growStep(), 2u);
  EXPECT_FALSE(b.fitOnErase());
  EXPECT_EQ(b.capacity(), 4u);
}

TEST(tArray, ACopyOfAnEmptyByteArrayHasNoPool)
{
  EXPECT_EQ(Bytes(Bytes()).data(true), nullptr);
}

TEST(tArray, AssignmentTakesContentsAndSettings)
{
  Text a = text("abc");
  a.setGrowStep(3);
  Text b = text("something else");
  b = a;
  EXPECT_EQ(str(b), "abc");
  EXPECT_EQ(b.growStep(), 3u);
  EXPECT_EQ(str(a), "abc");
  Text const& self = b;
  b = self;
  EXPECT_EQ(str(b), "abc");
}

TEST(tArray, MovingLeavesAWholeEmptyArray)
{
  Text a = text("abc");
  char const* const pool = a.data();
  Text b(std::move(a));
  EXPECT_EQ(b.data(), pool);
  EXPECT_EQ(str(a), "");
  EXPECT_STREQ(a.data(), "");
  Text c;
  c = std::move(b);
  EXPECT_EQ(str(c), "abc");
  EXPECT_STREQ(b.data(), "");
}

TEST(tArray, SwapExchangesAllFiveFields)
{
  Bytes a("abc");
  a.setGrowStep(1);
  a.setFitOnErase(false);
  Bytes b;
  a.swap(b);
  EXPECT_EQ(a.data(true), nullptr);
  EXPECT_EQ(a.capacity(), 0u);
  EXPECT_EQ(a.growStep(), 5u);
  EXPECT_EQ(a.length(), 0u);
  EXPECT_TRUE(a.fitOnErase());
  EXPECT_EQ(str(b), "abc");
  EXPECT_EQ(b.capacity(), 32u);
  EXPECT_EQ(b.growStep(), 1u);
  EXPECT_FALSE(b.fitOnErase());
}

// the pool

TEST(tArray, SizesAreRoundedUpToSectors)
{
  OpenText a;
  EXPECT_EQ(a.sizeToSectors(0), 32u);
  EXPECT_EQ(a.sizeToSectors(1), 32u);
  EXPECT_EQ(a.sizeToSectors(32), 32u);
  EXPECT_EQ(a.sizeToSectors(33), 64u);
  a.setGrowStep(0);
  EXPECT_EQ(a.sizeToSectors(0), 1u);
  EXPECT_EQ(a.sizeToSectors(7), 7u);
  EXPECT_EQ(a.sizeToSectors(0xFFFFFFFFu), 0xFFFFFFFFu);
  a.setGrowStep(31);
  EXPECT_EQ(a.sizeToSectors(7), 0x80000000u);
}

TEST(tArray, OnlyTheLowestEightBitsOfTheGrowStepShift)
{
  OpenText a;
  a.setGrowStep(0x102);
  EXPECT_EQ(a.growStep(), 0x102u);
  EXPECT_EQ(a.sizeToSectors(5), 8u);
  a.setGrowStep(32);
  EXPECT_EQ(a.sizeToSectors(5), 0u);
  a.setGrowStep(255);
  EXPECT_EQ(a.sizeToSectors(5), 0u);
  a.setGrowStep(0x100);
  EXPECT_EQ(a.sizeToSectors(5), 5u);
}

TEST(tArray, WithoutSectorsTheCapacityIsTheLength)
{
  Text a;
  a.setGrowStep(32);
  a.append("abc");
  EXPECT_EQ(a.capacity(), 32u);
  a.append(std::string(40, 'x').c_str());
  EXPECT_EQ(a.capacity(), 43u);
  a.append('y');
  EXPECT_EQ(a.capacity(), 44u);
  EXPECT_EQ(str(a), "abc" + std::string(40, 'x') + "y");
  a.clear();
  EXPECT_EQ(a.capacity(), 1u);
  Bytes b;
  b.setGrowStep(0xFF);
  b.append('a');
  b.append("bcd");
  EXPECT_EQ(b.capacity(), 4u);
  EXPECT_EQ(str(b), "abcd");
}

TEST(tArray, ASectorOfOneElementMakesTheCapacityFollowTheLength)
{
  Text a;
  a.setGrowStep(0);
  a.append(std::string(40, 'x').c_str());
  for (unsigned int i = 41; i < 80; ++i)
  {
    a.append('y');
    EXPECT_EQ(a.capacity(), i);
  }
  a.setFitOnErase(false);
  a.erase(0, 5);
  EXPECT_EQ(a.capacity(), 79u);
  a.setFitOnErase(true);
  a.erase(0, 5);
  EXPECT_EQ(a.capacity(), 69u);
}

TEST(tArray, AppendingThe33rdCharacterReallocatesOnce)
{
  Text a;
  char const* pool = a.data();
  unsigned int moves = 0;
  for (unsigned int i = 0; i < 33; ++i)
  {
    unsigned int const before = a.capacity();
    a.append('x');
    moves += a.capacity() != before;
    if (i < 32)
    {
      EXPECT_EQ(a.data(), pool);
      EXPECT_EQ(a.capacity(), 32u);
    }
  }
  EXPECT_EQ(moves, 1u);
  EXPECT_EQ(a.capacity(), 64u);
}

TEST(tArray, AppendingGrowsBySectorsAndNotByDoubling)
{
  Bytes a;
  std::vector<unsigned int> seen;
  for (unsigned int i = 0; i < 1000; ++i)
  {
    a.append('x');
    if (seen.empty() || seen.back() != a.capacity())
    {
      seen.push_back(a.capacity());
    }
  }
  ASSERT_EQ(seen.size(), 32u);
  for (unsigned int i = 0; i < 32; ++i)
  {
    EXPECT_EQ(seen[i], 32 * (i + 1));
  }
}

TEST(tArray, ErasingOneOfFortyCharactersFitsThePool)
{
  Text a = text(std::string(40, 'x').c_str());
  EXPECT_EQ(a.capacity(), 64u);
  a.erase(0, 1);
  EXPECT_EQ(a.capacity(), 39u);
  EXPECT_EQ(a.data()[39], 0);
}

TEST(tArray, WithoutFitOnEraseThePoolStays)
{
  Text a = text(std::string(40, 'x').c_str());
  a.setFitOnErase(false);
  a.erase(0, 1);
  EXPECT_EQ(a.capacity(), 64u);
  a.truncate(3);
  EXPECT_EQ(a.capacity(), 64u);
  a.erase(3);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_STREQ(a.data(), "");
}

TEST(tArray, WithoutFitOnEraseAFittedPoolGoesBackToWholeSectors)
{
  Text a = text(std::string(40, 'x').c_str());
  a.erase(0, 1);
  a.setFitOnErase(false);
  a.erase(0, 1);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_EQ(str(a), std::string(38, 'x'));
}

TEST(tArray, ErasingEverythingLeavesATextOneElementAndBytesNone)
{
  Text a = text("abc");
  a.erase(0, 3);
  EXPECT_EQ(a.capacity(), 1u);
  EXPECT_STREQ(a.data(), "");
  Bytes b("abc");
  b.erase(0, 3);
  EXPECT_EQ(b.capacity(), 0u);
  EXPECT_EQ(b.data(true), nullptr);
}

TEST(tArray, ClearFitsThePoolWhateverFitOnEraseSays)
{
  Text a = text("abc");
  a.setFitOnErase(false);
  a.clear();
  EXPECT_EQ(a.capacity(), 1u);
  EXPECT_STREQ(a.data(), "");
  Bytes b("abc");
  b.setFitOnErase(false);
  b.clear();
  EXPECT_EQ(b.data(true), nullptr);
}

TEST(tArray, ClearDoesNothingToAnEmptyArray)
{
  Text a;
  a.clear();
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(tArray, ResizingThePoolExactlyAlwaysFits)
{
  OpenText a;
  a.append("abcdef");
  a.resizePool(20, true);
  EXPECT_EQ(a.capacity(), 20u);
  EXPECT_EQ(a.length(), 6u);
  a.resizePool(21, false);
  EXPECT_EQ(a.capacity(), 32u);
  a.resizePool(3, false);
  EXPECT_EQ(a.capacity(), 32u);
  EXPECT_STREQ(a.data(), "abc"); // the terminator follows the size asked for
  a.resizePool(0, true);
  EXPECT_EQ(a.capacity(), 1u);
  OpenBytes b;
  b.resizePool(0, false);
  EXPECT_EQ(b.capacity(), 0u);
  b.resizePool(5, true);
  EXPECT_EQ(b.capacity(), 5u);
  b.resizePool(0, false);
  EXPECT_EQ(b.capacity(), 5u);
  b.resizePool(0, true);
  EXPECT_EQ(b.capacity(), 0u);
}

TEST(tArray, DestroyLeavesNoPool)
{
  OpenBytes a;
  a.append("abc");
  a.destroy();
  EXPECT_EQ(a.data(true), nullptr);
  EXPECT_EQ(a.length(), 0u);
  EXPECT_EQ(a.capacity(), 0u);
}

TEST(tArray, SetSizeSetsLengthPoolAndTerminator)
{
  Text a = text("abc");
  a.setSize(40);
  EXPECT_EQ(a.length(), 40u);
  EXPECT_EQ(a.capacity(), 40u);
  EXPECT_EQ(a.data()[40], 0);
  a.setSize(2);
  EXPECT_EQ(a.capacity(), 2u);
  EXPECT_EQ(a.data()[2], 0);
  a.setSize(0);
  EXPECT_EQ(a.capacity(), 1u);
  EXPECT_STREQ(a.data(), "");
}

TEST(tArray, SetSizeWithoutFitTakesSectorsAndNeverShrinks)
{
  Bytes a;
  a.setFitOnErase(false);
  a.setSize(33);
  EXPECT_EQ(a.capacity(), 64u);
  a.setSize(1);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_EQ(a.length(), 1u);
  a.setSize(0);
  EXPECT_EQ(a.capacity(), 64u);
}

TEST(tArray, SetSizeWithinAKeptPoolLeavesTheElements)
{
  Bytes a("abcdef");
  a.setFitOnErase(false);
  a.setSize(3);
  EXPECT_EQ(str(a), "abc");
}

// access

TEST(tArray, AtOnAnEmptyArrayReportsZeroForAll)
{
  Text a;
  EXPECT_EQ(failureOf([&] { a.at(0); }), "range tArray/at 0 0 0 0");
}

TEST(tArray, AtChecksTheIndex)
{
  Text a = text("abc");
  Text const& c = a;
  EXPECT_EQ(c.at(2), 'c');
  a.at(1) = 'x';
  a[2] = 'y';
  EXPECT_EQ(c[1], 'x');
  EXPECT_EQ(str(a), "axy");
  EXPECT_EQ(failureOf([&] { a.at(3); }), "range tArray/at 0 3 0 2");
  EXPECT_EQ(failureOf([&] { c.at(3); }), "range tArray/at 0 3 0 2");
  EXPECT_EQ(failureOf([&] { a[3]; }), "range tArray/at 0 3 0 2");
  EXPECT_EQ(failureOf([&] { c[0xFFFFFFFFu]; }), "range tArray/at 0 4294967295 0 2");
  EXPECT_EQ(failureOf([&] { c.proxyAt(3); }), "range tArray/at 0 3 0 2");
}

TEST(tArray, PartsOfTheDataAreChecked)
{
  Text a = text("abc");
  EXPECT_EQ(a.data(1, 2), a.data() + 1);
  EXPECT_EQ(a.data(3, 0), a.data() + 3);
  EXPECT_EQ(static_cast<Text const&>(a).data(1, 1), a.data() + 1);
  EXPECT_EQ(failureOf([&] { a.data(1, 3); }), "range tArray/data 2 3 0 2");
  EXPECT_EQ(failureOf([&] { a.data(4, 0); }), "range tArray/data 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.data(2, 0xFFFFFFFFu); }), "bounds tArray/data");
}

// growing

TEST(tArray, AppendTakesElementsRunsAndTexts)
{
  Text a;
  a.append('a');
  a.append("bcd", 2);
  a.append("de");
  a.append(static_cast<char const*>(nullptr));
  a.append(nullptr, 0);
  EXPECT_EQ(str(a), "abcde");
  EXPECT_STREQ(a.data(), "abcde");
  EXPECT_EQ(failureOf([&] { a.append(nullptr, 1); }), "bug pData != 0");
  EXPECT_EQ(str(a), "abcde");
}

TEST(tArray, AppendOfNothingLeavesAnEmptyByteArrayWithoutPool)
{
  Bytes a;
  a.append("", 0);
  a.append("");
  EXPECT_EQ(a.data(true), nullptr);
}

TEST(tArray, AnArrayCanBeAppendedToItself)
{
  Text a = text("0123456789abcdefghij");
  std::string expected = "0123456789abcdefghij";
  for (int i = 0; i < 6; ++i)
  {
    a.append(a.data(), a.length());
    expected += expected;
    ASSERT_EQ(str(a), expected);
  }
  Bytes b("0123456789abcdef0123456789abcdef");
  b.append(b.data() + 1, 31);
  EXPECT_EQ(str(b), "0123456789abcdef0123456789abcdef123456789abcdef0123456789abcdef");
}

TEST(tArray, AnOwnElementCanBeAppendedThroughAMoveOfThePool)
{
  Bytes a;
  for (char c = 'a'; c <= 'z'; ++c)
  {
    a.append(c);
  }
  for (int i = 0; i < 4000; ++i)
  {
    a.append(a[3]);
  }
  EXPECT_EQ(str(a).substr(26), std::string(4000, 'd'));
}

TEST(tArray, InsertOpensAGapAnywhere)
{
  Text a = text("ad");
  a.insert(1, "bc", 2);
  a.insert(4, "e");
  a.insert(0, "_");
  a.insert(2, static_cast<char const*>(nullptr));
  EXPECT_EQ(str(a), "_abcde");
  EXPECT_STREQ(a.data(), "_abcde");
  EXPECT_EQ(failureOf([&] { a.insert(7, "x", 1); }), "range tArray/insert 1 7 0 6");
  EXPECT_EQ(failureOf([&] { a.insert(7, "x", 0); }), "range tArray/insert 1 7 0 6");
  EXPECT_EQ(failureOf([&] { a.insert(0, nullptr, 1); }), "bug pData != 0");
  EXPECT_EQ(str(a), "_abcde");
}

TEST(tArray, InsertGrowsBySectors)
{
  Text a = text(std::string(32, 'x').c_str());
  a.insert(5, "y", 1);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_EQ(a.length(), 33u);
}

TEST(tArray, AnArrayTakesItsOwnElementsInTheMiddle)
{
  for (unsigned int position = 0; position <= 10; ++position)
  {
    for (unsigned int start = 0; start <= 10; ++start)
    {
      for (unsigned int size = 0; start + size <= 10; ++size)
      {
        for (unsigned int step : {0u, 5u}) // with and without a move of the pool
        {
          Text a;
          a.setGrowStep(step);
          a.append("0123456789");
          std::string expected = "0123456789";
          expected.insert(position, expected.substr(start, size));
          a.insert(position, a.data() + start, size);
          ASSERT_EQ(str(a), expected) << position << " " << start << " " << size;
        }
      }
    }
  }
}

TEST(tArray, DefaultObjectsOpenAGapOfUndefinedElements)
{
  Text a = text("ab");
  a.proxyInsertDefaultObjects(1, 40);
  EXPECT_EQ(a.length(), 42u);
  EXPECT_EQ(a.capacity(), 64u);
  EXPECT_EQ(a[0], 'a');
  EXPECT_EQ(a[41], 'b');
  EXPECT_EQ(a.data()[42], 0);
  EXPECT_EQ(failureOf([&] { a.proxyInsertDefaultObjects(43, 1); }), "range tArray/insert 1 43 0 42");
}

TEST(tArray, ExtendOpensATailForTheCallerToWrite)
{
  Text a = text("ab");
  char const* const pool = a.data();
  memcpy(a.extend(3), "cde", 3);
  EXPECT_STREQ(a.data(), "abcde");
  EXPECT_EQ(a.data(), pool);
  memset(a.extend(60), 'x', 60);
  EXPECT_EQ(str(a), "abcde" + std::string(60, 'x'));
  EXPECT_EQ(a.capacity(), 96u);
  EXPECT_EQ(a.data()[65], 0);
  char* const none = a.extend(0);
  EXPECT_EQ(none, a.data() + 65);
  EXPECT_THROW(a.extend(0xFFFFFFFFu), std::bad_alloc);
  EXPECT_EQ(a.length(), 65u);
  Bytes b;
  EXPECT_EQ(b.extend(0), nullptr);
  char* const tail = b.extend(1);
  EXPECT_EQ(tail, b.data());
}

TEST(tArray, FillSetsEveryElement)
{
  Text a = text("abc");
  a.fill('x');
  EXPECT_STREQ(a.data(), "xxx");
  Words b(3u);
  b.fill(0x12345678u);
  EXPECT_EQ(vec(b), std::vector<unsigned int>(3, 0x12345678u));
  b.at(1) = 7;
  b.fill(b[1]);
  EXPECT_EQ(vec(b), std::vector<unsigned int>(3, 7));
  Bytes().fill('x');
}

// shrinking

TEST(tArray, EraseAtTheEndIsLegalBehindItNot)
{
  Text a = text("abc");
  a.erase(3, 0);
  EXPECT_EQ(str(a), "abc");
  EXPECT_EQ(failureOf([&] { a.erase(4, 0); }), "range tArray/erase 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.erase(1, 3); }), "range tArray/erase 2 3 0 2");
  EXPECT_EQ(failureOf([&] { a.erase(1, 0xFFFFFFFFu); }), "bounds tArray/erase");
  EXPECT_EQ(str(a), "abc");
}

TEST(tArray, EraseOfNothingStillFits)
{
  Text a = text("abc");
  a.erase(1, 0);
  EXPECT_EQ(a.capacity(), 3u);
}

TEST(tArray, EraseRemovesAPartOrTheTail)
{
  Text a = text("abcdef");
  a.erase(1, 2);
  EXPECT_STREQ(a.data(), "adef");
  a.erase(2);
  EXPECT_STREQ(a.data(), "ad");
  EXPECT_EQ(a.capacity(), 2u);
  EXPECT_EQ(failureOf([&] { a.erase(3); }), "range tArray/erase 2 3 0 2");
  EXPECT_STREQ(a.data(), "ad");
}

TEST(tArray, TruncateKeepsTheFront)
{
  Text a = text("abcdef");
  a.truncate(2);
  EXPECT_STREQ(a.data(), "ab");
  EXPECT_EQ(a.capacity(), 2u);
  a.truncate(2);
  EXPECT_EQ(failureOf([&] { a.truncate(3); }), "range tArray/truncate 1 3 0 2");
  EXPECT_STREQ(a.data(), "ab");
}

// searching

TEST(tArray, FindYieldsTheFirstMatchFromTheStart)
{
  Text const a = text("abcabc");
  bool found = false;
  EXPECT_EQ(a.find("bc", 2, found), 1u);
  EXPECT_TRUE(found);
  EXPECT_EQ(a.find("bc", 2, found, 2), 4u);
  EXPECT_TRUE(found);
  EXPECT_EQ(a.find("c", 1, found, 3), 5u);
  EXPECT_TRUE(found);
  a.find("bc", 2, found, 5);
  EXPECT_FALSE(found);
  a.find("x", 1, found);
  EXPECT_FALSE(found);
}

TEST(tArray, FindKeepsWithinTheSizeGiven)
{
  Bytes const a("abcabc");
  bool found = false;
  a.find("bc", 2, found, 0, 2);
  EXPECT_FALSE(found);
  EXPECT_EQ(a.find("bc", 2, found, 0, 3), 1u);
  EXPECT_TRUE(found);
  EXPECT_EQ(a.find("bc", 2, found, 2, 0xFFFFFFFFu), 4u);
  EXPECT_TRUE(found);
}

TEST(tArray, FindWithoutAResultReturnsTheStart)
{
  Text const a = text("abcabc");
  bool found = true;
  EXPECT_EQ(a.find("abcd", 4, found, 3), 3u); // the rest is shorter than the needle
  EXPECT_FALSE(found);
  found = true;
  EXPECT_EQ(a.find(nullptr, 1, found, 2), 2u);
  EXPECT_FALSE(found);
  found = true;
  EXPECT_EQ(Bytes().find("a", 1, found), 0u);
  EXPECT_FALSE(found);
}

TEST(tArray, FindFailsOnlyWithAStartBehindTheEnd)
{
  Text const a = text("abc");
  bool found = true;
  EXPECT_EQ(a.find("a", 1, found, 3), 3u);
  EXPECT_FALSE(found);
  EXPECT_EQ(failureOf([&] { a.find("a", 1, found, 4); }), "range tArray/find 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.find("a", 1, found, 4, 0xFFFFFFFFu); }), "range tArray/find 0 4 0 2");
}

TEST(tArray, AnEmptyNeedleIsFoundAtTheStart)
{
  bool found = false;
  EXPECT_EQ(text("abc").find("", 0, found, 2), 2u);
  EXPECT_TRUE(found);
  found = false;
  EXPECT_EQ(Bytes("abc").find("", 0, found, 2), 2u);
  EXPECT_TRUE(found);
  EXPECT_EQ(Bytes().find("", 0, found), 0u);
  EXPECT_FALSE(found);
}

TEST(tArray, InATextAZeroEndsTheComparisonInBytesItDoesNot)
{
  Text a;
  a.append("xa\0bc", 5);
  bool found = false;
  EXPECT_EQ(a.find("a\0z", 3, found), 1u);
  EXPECT_TRUE(found);
  a.find("\0zzz", 4, found, 2); // equal at once, but four elements have no room
  EXPECT_FALSE(found);
  Bytes b;
  b.append("xa\0bc", 5);
  b.find("a\0z", 3, found);
  EXPECT_FALSE(found);
  EXPECT_EQ(b.find("\0b", 2, found), 2u);
  EXPECT_TRUE(found);
}

TEST(tArray, WideElementsMatchWholeElements)
{
  Words a;
  a.append(0x00000102u);
  a.append(0x01020000u);
  a.append(0x02000001u);
  bool found = true;
  unsigned int needle = 0x00010200u; // stands in the bytes, between elements
  a.find(&needle, 1, found);
  EXPECT_FALSE(found);
  needle = 0x02000001u;
  EXPECT_EQ(a.find(&needle, 1, found), 2u);
  EXPECT_TRUE(found);
  mstd::tArray<unsigned short> b;
  b.append(0x0100);
  b.append(0x0001);
  b.append(0x0101);
  unsigned short const two[] = {0x0001, 0x0101};
  EXPECT_EQ(b.find(two, 2, found), 1u);
  EXPECT_TRUE(found);
}

TEST(tArray, ReplaceGoesOnBehindTheReplacement)
{
  Text a = text("aXbXXc");
  a.replace("X", 1, "XX", 2);
  EXPECT_STREQ(a.data(), "aXXbXXXXc");
  a.replace("XX", 2, "y", 1);
  EXPECT_STREQ(a.data(), "aybyyc");
  a.replace("y", 1, nullptr, 3);
  EXPECT_STREQ(a.data(), "abc");
  a.replace("abc", 3, "", 0);
  EXPECT_STREQ(a.data(), "");
}

TEST(tArray, ReplaceBeginsAtTheStartGiven)
{
  Text a = text("xxxx");
  a.replace("x", 1, "yz", 2, 2);
  EXPECT_STREQ(a.data(), "xxyzyz");
  a.replace("x", 1, "y", 1, 6);
  EXPECT_EQ(failureOf([&] { a.replace("x", 1, "y", 1, 7); }), "range tArray/find 0 7 0 5");
  EXPECT_STREQ(a.data(), "xxyzyz");
}

TEST(tArray, ReplaceOfAnEmptyNeedleDoesNothing)
{
  Text a = text("abc");
  a.replace("", 0, "x", 1);
  a.replace("", 0, "x", 1, 99);
  a.replace(nullptr, 2, "x", 1);
  EXPECT_STREQ(a.data(), "abc");
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(tArray, ReplaceTakesItsTextsFromTheArrayItself)
{
  Text a = text("abcabc");
  a.replace(a.data() + 1, 1, a.data(), 6);
  EXPECT_STREQ(a.data(), "aabcabccaabcabcc");
}

TEST(tArray, ReplaceLeavesThePoolThatSingleStepsWould)
{
  Text a = text("aXbX");
  a.replace("X", 1, nullptr, 0);
  EXPECT_EQ(a.capacity(), 2u);
  a.replace("a", 1, "xy", 2);
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(tArray, SingleElementsAreExchangedFromTheStartOn)
{
  Text a = text("abab");
  a.replace('a', 'x', 1);
  EXPECT_STREQ(a.data(), "abxb");
  a.replace('b', 'y');
  EXPECT_STREQ(a.data(), "ayxy");
  a.replace(a[1], a[0]);
  EXPECT_STREQ(a.data(), "aaxa");
  EXPECT_EQ(failureOf([&] { a.replace('a', 'x', 4); }), "range tArray/replace 0 4 0 3");
  Text().replace('a', 'x', 4);
  Words b(2u);
  b.fill(0x01010101u);
  b.replace(0x01010101u, 5u);
  EXPECT_EQ(vec(b), std::vector<unsigned int>(2, 5));
}

// comparing

TEST(tArray, ArraysAreEqualWithTheSameLengthAndElements)
{
  EXPECT_TRUE(text("abc") == text("abc"));
  EXPECT_FALSE(text("abc") == text("abd"));
  EXPECT_TRUE(text("abc") != text("ab"));
  EXPECT_TRUE(Text() == Text());
  EXPECT_TRUE(Bytes() == Bytes(0u));
  EXPECT_TRUE(Bytes("abc") != Bytes("abx"));
  Words a(1u);
  Words b(1u);
  a[0] = b[0] = 0x100;
  EXPECT_TRUE(a == b);
  b[0] = 0x200; // the same low byte
  EXPECT_TRUE(a != b);
}

TEST(tArray, ComparisonOfTextsEndsAtAZeroOfBytesItDoesNot)
{
  Text a;
  Text b;
  a.append("a\0b", 3);
  b.append("a\0c", 3);
  EXPECT_TRUE(a == b);
  EXPECT_TRUE(a.isEqual("a\0d", 3));
  EXPECT_FALSE(a.isEqual("a", 1));
  Bytes c;
  c.append("a\0b", 3);
  EXPECT_FALSE(c.isEqual("a\0c", 3));
  EXPECT_TRUE(c.isEqual("a\0b", 3));
}

TEST(tArray, NothingIsEqualToNull)
{
  EXPECT_FALSE(Text().isEqual(nullptr, 0));
  EXPECT_FALSE(Bytes().isEqual(nullptr, 0));
  EXPECT_TRUE(Bytes().isEqual("", 0));
}

// as proxy

TEST(tArray, TheProxyReadsAndWritesParts)
{
  Text a = text("abcdef");
  mstd::tAbstractArrayProxy<char>& p = a;
  mstd::tAbstractConstArrayProxy<char> const& c = a;
  EXPECT_EQ(p.proxyLength(), 6u);
  EXPECT_EQ(p.proxyPreferredBlockSize(), 0u);
  p.proxyAt(0) = 'A';
  EXPECT_EQ(c.proxyAt(0), 'A');
  char part[3] = {};
  c.proxyCopyPartTo(part, 4, 2);
  EXPECT_STREQ(part, "ef");
  c.proxyCopyPartTo(nullptr, 6, 0);
  EXPECT_EQ(c.proxyProvideData(2, 4), a.data() + 2);
  EXPECT_EQ(p.proxyProvideWriteableData(2, 4), a.data() + 2);
  p.proxyPatchData(1, 2, "xy");
  p.proxyInsert(3, "__", 2);
  p.proxyErase(0, 1);
  EXPECT_STREQ(a.data(), "xy__def");
  p.proxySetSize(3);
  EXPECT_EQ(a.length(), 3u);
  unsigned int offset = 9;
  EXPECT_EQ(p.proxyPhysical(offset), &a);
  EXPECT_EQ(offset, 0u);
  offset = 9;
  EXPECT_EQ(c.constProxyPhysical(offset), &a);
  EXPECT_EQ(offset, 0u);
}

TEST(tArray, TheProxyNamesItsOperations)
{
  Text a = text("abc");
  char part[4];
  EXPECT_EQ(failureOf([&] { a.proxyCopyPartTo(part, 1, 3); }), "range tArray/copyPartTo 2 3 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyProvideData(4, 0); }), "range tArray/provideData 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyProvideWriteableData(4, 0); }), "range tArray/proxyProvideWriteableData 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyPatchData(0, 4, part); }), "range tArray/proxyPatchData 2 4 0 3");
  EXPECT_EQ(failureOf([&] { a.proxyErase(4, 0); }), "range tArray/erase 0 4 0 2");
  EXPECT_EQ(failureOf([&] { a.proxyAt(3); }), "range tArray/at 0 3 0 2");
}

// the limits of 32 bits

TEST(tArray, LengthsBehind32BitsAreBadAllocAndChangeNothing)
{
  Text a = text("abc");
  EXPECT_THROW(a.append("x", 0xFFFFFFFFu), std::bad_alloc);
  EXPECT_THROW(a.append(a.data(), 0xFFFFFFFDu), std::bad_alloc);
  EXPECT_THROW(a.insert(1, "x", 0xFFFFFFFDu), std::bad_alloc);
  EXPECT_THROW(a.proxyInsertDefaultObjects(1, 0xFFFFFFFDu), std::bad_alloc);
  EXPECT_STREQ(a.data(), "abc");
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(tArray, SectorsBehind32BitsAreBadAllocAndChangeNothing)
{
  Text a = text("abc");
  EXPECT_THROW(a.append("x", 0xFFFFFFE0u), std::bad_alloc);
  EXPECT_THROW(a.proxyInsertDefaultObjects(1, 0xFFFFFFF0u), std::bad_alloc);
  a.setGrowStep(31);
  EXPECT_THROW(a.append("x", 0x7FFFFFFEu), std::bad_alloc);
  EXPECT_STREQ(a.data(), "abc");
  EXPECT_EQ(a.capacity(), 32u);
  EXPECT_THROW(Bytes(0xFFFFFFFFu), std::bad_alloc);
}

namespace
{
struct cLarge
{
  unsigned char bytes[sizeof(void*) == 4 ? 0x40000000u : 0xF0000000u];
};
} // namespace

TEST(tArray, BytesBehindTheAddressSpaceAreBadAllocAndChangeNothing)
{
  if (sizeof(void*) == 4)
  {
    Words a(1u);
    EXPECT_THROW(a.proxyInsertDefaultObjects(0, 0x40000000u), std::bad_alloc);
    EXPECT_EQ(a.length(), 1u);
    EXPECT_THROW(Text(0x80000000u), std::bad_alloc);
  }
  typedef mstd::tArray<cLarge> Large;
  Large b;
  b.setGrowStep(0);
  EXPECT_THROW(b.setSize(sizeof(void*) == 4 ? 2 : 0xFFFFFFFFu), std::bad_alloc);
  EXPECT_EQ(b.length(), 0u);
}

TEST(tArray, AFailedSetSizeLeavesAnEmptyWholeArray)
{
  Text a = text("abc");
  a.setFitOnErase(false);
  EXPECT_THROW(a.setSize(0xFFFFFFFFu), std::bad_alloc);
  EXPECT_EQ(a.length(), 0u);
  EXPECT_STREQ(a.data(), "");
  a.append("xyz");
  EXPECT_STREQ(a.data(), "xyz");
}

TEST(tArray, ReplaceThatWouldGrowBehind32BitsChangesNothing)
{
  Text a = text(std::string(70000, 'x').c_str());
  std::string const large(70000, 'y');
  EXPECT_THROW(a.replace("x", 1, large.data(), 70000), std::bad_alloc);
  EXPECT_EQ(str(a), std::string(70000, 'x'));
}

TEST(tArray, FaultEveryFailingAllocationLeavesTheArrayUnchanged)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this allocator cannot be made to fail";
  }
  Text a = text(std::string(32, 'x').c_str());
  std::string const before = str(a);
  auto const whole = [&] {
    ASSERT_EQ(str(a), before);
    ASSERT_EQ(a.data()[a.length()], 0);
    ASSERT_EQ(a.capacity(), 32u);
  };
  auto const failing = [&](auto const& operation) {
    support::cAllocationFault fault(1);
    EXPECT_THROW(operation(), std::bad_alloc);
  };
  failing([&] { a.append('y'); });
  whole();
  failing([&] { a.append("yz", 2); });
  whole();
  failing([&] { a.append(a.data(), a.length()); });
  whole();
  failing([&] { a.insert(3, "y", 1); });
  whole();
  failing([&] { a.proxyInsertDefaultObjects(3, 1); });
  whole();
  failing([&] { a.replace("x", 1, "yz", 2); });
  whole();
  failing([&] { Text copy(a); });
  failing([&] { Bytes made(100u); });
  failing([&] {
    Text other;
    a = other;
  });
  whole();
  failing([&] { a.setSize(4000); });
  EXPECT_EQ(a.length(), 0u);
  EXPECT_STREQ(a.data(), "");
  EXPECT_EQ(a.capacity(), 32u);
}

TEST(tArray, FaultErasingNeedsNoMemoryToFit)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this allocator cannot be made to fail";
  }
  Text a = text(std::string(4000, 'x').c_str());
  support::cAllocationFault fault(1, true);
  a.erase(10, 3000);
  EXPECT_EQ(a.capacity(), 1000u);
  a.truncate(600);
  a.erase(500);
  EXPECT_EQ(a.length(), 100u);
  EXPECT_EQ(a.at(99), 'x');
  EXPECT_EQ(a.capacity(), 100u);
  a.clear();
  fault.disarm();
  EXPECT_STREQ(a.data(), "");
}

TEST(tArray, FaultAnEraseThatGrowsAPoolToItsSectorFailsBeforeItErases)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "this allocator cannot be made to fail";
  }
  Text a = text("0123456789012345678901234567890123456789");
  a.erase(39, 1);
  a.setFitOnErase(false);
  std::string const before = str(a);
  {
    support::cAllocationFault fault(1, true);
    EXPECT_THROW(a.erase(0, 1), std::bad_alloc);
    EXPECT_THROW(a.erase(1), std::bad_alloc);
    EXPECT_THROW(a.truncate(38), std::bad_alloc);
  }
  EXPECT_EQ(str(a), before);
  EXPECT_EQ(a.capacity(), 39u);
}

// random operations beside a plain model

namespace
{
/// The array as its rules tell it: a vector and what the pool must measure.
template <class T, bool Terminated>
struct cModel
{
  std::vector<T> items;
  unsigned int capacity = Terminated ? 32 : 0;
  unsigned int growStep = 5;
  bool fit = true;

  unsigned int length() const { return static_cast<unsigned int>(items.size()); }
  void resizePool(unsigned int size, bool exact)
  {
    unsigned long long wanted = size == 0 ? 1 : size;
    unsigned int const shift = growStep & 0xFF;
    if (!exact && shift < 32)
    {
      unsigned long long const sector = 1ull << shift;
      wanted = (wanted + sector - 1) / sector * sector;
    }
    if (!Terminated && size == 0)
    {
      wanted = 0;
    }
    if (capacity < wanted || (exact && capacity > wanted))
    {
      capacity = static_cast<unsigned int>(wanted);
    }
  }
  void append(std::vector<T> const& more)
  {
    items.insert(items.end(), more.begin(), more.end());
    if (capacity < items.size())
    {
      resizePool(length(), false);
    }
  }
  void insert(unsigned int position, std::vector<T> const& more)
  {
    items.insert(items.begin() + position, more.begin(), more.end());
    resizePool(length(), false);
  }
  void erase(unsigned int start, unsigned int size)
  {
    items.erase(items.begin() + start, items.begin() + start + size);
    resizePool(length(), fit);
  }
  unsigned int find(std::vector<T> const& needle, unsigned int start, unsigned int end) const
  {
    for (; start + needle.size() <= end; ++start)
    {
      bool same = true;
      for (unsigned int k = 0; same && k < needle.size(); ++k)
      {
        same = items[start + k] == needle[k];
        if (Terminated && same && needle[k] == T())
        {
          break;
        }
      }
      if (same)
      {
        return start;
      }
    }
    return ~0u;
  }
  void replace(std::vector<T> const& needle, std::vector<T> const& replacement, unsigned int start)
  {
    if (needle.empty())
    {
      return;
    }
    while ((start = find(needle, start, length())) != ~0u)
    {
      erase(start, static_cast<unsigned int>(needle.size()));
      if (!replacement.empty())
      {
        insert(start, replacement);
      }
      start += static_cast<unsigned int>(replacement.size());
    }
  }
};

template <class T, class Traits>
void compareWithModel(unsigned int seed, unsigned int steps)
{
  bool const Terminated = mstd::tArrayTerminated<Traits>::value != 0;
  std::mt19937 random(seed);
  auto const below = [&](unsigned int n) { return n == 0 ? 0u : static_cast<unsigned int>(random() % n); };
  mstd::tArray<T, Traits> array;
  cModel<T, Terminated> model;
  auto const some = [&](unsigned int most) {
    std::vector<T> result(below(most + 1));
    for (T& e : result)
    {
      e = static_cast<T>(below(4)); // few values, 0 among them
    }
    return result;
  };
  auto const part = [&](unsigned int all) { return below(20) == 0 ? all : std::min(all, 30u); }; // mostly small steps
  for (unsigned int step = 0; step < steps; ++step)
  {
    unsigned int const length = model.length();
    unsigned int const action = below(length > 3000 ? 22 : 17);
    switch (action)
    {
    case 0:
    case 1: {
      std::vector<T> const more = some(40);
      model.append(more);
      if (below(2) != 0)
      {
        array.append(more.data(), static_cast<unsigned int>(more.size()));
        break;
      }
      T* const tail = array.extend(static_cast<unsigned int>(more.size()));
      std::copy(more.begin(), more.end(), tail);
      break;
    }
    case 2:
    case 3: {
      T const value = static_cast<T>(below(4));
      for (unsigned int n = below(40); n != 0; --n)
      {
        model.append(std::vector<T>(1, value));
        array.append(value);
      }
      break;
    }
    case 4:
    case 5: {
      unsigned int const position = below(length + 1);
      std::vector<T> const more = some(20);
      model.insert(position, more);
      array.insert(position, more.data(), static_cast<unsigned int>(more.size()));
      break;
    }
    case 6: // own elements
    {
      unsigned int const start = below(length);
      unsigned int const size = below(std::min(length - start, 60u) + 1);
      unsigned int const position = below(length + 1);
      std::vector<T> const more(model.items.begin() + start, model.items.begin() + start + size);
      if (below(2) != 0)
      {
        model.insert(position, more);
        array.insert(position, array.data(true) == nullptr ? nullptr : array.data(true) + start, size);
      }
      else
      {
        model.append(more);
        array.append(array.data(true) == nullptr ? nullptr : array.data(true) + start, size);
      }
      break;
    }
    case 7: {
      unsigned int const start = below(length + 1);
      unsigned int const size = below(part(length - start) + 1);
      model.erase(start, size);
      array.erase(start, size);
      break;
    }
    case 8: {
      unsigned int const count = below(part(length) + 1);
      model.erase(length - count, count);
      array.erase(count);
      break;
    }
    case 9: {
      unsigned int const keep = length - below(part(length) + 1);
      model.erase(keep, length - keep);
      array.truncate(keep);
      break;
    }
    case 10:
      if (below(4) == 0)
      {
        if (!model.items.empty())
        {
          model.items.clear();
          model.resizePool(0, true);
        }
        array.clear();
      }
      break;
    case 11: {
      if (below(6) != 0)
      {
        break;
      }
      unsigned int const size = below(1000);
      model.items.clear();
      model.resizePool(size, model.fit);
      array.setSize(size);
      T const value = static_cast<T>(below(4));
      model.items.assign(size, value);
      array.fill(value);
      break;
    }
    case 12:
      model.growStep = (below(3) == 0 ? 32 + below(0xE0) : below(8)) + 0x100 * below(3);
      array.setGrowStep(model.growStep);
      break;
    case 13:
      model.fit = below(2) != 0;
      array.setFitOnErase(model.fit);
      break;
    case 14: {
      std::vector<T> needle = some(3);
      unsigned int const start = below(length + 1);
      unsigned int size = below(3) == 0 ? 0 : below(length + 5);
      unsigned int const end = size == 0 || size > length - start ? length : start + size;
      unsigned int const expected = model.find(needle, start, end);
      bool found = false;
      needle.push_back(T()); // keeps data() from being null
      unsigned int const at =
          array.find(needle.data(), static_cast<unsigned int>(needle.size() - 1), found, start, size);
      ASSERT_EQ(found, expected != ~0u && array.data(true) != nullptr) << "seed " << seed << " step " << step;
      if (found)
      {
        ASSERT_EQ(at, expected) << "seed " << seed << " step " << step;
      }
      break;
    }
    case 15: {
      std::vector<T> const needle = some(2);
      std::vector<T> const replacement = some(length > 1500 ? 1 : 3);
      unsigned int const start = below(length + 1);
      model.replace(needle, replacement, start);
      array.replace(needle.data(), static_cast<unsigned int>(needle.size()), replacement.data(),
                    static_cast<unsigned int>(replacement.size()), start);
      break;
    }
    case 16: {
      mstd::tArray<T, Traits> const copy(array);
      unsigned int const kept = model.capacity;
      model.capacity = 0;
      model.resizePool(length, false);
      ASSERT_EQ(copy.capacity(), model.capacity) << "seed " << seed << " step " << step;
      ASSERT_EQ(copy.growStep(), model.growStep);
      ASSERT_EQ(copy.fitOnErase(), model.fit);
      ASSERT_TRUE(copy == array);
      if (below(2) != 0)
      {
        array = copy;
      }
      else
      {
        model.capacity = kept;
      }
      break;
    }
    default: // keep it from growing for ever
    {
      unsigned int const count = below(length + 1);
      model.erase(0, count);
      array.erase(0, count);
    }
    }
    ASSERT_EQ(array.length(), model.items.size()) << "seed " << seed << " step " << step << " action " << action;
    ASSERT_EQ(array.capacity(), model.capacity) << "seed " << seed << " step " << step << " action " << action;
    ASSERT_TRUE(std::equal(model.items.begin(), model.items.end(), array.data(true)))
        << "seed " << seed << " step " << step << " action " << action;
    if (Terminated)
    {
      ASSERT_EQ(array.data(true)[array.length()], T()) << "seed " << seed << " step " << step << " action " << action;
    }
    ASSERT_EQ(array.data(true) == nullptr, model.capacity == 0);
  }
}

/// Fewer under a sanitizer, whose allocator is slow and which every step asks a few times.
unsigned int modelSteps()
{
  return support::cAllocationFault::seesMalloc() ? 60000 : 10000;
}

unsigned int newSeed()
{
  unsigned int const seed = std::random_device()();
  std::cout << "seed " << seed << "\n";
  return seed;
}
} // namespace

TEST(tArray, ModelTestOfATerminatedText)
{
  compareWithModel<char, mstd::tArrayAsciiStringTraits<char>>(newSeed(), modelSteps());
}

TEST(tArray, ModelTestOfBytes)
{
  compareWithModel<char, mstd::tArrayByteLevelTraits<char>>(newSeed(), modelSteps());
}

TEST(tArray, ModelTestOfWords)
{
  compareWithModel<unsigned int, mstd::tArrayByteLevelTraits<unsigned int>>(newSeed(), modelSteps());
}

TEST(tArray, ModelTestOfElementsOfAnOddSize)
{
  compareWithModel<unsigned short, mstd::tArrayByteLevelTraits<unsigned short>>(newSeed(), modelSteps());
}
