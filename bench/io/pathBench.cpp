#include "support/bench.h"

#include "io/cPath.h"
#include "pi/cGlobalCaches.h"
#include "pi/cSystem.h"
#include "ucs/cString.h"

#include <Poco/Path.h>
#include <QtCore/QDir>
#include <QtCore/QString>
#include <boost/filesystem/path.hpp>

#include <cstring>
#include <filesystem>
#include <string>

namespace
{
char const* const shortPath = "a/b/../c/./d//e";
// 148 characters
char const* const longPath =
    "/home/builder/projects/library/build/release/../../source/platform/native/linux/./include//"
    "detail/../support/containers/arrays/traits/byte_level.txt";

// Everybody makes the normal form as a new object, from a path in his own kind of string.
void make(benchmark::State& state, char const* text)
{
  mucs::cString const input(text);
  for (auto _ : state)
  {
    mio::cPath const path(input, true, nullptr);
    benchmark::DoNotOptimize(&path);
  }
}

class cTable
{
public:
  cTable() { mpi::system().caches.createPathFixupHash(); }
  cTable(cTable const&) = delete;
  cTable& operator=(cTable const&) = delete;
  ~cTable() { mpi::system().caches.clear(); }
};

// The form in which setting a path hands the text over to be normalised, brought back for each turn.
void fixupKnown(benchmark::State& state, char const* text)
{
  cTable const table;
  mucs::cString const input(mio::cPath(text, false).unixEquivalent());
  mucs::cString path(input);
  for (auto _ : state)
  {
    path.setSize(input.length());
    std::memcpy(path.data(), input.data(), input.length() * sizeof(unsigned int));
    bool isEscaped = false;
    mio::fixupPath(path, isEscaped, nullptr);
    benchmark::DoNotOptimize(path.data());
  }
}

void makeKnown(benchmark::State& state, char const* text)
{
  cTable const table;
  make(state, text);
}

template <class Path>
void makeLexically(benchmark::State& state, char const* text)
{
  Path const input(text);
  for (auto _ : state)
  {
    Path const path(input.lexically_normal());
    benchmark::DoNotOptimize(&path);
  }
}

void makeQt(benchmark::State& state, char const* text)
{
  QString const input(QString::fromLatin1(text));
  for (auto _ : state)
  {
    QString const path(QDir::cleanPath(input));
    benchmark::DoNotOptimize(&path);
  }
}

void makePoco(benchmark::State& state, char const* text)
{
  std::string const input(text);
  for (auto _ : state)
  {
    Poco::Path const path(input);
    benchmark::DoNotOptimize(&path);
  }
}
} // namespace

BENCH("paths", "normalise a/b/../c/./d//e", "mortise")
{
  make(state, shortPath);
}
BENCH("paths", "normalise a/b/../c/./d//e", "std::filesystem")
{
  makeLexically<std::filesystem::path>(state, shortPath);
}
BENCH("paths", "normalise a/b/../c/./d//e", "Boost.Filesystem")
{
  makeLexically<boost::filesystem::path>(state, shortPath);
}
BENCH("paths", "normalise a/b/../c/./d//e", "QDir")
{
  makeQt(state, shortPath);
}
BENCH("paths", "normalise a/b/../c/./d//e", "Poco")
{
  makePoco(state, shortPath);
}

BENCH("paths", "normalise 148 characters", "mortise")
{
  make(state, longPath);
}
BENCH("paths", "normalise 148 characters", "std::filesystem")
{
  makeLexically<std::filesystem::path>(state, longPath);
}
BENCH("paths", "normalise 148 characters", "Boost.Filesystem")
{
  makeLexically<boost::filesystem::path>(state, longPath);
}
BENCH("paths", "normalise 148 characters", "QDir")
{
  makeQt(state, longPath);
}
BENCH("paths", "normalise 148 characters", "Poco")
{
  makePoco(state, longPath);
}

BENCH("paths", "normalise a/b/../c/./d//e with the table", "mortise")
{
  fixupKnown(state, shortPath);
}
BENCH("paths", "normalise 148 characters with the table", "mortise")
{
  fixupKnown(state, longPath);
}
BENCH("paths", "make a path of a/b/../c/./d//e with the table", "mortise")
{
  makeKnown(state, shortPath);
}
BENCH("paths", "make a path of 148 characters with the table", "mortise")
{
  makeKnown(state, longPath);
}
