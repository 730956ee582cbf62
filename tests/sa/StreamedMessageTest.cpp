// Messages on a stream.

#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversionFormat.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "std/tList.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"
#include "support/streamItems.h"
#include "ucs/cLIItem.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using support::toString;

/// For a deserializer, which takes it over.
mstd::tAutoPtr<mstd::tArray<char>> given(std::string const& bytes)
{
  return mstd::tAutoPtr<mstd::tArray<char>>(new mstd::tArray<char>(support::arrayOf(bytes)));
}

support::cItem text(std::string const& bytes)
{
  support::cItem item;
  item.kind = "cAsciiString";
  item.bytes = bytes;
  return item;
}

support::cItem wide(std::string const& ascii)
{
  support::cItem item;
  item.kind = "cString32";
  item.points.assign(ascii.begin(), ascii.end());
  return item;
}

support::cItem number(char const* pKind, unsigned int iValue)
{
  support::cItem item;
  item.kind = pKind;
  item.number = iValue;
  return item;
}

support::cItem context(support::tItems const& items)
{
  support::cItem item;
  item.kind = "context";
  item.items = items;
  return item;
}

support::cItem message(std::string const& key, unsigned int iScanPosition, bool bTranslatable,
                       support::tItems const& parameters)
{
  return context({context(
      {text(key), number("piUInt32", iScanPosition), number("piBool", bTranslatable ? 1 : 0), context(parameters)})});
}

std::string bytesOf(support::tItems const& items)
{
  msa::cSerializeBinary serializer;
  support::write(items, serializer);
  return support::written(serializer);
}

std::string bytesOf(mucs::cLIMessage const& message)
{
  msa::cSerializeBinary serializer;
  message >> serializer;
  return support::written(serializer);
}

/// A message with a parameter of each kind.
mucs::cLIMessage sample()
{
  mucs::cLIMessage message;
  message << "$MTR$File %file% has %count% lines, %part% read, %rest% left!"
          << "a.txt" << 12 << 0.5;
  return message;
}

support::cItem sampleItem()
{
  std::string const key = "File %file% has %count% lines, %part% read, %rest% left!";
  support::cItem item = message(key, sample().scanPosition(), true,
                                {text("%file"), wide("a.txt"), number("piUInt32", 0), text("%count"), wide("12"),
                                 number("piUInt32", 1), text("%part"), wide("0.5"), number("piUInt32", 2)});
  // The value of the double is the text that the message has made of it.
  unsigned int index = 0;
  mucs::cLIMessage const whole = sample();
  for (mucs::cLIItem const& parameter : whole.items())
  {
    if (index == 2)
    {
      item.items[0].items[3].items[7] = wide(toString(parameter.value()));
    }
    ++index;
  }
  return item;
}

TEST(StreamedMessage, KeyPositionFlagAndParametersInThreeUnnamedContexts)
{
  msa::cSerializeBinary serializer;
  mucs::cLIMessage const message = sample();
  EXPECT_EQ(&(message >> serializer), &serializer);
  EXPECT_EQ(support::toHex(support::written(serializer)), support::toHex(bytesOf({sampleItem()})));
}

TEST(StreamedMessage, EmptyMessageHasAnEmptyListOfParameters)
{
  mucs::cLIMessage const message;
  EXPECT_EQ(bytesOf(message), bytesOf({::message("", 0, message.isTranslatable(), {})}));
  msa::cDeserializeBinary deserializer(given(bytesOf(message)));
  mucs::cLIMessage read = sample();
  read << deserializer;
  EXPECT_TRUE(read.key().empty());
  EXPECT_TRUE(read.items().empty());
  EXPECT_EQ(read.scanPosition(), 0u);
}

TEST(StreamedMessage, ComesBack)
{
  msa::cDeserializeBinary deserializer(given(bytesOf(sample())));
  mucs::cLIMessage read;
  read << "$MNTR$other %text%"
       << "gone";
  EXPECT_EQ(&(read << deserializer), &deserializer);
  EXPECT_TRUE(deserializer.eoc());
  EXPECT_EQ(toString(read), toString(sample()));
  EXPECT_EQ(toString(read.key()), toString(sample().key()));
  EXPECT_EQ(read.scanPosition(), sample().scanPosition());
  EXPECT_TRUE(read.isTranslatable());
  EXPECT_EQ(read.items().length(), 3u);
  EXPECT_EQ(bytesOf(read), bytesOf(sample()));
}

TEST(StreamedMessage, NotToBeTranslatedTravels)
{
  mucs::cLIMessage message;
  message << "$MNTR$plain";
  EXPECT_EQ(bytesOf(message), bytesOf({::message("plain", message.scanPosition(), false, {})}));
  msa::cDeserializeBinary deserializer(given(bytesOf(message)));
  mucs::cLIMessage read = sample();
  read << deserializer;
  EXPECT_FALSE(read.isTranslatable());
}

TEST(StreamedMessage, TakesFurtherParametersWhereTheOtherStopped)
{
  msa::cDeserializeBinary deserializer(given(bytesOf(sample())));
  mucs::cLIMessage read;
  read << deserializer;
  mucs::cLIMessage expected = sample();
  read << 7;
  expected << 7;
  EXPECT_EQ(toString(read), toString(expected));
  EXPECT_NE(toString(read), toString(sample()));
  EXPECT_EQ(read.items().length(), 4u);
}

TEST(StreamedMessage, NumberFormatDoesNotTravel)
{
  mstd::cNumberConversionFormat const hex(16);
  mucs::cLIMessage formatted;
  formatted << hex;
  formatted << "$MTR$%a% %b%" << 255;
  ASSERT_EQ(formatted.numberConversionFormat().base(), 16u);
  msa::cDeserializeBinary deserializer(given(bytesOf(formatted)));
  mucs::cLIMessage read;
  read << deserializer;
  EXPECT_NE(read.numberConversionFormat().base(), 16u);
  EXPECT_EQ(toString(read), toString(formatted)); // the number is text by then

  // That of the reader stays its own.
  msa::cDeserializeBinary again(given(bytesOf(sample())));
  formatted << again;
  EXPECT_EQ(formatted.numberConversionFormat().base(), 16u);
  EXPECT_EQ(toString(formatted), toString(sample()));
}

TEST(StreamedMessage, WideTextsAndStrangeKindsComeBack)
{
  support::cItem value = wide("");
  value.points = {0x20AC, 0x1F600};
  std::string const bytes = bytesOf({message("%a%", 3, true, {text("%a"), value, number("piUInt32", 77)})});
  msa::cDeserializeBinary deserializer(given(bytes));
  mucs::cLIMessage read;
  read << deserializer;
  ASSERT_EQ(read.items().length(), 1u);
  EXPECT_EQ((*read.items().begin()).kind(), 77u);
  EXPECT_EQ((*read.items().begin()).value().length(), 2u);
  EXPECT_EQ(bytesOf(read), bytes);
}

TEST(StreamedMessage, WhatStandsBehindItIsReadNext)
{
  msa::cSerializeBinary serializer;
  sample() >> serializer;
  4711 >> serializer;
  sample() >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mucs::cLIMessage read;
  int iBehind = 0;
  read << deserializer;
  iBehind << deserializer;
  EXPECT_EQ(iBehind, 4711);
  read << deserializer;
  EXPECT_TRUE(deserializer.eoc());
}

// The parameters carry no count, and the end of the data is the end of the context: data that ends between two of them
// is a message with fewer.
TEST(StreamedMessage, StaysAtEveryTruncationExceptBetweenTwoParameters)
{
  support::cCaptureOut mute;
  std::string const whole = bytesOf(sample());
  std::vector<unsigned int> lengths;
  for (size_t length = 0; length < whole.size(); ++length)
  {
    msa::cDeserializeBinary deserializer(given(whole.substr(0, length)));
    mucs::cLIMessage read;
    read << "$MNTR$kept %a% %b%"
         << "value";
    unsigned int const iPosition = read.scanPosition();
    try
    {
      read << deserializer;
      lengths.push_back(read.items().length());
      EXPECT_EQ(toString(read.key()), toString(sample().key())) << length;
    }
    catch (mstd::cAbstractException const&)
    {
      EXPECT_EQ(toString(read), "kept value ???") << length;
      EXPECT_EQ(read.scanPosition(), iPosition) << length;
      EXPECT_FALSE(read.isTranslatable()) << length;
    }
  }
  EXPECT_EQ(lengths, (std::vector<unsigned int>{0, 1, 2}));
}

TEST(StreamedMessage, FailureLeavesTheDeserializerBeforeTheMessage)
{
  support::cItem const broken = context({context({text("key"), number("piUInt32", 0), text("no flag")})});
  msa::cDeserializeBinary deserializer(given(bytesOf({broken})));
  mucs::cLIMessage read = sample();
  EXPECT_THROW(read << deserializer, mstd::cAbstractException);
  EXPECT_EQ(toString(read), toString(sample()));
  EXPECT_EQ(deserializer.currentPos(), 0u);
  EXPECT_TRUE(deserializer.isContext());
}

TEST(StreamedMessage, HalfAParameterIsRefused)
{
  for (unsigned int count : {1u, 2u})
  {
    support::tItems parameters = {text("%a"), wide("value"), number("piUInt32", 0)};
    parameters.resize(count);
    msa::cDeserializeBinary deserializer(given(bytesOf({message("%a%", 3, true, parameters)})));
    mucs::cLIMessage read = sample();
    EXPECT_THROW(read << deserializer, mstd::cAbstractException) << count;
    EXPECT_EQ(toString(read), toString(sample())) << count;
  }
}

TEST(StreamedMessage, ScanPositionBehindTheKeyIsHarmless)
{
  msa::cDeserializeBinary deserializer(given(bytesOf({message("%a%", 0xFFFFFFFFu, true, {})})));
  mucs::cLIMessage read;
  read << deserializer;
  EXPECT_EQ(toString(read), "???");
  read << "late" << 5;
  EXPECT_EQ(toString(read), "???"); // nothing is left to be filled
}

} // namespace
