#include "support/cAllocationFault.h"

#include <dlfcn.h>
#include <errno.h>
#include <stdlib.h>

#include <new>

// Sanitizers bring their own malloc. That of g++ is a shared library, behind which operator new can be wrapped.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define HAS_SANITIZER 1
#define CAN_WRAP_NEW 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define HAS_SANITIZER 1
#endif
#endif

namespace
{
thread_local bool isArmed = false;
thread_local unsigned int seen = 0;
thread_local unsigned int failing = 0;
thread_local bool areLaterFailing = false;
thread_local long long blocksHeld = 0;

bool isToFail()
{
  if (!isArmed)
  {
    return false;
  }
  ++seen;
  return seen == failing || (areLaterFailing && failing != 0 && seen > failing);
}
} // namespace

namespace support
{
cAllocationFault::cAllocationFault(unsigned int iNth, bool bAllLater)
{
  seen = 0;
  failing = iNth;
  areLaterFailing = bAllLater;
  isArmed = true;
}

cAllocationFault::~cAllocationFault()
{
  disarm();
}

bool cAllocationFault::hasFired() const
{
  return failing != 0 && seen >= failing;
}

unsigned int cAllocationFault::count() const
{
  return seen;
}

void cAllocationFault::disarm()
{
  isArmed = false;
}

cBlockBalance::cBlockBalance() : miStart(blocksHeld) {}

long long cBlockBalance::blocks() const
{
  return blocksHeld - miStart;
}

bool cAllocationFault::seesNew()
{
#if !defined(HAS_SANITIZER) || defined(CAN_WRAP_NEW)
  return true;
#else
  return false;
#endif
}

bool cAllocationFault::seesMalloc()
{
#ifdef HAS_SANITIZER
  return false;
#else
  return true;
#endif
}
} // namespace support

#ifdef HAS_SANITIZER

#ifdef CAN_WRAP_NEW
namespace
{
// The sanitizer's own operator new goes on to do the work, so that it still sees a mismatch of new and delete.
void* callNext(char const* name, size_t size)
{
  typedef void* (*cNew)(size_t);
  return reinterpret_cast<cNew>(dlsym(RTLD_NEXT, name))(size);
}

bool const isWide = sizeof(size_t) == 8;
} // namespace

void* operator new(size_t size)
{
  if (isToFail())
  {
    throw std::bad_alloc();
  }
  return callNext(isWide ? "_Znwm" : "_Znwj", size);
}

void* operator new[](size_t size)
{
  if (isToFail())
  {
    throw std::bad_alloc();
  }
  return callNext(isWide ? "_Znam" : "_Znaj", size);
}
#endif

#else

extern "C" {
void* __libc_malloc(size_t size);
void* __libc_calloc(size_t count, size_t size);
void* __libc_realloc(void* p, size_t size);
void __libc_free(void* p);

void* malloc(size_t size) noexcept
{
  if (isToFail())
  {
    errno = ENOMEM;
    return nullptr;
  }
  void* const block = __libc_malloc(size);
  blocksHeld += block != nullptr;
  return block;
}

void* calloc(size_t count, size_t size) noexcept
{
  if (isToFail())
  {
    errno = ENOMEM;
    return nullptr;
  }
  void* const block = __libc_calloc(count, size);
  blocksHeld += block != nullptr;
  return block;
}

void* realloc(void* p, size_t size) noexcept
{
  if (isToFail())
  {
    errno = ENOMEM;
    return nullptr;
  }
  bool const isOld = p != nullptr;
  void* const block = __libc_realloc(p, size);
  // Without a result the old block lives on, unless the size of 0 says that it was to go.
  blocksHeld += (block != nullptr) - (isOld && (block != nullptr || size == 0));
  return block;
}

void free(void* p) noexcept
{
  blocksHeld -= p != nullptr;
  __libc_free(p);
}
}

#endif
