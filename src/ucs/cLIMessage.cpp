#include "ucs/cLIMessage.h"

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"
#include "std/cArrayMemory.h"
#include "std/cAsciiString.h"
#include "std/cNumberConversionFormat.h"
#include "std/cSTDExceptions.h"
#include "std/tConstArrayRef.h"
#include "std/tList.h"
#include "ucs/cAbstractEnDec.h"
#include "ucs/cLIItem.h"
#include "ucs/cLILocale.h"
#include "ucs/cString.h"

#include <limits>
#include <string.h>

namespace
{
char const cPlainReplacement = '?';
char const cMissingValue[] = "???";

/// Part of a text that a parameter fills.
struct cPlaceholder
{
  unsigned int miStart;   ///< Index of its percent sign.
  unsigned int miNameEnd; ///< Index behind its name.
  unsigned int miNext;    ///< Where the text goes on; a closing percent sign belongs to the placeholder, a blank not.
};

/// Searches for the next placeholder. The character behind a backslash neither opens nor closes one.
template <typename Char>
bool findPlaceholder(Char const* pText, unsigned int iLength, unsigned int iFrom, cPlaceholder& rFound)
{
  unsigned int i = iFrom;
  while (i < iLength && pText[i] != '%')
  {
    i += pText[i] == '\\' && iLength - i > 1 ? 2 : 1;
  }
  if (i >= iLength)
  {
    return false;
  }
  rFound.miStart = i++;
  while (i < iLength && pText[i] != '%' && pText[i] != ' ')
  {
    i += pText[i] == '\\' && iLength - i > 1 ? 2 : 1;
  }
  rFound.miNameEnd = i;
  rFound.miNext = i < iLength && pText[i] == '%' ? i + 1 : i;
  return true;
}

char narrow(unsigned int c)
{
  return c > 0x7F ? cPlainReplacement : static_cast<char>(c);
}

unsigned int widen(char c)
{
  return static_cast<unsigned char>(narrow(static_cast<unsigned char>(c)));
}

unsigned int widen(unsigned int c)
{
  return c;
}

/// Appends the name of a placeholder to `sName`: a backslash is part of it, what the backslash escapes is not.
void appendName(char const* pText, cPlaceholder const& rPlaceholder, mstd::cAsciiString& sName)
{
  for (unsigned int i = rPlaceholder.miStart; i < rPlaceholder.miNameEnd; ++i)
  {
    sName.append(static_cast<char>(widen(pText[i])));
    i += pText[i] == '\\';
  }
}

/// Compares a name with that of a placeholder, read as appendName() reads it.
template <typename Char>
bool hasName(mstd::cAsciiString const& sName, Char const* pText, cPlaceholder const& rPlaceholder)
{
  char const* pName = sName.c_str();
  char const* const pNameEnd = pName + sName.length();
  for (unsigned int i = rPlaceholder.miStart; i < rPlaceholder.miNameEnd; ++i, ++pName)
  {
    if (pName == pNameEnd || *pName != narrow(widen(pText[i])))
    {
      return false;
    }
    i += pText[i] == '\\';
  }
  return pName == pNameEnd;
}

/// Number of characters at the start of a text that are neither a percent sign nor a backslash.
template <typename Char>
unsigned int plainLength(Char const* pText, unsigned int iLength)
{
  unsigned int i = 0;
#if defined(__SSE2__) || defined(__ARM_NEON)
  typedef Char tLanes __attribute__((vector_size(16)));
  typedef unsigned long long tHalves __attribute__((vector_size(16)));
  unsigned int const cLanes = 16 / sizeof(Char);
  for (; iLength - i >= cLanes; i += cLanes)
  {
    tLanes lanes;
    memcpy(&lanes, pText + i, sizeof lanes);
    tHalves const found =
        reinterpret_cast<tHalves>(lanes == Char('%')) | reinterpret_cast<tHalves>(lanes == Char('\\'));
    if ((found[0] | found[1]) != 0)
    {
      break;
    }
  }
#endif
  while (i < iLength && pText[i] != '%' && pText[i] != '\\')
  {
    ++i;
  }
  return i;
}

/// Walks over a text with its placeholders filled, and hands the result to `rSink` in order, piece by piece.
///
/// The values are handed on as they are, so neither a percent sign nor a backslash in a value is taken for one of the
/// text.
template <typename Char, typename Sink>
void substitute(Char const* pText, unsigned int iLength, mstd::tList<mucs::cLIItem> const& aItems, Sink& rSink)
{
  unsigned int i = 0;
  while (i < iLength)
  {
    unsigned int const iPlain = plainLength(pText + i, iLength - i);
    rSink.text(pText + i, iPlain);
    i += iPlain;
    if (i == iLength)
    {
      break;
    }
    if (pText[i] == '\\')
    {
      if (++i < iLength)
      {
        rSink.text(pText + i, 1);
        ++i;
      }
      continue;
    }
    cPlaceholder found = {i, i, iLength};
    findPlaceholder(pText, iLength, i, found); // it starts right here
    i = found.miNext;
    mucs::cLIItem const* pItem = 0;
    for (mucs::cLIItem const& rItem : aItems)
    {
      if (hasName(rItem.name(), pText, found))
      {
        pItem = &rItem;
        break;
      }
    }
    if (pItem == 0)
    {
      rSink.text(cMissingValue, sizeof cMissingValue - 1);
    }
    else if (pItem->kind() <= mucs::cLIItem::Double)
    {
      rSink.value(pItem->value().data(true), pItem->value().length());
    }
  }
}

/// Sink of substitute() that only measures.
class cMeasuringSink
{
public:
  template <typename Char>
  void text(Char const*, unsigned int iLength)
  {
    miLength += iLength;
  }
  void value(unsigned int const*, unsigned int iLength) { miLength += iLength; }

  unsigned int length() const
  {
    if (miLength > std::numeric_limits<unsigned int>::max())
    {
      cSTDExceptions::throwBadAlloc();
    }
    return static_cast<unsigned int>(miLength);
  }

private:
  unsigned long long miLength = 0;
};

unsigned int converted(unsigned int c, unsigned int const*)
{
  return c;
}

char converted(unsigned int c, char const*)
{
  return narrow(c);
}

/// Sink of substitute() that writes to a place with enough room.
template <typename Char>
class tWritingSink
{
public:
  explicit tWritingSink(Char* pTarget) : mpTarget(pTarget) {}

  /// Bytes above 127 of a key read "?".
  template <typename Source>
  void text(Source const* pText, unsigned int iLength)
  {
    for (unsigned int i = 0; i < iLength; ++i)
    {
      mpTarget[i] = converted(widen(pText[i]), mpTarget);
    }
    mpTarget += iLength;
  }
  void value(unsigned int const* pValue, unsigned int iLength)
  {
    for (unsigned int i = 0; i < iLength; ++i)
    {
      mpTarget[i] = converted(pValue[i], mpTarget);
    }
    mpTarget += iLength;
  }

private:
  Char* mpTarget;
};

/// Appends the text with its placeholders filled to the empty string `sOut`.
template <typename Char, typename String>
void fill(Char const* pText, unsigned int iLength, mstd::tList<mucs::cLIItem> const& aItems, String& sOut)
{
  cMeasuringSink measuring;
  substitute(pText, iLength, aItems, measuring);
  if (unsigned int const iResult = measuring.length())
  {
    tWritingSink writing(sOut.extend(iResult));
    substitute(pText, iLength, aItems, writing);
  }
}

bool startsWith(char const* pText, unsigned int iLength, char const* sMarker, unsigned int iMarker)
{
  return iLength >= iMarker && memcmp(pText, sMarker, iMarker) == 0;
}

/// Text that is put together anew and often: a larger sector than other strings, and no trimming.
unsigned int const cTextGrowStep = 3;
} // namespace

namespace mucs
{
class cLIMessage::cImpl
{
public:
  cImpl() { mKey.setFitOnErase(false); }
  explicit cImpl(mstd::cAsciiString const& sKey) : mKey(sKey) {}
  cImpl(cImpl const& rOther)
      : mKey(rOther.mKey), miScanPosition(rOther.miScanPosition), mbTranslatable(rOther.mbTranslatable),
        mItems(rOther.mItems)
  {
    if (rOther.mpNumberFormat)
    {
      mpNumberFormat.reinit(new mstd::cNumberConversionFormat(*rOther.mpNumberFormat));
    }
  }
  cImpl& operator=(cImpl const&) = delete;

  void takeKey(char const* pText, unsigned int iLength)
  {
    static char const sTranslate[] = "$MTR$";
    static char const sKeep[] = "$MNTR$";
    bool bTranslatable = mbTranslatable;
    unsigned int iMarker = 0;
    if (startsWith(pText, iLength, sTranslate, sizeof sTranslate - 1))
    {
      iMarker = sizeof sTranslate - 1;
    }
    else if (startsWith(pText, iLength, sKeep, sizeof sKeep - 1))
    {
      iMarker = sizeof sKeep - 1;
      bTranslatable = false;
    }
    mKey.setFitOnErase(false);
    mKey.append(pText + iMarker, iLength - iMarker);
    mbTranslatable = bTranslatable;
    miScanPosition = 0;
  }

  /// Ties a value to the next placeholder of the key; without one the value is dropped. `fSetValue` puts the text
  /// into an empty string.
  template <typename SetValue>
  void bind(unsigned int iKind, SetValue fSetValue)
  {
    cPlaceholder found;
    if (!findPlaceholder(mKey.c_str(), mKey.length(), miScanPosition, found))
    {
      miScanPosition = mKey.length();
      return;
    }
    tItems::iterator const it = mItems.append(cLIItem());
    try
    {
      appendName(mKey.c_str(), found, it->name());
      fSetValue(it->value());
      it->setKind(iKind);
    }
    catch (...)
    {
      mItems.erase(it);
      throw;
    }
    miScanPosition = found.miNext;
  }

  void merge(cImpl const& rOther)
  {
    mstd::cAsciiString sKey(mKey);
    sKey.append(rOther.mKey.c_str(), rOther.mKey.length());
    tItems aItems(rOther.mItems);
    mItems.append_net(aItems);
    mKey.swap(sKey);
  }

  typedef mstd::tList<cLIItem> tItems;

  mstd::cAsciiString mKey;
  unsigned int miScanPosition = 0;
  bool mbTranslatable = true;
  tItems mItems;
  mstd::tAutoPtr<mstd::cNumberConversionFormat> mpNumberFormat;
};

cLIMessage::cLIMessage() = default;

cLIMessage::cLIMessage(mstd::cAsciiString const& sKey) : mpImpl(new cImpl(sKey)) {}

cLIMessage::cLIMessage(cLIMessage const& mOther) : mpImpl(mOther.mpImpl ? new cImpl(*mOther.mpImpl) : 0) {}

cLIMessage::cLIMessage(cLIMessage&& mOther) noexcept : mpImpl(mOther.mpImpl.release()) {}

cLIMessage::~cLIMessage() = default;

cLIMessage& cLIMessage::operator=(cLIMessage const& mOther)
{
  cLIMessage mCopy(mOther);
  swap(mCopy);
  return *this;
}

cLIMessage& cLIMessage::operator=(cLIMessage&& mOther) noexcept
{
  if (this != &mOther)
  {
    cLIMessage mTaken(static_cast<cLIMessage&&>(mOther));
    swap(mTaken);
  }
  return *this;
}

void cLIMessage::swap(cLIMessage& mOther) noexcept
{
  if (this != &mOther)
  {
    cImpl* const pOwn = mpImpl.release();
    mpImpl.reinit(mOther.mpImpl.release());
    mOther.mpImpl.reinit(pOwn);
  }
}

cLIMessage::cImpl& cLIMessage::impl() const
{
  if (!mpImpl)
  {
    mpImpl.reinit(new cImpl);
  }
  return *mpImpl;
}

cLIMessage& cLIMessage::operator<<(char const* sText)
{
  return addText(sText, mstd::cArrayMemory::textLength(sText));
}

cLIMessage& cLIMessage::operator<<(mstd::cAsciiString const& sText)
{
  return addText(sText.c_str(), sText.length());
}

cLIMessage& cLIMessage::addText(char const* pText, unsigned int iLength)
{
  cImpl& rImpl = impl();
  if (rImpl.mKey.empty())
  {
    rImpl.takeKey(pText, iLength);
  }
  else
  {
    rImpl.bind(cLIItem::Text, [&](cString& sValue) { sValue.appendC(pText, iLength); });
  }
  return *this;
}

cLIMessage& cLIMessage::operator<<(cString const& sText)
{
  impl().bind(cLIItem::Text, [&](cString& sValue) { sValue.append(sText.data(true), sText.length()); });
  return *this;
}

cLIMessage& cLIMessage::addNumber(mstd::cAsciiString const& sNumber, unsigned int iKind)
{
  impl().bind(iKind, [&](cString& sValue) { sValue.appendC(sNumber.c_str(), sNumber.length()); });
  return *this;
}

cLIMessage& cLIMessage::operator<<(int iValue)
{
  return *this << static_cast<long long>(iValue);
}

cLIMessage& cLIMessage::operator<<(unsigned int iValue)
{
  return *this << static_cast<unsigned long long>(iValue);
}

cLIMessage& cLIMessage::operator<<(long long iValue)
{
  mstd::cAsciiString sNumber;
  sNumber.addNum(iValue, numberConversionFormat());
  return addNumber(sNumber, cLIItem::WholeNumber);
}

cLIMessage& cLIMessage::operator<<(unsigned long long iValue)
{
  mstd::cAsciiString sNumber;
  sNumber.addUNum(iValue, numberConversionFormat());
  return addNumber(sNumber, cLIItem::WholeNumber);
}

cLIMessage& cLIMessage::operator<<(double dValue)
{
  mstd::cAsciiString sNumber;
  sNumber.addDouble(dValue, numberConversionFormat());
  return addNumber(sNumber, cLIItem::Double);
}

cLIMessage& cLIMessage::operator<<(mstd::cNumberConversionFormat const& fFormat)
{
  // Made first: the format may be this message's own one.
  mstd::tAutoPtr<mstd::cNumberConversionFormat> pFormat(new mstd::cNumberConversionFormat(fFormat));
  impl().mpNumberFormat = pFormat;
  return *this;
}

mstd::cNumberConversionFormat const& cLIMessage::numberConversionFormat() const
{
  return mpImpl && mpImpl->mpNumberFormat ? *mpImpl->mpNumberFormat
                                          : mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat();
}

mstd::cAsciiString const& cLIMessage::key() const
{
  return impl().mKey;
}

bool cLIMessage::isTranslatable() const
{
  return !mpImpl || mpImpl->mbTranslatable;
}

unsigned int cLIMessage::scanPosition() const
{
  return mpImpl ? mpImpl->miScanPosition : 0;
}

mstd::tList<cLIItem> const& cLIMessage::items() const
{
  return impl().mItems;
}

void cLIMessage::merge(cLIMessage const& mOther)
{
  if (mOther.mpImpl)
  {
    impl().merge(*mOther.mpImpl);
  }
}

void cLIMessage::untranslated(cString& sOut) const
{
  cString sText;
  sText.setGrowStep(cTextGrowStep);
  if (mpImpl)
  {
    fill(mpImpl->mKey.c_str(), mpImpl->mKey.length(), mpImpl->mItems, sText);
  }
  sOut.swap(sText);
}

void cLIMessage::untranslated(mstd::cAsciiString& sOut) const
{
  mstd::cAsciiString sText;
  if (mpImpl)
  {
    fill(mpImpl->mKey.c_str(), mpImpl->mKey.length(), mpImpl->mItems, sText);
  }
  sOut.swap(sText);
}

void cLIMessage::translate(cString const& sText, cString& sOut) const
{
  if (!isTranslatable())
  {
    untranslated(sOut);
    return;
  }
  cString sResult;
  sResult.setGrowStep(cTextGrowStep);
  fill(sText.data(true), sText.length(), impl().mItems, sResult);
  sOut.swap(sResult);
}

// The parameters carry no count: the reader takes what is there up to the end of their context.
msa::cAbstractSerializer& cLIMessage::operator>>(msa::cAbstractSerializer& sSerializer) const
{
  msa::cContext cOuter(sSerializer.newContext(0));
  msa::cContext cInner(sSerializer.newContext(0));
  key() >> sSerializer;
  scanPosition() >> sSerializer;
  isTranslatable() >> sSerializer;
  {
    msa::cContext cItems(sSerializer.newContext(0));
    for (cLIItem const& rItem : items())
    {
      rItem.name() >> sSerializer;
      rItem.value() >> sSerializer;
      rItem.kind() >> sSerializer;
    }
    cItems.release();
  }
  cInner.release();
  cOuter.release();
  return sSerializer;
}

msa::cAbstractDeserializer& cLIMessage::operator<<(msa::cAbstractDeserializer& sDeserializer)
{
  mstd::tAutoPtr<cImpl> pRead(mpImpl ? new cImpl(*mpImpl) : new cImpl); // for the number format, which does not travel
  pRead->mItems.clear();
  msa::cContext cOuter(sDeserializer.getContext(0));
  msa::cContext cInner(sDeserializer.getContext(0));
  pRead->mKey << sDeserializer;
  pRead->mKey.setFitOnErase(false);
  pRead->miScanPosition << sDeserializer;
  pRead->mbTranslatable << sDeserializer;
  {
    msa::cContext cItems(sDeserializer.getContext(0));
    while (!sDeserializer.eoc())
    {
      cLIItem cItem;
      cItem.name() << sDeserializer;
      cItem.value() << sDeserializer;
      unsigned int iKind = 0;
      iKind << sDeserializer;
      cItem.setKind(iKind);
      pRead->mItems.append(cItem);
    }
    cItems.release();
  }
  cInner.release();
  cInner.unset();
  cOuter.release();
  mpImpl = pRead;
  return sDeserializer;
}

mpi::cAbstractOut& operator<<(mpi::cAbstractOut& oOut, cLIMessage const& mMessage)
{
  mpi::cSystem& rSystem = mpi::system();
  cString sText;
  rSystem.locale.translate(mMessage, sText, 0);
  mstd::tArray<char> aBytes;
  rSystem.defaults.enDec.encode(sText, aBytes);
  return oOut << mstd::cAsciiString(mstd::tConstArrayRef<char>(aBytes));
}
} // namespace mucs
