#ifndef MORTISE_PI_CSYSTEM_H
#define MORTISE_PI_CSYSTEM_H

#include "pi/piTypes.h"

class cAbstractKROApp;
class cSystemImpl;

namespace mce
{
class cCoreExtensionMgr;
} // namespace mce

namespace mio
{
class cFs;
} // namespace mio

namespace mstd
{
class cNumberConversionFormat;
} // namespace mstd

namespace mucs
{
class cAbstractEnDec;
class cLILocale;
} // namespace mucs

namespace mpi
{

class cAbstractOut;
class cGlobalCaches;
class cWorkQueue;

/// The process-wide root, reached by mpi::system(). Its public members refer to what the process shares; this
/// header only declares their types, so whoever uses one includes that type's header.
///
/// Threads: all operations belong to the thread that runs the work queue, and the first mpi::system() comes before
///          any second thread. The debug output carries a lock of its own.
class MORTISE_API cSystem
{
public:
  /// The name under which the root's holder knows this class.
  typedef cSystem cSystemFactory;

  /// What is used where a caller gives nothing else.
  class MORTISE_API cDefaults
  {
  public:
    cDefaults(mstd::cNumberConversionFormat& rNumberFormat, mucs::cAbstractEnDec& rEnDec);

    mstd::cNumberConversionFormat& numberFormat; ///< Base 10.
    mucs::cAbstractEnDec& enDec;                 ///< UTF-8.
  };

  explicit cSystem(cSystemImpl& impl);
  cSystem(cSystem const&) = delete; // there is one root
  cSystem& operator=(cSystem const&) = delete;

  cDefaults defaults;
  mio::cFs& fs;                       ///< The file system of whoever names no other.
  mce::cCoreExtensionMgr& extensions; ///< Encoders, serializers and network addresses by name.
  mucs::cLILocale& locale;            ///< The language of the debug output, English until a locale is loaded.
  mpi::cWorkQueue& wq;
  mpi::cAbstractOut& out;
  mpi::cGlobalCaches& caches;

  /// One turn of the main loop; the number of work items still active. The application calls it again and again and
  /// decides itself when to stop. Raises what an action raises and nobody handles. mpi::system() must have been called.
  static unsigned int exec();
  /// The application. Raises cBugException if none is set.
  static cAbstractKROApp& app();
  /// Makes `pApp`, which stays its owner's, the application. Without a root it does nothing: call mpi::system() first.
  static void setApp(cAbstractKROApp* pApp);
  /// Tears the root down: core extensions, caches, work with the debug output still alive, then all members in reverse
  /// order. All references to the root are invalid afterwards. The next mpi::system() builds a new one. Does nothing
  /// without a root, and nothing when called by a destructor during the tear-down. At the end of the process, or when
  /// the library is unloaded, it happens by itself.
  static void cleanup();
};

/// The root, built by the first call. Raises only what a member's constructor raises; the next call then tries again.
///
/// Destructors that run while the root is torn down may call it. What they get refers to the dying root, of which the
/// debug output and everything built before it are alive while the queue's work is destroyed.
///
/// Cost: two loads once the root exists.
MORTISE_API mpi::cSystem& system();

} // namespace mpi

#endif
