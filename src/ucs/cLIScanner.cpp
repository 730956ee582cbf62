#include "ucs/cLIScanner.h"

#include "ucs/cString.h"

#include <string.h>

namespace
{
unsigned int const cLineEnd = 1;
} // namespace

namespace mucs
{
bool cLIScanner::cTokens::next(unsigned int& iId)
{
  miStart = position();
  return advance(miStart, iId);
}

mstd::tConstArrayRef<char> cLIScanner::cTokens::current() const
{
  return mstd::tConstArrayRef<char>(input(), miStart, position() - miStart);
}

cLIScanner::cLIScanner(mstd::tArray<char> const& aBytes, Format eFormat) : miCRs(0), miLFs(0), mTokens(aBytes, &mMain)
{
  mMain.addSeparator(" ");
  mMain.addSeparator("\t");
  mMain.addSeparator(";");
  mMain.addSeparator("\r").leaveCount(&miCRs);
  mMain.addSeparator("\n").leaveCount(&miLFs);
  mMain.addKey("\"", Quote);
  mMain.addKey("=", Equals);
  mMain.addKey("//", CommentStart);
  if (eFormat == LocaleFile)
  {
    mMain.addKey("Name", Name);
    mMain.addKey("include", Include);
    mMain.addKey("Flag", Flag);
    mMain.addKey("(", OpeningParenthesis);
    mMain.addKey(")", ClosingParenthesis);
  }

  mComment.addKey("\r", cLineEnd).leaveCount(&miCRs);
  mComment.addKey("\n", cLineEnd).leaveCount(&miLFs);

  mString.addKey("\"", Quote);
  mString.setSingleQuote(cString("\\"));
}

bool cLIScanner::next(Token& eToken)
{
  unsigned int iId = Word;
  while (mTokens.next(iId))
  {
    if (iId != CommentStart)
    {
      eToken = static_cast<Token>(iId);
      return true;
    }
    passComment();
  }
  return false;
}

void cLIScanner::passComment()
{
  mTokens.setContext(&mComment);
  unsigned int iId = 0;
  while (mTokens.next(iId) && iId != cLineEnd)
  {
  }
  mTokens.setContext(&mMain);
}

bool cLIScanner::expect(Token eToken)
{
  Token eNext = Word;
  return next(eNext) && eNext == eToken;
}

bool cLIScanner::isWord(char const* sWord) const
{
  mstd::tConstArrayRef<char> const current(mTokens.current());
  unsigned int const iLength = current.length();
  return iLength == strlen(sWord) && memcmp(current.proxyProvideData(0, iLength), sWord, iLength) == 0;
}

bool cLIScanner::readString(cString& sText)
{
  mTokens.setContext(&mString);
  unsigned int iId = 0;
  bool isEnded = mTokens.next(iId);
  if (isEnded && iId == Quote)
  {
    sText = "";
  }
  else if (isEnded)
  {
    sText.fromUTF8(mTokens.current());
    mTokens.removeQuotes(sText);
    isEnded = mTokens.next(iId); // there is nothing else than the closing quote to come
  }
  mTokens.setContext(&mMain);
  return isEnded;
}
} // namespace mucs
