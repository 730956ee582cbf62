#include "cJsonText.h"

#include "cMessage.h"

#include <stdio.h>

void cJsonText::lead(char const* pName)
{
  if (!mText.empty() && mText.back() != '{' && mText.back() != '[')
  {
    mText += ", ";
  }
  if (pName != nullptr)
  {
    quote(pName);
    mText += ": ";
  }
}

void cJsonText::begin(char const* pName, char bracket)
{
  lead(pName);
  mText += bracket;
}

void cJsonText::end(char bracket)
{
  mText += bracket;
}

void cJsonText::add(char const* pName, std::string const& value)
{
  lead(pName);
  quote(value);
}

void cJsonText::addRaw(char const* pName, char const* pValue)
{
  lead(pName);
  mText += pValue;
}

void cJsonText::quote(std::string const& value)
{
  mText += '"';
  size_t start = 0;
  for (size_t i = 0; i <= value.size(); ++i)
  {
    unsigned char const c = i < value.size() ? static_cast<unsigned char>(value[i]) : 0;
    if (i < value.size() && c >= 0x20 && c != '"' && c != '\\' && c != 0x7F)
    {
      continue;
    }
    mText += cMessage::clean(value.substr(start, i - start), "\xEF\xBF\xBD");
    start = i + 1;
    if (i < value.size())
    {
      char escape[8];
      snprintf(escape, sizeof escape, c == '"' || c == '\\' ? "\\%c" : "\\u%04x", c);
      mText += escape;
    }
  }
  mText += '"';
}
