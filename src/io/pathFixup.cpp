#include "io/pathFixup.h"

#include "pi/cSystem.h"
#include "std/cArrayMemory.h"

#include <string.h>

namespace
{

typedef mucs::cString cString;

unsigned int const Slash = '/';
unsigned int const Backslash = '\\';
unsigned int const Dot = '.';

bool isSeparator(unsigned int c)
{
  return c == Slash || c == Backslash;
}

bool endsInSeparator(cString const& sPath)
{
  return !sPath.empty() && isSeparator(sPath.data()[sPath.length() - 1]);
}

enum : unsigned int
{
  BlockLength = 16
};

#if defined(__SSE2__)
typedef int tWords __attribute__((vector_size(16)));
typedef short tHalfs __attribute__((vector_size(16)));
typedef char tBytes __attribute__((vector_size(16)));

tWords wordsAt(unsigned int const* pText)
{
  tWords words;
  memcpy(&words, pText, sizeof(words));
  return words;
}

/// A bit for each of the elements of a block that is `c`, an ASCII character. Packing keeps ASCII apart from the rest,
/// since what does not fit becomes the least or the largest value.
unsigned int placesInBlock(unsigned int const* pText, unsigned int c)
{
  tHalfs const low = __builtin_ia32_packssdw128(wordsAt(pText), wordsAt(pText + 4));
  tHalfs const high = __builtin_ia32_packssdw128(wordsAt(pText + 8), wordsAt(pText + 12));
  tBytes const bytes = reinterpret_cast<tBytes>(__builtin_ia32_packuswb128(low, high));
  char const wanted = static_cast<char>(c);
  tBytes const pattern = {wanted, wanted, wanted, wanted, wanted, wanted, wanted, wanted,
                          wanted, wanted, wanted, wanted, wanted, wanted, wanted, wanted};
  return static_cast<unsigned int>(__builtin_ia32_pmovmskb128(reinterpret_cast<tBytes>(bytes == pattern)));
}
#else
unsigned int placesInBlock(unsigned int const* pText, unsigned int c)
{
  unsigned int places = 0;
  for (unsigned int i = 0; i < BlockLength; ++i)
  {
    places |= static_cast<unsigned int>(pText[i] == c) << i;
  }
  return places;
}
#endif

/// A bit for each element, up to a block of them, from `iStart` on that is `c`.
unsigned int placesOf(unsigned int const* pText, unsigned int iLength, unsigned int iStart, unsigned int c)
{
  unsigned int const iLeft = iLength - iStart;
  if (iLeft >= BlockLength)
  {
    return placesInBlock(pText + iStart, c);
  }
  if (iLength >= BlockLength)
  {
    return placesInBlock(pText + iLength - BlockLength, c) >> (BlockLength - iLeft);
  }
  unsigned int places = 0;
  for (unsigned int i = 0; i < iLeft; ++i)
  {
    places |= static_cast<unsigned int>(pText[iStart + i] == c) << i;
  }
  return places;
}

/// The walk of fixupPath() over a text. The result grows over the part of the text that is already read, which is never
/// shorter.
class cFixup
{
public:
  cFixup(unsigned int* pText, unsigned int iLength, bool relative)
      : mpText(pText), miLength(iLength), miRead(0), miWritten(0), mIsRelative(relative), mIsEscaped(false),
        mIsFirst(true)
  {
  }

  /// Length of the result.
  unsigned int run()
  {
    for (unsigned int block = 0; block < miLength; block += BlockLength)
    {
      for (unsigned int slashes = placesOf(mpText, miLength, block, Slash); slashes != 0; slashes &= slashes - 1)
      {
        if (!takeUpTo(block + static_cast<unsigned int>(__builtin_ctz(slashes))))
        {
          return finish();
        }
      }
      if (miLength - block <= BlockLength)
      {
        break; // the next block may be beyond the last number
      }
    }
    take(miLength);
    return finish();
  }

  bool isEscaped() const { return mIsEscaped; }

private:
  /// Takes the rest of the text up to `iSlash`: all three keys end in a slash, so it holds one word at most and then
  /// one key. False at the end of the walk.
  bool takeUpTo(unsigned int iSlash)
  {
    unsigned int const iBefore = iSlash - miRead;
    if (__builtin_expect(iBefore != 0 && mpText[iSlash - 1] != Dot, 1))
    {
      take(iSlash + 1);
      mIsFirst = false;
      return true;
    }
    if (iBefore == 0)
    {
      if (miWritten == 0 || mpText[miWritten - 1] != Slash)
      {
        mpText[miWritten++] = Slash;
      }
      ++miRead;
      mIsFirst = false;
      return true;
    }
    bool const climbs = iBefore > 1 && mpText[iSlash - 2] == Dot;
    unsigned int const iKey = iSlash - (climbs ? 2 : 1);
    if (iKey != miRead)
    {
      take(iKey);
      mIsFirst = false;
    }
    if (climbs)
    {
      return climb();
    }
    if (mIsFirst)
    {
      take(iSlash + 1);
      mIsFirst = false;
    }
    miRead = iSlash + 1;
    return true;
  }

  /// Takes the key `../`, which is next to be read.
  bool climb()
  {
    unsigned int const iKey = miRead;
    unsigned int iParent = miWritten < 2 ? 0 : miWritten - 1;
    while (iParent != 0 && !isSeparator(mpText[iParent - 1]))
    {
      --iParent;
    }
    if (iParent != 0)
    {
      if (mIsEscaped && isClimb(iParent))
      {
        take(iKey + 3);
      }
      else
      {
        miWritten = iParent;
        miRead = iKey + 3;
      }
      return true;
    }
    if (!mIsRelative)
    {
      return false;
    }
    if (miWritten == 2 && mpText[0] == Dot && mpText[1] == Slash)
    {
      miWritten = 0;
      take(iKey + 3);
      return true;
    }
    if (miWritten != 0 && !isClimb(0))
    {
      miWritten = 0;
      miRead = iKey + 3;
      return true;
    }
    mIsEscaped = true;
    mIsFirst = false;
    take(iKey + 3);
    return true;
  }

  /// Whether the result is `../` from `iStart` to its end.
  bool isClimb(unsigned int iStart) const
  {
    return miWritten - iStart == 3 && mpText[iStart] == Dot && mpText[iStart + 1] == Dot && mpText[iStart + 2] == Slash;
  }

  /// Appends the text up to `iEnd` to the result.
  void take(unsigned int iEnd)
  {
    unsigned int const iCount = iEnd - miRead;
    unsigned int const iGap = miRead - miWritten;
    if (iGap != 0)
    {
      unsigned int const* const pSource = mpText + miRead;
      unsigned int* const pTarget = mpText + miWritten;
      unsigned int const iQuad = 4;
      if (iGap >= iQuad && miLength - iEnd >= iQuad)
      {
        // Words are short: whole quads cost less than a call, and what is too much goes where nothing counts any more.
        for (unsigned int i = 0; i < iCount; i += iQuad)
        {
          memcpy(pTarget + i, pSource + i, iQuad * sizeof(*pSource));
        }
      }
      else
      {
        memmove(pTarget, pSource, iCount * sizeof(*pSource));
      }
    }
    miWritten += iCount;
    miRead = iEnd;
  }

  unsigned int finish()
  {
    if (miWritten == 0)
    {
      // Only a climb empties the result, so there is room.
      mpText[0] = Dot;
      mpText[1] = Slash;
      miWritten = 2;
    }
    return miWritten;
  }

  unsigned int* mpText;
  unsigned int miLength;
  unsigned int miRead;
  unsigned int miWritten;
  bool mIsRelative;
  bool mIsEscaped;
  bool mIsFirst; // no token was taken yet
};

void fixupText(cString& sPath, bool& isEscaped)
{
  if (sPath.empty())
  {
    sPath = "./";
    return;
  }
  cFixup fixup(sPath.data(), sPath.length(), mio::isRelative(sPath));
  unsigned int const iLength = fixup.run();
  isEscaped = fixup.isEscaped();
  sPath.truncate(iLength);
}

/// Appends `sIn` as setPath() wants it, but for the normal form; returns the drive letter.
char appendPath(cString const& sIn, cString& sText)
{
  unsigned int const iLength = sIn.length();
  if (iLength == 0)
  {
    sText.appendC("./", 2);
    return 0;
  }
  char const letter = mio::driveLetter(sIn);
  unsigned int const iPrefix = letter != 0 ? 2 : 0;
  unsigned int const iTaken = iLength - iPrefix;
  unsigned int const* const pIn = sIn.data();
  unsigned int const iSlash = isSeparator(pIn[iLength - 1]) ? 0 : 1;
  unsigned int* const pText = sText.extend(mstd::cArrayMemory::addLengths(iTaken, iSlash));
  memcpy(pText, pIn + iPrefix, iTaken * sizeof(*pIn));
  if (iSlash != 0)
  {
    pText[iTaken] = Slash;
  }
  for (unsigned int block = 0; block < iTaken;)
  {
    for (unsigned int places = placesOf(pText, iTaken, block, Backslash); places != 0; places &= places - 1)
    {
      pText[block + static_cast<unsigned int>(__builtin_ctz(places))] = Slash;
    }
    unsigned int const iLeft = iTaken - block;
    block += iLeft < BlockLength ? iLeft : static_cast<unsigned int>(BlockLength);
  }
  return letter;
}

/// setPath() into an empty string, which holds anything if this fails.
char makePath(cString const& sIn, cString& sEmpty, bool doFixup, mio::tPathHash* pCache)
{
  char const letter = appendPath(sIn, sEmpty);
  if (!doFixup)
  {
    return letter;
  }
  bool isEscaped = false;
  mio::fixupPath(sEmpty, isEscaped, pCache);
  return isEscaped ? '\0' : letter;
}

/// Empties a string again that was to be filled.
class cClearOnFailure
{
public:
  explicit cClearOnFailure(cString& sText) : mpText(&sText) {}
  cClearOnFailure(cClearOnFailure const&) = delete;
  cClearOnFailure& operator=(cClearOnFailure const&) = delete;
  ~cClearOnFailure()
  {
    if (mpText != nullptr)
    {
      mpText->clear();
    }
  }
  void release() { mpText = nullptr; }

private:
  cString* mpText;
};

void store(mio::tPathHash& rTable, cString const& sKey, cString const& sValue)
{
  cString value(sValue);
  rTable[sKey].swap(value);
}

/// Takes a text over without an allocation where it fits.
void assign(cString& sTarget, cString const& sSource)
{
  unsigned int const iLength = sSource.length();
  if (iLength > sTarget.length())
  {
    cString copy(sSource);
    sTarget.swap(copy);
    return;
  }
  sTarget.truncate(iLength);
  if (iLength != 0)
  {
    memmove(sTarget.data(), sSource.data(), iLength * sizeof(unsigned int));
  }
}

} // namespace

namespace mio
{

char driveLetter(mucs::cString const& sPath)
{
  if (sPath.length() < 2)
  {
    return 0;
  }
  unsigned int const* const pPath = sPath.data();
  unsigned int const iLetter = mucs::cString::upperCase(pPath[0]);
  return pPath[1] == ':' && iLetter >= 'A' && iLetter <= 'Z' ? static_cast<char>(iLetter) : '\0';
}

bool isRelative(mucs::cString const& sPath)
{
  return sPath.empty() || (sPath.data()[0] != Slash && driveLetter(sPath) == 0);
}

unsigned int pathComponentLength(mucs::cString const& sPath)
{
  unsigned int const iLength = sPath.length();
  unsigned int const iPrefix = driveLetter(sPath) != 0 ? 2 : 0;
  unsigned int const* const pPath = sPath.data(true);
  unsigned int iName = iLength;
  while (iName > iPrefix && !isSeparator(pPath[iName - 1]))
  {
    --iName;
  }
  unsigned int const iNameLength = iLength - iName;
  bool const isDirectory =
      (iNameLength == 1 && pPath[iName] == Dot) || (iNameLength == 2 && pPath[iName] == Dot && pPath[iName + 1] == Dot);
  return isDirectory ? iLength : iName;
}

void storePathComponent(mucs::cString const& sIn, mucs::cString& sOut)
{
  mucs::cString result;
  unsigned int const iLength = pathComponentLength(sIn);
  if (iLength != 0)
  {
    result.append(sIn.data(), iLength);
    if (!endsInSeparator(result))
    {
      result.append(Slash);
    }
  }
  sOut.swap(result);
}

char setPath(mucs::cString const& sIn, mucs::cString& sOut, bool doFixup, tPathHash* pCache)
{
  if (sOut.capacity() == 0)
  {
    cClearOnFailure guard(sOut);
    char const letter = makePath(sIn, sOut, doFixup, pCache);
    guard.release();
    return letter;
  }
  mucs::cString text;
  char const letter = makePath(sIn, text, doFixup, pCache);
  sOut.swap(text);
  return letter;
}

void fixupPath(mucs::cString& sPath, bool& isEscaped, tPathHash* pCache)
{
  tPathHash* const pTable = mpi::system().caches.hasPathFixupHash();
  if (pTable != nullptr)
  {
    mucs::cString const* const pKnown = pTable->has(sPath);
    if (__builtin_expect(pKnown != nullptr, 1))
    {
      assign(sPath, *pKnown);
      isEscaped = false;
      return;
    }
  }
  // Shortening any other string may need memory.
  bool const isPlain = !sPath.fitOnErase() && sPath.growStep() <= 2;
  bool escaped = false;
  if (pTable == nullptr && pCache == nullptr && isPlain)
  {
    fixupText(sPath, escaped); // cannot fail, for the text never grows
    isEscaped = escaped;
    return;
  }
  mucs::cString result(sPath);
  fixupText(result, escaped);
  if (pTable != nullptr)
  {
    store(*pTable, sPath, result);
  }
  if (pCache != nullptr && pCache != pTable)
  {
    store(*pCache, sPath, result);
  }
  sPath.swap(result);
  isEscaped = escaped;
}

} // namespace mio
