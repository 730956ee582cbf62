#include "std/cUTF8StringTokenizer.h"

#include "ucs/cString.h"

namespace mstd
{

template class tTokenizerContext<tArray<char>>;
template class tTokenizer<tConstArrayRef<char>, tArray<char>>;

cUTF8StringTokenizerContext::~cUTF8StringTokenizerContext() = default;

cUTF8StringTokenizerContext::cTokenSpec& cUTF8StringTokenizerContext::addSeparator(mucs::cString const& text)
{
  return tTokenizerContext::addSeparator(text.toUTF8());
}

cUTF8StringTokenizerContext::cTokenSpec& cUTF8StringTokenizerContext::addSeparator(char const* pText)
{
  return tTokenizerContext::addSeparator(tArray<char>(pText));
}

cUTF8StringTokenizerContext::cTokenSpec& cUTF8StringTokenizerContext::addKey(mucs::cString const& text,
                                                                             unsigned int iId)
{
  return tTokenizerContext::addKey(text.toUTF8(), iId);
}

cUTF8StringTokenizerContext::cTokenSpec& cUTF8StringTokenizerContext::addKey(char const* pText, unsigned int iId)
{
  return tTokenizerContext::addKey(tArray<char>(pText), iId);
}

void cUTF8StringTokenizerContext::setSingleQuote(mucs::cString const& quote)
{
  tTokenizerContext::setSingleQuote(quote.toUTF8());
}

cUTF8StringTokenizer::cUTF8StringTokenizer(tArray<char> const& input, tContext* pContext)
    : tTokenizer(tConstArrayRef<char>(input), pContext)
{
}

cUTF8StringTokenizer::cUTF8StringTokenizer(tConstArrayRef<char> const& input, tContext* pContext)
    : tTokenizer(input, pContext)
{
}

cUTF8StringTokenizer::~cUTF8StringTokenizer() = default;

bool cUTF8StringTokenizer::getNextToken(mucs::cString& token, unsigned int& iId)
{
  unsigned int iStart = 0;
  if (!advance(iStart, iId))
  {
    return false;
  }
  token.fromUTF8(tConstArrayRef<char>(input(), iStart, position() - iStart));
  return true;
}

unsigned int cUTF8StringTokenizer::expectToken(mucs::cString& token)
{
  unsigned int iId = 0;
  if (!getNextToken(token, iId))
  {
    cSTDExceptions::throwUnexpectedEndOfInput();
  }
  return iId;
}

cUTF8StringTokenizer& cUTF8StringTokenizer::operator>>(mucs::cString& token)
{
  unsigned int iId = 0;
  getNextToken(token, iId);
  return *this;
}

void cUTF8StringTokenizer::removeQuotes(mucs::cString& token) const
{
  if (context() == nullptr)
  {
    return;
  }
  mucs::cString quote;
  quote.fromUTF8(tConstArrayRef<char>(context()->singleQuote()));
  removeQuotesFrom(token, quote);
}

} // namespace mstd
