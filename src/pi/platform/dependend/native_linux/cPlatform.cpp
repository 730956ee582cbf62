#include "pi/cPlatform.h"

#include "pi/cAbstractMutexImpl.h"
#include "pi/cAbstractPlatformInfo.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cAbstractRunnableImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxClassLoader.h"
#include "pi/platform/dependend/native_linux/cLinuxFsImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxMutexImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxPlatformInfo.h"
#include "pi/platform/dependend/native_linux/cLinuxThreadImpl.h"
#include "pi/platform/dependend/native_linux/cPosixProcessEvents.h"
#include "std/cAsciiString.h"
#include "std/cConstCStringRef.h"
#include "std/cRuntimeException.h"
#include "std/tConstArrayRef.h"
#include "ucs/cString.h"

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

// The build hands in what only it knows. Nothing here depends on the hour or the machine unless it says so: the same
// sources give the same library.
#ifndef MORTISE_BUILD_SYSTEM
#define MORTISE_BUILD_SYSTEM "Linux"
#endif
#ifndef MORTISE_BUILD_HOST
#define MORTISE_BUILD_HOST "unknown"
#endif
#ifndef MORTISE_BUILD_DATE
#define MORTISE_BUILD_DATE "unknown"
#endif
#ifndef MORTISE_BUILD_COUNT
#define MORTISE_BUILD_COUNT 0
#endif

#if defined(__clang__)
#define MORTISE_BUILD_COMPILER "clang"
#else
#define MORTISE_BUILD_COMPILER "gcc"
#endif

namespace mpi
{

namespace
{

char const* const unknown = "unknown";
unsigned int const hostNameSize = 1024;

} // namespace

cPlatform::cPlatform()
    : mstd::cBuildInfo(MORTISE_BUILD_COMPILER, __VERSION__, MORTISE_BUILD_SYSTEM, MORTISE_BUILD_HOST,
                       MORTISE_BUILD_DATE, MORTISE_BUILD_COUNT)
{
}

cPlatform::cPlatform(char const* compiler, char const* compilerVersion, char const* buildSystem, char const* buildHost,
                     char const* buildDate, unsigned int buildCount)
    : mstd::cBuildInfo(compiler, compilerVersion, buildSystem, buildHost, buildDate, buildCount)
{
}

cPlatform::~cPlatform() = default;

mstd::cAsciiString cPlatform::userName()
{
  char const* pName = getenv("USER");
  return pName != 0 ? pName : unknown;
}

mstd::cAsciiString cPlatform::getEnv(mstd::cAsciiString const& name)
{
  char const* pValue = getenv(name.c_str());
  return pValue != 0 ? pValue : "";
}

unsigned int cPlatform::pid()
{
  return static_cast<unsigned int>(getpid());
}

void cPlatform::yield()
{
  usleep(1);
}

char cPlatform::osSpecificPathDelimiter()
{
  return '/';
}

mstd::cAsciiString cPlatform::osFileIOErrorString(int iError)
{
  char const* pText = strerror(iError);
  if (pText != 0 && *pText != 0)
  {
    return pText;
  }
  char digits[16];
  snprintf(digits, sizeof(digits), "%d", iError);
  return static_cast<char const*>(digits);
}

mucs::cString cPlatform::homeDirectory()
{
  char const* pHome = getenv("HOME");
  if (pHome == 0)
  {
    return mucs::cString();
  }
  try
  {
    mucs::cString home;
    home.fromUTF8(mstd::tConstArrayRef<char>(mstd::cConstCStringRef(pHome)));
    return home;
  }
  catch (mstd::cRuntimeException const&)
  {
    // Not in the encoding of file names, yet better than none.
    return mucs::cString(pHome);
  }
}

mucs::cString cPlatform::applicationsDirectory()
{
  return mucs::cString("/usr/local/");
}

mucs::cString cPlatform::osDirectory()
{
  return mucs::cString("/");
}

mstd::cAsciiString cPlatform::hostname()
{
  char name[hostNameSize + 1];
  if (gethostname(name, hostNameSize) != 0)
  {
    return unknown;
  }
  // A name that fills the buffer may come without an end.
  name[hostNameSize] = 0;
  return static_cast<char const*>(name);
}

void cPlatform::buildChecks() {}

mstd::tAutoPtr<mpi::cAbstractProcessEvents> cPlatform::createProcessEvents()
{
  return mstd::tAutoPtr<mpi::cAbstractProcessEvents>(new cPosixProcessEvents);
}

mstd::tAutoPtr<mpi::cAbstractMutexImpl> cPlatform::createMutexImpl()
{
  return mstd::tAutoPtr<mpi::cAbstractMutexImpl>(new cLinuxMutexImpl);
}

mstd::tAutoPtr<mpi::cAbstractRunnableImpl> cPlatform::createThread(void (*function)(void*), void* argument)
{
  return mstd::tAutoPtr<mpi::cAbstractRunnableImpl>(new cLinuxThreadImpl(function, argument));
}

mstd::tAutoPtr<mpi::cAbstractClassLoader> cPlatform::createClassLoader(mucs::cString const& fileName)
{
  return mstd::tAutoPtr<mpi::cAbstractClassLoader>(new cLinuxClassLoader(fileName));
}

mstd::tAutoPtr<mio::cAbstractFsImpl> cPlatform::createFsImpl(mio::cFs& fs)
{
  return mstd::tAutoPtr<mio::cAbstractFsImpl>(new cLinuxFsImpl(fs));
}

mstd::tAutoPtr<mpi::cAbstractPlatformInfo> cPlatform::createPlatformInfo()
{
  return mstd::tAutoPtr<mpi::cAbstractPlatformInfo>(new cLinuxPlatformInfo);
}

} // namespace mpi
