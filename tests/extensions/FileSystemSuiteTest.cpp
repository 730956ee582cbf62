// What every file system has to do alike: the platform's, and the one in memory, mounted and alone.

#include "extensions/cFileSystem.h"
#include "io/cDir.h"
#include "io/cDirInfo.h"
#include "io/cFile.h"
#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "io/cPermissions.h"
#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "std/tConstListRef.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <errno.h>

#include <algorithm>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace
{

using support::caught;
using support::failure;
using support::failureOf;
using support::messageOf;
using support::toString;

typedef std::function<std::unique_ptr<support::cFileSystem>()> tMaker;
typedef std::vector<std::string> tTexts;

struct tBackEnd
{
  char const* name;
  tMaker make;
};

void PrintTo(tBackEnd const& backEnd, std::ostream* out)
{
  *out << backEnd.name;
}

class FileSystemSuite : public testing::TestWithParam<tBackEnd>
{
protected:
  FileSystemSuite() : mpFileSystem(GetParam().make()), fs(mpFileSystem->fs()) {}

  std::string text(std::string const& name) const { return mpFileSystem->root() + "/" + name; }
  mucs::cString at(std::string const& name) const { return mucs::cString(text(name).c_str()); }

  void put(std::string const& name, std::string const& bytes)
  {
    mio::cFile file = fs.fileOpenWrite(at(name), mio::CreateAlways, mio::WriteTruncate);
    ASSERT_EQ(file.write(bytes.data(), bytes.size()), bytes.size());
    file.close();
  }
  static std::string read(mio::cFile& file, unsigned int iSize)
  {
    std::string bytes(iSize, '\0');
    bytes.resize(static_cast<size_t>(file.read(&bytes[0], iSize)));
    return bytes;
  }
  std::string bytesOf(std::string const& name)
  {
    mio::cFile file = fs.fileOpenRead(at(name));
    return read(file, 100000);
  }
  bool exists(std::string const& name, bool followLinks = true) { return fs.exists(at(name), followLinks); }
  mio::cFileInfo info(std::string const& name) { return fs.fileInfo(at(name)); }
  /// The names in a directory, sorted.
  tTexts list(std::string const& name, int flags = mio::DirHideDot | mio::DirHideDotDot)
  {
    tTexts names;
    for (mio::cDirInfo const& entry : fs.openDir(at(name), flags))
    {
      std::string const path = toString(entry.fullPath());
      std::string const start = text(name) + (name.empty() ? "" : "/");
      EXPECT_EQ(path.substr(0, start.size()), start);
      names.push_back(path.substr(start.size()));
    }
    std::sort(names.begin(), names.end());
    return names;
  }

  std::unique_ptr<support::cFileSystem> mpFileSystem;
  mio::cFs& fs;
};

std::string allBytes()
{
  std::string bytes;
  for (unsigned int i = 0; i < 256; ++i)
  {
    bytes += static_cast<char>(i);
  }
  return bytes;
}

// Opening

TEST_P(FileSystemSuite, AFileIsThereOnceItHasBeenCreated)
{
  EXPECT_FALSE(exists("file"));
  {
    mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateIfMissing, mio::WriteAppend);
    EXPECT_TRUE(exists("file"));
    EXPECT_EQ(toString(file.name()), text("file"));
    EXPECT_EQ(file.size(true), 0u);
  }
  EXPECT_TRUE(exists("file"));
  EXPECT_TRUE(fs.fileExists(at("file")));
  EXPECT_EQ(info("file").type(true), mio::cFileInfoFlags::File);
}

TEST_P(FileSystemSuite, AMissingFileIsNotMadeUnlessToldSo)
{
  mucs::cString const path = at("file");
  EXPECT_EQ(failureOf([&] { fs.fileOpenRead(path); }), failure("open", ENOENT));
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(path, mio::CreateNever, mio::WriteAppend); }), failure("open", ENOENT));
  EXPECT_EQ(failureOf([&] { fs.openFile(path, mio::OpenReadOnly, mio::CreateAlways, mio::WriteAppend); }),
            failure("open", ENOENT));
  EXPECT_FALSE(exists("file"));
  EXPECT_EQ(messageOf(caught<mstd::cRuntimeException>([&] { fs.fileOpenRead(path); })),
            "Unable to open file \"" + text("file") + "\"!");
}

TEST_P(FileSystemSuite, AFileIsNotMadeInAMissingDirectoryOrBelowAFile)
{
  put("file", "");
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(at("no/file"), mio::CreateAlways, mio::WriteAppend); }),
            failure("open", ENOENT));
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(at("file/x"), mio::CreateAlways, mio::WriteAppend); }),
            failure("open", ENOTDIR));
}

TEST_P(FileSystemSuite, ADirectoryIsOpenedForReadingOnlyAndReadsNothing)
{
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(at(""), mio::CreateNever, mio::WriteAppend); }), failure("open", EISDIR));
  mio::cFile file = fs.fileOpenRead(at(""));
  char byte;
  EXPECT_EQ(failureOf([&] { file.read(&byte, 1); }), failure("read", EISDIR));
}

TEST_P(FileSystemSuite, AFileWithASlashBehindIsNone)
{
  put("file", "x");
  EXPECT_FALSE(exists("file/"));
  EXPECT_EQ(failureOf([&] { fs.fileOpenRead(at("file/")); }), failure("open", ENOTDIR));
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(at("other/"), mio::CreateAlways, mio::WriteAppend); }),
            failure("open", EISDIR));
}

TEST_P(FileSystemSuite, AFileIsOpenedThroughALinkUnlessToldNotTo)
{
  put("file", "x");
  fs.createSymLink(at("file"), at("link"));
  EXPECT_EQ(bytesOf("link"), "x");
  mio::cFile file(fs, at("link"));
  EXPECT_EQ(failureOf([&] { file.open(at("link"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, false); }),
            failure("open", ELOOP));
  file.open(at("file"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, false);
  EXPECT_EQ(read(file, 10), "x");
}

TEST_P(FileSystemSuite, CreatingThroughADeadLinkMakesWhatItLeadsTo)
{
  fs.createSymLink(at("target"), at("link"));
  put("link", "x");
  EXPECT_EQ(bytesOf("target"), "x");
  EXPECT_TRUE(info("link").isSymLink());
}

TEST_P(FileSystemSuite, AClosedFileDoesNothing)
{
  put("file", "x");
  mio::cFile file(fs, at("file"));
  char byte = 0;
  EXPECT_EQ(failureOf([&] { file.read(&byte, 1); }), failure("read", EBADFD));
  EXPECT_EQ(failureOf([&] { file.write(&byte, 1); }), failure("write", EBADFD));
  EXPECT_EQ(failureOf([&] { file.seek(0, mio::SeekFromStart); }), failure("seek", EBADFD));
  EXPECT_EQ(failureOf([&] { file.pos(); }), failure("seek", EBADFD));
  EXPECT_EQ(failureOf([&] { file.truncate(0); }), failure("truncate", EBADFD));
  EXPECT_EQ(failureOf([&] { file.flush(); }), failure("flush", EBADFD));
  EXPECT_EQ(failureOf([&] { file.lastModified(); }), failure("stat", EBADFD));
  file.close();
  file.close();
}

TEST_P(FileSystemSuite, OpeningAgainClosesFirst)
{
  put("a", "first");
  put("b", "second");
  mio::cFile file = fs.fileOpenRead(at("a"));
  read(file, 3);
  file.open(at("b"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  EXPECT_EQ(toString(file.name()), text("b"));
  EXPECT_EQ(read(file, 10), "second");
}

// Reading and writing

TEST_P(FileSystemSuite, EveryByteComesBack)
{
  put("file", allBytes());
  EXPECT_EQ(bytesOf("file"), allBytes());
  EXPECT_EQ(info("file").size(true), 256u);
}

TEST_P(FileSystemSuite, PositionsCountFromStartCurrentAndEnd)
{
  put("file", "0123456789");
  mio::cFile file = fs.fileOpenRead(at("file"));
  EXPECT_EQ(file.pos(), 0u);
  EXPECT_EQ(read(file, 3), "012");
  EXPECT_EQ(file.pos(), 3u);
  file.seek(2, mio::SeekFromCurrent);
  EXPECT_EQ(read(file, 1), "5");
  file.seek(-2, mio::SeekFromEnd);
  EXPECT_EQ(file.pos(), 8u);
  EXPECT_EQ(file.bytesLeft(), 2u);
  EXPECT_FALSE(file.eof());
  EXPECT_EQ(read(file, 10), "89");
  EXPECT_TRUE(file.eof());
  EXPECT_EQ(read(file, 10), "");
  file.seek(4, mio::SeekFromStart);
  EXPECT_EQ(read(file, 1), "4");
}

TEST_P(FileSystemSuite, APositionBeforeTheStartIsRefusedAndTheOldOneStays)
{
  put("file", "0123456789");
  mio::cFile file = fs.fileOpenRead(at("file"));
  file.seek(4, mio::SeekFromStart);
  EXPECT_EQ(failureOf([&] { file.seek(-1, mio::SeekFromStart); }), failure("seek", EINVAL));
  EXPECT_EQ(failureOf([&] { file.seek(-5, mio::SeekFromCurrent); }), failure("seek", EINVAL));
  EXPECT_EQ(failureOf([&] { file.seek(-11, mio::SeekFromEnd); }), failure("seek", EINVAL));
  EXPECT_EQ(file.pos(), 4u);
}

TEST_P(FileSystemSuite, BehindTheEndThereIsNothingToReadAndAGapIsFilledWithZeros)
{
  put("file", "ab");
  mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteInPlace);
  file.seek(5, mio::SeekFromStart);
  EXPECT_EQ(read(file, 1), "");
  EXPECT_EQ(file.size(true), 2u);
  EXPECT_EQ(file.write("c", 1), 1u);
  file.close();
  EXPECT_EQ(bytesOf("file"), std::string("ab\0\0\0c", 6));
}

TEST_P(FileSystemSuite, AppendingWritesAtTheEndWhereverThePositionIs)
{
  put("file", "ab");
  mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteAppend);
  file.seek(0, mio::SeekFromStart);
  file.write("c", 1);
  EXPECT_EQ(file.pos(), 3u);
  file.close();
  EXPECT_EQ(bytesOf("file"), "abc");
}

TEST_P(FileSystemSuite, TruncatingOpensAnEmptyFileAndReadingNeverTruncates)
{
  put("file", "ab");
  fs.openFile(at("file"), mio::OpenReadOnly, mio::CreateAlways, mio::WriteTruncate);
  EXPECT_EQ(bytesOf("file"), "ab");
  fs.openFile(at("file"), mio::OpenWriteOnly, mio::CreateNever, mio::WriteTruncate);
  EXPECT_EQ(bytesOf("file"), "");
}

TEST_P(FileSystemSuite, WhatIsOpenForOneThingDoesNotDoTheOther)
{
  put("file", "ab");
  char byte = 'x';
  mio::cFile reader = fs.fileOpenRead(at("file"));
  EXPECT_EQ(failureOf([&] { reader.write(&byte, 1); }), failure("write", EBADF));
  EXPECT_EQ(failureOf([&] { reader.truncate(0); }), failure("truncate", EINVAL));
  mio::cFile writer = fs.openFile(at("file"), mio::OpenWriteOnly, mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(failureOf([&] { writer.read(&byte, 1); }), failure("read", EBADF));
  EXPECT_EQ(bytesOf("file"), "ab");
}

TEST_P(FileSystemSuite, TruncateCutsAndFillsUpWithZeros)
{
  put("file", "abcd");
  mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteAppend);
  file.truncate(2);
  EXPECT_EQ(file.size(false), 2u);
  file.truncate(4);
  EXPECT_EQ(file.size(false), 4u);
  file.close();
  EXPECT_EQ(bytesOf("file"), std::string("ab\0\0", 4));
}

TEST_P(FileSystemSuite, TwoHandlesSeeEachOthersWrites)
{
  put("file", "ab");
  mio::cFile reader = fs.fileOpenRead(at("file"));
  mio::cFile writer = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(read(reader, 10), "ab");
  writer.write("c", 1);
  EXPECT_EQ(read(reader, 10), "c");
}

TEST_P(FileSystemSuite, ACopySharesThePosition)
{
  put("file", "0123456789");
  mio::cFile file = fs.fileOpenRead(at("file"));
  read(file, 2);
  mio::cFile copy(file);
  EXPECT_EQ(toString(copy.name()), text("file"));
  EXPECT_EQ(read(copy, 2), "23");
  EXPECT_EQ(read(file, 2), "45");
  file.close();
  EXPECT_EQ(read(copy, 2), "67");
}

TEST_P(FileSystemSuite, LinesAreReadAndWritten)
{
  {
    mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateAlways, mio::WriteTruncate);
    file.writeTextLine(mstd::cAsciiString("one"), mstd::cAsciiString("\r\n"));
    file.writeTextLine(mstd::cAsciiString(""), mstd::cAsciiString("\n"));
    file.writeTextLine(mstd::cAsciiString("two"), mstd::cAsciiString(""));
  }
  mio::cFile file = fs.fileOpenRead(at("file"));
  mstd::tArray<char> line;
  EXPECT_TRUE(file.readTextLine(line, 0));
  EXPECT_EQ(std::string(line.data(), line.length()), "one");
  EXPECT_FALSE(file.readTextLine(line, 0));
  EXPECT_EQ(std::string(line.data(), line.length()), "two");
}

TEST_P(FileSystemSuite, AFileIsAnArrayOfItsBytes)
{
  put("file", "0123456789");
  mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteInPlace);
  EXPECT_EQ(file.proxyLength(), 10u);
  file.proxyAt(3) = 'x';
  EXPECT_EQ(const_cast<mio::cFile const&>(file).proxyAt(4), '4');
  file.proxyInsert(10, "ab", 2);
  file.proxyErase(11, 1);
  file.close();
  EXPECT_EQ(bytesOf("file"), "012x456789a");
}

TEST_P(FileSystemSuite, MappingIsForReadersAndOnceAtATime)
{
  put("file", "x");
  mio::cFile writer = fs.fileOpenWrite(at("file"), mio::CreateNever, mio::WriteAppend);
  EXPECT_EQ(messageOf(caught<mstd::cRuntimeException>([&] { writer.mmap(); })), "MMAP not supported in r/w mode!");
  mio::cFile reader = fs.fileOpenRead(at("file"));
  reader.mmap();
  EXPECT_EQ(messageOf(caught<mstd::cRuntimeException>([&] { reader.mmap(); })), "File is already memory mapped!");
  EXPECT_EQ(reader.proxyPreferredBlockSize(), 0u);
  reader.close();
  reader.open(at("file"), mio::OpenReadOnly, mio::CreateNever, mio::WriteAppend, true);
  reader.mmap();
  EXPECT_EQ(read(reader, 2), "x");
}

// Names and open files

TEST_P(FileSystemSuite, AnOpenFileLivesOnWithoutItsName)
{
  put("file", "ab");
  mio::cFile file = fs.fileOpenRead(at("file"));
  file.remove();
  EXPECT_FALSE(exists("file"));
  EXPECT_EQ(read(file, 10), "ab");
  put("file", "other");
  file.seek(0, mio::SeekFromStart);
  EXPECT_EQ(read(file, 10), "ab");
}

TEST_P(FileSystemSuite, AnOpenFileKnowsItsNewName)
{
  put("file", "ab");
  mio::cFile file = fs.fileOpenRead(at("file"));
  file.rename(at("new"));
  EXPECT_EQ(toString(file.name()), text("new"));
  EXPECT_EQ(list(""), tTexts{"new"});
  EXPECT_EQ(read(file, 10), "ab");
  file.setRemoveOnClose();
  file.close();
  EXPECT_EQ(list(""), tTexts());
}

TEST_P(FileSystemSuite, AFileGoesOnCloseIfToldSoAndStaysIfReleased)
{
  put("goes", "");
  put("stays", "");
  put("dies", "");
  mio::cFile goes = fs.fileOpenRead(at("goes"));
  goes.setRemoveOnClose();
  goes.close();
  mio::cFile stays = fs.fileOpenRead(at("stays"));
  stays.setRemoveOnClose();
  stays.release();
  stays.close();
  {
    mio::cFile dies = fs.fileOpenRead(at("dies"));
    dies.setRemoveOnClose();
  }
  EXPECT_EQ(list(""), tTexts{"stays"});
}

TEST_P(FileSystemSuite, ACopyTakesTheRemovalOnCloseAlong)
{
  put("file", "");
  mio::cFile file = fs.fileOpenRead(at("file"));
  file.setRemoveOnClose();
  mio::cFile copy(file);
  file.release();
  file.close();
  EXPECT_EQ(list(""), tTexts{"file"});
  copy.close();
  EXPECT_EQ(list(""), tTexts());
}

TEST_P(FileSystemSuite, AChangedByteIsWrittenWithTheClose)
{
  put("file", "0123456789");
  mio::cFile file = fs.openFile(at("file"), mio::OpenReadWrite, mio::CreateNever, mio::WriteInPlace);
  file.proxyAt(3) = 'x';
  file.close();
  EXPECT_EQ(bytesOf("file"), "012x456789");
}

TEST_P(FileSystemSuite, WhatGoesOnCloseGoesOnEachCloseUntilItIsReleased)
{
  mio::cFile file = fs.fileOpenWrite(at("file"), mio::CreateAlways, mio::WriteTruncate);
  file.setRemoveOnClose();
  file.close();
  EXPECT_EQ(list(""), tTexts());
  file.open(at("file"), mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate, true);
  file.close();
  EXPECT_EQ(list(""), tTexts());
  file.open(at("file"), mio::OpenReadWrite, mio::CreateAlways, mio::WriteTruncate, true);
  file.release();
  file.close();
  EXPECT_EQ(list(""), tTexts{"file"});
}

TEST_P(FileSystemSuite, ARemovedFileCannotBeRemovedThroughItsHandleAgain)
{
  put("file", "");
  mio::cFile file = fs.fileOpenRead(at("file"));
  file.remove();
  EXPECT_NE(failureOf([&] { file.remove(); }), "nothing");
}

// Times

TEST_P(FileSystemSuite, AWriteIsSeenInTheTimes)
{
  piUInt64 const slack = 2 * 1000000; // a back end may keep whole seconds
  piUInt64 const before = mstd::cTime().get() - slack;
  put("file", "x");
  piUInt64 const after = mstd::cTime().get() + slack;
  mstd::cDateTime found(mstd::cTime(0ull), mstd::cDateTime::UTC);
  ASSERT_TRUE(fs.exists(at("file"), true, &found, mio::cFileInfoFlags::LastModification));
  EXPECT_GE(found.get(), before);
  EXPECT_LE(found.get(), after);
  EXPECT_EQ(info("file").timeStamp(mio::cFileInfoFlags::LastModification, true).get(), found.get());
  mio::cFile file = fs.fileOpenRead(at("file"));
  EXPECT_EQ(file.lastModified().get(), found.get());
  for (auto stamp : {mio::cFileInfoFlags::LastAccess, mio::cFileInfoFlags::LastStatusChange})
  {
    ASSERT_TRUE(fs.exists(at("file"), true, &found, stamp));
    EXPECT_GE(found.get(), before);
    EXPECT_LE(found.get(), after);
    EXPECT_EQ(info("file").timeStamp(stamp, true).get(), found.get());
  }
}

TEST_P(FileSystemSuite, TheTimeOfWhatIsMissingIsLeftAlone)
{
  mstd::cDateTime time(mstd::cTime(77ull), mstd::cDateTime::UTC);
  EXPECT_FALSE(fs.exists(at("no"), true, &time, mio::cFileInfoFlags::LastModification));
  EXPECT_EQ(time.get(), 77u);
}

// Directories

TEST_P(FileSystemSuite, ADirectoryIsMadeOneLevelAtATime)
{
  fs.mkdir(at("dir"));
  EXPECT_TRUE(info("dir").isDir(true));
  EXPECT_FALSE(fs.fileExists(at("dir")));
  EXPECT_TRUE(exists("dir/"));
  EXPECT_EQ(failureOf([&] { fs.mkdir(at("dir")); }), failure("mkdir", EEXIST));
  EXPECT_EQ(failureOf([&] { fs.mkdir(at("a/b")); }), failure("mkdir", ENOENT));
  put("file", "");
  EXPECT_EQ(failureOf([&] { fs.mkdir(at("file")); }), failure("mkdir", EEXIST));
  EXPECT_EQ(failureOf([&] { fs.mkdir(at("file/b")); }), failure("mkdir", ENOTDIR));
  fs.createSymLink(at("nowhere"), at("dead"));
  EXPECT_EQ(failureOf([&] { fs.mkdir(at("dead")); }), failure("mkdir", EEXIST));
  fs.mkdir(at("slash/"));
  EXPECT_EQ(list(""), (tTexts{"dead", "dir", "file", "slash"}));
}

TEST_P(FileSystemSuite, RemoveTakesFilesLinksAndEmptyDirectories)
{
  fs.mkdir(at("dir"));
  put("dir/file", "");
  fs.createSymLink(at("dir"), at("link"));
  fs.remove(at("missing"));
  fs.remove(at("missing/below"));
  EXPECT_EQ(failureOf([&] { fs.remove(at("dir")); }), failure("unlink", ENOTEMPTY));
  fs.remove(at("link"));
  EXPECT_EQ(list(""), tTexts{"dir"});
  fs.remove(at("dir/file"));
  fs.remove(at("dir"));
  EXPECT_EQ(list(""), tTexts());
}

TEST_P(FileSystemSuite, AListingHasEveryNameOnceAndDotsIfWanted)
{
  fs.mkdir(at("dir"));
  put("dir/b", "");
  put("dir/a", "");
  put("dir/.hidden", "");
  fs.createSymLink(at("nowhere"), at("dir/dead"));
  EXPECT_EQ(list("dir"), (tTexts{".hidden", "a", "b", "dead"}));
  EXPECT_EQ(list("dir", mio::DirShowAll), (tTexts{".", "..", ".hidden", "a", "b", "dead"}));
  EXPECT_EQ(list("dir", mio::DirHideDot), (tTexts{"..", ".hidden", "a", "b", "dead"}));
  EXPECT_EQ(list("dir", mio::DirHideDotDot), (tTexts{".", ".hidden", "a", "b", "dead"}));
}

TEST_P(FileSystemSuite, TheElementsOfAListingCanBeUsedWithAndWithoutASlash)
{
  fs.mkdir(at("dir"));
  put("dir/a", "content");
  for (char const* name : {"dir", "dir/"})
  {
    mio::cDir dir(fs, at(name), mio::DirHideDot | mio::DirHideDotDot);
    ASSERT_FALSE(dir.isEnd());
    mio::cDirInfo const entry = dir.element();
    EXPECT_EQ(toString(entry.fullPath()), text("dir/a"));
    EXPECT_TRUE(fs.fileExists(entry.fullPath()));
    dir.setNext();
    EXPECT_TRUE(dir.isEnd());
  }
}

TEST_P(FileSystemSuite, AnEmptyDirectoryListsNothing)
{
  EXPECT_TRUE(mio::cDir(fs, at(""), mio::DirHideDot | mio::DirHideDotDot).isEnd());
}

TEST_P(FileSystemSuite, OnlyADirectoryIsListed)
{
  put("file", "");
  EXPECT_EQ(failureOf([&] { mio::cDir(fs, at("file"), 0); }), failure("opendir", ENOTDIR));
  EXPECT_EQ(failureOf([&] { mio::cDir(fs, at("no"), 0); }), failure("opendir", ENOENT));
}

TEST_P(FileSystemSuite, WhatIsListedMayBeRemovedMeanwhile)
{
  fs.mkdir(at("dir"));
  for (int i = 0; i < 100; ++i)
  {
    put("dir/" + std::to_string(i), "");
  }
  unsigned int count = 0;
  for (mio::cDir dir(fs, at("dir"), mio::DirHideDot | mio::DirHideDotDot); !dir.isEnd(); dir.setNext())
  {
    fs.remove(dir.element().fullPath());
    ++count;
  }
  EXPECT_EQ(count, 100u);
  fs.remove(at("dir"));
}

TEST_P(FileSystemSuite, ACopyOfAPlaceInAListingGoesItsOwnWay)
{
  fs.mkdir(at("dir"));
  for (char const* name : {"dir/a", "dir/b", "dir/c"})
  {
    put(name, "");
  }
  mio::cDir dir(fs, at("dir"), mio::DirHideDot | mio::DirHideDotDot);
  dir.setNext();
  mio::cDir copy(dir);
  EXPECT_EQ(toString(copy.element().fullPath()), toString(dir.element().fullPath()));
  copy.setNext();
  EXPECT_NE(toString(copy.element().fullPath()), toString(dir.element().fullPath()));
  copy.setNext();
  EXPECT_TRUE(copy.isEnd());
  EXPECT_FALSE(dir.isEnd());
}

// Renaming

TEST_P(FileSystemSuite, ARenameMovesAndReplaces)
{
  put("a", "A");
  put("b", "B");
  fs.mkdir(at("dir"));
  fs.rename(at("a"), at("dir/c"));
  EXPECT_EQ(bytesOf("dir/c"), "A");
  fs.rename(at("b"), at("dir/c"));
  EXPECT_EQ(bytesOf("dir/c"), "B");
  fs.rename(at("dir/c"), at("dir/c"));
  EXPECT_EQ(list("dir"), tTexts{"c"});
  fs.rename(at("dir"), at("moved"));
  EXPECT_EQ(list(""), tTexts{"moved"});
  EXPECT_EQ(bytesOf("moved/c"), "B");
}

TEST_P(FileSystemSuite, ADirectoryReplacesOnlyAnEmptyOne)
{
  fs.mkdir(at("a"));
  fs.mkdir(at("b"));
  put("a/x", "");
  put("file", "");
  EXPECT_EQ(failureOf([&] { fs.rename(at("b"), at("a")); }), failure("rename", ENOTEMPTY));
  EXPECT_EQ(failureOf([&] { fs.rename(at("a"), at("file")); }), failure("rename", ENOTDIR));
  EXPECT_EQ(failureOf([&] { fs.rename(at("file"), at("b")); }), failure("rename", EISDIR));
  EXPECT_EQ(failureOf([&] { fs.rename(at("file"), at("new/")); }), failure("rename", ENOTDIR));
  fs.rename(at("a"), at("b"));
  EXPECT_EQ(list(""), (tTexts{"b", "file"}));
  EXPECT_EQ(list("b"), tTexts{"x"});
}

TEST_P(FileSystemSuite, ADirectoryIsNotMovedIntoItself)
{
  fs.mkdir(at("a"));
  fs.mkdir(at("a/b"));
  EXPECT_EQ(failureOf([&] { fs.rename(at("a"), at("a/b/c")); }), failure("rename", EINVAL));
  EXPECT_EQ(list("a"), tTexts{"b"});
}

TEST_P(FileSystemSuite, AMissingNameIsNotRenamed)
{
  EXPECT_EQ(failureOf([&] { fs.rename(at("no"), at("x")); }), failure("rename", ENOENT));
  put("a", "");
  EXPECT_EQ(failureOf([&] { fs.rename(at("a"), at("no/x")); }), failure("rename", ENOENT));
  EXPECT_EQ(list(""), tTexts{"a"});
}

TEST_P(FileSystemSuite, ARenameTakesTheLinkAndNotWhatItLeadsTo)
{
  put("file", "x");
  fs.createSymLink(at("file"), at("link"));
  fs.rename(at("link"), at("moved"));
  EXPECT_EQ(list(""), (tTexts{"file", "moved"}));
  EXPECT_TRUE(info("moved").isSymLink());
}

// Links

TEST_P(FileSystemSuite, ALinkTellsWhereItLeads)
{
  EXPECT_TRUE(fs.supportsSymLinks());
  put("file", "abc");
  fs.createSymLink(at("file"), at("link"));
  EXPECT_EQ(toString(info("link").readLink()), text("file"));
  EXPECT_EQ(toString(info("file").readLink()), "");
  EXPECT_EQ(info("link").type(false), mio::cFileInfoFlags::SymLink);
  EXPECT_EQ(info("link").type(true), mio::cFileInfoFlags::File);
  EXPECT_EQ(info("link").size(true), 3u);
  EXPECT_EQ(info("link").size(false), text("file").size());
  EXPECT_EQ(failureOf([&] { fs.createSymLink(at("file"), at("link")); }), failure("symlink", EEXIST));
  EXPECT_EQ(failureOf([&] { fs.createSymLink(at("file"), at("no/link")); }), failure("symlink", ENOENT));
}

TEST_P(FileSystemSuite, LinksLeadThroughDirectoriesAndOnToLinks)
{
  fs.mkdir(at("dir"));
  fs.mkdir(at("dir/sub"));
  put("dir/file", "x");
  fs.createSymLink(at("dir/sub"), at("link"));
  fs.createSymLink(at("link"), at("chain"));
  put("chain/new", "y");
  EXPECT_EQ(bytesOf("dir/sub/new"), "y");
  EXPECT_EQ(bytesOf("chain/../file"), "x"); // up from where it leads
  EXPECT_EQ(list("link"), tTexts{"new"});
  EXPECT_TRUE(info("chain").isDir(true));
}

TEST_P(FileSystemSuite, ADeadLinkIsThereButLeadsNowhere)
{
  fs.createSymLink(at("nowhere"), at("dead"));
  EXPECT_FALSE(exists("dead", true));
  EXPECT_TRUE(exists("dead", false));
  EXPECT_TRUE(fs.isDeadSymLink(at("dead")));
  EXPECT_FALSE(fs.isDeadSymLink(at("missing")));
  EXPECT_FALSE(fs.fileExists(at("dead")));
  EXPECT_FALSE(fs.fileExists(at("dead"), false));
  EXPECT_EQ(failureOf([&] { info("dead").type(true); }), failure("stat", ENOENT));
  put("nowhere", "");
  EXPECT_FALSE(fs.isDeadSymLink(at("dead")));
}

TEST_P(FileSystemSuite, LinksInACircleEndInAFailure)
{
  fs.createSymLink(at("b"), at("a"));
  fs.createSymLink(at("a"), at("b"));
  fs.createSymLink(at("self"), at("self"));
  EXPECT_FALSE(exists("a"));
  EXPECT_TRUE(exists("a", false));
  EXPECT_EQ(failureOf([&] { info("a").type(true); }), failure("stat", ELOOP));
  EXPECT_EQ(failureOf([&] { fs.fileOpenRead(at("self")); }), failure("open", ELOOP));
  EXPECT_EQ(failureOf([&] { fs.fileOpenWrite(at("self/x"), mio::CreateAlways, mio::WriteAppend); }),
            failure("open", ELOOP));
  fs.remove(at("self"));
  EXPECT_EQ(list(""), (tTexts{"a", "b"}));
}

// Permissions

TEST_P(FileSystemSuite, PermissionsAreKept)
{
  put("file", "");
  for (unsigned long long bits : {0x18ull, 0xFF8ull, 0x8ull, 0x258ull})
  {
    fs.setPermissions(at("file"), mio::cPermissions(bits));
    EXPECT_EQ(info("file").permissions(true).permissions(), bits);
  }
  EXPECT_EQ(failureOf([&] { fs.setPermissions(at("no"), mio::cPermissions(0x18)); }), failure("chmod", ENOENT));
}

TEST_P(FileSystemSuite, AFreshFileIsNotForAll)
{
  put("file", "");
  unsigned long long const bits = info("file").permissions(true).permissions();
  EXPECT_EQ(bits & (mio::cPermissions::OwnerRead | mio::cPermissions::OwnerWrite), 0x18u);
  EXPECT_EQ(bits & (mio::cPermissions::OthersWrite | mio::cPermissions::OwnerExecute), 0u);
  fs.mkdir(at("dir"));
  EXPECT_TRUE(info("dir").permissions(true).isExecutable());
}

TEST_P(FileSystemSuite, PermissionsGoThroughALink)
{
  put("file", "");
  fs.createSymLink(at("file"), at("link"));
  fs.setPermissions(at("link"), mio::cPermissions(0x18));
  EXPECT_EQ(info("file").permissions(true).permissions(), 0x18u);
  EXPECT_EQ(info("link").permissions(true).permissions(), 0x18u);
  EXPECT_EQ(info("link").permissions(false).permissions(), 0xFF8u);
}

TEST_P(FileSystemSuite, ANameWithADotInFrontIsHidden)
{
  put(".hidden", "");
  put("shown", "");
  put("...", "");
  EXPECT_TRUE(info(".hidden").isHidden());
  EXPECT_TRUE(info("...").isHidden());
  EXPECT_FALSE(info("shown").isHidden());
  fs.mkdir(at("dir"));
  EXPECT_FALSE(info("dir/.").isHidden());
  EXPECT_FALSE(info("dir/..").isHidden());
}

// Paths

TEST_P(FileSystemSuite, DotsAndRunsOfSlashesLeadWhereTheyShould)
{
  fs.mkdir(at("dir"));
  put("dir/file", "x");
  EXPECT_EQ(bytesOf("dir/./file"), "x");
  EXPECT_EQ(bytesOf("dir/../dir//file"), "x");
  EXPECT_EQ(bytesOf("./dir/file"), "x");
  EXPECT_TRUE(info("dir/..").isDir(true));
  EXPECT_FALSE(exists("dir/file/.."));
  EXPECT_FALSE(exists("no/../dir"));
}

TEST_P(FileSystemSuite, AnyNameIsAName)
{
  tTexts const names = {" ", "\n", "-", "...", "a b", "\x01", "a:b", "a\\b", "~", "*", "\"'"};
  for (std::string const& name : names)
  {
    put(name, name);
  }
  for (std::string const& name : names)
  {
    EXPECT_EQ(bytesOf(name), name);
  }
  tTexts sorted(names);
  std::sort(sorted.begin(), sorted.end());
  EXPECT_EQ(list(""), sorted);
}

TEST_P(FileSystemSuite, NamesOfOtherScriptsComeBackFromAListing)
{
  mucs::cString path = at("");
  path += mucs::cString(L"gr\u00fc\u00df-\u4f60-\U0001F600");
  fs.fileOpenWrite(path, mio::CreateAlways, mio::WriteTruncate);
  mio::cDir dir(fs, at(""), mio::DirHideDot | mio::DirHideDotDot);
  ASSERT_FALSE(dir.isEnd());
  mucs::cString const found = dir.element().fullPath();
  EXPECT_TRUE(fs.fileExists(found));
  ASSERT_EQ(found.length(), path.length());
  EXPECT_TRUE(found.at(found.length() - 1) == 0x1F600);
}

TEST_P(FileSystemSuite, NamesEndAtTheirLimit)
{
  put(std::string(255, 'x'), "long");
  EXPECT_EQ(bytesOf(std::string(255, 'x')), "long");
  EXPECT_EQ(failureOf([&] { put(std::string(256, 'x'), ""); }), failure("open", ENAMETOOLONG));
  EXPECT_EQ(failureOf([&] { fs.mkdir(at(std::string(256, 'x'))); }), failure("mkdir", ENAMETOOLONG));
}

TEST_P(FileSystemSuite, TheEmptyPathLeadsNowhere)
{
  mucs::cString const none;
  EXPECT_FALSE(fs.exists(none));
  EXPECT_EQ(failureOf([&] { fs.mkdir(none); }), failure("mkdir", ENOENT));
  EXPECT_EQ(failureOf([&] { fs.fileOpenRead(none); }), failure("open", ENOENT));
  EXPECT_EQ(failureOf([&] { fs.fileInfo(none).type(true); }), failure("stat", ENOENT));
  fs.remove(none);
}

TEST_P(FileSystemSuite, TheWorkingDirectoryIsAnAbsolutePathThatExists)
{
  mio::cPath const cwd = fs.cwd();
  EXPECT_TRUE(cwd.isAbsolute());
  EXPECT_TRUE(fs.exists(cwd.path()));
}

// What the handle adds

TEST_P(FileSystemSuite, APathIsMadeAsFarAsItIsMissing)
{
  fs.mkdir(at("a"));
  put("a/file", "");
  fs.createPath(mio::cPath(at("a/b/c")));
  EXPECT_EQ(list("a"), (tTexts{"b", "file"}));
  EXPECT_TRUE(info("a/b/c").isDir(true));
  fs.createPath(mio::cPath(at("a/b/c")));
  fs.createSymLink(at("a"), at("link"));
  fs.createPath(mio::cPath(at("link/d")));
  EXPECT_TRUE(info("a/d").isDir(true));
}

TEST_P(FileSystemSuite, APlainFileInTheWayOfAPathIsReportedWithItsName)
{
  fs.mkdir(at("a"));
  put("a/file", "x");
  try
  {
    fs.createPath(mio::cPath(at("a/file/b/c")));
    FAIL() << "nothing was raised";
  }
  catch (mstd::cRuntimeException const& e)
  {
    EXPECT_EQ(messageOf(e), "Unable to remove file " + text("a/file/b/c/") + "!");
    ASSERT_NE(e.history(), nullptr);
    EXPECT_EQ(messageOf(*e.history()), "Item \"" + text("a/file") + "\" is not a directory!");
    EXPECT_NE(dynamic_cast<mstd::cRuntimeException const*>(e.history()), nullptr);
  }
  EXPECT_EQ(bytesOf("a/file"), "x");
  EXPECT_THROW(fs.createPath(mio::cPath(at("a/file"))), mstd::cRuntimeException);
}

TEST_P(FileSystemSuite, ANameIsFoundInADirectoryIfItIsAFile)
{
  fs.mkdir(at("dir"));
  fs.mkdir(at("dir/sub"));
  put("dir/file", "");
  EXPECT_EQ(toString(fs.tryFindInPath(mio::cPath(at("dir")), "file")), text("dir/file"));
  EXPECT_EQ(toString(fs.tryFindInPath(mio::cPath(at("dir")), "sub")), "");
  EXPECT_EQ(toString(fs.tryFindInPath(mio::cPath(at("dir")), "no")), "");
  EXPECT_EQ(toString(fs.tryFindInPath(mio::cPath(at("no")), "file")), "");
}

TEST_P(FileSystemSuite, ATreeIsRemovedAndNothingElse)
{
  fs.createPath(mio::cPath(at("tree/a/b")));
  fs.createPath(mio::cPath(at("other/sub")));
  put("tree/file", "");
  put("tree/a/.hidden", "");
  put("other/file", "x");
  fs.createSymLink(at("other"), at("tree/a/out"));
  fs.createSymLink(at("other/file"), at("tree/out"));
  fs.createSymLink(at("nowhere"), at("tree/dead"));
  fs.createSymLink(at("tree"), at("tree/a/b/round"));
  fs.removeRecursive(at("tree/"), false);
  EXPECT_EQ(list(""), tTexts{"other"});
  EXPECT_EQ(list("other"), (tTexts{"file", "sub"}));
  EXPECT_EQ(bytesOf("other/file"), "x");
}

TEST_P(FileSystemSuite, RemovingRecursivelyTakesWhatIsNoTreeToo)
{
  put("file", "");
  fs.createSymLink(at("nowhere"), at("dead"));
  fs.mkdir(at("empty"));
  fs.removeRecursive(at("file"), false);
  fs.removeRecursive(at("dead"), true);
  fs.removeRecursive(at("empty"), false);
  fs.removeRecursive(at("missing"), true);
  EXPECT_EQ(list(""), tTexts());
}

TEST_P(FileSystemSuite, ALinkToADirectoryIsRemovedAndTheDirectoryLeftAlone)
{
  fs.mkdir(at("dir"));
  put("dir/file", "");
  for (char const* name : {"link", "link/"})
  {
    fs.createSymLink(at("dir"), at("link"));
    fs.removeRecursive(at(name), false);
    EXPECT_EQ(list(""), tTexts{"dir"});
    EXPECT_EQ(list("dir"), tTexts{"file"});
  }
}

TEST_P(FileSystemSuite, AFollowedLinkTakesTheContentsAndLeavesTheDirectory)
{
  fs.mkdir(at("dir"));
  put("dir/file", "");
  fs.createSymLink(at("dir"), at("link"));
  fs.removeRecursive(at("link"), true);
  EXPECT_EQ(list(""), tTexts{"dir"});
  EXPECT_EQ(list("dir"), tTexts());
}

TEST_P(FileSystemSuite, ATreeDeeperThanTheOpenListingsIsRemoved)
{
  std::string path = "deep";
  for (int i = 0; i < 150; ++i)
  {
    fs.mkdir(at(path));
    put(path + "/before", "");
    put(path + "/z", "");
    path += "/next";
  }
  fs.removeRecursive(at("deep"), false);
  EXPECT_EQ(list(""), tTexts());
}

INSTANTIATE_TEST_SUITE_P(
    BackEnds, FileSystemSuite,
    testing::Values(tBackEnd{"Platform", [] { return std::make_unique<support::cPlatformFileSystem>(); }},
                    tBackEnd{"MountedMemory", [] { return std::make_unique<support::cMountedMemory>(); }},
                    tBackEnd{"BareMemory", [] { return std::make_unique<support::cBareMemory>(); }}),
    [](testing::TestParamInfo<tBackEnd> const& backEnd) { return std::string(backEnd.param.name); });

} // namespace
