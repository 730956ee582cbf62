#include "ucs/cEnDecUTF16.h"

#include "pi/piByteOrder.h"
#include "std/tConstArrayRef.h"
#include "support/cBlockDeviceProxy.h"
#include "support/cCaptureOut.h"
#include "textSupport.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>

namespace
{
using mucs::cEnDecUTF16;
using mucs::cString;
using support::bytes;
using support::cCodePoints;
using support::codePoints;

std::string const cExhausted = "cRuntimeException: Source buffer exhausted!";
std::string const cInvalidMark = "cRuntimeException: Invalid byte order mark while decoding utf16!";
std::string const cCorrupt = "cRuntimeException: Unable to read corrupt utf16 data!";
std::string const cInvalidSequence = "cRuntimeException: Invalid byte sequence while decoding utf16!";
std::string const cUnmappable = "cRuntimeException: Unable to convert unmappable character to utf16!";

unsigned int const cLittle = cEnDecUTF16::LittleEndian;
unsigned int const cBig = cEnDecUTF16::BigEndian;
unsigned int const cMark = cEnDecUTF16::ByteOrderMark;

typedef std::vector<unsigned short> cUnits;

/// What a conversion makes of its source up to a failure, and the failure.
template <class Range>
struct tConverted
{
  Range mResult;
  std::string mFailure;

  bool operator==(tConverted const& rOther) const { return mResult == rOther.mResult && mFailure == rOther.mFailure; }
};
typedef tConverted<cCodePoints> cDecoded;
typedef tConverted<std::string> cEncoded;

template <class Range>
void PrintTo(tConverted<Range> const& rConverted, std::ostream* pOut)
{
  *pOut << support::hex(rConverted.mResult) << "| " << rConverted.mFailure;
}

/// The plain decoder, a unit at a time.
cDecoded referenceDecode(std::string const& sBytes, unsigned int iFlags)
{
  bool bBig = iFlags & 2;
  bool bLittle = iFlags & 1;
  if (iFlags & 4)
  {
    bBig = bLittle = false;
  }
  auto const unit = [&](size_t i) {
    unsigned int const first = static_cast<unsigned char>(sBytes[i]);
    unsigned int const second = static_cast<unsigned char>(sBytes[i + 1]);
    return bBig ? first << 8 | second : second << 8 | first;
  };
  cDecoded result;
  size_t iPos = 0;
  while (iPos < sBytes.size())
  {
    if (iPos + 1 >= sBytes.size())
    {
      result.mFailure = cExhausted;
      return result;
    }
    if (!bBig && !bLittle)
    {
      std::string const sMark = sBytes.substr(iPos, 2);
      bLittle = sMark == "\xFF\xFE";
      bBig = sMark == "\xFE\xFF";
      if (!bLittle && !bBig)
      {
        result.mFailure = cInvalidMark;
        return result;
      }
      iPos += 2;
      continue;
    }
    unsigned int const iUnit = unit(iPos);
    if ((iUnit & 0xF800) != 0xD800)
    {
      result.mResult.push_back(iUnit);
      iPos += 2;
      continue;
    }
    if (iPos + 3 >= sBytes.size())
    {
      result.mFailure = cCorrupt;
      return result;
    }
    if ((iUnit & 0xFC00) != 0xD800 || (unit(iPos + 2) & 0xFC00) != 0xDC00)
    {
      result.mFailure = cInvalidSequence;
      return result;
    }
    result.mResult.push_back(((iUnit & 0x3FF) << 10 | (unit(iPos + 2) & 0x3FF)) + 0x10000);
    iPos += 4;
  }
  return result;
}

cEncoded referenceEncode(cCodePoints const& aCodePoints, unsigned int iFlags)
{
  cEncoded result;
  auto const put = [&](unsigned int iUnit) {
    char const low = static_cast<char>(iUnit);
    char const high = static_cast<char>(iUnit >> 8);
    result.mResult += iFlags & 2 ? high : low;
    result.mResult += iFlags & 2 ? low : high;
  };
  if (iFlags & 4)
  {
    put(0xFEFF);
  }
  for (unsigned int c : aCodePoints)
  {
    if ((c < 0x10000 && (c & 0xF800) == 0xD800) || c > 0x10FFFF)
    {
      result.mFailure = cUnmappable;
      return result;
    }
    if (c < 0x10000)
    {
      put(c);
    }
    else
    {
      put(0xD800 + ((c - 0x10000) >> 10));
      put(0xDC00 + ((c - 0x10000) & 0x3FF));
    }
  }
  return result;
}

cDecoded decode(mstd::tAbstractConstArrayProxy<char> const& rBytes, unsigned int iFlags)
{
  cString sText;
  cDecoded result;
  result.mFailure = support::failureText([&] { cEnDecUTF16(iFlags).decode(rBytes, sText); });
  result.mResult = codePoints(sText);
  return result;
}

cDecoded decode(std::string const& sBytes, unsigned int iFlags)
{
  return decode(bytes(sBytes), iFlags);
}

cDecoded decodeCString(cUnits aUnits, unsigned int iFlags)
{
  aUnits.push_back(0);
  cString sText;
  cDecoded result;
  result.mFailure = support::failureText([&] { cEnDecUTF16(iFlags).decodeCString(aUnits.data(), sText); });
  result.mResult = codePoints(sText);
  return result;
}

cEncoded encode(cCodePoints const& aCodePoints, unsigned int iFlags)
{
  mstd::tArray<char> aBytes;
  cEncoded result;
  result.mFailure = support::failureText([&] { cEnDecUTF16(iFlags).encode(support::string(aCodePoints), aBytes); });
  result.mResult = bytes(aBytes);
  return result;
}

cUnits units(mstd::tArray<unsigned short> const& aUnits)
{
  return aUnits.empty() ? cUnits() : cUnits(aUnits.data(), aUnits.data() + aUnits.length());
}

cUnits encodeUnits(cCodePoints const& aCodePoints, unsigned int iFlags)
{
  mstd::tArray<unsigned short> aUnits;
  cEnDecUTF16(iFlags).encode(support::string(aCodePoints), aUnits);
  return units(aUnits);
}

/// A literal with its zero bytes.
template <size_t N>
std::string raw(char const (&sLiteral)[N])
{
  return std::string(sLiteral, N - 1);
}

TEST(cEnDecUTF16, HasItsName)
{
  EXPECT_STREQ(cEnDecUTF16(0).name().c_str(), "Endec-UTF16");
}

TEST(cEnDecUTF16, WithoutFlagsEncodingIsLittleEndianWithoutAMarkAndDoesNotReadBack)
{
  EXPECT_EQ(encode({'A'}, 0), (cEncoded{raw("A\0"), ""}));
  EXPECT_EQ(decode(raw("A\0"), 0), (cDecoded{{}, cInvalidMark}));
}

TEST(cEnDecUTF16, WithMarkAndBigEndianTheLetterAReadsBack)
{
  EXPECT_EQ(encode({'A'}, 6), (cEncoded{raw("\xFE\xFF\0A"), ""}));
  EXPECT_EQ(decode(raw("\xFE\xFF\0A"), 6), (cDecoded{{'A'}, ""}));
}

TEST(cEnDecUTF16, AnOddNumberOfBytesFailsAtTheLastByte)
{
  EXPECT_EQ(decode(raw("A\0B"), cLittle), (cDecoded{{'A'}, cExhausted}));
  EXPECT_EQ(decode("A", cLittle), (cDecoded{{}, cExhausted}));
  EXPECT_EQ(decode("\xFF", cMark), (cDecoded{{}, cExhausted}));
}

TEST(cEnDecUTF16, ALowSurrogateFirstIsAnInvalidSequenceAndCorruptDataNearTheEnd)
{
  EXPECT_EQ(decode(raw("\x00\xDC"
                       "A\0"),
                   cLittle),
            (cDecoded{{}, cInvalidSequence}));
  EXPECT_EQ(decode(raw("x\0\x00\xDC"), cLittle), (cDecoded{{'x'}, cCorrupt}));
  EXPECT_EQ(decode(raw("x\0\x00\xDC"
                       "A"),
                   cLittle),
            (cDecoded{{'x'}, cCorrupt}));
}

TEST(cEnDecUTF16, AHighSurrogateWithoutItsPartnerIsAnInvalidSequence)
{
  EXPECT_EQ(decode(raw("x\0\x00\xD8"
                       "A\0"),
                   cLittle),
            (cDecoded{{'x'}, cInvalidSequence}));
  EXPECT_EQ(decode(raw("\x00\xD8\x00\xD8"), cLittle), (cDecoded{{}, cInvalidSequence}));
  EXPECT_EQ(decode(raw("\x00\xD8"), cLittle), (cDecoded{{}, cCorrupt}));
}

TEST(cEnDecUTF16, SurrogatePairsReadAndWriteInBothOrders)
{
  EXPECT_EQ(encode({0x10000, 0x1F600, 0x10FFFF}, cLittle),
            (cEncoded{raw("\x00\xD8\x00\xDC\x3D\xD8\x00\xDE\xFF\xDB\xFF\xDF"), ""}));
  EXPECT_EQ(encode({0x1F600}, cBig), (cEncoded{raw("\xD8\x3D\xDE\x00"), ""}));
  EXPECT_EQ(decode(raw("\x3D\xD8\x00\xDE"), cLittle), (cDecoded{{0x1F600}, ""}));
  EXPECT_EQ(decode(raw("\xD8\x3D\xDE\x00"), cBig), (cDecoded{{0x1F600}, ""}));
}

TEST(cEnDecUTF16, BothOrderFlagsTakeBigEndian)
{
  EXPECT_EQ(decode(raw("\0A"), cLittle | cBig), (cDecoded{{'A'}, ""}));
  EXPECT_EQ(encode({'A'}, cLittle | cBig), (cEncoded{raw("\0A"), ""}));
  EXPECT_EQ(encode({'A'}, cLittle | cBig | cMark), (cEncoded{raw("\xFE\xFF\0A"), ""}));
}

TEST(cEnDecUTF16, AMarkDecidesAgainstTheOrderFlags)
{
  EXPECT_EQ(decode(raw("\xFF\xFE"
                       "A\0"),
                   cBig | cMark),
            (cDecoded{{'A'}, ""}));
  EXPECT_EQ(decode(raw("\xFE\xFF\0A"), cLittle | cMark), (cDecoded{{'A'}, ""}));
  EXPECT_EQ(decode(raw("A\0"), cLittle | cMark), (cDecoded{{}, cInvalidMark}));
}

TEST(cEnDecUTF16, WithAnOrderGivenAMarkIsACharacter)
{
  EXPECT_EQ(decode(raw("\xFF\xFE"
                       "A\0"),
                   cLittle),
            (cDecoded{{0xFEFF, 'A'}, ""}));
  EXPECT_EQ(decode(raw("\xFF\xFE\xFF\xFE"), cMark), (cDecoded{{0xFEFF}, ""}));
}

TEST(cEnDecUTF16, AnEmptyTextNeedsNoMarkToReadButGetsOneWritten)
{
  EXPECT_EQ(decode("", cMark), (cDecoded{{}, ""}));
  EXPECT_EQ(decode("\xFF\xFE", cMark), (cDecoded{{}, ""}));
  EXPECT_EQ(encode({}, cMark), (cEncoded{"\xFF\xFE", ""}));
  EXPECT_EQ(encode({}, cLittle), (cEncoded{"", ""}));
}

TEST(cEnDecUTF16, AZeroUnitIsACharacterOfTheData)
{
  EXPECT_EQ(decode(raw("\0\0A\0"), cLittle), (cDecoded{{0, 'A'}, ""}));
}

TEST(cEnDecUTF16, SurrogatesAndCodePointsBeyondUnicodeAreUnmappable)
{
  EXPECT_EQ(encode({'a', 0xD800}, cLittle), (cEncoded{raw("a\0"), cUnmappable}));
  EXPECT_EQ(encode({0xDFFF}, cLittle), (cEncoded{"", cUnmappable}));
  EXPECT_EQ(encode({'a', 0x110000, 'b'}, cBig | cMark), (cEncoded{raw("\xFE\xFF\0a"), cUnmappable}));
  EXPECT_EQ(encode({0xD7FF, 0xE000}, cBig), (cEncoded{"\xD7\xFF\xE0" + raw("\0"), ""}));
  // Only in the basic plane do these bits make a surrogate.
  EXPECT_EQ(encode({0x1D800}, cBig), (cEncoded{raw("\xD8\x36\xDC\x00"), ""}));
}

TEST(cEnDecUTF16, UnitsLieInMemoryAsTheirBytesDo)
{
  EXPECT_EQ(encodeUnits({'A', 0x1F600}, cLittle), (cUnits{'A', 0xD83D, 0xDE00}));
  EXPECT_EQ(encodeUnits({'A'}, cLittle | cMark), (cUnits{0xFEFF, 'A'}));
  EXPECT_EQ(encodeUnits({'A'}, cBig | cMark), (cUnits{0xFFFE, 0x4100}));
  EXPECT_EQ(encodeUnits({}, 0), cUnits());
}

TEST(cEnDecUTF16, UnitsOfAFailedTextStayUpToTheFailure)
{
  mstd::tArray<unsigned short> aUnits;
  EXPECT_EQ(support::failureText([&] {
              cEnDecUTF16(0).encode(support::string({'a', 'b', 0xD800, 'c'}), aUnits);
            }),
            cUnmappable);
  EXPECT_EQ(units(aUnits), (cUnits{'a', 'b'}));
}

TEST(cEnDecUTF16, EncodingAppends)
{
  mstd::tArray<char> aBytes("x");
  cEnDecUTF16(cLittle).encode(cString("a"), aBytes);
  EXPECT_EQ(bytes(aBytes), raw("xa\0"));
  mstd::tArray<unsigned short> aUnits;
  cEnDecUTF16(cLittle).encode(cString("a"), aUnits);
  cEnDecUTF16(cLittle).encode(cString("b"), aUnits);
  EXPECT_EQ(units(aUnits), (cUnits{'a', 'b'}));
}

TEST(cEnDecUTF16, EncodeCStringPutsAZeroUnitBehindTheTextAndAZeroByteBehindBytes)
{
  mstd::tArray<unsigned short> aUnits;
  cEnDecUTF16(cMark).encodeCString(cString("a"), aUnits);
  EXPECT_EQ(units(aUnits), (cUnits{0xFEFF, 'a', 0}));
  mstd::tArray<char> aBytes;
  cEnDecUTF16(0).encodeCString(cString("a"), aBytes);
  EXPECT_EQ(bytes(aBytes), raw("a\0\0"));
}

TEST(cEnDecUTF16, DecodeCStringReadsUpToAZeroUnitAndAppends)
{
  unsigned short const aUnits[] = {'a', 0xD83D, 0xDE00, 0, 'z', 0};
  cString sText("x");
  cEnDecUTF16(cLittle).decodeCString(aUnits, sText);
  EXPECT_EQ(codePoints(sText), (cCodePoints{'x', 'a', 0x1F600}));
}

TEST(cEnDecUTF16, DecodeCStringTakesTheMarkInTheOrderOfThePlatform)
{
  EXPECT_EQ(decodeCString({0xFEFF, 'a'}, 0), (cDecoded{{'a'}, ""}));
  EXPECT_EQ(decodeCString({0xFFFE, 0x6100}, cLittle | cMark), (cDecoded{{'a'}, ""}));
  EXPECT_EQ(decodeCString({'a'}, 0), (cDecoded{{}, cInvalidMark}));
  EXPECT_EQ(decodeCString({'a'}, cMark | cLittle), (cDecoded{{}, cInvalidMark}));
  EXPECT_EQ(decodeCString({}, cMark), (cDecoded{{}, ""}));
  EXPECT_EQ(decodeCString({0xFEFF}, cMark), (cDecoded{{}, ""}));
}

TEST(cEnDecUTF16, DecodeCStringSwapsBigEndianUnits)
{
  EXPECT_EQ(decodeCString({0x6100, 0x3DD8, 0x00DE}, cBig), (cDecoded{{'a', 0x1F600}, ""}));
}

TEST(cEnDecUTF16, DecodeCStringFailsAsDecodeDoes)
{
  EXPECT_EQ(decodeCString({'a', 0xD800}, cLittle), (cDecoded{{'a'}, cCorrupt}));
  EXPECT_EQ(decodeCString({'a', 0xDC00}, cLittle), (cDecoded{{'a'}, cCorrupt}));
  EXPECT_EQ(decodeCString({0xDC00, 'a'}, cLittle), (cDecoded{{}, cInvalidSequence}));
  EXPECT_EQ(decodeCString({0xD800, 'a'}, cLittle), (cDecoded{{}, cInvalidSequence}));
}

TEST(cEnDecUTF16, DecodeCStringOfNullIsABug)
{
  support::cCaptureOut mute;
  cString sText;
  EXPECT_NE(support::failureText([&] { cEnDecUTF16(0).decodeCString(0, sText); }).find("pUnits != 0"),
            std::string::npos);
}

TEST(cEnDecUTF16, DecodingFromAViewOfUnitsIsNotItsBusiness)
{
  cString sText;
  mstd::tArray<unsigned short> const aUnits;
  EXPECT_EQ(support::failureText([&] { cEnDecUTF16(0).decode(mstd::tConstArrayRef<unsigned short>(aUnits), sText); }),
            "cBugException: Not implemented: Endec-UTF16::decode (ucs16 -> ucs32)");
}

TEST(cEnDecUTF16, ThePlatformIsLittleEndian)
{
  EXPECT_EQ(mpi::littleEndianToPlatformType16(0x1234), 0x1234);
}

unsigned int const cUnitClasses[] = {0x0000, 0x0041, 0x00FF, 0xD7FF, 0xD800, 0xDBFF,
                                     0xDC00, 0xDFFF, 0xE000, 0xFEFF, 0xFFFE, 0xFFFF};

TEST(cEnDecUTF16, AllSequencesOfThreeUnitsOfAllClassesDecodeAsTheReference)
{
  for (unsigned int iFlags = 0; iFlags < 8; ++iFlags)
  {
    for (unsigned int a : cUnitClasses)
    {
      for (unsigned int b : cUnitClasses)
      {
        for (unsigned int c : cUnitClasses)
        {
          std::string sBytes;
          for (unsigned int iUnit : {a, b, c})
          {
            sBytes += static_cast<char>(iUnit);
            sBytes += static_cast<char>(iUnit >> 8);
            ASSERT_EQ(decode(sBytes, iFlags), referenceDecode(sBytes, iFlags))
                << iFlags << ": " << support::hex(sBytes);
          }
          sBytes.pop_back();
          ASSERT_EQ(decode(sBytes, iFlags), referenceDecode(sBytes, iFlags)) << iFlags << ": " << support::hex(sBytes);
        }
      }
    }
  }
}

std::string randomBytes(std::mt19937& rRandom, unsigned int iFlags, unsigned int iMaxUnits)
{
  cCodePoints aCodePoints;
  unsigned int const iLength = rRandom() % (iMaxUnits + 1);
  while (aCodePoints.size() < iLength)
  {
    unsigned int const iLimit = rRandom() % 4 == 0 ? 0x110000 : rRandom() % 4 == 0 ? 0xD800 : 0x100;
    for (unsigned int iRun = rRandom() % 30; iRun && aCodePoints.size() < iLength; --iRun)
    {
      unsigned int const c = static_cast<unsigned int>(rRandom()) % iLimit;
      aCodePoints.push_back(c - 0xD800 < 0x800 ? '-' : c);
    }
  }
  std::string sBytes = referenceEncode(aCodePoints, iFlags | (iFlags & 3 ? 0 : 4)).mResult;
  if (!sBytes.empty() && rRandom() % 3 == 0)
  {
    sBytes[rRandom() % sBytes.size()] = static_cast<char>(rRandom() % 2 ? 0xD8 | rRandom() % 8 : rRandom());
  }
  if (!sBytes.empty() && rRandom() % 8 == 0)
  {
    sBytes.pop_back();
  }
  return sBytes;
}

TEST(cEnDecUTF16, RandomTextsDecodeAsTheReferenceInMemoryAndFromADeviceWithBlocks)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  for (unsigned int i = 0; i < 16000; ++i)
  {
    unsigned int const iFlags = i % 8;
    std::string const sBytes = randomBytes(random, iFlags, i % 100 ? 60 : 2000);
    cDecoded const expected = referenceDecode(sBytes, iFlags);
    ASSERT_EQ(decode(sBytes, iFlags), expected) << iFlags << ": " << support::hex(sBytes);
    unsigned int const iBlock = 1 + static_cast<unsigned int>(random() % 40);
    support::cBlockDeviceProxy const device(sBytes, iBlock);
    ASSERT_EQ(decode(device, iFlags), expected) << iFlags << ", block " << iBlock << ": " << support::hex(sBytes);
    for (support::cBlockDeviceProxy::cWindow const& window : device.windows())
    {
      ASSERT_LE(window.size, std::max(4u, iBlock));
    }
  }
}

TEST(cEnDecUTF16, RandomCodePointsEncodeAsTheReference)
{
  unsigned int const iSeed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(iSeed));
  std::mt19937 random(iSeed);
  for (unsigned int i = 0; i < 16000; ++i)
  {
    unsigned int const iFlags = i % 8;
    cCodePoints aCodePoints;
    unsigned int const iLength = random() % 60;
    unsigned int const iLimit = random() % 4 == 0 ? 0x112000 : random() % 2 ? 0x10000 : 0xD800;
    while (aCodePoints.size() < iLength)
    {
      unsigned int const c = static_cast<unsigned int>(random()) % iLimit;
      aCodePoints.push_back(c - 0xD800 < 0x800 && random() % 8 ? 'x' : c);
    }
    cEncoded const expected = referenceEncode(aCodePoints, iFlags);
    ASSERT_EQ(encode(aCodePoints, iFlags), expected) << iFlags << ": " << support::hex(aCodePoints);
    if (expected.mFailure.empty())
    {
      cUnits const aUnits = encodeUnits(aCodePoints, iFlags);
      ASSERT_EQ(std::string(reinterpret_cast<char const*>(aUnits.data()), aUnits.size() * 2), expected.mResult);
    }
  }
}

TEST(cEnDecUTF16, AllCodePointsReadBack)
{
  cCodePoints aCodePoints;
  for (unsigned int c = 0; c < 0x110000; ++c)
  {
    if (c < 0xD800 || c >= 0xE000)
    {
      aCodePoints.push_back(c);
    }
  }
  for (unsigned int iFlags : {cLittle, cBig, cMark})
  {
    cEncoded const encoded = encode(aCodePoints, iFlags);
    EXPECT_EQ(encoded.mFailure, "");
    cDecoded const decoded = decode(encoded.mResult, iFlags);
    EXPECT_EQ(decoded.mFailure, "");
    EXPECT_TRUE(decoded.mResult == aCodePoints) << "flags " << iFlags;
  }
}

} // namespace
