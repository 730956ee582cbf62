#ifndef MORTISE_PI_CSYSTEMIMPL_H
#define MORTISE_PI_CSYSTEMIMPL_H

#include "io/cFs.h"
#include "mce/cCoreExtensionMgr.h"
#include "pi/cDebugStdErr.h"
#include "pi/cGlobalCaches.h"
#include "pi/cWorkQueue.h"
#include "std/cNumberConversionFormat.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cLILocale.h"

class cAbstractKROApp;

/// The members of the root, in the order of their construction. No constructor of a member calls mpi::system(): the
/// root isn't there yet.
class cSystemImpl
{
public:
  cSystemImpl();
  cSystemImpl(cSystemImpl const&) = delete; // there is one root
  cSystemImpl& operator=(cSystemImpl const&) = delete;
  ~cSystemImpl();

  mstd::cNumberConversionFormat mNumberFormat;
  mucs::cEnDecUTF8 mEnDec;
  mio::cFs mFs;
  mce::cCoreExtensionMgr mExtensions;
  mucs::cLILocale mLocale;
  mpi::cWorkQueue mWorkQueue;
  mpi::cDebugStdErr mOut;
  mpi::cGlobalCaches mCaches;
  cAbstractKROApp* mpApp; // not owned
};

#endif
