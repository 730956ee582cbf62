#include "ucs/cLITranslationLoader.h"

#include "std/cTextParseException.h"
#include "support/cFilesInMemory.h"
#include "textSupport.h"
#include "ucs/cLITrTable.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace
{

using mucs::cLITranslationLoader;
using mucs::cLITrItem;
using mucs::cLITrTable;
using mucs::cString;

/// The entries of a table in the order of the places: "key=text|".
std::string entries(cLITrTable const& table)
{
  std::string text;
  for (unsigned int i = 0; i < table.length(); ++i)
  {
    cLITrTable::tPlaces const* const pPlaces = table.at(i);
    for (unsigned int j = 0; pPlaces != nullptr && j < pPlaces->length(); ++j)
    {
      cLITrTable::tItems const* const pItems = pPlaces->at(j);
      if (pItems == nullptr)
      {
        continue;
      }
      for (cLITrItem const* pItem : *pItems)
      {
        mstd::tArray<char> const translation = pItem->translation().toUTF8();
        text += std::string(pItem->key().c_str(), pItem->key().length()) + "=" + support::bytes(translation) + "|";
      }
    }
  }
  return text;
}

std::string loaded(std::string const& content)
{
  support::cFilesInMemory files{{"f.tr", content}};
  cLITrTable table;
  cLITranslationLoader::loadFile("f.tr", table, files);
  return entries(table);
}

/// "message in file of format at row, column", and the entries that were read before.
std::string refused(std::string const& content)
{
  support::cFilesInMemory files{{"f.tr", content}};
  cLITrTable table;
  try
  {
    cLITranslationLoader::loadFile("f.tr", table, files);
  }
  catch (mstd::cTextParseException const& e)
  {
    mstd::cAsciiString message;
    e.liMessage()->untranslated(message);
    return std::string(message.c_str()) + " in " + support::ascii(e.fileName()) + " of " + e.format().c_str() + " at " +
           std::to_string(e.row()) + ", " + std::to_string(e.column()) + ": " + entries(table);
  }
  return "nothing";
}

// --- entries ---------------------------------------------------------------------------------------------------------

TEST(cLITranslationLoader, AnEntryIsAKeyAnEqualsSignAndATranslation)
{
  EXPECT_EQ(loaded("\"a\" = \"b\";\n"), "a=b|");
}

TEST(cLITranslationLoader, AnEmptyFileHasNoEntries)
{
  EXPECT_EQ(loaded(""), "");
  EXPECT_EQ(loaded(" \t;\r\n"), "");
}

TEST(cLITranslationLoader, EntriesNeedNoSeparators)
{
  EXPECT_EQ(loaded("\"a\"=\"b\"\"cc\"=\"d\""), "a=b|cc=d|");
  EXPECT_EQ(loaded(";;\"a\"\t;=\r\n\r\n;\"b\";;;\"cc\" = \"d\""), "a=b|cc=d|");
}

TEST(cLITranslationLoader, TokensThatMeanNothingArePassedOver)
{
  EXPECT_EQ(loaded("what = ever (Name) include fromFile / \"a\" = \"b\" rest"), "a=b|");
}

TEST(cLITranslationLoader, AByteOrderMarkIsPassedOver)
{
  EXPECT_EQ(loaded("\xEF\xBB\xBF\"a\" = \"b\""), "a=b|");
}

TEST(cLITranslationLoader, SeparatorsAndKeysInAStringBelongToIt)
{
  EXPECT_EQ(loaded("\" a;b\tc // d = e\nf\r\" = \"(Name) \""), " a;b\tc // d = e\nf\r=(Name) |");
}

TEST(cLITranslationLoader, StringsMayBeEmpty)
{
  EXPECT_EQ(loaded("\"\" = \"nothing\" \"a\" = \"\""), "=nothing|a=|");
}

TEST(cLITranslationLoader, AQuoteBehindABackslashBelongsToTheString)
{
  EXPECT_EQ(loaded("\"a \\\"b\\\" c\" = \"\\\"x\\\"\""), "a \"b\" c=\"x\"|");
}

TEST(cLITranslationLoader, ABackslashIsTakenOffInKeyAndTranslation)
{
  EXPECT_EQ(loaded("\"a\\b\" = \"c\\d\""), "ab=cd|");
  EXPECT_EQ(loaded("\"100\\\\% a\" = \"100\\\\% b\""), "100\\% a=100\\% b|");
}

TEST(cLITranslationLoader, TranslationsAreUTF8AndKeysAscii)
{
  EXPECT_EQ(loaded("\"caf\xC3\xA9 %x%\" = \"\xC3\x84pfel f\xC3\xBCr \xE2\x82\xAC 1 \xF0\x9F\x98\x80\""),
            "caf? %x%=\xC3\x84pfel f\xC3\xBCr \xE2\x82\xAC 1 \xF0\x9F\x98\x80|");
}

TEST(cLITranslationLoader, ASecondEntryOfAKeyIsStoredAndNeverFound)
{
  support::cFilesInMemory files{{"f.tr", "\"a\" = \"first\"; \"a\" = \"second\""}};
  cLITrTable table;
  cLITranslationLoader::loadFile("f.tr", table, files);
  EXPECT_EQ(entries(table), "a=first|a=second|");
  EXPECT_EQ(table.hasTranslation("a")->translation(), cString("first"));
}

TEST(cLITranslationLoader, LoadingReplacesAndPatchingAdds)
{
  support::cFilesInMemory files{{"1.tr", "\"a\" = \"1\""}, {"2.tr", "\"a\" = \"2\"; \"bb\" = \"2\""}};
  cLITrTable table;
  cLITranslationLoader::loadFile("1.tr", table, files);
  cLITranslationLoader::patchFromFile("2.tr", table, files);
  EXPECT_EQ(entries(table), "a=1|a=2|bb=2|");
  cLITranslationLoader::loadFile("2.tr", table, files);
  EXPECT_EQ(entries(table), "a=2|bb=2|");
}

TEST(cLITranslationLoader, AFileThatCannotBeReadRaisesWhatTheSourceRaises)
{
  support::cFilesInMemory files;
  cLITrTable table;
  table.addTranslation("a", "1");
  EXPECT_EQ(support::failureText([&] { cLITranslationLoader::patchFromFile("x.tr", table, files); }),
            "cRuntimeException: There is no x.tr!");
  EXPECT_EQ(entries(table), "a=1|");
  EXPECT_EQ(support::failureText([&] { cLITranslationLoader::loadFile("x.tr", table, files); }),
            "cRuntimeException: There is no x.tr!");
  EXPECT_EQ(entries(table), ""); // loading begins with an empty table
}

// --- comments --------------------------------------------------------------------------------------------------------

TEST(cLITranslationLoader, ACommentEndsWithItsLine)
{
  for (char const* lineEnd : {"\n", "\r", "\r\n"})
  {
    std::string const e = lineEnd;
    EXPECT_EQ(loaded("// x \"y\" = \"z\"" + e + "\"a\" = \"1\" // \"b" + e + "\"bb\" = \"2\"//" + e + "//" + e),
              "a=1|bb=2|");
  }
}

TEST(cLITranslationLoader, ACommentAtTheEndNeedsNoLineEnd)
{
  EXPECT_EQ(loaded("\"a\" = \"1\" // the end"), "a=1|");
  EXPECT_EQ(loaded("\"a\" = \"1\" //"), "a=1|");
}

TEST(cLITranslationLoader, ACommentMayStandInsideAnEntry)
{
  EXPECT_EQ(loaded("\"a\" // key\n = // equals\n \"1\""), "a=1|");
}

TEST(cLITranslationLoader, ACommentMayHoldAnyBytes)
{
  EXPECT_EQ(loaded(std::string("// \0 \xFF \xC3\n\"a\" = \"1\" \xFF\xC3", 21)), "a=1|");
}

// --- failures --------------------------------------------------------------------------------------------------------

TEST(cLITranslationLoader, AMissingClosingQuote)
{
  EXPECT_EQ(refused("\"a"), "\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\""), "\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\" = \"1\"\n\"b\" = \"c\\\""), "\" expected! in f.tr of tr at 1, 0: a=1|");
  EXPECT_EQ(refused("\"a\" = \""), "\" expected! in f.tr of tr at 0, 0: ");
}

TEST(cLITranslationLoader, AMissingOpeningQuote)
{
  EXPECT_EQ(refused("\"a\" = b\""), "\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\" = = \"b\""), "\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\" ="), "\" expected! in f.tr of tr at 0, 0: ");
}

TEST(cLITranslationLoader, AMissingEqualsSign)
{
  EXPECT_EQ(refused("\"a\" \"b\""), "\"=\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\" b"), "\"=\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\""), "\"=\" expected! in f.tr of tr at 0, 0: ");
  EXPECT_EQ(refused("\"a\" // = \"b\""), "\"=\" expected! in f.tr of tr at 0, 0: ");
}

TEST(cLITranslationLoader, TheRowIsThatOfTheFileWhateverItsLineEnds)
{
  for (char const* lineEnd : {"\n", "\r", "\r\n"})
  {
    std::string const e = lineEnd;
    std::string const content = e + "// one" + e + "\"a\" = \"1\"; // two" + e + e + "\"b\" ? \"2\"" + e;
    EXPECT_EQ(refused(content), "\"=\" expected! in f.tr of tr at 4, 0: a=1|") << support::hex(content);
  }
}

TEST(cLITranslationLoader, LineEndsInStringsDoNotCountForTheRow)
{
  EXPECT_EQ(refused("\"a\n\n\" = \"\n\"\n\"b\""), "\"=\" expected! in f.tr of tr at 1, 0: a\n\n=\n|");
}

TEST(cLITranslationLoader, MixedLineEndsCountAsTheMoreFrequentKind)
{
  EXPECT_EQ(refused("\r\r\n\"a\""), "\"=\" expected! in f.tr of tr at 2, 0: ");
  EXPECT_EQ(refused("\r\n\n\n\"a\""), "\"=\" expected! in f.tr of tr at 3, 0: ");
}

TEST(cLITranslationLoader, EntriesInFrontOfAFailureStay)
{
  support::cFilesInMemory files{{"f.tr", "\"bb\" = \"2\"; \"ccc\""}};
  cLITrTable table;
  table.addTranslation("a", "1");
  EXPECT_EQ(support::failureText([&] { cLITranslationLoader::patchFromFile("f.tr", table, files); }),
            "cTextParseException: \"=\" expected!");
  EXPECT_EQ(entries(table), "a=1|bb=2|");
}

TEST(cLITranslationLoader, AStringThatIsNoUTF8RaisesWhatTheDecoderRaises)
{
  std::pair<std::string, std::string> const cases[] = {
      {std::string("\0", 1), "unexpected end of data at index 0!"},
      {"\xC3", "unexpected end of data at index 1!"},
      {"ok \xE2\x82", "unexpected end of data at index 2!"},
      {"\xF8\x80\x80\x80\x80", "unsupported length of 4!"},
  };
  for (auto const& bad : cases)
  {
    support::cFilesInMemory files{{"f.tr", "\"a\" = \"1\"; \"bb\" = \"" + bad.first + "\""}};
    cLITrTable table;
    EXPECT_EQ(support::failureText([&] { cLITranslationLoader::loadFile("f.tr", table, files); }),
              "cRuntimeException: UTF8 decode error - " + bad.second);
    EXPECT_EQ(entries(table), "a=1|");
    files.files["f.tr"] = "\"" + bad.first + "\" = \"1\"";
    EXPECT_EQ(support::failureText([&] { cLITranslationLoader::loadFile("f.tr", table, files); }),
              "cRuntimeException: UTF8 decode error - " + bad.second);
  }
}

} // namespace
