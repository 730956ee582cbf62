#include "sa/cAbstractContextData.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tArray.h"
#include "support/goldenStreams.h"
#include "support/streamItems.h"
#include "support/survive.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

namespace
{

std::string word(unsigned int value)
{
  std::string bytes;
  for (unsigned int i = 0; i < 4; ++i)
  {
    bytes += static_cast<char>(value >> (8 * i));
  }
  return bytes;
}

/// Header of an unnamed context that says it has `length` bytes from its length value on.
std::string contextHead(unsigned int length)
{
  return word(12) + word(4) + word(length) + word(8) + word(0);
}

#if defined(MORTISE_TEST_EXHAUSTIVE)
size_t const Stride = 1;
#else
size_t const Stride = 29;
#endif

/// Lets every reading operation loose on the bytes.
void readAll(std::string const& bytes, support::tItems const& items)
{
  support::survive([&] {
    msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
    support::readLike(items, d);
    d.eoc();
  });
  msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
  support::survive([&] {
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    d.reserialize(target);
  });
  EXPECT_EQ(d.currentPos(), 0u);
  support::survive([&] { d.tryFindLabel("no such label"); });
  EXPECT_EQ(d.currentPos(), 0u);
  support::survive([&] { d.getNextContextTypeName(); });
  support::survive([&] { d.getNextLabelName(); });
  support::survive([&] { d.isContext(); });
  support::survive([&] { d.isLabel(); });
  EXPECT_EQ(d.currentPos(), 0u);
  support::survive([&] {
    while (!d.eoc())
    {
      msa::cContext context(d.getContext(nullptr));
      d.tryFindLabel("no such label");
      context.release();
    }
  });
}

/// The first 200 streams that hold anything.
std::vector<support::cGoldenStream> corpus()
{
  std::vector<support::cGoldenStream> streams;
  for (support::cGoldenStream const& stream : support::goldenStreams())
  {
    if (!stream.bytes.empty() && streams.size() < 200)
    {
      streams.push_back(stream);
    }
  }
  return streams;
}

/// `depth` unnamed contexts, each in the one before, around a label and a number.
std::string nested(unsigned int depth)
{
  std::string const core = word(13) + word(10) + word(1) + "x" + word(5) + word(42);
  std::string bytes;
  bytes.reserve(20ull * depth + core.size());
  for (unsigned int i = 0; i < depth; ++i)
  {
    bytes += contextHead(static_cast<unsigned int>(16 + 20ull * (depth - i - 1) + core.size()));
  }
  return bytes + core;
}

} // namespace

// All places of all streams where that takes seconds; some of each where a processor or a sanitizer takes its time.

TEST(HostileStreamSlow, AStreamCutAnywhereIsReadOrRefused)
{
  support::cQuiet const quiet;
  unsigned int cut = 0;
  for (support::cGoldenStream const& stream : corpus())
  {
    for (size_t length = cut % Stride; length < stream.bytes.size(); length += Stride)
    {
      readAll(stream.bytes.substr(0, length), stream.items);
      ++cut;
    }
  }
  EXPECT_GT(cut, 100u);
}

TEST(HostileStreamSlow, AStreamWithAnyBitFlippedIsReadOrRefused)
{
  support::cQuiet const quiet;
  unsigned int flipped = 0;
  for (support::cGoldenStream const& stream : corpus())
  {
    for (size_t bit = flipped % Stride; bit < stream.bytes.size() * 8; bit += Stride)
    {
      std::string bytes = stream.bytes;
      bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ static_cast<char>(1u << (bit % 8)));
      readAll(bytes, stream.items);
      ++flipped;
    }
  }
  EXPECT_GT(flipped, 1000u);
}

TEST(HostileStream, EveryTruncationOfARecordIsReadOrRefused)
{
  support::cQuiet const quiet;
  support::cGoldenStream const& record = support::goldenStreams().front();
  for (size_t length = 0; length < record.bytes.size(); ++length)
  {
    readAll(record.bytes.substr(0, length), record.items);
  }
}

TEST(HostileStream, EveryFlippedBitOfARecordIsReadOrRefused)
{
  support::cQuiet const quiet;
  support::cGoldenStream const& record = support::goldenStreams().front();
  for (size_t bit = 0; bit < record.bytes.size() * 8; ++bit)
  {
    std::string bytes = record.bytes;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ static_cast<char>(1u << (bit % 8)));
    readAll(bytes, record.items);
  }
}

TEST(HostileStream, UnknownIdsAreRefused)
{
  support::cQuiet const quiet;
  for (unsigned int id : {19u, 20u, 255u, 0x10000u, 0x7FFFFFFFu, 0xFFFFFFFFu})
  {
    std::string const bytes = word(id) + word(1) + word(1);
    msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
    int number = 0;
    EXPECT_THROW(number << d, mstd::cTypeMissmatchException);
    EXPECT_THROW(d.getContext(nullptr), mstd::cTypeMissmatchException);
    if (id > 19)
    {
      EXPECT_THROW(d.tryFindLabel("x"), mstd::cRuntimeException);
      msa::cSerializeBinary target;
      EXPECT_THROW(d.reserialize(target), mstd::cRuntimeException);
    }
    EXPECT_EQ(d.currentPos(), 0u);
  }
}

TEST(HostileStream, LabelsWithoutEndComeToAnEnd)
{
  support::cQuiet const quiet;
  std::string bytes;
  for (unsigned int i = 0; i < 100000; ++i)
  {
    bytes += word(13) + word(10) + word(1) + "a";
  }
  msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
  EXPECT_TRUE(d.eoc());
  EXPECT_FALSE(d.tryFindLabel("b"));
  int number = 0;
  EXPECT_THROW(number << d, mstd::cRuntimeException);
  EXPECT_EQ(d.currentPos(), 0u);
}

TEST(HostileStream, ForgedCountsTakeNoMemory)
{
  support::cQuiet const quiet;
  for (unsigned int count :
       {5u, 0x10000u, 0x3FFFFFFFu, 0x40000000u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFFEu, 0xFFFFFFFFu})
  {
    for (unsigned int id : {1u, 10u, 11u, 16u})
    {
      std::string const bytes = word(id) + word(count) + "abcd";
      msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
      mstd::cAsciiString text("kept");
      mucs::cString string("kept");
      mstd::tArray<char> block("kept");
      EXPECT_THROW(text << d, mstd::cAbstractException);
      EXPECT_THROW(string << d, mstd::cAbstractException);
      EXPECT_THROW(d.loadBlock(block), mstd::cAbstractException);
      EXPECT_TRUE(text == "kept");
      EXPECT_TRUE(string == "kept");
      EXPECT_TRUE(block.isEqual("kept", 4));
      EXPECT_EQ(d.currentPos(), 0u);
    }
  }
}

TEST(HostileStream, AContextThatEndsBeforeItBeginsIsRefused)
{
  support::cQuiet const quiet;
  for (unsigned int length : {0u, 1u, 7u, 8u, 15u})
  {
    std::string const bytes = contextHead(length) + word(5) + word(1);
    msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
    EXPECT_THROW(d.getContext(nullptr), mstd::cAbstractException) << length;
    EXPECT_EQ(d.currentPos(), 0u);
    msa::cSerializeBinary target;
    EXPECT_THROW(d.reserialize(target), mstd::cAbstractException) << length;
    EXPECT_THROW(d.tryFindLabel("x"), mstd::cAbstractException) << length;
    EXPECT_EQ(d.currentPos(), 0u);
  }
}

TEST(HostileStream, AContextMayClaimMoreThanThereIsUntilSomethingIsReadThere)
{
  support::cQuiet const quiet;
  for (unsigned int length : {25u, 1000u, 0x7FFFFFFFu})
  {
    std::string const bytes = contextHead(length) + word(5) + word(1);
    msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
    msa::cContext context(d.getContext(nullptr));
    int number = 0;
    number << d;
    EXPECT_EQ(number, 1);
    EXPECT_TRUE(d.eoc());
    EXPECT_THROW(number << d, mstd::cAbstractException);
  }
}

TEST(HostileStream, AMillionNestedContextsTakeNoStack)
{
  unsigned int const depth = 1000000;
  std::string const bytes = nested(depth);
  msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
  msa::cSerializeBinary target;
  target.setPreferNoLabels(false);
  d.reserialize(target);
  EXPECT_TRUE(support::bytesOf(target) == bytes);
  EXPECT_FALSE(d.tryFindLabel("x"));
  {
    msa::cContext context(d.getContext(nullptr));
    context.release();
  }
  EXPECT_TRUE(d.eoc());
}

TEST(HostileStream, AMillionNestedContextsAreEnteredOneByOne)
{
  unsigned int const depth = 1000000;
  msa::cDeserializeBinary d(support::ownedArrayOf(nested(depth)));
  std::vector<msa::cAbstractContextData*> open;
  for (unsigned int i = 0; i < depth; ++i)
  {
    msa::cContext context(d.getContext(nullptr));
    open.push_back(context.unguard());
  }
  EXPECT_TRUE(d.tryFindLabel("x"));
  int number = 0;
  number << d;
  EXPECT_EQ(number, 42);
  for (; !open.empty(); open.pop_back())
  {
    d.releaseCurrentContext();
    delete open.back();
  }
  EXPECT_TRUE(d.eoc());
}
