#include "ucs/cLILocale.h"

#include "io/pathFixup.h"
#include "rmi/cConnectable.h"
#include "rmi/cDirectLocalSlotCall0.h"
#include "std/cSTDExceptions.h"
#include "ucs/cAbstractLIFileSource.h"
#include "ucs/cLIMessage.h"
#include "ucs/cLIScanner.h"
#include "ucs/cLISystemFiles.h"
#include "ucs/cUCSExceptions.h"

#include <utility>

namespace mucs
{
/// Connection of a locale with its parent. It stands in a list of the parent, which takes it away when it goes.
class cLILocale::cLocaleLink : public mrmi::cConnectable
{
public:
  cLocaleLink(cLILocale& lParent, cLILocale& lLocale) : mpParent(&lParent), mpLocale(&lLocale)
  {
    lParent.sigChanged.connect(mrmi::cDirectLocalSlotCall0(this, &cLocaleLink::sltParentChanged));
    mpPrevious = 0;
    mpNext = lParent.mpFirstChild;
    if (mpNext != 0)
    {
      mpNext->mpPrevious = this;
    }
    lParent.mpFirstChild = this;
  }

  ~cLocaleLink() override
  {
    (mpPrevious != 0 ? mpPrevious->mpNext : mpParent->mpFirstChild) = mpNext;
    if (mpNext != 0)
    {
      mpNext->mpPrevious = mpPrevious;
    }
  }

  cLILocale& parent() const { return *mpParent; }
  cLILocale& locale() const { return *mpLocale; }
  void setLocale(cLILocale& lLocale) { mpLocale = &lLocale; }

  void sltParentChanged() { mpLocale->sigChanged(); }

private:
  cLILocale* mpParent; // not owned
  cLILocale* mpLocale; // the owner
  cLocaleLink* mpPrevious;
  cLocaleLink* mpNext;
};

/// Reader of a locale file and all files that it names.
class cLILocale::cParser
{
public:
  cParser(cLILocale& lTarget, cAbstractLIFileSource& sSource)
      : mTarget(lTarget), mSource(sSource), miDepth(0), miFiles(0)
  {
  }

  void parse(cString const& sFile)
  {
    if (miDepth > MaxIncludeDepth)
    {
      cUCSExceptions::throwIncludeDepthExceeded();
    }
    mstd::tArray<char> aBytes;
    readFile(sFile, aBytes);
    cLIScanner scanner(aBytes, cLIScanner::LocaleFile);
    ++miDepth; // not taken back by a failure, which ends the whole loading
    cLIScanner::Token eToken = cLIScanner::Word;
    while (scanner.next(eToken))
    {
      parseStatement(eToken, scanner, sFile);
    }
    --miDepth;
  }

private:
  void parseStatement(cLIScanner::Token eToken, cLIScanner& rScanner, cString const& sFile)
  {
    switch (eToken)
    {
    case cLIScanner::Quote: {
      cString sKey;
      cString sText;
      readString(rScanner, sKey);
      readAssignedValue(rScanner, sFile, sText);
      mTarget.mTable.addTranslation(mstd::tAutoPtr<cLITrItem>(new cLITrItem(sKey.ascii('?'), std::move(sText))));
      break;
    }
    case cLIScanner::Name:
      readAssignedValue(rScanner, sFile, mTarget.mName);
      break;
    case cLIScanner::Flag: {
      cString sFlag;
      readAssignedValue(rScanner, sFile, sFlag);
      mTarget.mFlag = besides(sFile, sFlag);
      break;
    }
    case cLIScanner::Include: {
      cString sIncluded;
      readValue(rScanner, sFile, sIncluded);
      checkFileName(sIncluded);
      parse(besides(sFile, sIncluded));
      break;
    }
    default:
      break;
    }
  }

  void readAssignedValue(cLIScanner& rScanner, cString const& sFile, cString& sValue)
  {
    if (!rScanner.expect(cLIScanner::Equals))
    {
      cUCSExceptions::throwEqualsExpected();
    }
    readValue(rScanner, sFile, sValue);
  }

  /// A string, or the content of a file.
  void readValue(cLIScanner& rScanner, cString const& sFile, cString& sValue)
  {
    cLIScanner::Token eToken = cLIScanner::Word;
    bool const isThere = rScanner.next(eToken);
    if (isThere && eToken == cLIScanner::Quote)
    {
      readString(rScanner, sValue);
    }
    else if (isThere && eToken == cLIScanner::Word && rScanner.isWord("fromFile"))
    {
      readStringFromFile(rScanner, sFile, sValue);
    }
    else
    {
      cUCSExceptions::throwQuoteExpected();
    }
  }

  void readStringFromFile(cLIScanner& rScanner, cString const& sFile, cString& sValue)
  {
    if (!rScanner.expect(cLIScanner::OpeningParenthesis))
    {
      cUCSExceptions::throwOpeningParenthesisExpected();
    }
    if (!rScanner.expect(cLIScanner::Quote))
    {
      cUCSExceptions::throwQuoteExpected();
    }
    cString sName;
    readString(rScanner, sName);
    checkFileName(sName);
    if (!rScanner.expect(cLIScanner::ClosingParenthesis))
    {
      cUCSExceptions::throwClosingParenthesisExpected();
    }
    mstd::tArray<char> aBytes;
    readFile(besides(sFile, sName), aBytes);
    sValue.fromUTF8(mstd::tConstArrayRef<char>(aBytes));
  }

  static void readString(cLIScanner& rScanner, cString& sText)
  {
    if (!rScanner.readString(sText))
    {
      cUCSExceptions::throwQuoteExpected();
    }
  }

  static void checkFileName(cString const& sName)
  {
    if (sName.empty())
    {
      cUCSExceptions::throwFileNameExpected();
    }
  }

  /// A file that stands in the directory of another one.
  static cString besides(cString const& sFile, cString const& sName)
  {
    if (!mio::isRelative(sName))
    {
      return sName;
    }
    cString sPath;
    mio::storePathComponent(sFile, sPath);
    sPath += sName;
    return sPath;
  }

  void readFile(cString const& sFile, mstd::tArray<char>& aBytes)
  {
    if (miFiles > MaxIncludedFiles)
    {
      cUCSExceptions::throwTooManyIncludedFiles(MaxIncludedFiles);
    }
    ++miFiles;
    mSource.read(sFile, aBytes);
  }

  cLILocale& mTarget;
  cAbstractLIFileSource& mSource;
  unsigned int miDepth;
  unsigned int miFiles; // the top one counts
};

cLILocale::cLILocale(char const* sDebugName) : mDebugName(sDebugName), mpFirstChild(0)
{
  sigChanged.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cLILocale::~cLILocale()
{
  while (mpFirstChild != 0)
  {
    mpFirstChild->locale().mpLink.reinit(0);
  }
}

bool cLILocale::translate(cLIMessage const& mMessage, cString& sOut, cLILocale const* pRequester) const
{
  cLILocale const* pLocale = this;
  cLITrItem const* pItem = mTable.hasTranslation(mMessage.key());
  while (pItem == 0 && pLocale->mpLink)
  {
    pLocale = &pLocale->mpLink->parent();
    pItem = pLocale->mTable.hasTranslation(mMessage.key());
  }
  if (pItem != 0)
  {
    mMessage.translate(pItem->translation(), sOut);
    return true;
  }
  mMessage.untranslated(sOut);
  if (pLocale->mpSigMissingTranslation)
  {
    (*pLocale->mpSigMissingTranslation)(pRequester != 0 ? *pRequester : *this, mMessage);
  }
  return false;
}

bool cLILocale::translate(mstd::cAsciiString const& sKey, cString& sOut, cLILocale const* pRequester) const
{
  return translate(cLIMessage(sKey), sOut, pRequester);
}

cString cLILocale::translate(cLIMessage const& mMessage) const
{
  cString sText;
  translate(mMessage, sText, 0);
  return sText;
}

cString cLILocale::translate(mstd::cAsciiString const& sKey) const
{
  return translate(cLIMessage(sKey));
}

bool cLILocale::isBelow(cLILocale const& lOther) const
{
  cLILocale const* pLocale = this;
  while (pLocale != 0 && pLocale != &lOther)
  {
    pLocale = pLocale->parent();
  }
  return pLocale != 0;
}

void cLILocale::link(cLILocale* pParent)
{
  if (pParent == 0)
  {
    mpLink.reinit(0);
    return;
  }
  if (pParent->isBelow(*this))
  {
    cSTDExceptions::throwAssertionFailed("!pParent->isBelow(*this)", "ucs/cLILocale", __LINE__);
  }
  mpLink.reinit(new cLocaleLink(*pParent, *this));
}

cLILocale* cLILocale::parent() const
{
  return mpLink ? &mpLink->parent() : 0;
}

void cLILocale::exchangeLanguage(cLILocale& lOther) noexcept
{
  mName.swap(lOther.mName);
  mFlag.swap(lOther.mFlag);
  mTable.swap(lOther.mTable);
  mFileName.swap(lOther.mFileName);
}

void cLILocale::swap(cLILocale& lOther)
{
  if (this == &lOther)
  {
    return;
  }
  if (isBelow(lOther) || lOther.isBelow(*this))
  {
    cSTDExceptions::throwAssertionFailed("!isBelow(lOther) && !lOther.isBelow(*this)", "ucs/cLILocale", __LINE__);
  }
  exchangeLanguage(lOther);
  cLocaleLink* const pLink = mpLink.release();
  mpLink.reinit(lOther.mpLink.release());
  lOther.mpLink.reinit(pLink);
  if (mpLink)
  {
    mpLink->setLocale(*this);
  }
  if (lOther.mpLink)
  {
    lOther.mpLink->setLocale(lOther);
  }
}

void cLILocale::clear()
{
  {
    cLILocale lEmpty(0);
    exchangeLanguage(lEmpty);
  }
  sigChanged();
}

void cLILocale::loadFromFile(cString const& sFile)
{
  cLISystemFiles files;
  loadFromFile(sFile, files);
}

void cLILocale::loadFromFile(cString const& sFile, cAbstractLIFileSource& sSource)
{
  {
    cLILocale lRead(0);
    cParser(lRead, sSource).parse(sFile);
    lRead.mFileName = sFile;
    exchangeLanguage(lRead);
  }
  sigChanged();
}

cLILocale::tTranslateSignal& cLILocale::sigTranslate()
{
  if (!mpSigTranslate)
  {
    mpSigTranslate.reinit(new tTranslateSignal);
    mpSigTranslate->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  }
  return *mpSigTranslate;
}

cLILocale::tMissingTranslationSignal& cLILocale::sigMissingTranslation()
{
  if (!mpSigMissingTranslation)
  {
    mpSigMissingTranslation.reinit(new tMissingTranslationSignal);
    mpSigMissingTranslation->setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  }
  return *mpSigMissingTranslation;
}
} // namespace mucs
