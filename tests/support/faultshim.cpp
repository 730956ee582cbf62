#include "support/faultshim.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdarg.h>
#include <stdint.h>
#include <stdlib.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <utility>

// No header that declares the replaced functions is relied on: each of them is defined here under its link name, and a
// 32-bit processor has one with 32-bit and one with 64-bit offsets.

namespace
{

using support::cFaultShim;

// Apart from the state, since the replaced functions are called long before and after everything else.
bool isOn = false;

struct tPlan
{
  unsigned int miSkip = 0;
  unsigned int miTimes = 0;
  int miError = 0;
};

struct tAction
{
  unsigned int miSkip = 0;
  std::function<void()> mAction;
};

unsigned long long const unlimited = ~0ull;

struct tState
{
  tPlan mPlans[cFaultShim::NumCalls];
  tPlan mAny;
  tAction mActions[cFaultShim::NumCalls];
  unsigned int miCalls[cFaultShim::NumCalls] = {};
  unsigned int miFaults = 0;
  unsigned long long miReadLimit = unlimited;
  unsigned long long miWriteLimit = unlimited;
  unsigned long long miSpace = unlimited;
  unsigned long long miLargest = 0;
  std::string msPath;
  int miFlags = 0;
  unsigned int miMode = 0;
};

tState& state()
{
  static tState* const pState = new tState;
  return *pState;
}

bool comesNow(tPlan& plan)
{
  if (plan.miTimes == 0)
  {
    return false;
  }
  if (plan.miSkip != 0)
  {
    --plan.miSkip;
    return false;
  }
  --plan.miTimes;
  return true;
}

/// Counts a call. True if it shall fail, with `errno` set.
bool failsNow(cFaultShim::tCall call)
{
  if (!isOn)
  {
    return false;
  }
  tState& s = state();
  ++s.miCalls[call];
  tAction& action = s.mActions[call];
  if (action.mAction)
  {
    if (action.miSkip != 0)
    {
      --action.miSkip;
    }
    else
    {
      std::function<void()> const function = std::move(action.mAction);
      action.mAction = nullptr;
      isOn = false;
      function();
      isOn = true;
    }
  }
  // Both count on.
  bool const any = comesNow(s.mAny);
  bool const own = comesNow(s.mPlans[call]);
  if (!any && !own)
  {
    return false;
  }
  ++s.miFaults;
  errno = own ? s.mPlans[call].miError : s.mAny.miError;
  return true;
}

template <class tFunction>
tFunction real(char const* pName, tFunction)
{
  return reinterpret_cast<tFunction>(dlsym(RTLD_NEXT, pName));
}

/// A call that fails with -1.
template <class... tArguments>
int callAs(cFaultShim::tCall call, char const* pName, tArguments... arguments)
{
  auto const function = real(pName, static_cast<int (*)(tArguments...)>(nullptr));
  return failsNow(call) ? -1 : function(arguments...);
}

int openAs(char const* pName, char const* pPath, int iFlags, unsigned int iMode)
{
  static_assert(sizeof(unsigned int) == 4, "mode_t");
  if (isOn)
  {
    tState& s = state();
    s.msPath = pPath;
    s.miFlags = iFlags;
    s.miMode = iMode;
  }
  auto const function = real(pName, static_cast<int (*)(char const*, int, ...)>(nullptr));
  return failsNow(cFaultShim::Open) ? -1 : function(pPath, iFlags, iMode);
}

int openatAs(char const* pName, int iDir, char const* pPath, int iFlags, unsigned int iMode)
{
  auto const function = real(pName, static_cast<int (*)(int, char const*, int, ...)>(nullptr));
  return failsNow(cFaultShim::Open) ? -1 : function(iDir, pPath, iFlags, iMode);
}

template <class tOffset>
tOffset seekAs(char const* pName, int iFD, tOffset iOffset, int iFrom)
{
  auto const function = real(pName, static_cast<tOffset (*)(int, tOffset, int)>(nullptr));
  return failsNow(cFaultShim::Seek) ? -1 : function(iFD, iOffset, iFrom);
}

void* readdirAs(char const* pName, void* pDir)
{
  auto const function = real(pName, static_cast<void* (*)(void*)>(nullptr));
  return failsNow(cFaultShim::ReadDir) ? nullptr : function(pDir);
}

template <class tOffset>
void* mmapAs(char const* pName, void* pAddress, size_t iSize, int iProtection, int iFlags, int iFD, tOffset iOffset)
{
  auto const function = real(pName, static_cast<void* (*)(void*, size_t, int, int, int, tOffset)>(nullptr));
  return failsNow(cFaultShim::MMap) ? reinterpret_cast<void*>(-1)
                                    : function(pAddress, iSize, iProtection, iFlags, iFD, iOffset);
}

ssize_t readBytes(int iFD, void* pData, size_t iSize)
{
  static auto const function = real("read", static_cast<ssize_t (*)(int, void*, size_t)>(nullptr));
  if (failsNow(cFaultShim::Read))
  {
    return -1;
  }
  if (isOn)
  {
    tState& s = state();
    s.miLargest = iSize > s.miLargest ? iSize : s.miLargest;
    iSize = iSize > s.miReadLimit ? static_cast<size_t>(s.miReadLimit) : iSize;
  }
  return function(iFD, pData, iSize);
}

ssize_t writeBytes(int iFD, void const* pData, size_t iSize)
{
  static auto const function = real("write", static_cast<ssize_t (*)(int, void const*, size_t)>(nullptr));
  if (failsNow(cFaultShim::Write))
  {
    return -1;
  }
  if (!isOn)
  {
    return function(iFD, pData, iSize);
  }
  tState& s = state();
  s.miLargest = iSize > s.miLargest ? iSize : s.miLargest;
  iSize = iSize > s.miWriteLimit ? static_cast<size_t>(s.miWriteLimit) : iSize;
  if (s.miSpace == 0 && iSize != 0)
  {
    ++s.miFaults;
    errno = ENOSPC;
    return -1;
  }
  iSize = iSize > s.miSpace ? static_cast<size_t>(s.miSpace) : iSize;
  ssize_t const iResult = function(iFD, pData, iSize);
  if (iResult > 0 && s.miSpace != unlimited)
  {
    s.miSpace -= static_cast<unsigned long long>(iResult);
  }
  return iResult;
}

} // namespace

#define FAULTSHIM_REPLACES(name) __asm__(name) __attribute__((visibility("default"), used))

extern "C" {
int faultOpen(char const*, int, unsigned int) FAULTSHIM_REPLACES("open");
int faultOpen64(char const*, int, unsigned int) FAULTSHIM_REPLACES("open64");
int faultOpenat(int, char const*, int, unsigned int) FAULTSHIM_REPLACES("openat");
int faultOpenat64(int, char const*, int, unsigned int) FAULTSHIM_REPLACES("openat64");
int faultClose(int) FAULTSHIM_REPLACES("close");
ssize_t faultRead(int, void*, size_t) FAULTSHIM_REPLACES("read");
ssize_t faultReadChecked(int, void*, size_t, size_t) FAULTSHIM_REPLACES("__read_chk");
ssize_t faultWrite(int, void const*, size_t) FAULTSHIM_REPLACES("write");
long faultSeek(int, long, int) FAULTSHIM_REPLACES("lseek");
int64_t faultSeek64(int, int64_t, int) FAULTSHIM_REPLACES("lseek64");
int faultTruncate(int, long) FAULTSHIM_REPLACES("ftruncate");
int faultTruncate64(int, int64_t) FAULTSHIM_REPLACES("ftruncate64");
int faultStat(char const*, void*) FAULTSHIM_REPLACES("stat");
int faultStat64(char const*, void*) FAULTSHIM_REPLACES("stat64");
int faultLStat(char const*, void*) FAULTSHIM_REPLACES("lstat");
int faultLStat64(char const*, void*) FAULTSHIM_REPLACES("lstat64");
int faultFStat(int, void*) FAULTSHIM_REPLACES("fstat");
int faultFStat64(int, void*) FAULTSHIM_REPLACES("fstat64");
int faultStatAt(int, char const*, void*, int) FAULTSHIM_REPLACES("fstatat");
int faultStatAt64(int, char const*, void*, int) FAULTSHIM_REPLACES("fstatat64");
int faultMkDir(char const*, unsigned int) FAULTSHIM_REPLACES("mkdir");
int faultMkDirAt(int, char const*, unsigned int) FAULTSHIM_REPLACES("mkdirat");
int faultRmDir(char const*) FAULTSHIM_REPLACES("rmdir");
int faultUnlink(char const*) FAULTSHIM_REPLACES("unlink");
int faultUnlinkAt(int, char const*, int) FAULTSHIM_REPLACES("unlinkat");
int faultRename(char const*, char const*) FAULTSHIM_REPLACES("rename");
int faultRenameAt(int, char const*, int, char const*) FAULTSHIM_REPLACES("renameat");
int faultSymLink(char const*, char const*) FAULTSHIM_REPLACES("symlink");
int faultSymLinkAt(char const*, int, char const*) FAULTSHIM_REPLACES("symlinkat");
ssize_t faultReadLink(char const*, char*, size_t) FAULTSHIM_REPLACES("readlink");
ssize_t faultReadLinkChecked(char const*, char*, size_t, size_t) FAULTSHIM_REPLACES("__readlink_chk");
ssize_t faultReadLinkAt(int, char const*, char*, size_t) FAULTSHIM_REPLACES("readlinkat");
int faultChMod(char const*, unsigned int) FAULTSHIM_REPLACES("chmod");
int faultChModAt(int, char const*, unsigned int, int) FAULTSHIM_REPLACES("fchmodat");
char* faultGetCwd(char*, size_t) FAULTSHIM_REPLACES("getcwd");
char* faultGetCwdChecked(char*, size_t, size_t) FAULTSHIM_REPLACES("__getcwd_chk");
void* faultOpenDir(char const*) FAULTSHIM_REPLACES("opendir");
void* faultFDOpenDir(int) FAULTSHIM_REPLACES("fdopendir");
void* faultReadDir(void*) FAULTSHIM_REPLACES("readdir");
void* faultReadDir64(void*) FAULTSHIM_REPLACES("readdir64");
int faultDup(int) FAULTSHIM_REPLACES("dup");
void* faultMMap(void*, size_t, int, int, int, long) FAULTSHIM_REPLACES("mmap");
void* faultMMap64(void*, size_t, int, int, int, int64_t) FAULTSHIM_REPLACES("mmap64");

int faultOpen(char const* pPath, int iFlags, unsigned int iMode)
{
  return openAs("open", pPath, iFlags, iMode);
}

int faultOpen64(char const* pPath, int iFlags, unsigned int iMode)
{
  return openAs("open64", pPath, iFlags, iMode);
}

int faultOpenat(int iDir, char const* pPath, int iFlags, unsigned int iMode)
{
  return openatAs("openat", iDir, pPath, iFlags, iMode);
}

int faultOpenat64(int iDir, char const* pPath, int iFlags, unsigned int iMode)
{
  return openatAs("openat64", iDir, pPath, iFlags, iMode);
}

int faultClose(int iFD)
{
  static auto const function = real("close", static_cast<int (*)(int)>(nullptr));
  // As the system does it: the descriptor goes in any case.
  if (failsNow(cFaultShim::Close))
  {
    int const iError = errno;
    function(iFD);
    errno = iError;
    return -1;
  }
  return function(iFD);
}

ssize_t faultRead(int iFD, void* pData, size_t iSize)
{
  return readBytes(iFD, pData, iSize);
}

ssize_t faultReadChecked(int iFD, void* pData, size_t iSize, size_t iRoom)
{
  if (iSize > iRoom)
  {
    abort();
  }
  return readBytes(iFD, pData, iSize);
}

ssize_t faultWrite(int iFD, void const* pData, size_t iSize)
{
  return writeBytes(iFD, pData, iSize);
}

long faultSeek(int iFD, long iOffset, int iFrom)
{
  return seekAs("lseek", iFD, iOffset, iFrom);
}

int64_t faultSeek64(int iFD, int64_t iOffset, int iFrom)
{
  return seekAs("lseek64", iFD, iOffset, iFrom);
}

int faultTruncate(int iFD, long iSize)
{
  return callAs(cFaultShim::Truncate, "ftruncate", iFD, iSize);
}

int faultTruncate64(int iFD, int64_t iSize)
{
  return callAs(cFaultShim::Truncate, "ftruncate64", iFD, iSize);
}

int faultStat(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::Stat, "stat", pPath, pInfo);
}

int faultStat64(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::Stat, "stat64", pPath, pInfo);
}

int faultLStat(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::LStat, "lstat", pPath, pInfo);
}

int faultLStat64(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::LStat, "lstat64", pPath, pInfo);
}

int faultFStat(int iFD, void* pInfo)
{
  return callAs(cFaultShim::FStat, "fstat", iFD, pInfo);
}

int faultFStat64(int iFD, void* pInfo)
{
  return callAs(cFaultShim::FStat, "fstat64", iFD, pInfo);
}

int faultStatAt(int iDir, char const* pPath, void* pInfo, int iFlags)
{
  return callAs(cFaultShim::Stat, "fstatat", iDir, pPath, pInfo, iFlags);
}

int faultStatAt64(int iDir, char const* pPath, void* pInfo, int iFlags)
{
  return callAs(cFaultShim::Stat, "fstatat64", iDir, pPath, pInfo, iFlags);
}

int faultMkDir(char const* pPath, unsigned int iMode)
{
  return callAs(cFaultShim::MkDir, "mkdir", pPath, iMode);
}

int faultMkDirAt(int iDir, char const* pPath, unsigned int iMode)
{
  return callAs(cFaultShim::MkDir, "mkdirat", iDir, pPath, iMode);
}

int faultRmDir(char const* pPath)
{
  return callAs(cFaultShim::RmDir, "rmdir", pPath);
}

int faultUnlink(char const* pPath)
{
  return callAs(cFaultShim::Unlink, "unlink", pPath);
}

int faultUnlinkAt(int iDir, char const* pPath, int iFlags)
{
  return callAs(iFlags != 0 ? cFaultShim::RmDir : cFaultShim::Unlink, "unlinkat", iDir, pPath, iFlags);
}

int faultRename(char const* pFrom, char const* pTo)
{
  return callAs(cFaultShim::Rename, "rename", pFrom, pTo);
}

int faultRenameAt(int iFromDir, char const* pFrom, int iToDir, char const* pTo)
{
  return callAs(cFaultShim::Rename, "renameat", iFromDir, pFrom, iToDir, pTo);
}

int faultSymLink(char const* pTarget, char const* pLink)
{
  return callAs(cFaultShim::SymLink, "symlink", pTarget, pLink);
}

int faultSymLinkAt(char const* pTarget, int iDir, char const* pLink)
{
  return callAs(cFaultShim::SymLink, "symlinkat", pTarget, iDir, pLink);
}

ssize_t faultReadLink(char const* pPath, char* pTarget, size_t iSize)
{
  static auto const function = real("readlink", static_cast<ssize_t (*)(char const*, char*, size_t)>(nullptr));
  return failsNow(cFaultShim::ReadLink) ? -1 : function(pPath, pTarget, iSize);
}

ssize_t faultReadLinkChecked(char const* pPath, char* pTarget, size_t iSize, size_t iRoom)
{
  if (iSize > iRoom)
  {
    abort();
  }
  return faultReadLink(pPath, pTarget, iSize);
}

ssize_t faultReadLinkAt(int iDir, char const* pPath, char* pTarget, size_t iSize)
{
  static auto const function = real("readlinkat", static_cast<ssize_t (*)(int, char const*, char*, size_t)>(nullptr));
  return failsNow(cFaultShim::ReadLink) ? -1 : function(iDir, pPath, pTarget, iSize);
}

int faultChMod(char const* pPath, unsigned int iMode)
{
  return callAs(cFaultShim::ChMod, "chmod", pPath, iMode);
}

int faultChModAt(int iDir, char const* pPath, unsigned int iMode, int iFlags)
{
  return callAs(cFaultShim::ChMod, "fchmodat", iDir, pPath, iMode, iFlags);
}

char* faultGetCwd(char* pTarget, size_t iSize)
{
  static auto const function = real("getcwd", static_cast<char* (*)(char*, size_t)>(nullptr));
  return failsNow(cFaultShim::GetCwd) ? nullptr : function(pTarget, iSize);
}

char* faultGetCwdChecked(char* pTarget, size_t iSize, size_t iRoom)
{
  if (iSize > iRoom)
  {
    abort();
  }
  return faultGetCwd(pTarget, iSize);
}

void* faultOpenDir(char const* pPath)
{
  static auto const function = real("opendir", static_cast<void* (*)(char const*)>(nullptr));
  return failsNow(cFaultShim::OpenDir) ? nullptr : function(pPath);
}

void* faultFDOpenDir(int iFD)
{
  static auto const function = real("fdopendir", static_cast<void* (*)(int)>(nullptr));
  return failsNow(cFaultShim::OpenDir) ? nullptr : function(iFD);
}

void* faultReadDir(void* pDir)
{
  return readdirAs("readdir", pDir);
}

void* faultReadDir64(void* pDir)
{
  return readdirAs("readdir64", pDir);
}

int faultDup(int iFD)
{
  return callAs(cFaultShim::Dup, "dup", iFD);
}

void* faultMMap(void* pAddress, size_t iSize, int iProtection, int iFlags, int iFD, long iOffset)
{
  return mmapAs("mmap", pAddress, iSize, iProtection, iFlags, iFD, iOffset);
}

void* faultMMap64(void* pAddress, size_t iSize, int iProtection, int iFlags, int iFD, int64_t iOffset)
{
  return mmapAs("mmap64", pAddress, iSize, iProtection, iFlags, iFD, iOffset);
}

#if defined(__linux__) && !defined(__LP64__)
int faultStat64Time64(char const*, void*) FAULTSHIM_REPLACES("__stat64_time64");
int faultLStat64Time64(char const*, void*) FAULTSHIM_REPLACES("__lstat64_time64");
int faultFStat64Time64(int, void*) FAULTSHIM_REPLACES("__fstat64_time64");
int faultStatAt64Time64(int, char const*, void*, int) FAULTSHIM_REPLACES("__fstatat64_time64");

int faultStat64Time64(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::Stat, "__stat64_time64", pPath, pInfo);
}

int faultLStat64Time64(char const* pPath, void* pInfo)
{
  return callAs(cFaultShim::LStat, "__lstat64_time64", pPath, pInfo);
}

int faultFStat64Time64(int iFD, void* pInfo)
{
  return callAs(cFaultShim::FStat, "__fstat64_time64", iFD, pInfo);
}

int faultStatAt64Time64(int iDir, char const* pPath, void* pInfo, int iFlags)
{
  return callAs(cFaultShim::Stat, "__fstatat64_time64", iDir, pPath, pInfo, iFlags);
}
#endif
}

namespace support
{

cFaultShim::cFaultShim()
{
  state() = tState();
  isOn = true;
}

cFaultShim::~cFaultShim()
{
  isOn = false;
  state() = tState();
}

void cFaultShim::fail(tCall call, int iError, unsigned int times, unsigned int skip)
{
  state().mPlans[call] = tPlan{skip, times, iError};
}

void cFaultShim::failNth(unsigned int skip, int iError)
{
  state().mAny = tPlan{skip, 1, iError};
}

void cFaultShim::limitRead(unsigned long long iBytes)
{
  state().miReadLimit = iBytes;
}

void cFaultShim::limitWrite(unsigned long long iBytes)
{
  state().miWriteLimit = iBytes;
}

void cFaultShim::limitSpace(unsigned long long iBytes)
{
  state().miSpace = iBytes;
}

void cFaultShim::before(tCall call, std::function<void()> action, unsigned int skip)
{
  state().mActions[call] = tAction{skip, std::move(action)};
}

unsigned int cFaultShim::numCalls(tCall call) const
{
  return state().miCalls[call];
}

unsigned int cFaultShim::numCalls() const
{
  unsigned int iAll = 0;
  for (unsigned int const iCalls : state().miCalls)
  {
    iAll += iCalls;
  }
  return iAll;
}

unsigned int cFaultShim::numFaults() const
{
  return state().miFaults;
}

unsigned long long cFaultShim::largestBlock() const
{
  return state().miLargest;
}

std::string cFaultShim::lastPath() const
{
  return state().msPath;
}

int cFaultShim::lastFlags() const
{
  return state().miFlags;
}

unsigned int cFaultShim::lastMode() const
{
  return state().miMode;
}

unsigned int cFaultShim::numDescriptors()
{
  unsigned int iDescriptors = 0;
  for (int iFD = 0; iFD < 4096; ++iFD)
  {
    // Asked past the functions above: a look must not count.
    int const getFlags = 1;
    iDescriptors += syscall(SYS_fcntl, iFD, getFlags, 0) >= 0;
  }
  return iDescriptors;
}

} // namespace support
