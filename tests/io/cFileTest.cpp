#include "io/cFile.h"

#include "io/cAbstractFileImpl.h"
#include "io/cFs.h"
#include "pi/cSystem.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "std/tArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/cMemoryDevice.h"
#include "support/cTempDir.h"
#include "support/expectFailure.h"
#include "support/messageOf.h"
#include "support/virtualclock.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <utility>

namespace
{

using mio::cFile;
using support::bytesOf;
typedef std::vector<std::string> tStrings;

/// A directory with one file, to be opened in all ways.
class FileTest : public testing::Test
{
protected:
  std::string path() const { return mDir.path() + "/file"; }
  mucs::cString name() const { return mDir.name("file"); }
  void put(std::string const& contents) const { std::ofstream(path(), std::ios::binary) << contents; }
  std::string contents() const
  {
    std::ostringstream all;
    all << std::ifstream(path(), std::ios::binary).rdbuf();
    return all.str();
  }
  cFile reader() const { return cFile(name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteTruncate); }
  cFile editor() const { return cFile(name(), mio::OpenReadWrite, mio::CreateIfMissing, mio::WriteInPlace); }

  support::cTempDir mDir;
};

class cFileTest : public FileTest
{
};
class cFileLinesTest : public FileTest
{
};

std::string readText(cFile& file, unsigned int size)
{
  std::string bytes(size, '?');
  bytes.resize(file.read(&bytes[0], size));
  return bytes;
}

void writeText(cFile& file, std::string const& text)
{
  ASSERT_EQ(file.write(text.data(), text.size()), text.size());
}

std::string lineOf(mio::cAbstractIODevice& file)
{
  mstd::tArray<char> line;
  return file.readTextLine(line, 0) ? bytesOf(line) : "(" + bytesOf(line) + ")";
}

template <class tAction>
std::string osErrorOf(tAction const& action)
{
  support::cCaptureOut mute;
  return support::messageOf<mstd::cOSErrorException>(action);
}

} // namespace

TEST_F(cFileTest, AFileIsOpenedAsItIsMade)
{
  put("0123456789");
  cFile file(name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteTruncate);
  EXPECT_EQ(readText(file, 4), "0123");
  EXPECT_EQ(file.pos(), 4u);
  EXPECT_TRUE(file.name() == name());
  EXPECT_EQ(&file.fs(), &mpi::system().fs);
  cFile const other(path().c_str(), mio::OpenReadOnly, mio::CreateNever, mio::WriteTruncate);
  EXPECT_EQ(other.size(false), 10u);
  EXPECT_EQ(contents(), "0123456789"); // the write mode counts for writing only
}

TEST_F(cFileTest, AFileMayExistUnopened)
{
  mio::cFs fs;
  cFile file(fs, name());
  EXPECT_EQ(&file.fs(), &fs);
  EXPECT_FALSE(std::filesystem::exists(path()));
  EXPECT_NE(osErrorOf([&] { readText(file, 1); }), "(nothing was raised)");
  file.close();
  for (int i = 0; i < 2; ++i)
  {
    file.open(name(), mio::OpenReadWrite, mio::CreateIfMissing, mio::WriteAppend, true);
    writeText(file, "x");
    file.close();
    file.close();
  }
  EXPECT_EQ(contents(), "xx");
}

TEST_F(cFileTest, AnOpenThatFailsKeepsItsCause)
{
  try
  {
    reader();
    FAIL();
  }
  catch (mstd::cRuntimeException const& e)
  {
    EXPECT_EQ(support::messageOf(e), "Unable to open file \"" + path() + "\"!");
    ASSERT_NE(e.history(), nullptr);
    mstd::cOSErrorException const* const cause = dynamic_cast<mstd::cOSErrorException const*>(e.history());
    ASSERT_NE(cause, nullptr);
    EXPECT_EQ(cause->osErrorCode(), ENOENT);
  }
}

TEST_F(cFileTest, AnOpenThatFailsLeavesTheFileClosed)
{
  put("0123456789");
  cFile file = reader();
  EXPECT_EQ(file.cAbstractIOBlockDevice::size(false), 10u);
  EXPECT_THROW(file.open(mDir.name("missing"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true),
               mstd::cRuntimeException);
  EXPECT_NE(osErrorOf([&] { readText(file, 1); }), "(nothing was raised)");
}

TEST_F(cFileTest, ModesMakeEmptyAndAppend)
{
  cFile(name(), mio::OpenWriteOnly, mio::CreateAlways, mio::WriteAppend).write("one", 3);
  cFile(name(), mio::OpenWriteOnly, mio::CreateNever, mio::WriteAppend).write("two", 3);
  EXPECT_EQ(contents(), "onetwo");
  cFile(name(), mio::OpenReadWrite, mio::CreateNever, mio::WriteTruncate).write("x", 1);
  EXPECT_EQ(contents(), "x");
  cFile(name(), mio::OpenReadWrite, mio::CreateNever, mio::WriteInPlace).write("yz", 2);
  EXPECT_EQ(contents(), "yz");
}

TEST_F(cFileTest, SeekCountsFromThreePlaces)
{
  put("0123456789");
  cFile file = reader();
  file.seek(3, mio::SeekFromStart);
  EXPECT_EQ(file.pos(), 3u);
  file.seek(2, mio::SeekFromCurrent);
  EXPECT_EQ(readText(file, 1), "5");
  file.seek(-1, mio::SeekFromEnd);
  EXPECT_EQ(readText(file, 9), "9");
  EXPECT_TRUE(file.eof());
  EXPECT_EQ(file.bytesLeft(), 0u);
  EXPECT_NE(osErrorOf([&] { file.seek(-11, mio::SeekFromEnd); }), "(nothing was raised)");
  EXPECT_EQ(file.pos(), 10u);
}

TEST_F(cFileTest, TruncateCutsAndFills)
{
  put("0123456789");
  cFile file = editor();
  EXPECT_EQ(file.size(false), 10u);
  file.truncate(4);
  EXPECT_EQ(file.size(false), 4u);
  file.truncate(6);
  EXPECT_EQ(contents(), std::string("0123\0\0", 6));
}

TEST_F(cFileTest, TheNameChangesWithTheFile)
{
  put("x");
  cFile file = editor();
  file.rename(mDir.name("other"));
  EXPECT_FALSE(std::filesystem::exists(path()));
  EXPECT_TRUE(std::filesystem::exists(mDir.path() + "/other"));
}

TEST_F(cFileTest, AFileIsRemovedNowOrWhenItIsClosed)
{
  put("x");
  {
    cFile file = reader();
    file.remove();
    EXPECT_FALSE(std::filesystem::exists(path()));
    EXPECT_EQ(readText(file, 1), "x");
  }
  put("x");
  {
    cFile file = reader();
    file.setRemoveOnClose();
    EXPECT_TRUE(std::filesystem::exists(path()));
  }
  EXPECT_FALSE(std::filesystem::exists(path()));
  put("x");
  {
    cFile file = reader();
    file.setRemoveOnClose();
    file.release();
  }
  EXPECT_TRUE(std::filesystem::exists(path()));
}

TEST_F(cFileTest, ItsTimeIsThatOfItsLastChange)
{
  put("x");
  timespec const times[2] = {{1000000000, 0}, {1234567890, 0}};
  ASSERT_EQ(utimensat(AT_FDCWD, path().c_str(), times, 0), 0);
  EXPECT_EQ(reader().lastModified().utcTime().toSec(), 1234567890u);
}

TEST_F(cFileTest, AMappedFileIsProvidedInOneBlock)
{
  put("0123456789");
  cFile file = reader();
  file.mmap();
  EXPECT_EQ(file.proxyPreferredBlockSize(), 0u);
  mstd::tConstArrayRef<char> const view(file);
  bool found = false;
  EXPECT_EQ(view.find("56", 2, found), 5u);
  EXPECT_TRUE(found);
}

TEST_F(cFileTest, ItsEndWritesTheWindow)
{
  put("0123456789");
  {
    cFile file = editor();
    file.proxyAt(4) = 'x';
    EXPECT_EQ(contents(), "0123456789");
  }
  EXPECT_EQ(contents(), "0123x56789");
}

TEST_F(cFileTest, CloseWritesTheWindow)
{
  put("0123456789");
  cFile file = editor();
  file.proxyAt(4) = 'x';
  file.close();
  EXPECT_EQ(contents(), "0123x56789");
}

TEST_F(cFileTest, FlushWritesTheWindowAndKeepsThePosition)
{
  put("0123456789");
  cFile file = editor();
  file.proxyAt(4) = 'x';
  file.seek(7, mio::SeekFromStart);
  file.flush();
  EXPECT_EQ(contents(), "0123x56789");
  EXPECT_EQ(file.pos(), 7u);
}

TEST_F(cFileTest, WhatGoesWrongAtItsEndIsTold)
{
  put("x");
  support::cCaptureOut out;
  {
    cFile file = reader();
    file.setRemoveOnClose();
    std::filesystem::remove(path());
  }
  EXPECT_TRUE(out.contains("Exception in destructor:"));
  EXPECT_TRUE(out.contains("unlink"));
}

TEST_F(cFileTest, ChangesInTheWindowOfAFileThatIsReadAreLost)
{
  put("0123456789");
  {
    cFile file = reader();
    file.proxyAt(4) = 'x';
    file.close();
    file.open(name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
    EXPECT_EQ(file.proxyAt(4), '4');
  }
  EXPECT_EQ(contents(), "0123456789");
}

TEST_F(cFileTest, NoWindowIsReadFromAFileThatIsWrittenOnly)
{
  put("0123456789");
  cFile file(name(), mio::OpenWriteOnly, mio::CreateNever, mio::WriteInPlace);
  EXPECT_NE(osErrorOf([&] { file.proxyAt(0); }), "(nothing was raised)");
}

TEST_F(cFileTest, TheWindowOfOneFileIsNotThatOfTheNext)
{
  put("0123456789");
  std::ofstream(mDir.path() + "/other") << "abcdefghij";
  cFile file = reader();
  cFile const& constant = file;
  EXPECT_EQ(constant.proxyAt(2), '2');
  file.open(mDir.name("other"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(constant.proxyAt(2), 'c');
  file.proxyAt(3) = 'x';
  file.open(name(), mio::OpenReadWrite, mio::CreateNever, mio::WriteInPlace, true);
  file.flush();
  EXPECT_EQ(contents(), "0123456789");
}

TEST_F(cFileTest, ReadsSeeAndWritesReplaceWhatTheWindowHolds)
{
  put("0123456789");
  cFile file = editor();
  file.proxyAt(4) = 'x';
  file.seek(3, mio::SeekFromStart);
  EXPECT_EQ(readText(file, 3), "3x5");
  EXPECT_EQ(file.pos(), 6u);
  file.proxyAt(5) = 'y';
  file.seek(5, mio::SeekFromStart);
  writeText(file, "z");
  EXPECT_EQ(file.pos(), 6u);
  EXPECT_EQ(file.proxyAt(5), 'z');
  file.close();
  EXPECT_EQ(contents(), "0123xz6789");
}

TEST_F(cFileTest, TruncatedChangesDoNotComeBack)
{
  put("0123456789");
  cFile file = editor();
  file.proxyAt(2) = 'x';
  file.proxyAt(8) = 'y';
  file.truncate(5);
  file.close();
  EXPECT_EQ(contents(), "01x34");
}

TEST_F(cFileTest, ItIsAnArrayThatGrowsAndShrinksAtItsEnd)
{
  put("0123456789");
  cFile file = editor();
  mstd::tArrayRef<char> view(file);
  view.append("abc");
  EXPECT_EQ(contents(), "0123456789abc");
  {
    support::cCaptureOut mute;
    view.truncate(5);
  }
  EXPECT_EQ(contents(), "01234");
  view.proxySetSize(7);
  EXPECT_EQ(contents(), std::string("01234\0\0", 7));
  EXPECT_EQ(view.length(), 7u);
}

TEST_F(cFileTest, ACopySharesThePosition)
{
  put("0123456789");
  cFile file = reader();
  EXPECT_EQ(readText(file, 2), "01");
  {
    cFile copy(file);
    EXPECT_EQ(readText(copy, 2), "23");
    EXPECT_EQ(readText(file, 2), "45");
  }
  EXPECT_EQ(readText(file, 2), "67"); // the copy closed only its own descriptor
}

TEST_F(cFileTest, ACopyFindsTheChangesOfTheWindowWritten)
{
  put("0123456789");
  cFile file = editor();
  file.seek(2, mio::SeekFromStart);
  file.proxyAt(4) = 'x';
  file.seek(2, mio::SeekFromStart);
  cFile copy(file);
  EXPECT_EQ(contents(), "0123x56789");
  EXPECT_EQ(copy.pos(), 2u);
  copy.close();
  file.proxyAt(5) = 'y';
  file.close();
  EXPECT_EQ(contents(), "0123xy6789");
}

TEST_F(cFileTest, AssignmentAndSwapExchangeFiles)
{
  put("0123456789");
  std::ofstream(mDir.path() + "/other") << "abcdefghij";
  cFile file = editor();
  cFile other(mDir.name("other"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend);
  file.proxyAt(0) = 'x';
  file.swap(other);
  EXPECT_TRUE(other.name() == name());
  EXPECT_EQ(file.proxyAt(1), 'b');
  EXPECT_EQ(other.proxyAt(0), 'x');
  file = other;
  EXPECT_TRUE(file.name() == name());
  EXPECT_EQ(contents(), "x123456789");
  EXPECT_EQ(file.size(false), 10u);
  EXPECT_EQ(other.size(false), 10u);
}

TEST_F(cFileTest, AMovedFileLeavesAClosedOne)
{
  put("0123456789");
  cFile file = reader();
  EXPECT_EQ(readText(file, 2), "01");
  cFile moved(std::move(file));
  EXPECT_EQ(readText(moved, 2), "23");
  EXPECT_NE(osErrorOf([&] { readText(file, 1); }), "(nothing was raised)");
}

TEST_F(cFileTest, ASymbolicLinkIsFollowedAsTold)
{
  put("0123456789");
  std::filesystem::create_symlink(path(), mDir.path() + "/link");
  cFile file(mDir.name("link"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(readText(file, 2), "01");
  EXPECT_THROW(file.open(mDir.name("link"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, false),
               mstd::cRuntimeException);
}

// Lines are read in blocks, and nobody sees it.

TEST_F(cFileLinesTest, LinesAreThoseOfEveryDevice)
{
  std::mt19937 random(20261121);
  RecordProperty("seed", "20261121");
  for (int round = 0; round < 300; ++round)
  {
    std::string text(random() % 200, '\0');
    for (char& c : text)
    {
      c = "\r\nab;:\n\0"[random() % 8];
    }
    put(text);
    cFile file = reader();
    support::cMemoryDevice device(text);
    char const* const terminators[] = {"", "\n", ";", "ab", "aab", "::;"};
    for (int step = 0; step < 60; ++step)
    {
      mstd::tArray<char> line;
      mstd::tArray<char> expected;
      bool result;
      bool expectedResult;
      if (random() % 2 == 0)
      {
        result = file.readTextLine(line, 0);
        expectedResult = device.readTextLine(expected, 0);
      }
      else
      {
        mstd::tArray<char> const terminator(terminators[random() % 20 == 0 ? 0 : 1 + random() % 5]);
        bool const keep = random() % 2 == 0;
        result = file.readTextLine(line, terminator, keep);
        expectedResult = device.readTextLine(expected, terminator, keep);
      }
      ASSERT_EQ(bytesOf(line), bytesOf(expected)) << round;
      ASSERT_EQ(result, expectedResult) << round;
      ASSERT_EQ(file.pos(), device.pos()) << round;
      if (random() % 4 == 0)
      {
        long long const place = static_cast<long long>(random() % (text.size() + 1));
        file.seek(place, mio::SeekFromStart);
        device.seek(place, mio::SeekFromStart);
      }
      else if (random() % 4 == 0)
      {
        char one = 0;
        char other = 0;
        ASSERT_EQ(file.read(&one, 1), device.read(&other, 1));
        ASSERT_EQ(one, other);
      }
    }
  }
}

TEST_F(cFileLinesTest, LinesLongerThanABlockAreWhole)
{
  std::string const first(200000, 'a');
  std::string const second(70000, 'b');
  put(first + "\r\n" + second + "\r" + "end");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), first);
  EXPECT_EQ(lineOf(file), second);
  EXPECT_EQ(lineOf(file), "(end)");
  EXPECT_EQ(lineOf(file), "()");
  file.seek(0, mio::SeekFromStart);
  mstd::tArray<char> line;
  EXPECT_TRUE(file.readTextLine(line, mstd::tArray<char>("ab"), true) == false);
  EXPECT_EQ(line.length(), first.size() + second.size() + 6);
}

TEST_F(cFileLinesTest, ATerminatorMayCrossABlock)
{
  for (unsigned int size : {4094u, 4095u, 4096u, 65536u + 4094u, 65536u + 4095u, 65536u + 4096u})
  {
    put(std::string(size, 'x') + "12345" + "y");
    cFile file = reader();
    mstd::tArray<char> line;
    EXPECT_TRUE(file.readTextLine(line, mstd::tArray<char>("12345"), false));
    EXPECT_EQ(line.length(), size);
    EXPECT_EQ(file.pos(), size + 5);
    EXPECT_EQ(lineOf(file), "(y)");
  }
}

TEST_F(cFileLinesTest, ThePositionIsBehindTheLine)
{
  put("one\ntwo\nthree\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(file.pos(), 4u);
  EXPECT_EQ(file.bytesLeft(), 10u);
  EXPECT_FALSE(file.eof());
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(file.pos(), 8u);
  file.seek(-4, mio::SeekFromCurrent);
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(readText(file, 2), "th");
  EXPECT_EQ(lineOf(file), "ree");
  EXPECT_TRUE(file.eof());
}

TEST_F(cFileLinesTest, AWriteGoesBehindTheLine)
{
  put("one\ntwo\nthree\n");
  cFile file = editor();
  EXPECT_EQ(lineOf(file), "one");
  writeText(file, "TWO");
  EXPECT_EQ(contents(), "one\nTWO\nthree\n");
  EXPECT_EQ(lineOf(file), "three");
}

TEST_F(cFileLinesTest, ACopyGoesOnBehindTheLine)
{
  put("one\ntwo\nthree\nfour\nfive\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  {
    cFile copy(file);
    EXPECT_EQ(copy.pos(), 4u);
    EXPECT_EQ(lineOf(copy), "two");
    EXPECT_EQ(file.pos(), 8u);
    EXPECT_EQ(lineOf(file), "three");
    EXPECT_EQ(copy.pos(), 14u);
    EXPECT_EQ(lineOf(copy), "four");
  }
  EXPECT_EQ(lineOf(file), "five");
}

TEST_F(cFileLinesTest, NothingOfOneFileIsLeftForTheNext)
{
  put("one\ntwo\n");
  std::ofstream(mDir.path() + "/other") << "eins\nzwei\n";
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  file.open(mDir.name("other"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(file.pos(), 0u);
  EXPECT_EQ(lineOf(file), "eins");
  EXPECT_EQ(lineOf(file), "zwei");
}

TEST_F(cFileLinesTest, AFifoMayFollowAFileAndAFileAFifo)
{
  put("one\ntwo\n");
  std::string const fifo = mDir.path() + "/fifo";
  ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
  int const keeper = ::open(fifo.c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(keeper, 0);
  ASSERT_EQ(::write(keeper, "eins\nzwei\n", 10), 10);
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  file.open(mDir.name("fifo"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(lineOf(file), "eins");
  EXPECT_EQ(readText(file, 5), "zwei\n");
  file.open(name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(file.pos(), 4u);
  ::close(keeper);
}

TEST_F(cFileLinesTest, SwappedFilesTakeWhatTheyKnowOfTheirLinesAlong)
{
  put("one\ntwo\nthree\n");
  std::ofstream(mDir.path() + "/other") << "eins\nzwei\ndrei\n";
  cFile file = reader();
  cFile copy(file); // shares the position
  cFile other(mDir.name("other"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(lineOf(other), "eins");
  file.swap(other);
  EXPECT_EQ(lineOf(other), "one");
  EXPECT_EQ(lineOf(copy), "two");
  EXPECT_EQ(lineOf(other), "three");
  EXPECT_EQ(file.pos(), 5u);
  EXPECT_EQ(lineOf(file), "zwei");
  EXPECT_EQ(lineOf(file), "drei");
}

TEST_F(cFileLinesTest, AFifoThatWasSwappedGivesNothingBackEither)
{
  ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
  int const keeper = ::open(path().c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(keeper, 0);
  ASSERT_EQ(::write(keeper, "one\ntwo\nthree\n", 14), 14);
  std::ofstream(mDir.path() + "/other") << "eins\nzwei\n";
  cFile fifo = reader();
  cFile file(mDir.name("other"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(lineOf(fifo), "one");
  EXPECT_EQ(lineOf(file), "eins");
  fifo.swap(file);
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(readText(file, 6), "three\n");
  EXPECT_EQ(lineOf(fifo), "zwei");
  ::close(keeper);
}

TEST_F(cFileLinesTest, AnotherFileSeesTheDescriptorBehindTheLine)
{
  // Whoever gets the descriptor itself, for instance by a fork, is not asked before: so a copy is made to look with.
  put("one\ntwo\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  cFile const copy(file);
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(copy.pos(), 8u);
}

TEST_F(cFileLinesTest, ChangesByOtherFilesAreSeen)
{
  put("one\ntwo\nthree\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  cFile other = editor();
  other.seek(4, mio::SeekFromStart);
  writeText(other, "TWO");
  EXPECT_EQ(lineOf(file), "TWO");
  other.proxyAt(8) = 'T';
  other.flush();
  EXPECT_EQ(lineOf(file), "Three");
  EXPECT_EQ(lineOf(file), "()");
  writeText(other, "");
  other.seek(0, mio::SeekFromEnd);
  writeText(other, "four\n");
  EXPECT_EQ(lineOf(file), "four");
  file.seek(0, mio::SeekFromStart);
  EXPECT_EQ(lineOf(file), "one");
  other.truncate(6);
  EXPECT_EQ(lineOf(file), "(TW)");
}

TEST_F(cFileLinesTest, AnOpenThatEmptiesTheFileIsSeen)
{
  put("one\ntwo\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  cFile const other(name(), mio::OpenWriteOnly, mio::CreateNever, mio::WriteTruncate);
  EXPECT_EQ(lineOf(file), "()");
}

TEST_F(cFileLinesTest, ChangesInTheOwnWindowAreSeen)
{
  put("one\ntwo\nthree\n");
  cFile file = editor();
  file.proxyAt(4) = 'T';
  file.seek(0, mio::SeekFromStart);
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(lineOf(file), "Two");
  file.proxyAt(8) = 'T';
  file.seek(8, mio::SeekFromStart);
  EXPECT_EQ(lineOf(file), "Three");
}

TEST_F(cFileLinesTest, WhatIsAppendedIsFoundAtTheEnd)
{
  put("one\ntw");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(lineOf(file), "(tw)");
  std::ofstream(path(), std::ios::app) << "o\nthree\n"; // by somebody else
  EXPECT_EQ(lineOf(file), "o");
  EXPECT_EQ(lineOf(file), "three");
  EXPECT_EQ(lineOf(file), "()");
}

TEST_F(cFileLinesTest, LinesCopiedFromFileToFileComeOutWhole)
{
  std::string text;
  for (int i = 0; i < 5000; ++i)
  {
    text += std::to_string(i * 7919) + "\n";
  }
  put(text);
  cFile file = reader();
  cFile target(mDir.name("target"), mio::OpenReadWrite, mio::CreateIfMissing, mio::WriteTruncate);
  mstd::tArray<char> line;
  while (file.readTextLine(line, 0))
  {
    target.writeTextLine(mstd::tConstArrayRef<char>(line), mstd::cAsciiString("\n"));
  }
  target.seek(0, mio::SeekFromStart);
  EXPECT_EQ(readText(target, 1000000), text);
}

TEST_F(cFileLinesTest, AFifoGivesNothingBackAndLosesNothing)
{
  ASSERT_EQ(mkfifo(path().c_str(), 0600), 0);
  int const keeper = ::open(path().c_str(), O_RDWR | O_CLOEXEC);
  ASSERT_GE(keeper, 0);
  ASSERT_EQ(::write(keeper, "one\ntwo\nthree\n", 14), 14);
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(readText(file, 4), "two\n");
  EXPECT_EQ(lineOf(file), "three");
  ::close(keeper);
  EXPECT_EQ(lineOf(file), "()");
}

TEST_F(cFileLinesTest, ALineOfAClosedFileFails)
{
  mio::cFs fs;
  cFile file(fs, name());
  EXPECT_NE(osErrorOf([&] { lineOf(file); }), "(nothing was raised)");
  put("one\n");
  file.open(name(), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(lineOf(file), "one");
}

TEST_F(cFileLinesTest, TimeIsLookedAtWhereAByteWouldBe)
{
  put("one\ntwo\nthree\n");
  support::cVirtualClock clock;
  clock.setTick(600); // each look at the clock
  cFile file = reader();
  mstd::tArray<char> line;
  mstd::tArray<char> const terminator("\n");
  EXPECT_TRUE(file.readTextLine(line, terminator, false, 0)); // 600 microseconds
  EXPECT_EQ(bytesOf(line), "one");
  clock.setTick(1000);
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { file.readTextLine(line, terminator, false, 0); }),
            "Timeout while i/o operation after 0 milliseconds!");
  EXPECT_EQ(bytesOf(line), "t");
  EXPECT_EQ(file.pos(), 5u);
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] {
              clock.setTick(6000);
              file.readTextLine(line, 5);
            }),
            "Timeout while i/o operation after 5 milliseconds!");
  EXPECT_EQ(bytesOf(line), "w");
  EXPECT_TRUE(file.readTextLine(line, 0)); // no limit
  EXPECT_EQ(bytesOf(line), "o");
  EXPECT_TRUE(file.readTextLine(line, terminator, false));
  EXPECT_EQ(bytesOf(line), "three");
}
