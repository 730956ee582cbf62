#include "ucs/cEnDecUTF8.h"

#include "std/tConstArrayRef.h"
#include "support/cBlockDeviceProxy.h"
#include "textSupport.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace
{
using mucs::cEnDecUTF8;
using mucs::cString;
using support::bytes;
using support::cCodePoints;
using support::codePoints;

std::string const cEndOfData = "cRuntimeException: UTF8 decode error - unexpected end of data at index ";
std::string const cUnsupported = "cRuntimeException: UTF8 decode error - unsupported length of ";

/// What decoding makes of some bytes: the characters up to a failure, and the failure.
struct cDecoded
{
  cCodePoints mCharacters;
  std::string mFailure;

  bool operator==(cDecoded const& rOther) const
  {
    return mCharacters == rOther.mCharacters && mFailure == rOther.mFailure;
  }
};

void PrintTo(cDecoded const& rDecoded, std::ostream* pOut)
{
  *pOut << support::hex(rDecoded.mCharacters) << "| " << rDecoded.mFailure;
}

/// The plain decoder, a character at a time through a zero-filled window of eight bytes.
cDecoded referenceDecode(std::string const& sBytes)
{
  static unsigned int const aBias[] = {0, 0x3080, 0xE2080, 0x3C82080};
  cDecoded result;
  size_t iPos = 0;
  while (iPos < sBytes.size())
  {
    unsigned char window[8] = {};
    std::copy_n(sBytes.data() + iPos, std::min<size_t>(8, sBytes.size() - iPos), window);
    unsigned int const iLead = window[0];
    unsigned int iExtra = 0;
    if (iLead >= 0xC0)
    {
      for (unsigned int iMask = 0x40; iMask && (iLead & iMask); iMask >>= 1)
      {
        ++iExtra;
      }
    }
    if (iLead == 0)
    {
      result.mFailure = cEndOfData + "0!";
      return result;
    }
    if (iExtra > 3)
    {
      result.mFailure = cUnsupported + std::to_string(iExtra) + "!";
      return result;
    }
    unsigned int c = 0;
    for (unsigned int i = 0; i <= iExtra; ++i)
    {
      if (window[i] == 0)
      {
        result.mFailure = cEndOfData + std::to_string(i) + "!";
        return result;
      }
      c = i == iExtra ? c + window[i] : (c + window[i]) << 6;
    }
    result.mCharacters.push_back(c - aBias[iExtra]);
    iPos += iExtra + 1;
  }
  return result;
}

std::string referenceEncode(cCodePoints const& aCodePoints)
{
  std::string sResult;
  for (unsigned int c : aCodePoints)
  {
    unsigned int const iExtra = c <= 0x7F ? 0 : c < 0x800 ? 1 : c < 0x10000 ? 2 : c < 200000 ? 3 : 4;
    static unsigned int const aLead[] = {0, 0xC0, 0xE0, 0xF0, 0xF8};
    std::string sCharacter;
    for (unsigned int i = 0; i < iExtra; ++i)
    {
      sCharacter.insert(sCharacter.begin(), static_cast<char>(0x80 | (c & 0x3F)));
      c >>= 6;
    }
    sResult += static_cast<char>(aLead[iExtra] | c);
    sResult += sCharacter;
  }
  return sResult;
}

cDecoded decode(mstd::tAbstractConstArrayProxy<char> const& rBytes)
{
  cString sText;
  cDecoded result;
  result.mFailure = support::failureText([&] { cEnDecUTF8().decode(rBytes, sText); });
  result.mCharacters = codePoints(sText);
  return result;
}

cDecoded decode(std::string const& sBytes)
{
  return decode(bytes(sBytes));
}

std::string encode(cCodePoints const& aCodePoints)
{
  mstd::tArray<char> aBytes;
  cEnDecUTF8().encode(support::string(aCodePoints), aBytes);
  return bytes(aBytes);
}

/// Bytes that stand for all classes: borders of lead bytes, of continuation bytes, of ASCII.
std::string const
    cClassBytes("\x00\x01 A\x7F\x80\x81\xA9\xBF\xC0\xC1\xC3\xDF\xE0\xE2\xEF\xF0\xF4\xF7\xF8\xFB\xFC\xFD\xFE\xFF", 25);

TEST(cEnDecUTF8, HasItsName)
{
  EXPECT_STREQ(cEnDecUTF8().name().c_str(), "Endec-UTF8");
}

TEST(cEnDecUTF8, ALoneContinuationByteIsTheCharacterOfItsValue)
{
  EXPECT_EQ(decode("\x80"), (cDecoded{{0x80}, ""}));
}

TEST(cEnDecUTF8, TwoBytesDecodeToOneCharacter)
{
  EXPECT_EQ(decode("\xC3\xA9"), (cDecoded{{0xE9}, ""}));
}

TEST(cEnDecUTF8, ASequenceCutOffFailsWithEndOfDataAtItsIndexInTheWindow)
{
  EXPECT_EQ(decode("\xC3"), (cDecoded{{}, cEndOfData + "1!"}));
  EXPECT_EQ(decode("abcdefghij\xE2\x82"),
            (cDecoded{{'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h', 'i', 'j'}, cEndOfData + "2!"}));
  EXPECT_EQ(decode("\xF0\x9F\x98"), (cDecoded{{}, cEndOfData + "3!"}));
}

TEST(cEnDecUTF8, AZeroByteFailsAtOnce)
{
  EXPECT_EQ(decode(std::string("\0", 1)), (cDecoded{{}, cEndOfData + "0!"}));
  EXPECT_EQ(decode(std::string("ab\0c", 4)), (cDecoded{{'a', 'b'}, cEndOfData + "0!"}));
  EXPECT_EQ(decode(std::string("\xC3\0\xA9", 3)), (cDecoded{{}, cEndOfData + "1!"}));
}

TEST(cEnDecUTF8, TheCodePointZeroEncodesToOneZeroByte)
{
  EXPECT_EQ(encode({0}), std::string("\0", 1));
}

TEST(cEnDecUTF8, CodePoint30D3FTakesFourBytesAndTheNextOneFiveThatDoNotReadBack)
{
  EXPECT_EQ(encode({0x30D3F}), "\xF0\xB0\xB4\xBF");
  EXPECT_EQ(decode("\xF0\xB0\xB4\xBF"), (cDecoded{{0x30D3F}, ""}));
  EXPECT_EQ(encode({0x30D40}), "\xF8\x80\xB0\xB5\x80");
  EXPECT_EQ(decode(encode({0x30D40})), (cDecoded{{}, cUnsupported + "4!"}));
}

TEST(cEnDecUTF8, LongerLeadBytesFailWithTheirLength)
{
  EXPECT_EQ(decode("a\xFB\x80"), (cDecoded{{'a'}, cUnsupported + "4!"}));
  EXPECT_EQ(decode("\xFC"), (cDecoded{{}, cUnsupported + "5!"}));
  EXPECT_EQ(decode("\xFD"), (cDecoded{{}, cUnsupported + "5!"}));
  EXPECT_EQ(decode("\xFE"), (cDecoded{{}, cUnsupported + "6!"}));
  EXPECT_EQ(decode("\xFF"), (cDecoded{{}, cUnsupported + "7!"}));
}

TEST(cEnDecUTF8, OverlongFormsAreAccepted)
{
  EXPECT_EQ(decode("\xC1\x81"), (cDecoded{{'A'}, ""}));
  EXPECT_EQ(decode("\xE0\x81\x81"), (cDecoded{{'A'}, ""}));
  EXPECT_EQ(decode("\xF0\x80\x81\x81"), (cDecoded{{'A'}, ""}));
}

TEST(cEnDecUTF8, ContinuationBytesAreNotChecked)
{
  // The byte behind the lead is taken as it is, so the sum may fall below zero and wraps.
  EXPECT_EQ(decode("\xC0\x01"), (cDecoded{{0x3001u - 0x3080u}, ""}));
  EXPECT_EQ(decode("\xC3"
                   "A"),
            (cDecoded{{0xC3 * 64 + 'A' - 0x3080}, ""}));
}

TEST(cEnDecUTF8, EachWidthBordersAtItsCodePoints)
{
  EXPECT_EQ(encode({0x7F}), "\x7F");
  EXPECT_EQ(encode({0x80}), "\xC2\x80");
  EXPECT_EQ(encode({0x7FF}), "\xDF\xBF");
  EXPECT_EQ(encode({0x800}), "\xE0\xA0\x80");
  EXPECT_EQ(encode({0xFFFF}), "\xEF\xBF\xBF");
  EXPECT_EQ(encode({0x10000}), "\xF0\x90\x80\x80");
  EXPECT_EQ(encode({0x10FFFF}), "\xF8\x84\x8F\xBF\xBF");
  EXPECT_EQ(encode({0xFFFFFFFF}), "\xFF\xBF\xBF\xBF\xBF");
}

TEST(cEnDecUTF8, OneCharacterIsAppendedToTheBytes)
{
  mstd::tArray<char> aBytes("x");
  cEnDecUTF8::encodeChar(0x20AC, aBytes);
  cEnDecUTF8::encodeChar('y', aBytes);
  EXPECT_EQ(bytes(aBytes), "x\xE2\x82\xACy");
}

TEST(cEnDecUTF8, EncodingAppends)
{
  mstd::tArray<char> aBytes("x");
  cEnDecUTF8().encode(cString("\xE9"), aBytes);
  cEnDecUTF8().encode(cString(), aBytes);
  EXPECT_EQ(bytes(aBytes), "x\xC3\xA9");
}

TEST(cEnDecUTF8, DecodingAppendsAndKeepsWhatStoodThereOnFailure)
{
  cString sText("x");
  cEnDecUTF8().decode(bytes(std::string("y")), sText);
  EXPECT_EQ(support::ascii(sText), "xy");
  EXPECT_EQ(support::failureText([&] { cEnDecUTF8().decode(bytes(std::string("z\xFF")), sText); }),
            cUnsupported + "7!");
  EXPECT_EQ(support::ascii(sText), "xyz");
}

TEST(cEnDecUTF8, AnUnsetViewDecodesToNothing)
{
  cString sText;
  cEnDecUTF8().decode(mstd::tConstArrayRef<char>(), sText);
  EXPECT_TRUE(sText.empty());
}

TEST(cEnDecUTF8, AViewDecodesItsPartOnly)
{
  mstd::tArray<char> const aBytes("ab\xC3\xA9"
                                  "cd");
  EXPECT_EQ(decode(mstd::tConstArrayRef<char>(aBytes, 1, 3)), (cDecoded{{'b', 0xE9}, ""}));
  EXPECT_EQ(decode(mstd::tConstArrayRef<char>(aBytes, 1, 2)), (cDecoded{{'b'}, cEndOfData + "1!"}));
}

TEST(cEnDecUTF8, AWellFormedTextGrowsTheTargetToItsLengthInSectors)
{
  cString sText;
  cEnDecUTF8().decode(bytes(std::string("\xE4\xB8\xAD\xE6\x96\x87\xE5\xAD\x97\xE7\xAC\xA6!")), sText);
  EXPECT_EQ(sText.length(), 5u);
  EXPECT_EQ(sText.capacity(), 8u);
}

TEST(cEnDecUTF8, EncodeCStringPutsAZeroBehindTheText)
{
  mstd::tArray<char> aBytes("x");
  cEnDecUTF8().encodeCString(cString("\xE9"), aBytes);
  EXPECT_EQ(bytes(aBytes), std::string("x\xC3\xA9\0", 4));
}

TEST(cEnDecUTF8, UnitsAreNotItsBusiness)
{
  cString sText("a");
  mstd::tArray<unsigned short> aUnits;
  EXPECT_EQ(support::failureText([&] { cEnDecUTF8().encode(sText, aUnits); }),
            "cBugException: Not implemented: Endec-UTF8::encode (ucs32 -> ucs16)");
  EXPECT_EQ(support::failureText([&] { cEnDecUTF8().decode(mstd::tConstArrayRef<unsigned short>(aUnits), sText); }),
            "cBugException: Not implemented: Endec-UTF8::decode (ucs16 -> ucs32)");
}

/// Decodes one string in the three ways: alone, and with ASCII in front and behind, where the wide paths meet it.
void expectAsReference(std::string const& sBytes)
{
  ASSERT_EQ(decode(sBytes), referenceDecode(sBytes)) << "bytes " << support::hex(sBytes);
  std::string const sFront(7, 'f');
  std::string const sBehind(17, 'b');
  ASSERT_EQ(decode(sFront + sBytes + sBehind), referenceDecode(sFront + sBytes + sBehind))
      << "bytes " << support::hex(sBytes) << "within ASCII";
}

TEST(cEnDecUTF8, AllStringsOfUpToTwoBytesDecodeAsTheReference)
{
  expectAsReference("");
  for (unsigned int i = 0; i < 0x100 && !HasFatalFailure(); ++i)
  {
    expectAsReference(std::string(1, static_cast<char>(i)));
    for (unsigned int j = 0; j < 0x100 && !HasFatalFailure(); ++j)
    {
      expectAsReference({static_cast<char>(i), static_cast<char>(j)});
    }
  }
}

TEST(cEnDecUTF8, AllStringsOfThreeBytesThatReadWellDecodeAsTheReference)
{
  // Joined by their first byte: what reads well does so in a row too, at every alignment.
  for (unsigned int i = 1; i < 0x100; ++i)
  {
    std::string sJoined;
    cDecoded expected;
    for (unsigned int j = 1; j < 0x100; ++j)
    {
      for (unsigned int k = 1; k < 0x100; ++k)
      {
        std::string const sBytes = {static_cast<char>(i), static_cast<char>(j), static_cast<char>(k)};
        // A cheap look ahead keeps the failing ones, which would stop the row, out of it.
        if (std::any_of(sBytes.begin(), sBytes.end(), [](char c) { return static_cast<unsigned char>(c) >= 0xF8; }))
        {
          continue;
        }
        cDecoded const one = referenceDecode(sBytes);
        if (one.mFailure.empty())
        {
          sJoined += sBytes;
          expected.mCharacters.insert(expected.mCharacters.end(), one.mCharacters.begin(), one.mCharacters.end());
        }
      }
    }
    cDecoded const decoded = decode(sJoined);
    ASSERT_EQ(decoded.mFailure, "") << "first byte " << i;
    ASSERT_EQ(decoded.mCharacters.size(), expected.mCharacters.size()) << "first byte " << i;
    auto const place =
        std::mismatch(decoded.mCharacters.begin(), decoded.mCharacters.end(), expected.mCharacters.begin()).first;
    ASSERT_TRUE(place == decoded.mCharacters.end())
        << "first byte " << i << ", character " << place - decoded.mCharacters.begin();
  }
}

TEST(cEnDecUTF8, StringsOfThreeAndFourBytesOfAllClassesDecodeAsTheReference)
{
  for (char a : cClassBytes)
  {
    for (char b : cClassBytes)
    {
      for (char c : cClassBytes)
      {
        std::string const sBytes = {a, b, c};
        ASSERT_EQ(decode(sBytes), referenceDecode(sBytes)) << "bytes " << support::hex(sBytes);
        if ((a & 0xF8) != 0xF0)
        {
          continue; // the fourth byte shows nothing that the third did not
        }
        for (char d : cClassBytes)
        {
          std::string const sLonger = sBytes + d;
          ASSERT_EQ(decode(sLonger), referenceDecode(sLonger)) << "bytes " << support::hex(sLonger);
        }
      }
    }
  }
}

TEST(cEnDecUTF8, PairsOfBytesDecodeAsTheReferenceInAllWindows)
{
  // Each pair of classes at each place of a text that spans several blocks, whole and cut off behind the pair.
  for (unsigned int iPlace = 0; iPlace < 24; ++iPlace)
  {
    for (char a : cClassBytes)
    {
      for (char b : cClassBytes)
      {
        std::string sBytes(iPlace, 'a');
        sBytes += a;
        sBytes += b;
        ASSERT_EQ(decode(sBytes), referenceDecode(sBytes))
            << "pair " << support::hex(sBytes.substr(iPlace)) << "at " << iPlace;
        sBytes += std::string(24 - iPlace, 'z');
        ASSERT_EQ(decode(sBytes), referenceDecode(sBytes))
            << "pair " << support::hex(sBytes.substr(iPlace, 2)) << "at " << iPlace;
      }
    }
  }
}

/// A text of up to `iMaxLength` bytes with runs of the different kinds; failing bytes are rare.
std::string randomBytes(std::mt19937& rRandom, unsigned int iMaxLength)
{
  std::string sBytes;
  unsigned int const iLength = rRandom() % (iMaxLength + 1);
  unsigned int const iBadness = rRandom() % 4 == 0 ? 20 : 3000;
  while (sBytes.size() < iLength)
  {
    unsigned int const iKind = rRandom() % 6;
    for (unsigned int iRun = rRandom() % 20; iRun && sBytes.size() < iLength; --iRun)
    {
      if (rRandom() % iBadness == 0)
      {
        sBytes += static_cast<char>(rRandom());
        continue;
      }
      static unsigned int const aLimits[] = {0x7F, 0x7FF, 0xFFFF, 0x30D3F};
      unsigned int const iWidth = iKind < 2 ? 0 : iKind < 5 ? iKind - 1 : rRandom() % 4;
      sBytes += referenceEncode({1 + static_cast<unsigned int>(rRandom()) % aLimits[iWidth]});
    }
  }
  return sBytes;
}

TEST(cEnDecUTF8, RandomTextsDecodeAsTheReference)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  for (unsigned int i = 0; i < 20000; ++i)
  {
    std::string const sBytes = randomBytes(random, i % 100 ? 100 : 3000);
    ASSERT_EQ(decode(sBytes), referenceDecode(sBytes)) << support::hex(sBytes);
  }
}

TEST(cEnDecUTF8, ADeviceWithBlocksDecodesAsTheReferenceThroughWindowsOfItsBlock)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  for (unsigned int i = 0; i < 4000; ++i)
  {
    std::string const sBytes = randomBytes(random, 200);
    unsigned int const iBlock = 1 + i % 40;
    support::cBlockDeviceProxy const device(sBytes, iBlock);
    ASSERT_EQ(decode(device), referenceDecode(sBytes)) << "block " << iBlock << ": " << support::hex(sBytes);
    for (support::cBlockDeviceProxy::cWindow const& window : device.windows())
    {
      ASSERT_LE(window.size, std::max(8u, iBlock));
    }
  }
}

TEST(cEnDecUTF8, RandomCodePointsEncodeAsTheReference)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  for (unsigned int i = 0; i < 20000; ++i)
  {
    cCodePoints aCodePoints;
    unsigned int const iLength = random() % 80;
    while (aCodePoints.size() < iLength)
    {
      unsigned int const iMask = random() % 3 ? 0x7F : 0xFFFFFFFFu >> random() % 32;
      for (unsigned int iRun = random() % 30; iRun && aCodePoints.size() < iLength; --iRun)
      {
        aCodePoints.push_back(static_cast<unsigned int>(random()) & iMask);
      }
    }
    ASSERT_EQ(encode(aCodePoints), referenceEncode(aCodePoints)) << support::hex(aCodePoints);
  }
}

TEST(cEnDecUTF8, AllCodePointsBelowTheBorderReadBack)
{
  cCodePoints aCodePoints;
  for (unsigned int c = 1; c < 200000; ++c)
  {
    aCodePoints.push_back(c);
  }
  std::string const sBytes = encode(aCodePoints);
  ASSERT_TRUE(sBytes == referenceEncode(aCodePoints));
  cDecoded const decoded = decode(sBytes);
  EXPECT_EQ(decoded.mFailure, "");
  EXPECT_TRUE(decoded.mCharacters == aCodePoints);
}

} // namespace
