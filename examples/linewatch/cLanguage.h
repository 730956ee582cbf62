#ifndef MORTISE_EXAMPLES_LINEWATCH_CLANGUAGE_H
#define MORTISE_EXAMPLES_LINEWATCH_CLANGUAGE_H

#include "rmi/cConnectable.h"

namespace mucs
{
class cLILocale;
class cLIMessage;
class cString;
} // namespace mucs

/// The language of this program's messages: that of the library's root. Tells of each message that it lacks.
class cLanguage : public mrmi::cConnectable
{
public:
  void load(mucs::cString const& path);

private:
  void sltMissing(mucs::cLILocale const& locale, mucs::cLIMessage const& message);
};

#endif
