#include "ucs/cString.h"

#include "std/cNumberConversionFormat.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "textSupport.h"

#include <gtest/gtest.h>
#include <limits>
#include <utility>

namespace
{
using mstd::cAsciiString;
using mucs::cString;
using support::cCodePoints;
using support::codePoints;
typedef mstd::tArray<unsigned int> cElements;

// ---------------------------------------------------------------------------------------------- construction

TEST(cString, ADefaultStringIsEmptyWithoutAPool)
{
  cString const sText;
  EXPECT_EQ(sText.length(), 0u);
  EXPECT_EQ(sText.capacity(), 0u);
  EXPECT_EQ(sText.data(true), nullptr);
}

TEST(cString, EveryConstructorSetsSmallSectorsAndNoTrimming)
{
  for (cString const& sText : {cString(), cString("a"), cString(L"a"), cString(cAsciiString("a"), '?')})
  {
    EXPECT_EQ(sText.growStep(), 2u);
    EXPECT_FALSE(sText.fitOnErase());
  }
}

TEST(cString, GrowsInStepsOfFour)
{
  cString sText("abcd");
  EXPECT_EQ(sText.capacity(), 4u);
  sText.append('e');
  EXPECT_EQ(sText.capacity(), 8u);
}

TEST(cString, ErasingKeepsThePool)
{
  cString sText("abcdefgh");
  sText.erase(0, 7);
  EXPECT_EQ(sText.capacity(), 8u);
}

TEST(cString, BytesOfALiteralAreWidenedAndNotDecoded)
{
  EXPECT_EQ(codePoints(cString("a\xC3\xA9\xFF")), (cCodePoints{'a', 0xC3, 0xA9, 0xFF}));
}

TEST(cString, ANullTextGivesAnEmptyString)
{
  EXPECT_TRUE(cString(static_cast<char const*>(0)).empty());
  EXPECT_TRUE(cString(static_cast<wchar_t const*>(0)).empty());
}

TEST(cString, WideElementsAreTakenAsTheyAreUpToTheZero)
{
  EXPECT_EQ(codePoints(cString(L"a\u4E2D\U0001F600\0z")), (cCodePoints{'a', 0x4E2D, 0x1F600}));
}

TEST(cString, AByteStringGivesItsAsciiAndTheReplacement)
{
  EXPECT_EQ(codePoints(cString(cAsciiString("a\xE9z"), '?')), (cCodePoints{'a', '?', 'z'}));
  EXPECT_EQ(codePoints(cString(cAsciiString("\xE9"), '\xA0')), (cCodePoints{0xA0}));
}

TEST(cString, ACopyTakesContentsAndSettingsOfItsSource)
{
  cString sSource("abc");
  sSource.setGrowStep(4);
  sSource.setFitOnErase(true);
  cString sCopy(sSource);
  EXPECT_EQ(sCopy, sSource);
  EXPECT_EQ(sCopy.growStep(), 4u);
  EXPECT_TRUE(sCopy.fitOnErase());
  cString sAssigned("x");
  sAssigned = sSource;
  EXPECT_EQ(sAssigned, "abc");
  EXPECT_EQ(sAssigned.growStep(), 4u);
}

TEST(cString, MovingTakesThePoolAndLeavesAnEmptyString)
{
  cString sSource("abc");
  unsigned int const* const pPool = sSource.data();
  cString sMoved(std::move(sSource));
  EXPECT_EQ(sMoved.data(), pPool);
  EXPECT_TRUE(sSource.empty());
  EXPECT_EQ(sSource.growStep(), 2u);
  sSource = std::move(sMoved);
  EXPECT_EQ(sSource.data(), pPool);
  cString& rSame = sSource;
  sSource = std::move(rSame);
  EXPECT_EQ(sSource, "abc");
}

TEST(cString, AssignmentFromATextReplacesTheContents)
{
  cString sText("old");
  sText = "\xE9";
  EXPECT_EQ(codePoints(sText), (cCodePoints{0xE9}));
  cString const& rSame = sText;
  sText = rSame;
  EXPECT_EQ(codePoints(sText), (cCodePoints{0xE9}));
}

TEST(cString, AssignmentFromAnArrayTakesTheElementsOnly)
{
  cElements aElements;
  unsigned int const values[] = {1, 0, 0xFFFFFFFF};
  aElements.append(values, 3);
  cString sText("old");
  sText = aElements;
  EXPECT_EQ(codePoints(sText), (cCodePoints{1, 0, 0xFFFFFFFF}));
  EXPECT_EQ(sText.growStep(), 2u);
  EXPECT_FALSE(sText.fitOnErase());
  sText = sText.array();
  EXPECT_EQ(sText.length(), 3u);
}

TEST(cString, TheArrayOfAStringIsItself)
{
  cString sText("ab");
  sText.array().append(7);
  cString const& rConst = sText;
  EXPECT_EQ(&rConst.array(), &static_cast<cElements const&>(sText));
  EXPECT_EQ(codePoints(sText), (cCodePoints{'a', 'b', 7}));
}

// ---------------------------------------------------------------------------------------------- bytes in and out

TEST(cString, AppendCWidensBytes)
{
  cString sText("x");
  sText.appendC("a\xE9");
  sText.appendC("b\0c", 3);
  sText.appendC(0);
  sText.appendC(0, 0);
  EXPECT_EQ(codePoints(sText), (cCodePoints{'x', 'a', 0xE9, 'b', 0, 'c'}));
}

TEST(cString, AppendCOfNullWithALengthIsABug)
{
  support::cCaptureOut mute;
  cString sText("x");
  EXPECT_EQ(support::failureText([&] { sText.appendC(0, 1); }).find("cBugException"), 0u);
  EXPECT_EQ(sText, "x");
}

TEST(cString, FromAsciiReplacesTheContentsAndTheBytesAbove127)
{
  cString sText("old");
  sText.fromAscii(cAsciiString("a\xE9\x7F\x80"), 0xFFFD);
  EXPECT_EQ(codePoints(sText), (cCodePoints{'a', 0xFFFD, 0x7F, 0xFFFD}));
  EXPECT_EQ(codePoints(cString("\xE9")), (cCodePoints{0xE9})) << "unlike the constructor from a literal";
  sText.fromAscii(cAsciiString(), '?');
  EXPECT_TRUE(sText.empty());
}

TEST(cString, FromUTF8DecodesInPlaceOfTheContents)
{
  cString sText("old");
  sText.fromUTF8(support::bytes(std::string("a\xC3\xA9")));
  EXPECT_EQ(codePoints(sText), (cCodePoints{'a', 0xE9}));
}

TEST(cString, FromUTF8LeavesTheStringOnFailure)
{
  cString sText("old");
  EXPECT_EQ(support::failureText([&] { sText.fromUTF8(support::bytes(std::string("ab\xFF"))); }),
            "cRuntimeException: UTF8 decode error - unsupported length of 7!");
  EXPECT_EQ(sText, "old");
}

TEST(cString, AsciiPutsTheReplacementInPlaceOfWhatItCannotSay)
{
  EXPECT_STREQ(cString("a\xE9z").ascii('?').c_str(), "a?z");
  EXPECT_STREQ(cString(L"\u4E2D\x7F\x80").ascii('#').c_str(), "#\x7F#");
}

TEST(cString, ToAsciiAppends)
{
  cAsciiString sOut("x");
  cString("a\xE9").toAscii(sOut, '!');
  cString().toAscii(sOut, '!');
  EXPECT_STREQ(sOut.c_str(), "xa!");
  EXPECT_EQ(sOut.length(), 3u);
}

TEST(cString, ToUTF8AppendsOrReturnsTheBytes)
{
  mstd::tArray<char> aBytes("x");
  cString("\xE9").toUTF8(aBytes);
  EXPECT_EQ(support::bytes(aBytes), "x\xC3\xA9");
  EXPECT_EQ(support::bytes(cString(L"\u20AC").toUTF8()), "\xE2\x82\xAC");
}

// ---------------------------------------------------------------------------------------------- comparison

TEST(cString, StringsAreEqualElementByElement)
{
  EXPECT_TRUE(cString("abc") == cString("abc"));
  EXPECT_FALSE(cString("abc") == cString("abd"));
  EXPECT_FALSE(cString("abc") == cString("abcd"));
  EXPECT_TRUE(cString() == cString());
  cCodePoints const zeros = {'a', 0, 'b'};
  EXPECT_FALSE(support::string(zeros) == support::string({'a', 0, 'c'})) << "a zero does not end the comparison";
  EXPECT_TRUE(cString("abc") != cString("abd"));
}

TEST(cString, ALiteralOfTheSameLettersAndMoreIsNotEqual)
{
  EXPECT_FALSE(cString("abc") == "abcd");
  EXPECT_FALSE(cString("abc") == "ab");
  EXPECT_TRUE(cString("abc") == "abc");
  EXPECT_TRUE(cString() == "");
  EXPECT_TRUE(cString("abc") != "abcd");
}

TEST(cString, BytesCompareAsUnsigned)
{
  EXPECT_TRUE(cString("\xE9") == "\xE9");
  EXPECT_TRUE(cString("\xE9").ccs("\xE9"));
  EXPECT_TRUE(cString("\xE9") == cAsciiString("\xE9"));
  EXPECT_FALSE(support::string({0xFFFFFFE9}) == "\xE9");
}

TEST(cString, WideTextsCompareToTheirZero)
{
  EXPECT_TRUE(cString(L"a\u4E2D") == L"a\u4E2D");
  EXPECT_FALSE(cString(L"a\u4E2D") == L"a\u4E2Dz");
  EXPECT_FALSE(cString(L"a\u4E2D") == L"a");
  EXPECT_TRUE(cString(L"a") != L"b");
}

TEST(cString, AByteStringComparesUpToItsFirstZero)
{
  cAsciiString sBytes;
  sBytes.append("ab\0c", 4);
  EXPECT_TRUE(cString("ab") == sBytes);
  EXPECT_FALSE(cString("ab") != sBytes);
  EXPECT_TRUE(cString("abc") != sBytes);
}

TEST(cString, AStringWithAZeroEqualsNoTextThatEndsAtOne)
{
  EXPECT_FALSE(support::string({'a', 0}) == "a");
  EXPECT_FALSE(support::string({0}) == L"");
  EXPECT_FALSE(support::string({'a', 0, 'b'}) == "a\0b") << "the text ends at its zero";
  EXPECT_FALSE(support::string({'a', 0, 'b'}) == L"a\0b");
}

TEST(cString, NothingEqualsANullPointer)
{
  EXPECT_FALSE(cString() == static_cast<char const*>(0));
  EXPECT_FALSE(cString() == static_cast<wchar_t const*>(0));
  EXPECT_FALSE(cString().ccs(0));
}

// ---------------------------------------------------------------------------------------------- case and trimming

TEST(cString, OnlyTheLettersOfAsciiChangeTheirCase)
{
  cString sText("@az[`AZ{\xE9\xC9 1");
  sText.upperCase();
  EXPECT_EQ(sText, "@AZ[`AZ{\xE9\xC9 1");
  sText.lowerCase();
  EXPECT_EQ(sText, "@az[`az{\xE9\xC9 1");
  EXPECT_EQ(cString::upperCase('z'), static_cast<unsigned int>('Z'));
  EXPECT_EQ(cString::lowerCase('A'), static_cast<unsigned int>('a'));
  EXPECT_EQ(cString::upperCase(0x161), 0x161u);
  EXPECT_EQ(cString::lowerCase(0x160), 0x160u);
  cString sEmpty;
  sEmpty.upperCase();
  sEmpty.lowerCase();
  EXPECT_TRUE(sEmpty.empty());
}

TEST(cString, TrimmingRemovesBlanksOnly)
{
  cString sLeft("  \t a  ");
  sLeft.ltrim();
  EXPECT_EQ(sLeft, "\t a  ");
  cString sRight("  a\n  ");
  sRight.rtrim();
  EXPECT_EQ(sRight, "  a\n");
  cString sBoth("  a b  ");
  sBoth.trim();
  EXPECT_EQ(sBoth, "a b");
  cString sBlanks("   ");
  sBlanks.trim();
  EXPECT_TRUE(sBlanks.empty());
  sBlanks.trim();
  EXPECT_TRUE(sBlanks.empty());
}

// ---------------------------------------------------------------------------------------------- appending, numbers

TEST(cString, AStringMayBeAddedToItself)
{
  cString sText("abc");
  sText += sText;
  EXPECT_EQ(sText, "abcabc");
  sText.addString(sText);
  EXPECT_EQ(sText, "abcabcabcabc");
}

TEST(cString, NumbersAreAppendedInTheDefaultFormat)
{
  cString sText("n");
  sText.addNum(-1).addUNum(18446744073709551615ull).addNum32(-2).addUNum32(4294967295u).addDouble(1.5);
  EXPECT_EQ(sText, "n-118446744073709551615-242949672951.5");
}

TEST(cString, NumbersAreAppendedInTheFormatGiven)
{
  mstd::cNumberConversionFormat hex(16);
  mstd::cNumberConversionFormat coarse(10);
  coarse.setPrecision(1);
  cString sText("n");
  sText.addNum(255, hex).addUNum(254, hex).addNum32(253, hex).addUNum32(252, hex).addDouble(1.25, coarse);
  EXPECT_EQ(sText, "nfffefdfc1.3");
}

TEST(cString, SettingANumberReplacesTheContents)
{
  mstd::cNumberConversionFormat const hex(16);
  cString sText("old");
  EXPECT_EQ(sText.setNum(-12), "-12");
  EXPECT_EQ(sText.setNum(255, hex), "ff");
  EXPECT_EQ(sText.setUNum(12), "12");
  EXPECT_EQ(sText.setUNum(255, hex), "ff");
  EXPECT_EQ(sText.setNum32(-7), "-7");
  EXPECT_EQ(sText.setNum32(16, hex), "10");
  EXPECT_EQ(sText.setUNum32(7), "7");
  EXPECT_EQ(sText.setUNum32(17, hex), "11");
  EXPECT_EQ(sText.setDouble(0.5), "0.5");
  EXPECT_EQ(sText.setDouble(2.5, mstd::cNumberConversionFormat(10)), "2.5");
}

TEST(cString, DigitsAboveAsciiAreWidened)
{
  mstd::cNumberConversionFormat format(2);
  format.setDigitSymbol(1, '\xB9');
  EXPECT_EQ(codePoints(cString().setNum(2, format)), (cCodePoints{0xB9, '0'}));
}

TEST(cString, TextsReadAsNumbers)
{
  mstd::cNumberConversionFormat hex(16);
  EXPECT_EQ(cString(" -12").toInt(), -12);
  EXPECT_EQ(cString("ff").toInt(hex), 255);
  EXPECT_EQ(cString("12").toUInt(), 12u);
  EXPECT_EQ(cString("FF").toUInt(hex), 255u);
  EXPECT_EQ(cString("1e3").toDouble(), 1000.0);
  EXPECT_EQ(cString("1.5").toDouble(mstd::cNumberConversionFormat(10)), 1.5);
  EXPECT_EQ(support::failureText([] { cString("1x").toInt(); }),
            "cRuntimeException: Invalid decimal number (\"1x\"). Character at index 1 not points to digit!");
}

// ---------------------------------------------------------------------------------------------- padding, joining

TEST(cString, LeftAdjustPadsAtTheEnd)
{
  cString sText("ab");
  sText.leftAdjust(4, 0x4E2D);
  EXPECT_EQ(codePoints(sText), (cCodePoints{'a', 'b', 0x4E2D, 0x4E2D}));
  sText.leftAdjust(4, '.');
  sText.leftAdjust(3, '.');
  EXPECT_EQ(sText.length(), 4u);
}

TEST(cString, RightAdjustPadsAtTheFront)
{
  cString sText("ab");
  sText.rightAdjust(4, '.');
  EXPECT_EQ(sText, "..ab");
  sText.rightAdjust(4, '-');
  sText.rightAdjust(0, '-');
  EXPECT_EQ(sText, "..ab");
  cString sEmpty;
  sEmpty.rightAdjust(2, '.');
  EXPECT_EQ(sEmpty, "..");
}

TEST(cString, AdjustPadsBothSidesWithTheOddOneBehind)
{
  cString sText("ab");
  sText.adjust(5, '.');
  EXPECT_EQ(sText, ".ab..");
  sText.adjust(5, '-');
  EXPECT_EQ(sText, ".ab..");
}

TEST(cString, AFixedLengthCutsWithTheSuffixOrPads)
{
  cString sLong("abcdefgh");
  sLong.setFixedLength(5, "..", ' ');
  EXPECT_EQ(sLong, "abc..");
  cString sShort("ab");
  sShort.setFixedLength(5, "..", ' ');
  EXPECT_EQ(sShort, "ab   ");
  sShort.setFixedLength(5, "..", '-');
  EXPECT_EQ(sShort, "ab   ");
  cString sNarrow("abcd");
  sNarrow.setFixedLength(2, "...", ' ');
  EXPECT_EQ(sNarrow, "...");
  cString sCut("abcd");
  sCut.setFixedLength(2, "", ' ');
  EXPECT_EQ(sCut, "ab");
}

TEST(cString, TheSumOfTwoStringsIsANewOne)
{
  cString const sLeft("a");
  EXPECT_EQ(sLeft + cString("b"), "ab");
  EXPECT_EQ(sLeft, "a");
}

TEST(cString, ATextPlusAStringChangesTheString)
{
  cString sText("b");
  EXPECT_EQ(&("\xE9" + sText), &sText);
  EXPECT_EQ(codePoints(sText), (cCodePoints{0xE9, 'b'}));
  EXPECT_EQ(&(L"\u4E2D" + sText), &sText);
  EXPECT_EQ(codePoints(sText), (cCodePoints{0x4E2D, 0xE9, 'b'}));
  static_cast<char const*>(0) + sText;
  EXPECT_EQ(sText.length(), 3u);
}

// ---------------------------------------------------------------------------------------------- hard cases

TEST(cString, AViewOfAStringIsAnArrayView)
{
  cString const sText("abc");
  mstd::tConstArrayRef<unsigned int> const view(sText, 1, 2);
  EXPECT_EQ(view.at(0), static_cast<unsigned int>('b'));
}

#if __SIZEOF_POINTER__ == 4 // elsewhere such a width may well fit
TEST(cString, WidthsThatMemoryCannotHoldFailAndChangeNothing)
{
  cString sText("ab");
  EXPECT_THROW(sText.leftAdjust(std::numeric_limits<unsigned int>::max(), ' '), std::bad_alloc);
  EXPECT_THROW(sText.rightAdjust(std::numeric_limits<unsigned int>::max(), ' '), std::bad_alloc);
  EXPECT_THROW(sText.adjust(std::numeric_limits<unsigned int>::max(), ' '), std::bad_alloc);
  EXPECT_EQ(sText, "ab");
}
#endif

TEST(cString, FaultOfAnyAllocationLeavesTheStringAsItWas)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "a sanitizer's allocator cannot be made to fail";
  }
  typedef void (*tStep)(cString&);
  tStep const aSteps[] = {
      [](cString& s) { s = "another text"; },
      [](cString& s) { s = cString("a copy of a text"); },
      [](cString& s) { s += s; },
      [](cString& s) { s.appendC("some more of it, enough to leave the pool behind"); },
      [](cString& s) { s.addNum(123456789); },
      [](cString& s) { s.setNum(123456789); },
      [](cString& s) { s.addDouble(1.5); },
      [](cString& s) { s.leftAdjust(100, '.'); },
      [](cString& s) { s.rightAdjust(200, '.'); },
      [](cString& s) { s.adjust(300, '.'); },
      [](cString& s) { s.setFixedLength(400, "...", '.'); },
      [](cString& s) { s.fromAscii(cAsciiString("ascii"), '?'); },
      [](cString& s) { s.fromUTF8(mstd::tArray<char>("utf\xC3\xA9")); },
      [](cString& s) { "front of the text " + s; },
      [](cString& s) { s = s.array(); },
  };
  cString sText("text");
  cString().addNum(1); // whatever is built once, is built now
  for (unsigned int iStep = 0; iStep < sizeof aSteps / sizeof *aSteps; ++iStep)
  {
    cCodePoints const before = codePoints(sText);
    for (unsigned int iNth = 1;; ++iNth)
    {
      bool bFailed = false;
      {
        support::cAllocationFault fault(iNth);
        try
        {
          aSteps[iStep](sText);
        }
        catch (std::bad_alloc const&)
        {
          bFailed = true;
        }
        fault.disarm();
        ASSERT_EQ(bFailed, fault.hasFired()) << "step " << iStep << ", allocation " << iNth;
      }
      if (!bFailed)
      {
        break;
      }
      ASSERT_EQ(codePoints(sText), before) << "step " << iStep << ", allocation " << iNth;
    }
  }
}

} // namespace
