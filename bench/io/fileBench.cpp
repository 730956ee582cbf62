#include "support/bench.h"

#include "io/cFile.h"
#include "pi/cSystem.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "ucs/cString.h"

#include <QtCore/QFile>
#include <QtCore/QString>
#include <QtCore/QTextStream>

#include <stdio.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

// All contenders read the same files, which stand in the page cache, and add up what they read: the bytes, or the
// lengths of the lines.

namespace
{

size_t const BytesSize = 64u << 20;
size_t const LinesSize = 16u << 20;
size_t const Block = 0x10000;

/// The files, for the life of the process.
class cFiles
{
public:
  static cFiles const& get()
  {
    static cFiles const files;
    return files;
  }
  std::string const& bytes() const { return mBytes; }
  std::string const& lines() const { return mLines; }
  cFiles(cFiles const&) = delete;
  cFiles& operator=(cFiles const&) = delete;

private:
  cFiles()
  {
    std::string pattern = (std::filesystem::temp_directory_path() / "mortise-bench-XXXXXX").string();
    if (mkdtemp(&pattern[0]) == nullptr)
    {
      std::abort();
    }
    mPath = pattern;
    mBytes = pattern + "/bytes";
    mLines = pattern + "/lines";
    std::string text(BytesSize, '\0');
    for (size_t i = 0; i < text.size(); ++i)
    {
      text[i] = static_cast<char>(i * 2654435761u >> 24);
    }
    write(mBytes, text);
    text.clear();
    for (unsigned int i = 0; text.size() < LinesSize; ++i)
    {
      unsigned int const random = i * 2654435761u;
      text.append(20 + (random >> 16) % 100, static_cast<char>('a' + random % 26)); // 70 on the average
      text += '\n';
    }
    write(mLines, text);
  }
  ~cFiles()
  {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
  }
  static void write(std::string const& path, std::string const& text)
  {
    std::ofstream file(path, std::ios::binary);
    file << text;
    if (!file.flush())
    {
      std::abort();
    }
  }

  std::string mPath;
  std::string mBytes;
  std::string mLines;
};

mio::cFile opened(std::string const& path)
{
  return mio::cFile(path.c_str(), mio::OpenReadOnly, mio::CreateNever, mio::WriteTruncate);
}

/// Counts the bytes that were read, and sees to it that they were.
void counted(benchmark::State& state, size_t size, unsigned int sum)
{
  benchmark::DoNotOptimize(sum);
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(size));
}

void readWithStreambuf(benchmark::State& state)
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    std::filebuf buffer;
    buffer.open(cFiles::get().bytes(), std::ios::in | std::ios::binary);
    for (int c = buffer.sbumpc(); c != EOF; c = buffer.sbumpc())
    {
      sum += static_cast<unsigned int>(c);
    }
  }
  counted(state, BytesSize, sum);
}

template <class Get>
void readWithStdio(benchmark::State& state, Get const& get)
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    FILE* const file = fopen(cFiles::get().bytes().c_str(), "rb");
    for (int c = get(file); c != EOF; c = get(file))
    {
      sum += static_cast<unsigned int>(c);
    }
    fclose(file);
  }
  counted(state, BytesSize, sum);
}

void readWithQFile(benchmark::State& state)
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    QFile file(QString::fromStdString(cFiles::get().bytes()));
    if (!file.open(QIODevice::ReadOnly))
    {
      std::abort();
    }
    for (char c = 0; file.getChar(&c);)
    {
      sum += static_cast<unsigned char>(c);
    }
  }
  counted(state, BytesSize, sum);
}

} // namespace

BENCH("files", "64 MiB byte by byte, in the blocks of a view", "mortise")
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    mio::cFile file(opened(cFiles::get().bytes()));
    mstd::tConstArrayRef<char> const view(file);
    unsigned int const block = view.proxyPreferredBlockSize();
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
  }
  counted(state, BytesSize, sum);
}

BENCH("files", "64 MiB byte by byte, in the blocks of a view", "streambuf")
{
  readWithStreambuf(state);
}

BENCH("files", "64 MiB byte by byte, in the blocks of a view", "getc_unlocked")
{
  readWithStdio(state, [](FILE* file) { return getc_unlocked(file); });
}

BENCH("files", "64 MiB byte by byte, each by itself", "mortise")
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    mio::cFile file(opened(cFiles::get().bytes()));
    mstd::tConstArrayRef<char> const view(file);
    unsigned int const length = view.length();
    for (unsigned int i = 0; i < length; ++i)
    {
      sum += static_cast<unsigned char>(view[i]);
    }
  }
  counted(state, BytesSize, sum);
}

BENCH("files", "64 MiB byte by byte, each by itself", "getc")
{
  readWithStdio(state, [](FILE* file) { return getc(file); });
}

BENCH("files", "64 MiB byte by byte, each by itself", "QFile")
{
  readWithQFile(state);
}

BENCH("files", "64 MiB in blocks of 64 KiB", "mortise")
{
  std::vector<char> block(Block);
  unsigned int sum = 0;
  for (auto _ : state)
  {
    mio::cFile file(opened(cFiles::get().bytes()));
    while (file.read(block.data(), Block) != 0)
    {
      sum += static_cast<unsigned char>(block[0]);
    }
  }
  counted(state, BytesSize, sum);
}

BENCH("files", "64 MiB in blocks of 64 KiB", "fread")
{
  std::vector<char> block(Block);
  unsigned int sum = 0;
  for (auto _ : state)
  {
    FILE* const file = fopen(cFiles::get().bytes().c_str(), "rb");
    while (fread(block.data(), 1, Block, file) != 0)
    {
      sum += static_cast<unsigned char>(block[0]);
    }
    fclose(file);
  }
  counted(state, BytesSize, sum);
}

BENCH("files", "64 MiB in blocks of 64 KiB", "QFile")
{
  std::vector<char> block(Block);
  unsigned int sum = 0;
  for (auto _ : state)
  {
    QFile file(QString::fromStdString(cFiles::get().bytes()));
    if (!file.open(QIODevice::ReadOnly))
    {
      std::abort();
    }
    while (file.read(block.data(), Block) > 0)
    {
      sum += static_cast<unsigned char>(block[0]);
    }
  }
  counted(state, BytesSize, sum);
}

BENCH("files", "16 MiB of lines", "mortise")
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    mio::cFile file(opened(cFiles::get().lines()));
    mstd::tArray<char> line;
    line.setFitOnErase(false); // the next line takes the place of this one
    while (file.readTextLine(line, 0))
    {
      sum += line.length();
    }
  }
  counted(state, LinesSize, sum);
}

BENCH("files", "16 MiB of lines", "QTextStream")
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    QFile file(QString::fromStdString(cFiles::get().lines()));
    if (!file.open(QIODevice::ReadOnly))
    {
      std::abort();
    }
    QTextStream stream(&file);
    QString line;
    while (stream.readLineInto(&line))
    {
      sum += static_cast<unsigned int>(line.size());
    }
  }
  counted(state, LinesSize, sum);
}

BENCH("files", "16 MiB of lines", "limit: std::getline")
{
  unsigned int sum = 0;
  for (auto _ : state)
  {
    std::ifstream file(cFiles::get().lines(), std::ios::binary);
    std::string line;
    while (std::getline(file, line))
    {
      sum += static_cast<unsigned int>(line.size());
    }
  }
  counted(state, LinesSize, sum);
}
