#include "io/cFile.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cTempDir.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <fstream>
#include <string>

// A file far larger than anybody wants to hold is searched and patched as an array.

namespace
{

#ifdef MORTISE_TEST_EXHAUSTIVE
unsigned int const Size = 1u << 30;
#else
unsigned int const Size = 1u << 26;
#endif
unsigned int const Window = 0x10000;

/// Begins a new measurement of the most memory that the process has in use at a time.
void forgetPeak()
{
  std::ofstream("/proc/self/clear_refs") << "5";
}

/// In KiB, since forgetPeak().
long peakKiB()
{
  std::ifstream status("/proc/self/status");
  std::string word;
  while (status >> word && word != "VmHWM:")
  {
  }
  long peak = 0;
  status >> peak;
  EXPECT_GT(peak, 0);
  return peak;
}

class SparseFileTest : public testing::Test
{
protected:
  SparseFileTest()
  {
    mio::cFile file(name(), mio::OpenReadWrite, mio::CreateIfMissing, mio::WriteTruncate);
    file.truncate(Size);
  }
  mucs::cString name() const { return mDir.name("sparse"); }
  mio::cFile editor() const { return mio::cFile(name(), mio::OpenReadWrite, mio::CreateNever, mio::WriteInPlace); }
  unsigned long long usedBytes() const
  {
    struct stat info
    {
    };
    stat((mDir.path() + "/sparse").c_str(), &info);
    return static_cast<unsigned long long>(info.st_blocks) * 512;
  }

  support::cTempDir mDir;
};

} // namespace

TEST_F(SparseFileTest, ASearchSeesAllAndHoldsAWindow)
{
  // Needles across the borders of windows, of which a search makes one every 65536 bytes less the overlap.
  unsigned int const places[] = {Window - 3, Size / 2 + 12345, Size - 6};
  mio::cFile file = editor();
  {
    mstd::tArrayRef<char> view(file);
    for (unsigned int place : places)
    {
      view.proxyPatchData(place, 6, "needle");
    }
  }
  forgetPeak();
  long const before = peakKiB();
  mstd::tConstArrayRef<char> const view(file);
  ASSERT_EQ(view.length(), Size);
  unsigned int from = 0;
  for (unsigned int place : places)
  {
    bool found = false;
    EXPECT_EQ(view.find("needle", 6, found, from), place);
    ASSERT_TRUE(found);
    from = place + 1;
  }
  EXPECT_LT(peakKiB() - before, 1024); // a window is 64
  EXPECT_LT(usedBytes(), 1u << 20);    // and the file is as sparse as it was
}

TEST_F(SparseFileTest, APatchChangesWhatItIsToldTo)
{
  mio::cFile file = editor();
  forgetPeak();
  long const before = peakKiB();
  mstd::tArrayRef<char> view(file);
  view[Size - 1] = 'z';
  view[0] = 'a';
  view[Size / 2 - 1] = 'm';
  view[Size / 2 + Window] = 'n';
  view.proxyPatchData(Size / 2, 3, "xyz");
  mstd::tArrayRef<char> part(file, Size / 2 - 1, 5);
  EXPECT_EQ(part[0], 'm');
  part[4] = '!';
  EXPECT_EQ(view[Size / 2 + Window], 'n');
  EXPECT_LT(peakKiB() - before, 1024);
  file.close();

  std::ifstream plain(mDir.path() + "/sparse", std::ios::binary);
  auto const at = [&plain](unsigned int place, unsigned int size) {
    std::string bytes(size, '?');
    plain.seekg(place);
    plain.read(&bytes[0], size);
    return bytes;
  };
  EXPECT_EQ(at(0, 2), std::string("a\0", 2));
  EXPECT_EQ(at(Size / 2 - 2, 8), std::string("\0mxyz!\0\0", 8));
  EXPECT_EQ(at(Size / 2 + Window - 1, 3), std::string("\0n\0", 3));
  EXPECT_EQ(at(Size - 2, 2), std::string("\0z", 2));
  EXPECT_LT(usedBytes(), 1u << 20);
}

TEST_F(SparseFileTest, AWalkOverAViewOfItsBlocksReadsIt)
{
  mio::cFile file = editor();
  file.proxyPatchData(Size - 2, 2, "yz");
  mstd::tConstArrayRef<char> const view(file, Size - 10 * Window - 5);
  unsigned int const block = view.proxyPreferredBlockSize();
  ASSERT_EQ(block, Window);
  unsigned int sum = 0;
  for (unsigned int done = 0; done < view.length();)
  {
    unsigned int const left = view.length() - done;
    unsigned int const piece = left < block ? left : block;
    char const* const pData = view.proxyProvideData(done, piece);
    for (unsigned int i = 0; i < piece; ++i)
    {
      sum += static_cast<unsigned char>(pData[i]);
    }
    done += piece;
  }
  EXPECT_EQ(sum, static_cast<unsigned int>('y' + 'z'));
}

TEST_F(SparseFileTest, BehindFourGiBAFileIsAFileButNoArray)
{
  unsigned long long const far = (5ull << 30) + 3;
  mio::cFile file = editor();
  file.seek(static_cast<long long>(far), mio::SeekFromStart);
  EXPECT_EQ(file.write("one\ntwo\n", 8), 8u);
  EXPECT_EQ(file.size(false), far + 8);
  EXPECT_EQ(file.proxyLength(), (1u << 30) + 11); // the lower 32 bits
  file.seek(static_cast<long long>(far), mio::SeekFromStart);
  mstd::tArray<char> line;
  EXPECT_TRUE(file.readTextLine(line, 0));
  EXPECT_EQ(std::string(line.data(), line.length()), "one");
  EXPECT_EQ(file.pos(), far + 4);
  EXPECT_EQ(file.bytesLeft(), 4u);
  char byte = 0;
  EXPECT_EQ(file.read(&byte, 1), 1u);
  EXPECT_EQ(byte, 't');
}
