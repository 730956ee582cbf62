#include "sa/cAbstractContextData.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "support/cCaptureOut.h"
#include "support/goldenStreams.h"
#include "support/streamItems.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <random>

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

template <class F>
void survive(F const& f)
{
  try
  {
    f();
  }
  catch (mstd::cAbstractException const&)
  {
    // refused, which is as good as read
  }
}

/// Lets every reading operation loose on the bytes.
void readAll(std::string const& bytes, support::tItems const& items)
{
  survive([&] {
    msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
    support::readLike(items, d);
    d.eoc();
  });
  msa::cDeserializeBinary d(support::ownedArrayOf(bytes));
  survive([&] {
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    d.reserialize(target);
  });
  EXPECT_EQ(d.currentPos(), 0u);
  survive([&] { d.tryFindLabel("no such label"); });
  EXPECT_EQ(d.currentPos(), 0u);
  survive([&] { d.getNextContextTypeName(); });
  survive([&] { d.getNextLabelName(); });
  survive([&] { d.isContext(); });
  survive([&] { d.isLabel(); });
  EXPECT_EQ(d.currentPos(), 0u);
  survive([&] {
    while (!d.eoc())
    {
      msa::cContext context(d.getContext(nullptr));
      d.tryFindLabel("no such label");
      context.release();
    }
  });
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

TEST(HostileStream, ATruncatedStreamIsReadOrRefused)
{
  support::cCaptureOut const muted;
  std::mt19937 random(5);
  for (support::cGoldenStream const& stream : support::goldenStreams())
  {
    for (unsigned int i = 0; i < 8 && !stream.bytes.empty(); ++i)
    {
      readAll(stream.bytes.substr(0, random() % stream.bytes.size()), stream.items);
    }
  }
}

TEST(HostileStream, EveryTruncationOfARecordIsReadOrRefused)
{
  support::cCaptureOut const muted;
  support::cGoldenStream const& record = support::goldenStreams().front();
  for (size_t length = 0; length < record.bytes.size(); ++length)
  {
    readAll(record.bytes.substr(0, length), record.items);
  }
}

TEST(HostileStream, AFlippedByteIsReadOrRefused)
{
  support::cCaptureOut const muted;
  std::mt19937 random(6);
  for (support::cGoldenStream const& stream : support::goldenStreams())
  {
    for (unsigned int i = 0; i < 8 && !stream.bytes.empty(); ++i)
    {
      std::string bytes = stream.bytes;
      size_t const at = random() % bytes.size();
      bytes[at] = static_cast<char>(bytes[at] ^ static_cast<char>(1 + random() % 255));
      readAll(bytes, stream.items);
    }
  }
}

TEST(HostileStream, EveryFlippedBitOfARecordIsReadOrRefused)
{
  support::cCaptureOut const muted;
  support::cGoldenStream const& record = support::goldenStreams().front();
  for (size_t bit = 0; bit < record.bytes.size() * 8; ++bit)
  {
    std::string bytes = record.bytes;
    bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ static_cast<char>(1u << (bit % 8)));
    readAll(bytes, record.items);
  }
}

TEST(HostileStream, ForgedCountsTakeNoMemory)
{
  support::cCaptureOut const muted;
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
  support::cCaptureOut const muted;
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
  support::cCaptureOut const muted;
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
