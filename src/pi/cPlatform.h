#ifndef MORTISE_PI_CPLATFORM_H
#define MORTISE_PI_CPLATFORM_H

#include "pi/piTypes.h"
#include "std/cBuildInfo.h"
#include "std/tAutoPtr.h"

namespace mstd
{
class cAsciiString;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{
class cAbstractFsImpl;
class cFs;
} // namespace mio

namespace mpi
{

class cAbstractClassLoader;
class cAbstractMutexImpl;
class cAbstractPlatformInfo;
class cAbstractProcessEvents;
class cAbstractRunnableImpl;

/// What kind of machine the library runs on: static queries, and the factory of every object that is bound to the
/// platform. Nothing else in the library knows the host.
///
/// Texts from the environment are handed on as they are and may hold anything.
class MORTISE_API cPlatform : public mstd::cBuildInfo
{
public:
  /// Knows how this library was built.
  cPlatform();
  /// Knows how something else was built.
  cPlatform(char const* compiler, char const* compilerVersion, char const* buildSystem, char const* buildHost,
            char const* buildDate, unsigned int buildCount);
  ~cPlatform() override;

  mstd::cBuildInfo const& buildInfo() const { return *this; }

  /// The environment variable "USER", or "unknown".
  static mstd::cAsciiString userName();
  /// Value of an environment variable; empty if it isn't set.
  static mstd::cAsciiString getEnv(mstd::cAsciiString const& name);
  static unsigned int pid();
  /// Sleeps for a microsecond, so that others may run.
  static void yield();
  static char osSpecificPathDelimiter();
  /// The system's text for an error number, or the number if there is no text.
  static mstd::cAsciiString osFileIOErrorString(int iError);
  /// The environment variable "HOME", read as UTF-8, or byte by byte if it isn't that; empty if it isn't set.
  static mucs::cString homeDirectory();
  static mucs::cString applicationsDirectory();
  static mucs::cString osDirectory();
  /// Name of this host, or "unknown".
  static mstd::cAsciiString hostname();
  /// Hook for checks of the build before the root is handed out; nothing to check on Linux.
  static void buildChecks();

  static mstd::tAutoPtr<mpi::cAbstractProcessEvents> createProcessEvents();
  static mstd::tAutoPtr<mpi::cAbstractMutexImpl> createMutexImpl();
  /// A thread that will execute `function(argument)`; it isn't started.
  static mstd::tAutoPtr<mpi::cAbstractRunnableImpl> createThread(void (*function)(void*), void* argument);
  static mstd::tAutoPtr<mio::cAbstractFsImpl> createFsImpl(mio::cFs& fs);
  static mstd::tAutoPtr<mpi::cAbstractClassLoader> createClassLoader(mucs::cString const& fileName);
  static mstd::tAutoPtr<mpi::cAbstractPlatformInfo> createPlatformInfo();
};

} // namespace mpi

#endif
