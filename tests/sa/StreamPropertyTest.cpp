#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/cTypeMissmatchException.h"
#include "support/goldenStreams.h"
#include "support/randomItems.h"
#include "support/streamItems.h"

#include <gtest/gtest.h>

#include <random>

namespace
{

unsigned int const Seed = 20;

using support::randomItems;

std::string written(support::tItems const& items)
{
  msa::cSerializeBinary serializer;
  support::write(items, serializer);
  return support::bytesOf(serializer);
}

/// Thrown by the writer under test; a class of no other tree.
struct cInterrupted
{
};

/// Writes, and breaks off when `left` items are written.
void writeInterrupted(support::tItems const& items, msa::cAbstractSerializer& serializer, unsigned int& left)
{
  for (support::cItem const& item : items)
  {
    if (left == 0)
    {
      throw cInterrupted();
    }
    --left;
    if (item.kind != "context")
    {
      support::write(item, serializer);
      continue;
    }
    msa::cContext context(serializer.newContext(item.named ? item.bytes.c_str() : nullptr));
    writeInterrupted(item.items, serializer, left);
    context.release();
  }
}

unsigned int countOf(support::tItems const& items)
{
  unsigned int count = 0;
  for (support::cItem const& item : items)
  {
    count += 1 + countOf(item.items);
  }
  return count;
}

/// Reads everything, and at each place first asks for something else: that must fail and change nothing.
void readWithMistakes(support::tItems const& items, msa::cDeserializeBinary& deserializer)
{
  for (support::cItem const& item : items)
  {
    unsigned int const pos = deserializer.currentPos();
    if (item.kind != "label")
    {
      mstd::cAsciiString text("kept");
      unsigned int number = 77;
      if (item.kind != "cAsciiString")
      {
        EXPECT_THROW(text << deserializer, mstd::cTypeMissmatchException);
      }
      if (item.kind != "piUInt32")
      {
        EXPECT_THROW(number << deserializer, mstd::cTypeMissmatchException);
      }
      EXPECT_TRUE(text == "kept" || item.kind == "cAsciiString");
      EXPECT_TRUE(number == 77 || item.kind == "piUInt32");
      if (item.kind == "context")
      {
        EXPECT_THROW(deserializer.getContext("no such name"), mstd::cTypeMissmatchException);
      }
      else
      {
        EXPECT_THROW(deserializer.getContext(nullptr), mstd::cTypeMissmatchException);
      }
      EXPECT_EQ(deserializer.currentPos(), pos);
    }
    if (item.kind == "context")
    {
      {
        msa::cContext abandoned(deserializer.getContext(nullptr));
        if (!item.items.empty())
        {
          support::readLike(item.items.front(), deserializer);
        }
      }
      // Labels in front of the context have been read by now, so it began right here.
      EXPECT_EQ(deserializer.currentPos(), pos);
      msa::cContext context(deserializer.getContext(nullptr));
      readWithMistakes(item.items, deserializer);
      context.release();
    }
    else
    {
      EXPECT_TRUE(support::readLike(item, deserializer) == item);
    }
  }
}

} // namespace

TEST(StreamProperty, RandomTreesComeBackAsTheyWere)
{
  std::mt19937 random(Seed);
  for (unsigned int i = 0; i < 2000; ++i)
  {
    support::tItems const items = randomItems(random, 4);
    std::string const bytes = written(items);
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytes));
    ASSERT_TRUE(support::readLike(items, deserializer) == items) << "seed " << Seed << ", tree " << i;
    ASSERT_EQ(deserializer.currentPos(), bytes.size());
  }
}

TEST(StreamProperty, ACopyReadsAsTheOriginal)
{
  std::mt19937 random(Seed + 1);
  for (unsigned int i = 0; i < 2000; ++i)
  {
    support::tItems const items = randomItems(random, 4);
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(written(items)));
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    deserializer.reserialize(target);
    msa::cDeserializeBinary copy(support::ownedArrayOf(support::bytesOf(target)));
    std::string const once = support::bytesOf(target);
    EXPECT_EQ(once.empty(), items.empty());
    msa::cSerializeBinary again;
    again.setPreferNoLabels(false);
    copy.reserialize(again);
    ASSERT_EQ(support::toHex(support::bytesOf(again)), support::toHex(once)) << "seed " << Seed + 1 << ", tree " << i;
  }
}

TEST(StreamProperty, AWriterThatBreaksOffLeavesWhatStoodBefore)
{
  std::mt19937 random(Seed + 2);
  for (unsigned int i = 0; i < 200; ++i)
  {
    support::cItem whole;
    whole.kind = "context";
    whole.items = randomItems(random, 4);
    unsigned int const count = 1 + countOf(whole.items);
    msa::cSerializeBinary serializer;
    1234 >> serializer;
    std::string const before = support::bytesOf(serializer);
    for (unsigned int steps = 1; steps < count; ++steps)
    {
      unsigned int left = steps;
      EXPECT_THROW(writeInterrupted({whole}, serializer, left), cInterrupted);
      ASSERT_EQ(serializer.currentPos(), before.size()) << "seed " << Seed + 2 << ", tree " << i << ", step " << steps;
      ASSERT_EQ(support::bytesOf(serializer), before);
    }
    support::write(whole, serializer);
    EXPECT_EQ(support::bytesOf(serializer), before + written({whole}));
  }
}

TEST(StreamProperty, AReaderThatFailsStaysWhereItWas)
{
  std::mt19937 random(Seed + 3);
  for (unsigned int i = 0; i < 200; ++i)
  {
    support::tItems const items = randomItems(random, 4);
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(written(items)));
    readWithMistakes(items, deserializer);
    EXPECT_TRUE(deserializer.eoc());
  }
}

TEST(StreamProperty, ALabelIsSoughtToTheEndAndThenFromTheStart)
{
  std::mt19937 random(Seed + 4);
  for (unsigned int i = 0; i < 1000; ++i)
  {
    support::tItems const items = randomItems(random, 3);
    msa::cSerializeBinary serializer;
    std::vector<unsigned int> starts; // of each item, and the end
    for (support::cItem const& item : items)
    {
      starts.push_back(serializer.currentPos());
      support::write(item, serializer);
    }
    starts.push_back(serializer.currentPos());
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(support::bytesOf(serializer)));
    for (size_t from = 0; from < starts.size(); ++from)
    {
      for (char const* label : support::RandomNames)
      {
        deserializer.rewind();
        support::readLike(support::tItems(items.begin(), items.begin() + static_cast<long>(from)), deserializer);
        ASSERT_EQ(deserializer.currentPos(), starts[from]);
        size_t found = items.size();
        for (size_t step = 0; step < items.size() && found == items.size(); ++step)
        {
          size_t const at = (from + step) % items.size();
          if (items[at].kind == "label" && items[at].bytes == label)
          {
            found = at;
          }
        }
        EXPECT_EQ(deserializer.tryFindLabel(label), found != items.size());
        EXPECT_EQ(deserializer.currentPos(), found != items.size() ? starts[found + 1] : starts[from])
            << "seed " << Seed + 4 << ", tree " << i << ", from item " << from << ", label " << label;
      }
    }
  }
}
