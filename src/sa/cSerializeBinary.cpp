#include "sa/cSerializeBinary.h"

#include "pi/piByteOrder.h"
#include "sa/cAbstractTypeReference.h"
#include "sa/cSAExceptions.h"
#include "sa/cSBinaryStoreContextData.h"
#include "std/cAsciiString.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cString.h"

#include <new>

namespace msa
{

namespace
{

typedef cSerializeBinaryShared cIds;

using binary::put32;
using binary::put64;

/// Own buffers grow in sectors of 2^18 bytes.
unsigned int const OwnGrowStep = 18;
unsigned int const MaxLength = 0xFFFFFFFFu;
/// Id and count in front of a text or a block.
unsigned int const TextHead = 8;
/// Id, length and flag of a context.
unsigned int const ContextHead = 20;

char* putBytes(char* p, char const* pBytes, unsigned int iSize)
{
  if (iSize != 0)
  {
    memcpy(p, pBytes, iSize);
  }
  return p + iSize;
}

} // namespace

cSerializeBinary::cSerializeBinary()
    : mPos(0), mWritten(0), mpContext(nullptr), mStringStoreMode(StoreUTF32), mOwn(true)
{
  mOwnData.setGrowStep(OwnGrowStep);
  setPreferNoLabels(true);
}

cSerializeBinary::cSerializeBinary(mstd::tArrayRef<char> const& data)
    : mData(data), mPos(0), mWritten(0), mpContext(nullptr), mStringStoreMode(StoreUTF32), mOwn(false)
{
  setPreferNoLabels(true);
}

cSerializeBinary::~cSerializeBinary()
{
  while (mpContext != nullptr)
  {
    mpContext->close();
  }
}

char* cSerializeBinary::makeRoom(unsigned long long iSize)
{
  if (iSize > MaxLength - mPos)
  {
    cSTDExceptions::throwBadAlloc();
  }
  if (!mOwn)
  {
    return nullptr;
  }
  unsigned int const iLength = mOwnData.length();
  unsigned int const iNeeded = mPos + static_cast<unsigned int>(iSize);
  if (iNeeded > iLength)
  {
    // A buffer that was swapped in may have tiny sectors, so grow by a part of the length at least.
    unsigned int const iAhead = iNeeded / 8 + 256;
    unsigned int const iWanted = iAhead > MaxLength - iNeeded ? iNeeded : iNeeded + iAhead;
    try
    {
      mOwnData.extend(iWanted - iLength);
    }
    catch (std::bad_alloc const&)
    {
      mOwnData.extend(iNeeded - iLength);
    }
    mOwnData.extend(mOwnData.capacity() - mOwnData.length());
  }
  return mOwnData.data(true) + mPos;
}

void cSerializeBinary::storeBytes(char const* pData, unsigned int iSize)
{
  char* const p = makeRoom(iSize);
  if (p != nullptr)
  {
    putBytes(p, pData, iSize);
  }
  else
  {
    storeForeign(pData, iSize);
  }
  mPos += iSize;
}

/// Writes to the caller's array, without moving the position.
void cSerializeBinary::storeForeign(char const* pData, unsigned int iSize)
{
  unsigned int const iLength = mData.length();
  unsigned int const iEnd = mPos + iSize;
  unsigned int iOver = iSize; // bytes over what stands there
  if (iEnd > iLength && mPos <= iLength)
  {
    iOver = iLength - mPos;
    mData.proxyInsert(iLength, pData + iOver, iSize - iOver);
  }
  else if (iEnd > iLength)
  {
    mData.proxyInsertDefaultObjects(iLength, iEnd - iLength);
  }
  if (iOver != 0)
  {
    mData.proxyPatchData(mPos, iOver, pData);
  }
}

void cSerializeBinary::storeRaw(char const* pData, unsigned int iSize)
{
  if (pData == nullptr || iSize == 0)
  {
    return;
  }
  if (isOwn(pData))
  {
    mstd::tArray<char> copy(iSize); // making room may move the buffer, and the bytes may overlap
    memcpy(copy.data(), pData, iSize);
    storeBytes(copy.data(), iSize);
    return;
  }
  storeBytes(pData, iSize);
}

bool cSerializeBinary::isOwn(char const* pData) const
{
  piAddress const iStart = reinterpret_cast<piAddress>(mOwnData.data(true));
  piAddress const iData = reinterpret_cast<piAddress>(pData);
  return iData >= iStart && iData - iStart < mOwnData.length();
}

void cSerializeBinary::storeTypeId(unsigned int iId)
{
  char bytes[sizeof(piUInt32)];
  put32(bytes, iId);
  storeBytes(bytes, sizeof(bytes));
}

/// Id, count, and as many bytes as there are.
void cSerializeBinary::storeText(unsigned int iId, unsigned int iCount, char const* pBytes, unsigned long long iSize)
{
  unsigned long long const iTotal = TextHead + iSize;
  char* p = iTotal <= MaxLength ? room(static_cast<unsigned int>(iTotal)) : nullptr;
  if (p == nullptr)
  {
    p = makeRoom(iTotal);
  }
  if (p != nullptr)
  {
    putBytes(put32(put32(p, iId), iCount), pBytes, static_cast<unsigned int>(iSize));
    mPos += static_cast<unsigned int>(iTotal);
    return;
  }
  char head[TextHead];
  put32(put32(head, iId), iCount);
  cPosGuard guard(*this);
  storeBytes(head, TextHead);
  if (iSize != 0)
  {
    storeBytes(pBytes, static_cast<unsigned int>(iSize));
  }
  guard.commit();
}

void cSerializeBinary::storeBlock(char const* pData, unsigned int iSize)
{
  cPosGuard guard(*this);
  if (iSize == MaxLength)
  {
    char head[sizeof(piUInt32) + sizeof(piUInt64)];
    put64(put32(head, cIds::RawBytes64), iSize);
    storeBytes(head, sizeof(head));
    storeRaw(pData, iSize);
  }
  else if (pData == nullptr || isOwn(pData))
  {
    storeText(cIds::RawBytes, iSize, nullptr, 0);
    storeRaw(pData, iSize);
  }
  else
  {
    storeText(cIds::RawBytes, iSize, pData, iSize);
  }
  guard.commit();
}

void cSerializeBinary::store(mstd::cAsciiString const& sValue)
{
  storeText(cIds::AsciiString, sValue.length(), sValue.c_str(), sValue.length());
}

void cSerializeBinary::store(mucs::cString const& sValue)
{
  if (mStringStoreMode == StoreUTF32)
  {
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    mucs::cString text(sValue);
    for (unsigned int i = 0; i < text.length(); ++i)
    {
      text.at(i) = mpi::platformTypeToLittleEndian32(text.at(i));
    }
#else
    mucs::cString const& text = sValue;
#endif
    storeText(cIds::String, text.length(), reinterpret_cast<char const*>(text.data(true)),
              static_cast<unsigned long long>(text.length()) * sizeof(piUInt32));
  }
  else if (mStringStoreMode == StoreUTF8 && !storeUTF8(sValue))
  {
    mstd::tArray<char> bytes;
    mucs::cEnDecUTF8().encode(sValue, bytes);
    storeText(cIds::StringUTF8, bytes.length(), bytes.data(true), bytes.length());
  }
}

/// The short way for a text whose characters take up to three bytes, which most do, while the buffer has room. False
/// if it does not apply.
bool cSerializeBinary::storeUTF8(mucs::cString const& sValue)
{
  unsigned int const iLength = sValue.length();
  char* const pHead = iLength < MaxLength / 8 ? room(TextHead + 3 * iLength) : nullptr;
  if (pHead == nullptr)
  {
    return false;
  }
  unsigned int const* const pChars = sValue.data(true);
  char* p = pHead + TextHead;
  for (unsigned int i = 0; i < iLength; ++i)
  {
    unsigned int const c = pChars[i];
    if (c >= 0x10000)
    {
      return false;
    }
    if (c < 0x80)
    {
      *p++ = static_cast<char>(c);
      continue;
    }
    if (c < 0x800)
    {
      *p++ = static_cast<char>(0xC0 | c >> 6);
    }
    else
    {
      *p++ = static_cast<char>(0xE0 | c >> 12);
      *p++ = static_cast<char>(0x80 | (c >> 6 & 0x3F));
    }
    *p++ = static_cast<char>(0x80 | (c & 0x3F));
  }
  unsigned int const iSize = static_cast<unsigned int>(p - pHead);
  put32(put32(pHead, cIds::StringUTF8), iSize - TextHead);
  mPos += iSize;
  return true;
}

cAbstractSerializer& cSerializeBinary::newLabel(mstd::cAsciiString const& sLabel)
{
  cPosGuard guard(*this);
  storeTypeId(cIds::Label);
  store(sLabel);
  guard.commit();
  return *this;
}

cContextRef cSerializeBinary::newContext(char const* pTypeName)
{
  unsigned int const iStart = mPos;
  cPosGuard guard(*this);
  char head[ContextHead];
  put32(put32(put32(put32(put32(head, cIds::Context), cIds::UInt32), 0), cIds::Bool), pTypeName != nullptr ? 1 : 0);
  storeHead(head, ContextHead);
  if (pTypeName != nullptr)
  {
    unsigned int const iLength = mstd::cArrayMemory::textLength(pTypeName);
    storeText(cIds::AsciiString, iLength, pTypeName, iLength);
  }
  mpContext = new cSBinaryStoreContextData(*this, mpContext, iStart, mPos);
  guard.commit();
  return cContextRef(mpContext);
}

inline void cSerializeBinary::storeHead(char const* pData, unsigned int iSize)
{
  char* const p = room(iSize);
  if (p == nullptr)
  {
    storeBytes(pData, iSize);
    return;
  }
  memcpy(p, pData, iSize);
  mPos += iSize;
}

/// Writes the length of a context in front of its content. Returns where the context ends.
unsigned int cSerializeBinary::finishContext(cSBinaryStoreContextData const& context)
{
  unsigned int const iEnd = mPos < context.mContentPos ? context.mContentPos : mPos;
  cPosGuard guard(*this);
  setPos(context.mLengthPos);
  store(iEnd - context.mLengthPos);
  setPos(iEnd);
  guard.commit();
  return iEnd;
}

void cSerializeBinary::releaseCurrentContext()
{
  if (mpContext != nullptr)
  {
    mpContext->release();
  }
}

void cSerializeBinary::rewind()
{
  setPos(mpContext != nullptr ? mpContext->mContentPos : 0);
}

void cSerializeBinary::setPos(unsigned int iPos)
{
  if (mPos > mWritten)
  {
    mWritten = mPos;
  }
  mPos = iPos;
}

void cSerializeBinary::clear()
{
  if (mpContext != nullptr)
  {
    cSAExceptions::throwSerializerClearWithOpenContexts();
  }
  if (mOwn)
  {
    mOwnData.clear();
  }
  else if (!mData.empty())
  {
    mData.erase(0, mData.length());
  }
  mPos = 0;
  mWritten = 0;
}

mstd::tArrayRef<char> cSerializeBinary::data()
{
  if (mpContext != nullptr)
  {
    cSAExceptions::throwSerializerDataWithOpenContexts();
  }
  if (mOwn)
  {
    trimOwn();
    return mstd::tArrayRef<char>(mOwnData);
  }
  if (mData.length() > mPos)
  {
    mData.truncate(mPos);
  }
  return mData;
}

/// Cuts the buffer to the position. What ran ahead is given back without a change of the pool.
void cSerializeBinary::trimOwn()
{
  unsigned int const iWritten = mWritten > mPos ? mWritten : mPos;
  if (mOwnData.length() > iWritten)
  {
    bool const bFit = mOwnData.fitOnErase();
    mOwnData.setFitOnErase(false);
    mOwnData.truncate(iWritten);
    mOwnData.setFitOnErase(bFit);
  }
  if (mOwnData.length() > mPos)
  {
    mOwnData.truncate(mPos);
  }
  mWritten = mPos;
}

mstd::tArray<char>& cSerializeBinary::ownData()
{
  data();
  return mOwnData;
}

void cSerializeBinary::swapData(mstd::tArray<char>& data)
{
  this->data();
  mOwnData.swap(data);
  mData.clear();
  mOwn = true;
  mPos = 0;
  mWritten = mOwnData.length();
}

void cSerializeBinary::patch(unsigned int iPos, cAbstractTypeReference& reference)
{
  unsigned int const iBefore = mPos;
  cPosGuard guard(*this);
  unsigned int const iWritten = mWritten > mPos ? mWritten : mPos;
  if (mOwn && iPos > iWritten)
  {
    setPos(iWritten);
    memset(makeRoom(iPos - iWritten), 0, iPos - iWritten);
  }
  setPos(iPos);
  reference.store(*this);
  if (mPos < iBefore)
  {
    setPos(iBefore);
  }
  guard.commit();
}

} // namespace msa
