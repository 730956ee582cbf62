#include "cSourceScanner.h"

#include <set>

namespace
{

bool isNameStart(int c)
{
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c >= 0x80;
}

bool isDigit(int c)
{
  return c >= '0' && c <= '9';
}

int hexValue(int c)
{
  return isDigit(c) ? c - '0' : c >= 'a' && c <= 'f' ? c - 'a' + 10 : c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

void appendCodePoint(std::string& text, unsigned int iCode)
{
  if (iCode < 0x80)
  {
    text += static_cast<char>(iCode);
    return;
  }
  if (iCode < 0x800)
  {
    text += static_cast<char>(0xC0 | iCode >> 6);
  }
  else
  {
    if (iCode < 0x10000)
    {
      text += static_cast<char>(0xE0 | iCode >> 12);
    }
    else
    {
      text += static_cast<char>(0xF0 | (iCode >> 18 & 7));
      text += static_cast<char>(0x80 | (iCode >> 12 & 0x3F));
    }
    text += static_cast<char>(0x80 | (iCode >> 6 & 0x3F));
  }
  text += static_cast<char>(0x80 | (iCode & 0x3F));
}

} // namespace

bool cSourceScanner::next()
{
  mPending = false;
  mOpen = false;
  for (;;)
  {
    if (skipBlank())
    {
      continue;
    }
    int const c = mCursor.get();
    if (c == '\n' || c == '\r')
    {
      mCursor.step();
      mLineStart = true;
      if (mInDirective)
      {
        mInDirective = false;
        if (mPending)
        {
          return true;
        }
      }
      continue;
    }
    if (c == '"')
    {
      mLineStart = false;
      readString(miSkipDepth == 0);
      continue;
    }
    if (isNameStart(c))
    {
      cSourceCursor const start(mCursor);
      std::string const name = readName();
      int const iBehind = mCursor.get();
      mLineStart = false;
      if (iBehind == '"' && (name == "u8" || name == "R" || name == "u8R"))
      {
        if (name == "u8")
        {
          readString(miSkipDepth == 0);
        }
        else
        {
          readRawString(miSkipDepth == 0);
        }
        continue;
      }
      if (mPending)
      {
        static std::set<std::string> const operators = {"and", "and_eq", "bitand", "bitor", "not_eq",
                                                        "or",  "or_eq",  "xor",    "xor_eq"};
        mOpen = operators.count(name) == 0;
        mCursor = start;
        return true;
      }
      if (iBehind == '"' && (name == "L" || name == "u" || name == "U"))
      {
        readString(false);
      }
      else if (iBehind == '"' && (name == "LR" || name == "uR" || name == "UR"))
      {
        readRawString(false);
      }
      continue; // a quote behind u8, u, U, L begins a character, like any other
    }
    if (mPending)
    {
      return true;
    }
    if (c == cSourceCursor::End)
    {
      return false;
    }
    if (c == '#' && mLineStart)
    {
      readDirective();
    }
    else if (isDigit(c) || (c == '.' && isDigit(mCursor.peek(1))))
    {
      skipNumber();
    }
    else if (c == '\'')
    {
      skipCharacter();
    }
    else
    {
      mCursor.step();
    }
    mLineStart = false;
  }
}

/// Steps over blanks or a comment, if one is here.
bool cSourceScanner::skipBlank()
{
  int const c = mCursor.get();
  if (c == ' ' || c == '\t' || c == '\v' || c == '\f')
  {
    mCursor.step();
    return true;
  }
  if (c == '/' && mCursor.peek(1) == '/')
  {
    skipLineComment();
    return true;
  }
  if (c == '/' && mCursor.peek(1) == '*')
  {
    skipBlockComment();
    return true;
  }
  return false;
}

void cSourceScanner::skipLineComment()
{
  while (mCursor.get() != cSourceCursor::End && mCursor.get() != '\n' && mCursor.get() != '\r')
  {
    mCursor.step();
  }
}

void cSourceScanner::skipBlockComment()
{
  mCursor.step(2);
  while (mCursor.get() != cSourceCursor::End && !(mCursor.get() == '*' && mCursor.peek(1) == '/'))
  {
    mCursor.step();
  }
  mCursor.step(2);
}

/// Up to the end of the line; a comment may take it to a later one.
void cSourceScanner::skipDirectiveLine()
{
  while (mCursor.get() != cSourceCursor::End && mCursor.get() != '\n' && mCursor.get() != '\r')
  {
    if (!skipBlank())
    {
      mCursor.step();
    }
  }
}

void cSourceScanner::skipNumber()
{
  int c = mCursor.get();
  while (isNameStart(c) || isDigit(c) || c == '.' ||
         (c == '\'' && (isNameStart(mCursor.peek(1)) || isDigit(mCursor.peek(1)))))
  {
    mCursor.step();
    if ((c == 'e' || c == 'E' || c == 'p' || c == 'P') && (mCursor.get() == '+' || mCursor.get() == '-'))
    {
      mCursor.step();
    }
    c = mCursor.get();
  }
}

void cSourceScanner::skipCharacter()
{
  mCursor.step();
  for (;;)
  {
    int const c = mCursor.get();
    if (c == cSourceCursor::End || c == '\n' || c == '\r')
    {
      return; // an apostrophe in text that is not compiled
    }
    mCursor.step();
    if (c == '\'')
    {
      return;
    }
    if (c == '\\')
    {
      mCursor.step();
    }
  }
}

std::string cSourceScanner::readName()
{
  std::string name;
  while (isNameStart(mCursor.get()) || isDigit(mCursor.get()))
  {
    name += static_cast<char>(mCursor.get());
    mCursor.step();
  }
  return name;
}

void cSourceScanner::readDirective()
{
  static std::set<std::string> const withoutCode = {"include", "include_next", "import",  "error",
                                                    "warning", "line",         "pragma",  "endif",
                                                    "else",    "elif",         "elifdef", "elifndef"};
  mCursor.step();
  while (mCursor.get() == ' ' || mCursor.get() == '\t')
  {
    mCursor.step();
  }
  std::string const name = readName();
  bool const bCondition = name == "if" || name == "ifdef" || name == "ifndef";
  if (miSkipDepth != 0)
  {
    if (bCondition)
    {
      miSkipDepth++;
    }
    else if (name == "endif" || (miSkipDepth == 1 && name.compare(0, 2, "el") == 0))
    {
      miSkipDepth--;
    }
    skipDirectiveLine();
    return;
  }
  if (name == "if")
  {
    while (skipBlank())
    {
    }
    if (mCursor.get() == '0' && !isNameStart(mCursor.peek(1)) && !isDigit(mCursor.peek(1)))
    {
      mCursor.step();
      while (skipBlank())
      {
      }
      miSkipDepth = mCursor.get() == '\n' || mCursor.get() == '\r' ? 1 : 0;
    }
    skipDirectiveLine();
    return;
  }
  if (bCondition || withoutCode.count(name) != 0)
  {
    skipDirectiveLine();
    return;
  }
  mInDirective = true;
}

/// At the quote. What is not collected ends a literal that waits for more, as nothing else may stand there.
void cSourceScanner::readString(bool bCollect)
{
  unsigned int const iLine = mCursor.line();
  std::string text;
  mCursor.step();
  for (;;)
  {
    int const c = mCursor.get();
    if (c == cSourceCursor::End || c == '\n' || c == '\r')
    {
      bCollect = false; // no literal after all
      break;
    }
    mCursor.step();
    if (c == '"')
    {
      readName(); // the suffix of a literal with a meaning of its own
      break;
    }
    if (c == '\\')
    {
      readEscape(text);
    }
    else
    {
      text += static_cast<char>(c);
    }
  }
  if (bCollect)
  {
    if (!mPending)
    {
      mLiteral.clear();
      miLine = iLine;
      mPending = true;
    }
    mLiteral += text;
  }
}

void cSourceScanner::readRawString(bool bCollect)
{
  unsigned int const iLine = mCursor.line();
  size_t const iStart = mCursor.pos() + 1;
  size_t const iParenthesis = mText.find('(', iStart);
  // A delimiter has no more than 16 characters.
  if (iParenthesis == std::string::npos || iParenthesis - iStart > 16)
  {
    mCursor.step();
    return;
  }
  std::string const ending = ")" + mText.substr(iStart, iParenthesis - iStart) + "\"";
  size_t const iFound = mText.find(ending, iParenthesis + 1);
  size_t const iTextEnd = iFound == std::string::npos ? mText.size() : iFound;
  size_t const iEnd = iFound == std::string::npos ? mText.size() : iFound + ending.size();
  while (mCursor.pos() + 1 < iEnd)
  {
    mCursor.stepRaw();
  }
  mCursor.step();
  if (bCollect && iFound != std::string::npos)
  {
    readName();
    if (!mPending)
    {
      mLiteral.clear();
      miLine = iLine;
      mPending = true;
    }
    mLiteral.append(mText, iParenthesis + 1, iTextEnd - iParenthesis - 1);
  }
}

/// Behind the backslash.
void cSourceScanner::readEscape(std::string& text)
{
  static char const letters[] = "abfnrtv";
  static char const meanings[] = "\a\b\f\n\r\t\v";
  int const c = mCursor.get();
  if (c == cSourceCursor::End || c == '\n' || c == '\r')
  {
    return;
  }
  if (c >= '0' && c <= '7')
  {
    unsigned int iCode = 0;
    for (int i = 0; i < 3 && mCursor.get() >= '0' && mCursor.get() <= '7'; i++)
    {
      iCode = 8 * iCode + static_cast<unsigned int>(mCursor.get() - '0');
      mCursor.step();
    }
    text += static_cast<char>(iCode);
    return;
  }
  mCursor.step();
  if (c == 'x' || c == 'u' || c == 'U')
  {
    unsigned int iCode = 0;
    for (int i = 0; (c == 'x' || i < (c == 'u' ? 4 : 8)) && hexValue(mCursor.get()) >= 0; i++)
    {
      iCode = 16 * iCode + static_cast<unsigned int>(hexValue(mCursor.get()));
      mCursor.step();
    }
    if (c == 'x')
    {
      text += static_cast<char>(iCode);
    }
    else
    {
      appendCodePoint(text, iCode);
    }
    return;
  }
  for (unsigned int i = 0; letters[i] != 0; i++)
  {
    if (letters[i] == c)
    {
      text += meanings[i];
      return;
    }
  }
  text += static_cast<char>(c);
}
