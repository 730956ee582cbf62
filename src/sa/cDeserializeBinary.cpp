#include "sa/cDeserializeBinary.h"

#include "sa/cAbstractContextData.h"
#include "sa/cSAExceptions.h"
#include "sa/cSBinaryLoadContextData.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cString.h"

#include <string.h>
#include <typeinfo>

namespace msa
{

namespace
{

typedef cSerializeBinaryShared cIds;

using binary::doubleOf;
using binary::get32;
using binary::getNumber;

unsigned int const IdSize = 4;
unsigned int const MaxPos = 0xFFFFFFFFu;
/// From the id of a length value to the content of a context without a name.
unsigned int const LengthAndFlag = 16;

/// Size of the payload of the ids that have one of a fixed size, 0 for the others.
unsigned char const fixedSizes[] = {0, 0, 1, 1, 4, 4, 8, 8, 4, 8, 0, 0, 0, 0, 0, 0, 0, 2, 2};
unsigned int const LastId = cIds::Int16;

/// `iPos + iCount`, or the largest position, which no data reaches beyond.
unsigned int advance(unsigned int iPos, unsigned long long iCount)
{
  return iCount > MaxPos - iPos ? MaxPos : iPos + static_cast<unsigned int>(iCount);
}

/// Empties the text and keeps its pool.
template <class tString>
void empty(tString& text)
{
  bool const bFit = text.fitOnErase();
  text.setFitOnErase(false);
  text.truncate(0);
  text.setFitOnErase(bFit);
}

/// Whether a fresh string with a text of that length could not be told from this one with that text. Then reading
/// need not make a fresh one.
bool isLikeFresh(mstd::cAsciiString const& text, unsigned int iLength)
{
  return text.capacity() == 32 && iLength <= 32 && text.growStep() == 5 && text.fitOnErase();
}

bool isLikeFresh(mucs::cString const& text, unsigned int iLength)
{
  return text.capacity() - iLength < 4 && text.capacity() % 4 == 0 && text.growStep() == 2 && !text.fitOnErase();
}

bool isContinuation(char c)
{
  return (static_cast<unsigned char>(c) & 0xC0) == 0x80;
}

/// Number of the characters if they all take one to three bytes, as they ought to, which most do; else 0. The decoder
/// refuses a character 0 and takes what is not quite right, so it gets all other texts.
unsigned int countChars(char const* p, unsigned int iSize)
{
  unsigned int iCount = 0;
  for (unsigned int i = 0; i < iSize; ++iCount)
  {
    unsigned int const c = static_cast<unsigned char>(p[i]);
    if (c - 1 < 0x7F)
    {
      ++i;
    }
    else if (c >= 0xC2 && c < 0xE0 && iSize - i >= 2 && isContinuation(p[i + 1]))
    {
      i += 2;
    }
    else if (c > 0xE0 && c < 0xF0 && iSize - i >= 3 && isContinuation(p[i + 1]) && isContinuation(p[i + 2]))
    {
      i += 3;
    }
    else
    {
      return 0;
    }
  }
  return iCount;
}

/// Decodes as many characters as countChars() has found.
void decodeChars(unsigned int* pChars, char const* p, unsigned int iCount)
{
  for (unsigned int i = 0; i < iCount; ++i)
  {
    unsigned int c = static_cast<unsigned char>(*p++);
    if (c >= 0xE0)
    {
      c = (c & 0x0F) << 12 | (p[0] & 0x3Fu) << 6 | (p[1] & 0x3Fu);
      p += 2;
    }
    else if (c >= 0x80)
    {
      c = (c & 0x1F) << 6 | (*p++ & 0x3Fu);
    }
    pChars[i] = c;
  }
}

/// The characters of the wide form. They may be read in place.
void getChars(unsigned int* pChars, char const* p, unsigned int iCount)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  for (unsigned int i = 0; i < iCount; ++i)
  {
    pChars[i] = get32(p + 4 * static_cast<size_t>(i));
  }
#else
  memmove(pChars, p, 4 * static_cast<size_t>(iCount));
#endif
}

} // namespace

/// Takes the position back to where it was unless commit() was called.
class cDeserializeBinary::cPosGuard
{
public:
  explicit cPosGuard(unsigned int& iPos) : mPos(iPos), mStart(iPos), mDone(false) {}
  cPosGuard(cPosGuard const&) = delete;
  cPosGuard& operator=(cPosGuard const&) = delete;
  ~cPosGuard()
  {
    if (!mDone)
    {
      mPos = mStart;
    }
  }
  void commit() { mDone = true; }

private:
  unsigned int& mPos;
  unsigned int const mStart;
  bool mDone;
};

/// What stands in front of the content of a context.
struct cDeserializeBinary::cHeader
{
  unsigned int miId;
  unsigned int miStart;
  unsigned int miLengthPos;
  unsigned int miLength;
  unsigned int miNamePos;    // of its first byte
  unsigned int miNameLength; // 0 if there is no name, too
  unsigned int miContentPos;

  unsigned int end() const { return advance(miLengthPos, miLength); }
  /// A context that ends before its content begins would lead a reader back to where it was.
  void check() const
  {
    if (end() < miContentPos)
    {
      cSAExceptions::throwInvalidTypeId(miId);
    }
  }
};

// ---------------------------------------------------------------------------------------------------------------------

cDeserializeBinary::cDeserializeBinary()
    : cAbstractDeserializer(&mPos), mPos(0), mpContext(nullptr), mpArray(nullptr), mArrayStart(0), mArrayEnd(0),
      mLength(0), mEnd(0)
{
  mLastLabel.setFitOnErase(false);
  setPreferNoLabels(true);
}

cDeserializeBinary::cDeserializeBinary(mstd::tConstArrayRef<char> const& data) : cDeserializeBinary()
{
  setData(data);
}

cDeserializeBinary::cDeserializeBinary(mstd::tAutoPtr<mstd::tArray<char>> pData) : cDeserializeBinary()
{
  mOwner = pData;
  if (mOwner.get() != nullptr)
  {
    setData(*mOwner);
  }
}

cDeserializeBinary::~cDeserializeBinary()
{
  detach();
}

/// Closes all contexts, whose guards may go later.
void cDeserializeBinary::detach()
{
  while (mpContext != nullptr)
  {
    mpContext->close();
  }
}

void cDeserializeBinary::setData(mstd::tConstArrayRef<char> const& data)
{
  detach();
  mData = data;
  mPos = 0;
  mLength = mData.length();
  mArrayStart = 0;
  // An array can be asked for the place of its bytes at any time at no cost, which makes reading fast; anything else
  // is asked for copies of them.
  mstd::tAbstractConstArrayProxy<char> const* const pPhysical = mData.constProxyPhysical(mArrayStart);
  mpArray = nullptr;
  if (pPhysical != nullptr && typeid(*pPhysical) == typeid(mstd::tArray<char>))
  {
    mpArray = static_cast<mstd::tArray<char> const*>(pPhysical);
  }
  mArrayEnd = mArrayStart + mLength;
  updateEnd();
}

void cDeserializeBinary::updateEnd()
{
  unsigned int const iEnd = mpContext != nullptr ? mpContext->end() : MaxPos;
  mEnd = iEnd < mLength ? iEnd : mLength;
}

// --- bytes -----------------------------------------------------------------------------------------------------------

void cDeserializeBinary::checkRange(unsigned int iPos, unsigned long long iSize) const
{
  unsigned int const iCut = iSize > MaxPos ? MaxPos : static_cast<unsigned int>(iSize);
  mstd::tBounds::startSize2End(mLength, iPos, iCut, "tConstArrayRef", "provideData");
}

void cDeserializeBinary::copy(unsigned int iPos, char* pTarget, unsigned int iSize) const
{
  checkRange(iPos, iSize);
  if (iSize == 0)
  {
    return;
  }
  char const* const pBytes = physical();
  if (pBytes != nullptr)
  {
    memcpy(pTarget, pBytes + iPos, iSize);
  }
  else
  {
    mData.proxyCopyPartTo(pTarget, iPos, iSize);
  }
}

inline unsigned long long cDeserializeBinary::numberAt(unsigned int iPos, unsigned int iSize) const
{
  char const* const pBytes = physical();
  if (__builtin_expect(pBytes != nullptr && iPos <= mLength && mLength - iPos >= iSize, 1))
  {
    return getNumber(pBytes + iPos, iSize);
  }
  return numberElsewhere(iPos, iSize);
}

__attribute__((noinline)) unsigned long long cDeserializeBinary::numberElsewhere(unsigned int iPos,
                                                                                 unsigned int iSize) const
{
  char buffer[sizeof(piUInt64)];
  copy(iPos, buffer, iSize);
  return getNumber(buffer, iSize);
}

inline unsigned int cDeserializeBinary::wordAt(unsigned int iPos) const
{
  return static_cast<unsigned int>(numberAt(iPos, sizeof(piUInt32)));
}

void cDeserializeBinary::loadRaw(unsigned int& iPos, char* pTarget, unsigned int iSize) const
{
  copy(iPos, pTarget, iSize);
  iPos += iSize;
}

void cDeserializeBinary::loadRaw(char* pTarget, unsigned int iSize)
{
  loadRaw(mPos, pTarget, iSize);
}

/// Reads count and bytes of a text and moves `iPos` behind them. The settings of `sText` stay, and its pool if it is
/// large enough.
void cDeserializeBinary::textAt(unsigned int& iPos, mstd::cAsciiString& sText) const
{
  unsigned int const iLength = wordAt(iPos);
  unsigned int const iStart = iPos + IdSize;
  checkRange(iStart, iLength);
  char const* const pBytes = physical();
  if (pBytes != nullptr && (iLength <= sText.capacity() || sText.empty()))
  {
    empty(sText);
    sText.append(pBytes + iStart, iLength);
  }
  else
  {
    mstd::cAsciiString other;
    other.setGrowStep(sText.growStep());
    other.setSize(iLength);
    copy(iStart, other.data(true), iLength);
    other.setFitOnErase(sText.fitOnErase());
    sText.swap(other);
  }
  iPos = iStart + iLength;
}

/// The same for the characters of a text in one of its two forms.
void cDeserializeBinary::stringAt(unsigned int& iPos, unsigned int iId, mucs::cString& sText) const
{
  unsigned int const iCount = wordAt(iPos);
  unsigned int const iStart = iPos + IdSize;
  unsigned long long const iSize = iId == cIds::String ? 4ull * iCount : iCount;
  checkRange(iStart, iSize);
  unsigned int const iEnd = iStart + static_cast<unsigned int>(iSize);
  char const* const pBytes = physical();
  unsigned int iChars = iCount; // to be made here; 0 if the decoder has to
  if (iId != cIds::String)
  {
    iChars = pBytes != nullptr ? countChars(pBytes + iStart, iCount) : 0;
  }
  if (iCount == 0)
  {
    empty(sText);
  }
  else if (pBytes != nullptr && iChars != 0 && (iChars <= sText.capacity() || sText.empty()))
  {
    empty(sText);
    unsigned int* const pChars = sText.extend(iChars);
    if (iId == cIds::String)
    {
      getChars(pChars, pBytes + iStart, iChars);
    }
    else
    {
      decodeChars(pChars, pBytes + iStart, iChars);
    }
  }
  else
  {
    mucs::cString other;
    other.setGrowStep(sText.growStep());
    if (iId == cIds::String)
    {
      unsigned int* const pChars = other.extend(iCount);
      copy(iStart, reinterpret_cast<char*>(pChars), static_cast<unsigned int>(iSize));
      getChars(pChars, reinterpret_cast<char*>(pChars), iCount);
    }
    else
    {
      mucs::cEnDecUTF8().decode(mstd::tConstArrayRef<char>(mData, iStart, iCount), other);
    }
    other.setFitOnErase(sText.fitOnErase());
    sText.swap(other);
  }
  iPos = iEnd;
}

// --- ids -------------------------------------------------------------------------------------------------------------

void cDeserializeBinary::throwMissmatch(char const* got, char const* expected) const
{
  cSAExceptions::throwTypeMissmatch(got, expected, mLastLabel);
}

/// Reads the text of a label whose id has been read.
void cDeserializeBinary::passLabel()
{
  unsigned int const iId = nextId();
  if (iId != cIds::AsciiString)
  {
    throwMissmatch(cIds::idToString(static_cast<PrivatedTypeIDs>(iId)), cIds::idToString(cIds::AsciiString));
  }
  textAt(mPos, mLastLabel);
}

/// Reads the next id, of whatever.
unsigned int cDeserializeBinary::nextId()
{
  if (eocMayBeLabels())
  {
    cSAExceptions::throwEndOfContext();
  }
  unsigned int const iId = wordAt(mPos);
  mPos += IdSize;
  return iId;
}

unsigned int cDeserializeBinary::getNextTypeId(PrivatedTypeIDs& eId, bool bSkipLabels)
{
  cPosGuard guard(mPos);
  unsigned int iPos = mPos;
  unsigned int iId = nextId();
  while (iId == cIds::Label && bSkipLabels)
  {
    passLabel();
    iPos = mPos;
    iId = nextId();
  }
  eId = static_cast<PrivatedTypeIDs>(iId);
  guard.commit();
  return iPos;
}

unsigned int cDeserializeBinary::expectTypeId(PrivatedTypeIDs eId)
{
  cPosGuard guard(mPos);
  PrivatedTypeIDs eFound = cIds::Invalid;
  unsigned int const iPos = getNextTypeId(eFound, eId != cIds::Label);
  if (eFound != eId)
  {
    throwMissmatch(cIds::idToString(eFound), cIds::idToString(eId));
  }
  guard.commit();
  return iPos;
}

// --- numbers ---------------------------------------------------------------------------------------------------------

/// With labels in front, or elsewhere than in an array, or not there.
unsigned long long cDeserializeBinary::loadNumberSlow(PrivatedTypeIDs eId, unsigned int iSize)
{
  cPosGuard guard(mPos);
  expectTypeId(eId);
  unsigned long long const iPayload = numberAt(mPos, iSize);
  mPos += iSize;
  guard.commit();
  return iPayload;
}

// --- texts and blocks ------------------------------------------------------------------------------------------------

void cDeserializeBinary::load(mstd::cAsciiString& sValue)
{
  cPosGuard guard(mPos);
  expectTypeId(cIds::AsciiString);
  if (isLikeFresh(sValue, wordAt(mPos)))
  {
    textAt(mPos, sValue);
  }
  else
  {
    mstd::cAsciiString fresh;
    textAt(mPos, fresh);
    sValue.swap(fresh);
  }
  guard.commit();
}

void cDeserializeBinary::load(mucs::cString& sValue)
{
  cPosGuard guard(mPos);
  PrivatedTypeIDs eId = cIds::Invalid;
  getNextTypeId(eId, true);
  if (eId != cIds::String && eId != cIds::StringUTF8)
  {
    throwMissmatch("unicode string", cIds::idToString(eId));
  }
  if (isLikeFresh(sValue, wordAt(mPos)))
  {
    stringAt(mPos, eId, sValue);
  }
  else
  {
    mucs::cString fresh;
    stringAt(mPos, eId, fresh);
    sValue.swap(fresh);
  }
  guard.commit();
}

void cDeserializeBinary::getNextBlockInfo(unsigned int& iDataPos, unsigned long long& iSize)
{
  cPosGuard guard(mPos); // goes back in any case
  PrivatedTypeIDs eId = cIds::Invalid;
  getNextTypeId(eId, true);
  if (eId != cIds::RawBytes && eId != cIds::RawBytes64)
  {
    throwMissmatch("block", cIds::idToString(eId));
  }
  unsigned int const iSizeSize = eId == cIds::RawBytes ? sizeof(piUInt32) : sizeof(piUInt64);
  unsigned long long const iFound = numberAt(mPos, iSizeSize);
  iSize = iFound & 0xFFFFFFFFu;
  iDataPos = mPos + iSizeSize;
}

void cDeserializeBinary::loadBlock(mstd::tArray<char>& data)
{
  unsigned int iDataPos = 0;
  unsigned long long iSize64 = 0;
  getNextBlockInfo(iDataPos, iSize64);
  checkRange(iDataPos, iSize64);
  unsigned int const iSize = static_cast<unsigned int>(iSize64);
  if (iSize <= data.capacity() && physical() != nullptr && &data != mpArray)
  {
    data.setSize(iSize); // has the room, so it can't fail
    copy(iDataPos, data.data(true), iSize);
  }
  else
  {
    mstd::tArray<char> fresh;
    fresh.setGrowStep(data.growStep());
    fresh.setFitOnErase(data.fitOnErase());
    fresh.setSize(iSize);
    copy(iDataPos, fresh.data(true), iSize);
    data.swap(fresh);
  }
  mPos = iDataPos + iSize;
}

// --- contexts --------------------------------------------------------------------------------------------------------

unsigned int cDeserializeBinary::expectContext(unsigned int& iLength, unsigned int& iLengthPos)
{
  cPosGuard guard(mPos);
  PrivatedTypeIDs eId = cIds::Invalid;
  unsigned int const iPos = getNextTypeId(eId, true);
  if (eId != cIds::Context && eId != cIds::Context64)
  {
    throwMissmatch("context", cIds::idToString(eId));
  }
  unsigned int const iFoundPos = mPos;
  iLength = loadLength(eId);
  iLengthPos = iFoundPos;
  guard.commit();
  return iPos;
}

/// Reads the length of a context whose id has been read.
unsigned int cDeserializeBinary::loadLength(unsigned int iId)
{
  if (iId == cIds::Context)
  {
    unsigned int iLength = 0;
    load(iLength);
    return iLength;
  }
  unsigned long long iLength = 0;
  load(iLength);
  return static_cast<unsigned int>(iLength);
}

/// The header of the next context, behind any labels. Moves to the content.
void cDeserializeBinary::readHeader(cHeader& header)
{
  if (tryHeader(header))
  {
    mPos = header.miContentPos;
    return;
  }
  cPosGuard guard(mPos);
  header.miStart = expectContext(header.miLength, header.miLengthPos);
  header.miId = wordAt(header.miStart);
  header.miNameLength = 0;
  bool bNamed = false;
  load(bNamed);
  if (bNamed)
  {
    expectTypeId(cIds::AsciiString);
    header.miNameLength = wordAt(mPos);
    header.miNamePos = mPos + IdSize;
    checkRange(header.miNamePos, header.miNameLength);
    mPos = header.miNamePos + header.miNameLength;
  }
  header.miContentPos = mPos;
  guard.commit();
}

/// The same for a header that is complete, has 32 bits for the length and no labels, which most are. False, without
/// any effect, if it does not look like that.
bool cDeserializeBinary::tryHeader(cHeader& header) const
{
  unsigned int const iHead = IdSize + LengthAndFlag;
  char const* p = physical();
  if (p == nullptr || mPos >= mEnd || mEnd - mPos < iHead)
  {
    return false;
  }
  p += mPos;
  if (get32(p) != cIds::Context || get32(p + 4) != cIds::UInt32 || get32(p + 12) != cIds::Bool)
  {
    return false;
  }
  header.miId = cIds::Context;
  header.miStart = mPos;
  header.miLengthPos = mPos + IdSize;
  header.miLength = get32(p + 8);
  header.miNameLength = 0;
  header.miContentPos = mPos + iHead;
  if (get32(p + 16) == 0)
  {
    return true;
  }
  if (mEnd - mPos < iHead + 2 * IdSize || get32(p + 20) != cIds::AsciiString ||
      get32(p + 24) > mLength - mPos - iHead - 2 * IdSize)
  {
    return false;
  }
  header.miNameLength = get32(p + 24);
  header.miNamePos = header.miContentPos + 2 * IdSize;
  header.miContentPos = header.miNamePos + header.miNameLength;
  return true;
}

/// The name that a header tells; empty without one.
mstd::cAsciiString cDeserializeBinary::nameOf(cHeader const& header) const
{
  mstd::cAsciiString name;
  if (header.miNameLength != 0)
  {
    unsigned int iPos = header.miNamePos - IdSize;
    textAt(iPos, name);
  }
  return name;
}

bool cDeserializeBinary::isNamed(cHeader const& header, char const* pTypeName) const
{
  if (strlen(pTypeName) != header.miNameLength)
  {
    return false;
  }
  char const* const pBytes = physical();
  return pBytes != nullptr && header.miNameLength != 0
             ? memcmp(pBytes + header.miNamePos, pTypeName, header.miNameLength) == 0
             : nameOf(header) == pTypeName;
}

cContextRef cDeserializeBinary::getContext(char const* pTypeName)
{
  cPosGuard guard(mPos);
  cHeader header;
  readHeader(header);
  header.check();
  if (pTypeName != nullptr && !isNamed(header, pTypeName))
  {
    mstd::cAsciiString expected("context ");
    mstd::cAsciiString found(expected);
    expected += pTypeName;
    found += nameOf(header);
    cSAExceptions::throwTypeMissmatch(expected, found, mLastLabel);
  }
  mpContext = new cSBinaryLoadContextData(*this, mpContext, header.miStart, header.miLengthPos, header.miContentPos,
                                          header.miLength);
  updateEnd();
  guard.commit();
  return cContextRef(mpContext);
}

mstd::cAsciiString cDeserializeBinary::getNextContextTypeName()
{
  cPosGuard guard(mPos); // goes back in any case
  cHeader header;
  readHeader(header);
  return nameOf(header);
}

void cDeserializeBinary::releaseCurrentContext()
{
  if (mpContext != nullptr)
  {
    mpContext->release();
    mpContext->close();
  }
}

void cDeserializeBinary::rewind()
{
  mPos = mpContext != nullptr ? mpContext->mContentPos : 0;
}

bool cDeserializeBinary::eoc() const
{
  if (eocMayBeLabels())
  {
    return true;
  }
  return wordAt(mPos) == cIds::Label && onlyLabels();
}

/// Whether there is nothing but labels up to the end of the context.
bool cDeserializeBinary::onlyLabels() const
{
  unsigned int iPos = mPos;
  while (!eocMayBeLabels(iPos))
  {
    if (wordAt(iPos) != cIds::Label)
    {
      return false;
    }
    iPos = advance(iPos, IdSize);
    wordAt(iPos); // the id of the text
    iPos = advance(iPos, IdSize);
    unsigned int const iLength = wordAt(iPos);
    iPos = advance(advance(iPos, IdSize), iLength);
  }
  return true;
}

bool cDeserializeBinary::isContext()
{
  if (eocMayBeLabels())
  {
    return false;
  }
  unsigned int const iId = wordAt(mPos);
  return iId == cIds::Context || iId == cIds::Context64;
}

bool cDeserializeBinary::isLabel()
{
  return !eocMayBeLabels() && wordAt(mPos) == cIds::Label;
}

// --- stepping over values --------------------------------------------------------------------------------------------

void cDeserializeBinary::skipType(PrivatedTypeIDs eId)
{
  cPosGuard guard(mPos);
  skip(eId);
  guard.commit();
}

void cDeserializeBinary::skip(unsigned int iId)
{
  switch (iId)
  {
  case cIds::RawBytes:
  case cIds::AsciiString:
  case cIds::StringUTF8:
    mPos = advance(mPos, 4ull + wordAt(mPos));
    break;
  case cIds::String:
    mPos = advance(mPos, 4ull + 4ull * wordAt(mPos));
    break;
  case cIds::RawBytes64: {
    unsigned long long const iSize = numberAt(mPos, sizeof(piUInt64));
    mPos = advance(advance(mPos, sizeof(piUInt64)), iSize);
    break;
  }
  case cIds::Label:
    wordAt(mPos); // the id of the text
    mPos = advance(mPos, 8ull + wordAt(advance(mPos, IdSize)));
    break;
  case cIds::Context:
  case cIds::Context64:
    skipContext(iId);
    break;
  default:
    if (iId <= LastId)
    {
      mPos = advance(mPos, fixedSizes[iId]);
    }
    break;
  }
}

/// Nothing of the content is looked at; the flag and the name are, as far as they are there.
void cDeserializeBinary::skipContext(unsigned int iId)
{
  cHeader header;
  header.miId = iId;
  header.miLengthPos = mPos;
  header.miLength = loadLength(iId);
  header.miContentPos = advance(mPos, 2ull * IdSize);
  if (header.miContentPos <= mLength && mLength - header.miContentPos >= 2 * IdSize && wordAt(mPos) == cIds::Bool &&
      wordAt(mPos + IdSize) != 0 && wordAt(header.miContentPos) == cIds::AsciiString)
  {
    header.miContentPos = advance(header.miContentPos, 2ull * IdSize + wordAt(header.miContentPos + IdSize));
  }
  header.check();
  mPos = header.end();
}

/// From the position to the end of the context. True if the position is behind the label then.
bool cDeserializeBinary::seekToLabel(mstd::cAsciiString const& sLabel)
{
  while (!eocMayBeLabels())
  {
    skipFixed();
    if (eocMayBeLabels())
    {
      break;
    }
    unsigned int const iId = wordAt(mPos);
    mPos += IdSize;
    if (iId == cIds::Label)
    {
      passLabel();
      if (mLastLabel == sLabel)
      {
        return true;
      }
    }
    else if (iId > LastId)
    {
      cSAExceptions::throwInvalidTypeId(iId);
    }
    else
    {
      skip(iId);
    }
  }
  return false;
}

/// Passes numbers, which streams have most of.
void cDeserializeBinary::skipFixed()
{
  char const* const pBytes = physical();
  if (pBytes == nullptr || mEnd < IdSize)
  {
    return;
  }
  unsigned long long iPos = mPos; // with room for a step beyond the end
  for (unsigned int const iLast = mEnd - IdSize; iPos <= iLast;)
  {
    unsigned int const iId = get32(pBytes + iPos);
    if (iId > LastId || fixedSizes[iId] == 0)
    {
      break;
    }
    iPos += IdSize + fixedSizes[iId];
  }
  mPos = iPos > MaxPos ? MaxPos : static_cast<unsigned int>(iPos);
}

void cDeserializeBinary::trySeekToLabel(mstd::cAsciiString const& sLabel, bool& bFound)
{
  bFound = false;
  cPosGuard guard(mPos);
  bool bHere = seekToLabel(sLabel);
  if (!bHere)
  {
    rewind();
    bHere = seekToLabel(sLabel);
  }
  if (bHere)
  {
    guard.commit();
  }
  bFound = bHere;
}

bool cDeserializeBinary::tryFindLabel(mstd::cAsciiString const& sLabel)
{
  bool bFound = false;
  trySeekToLabel(sLabel, bFound);
  return bFound;
}

cAbstractDeserializer& cDeserializeBinary::findLabel(mstd::cAsciiString const& sLabel)
{
  if (!tryFindLabel(sLabel))
  {
    cSAExceptions::throwLabelNotFound(sLabel);
  }
  return *this;
}

mstd::cAsciiString cDeserializeBinary::getNextLabelName()
{
  cPosGuard guard(mPos); // goes back in any case
  expectTypeId(cIds::Label);
  expectTypeId(cIds::AsciiString);
  mstd::cAsciiString label;
  textAt(mPos, label);
  return label;
}

// --- copying to another serializer -----------------------------------------------------------------------------------

/// One run of reserialize(). Nested contexts are kept in an array and not on the stack, as there may be millions.
class cDeserializeBinary::cCopy
{
public:
  cCopy(cDeserializeBinary& source, cAbstractSerializer& target)
      : mSource(source), mTarget(target), mGuard(source.mPos), mOuterEnd(source.mEnd)
  {
    mLevels.setFitOnErase(false);
    mText.setFitOnErase(false);
    mString.setFitOnErase(false);
    mBlock.setFitOnErase(false);
  }
  cCopy(cCopy const&) = delete;
  cCopy& operator=(cCopy const&) = delete;
  ~cCopy()
  {
    while (!mLevels.empty())
    {
      delete pop().mpTarget; // uncommitted, so the target takes it back
    }
    mSource.mEnd = mOuterEnd;
  }

  void run()
  {
    for (;;)
    {
      if (mSource.mPos < mSource.mEnd)
      {
        copyValue();
      }
      else if (mLevels.empty())
      {
        break;
      }
      else
      {
        leave();
      }
    }
  }

private:
  struct cLevel
  {
    cAbstractContextData* mpTarget; // the open context there, owned
    unsigned int miId;
    unsigned int miOuterEnd;
  };

  cLevel pop()
  {
    cLevel const level = mLevels.at(mLevels.length() - 1);
    mLevels.truncate(mLevels.length() - 1);
    return level;
  }

  void enter(unsigned int iId)
  {
    cHeader header;
    mSource.readHeader(header);
    header.check();
    unsigned int const iEnd = header.end() < mSource.mLength ? header.end() : mSource.mLength;
    if (iEnd > mSource.mEnd)
    {
      // Behind the outer context the copy would go back into this one, and each level would double the work.
      cSAExceptions::throwInvalidTypeId(iId);
    }
    cLevel const level = {nullptr, iId, mSource.mEnd};
    mLevels.append(level);
    char const* pName = nullptr;
    if (header.miNameLength != 0)
    {
      unsigned int iPos = header.miNamePos - IdSize;
      mSource.textAt(iPos, mText);
      pName = mText.c_str();
    }
    cContextRef context(mTarget.newContext(pName));
    mLevels.at(mLevels.length() - 1).mpTarget = context.unguardImpl();
    mSource.mEnd = iEnd;
  }

  void leave()
  {
    cLevel const& last = mLevels.at(mLevels.length() - 1);
    if (mSource.mPos > mSource.mEnd)
    {
      cSAExceptions::throwInvalidTypeId(last.miId); // a value goes on behind its context
    }
    last.mpTarget->release();
    cLevel const level = pop();
    delete level.mpTarget;
    mSource.mPos = mSource.mEnd;
    mSource.mEnd = level.miOuterEnd;
  }

  /// Number of the value at the position. Moves behind it.
  template <unsigned int PayloadSize>
  unsigned long long number()
  {
    unsigned long long const iPayload = mSource.numberAt(mSource.mPos + IdSize, PayloadSize);
    mSource.mPos += IdSize + PayloadSize;
    return iPayload;
  }

  void copyValue()
  {
    unsigned int const iId = mSource.wordAt(mSource.mPos);
    switch (iId)
    {
    case cIds::Invalid:
    case cIds::InvalidEnd:
      mSource.mPos += IdSize;
      break;
    case cIds::RawBytes:
      copyBlock();
      break;
    case cIds::UChar:
      mTarget.store(static_cast<unsigned char>(number<1>()));
      break;
    case cIds::Char:
      mTarget.store(static_cast<signed char>(number<1>()));
      break;
    case cIds::UInt32:
      mTarget.store(static_cast<unsigned int>(number<4>()));
      break;
    case cIds::Int32:
      mTarget.store(static_cast<int>(number<4>()));
      break;
    case cIds::UInt64:
      mTarget.store(number<8>());
      break;
    case cIds::Int64:
      mTarget.store(static_cast<long long>(number<8>()));
      break;
    case cIds::Bool:
      mTarget.store(number<4>() != 0);
      break;
    case cIds::Double:
      mTarget.store(doubleOf(number<8>()));
      break;
    case cIds::UInt16:
      mTarget.store(static_cast<unsigned short>(number<2>()));
      break;
    case cIds::Int16:
      mTarget.store(static_cast<short>(number<2>()));
      break;
    case cIds::AsciiString:
      mSource.mPos += IdSize;
      mSource.textAt(mSource.mPos, mText);
      mTarget.store(mText);
      break;
    case cIds::String:
    case cIds::StringUTF8:
      mSource.mPos += IdSize;
      mSource.stringAt(mSource.mPos, iId, mString);
      mTarget.store(mString);
      break;
    case cIds::Context:
    case cIds::Context64:
      enter(iId);
      break;
    case cIds::Label:
      mSource.mPos += IdSize;
      mSource.passLabel();
      if (!mTarget.noLabelsPreferred())
      {
        mTarget.newLabel(mSource.mLastLabel);
      }
      break;
    default:
      cSAExceptions::throwInvalidTypeId(iId);
    }
  }

  void copyBlock()
  {
    unsigned int const iSize = mSource.wordAt(mSource.mPos + IdSize);
    unsigned int const iDataPos = mSource.mPos + 2 * IdSize;
    mSource.checkRange(iDataPos, iSize);
    char const* pBytes = mSource.physical();
    if (iSize == 0)
    {
      pBytes = nullptr;
    }
    else if (pBytes != nullptr)
    {
      pBytes += iDataPos;
    }
    else
    {
      mBlock.setSize(iSize);
      mSource.copy(iDataPos, mBlock.data(), iSize);
      pBytes = mBlock.data();
    }
    mTarget.storeBlock(pBytes, iSize);
    mSource.mPos = iDataPos + iSize;
  }

  cDeserializeBinary& mSource;
  cAbstractSerializer& mTarget;
  cPosGuard mGuard; // goes back in any case
  unsigned int const mOuterEnd;
  mstd::tArray<cLevel> mLevels;
  mstd::cAsciiString mText; // the buffers are used again and again
  mucs::cString mString;
  mstd::tArray<char> mBlock;
};

void cDeserializeBinary::reserialize(cAbstractSerializer& target)
{
  cCopy copy(*this, target);
  copy.run();
}

} // namespace msa
