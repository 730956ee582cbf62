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

/// driveLetter() within this file, where it costs no call.
char letterOf(unsigned int const* pText, unsigned int iLength)
{
  if (iLength < 2 || pText[1] != ':')
  {
    return 0;
  }
  unsigned int const iUpper = pText[0] & ~0x20u;
  return iUpper >= 'A' && iUpper <= 'Z' ? static_cast<char>(iUpper) : '\0';
}

bool isRelativeText(unsigned int const* pText, unsigned int iLength)
{
  return iLength == 0 || (pText[0] != Slash && letterOf(pText, iLength) == 0);
}

enum : unsigned int
{
  QuadLength = 4,
  BlockLength = 16
};

// placesInQuad() and placesInBlock(): a bit for each element that is `a` or `b`, two ASCII characters.
#if defined(__SSE2__)
typedef int tWords __attribute__((vector_size(16)));
typedef float tLanes __attribute__((vector_size(16)));
typedef short tHalfs __attribute__((vector_size(16)));
typedef char tBytes __attribute__((vector_size(16)));

tWords wordsAt(unsigned int const* pText)
{
  tWords words;
  memcpy(&words, pText, sizeof(words));
  return words;
}

tBytes bytesOf(char c)
{
  return tBytes{c, c, c, c, c, c, c, c, c, c, c, c, c, c, c, c};
}

inline unsigned int placesInQuad(unsigned int const* pText, char a, char b)
{
  tWords const words = wordsAt(pText);
  tWords const both = (words == static_cast<int>(a)) | (words == static_cast<int>(b));
  return static_cast<unsigned int>(__builtin_ia32_movmskps(reinterpret_cast<tLanes>(both)));
}

// Packing keeps ASCII apart from the rest, since what does not fit becomes the least or the largest value.
inline unsigned int placesInBlock(unsigned int const* pText, char a, char b)
{
  tHalfs const low = __builtin_ia32_packssdw128(wordsAt(pText), wordsAt(pText + 4));
  tHalfs const high = __builtin_ia32_packssdw128(wordsAt(pText + 8), wordsAt(pText + 12));
  tBytes const bytes = reinterpret_cast<tBytes>(__builtin_ia32_packuswb128(low, high));
  tBytes const both = reinterpret_cast<tBytes>((bytes == bytesOf(a)) | (bytes == bytesOf(b)));
  return static_cast<unsigned int>(__builtin_ia32_pmovmskb128(both));
}
#else
template <unsigned int Length>
unsigned int placesIn(unsigned int const* pText, char a, char b)
{
  unsigned int places = 0;
  for (unsigned int i = 0; i < Length; ++i)
  {
    places |=
        static_cast<unsigned int>(pText[i] == static_cast<unsigned int>(a) || pText[i] == static_cast<unsigned int>(b))
        << i;
  }
  return places;
}

unsigned int placesInQuad(unsigned int const* pText, char a, char b)
{
  return placesIn<QuadLength>(pText, a, b);
}

unsigned int placesInBlock(unsigned int const* pText, char a, char b)
{
  return placesIn<BlockLength>(pText, a, b);
}
#endif

/// A bit for each element, up to a block of them, from `iStart` on that is `a` or `b`.
unsigned int placesOf(unsigned int const* pText, unsigned int iLength, unsigned int iStart, char a, char b)
{
  unsigned int const iLeft = iLength - iStart;
  if (iLeft >= BlockLength)
  {
    return placesInBlock(pText + iStart, a, b);
  }
  if (iLength >= BlockLength)
  {
    return placesInBlock(pText + iLength - BlockLength, a, b) >> (BlockLength - iLeft);
  }
  unsigned int places = 0;
  if (iLeft >= QuadLength)
  {
    for (unsigned int i = 0; i < iLeft - QuadLength; i += QuadLength)
    {
      places |= placesInQuad(pText + i, a, b) << i;
    }
    return places | placesInQuad(pText + iLeft - QuadLength, a, b) << (iLeft - QuadLength);
  }
  for (unsigned int i = 0; i < iLeft; ++i)
  {
    bool const stands = pText[i] == static_cast<unsigned int>(a) || pText[i] == static_cast<unsigned int>(b);
    places |= static_cast<unsigned int>(stands) << i;
  }
  return places;
}

// The whole walk is one function, so that its state stays in registers.
#define MORTISE_WALK __attribute__((always_inline)) inline

/// The walk that brings a text to its normal form. The result never is longer than what is already read, so that it may
/// stand in the place of the text. In another place it needs room for one element more than the text has.
///
/// `InPlace` takes `/` alone for a slash. Otherwise `\` counts as one, too, and there is one at the end of the text in
/// any case.
template <bool InPlace>
class cFixup
{
public:
  cFixup(unsigned int const* pSource, unsigned int iLength, unsigned int* pTarget, bool relative)
      : mpSource(pSource), mpText(pTarget), miLength(iLength), miRead(0), miWritten(0), mIsRelative(relative),
        mIsEscaped(false), mIsFirst(true)
  {
  }

  /// Length of the result.
  MORTISE_WALK unsigned int run()
  {
    unsigned int block = 0;
    while (block < miLength)
    {
      unsigned int slashes = placesOf(mpSource, miLength, block, '/', InPlace ? '/' : '\\');
      for (; slashes != 0; slashes &= slashes - 1)
      {
        if (!takeUpTo(block + static_cast<unsigned int>(__builtin_ctz(slashes))))
        {
          return finish();
        }
      }
      unsigned int const iLeft = miLength - block;
      block += iLeft < BlockLength ? iLeft : static_cast<unsigned int>(BlockLength);
    }
    if (InPlace)
    {
      takeWord(miLength);
    }
    else if (miLength == 0 || miRead != miLength)
    {
      takeUpTo(miLength); // as if a slash stood there
    }
    return finish();
  }

  bool isEscaped() const { return mIsEscaped; }

private:
  /// Takes the rest of the text up to `iSlash`: all three keys end in a slash, so it holds one word at most and then
  /// one key. False at the end of the walk.
  MORTISE_WALK bool takeUpTo(unsigned int iSlash)
  {
    unsigned int const iBefore = iSlash - miRead;
    if (__builtin_expect(iBefore != 0 && mpSource[iSlash - 1] != Dot, 1))
    {
      takeWord(iSlash);
      mpText[miWritten++] = Slash;
      miRead = iSlash + 1;
      mIsFirst = false;
      return true;
    }
    if (iBefore == 0)
    {
      if (miWritten == 0 || mpText[miWritten - 1] != Slash)
      {
        mpText[miWritten++] = Slash;
      }
      miRead = iSlash + 1;
      mIsFirst = false;
      return true;
    }
    bool const climbs = iBefore > 1 && mpSource[iSlash - 2] == Dot;
    unsigned int const iKey = iSlash - (climbs ? 2 : 1);
    if (iKey != miRead)
    {
      takeWord(iKey);
      mIsFirst = false;
    }
    miRead = iSlash + 1;
    if (climbs)
    {
      return climb();
    }
    if (mIsFirst)
    {
      mpText[0] = Dot;
      mpText[1] = Slash;
      miWritten = 2;
      mIsFirst = false;
    }
    return true;
  }

  /// Does what the key `../` asks for. False at the end of the walk.
  MORTISE_WALK bool climb()
  {
    unsigned int iParent = miWritten < 2 ? 0 : miWritten - 1;
    while (iParent != 0 && !isSeparator(mpText[iParent - 1]))
    {
      --iParent;
    }
    if (iParent != 0)
    {
      if (mIsEscaped && isClimb(iParent))
      {
        appendClimb();
      }
      else
      {
        miWritten = iParent;
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
      appendClimb();
      return true;
    }
    if (miWritten != 0 && !isClimb(0))
    {
      miWritten = 0;
      return true;
    }
    mIsEscaped = true;
    mIsFirst = false;
    appendClimb();
    return true;
  }

  /// Whether the result is `../` from `iStart` to its end.
  MORTISE_WALK bool isClimb(unsigned int iStart) const
  {
    return miWritten - iStart == 3 && mpText[iStart] == Dot && mpText[iStart + 1] == Dot && mpText[iStart + 2] == Slash;
  }

  MORTISE_WALK void appendClimb()
  {
    mpText[miWritten] = Dot;
    mpText[miWritten + 1] = Dot;
    mpText[miWritten + 2] = Slash;
    miWritten += 3;
  }

  /// Appends the text up to `iEnd`, which holds no key, to the result.
  MORTISE_WALK void takeWord(unsigned int iEnd)
  {
    unsigned int const iCount = iEnd - miRead;
    unsigned int const iGap = miRead - miWritten;
    if (!InPlace || iGap != 0)
    {
      unsigned int const* const pSource = mpSource + miRead;
      unsigned int* const pTarget = mpText + miWritten;
      if ((!InPlace || iGap >= QuadLength) && miLength - iEnd >= QuadLength)
      {
        // Words are short: whole quads cost less than a call, and what is too much goes where nothing counts any more.
        for (unsigned int i = 0; i < iCount; i += QuadLength)
        {
          memcpy(pTarget + i, pSource + i, QuadLength * sizeof(*pSource));
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

  MORTISE_WALK unsigned int finish()
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

  unsigned int const* mpSource;
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
  unsigned int const iLength = sPath.length();
  if (iLength == 0)
  {
    sPath = "./";
    return;
  }
  unsigned int* const pText = sPath.data();
  cFixup<true> fixup(pText, iLength, pText, isRelativeText(pText, iLength));
  unsigned int const iNewLength = fixup.run();
  isEscaped = fixup.isEscaped();
  sPath.truncate(iNewLength);
}

/// A text as setPath() sees it, behind its drive letter and as if it ended in a slash.
class cRawPath
{
public:
  explicit cRawPath(cString const& sPath) : mpText(sPath.data(true)), miLength(sPath.length()), mLetter(0)
  {
    mLetter = letterOf(mpText, miLength);
    if (mLetter != 0)
    {
      mpText += 2;
      miLength -= 2;
    }
  }

  char letter() const { return mLetter; }

  /// Appends the text to an empty string.
  void storeTo(cString& sText) const
  {
    if (isNothing())
    {
      sText.appendC("./", 2);
      return;
    }
    unsigned int const iSlash = hasEnd() ? 0 : 1;
    unsigned int* const pText = sText.extend(mstd::cArrayMemory::addLengths(miLength, iSlash));
    if (miLength != 0)
    {
      memcpy(pText, mpText, miLength * sizeof(*pText));
    }
    if (iSlash != 0)
    {
      pText[miLength] = Slash;
    }
    for (unsigned int block = 0; block < miLength;)
    {
      unsigned int places = placesOf(mpText, miLength, block, '\\', '\\');
      for (; places != 0; places &= places - 1)
      {
        pText[block + static_cast<unsigned int>(__builtin_ctz(places))] = Slash;
      }
      unsigned int const iLeft = miLength - block;
      block += iLeft < BlockLength ? iLeft : static_cast<unsigned int>(BlockLength);
    }
  }

  /// Appends the normal form to an empty string.
  void fixupTo(cString& sText, bool& isEscaped) const
  {
    if (isNothing())
    {
      sText.appendC("./", 2);
      return;
    }
    bool const isRelative = miLength != 0 && !isSeparator(mpText[0]) && letterOf(mpText, miLength) == 0;
    unsigned int* const pText = sText.extend(mstd::cArrayMemory::addLengths(miLength, 1));
    cFixup<false> fixup(mpText, miLength, pText, isRelative);
    unsigned int const iLength = fixup.run();
    isEscaped = fixup.isEscaped();
    sText.truncate(iLength);
  }

private:
  bool isNothing() const { return miLength == 0 && mLetter == 0; }
  bool hasEnd() const { return miLength != 0 && isSeparator(mpText[miLength - 1]); }

  unsigned int const* mpText;
  unsigned int miLength;
  char mLetter;
};

/// setPath() into an empty string with its own settings, which holds anything if this fails.
char makePath(cString const& sIn, cString& sEmpty, bool doFixup, mio::tPathHash* pCache)
{
  cRawPath const raw(sIn);
  if (!doFixup)
  {
    raw.storeTo(sEmpty);
    return raw.letter();
  }
  bool isEscaped = false;
  if (pCache == nullptr && mpi::system().caches.hasPathFixupHash() == nullptr)
  {
    raw.fixupTo(sEmpty, isEscaped);
  }
  else
  {
    raw.storeTo(sEmpty);
    mio::fixupPath(sEmpty, isEscaped, pCache);
  }
  return isEscaped ? '\0' : raw.letter();
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
  return letterOf(sPath.data(true), sPath.length());
}

bool isRelative(mucs::cString const& sPath)
{
  return isRelativeText(sPath.data(true), sPath.length());
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
