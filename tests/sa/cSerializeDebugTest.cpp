#include "sa/cSerializeDebug.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cContext.h"
#include "sa/cDummyContextData.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversionFormat.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/expectFailure.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <thread>
#include <vector>

namespace
{

/// Lines that `action` prints.
template <class Action>
std::vector<std::string> linesOf(Action const& action)
{
  support::cCaptureOut capture;
  msa::cSerializeDebug dump;
  action(static_cast<msa::cAbstractSerializer&>(dump));
  std::vector<std::string> lines;
  for (auto const& line : capture.lines())
  {
    EXPECT_EQ("sa/cSerializeDebug", line.file);
    lines.push_back(line.text);
  }
  return lines;
}

typedef std::vector<std::string> tLines;

} // namespace

TEST(cSerializeDebug, ASmallRecordIsPrintedOneItemALine)
{
  EXPECT_EQ((tLines{"<context \"cfg\">", "  {", "    <label count> piInt32 = 5;", "    piBool = true;", "  }"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              msa::cContext context(dump.newContext("cfg"));
              5 >> dump.newLabel("count");
              true >> dump;
              context.release();
            }));
}

TEST(cSerializeDebug, EveryTypeHasItsLine)
{
  EXPECT_EQ((tLines{"piChar = -128;", "piChar = 65;", "piUChar = 255;", "piInt16 = -32768;", "piUInt16 = 65535;",
                    "piInt32 = -2147483648;", "piUInt32 = 4294967295;", "piInt64 = -9223372036854775808;",
                    "piUInt64 = 18446744073709551615;", "piBool = true;", "piBool = false;", "piInt32 = 0;"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              dump.store(static_cast<signed char>(-128));
              dump.store(static_cast<signed char>('A'));
              dump.store(static_cast<unsigned char>(255));
              dump.store(static_cast<short>(-32768));
              dump.store(static_cast<unsigned short>(65535));
              dump.store(std::numeric_limits<int>::min());
              dump.store(std::numeric_limits<unsigned int>::max());
              dump.store(std::numeric_limits<long long>::min());
              dump.store(std::numeric_limits<unsigned long long>::max());
              dump.store(true);
              dump.store(false);
              dump.store(0);
            }));
}

TEST(cSerializeDebug, NumbersAreDecimalWhateverTheDefaultIs)
{
  mstd::cNumberConversionFormat& format = mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
  mstd::cNumberConversionFormat const former(format);
  format = mstd::cNumberConversionFormat(16);
  tLines const lines = linesOf([](msa::cAbstractSerializer& dump) { dump.store(255); });
  format = former;
  EXPECT_EQ(tLines{"piInt32 = 255;"}, lines);
}

TEST(cSerializeDebug, ADoublesValueIsNotPrinted)
{
  EXPECT_EQ((tLines{"piDoubleID = x.y;", "piDoubleID = x.y;"}), linesOf([](msa::cAbstractSerializer& dump) {
              dump.store(1.5);
              dump.store(-0.0);
            }));
}

TEST(cSerializeDebug, TextStandsInQuotes)
{
  EXPECT_EQ((tLines{"cAsciiString = \"abc\";", "cAsciiString = \"\";", "cString = \"xyz\";"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              dump.store(mstd::cAsciiString("abc"));
              dump.store(mstd::cAsciiString());
              dump.store(mucs::cString("xyz"));
            }));
}

TEST(cSerializeDebug, CharactersBeyondAsciiShowAsQuestionMarks)
{
  mucs::cString sText("a");
  sText.append(0x00e4);
  sText.append(0x1f600);
  sText.append('b');
  EXPECT_EQ(tLines{"cString = \"a??b\";"}, linesOf([&](msa::cAbstractSerializer& dump) { dump.store(sText); }));
}

TEST(cSerializeDebug, ABlockShowsItsSize)
{
  EXPECT_EQ((tLines{"<raw bytes of size 3>;", "<raw bytes of size 0>;"}), linesOf([](msa::cAbstractSerializer& dump) {
              dump.storeBlock("abc", 3);
              dump.storeBlock(nullptr, 0);
            }));
}

TEST(cSerializeDebug, AContextWithoutANameIsUnnamed)
{
  EXPECT_EQ((tLines{"<context (unnamed)>", "  {", "  }", "<context \"\">", "  {", "  }"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              {
                msa::cContext context(dump.newContext(nullptr));
                context.release();
              }
              msa::cContext context(dump.newContext(""));
              context.release();
            }));
}

TEST(cSerializeDebug, NestedContextsAreIndented)
{
  EXPECT_EQ((tLines{"<context \"a\">", "  {", "    <context \"b\">", "      {", "        piInt32 = 1;", "      }",
                    "    piInt32 = 2;", "  }", "piInt32 = 3;"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              {
                msa::cContext outer(dump.newContext("a"));
                {
                  msa::cContext inner(dump.newContext("b"));
                  1 >> dump;
                  inner.release();
                }
                2 >> dump;
                outer.release();
              }
              3 >> dump;
            }));
}

TEST(cSerializeDebug, TheClosingBraceComesWhenTheGuardGoes)
{
  support::cCaptureOut capture;
  msa::cSerializeDebug dump;
  {
    msa::cContext context(dump.newContext("a"));
    context.release();
    EXPECT_EQ(2u, capture.lines().size());
  }
  ASSERT_EQ(3u, capture.lines().size());
  EXPECT_EQ("  }", capture.lines()[2].text);
}

TEST(cSerializeDebug, AContextThatIsDroppedPrintsNothing)
{
  EXPECT_EQ((tLines{"<context \"a\">", "  {", "    piInt32 = 1;"}), linesOf([](msa::cAbstractSerializer& dump) {
              {
                msa::cContext context(dump.newContext("a"));
              }
              1 >> dump;
            }));
}

TEST(cSerializeDebug, ALabelBeforeAContextStandsInFrontOfIt)
{
  EXPECT_EQ((tLines{"<label x> <context \"a\">", "  {", "    piInt32 = 1;", "<label y>   }"}),
            linesOf([](msa::cAbstractSerializer& dump) {
              msa::cContext context(dump.newLabel("x").newContext("a"));
              1 >> dump;
              dump.newLabel("y"); // used up by the next line, of whatever kind
              context.release();
            }));
}

TEST(cSerializeDebug, OfTwoLabelsTheSecondIsKept)
{
  EXPECT_EQ((tLines{"<label b> piInt32 = 1;", "piInt32 = 2;"}), linesOf([](msa::cAbstractSerializer& dump) {
              dump.newLabel("a");
              EXPECT_EQ(&dump, &dump.newLabel("b"));
              1 >> dump;
              2 >> dump;
            }));
}

TEST(cSerializeDebug, ALabelWithNothingBehindItIsNotPrinted)
{
  EXPECT_EQ(tLines{}, linesOf([](msa::cAbstractSerializer& dump) { dump.newLabel("a"); }));
}

TEST(cSerializeDebug, ItPrefersLabels)
{
  EXPECT_FALSE(msa::cSerializeDebug().noLabelsPreferred());
}

TEST(cSerializeDebug, ClosingWithoutAContextStaysAtTheMargin)
{
  EXPECT_EQ((tLines{"  }", "piInt32 = 1;"}), linesOf([](msa::cAbstractSerializer& dump) {
              dump.releaseCurrentContext();
              1 >> dump;
            }));
}

TEST(cSerializeDebug, ALineIsWrittenUnderTheLockOfTheOutput)
{
  class cWatching : public mpi::cAbstractOut
  {
  public:
    cWatching() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(this); }
    ~cWatching() override { mpi::system().out.link(mpFormer); }
    void printChar(char c) override
    {
      mText += c;
      std::thread([this] {
        mp::cLocker& locker = *mpi::system().out.mutex();
        bool const isFree = locker.doTryLock();
        if (isFree)
        {
          locker.doUnlock();
        }
        miFree += isFree ? 1 : 0;
      }).join();
    }

    std::string mText;
    int miFree = 0;

  private:
    mpi::cAbstractOut* mpFormer;
  };
  cWatching watching;
  msa::cSerializeDebug dump;
  dump.store(1);
  EXPECT_EQ("piInt32 = 1;\r\n", watching.mText);
  EXPECT_EQ(0, watching.miFree);
  EXPECT_TRUE(mpi::system().out.mutex()->doTryLock()); // free again
  mpi::system().out.mutex()->doUnlock();
}

TEST(cSerializeDebug, ThereAreNoBytes)
{
  msa::cSerializeDebug dump;
  mstd::tArray<char> bytes("abc");
  EXPECT_NE(std::string::npos, support::bugMessageOf([&] { dump.rewind(); }).find("cSerializeDebug::rewind()"));
  EXPECT_NE(std::string::npos, support::bugMessageOf([&] { dump.clear(); }).find("cSerializeDebug::clear()"));
  EXPECT_NE(std::string::npos, support::bugMessageOf([&] { dump.data(); }).find("cSerializeDebug::data()"));
  EXPECT_NE(std::string::npos,
            support::bugMessageOf([&] { dump.swapData(bytes); }).find("cSerializeDebug::swapData()"));
  EXPECT_EQ(3u, bytes.length());
}

TEST(cDummyContextData, OnlyAReleasedOneClosesTheContext)
{
  support::cCaptureOut capture;
  msa::cSerializeDebug dump;
  {
    msa::cDummyContextData dropped(dump);
  }
  EXPECT_EQ(0u, capture.lines().size());
  {
    msa::cDummyContextData kept(dump);
    kept.release();
    EXPECT_EQ(0u, capture.lines().size());
  }
  EXPECT_EQ(1u, capture.lines().size());
}

TEST(cDummyContextData, WhatTheSerializerThrowsGoesToTheDebugOutput)
{
  class cFailing : public msa::cSerializeDebug
  {
  public:
    void releaseCurrentContext() override { cSTDExceptions::throwUnsupportedOperation("closing"); }
  };
  support::cCaptureOut capture;
  cFailing failing;
  {
    msa::cDummyContextData data(failing);
    data.release();
  }
  EXPECT_TRUE(capture.contains("closing")) << capture.text();
}
