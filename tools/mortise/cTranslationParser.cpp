#include "cTranslationParser.h"

#include "cTrText.h"

#include <string.h>

cTranslationParser::cTranslationParser(std::string const& text) : mText(text)
{
  size_t const iLineEnd = mText.find('\n');
  mLongLineEnds = iLineEnd != std::string::npos && iLineEnd != 0 && mText[iLineEnd - 1] == '\r';
  if (mText.compare(0, 3, "\xEF\xBB\xBF") == 0)
  {
    miPos = 3;
  }
  size_t const iNul = mText.find('\0');
  if (iNul != std::string::npos)
  {
    step(iNul - miPos);
    fail("a text has no NUL bytes");
  }
  parse();
}

void cTranslationParser::parse()
{
  for (;;)
  {
    Token const eToken = next();
    if (eToken == Comment)
    {
      readComment();
      continue;
    }
    closeBlock();
    if (mItems.empty() && mHead.empty() && miLineEnds > 1)
    {
      mHead.swap(mPending);
    }
    if (eToken == End)
    {
      return;
    }
    readStatement(eToken);
  }
}

void cTranslationParser::fail(std::string const& text) const
{
  throw cError{miLine, text};
}

void cTranslationParser::step(size_t iCount)
{
  for (; iCount != 0; iCount--, miPos++)
  {
    char const c = mText[miPos];
    bool const bPair = c == '\r' && miPos + 1 < mText.size() && mText[miPos + 1] == '\n';
    miLine += c == '\n' || (c == '\r' && !bPair) ? 1 : 0;
  }
}

cTranslationParser::Token cTranslationParser::keyAt(size_t iPos, size_t& iLength) const
{
  static struct
  {
    char const* mText;
    Token meToken;
  } const keys[] = {{"\"", Quote}, {"=", Equals},      {"//", Comment},    {"(", Open},
                    {")", Close},  {"Name", NameWord}, {"Flag", FlagWord}, {"include", IncludeWord}};
  for (auto const& key : keys)
  {
    iLength = strlen(key.mText);
    if (mText.compare(iPos, iLength, key.mText) == 0)
    {
      return key.meToken;
    }
  }
  return End;
}

cTranslationParser::Token cTranslationParser::next()
{
  static char const separators[] = " \t;\r\n";
  unsigned int const iLine = miLine;
  size_t const iToken = mText.find_first_not_of(separators, miPos);
  step((iToken == std::string::npos ? mText.size() : iToken) - miPos);
  miLineEnds = miLine - iLine;
  if (miPos == mText.size())
  {
    return End;
  }
  size_t iLength = 0;
  Token const eKey = keyAt(miPos, iLength);
  if (eKey != End)
  {
    step(iLength);
    return eKey;
  }
  size_t iEnd = miPos + 1;
  while (iEnd < mText.size() && strchr(separators, mText[iEnd]) == nullptr && keyAt(iEnd, iLength) == End)
  {
    iEnd++;
  }
  mToken = mText.substr(miPos, iEnd - miPos);
  step(iEnd - miPos);
  return Text;
}

/// Behind the slashes.
void cTranslationParser::readComment()
{
  size_t const iFound = mText.find_first_of("\r\n", miPos);
  size_t const iEnd = iFound == std::string::npos ? mText.size() : iFound;
  std::string const comment = mText.substr(miPos, iEnd - miPos);
  unsigned int const iLine = miLine;
  if (!cTrText::isUTF8(comment))
  {
    fail("not UTF-8");
  }
  step(iEnd - miPos);
  char const cMark = comment.empty() ? 0 : comment[0];
  if (mBlock.mMark != 0 && (mBlock.mMark != cMark || miLineEnds > 1))
  {
    closeBlock();
  }
  if (!mInside && mItems.empty() && mBlock.mMark == 0 && mHead.empty() && miLineEnds > 1)
  {
    mHead.swap(mPending);
  }
  if (cMark == ':')
  {
    return;
  }
  if (cMark == '?' || cMark == '~')
  {
    if (mBlock.mMark == 0)
    {
      mBlock.mMark = cMark;
      mBlock.miLine = iLine;
    }
    // A key may go over several lines, so line ends are kept as they are.
    size_t const iLineEnd = mText.compare(iEnd, 2, "\r\n") == 0 ? 2 : iEnd < mText.size() ? 1 : 0;
    mBlock.mText += comment.substr(comment.compare(1, 1, " ") == 0 ? 2 : 1) + mText.substr(iEnd, iLineEnd);
    mBlock.mLines.push_back(comment);
    return;
  }
  if (!mInside && miLineEnds == 0 && !mItems.empty() && mItems.back().mMark == 0)
  {
    mItems.back().mNotes.push_back(comment);
    return;
  }
  mPending.push_back(comment);
}

void cTranslationParser::closeBlock()
{
  if (mBlock.mMark == 0)
  {
    return;
  }
  cBlock block;
  std::swap(block, mBlock);
  try
  {
    cTranslationParser const inner(block.mText);
    for (cItem item : inner.items())
    {
      if (item.mKind != Entry || item.mMark != 0)
      {
        throw cError{item.miLine, "only entries may stand here"};
      }
      item.mMark = block.mMark;
      item.miLine += block.miLine - 1;
      item.mNotes.insert(item.mNotes.begin(), mPending.begin(), mPending.end());
      mPending.clear();
      mItems.push_back(item);
    }
    mPending.insert(mPending.end(), inner.tail().begin(), inner.tail().end());
  }
  catch (cError const& e)
  {
    mOddities.push_back(cError{block.miLine + e.miLine - 1, e.mText});
    for (std::string const& line : block.mLines)
    {
      mPending.push_back(" " + line); // no longer marked, so that it does not become a part of what stands beside it
    }
  }
}

void cTranslationParser::readStatement(Token eToken)
{
  cItem item;
  item.mNotes.swap(mPending);
  item.miLine = miLine;
  mInside = true;
  switch (eToken)
  {
  case Quote:
    item.mKey = cTrText::decode(readString());
    expect(Equals, "=", item);
    readValue(item);
    break;
  case NameWord:
  case FlagWord:
    item.mKind = eToken == NameWord ? Name : Flag;
    expect(Equals, "=", item);
    readValue(item);
    break;
  case IncludeWord:
    item.mKind = Include;
    readValue(item);
    break;
  default:
    item.mKind = Word;
    item.mKey = eToken == Equals ? "=" : eToken == Open ? "(" : eToken == Close ? ")" : mToken;
  }
  mInside = false;
  mItems.push_back(item);
}

/// The next token that is no comment; these go to the notes of the statement.
cTranslationParser::Token cTranslationParser::nextInside(cItem& item)
{
  for (;;)
  {
    Token const eToken = next();
    if (eToken != Comment)
    {
      return eToken;
    }
    readComment();
    if (mBlock.mMark != 0) // no statement can end inside another one
    {
      for (std::string const& line : mBlock.mLines)
      {
        item.mNotes.push_back(" " + line);
      }
      mBlock = cBlock();
    }
    item.mNotes.insert(item.mNotes.end(), mPending.begin(), mPending.end());
    mPending.clear();
  }
}

void cTranslationParser::expect(Token eToken, char const* shown, cItem& item)
{
  if (nextInside(item) != eToken)
  {
    fail(std::string("\"") + shown + "\" expected");
  }
}

/// Behind the opening quote. A quote behind a backslash does not close.
std::string cTranslationParser::readString()
{
  size_t iEnd = mText.find('"', miPos);
  while (iEnd != std::string::npos && mText[iEnd - 1] == '\\')
  {
    iEnd = mText.find('"', iEnd + 1);
  }
  if (iEnd == std::string::npos)
  {
    fail("the string that begins here has no end");
  }
  std::string const text = mText.substr(miPos, iEnd - miPos);
  if (!cTrText::isUTF8(text))
  {
    fail("not UTF-8");
  }
  step(iEnd + 1 - miPos);
  return text;
}

void cTranslationParser::readValue(cItem& item)
{
  Token const eToken = nextInside(item);
  item.mValue.mFromFile = eToken == Text && mToken == "fromFile";
  if (item.mValue.mFromFile)
  {
    expect(Open, "(", item);
    expect(Quote, "\"", item);
  }
  else if (eToken != Quote)
  {
    fail("\"\"\" expected");
  }
  item.mValue.mText = readString();
  if (item.mValue.mFromFile)
  {
    if (item.mValue.mText.empty())
    {
      fail("a filename expected");
    }
    expect(Close, ")", item);
  }
}
