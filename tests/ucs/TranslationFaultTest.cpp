// Translation and locale files on a file system that fails.

#include "std/cAbstractException.h"
#include "support/cCaptureOut.h"
#include "support/cTempDir.h"
#include "support/faultshim.h"
#include "textSupport.h"
#include "ucs/cLILocale.h"
#include "ucs/cLITrTable.h"
#include "ucs/cLITranslationLoader.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <string>

namespace
{

using mucs::cLILocale;
using mucs::cLITranslationLoader;
using mucs::cLITrTable;
using mucs::cString;
using support::cFaultShim;

class TranslationFault : public testing::Test
{
protected:
  TranslationFault() : mDescriptors(cFaultShim::numDescriptors())
  {
    put("old.locale", "Name = \"old\"; \"a\" = \"old\"");
    put("de.locale", "Name = fromFile(\"name.txt\"); include \"de.tr\"; Flag = \"de.png\"");
    put("de.tr", "\"a\" = \"1\"; \"b\" = \"2\"");
    put("name.txt", "Deutsch");
  }
  ~TranslationFault() override { EXPECT_EQ(cFaultShim::numDescriptors(), mDescriptors); }

  std::string path(std::string const& file) const { return mDir.path() + "/" + file; }
  void put(std::string const& file, std::string const& contents) const
  {
    std::ofstream(path(file), std::ios::binary) << contents;
  }

  support::cCaptureOut mMute;
  support::cTempDir mDir;
  unsigned int mDescriptors;
};

void expectNew(cLILocale const& locale)
{
  EXPECT_EQ(locale.name(), cString("Deutsch"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("a")), cString("1"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("b")), cString("2"));
}

void expectOld(cLILocale const& locale)
{
  EXPECT_EQ(locale.name(), cString("old"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("a")), cString("old"));
  EXPECT_EQ(locale.translate(mstd::cAsciiString("b")), cString("b"));
}

TEST_F(TranslationFault, FilesComeWholeFromShortAndInterruptedReads)
{
  cLILocale locale(nullptr);
  cFaultShim shim;
  shim.limitRead(1);
  shim.fail(cFaultShim::Read, EINTR, 3, 5);
  locale.loadFromFile(mDir.name("de.locale"));
  EXPECT_EQ(shim.numFaults(), 3u);
  expectNew(locale);
}

TEST_F(TranslationFault, ACallThatFailsLeavesTheLocaleAsItWasOrDoesNotMatter)
{
  cLILocale locale(nullptr);
  unsigned int iCalls = 0;
  {
    cFaultShim shim;
    locale.loadFromFile(mDir.name("de.locale"));
    iCalls = shim.numCalls();
  }
  ASSERT_GE(iCalls, 9u); // three files are opened, read and closed
  unsigned int iRefused = 0;
  for (unsigned int i = 0; i < iCalls; ++i)
  {
    SCOPED_TRACE(i);
    locale.loadFromFile(mDir.name("old.locale"));
    bool isRefused = false;
    {
      cFaultShim shim;
      shim.failNth(i, EIO);
      try
      {
        locale.loadFromFile(mDir.name("de.locale"));
      }
      catch (mstd::cAbstractException const&)
      {
        isRefused = true;
      }
      EXPECT_EQ(shim.numFaults(), 1u);
    }
    isRefused ? expectOld(locale) : expectNew(locale);
    iRefused += isRefused ? 1 : 0;
    EXPECT_EQ(cFaultShim::numDescriptors(), mDescriptors);
  }
  EXPECT_GE(iRefused, 6u); // each open and each read
}

TEST_F(TranslationFault, WithoutADescriptorOrTheRightToReadThereIsNoLanguage)
{
  cLILocale locale(nullptr);
  locale.loadFromFile(mDir.name("old.locale"));
  for (int iError : {EMFILE, EACCES})
  {
    for (unsigned int iSkip = 0; iSkip < 3; ++iSkip)
    {
      cFaultShim shim;
      shim.fail(cFaultShim::Open, iError, 1, iSkip);
      EXPECT_THROW(locale.loadFromFile(mDir.name("de.locale")), mstd::cAbstractException) << iError << " " << iSkip;
      EXPECT_EQ(shim.numFaults(), 1u);
      expectOld(locale);
    }
  }
}

TEST_F(TranslationFault, AFileThatShrinksWhileItIsReadEndsThere)
{
  put("f.tr", "\"a\" = \"1\"; \"b\" = \"2\"" + std::string(100000, ' ') + "\"");
  cLITrTable table;
  cFaultShim shim;
  shim.before(cFaultShim::Read, [this] { std::filesystem::resize_file(path("f.tr"), 20); });
  cLITranslationLoader::loadFile(mDir.name("f.tr"), table);
  ASSERT_NE(table.hasTranslation("b"), nullptr);
  EXPECT_EQ(table.hasTranslation("b")->translation(), cString("2"));
}

TEST_F(TranslationFault, AValueFromAFileThatShrinksHasWhatIsLeft)
{
  put("name.txt", "Deutsch" + std::string(1000, 'x'));
  cLILocale locale(nullptr);
  cFaultShim shim;
  shim.before(
      cFaultShim::Read, [this] { std::filesystem::resize_file(path("name.txt"), 7); }, 1);
  locale.loadFromFile(mDir.name("de.locale"));
  expectNew(locale);
}

TEST_F(TranslationFault, EntriesInFrontOfAFileThatShrinksToHalfAnEntryStay)
{
  put("f.tr", "\"a\" = \"1\"; \"b\" = \"2\"");
  cLITrTable table;
  cFaultShim shim;
  shim.before(cFaultShim::Read, [this] { std::filesystem::resize_file(path("f.tr"), 14); });
  EXPECT_EQ(support::failureText([&] { cLITranslationLoader::loadFile(mDir.name("f.tr"), table); }),
            "cTextParseException: \"=\" expected!");
  EXPECT_NE(table.hasTranslation("a"), nullptr);
  EXPECT_EQ(table.hasTranslation("b"), nullptr);
}

} // namespace
