#include "io/cAbstractIOBlockDevice.h"

#include "std/cBugException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/cMemoryDevice.h"
#include "support/expectFailure.h"
#include "support/messageOf.h"

#include <gtest/gtest.h>

namespace
{

using support::cMemoryDevice;
typedef std::vector<std::string> tStrings;

unsigned int const Window = 0x10000;

std::string copied(cMemoryDevice const& device, unsigned int start, unsigned int size)
{
  std::string bytes(size, '?');
  device.proxyCopyPartTo(&bytes[0], start, size);
  return bytes;
}

template <class tBody>
std::string runtimeMessageOf(tBody const& body)
{
  return support::messageOf<mstd::cRuntimeException>(body);
}

char const* const NoInsert = "Insertion anywhere in the middle of file is not supported yet - sorry!";
char const* const NoErase = "Data remove anywhere in the middle of file is not supported yet - sorry!";
char const* const NoSetSize = "Not implemented: cAbstractIOBlockDevice::setSize()";

} // namespace

TEST(cAbstractIOBlockDevice, ItsLengthIsItsSize)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(device.proxyLength(), 10u);
  EXPECT_EQ(device.size(false), 10u);
  device.setContents("0");
  EXPECT_EQ(device.size(false), 10u);
  EXPECT_EQ(device.size(true), 1u);
  device.setContents("01");
  device.touchSize();
  EXPECT_EQ(device.proxyLength(), 2u);
}

TEST(cAbstractIOBlockDevice, TheEndIsReachedWhereNothingIsLeft)
{
  cMemoryDevice device("0123456789");
  EXPECT_FALSE(device.eof());
  EXPECT_EQ(device.bytesLeft(), 10u);
  device.seek(9, mio::SeekFromStart);
  EXPECT_FALSE(device.eof());
  EXPECT_EQ(device.bytesLeft(), 1u);
  device.seek(10, mio::SeekFromStart);
  EXPECT_TRUE(device.eof());
  EXPECT_EQ(device.bytesLeft(), 0u);
  device.seek(11, mio::SeekFromStart);
  EXPECT_TRUE(device.eof());
  EXPECT_EQ(device.bytesLeft(), 0u);
}

TEST(cAbstractIOBlockDevice, ItHasNoSizeToSet)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(support::bugMessageOf([&] { device.setSize(3); }), NoSetSize);
  EXPECT_EQ(support::bugMessageOf([&] { device.proxySetSize(3); }), NoSetSize);
}

TEST(cAbstractIOBlockDevice, ItIsItsOwnPhysicalArray)
{
  cMemoryDevice device("0123456789");
  unsigned int offset = 7;
  EXPECT_EQ(device.proxyPhysical(offset), &device);
  EXPECT_EQ(offset, 0u);
  offset = 7;
  EXPECT_EQ(device.constProxyPhysical(offset), &device);
  EXPECT_EQ(offset, 0u);
  EXPECT_EQ(device.proxyProvideWriteableData(0, 1), nullptr);
}

TEST(cAbstractIOBlockDevice, ThePreferredBlockSizeIsTheWindowUnlessSet)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(device.proxyPreferredBlockSize(), 0x10000u);
  device.setPreferredBlockSize(3);
  EXPECT_EQ(device.proxyPreferredBlockSize(), 3u);
}

TEST(cAbstractIOBlockDevice, SingleBytesAreServedByTheWindow)
{
  cMemoryDevice device(std::string(Window, 'a') + "bc");
  cMemoryDevice const& constant = device;
  EXPECT_EQ(constant.proxyAt(0), 'a');
  EXPECT_EQ(constant.proxyAt(Window - 1), 'a');
  EXPECT_EQ(device.count("read"), 1u);
  EXPECT_EQ(constant.proxyAt(Window), 'b');
  EXPECT_EQ(device.count("read"), 2u);
  device.proxyAt(Window + 1) = 'x';
  EXPECT_EQ(device.contents().back(), 'c');
  device.flush();
  EXPECT_EQ(device.contents().back(), 'x');
  support::expectOutOfRange([&] { constant.proxyAt(Window + 2); }, "cAbstractIOBlockDevice", "at",
                            cSTDExceptions::OutOfRangeType(0), Window + 2, Window + 1);
}

TEST(cAbstractIOBlockDevice, ProvidedDataIsTheWindow)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(std::string(device.proxyProvideData(3, 4), 4), "3456");
  EXPECT_EQ(std::string(device.proxyProvideData(5, 5), 5), "56789");
  EXPECT_EQ(device.count("read"), 1u);
  EXPECT_NE(device.proxyProvideData(10, 0), nullptr);
}

TEST(cAbstractIOBlockDevice, DataBehindTheEndIsNotProvided)
{
  cMemoryDevice device("0123456789");
  support::expectOutOfRange([&] { device.proxyProvideData(8, 3); }, "cAbstractIOBlockDevice", "provideData",
                            cSTDExceptions::OutOfRangeType(2), 3, 2);
  support::expectOutOfBounds([&] { device.proxyProvideData(8, 0xFFFFFFFF); }, "cAbstractIOBlockDevice", "provideData");
}

TEST(cAbstractIOBlockDevice, ACopyOfNothingOnlySeeks)
{
  cMemoryDevice device("0123456789");
  device.proxyCopyPartTo(nullptr, 4, 0);
  EXPECT_EQ(device.calls(), (tStrings{"seek 4/0"}));
  EXPECT_EQ(device.pos(), 4u);
  device.proxyAt(0) = 'x';
  device.proxyCopyPartTo(nullptr, 4, 0);
  EXPECT_EQ(device.count("write"), 0u);
}

TEST(cAbstractIOBlockDevice, APatchOfNothingOnlySeeks)
{
  cMemoryDevice device("0123456789");
  device.proxyPatchData(4, 0, nullptr);
  EXPECT_EQ(device.calls(), (tStrings{"seek 4/0"}));
}

TEST(cAbstractIOBlockDevice, ACopyIsReadPastTheWindow)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(copied(device, 2, 5), "23456");
  EXPECT_EQ(device.calls(), (tStrings{"seek 2/0", "read 5"}));
}

TEST(cAbstractIOBlockDevice, FourReadsMayDoACopy)
{
  cMemoryDevice device("0123456789");
  device.setPiece(1);
  EXPECT_EQ(copied(device, 2, 4), "2345");
  EXPECT_EQ(device.calls(), (tStrings{"seek 2/0", "read 4", "read 3", "read 2", "read 1"}));
}

TEST(cAbstractIOBlockDevice, AFifthReadFailsACopyEvenIfItWouldComplete)
{
  cMemoryDevice device("0123456789");
  device.setPiece(1);
  EXPECT_EQ(runtimeMessageOf([&] { copied(device, 2, 5); }), "Unable to read 5 bytes!");
  EXPECT_EQ(device.count("read"), 5u);
}

TEST(cAbstractIOBlockDevice, ACopyBehindTheEndFails)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(runtimeMessageOf([&] { copied(device, 8, 3); }), "Unable to read 3 bytes!");
  EXPECT_EQ(device.count("read"), 5u);
}

TEST(cAbstractIOBlockDevice, FourWritesMayDoAPatch)
{
  cMemoryDevice device("0123456789");
  device.setPiece(1);
  device.proxyPatchData(3, 4, "abcd");
  EXPECT_EQ(device.contents(), "012abcd789");
  EXPECT_EQ(device.count("write"), 4u);
}

TEST(cAbstractIOBlockDevice, AFifthWriteFailsAPatch)
{
  cMemoryDevice device("0123456789");
  device.setPiece(1);
  EXPECT_EQ(runtimeMessageOf([&] { device.proxyPatchData(3, 5, "abcde"); }), "Unable to write 5 bytes!");
  EXPECT_EQ(device.count("write"), 5u);
  device.setStuck(true);
  EXPECT_EQ(runtimeMessageOf([&] { device.proxyPatchData(3, 2, "ab"); }), "Unable to write 2 bytes!");
}

TEST(cAbstractIOBlockDevice, ACopySeesAChangeInTheWindow)
{
  cMemoryDevice device("0123456789");
  device.proxyAt(4) = 'x';
  EXPECT_EQ(copied(device, 3, 3), "3x5");
  EXPECT_EQ(device.contents(), "0123x56789");
}

TEST(cAbstractIOBlockDevice, APatchKeepsTheChangesAroundIt)
{
  cMemoryDevice device("0123456789");
  device.proxyAt(2) = 'x';
  device.proxyAt(4) = 'y';
  device.proxyPatchData(4, 2, "ab");
  EXPECT_EQ(device.contents(), "01x3ab6789");
  device.flush();
  EXPECT_EQ(device.contents(), "01x3ab6789");
}

TEST(cAbstractIOBlockDevice, TheWindowShowsWhatWasPatched)
{
  cMemoryDevice device("0123456789");
  cMemoryDevice const& constant = device;
  EXPECT_EQ(constant.proxyAt(4), '4');
  device.proxyPatchData(4, 1, "x");
  EXPECT_EQ(constant.proxyAt(4), 'x');
}

TEST(cAbstractIOBlockDevice, APatchBehindTheEndMakesItLonger)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(device.size(false), 10u);
  device.proxyPatchData(9, 3, "abc");
  EXPECT_EQ(device.size(false), 12u);
  EXPECT_EQ(device.contents(), "012345678abc");
}

TEST(cAbstractIOBlockDevice, AnInsertAtTheEndAppends)
{
  cMemoryDevice device("0123456789");
  device.forgetCalls();
  device.proxyInsert(10, "abc", 3);
  EXPECT_EQ(device.contents(), "0123456789abc");
  EXPECT_EQ(device.proxyLength(), 13u);
  device.setPiece(1);
  device.proxyInsert(13, "defghij", 7);
  EXPECT_EQ(device.contents(), "0123456789abcdefghij");
}

TEST(cAbstractIOBlockDevice, AnInsertKeepsTheChangesInTheWindow)
{
  cMemoryDevice device("0123456789");
  device.proxyAt(4) = 'x';
  device.proxyInsert(10, "abc", 3);
  device.flush();
  EXPECT_EQ(device.contents(), "0123x56789abc");
}

TEST(cAbstractIOBlockDevice, AnInsertInFrontOfTheEndIsABug)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(support::bugMessageOf([&] { device.proxyInsert(9, "abc", 3); }), NoInsert);
  EXPECT_EQ(support::bugMessageOf([&] { device.proxyInsert(11, "abc", 3); }), NoInsert);
  EXPECT_EQ(device.contents(), "0123456789");
}

TEST(cAbstractIOBlockDevice, AnInsertThatIsNotTakenFails)
{
  cMemoryDevice device("0123456789");
  device.setStuck(true);
  EXPECT_EQ(runtimeMessageOf([&] { device.proxyInsert(10, "abc", 3); }), "Unable to write 3 bytes!");
}

TEST(cAbstractIOBlockDevice, DefaultObjectsAreZerosInPieces)
{
  cMemoryDevice device("0123456789");
  device.proxyInsertDefaultObjects(8, 2 * Window + 5);
  EXPECT_EQ(device.contents(), "01234567" + std::string(2 * Window + 5, '\0'));
  EXPECT_EQ(device.calls(), (tStrings{"seek 8/0", "write 65536", "write 65536", "write 5"}));
  EXPECT_EQ(device.proxyLength(), 2 * Window + 13);
}

TEST(cAbstractIOBlockDevice, DefaultObjectsReplaceWhatStandsThere)
{
  cMemoryDevice device("0123456789");
  device.proxyAt(0) = 'x';
  device.proxyAt(3) = 'y';
  device.proxyInsertDefaultObjects(2, 3);
  device.flush();
  EXPECT_EQ(device.contents(), std::string("x1\0\0\0"
                                           "56789",
                                           10));
  device.forgetCalls();
  device.proxyInsertDefaultObjects(2, 0);
  EXPECT_EQ(device.calls(), (tStrings{"seek 2/0"}));
}

TEST(cAbstractIOBlockDevice, TheWindowShowsDefaultObjects)
{
  cMemoryDevice device("0123456789");
  EXPECT_EQ(device.proxyAt(3), '3');
  device.proxyInsertDefaultObjects(2, 3);
  EXPECT_EQ(device.proxyAt(3), 0);
  EXPECT_EQ(device.proxyAt(5), '5');
}

TEST(cAbstractIOBlockDevice, AnEraseOfTheEndTruncates)
{
  cMemoryDevice device("0123456789");
  support::cCaptureOut out;
  device.proxyErase(7, 3);
  EXPECT_EQ(device.contents(), "0123456");
  EXPECT_EQ(device.count("truncate 7"), 1u);
  EXPECT_EQ(device.proxyLength(), 7u);
  ASSERT_EQ(out.lines().size(), 1u);
  EXPECT_EQ(out.lines()[0].text, "AIOB-Erase at 7 / 3 => truncate at 10 / size: 10");
  EXPECT_EQ(out.lines()[0].file, "io/cAbstractIOBlockDevice");
  EXPECT_EQ(out.lines()[0].line, 178u);
  EXPECT_EQ(out.text().substr(out.text().size() - 2), "\r\n");
}

TEST(cAbstractIOBlockDevice, AnEraseInTheMiddleIsABugAndToldToo)
{
  cMemoryDevice device("0123456789");
  std::string written;
  {
    support::cCaptureOut out;
    EXPECT_THROW(device.proxyErase(2, 3), mstd::cBugException);
    written = out.lines().at(0).text;
  }
  EXPECT_EQ(written, "AIOB-Erase at 2 / 3 => truncate at 5 / size: 10");
  EXPECT_EQ(support::bugMessageOf([&] { device.proxyErase(2, 3); }), NoErase);
  EXPECT_EQ(support::bugMessageOf([&] { device.proxyErase(8, 3); }), NoErase);
  EXPECT_EQ(device.contents(), "0123456789");
}

TEST(cAbstractIOBlockDevice, TheEndOfAnEraseIsToldInFull)
{
  cMemoryDevice device("0123456789");
  support::cCaptureOut out;
  EXPECT_THROW(device.proxyErase(0xFFFFFFFF, 0xFFFFFFFF), mstd::cBugException);
  EXPECT_EQ(out.lines().at(0).text, "AIOB-Erase at 4294967295 / 4294967295 => truncate at 8589934590 / size: 10");
}

TEST(cAbstractIOBlockDevice, AnEraseKeepsTheChangesInFrontOfIt)
{
  cMemoryDevice device("0123456789");
  support::cCaptureOut mute;
  device.proxyAt(2) = 'x';
  device.proxyAt(8) = 'y';
  device.proxyErase(5, 5);
  device.flush();
  EXPECT_EQ(device.contents(), "01x34");
  EXPECT_EQ(device.proxyAt(2), 'x');
  EXPECT_THROW(device.proxyAt(8), mstd::cOutOfRangeException);
}

TEST(cAbstractIOBlockDevice, ViewsSearchAndChangeIt)
{
  cMemoryDevice device(std::string(Window - 2, '.') + "needle" + std::string(Window, '.'));
  bool found = false;
  mstd::tArrayRef<char> view(device);
  EXPECT_EQ(view.find("needle", 6, found), Window - 2);
  EXPECT_TRUE(found);
  view.proxyPatchData(Window - 2, 6, "thread");
  view[Window + 10] = '!';
  view.append("end");
  device.flush();
  EXPECT_EQ(device.contents(),
            std::string(Window - 2, '.') + "thread" + std::string(6, '.') + "!" + std::string(Window - 7, '.') + "end");
  view.find("needle", 6, found);
  EXPECT_FALSE(found);
  mstd::tConstArrayRef<char> const part(device, Window - 2, 6);
  EXPECT_EQ(part.find("read", 4, found), 2u);
  EXPECT_TRUE(found);
}

TEST(cAbstractIOBlockDevice, ACopyHasItsWindowAndIsItsDevice)
{
  cMemoryDevice device("0123456789");
  device.proxyAt(4) = 'x';
  device.setPreferredBlockSize(5);
  cMemoryDevice copy(device);
  EXPECT_EQ(copy.proxyPreferredBlockSize(), 5u);
  copy.flush();
  EXPECT_EQ(copy.contents(), "0123x56789");
  EXPECT_EQ(device.contents(), "0123456789");
  device.flush();
  EXPECT_EQ(device.contents(), "0123x56789");
}

TEST(cAbstractIOBlockDevice, AssignmentTakesACopyOfTheWindow)
{
  cMemoryDevice device("0123456789");
  cMemoryDevice other("..........");
  device.proxyAt(4) = 'x';
  other.proxyAt(0) = 'y';
  other.mio::cAbstractIOBlockDevice::operator=(device);
  other.flush();
  EXPECT_EQ(other.contents(), "....x56789");
  EXPECT_EQ(device.contents(), "0123456789");
  mio::cAbstractIOBlockDevice& same = device;
  device.mio::cAbstractIOBlockDevice::operator=(same);
  device.flush();
  EXPECT_EQ(device.contents(), "0123x56789");
}

TEST(cAbstractIOBlockDevice, SwappedDevicesSwapTheirWindows)
{
  cMemoryDevice device("0123456789");
  cMemoryDevice other("..........");
  device.proxyAt(4) = 'x';
  device.mio::cAbstractIOBlockDevice::swap(other);
  device.flush();
  EXPECT_EQ(device.contents(), "0123456789");
  other.flush();
  EXPECT_EQ(other.contents(), "....x56789");
}
