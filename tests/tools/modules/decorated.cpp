// A library whose entry points nobody finds: they have the names of C++ functions.

#include "pi/piTypes.h"

MORTISE_API void moduleVersion(unsigned int& iMajor, unsigned int& iMinor);
MORTISE_API void kroVersion(unsigned int& iMajor, unsigned int& iMinor);

void moduleVersion(unsigned int& iMajor, unsigned int& iMinor)
{
  iMajor = 1;
  iMinor = 0;
}

void kroVersion(unsigned int& iMajor, unsigned int& iMinor)
{
  iMajor = 1;
  iMinor = 0;
}
