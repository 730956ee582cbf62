// Dates on a stream.

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cDateTime.h"
#include "std/cTypeMissmatchException.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <string>

namespace
{

/// For a deserializer, which takes it over.
mstd::tAutoPtr<mstd::tArray<char>> given(std::string const& bytes)
{
  return mstd::tAutoPtr<mstd::tArray<char>>(new mstd::tArray<char>(support::arrayOf(bytes)));
}

char const* const Bare = "06 00 00 00 08 07 06 05 04 03 02 01";
char const* const Labelled = "0D 00 00 00 0A 00 00 00 08 00 00 00 'DateTime' 06 00 00 00 08 07 06 05 04 03 02 01";

mstd::cDateTime dateOf(piUInt64 iUSec)
{
  mstd::cDateTime date;
  date.set(iUSec);
  return date;
}

TEST(StreamedDate, MicrosecondsWithAndWithoutLabel)
{
  for (bool bLabels : {false, true})
  {
    msa::cSerializeBinary serializer;
    serializer.setPreferNoLabels(!bLabels);
    EXPECT_EQ(&(dateOf(0x0102030405060708ull) >> serializer), &serializer);
    EXPECT_EQ(support::written(serializer), support::bytes(bLabels ? Labelled : Bare));
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
    deserializer.setPreferNoLabels(!bLabels);
    mstd::cDateTime read = dateOf(1);
    EXPECT_EQ(&(read << deserializer), &deserializer);
    EXPECT_EQ(read.get(), 0x0102030405060708ull);
    EXPECT_TRUE(deserializer.eoc());
  }
}

TEST(StreamedDate, LabelIsFoundBehindOtherValues)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(false);
  serializer.newLabel("Other");
  77ull >> serializer;
  dateOf(42) >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  deserializer.setPreferNoLabels(false);
  mstd::cDateTime read;
  read << deserializer;
  EXPECT_EQ(read.get(), 42u);
}

TEST(StreamedDate, ExtremesComeBack)
{
  for (piUInt64 iUSec : {0ull, ~0ull})
  {
    msa::cSerializeBinary serializer;
    dateOf(iUSec) >> serializer;
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
    mstd::cDateTime read = dateOf(1);
    read << deserializer;
    EXPECT_EQ(read.get(), iUSec);
  }
}

TEST(StreamedDate, StaysAtEveryTruncation)
{
  support::cCaptureOut mute;
  for (bool bLabels : {false, true})
  {
    std::string const whole = support::bytes(bLabels ? Labelled : Bare);
    for (size_t length = 0; length < whole.size(); ++length)
    {
      msa::cDeserializeBinary deserializer(given(whole.substr(0, length)));
      deserializer.setPreferNoLabels(!bLabels);
      mstd::cDateTime read = dateOf(9);
      EXPECT_THROW(read << deserializer, mstd::cAbstractException) << length;
      EXPECT_EQ(read.get(), 9u) << length;
    }
  }
}

TEST(StreamedDate, StaysIfTheLabelIsMissing)
{
  support::cCaptureOut mute;
  msa::cDeserializeBinary deserializer(given(support::bytes(Bare)));
  deserializer.setPreferNoLabels(false);
  mstd::cDateTime read = dateOf(9);
  EXPECT_THROW(read << deserializer, mstd::cAbstractException);
  EXPECT_EQ(read.get(), 9u);
}

TEST(StreamedDate, StaysIfTheNumberIsOfAnotherType)
{
  msa::cSerializeBinary serializer;
  9ll >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mstd::cDateTime read = dateOf(3);
  EXPECT_THROW(read << deserializer, mstd::cTypeMissmatchException);
  EXPECT_EQ(read.get(), 3u);
}

} // namespace
