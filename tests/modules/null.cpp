// A module whose entry points make nothing.

#include "mcs/module.h"

MORTISE_MODULE_EXPORT void moduleInitPlugIn(mcs::cAbstractPlugIn*&, msa::cReferenceFrame&) {}

MORTISE_MODULE_EXPORT void moduleInitComponent(mcs::cAbstractComponent*&, msa::cReferenceFrame&, mcs::cModuleMgr&) {}

MORTISE_MODULE_EXPORT void moduleVersion(unsigned int&, unsigned int&) {}

MORTISE_MODULE_EXPORT void kroVersion(unsigned int&, unsigned int&) {}
