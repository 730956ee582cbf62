#include "cKeyTable.h"

#include "cSourceScanner.h"
#include "cTrText.h"

#include <string.h>

void cKeyTable::collect(std::string const& text, std::string const& name)
{
  static char const sMarker[] = "$MTR$";
  static size_t const iMarker = sizeof sMarker - 1;
  cSourceScanner scanner(text);
  while (scanner.next())
  {
    std::string const& literal = scanner.literal();
    if (literal.compare(0, iMarker, sMarker) != 0)
    {
      continue;
    }
    std::string const key(literal.c_str() + iMarker); // a message takes its key up to the first NUL
    cPlace const place = {name, scanner.line()};
    if (scanner.isOpen())
    {
      mProblems.push_back(place.text() + ": a macro may go on with the text: " + cTrText::quoted(key));
    }
    if (key.empty())
    {
      continue; // the marker itself, as who looks for it has it
    }
    if (!cTrText::isAscii(key))
    {
      mProblems.push_back(place.text() + ": a key has no characters beyond ASCII: " + cTrText::quoted(key));
    }
    else if (key.back() == '\\')
    {
      // The backslash would take the quote that ends the string in a translation file.
      mProblems.push_back(place.text() + ": a key can't end in a backslash: " + cTrText::quoted(key));
    }
    else
    {
      add(key, place);
    }
  }
}

void cKeyTable::add(std::string const& key, cPlace const& place)
{
  auto const inserted = mIndex.emplace(key, mKeys.size());
  if (inserted.second)
  {
    mKeys.push_back(cKey{key, {}});
  }
  mKeys[inserted.first->second].mPlaces.push_back(place);
}
