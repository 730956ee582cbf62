#include "io/cIOBlockDeviceImpl.h"

#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "support/cMemoryDevice.h"
#include "support/expectFailure.h"
#include "support/messageOf.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace
{

using support::cMemoryDevice;
typedef std::vector<std::string> tStrings;

unsigned int const Window = 0x10000;

/// Bytes that differ from their neighbours, and at the same place in another window.
std::string pattern(unsigned int size)
{
  std::string bytes(size, '\0');
  for (unsigned int i = 0; i < size; ++i)
  {
    bytes[i] = static_cast<char>(i * 31 + (i >> 8) * 7 + (i >> 16));
  }
  return bytes;
}

/// A window of its own on a device.
class cWindow : public mio::cIOBlockDeviceImpl
{
public:
  explicit cWindow(cMemoryDevice& device) { setBD(&device); }
};

} // namespace

TEST(cIOBlockDeviceImpl, AFreshWindowHoldsNothing)
{
  mio::cIOBlockDeviceImpl const window;
  EXPECT_TRUE(window.isInvalid());
  EXPECT_FALSE(window.isDirty());
  EXPECT_FALSE(window.isInTransfer());
  EXPECT_EQ(window.windowStart(), 0u);
  EXPECT_EQ(window.windowLength(), 0u);
  EXPECT_EQ(window.preferredBlockSize(), 0x10000u);
  EXPECT_FALSE(window.covers(0, 0));
}

TEST(cIOBlockDeviceImpl, AWindowWithoutDeviceIsAnAssertionFailure)
{
  mio::cIOBlockDeviceImpl window;
  support::expectAssertion([&] { window.bd(); }, "mpDevice != 0", "io/cIOBlockDeviceImpl");
  support::expectAssertion([&] { window.size(false); }, "mpDevice != 0", "io/cIOBlockDeviceImpl");
  cMemoryDevice device;
  window.setBD(&device);
  EXPECT_EQ(&window.bd(), &device);
}

TEST(cIOBlockDeviceImpl, TheSizeIsMeasuredOnce)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  device.seek(3, mio::SeekFromStart);
  device.forgetCalls();
  EXPECT_EQ(window.size(false), 10u);
  EXPECT_EQ(device.calls(), (tStrings{"seek 0/2", "seek 3/0"}));
  EXPECT_EQ(device.pos(), 3u);
  device.setContents("0123");
  EXPECT_EQ(window.size(false), 10u);
  EXPECT_EQ(device.calls().size(), 2u);
  EXPECT_EQ(window.size(true), 4u);
  device.setContents("01");
  EXPECT_EQ(window.size(false), 4u);
  window.touchSize();
  EXPECT_EQ(window.size(false), 2u);
}

namespace
{

/// Cannot tell where its end is.
class cNoEnd : public cMemoryDevice
{
public:
  explicit cNoEnd(std::string const& contents) : cMemoryDevice(contents) {}
  unsigned long long pos() const override
  {
    unsigned long long const position = cMemoryDevice::pos();
    if (position == contents().size())
    {
      throw std::runtime_error("no position");
    }
    return position;
  }
};

} // namespace

TEST(cIOBlockDeviceImpl, AMeasurementThatFailsLeavesThePosition)
{
  cNoEnd device("0123456789");
  cWindow window(device);
  device.seek(3, mio::SeekFromStart);
  EXPECT_THROW(window.size(false), std::runtime_error);
  EXPECT_EQ(device.pos(), 3u);
}

TEST(cIOBlockDeviceImpl, AnEmptyDeviceIsMeasuredAnew)
{
  cMemoryDevice device;
  cWindow window(device);
  EXPECT_EQ(window.size(false), 0u);
  device.setContents("x");
  EXPECT_EQ(window.size(false), 1u);
}

TEST(cIOBlockDeviceImpl, AWindowBeginsAtThePlaceThatMovedIt)
{
  cMemoryDevice device(pattern(3 * Window));
  cWindow window(device);
  EXPECT_EQ(window.cacheLocation(100, 1), 0u);
  EXPECT_EQ(window.windowStart(), 100u);
  EXPECT_EQ(window.windowLength(), Window);
  EXPECT_FALSE(window.isInvalid());
  EXPECT_EQ(window.cacheLocation(100, Window), 0u);
  EXPECT_EQ(window.cacheLocation(105, 10), 5u);
  EXPECT_EQ(window.cacheLocation(100 + Window - 1, 1), Window - 1);
  EXPECT_EQ(device.count("read"), 1u);
  EXPECT_EQ(*window.data(5), device.contents()[105]);
}

TEST(cIOBlockDeviceImpl, TheByteBehindTheWindowMovesIt)
{
  cMemoryDevice device(pattern(3 * Window));
  cWindow window(device);
  window.cacheLocation(100, 1);
  EXPECT_EQ(window.cacheLocation(100 + Window - 1, 2), 0u);
  EXPECT_EQ(window.windowStart(), 100 + Window - 1);
  EXPECT_EQ(device.count("read"), 2u);
  EXPECT_EQ(window.cacheLocation(99 + Window - 1, 1), 0u); // the byte in front of it
  EXPECT_EQ(window.windowStart(), 99 + Window - 1);
}

TEST(cIOBlockDeviceImpl, AWindowIsAsLargeAsTheBlockThatIsAskedFor)
{
  cMemoryDevice device(pattern(5 * Window));
  cWindow window(device);
  EXPECT_EQ(window.cacheLocation(7, 3 * Window), 0u);
  EXPECT_EQ(window.windowLength(), 3 * Window);
  EXPECT_EQ(std::string(window.data(0), 3 * Window), device.contents().substr(7, 3 * Window));
  EXPECT_EQ(window.cacheLocation(4 * Window, 1), 0u);
  EXPECT_EQ(window.windowLength(), Window);
}

TEST(cIOBlockDeviceImpl, AWindowEndsWithTheDevice)
{
  cMemoryDevice device(pattern(Window + 10));
  cWindow window(device);
  EXPECT_EQ(window.cacheLocation(Window, 100), 0u);
  EXPECT_EQ(window.windowStart(), Window);
  EXPECT_EQ(window.windowLength(), 10u);
  EXPECT_TRUE(window.covers(Window + 9, 1));
  EXPECT_FALSE(window.covers(Window + 9, 2));
}

TEST(cIOBlockDeviceImpl, TheEndOfTheDeviceLeavesTheWindow)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.cacheLocation(2, 1);
  EXPECT_EQ(window.cacheLocation(10, 1), 0u);
  EXPECT_EQ(window.cacheLocation(11, 1), 0u);
  EXPECT_EQ(window.cacheLocation(0xFFFFFFFF, 0xFFFFFFFF), 0u);
  EXPECT_EQ(window.windowStart(), 2u);
  EXPECT_EQ(window.windowLength(), 8u);
  EXPECT_EQ(device.count("read"), 1u);
}

TEST(cIOBlockDeviceImpl, NothingOfAnEmptyDeviceIsLoaded)
{
  cMemoryDevice device;
  cWindow window(device);
  EXPECT_EQ(window.cacheLocation(0, 0), 0u);
  EXPECT_EQ(window.cacheLocation(0, 1), 0u);
  EXPECT_TRUE(window.isInvalid());
  EXPECT_EQ(device.count("read"), 0u);
}

TEST(cIOBlockDeviceImpl, AChangeReachesTheDeviceWithTheFlush)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.toModifyAt(4) = 'x';
  EXPECT_TRUE(window.isDirty());
  EXPECT_EQ(device.contents(), "0123456789");
  EXPECT_EQ(window.at(4), 'x');
  device.forgetCalls();
  window.flush();
  EXPECT_FALSE(window.isDirty());
  EXPECT_EQ(device.contents(), "0123x56789");
  EXPECT_EQ(device.calls(), (tStrings{"seek 4/0", "write 6"})); // the whole window
  window.flush();
  EXPECT_EQ(device.calls().size(), 2u);
}

TEST(cIOBlockDeviceImpl, AWindowThatMovesWritesItsChanges)
{
  cMemoryDevice device(pattern(2 * Window));
  cWindow window(device);
  window.toModifyAt(1) = 'x';
  window.toModifyAt(2) = 'y';
  EXPECT_EQ(device.count("write"), 0u);
  window.at(Window + 1);
  EXPECT_EQ(device.count("write"), 1u);
  EXPECT_EQ(device.contents().substr(1, 2), "xy");
  EXPECT_FALSE(window.isDirty());
}

TEST(cIOBlockDeviceImpl, ReadingTakesOneReadForAWindow)
{
  cMemoryDevice device(pattern(4 * Window));
  cWindow window(device);
  for (unsigned int i = 0; i < 4 * Window; ++i)
  {
    ASSERT_EQ(window.at(i), device.contents()[i]) << i;
  }
  EXPECT_EQ(device.count("read"), 4u);
}

TEST(cIOBlockDeviceImpl, ReadingBackwardsTakesOneReadForAWindow)
{
  cMemoryDevice device(pattern(4 * Window));
  cWindow window(device);
  for (unsigned int i = 4 * Window; i-- > 0;)
  {
    ASSERT_EQ(window.at(i), device.contents()[i]) << i;
  }
  EXPECT_LE(device.count("read"), 6u);
}

TEST(cIOBlockDeviceImpl, AJumpFarToTheFrontBeginsThere)
{
  cMemoryDevice device(pattern(4 * Window));
  cWindow window(device);
  window.at(3 * Window);
  window.at(2 * Window - 1);
  EXPECT_EQ(window.windowStart(), 2 * Window - 1);
}

TEST(cIOBlockDeviceImpl, AJumpOfAWindowToTheFrontIsAStepStill)
{
  cMemoryDevice device(pattern(4 * Window));
  cWindow window(device);
  window.at(3 * Window);
  window.at(2 * Window);
  EXPECT_EQ(window.windowStart(), Window + 1);
}

TEST(cIOBlockDeviceImpl, AStepToTheFrontEndsBehindIt)
{
  cMemoryDevice device(pattern(4 * Window));
  cWindow window(device);
  window.at(3 * Window);
  window.at(3 * Window - 1);
  EXPECT_EQ(window.windowStart(), 2 * Window);
  EXPECT_EQ(window.windowLength(), Window);
}

TEST(cIOBlockDeviceImpl, AByteBehindTheEndIsOutOfRange)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  support::expectOutOfRange([&] { window.at(10); }, "cAbstractIOBlockDevice", "at", cSTDExceptions::OutOfRangeType(0),
                            10, 9);
  support::expectOutOfRange([&] { window.toModifyAt(10); }, "cAbstractIOBlockDevice", "at",
                            cSTDExceptions::OutOfRangeType(0), 10, 9);
  EXPECT_FALSE(window.isDirty());
}

TEST(cIOBlockDeviceImpl, ADeviceThatGivesLittleIsAskedAgain)
{
  cMemoryDevice device(pattern(2000));
  device.setPiece(300);
  cWindow window(device);
  EXPECT_EQ(window.cacheLocation(0, 1000), 0u);
  EXPECT_EQ(device.count("read"), 4u);
  EXPECT_EQ(window.windowLength(), 1200u); // what has come along is kept
  EXPECT_EQ(std::string(window.data(0), 1200), device.contents().substr(0, 1200));
}

TEST(cIOBlockDeviceImpl, ADeviceThatHasBecomeShorterFails)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.size(false);
  device.setContents("012");
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { window.cacheLocation(5, 4); }),
            "Unable to read 4 bytes!");
  EXPECT_TRUE(window.isInvalid());
  EXPECT_FALSE(window.isInTransfer());
}

TEST(cIOBlockDeviceImpl, AWindowThatCouldNotMoveHoldsNothing)
{
  std::string const bytes = pattern(3 * Window);
  cMemoryDevice device(bytes);
  cWindow window(device);
  EXPECT_EQ(window.at(5), bytes[5]);
  device.setStuck(true);
  EXPECT_THROW(window.at(2 * Window), mstd::cRuntimeException);
  EXPECT_TRUE(window.isInvalid());
  device.setStuck(false);
  EXPECT_EQ(window.at(5), bytes[5]);
}

TEST(cIOBlockDeviceImpl, TheDeviceIsToldWhichCallsAreTheWindows)
{
  class cAsking : public cMemoryDevice
  {
  public:
    using cMemoryDevice::cMemoryDevice;
    unsigned long long read(void* target, unsigned long long size) override
    {
      mAnswers += window().isInTransfer() ? 'R' : 'r';
      return cMemoryDevice::read(target, size);
    }
    unsigned long long write(void const* source, unsigned long long size) override
    {
      mAnswers += window().isInTransfer() ? 'W' : 'w';
      return cMemoryDevice::write(source, size);
    }
    std::string mAnswers;
  } device("0123456789");
  char byte = 0;
  device.read(&byte, 1);
  device.proxyAt(3) = 'x';
  device.flush();
  device.write(&byte, 1);
  EXPECT_EQ(device.mAnswers, "rRWw");
}

TEST(cIOBlockDeviceImpl, ADeviceThatTakesLittleIsGivenAgain)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.toModifyAt(0) = 'x';
  device.setPiece(4);
  window.flush();
  EXPECT_EQ(device.contents(), "x123456789");
  EXPECT_EQ(device.count("write"), 3u);
}

TEST(cIOBlockDeviceImpl, AFlushThatFailsKeepsTheChanges)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.toModifyAt(0) = 'x';
  device.setStuck(true);
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { window.flush(); }), "Unable to write 10 bytes!");
  EXPECT_TRUE(window.isDirty());
  EXPECT_FALSE(window.isInTransfer());
  device.setStuck(false);
  window.flush();
  EXPECT_EQ(device.contents(), "x123456789");
}

TEST(cIOBlockDeviceImpl, ItsEndWritesNothing)
{
  cMemoryDevice device("0123456789");
  {
    cWindow window(device);
    window.toModifyAt(0) = 'x';
  }
  EXPECT_EQ(device.contents(), "0123456789");
}

TEST(cIOBlockDeviceImpl, AnInvalidWindowForgetsItsChanges)
{
  cMemoryDevice device("0123456789");
  cWindow window(device);
  window.toModifyAt(0) = 'x';
  window.invalidate();
  EXPECT_EQ(window.at(0), '0');
  window.flush();
  EXPECT_EQ(device.contents(), "0123456789");
}

TEST(cIOBlockDeviceImpl, ACopyHasTheWindowWithItsChanges)
{
  cMemoryDevice device("0123456789");
  cMemoryDevice other("..........");
  cWindow window(device);
  window.setPreferredBlockSize(7);
  window.toModifyAt(3) = 'x';
  mio::cIOBlockDeviceImpl copy(window);
  EXPECT_EQ(&copy.bd(), &device);
  copy.setBD(&other);
  EXPECT_TRUE(copy.isDirty());
  EXPECT_EQ(copy.windowStart(), 3u);
  EXPECT_EQ(copy.preferredBlockSize(), 7u);
  copy.flush();
  EXPECT_EQ(other.contents(), "...x456789");
  EXPECT_EQ(device.contents(), "0123456789");
  EXPECT_TRUE(window.isDirty());
}

TEST(cIOBlockDeviceImpl, AWindowIsOfUsualSizeAgainBehindAHugeOne)
{
  cMemoryDevice device(pattern(64 * Window));
  cWindow window(device);
  window.cacheLocation(0, 63 * Window);
  EXPECT_EQ(window.windowLength(), 63 * Window);
  window.cacheLocation(63 * Window, 1);
  EXPECT_EQ(window.windowLength(), Window);
  EXPECT_EQ(*window.data(0), device.contents()[63 * Window]);
}
