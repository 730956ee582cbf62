#include "sa/cDeserializeBinary.h"

#include "sa/cContext.h"
#include "sa/cLabeledTypeMissmatchException.h"
#include "sa/cSBinaryLoadContextData.h"
#include "sa/cSerializeBinary.h"
#include "std/cConstCStringRef.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"
#include "support/rangeChecks.h"
#include "support/streamBytes.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <new>
#include <vector>

using msa::cContext;
using msa::cDeserializeBinary;
using msa::cSerializeBinary;
using msa::cSerializeBinaryShared;
using support::bytes;
using support::word;

namespace
{

char const* const Golden = "0C 00 00 00  04 00 00 00  32 00 00 00  08 00 00 00  01 00 00 00"
                           " 0A 00 00 00  03 00 00 00  72 65 63"
                           " 0D 00 00 00  0A 00 00 00  03 00 00 00  76 61 6C"
                           " 05 00 00 00  05 00 00 00";

std::string const EndOfContext = "Unable to deserialize - end of context!";

/// Data that is not an array: every read takes the long way.
class cElsewhere : public mstd::tAbstractConstArrayProxy<char>
{
public:
  explicit cElsewhere(std::string const& data) : mData(data) {}
  char const& proxyAt(unsigned int index) const override { return mData.at(index); }
  unsigned int proxyLength() const override { return static_cast<unsigned int>(mData.size()); }
  void proxyCopyPartTo(char* target, unsigned int start, unsigned int size) const override
  {
    mData.copy(target, size, start);
  }
  char const* proxyProvideData(unsigned int start, unsigned int) const override { return mData.data() + start; }
  unsigned int proxyPreferredBlockSize() const override { return 16; }
  mstd::tAbstractConstArrayProxy<char> const* constProxyPhysical(unsigned int& offset) const override
  {
    offset = 0;
    return this;
  }

private:
  std::string mData;
};

/// A deserializer with its data, in an array or elsewhere.
class cSource
{
public:
  explicit cSource(std::string const& data, bool elsewhere = false) : mArray(support::arrayOf(data)), mElsewhere(data)
  {
    if (elsewhere)
    {
      mReader.setData(mElsewhere);
    }
    else
    {
      mReader.setData(mArray);
    }
  }
  cDeserializeBinary* operator->() { return &mReader; }
  cDeserializeBinary& operator*() { return mReader; }

private:
  mstd::tArray<char> mArray;
  cElsewhere mElsewhere;
  cDeserializeBinary mReader;
};

/// Runs `action` and tells the message of what it raises, or "nothing".
template <class Action>
std::string messageOf(Action action)
{
  support::cCaptureOut mute;
  try
  {
    action();
  }
  catch (mstd::cAbstractException const& e)
  {
    return support::messageOf(e);
  }
  return "nothing";
}

template <class T>
T loaded(cDeserializeBinary& reader)
{
  T value = T();
  value << reader;
  return value;
}

std::string textOf(cDeserializeBinary& reader)
{
  mstd::cAsciiString text("before");
  reader.load(text);
  return support::toString(text);
}

std::string blockOf(cDeserializeBinary& reader)
{
  mstd::tArray<char> block = support::arrayOf("before");
  reader.loadBlock(block);
  return support::stringOf(block);
}

std::vector<unsigned int> charsOf(cDeserializeBinary& reader)
{
  mucs::cString text("before");
  reader.load(text);
  std::vector<unsigned int> chars;
  for (unsigned int i = 0; i < text.length(); ++i)
  {
    chars.push_back(text.at(i));
  }
  return chars;
}

std::string mismatch(std::string const& expected, std::string const& got)
{
  return "Type mismatch: Expecting type \"" + expected + "\" but got object of type \"" + got + "\"!";
}

std::string mismatch(std::string const& expected, std::string const& got, std::string const& label)
{
  return "Type mismatch: Expecting type \"" + expected + "\" but got object of type \"" + got +
         "\" - last label was \"" + label + "\"!";
}

std::string invalidId(unsigned int id)
{
  return "Invalid type id (" + std::to_string(id) + ") while deserializing!";
}

std::string text(std::string const& content)
{
  return word(10) + word(static_cast<unsigned int>(content.size())) + content;
}

std::string label(std::string const& name)
{
  return word(13) + text(name);
}

std::string number(int value)
{
  return word(5) + word(static_cast<unsigned int>(value));
}

/// A context without a name and with any length, right or wrong.
std::string contextOf(std::string const& content, unsigned int length)
{
  return word(12) + word(4) + word(length) + word(8) + word(0) + content;
}

std::string contextOf(std::string const& content)
{
  return contextOf(content, static_cast<unsigned int>(16 + content.size()));
}

std::string copied(cDeserializeBinary& reader, bool labels = false)
{
  cSerializeBinary target;
  target.setPreferNoLabels(!labels);
  reader.reserialize(target);
  return support::written(target);
}

class InArrayAndElsewhere : public testing::TestWithParam<bool>
{
protected:
  cSource source(std::string const& data) { return cSource(data, GetParam()); }
};

INSTANTIATE_TEST_SUITE_P(cDeserializeBinary, InArrayAndElsewhere, testing::Bool());

} // namespace

TEST(cDeserializeBinary, WithoutDataEverythingIsAtItsEnd)
{
  cDeserializeBinary reader;
  EXPECT_TRUE(reader.noLabelsPreferred());
  EXPECT_TRUE(reader.eoc());
  EXPECT_TRUE(reader.eocMayBeLabels());
  EXPECT_FALSE(reader.isLabel());
  EXPECT_FALSE(reader.isContext());
  EXPECT_FALSE(reader.tryFindLabel("any"));
  EXPECT_EQ(messageOf([&] { loaded<int>(reader); }), EndOfContext);
  EXPECT_EQ(messageOf([&] { reader.getContext(nullptr); }), EndOfContext);
  EXPECT_EQ(messageOf([&] { blockOf(reader); }), EndOfContext);
  EXPECT_EQ(copied(reader), "");
  reader.rewind();
  reader.releaseCurrentContext();
  EXPECT_EQ(reader.currentPos(), 0u);
}

TEST(cDeserializeBinary, ReadingThroughTheInterfaceIsTheSame)
{
  cSource reader(number(1) + number(2) + word(8) + word(7));
  msa::cAbstractDeserializer& abstract = *reader;
  int first = 0;
  int second = 0;
  bool flag = false;
  second << (first << *reader);
  flag << abstract;
  EXPECT_EQ(first, 1);
  EXPECT_EQ(second, 2);
  EXPECT_TRUE(flag);
}

TEST(cDeserializeBinary, TakesAnArrayOver)
{
  mstd::tAutoPtr<mstd::tArray<char>> data(new mstd::tArray<char>(support::arrayOf(number(7))));
  cDeserializeBinary reader(data);
  EXPECT_EQ(data.get(), nullptr);
  EXPECT_TRUE(reader.noLabelsPreferred());
  EXPECT_EQ(loaded<int>(reader), 7);
  cDeserializeBinary none{mstd::tAutoPtr<mstd::tArray<char>>()};
  EXPECT_TRUE(none.eoc());
}

TEST(cDeserializeBinary, ReadsAPartOfAnArray)
{
  mstd::tArray<char> array = support::arrayOf("xx" + number(7) + number(8));
  cDeserializeBinary reader(mstd::tConstArrayRef<char>(array, 2, 8));
  EXPECT_TRUE(reader.noLabelsPreferred());
  EXPECT_EQ(loaded<int>(reader), 7);
  EXPECT_TRUE(reader.eoc());
}

TEST(cDeserializeBinary, ReadsFromALiteral)
{
  mstd::cConstCStringRef literal("\x0d\x01\x01\x01");
  cDeserializeBinary reader{mstd::tConstArrayRef<char>(literal)};
  EXPECT_EQ(messageOf([&] { loaded<int>(reader); }), mismatch("piInt32", "unknown type"));
}

TEST_P(InArrayAndElsewhere, EveryNumberComesBack)
{
  cSource reader(source(bytes("02 00 00 00 F1  03 00 00 00 FE  04 00 00 00 04 03 02 81  05 00 00 00 FE FF FF FF"
                              "06 00 00 00 08 07 06 05 04 03 02 81  07 00 00 00 FE FF FF FF FF FF FF FF"
                              "11 00 00 00 02 81  12 00 00 00 FE FF  09 00 00 00 00 00 00 00 00 00 04 C0")));
  EXPECT_EQ(loaded<unsigned char>(*reader), 0xF1);
  EXPECT_EQ(loaded<signed char>(*reader), -2);
  EXPECT_EQ(loaded<unsigned int>(*reader), 0x81020304u);
  EXPECT_EQ(loaded<int>(*reader), -2);
  EXPECT_EQ(loaded<unsigned long long>(*reader), 0x8102030405060708ull);
  EXPECT_EQ(loaded<long long>(*reader), -2);
  EXPECT_EQ(loaded<unsigned short>(*reader), 0x8102);
  EXPECT_EQ(loaded<short>(*reader), -2);
  EXPECT_EQ(loaded<double>(*reader), -2.5);
  EXPECT_TRUE(reader->eoc());
}

TEST_P(InArrayAndElsewhere, AnyWordButZeroIsTrue)
{
  cSource reader(source(word(8) + word(0) + word(8) + word(1) + word(8) + word(7) + word(8) + word(0x80000000u)));
  EXPECT_FALSE(loaded<bool>(*reader));
  EXPECT_TRUE(loaded<bool>(*reader));
  EXPECT_TRUE(loaded<bool>(*reader));
  EXPECT_TRUE(loaded<bool>(*reader));
}

TEST_P(InArrayAndElsewhere, TextsComeBack)
{
  cSource reader(source(text("rec") + text("") + text(std::string(1000, 'x')) + text(std::string("a\0b", 3)) + "" +
                        bytes("0B 00 00 00 01 00 00 00 41 00 00 00  10 00 00 00 01 00 00 00 41"
                              "0B 00 00 00 00 00 00 00  10 00 00 00 00 00 00 00"
                              "0B 00 00 00 02 00 00 00 FF FF FF FF 00 00 00 00"
                              "10 00 00 00 05 00 00 00 7A C3 A4 7A 7A")));
  EXPECT_EQ(textOf(*reader), "rec");
  EXPECT_EQ(textOf(*reader), "");
  EXPECT_EQ(textOf(*reader), std::string(1000, 'x'));
  EXPECT_EQ(textOf(*reader), std::string("a\0b", 3));
  EXPECT_EQ(charsOf(*reader), std::vector<unsigned int>{'A'});
  EXPECT_EQ(charsOf(*reader), std::vector<unsigned int>{'A'});
  EXPECT_EQ(charsOf(*reader), std::vector<unsigned int>{});
  EXPECT_EQ(charsOf(*reader), std::vector<unsigned int>{});
  EXPECT_EQ(charsOf(*reader), (std::vector<unsigned int>{0xFFFFFFFFu, 0}));
  EXPECT_EQ(charsOf(*reader), (std::vector<unsigned int>{'z', 0xE4, 'z', 'z'}));
  EXPECT_TRUE(reader->eoc());
}

TEST_P(InArrayAndElsewhere, ALoadedTextHasTheSettingsOfAFreshOne)
{
  for (unsigned int length : {0u, 5u, 32u, 33u, 100u})
  {
    cSource reader(source(text(std::string(length, 'x')) + word(16) + word(length) + std::string(length, 'x')));
    for (mstd::cAsciiString target : {mstd::cAsciiString(), mstd::cAsciiString(std::string(70, 'y').c_str())})
    {
      target.setGrowStep(2);
      target.setFitOnErase(false);
      reader->rewind();
      reader->load(target);
      mstd::cAsciiString fresh;
      EXPECT_EQ(target.growStep(), fresh.growStep());
      EXPECT_EQ(target.fitOnErase(), fresh.fitOnErase());
      EXPECT_EQ(target.length(), length);
      mucs::cString wide("some text");
      wide.setGrowStep(7);
      wide.setFitOnErase(true);
      reader->load(wide);
      mucs::cString freshWide;
      EXPECT_EQ(wide.growStep(), freshWide.growStep());
      EXPECT_EQ(wide.fitOnErase(), freshWide.fitOnErase());
      EXPECT_EQ(wide.length(), length);
    }
  }
}

TEST_P(InArrayAndElsewhere, ALoadedTextHasThePoolOfAFreshOne)
{
  for (unsigned int length : {0u, 5u, 31u, 32u, 33u})
  {
    cSource reader(source(text(std::string(length, 'x')) + word(16) + word(length) + std::string(length, 'x')));
    mstd::cAsciiString first;
    mucs::cString firstWide;
    reader->load(first);
    reader->load(firstWide);
    for (unsigned int before : {0u, 40u, 1000u})
    {
      mstd::cAsciiString again(std::string(before, 'y').c_str());
      mucs::cString againWide(std::string(before, 'y').c_str());
      reader->rewind();
      reader->load(again);
      reader->load(againWide);
      EXPECT_EQ(again.capacity(), first.capacity()) << length << " " << before;
      EXPECT_EQ(againWide.capacity(), firstWide.capacity()) << length << " " << before;
    }
  }
}

TEST_P(InArrayAndElsewhere, ReadingIntoTheSameTextAgainAndAgainWorks)
{
  std::string stream;
  for (unsigned int i = 0; i < 70; ++i)
  {
    stream += text(std::string((i * 7) % 40, 'x')) + word(16) + word(i % 9) + std::string(i % 9, 'y');
  }
  cSource reader(source(stream));
  mstd::cAsciiString ascii;
  mucs::cString wide;
  for (unsigned int i = 0; i < 70; ++i)
  {
    reader->load(ascii);
    reader->load(wide);
    EXPECT_EQ(support::toString(ascii), std::string((i * 7) % 40, 'x'));
    EXPECT_EQ(support::toString(wide), std::string(i % 9, 'y'));
  }
}

TEST_P(InArrayAndElsewhere, EveryCharacterComesBackFromUTF8)
{
  for (unsigned int const at :
       {1u, 0x7Fu, 0x80u, 0x7FFu, 0x800u, 0xFFFu, 0x1000u, 0xD800u, 0xFFFFu, 0x10000u, 0x30D3Fu})
  {
    unsigned int const chars[] = {'a', at, 'z', at};
    mucs::cString text;
    text.append(chars, 4);
    cSerializeBinary serializer;
    serializer.setStringStoreMode(cSerializeBinary::StoreUTF8);
    serializer.store(text);
    serializer.store(1);
    serializer.rewind();
    serializer.store(text); // the buffer has room now
    serializer.store(1);
    std::string const stream = support::written(serializer);
    mstd::tArray<char> const utf8 = text.toUTF8();
    EXPECT_EQ(stream, word(16) + word(utf8.length()) + support::stringOf(utf8) + number(1)) << at;
    cSource reader(source(stream));
    EXPECT_EQ(charsOf(*reader), std::vector<unsigned int>(chars, chars + 4)) << at;
    EXPECT_EQ(loaded<int>(*reader), 1);
  }
}

TEST_P(InArrayAndElsewhere, WhatIsNotQuiteUTF8IsReadAsTheDecoderDoes)
{
  for (char const* listing : {"C0 80", "C1 81", "E0 81 81", "E0 A0 80", "C3 41", "E2 41 41", "80", "BF 41",
                              "F0 9F 98 80", "61 C3 A4 80", "C3", "E2 82", "00", "61 00", "FF", "F8 88 80 80 80"})
  {
    std::string const content = bytes(listing);
    mstd::tArray<char> array = support::arrayOf(content);
    mucs::cString expected;
    std::string const failure = messageOf([&] { expected.fromUTF8(mstd::tConstArrayRef<char>(array)); });
    cSource reader(source(word(16) + word(static_cast<unsigned int>(content.size())) + content));
    mucs::cString found("before");
    EXPECT_EQ(messageOf([&] { reader->load(found); }), failure) << listing;
    if (failure == "nothing")
    {
      EXPECT_TRUE(found == expected) << listing;
    }
    else
    {
      EXPECT_TRUE(found == "before") << listing;
      EXPECT_EQ(reader->currentPos(), 0u) << listing;
    }
  }
}

TEST_P(InArrayAndElsewhere, BlocksComeBackInBothForms)
{
  cSource reader(source(word(1) + word(3) + "abc" + word(1) + word(0) + word(14) + word(2) + word(0) + "de" + word(14) +
                        word(2) + word(77) + "fg" + word(1) + word(100) + std::string(100, 'z')));
  EXPECT_EQ(blockOf(*reader), "abc");
  EXPECT_EQ(blockOf(*reader), "");
  EXPECT_EQ(blockOf(*reader), "de");
  EXPECT_EQ(blockOf(*reader), "fg"); // only the low half of the size counts
  EXPECT_EQ(blockOf(*reader), std::string(100, 'z'));
  EXPECT_TRUE(reader->eoc());
}

TEST_P(InArrayAndElsewhere, GetNextBlockInfoOnlyLooks)
{
  cSource reader(source(label("l") + word(14) + word(2) + word(77) + "de" + number(1)));
  unsigned int position = 0;
  unsigned long long size = 0;
  reader->getNextBlockInfo(position, size);
  EXPECT_EQ(position, 25u);
  EXPECT_EQ(size, 2u);
  EXPECT_EQ(reader->currentPos(), 0u);
  EXPECT_EQ(blockOf(*reader), "de");
  EXPECT_EQ(messageOf([&] { reader->getNextBlockInfo(position, size); }), mismatch("piInt32", "block", "l"));
}

TEST(cDeserializeBinary, ABlockMayBeReadIntoTheArrayThatItComesFrom)
{
  mstd::tArray<char> array = support::arrayOf(word(1) + word(5) + "abcde");
  cDeserializeBinary reader{mstd::tConstArrayRef<char>(array)};
  reader.loadBlock(array);
  EXPECT_EQ(support::stringOf(array), "abcde");
}

TEST(cDeserializeBinary, ABlockKeepsTheSettingsOfItsTarget)
{
  cSource reader(word(1) + word(100) + std::string(100, 'z'));
  mstd::tArray<char> target;
  target.setGrowStep(9);
  target.setFitOnErase(false);
  reader->loadBlock(target);
  EXPECT_EQ(target.growStep(), 9u);
  EXPECT_FALSE(target.fitOnErase());
}

TEST_P(InArrayAndElsewhere, TheWholeExampleIsRead)
{
  cSource reader(source(bytes(Golden)));
  EXPECT_EQ(support::toString(reader->getNextContextTypeName()), "rec");
  cContext context(reader->getContext("rec"));
  EXPECT_TRUE(reader->isLabel());
  EXPECT_FALSE(reader->eoc());
  EXPECT_EQ(support::toString(reader->getNextLabelName()), "val");
  EXPECT_EQ(support::toString(reader->lastLabel()), "");
  EXPECT_EQ(loaded<int>(*reader), 5);
  EXPECT_EQ(support::toString(reader->lastLabel()), "val");
  EXPECT_TRUE(reader->eoc());
  EXPECT_TRUE(reader->tryFindLabel("val")); // round the end
  EXPECT_EQ(reader->currentPos(), 46u);
  EXPECT_EQ(loaded<int>(*reader), 5);
  context.release();
  context.unset();
  EXPECT_EQ(reader->currentPos(), 54u);
}

TEST_P(InArrayAndElsewhere, AnotherTypeThanAskedForLeavesThePositionInFrontOfTheLabel)
{
  cSource reader(source(bytes(Golden)));
  cContext context(reader->getContext("rec"));
  EXPECT_EQ(reader->currentPos(), 31u);
  unsigned int value = 77;
  support::cCaptureOut mute;
  try
  {
    reader->load(value);
    ADD_FAILURE();
  }
  catch (msa::cLabeledTypeMissmatchException const& e)
  {
    EXPECT_EQ(support::messageOf(e), mismatch("piUInt32", "piInt32", "val"));
    EXPECT_EQ(support::toString(e.lastLabel()), "val");
  }
  EXPECT_EQ(reader->currentPos(), 31u);
  EXPECT_EQ(value, 77u);
  EXPECT_EQ(loaded<int>(*reader), 5);
}

TEST_P(InArrayAndElsewhere, WithoutALabelTheMismatchHasNone)
{
  cSource reader(source(number(1)));
  try
  {
    textOf(*reader);
    ADD_FAILURE();
  }
  catch (mstd::cTypeMissmatchException const& e)
  {
    EXPECT_EQ(dynamic_cast<msa::cLabeledTypeMissmatchException const*>(&e), nullptr);
    EXPECT_EQ(support::messageOf(e), mismatch("cAsciiString", "piInt32"));
  }
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST(cDeserializeBinary, AnEmptyLabelCountsAsNone)
{
  cSource reader(label("") + number(1));
  EXPECT_EQ(messageOf([&] { textOf(*reader); }), mismatch("cAsciiString", "piInt32"));
}

TEST(cDeserializeBinary, NoTypeIsWidened)
{
  cSource reader(word(17) + "ab");
  EXPECT_EQ(messageOf([&] { loaded<unsigned int>(*reader); }), mismatch("piUInt32", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<short>(*reader); }), mismatch("piInt16", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<bool>(*reader); }), mismatch("piBool", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<double>(*reader); }), mismatch("piDouble", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<unsigned char>(*reader); }), mismatch("piUChar", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<signed char>(*reader); }), mismatch("piChar", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<long long>(*reader); }), mismatch("piInt64", "piUInt16"));
  EXPECT_EQ(messageOf([&] { loaded<unsigned long long>(*reader); }), mismatch("piUInt64", "piUInt16"));
}

TEST_P(InArrayAndElsewhere, FourReadersNameTheTwoTypesInTheOtherOrder)
{
  for (bool labelled : {false, true})
  {
    cSource reader(source((labelled ? label("val") : "") + number(1)));
    auto const swapped = [&](char const* wanted) {
      return labelled ? mismatch("piInt32", wanted, "val") : mismatch("piInt32", wanted);
    };
    unsigned int a = 0;
    unsigned int b = 0;
    unsigned long long c = 0;
    EXPECT_EQ(messageOf([&] { reader->expectContext(a, b); }), swapped("context"));
    EXPECT_EQ(messageOf([&] { reader->getContext(nullptr); }), swapped("context"));
    EXPECT_EQ(messageOf([&] { reader->getNextContextTypeName(); }), swapped("context"));
    EXPECT_EQ(messageOf([&] { reader->getNextBlockInfo(a, c); }), swapped("block"));
    EXPECT_EQ(messageOf([&] { blockOf(*reader); }), swapped("block"));
    EXPECT_EQ(messageOf([&] { charsOf(*reader); }), swapped("unicode string"));
    EXPECT_EQ(reader->currentPos(), 0u);
  }
}

TEST_P(InArrayAndElsewhere, AContextOfAnotherNameIsNotEntered)
{
  cSource reader(source(bytes(Golden) + contextOf("")));
  EXPECT_EQ(messageOf([&] { reader->getContext("other"); }), mismatch("context rec", "context other"));
  EXPECT_EQ(messageOf([&] { reader->getContext(""); }), mismatch("context rec", "context "));
  EXPECT_EQ(messageOf([&] { reader->getContext("re"); }), mismatch("context rec", "context re"));
  EXPECT_EQ(reader->currentPos(), 0u);
  {
    cContext any(reader->getContext(nullptr));
    any.release();
  }
  EXPECT_EQ(messageOf([&] { reader->getContext("rec"); }), mismatch("context ", "context rec"));
  EXPECT_EQ(support::toString(reader->getNextContextTypeName()), "");
  cContext unnamed(reader->getContext("")); // none counts as the empty one
  EXPECT_TRUE(reader->eoc());
}

TEST(cDeserializeBinary, AContextOfAnotherNameTellsTheLastLabel)
{
  cSource reader(label("here") + contextOf(""));
  EXPECT_EQ(messageOf([&] { reader->getContext("rec"); }), mismatch("context ", "context rec", "here"));
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST_P(InArrayAndElsewhere, ACommittedContextLeavesTheReaderAtItsEnd)
{
  cSource reader(source(label("l") + bytes(Golden) + number(9)));
  {
    cContext context(reader->getContext("rec"));
    context.release();
    EXPECT_EQ(reader->currentPos(), 13u + 31u); // only the end of the guard moves
  }
  EXPECT_EQ(reader->currentPos(), 13u + 54u);
  EXPECT_EQ(loaded<int>(*reader), 9);
}

TEST_P(InArrayAndElsewhere, AnUncommittedContextRollsBackToItsIdBehindTheLabels)
{
  cSource reader(source(label("l") + bytes(Golden)));
  {
    cContext context(reader->getContext("rec"));
    loaded<int>(*reader);
  }
  EXPECT_EQ(reader->currentPos(), 13u);
  EXPECT_TRUE(reader->isContext());
}

TEST_P(InArrayAndElsewhere, NothingIsReadBehindTheEndOfAContext)
{
  cSource reader(source(contextOf(number(1)) + number(2)));
  cContext context(reader->getContext(nullptr));
  EXPECT_EQ(loaded<int>(*reader), 1);
  EXPECT_EQ(messageOf([&] { loaded<int>(*reader); }), EndOfContext);
  EXPECT_TRUE(reader->eocMayBeLabels());
  EXPECT_TRUE(reader->eocMayBeLabels(28));
  EXPECT_FALSE(reader->eocMayBeLabels(27));
  reader->rewind();
  EXPECT_EQ(reader->currentPos(), 20u);
  EXPECT_EQ(loaded<int>(*reader), 1);
  reader->releaseCurrentContext();
  EXPECT_EQ(reader->currentPos(), 28u);
  EXPECT_EQ(loaded<int>(*reader), 2);
  context.unset();
  EXPECT_EQ(reader->currentPos(), 36u);
}

TEST_P(InArrayAndElsewhere, AContextWithA64BitLengthIsRead)
{
  std::string const wide = word(15) + word(6) + word(28) + word(99) + word(8) + word(0) + number(3);
  cSource reader(source(wide + number(4)));
  EXPECT_TRUE(reader->isContext());
  {
    cContext context(reader->getContext(nullptr));
    EXPECT_EQ(loaded<int>(*reader), 3);
    EXPECT_TRUE(reader->eoc());
    context.release();
  }
  EXPECT_EQ(loaded<int>(*reader), 4);
}

TEST_P(InArrayAndElsewhere, ExpectContextReadsIdAndLengthOnly)
{
  cSource reader(source(label("l") + contextOf(number(1))));
  unsigned int length = 0;
  unsigned int position = 0;
  EXPECT_EQ(reader->expectContext(length, position), 13u);
  EXPECT_EQ(length, 24u);
  EXPECT_EQ(position, 17u);
  EXPECT_EQ(reader->currentPos(), 25u);
}

TEST_P(InArrayAndElsewhere, TrailingLabelsAreTheEnd)
{
  cSource reader(source(number(1) + label("a") + label("b")));
  EXPECT_FALSE(reader->eoc());
  loaded<int>(*reader);
  EXPECT_TRUE(reader->eoc());
  EXPECT_FALSE(reader->eocMayBeLabels());
  EXPECT_TRUE(reader->isLabel());
  EXPECT_EQ(reader->currentPos(), 8u);
  EXPECT_EQ(messageOf([&] { loaded<int>(*reader); }), EndOfContext);
  EXPECT_EQ(reader->currentPos(), 8u);
  EXPECT_EQ(support::toString(reader->lastLabel()), "b"); // it was passed, though the reading failed
}

TEST_P(InArrayAndElsewhere, AContextBehindALabelIsNoContextYet)
{
  cSource reader(source(label("l") + contextOf("")));
  EXPECT_FALSE(reader->isContext());
  EXPECT_TRUE(reader->isLabel());
  EXPECT_EQ(reader->currentPos(), 0u);
  EXPECT_EQ(support::toString(reader->getNextContextTypeName()), "");
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST(cDeserializeBinary, NeitherLabelNorContextAtTheEndOfAContext)
{
  cSource reader(contextOf("") + contextOf("") + label("l"));
  cContext context(reader->getContext(nullptr));
  EXPECT_FALSE(reader->isContext());
  EXPECT_FALSE(reader->isLabel());
}

TEST(cDeserializeBinary, TheNameOfTheNextLabelMustBeRightThere)
{
  cSource reader(number(1));
  EXPECT_EQ(messageOf([&] { reader->getNextLabelName(); }), mismatch("label", "piInt32"));
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST_P(InArrayAndElsewhere, GetNextTypeIdTellsWhereTheIdIs)
{
  cSource reader(source(label("l") + number(1)));
  cSerializeBinaryShared::PrivatedTypeIDs id = cSerializeBinaryShared::Invalid;
  EXPECT_EQ(reader->getNextTypeId(id, false), 0u);
  EXPECT_EQ(id, cSerializeBinaryShared::Label);
  EXPECT_EQ(reader->currentPos(), 4u);
  reader->rewind();
  EXPECT_EQ(reader->getNextTypeId(id, true), 13u);
  EXPECT_EQ(id, cSerializeBinaryShared::Int32);
  EXPECT_EQ(reader->currentPos(), 17u);
  reader->rewind();
  EXPECT_EQ(reader->expectTypeId(cSerializeBinaryShared::Int32), 13u);
  reader->rewind();
  EXPECT_EQ(reader->expectTypeId(cSerializeBinaryShared::Label), 0u);
  reader->rewind();
  EXPECT_EQ(messageOf([&] { reader->expectTypeId(cSerializeBinaryShared::Char); }), mismatch("piChar", "piInt32", "l"));
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST(cDeserializeBinary, ALabelWithoutItsTextIsNoLabel)
{
  cSource reader(word(13) + number(1));
  EXPECT_EQ(messageOf([&] { loaded<int>(*reader); }), mismatch("cAsciiString", "piInt32"));
  EXPECT_EQ(reader->currentPos(), 0u);
  EXPECT_EQ(messageOf([&] { reader->tryFindLabel("x"); }), mismatch("cAsciiString", "piInt32"));
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST_P(InArrayAndElsewhere, RawBytesAreReadAsTheyAre)
{
  cSource reader(source("abcdef"));
  char buffer[4] = "";
  reader->loadRaw(buffer, 3);
  EXPECT_EQ(std::string(buffer), "abc");
  EXPECT_EQ(reader->currentPos(), 3u);
  unsigned int position = 1;
  reader->loadRaw(position, buffer, 2);
  EXPECT_EQ(std::string(buffer), "bcc");
  EXPECT_EQ(position, 3u);
  reader->loadRaw(nullptr, 0);
  EXPECT_EQ(support::failureOf([&] { reader->loadRaw(buffer, 4); }), "range tConstArrayRef/provideData 2 4 0 3");
  EXPECT_EQ(reader->currentPos(), 3u);
  position = 7;
  EXPECT_EQ(support::failureOf([&] { reader->loadRaw(position, buffer, 0); }),
            "range tConstArrayRef/provideData 0 7 0 5");
}

TEST_P(InArrayAndElsewhere, EveryPayloadIsSteppedOver)
{
  struct cCase
  {
    unsigned int id;
    std::string payload;
  };
  cCase const cases[] = {{1, word(3) + "abc"},
                         {2, "a"},
                         {3, "a"},
                         {4, "abcd"},
                         {5, "abcd"},
                         {6, "abcdefgh"},
                         {7, "abcdefgh"},
                         {8, "abcd"},
                         {9, "abcdefgh"},
                         {10, word(3) + "abc"},
                         {11, word(2) + "abcdefgh"},
                         {12, contextOf(number(1)).substr(4)},
                         {13, text("abc")},
                         {14, word(3) + word(0) + "abc"},
                         {15, word(6) + word(28) + word(0) + word(8) + word(0) + number(3)},
                         {16, word(3) + "abc"},
                         {17, "ab"},
                         {18, "ab"},
                         {0, ""},
                         {19, ""},
                         {0xFFFFFFFFu, ""}};
  for (cCase const& c : cases)
  {
    cSource reader(source(c.payload + "behind"));
    reader->skipType(static_cast<cSerializeBinaryShared::PrivatedTypeIDs>(c.id));
    EXPECT_EQ(reader->currentPos(), c.payload.size()) << c.id;
  }
}

TEST(cDeserializeBinary, SteppingOverALabelDoesNotLookAtTheIdOfItsText)
{
  cSource reader(word(99) + word(3) + "abc");
  reader->skipType(cSerializeBinaryShared::Label);
  EXPECT_EQ(reader->currentPos(), 11u);
  EXPECT_EQ(support::toString(reader->lastLabel()), "");
}

TEST(cDeserializeBinary, SteppingBehindTheEndDoesNotWrap)
{
  cSource reader(word(0xFFFFFFFFu) + word(0xFFFFFFFFu));
  for (unsigned int id : {1u, 10u, 11u, 14u, 16u})
  {
    reader->rewind();
    reader->skipType(static_cast<cSerializeBinaryShared::PrivatedTypeIDs>(id));
    EXPECT_EQ(reader->currentPos(), 0xFFFFFFFFu) << id;
    EXPECT_TRUE(reader->eoc());
    EXPECT_EQ(messageOf([&] { loaded<int>(*reader); }), EndOfContext);
  }
}

TEST_P(InArrayAndElsewhere, SteppingOverABlockTakesAll64BitsOfItsSize)
{
  cSource reader(source(word(3) + word(1) + "abc" + number(1)));
  reader->skipType(cSerializeBinaryShared::RawBytes64);
  EXPECT_EQ(reader->currentPos(), 0xFFFFFFFFu);
}

TEST_P(InArrayAndElsewhere, TheSearchForALabelWrapsAround)
{
  cSource reader(source(label("a") + number(1) + contextOf(label("inner") + number(2)) + label("b") + text("x") +
                        label("a") + number(3)));
  EXPECT_EQ(&reader->findLabel("b"), &*reader);
  EXPECT_EQ(textOf(*reader), "x");
  reader->findLabel("a");
  EXPECT_EQ(loaded<int>(*reader), 3);
  reader->findLabel("a");
  EXPECT_EQ(loaded<int>(*reader), 1);
  EXPECT_EQ(support::toString(reader->lastLabel()), "a");
  unsigned int const before = reader->currentPos();
  EXPECT_FALSE(reader->tryFindLabel("inner"));
  EXPECT_FALSE(reader->tryFindLabel(""));
  EXPECT_EQ(reader->currentPos(), before);
  EXPECT_EQ(messageOf([&] { reader->findLabel("inner"); }),
            "Unable to deserialize - label (\"inner\") not found in current context!");
  EXPECT_EQ(reader->currentPos(), before);
  bool found = true;
  reader->trySeekToLabel("none", found);
  EXPECT_FALSE(found);
  reader->trySeekToLabel("b", found);
  EXPECT_TRUE(found);
}

TEST_P(InArrayAndElsewhere, TheSearchStaysInTheContext)
{
  cSource reader(source(label("outer") + number(0) + contextOf(number(1) + label("in") + number(2)) + label("behind")));
  loaded<int>(*reader);
  cContext context(reader->getContext(nullptr));
  EXPECT_FALSE(reader->tryFindLabel("outer"));
  EXPECT_FALSE(reader->tryFindLabel("behind"));
  EXPECT_TRUE(reader->tryFindLabel("in"));
  EXPECT_EQ(loaded<int>(*reader), 2);
  EXPECT_TRUE(reader->tryFindLabel("in"));
}

TEST_P(InArrayAndElsewhere, AnUnknownIdEndsTheSearch)
{
  for (unsigned int id : {19u, 20u, 0xFFFFFFFFu})
  {
    cSource reader(source(number(1) + word(id) + label("l")));
    EXPECT_EQ(messageOf([&] { reader->tryFindLabel("l"); }), invalidId(id));
    EXPECT_EQ(messageOf([&] { reader->findLabel("l"); }), invalidId(id));
    EXPECT_EQ(reader->currentPos(), 0u);
  }
}

TEST(cDeserializeBinary, TheSearchPassesTheIdZeroAndEveryValue)
{
  cSource reader(word(0) + word(0) + word(2) + "a" + word(17) + "ab" + word(14) + word(1) + word(0) + "x" + word(9) +
                 "abcdefgh" + word(16) + word(1) + "x" + word(11) + word(1) + "abcd" + word(1) + word(1) + "x" +
                 label("l") + number(7));
  reader->findLabel("l");
  EXPECT_EQ(loaded<int>(*reader), 7);
}

TEST_P(InArrayAndElsewhere, ACutPayloadIsARangeException)
{
  std::string const stream = bytes("06 00 00 00 08 07 06");
  cSource reader(source(stream));
  EXPECT_EQ(support::failureOf([&] { loaded<unsigned long long>(*reader); }),
            "range tConstArrayRef/provideData 2 8 0 3");
  EXPECT_EQ(reader->currentPos(), 0u);
  cSource id(source("abc"));
  EXPECT_EQ(support::failureOf([&] { loaded<int>(*id); }), "range tConstArrayRef/provideData 2 4 0 3");
  EXPECT_EQ(support::failureOf([&] { id->eoc(); }), "range tConstArrayRef/provideData 2 4 0 3");
  EXPECT_EQ(support::failureOf([&] { id->isLabel(); }), "range tConstArrayRef/provideData 2 4 0 3");
  EXPECT_EQ(id->currentPos(), 0u);
}

TEST_P(InArrayAndElsewhere, AForgedCountIsARangeExceptionAndTakesNoMemory)
{
  for (unsigned int count : {4u, 0x10000000u, 0x3FFFFFFFu, 0x7FFFFFFFu, 0xFFFFFFF0u, 0xFFFFFFFFu})
  {
    char const* const expected = count > 0xFFFFFFFFu - 8 ? "bounds" : "range";
    for (unsigned int id : {1u, 10u, 11u, 16u})
    {
      cSource reader(source(word(id) + word(count) + "abc"));
      std::string const failure = support::failureOf([&] {
        if (id == 1)
        {
          blockOf(*reader);
        }
        else if (id == 10)
        {
          textOf(*reader);
        }
        else
        {
          charsOf(*reader);
        }
      });
      bool const tooLong = id == 11 && count >= 0x3FFFFFFFu;
      EXPECT_EQ(failure.substr(0, failure.find(' ')), tooLong ? "bounds" : expected) << id << " " << count;
      EXPECT_EQ(reader->currentPos(), 0u);
      EXPECT_EQ(messageOf([&] { copied(*reader); }).empty(), false);
      EXPECT_EQ(reader->currentPos(), 0u);
    }
  }
}

TEST_P(InArrayAndElsewhere, AFailedReadLeavesTheTarget)
{
  cSource reader(source(word(16) + word(3) + bytes("61 00 61")));
  mucs::cString wide("before");
  EXPECT_THROW(reader->load(wide), mstd::cRuntimeException);
  EXPECT_EQ(support::toString(wide), "before");
  EXPECT_EQ(reader->currentPos(), 0u);
  cSource cut(source(word(1) + word(9) + "abc"));
  mstd::tArray<char> block = support::arrayOf("before");
  EXPECT_NE(messageOf([&] { cut->loadBlock(block); }), "nothing");
  EXPECT_EQ(support::stringOf(block), "before");
}

TEST_P(InArrayAndElsewhere, ALengthBehindTheDataIsAcceptedUntilItIsRead)
{
  cSource reader(source(contextOf(number(1), 0xFFFFFFFFu)));
  {
    cContext context(reader->getContext(nullptr));
    EXPECT_EQ(loaded<int>(*reader), 1);
    EXPECT_TRUE(reader->eoc());
    EXPECT_EQ(messageOf([&] { loaded<int>(*reader); }), EndOfContext);
    context.release();
  }
  EXPECT_EQ(reader->currentPos(), 0xFFFFFFFFu);
  EXPECT_TRUE(reader->eoc());
  reader->rewind();
  EXPECT_FALSE(reader->tryFindLabel("none"));
  EXPECT_EQ(reader->currentPos(), 0u);
  EXPECT_EQ(copied(*reader), contextOf(number(1)));
}

TEST_P(InArrayAndElsewhere, AContextThatEndsBeforeItsContentIsRefused)
{
  for (unsigned int length = 0; length < 16; ++length)
  {
    cSource reader(source(contextOf(number(1), length) + label("l")));
    EXPECT_EQ(messageOf([&] { reader->getContext(nullptr); }), invalidId(12)) << length;
    EXPECT_EQ(messageOf([&] { reader->tryFindLabel("l"); }), invalidId(12)) << length;
    EXPECT_EQ(messageOf([&] { copied(*reader); }), invalidId(12)) << length;
    EXPECT_EQ(reader->currentPos(), 0u);
  }
  std::string named = bytes(Golden);
  for (unsigned int length : {16u, 26u})
  {
    named.replace(8, 4, word(length));
    cSource reader(source(named + label("l")));
    EXPECT_EQ(messageOf([&] { reader->getContext("rec"); }), invalidId(12)) << length;
    EXPECT_EQ(messageOf([&] { reader->tryFindLabel("l"); }), invalidId(12)) << length;
    std::string flagged = named;
    flagged.replace(16, 4, word(7)); // as good a flag as 1
    cSource other(source(flagged + label("l")));
    EXPECT_EQ(messageOf([&] { other->tryFindLabel("l"); }), invalidId(12)) << length;
  }
  named.replace(8, 4, word(27));
  cSource reader(source(named));
  cContext context(reader->getContext("rec"));
  EXPECT_TRUE(reader->eoc());
}

TEST_P(InArrayAndElsewhere, AHeaderAcrossTheEndOfTheOuterContextIsReadIdById)
{
  std::string const named = word(12) + word(4) + word(27) + word(8) + word(1) + text("abc");
  std::string const unnamed = contextOf("");
  for (std::string const& inner : {named, unnamed})
  {
    unsigned int const lastId = inner == named ? 20 : 12; // an id must be in front of the end, its payload need not
    for (unsigned int covered = 0; covered <= inner.size(); ++covered)
    {
      cSource reader(source(contextOf(inner + number(1), 16 + covered)));
      cContext outer(reader->getContext(nullptr));
      std::string const outcome = messageOf([&] { cContext(reader->getContext(nullptr)).release(); });
      EXPECT_EQ(outcome, covered > lastId ? "nothing" : EndOfContext) << inner.size() << " " << covered;
      EXPECT_EQ(reader->currentPos(), covered > lastId ? 20 + inner.size() : 20u) << inner.size() << " " << covered;
    }
  }
}

TEST_P(InArrayAndElsewhere, ACutNameIsARangeExceptionAlsoIfNobodyAsksForIt)
{
  for (unsigned int count : {4u, 0x7FFFFFFFu, 0xFFFFFFF0u, 0xFFFFFFFFu})
  {
    // The length passes, so that only the name can be at fault.
    cSource reader(source(word(12) + word(4) + word(0xFFFFFFFFu) + word(8) + word(1) + word(10) + word(count) + "abc"));
    std::string const failure = support::failureOf([&] { reader->getContext(nullptr); });
    EXPECT_EQ(failure.substr(0, failure.find(' ')), count > 0xFFFFFFFFu - 28 ? "bounds" : "range") << count;
    EXPECT_EQ(support::failureOf([&] { reader->getNextContextTypeName(); }), failure) << count;
    EXPECT_EQ(reader->currentPos(), 0u);
  }
}

TEST(cDeserializeBinary, A64BitContextThatEndsBeforeItsContentIsRefusedAsSuch)
{
  cSource reader(word(15) + word(6) + word(5) + word(0) + word(8) + word(0) + number(3));
  EXPECT_EQ(messageOf([&] { reader->getContext(nullptr); }), invalidId(15));
  EXPECT_EQ(messageOf([&] { reader->tryFindLabel("l"); }), invalidId(15));
  EXPECT_EQ(messageOf([&] { copied(*reader); }), invalidId(15));
}

TEST(cDeserializeBinary, AContextWithoutAProperHeaderIsAMismatch)
{
  cSource length(word(12) + number(20) + word(8) + word(0));
  EXPECT_EQ(messageOf([&] { length->getContext(nullptr); }), mismatch("piUInt32", "piInt32"));
  EXPECT_EQ(messageOf([&] { length->tryFindLabel("l"); }), mismatch("piUInt32", "piInt32"));
  cSource flag(word(12) + word(4) + word(16) + number(1));
  EXPECT_EQ(messageOf([&] { flag->getContext(nullptr); }), mismatch("piBool", "piInt32"));
  cSource name(word(12) + word(4) + word(24) + word(8) + word(1) + number(1));
  EXPECT_EQ(messageOf([&] { name->getContext(nullptr); }), mismatch("cAsciiString", "piInt32"));
  cSource cut(word(12) + word(4) + word(24) + word(8));
  EXPECT_EQ(support::failureOf([&] { cut->getContext(nullptr); }), "range tConstArrayRef/provideData 2 4 0 0");
  cSource end(word(12));
  EXPECT_EQ(messageOf([&] { end->getContext(nullptr); }), EndOfContext);
  EXPECT_EQ(end->currentPos(), 0u);
}

TEST(cDeserializeBinary, LabelsInAHeaderArePassed)
{
  cSource reader(word(12) + label("x") + word(4) + word(16 + 26 + 8) + label("y") + word(8) + word(0) + number(3));
  cContext context(reader->getContext(nullptr));
  EXPECT_EQ(loaded<int>(*reader), 3);
  EXPECT_TRUE(reader->eocMayBeLabels());
  EXPECT_EQ(support::toString(reader->lastLabel()), "y");
}

TEST_P(InArrayAndElsewhere, ReserializeCopiesTheRestAndStays)
{
  std::string const values = bytes("01 00 00 00 03 00 00 00 'abc' 02 00 00 00 01 03 00 00 00 FF 04 00 00 00 04 03 02 81"
                                   "05 00 00 00 FE FF FF FF 06 00 00 00 01 02 03 04 05 06 07 08"
                                   "07 00 00 00 01 02 03 04 05 06 07 F8 08 00 00 00 01 00 00 00"
                                   "09 00 00 00 00 00 00 00 00 00 F0 3F 0A 00 00 00 03 00 00 00 'rec'"
                                   "0B 00 00 00 01 00 00 00 41 00 00 00 11 00 00 00 01 02 12 00 00 00 01 F2"
                                   "01 00 00 00 00 00 00 00") +
                             contextOf(contextOf("") + number(4)) + bytes(Golden).substr(0, 31) + number(5) + number(5);
  std::string stream = values;
  size_t const golden = values.size() - 16;
  stream.insert(golden, label("val"));
  stream.replace(golden - 31 + 8, 4, word(27 + 15 + 16));
  std::string expected = values;
  expected.replace(golden - 31 + 8, 4, word(27 + 16));
  cSource reader(source(number(0) + stream));
  loaded<int>(*reader);
  EXPECT_EQ(copied(*reader), expected);
  EXPECT_EQ(copied(*reader, true), stream);
  EXPECT_EQ(reader->currentPos(), 8u);
}

TEST_P(InArrayAndElsewhere, TheTargetDecidesTheFormOfATextAndWhatIsTrue)
{
  cSource reader(source(bytes("0B 00 00 00 01 00 00 00 41 00 00 00 10 00 00 00 02 00 00 00 C3 A4"
                              "08 00 00 00 06 00 00 00 00 00 00 00 13 00 00 00")));
  EXPECT_EQ(copied(*reader), bytes("0B 00 00 00 01 00 00 00 41 00 00 00 0B 00 00 00 01 00 00 00 E4 00 00 00"
                                   "08 00 00 00 01 00 00 00"));
  cSerializeBinary target;
  target.setStringStoreMode(cSerializeBinary::StoreUTF8);
  reader->reserialize(target);
  EXPECT_EQ(support::written(target), bytes("10 00 00 00 01 00 00 00 41 10 00 00 00 02 00 00 00 C3 A4"
                                            "08 00 00 00 01 00 00 00"));
}

TEST(cDeserializeBinary, ReserializeMakesAnEmptyNameNone)
{
  cSource reader(bytes("0C 00 00 00 04 00 00 00 18 00 00 00 08 00 00 00 01 00 00 00 0A 00 00 00 00 00 00 00"));
  EXPECT_EQ(copied(*reader), contextOf(""));
}

TEST(cDeserializeBinary, ReserializeMakesA64BitContextAPlainOne)
{
  cSource reader(word(15) + word(6) + word(28) + word(0) + word(8) + word(0) + number(3));
  EXPECT_EQ(copied(*reader), contextOf(number(3)));
}

TEST(cDeserializeBinary, ReserializeCopiesOnlyTheCurrentContext)
{
  cSource reader(contextOf(number(1) + number(2)) + number(3));
  cContext context(reader->getContext(nullptr));
  loaded<int>(*reader);
  EXPECT_EQ(copied(*reader), number(2));
  EXPECT_EQ(loaded<int>(*reader), 2);
  EXPECT_TRUE(reader->eoc());
}

TEST_P(InArrayAndElsewhere, ReserializeHasNoCaseForABlockWithA64BitSize)
{
  for (unsigned int id : {14u, 20u, 0xFFFFFFFFu})
  {
    cSource reader(source(number(1) + contextOf(number(2) + word(id) + word(1) + word(0) + "x")));
    cSerializeBinary target;
    EXPECT_EQ(messageOf([&] { reader->reserialize(target); }), invalidId(id));
    EXPECT_EQ(reader->currentPos(), 0u);
    EXPECT_FALSE(reader->eocMayBeLabels(30));       // the end is that of the data again
    EXPECT_EQ(support::written(target), number(1)); // the context there was taken back
  }
}

TEST_P(InArrayAndElsewhere, AContextThatReachesBeyondTheOuterIsNotCopied)
{
  std::string const inner = contextOf(number(1), 24 + 8);
  cSource reader(source(contextOf(inner) + number(2) + number(3)));
  EXPECT_EQ(messageOf([&] { copied(*reader); }), invalidId(12));
  EXPECT_EQ(reader->currentPos(), 0u);
  cSource behind(source(contextOf(contextOf(number(1), 0x10000000u), 0x20000000u)));
  EXPECT_EQ(copied(*behind), contextOf(contextOf(number(1)))); // both only behind the data
}

TEST_P(InArrayAndElsewhere, AValueThatGoesOnBehindItsContextIsNotCopiedOn)
{
  cSource reader(source(contextOf(number(1).substr(0, 4), 20) + word(1) + number(2)));
  {
    cContext context(reader->getContext(nullptr));
    EXPECT_EQ(loaded<int>(*reader), 1); // only the start of a value must be in the context
    EXPECT_TRUE(reader->eoc());
    context.release();
  }
  EXPECT_EQ(reader->currentPos(), 24u);
  reader->rewind();
  EXPECT_EQ(messageOf([&] { copied(*reader); }), invalidId(12));
}

TEST(cDeserializeBinary, OverlappingContextsDoNotMultiplyTheWork)
{
  // Each of these contexts would be copied twice as often as the one before.
  std::string stream;
  for (int i = 0; i < 5000; ++i)
  {
    stream += contextOf("", 40) + contextOf("", 0x7FFFFFFFu);
  }
  cSource reader(stream);
  EXPECT_EQ(messageOf([&] { copied(*reader); }), invalidId(12));
}

TEST(cDeserializeBinary, AMillionNestedContextsAreCopiedSteppedOverAndSearched)
{
  unsigned int const depth = 1000000;
  std::string stream;
  stream.reserve(20 * depth + 40);
  for (unsigned int i = 0; i < depth; ++i)
  {
    stream += contextOf("", 20 * (depth - i) - 4);
  }
  std::string const whole = stream + label("behind") + number(1);
  cSource reader(whole);
  EXPECT_EQ(copied(*reader, true), whole);
  EXPECT_TRUE(reader->tryFindLabel("behind"));
  reader->rewind();
  cSource forged(std::string(whole).replace(0, 12, word(12) + word(4) + word(0xFFFFFFFFu)));
  EXPECT_FALSE(forged->tryFindLabel("behind"));
  forged->rewind();
  EXPECT_EQ(copied(*forged, true).size(), whole.size());
  std::string cut = whole.substr(0, 20 * depth - 10);
  cSource broken(cut);
  EXPECT_NE(messageOf([&] { copied(*broken); }), "nothing");
  EXPECT_EQ(broken->currentPos(), 0u);

  std::vector<std::unique_ptr<msa::cAbstractContextData>> open;
  while (reader->isContext())
  {
    open.emplace_back(reader->getContext(nullptr).unguardImpl());
  }
  EXPECT_EQ(open.size(), depth);
  EXPECT_TRUE(reader->eoc());
  while (!open.empty())
  {
    open.pop_back();
  }
  EXPECT_EQ(reader->currentPos(), 0u);
}

TEST(cDeserializeBinary, SetDataStartsAnew)
{
  mstd::tArray<char> first = support::arrayOf(contextOf(number(1)));
  mstd::tArray<char> second = support::arrayOf(number(2) + number(3));
  cDeserializeBinary reader{mstd::tConstArrayRef<char>(first)};
  std::unique_ptr<msa::cAbstractContextData> context(reader.getContext(nullptr).unguardImpl());
  reader.setData(second);
  EXPECT_EQ(reader.currentPos(), 0u);
  EXPECT_EQ(loaded<int>(reader), 2);
  context->release();
  static_cast<msa::cSBinaryLoadContextData*>(context.get())->rewind();
  context.reset(); // too late to move anything
  EXPECT_EQ(reader.currentPos(), 8u);
  EXPECT_EQ(loaded<int>(reader), 3);
  EXPECT_TRUE(reader.eoc());
}

TEST(cDeserializeBinary, TheDataOfAContextRewindsToItsContent)
{
  cSource reader(contextOf(number(1)));
  std::unique_ptr<msa::cAbstractContextData> context(reader->getContext(nullptr).unguardImpl());
  loaded<int>(*reader);
  static_cast<msa::cSBinaryLoadContextData*>(context.get())->rewind();
  EXPECT_EQ(reader->currentPos(), 20u);
}

TEST(cDeserializeBinary, AGuardMayOutliveTheDeserializer)
{
  auto reader = std::make_unique<cSource>(contextOf(contextOf(number(1))));
  cContext outer((*reader)->getContext(nullptr));
  cContext inner((*reader)->getContext(nullptr));
  reader.reset();
  inner.release();
  inner.unset();
  EXPECT_NO_THROW(outer.unset());
}

TEST(cDeserializeBinary, ClosingAContextClosesThoseInIt)
{
  cSource reader(contextOf(contextOf(number(1)) + number(2)) + number(3));
  cContext outer(reader->getContext(nullptr));
  cContext inner(reader->getContext(nullptr));
  outer.release();
  outer.unset();
  EXPECT_EQ(loaded<int>(*reader), 3);
  inner.release();
  inner.unset();
  EXPECT_TRUE(reader->eoc());
}

TEST(cDeserializeBinary, TheArrayMayMoveAndShrinkBetweenTwoReads)
{
  mstd::tArray<char> array = support::arrayOf(number(1) + number(2) + text("abc"));
  cDeserializeBinary reader{mstd::tConstArrayRef<char>(array)};
  EXPECT_EQ(loaded<int>(reader), 1);
  std::string const more(1000000, 'x');
  array.append(more.data(), 1000000);
  EXPECT_EQ(loaded<int>(reader), 2);
  array.truncate(20);
  EXPECT_NE(messageOf([&] { textOf(reader); }), "nothing");
  EXPECT_EQ(reader.currentPos(), 16u);
  array.clear();
  EXPECT_NE(messageOf([&] { textOf(reader); }), "nothing");
  EXPECT_NE(messageOf([&] { copied(reader); }), "nothing");
  EXPECT_EQ(reader.currentPos(), 16u);
}

TEST(cDeserializeBinary, EveryCutOfAStreamEndsInAnExceptionOrIsWhole)
{
  std::string const stream = bytes(Golden) + text("abc") + word(16) + word(2) + "ab" + word(1) + word(2) + "ab";
  for (size_t length = 0; length < stream.size(); ++length)
  {
    for (bool elsewhere : {false, true})
    {
      cSource reader(stream.substr(0, length), elsewhere);
      std::string const failure = messageOf([&] {
        cContext context(reader->getContext("rec"));
        reader->findLabel("val");
        loaded<int>(*reader);
        context.release();
        context.unset();
        textOf(*reader);
        charsOf(*reader);
        blockOf(*reader);
      });
      EXPECT_NE(failure, "nothing") << length;
    }
  }
}

TEST(cDeserializeBinaryFault, OutOfMemoryLeavesPositionAndTargetAtEveryStep)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  std::string const stream = bytes(Golden) + text(std::string(100, 'x')) + word(16) + word(100) +
                             std::string(100, 'y') + word(16) + word(2) + bytes("C3 A4") + word(1) + word(100) +
                             std::string(100, 'z') + label(std::string(100, 'l')) + number(1);
  struct cStep
  {
    char const* name;
    std::function<void(cDeserializeBinary&)> run;
  };
  mstd::cAsciiString ascii;
  mucs::cString wide;
  mstd::tArray<char> block;
  mstd::cAsciiString const longLabel(std::string(100, 'l').c_str());
  cStep const steps[] = {{"name", [](cDeserializeBinary& r) { r.getNextContextTypeName(); }},
                         {"context",
                          [](cDeserializeBinary& r) {
                            cContext context(r.getContext("rec"));
                            context.release();
                          }},
                         {"text", [&](cDeserializeBinary& r) { r.load(ascii); }},
                         {"narrow", [&](cDeserializeBinary& r) { r.load(wide); }},
                         {"wide", [&](cDeserializeBinary& r) { r.load(wide); }},
                         {"block", [&](cDeserializeBinary& r) { r.loadBlock(block); }},
                         {"label name", [](cDeserializeBinary& r) { r.getNextLabelName(); }},
                         {"label", [&](cDeserializeBinary& r) { r.findLabel(longLabel); }}};
  for (bool elsewhere : {false, true})
  {
    std::unique_ptr<cSource> reader(new cSource(stream, elsewhere));
    unsigned int fired = 0;
    for (cStep const& step : steps)
    {
      for (unsigned int nth = 1;; ++nth)
      {
        ascii = "before";
        wide = "before";
        block = support::arrayOf("before");
        unsigned int const before = (*reader)->currentPos();
        bool failed = false;
        bool reached = false;
        {
          support::cAllocationFault fault(nth);
          try
          {
            step.run(**reader);
          }
          catch (std::bad_alloc const&)
          {
            failed = true;
          }
          reached = fault.hasFired();
        }
        if (!failed)
        {
          break;
        }
        EXPECT_TRUE(reached);
        ++fired;
        EXPECT_EQ((*reader)->currentPos(), before) << step.name << " " << nth;
        EXPECT_EQ(support::toString(ascii), "before");
        EXPECT_EQ(support::toString(wide), "before");
        EXPECT_EQ(support::stringOf(block), "before");
      }
    }
    EXPECT_EQ(loaded<int>(**reader), 1);
    EXPECT_GE(fired, support::cAllocationFault::seesMalloc() ? 6u : 1u);
  }
}

TEST(cDeserializeBinaryFault, OutOfMemoryInReserializeLeavesThePosition)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  std::string const stream = number(1) + contextOf(contextOf(text("abc") + word(16) + word(1) + "y") + number(2));
  unsigned int fired = 0;
  for (unsigned int nth = 1;; ++nth)
  {
    cSource reader(stream, nth % 2 == 0);
    cSerializeBinary target;
    bool failed = false;
    bool reached = false;
    {
      support::cAllocationFault fault(nth);
      try
      {
        reader->reserialize(target);
      }
      catch (std::bad_alloc const&)
      {
        failed = true;
      }
      reached = fault.hasFired();
    }
    EXPECT_EQ(reader->currentPos(), 0u);
    EXPECT_FALSE(reader->eocMayBeLabels(static_cast<unsigned int>(stream.size()) - 1));
    EXPECT_NO_THROW(target.data()); // no context is left open
    if (!reached)
    {
      EXPECT_FALSE(failed);
      break;
    }
    fired += failed ? 1 : 0;
  }
  EXPECT_GE(fired, 2u);
}
