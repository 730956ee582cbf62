#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "support/goldenStreams.h"
#include "support/streamItems.h"

#include <gtest/gtest.h>

namespace
{

/// A copy takes the target's form of strings and gives a context with an empty name none.
bool isCopiedAsItIs(support::tItems const& items)
{
  for (support::cItem const& item : items)
  {
    if (item.kind == "cString8" || (item.named && item.bytes.empty()) || !isCopiedAsItIs(item.items))
    {
      return false;
    }
  }
  return true;
}

} // namespace

TEST(StreamGolden, TheFileHoldsManyCases)
{
  EXPECT_GE(support::goldenStreams().size(), 300u);
}

TEST(StreamGolden, TheLibraryWritesTheVeryBytes)
{
  for (support::cGoldenStream const& c : support::goldenStreams())
  {
    msa::cSerializeBinary serializer;
    support::write(c.items, serializer);
    EXPECT_EQ(support::toHex(support::bytesOf(serializer)), support::toHex(c.bytes)) << c.name;
  }
}

TEST(StreamGolden, TheLibraryReadsEveryValue)
{
  for (support::cGoldenStream const& c : support::goldenStreams())
  {
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(c.bytes));
    EXPECT_TRUE(support::readLike(c.items, deserializer) == c.items) << c.name;
    EXPECT_TRUE(deserializer.eoc()) << c.name;
    EXPECT_EQ(deserializer.currentPos(), c.bytes.size()) << c.name;
  }
}

TEST(StreamGolden, ACopyIsTheStreamItself)
{
  unsigned int copied = 0;
  for (support::cGoldenStream const& c : support::goldenStreams())
  {
    if (!isCopiedAsItIs(c.items))
    {
      continue;
    }
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(c.bytes));
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    deserializer.reserialize(target);
    EXPECT_EQ(support::toHex(support::bytesOf(target)), support::toHex(c.bytes)) << c.name;
    EXPECT_EQ(deserializer.currentPos(), 0u) << c.name;
    ++copied;
  }
  EXPECT_GE(copied, 100u);
}

TEST(StreamGolden, ACommittedContextIsPassedUnread)
{
  for (support::cGoldenStream const& c : support::goldenStreams())
  {
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(c.bytes));
    for (support::cItem const& item : c.items)
    {
      if (item.kind == "context")
      {
        msa::cContext context(deserializer.getContext(nullptr));
        context.release();
      }
      else
      {
        support::readLike(item, deserializer);
      }
    }
    EXPECT_EQ(deserializer.currentPos(), c.bytes.size()) << c.name;
  }
}
