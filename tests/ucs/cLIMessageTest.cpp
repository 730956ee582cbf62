#include "ucs/cLIMessage.h"

#include "std/cNumberConversionFormat.h"
#include "std/tList.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "textSupport.h"
#include "ucs/cLIItem.h"

#include <fstream>
#include <gtest/gtest.h>
#include <limits>
#include <utility>

#ifndef MORTISE_TEST_DATA_DIR
#define MORTISE_TEST_DATA_DIR "tests/reference"
#endif

namespace
{
using mstd::cAsciiString;
using mucs::cLIItem;
using mucs::cLIMessage;
using mucs::cString;

std::string text(cLIMessage const& mMessage)
{
  cString sText;
  mMessage.untranslated(sText);
  return support::ascii(sText);
}

std::string translated(cLIMessage const& mMessage, char const* sText)
{
  cString sResult;
  mMessage.translate(cString(sText), sResult);
  return support::ascii(sResult);
}

/// "name=value/kind ..." of all items.
std::string items(cLIMessage const& mMessage)
{
  std::string sResult;
  for (cLIItem const& item : mMessage.items())
  {
    sResult +=
        std::string(item.name().c_str()) + "=" + support::ascii(item.value()) + "/" + std::to_string(item.kind()) + " ";
  }
  return sResult;
}

cLIMessage keyed(std::string const& sKey)
{
  return cLIMessage(cAsciiString(sKey.c_str()));
}

TEST(cLIMessage, ADefaultMessageIsEmptyAndTranslatable)
{
  cLIMessage const message;
  EXPECT_STREQ(message.key().c_str(), "");
  EXPECT_TRUE(message.isTranslatable());
  EXPECT_EQ(message.scanPosition(), 0u);
  EXPECT_TRUE(message.items().empty());
  EXPECT_EQ(text(message), "");
}

TEST(cLIMessage, ParametersFillThePlaceholdersInOrderAndATranslationMayReorderThem)
{
  cLIMessage message;
  message << "$MTR$A %x% b %y%" << 1 << 2;
  EXPECT_EQ(text(message), "A 1 b 2");
  EXPECT_EQ(translated(message, "%y% then %x%"), "2 then 1");
}

TEST(cLIMessage, ATextThatIsNotToBeTranslatedIgnoresTheTranslation)
{
  cLIMessage message;
  message << "$MNTR$Value %v%" << 5;
  EXPECT_STREQ(message.key().c_str(), "Value %v%");
  EXPECT_FALSE(message.isTranslatable());
  EXPECT_EQ(translated(message, "Wert %v%"), "Value 5");
}

TEST(cLIMessage, AnEscapedPercentSignIsNoPlaceholderAndReadsPlain)
{
  cLIMessage message;
  message << "$MTR$100\\% of %x%"
          << "all";
  EXPECT_EQ(items(message), "%x=all/0 ");
  EXPECT_EQ(text(message), "100% of all");
}

TEST(cLIMessage, BackslashesAndPercentSignsOfAValueAppearAsTheyAre)
{
  cLIMessage message;
  message << "$MTR$[%a%] [%b%] [%c%]"
          << "50%"
          << "C:\\dir\\"
          << "%a%";
  EXPECT_EQ(text(message), "[50%] [C:\\dir\\] [%a%]");
  EXPECT_EQ(translated(message, "%c%%b%%a%"), "%a%C:\\dir\\50%");
}

TEST(cLIMessage, APlaceholderWithoutAParameterReadsQuestionMarks)
{
  cLIMessage message;
  message << "$MTR$File %file% is missing";
  EXPECT_EQ(text(message), "File ??? is missing");
}

TEST(cLIMessage, APlaceholderMayEndAtABlankThatStays)
{
  cLIMessage message = keyed("%a b");
  message << "v";
  EXPECT_EQ(items(message), "%a=v/0 ");
  EXPECT_EQ(message.scanPosition(), 2u);
  EXPECT_EQ(text(message), "v b");
}

TEST(cLIMessage, APlaceholderMayEndWithTheText)
{
  cLIMessage message = keyed("is %a");
  message << "v";
  EXPECT_EQ(text(message), "is v");
  EXPECT_EQ(message.scanPosition(), 5u);
}

TEST(cLIMessage, MergedMessagesShowBothParameterSets)
{
  cLIMessage first;
  first << "$MTR$One %x%. " << 1;
  cLIMessage second;
  second << "$MNTR$Two %y%, %z%." << 2 << "z";
  first.merge(second);
  EXPECT_STREQ(first.key().c_str(), "One %x%. Two %y%, %z%.");
  EXPECT_EQ(items(first), "%x=1/1 %y=2/1 %z=z/0 ");
  EXPECT_EQ(text(first), "One 1. Two 2, z.");
  EXPECT_TRUE(first.isTranslatable()) << "the flag of the target stays";
  EXPECT_EQ(first.scanPosition(), 7u) << "the scan position stays";
  EXPECT_EQ(text(second), "Two 2, z.");
}

TEST(cLIMessage, AfterAMergeThePlaceholdersOfTheOtherAreSearchedAgain)
{
  cLIMessage first;
  first << "$MTR$One %x%. " << 1;
  cLIMessage second;
  second << "$MTR$Two %y%." << 2;
  first.merge(second);
  first << 3; // behind %x% comes %y%, which has a value already: the first one counts
  EXPECT_EQ(items(first), "%x=1/1 %y=2/1 %y=3/1 ");
  EXPECT_EQ(text(first), "One 1. Two 2.");
}

TEST(cLIMessage, MergingIntoAndFromAnEmptyMessage)
{
  cLIMessage empty;
  cLIMessage message;
  message << "$MNTR$Value %v%" << 5;
  message.merge(empty);
  EXPECT_EQ(text(message), "Value 5");
  empty.merge(message);
  EXPECT_EQ(text(empty), "Value 5");
  EXPECT_EQ(empty.scanPosition(), 0u);
  EXPECT_TRUE(empty.isTranslatable());
}

TEST(cLIMessage, AMessageMergedWithItselfDoubles)
{
  cLIMessage message;
  message << "$MTR$<%v%>" << 5;
  message.merge(message);
  EXPECT_STREQ(message.key().c_str(), "<%v%><%v%>");
  EXPECT_EQ(items(message), "%v=5/1 %v=5/1 ");
  EXPECT_EQ(text(message), "<5><5>");
}

TEST(cLIMessage, AStringStreamedIntoAnEmptyMessageIsDropped)
{
  cLIMessage message;
  message << cString("$MTR$not a key");
  EXPECT_STREQ(message.key().c_str(), "");
  EXPECT_TRUE(message.items().empty());
  message << "$MTR$key %x%" << cString("v");
  EXPECT_EQ(text(message), "key v");
}

TEST(cLIMessage, TheKeyConstructorTakesTheKeyAsItStands)
{
  cLIMessage message = keyed("$MNTR$A %x%");
  EXPECT_STREQ(message.key().c_str(), "$MNTR$A %x%");
  EXPECT_TRUE(message.isTranslatable());
  message << "v";
  EXPECT_EQ(text(message), "$MNTR$A v");
}

TEST(cLIMessage, AStreamedByteStringIsAKeyToo)
{
  cLIMessage message;
  message << cAsciiString("$MNTR$A %x%") << cAsciiString("$MTR$v");
  EXPECT_STREQ(message.key().c_str(), "A %x%");
  EXPECT_FALSE(message.isTranslatable());
  EXPECT_EQ(text(message), "A $MTR$v");
}

TEST(cLIMessage, AKeyWithoutAMarkerIsKeptAndTranslatable)
{
  cLIMessage message;
  message << "$MTRplain %x%" << 1;
  EXPECT_STREQ(message.key().c_str(), "$MTRplain %x%");
  EXPECT_TRUE(message.isTranslatable());
  EXPECT_EQ(translated(message, "<%x%>"), "<1>");
}

TEST(cLIMessage, AMarkerAloneLeavesTheKeyEmptySoThatTheNextTextIsTheKey)
{
  cLIMessage message;
  message << "$MTR$"
          << "$MTR$A %x%" << 1;
  EXPECT_EQ(text(message), "A 1");
}

TEST(cLIMessage, ATextMarkedNotToBeTranslatedMayStartWithTheOtherMarker)
{
  cLIMessage message;
  message << "$MNTR$$MTR$x";
  EXPECT_STREQ(message.key().c_str(), "$MTR$x");
  EXPECT_FALSE(message.isTranslatable());
}

TEST(cLIMessage, TheKeyKeepsItsPoolWhenItIsErased)
{
  cLIMessage message;
  message << "$MTR$A";
  EXPECT_FALSE(message.key().fitOnErase());
}

TEST(cLIMessage, SurplusParametersAreDroppedAndTheScanEndsAtTheEndOfTheKey)
{
  cLIMessage message;
  message << "$MTR$A %x% end" << 1 << 2;
  EXPECT_EQ(items(message), "%x=1/1 ");
  EXPECT_EQ(message.scanPosition(), 9u);
  message << 3;
  EXPECT_EQ(message.scanPosition(), 9u);
}

TEST(cLIMessage, AKeyWithoutPlaceholdersStaysWhatItIs)
{
  cLIMessage message;
  message << "$MTR$Plain" << 1;
  EXPECT_EQ(text(message), "Plain");
}

TEST(cLIMessage, EachTypeOfParameterHasItsKind)
{
  cLIMessage message;
  message << "$MTR$%a%%b%%c%%d%%e%%f%%g%%h%"
          << "t" << cAsciiString("s") << cString("u") << -1 << std::numeric_limits<unsigned int>::max()
          << std::numeric_limits<long long>::min() << std::numeric_limits<unsigned long long>::max() << 1.5;
  EXPECT_EQ(items(message), "%a=t/0 %b=s/0 %c=u/0 %d=-1/1 %e=4294967295/1 %f=-9223372036854775808/1 "
                            "%g=18446744073709551615/1 %h=1.5/2 ");
}

TEST(cLIMessage, OfTwoItemsWithOneNameTheFirstFillsAllOccurrences)
{
  cLIMessage message;
  message << "$MTR$%x% %x%" << 1 << 2;
  EXPECT_EQ(items(message), "%x=1/1 %x=2/1 ");
  EXPECT_EQ(text(message), "1 1");
}

TEST(cLIMessage, ANumberFormatHoldsForTheNumbersStreamedLater)
{
  mstd::cNumberConversionFormat hex(16);
  cLIMessage message;
  message << "$MTR$%a% %b% %c%" << 255 << hex << 255 << "255";
  EXPECT_EQ(text(message), "255 ff 255");
  EXPECT_EQ(message.numberConversionFormat().base(), 16u);
}

TEST(cLIMessage, WithoutAFormatOfItsOwnTheSystemsDefaultHolds)
{
  cLIMessage message;
  EXPECT_EQ(&message.numberConversionFormat(),
            &mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat());
  message << message.numberConversionFormat();
  EXPECT_NE(&message.numberConversionFormat(),
            &mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat());
  message << message.numberConversionFormat(); // its own one again
  EXPECT_EQ(message.numberConversionFormat().base(), 10u);
}

TEST(cLIMessage, ACopyIsDeepAndTakesTheFormatAlong)
{
  cLIMessage original;
  original << "$MNTR$%a% %b%" << mstd::cNumberConversionFormat(2) << 1;
  cLIMessage copy(original);
  original << 2;
  copy << 3;
  EXPECT_EQ(text(original), "1 10");
  EXPECT_EQ(text(copy), "1 11");
  EXPECT_FALSE(copy.isTranslatable());
  original = copy;
  EXPECT_EQ(text(original), "1 11");
  cLIMessage& rSame = original;
  original = rSame;
  EXPECT_EQ(text(original), "1 11");
}

TEST(cLIMessage, MovingAndSwappingExchangeTheTexts)
{
  cLIMessage a;
  a << "$MTR$a";
  cLIMessage b;
  b << "$MTR$b";
  a.swap(b);
  EXPECT_EQ(text(a), "b");
  a.swap(a);
  EXPECT_EQ(text(a), "b");
  cLIMessage moved(std::move(a));
  EXPECT_EQ(text(moved), "b");
  EXPECT_EQ(text(a), "");
  a = std::move(moved);
  EXPECT_EQ(text(a), "b");
  cLIMessage& rSame = a;
  a = std::move(rSame);
  EXPECT_EQ(text(a), "b");
}

TEST(cLIMessage, KeyBytesAbove127ReadAsQuestionMarksButParametersKeepTheirs)
{
  cLIMessage message;
  message << "$MTR$caf\xE9 %x%"
          << "\xE9";
  cString sText;
  message.untranslated(sText);
  EXPECT_EQ(sText, cString("caf? \xE9"));
  cAsciiString sNarrow;
  message.untranslated(sNarrow);
  EXPECT_STREQ(sNarrow.c_str(), "caf? ?");
}

TEST(cLIMessage, TheReplacementOfKeyBytesBeginsBehind127)
{
  cLIMessage const message = keyed("\x7F\x80\xFF");
  cString sText;
  message.untranslated(sText);
  EXPECT_EQ(sText, cString("\x7F??"));
  cAsciiString sNarrow;
  message.untranslated(sNarrow);
  EXPECT_STREQ(sNarrow.c_str(), "\x7F??");
}

TEST(cLIMessage, ANameWithBytesAbove127BindsByItsReplacement)
{
  cLIMessage message;
  message << "$MTR$%\xE9t\xE9% %b%"
          << "v";
  EXPECT_EQ(items(message), "%?t?=v/0 ");
  EXPECT_EQ(text(message), "v ???");
}

TEST(cLIMessage, TranslationKeepsTheCodePointsOfItsText)
{
  cLIMessage message;
  message << "$MTR$%x%" << 7;
  cString sText;
  cString sWording(L"\u4E2D%x%\u6587");
  message.translate(sWording, sText);
  EXPECT_EQ(sText, L"\u4E2D"
                   L"7\u6587");
}

TEST(cLIMessage, UntranslatedAndTranslateReplaceTheirTarget)
{
  cLIMessage message;
  message << "$MTR$A %x%" << 7;
  cString sText("old");
  message.untranslated(sText);
  EXPECT_EQ(sText, "A 7");
  message.translate(cString("B %x%"), sText);
  EXPECT_EQ(sText, "B 7");
  cAsciiString sNarrow("old");
  message.untranslated(sNarrow);
  EXPECT_STREQ(sNarrow.c_str(), "A 7");
}

TEST(cLIMessage, TextAndTargetOfATranslationMayBeTheSame)
{
  cLIMessage message;
  message << "$MTR$A %x%" << 7;
  cString sText("B %x%");
  message.translate(sText, sText);
  EXPECT_EQ(sText, "B 7");
}

TEST(cLIMessage, AnEmptyMessageTranslatesTheTextItIsGiven)
{
  EXPECT_EQ(translated(cLIMessage(), "B %x% c"), "B ??? c");
}

TEST(cLIMessage, TheTextHasLargerSectorsAndKeepsItsPool)
{
  cLIMessage message;
  message << "$MTR$A %x%" << 7;
  cString sText;
  message.untranslated(sText);
  EXPECT_EQ(sText.growStep(), 3u);
  EXPECT_FALSE(sText.fitOnErase());
  message.translate(cString("B"), sText);
  EXPECT_EQ(sText.growStep(), 3u);
  EXPECT_FALSE(sText.fitOnErase());
}

TEST(cLIMessage, ANullTextCountsAsEmpty)
{
  char const* const sNull = 0;
  cLIMessage message;
  message << sNull << "$MTR$<%x%>" << sNull;
  EXPECT_EQ(text(message), "<>");
  EXPECT_EQ(items(message), "%x=/0 ");
}

TEST(cLIMessage, ABackslashInAPlaceholderIsPartOfTheNameAndHidesTheNextCharacter)
{
  cLIMessage message = keyed("%a\\%b% %a\\ c%");
  message << "1"
          << "2";
  EXPECT_EQ(items(message), "%a\\b=1/0 %a\\c=2/0 ");
  EXPECT_EQ(text(message), "1 2");
}

TEST(cLIMessage, ADebugStreamGetsTheEnglishWording)
{
  support::cCaptureOut capture;
  cLIMessage message;
  message << "$MTR$File %file% is not a plugin!"
          << "x.so";
  mpi::system().out << message << "\n";
  EXPECT_TRUE(capture.contains("File x.so is not a plugin!"));
}

TEST(cLIMessage, AParameterOfAnUnknownKindReadsEmpty)
{
  cLIMessage message;
  message << "$MTR$[%a%][%b%]" << 1.5 << "b";
  EXPECT_EQ(text(message), "[1.5][b]");
  // as a record of a stream may bring it
  const_cast<cLIItem&>(*message.items().begin()).setKind(3);
  EXPECT_EQ(text(message), "[][b]");
  EXPECT_EQ(translated(message, "%b%%a%"), "b");
}

TEST(cLIMessage, AnItemKeepsItsThreeParts)
{
  cLIItem item(cAsciiString("%a"), cString("v"), cLIItem::Double);
  EXPECT_STREQ(item.name().c_str(), "%a");
  EXPECT_EQ(item.value(), "v");
  EXPECT_EQ(item.kind(), 2u);
  item.setKind(7);
  EXPECT_EQ(item.kind(), 7u);
  EXPECT_EQ(cLIItem().kind(), 0u);
}

TEST(cLIMessage, FaultOfAnyAllocationLeavesTheMessageAsItWas)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "a sanitizer's allocator cannot be made to fail";
  }
  typedef void (*tStep)(cLIMessage&);
  tStep const aSteps[] = {
      [](cLIMessage& m) { m << "$MNTR$A key that is longer than a sector %a% %b% %c% %d% %e%"; },
      [](cLIMessage& m) { m << "text that is longer than a sector, which needs memory of its own"; },
      [](cLIMessage& m) { m << -123456789; },
      [](cLIMessage& m) { m << 1.25; },
      [](cLIMessage& m) { m << cString("code points"); },
      [](cLIMessage& m) { m << mstd::cNumberConversionFormat(16); },
      [](cLIMessage& m) { m << 255u; },
      [](cLIMessage& m) { m.merge(cLIMessage(m)); },
      [](cLIMessage& m) { m = cLIMessage(m); },
  };
  (void)text(cLIMessage() << "%a%" << 1); // whatever is built once, is built now
  cLIMessage message;
  for (tStep const step : aSteps)
  {
    std::string const sKey = message.key().c_str();
    std::string const sItems = items(message);
    std::string const sText = text(message);
    unsigned int const iScanPosition = message.scanPosition();
    bool const bTranslatable = message.isTranslatable();
    for (unsigned int iNth = 1;; ++iNth)
    {
      bool bFailed = false;
      {
        support::cAllocationFault fault(iNth);
        try
        {
          step(message);
        }
        catch (std::bad_alloc const&)
        {
          bFailed = true;
        }
        fault.disarm();
        ASSERT_EQ(bFailed, fault.hasFired()) << "allocation " << iNth;
      }
      if (!bFailed)
      {
        break;
      }
      ASSERT_EQ(message.key().c_str(), sKey) << "allocation " << iNth;
      ASSERT_EQ(items(message), sItems) << "allocation " << iNth;
      ASSERT_EQ(text(message), sText) << "allocation " << iNth;
      ASSERT_EQ(message.scanPosition(), iScanPosition) << "allocation " << iNth;
      ASSERT_EQ(message.isTranslatable(), bTranslatable) << "allocation " << iNth;
    }
  }
  EXPECT_EQ(message.items().begin()->name(), "%a");
  EXPECT_FALSE(message.isTranslatable());
}

TEST(cLIMessage, FaultWhileReadingLeavesTheTargetAsItWas)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "a sanitizer's allocator cannot be made to fail";
  }
  cLIMessage message;
  message << "$MTR$A key that is longer than a sector %a% and all" << 1;
  cString sText("old");
  cAsciiString sNarrow("old");
  for (unsigned int iNth = 1; iNth <= 2; ++iNth)
  {
    bool bFailed = false;
    support::cAllocationFault fault(iNth);
    try
    {
      iNth == 1 ? message.untranslated(sText) : message.untranslated(sNarrow);
    }
    catch (std::bad_alloc const&)
    {
      bFailed = true;
    }
    fault.disarm();
    EXPECT_TRUE(bFailed);
  }
  EXPECT_EQ(sText, "old");
  EXPECT_STREQ(sNarrow.c_str(), "old");
}

// ------------------------------------------------------------------------------- all short keys against the model

unsigned int crc32(unsigned int iCrc, std::string const& sBytes)
{
  iCrc = ~iCrc;
  for (unsigned char const c : sBytes)
  {
    iCrc ^= c;
    for (unsigned int iBit = 0; iBit < 8; ++iBit)
    {
      iCrc = iCrc >> 1 ^ (iCrc & 1 ? 0xEDB88320 : 0);
    }
  }
  return ~iCrc;
}

char const cAlphabet[] = "%\\ ab";

/// The `iIndex`-th string of `iLength` letters.
std::string keyOf(unsigned int iLength, unsigned int iIndex)
{
  std::string sKey(iLength, ' ');
  for (unsigned int i = iLength; i-- > 0; iIndex /= 5)
  {
    sKey[i] = cAlphabet[iIndex % 5];
  }
  return sKey;
}

/// The record of a key as tests/reference/placeholder_model.py writes it.
std::string record(std::string const& sKey)
{
  static char const* const aValues[] = {"1", "%a%", "\\", "x y", "\\%b"};
  cLIMessage full = keyed(sKey);
  std::string sPositions;
  for (char const* sValue : aValues)
  {
    full << cString(sValue);
    sPositions += (sPositions.empty() ? "" : ",") + std::to_string(full.scanPosition());
  }
  std::string sNames;
  for (cLIItem const& item : full.items())
  {
    sNames += (&item == &*full.items().begin() ? "" : ";") + std::string(item.name().c_str());
  }
  cLIMessage single = keyed(sKey);
  single << cString(aValues[0]);
  std::string const sReversed(sKey.rbegin(), sKey.rend());
  return sPositions + "|" + sNames + "|" + text(full) + "|" + text(single) + "|" + translated(full, sReversed.c_str());
}

TEST(cLIMessage, AllShortKeysBindAndReadAsTheModelSays)
{
  std::ifstream golden(MORTISE_TEST_DATA_DIR "/placeholders.golden");
  ASSERT_TRUE(golden.is_open());
  char const sLetters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  unsigned int iKeys = 0;
  for (unsigned int iLength = 0; iLength <= 7; ++iLength)
  {
    unsigned int iCount = 1;
    for (unsigned int i = 0; i < iLength; ++i)
    {
      iCount *= 5;
    }
    unsigned int const iPerLine = iCount < 125 ? iCount : 125;
    for (unsigned int iFirst = 0; iFirst < iCount; iFirst += iPerLine)
    {
      unsigned int iLineLength = 0;
      std::string sHead, sWhole, sExpected;
      ASSERT_TRUE(golden >> iLineLength >> sHead >> sWhole >> sExpected);
      ASSERT_EQ(iLineLength, iLength);
      ASSERT_EQ(sExpected.size(), iPerLine);
      unsigned int iWhole = 0;
      for (unsigned int i = 0; i < iPerLine; ++i, ++iKeys)
      {
        std::string const sKey = keyOf(iLength, iFirst + i);
        std::string const sRecord = record(sKey);
        ASSERT_EQ(sLetters[crc32(0, sRecord) & 63], sExpected[i])
            << "key '" << sKey << "' gives\n"
            << sRecord << "\ncompare with placeholder_model.py --show";
        iWhole = crc32(iWhole, sRecord + "\n");
      }
      ASSERT_EQ(iWhole, std::stoul(sWhole, 0, 16)) << "in the line " << iLength << " " << sHead;
    }
  }
  EXPECT_EQ(iKeys, 97656u);
}

} // namespace
