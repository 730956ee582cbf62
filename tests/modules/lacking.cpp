// A library that lacks the entry points that it is told to lack.

#include "mcs/module.h"

#if !defined(MORTISE_TEST_NO_INIT)
MORTISE_MODULE_EXPORT void moduleInitComponent(mcs::cAbstractComponent*&, msa::cReferenceFrame&, mcs::cModuleMgr&) {}
#endif

#if !defined(MORTISE_TEST_NO_VERSION)
MORTISE_MODULE_EXPORT void moduleVersion(unsigned int&, unsigned int&) {}
#endif

#if !defined(MORTISE_TEST_NO_KRO_VERSION)
MORTISE_MODULE_EXPORT void kroVersion(unsigned int&, unsigned int&) {}
#endif
