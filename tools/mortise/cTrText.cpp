#include "cTrText.h"

#include <vector>

namespace
{

/// Finds placeholders the way that messages do.
class cPlaceholderScan
{
public:
  explicit cPlaceholderScan(std::string const& text) : mText(text) {}

  /// Goes behind the next placeholder; false if there is none.
  bool next()
  {
    mName.clear();
    bool bInside = false;
    bool bEscaped = false;
    for (; miPos < mText.size(); miPos++)
    {
      char const c = mText[miPos];
      if (bEscaped)
      {
        bEscaped = false;
        continue;
      }
      if (bInside && (c == ' ' || c == '%'))
      {
        miPos += c == '%' ? 1 : 0; // the blank still belongs to the text
        return true;
      }
      if (bInside)
      {
        mName += c;
      }
      if (c == '\\')
      {
        bEscaped = true;
      }
      else if (c == '%')
      {
        miStart = miPos;
        mName = c;
        bInside = true;
      }
    }
    return bInside;
  }

  std::string const& name() const { return mName; }
  size_t start() const { return miStart; }
  size_t end() const { return miPos; }

private:
  std::string const& mText;
  std::string mName;
  size_t miPos = 0;
  size_t miStart = 0;
};

/// Index behind the UTF-8 sequence that begins at `iPos`, or `iPos` if none does.
size_t sequenceEnd(std::string const& text, size_t iPos)
{
  unsigned char const c = static_cast<unsigned char>(text[iPos]);
  if (c < 0x80)
  {
    return iPos + 1;
  }
  size_t const iLength = c >= 0xC2 && c < 0xE0 ? 2 : c >= 0xE0 && c < 0xF0 ? 3 : c >= 0xF0 && c < 0xF5 ? 4 : 0;
  if (iLength == 0 || iLength > text.size() - iPos)
  {
    return iPos;
  }
  for (size_t i = 1; i < iLength; i++)
  {
    if ((static_cast<unsigned char>(text[iPos + i]) & 0xC0) != 0x80)
    {
      return iPos;
    }
  }
  unsigned char const second = static_cast<unsigned char>(text[iPos + 1]);
  bool const bBad = (c == 0xE0 && second < 0xA0) || (c == 0xED && second >= 0xA0) || (c == 0xF0 && second < 0x90) ||
                    (c == 0xF4 && second >= 0x90);
  return bBad ? iPos : iPos + iLength;
}

/// Part of a text between placeholders, with accents.
std::string accented(std::string const& text)
{
  static char const plain[] = "aceginostuyzACEGINOSTUYZ";
  static char const* const marked[] = {"á", "ç", "é", "ĝ", "ï", "ñ", "ö", "š", "ţ", "ü", "ý", "ž",
                                       "Á", "Ç", "É", "Ĝ", "Ï", "Ñ", "Ö", "Š", "Ţ", "Ü", "Ý", "Ž"};
  std::string result;
  for (size_t i = 0; i < text.size(); i++)
  {
    size_t const iLetter = std::string(plain).find(text[i]);
    if (text[i] == '\\' && i + 1 < text.size())
    {
      result += text[i++];
      result += text[i];
    }
    else if (iLetter != std::string::npos)
    {
      result += marked[iLetter];
    }
    else
    {
      result += text[i];
    }
  }
  return result;
}

} // namespace

bool cTrText::isAscii(std::string const& text)
{
  for (char const c : text)
  {
    if (static_cast<unsigned char>(c) >= 0x80)
    {
      return false;
    }
  }
  return true;
}

bool cTrText::isUTF8(std::string const& text)
{
  for (size_t i = 0; i < text.size();)
  {
    size_t const iEnd = sequenceEnd(text, i);
    if (iEnd == i)
    {
      return false;
    }
    i = iEnd;
  }
  return true;
}

std::string cTrText::encode(std::string const& text)
{
  std::string result;
  for (char const c : text)
  {
    if (c == '\\' || c == '"')
    {
      result += '\\';
    }
    result += c;
  }
  return result;
}

std::string cTrText::decode(std::string const& text)
{
  std::string result;
  for (size_t i = 0; i < text.size(); i++)
  {
    if (text[i] == '\\' && ++i == text.size())
    {
      break;
    }
    result += text[i];
  }
  return result;
}

std::set<std::string> cTrText::placeholders(std::string const& text)
{
  std::set<std::string> names;
  cPlaceholderScan scan(text);
  while (scan.next())
  {
    names.insert(scan.name());
  }
  return names;
}

std::string cTrText::pseudo(std::string const& text)
{
  std::string result = "[";
  size_t iBehind = 0;
  cPlaceholderScan scan(text);
  while (scan.next())
  {
    result += accented(text.substr(iBehind, scan.start() - iBehind));
    iBehind = scan.end();
    result.append(text, scan.start(), iBehind - scan.start());
    if (iBehind == text.size() && text[iBehind - 1] != '%')
    {
      result += '%'; // it ended with the text, which now goes on
    }
  }
  result += accented(text.substr(iBehind));
  // Other languages need about a third more room.
  return result + " " + std::string(text.size() / 3 + 1, '~') + "]";
}

std::string cTrText::quoted(std::string const& text)
{
  static char const digits[] = "0123456789abcdef";
  std::string result = "\"";
  for (char const c : text)
  {
    unsigned char const u = static_cast<unsigned char>(c);
    if (c == '\n')
    {
      result += "\\n";
    }
    else if (u < 0x20 || u == 0x7F)
    {
      result += std::string("\\x") + digits[u >> 4] + digits[u & 15];
    }
    else
    {
      result += c;
    }
  }
  return result + "\"";
}
