#include "io/cFile.h"
#include "std/cOSErrorException.h"
#include "std/cRuntimeException.h"
#include "std/tArrayRef.h"
#include "support/cCaptureOut.h"
#include "support/cMemoryDevice.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

// Files while the system calls below them fail.

namespace
{

using mio::cFile;
using support::cFaultShim;

class FileFaultTest : public testing::Test
{
protected:
  FileFaultTest() : mDescriptors(cFaultShim::numDescriptors()) {}
  ~FileFaultTest() override { EXPECT_EQ(cFaultShim::numDescriptors(), mDescriptors); }

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

  support::cCaptureOut mMute;
  support::cTempDir mDir;
  unsigned int mDescriptors;
};

std::string lineOf(cFile& file)
{
  mstd::tArray<char> line;
  return file.readTextLine(line, 0) ? support::bytesOf(line) : "(" + support::bytesOf(line) + ")";
}

template <class tAction>
int errorOf(tAction const& action)
{
  try
  {
    action();
  }
  catch (mstd::cOSErrorException const& e)
  {
    return e.osErrorCode();
  }
  return 0;
}

} // namespace

TEST_F(FileFaultTest, LinesComeWholeFromShortReads)
{
  put("one\ntwo\r\n\nthree");
  cFile file = reader();
  cFaultShim shim;
  shim.limitRead(2);
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(file.pos(), 4u);
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(lineOf(file), "(three)");
}

TEST_F(FileFaultTest, LinesComeWholeThroughInterruptions)
{
  put("one\ntwo\n");
  cFile file = reader();
  cFaultShim shim;
  shim.fail(cFaultShim::Read, EINTR, 3);
  EXPECT_EQ(lineOf(file), "one");
  EXPECT_EQ(lineOf(file), "two");
  EXPECT_EQ(shim.numFaults(), 3u);
}

TEST_F(FileFaultTest, AnErrorOfABlockIsAnErrorOfItsLine)
{
  put("one\n" + std::string(5000, 'x') + "\ntwo\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Read, EIO);
    mstd::tArray<char> line;
    EXPECT_EQ(errorOf([&] { file.readTextLine(line, 0); }), EIO);
    EXPECT_EQ(line.length(), 4092u); // the rest of the first block
    EXPECT_EQ(file.pos(), 4096u);
  }
  EXPECT_EQ(lineOf(file), std::string(908, 'x'));
  EXPECT_EQ(lineOf(file), "two");
}

TEST_F(FileFaultTest, AFileThatShrinksBetweenBlocksEndsThere)
{
  put(std::string(5000, 'x') + "\ntwo\n");
  cFile file = reader();
  cFaultShim shim;
  shim.before(
      cFaultShim::Read, [this] { std::filesystem::resize_file(path(), 4096); }, 1);
  EXPECT_EQ(lineOf(file), "(" + std::string(4096, 'x') + ")");
  EXPECT_EQ(lineOf(file), "()");
}

TEST_F(FileFaultTest, AFileThatShrinksUnderAWindowFails)
{
  put(std::string(10000, 'x'));
  cFile file = reader();
  mstd::tConstArrayRef<char> const view(file);
  cFaultShim shim;
  shim.before(cFaultShim::Read, [this] { std::filesystem::resize_file(path(), 100); });
  EXPECT_THROW(view.at(200), mstd::cRuntimeException);
  EXPECT_EQ(view.at(50), 'x');
}

TEST_F(FileFaultTest, AReturnToTheReaderThatFailsMayBeTriedAgain)
{
  put("one\ntwo\nthree\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  char bytes[3] = {};
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Seek, EIO);
    EXPECT_EQ(errorOf([&] { file.read(bytes, 3); }), EIO);
  }
  EXPECT_EQ(file.pos(), 4u);
  EXPECT_EQ(file.read(bytes, 3), 3u);
  EXPECT_EQ(std::string(bytes, 3), "two");
}

TEST_F(FileFaultTest, WithoutADescriptorNothingIsOpened)
{
  put("one\n");
  cFaultShim shim;
  shim.fail(cFaultShim::Open, EMFILE);
  try
  {
    reader();
    FAIL();
  }
  catch (mstd::cRuntimeException const& e)
  {
    auto const* const cause = dynamic_cast<mstd::cOSErrorException const*>(e.history());
    ASSERT_NE(cause, nullptr);
    EXPECT_EQ(cause->osErrorCode(), EMFILE);
  }
}

TEST_F(FileFaultTest, AWindowThatFindsNoRoomIsKeptForAnotherClose)
{
  put("0123456789");
  cFile file = editor();
  file.proxyAt(4) = 'x';
  {
    cFaultShim shim;
    shim.limitSpace(0);
    EXPECT_EQ(errorOf([&] { file.close(); }), ENOSPC);
  }
  file.close();
  EXPECT_EQ(contents(), "0123x56789");
}

TEST_F(FileFaultTest, WhatWasWrittenBeforeTheLackOfRoomIsThere)
{
  cFaultShim shim;
  shim.limitSpace(6);
  {
    cFile file = editor();
    EXPECT_EQ(file.write("1234", 4), 4u);
    EXPECT_THROW(file.proxyInsert(4, "5678", 4), mstd::cOSErrorException);
  }
  EXPECT_EQ(contents(), "123456");
}

TEST_F(FileFaultTest, ADestructorThatFindsNoRoomClosesAllTheSame)
{
  put("0123456789");
  {
    cFile file = editor();
    file.proxyAt(4) = 'x';
    cFaultShim shim;
    shim.limitSpace(0);
    cFile const gone(std::move(file));
  }
  EXPECT_EQ(contents(), "0123456789");
  EXPECT_TRUE(mMute.contains("Exception in destructor:"));
}

TEST_F(FileFaultTest, ACopyWithoutADescriptorLeavesTheOriginal)
{
  put("one\ntwo\n");
  cFile file = reader();
  EXPECT_EQ(lineOf(file), "one");
  {
    cFaultShim shim;
    shim.fail(cFaultShim::Dup, EMFILE);
    EXPECT_EQ(errorOf([&] { cFile const copy(file); }), EMFILE);
  }
  EXPECT_EQ(lineOf(file), "two");
}
