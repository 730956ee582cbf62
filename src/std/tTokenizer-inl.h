#ifndef MORTISE_STD_TTOKENIZER_INL_H
#define MORTISE_STD_TTOKENIZER_INL_H

#include "std/cArrayMemory.h"
#include "std/cSTDExceptions.h"
#include "std/tTokenizer.h"
#include "std/tVector.h"

#include <string.h>

namespace mstd
{

/// The input as the searches see it: one run in memory, or, if its source is read in blocks, piece by piece.
template <class Ref, class Str>
class tTokenizer<Ref, Str>::cSource
{
public:
  explicit cSource(Ref const& input)
      : mInput(input), miLength(input.proxyLength()),
        mpData(miLength != 0 && input.proxyPreferredBlockSize() == 0 ? input.proxyProvideData(0, miLength) : nullptr)
  {
  }

  unsigned int length() const { return miLength; }

  bool stands(Str const& text, unsigned int iPlace) const
  {
    unsigned int const iLength = text.length();
    if (iLength > miLength - iPlace)
    {
      return false;
    }
    tElement const* const pPlace = mpData != nullptr ? mpData + iPlace : mInput.proxyProvideData(iPlace, iLength);
    return memcmp(pPlace, text.data(), iLength * sizeof(tElement)) == 0;
  }

  /// First place of `text` that lies in `iFrom` to `iEnd` as a whole.
  bool find(Str const& text, unsigned int iFrom, unsigned int iEnd, unsigned int& iPlace) const
  {
    unsigned int const iLength = text.length();
    if (iFrom >= iEnd || iLength > iEnd - iFrom)
    {
      return false;
    }
    if (mpData == nullptr)
    {
      bool found = false;
      iPlace = mInput.find(text.data(), iLength, found, iFrom, iEnd - iFrom);
      return found;
    }
    tElement const* const pFrom = mpData + iFrom;
    void const* pFound;
    if (sizeof(tElement) == 1 && iLength == 1)
    {
      pFound = memchr(pFrom, static_cast<unsigned char>(*text.data()), iEnd - iFrom);
    }
    else
    {
      pFound = cArrayMemory::findElements(pFrom, iEnd - iFrom, text.data(), iLength, sizeof(tElement));
    }
    if (pFound == nullptr)
    {
      return false;
    }
    iPlace = static_cast<unsigned int>(static_cast<tElement const*>(pFound) - mpData);
    return true;
  }

private:
  Ref const& mInput;
  unsigned int miLength;
  tElement const* mpData;
};

/// Remembers, for each text that was looked for far ahead, where it stands next. Without it a text that is
/// rare in the input would be searched up to the end of the input anew for each token.
///
/// What is remembered follows from the input, the text and the quote alone, so it stays right whatever the
/// parser does with its contexts.
template <class Ref, class Str>
class tTokenizer<Ref, Str>::cFarSearch
{
public:
  cFarSearch() : miLast(0), miNextVictim(0) {}

  bool find(tTokenizer const& tokenizer, cSource const& source, Str const& text, unsigned int iFrom, unsigned int iEnd,
            unsigned int& iPlace)
  {
    unsigned int const iLength = text.length();
    cMemo& memo = memoOf(text, tokenizer.mpContext->singleQuote());
    if (iFrom < memo.miFrom || iFrom > memo.miNext)
    {
      memo.restart(iFrom);
    }
    // A walk that begins inside of a quoted occurrence may find others than the walk that stepped over it,
    // until both come to the same place.
    unsigned int iWalk = iFrom;
    while (memo.mSkipped && iWalk > memo.miFrom && isInsideQuoted(tokenizer, source, text, iWalk))
    {
      if (!source.find(text, iWalk, iEnd, iPlace))
      {
        return false;
      }
      if (!tokenizer.isQuoted(source, iPlace))
      {
        return true;
      }
      iWalk = iPlace + iLength;
      if (iWalk > memo.miNext)
      {
        memo.restart(iWalk);
      }
    }
    while (!memo.mFound && memo.miSearchedTo < iEnd)
    {
      if (!source.find(text, memo.miNext, iEnd, iPlace))
      {
        memo.miSearchedTo = iEnd;
        if (iEnd >= iLength && iEnd - iLength + 1 > memo.miNext)
        {
          memo.miNext = iEnd - iLength + 1;
        }
      }
      else if (tokenizer.isQuoted(source, iPlace))
      {
        memo.mSkipped = true;
        memo.miNext = iPlace + iLength;
      }
      else
      {
        memo.mFound = true;
        memo.miNext = iPlace;
      }
    }
    iPlace = memo.miNext;
    return memo.mFound && iPlace <= iEnd && iLength <= iEnd - iPlace;
  }

private:
  enum
  {
    MaxMemos = 1024
  };

  struct cMemo
  {
    cMemo(Str const& text, Str const& quote) : mText(text), mQuote(quote) { restart(0); }

    void restart(unsigned int iFrom)
    {
      miFrom = iFrom;
      miNext = iFrom;
      miSearchedTo = iFrom;
      mFound = false;
      mSkipped = false;
    }

    Str mText;
    Str mQuote;
    unsigned int miFrom;       // where the walk began
    unsigned int miNext;       // the occurrence if found, else where the walk goes on
    unsigned int miSearchedTo; // no occurrence ends between miNext and here
    bool mFound;
    bool mSkipped; // the walk stepped over a quoted occurrence
  };

  static bool isSame(Str const& a, Str const& b)
  {
    return a.length() == b.length() &&
           (a.length() == 0 || memcmp(a.data(), b.data(), a.length() * sizeof(tElement)) == 0);
  }

  cMemo& memoOf(Str const& text, Str const& quote)
  {
    unsigned int const iCount = mMemos.length();
    for (unsigned int i = 0; i < iCount; ++i)
    {
      // entries are asked for in the order in which they came, again and again
      miLast = miLast + 1 < iCount ? miLast + 1 : 0;
      cMemo& memo = *mMemos.at(miLast);
      if (isSame(memo.mText, text) && isSame(memo.mQuote, quote))
      {
        return memo;
      }
    }
    tAutoPtr<cMemo> pMemo(new cMemo(text, quote));
    if (iCount < MaxMemos)
    {
      miLast = iCount;
      return *mMemos.append(pMemo);
    }
    miNextVictim = (miNextVictim + 1) % MaxMemos;
    miLast = miNextVictim;
    cMemo*& pVictim = mMemos.at(miLast);
    delete pVictim;
    pVictim = pMemo.release();
    return *pVictim;
  }

  static bool isInsideQuoted(tTokenizer const& tokenizer, cSource const& source, Str const& text, unsigned int iPlace)
  {
    unsigned int const iReach = text.length() - 1;
    for (unsigned int i = iPlace < iReach ? 0 : iPlace - iReach; i < iPlace; ++i)
    {
      if (source.stands(text, i) && tokenizer.isQuoted(source, i))
      {
        return true;
      }
    }
    return false;
  }

  tPtrVector<cMemo> mMemos;
  unsigned int miLast;
  unsigned int miNextVictim;
};

template <class Ref, class Str>
tTokenizer<Ref, Str>::tTokenizer(Ref const& input, tContext* pContext)
    : mInput(input), miPosition(0), mpContext(pContext)
{
}

template <class Ref, class Str>
tTokenizer<Ref, Str>::~tTokenizer()
{
}

template <class Ref, class Str>
bool tTokenizer<Ref, Str>::isQuoted(cSource const& source, unsigned int iPlace) const
{
  Str const& quote = mpContext->singleQuote();
  unsigned int const iLength = quote.length();
  return iLength != 0 && iPlace >= iLength && source.stands(quote, iPlace - iLength);
}

template <class Ref, class Str>
bool tTokenizer<Ref, Str>::findSeparator(cSource const& source, unsigned int iPlace, cSpec*& pSpec,
                                         unsigned int& iBehind) const
{
  unsigned int const iCount = mpContext->length();
  for (unsigned int i = 0; i < iCount; ++i)
  {
    cSpec& spec = mpContext->spec(i);
    unsigned int const iLength = spec.text().length();
    if (spec.isKey() || iLength == 0)
    {
      continue;
    }
    for (unsigned int iTest = iPlace; source.stands(spec.text(), iTest); iTest += iLength)
    {
      if (!isQuoted(source, iTest))
      {
        pSpec = &spec;
        iBehind = iTest + iLength;
        return true;
      }
    }
  }
  return false;
}

template <class Ref, class Str>
bool tTokenizer<Ref, Str>::findOccurrence(cSource const& source, Str const& text, unsigned int iFrom, unsigned int iEnd,
                                          unsigned int& iPlace)
{
  // Most texts stand within a line or so. Only a longer way is worth the cost of being remembered.
  unsigned int const iNear = 128;
  bool const isFar = iEnd > iFrom && iEnd - iFrom > iNear;
  unsigned int const iNearEnd = isFar ? iFrom + iNear : iEnd;
  while (source.find(text, iFrom, iNearEnd, iPlace))
  {
    if (!isQuoted(source, iPlace))
    {
      return true;
    }
    iFrom = iPlace + text.length();
  }
  if (!isFar)
  {
    return false;
  }
  if (mpFarSearch.get() == nullptr)
  {
    mpFarSearch.reinit(new cFarSearch);
  }
  return mpFarSearch->find(*this, source, text, iFrom, iEnd, iPlace);
}

template <class Ref, class Str>
bool tTokenizer<Ref, Str>::advance(unsigned int& iStart, unsigned int& iId)
{
  iId = 0;
  cSource const source(mInput);
  unsigned int const iLength = source.length();
  unsigned int iPosition = miPosition;
  if (iPosition >= iLength)
  {
    return false;
  }
  cSpec* pBest = nullptr;
  while (mpContext != nullptr && findSeparator(source, iPosition, pBest, iPosition))
  {
    pBest->hint();
    if (iPosition >= iLength)
    {
      miPosition = iPosition;
      return false;
    }
  }

  pBest = nullptr;
  unsigned int iBestPlace = iLength;
  unsigned int iBestLength = 0;
  unsigned int const iCount = mpContext != nullptr ? mpContext->length() : 0;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    cSpec& spec = mpContext->spec(i);
    unsigned int const iSpecLength = spec.text().length();
    if (iSpecLength == 0)
    {
      continue;
    }
    unsigned int iEnd = iLength;
    if (pBest != nullptr)
    {
      // nothing is looked for beyond what could still win
      piUInt64 const iWindowEnd =
          piUInt64(iBestPlace) + 1 + (iSpecLength > iBestLength ? iSpecLength - iBestLength : 0);
      iEnd = iWindowEnd < iLength ? static_cast<unsigned int>(iWindowEnd) : iLength;
    }
    unsigned int iPlace = 0;
    if (findOccurrence(source, spec.text(), iPosition, iEnd, iPlace) &&
        (pBest == nullptr || iPlace < iBestPlace || pBest->priority() < spec.priority()))
    {
      pBest = &spec;
      iBestPlace = iPlace;
      iBestLength = iSpecLength;
    }
  }

  iStart = iPosition;
  if (pBest != nullptr && iBestPlace == iPosition)
  {
    pBest->hint();
    iId = pBest->id();
    miPosition = iPosition + iBestLength;
  }
  else
  {
    miPosition = iBestPlace;
  }
  return true;
}

template <class Ref, class Str>
bool tTokenizer<Ref, Str>::getNextToken(Str& token, unsigned int& iId)
{
  unsigned int const iOldPosition = miPosition;
  unsigned int iStart = 0;
  if (!advance(iStart, iId))
  {
    return false;
  }
  unsigned int const iLength = miPosition - iStart;
  unsigned int const iNewPosition = miPosition;
  miPosition = iOldPosition; // until nothing can fail any more
  Str fresh;
  fresh.setSize(iLength);
  mInput.proxyCopyPartTo(fresh.data(), iStart, iLength);
  token.swap(fresh);
  miPosition = iNewPosition;
  return true;
}

template <class Ref, class Str>
unsigned int tTokenizer<Ref, Str>::expectToken(Str& token)
{
  unsigned int iId = 0;
  if (!getNextToken(token, iId))
  {
    cSTDExceptions::throwUnexpectedEndOfInput();
  }
  return iId;
}

template <class Ref, class Str>
tTokenizer<Ref, Str>& tTokenizer<Ref, Str>::operator>>(Str& token)
{
  unsigned int iId = 0;
  getNextToken(token, iId);
  return *this;
}

template <class Ref, class Str>
void tTokenizer<Ref, Str>::process()
{
  unsigned int iStart = 0;
  unsigned int iId = 0;
  while (advance(iStart, iId))
  {
  }
}

template <class Ref, class Str>
void tTokenizer<Ref, Str>::removeQuotes(Str& token) const
{
  if (mpContext != nullptr)
  {
    removeQuotesFrom(token, mpContext->singleQuote());
  }
}

template <class Ref, class Str>
template <class Text>
void tTokenizer<Ref, Str>::removeQuotesFrom(Text& token, Text const& quote)
{
  unsigned int const iLength = token.length();
  unsigned int const iQuote = quote.length();
  if (iQuote == 0 || iQuote > iLength ||
      cArrayMemory::findElements(token.data(), iLength, quote.data(), iQuote, sizeof(typename Text::value_type)) ==
          nullptr)
  {
    return;
  }
  Text result(token);
  typename Text::value_type* const pText = result.data();
  unsigned int iRead = 0;
  unsigned int iWrite = 0;
  bool isBehindQuote = false;
  while (iRead < iLength)
  {
    bool const isQuote = iQuote <= iLength - iRead && memcmp(pText + iRead, quote.data(), iQuote * sizeof(*pText)) == 0;
    if (isQuote && !isBehindQuote)
    {
      iRead += iQuote;
      isBehindQuote = true;
      continue;
    }
    unsigned int const iTake = isQuote ? iQuote : 1;
    memmove(pText + iWrite, pText + iRead, iTake * sizeof(*pText));
    iRead += iTake;
    iWrite += iTake;
    isBehindQuote = false;
  }
  result.truncate(iWrite);
  token.swap(result);
}

} // namespace mstd

#endif
