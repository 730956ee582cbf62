#include "io/cFileInfo.h"
#include "io/cPath.h"
#include "io/pathFixup.h"
#include "support/pathText.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

using mio::cFileInfo;
using mio::cPath;
using mucs::cString;
using support::held;
using support::wide;

namespace
{

// Everything here is the counterpart of the model that makes paths.golden.
unsigned int const BlockLength = 1024;

std::string utf8(cString const& text)
{
  mstd::tArray<char> const bytes(text.toUTF8());
  return std::string(bytes.data(true), bytes.length());
}

std::string flag(bool value)
{
  return value ? "1" : "0";
}

template <class Change>
std::string with(cPath const& path, Change change)
{
  cPath copy(path);
  change(copy);
  return held(copy);
}

template <class Change>
cString with(cString const& text, Change change)
{
  cString copy(text);
  change(copy);
  return copy;
}

/// One line, with a tab between its fields.
class cLine
{
public:
  explicit cLine(cString const& first) : mText(utf8(first)) {}
  cLine& operator<<(std::string const& field)
  {
    // held() gives a byte for each code point
    return *this << wide(field);
  }
  cLine& operator<<(cString const& field)
  {
    mText += "\t" + utf8(field);
    return *this;
  }
  std::string const& text() const { return mText; }

private:
  std::string mText;
};

std::string lineOf(cString const& path, cString const& other)
{
  cLine line(path);
  line << other;
  bool isEscaped = false;
  line << with(path, [&isEscaped](cString& text) { mio::fixupPath(text, isEscaped, nullptr); });
  char const letter = mio::driveLetter(path);
  line << flag(isEscaped) << std::string(letter != 0 ? 1 : 0, letter) << flag(mio::isRelative(path))
       << std::to_string(mio::pathComponentLength(path));
  line << with(path, [](cString& text) { mio::storePathComponent(text, text); });
  cPath const raw(path, false);
  cPath const normal(path, true);
  for (cPath const* each : {&raw, &normal})
  {
    line << held(*each) << flag(each->isRelative()) << each->path();
    for (unsigned int i = 0; i < 4; ++i)
    {
      line << each->getParts(i);
    }
    for (unsigned int i = 0; i < 4; ++i)
    {
      line << each->getPart(i);
    }
  }
  cPath const rawOther(other, false);
  cPath const normalOther(other, true);
  cPath dotted("/a/./b", false);
  dotted.cd("a\\b");
  for (cPath const* each : {&raw, &normal})
  {
    line << with(*each, [&other](cPath& p) { p.cd(other); });
    line << with(*each, [&other](cPath& p) {
      p.cd(other);
      p.fixup();
    });
    line << with(*each, [&rawOther](cPath& p) { p.cd(rawOther); });
    line << with(*each, [&rawOther](cPath& p) { p.makeAbsolute(rawOther); });
    line << with(*each, [&rawOther](cPath& p) { p.makeRelative(rawOther); });
    line << with(*each, [&normalOther](cPath& p) { p.makeRelative(normalOther); });
    line << with(*each, [&dotted](cPath& p) {
      p.cd("..");
      p.makeRelative(dotted);
    });
    line << flag(*each == rawOther) << flag(!(*each != normalOther));
  }
  line << flag(raw == normal);
  cPath base("/base/of");
  base.cd(other);
  line << base.relativeTo(path) << raw.relativeTo(other);
  cFileInfo const info(path);
  line << info.fileExtension() << info.fileBaseName() << info.fileName() << held(info.toPath());
  line << with(path, [](cString& p) { cFileInfo::setFileName(p, "n.x", false); });
  line << with(path, [&other](cString& p) { cFileInfo::setFileName(p, other, true); });
  line << with(path, [&other](cString& p) { cFileInfo::setFilePath(p, other); });
  line << with(path, [](cString& p) { cFileInfo::setFileNameExtension(p, ".z"); });
  line << with(path, [](cString& p) { cFileInfo::setFileNameSuffix(p, "_v"); });
  line << with(path, [&other](cString& p) { cFileInfo::setFileNameSuffix(p, other); });
  line << with(path, [](cString& p) {
    cFileInfo::setFileNameSuffix(p, "_v");
    cFileInfo::setFileNameSuffix(p, "_v");
  });
  line << with(path, [](cString& p) { cFileInfo::setFileNamePrefix(p, "p"); });
  line << with(path, [&other](cString& p) { cFileInfo::setFileNamePrefix(p, other); });
  line << with(path, [](cString& p) { cFileInfo::setFileNamePrefix(p, "a"); });
  return line.text() + "\n";
}

std::vector<std::string> tokenPaths()
{
  std::vector<std::string> const tokens = {"/", "\\", ".", "..", "a", "b", "C:"};
  std::vector<std::string> paths = {""};
  std::size_t start = 0;
  for (unsigned int count = 1; count <= 6; ++count)
  {
    std::size_t const end = paths.size();
    for (; start < end; ++start)
    {
      for (std::string const& token : tokens)
      {
        paths.push_back(paths[start] + token);
      }
    }
  }
  return paths;
}

std::vector<std::string> randomPaths()
{
  std::vector<std::string> const tokens = {
      "/",  "\\",  ".",   "..",   "a",    "b",    "C:", "../", "./",   "//",
      "a.", "..b", "...", "/../", "name", ".ext", "d:", "/",   "\xe9", "long.name.of.a.file"};
  unsigned long long state = 2026;
  auto const below = [&state](unsigned int limit) {
    state = state * 6364136223846793005ull + 1442695040888963407ull;
    return static_cast<unsigned int>((state >> 33) % limit);
  };
  std::vector<std::string> paths(100000);
  for (std::string& path : paths)
  {
    for (unsigned int count = 7 + below(12); count != 0; --count)
    {
      path += tokens[below(static_cast<unsigned int>(tokens.size()))];
    }
  }
  return paths;
}

unsigned int crc32(std::string const& text)
{
  static std::vector<unsigned int> const table = [] {
    std::vector<unsigned int> made;
    for (unsigned int i = 0; i < 256; ++i)
    {
      unsigned int value = i;
      for (unsigned int bit = 0; bit < 8; ++bit)
      {
        value = (value >> 1) ^ ((value & 1) != 0 ? 0xEDB88320u : 0u);
      }
      made.push_back(value);
    }
    return made;
  }();
  unsigned int value = 0xFFFFFFFFu;
  for (char c : text)
  {
    value = table[(value ^ static_cast<unsigned char>(c)) & 0xFFu] ^ (value >> 8);
  }
  return ~value;
}

/// The working directory that the model takes for the relative paths, as long as the object lives.
class cWorkingDirectory
{
public:
  cWorkingDirectory() : mOld(std::filesystem::current_path()) { std::filesystem::current_path("/usr/lib"); }
  cWorkingDirectory(cWorkingDirectory const&) = delete;
  cWorkingDirectory& operator=(cWorkingDirectory const&) = delete;
  ~cWorkingDirectory() { std::filesystem::current_path(mOld); }

private:
  std::filesystem::path mOld;
};

/// Compares every `step`-th block of paths with the model.
void compare(std::string const& set, std::vector<std::string> const& paths, unsigned int step)
{
  cWorkingDirectory const directory;
  std::ifstream golden(MORTISE_TEST_DATA_DIR "/paths.golden");
  std::string name;
  std::string expected;
  unsigned int number = 0;
  std::size_t compared = 0;
  while (golden >> name >> number >> expected)
  {
    if (name != set || number % step != 0)
    {
      continue;
    }
    std::string lines;
    std::size_t const start = std::size_t(number) * BlockLength;
    std::size_t const end = std::min(start + BlockLength, paths.size());
    for (std::size_t i = start; i < end; ++i)
    {
      lines += lineOf(wide(paths[i]), wide(paths[(i * 7919ull + 13) % paths.size()]));
    }
    compared += end - start;
    std::ostringstream hash;
    hash.width(8);
    hash.fill('0');
    hash << std::hex << crc32(lines);
    if (hash.str() != expected)
    {
      char const* const file = std::getenv("MORTISE_PATH_LINES");
      if (file != nullptr)
      {
        std::ofstream(file) << lines;
      }
      FAIL() << "Block " << number << " differs from what path_model.py --lines " << set << " " << number
             << " writes. MORTISE_PATH_LINES names the file that gets this library's lines.";
    }
  }
  std::size_t const blocks = (paths.size() + BlockLength - 1) / BlockLength;
  EXPECT_GE(compared, blocks / step * BlockLength - BlockLength);
  std::cout << compared << " of " << paths.size() << " paths compared" << std::endl;
}

// Instrumented builds take a sample.
#if defined(MORTISE_TEST_EXHAUSTIVE)
unsigned int const Step = 1;
#else
unsigned int const Step = 16;
#endif

} // namespace

TEST(PathModel, EveryPathOfUpToSixTokensIsTreatedAsTheModelDoes)
{
  std::vector<std::string> const paths = tokenPaths();
  ASSERT_EQ(paths.size(), 137257u);
  compare("tokens", paths, Step);
}

TEST(PathModel, RandomLongPathsAreTreatedAsTheModelDoes)
{
  compare("random", randomPaths(), Step);
}
