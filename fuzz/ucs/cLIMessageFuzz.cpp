#include "std/cAsciiString.h"
#include "std/tList.h"
#include "ucs/cLIItem.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <stdlib.h>
#include <string.h>

/// The first line is a key, each further one a parameter; the last one serves as a translation too.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, size_t size)
{
  mucs::cLIMessage message;
  mstd::cAsciiString line;
  unsigned int lines = 0;
  for (size_t i = 0; i <= size; ++i)
  {
    if (i == size || pData[i] == '\n')
    {
      message << line;
      ++lines;
      if (i < size)
      {
        line = "";
      }
    }
    else
    {
      line.append(static_cast<char>(pData[i]));
    }
  }
  unsigned int items = 0;
  for (mucs::cLIItem const& item : message.items())
  {
    items += item.name().length() != 0;
  }
  mucs::cLIMessage doubled(message);
  doubled.merge(message);
  mucs::cString text, translated;
  mstd::cAsciiString narrow;
  doubled.untranslated(text);
  doubled.untranslated(narrow);
  doubled.translate(mucs::cString(line, '?'), translated);
  if (items >= lines || message.scanPosition() > message.key().length() ||
      memcmp(text.ascii('?').c_str(), narrow.c_str(), narrow.length() + 1) != 0)
  {
    abort();
  }
  return 0;
}
