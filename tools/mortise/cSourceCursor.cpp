#include "cSourceCursor.h"

int cSourceCursor::get() const
{
  return miPos < mpText->size() ? static_cast<unsigned char>((*mpText)[miPos]) : End;
}

int cSourceCursor::peek(unsigned int iAhead) const
{
  cSourceCursor ahead(*this);
  ahead.step(iAhead);
  return ahead.get();
}

void cSourceCursor::step()
{
  stepByte();
  skipSplices();
}

void cSourceCursor::step(unsigned int iCount)
{
  for (; iCount != 0; iCount--)
  {
    step();
  }
}

void cSourceCursor::stepRaw()
{
  stepByte();
}

/// A carriage return counts if no line feed follows, which then counts.
bool cSourceCursor::isLineEnd(size_t iPos) const
{
  char const c = (*mpText)[iPos];
  return c == '\n' || (c == '\r' && (iPos + 1 == mpText->size() || (*mpText)[iPos + 1] != '\n'));
}

void cSourceCursor::stepByte()
{
  if (miPos < mpText->size())
  {
    miLine += isLineEnd(miPos) ? 1 : 0;
    miPos++;
  }
}

void cSourceCursor::skipSplices()
{
  while (miPos + 1 < mpText->size() && (*mpText)[miPos] == '\\')
  {
    size_t iBehind = miPos + 1;
    if ((*mpText)[iBehind] == '\r')
    {
      iBehind++;
    }
    if (iBehind >= mpText->size() || (*mpText)[iBehind] != '\n')
    {
      return;
    }
    miPos = iBehind + 1;
    miLine++;
  }
}
