#include "std/cSTDExceptions.h"

#include "pi/piStackTrace.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/cTextParseException.h"
#include "std/cTypeMissmatchException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <new>
#include <stdexcept>
#include <string>

using mstd::cBugException;
using mstd::cRuntimeException;
using support::caught;
using support::messageOf;
using support::toString;

TEST(cSTDExceptions, ACoreBugCarriesFileAndLine)
{
  cBugException const e = caught<cBugException>([] { cSTDExceptions::throwCoreBug("it is odd", "some/file", 12); });
  EXPECT_EQ("Bug (\"it is odd\") detected!", messageOf(e));
  EXPECT_EQ("Bug (\"%bug%\") detected!", toString(e.liMessage()->key()));
  EXPECT_STREQ("some/file", e.sourceFileName());
  EXPECT_EQ(12u, e.sourceFileLine());
  EXPECT_EQ("cBugException", toString(e.typeName()));
}

TEST(cSTDExceptions, AnUnsupportedOperationIsABug)
{
  cBugException const e = caught<cBugException>([] { cSTDExceptions::throwUnsupportedOperation("fly"); });
  EXPECT_EQ("The operation \"fly\" is not supported!", messageOf(e));
  EXPECT_EQ("The operation \"%s%\" is not supported!", toString(e.liMessage()->key()));
  EXPECT_STREQ("", e.sourceFileName());
  EXPECT_EQ(0u, e.sourceFileLine());
}

TEST(cSTDExceptions, UnexpectedEndOfInput)
{
  cRuntimeException const e = caught<cRuntimeException>([] { cSTDExceptions::throwUnexpectedEndOfInput(); });
  EXPECT_EQ("Unexpected end of input!", messageOf(e));
  EXPECT_TRUE(e.liMessage()->isTranslatable());
}

TEST(cSTDExceptions, OutOfBounds)
{
  mstd::cOutOfBoundsException const e =
      caught<mstd::cOutOfBoundsException>([] { cSTDExceptions::throwOutOfBounds("tList", "erase"); });
  EXPECT_EQ("Out of bounds condition detected in \"tList\" while executing \"erase\"!", messageOf(e));
}

TEST(cSTDExceptions, ElementNotFoundNamesContainerAndOperation)
{
  cBugException const e = caught<cBugException>([] { cSTDExceptions::throwElementNotFound("tHash", "find"); });
  EXPECT_EQ("Element could not be found in \"tHash\" while operation \"find\"!", messageOf(e));
  EXPECT_EQ("Element could not be found in \"%container%\" while operation \"%operation%\"!",
            toString(e.liMessage()->key()));
}

TEST(cSTDExceptions, ElementNotFoundReadsUnknownForNullNames)
{
  cBugException const e = caught<cBugException>([] { cSTDExceptions::throwElementNotFound(nullptr, nullptr); });
  EXPECT_EQ("Element could not be found in \"unknown\" while operation \"unknown\"!", messageOf(e));
}

TEST(cSTDExceptions, AnInvalidBaseTellsItsRange)
{
  cRuntimeException const e = caught<cRuntimeException>([] { cSTDExceptions::throwInvalidDecimalBase(37, 2, 36); });
  EXPECT_EQ("Invalid base for a decimal. The base must be between 2 and 36 but is 37!", messageOf(e));
  EXPECT_EQ("Invalid base for a decimal. The base must be between %min% and %max% but is %base%!",
            toString(e.liMessage()->key()));
}

TEST(cSTDExceptions, AnInvalidDecimalTellsTextAndIndex)
{
  cRuntimeException const e =
      caught<cRuntimeException>([] { cSTDExceptions::throwInvalidDecimal(mucs::cString("12x"), 2); });
  EXPECT_EQ("Invalid decimal number (\"12x\"). Character at index 2 not points to digit!", messageOf(e));
  EXPECT_EQ("Invalid decimal number (\"%string%\"). Character at index %index% not points to digit!",
            toString(e.liMessage()->key()));
}

TEST(cSTDExceptions, ATextParseErrorHasTheMessageGiven)
{
  mstd::cTextParseException const e = caught<mstd::cTextParseException>([] {
    mucs::cLIMessage message;
    message << "$MTR$Bracket expected!";
    cSTDExceptions::throwTextParseError(message, "json", mucs::cString("a.json"), 3, 4);
  });
  EXPECT_EQ("Bracket expected!", messageOf(e));
  EXPECT_EQ("json", toString(e.format()));
  EXPECT_EQ("a.json", toString(e.fileName()));
  EXPECT_EQ(3u, e.row());
  EXPECT_EQ(4u, e.column());
}

TEST(cSTDExceptions, AWrongAnyDereferenceHasAHistory)
{
  mstd::cTypeMissmatchException const e =
      caught<mstd::cTypeMissmatchException>([] { cSTDExceptions::throwWrongAnyDereference("cFoo", "cBar"); });
  EXPECT_EQ("cFoo", toString(e.expectedType()));
  EXPECT_EQ("cBar", toString(e.assignedType()));
  EXPECT_EQ("Type mismatch: Expecting type \"cFoo\" but got object of type \"cBar\"!", messageOf(e));
  ASSERT_NE(nullptr, e.history());
  EXPECT_EQ("cRuntimeException", toString(e.history()->typeName()));
  EXPECT_EQ("User requested object of wrong type (\"cFoo\") from type cAny which contains \"cBar\"!",
            messageOf(*e.history()));
  EXPECT_EQ("User requested object of wrong type (\"%type%\") from type cAny which contains \"%contains%\"!",
            toString(e.history()->liMessage()->key()));
  EXPECT_EQ(nullptr, e.history()->history());
}

TEST(cSTDExceptions, OutOfRangeWritesAStackTraceFirst)
{
  support::cCaptureOut capture;
  mstd::cOutOfRangeException const e = caught<mstd::cOutOfRangeException>(
      [] { cSTDExceptions::throwOutOfRange("tVector", "at", cSTDExceptions::IndexOutOfRange, -1, 0, 7); });
  EXPECT_TRUE(capture.contains("cSTDExceptions::throwOutOfRange(")) << capture.text();
  ASSERT_FALSE(capture.lines().empty());
  EXPECT_EQ("std/cSTDExceptions", capture.lines()[0].file);
  EXPECT_EQ(-1, e.errornousValue());
  EXPECT_EQ(0, e.minValue());
  EXPECT_EQ(7, e.maxValue());
}

TEST(cSTDExceptions, AFailedAssertionWritesAStackTraceFirst)
{
  support::cCaptureOut capture;
  cBugException const e =
      caught<cBugException>([] { cSTDExceptions::throwAssertionFailed("mpPool != 0", "std/tVector", 42); });
  EXPECT_TRUE(capture.contains("cSTDExceptions::throwAssertionFailed(")) << capture.text();
  EXPECT_EQ("Assertion failed in file std/tVector:42. (mpPool != 0)!", messageOf(e));
  EXPECT_STREQ("", e.sourceFileName());
  EXPECT_EQ(0u, e.sourceFileLine());
}

namespace
{
/// Raises at the bottom of `depth` calls, and returns the line feeds of the trace of 128 levels from there.
__attribute__((noinline)) long descend(int depth)
{
  if (depth != 0)
  {
    long const result = descend(depth - 1);
    asm volatile(""); // no tail call
    return result;
  }
  EXPECT_THROW(cSTDExceptions::throwOutOfRange("a", "b", cSTDExceptions::IndexOutOfRange, 1, 0, 0),
               mstd::cOutOfRangeException);
  std::string const trace = piStackTrace(128).c_str();
  return std::count(trace.begin(), trace.end(), '\n');
}
} // namespace

TEST(cSTDExceptions, TheStackTraceHas128Levels)
{
  support::cCaptureOut capture;
  long const expected = descend(200);
  EXPECT_GT(expected, 100);
  EXPECT_EQ(expected, std::count(capture.text().begin(), capture.text().end(), '\n') - 1); // the last ends the message
}

TEST(cSTDExceptions, AStackTraceThatCannotBeWrittenDoesNotHideTheException)
{
  class cFailingOut : public mpi::cAbstractOut
  {
  public:
    void printChar(char) override { throw std::runtime_error("disk full"); }
  };
  cFailingOut out;
  mpi::cAbstractOut* const former = mpi::system().out.linked();
  mpi::system().out.link(&out);
  EXPECT_THROW(cSTDExceptions::throwOutOfRange("a", "b", cSTDExceptions::IndexOutOfRange, 1, 0, 0),
               mstd::cOutOfRangeException);
  EXPECT_THROW(cSTDExceptions::throwAssertionFailed("a", "b", 1), cBugException);
  mpi::system().out.link(former);
}

TEST(cSTDExceptions, AFailureInsideOfAStackTraceWritesNoSecondOne)
{
  class cAssertingOut : public mpi::cAbstractOut
  {
  public:
    void printChar(char) override
    {
      ++miCalls;
      cSTDExceptions::throwAssertionFailed("the sink is open", "test", 1);
    }
    unsigned int miCalls = 0;
  };
  cAssertingOut out;
  mpi::cAbstractOut* const former = mpi::system().out.linked();
  mpi::system().out.link(&out);
  EXPECT_THROW(cSTDExceptions::throwAssertionFailed("a", "b", 1), cBugException);
  mpi::system().out.link(former);
  EXPECT_EQ(1u, out.miCalls);
}

TEST(cSTDExceptions, BadAllocIsTheStandardOne)
{
  EXPECT_THROW(cSTDExceptions::throwBadAlloc(), std::bad_alloc);
}
