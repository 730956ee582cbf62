#include "cNumber.h"

#include <stdio.h>

mstd::cAsciiString cNumber::text(double value, mstd::cAsciiString const& unit)
{
  static char const* const prefixes[] = {"", "k", "M", "G", "T", "P", "E"};
  unsigned int iPrefix = 0;
  if (unit != "%" && !unit.empty())
  {
    while (value >= 999.95 && iPrefix + 1 < sizeof prefixes / sizeof *prefixes)
    {
      value /= 1000;
      ++iPrefix;
    }
  }
  char text[400];
  snprintf(text, sizeof text, "%.1f", value);
  mstd::cAsciiString result(text);
  if (!unit.empty())
  {
    result += " ";
    result += prefixes[iPrefix];
    result += unit;
  }
  return result;
}
