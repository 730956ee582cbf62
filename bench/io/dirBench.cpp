#include "support/bench.h"

#include "io/cDir.h"
#include "io/cDirInfo.h"
#include "io/cFs.h"
#include "pi/cSystem.h"
#include "std/tConstListRef.h"
#include "ucs/cString.h"

#include <boost/filesystem.hpp>

#include <dirent.h>
#include <string.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

// All contenders list the same directory and add up the lengths of the paths of its entries.

namespace
{

unsigned int const Entries = 10000;

/// A directory of files, for the life of the process.
class cDirectory
{
public:
  static std::string const& path()
  {
    static cDirectory const directory;
    return directory.mPath;
  }
  cDirectory(cDirectory const&) = delete;
  cDirectory& operator=(cDirectory const&) = delete;

private:
  cDirectory()
  {
    mPath = (std::filesystem::temp_directory_path() / "mortise-bench-XXXXXX").string();
    if (mkdtemp(&mPath[0]) == nullptr)
    {
      std::abort();
    }
    for (unsigned int i = 0; i < Entries; ++i)
    {
      std::ofstream(mPath + "/entry number " + std::to_string(i) + ".txt");
    }
  }
  ~cDirectory()
  {
    std::error_code ignored;
    std::filesystem::remove_all(mPath, ignored);
  }

  std::string mPath;
};

void check(benchmark::State& state, size_t entries)
{
  if (entries != Entries)
  {
    state.SkipWithError("entries are missing");
  }
}

template <class tIterator>
void listWith(benchmark::State& state)
{
  std::string const& path = cDirectory::path();
  for (auto _ : state)
  {
    size_t sum = 0;
    size_t entries = 0;
    for (auto const& entry : tIterator(path))
    {
      sum += entry.path().native().size();
      ++entries;
    }
    benchmark::DoNotOptimize(sum);
    check(state, entries);
  }
}

} // namespace

BENCH("files", "list 10,000 entries", "mortise")
{
  mio::cFs const& fs = mpi::system().fs;
  mucs::cString const path(cDirectory::path().c_str());
  for (auto _ : state)
  {
    size_t sum = 0;
    size_t entries = 0;
    for (mio::cDirInfo const& entry : fs.openDir(path, mio::DirHideDot | mio::DirHideDotDot))
    {
      sum += entry.fullPath().length();
      ++entries;
    }
    benchmark::DoNotOptimize(sum);
    check(state, entries);
  }
}

BENCH("files", "list 10,000 entries", "std")
{
  listWith<std::filesystem::directory_iterator>(state);
}

BENCH("files", "list 10,000 entries", "Boost")
{
  listWith<boost::filesystem::directory_iterator>(state);
}

BENCH("files", "list 10,000 entries", "limit: readdir")
{
  std::string const& path = cDirectory::path();
  for (auto _ : state)
  {
    size_t sum = 0;
    size_t entries = 0;
    DIR* const pDir = opendir(path.c_str());
    while (dirent const* pEntry = readdir(pDir))
    {
      size_t const length = strlen(pEntry->d_name);
      if (pEntry->d_name[0] != '.')
      {
        sum += path.size() + 1 + length;
        ++entries;
      }
    }
    closedir(pDir);
    benchmark::DoNotOptimize(sum);
    check(state, entries);
  }
}
