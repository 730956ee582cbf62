#ifndef MORTISE_PI_CDEBUGLEVEL_H
#define MORTISE_PI_CDEBUGLEVEL_H

#include "pi/piTypes.h"

/// Scope guard: what is written to the system's debug output while it lives is indented by one level more.
class MORTISE_API cDebugLevel
{
public:
  cDebugLevel();
  cDebugLevel(cDebugLevel const&) = delete; // one level for one scope
  cDebugLevel& operator=(cDebugLevel const&) = delete;
  ~cDebugLevel();
};

#endif
