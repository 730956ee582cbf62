// Greets in German and in the made-up language, and lets the library complain in German.
#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "std/cSTDExceptions.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <cstdio>

namespace
{
bool says(mucs::cLILocale const& locale, mucs::cLIMessage const& message, char const* expected)
{
  mucs::cString text;
  if (locale.translate(message, text, nullptr) && text.ascii('?') == expected)
  {
    return true;
  }
  std::printf("%s, not %s\n", text.ascii('?').c_str(), expected);
  return false;
}
} // namespace

int main()
{
  mucs::cLIMessage const greeting = mucs::cLIMessage() << "$MTR$Good morning, %name%!"
                                                       << "Ada";
  mucs::cLILocale german("german");
  german.loadFromFile(mucs::cString(LOCALES "de.locale"));
  mucs::cLILocale pseudo("pseudo");
  pseudo.loadFromFile(mucs::cString(LOCALES "pseudo.locale"));
  try
  {
    cSTDExceptions::throwUnexpectedEndOfInput();
  }
  catch (mstd::cRuntimeException const& e)
  {
    return says(german, greeting, "Guten Morgen, Ada!") && says(pseudo, greeting, "[???d m?r????, Ada! ~~~~~~~~]") &&
                   says(german, *e.liMessage(), "Unerwartetes Ende der Eingabe!")
               ? 0
               : 1;
  }
}
