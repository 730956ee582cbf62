#include "ucs/cEnDecUTF8.h"

#include "std/cAsciiString.h"
#include "std/cSTDExceptions.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "ucs/cString.h"
#include "ucs/cUCSExceptions.h"

#include <limits>
#include <string.h>

namespace
{
typedef unsigned char tByte;
typedef unsigned long long tWord; // eight bytes at a time

tWord const cLowBits = 0x0101010101010101ull;
tWord const cHighBits = 0x8080808080808080ull;

// The compiler's own vectors, where the processor has a unit for them; elsewhere the plain forms below are faster.
#if (defined(__SSE2__) || defined(__ARM_NEON)) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define MORTISE_WIDE_TEXT 1
typedef signed char tSignedBytes __attribute__((vector_size(16)));
typedef tByte tBytes16 __attribute__((vector_size(16)));
typedef unsigned short tHalfs8 __attribute__((vector_size(16)));
typedef unsigned int tWords4 __attribute__((vector_size(16)));
typedef unsigned long long tWide2 __attribute__((vector_size(16)));
#endif

template <typename T>
T loadAs(void const* pSource)
{
  T value;
  memcpy(&value, pSource, sizeof value);
  return value;
}

template <typename T>
void storeAs(void* pTarget, T const& value)
{
  memcpy(pTarget, &value, sizeof value);
}

/// Eight bytes with the first one in the lowest place.
tWord loadBytes(tByte const* pSource)
{
  tWord const word = loadAs<tWord>(pSource);
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return __builtin_bswap64(word);
#else
  return word;
#endif
}

/// Flags the bytes that are not 1 to 127. The lowest flag is exact, those above it need not be.
tWord flagSpecial(tWord word)
{
  return ((word - cLowBits) | word) & cHighBits;
}

// ---------------------------------------------------------------------------------------------- decoding

#if MORTISE_WIDE_TEXT
/// Low and high half of the elements, each with a zero behind it: the elements in twice the width.
tHalfs8 widenLow(tBytes16 bytes)
{
  return reinterpret_cast<tHalfs8>(
      __builtin_shufflevector(bytes, tBytes16{}, 0, 16, 1, 17, 2, 18, 3, 19, 4, 20, 5, 21, 6, 22, 7, 23));
}
tHalfs8 widenHigh(tBytes16 bytes)
{
  return reinterpret_cast<tHalfs8>(
      __builtin_shufflevector(bytes, tBytes16{}, 8, 24, 9, 25, 10, 26, 11, 27, 12, 28, 13, 29, 14, 30, 15, 31));
}
void widenTo(tHalfs8 halfs, unsigned int* pTarget)
{
  storeAs(pTarget, __builtin_shufflevector(halfs, tHalfs8{}, 0, 8, 1, 9, 2, 10, 3, 11));
  storeAs(pTarget + 4, __builtin_shufflevector(halfs, tHalfs8{}, 4, 12, 5, 13, 6, 14, 7, 15));
}
void widen16(tByte const* pSource, unsigned int* pTarget)
{
  tBytes16 const bytes = loadAs<tBytes16>(pSource);
  widenTo(widenLow(bytes), pTarget);
  widenTo(widenHigh(bytes), pTarget + 8);
}
#endif

void widen8(tByte const* pSource, unsigned int* pTarget)
{
#if MORTISE_WIDE_TEXT
  tWide2 const wide = {loadAs<tWord>(pSource), 0};
  widenTo(widenLow(reinterpret_cast<tBytes16>(wide)), pTarget);
#else
  for (unsigned int i = 0; i < 8; ++i)
  {
    pTarget[i] = pSource[i];
  }
#endif
}

/// Number of bytes that are no continuation bytes: the number of characters, if the text is well formed.
unsigned int countCharacters(tByte const* pSource, unsigned int iSize)
{
  unsigned int iCount = 0;
  tByte const* const pEnd = pSource + iSize;
#if MORTISE_WIDE_TEXT
  while (pEnd - pSource >= 16)
  {
    // A lane holds up to 255.
    unsigned int iBlocks = static_cast<unsigned int>((pEnd - pSource) / 16);
    iBlocks = iBlocks < 255 ? iBlocks : 255;
    tBytes16 lanes = {};
    for (; iBlocks; --iBlocks, pSource += 16)
    {
      lanes -= reinterpret_cast<tBytes16>(loadAs<tSignedBytes>(pSource) > -65);
    }
    tWide2 const wide = reinterpret_cast<tWide2>(lanes);
    for (unsigned int i = 0; i < 2; ++i)
    {
      tWord const pairs = (wide[i] & 0x00FF00FF00FF00FFull) + ((wide[i] >> 8) & 0x00FF00FF00FF00FFull);
      iCount += static_cast<unsigned int>((pairs * 0x0001000100010001ull) >> 48);
    }
  }
#endif
  for (; pSource != pEnd; ++pSource)
  {
    iCount += (*pSource & 0xC0) != 0x80;
  }
  return iCount;
}

/// Where a walk over a run of bytes stands, and what stopped it.
struct cDecoding
{
  enum State
  {
    Exhausted,        ///< No byte left.
    Full,             ///< No room left for a character.
    Incomplete,       ///< The run ends within a character.
    ZeroByte,         ///< A 0 byte, miDetail bytes behind the start of the character.
    UnsupportedLength ///< A lead byte of miDetail continuation bytes.
  };

  tByte const* mpSource; ///< Start of the next character.
  unsigned int* mpTarget;
  unsigned int miDetail;
  State mState;
};

/// Subtracted from the sum of the shifted bytes, by the number of continuation bytes: the marker bits of the bytes.
unsigned int const cBias1 = 0x3080;
unsigned int const cBias2 = 0xE2080;
unsigned int const cBias3 = 0x3C82080;

/// Walks until something stops it. Continuation bytes are taken as they are, so only their sum tells the character.
cDecoding decodeRun(tByte const* pSource, tByte const* const pSourceEnd, unsigned int* pTarget,
                    unsigned int* const pTargetEnd)
{
  for (;;)
  {
#if MORTISE_WIDE_TEXT
    while (pSourceEnd - pSource >= 16 && pTargetEnd - pTarget >= 16 &&
           !(flagSpecial(loadBytes(pSource)) | flagSpecial(loadBytes(pSource + 8))))
    {
      widen16(pSource, pTarget);
      pSource += 16;
      pTarget += 16;
    }
#endif
    if (pSourceEnd - pSource >= 8 && pTargetEnd - pTarget >= 8)
    {
      // All eight are written, and as many kept as stand before the first special byte.
      tWord const flags = flagSpecial(loadBytes(pSource));
      unsigned int const iPlain = flags ? static_cast<unsigned int>(__builtin_ctzll(flags)) / 8 : 8;
      widen8(pSource, pTarget);
      pSource += iPlain;
      pTarget += iPlain;
      if (!flags)
      {
        continue;
      }
    }
    else
    {
      while (pSource != pSourceEnd && pTarget != pTargetEnd && *pSource - 1u < 0x7F)
      {
        *pTarget++ = *pSource++;
      }
      if (pSource == pSourceEnd)
      {
        return {pSource, pTarget, 0, cDecoding::Exhausted};
      }
      if (pTarget == pTargetEnd)
      {
        return {pSource, pTarget, 0, cDecoding::Full};
      }
    }

    // There is a byte, and room for one character.
    do
    {
      unsigned int const iLead = *pSource;
      unsigned int const iLeft = static_cast<unsigned int>(pSourceEnd - pSource < 4 ? pSourceEnd - pSource : 4);
      unsigned int iExtra;
      if (iLead < 0xC0)
      {
        if (iLead == 0)
        {
          return {pSource, pTarget, 0, cDecoding::ZeroByte};
        }
        *pTarget++ = iLead; // ASCII, or a continuation byte that stands alone
        ++pSource;
        continue;
      }
      if (iLead < 0xE0)
      {
        iExtra = 1;
        if (iLeft > 1 && pSource[1])
        {
          *pTarget++ = (iLead << 6) + pSource[1] - cBias1;
          pSource += 2;
          continue;
        }
      }
      else if (iLead < 0xF0)
      {
        iExtra = 2;
        if (iLeft > 2 && pSource[1] && pSource[2])
        {
          *pTarget++ = (iLead << 12) + (unsigned(pSource[1]) << 6) + pSource[2] - cBias2;
          pSource += 3;
          continue;
        }
      }
      else if (iLead < 0xF8)
      {
        iExtra = 3;
        if (iLeft > 3 && pSource[1] && pSource[2] && pSource[3])
        {
          *pTarget++ = (iLead << 18) + (unsigned(pSource[1]) << 12) + (unsigned(pSource[2]) << 6) + pSource[3] - cBias3;
          pSource += 4;
          continue;
        }
      }
      else
      {
        unsigned int const iLength = iLead < 0xFC ? 4 : iLead < 0xFE ? 5 : iLead == 0xFE ? 6 : 7;
        return {pSource, pTarget, iLength, cDecoding::UnsupportedLength};
      }
      for (unsigned int i = 1; i <= iExtra; ++i)
      {
        if (i == iLeft)
        {
          return {pSource, pTarget, i, cDecoding::Incomplete};
        }
        if (pSource[i] == 0)
        {
          return {pSource, pTarget, i, cDecoding::ZeroByte};
        }
      }
    } while (pSource != pSourceEnd && pTarget != pTargetEnd && *pSource >= 0x80);
  }
}

/// Appends the characters of a run to `sOut`; returns the bytes that they took, which is less than `iSize` if the run
/// ends within a character and is not the last one.
unsigned int appendRun(tByte const* pRun, unsigned int iSize, bool bLast, mucs::cString& sOut)
{
  cDecoding decoding = {pRun, 0, 0, cDecoding::Full};
  unsigned int iRoom = countCharacters(pRun, iSize);
  while (decoding.mState == cDecoding::Full)
  {
    unsigned int const iLength = sOut.length();
    unsigned int* pTarget = 0;
    if (iRoom)
    {
      sOut.proxyInsertDefaultObjects(iLength, iRoom);
      pTarget = sOut.data(true) + iLength;
    }
    decoding = decodeRun(decoding.mpSource, pRun + iSize, pTarget, pTarget + iRoom);
    unsigned int const iUsed = static_cast<unsigned int>(decoding.mpTarget - pTarget);
    if (iUsed != iRoom)
    {
      sOut.truncate(iLength + iUsed);
    }
    // More characters than counted: stray continuation bytes. Each byte left is at most one character.
    iRoom = static_cast<unsigned int>(pRun + iSize - decoding.mpSource);
  }

  switch (decoding.mState)
  {
  case cDecoding::ZeroByte:
    cUCSExceptions::throwUTF8EndOfData(decoding.miDetail);
  case cDecoding::UnsupportedLength:
    cUCSExceptions::throwUTF8UnsupportedLength(decoding.miDetail);
  case cDecoding::Incomplete:
    if (bLast)
    {
      cUCSExceptions::throwUTF8EndOfData(decoding.miDetail);
    }
    break;
  default:
    break;
  }
  return static_cast<unsigned int>(decoding.mpSource - pRun);
}

// ---------------------------------------------------------------------------------------------- encoding

unsigned int const cFirstOfFiveBytes = 200000; // four bytes could hold more, but this is the border of the format

unsigned int encodedLength(unsigned int iCodePoint)
{
  return 1u + (iCodePoint > 0x7F) + (iCodePoint > 0x7FF) + (iCodePoint > 0xFFFF) + (iCodePoint >= cFirstOfFiveBytes);
}

tByte continuation(unsigned int iBits)
{
  return static_cast<tByte>(0x80 | (iBits & 0x3F));
}

/// Writes one to five bytes and returns the place behind them.
tByte* encodeTo(unsigned int c, tByte* pTarget)
{
  if (c < 0x80)
  {
    pTarget[0] = static_cast<tByte>(c);
    return pTarget + 1;
  }
  if (c < 0x800)
  {
    pTarget[0] = static_cast<tByte>(0xC0 | (c >> 6));
    pTarget[1] = continuation(c);
    return pTarget + 2;
  }
  if (c < 0x10000)
  {
    pTarget[0] = static_cast<tByte>(0xE0 | (c >> 12));
    pTarget[1] = continuation(c >> 6);
    pTarget[2] = continuation(c);
    return pTarget + 3;
  }
  if (c < cFirstOfFiveBytes)
  {
    pTarget[0] = static_cast<tByte>(0xF0 | (c >> 18));
    pTarget[1] = continuation(c >> 12);
    pTarget[2] = continuation(c >> 6);
    pTarget[3] = continuation(c);
    return pTarget + 4;
  }
  pTarget[0] = static_cast<tByte>(0xF8 | (c >> 24));
  pTarget[1] = continuation(c >> 18);
  pTarget[2] = continuation(c >> 12);
  pTarget[3] = continuation(c >> 6);
  pTarget[4] = continuation(c);
  return pTarget + 5;
}

#if MORTISE_WIDE_TEXT
/// True if all sixteen elements are below 128.
bool isAscii16(unsigned int const* pSource)
{
  tWords4 const all = loadAs<tWords4>(pSource) | loadAs<tWords4>(pSource + 4) | loadAs<tWords4>(pSource + 8) |
                      loadAs<tWords4>(pSource + 12);
  tWide2 const wide = reinterpret_cast<tWide2>(all & ~0x7Fu);
  return (wide[0] | wide[1]) == 0;
}

/// Every second element: the low halves, for elements that need no more.
tHalfs8 narrowed(tWords4 first, tWords4 second)
{
  return __builtin_shufflevector(reinterpret_cast<tHalfs8>(first), reinterpret_cast<tHalfs8>(second), 0, 2, 4, 6, 8, 10,
                                 12, 14);
}
void narrow16(unsigned int const* pSource, tByte* pTarget)
{
  tHalfs8 const first = narrowed(loadAs<tWords4>(pSource), loadAs<tWords4>(pSource + 4));
  tHalfs8 const second = narrowed(loadAs<tWords4>(pSource + 8), loadAs<tWords4>(pSource + 12));
  storeAs(pTarget, __builtin_shufflevector(reinterpret_cast<tBytes16>(first), reinterpret_cast<tBytes16>(second), 0, 2,
                                           4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24, 26, 28, 30));
}
#endif

/// Number of bytes of all the elements.
tWord countBytes(unsigned int const* pSource, unsigned int iSize)
{
  tWord iCount = 0;
  unsigned int const* const pEnd = pSource + iSize;
#if MORTISE_WIDE_TEXT
  while (pEnd - pSource >= 4)
  {
    // The lanes are emptied long before they can overflow.
    unsigned int iBlocks = static_cast<unsigned int>((pEnd - pSource) / 4);
    iBlocks = iBlocks < 0x100000 ? iBlocks : 0x100000;
    iCount += iBlocks * 4ull;
    tWords4 lanes = {};
    for (; iBlocks; --iBlocks, pSource += 4)
    {
      tWords4 const c = loadAs<tWords4>(pSource);
      lanes -= reinterpret_cast<tWords4>(c > 0x7F) + reinterpret_cast<tWords4>(c > 0x7FF) +
               reinterpret_cast<tWords4>(c > 0xFFFF) + reinterpret_cast<tWords4>(c > cFirstOfFiveBytes - 1);
    }
    iCount += tWord(lanes[0]) + lanes[1] + lanes[2] + lanes[3];
  }
#endif
  for (; pSource != pEnd; ++pSource)
  {
    iCount += encodedLength(*pSource);
  }
  return iCount;
}
} // namespace

namespace mucs
{
mstd::cAsciiString cEnDecUTF8::name() const
{
  return mstd::cAsciiString("Endec-UTF8");
}

void cEnDecUTF8::encode(cString const& sText, mstd::tArray<char>& aOut) const
{
  unsigned int const iSize = sText.length();
  if (iSize == 0)
  {
    return;
  }
  unsigned int const* pSource = sText.data(true);
  unsigned int const* const pEnd = pSource + iSize;
  tWord const iBytes = countBytes(pSource, iSize);
  unsigned int const iStart = aOut.length();
  if (iBytes > std::numeric_limits<unsigned int>::max())
  {
    cSTDExceptions::throwBadAlloc();
  }
  aOut.proxyInsertDefaultObjects(iStart, static_cast<unsigned int>(iBytes));
  tByte* pTarget = reinterpret_cast<tByte*>(aOut.data(true)) + iStart;

  while (pSource != pEnd)
  {
#if MORTISE_WIDE_TEXT
    while (pEnd - pSource >= 16 && isAscii16(pSource))
    {
      narrow16(pSource, pTarget);
      pSource += 16;
      pTarget += 16;
    }
#endif
    unsigned int const* const pBlockEnd = pEnd - pSource > 16 ? pSource + 16 : pEnd;
    for (; pSource != pBlockEnd; ++pSource)
    {
      pTarget = encodeTo(*pSource, pTarget);
    }
  }
}

void cEnDecUTF8::decode(mstd::tConstArrayRef<char> const& rBytes, cString& sOut) const
{
  unsigned int const iSize = rBytes.proxyLength();
  unsigned int const iBlock = rBytes.proxyPreferredBlockSize();
  unsigned int iPos = 0;
  while (iPos < iSize)
  {
    // A window of eight bytes holds any character.
    unsigned int const iLeft = iSize - iPos;
    unsigned int iWindow = iBlock == 0 ? iLeft : iBlock < 8 ? 8 : iBlock;
    iWindow = iWindow < iLeft ? iWindow : iLeft;
    char const* const pRun = rBytes.proxyProvideData(iPos, iWindow);
    iPos += appendRun(reinterpret_cast<tByte const*>(pRun), iWindow, iWindow == iLeft, sOut);
  }
}

void cEnDecUTF8::encodeChar(unsigned int iCodePoint, mstd::tArray<char>& aOut)
{
  tByte bytes[5];
  tByte const* const pEnd = encodeTo(iCodePoint, bytes);
  aOut.append(reinterpret_cast<char const*>(bytes), static_cast<unsigned int>(pEnd - bytes));
}
} // namespace mucs
