#include "pi/cDebugStdErr.h"

#include "pi/cDebugLevel.h"
#include "pi/cSystem.h"
#include "std/cAsciiString.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdlib.h>
#include <string>

using mpi::cAbstractOut;

namespace
{

/// Sets "PIDBG_FILTER" for a scope.
class cFilterVariable
{
public:
  explicit cFilterVariable(char const* words)
  {
    char const* former = getenv("PIDBG_FILTER");
    mWasSet = former != nullptr;
    mFormer = mWasSet ? former : "";
    if (words != nullptr)
    {
      setenv("PIDBG_FILTER", words, 1);
    }
    else
    {
      unsetenv("PIDBG_FILTER");
    }
  }
  ~cFilterVariable()
  {
    if (mWasSet)
    {
      setenv("PIDBG_FILTER", mFormer.c_str(), 1);
    }
    else
    {
      unsetenv("PIDBG_FILTER");
    }
  }

private:
  bool mWasSet;
  std::string mFormer;
};

/// What a fresh stream, made while "PIDBG_FILTER" is `words`, prints to the standard error stream.
template <typename Writer>
std::string printed(char const* words, Writer write)
{
  cFilterVariable variable(words);
  testing::internal::CaptureStderr();
  {
    mpi::cDebugStdErr out;
    write(out);
  }
  return testing::internal::GetCapturedStderr();
}

} // namespace

TEST(cDebugStdErr, ALineEndsInCarriageReturnAndLineFeed)
{
  EXPECT_EQ(printed(nullptr, [](cAbstractOut& out) { out << "text\n"; }), "text\r\n");
}

TEST(cDebugStdErr, NothingIsPrintedBeforeTheLineEnds)
{
  EXPECT_EQ(printed(nullptr, [](cAbstractOut& out) { out << "text"; }), "");
}

TEST(cDebugStdErr, ALineStartsWithBaseNameAndLineNumber)
{
  EXPECT_EQ(printed(nullptr, [](cAbstractOut& out) { out.debugMessage("pi/cWork.cpp", 417) << "text\n"; }),
            "cWork.cpp:417: text\r\n");
}

TEST(cDebugStdErr, TheBaseNameFollowsTheLastSlashBackslashOrColon)
{
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      out.debugMessage("a/b\\c:d", 1) << "\n";
                      out.debugMessage("a:b\\c/d", 2) << "\n";
                      out.debugMessage("a:b/c\\d", 3) << "\n";
                      out.debugMessage("plain", 4) << "\n";
                      out.debugMessage("dir/", 5) << "\n";
                    }),
            "d:1: \r\nd:2: \r\nd:3: \r\nplain:4: \r\n:5: \r\n");
}

TEST(cDebugStdErr, EachLevelIndentsByTwoBlanksBehindThePrefix)
{
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      out << cAbstractOut::indent() << "one\n" << cAbstractOut::indent();
                      out.debugMessage("x/y", 9) << "two\n" << cAbstractOut::clearDebugMessage();
                      out << cAbstractOut::unindent() << cAbstractOut::unindent() << "none\n";
                    }),
            "  one\r\ny:9:     two\r\nnone\r\n");
}

TEST(cDebugStdErr, PositionAndIndentationOfTheMomentTheLineEndsCount)
{
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      out.debugMessage("x/y", 1) << "a" << cAbstractOut::clearDebugMessage() << "\n";
                      out << "b" << cAbstractOut::indent() << "\n";
                    }),
            "a\r\n  b\r\n");
}

TEST(cDebugStdErr, AMessageOfSeveralLinesHasThePrefixOnEach)
{
  EXPECT_EQ(printed(nullptr, [](cAbstractOut& out) { out.debugMessage("x/y", 1) << "a\nb\n"; }),
            "y:1: a\r\ny:1: b\r\n");
}

TEST(cDebugStdErr, TheFilterDropsMessagesWhoseSourcePathContainsAWord)
{
  EXPECT_EQ(printed("cWorkQueue cWork",
                    [](cAbstractOut& out) {
                      out.debugMessage("pi/cWorkQueue", 1) << "queue\n";
                      out.debugMessage("pi/cWork", 2) << "work\n";
                      out.debugMessage("pi/cWorkStat", 3) << "stat\n";
                      out.debugMessage("pi/cwork", 4) << "other case\n";
                      out.debugMessage("pi/cTimer", 5) << "timer\n" << cAbstractOut::clearDebugMessage();
                      out << "cWork without a position\n";
                    }),
            "cwork:4: other case\r\ncTimer:5: timer\r\ncWork without a position\r\n");
}

TEST(cDebugStdErr, TheFilterLooksAtTheWholePath)
{
  EXPECT_EQ(printed("rmi/", [](cAbstractOut& out) { out.debugMessage("rmi/cSignal", 1) << "dropped\n"; }), "");
}

TEST(cDebugStdErr, ADroppedLineLeavesNothingForTheNextOne)
{
  EXPECT_EQ(printed("gone",
                    [](cAbstractOut& out) {
                      out.debugMessage("a/gone", 1) << "dropped\n";
                      out.debugMessage("a/kept", 2) << "kept\n";
                    }),
            "kept:2: kept\r\n");
}

TEST(cDebugStdErr, ALineWhosePositionWasClearedBeforeItsEndIsNeitherPrefixedNorFiltered)
{
  EXPECT_EQ(printed("cWork",
                    [](cAbstractOut& out) {
                      out.debugMessage("pi/cWork", 1) << "text" << cAbstractOut::clearDebugMessage() << "\n";
                    }),
            "text\r\n");
}

TEST(cDebugStdErr, AnEmptyVariableAndBlanksAreNoFilters)
{
  auto const write = [](cAbstractOut& out) { out.debugMessage("a/b", 1) << "text\n"; };
  EXPECT_EQ(printed("", write), "b:1: text\r\n");
  EXPECT_EQ(printed("   ", write), "b:1: text\r\n");
  EXPECT_EQ(printed("  none   ", write), "b:1: text\r\n");
  EXPECT_EQ(printed("  a/b  ", write), "");
}

TEST(cDebugStdErr, AnEmptyFileNameIsNotFiltered)
{
  EXPECT_EQ(printed("x", [](cAbstractOut& out) { out.debugMessage("", 1) << "text\n"; }), ":1: text\r\n");
}

TEST(cDebugStdErr, FlushWritesTheUnfinishedLineAsItStands)
{
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      out << cAbstractOut::indent();
                      out.debugMessage("x/y", 1) << "half";
                      out.flush();
                      out << "rest\n";
                      out.flush();
                    }),
            "halfy:1:   rest\r\n");
}

TEST(cDebugStdErr, WhileLinkedNothingReachesTheStandardErrorStream)
{
  mpi::cDebugStdErr other;
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      mpi::cDebugStdErr target;
                      out.link(&target);
                      out.debugMessage("x/y", 1) << "half";
                      out.flush();
                      out.link(nullptr);
                    }),
            "half")
      << "the linked stream is the one that is flushed";
}

TEST(cDebugStdErr, PercentSignsAreText)
{
  EXPECT_EQ(printed(nullptr,
                    [](cAbstractOut& out) {
                      out.debugMessage("a/%s%n", 1) << "%d %s\n" << cAbstractOut::clearDebugMessage() << "%n";
                      out.flush();
                    }),
            "%s%n:1: %d %s\r\n%n");
}

TEST(cDebugStdErr, ALineThatIsVeryLongIsWholeAndTheNextOneToo)
{
  std::string const text(3 * 1024 * 1024, 'x');
  EXPECT_EQ(printed(nullptr,
                    [&](cAbstractOut& out) {
                      out << text.c_str() << "\n"
                          << "short\n";
                    }),
            text + "\r\nshort\r\n");
}

// Time grows with the length, not with its square: 16 times as long may take at most 64 times as long.
TEST(cDebugStdErr, TheCostOfALineIsProportionalToItsLength)
{
  auto const cost = [](unsigned int length) {
    std::string const text(length, 'x');
    std::chrono::steady_clock::duration best = std::chrono::hours(1);
    for (int i = 0; i < 3; ++i)
    {
      mpi::cDebugStdErr out;
      auto const begin = std::chrono::steady_clock::now();
      out << text.c_str();
      auto const used = std::chrono::steady_clock::now() - begin;
      best = used < best ? used : best;
    }
    return std::chrono::duration<double>(best).count();
  };
  double const small = cost(256 * 1024);
  double const large = cost(4 * 1024 * 1024);
  EXPECT_LT(large, 64 * small + 0.01);
}

TEST(cDebugStdErr, TheSystemsOutputIsOne)
{
  EXPECT_NE(dynamic_cast<mpi::cDebugStdErr*>(&mpi::system().out), nullptr);
}

TEST(cCaptureOut, LinesAreCaughtWithTheirPositionAndTheFormerLinkComesBack)
{
  cAbstractOut& out = mpi::system().out;
  {
    support::cCaptureOut outer;
    {
      support::cCaptureOut capture;
      out.debugMessage("a/b", 7) << "text\n" << cAbstractOut::clearDebugMessage();
      ASSERT_EQ(capture.lines().size(), 1u);
      EXPECT_EQ(capture.lines()[0].text, "text");
      EXPECT_EQ(capture.lines()[0].file, "a/b");
      EXPECT_EQ(capture.lines()[0].line, 7u);
      EXPECT_EQ(capture.text(), "text\r\n");
    }
    EXPECT_EQ(out.linked(), &outer);
    EXPECT_EQ(outer.text(), "");
  }
  EXPECT_EQ(out.linked(), nullptr);
}
