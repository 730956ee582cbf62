#include "io/cFs.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cImplDevice.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "support/fileContents.h"
#include "support/osFailure.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utime.h>

#include <errno.h>
#include <string.h>

#include <filesystem>
#include <string>
#include <vector>

using support::cCaptureOut;
using support::cFaultShim;
using support::cImplDevice;
using support::cTempDir;
using support::fileBytes;
using support::osFailure;
using support::osFailureOf;
using support::putFile;
using support::toString;

namespace
{

unsigned long long const block = 0x8000000;

template <class Action>
std::string runtimeMessage(Action const& action)
{
  return support::messageOf(support::caught<mstd::cRuntimeException>(action));
}

std::string readAll(cImplDevice& device, unsigned int iMax = 1000)
{
  std::string bytes(iMax, 0);
  bytes.resize(device->readBytes(&bytes[0], iMax));
  return bytes;
}

void write(cImplDevice& device, std::string const& bytes)
{
  EXPECT_EQ(device->writeBytes(bytes.data(), bytes.size()), bytes.size());
}

/// A file "f" with contents, and a device for it.
class cLinuxFileImpl : public testing::Test
{
public:
  cLinuxFileImpl() : name(dir.name("f")), path(toString(name)), device(fs, name) { putFile(name, "0123456789"); }

  void openToRead() { device->open(name, mio::OpenReadOnly, mio::CreateNever, mio::WriteTruncate, true); }
  void openToWrite(mio::WriteMode mode = mio::WriteAppend)
  {
    device->open(name, mio::OpenReadWrite, mio::CreateAlways, mode, true);
  }

  cTempDir dir;
  mio::cFs fs;
  mucs::cString name;
  std::string path;
  cImplDevice device;
};

/// Memory that takes none until it is written.
class cHugeMemory
{
public:
  explicit cHugeMemory(size_t iSize)
      : miSize(iSize),
        mpMemory(mmap(nullptr, iSize, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0))
  {
    EXPECT_NE(mpMemory, MAP_FAILED);
  }
  cHugeMemory(cHugeMemory const&) = delete;
  ~cHugeMemory() { munmap(mpMemory, miSize); }
  char* get() const { return static_cast<char*>(mpMemory); }

private:
  size_t miSize;
  void* mpMemory;
};

} // namespace

TEST_F(cLinuxFileImpl, WithoutADescriptorEverythingFailsWithItsOwnNameAndCode77)
{
  char c = 0;
  EXPECT_EQ(osFailureOf([&] { device->readBytes(&c, 1); }), osFailure("read", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->writeBytes(&c, 1); }), osFailure("write", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->seek(0, mio::SeekFromStart); }), osFailure("seek", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->pos(); }), osFailure("seek", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->truncate(0); }), osFailure("truncate", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->flush(); }), osFailure("flush", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->lastModified(); }), osFailure("stat", 77, path));
  EXPECT_EQ(osFailureOf([&] { device->mmap(); }), osFailure("mmap", 77, path));
  EXPECT_EQ(EBADFD, 77);
}

TEST_F(cLinuxFileImpl, AnUnopenedFileKnowsTheNameThatItWasMadeFor)
{
  EXPECT_EQ(toString(device->name()), path);
}

TEST_F(cLinuxFileImpl, OpenTurnsTheModesIntoTheFlagsOfTheSystem)
{
  int const access[] = {O_RDONLY, O_WRONLY, O_RDWR};
  for (int mode = 0; mode < 3; ++mode)
  {
    for (int create = 0; create < 3; ++create)
    {
      for (int write = 0; write < 2; ++write)
      {
        for (int follow = 0; follow < 2; ++follow)
        {
          int expected = access[mode] | (follow ? 0 : O_NOFOLLOW);
          if (mode != 0)
          {
            expected |= (create != 0 ? O_CREAT : 0) | (write == 0 ? O_APPEND : O_TRUNC);
          }
          cFaultShim shim;
          device->open(name, mio::OpenMode(mode), mio::CreateMode(create), mio::WriteMode(write), follow != 0);
          int const large = 0x20000 | 0x8000; // what O_LARGEFILE is differs; it may be none
          int const known = O_ACCMODE | O_CREAT | O_APPEND | O_TRUNC | O_NOFOLLOW;
          EXPECT_EQ(shim.lastFlags() & known, expected) << mode << create << write << follow;
          EXPECT_EQ(shim.lastFlags() & ~(known | large | O_LARGEFILE), 0);
          EXPECT_EQ(shim.lastMode(), 0644u);
          EXPECT_EQ(shim.lastPath(), path);
          EXPECT_EQ(toString(device->name()), path);
          device->close();
        }
      }
    }
  }
}

TEST_F(cLinuxFileImpl, OpeningWhatIsNotThereFailsWithErrnoAndName)
{
  mucs::cString const missing = dir.name("missing");
  EXPECT_EQ(osFailureOf([&] { device->open(missing, mio::OpenReadOnly, mio::CreateAlways, mio::WriteAppend, true); }),
            osFailure("open", ENOENT, toString(missing)));
  EXPECT_EQ(osFailureOf([&] { device->open(missing, mio::OpenReadWrite, mio::CreateNever, mio::WriteAppend, true); }),
            osFailure("open", ENOENT, toString(missing)));
  EXPECT_FALSE(std::filesystem::exists(toString(missing)));
  EXPECT_EQ(toString(device->name()), path) << "the name is stored when the file is open";
}

TEST_F(cLinuxFileImpl, BothCreatingModesMakeAFileThatOthersMayRead)
{
  mode_t const former = umask(022);
  for (mio::CreateMode const create : {mio::CreateAlways, mio::CreateIfMissing})
  {
    mucs::cString const fresh = dir.name("fresh");
    device->open(fresh, mio::OpenWriteOnly, create, mio::WriteAppend, true);
    write(device, "new");
    device->close();
    struct stat info;
    ASSERT_EQ(::stat(toString(fresh).c_str(), &info), 0);
    EXPECT_EQ(info.st_mode & 07777u, 0644u);
    EXPECT_EQ(fileBytes(fresh), "new");
    ::unlink(toString(fresh).c_str());
  }
  umask(former);
}

TEST_F(cLinuxFileImpl, AppendingKeepsWhatIsThereAndTruncatingDoesNot)
{
  openToWrite(mio::WriteAppend);
  device->seek(0, mio::SeekFromStart);
  write(device, "AB");
  device->close();
  EXPECT_EQ(fileBytes(name), "0123456789AB");
  openToWrite(mio::WriteTruncate);
  write(device, "AB");
  device->close();
  EXPECT_EQ(fileBytes(name), "AB");
  openToRead(); // with the mode that would truncate
  device->close();
  EXPECT_EQ(fileBytes(name), "AB");
}

TEST_F(cLinuxFileImpl, ALinkOpensOnlyIfItMayBeFollowed)
{
  mucs::cString const link = dir.name("link");
  ASSERT_EQ(symlink("f", toString(link).c_str()), 0);
  EXPECT_EQ(osFailureOf([&] { device->open(link, mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, false); }),
            osFailure("open", ELOOP, toString(link)));
  device->open(link, mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(readAll(device), "0123456789");
}

TEST_F(cLinuxFileImpl, OpenClosesWhatIsOpen)
{
  unsigned int const iBefore = cFaultShim::numDescriptors();
  openToRead();
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore + 1);
  device->open(device->name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore + 1);
  EXPECT_THROW(device->open(dir.name("x"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true),
               mstd::cOSErrorException);
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore) << "a failed open leaves the file closed";
  EXPECT_EQ(osFailureOf([&] { device->pos(); }), osFailure("seek", 77, path));
}

TEST_F(cLinuxFileImpl, ASecondCloseDoesNothing)
{
  device->setRemoveOnClose();
  device->close();
  EXPECT_TRUE(std::filesystem::exists(path)) << "it was never open";
  openToRead();
  device->close();
  EXPECT_FALSE(std::filesystem::exists(path));
  putFile(name, "another");
  cFaultShim shim;
  device->close();
  EXPECT_EQ(shim.numCalls(), 0u);
  EXPECT_EQ(fileBytes(name), "another");
}

TEST_F(cLinuxFileImpl, CloseForgetsTheSizeAndTheMapping)
{
  openToRead();
  EXPECT_EQ(device.size(false), 10u);
  device->mmap();
  device->close();
  putFile(name, "012");
  openToRead();
  EXPECT_EQ(device.size(false), 3u);
  device->mmap(); // would fail if the former one were still there
  device->munmap();
}

TEST_F(cLinuxFileImpl, CloseWritesWhatTheDeviceHoldsBack)
{
  device->open(name, mio::OpenReadWrite, mio::CreateNever, mio::WriteMode(2), true);
  device.proxyAt(3) = 'X';
  EXPECT_EQ(fileBytes(name), "0123456789");
  device->close();
  EXPECT_EQ(fileBytes(name), "012X456789");
}

TEST_F(cLinuxFileImpl, FlushWritesWhatTheDeviceHoldsBack)
{
  device->open(name, mio::OpenReadWrite, mio::CreateNever, mio::WriteMode(2), true);
  device.proxyAt(3) = 'X';
  device->flush();
  EXPECT_EQ(fileBytes(name), "012X456789");
}

TEST_F(cLinuxFileImpl, ACloseThatCannotWriteLeavesTheFileOpenForAnotherTry)
{
  device->open(name, mio::OpenReadWrite, mio::CreateNever, mio::WriteMode(2), true);
  device.proxyAt(3) = 'X';
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Write, ENOSPC);
    EXPECT_EQ(osFailureOf([&] { device->close(); }), osFailure("write", ENOSPC, path));
    EXPECT_EQ(shim.numCalls(cFaultShim::Close), 0u);
  }
  device->close();
  EXPECT_EQ(fileBytes(name), "012X456789");
}

TEST_F(cLinuxFileImpl, AFailedCloseIsReportedAndTheFileIsClosedAllTheSame)
{
  unsigned int const iBefore = cFaultShim::numDescriptors();
  openToRead();
  device->setRemoveOnClose();
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Close, EIO);
    EXPECT_EQ(osFailureOf([&] { device->close(); }), osFailure("close", EIO, path));
  }
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
  EXPECT_EQ(osFailureOf([&] { device->pos(); }), osFailure("seek", 77, path));
  EXPECT_TRUE(std::filesystem::exists(path)) << "the removal comes behind the close";
}

TEST_F(cLinuxFileImpl, ReleaseTakesTheRemovalOnCloseBack)
{
  openToRead();
  device->setRemoveOnClose();
  device->release();
  device->close();
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(cLinuxFileImpl, ReadingEndsAtTheEndOfTheFile)
{
  openToRead();
  EXPECT_EQ(readAll(device, 4), "0123");
  EXPECT_EQ(readAll(device), "456789");
  EXPECT_EQ(readAll(device), "");
  EXPECT_EQ(device->readBytes(nullptr, 0), 0u);
}

TEST_F(cLinuxFileImpl, AReadOfMoreThanABlockGoesThroughInSeveralAndTellsTheTotal)
{
  std::filesystem::resize_file(path, block + 5);
  openToRead();
  cHugeMemory const memory(block + 100);
  cFaultShim shim;
  EXPECT_EQ(device->readBytes(memory.get(), block + 100), block + 5);
  EXPECT_EQ(shim.numCalls(cFaultShim::Read), 2u);
  EXPECT_EQ(shim.largestBlock(), block);
  EXPECT_EQ(std::string(memory.get(), 10), "0123456789");
}

TEST_F(cLinuxFileImpl, AWriteOfMoreThanABlockGoesThroughInSeveral)
{
  cHugeMemory const memory(2 * block + 5);
  device->open("/dev/null", mio::OpenWriteOnly, mio::CreateNever, mio::WriteAppend, true);
  cFaultShim shim;
  EXPECT_EQ(device->writeBytes(memory.get(), 2 * block + 5), 2 * block + 5);
  EXPECT_EQ(shim.numCalls(cFaultShim::Write), 3u);
  EXPECT_EQ(shim.largestBlock(), block);
}

TEST_F(cLinuxFileImpl, AReadIsRetriedThreeTimesWhenItIsInterrupted)
{
  openToRead();
  cFaultShim shim;
  shim.fail(cFaultShim::Read, EINTR, 3);
  EXPECT_EQ(readAll(device, 4), "0123");
  EXPECT_EQ(shim.numCalls(cFaultShim::Read), 4u);
  shim.fail(cFaultShim::Read, EINTR, 4);
  EXPECT_EQ(readAll(device), "") << "one more interruption ends it with what is there";
  EXPECT_EQ(shim.numCalls(cFaultShim::Read), 8u);
  EXPECT_EQ(readAll(device), "456789");
}

TEST_F(cLinuxFileImpl, AWriteIsRetriedThreeTimesInAllItsBlocks)
{
  cHugeMemory const memory(3 * block);
  device->open("/dev/null", mio::OpenWriteOnly, mio::CreateNever, mio::WriteAppend, true);
  cFaultShim shim;
  shim.fail(cFaultShim::Write, EINTR, 4, 1);
  EXPECT_EQ(device->writeBytes(memory.get(), 3 * block), block);
  EXPECT_EQ(shim.numCalls(cFaultShim::Write), 5u);
  // Two in the first block leave one for the second.
  shim.fail(cFaultShim::Write, EINTR, 2);
  shim.before(
      cFaultShim::Write, [&] { shim.fail(cFaultShim::Write, EINTR, 2); }, 3);
  EXPECT_EQ(device->writeBytes(memory.get(), 3 * block), block);
  EXPECT_EQ(shim.numCalls(cFaultShim::Write), 10u);
}

TEST_F(cLinuxFileImpl, AFailedReadIsWrittenToTheDebugOutput)
{
  openToRead();
  cCaptureOut out;
  char bytes[20];
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Read, EIO);
    EXPECT_EQ(osFailureOf([&] { device->readBytes(bytes, 20); }), osFailure("read", EIO, path));
  }
  ASSERT_EQ(out.lines().size(), 1u);
  EXPECT_EQ(out.lines()[0].text, "Error in cLinuxFileImpl::readBytes(char* pDst, piUInt64 iMax) " + path +
                                     " /Max: 20 /Block: 20 /R: -1 / " + strerror(EIO));
  EXPECT_EQ(out.lines()[0].file, "pi/cLinuxFileImpl");
}

TEST_F(cLinuxFileImpl, AFailedWriteIsRaisedWithoutAMessage)
{
  openToRead();
  cCaptureOut out;
  EXPECT_EQ(osFailureOf([&] { device->writeBytes("x", 1); }), osFailure("write", EBADF, path));
  EXPECT_EQ(out.text(), "");
}

TEST_F(cLinuxFileImpl, ADirectoryOpensButDoesNotRead)
{
  device->open(dir.path().c_str(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  cCaptureOut mute;
  EXPECT_EQ(osFailureOf([&] { readAll(device); }), osFailure("read", EISDIR, dir.path()));
}

TEST_F(cLinuxFileImpl, AShortReadEndsTheReadLikeTheEndOfTheFile)
{
  openToRead();
  cFaultShim shim;
  shim.limitRead(3);
  EXPECT_EQ(readAll(device), "012");
  EXPECT_EQ(shim.numCalls(cFaultShim::Read), 1u);
  EXPECT_EQ(readAll(device), "345");
}

TEST_F(cLinuxFileImpl, AShortWriteTellsWhatWasWritten)
{
  openToWrite(mio::WriteTruncate);
  cFaultShim shim;
  shim.limitWrite(3);
  EXPECT_EQ(device->writeBytes("abcdef", 6), 3u);
  EXPECT_EQ(shim.numCalls(cFaultShim::Write), 1u);
  EXPECT_EQ(device->writeBytes("def", 3), 3u);
  EXPECT_EQ(fileBytes(name), "abcdef");
}

TEST_F(cLinuxFileImpl, SeekingGoesFromStartPlaceAndEnd)
{
  openToRead();
  device->seek(4, mio::SeekFromStart);
  EXPECT_EQ(device->pos(), 4u);
  device->seek(-2, mio::SeekFromCurrent);
  EXPECT_EQ(device->pos(), 2u);
  device->seek(-1, mio::SeekFromEnd);
  EXPECT_EQ(device->pos(), 9u);
  EXPECT_EQ(osFailureOf([&] { device->seek(-1, mio::SeekFromStart); }), osFailure("seek", EINVAL, path));
  EXPECT_EQ(device->pos(), 9u);
  cFaultShim shim;
  shim.fail(cFaultShim::Seek, EIO);
  EXPECT_EQ(osFailureOf([&] { device->pos(); }), osFailure("seek", EIO, path));
}

TEST_F(cLinuxFileImpl, PlacesBehindFourGigabytesAreReached)
{
  openToWrite(mio::WriteTruncate);
  unsigned long long const iFar = 0x523456789ull;
  device->seek(static_cast<long long>(iFar), mio::SeekFromStart);
  EXPECT_EQ(device->pos(), iFar);
  device->close();
  std::filesystem::resize_file(path, iFar);
  device->open(name, mio::OpenReadWrite, mio::CreateNever, mio::WriteAppend, true);
  write(device, "end");
  EXPECT_EQ(device->pos(), iFar + 3);
  EXPECT_EQ(device.size(true), iFar + 3);
  device->seek(-3, mio::SeekFromEnd);
  EXPECT_EQ(readAll(device), "end");
}

TEST_F(cLinuxFileImpl, SeekWriteAndTruncateMakeTheDeviceForgetItsSize)
{
  openToWrite();
  auto const isForgotten = [&](auto const& action) {
    device.size(false);
    unsigned int const iBefore = device.numMeasured();
    device.size(false);
    EXPECT_EQ(device.numMeasured(), iBefore) << "the size is known";
    action();
    device.size(false);
    return device.numMeasured() != iBefore;
  };
  device.size(false);
  // Measuring seeks; after that the size is known until something else moves the end.
  EXPECT_TRUE(isForgotten([&] { device->seek(0, mio::SeekFromStart); }));
  EXPECT_TRUE(isForgotten([&] { write(device, "more"); }));
  EXPECT_TRUE(isForgotten([&] { device->truncate(5); }));
  EXPECT_FALSE(isForgotten([&] { device->pos(); }));
  EXPECT_EQ(device.size(false), 5u);
}

TEST_F(cLinuxFileImpl, TruncatingShortensAndLengthens)
{
  openToWrite();
  device->truncate(4);
  EXPECT_EQ(fileBytes(name), "0123");
  device->truncate(6);
  EXPECT_EQ(fileBytes(name), std::string("0123\0\0", 6));
  device->close();
  openToRead();
  EXPECT_EQ(osFailureOf([&] { device->truncate(1); }), osFailure("truncate", EINVAL, path));
}

TEST_F(cLinuxFileImpl, TheTimeOfTheLastChangeIsTold)
{
  utimbuf const times = {1111111111, 1234567890};
  ASSERT_EQ(utime(path.c_str(), &times), 0);
  openToRead();
  EXPECT_EQ(device->lastModified().get(), 1234567890000000ull);
  cFaultShim shim;
  shim.fail(cFaultShim::FStat, EIO);
  EXPECT_EQ(osFailureOf([&] { device->lastModified(); }), osFailure("stat", EIO, path));
}

TEST_F(cLinuxFileImpl, AFileOpenedForWritingIsNotMapped)
{
  openToWrite();
  EXPECT_EQ(runtimeMessage([&] { device->mmap(); }), "MMAP not supported in r/w mode!");
}

TEST_F(cLinuxFileImpl, ASecondMappingFailsUntilTheFirstIsGone)
{
  openToRead();
  device->mmap();
  EXPECT_EQ(runtimeMessage([&] { device->mmap(); }), "File is already memory mapped!");
  device->munmap();
  device->mmap();
  device->munmap();
  device->munmap();
}

TEST_F(cLinuxFileImpl, AMappingThatTheSystemRefusesCountsAsOne)
{
  openToRead();
  {
    cFaultShim shim;
    shim.fail(cFaultShim::MMap, ENOMEM);
    device->mmap();
    EXPECT_EQ(shim.numFaults(), 1u);
  }
  EXPECT_EQ(runtimeMessage([&] { device->mmap(); }), "File is already memory mapped!");
  device->munmap();
  device->mmap();
  device->close();
  // An empty file is one of these cases.
  putFile(name, "");
  openToRead();
  device->mmap();
  EXPECT_EQ(runtimeMessage([&] { device->mmap(); }), "File is already memory mapped!");
}

TEST_F(cLinuxFileImpl, AFailedRemoveHasTheResultAsItsCode)
{
  device->remove();
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(osFailureOf([&] { device->remove(); }), osFailure("unlink", -1, path));
}

TEST_F(cLinuxFileImpl, ARenamedFileIsTheOneThatIsRemovedOnClose)
{
  openToRead();
  mucs::cString const other = dir.name("other");
  device->rename(other);
  EXPECT_FALSE(std::filesystem::exists(path));
  EXPECT_EQ(toString(device->name()), toString(other));
  putFile(name, "somebody else's");
  device->setRemoveOnClose();
  device->close();
  EXPECT_EQ(fileBytes(name), "somebody else's");
  EXPECT_FALSE(std::filesystem::exists(toString(other)));
}

TEST_F(cLinuxFileImpl, AFailedRenameKeepsTheName)
{
  EXPECT_EQ(osFailureOf([&] { device->rename(dir.name("no/where")); }), osFailure("rename", ENOENT, path));
  EXPECT_EQ(toString(device->name()), path);
}

TEST_F(cLinuxFileImpl, ADeepCopyHasADescriptorOfItsOwnAndSharesThePlace)
{
  unsigned int const iBefore = cFaultShim::numDescriptors();
  device->open(name, mio::OpenReadWrite, mio::CreateNever, mio::WriteAppend, true);
  device->setRemoveOnClose();
  device->seek(2, mio::SeekFromStart);
  {
    cImplDevice copy(device);
    EXPECT_EQ(cFaultShim::numDescriptors(), iBefore + 2);
    EXPECT_EQ(&copy->bd(), &copy);
    EXPECT_EQ(&copy->fs(), &device->fs());
    EXPECT_EQ(toString(copy->name()), path);
    EXPECT_EQ(readAll(copy, 3), "234");
    EXPECT_EQ(device->pos(), 5u);
    EXPECT_EQ(runtimeMessage([&] { copy->mmap(); }), "MMAP not supported in r/w mode!") << "copied: opened for writing";
    device->release();
    device->close();
    EXPECT_TRUE(std::filesystem::exists(path));
    copy->close();
    EXPECT_FALSE(std::filesystem::exists(path)) << "copied: removal on close";
  }
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

TEST_F(cLinuxFileImpl, ADeepCopyIsNotMapped)
{
  openToRead();
  device->mmap();
  cImplDevice copy(device);
  copy->mmap();
  copy->munmap();
}

TEST_F(cLinuxFileImpl, ACopyOfAClosedFileIsClosed)
{
  cImplDevice copy(device);
  EXPECT_EQ(osFailureOf([&] { copy->pos(); }), osFailure("seek", 77, path));
}

TEST_F(cLinuxFileImpl, ACopyThatGetsNoDescriptorIsNotMade)
{
  openToRead();
  unsigned int const iBefore = cFaultShim::numDescriptors();
  cFaultShim shim;
  shim.fail(cFaultShim::Dup, EMFILE);
  EXPECT_EQ(osFailureOf([&] { cImplDevice copy(device); }), osFailure("dup", EMFILE, path));
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
}

TEST_F(cLinuxFileImpl, DescriptorZeroIsNeverHeld)
{
  int const iKept = fcntl(0, F_DUPFD, 100);
  ::close(0);
  openToRead();
  EXPECT_EQ(fcntl(0, F_GETFD), -1);
  EXPECT_EQ(readAll(device, 3), "012");
  cImplDevice copy(device);
  EXPECT_EQ(fcntl(0, F_GETFD), -1);
  EXPECT_EQ(readAll(copy, 3), "345");
  if (iKept >= 0)
  {
    dup2(iKept, 0);
    ::close(iKept);
  }
}

TEST_F(cLinuxFileImpl, AnImplementationThatGoesGivesEverythingBack)
{
  unsigned int const iBefore = cFaultShim::numDescriptors();
  openToRead();
  device->mmap();
  device->setRemoveOnClose();
  device.drop();
  EXPECT_EQ(cFaultShim::numDescriptors(), iBefore);
  EXPECT_FALSE(std::filesystem::exists(path));
}

TEST_F(cLinuxFileImpl, AnImplementationThatGoesClosedRemovesNothing)
{
  device->setRemoveOnClose();
  device.drop();
  EXPECT_TRUE(std::filesystem::exists(path));
}

TEST_F(cLinuxFileImpl, ANameWithAZeroInItIsNotCutOff)
{
  mucs::cString cut(name);
  cut.append(0u);
  cut.appendC(".txt");
  EXPECT_EQ(osFailureOf([&] { device->open(cut, mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true); }),
            osFailure("open", ENOENT, toString(cut)));
}
