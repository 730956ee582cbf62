// Translation and locale files that nobody in his right mind has written.

#include "support/cFilesInMemory.h"
#include "support/cTempDir.h"
#include "support/survive.h"
#include "textSupport.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cLITrTable.h"
#include "ucs/cLITranslationLoader.h"

#include <gtest/gtest.h>

#include <sys/resource.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <new>
#include <random>
#include <string>

namespace
{

using mucs::cLILocale;
using mucs::cLITranslationLoader;
using mucs::cLITrTable;
using mucs::cString;
using support::cFilesInMemory;

std::string repeated(std::string const& part, unsigned int count)
{
  std::string text;
  text.reserve(part.size() * count);
  for (unsigned int i = 0; i < count; ++i)
  {
    text += part;
  }
  return text;
}

/// What loading such a file raises, as translation file and as locale file.
std::string refusedAsTranslations(std::string const& content)
{
  cFilesInMemory files{{"f", content}};
  cLITrTable table;
  return support::failureText([&] { cLITranslationLoader::loadFile("f", table, files); });
}

std::string refusedAsLocale(std::string const& content)
{
  cFilesInMemory files{{"f", content}};
  cLILocale locale(nullptr);
  return support::failureText([&] { locale.loadFromFile("f", files); });
}

void survives(std::string const& content)
{
  cFilesInMemory files{{"f", content}};
  support::survive([&] {
    cLITrTable table;
    cLITranslationLoader::loadFile("f", table, files);
  });
  support::survive([&] {
    cLILocale locale(nullptr);
    locale.loadFromFile("f", files);
  });
}

/// Largest resident memory of the process so far, in bytes.
long long peak()
{
  rusage usage;
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * 1024LL;
}

TEST(HostileLocale, AMissingQuoteSwallowsTheRestAndIsRefused)
{
  std::string const entries = repeated("\"key\" = \"text\";\n", 20000);
  EXPECT_EQ(refusedAsTranslations("\"" + entries), "cTextParseException: \"=\" expected!");
  EXPECT_EQ(refusedAsLocale("\"" + entries), "cRuntimeException: \"=\" expected!");
  EXPECT_EQ(refusedAsTranslations(entries + "\"a\" = \"b"), "cTextParseException: \" expected!");
  EXPECT_EQ(refusedAsLocale(entries + "Name = \"b"), "cRuntimeException: \" expected!");
  EXPECT_EQ(refusedAsTranslations("\"" + repeated("\\\"", 1000000)), "cTextParseException: \" expected!");
}

TEST(HostileLocale, AnEndlessCommentIsPassedOver)
{
  std::string const comment = "\"a\" = \"1\" // " + repeated("\"x\" = / ", 2000000);
  EXPECT_EQ(refusedAsTranslations(comment), "");
  EXPECT_EQ(refusedAsLocale(comment), "");
  EXPECT_EQ(refusedAsTranslations(repeated("/", 16000001)), "");
}

TEST(HostileLocale, ManyShortTokensTakeLinearTime)
{
  for (char const* part : {"//\n", "//\r", ";", "= ", "\"\"=\"\"", "x ", "( ", "\\", "\"a\\\"\"=\"b\"//\r"})
  {
    auto const start = std::chrono::steady_clock::now();
    survives(repeated(part, 20000));
    auto const small = std::chrono::steady_clock::now() - start;
    auto const next = std::chrono::steady_clock::now();
    survives(repeated(part, 80000));
    auto const large = std::chrono::steady_clock::now() - next;
    // Four times the work; sixteen times the time would be quadratic. The constant is for a busy machine.
    EXPECT_LT(large, 10 * small + std::chrono::seconds(2)) << part;
  }
}

TEST(HostileLocale, AValueOf100MegabytesIsLoadedInBoundedMemory)
{
  unsigned int const iSize = 100000000;
  support::cTempDir dir;
  {
    std::ofstream file(dir.path() + "/f");
    file << "\"key\" = \"";
    std::string const block(1000000, 'x');
    for (unsigned int i = 0; i < iSize / block.size(); ++i)
    {
      file << block;
    }
    file << "\"\n";
  }
  long long const before = peak();
  {
    cLITrTable table;
    cLITranslationLoader::loadFile(dir.name("f"), table);
    ASSERT_NE(table.hasTranslation("key"), nullptr);
    EXPECT_EQ(table.hasTranslation("key")->translation().length(), iSize);
  }
  cLILocale locale(nullptr);
  locale.loadFromFile(dir.name("f"));
  EXPECT_EQ(locale.translator().hasTranslation("key")->translation().length(), iSize);
  // The bytes of the file and the code points of the value, not a copy of either.
#if !defined(__SANITIZE_ADDRESS__)
  EXPECT_LT(peak() - before, iSize * (1LL + 4) + 50000000);
#else
  EXPECT_GT(peak(), before); // a sanitizer keeps what is freed
#endif
}

TEST(HostileLocale, AFileBeyond4GibibytesIsRefused)
{
  support::cTempDir dir;
  std::string const path = dir.path() + "/f";
  std::ofstream(path).close();
  std::filesystem::resize_file(path, (1ull << 32) + 100); // has holes only
  cLITrTable table;
  EXPECT_THROW(cLITranslationLoader::loadFile(dir.name("f"), table), std::bad_alloc);
  cLILocale locale(nullptr);
  EXPECT_THROW(locale.loadFromFile(dir.name("f")), std::bad_alloc);
  EXPECT_TRUE(locale.fileName().empty());
}

TEST(HostileLocale, NulBytesAreRefusedInStringsAndPassedOverElsewhere)
{
  std::string const nul(1, '\0');
  std::string const expected = "cRuntimeException: UTF8 decode error - unexpected end of data at index 0!";
  EXPECT_EQ(refusedAsTranslations("\"a" + nul + "\" = \"b\""), expected);
  EXPECT_EQ(refusedAsLocale("\"a\" = \"b" + nul + "\""), expected);
  EXPECT_EQ(refusedAsLocale("Name = \"" + nul + "\""), expected);
  EXPECT_EQ(refusedAsLocale("include \"x" + nul + "\""), expected);
  EXPECT_EQ(refusedAsTranslations(nul + "\"a\" = \"b\"" + nul + "//" + nul), "");
  EXPECT_EQ(refusedAsLocale(std::string(1000, '\0')), "");
  EXPECT_EQ(refusedAsTranslations("\"a\" " + nul + "= \"b\""), "cTextParseException: \"=\" expected!");
  EXPECT_EQ(refusedAsLocale("Na" + nul + "me = \"b\" "), "cRuntimeException: \"=\" expected!");
}

TEST(HostileLocale, InvalidUTF8InAFileThatIsAValueIsRefused)
{
  cFilesInMemory files{{"f", "\"a\" = fromFile(\"g\")"}, {"g", "ok \xC3"}};
  cLILocale locale(nullptr);
  EXPECT_EQ(support::failureText([&] { locale.loadFromFile("f", files); }),
            "cRuntimeException: UTF8 decode error - unexpected end of data at index 1!");
  EXPECT_EQ(locale.translator().length(), 0u);
}

TEST(HostileLocale, EveryByteInEveryPartOfAnEntryIsTakenOrRefused)
{
  for (unsigned int iByte = 0; iByte < 256; ++iByte)
  {
    std::string const b(1, static_cast<char>(iByte));
    std::string const whole = "\"a\" = fromFile ( \"f\" ) // x\nName = \"n\" include \"g\"\n";
    for (size_t i = 0; i <= whole.size(); ++i)
    {
      cFilesInMemory files{{"f", "text"}, {"g", "\"b\" = \"c\""}, {"l", std::string(whole).insert(i, b)}};
      support::survive([&] {
        cLILocale locale(nullptr);
        locale.loadFromFile("l", files);
      });
    }
  }
}

TEST(HostileLocale, RandomTokensAreTakenOrRefused)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  char const* const tokens[] = {"\"", "\"a\"", "=", "//", "\n",       "\r", "Name",  "include", "Flag", "(",
                                ")",  ";",     " ", "\\", "fromFile", "x",  "\"f\"", "\"g\"",   "\xC3", "\xE2\x82\xAC",
                                "/",  "\"\"",  "\t"};
  unsigned int iTaken = 0;
  for (unsigned int i = 0; i < 20000; ++i)
  {
    std::map<std::string, std::string> contents;
    for (char const* name : {"f", "g", "h"})
    {
      for (unsigned int j = random() % 24; j != 0; --j)
      {
        contents[name] += tokens[random() % (sizeof tokens / sizeof *tokens)];
      }
    }
    cFilesInMemory files;
    files.files = contents;
    support::survive([&] {
      cLILocale locale(nullptr);
      locale.loadFromFile("f", files);
      ++iTaken;
      EXPECT_EQ(locale.fileName(), cString("f"));
    });
    EXPECT_LE(files.asked.size(), cLILocale::MaxIncludedFiles + 1u);
    support::survive([&] {
      cLITrTable table;
      cLITranslationLoader::loadFile("g", table, files);
    });
  }
  EXPECT_GT(iTaken, 0u);
}

} // namespace
