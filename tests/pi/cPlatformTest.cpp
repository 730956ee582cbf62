#include "pi/cPlatform.h"

#include "pi/breakPoint.h"
#include "pi/cAbstractMutexImpl.h"
#include "pi/cAbstractProcessEvents.h"
#include "pi/cAbstractRunnableImpl.h"
#include "std/cAsciiString.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <errno.h>
#include <signal.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <chrono>
#include <optional>
#include <string>
#include <type_traits>

// The program's own gethostname() and strerror() come before those of the C library, so a test can let them behave as
// no machine at hand does.
namespace
{

enum HostNameBehaviour
{
  PassOn,
  Fail,
  FillWithoutEnd
};

HostNameBehaviour hostNameBehaviour = PassOn;
size_t hostNameSize = 0;
bool hasNoErrorTexts = false;

/// Sets or unsets an environment variable for a scope.
class cVariable
{
public:
  cVariable(char const* name, char const* value) : mName(name)
  {
    if (char const* former = getenv(name))
    {
      mFormer = former;
    }
    set(value);
  }
  ~cVariable() { set(mFormer ? mFormer->c_str() : nullptr); }

private:
  void set(char const* value)
  {
    if (value != nullptr)
    {
      setenv(mName, value, 1);
    }
    else
    {
      unsetenv(mName);
    }
  }

  char const* mName;
  std::optional<std::string> mFormer;
};

} // namespace

extern "C" __attribute__((visibility("default"))) int gethostname(char* name, size_t size) noexcept
{
  switch (hostNameBehaviour)
  {
  case Fail:
    errno = ENAMETOOLONG;
    return -1;
  case FillWithoutEnd:
    hostNameSize = size;
    memset(name, 'h', size);
    return 0;
  case PassOn:
    break;
  }
  static auto const real = reinterpret_cast<int (*)(char*, size_t)>(dlsym(RTLD_NEXT, "gethostname"));
  return real(name, size);
}

extern "C" __attribute__((visibility("default"))) char* strerror(int error) noexcept
{
  static char empty[] = "";
  if (hasNoErrorTexts)
  {
    return empty;
  }
  static auto const real = reinterpret_cast<char* (*)(int)>(dlsym(RTLD_NEXT, "strerror"));
  return real(error);
}

TEST(cPlatform, AnUnsetVariableIsEmpty)
{
  cVariable variable("MORTISE_TEST_VARIABLE", nullptr);
  EXPECT_TRUE(mpi::cPlatform::getEnv("MORTISE_TEST_VARIABLE").empty());
}

TEST(cPlatform, ASetVariableGivesItsValue)
{
  cVariable variable("MORTISE_TEST_VARIABLE", "some value");
  EXPECT_STREQ(mpi::cPlatform::getEnv("MORTISE_TEST_VARIABLE").c_str(), "some value");
}

TEST(cPlatform, TheUserNameIsUnknownWithUSERUnset)
{
  {
    cVariable variable("USER", nullptr);
    EXPECT_STREQ(mpi::cPlatform::userName().c_str(), "unknown");
  }
  cVariable variable("USER", "somebody");
  EXPECT_STREQ(mpi::cPlatform::userName().c_str(), "somebody");
}

TEST(cPlatform, TheHomeDirectoryIsTheVariableHOME)
{
  {
    cVariable variable("HOME", nullptr);
    EXPECT_TRUE(mpi::cPlatform::homeDirectory().empty());
  }
  cVariable variable("HOME", "/home/somebody");
  EXPECT_TRUE(mpi::cPlatform::homeDirectory() == "/home/somebody");
}

TEST(cPlatform, TheHomeDirectoryIsReadAsUTF8)
{
  cVariable variable("HOME", "/home/\xc3\xa9"); // e with an acute accent
  mucs::cString const home = mpi::cPlatform::homeDirectory();
  ASSERT_EQ(home.length(), 7u);
  EXPECT_EQ(home.at(6), 0xe9u);
}

TEST(cPlatform, AHomeDirectoryThatIsNoUTF8IsReadByteByByte)
{
  cVariable variable("HOME", "/home/\xfe");
  mucs::cString const home = mpi::cPlatform::homeDirectory();
  ASSERT_EQ(home.length(), 7u);
  EXPECT_EQ(home.at(6), 0xfeu);
}

TEST(cPlatform, FixedDirectoriesAndDelimiter)
{
  EXPECT_TRUE(mpi::cPlatform::applicationsDirectory() == "/usr/local/");
  EXPECT_TRUE(mpi::cPlatform::osDirectory() == "/");
  EXPECT_EQ(mpi::cPlatform::osSpecificPathDelimiter(), 47);
}

TEST(cPlatform, ThePidIsThatOfTheProcess)
{
  EXPECT_EQ(mpi::cPlatform::pid(), static_cast<unsigned int>(getpid()));
}

TEST(cPlatform, YieldSleepsForAMicrosecondAtLeast)
{
  auto const begin = std::chrono::steady_clock::now();
  mpi::cPlatform::yield();
  EXPECT_GE(std::chrono::steady_clock::now() - begin, std::chrono::microseconds(1));
}

TEST(cPlatform, ErrorNumbersHaveTheSystemsText)
{
  EXPECT_STREQ(mpi::cPlatform::osFileIOErrorString(ENOENT).c_str(), strerror(ENOENT));
  EXPECT_STREQ(mpi::cPlatform::osFileIOErrorString(1).c_str(), "Operation not permitted");
}

TEST(cPlatform, AnErrorNumberWithoutTextIsShownInDecimal)
{
  hasNoErrorTexts = true;
  mstd::cAsciiString const text = mpi::cPlatform::osFileIOErrorString(-4711);
  hasNoErrorTexts = false;
  EXPECT_STREQ(text.c_str(), "-4711");
}

TEST(cPlatform, TheHostNameIsTheSystems)
{
  char name[1025] = {};
  ASSERT_EQ(gethostname(name, 1024), 0);
  EXPECT_STREQ(mpi::cPlatform::hostname().c_str(), name);
}

TEST(cPlatform, AHostNameThatCannotBeHadIsUnknown)
{
  hostNameBehaviour = Fail;
  mstd::cAsciiString const name = mpi::cPlatform::hostname();
  hostNameBehaviour = PassOn;
  EXPECT_STREQ(name.c_str(), "unknown");
}

TEST(cPlatform, AHostNameThatFillsTheBufferIsTerminated)
{
  hostNameBehaviour = FillWithoutEnd;
  mstd::cAsciiString const name = mpi::cPlatform::hostname();
  hostNameBehaviour = PassOn;
  EXPECT_EQ(hostNameSize, 1024u);
  EXPECT_EQ(std::string(name.c_str()), std::string(1024, 'h'));
}

TEST(cPlatform, IsABuildInfo)
{
  EXPECT_TRUE((std::is_base_of<mstd::cBuildInfo, mpi::cPlatform>::value));
  mpi::cPlatform const platform("c", "v", "s", "h", "d", 12);
  EXPECT_EQ(&platform.buildInfo(), static_cast<mstd::cBuildInfo const*>(&platform));
  EXPECT_STREQ(platform.buildInfo().compiler().c_str(), "c");
  EXPECT_STREQ(platform.buildInfo().compilerVersion().c_str(), "v");
  EXPECT_STREQ(platform.buildInfo().buildSystem().c_str(), "s");
  EXPECT_STREQ(platform.buildInfo().buildHost().c_str(), "h");
  EXPECT_STREQ(platform.buildInfo().buildDate().c_str(), "d");
  EXPECT_EQ(platform.buildInfo().buildCount(), 12u);
}

TEST(cPlatform, KnowsHowTheLibraryWasBuilt)
{
  mpi::cPlatform const platform;
  EXPECT_FALSE(platform.compiler().empty());
  EXPECT_FALSE(platform.compilerVersion().empty());
  EXPECT_FALSE(platform.buildSystem().empty());
  EXPECT_FALSE(platform.buildHost().empty());
  EXPECT_FALSE(platform.buildDate().empty());
}

TEST(cPlatform, BuildChecksHaveNothingToComplainAbout)
{
  EXPECT_NO_THROW(mpi::cPlatform::buildChecks());
}

TEST(cPlatform, MakesAnEventProcessor)
{
  mstd::tAutoPtr<mpi::cAbstractProcessEvents> pEvents = mpi::cPlatform::createProcessEvents();
  EXPECT_NE(pEvents.get(), nullptr);
}

TEST(cPlatform, MakesAMutexThatIsRecursive)
{
  mstd::tAutoPtr<mpi::cAbstractMutexImpl> pMutex = mpi::cPlatform::createMutexImpl();
  pMutex->lock();
  EXPECT_TRUE(pMutex->tryLock());
  pMutex->unlock();
  pMutex->unlock();
}

TEST(cPlatform, MakesAThreadThatRunsWhenItIsStarted)
{
  int value = 0;
  mstd::tAutoPtr<mpi::cAbstractRunnableImpl> pThread =
      mpi::cPlatform::createThread([](void* argument) { *static_cast<int*>(argument) += 1; }, &value);
  pThread->stop();
  EXPECT_EQ(value, 0) << "a thread that was not started is not waited for";
  pThread->start();
  pThread->stop();
  EXPECT_EQ(value, 1);
  pThread->stop();
  pThread->start();
  pThread->start();
  pThread->stop();
  EXPECT_EQ(value, 3);
}

TEST(breakPoint, SendsATrapToTheOwnProcess)
{
  static volatile sig_atomic_t signalled = 0;
  struct sigaction action = {};
  struct sigaction former = {};
  action.sa_handler = [](int number) { signalled = number; };
  sigaction(SIGTRAP, &action, &former);
  mpi::breakPoint();
  sigaction(SIGTRAP, &former, nullptr);
  EXPECT_EQ(signalled, 5);
}
