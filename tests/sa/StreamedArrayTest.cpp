// Byte arrays on a stream.

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <new>
#include <string>

namespace
{

/// For a deserializer, which takes it over.
mstd::tAutoPtr<mstd::tArray<char>> given(std::string const& bytes)
{
  return mstd::tAutoPtr<mstd::tArray<char>>(new mstd::tArray<char>(support::arrayOf(bytes)));
}

// Bare: the grow step, and the bytes behind it.
char const* const Bare = "04 00 00 00 05 00 00 00"
                         "01 00 00 00 03 00 00 00 'abc'";
char const* const Labelled = "0D 00 00 00 0A 00 00 00 04 00 00 00 'Grow' 04 00 00 00 05 00 00 00"
                             "0D 00 00 00 0A 00 00 00 04 00 00 00 'Data' 01 00 00 00 03 00 00 00 'abc'";

mstd::tArray<char> sample()
{
  mstd::tArray<char> array;
  array.setGrowStep(5);
  array.append("abc", 3);
  return array;
}

TEST(StreamedArray, GrowStepAndBlock)
{
  msa::cSerializeBinary serializer;
  EXPECT_TRUE(serializer.noLabelsPreferred());
  EXPECT_EQ(&(sample() >> serializer), &serializer);
  EXPECT_EQ(support::written(serializer), support::bytes(Bare));
}

TEST(StreamedArray, WithLabels)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(false);
  sample() >> serializer;
  EXPECT_EQ(support::written(serializer), support::bytes(Labelled));
}

TEST(StreamedArray, EmptyArrayIsAnEmptyBlock)
{
  mstd::tArray<char> empty;
  empty.setGrowStep(1);
  msa::cSerializeBinary serializer;
  empty >> serializer;
  EXPECT_EQ(support::written(serializer), support::bytes("04 00 00 00 01 00 00 00 01 00 00 00 00 00 00 00"));
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mstd::tArray<char> read = sample();
  read << deserializer;
  EXPECT_TRUE(read.empty());
  EXPECT_EQ(read.growStep(), 1u);
}

TEST(StreamedArray, ComesBackInBothForms)
{
  for (bool bLabels : {false, true})
  {
    msa::cDeserializeBinary deserializer(given(support::bytes(bLabels ? Labelled : Bare)));
    deserializer.setPreferNoLabels(!bLabels);
    mstd::tArray<char> read;
    read.append("something else", 14);
    EXPECT_EQ(&(read << deserializer), &deserializer);
    EXPECT_EQ(support::stringOf(read), "abc");
    EXPECT_EQ(read.growStep(), 5u);
    EXPECT_TRUE(deserializer.eoc());
  }
}

TEST(StreamedArray, LabelledPartsMayStandInAnotherOrder)
{
  std::string const labelled = support::bytes(Labelled);
  size_t const half = 24;
  msa::cDeserializeBinary deserializer(given(labelled.substr(half) + labelled.substr(0, half)));
  deserializer.setPreferNoLabels(false);
  mstd::tArray<char> read;
  read << deserializer;
  EXPECT_EQ(support::stringOf(read), "abc");
  EXPECT_EQ(read.growStep(), 5u);
}

TEST(StreamedArray, FitOnEraseDoesNotTravel)
{
  bool const bFresh = mstd::tArray<char>().fitOnErase();
  for (bool bFit : {false, true})
  {
    mstd::tArray<char> array = sample();
    array.setFitOnErase(bFit);
    msa::cSerializeBinary serializer;
    array >> serializer;
    EXPECT_EQ(support::written(serializer), support::bytes(Bare));
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
    mstd::tArray<char> read;
    read.setFitOnErase(!bFresh);
    read << deserializer;
    EXPECT_EQ(read.fitOnErase(), bFresh); // of the fresh array that the reader makes
  }
}

TEST(StreamedArray, StaysAtEveryTruncation)
{
  support::cCaptureOut mute;
  for (bool bLabels : {false, true})
  {
    std::string const whole = support::bytes(bLabels ? Labelled : Bare);
    for (size_t length = 0; length < whole.size(); ++length)
    {
      msa::cDeserializeBinary deserializer(given(whole.substr(0, length)));
      deserializer.setPreferNoLabels(!bLabels);
      mstd::tArray<char> read;
      read.setGrowStep(7);
      read.append("kept", 4);
      EXPECT_THROW(read << deserializer, mstd::cAbstractException) << length;
      EXPECT_EQ(support::stringOf(read), "kept") << length;
      EXPECT_EQ(read.growStep(), 7u) << length;
    }
  }
}

TEST(StreamedArray, StaysIfTheDataIsNoBlock)
{
  msa::cSerializeBinary serializer;
  5u >> serializer;
  true >> serializer;
  msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
  mstd::tArray<char> read = sample();
  read.setGrowStep(9);
  EXPECT_THROW(read << deserializer, mstd::cTypeMissmatchException);
  EXPECT_EQ(support::stringOf(read), "abc");
  EXPECT_EQ(read.growStep(), 9u);
}

TEST(StreamedArray, AnyGrowStepFromAStreamIsHarmless)
{
  for (unsigned int step : {0u, 31u, 32u, 255u, 0xFFFFFFFFu})
  {
    msa::cSerializeBinary serializer;
    step >> serializer;
    serializer.storeBlock("abc", 3);
    msa::cDeserializeBinary deserializer((mstd::tConstArrayRef<char>(serializer.ownData())));
    mstd::tArray<char> read;
    try
    {
      read << deserializer;
      EXPECT_EQ(support::stringOf(read), "abc") << step;
    }
    catch (std::bad_alloc const&)
    {
      EXPECT_TRUE(read.empty()) << step;
    }
  }
}

} // namespace
