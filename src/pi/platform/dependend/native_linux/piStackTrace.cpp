#include "pi/piStackTrace.h"

#include "std/cAsciiString.h"

// The C library declares basename() already, otherwise than libiberty would.
#define HAVE_DECL_BASENAME 1

#include <dlfcn.h>
#include <execinfo.h>
#include <libiberty/demangle.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

namespace
{

unsigned int const mostLevels = 128;
unsigned int const blanksPerLevel = 2;
int const demangleOptions = DMGL_PARAMS | DMGL_ANSI;
static_assert(DMGL_PARAMS == 1 && DMGL_ANSI == 2, "the demangler gives full signatures");
static_assert(sizeof(piAddress) == sizeof(void*), "return addresses are stored in place");

unsigned int clampCount(unsigned int count)
{
  if (count == 0)
  {
    return 1;
  }
  return count < mostLevels ? count : mostLevels;
}

/// What backtrace() says it found, as a count. The call itself stands in the functions below, so that the innermost
/// frame is theirs.
unsigned int found(int result)
{
  return result > 0 ? static_cast<unsigned int>(result) : 0;
}

/// A demangled name, freed at the end of the scope.
struct cDemangled
{
  char* mpName;

  explicit cDemangled(char const* symbol) : mpName(cplus_demangle(symbol, demangleOptions)) {}
  cDemangled(cDemangled const&) = delete;
  cDemangled& operator=(cDemangled const&) = delete;
  ~cDemangled() { free(mpName); }
};

/// Resolves the function at `pPlace`; an unknown one is shown as `address`.
bool resolve(void const* pPlace, piAddress address, mstd::cAsciiString& name)
{
  Dl_info info;
  memset(&info, 0, sizeof(info));
  if (dladdr(pPlace, &info) != 0 && info.dli_sname != 0 && info.dli_saddr != 0)
  {
    cDemangled const demangled(info.dli_sname);
    name = mstd::cAsciiString(demangled.mpName != 0 ? demangled.mpName : info.dli_sname);
    return true;
  }
  char digits[2 + 2 * sizeof(unsigned long long) + 1];
  snprintf(digits, sizeof(digits), "0x%llx", static_cast<unsigned long long>(address));
  name = mstd::cAsciiString(static_cast<char const*>(digits));
  return false;
}

/// Resolves a return address. It stands behind the call; when the call was the last thing in its function, that is
/// already the next function, so the byte before it is looked up.
void resolveFrame(void* pFrame, mstd::cAsciiString& name)
{
  resolve(static_cast<char*>(pFrame) - 1, reinterpret_cast<piAddress>(pFrame), name);
}

bool isMain(mstd::cAsciiString const& name)
{
  return strcmp(name.c_str(), "main") == 0;
}

int dumpDepth = 0;

/// Marks that a dump is under way.
struct cDumpGuard
{
  cDumpGuard() { dumpDepth = 1; }
  cDumpGuard(cDumpGuard const&) = delete;
  cDumpGuard& operator=(cDumpGuard const&) = delete;
  ~cDumpGuard() { dumpDepth = 0; }
};

} // namespace

void piBackTrace(piAddress* frames, unsigned int count)
{
  unsigned int const size = clampCount(count);
  memset(frames, 0, size * sizeof(piAddress));
  // The last element stays 0, so it isn't asked for.
  if (size > 1)
  {
    ::backtrace(reinterpret_cast<void**>(frames), static_cast<int>(size - 1));
  }
}

mstd::cAsciiString piStackTrace(unsigned int count)
{
  void* frames[mostLevels];
  unsigned int const levels = found(::backtrace(frames, static_cast<int>(clampCount(count))));
  mstd::cAsciiString trace("\n\n");
  mstd::cAsciiString prefix;
  mstd::cAsciiString name;
  for (unsigned int i = 0; i < levels; ++i)
  {
    void* pFrame = frames[i];
    name = mstd::cAsciiString();
    if (pFrame != 0)
    {
      resolveFrame(pFrame, name);
      trace += prefix;
      trace += name;
    }
    trace += '\n';
    for (unsigned int blank = 0; blank < blanksPerLevel; ++blank)
    {
      prefix += ' ';
    }
    if (isMain(name))
    {
      break;
    }
  }
  return trace;
}

void piStackTrace(unsigned int count, mstd::cAsciiString* out)
{
  void* frames[mostLevels];
  unsigned int const levels = found(::backtrace(frames, static_cast<int>(clampCount(count))));
  for (unsigned int i = 0; i < levels; ++i)
  {
    if (frames[i] == 0)
    {
      continue;
    }
    resolveFrame(frames[i], out[i]);
    if (isMain(out[i]))
    {
      break;
    }
  }
}

void piStackDump()
{
  if (dumpDepth != 0)
  {
    return;
  }
  mstd::cAsciiString trace;
  {
    cDumpGuard const guard;
    trace = piStackTrace(mostLevels);
  }
  fprintf(stderr, "Stackdump: \n%s\n", trace.c_str());
}

bool piResolveAddress(piAddress address, mstd::cAsciiString& name)
{
  return resolve(reinterpret_cast<void const*>(address), address, name);
}
