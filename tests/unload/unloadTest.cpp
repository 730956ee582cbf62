// Loads the library privately and lets go of it again, as a host does with a plug-in. This program is not linked to the
// library, so that it is gone once nobody holds it.

#include "probe.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>
#include <stdio.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

#if !defined(MORTISE_TEST_SANITIZED)
// Counts what the whole process, with all that it has loaded, holds of the heap.
namespace
{
long miLive = 0;
} // namespace

extern "C" {
void* __libc_malloc(size_t iSize);
void* __libc_calloc(size_t iCount, size_t iSize);
void* __libc_realloc(void* pOld, size_t iSize);
void* __libc_memalign(size_t iAlignment, size_t iSize);
void __libc_free(void* pOld);

void* malloc(size_t iSize)
{
  void* const pNew = __libc_malloc(iSize);
  miLive += pNew != nullptr ? 1 : 0;
  return pNew;
}

void* calloc(size_t iCount, size_t iSize)
{
  void* const pNew = __libc_calloc(iCount, iSize);
  miLive += pNew != nullptr ? 1 : 0;
  return pNew;
}

void* realloc(void* pOld, size_t iSize)
{
  bool const hadOld = pOld != nullptr;
  void* const pNew = __libc_realloc(pOld, iSize);
  miLive += !hadOld && pNew != nullptr ? 1 : 0;
  miLive -= hadOld && iSize == 0 ? 1 : 0;
  return pNew;
}

void* aligned_alloc(size_t iAlignment, size_t iSize)
{
  void* const pNew = __libc_memalign(iAlignment, iSize);
  miLive += pNew != nullptr ? 1 : 0;
  return pNew;
}

void free(void* pOld)
{
  miLive -= pOld != nullptr ? 1 : 0;
  __libc_free(pOld);
}
}
#endif

namespace
{

unsigned int const Rounds = 100;

std::vector<std::string> events;

void note(char const* event)
{
  events.push_back(event);
}

/// Catches the standard error stream, below the C library's buffers.
class cCapturedStderr
{
public:
  cCapturedStderr() : mpFile(tmpfile()), miFormer(dup(2)) { dup2(fileno(mpFile), 2); }
  cCapturedStderr(cCapturedStderr const&) = delete;
  cCapturedStderr& operator=(cCapturedStderr const&) = delete;
  ~cCapturedStderr()
  {
    dup2(miFormer, 2);
    close(miFormer);
    fclose(mpFile);
  }
  std::string text() const
  {
    std::string result;
    rewind(mpFile);
    for (int c = getc(mpFile); c != EOF; c = getc(mpFile))
    {
      result += static_cast<char>(c);
    }
    return result;
  }

private:
  FILE* mpFile;
  int miFormer;
};

void* load(char const* pFile)
{
  void* const pHandle = dlopen(pFile, RTLD_NOW | RTLD_LOCAL);
  EXPECT_NE(pHandle, nullptr) << dlerror();
  return pHandle;
}

template <class T>
T symbol(void* pHandle, char const* pName)
{
  void* const pSymbol = dlsym(pHandle, pName);
  EXPECT_NE(pSymbol, nullptr) << pName;
  T result = nullptr;
  std::memcpy(&result, &pSymbol, sizeof result);
  return result;
}

/// Mapped objects of the process whose path holds `part`.
unsigned int countMapped(char const* part)
{
  struct cSearch
  {
    char const* mpPart;
    unsigned int miFound;
  } search = {part, 0};
  dl_iterate_phdr(
      [](dl_phdr_info* pInfo, size_t, void* pData) {
        cSearch* const pSearch = static_cast<cSearch*>(pData);
        pSearch->miFound += std::strstr(pInfo->dlpi_name, pSearch->mpPart) != nullptr ? 1 : 0;
        return 0;
      },
      &search);
  return search.miFound;
}

bool isLoaded(char const* pFile)
{
  void* const pHandle = dlopen(pFile, RTLD_NOW | RTLD_NOLOAD);
  if (pHandle != nullptr)
  {
    dlclose(pHandle); // the question alone would hold it
  }
  return pHandle != nullptr;
}

/// True if neither the library nor the module is in the process.
bool isGone()
{
  return !isLoaded(MORTISE_LIBRARY) && !isLoaded(MORTISE_PROBE) && countMapped("libmortise.so") == 0 &&
         countMapped("mortise-unload-probe") == 0;
}

std::vector<std::string> const inOrder = {"module", "work, behind the facade", "event processor"};

/// One life of the module and of the library behind it.
void live()
{
  events.clear();
  void* const pHandle = load(MORTISE_PROBE);
  ASSERT_NE(pHandle, nullptr);
  tBuildRoot const buildRoot = symbol<tBuildRoot>(pHandle, "probeBuildRoot");
  ASSERT_NE(buildRoot, nullptr);
  ASSERT_TRUE(buildRoot(note)) << "no fresh root";
  ASSERT_TRUE(events.empty());
  ASSERT_EQ(dlclose(pHandle), 0);
  ASSERT_EQ(events, inOrder);
  ASSERT_TRUE(isGone());
}

} // namespace

TEST(unload, TheLibraryAloneIsGoneWhenNobodyHoldsIt)
{
  ASSERT_TRUE(isGone());
  for (unsigned int i = 0; i < 2; ++i)
  {
    void* const pHandle = load(MORTISE_LIBRARY);
    ASSERT_NE(pHandle, nullptr);
    EXPECT_FALSE(isGone());
    auto const system = symbol<void* (*)()>(pHandle, "_ZN3mpi6systemEv"); // mpi::system()
    ASSERT_NE(system, nullptr);
    EXPECT_NE(system(), nullptr);
    EXPECT_EQ(system(), system());
    EXPECT_EQ(dlclose(pHandle), 0);
    EXPECT_TRUE(isGone());
  }
}

TEST(unload, ALibraryWithoutARootIsGoneToo)
{
  void* const pHandle = load(MORTISE_LIBRARY);
  ASSERT_NE(pHandle, nullptr);
  EXPECT_EQ(dlclose(pHandle), 0);
  EXPECT_TRUE(isGone());
}

TEST(unload, TheLibraryStaysAsLongAsItsUserDoes)
{
  events.clear();
  void* const pLibrary = load(MORTISE_LIBRARY);
  void* const pProbe = load(MORTISE_PROBE);
  ASSERT_TRUE(pLibrary != nullptr && pProbe != nullptr);
  EXPECT_EQ(countMapped("libmortise.so"), 1u);
  cCapturedStderr const captured;
  ASSERT_TRUE(symbol<tBuildRoot>(pProbe, "probeBuildRoot")(note));
  EXPECT_EQ(dlclose(pLibrary), 0);
  EXPECT_EQ(countMapped("libmortise.so"), 1u);
  EXPECT_TRUE(events.empty());
  EXPECT_EQ(dlclose(pProbe), 0);
  EXPECT_EQ(events, inOrder);
  EXPECT_TRUE(isGone());
}

TEST(unload, TheRootGoesBehindItsFacadeWhileTheDebugOutputStillWrites)
{
  cCapturedStderr const captured;
  live();
  EXPECT_EQ(captured.text(), "probe.cpp:1: late work goes\r\n");
}

TEST(unload, AHundredLivesLeaveNothingBehind)
{
  cCapturedStderr const captured;
#if defined(MORTISE_TEST_SANITIZED)
  for (unsigned int i = 0; i < Rounds && !HasFatalFailure(); ++i)
  {
    live();
  }
#else
  // The loader keeps a block or two for the next time, so the numbers swing.
  long mosts[2] = {0, 0};
  for (unsigned int i = 0; i < Rounds && !HasFatalFailure(); ++i)
  {
    live();
    long& most = mosts[i < Rounds / 2 ? 0 : 1];
    most = std::max(most, miLive);
  }
  EXPECT_GT(mosts[0], 0);
  EXPECT_LE(mosts[1], mosts[0]);
#endif
  std::string const text = captured.text();
  size_t lines = 0;
  for (char c : text)
  {
    lines += c == '\n' ? 1 : 0;
  }
  EXPECT_EQ(lines, Rounds);
}
