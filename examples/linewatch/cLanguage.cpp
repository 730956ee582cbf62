#include "cLanguage.h"

#include "pi/cSystem.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "std/cAsciiString.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <stdio.h>

void cLanguage::load(mucs::cString const& path)
{
  mucs::cLILocale& locale = mpi::system().locale;
  locale.loadFromFile(path);
  // Without a language nothing is missing, so this comes once there is one.
  locale.sigMissingTranslation().connect(mrmi::cDirectLocalSlotCall2(this, &cLanguage::sltMissing));
}

void cLanguage::sltMissing(mucs::cLILocale const&, mucs::cLIMessage const& message)
{
  fprintf(stderr, "linewatch: no translation of \"%s\"\n", message.key().c_str());
}
