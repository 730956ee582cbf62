#include "ucs/cEnDecUTF16.h"

#include "pi/piByteOrder.h"
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
typedef unsigned short tUnit;

// The compiler's own vectors, where the processor has a unit for them; elsewhere the plain forms are as fast.
#if (defined(__SSE2__) || defined(__ARM_NEON)) && __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
#define MORTISE_WIDE_TEXT 1
typedef tUnit tUnits8 __attribute__((vector_size(16)));
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

/// Between the units of a text in the given order and numbers; both ways are the same.
template <bool Big>
tUnit ordered(tUnit iUnit)
{
  return mpi::littleEndianToPlatformType16(Big ? static_cast<tUnit>((iUnit << 8) | (iUnit >> 8)) : iUnit);
}

template <bool Big>
tUnit loadUnit(tByte const* pSource)
{
  return ordered<Big>(loadAs<tUnit>(pSource));
}

template <bool Big>
tByte* storeUnit(tByte* pTarget, unsigned int iUnit)
{
  storeAs(pTarget, ordered<Big>(static_cast<tUnit>(iUnit)));
  return pTarget + sizeof(tUnit);
}

bool isSurrogate(unsigned int c)
{
  return (c & 0xF800) == 0xD800;
}

// ---------------------------------------------------------------------------------------------- decoding

#if MORTISE_WIDE_TEXT
/// Writes eight units as elements of twice the width.
void widenTo(tUnits8 units, unsigned int* pTarget)
{
  storeAs(pTarget, __builtin_shufflevector(units, tUnits8{}, 0, 8, 1, 9, 2, 10, 3, 11));
  storeAs(pTarget + 4, __builtin_shufflevector(units, tUnits8{}, 4, 12, 5, 13, 6, 14, 7, 15));
}
#endif

/// Where a walk over the units stands, and what stopped it.
struct cDecoding
{
  enum State
  {
    Exhausted,      ///< No byte left.
    OddByte,        ///< One byte left.
    Incomplete,     ///< A surrogate, and less than a unit behind it.
    InvalidSequence ///< A surrogate that makes no pair.
  };

  tByte const* mpSource; ///< Start of the next character.
  unsigned int* mpTarget;
  State mState;
};

/// Walks until something stops it. The target has room for a character per unit.
template <bool Big>
cDecoding decodeRun(tByte const* pSource, tByte const* const pEnd, unsigned int* pTarget)
{
  for (;;)
  {
#if MORTISE_WIDE_TEXT
    while (pEnd - pSource >= 32)
    {
      tUnits8 first = loadAs<tUnits8>(pSource);
      tUnits8 second = loadAs<tUnits8>(pSource + 16);
      if (Big)
      {
        first = (first << 8) | (first >> 8);
        second = (second << 8) | (second >> 8);
      }
      tWide2 const flags = reinterpret_cast<tWide2>(((first & 0xF800) == 0xD800) | ((second & 0xF800) == 0xD800));
      if (flags[0] | flags[1])
      {
        break;
      }
      widenTo(first, pTarget);
      widenTo(second, pTarget + 8);
      pSource += 32;
      pTarget += 16;
    }
#endif
    // A block at a time, so that the wide path is taken up again behind a surrogate.
    tByte const* const pBlockEnd = pEnd - pSource > 32 ? pSource + 32 : pEnd;
    while (pSource < pBlockEnd)
    {
      if (pEnd - pSource < 2)
      {
        return {pSource, pTarget, cDecoding::OddByte};
      }
      unsigned int const iUnit = loadUnit<Big>(pSource);
      if (!isSurrogate(iUnit))
      {
        *pTarget++ = iUnit;
        pSource += 2;
        continue;
      }
      if (pEnd - pSource < 4)
      {
        return {pSource, pTarget, cDecoding::Incomplete};
      }
      unsigned int const iNext = loadUnit<Big>(pSource + 2);
      if ((iUnit & 0xFC00) != 0xD800 || (iNext & 0xFC00) != 0xDC00)
      {
        return {pSource, pTarget, cDecoding::InvalidSequence};
      }
      *pTarget++ = ((iUnit & 0x3FF) << 10 | (iNext & 0x3FF)) + 0x10000;
      pSource += 4;
    }
    if (pSource == pEnd)
    {
      return {pSource, pTarget, cDecoding::Exhausted};
    }
  }
}

/// Appends the characters of a run to `sOut`; returns the bytes that they took, which is less than `iSize` if the run
/// ends within a character and is not the last one.
unsigned int appendRun(tByte const* pRun, unsigned int iSize, bool bBig, bool bLast, mucs::cString& sOut)
{
  unsigned int const iLength = sOut.length();
  unsigned int const iRoom = iSize / 2;
  unsigned int* pTarget = 0;
  if (iRoom)
  {
    sOut.proxyInsertDefaultObjects(iLength, iRoom);
    pTarget = sOut.data(true) + iLength;
  }
  cDecoding const decoding =
      bBig ? decodeRun<true>(pRun, pRun + iSize, pTarget) : decodeRun<false>(pRun, pRun + iSize, pTarget);
  unsigned int const iUsed = static_cast<unsigned int>(decoding.mpTarget - pTarget);
  if (iUsed != iRoom)
  {
    sOut.truncate(iLength + iUsed);
  }

  switch (decoding.mState)
  {
  case cDecoding::InvalidSequence:
    cUCSExceptions::throwUTF16InvalidSequence();
  case cDecoding::OddByte:
    if (bLast)
    {
      cUCSExceptions::throwUTF16SourceExhausted();
    }
    break;
  case cDecoding::Incomplete:
    if (bLast)
    {
      cUCSExceptions::throwUTF16CorruptData();
    }
    break;
  case cDecoding::Exhausted:
    break;
  }
  return static_cast<unsigned int>(decoding.mpSource - pRun);
}

/// What a byte order mark says about the text behind it; no mark raises.
bool isBigEndianMark(tByte const* pMark)
{
  bool const bBig = pMark[0] == 0xFE && pMark[1] == 0xFF;
  if (!bBig && !(pMark[0] == 0xFF && pMark[1] == 0xFE))
  {
    cUCSExceptions::throwUTF16InvalidByteOrderMark();
  }
  return bBig;
}

// ---------------------------------------------------------------------------------------------- encoding

struct cEncoding
{
  tByte* mpTarget;
  bool mbUnmappable; ///< Stopped before a code point that UTF-16 cannot hold.
};

/// The target has room for one unit per element and one more for each element above 0xFFFF.
template <bool Big>
cEncoding encodeRun(unsigned int const* pSource, unsigned int const* const pEnd, tByte* pTarget)
{
  while (pSource != pEnd)
  {
#if MORTISE_WIDE_TEXT
    while (pEnd - pSource >= 8)
    {
      tWords4 const first = loadAs<tWords4>(pSource);
      tWords4 const second = loadAs<tWords4>(pSource + 4);
      // One unit each: nothing above 0xFFFF, no surrogate.
      tWide2 const flags = reinterpret_cast<tWide2>(reinterpret_cast<tWords4>(((first | second) & 0xFFFF0000u) != 0u) |
                                                    reinterpret_cast<tWords4>((first & 0xF800) == 0xD800) |
                                                    reinterpret_cast<tWords4>((second & 0xF800) == 0xD800));
      if (flags[0] | flags[1])
      {
        break;
      }
      tUnits8 units = __builtin_shufflevector(reinterpret_cast<tUnits8>(first), reinterpret_cast<tUnits8>(second), 0, 2,
                                              4, 6, 8, 10, 12, 14);
      if (Big)
      {
        units = (units << 8) | (units >> 8);
      }
      storeAs(pTarget, units);
      pSource += 8;
      pTarget += 16;
    }
#endif
    unsigned int const* const pBlockEnd = pEnd - pSource > 8 ? pSource + 8 : pEnd;
    for (; pSource != pBlockEnd; ++pSource)
    {
      unsigned int const c = *pSource;
      if (c < 0x10000)
      {
        if (isSurrogate(c))
        {
          return {pTarget, true};
        }
        pTarget = storeUnit<Big>(pTarget, c);
      }
      else if (c < 0x110000)
      {
        pTarget = storeUnit<Big>(pTarget, 0xD800 | ((c - 0x10000) >> 10));
        pTarget = storeUnit<Big>(pTarget, 0xDC00 | ((c - 0x10000) & 0x3FF));
      }
      else
      {
        return {pTarget, true};
      }
    }
  }
  return {pTarget, false};
}

/// Number of units for all the elements, as if every one could be written.
unsigned long long countUnits(unsigned int const* pSource, unsigned int iSize)
{
  unsigned long long iCount = iSize;
  unsigned int const* const pEnd = pSource + iSize;
#if MORTISE_WIDE_TEXT
  tWords4 lanes = {}; // a quarter of the elements each, which cannot overflow
  for (; pEnd - pSource >= 4; pSource += 4)
  {
    lanes -= reinterpret_cast<tWords4>((loadAs<tWords4>(pSource) & 0xFFFF0000u) != 0u);
  }
  iCount += static_cast<unsigned long long>(lanes[0]) + lanes[1] + lanes[2] + lanes[3];
#endif
  for (; pSource != pEnd; ++pSource)
  {
    iCount += *pSource > 0xFFFF;
  }
  return iCount;
}

/// Appends the text to an array of bytes or of units. A unit lies in memory as its two bytes do.
template <typename Element>
void appendEncoded(mucs::cString const& sText, unsigned int iFlags, mstd::tArray<Element>& aOut)
{
  unsigned int const iSize = sText.length();
  bool const bBig = iFlags & mucs::cEnDecUTF16::BigEndian;
  bool const bMark = iFlags & mucs::cEnDecUTF16::ByteOrderMark;
  if (iSize == 0 && !bMark)
  {
    return;
  }
  unsigned int const iPerUnit = sizeof(tUnit) / sizeof(Element);
  unsigned int const* const pSource = sText.data(true);
  unsigned long long const iElements = (countUnits(pSource, iSize) + bMark) * iPerUnit;
  unsigned int const iLength = aOut.length();
  if (iElements > std::numeric_limits<unsigned int>::max())
  {
    cSTDExceptions::throwBadAlloc();
  }
  aOut.proxyInsertDefaultObjects(iLength, static_cast<unsigned int>(iElements));
  tByte* const pStart = reinterpret_cast<tByte*>(aOut.data(true) + iLength);

  tByte* pTarget = pStart;
  if (bMark)
  {
    pTarget = bBig ? storeUnit<true>(pTarget, 0xFEFF) : storeUnit<false>(pTarget, 0xFEFF);
  }
  cEncoding const encoding =
      bBig ? encodeRun<true>(pSource, pSource + iSize, pTarget) : encodeRun<false>(pSource, pSource + iSize, pTarget);
  if (encoding.mbUnmappable)
  {
    aOut.truncate(iLength + static_cast<unsigned int>(encoding.mpTarget - pStart) / sizeof(Element));
    cUCSExceptions::throwUTF16UnmappableCharacter();
  }
}
} // namespace

namespace mucs
{
cEnDecUTF16::cEnDecUTF16(unsigned int iFlags) : miFlags(iFlags) {}

mstd::cAsciiString cEnDecUTF16::name() const
{
  return mstd::cAsciiString("Endec-UTF16");
}

void cEnDecUTF16::encode(cString const& sText, mstd::tArray<char>& aOut) const
{
  appendEncoded(sText, miFlags, aOut);
}

void cEnDecUTF16::encode(cString const& sText, mstd::tArray<unsigned short>& aOut) const
{
  appendEncoded(sText, miFlags, aOut);
}

void cEnDecUTF16::decode(mstd::tConstArrayRef<char> const& rBytes, cString& sOut) const
{
  unsigned int const iSize = rBytes.proxyLength();
  unsigned int const iBlock = rBytes.proxyPreferredBlockSize();
  bool bBig = miFlags & BigEndian;
  bool bOrdered = (miFlags & (LittleEndian | BigEndian)) && !(miFlags & ByteOrderMark);
  unsigned int iPos = 0;
  while (iPos < iSize)
  {
    // A window of four bytes holds any character.
    unsigned int const iLeft = iSize - iPos;
    unsigned int iWindow = iBlock == 0 ? iLeft : iBlock < 4 ? 4 : iBlock;
    iWindow = iWindow < iLeft ? iWindow : iLeft;
    tByte const* pRun = reinterpret_cast<tByte const*>(rBytes.proxyProvideData(iPos, iWindow));
    if (!bOrdered)
    {
      if (iWindow < 2)
      {
        cUCSExceptions::throwUTF16SourceExhausted();
      }
      bBig = isBigEndianMark(pRun);
      bOrdered = true;
      pRun += 2;
      iPos += 2;
      iWindow -= 2;
    }
    iPos += appendRun(pRun, iWindow, bBig, iPos + iWindow == iSize, sOut);
  }
}

void cEnDecUTF16::encodeCString(cString const& sText, mstd::tArray<unsigned short>& aOut) const
{
  encode(sText, aOut);
  unsigned short const iTerminator = 0;
  aOut.append(&iTerminator, 1);
}

void cEnDecUTF16::decodeCString(unsigned short const* pUnits, cString& sOut) const
{
  if (!(pUnits != 0))
  {
    cSTDExceptions::throwAssertionFailed("pUnits != 0", "ucs/cEnDecUTF16", __LINE__);
  }
  bool bBig = miFlags & BigEndian;
  if (pUnits[0] && (!(miFlags & (LittleEndian | BigEndian)) || (miFlags & ByteOrderMark)))
  {
    bBig = isBigEndianMark(reinterpret_cast<tByte const*>(pUnits));
    ++pUnits;
  }
  // Runs of at most this many units, so that a text of any length can be told in bytes; a pair that a run cuts in two
  // is left to the next one.
  unsigned int const iMaxUnits = 0x40000000;
  for (;;)
  {
    unsigned int iUnits = 0;
    while (iUnits < iMaxUnits && pUnits[iUnits])
    {
      ++iUnits;
    }
    if (iUnits == 0)
    {
      return;
    }
    pUnits += appendRun(reinterpret_cast<tByte const*>(pUnits), iUnits * 2, bBig, iUnits < iMaxUnits, sOut) / 2;
  }
}
} // namespace mucs
