#include "sa/cSerializeBinary.h"

#include "sa/cContext.h"
#include "sa/cSBinaryStoreContextData.h"
#include "sa/cTypeReference.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "support/cAllocationFault.h"
#include "support/expectFailure.h"
#include "support/streamBytes.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>

using msa::cContext;
using msa::cSerializeBinary;
using support::bytes;
using support::word;
using support::written;

namespace
{

/// The bytes that `write` makes.
std::string made(std::function<void(cSerializeBinary&)> const& write)
{
  cSerializeBinary serializer;
  write(serializer);
  return written(serializer);
}

template <class T>
std::string madeOf(T value)
{
  return made([&](cSerializeBinary& serializer) { value >> serializer; });
}

char const* const Golden = "0C 00 00 00  04 00 00 00  32 00 00 00  08 00 00 00  01 00 00 00"
                           " 0A 00 00 00  03 00 00 00  72 65 63"
                           " 0D 00 00 00  0A 00 00 00  03 00 00 00  76 61 6C"
                           " 05 00 00 00  05 00 00 00";

void writeGolden(cSerializeBinary& serializer)
{
  cContext context(serializer.newContext("rec"));
  serializer.newLabel("val");
  serializer.store(5);
  context.release();
}

/// Every kind of value once.
void writeAll(cSerializeBinary& serializer)
{
  cContext context(serializer.newContext("all"));
  true >> serializer;
  static_cast<short>(-2) >> serializer;
  serializer.newLabel("a label");
  serializer.storeBlock("block", 5);
  serializer.store(mstd::cAsciiString("text"));
  serializer.store(mucs::cString("wide"));
  serializer.setStringStoreMode(cSerializeBinary::StoreUTF8);
  serializer.store(mucs::cString("narrow"));
  unsigned int const umlaut[] = {0xE4, 0x20AC, 0};
  mucs::cString other;
  other.append(umlaut, 2);
  serializer.store(other);
  serializer.setStringStoreMode(cSerializeBinary::StoreUTF32);
  cContext inner(serializer.newContext(nullptr));
  2.5 >> serializer;
  inner.release();
  context.release();
}

/// An array of the caller that fails at the n-th change.
class cFailingArray : public mstd::tArray<char>
{
public:
  explicit cFailingArray(int iNth) : miLeft(iNth) {}
  void proxyInsert(unsigned int position, char const* source, unsigned int size) override
  {
    count();
    mstd::tArray<char>::proxyInsert(position, source, size);
  }
  void proxyPatchData(unsigned int start, unsigned int size, char const* source) override
  {
    count();
    mstd::tArray<char>::proxyPatchData(start, size, source);
  }
  bool hasFired() const { return miLeft <= 0; }

private:
  void count()
  {
    if (--miLeft == 0)
    {
      throw std::string("this array fails");
    }
  }
  int miLeft;
};

/// An array of 2^32 - 9 elements that holds none.
class cHugeArray : public mstd::tAbstractArrayProxy<char>
{
public:
  char const& proxyAt(unsigned int) const override { return mElement; }
  char& proxyAt(unsigned int) override { return mElement; }
  unsigned int proxyLength() const override { return 0xFFFFFFF7u; }
  void proxyCopyPartTo(char*, unsigned int, unsigned int) const override {}
  char const* proxyProvideData(unsigned int, unsigned int) const override { return nullptr; }
  unsigned int proxyPreferredBlockSize() const override { return 0; }
  mstd::tAbstractConstArrayProxy<char> const* constProxyPhysical(unsigned int& offset) const override
  {
    offset = 0;
    return this;
  }
  void proxyPatchData(unsigned int start, unsigned int size, char const*) override
  {
    miPatchedEnd = static_cast<unsigned long long>(start) + size;
  }
  void proxySetSize(unsigned int) override { ++miChanges; }
  void proxyInsert(unsigned int, char const*, unsigned int) override { ++miChanges; }
  void proxyInsertDefaultObjects(unsigned int, unsigned int) override { ++miChanges; }
  void proxyErase(unsigned int, unsigned int) override { ++miChanges; }
  mstd::tAbstractArrayProxy<char>* proxyPhysical(unsigned int& offset) override
  {
    offset = 0;
    return this;
  }

  char mElement = 0;
  unsigned long long miPatchedEnd = 0;
  int miChanges = 0;
};

struct cThrowing
{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const
  {
    5 >> serializer;
    throw std::string("this value fails");
  }
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer) { return deserializer; }
};

} // namespace

TEST(cSerializeBinary, StartsEmptyAndPrefersNoLabels)
{
  cSerializeBinary serializer;
  EXPECT_TRUE(serializer.noLabelsPreferred());
  EXPECT_EQ(serializer.currentPos(), 0u);
  EXPECT_EQ(serializer.stringStoreMode(), 0u);
  EXPECT_EQ(serializer.data().length(), 0u);
  EXPECT_EQ(serializer.ownData().growStep(), 18u);
  mstd::tArray<char> array;
  EXPECT_TRUE(cSerializeBinary(mstd::tArrayRef<char>(array)).noLabelsPreferred());
}

TEST(cSerializeBinary, NumbersAreIdAndPayloadInLittleEndian)
{
  EXPECT_EQ(madeOf(static_cast<unsigned char>(0xF1)), bytes("02 00 00 00 F1"));
  EXPECT_EQ(madeOf(static_cast<signed char>(-2)), bytes("03 00 00 00 FE"));
  EXPECT_EQ(madeOf(0x81020304u), bytes("04 00 00 00 04 03 02 81"));
  EXPECT_EQ(madeOf(-2), bytes("05 00 00 00 FE FF FF FF"));
  EXPECT_EQ(madeOf(0x8102030405060708ull), bytes("06 00 00 00 08 07 06 05 04 03 02 81"));
  EXPECT_EQ(madeOf(-2ll), bytes("07 00 00 00 FE FF FF FF FF FF FF FF"));
  EXPECT_EQ(madeOf(static_cast<unsigned short>(0x8102)), bytes("11 00 00 00 02 81"));
  EXPECT_EQ(madeOf(static_cast<short>(-2)), bytes("12 00 00 00 FE FF"));
}

TEST(cSerializeBinary, WritingThroughTheInterfaceIsTheSame)
{
  cSerializeBinary serializer;
  msa::cAbstractSerializer& abstract = serializer;
  1 >> serializer;
  1 >> abstract;
  true >> serializer;
  true >> abstract;
  EXPECT_EQ(written(serializer), madeOf(1) + madeOf(1) + madeOf(true) + madeOf(true));
}

TEST(cSerializeBinary, ABoolIsAWordOfZeroOrOne)
{
  EXPECT_EQ(madeOf(true), bytes("08 00 00 00 01 00 00 00"));
  EXPECT_EQ(madeOf(false), bytes("08 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, ADoubleIsItsImageLowByteFirst)
{
  EXPECT_EQ(madeOf(1.0), bytes("09 00 00 00 00 00 00 00 00 00 F0 3F"));
  EXPECT_EQ(madeOf(-2.5), bytes("09 00 00 00 00 00 00 00 00 00 04 C0"));
}

TEST(cSerializeBinary, AByteStringIsCountAndBytesWithoutTerminator)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { s.store(mstd::cAsciiString("rec")); }),
            bytes("0A 00 00 00 03 00 00 00 'rec'"));
  EXPECT_EQ(made([](cSerializeBinary& s) { s.store(mstd::cAsciiString()); }), bytes("0A 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, ATextIsWrittenWideOrInUTF8)
{
  mucs::cString const letter("A");
  EXPECT_EQ(made([&](cSerializeBinary& s) { s.store(letter); }), bytes("0B 00 00 00 01 00 00 00 41 00 00 00"));
  EXPECT_EQ(made([&](cSerializeBinary& s) {
              s.setStringStoreMode(cSerializeBinary::StoreUTF8);
              s.store(letter);
            }),
            bytes("10 00 00 00 01 00 00 00 41"));
}

TEST(cSerializeBinary, AnEmptyTextHasACountOnly)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { s.store(mucs::cString()); }), bytes("0B 00 00 00 00 00 00 00"));
  EXPECT_EQ(made([](cSerializeBinary& s) {
              s.setStringStoreMode(cSerializeBinary::StoreUTF8);
              s.store(mucs::cString());
            }),
            bytes("10 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, CharactersBeyondAsciiTakeTheirBytes)
{
  unsigned int const chars[] = {0x20AC, 0x1F600};
  mucs::cString text;
  text.append(chars, 2);
  EXPECT_EQ(made([&](cSerializeBinary& s) { s.store(text); }),
            bytes("0B 00 00 00 02 00 00 00 AC 20 00 00 00 F6 01 00"));
  EXPECT_EQ(made([&](cSerializeBinary& s) {
              s.setStringStoreMode(cSerializeBinary::StoreUTF8);
              s.store(text);
            }),
            bytes("10 00 00 00 07 00 00 00 E2 82 AC F0 9F 98 80"));
}

TEST(cSerializeBinary, ACharacterOfValueZeroIsWrittenInBothModes)
{
  unsigned int const chars[] = {'a', 0};
  mucs::cString text;
  text.append(chars, 2);
  EXPECT_EQ(made([&](cSerializeBinary& s) { s.store(text); }),
            bytes("0B 00 00 00 02 00 00 00 61 00 00 00 00 00 00 00"));
  EXPECT_EQ(made([&](cSerializeBinary& s) {
              s.setStringStoreMode(cSerializeBinary::StoreUTF8);
              s.store(text);
            }),
            bytes("10 00 00 00 02 00 00 00 61 00"));
}

TEST(cSerializeBinary, InAnotherModeATextIsNotWrittenAtAll)
{
  cSerializeBinary serializer;
  serializer.setStringStoreMode(static_cast<cSerializeBinary::StringStoreMode>(2));
  EXPECT_EQ(serializer.stringStoreMode(), 2u);
  serializer.store(mucs::cString("A"));
  EXPECT_EQ(written(serializer), "");
}

TEST(cSerializeBinary, ABlockIsCountAndBytes)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { s.storeBlock("abc", 3); }), bytes("01 00 00 00 03 00 00 00 'abc'"));
  EXPECT_EQ(made([](cSerializeBinary& s) { s.storeBlock(nullptr, 0); }), bytes("01 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, ANullBlockWithASizeHasACountAndNoBytes)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { s.storeBlock(nullptr, 5); }), bytes("01 00 00 00 05 00 00 00"));
}

TEST(cSerializeBinary, OnlyTheLargestBlockGetsA64BitCount)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { s.storeBlock(nullptr, 0xFFFFFFFFu); }),
            bytes("0E 00 00 00 FF FF FF FF 00 00 00 00"));
  EXPECT_EQ(made([](cSerializeBinary& s) { s.storeBlock(nullptr, 0xFFFFFFFEu); }), bytes("01 00 00 00 FE FF FF FF"));
}

TEST(cSerializeBinary, TheLargestBlockHasNoRoomAndLeavesNothing)
{
  cSerializeBinary serializer;
  1 >> serializer;
  char const byte = 'x';
  EXPECT_THROW(serializer.storeBlock(&byte, 0xFFFFFFFFu), std::bad_alloc);
  EXPECT_EQ(serializer.currentPos(), 8u);
  EXPECT_EQ(written(serializer), madeOf(1));
}

TEST(cSerializeBinary, TheWholeExampleByteForByte)
{
  std::string const golden = bytes(Golden);
  ASSERT_EQ(golden.size(), 54u);
  EXPECT_EQ(made(writeGolden), golden);
}

TEST(cSerializeBinary, AContextWithoutANameHasTheFlagZero)
{
  EXPECT_EQ(made([](cSerializeBinary& s) {
              cContext context(s.newContext(nullptr));
              context.release();
            }),
            bytes("0C 00 00 00 04 00 00 00 10 00 00 00 08 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, AContextWithAnEmptyNameHasTheFlagAndACountOfZero)
{
  EXPECT_EQ(made([](cSerializeBinary& s) {
              cContext context(s.newContext(""));
              context.release();
            }),
            bytes("0C 00 00 00 04 00 00 00 18 00 00 00 08 00 00 00 01 00 00 00 0A 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, TheLengthOfAnOuterContextCoversTheInner)
{
  EXPECT_EQ(made([](cSerializeBinary& s) {
              cContext outer(s.newContext(nullptr));
              {
                cContext inner(s.newContext(nullptr));
                1 >> s;
                inner.release();
              }
              outer.release();
            }),
            bytes("0C 00 00 00 04 00 00 00 2C 00 00 00 08 00 00 00 00 00 00 00"
                  " 0C 00 00 00 04 00 00 00 18 00 00 00 08 00 00 00 00 00 00 00 05 00 00 00 01 00 00 00"));
}

TEST(cSerializeBinary, TheLengthIsZeroUntilTheContextIsReleased)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  cContext context(serializer.newContext(nullptr));
  EXPECT_EQ(support::stringOf(array), bytes("0C 00 00 00 04 00 00 00 00 00 00 00 08 00 00 00 00 00 00 00"));
  context.release();
  EXPECT_EQ(support::stringOf(array), bytes("0C 00 00 00 04 00 00 00 10 00 00 00 08 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, ALabelIsAStringBehindItsId)
{
  EXPECT_EQ(made([](cSerializeBinary& s) { EXPECT_EQ(&s.newLabel("val"), &s); }),
            bytes("0D 00 00 00 0A 00 00 00 03 00 00 00 'val'"));
}

TEST(cSerializeBinary, AContextThatIsNotReleasedRollsBack)
{
  cSerializeBinary serializer;
  1 >> serializer;
  {
    cContext context(serializer.newContext("lost"));
    2 >> serializer;
    EXPECT_GT(serializer.currentPos(), 8u);
  }
  EXPECT_EQ(serializer.currentPos(), 8u);
  EXPECT_EQ(written(serializer), madeOf(1));
}

TEST(cSerializeBinary, ARolledBackContextTakesTheCommittedOnesInItWithIt)
{
  cSerializeBinary serializer;
  1 >> serializer;
  {
    cContext context(serializer.newContext("lost"));
    writeGolden(serializer);
  }
  EXPECT_EQ(written(serializer), madeOf(1));
}

TEST(cSerializeBinary, ReleasingTwiceDoesNothing)
{
  cSerializeBinary serializer;
  {
    cContext context(serializer.newContext(nullptr));
    context.release();
    7 >> serializer; // already behind the context
    context.release();
  }
  EXPECT_EQ(written(serializer),
            bytes("0C 00 00 00 04 00 00 00 10 00 00 00 08 00 00 00 00 00 00 00 05 00 00 00 07 00 00 00"));
}

TEST(cSerializeBinary, ReleaseCurrentContextCommits)
{
  cSerializeBinary serializer;
  {
    cContext context(serializer.newContext("rec"));
    serializer.newLabel("val");
    serializer.store(5);
    serializer.releaseCurrentContext();
    EXPECT_EQ(serializer.data().length(), 54u);
  }
  EXPECT_EQ(written(serializer), bytes(Golden));
  serializer.releaseCurrentContext(); // none is open
  EXPECT_EQ(written(serializer), bytes(Golden));
}

TEST(cSerializeBinary, ClosingAContextClosesThoseInIt)
{
  cSerializeBinary serializer;
  cContext outer(serializer.newContext(nullptr));
  cContext inner(serializer.newContext("lost"));
  1 >> serializer;
  outer.release();
  EXPECT_EQ(serializer.currentPos(), 20u);
  inner.release();
  inner.unset();
  EXPECT_EQ(written(serializer), bytes("0C 00 00 00 04 00 00 00 10 00 00 00 08 00 00 00 00 00 00 00"));
}

TEST(cSerializeBinary, AGuardMayOutliveTheSerializer)
{
  auto serializer = std::make_unique<cSerializeBinary>();
  cContext outer(serializer->newContext("a"));
  cContext inner(serializer->newContext("b"));
  serializer.reset();
  inner.release();
  inner.unset();
  EXPECT_NO_THROW(outer.release());
}

TEST(cSerializeBinary, DataIsRefusedWithAnOpenContext)
{
  cSerializeBinary serializer;
  mstd::tArray<char> array;
  cContext context(serializer.newContext("open"));
  std::string const message = "Calling data() with open contexts is invalid!";
  EXPECT_EQ(support::bugMessageOf([&] { serializer.data(); }), message);
  EXPECT_EQ(support::bugMessageOf([&] { serializer.ownData(); }), message);
  EXPECT_EQ(support::bugMessageOf([&] { serializer.swapData(array); }), message);
  EXPECT_EQ(support::bugMessageOf([&] { serializer.clear(); }), "Calling erase() with open contexts is invalid!");
  EXPECT_EQ(serializer.currentPos(), 32u); // the context is still there
}

TEST(cSerializeBinary, ClearStartsAnew)
{
  cSerializeBinary serializer;
  writeAll(serializer);
  serializer.clear();
  EXPECT_EQ(serializer.currentPos(), 0u);
  EXPECT_EQ(written(serializer), "");
  writeGolden(serializer);
  EXPECT_EQ(written(serializer), bytes(Golden));
}

TEST(cSerializeBinary, RewindGoesToTheStartOfTheContentAndCutsNothing)
{
  cSerializeBinary serializer;
  1 >> serializer;
  2 >> serializer;
  cContext context(serializer.newContext(nullptr));
  3 >> serializer;
  4 >> serializer;
  serializer.rewind();
  EXPECT_EQ(serializer.currentPos(), 36u);
  5 >> serializer;
  context.release();
  context.unset();
  EXPECT_EQ(serializer.currentPos(), 44u);
  serializer.rewind();
  EXPECT_EQ(serializer.currentPos(), 0u);
  6 >> serializer;
  EXPECT_EQ(written(serializer), madeOf(6));
}

TEST(cSerializeBinary, TheDataOfAContextRewindsToItsContent)
{
  cSerializeBinary serializer;
  std::unique_ptr<msa::cAbstractContextData> data(serializer.newContext(nullptr).unguardImpl());
  1 >> serializer;
  static_cast<msa::cSBinaryStoreContextData*>(data.get())->rewind();
  EXPECT_EQ(serializer.currentPos(), 20u);
  data->release();
  static_cast<msa::cSBinaryStoreContextData*>(data.get())->rewind(); // closed: nothing to go back to
  EXPECT_EQ(serializer.currentPos(), 20u);
}

TEST(cSerializeBinary, AfterARewindTheRestStaysUntilTheDataIsTaken)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  1 >> serializer;
  2 >> serializer;
  serializer.rewind();
  3 >> serializer;
  EXPECT_EQ(support::stringOf(array), madeOf(3) + madeOf(2));
  EXPECT_EQ(serializer.data().length(), 8u);
  EXPECT_EQ(support::stringOf(array), madeOf(3));
}

TEST(cSerializeBinary, TakingTheDataGivesUnusedSectorsBackAndKeepsTheSettings)
{
  mstd::tArray<char> fresh;
  fresh.setGrowStep(18);
  fresh.setSize(8);
  mstd::tArray<char> large(1000000);
  cSerializeBinary serializer;
  serializer.storeBlock(large.data(), large.length());
  unsigned int const written = serializer.ownData().length();
  EXPECT_GE(serializer.ownData().capacity(), written);
  serializer.rewind();
  1 >> serializer;
  EXPECT_EQ(serializer.ownData().length(), 8u);
  EXPECT_EQ(serializer.ownData().capacity(), fresh.capacity());
  EXPECT_EQ(serializer.ownData().growStep(), fresh.growStep());
  EXPECT_EQ(serializer.ownData().fitOnErase(), fresh.fitOnErase());

  // The same for what a context left behind that was not released.
  {
    cContext context(serializer.newContext(nullptr));
    serializer.storeBlock(large.data(), large.length());
  }
  EXPECT_EQ(serializer.ownData().length(), 8u);
  EXPECT_EQ(serializer.ownData().capacity(), fresh.capacity());

  // The same for an array that came in with more than is written over it.
  serializer.swapData(large);
  1 >> serializer;
  EXPECT_EQ(serializer.ownData().length(), 8u);
  EXPECT_LT(serializer.ownData().capacity(), 1000u);
  EXPECT_EQ(serializer.ownData().fitOnErase(), fresh.fitOnErase());
}

TEST(cSerializeBinary, ARolledBackContextStaysBehindThePositionInTheCallersArray)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  {
    cContext context(serializer.newContext(nullptr));
    1 >> serializer;
  }
  EXPECT_EQ(serializer.currentPos(), 0u);
  EXPECT_EQ(array.length(), 28u);
  2 >> serializer;
  EXPECT_EQ(array.length(), 28u);
  EXPECT_EQ(support::stringOf(array).substr(0, 8), madeOf(2));
  EXPECT_EQ(support::stringOf(array).substr(20), madeOf(1));
  serializer.data();
  EXPECT_EQ(support::stringOf(array), madeOf(2));
}

TEST(cSerializeBinary, WritesIntoAPartOfTheCallersArray)
{
  mstd::tArray<char> array = support::arrayOf("<01234567>");
  cSerializeBinary serializer(mstd::tArrayRef<char>(array, 1, 8));
  5 >> serializer;
  EXPECT_EQ(support::stringOf(array), "<" + madeOf(5) + ">");
  6 >> serializer;
  EXPECT_EQ(support::stringOf(array), "<" + madeOf(5) + madeOf(6) + ">");
  serializer.rewind();
  7 >> serializer;
  EXPECT_EQ(serializer.data().length(), 8u);
  EXPECT_EQ(support::stringOf(array), "<" + madeOf(7) + ">");
  serializer.clear();
  EXPECT_EQ(support::stringOf(array), "<>");
  EXPECT_EQ(serializer.currentPos(), 0u);
  serializer.clear();
  writeGolden(serializer);
  EXPECT_EQ(support::stringOf(array), "<" + bytes(Golden) + ">");
}

TEST(cSerializeBinary, AValueMayStandHalfOverAndHalfBehindWhatIsThere)
{
  mstd::tArray<char> array = support::arrayOf("xyz");
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  5 >> serializer;
  EXPECT_EQ(support::stringOf(array), madeOf(5));
}

TEST(cSerializeBinary, EverythingIsTheSameInTheCallersArray)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  writeAll(serializer);
  EXPECT_EQ(support::stringOf(array), made(writeAll));
}

TEST(cSerializeBinary, SwapDataHandsTheBufferOver)
{
  cSerializeBinary serializer;
  writeGolden(serializer);
  char const* const place = serializer.ownData().data();
  mstd::tArray<char> array = support::arrayOf("something else");
  serializer.swapData(array);
  EXPECT_EQ(support::stringOf(array), bytes(Golden));
  EXPECT_EQ(array.data(), place);
  EXPECT_EQ(serializer.currentPos(), 0u);
  EXPECT_EQ(written(serializer), ""); // what came in stands behind the position
  writeGolden(serializer);
  EXPECT_EQ(written(serializer), bytes(Golden));
}

TEST(cSerializeBinary, SwapDataBringsTheSettingsOfTheArrayIn)
{
  cSerializeBinary serializer;
  mstd::tArray<char> array;
  array.setGrowStep(3);
  serializer.swapData(array);
  EXPECT_EQ(array.growStep(), 18u);
  EXPECT_EQ(serializer.ownData().growStep(), 3u);
  for (int i = 0; i < 1000; ++i)
  {
    i >> serializer;
  }
  EXPECT_EQ(written(serializer).size(), 8000u);
  EXPECT_EQ(written(serializer).substr(7992), madeOf(999));
}

TEST(cSerializeBinary, AfterSwapDataTheOwnBufferIsUsed)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  1 >> serializer;
  mstd::tArray<char> other;
  serializer.swapData(other);
  EXPECT_EQ(other.length(), 0u); // the own buffer, unused so far
  2 >> serializer;
  EXPECT_EQ(support::stringOf(array), madeOf(1));
  EXPECT_EQ(written(serializer), madeOf(2));
}

TEST(cSerializeBinary, PatchOverwritesAndComesBack)
{
  cSerializeBinary serializer;
  1 >> serializer;
  2 >> serializer;
  3 >> serializer;
  int value = 7;
  msa::cTypeReference<int> reference(value, true, true);
  serializer.patch(8, reference);
  EXPECT_EQ(serializer.currentPos(), 24u);
  EXPECT_EQ(written(serializer), madeOf(1) + madeOf(7) + madeOf(3));
}

TEST(cSerializeBinary, APatchThatGoesFartherMovesThePosition)
{
  cSerializeBinary serializer;
  1 >> serializer;
  unsigned long long value = 7;
  msa::cTypeReference<unsigned long long> reference(value, true, true);
  serializer.patch(4, reference);
  EXPECT_EQ(serializer.currentPos(), 16u);
  EXPECT_EQ(written(serializer), bytes("05 00 00 00") + madeOf(7ull));
}

TEST(cSerializeBinary, APatchBehindTheEndFillsTheGapWithZeros)
{
  cSerializeBinary serializer;
  1 >> serializer;
  int value = 7;
  msa::cTypeReference<int> reference(value, true, true);
  serializer.patch(12, reference);
  EXPECT_EQ(written(serializer), madeOf(1) + word(0) + madeOf(7));
}

TEST(cSerializeBinary, APatchBehindTheEndOfTheCallersArrayExtendsIt)
{
  mstd::tArray<char> array;
  mstd::tArrayRef<char> view(array);
  cSerializeBinary serializer(view);
  1 >> serializer;
  int value = 7;
  msa::cTypeReference<int> reference(value, true, true);
  serializer.patch(12, reference);
  EXPECT_EQ(serializer.currentPos(), 20u);
  ASSERT_EQ(array.length(), 20u);
  EXPECT_EQ(support::stringOf(array).substr(0, 8), madeOf(1));
  EXPECT_EQ(support::stringOf(array).substr(12), madeOf(7));
}

TEST(cSerializeBinary, APatchThatFailsLeavesThePosition)
{
  cSerializeBinary serializer;
  1 >> serializer;
  2 >> serializer;
  cThrowing value;
  msa::cTypeReference<cThrowing> reference(value, true, true);
  EXPECT_THROW(serializer.patch(0, reference), std::string);
  EXPECT_EQ(serializer.currentPos(), 16u);
}

TEST(cSerializeBinary, RawBytesHaveNoId)
{
  cSerializeBinary serializer;
  serializer.storeRaw("abc", 3);
  serializer.storeRaw(nullptr, 100);
  serializer.storeRaw("d", 0);
  serializer.storeTypeId(0x01020304u);
  EXPECT_EQ(serializer.currentPos(), 7u);
  EXPECT_EQ(written(serializer), bytes("'abc' 04 03 02 01"));
}

TEST(cSerializeBinary, BytesOfTheOwnBufferMayBeStoredAgain)
{
  cSerializeBinary serializer;
  serializer.storeRaw("abcdef", 6);
  mstd::tArray<char>& own = serializer.ownData();
  serializer.storeRaw(own.data() + 2, 3);
  serializer.storeBlock(serializer.ownData().data(), 9);
  EXPECT_EQ(written(serializer), "abcdefcde" + bytes("01 00 00 00 09 00 00 00") + "abcdefcde");
}

TEST(cSerializeBinary, TheOwnDataMayBeChangedBetweenTwoValues)
{
  cSerializeBinary serializer;
  1 >> serializer;
  2 >> serializer;
  serializer.ownData().append("behind", 6);
  3 >> serializer; // over what stands there
  EXPECT_EQ(written(serializer), madeOf(1) + madeOf(2) + madeOf(3));
  serializer.ownData().clear();
  4 >> serializer;
  EXPECT_EQ(serializer.ownData().length(), 32u);
  EXPECT_EQ(written(serializer).substr(24), madeOf(4));
}

TEST(cSerializeBinary, ManyValuesAcrossTheSectors)
{
  cSerializeBinary serializer;
  for (int i = 0; i < 100000; ++i)
  {
    i >> serializer;
  }
  std::string const all = written(serializer);
  ASSERT_EQ(all.size(), 800000u);
  for (int i = 0; i < 100000; ++i)
  {
    ASSERT_EQ(all.compare(8 * static_cast<size_t>(i), 8, word(5) + word(static_cast<unsigned int>(i))), 0) << i;
  }
}

TEST(cSerializeBinary, AMillionNestedContextsOpenAndClose)
{
  cSerializeBinary serializer;
  std::vector<std::unique_ptr<msa::cAbstractContextData>> open;
  for (int i = 0; i < 1000000; ++i)
  {
    open.emplace_back(serializer.newContext(nullptr).unguardImpl());
  }
  while (!open.empty())
  {
    open.back()->release();
    open.pop_back();
  }
  EXPECT_EQ(serializer.ownData().length(), 20000000u);
  EXPECT_EQ(written(serializer).substr(8, 4), word(20000000 - 4));
}

TEST(cSerializeBinary, PositionsDoNotWrap)
{
  cHugeArray huge;
  mstd::tArrayRef<char> view(huge);
  cSerializeBinary serializer(view);
  unsigned char byte = 1;
  msa::cTypeReference<unsigned char> reference(byte, true, true);
  serializer.patch(0xFFFFFFF0u, reference);
  EXPECT_EQ(huge.miPatchedEnd, 0xFFFFFFF5u);
  EXPECT_EQ(serializer.currentPos(), 0xFFFFFFF5u);
  EXPECT_THROW(serializer.store(1ull), std::bad_alloc);
  EXPECT_THROW(serializer.storeBlock("0123456789", 10), std::bad_alloc);
  EXPECT_THROW(serializer.newContext("name"), std::bad_alloc);
  EXPECT_EQ(serializer.currentPos(), 0xFFFFFFF5u);
  EXPECT_EQ(huge.miChanges, 0);
}

TEST(cSerializeBinary, AMissingTargetIsAnErrorAndNoCrash)
{
  support::expectAssertion(
      [] {
        cSerializeBinary serializer{mstd::tArrayRef<char>()};
        serializer.store(1);
      },
      "mpData != 0", "std/tArrayRef");
}

TEST(cSerializeBinaryFault, AFailingArrayOfTheCallerLeavesThePositionAtEveryStep)
{
  int steps = 0;
  for (bool fired = true; fired; ++steps)
  {
    cFailingArray array(steps + 1);
    mstd::tArrayRef<char> view(array);
    cSerializeBinary serializer(view);
    fired = false;
    try
    {
      writeAll(serializer);
    }
    catch (std::string const&)
    {
      fired = true;
      EXPECT_EQ(serializer.currentPos(), 0u) << steps;
      EXPECT_EQ(serializer.data().length(), 0u) << steps;
    }
    EXPECT_EQ(fired, array.hasFired());
  }
  EXPECT_GT(steps, 15);
}

TEST(cSerializeBinaryFault, EachValueThatFailsLeavesNothingOfItself)
{
  typedef std::function<void(cSerializeBinary&)> tWriter;
  mucs::cString const text("text");
  tWriter const writers[] = {[](cSerializeBinary& s) { s.store(1); },
                             [](cSerializeBinary& s) { s.storeBlock("block", 5); },
                             [](cSerializeBinary& s) { s.store(mstd::cAsciiString("ab")); },
                             [&](cSerializeBinary& s) { s.store(text); },
                             [](cSerializeBinary& s) { s.newLabel("label"); },
                             [](cSerializeBinary& s) { s.newContext("name"); }};
  for (tWriter const& write : writers)
  {
    int failures = 0;
    for (int nth = 2; nth < 10; ++nth)
    {
      cFailingArray array(nth);
      mstd::tArrayRef<char> view(array);
      cSerializeBinary serializer(view);
      serializer.store(7);
      try
      {
        write(serializer);
      }
      catch (std::string const&)
      {
        ++failures;
        EXPECT_EQ(serializer.currentPos(), 8u);
        EXPECT_EQ(support::stringOf(array).substr(0, 8), madeOf(7));
        array.clear(); // so that the view of it is stale when the serializer goes
      }
    }
    EXPECT_GE(failures, 1);
  }
}

TEST(cSerializeBinaryFault, OutOfMemoryLeavesThePositionAtEveryStep)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  std::string const expected = madeOf(1);
  unsigned int fired = 0;
  for (unsigned int nth = 1; nth < 200; ++nth)
  {
    cSerializeBinary serializer;
    1 >> serializer;
    bool failed = false;
    bool reached = false;
    {
      support::cAllocationFault fault(nth, true);
      try
      {
        writeAll(serializer);
      }
      catch (std::bad_alloc const&)
      {
        failed = true;
      }
      reached = fault.hasFired();
    }
    if (!reached)
    {
      EXPECT_FALSE(failed);
      break;
    }
    ++fired;
    if (failed)
    {
      EXPECT_EQ(serializer.currentPos(), 8u) << nth;
      EXPECT_EQ(written(serializer), expected) << nth;
    }
  }
  EXPECT_GE(fired, support::cAllocationFault::seesMalloc() ? 3u : 2u);
}

TEST(cSerializeBinaryFault, TheBufferGrowsByWhatIsNeededIfThereIsNoMoreMemory)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "the allocations of arrays are not seen here";
  }
  cSerializeBinary serializer;
  unsigned int const capacity = 262144;
  while (serializer.currentPos() < capacity)
  {
    7 >> serializer;
  }
  bool fired = false;
  {
    support::cAllocationFault fault(1); // the roomy growth, not the exact one
    1 >> serializer;
    fired = fault.hasFired();
  }
  EXPECT_TRUE(fired);
  EXPECT_EQ(written(serializer).substr(capacity), madeOf(1));
}

TEST(cSerializeBinaryFault, AnElementThatThrowsRollsTheContextsBack)
{
  cSerializeBinary serializer;
  1 >> serializer;
  EXPECT_THROW(
      {
        cContext outer(serializer.newContext("outer"));
        cContext inner(serializer.newContext("inner"));
        cThrowing() >> serializer;
        inner.release();
        outer.release();
      },
      std::string);
  EXPECT_EQ(written(serializer), madeOf(1));
}
