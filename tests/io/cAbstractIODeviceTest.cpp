#include "io/cAbstractIODevice.h"

#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "std/cTime.h"
#include "support/cMemoryDevice.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

namespace
{

using support::bytesOf;
using support::cMemoryDevice;

typedef std::vector<std::string> tStrings;

char const* const Timeout5 = "Timeout while i/o operation after 5 milliseconds!";
char const* const Timeout0 = "Timeout while i/o operation after 0 milliseconds!";

/// Reads nothing, and counts how often it was asked; what is written is kept.
class cNoBlockDevice : public mio::cAbstractIODevice
{
public:
  unsigned long long read(void*, unsigned long long) override { return 0; }
  unsigned long long write(void const* source, unsigned long long size) override
  {
    written.append(static_cast<char const*>(source), size < piece ? size : piece);
    ++writes;
    return size < piece ? size : piece;
  }
  std::string written;
  unsigned long long piece = ~0ull;
  unsigned int writes = 0;
};

/// Each read takes time.
class cSlowDevice : public cMemoryDevice
{
public:
  cSlowDevice(support::cVirtualClock& clock, std::string const& contents, long long usec)
      : cMemoryDevice(contents), mClock(clock), mUSec(usec)
  {
  }
  unsigned long long read(void* target, unsigned long long size) override
  {
    mClock.advance(mUSec);
    return cMemoryDevice::read(target, size);
  }

private:
  support::cVirtualClock& mClock;
  long long mUSec;
};

/// All lines of a device, with the result of each call: "abc+", or "abc-" for a line without an ending.
tStrings linesOf(mio::cAbstractIODevice& device)
{
  tStrings lines;
  mstd::tArray<char> line;
  bool more = true;
  while (more)
  {
    more = device.readTextLine(line, 0);
    lines.push_back(bytesOf(line) + (more ? "+" : "-"));
  }
  return lines;
}

std::string timeoutOf(mio::cAbstractIODevice& device, mstd::tArray<char>& line, unsigned int timeoutMs)
{
  return support::messageOf<mstd::cRuntimeException>([&] { device.readTextLine(line, timeoutMs); });
}

std::string timeoutOf(mio::cAbstractIODevice& device, mstd::tArray<char>& line, char const* terminator,
                      unsigned int timeoutMs)
{
  return support::messageOf<mstd::cRuntimeException>(
      [&] { device.readTextLine(line, mstd::tArray<char>(terminator), false, timeoutMs); });
}

} // namespace

TEST(cAbstractIODevice, BlankLinesAreNeverDelivered)
{
  cMemoryDevice device("\r\n\r\nabc\n");
  mstd::tArray<char> line;
  EXPECT_TRUE(device.readTextLine(line, 0));
  EXPECT_EQ(bytesOf(line), "abc");
}

TEST(cAbstractIODevice, ALineWithoutAnEndingIsDeliveredAsUnfinished)
{
  cMemoryDevice device("abc");
  mstd::tArray<char> line("before");
  EXPECT_FALSE(device.readTextLine(line, 0));
  EXPECT_EQ(bytesOf(line), "abc");
}

TEST(cAbstractIODevice, CarriageReturnLineFeedAndBothEndALine)
{
  cMemoryDevice device("a\rb\nc\r\nd\n\re\n\n\nf");
  EXPECT_EQ(linesOf(device), (tStrings{"a+", "b+", "c+", "d+", "e+", "f-"}));
}

TEST(cAbstractIODevice, AZeroByteIsPartOfALine)
{
  cMemoryDevice device(std::string("a\0b\n", 4));
  mstd::tArray<char> line;
  EXPECT_TRUE(device.readTextLine(line, 0));
  EXPECT_EQ(bytesOf(line), std::string("a\0b", 3));
}

TEST(cAbstractIODevice, NothingBehindTheLineIsTaken)
{
  cMemoryDevice device("ab\r\ncd\n");
  mstd::tArray<char> line;
  device.readTextLine(line, 0);
  EXPECT_EQ(device.pos(), 3u); // the line feed waits, to be dropped in front of the next line
}

TEST(cAbstractIODevice, AnEmptyDeviceHasNoLine)
{
  cNoBlockDevice device;
  mstd::tArray<char> line("before");
  EXPECT_FALSE(device.readTextLine(line, 0));
  EXPECT_TRUE(line.empty());
}

TEST(cAbstractIODevice, ATerminatorIsErasedUnlessItIsToBeKept)
{
  mstd::tArray<char> line;
  cMemoryDevice device("aXYb");
  EXPECT_TRUE(device.readTextLine(line, mstd::tArray<char>("XY"), false));
  EXPECT_EQ(bytesOf(line), "a");
  EXPECT_EQ(device.pos(), 3u);
  cMemoryDevice other("aXYb");
  EXPECT_TRUE(other.readTextLine(line, mstd::tArray<char>("XY"), true));
  EXPECT_EQ(bytesOf(line), "aXY");
  EXPECT_EQ(other.pos(), 3u);
}

TEST(cAbstractIODevice, ATerminatorIsFoundBehindItsOwnBeginning)
{
  cMemoryDevice device("aXXYbXYc");
  mstd::tArray<char> line;
  mstd::tArray<char> const terminator("XY");
  EXPECT_TRUE(device.readTextLine(line, terminator, false));
  EXPECT_EQ(bytesOf(line), "aX");
  EXPECT_TRUE(device.readTextLine(line, terminator, false));
  EXPECT_EQ(bytesOf(line), "b");
  EXPECT_FALSE(device.readTextLine(line, terminator, false));
  EXPECT_EQ(bytesOf(line), "c");
}

TEST(cAbstractIODevice, ALineOfATerminatorMayBeEmpty)
{
  cMemoryDevice device("\n\n");
  mstd::tArray<char> line;
  EXPECT_TRUE(device.readTextLine(line, mstd::tArray<char>("\n"), false));
  EXPECT_TRUE(line.empty());
  EXPECT_TRUE(device.readTextLine(line, mstd::tArray<char>("\n"), true));
  EXPECT_EQ(bytesOf(line), "\n");
}

TEST(cAbstractIODevice, WithoutATerminatorAllIsRead)
{
  cMemoryDevice device("a\nb\n");
  mstd::tArray<char> line;
  EXPECT_FALSE(device.readTextLine(line, mstd::tArray<char>(), false));
  EXPECT_EQ(bytesOf(line), "a\nb\n");
}

TEST(cAbstractIODevice, ATimeOutOfZeroMeansNoLimitForALine)
{
  support::cVirtualClock clock;
  cSlowDevice device(clock, "abc\n", 3600 * 1000000LL);
  mstd::tArray<char> line;
  EXPECT_TRUE(device.readTextLine(line, 0));
  EXPECT_EQ(bytesOf(line), "abc");
}

TEST(cAbstractIODevice, ATimeOutOfZeroLetsLessThanAMillisecondPassForATerminator)
{
  support::cVirtualClock clock;
  mstd::tArray<char> line;
  cSlowDevice fast(clock, "ab;", 333);
  EXPECT_TRUE(fast.readTextLine(line, mstd::tArray<char>(";"), false, 0));
  EXPECT_EQ(bytesOf(line), "ab");
  cSlowDevice slow(clock, "abcdef;", 334);
  EXPECT_EQ(timeoutOf(slow, line, ";", 0), Timeout0);
  EXPECT_EQ(bytesOf(line), "abc");
}

TEST(cAbstractIODevice, ALineThatTakesLongerThanItsTimeOutFails)
{
  support::cVirtualClock clock;
  cSlowDevice device(clock, "abcdefghij\n", 1000);
  mstd::tArray<char> line;
  EXPECT_EQ(timeoutOf(device, line, 5), Timeout5);
  EXPECT_EQ(bytesOf(line), "abcdef"); // after 6 milliseconds, the first number above 5
  EXPECT_TRUE(device.readTextLine(line, 5));
  EXPECT_EQ(bytesOf(line), "ghij");
}

TEST(cAbstractIODevice, TheByteThatEndsALineIsNeverLate)
{
  support::cVirtualClock clock;
  mstd::tArray<char> line;
  cSlowDevice device(clock, "abcde\n", 1000);
  EXPECT_TRUE(device.readTextLine(line, 5));
  cSlowDevice other(clock, "abcde;", 1000);
  EXPECT_TRUE(other.readTextLine(line, mstd::tArray<char>(";"), false, 5));
}

TEST(cAbstractIODevice, BlankLinesTakeTimeToo)
{
  support::cVirtualClock clock;
  cSlowDevice device(clock, "\n\n\n\n\n\n\n\n\n\n", 1000);
  mstd::tArray<char> line;
  EXPECT_EQ(timeoutOf(device, line, 5), Timeout5);
  EXPECT_EQ(device.pos(), 6u);
}

TEST(cAbstractIODevice, TheEndOfADeviceIsNoTimeOut)
{
  support::cVirtualClock clock;
  cSlowDevice device(clock, "", 3600 * 1000000LL);
  mstd::tArray<char> line;
  EXPECT_FALSE(device.readTextLine(line, 5));
  EXPECT_FALSE(device.readTextLine(line, mstd::tArray<char>(";"), false, 5));
}

TEST(cAbstractIODevice, WithoutATimeOutATerminatorIsWaitedFor)
{
  support::cVirtualClock clock;
  cSlowDevice device(clock, "abc;", 3600 * 1000000LL);
  mstd::tArray<char> line;
  EXPECT_TRUE(device.readTextLine(line, mstd::tArray<char>(";"), false));
  EXPECT_EQ(bytesOf(line), "abc");
}

TEST(cAbstractIODevice, AWrittenLineIsTextAndEnding)
{
  cNoBlockDevice device;
  device.writeTextLine(mstd::cAsciiString("text"), mstd::cAsciiString("\r\n"));
  mstd::tArray<char> const bytes("view");
  device.writeTextLine(mstd::tConstArrayRef<char>(bytes), mstd::cAsciiString("|"));
  device.writeTextLine(mstd::tConstArrayRef<char>(), mstd::cAsciiString("!"));
  mstd::tArray<char> const nothing;
  device.writeTextLine(mstd::tConstArrayRef<char>(nothing), mstd::cAsciiString(""));
  EXPECT_EQ(device.written, "text\r\nview|!");
}

TEST(cAbstractIODevice, ATextThatIsWrittenShortFails)
{
  cNoBlockDevice device;
  device.piece = 3;
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>(
                [&] { device.writeTextLine(mstd::cAsciiString("text"), mstd::cAsciiString("\n")); }),
            "Unable to write 4 bytes!");
  EXPECT_EQ(device.written, "tex"); // no ending behind half a line
}

TEST(cAbstractIODevice, AnEndingThatIsWrittenShortFails)
{
  cNoBlockDevice device;
  device.piece = 1;
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>(
                [&] { device.writeTextLine(mstd::cAsciiString("t"), mstd::cAsciiString("\r\n")); }),
            "Unable to write 2 bytes!");
  mstd::tArray<char> const bytes("view");
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>(
                [&] { device.writeTextLine(mstd::tConstArrayRef<char>(bytes), mstd::cAsciiString("\r\n")); }),
            "Unable to write 2 bytes!");
}

TEST(cAbstractIODevice, AViewThatIsWrittenShortIsNotNoticed)
{
  cNoBlockDevice device;
  device.piece = 1;
  mstd::tArray<char> const bytes("view");
  EXPECT_NO_THROW(device.writeTextLine(mstd::tConstArrayRef<char>(bytes), mstd::cAsciiString("\n")));
  EXPECT_EQ(device.written, "v\n");
}

TEST(cAbstractIODevice, AViewOfADeviceIsWrittenInItsBlocks)
{
  cMemoryDevice source(std::string(0x10000, 'a') + "bc");
  cNoBlockDevice device;
  device.writeTextLine(mstd::tConstArrayRef<char>(source), mstd::cAsciiString("\n"));
  EXPECT_EQ(device.written, source.contents() + "\n");
  EXPECT_EQ(device.writes, 3u);
}
