#include "pi/cAbstractOut.h"

#include "mp/cSynchronizable.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cNumberConversionFormat.h"

#include <gtest/gtest.h>

#include <limits.h>
#include <string>
#include <type_traits>

namespace
{

/// A sink that keeps what it gets.
class cStringOut : public mpi::cAbstractOut
{
public:
  void printChar(char c) override { mText += c; }
  void flush() override { ++mNumFlushes; }
  bool hasEnDec() const override { return true; }

  std::string mText;
  unsigned int mNumFlushes = 0;
};

/// A sink that leaves all virtual operations but the sink itself as they are.
class cPlainOut : public mpi::cAbstractOut
{
public:
  void printChar(char c) override { mText += c; }

  std::string mText;
};

template <typename T>
std::string written(T const& value)
{
  cPlainOut out;
  out << value;
  return out.mText;
}

} // namespace

TEST(cAbstractOut, IsSynchronizableAndNotCopied)
{
  EXPECT_TRUE((std::is_base_of<mp::cSynchronizable, mpi::cAbstractOut>::value));
  EXPECT_TRUE(std::is_abstract<mpi::cAbstractOut>::value);
  EXPECT_FALSE(std::is_copy_constructible<cPlainOut>::value);
}

TEST(cAbstractOut, AFreshStreamHasNoPositionNoIndentationAndNoLink)
{
  cPlainOut out;
  EXPECT_EQ(out.linked(), nullptr);
  EXPECT_EQ(out.debugFileName(), nullptr);
  EXPECT_EQ(out.debugFileLine(), 0u);
  EXPECT_EQ(out.indentionLevel(), 0u);
  EXPECT_FALSE(out.hasEnDec());
  ASSERT_NE(out.mutex(), nullptr);
  EXPECT_TRUE(out.mutex()->doTryLock());
  out.mutex()->doUnlock();
}

TEST(cAbstractOut, FlushOfTheBaseWritesNothing)
{
  cPlainOut out;
  out.flush();
  EXPECT_EQ(out.mText, "");
}

TEST(cAbstractOut, NumbersAreDecimalAtFirst)
{
  EXPECT_EQ(written(0), "0");
  EXPECT_EQ(written(-17), "-17");
  EXPECT_EQ(written(INT_MIN), "-2147483648");
  EXPECT_EQ(written(4294967295u), "4294967295");
  EXPECT_EQ(written(LLONG_MIN), "-9223372036854775808");
  EXPECT_EQ(written(ULLONG_MAX), "18446744073709551615");
}

TEST(cAbstractOut, FractionsGoThroughTheByteStringsForm)
{
  EXPECT_EQ(written(0.5), "0.5");
  EXPECT_EQ(written(-3.25), "-3.25");
}

TEST(cAbstractOut, AFormatAlsoGovernsFractions)
{
  cPlainOut out;
  mstd::cNumberConversionFormat format(10);
  format.setPrecision(2);
  out << format << 1.23456;
  EXPECT_EQ(out.mText, "1.23");
}

TEST(cAbstractOut, ANullTextWritesNothing)
{
  cPlainOut out;
  out << static_cast<char const*>(nullptr);
  EXPECT_EQ(out.mText, "");
}

TEST(cAbstractOut, ACarriageReturnIsWrittenBeforeEachLineFeed)
{
  EXPECT_EQ(written(static_cast<char const*>("a\n\nb\r\n")), "a\r\n\r\nb\r\r\n");
  EXPECT_EQ(written(mstd::cAsciiString("a\nb")), "a\r\nb");
}

TEST(cAbstractOut, AByteStringIsWrittenToItsLength)
{
  mstd::cAsciiString text("ab");
  text.append('\0');
  text.append('c');
  EXPECT_EQ(written(text), std::string("ab\0c", 4));
}

TEST(cAbstractOut, OperatorsReturnTheStream)
{
  cPlainOut out;
  mpi::cAbstractOut* pOut = &out;
  EXPECT_EQ(&(out << 1), pOut);
  EXPECT_EQ(&(out << 1u), pOut);
  EXPECT_EQ(&(out << 1ll), pOut);
  EXPECT_EQ(&(out << 1ull), pOut);
  EXPECT_EQ(&(out << 1.0), pOut);
  EXPECT_EQ(&(out << "1"), pOut);
  EXPECT_EQ(&(out << mstd::cAsciiString("1")), pOut);
  EXPECT_EQ(&(out << mpi::NumberHex), pOut);
  EXPECT_EQ(&(out << mstd::cNumberConversionFormat(10)), pOut);
  EXPECT_EQ(&(out << mpi::cAbstractOut::indent()), pOut);
  EXPECT_EQ(&(out << mpi::cAbstractOut::unindent()), pOut);
  EXPECT_EQ(&(out << mpi::cAbstractOut::clearDebugMessage()), pOut);
  EXPECT_EQ(&out.debugMessage("f", 1), pOut);
}

TEST(cAbstractOut, ModesHaveTheirValues)
{
  EXPECT_EQ(mpi::NumberHex, 0);
  EXPECT_EQ(mpi::NumberHex16, 1);
  EXPECT_EQ(mpi::NumberHex8, 2);
  EXPECT_EQ(mpi::NumberHex4, 3);
  EXPECT_EQ(mpi::NumberHex2, 4);
  EXPECT_EQ(mpi::NumberNextHex16, 5);
  EXPECT_EQ(mpi::NumberNextHex8, 6);
  EXPECT_EQ(mpi::NumberNextHex4, 7);
  EXPECT_EQ(mpi::NumberNextHex2, 8);
  EXPECT_EQ(mpi::NumberAsFormat, 9);
}

TEST(cAbstractOut, TheLastingModesStayUntilChanged)
{
  struct
  {
    int mode;
    char const* expected;
  } const cases[] = {
      {0, "ff|ff"}, {1, "00000000000000ff|00000000000000ff"}, {2, "000000ff|000000ff"}, {3, "00ff|00ff"}, {4, "ff|ff"}};
  for (auto const& c : cases)
  {
    cPlainOut out;
    out << static_cast<mpi::NumberFmt>(c.mode) << 255 << "|" << 255u;
    EXPECT_EQ(out.mText, c.expected) << "mode " << c.mode;
  }
}

TEST(cAbstractOut, TheModesForOneNumberHoldForOneNumber)
{
  struct
  {
    int mode;
    char const* expected;
  } const cases[] = {{5, "00000000000000ff|255"}, {6, "000000ff|255"}, {7, "00ff|255"}, {8, "ff|255"}};
  for (auto const& c : cases)
  {
    cPlainOut out;
    out << static_cast<mpi::NumberFmt>(c.mode) << 255 << "|" << 255;
    EXPECT_EQ(out.mText, c.expected) << "mode " << c.mode;
  }
}

TEST(cAbstractOut, ModeSixFollowedByTwoNumbersPrintsTheSecondInDecimal)
{
  cPlainOut out;
  out << static_cast<mpi::NumberFmt>(6) << 255 << " " << 255;
  EXPECT_EQ(out.mText, "000000ff 255");
}

TEST(cAbstractOut, AModeForOneNumberCanBeSetAgain)
{
  cPlainOut out;
  out << mpi::NumberNextHex2 << 10ull << mpi::NumberNextHex4 << 10ll << 10;
  EXPECT_EQ(out.mText, "0a000a10");
}

TEST(cAbstractOut, AFractionDoesNotUseUpAModeForOneNumber)
{
  cPlainOut out;
  out << mpi::NumberNextHex2 << 0.5 << "|" << 10 << "|" << 10;
  EXPECT_EQ(out.mText, "0.5|0a|10");
}

TEST(cAbstractOut, AModeForOneNumberEndsALastingOneToo)
{
  cPlainOut out;
  out << mpi::NumberHex << mpi::NumberNextHex4 << 255 << "|" << 255;
  EXPECT_EQ(out.mText, "00ff|255");
}

TEST(cAbstractOut, AModeWithoutWidthKeepsTheWidthSetBefore)
{
  cPlainOut out;
  out << mpi::NumberHex4 << 1 << "|" << mpi::NumberHex << 1;
  EXPECT_EQ(out.mText, "0001|0001");
}

TEST(cAbstractOut, AFormatIsCopiedAndLasts)
{
  cPlainOut out;
  {
    mstd::cNumberConversionFormat format(2);
    format.setFixedWidth(4);
    out << format;
  }
  out << 5 << "|" << 2u;
  EXPECT_EQ(out.mText, "0101|0010");
}

TEST(cAbstractOut, AFormatEndsAModeForOneNumber)
{
  cPlainOut out;
  out << mpi::NumberNextHex4 << mstd::cNumberConversionFormat(8) << 8 << "|" << 8;
  EXPECT_EQ(out.mText, "10|10");
}

TEST(cAbstractOut, TheFormatModeChangesNothingInTheFormat)
{
  cPlainOut out;
  out << mpi::NumberHex << mpi::NumberAsFormat << 255 << "|";
  cPlainOut fresh;
  fresh << mpi::NumberAsFormat << 255;
  EXPECT_EQ(out.mText, "ff|");
  EXPECT_EQ(fresh.mText, "255");
}

TEST(cAbstractOut, IndentationIsCounted)
{
  cPlainOut out;
  out << mpi::cAbstractOut::indent() << mpi::cAbstractOut::indent();
  EXPECT_EQ(out.indentionLevel(), 2u);
  out << mpi::cAbstractOut::unindent();
  EXPECT_EQ(out.indentionLevel(), 1u);
  EXPECT_EQ(out.mText, "");
}

TEST(cAbstractOut, UnindentAtLevelZeroStaysAtZero)
{
  cPlainOut out;
  out << mpi::cAbstractOut::unindent();
  EXPECT_EQ(out.indentionLevel(), 0u);
  out << mpi::cAbstractOut::indent();
  EXPECT_EQ(out.indentionLevel(), 1u);
}

TEST(cAbstractOut, ThePositionIsKeptUntilItIsCleared)
{
  cPlainOut out;
  char const* file = "pi/cSomething";
  out.debugMessage(file, 12) << "text\n";
  EXPECT_EQ(out.debugFileName(), file);
  EXPECT_EQ(out.debugFileLine(), 12u);
  out << mpi::cAbstractOut::clearDebugMessage();
  EXPECT_EQ(out.debugFileName(), nullptr);
  EXPECT_EQ(out.debugFileLine(), 0u);
}

TEST(cAbstractOut, EverythingGoesToTheLinkedStream)
{
  cPlainOut out;
  cStringOut target;
  out.link(&target);
  EXPECT_EQ(out.linked(), &target);
  out << 1 << 2u << 3ll << 4ull << 0.5 << "\n"
      << mstd::cAsciiString("s") << mpi::NumberNextHex2 << 10 << mstd::cNumberConversionFormat(2) << 3
      << mpi::cAbstractOut::indent() << mpi::cAbstractOut::indent() << mpi::cAbstractOut::unindent();
  out.flush();
  out.drawCharLinked('!');
  EXPECT_EQ(target.mText, "12340.5\r\ns0a11!");
  EXPECT_EQ(out.mText, "");
  EXPECT_EQ(target.mNumFlushes, 1u);
  EXPECT_TRUE(out.hasEnDec());
  EXPECT_EQ(target.indentionLevel(), 1u);
  EXPECT_EQ(out.indentionLevel(), 1u);

  out.link(nullptr);
  EXPECT_EQ(out.indentionLevel(), 0u) << "the level belongs to the linked stream";
  out << 3;
  EXPECT_EQ(out.mText, "3") << "the format belongs to the linked stream";
}

TEST(cAbstractOut, ADebugMessageIsForwardedAndStored)
{
  cPlainOut out;
  cPlainOut target;
  out.link(&target);
  out.debugMessage("a/b", 3);
  EXPECT_STREQ(target.debugFileName(), "a/b");
  EXPECT_EQ(target.debugFileLine(), 3u);
  target.debugMessage("c/d", 4);
  EXPECT_STREQ(out.debugFileName(), "c/d") << "the linked stream's position is reported";
  EXPECT_EQ(out.debugFileLine(), 4u);
  out << mpi::cAbstractOut::clearDebugMessage();
  EXPECT_EQ(target.debugFileName(), nullptr);
  EXPECT_EQ(out.debugFileName(), nullptr);
  out.link(nullptr);
  EXPECT_STREQ(out.debugFileName(), "a/b") << "the position was stored here too, and cleared there only";
  EXPECT_EQ(out.debugFileLine(), 3u);
}

TEST(cAbstractOut, ACharacterIsDrawnOnTheLastStreamOfAChainUnchanged)
{
  cPlainOut first;
  cPlainOut second;
  cPlainOut third;
  first.drawCharLinked('0');
  first.link(&second);
  second.link(&third);
  first.drawCharLinked('\n');
  first << "x";
  EXPECT_EQ(first.mText, "0");
  EXPECT_EQ(second.mText, "");
  EXPECT_EQ(third.mText, "\nx");
}

TEST(cAbstractOut, ALinkThatClosesARingIsRefused)
{
  cPlainOut first;
  cPlainOut second;
  cPlainOut third;
  first.link(&second);
  second.link(&third);
  EXPECT_THROW(third.link(&first), mstd::cBugException);
  EXPECT_EQ(third.linked(), nullptr);
  EXPECT_THROW(first.link(&first), mstd::cBugException);
  EXPECT_EQ(first.linked(), &second);
}
