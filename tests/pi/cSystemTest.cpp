#include "pi/cSystem.h"

#include "io/cFs.h"
#include "mce/cCoreExtensionMgr.h"
#include "mce/cGenericExtension.h"
#include "pi/cAbstractKROApp.h"
#include "pi/cAbstractOut.h"
#include "pi/cDebugStdErr.h"
#include "pi/cGlobalCaches.h"
#include "pi/cWork.h"
#include "pi/cWorkQueue.h"
#include "pi/schedule.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cNumberConversionFormat.h"
#include "support/cAllocationFault.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <unistd.h>

#include <new>
#include <string>
#include <type_traits>

namespace
{

class cApp : public cAbstractKROApp
{
};

/// Each test starts and ends without a root.
class cSystem : public testing::Test
{
protected:
  cSystem() { mpi::cSystem::cleanup(); }
  ~cSystem() override { mpi::cSystem::cleanup(); }
};

std::string textOfAppFailure()
{
  try
  {
    mpi::cSystem::app();
  }
  catch (mstd::cBugException const& e)
  {
    mucs::cString text;
    e.createMessage(text, mucs::cString(""), 0, nullptr);
    return std::string(text.ascii('?').c_str()) + "@" + e.sourceFileName() + ":" + std::to_string(e.sourceFileLine());
  }
  return "";
}

char const* const noApp = "No application object set!@:0";

unsigned int numEntries(mpi::cWorkQueue const& queue)
{
  unsigned int count = 0;
  for (auto const& job : queue.jobs())
  {
    count += job.isValid() ? 1 : 0;
  }
  return count;
}

struct cSeen
{
  mpi::cSystem* pFirst = nullptr;
  mpi::cSystem* pSecond = nullptr;
  mpi::cWorkQueue* pQueue = nullptr;
  mpi::cAbstractOut* pOut = nullptr;
  bool mHasPathFixupHash = true;
};

/// Work that asks for the root when it goes.
class cLateWork : public mpi::cWork
{
public:
  explicit cLateWork(cSeen* pSeen = nullptr) : mpSeen(pSeen) {}
  ~cLateWork() override
  {
    mpi::cAbstractOut& out = mpi::system().out;
    out.debugMessage("tests/cLateWork", 5) << "late work goes\n" << mpi::cAbstractOut::clearDebugMessage();
    if (mpSeen != nullptr)
    {
      mpSeen->pFirst = &mpi::system();
      mpSeen->pSecond = &mpi::system();
      mpSeen->pQueue = &mpi::system().wq;
      mpSeen->pOut = &mpi::system().out;
      mpSeen->mHasPathFixupHash = mpi::system().caches.hasPathFixupHash() != nullptr;
    }
  }

private:
  cSeen* mpSeen;
};

/// Core extension that uses the root when it goes.
class cLateExtension : public mce::cGenericExtension
{
public:
  explicit cLateExtension(cSeen* pSeen = nullptr)
      : cGenericExtension(mstd::cAsciiString("late"), cAbstractCoreExtension::SA), mpSeen(pSeen)
  {
  }
  ~cLateExtension() override
  {
    mpi::cSystem& system = mpi::system();
    system.out.debugMessage("tests/cLateExtension", 6)
        << "extension goes beside " << numEntries(system.wq) << " jobs " << mucs::cLIMessage("and a language") << "\n"
        << mpi::cAbstractOut::clearDebugMessage();
    if (mpSeen != nullptr)
    {
      mpSeen->pFirst = &system;
      mpSeen->mHasPathFixupHash = system.caches.hasPathFixupHash() != nullptr;
    }
  }

private:
  cSeen* mpSeen;
};

void addExtension(cSeen* pSeen = nullptr)
{
  mpi::system().extensions.add(mstd::tAutoPtr<mce::cAbstractCoreExtension>(new cLateExtension(pSeen)));
}

/// Work that shuts the root down when it goes.
class cEagerWork : public mpi::cWork
{
public:
  ~cEagerWork() override { mpi::cSystem::cleanup(); }
};

template <typename Work>
void add(Work* pWork)
{
  mpi::schedule(mstd::tAutoPtr<mpi::cWork>(pWork));
}

} // namespace

TEST_F(cSystem, EveryCallReturnsTheSameObject)
{
  mpi::cSystem& system = mpi::system();
  mpi::cWorkQueue& queue = system.wq;
  EXPECT_EQ(&mpi::system(), &system);
  EXPECT_EQ(&mpi::system(), &system);
  EXPECT_EQ(&mpi::system().wq, &queue);
}

TEST_F(cSystem, TheRootHasItsMembers)
{
  mpi::cSystem& system = mpi::system();
  EXPECT_EQ(system.defaults.numberFormat.base(), 10u);
  EXPECT_NE(dynamic_cast<mucs::cEnDecUTF8*>(&system.defaults.enDec), nullptr);
  EXPECT_NE(system.wq.events(), nullptr);
  EXPECT_EQ(numEntries(system.wq), 0u);
  EXPECT_NE(dynamic_cast<mpi::cDebugStdErr*>(&system.out), nullptr);
  EXPECT_EQ(system.caches.hasPathFixupHash(), nullptr);
}

TEST_F(cSystem, MembersAreBuiltInTheirOrder)
{
  // They are members of one object, so their addresses tell.
  mpi::cSystem& system = mpi::system();
  void const* const order[] = {&system.defaults.numberFormat,
                               &system.defaults.enDec,
                               &system.fs,
                               &system.extensions,
                               &system.locale,
                               &system.wq,
                               &system.out,
                               &system.caches};
  for (unsigned int i = 1; i < sizeof(order) / sizeof(order[0]); ++i)
  {
    EXPECT_LT(order[i - 1], order[i]) << "member " << i;
  }
}

TEST_F(cSystem, TheHoldersTypeIsTheFacadeItself)
{
  EXPECT_TRUE((std::is_same<mpi::cSystem::cSystemFactory, mpi::cSystem>::value));
}

TEST_F(cSystem, TheDefaultFormatIsTheOneOfTheRoot)
{
  EXPECT_EQ(&mstd::cNumberConversionFormat::getGlobalDefaultNumberConversionFormat(),
            &mpi::system().defaults.numberFormat);
}

TEST_F(cSystem, ExecIsOneTurnAndTellsTheActiveWork)
{
  mpi::system();
  EXPECT_EQ(mpi::cSystem::exec(), 0u);
  unsigned int runs = 0;
  struct cCounting : mpi::cWork
  {
    explicit cCounting(unsigned int& rRuns) : mRuns(rRuns) {}
    void action() override { ++mRuns; }
    unsigned int& mRuns;
  };
  cCounting work(runs);
  mpi::schedule(work);
  work.start(0, mpi::cWork::SingleTask);
  EXPECT_EQ(mpi::system().exec(), 1u) << "it was active, and is kept";
  EXPECT_EQ(runs, 1u);
  EXPECT_EQ(mpi::system().exec(), 0u);
  EXPECT_EQ(runs, 1u) << "one turn runs what is due, and no more";
}

TEST_F(cSystem, WithoutAnApplicationAppFails)
{
  EXPECT_EQ(textOfAppFailure(), noApp) << "without a root";
  mpi::system();
  EXPECT_EQ(textOfAppFailure(), noApp) << "with a root";
}

TEST_F(cSystem, TheApplicationIsHandedBack)
{
  cApp app;
  mpi::system();
  mpi::cSystem::setApp(&app);
  EXPECT_EQ(&mpi::system().app(), &app);
  mpi::cSystem::setApp(nullptr);
  EXPECT_EQ(textOfAppFailure(), noApp);
}

TEST_F(cSystem, AnApplicationSetBeforeTheRootExistsIsLost)
{
  cApp app;
  mpi::cSystem::setApp(&app);
  mpi::system();
  EXPECT_EQ(textOfAppFailure(), noApp);
}

TEST_F(cSystem, AfterCleanupAFreshRootIsBuilt)
{
  cApp app;
  mpi::system();
  mpi::cSystem::setApp(&app);
  add(new mpi::cWork);
  mpi::system().defaults.numberFormat.setBase(16);
  mpi::system().caches.createPathFixupHash();
  ASSERT_EQ(numEntries(mpi::system().wq), 1u);

  mpi::cSystem::cleanup();
  EXPECT_EQ(textOfAppFailure(), noApp);
  mpi::system();
  EXPECT_EQ(textOfAppFailure(), noApp);
  EXPECT_EQ(numEntries(mpi::system().wq), 0u);
  EXPECT_EQ(mpi::system().defaults.numberFormat.base(), 10u);
  EXPECT_EQ(mpi::system().caches.hasPathFixupHash(), nullptr);
  mpi::cSystem::setApp(&app);
  EXPECT_EQ(&mpi::cSystem::app(), &app);
}

TEST_F(cSystem, CleanupTwiceInARowAndWithoutARootDoesNothing)
{
  mpi::cSystem::cleanup();
  mpi::system();
  mpi::cSystem::cleanup();
  mpi::cSystem::cleanup();
  mpi::system();
  EXPECT_EQ(mpi::cSystem::exec(), 0u);
}

TEST_F(cSystem, TheCacheOfPathsIsThereOnlyWhenAskedFor)
{
  EXPECT_EQ(mpi::system().caches.hasPathFixupHash(), nullptr);
  mpi::system().caches.createPathFixupHash();
  EXPECT_NE(mpi::system().caches.hasPathFixupHash(), nullptr);
  mpi::cSystem::cleanup();
  EXPECT_EQ(mpi::system().caches.hasPathFixupHash(), nullptr);
}

TEST_F(cSystem, WorkThatGoesDuringTheTearDownMayWrite)
{
  testing::internal::CaptureStderr();
  add(new cLateWork);
  mpi::cSystem::cleanup();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cLateWork:5: late work goes\r\n");
}

TEST_F(cSystem, AFacadeMadeDuringTheTearDownSeesTheDyingRootAndIsNotKept)
{
  cSeen seen;
  testing::internal::CaptureStderr();
  mpi::cWorkQueue* pQueue = &mpi::system().wq;
  mpi::cAbstractOut* pOut = &mpi::system().out;
  add(new cLateWork(&seen));
  mpi::cSystem::cleanup();
  EXPECT_EQ(seen.pQueue, pQueue);
  EXPECT_EQ(seen.pOut, pOut);
  EXPECT_EQ(seen.pFirst, seen.pSecond);

  mpi::cSystem& fresh = mpi::system();
  EXPECT_NE(&fresh, seen.pFirst);
  add(new cLateWork);
  EXPECT_EQ(numEntries(fresh.wq), 1u);
  EXPECT_EQ(fresh.exec(), 0u);
  mpi::cSystem::cleanup();
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cLateWork:5: late work goes\r\ncLateWork:5: late work goes\r\n");
}

TEST_F(cSystem, CleanupClearsTheCachesWhileTheWorkIsStillThere)
{
  cSeen seen;
  testing::internal::CaptureStderr();
  add(new cLateWork(&seen));
  mpi::system().caches.createPathFixupHash();
  mpi::cSystem::cleanup();
  EXPECT_FALSE(seen.mHasPathFixupHash);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cLateWork:5: late work goes\r\n");
}

TEST_F(cSystem, CleanupClearsTheExtensionsBeforeAllElse)
{
  cSeen seen;
  seen.mHasPathFixupHash = false;
  testing::internal::CaptureStderr();
  mpi::cSystem* const pRoot = &mpi::system();
  add(new cLateWork);
  addExtension(&seen);
  addExtension();
  mpi::system().caches.createPathFixupHash();
  mpi::cSystem::cleanup();
  EXPECT_EQ(seen.pFirst, pRoot) << "the root is whole";
  EXPECT_TRUE(seen.mHasPathFixupHash) << "the caches go after them";
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "cLateExtension:6: extension goes beside 1 jobs and a language\r\n"
                                                    "cLateExtension:6: extension goes beside 1 jobs and a language\r\n"
                                                    "cLateWork:5: late work goes\r\n");
  EXPECT_EQ(mpi::system().extensions.hasExtension(mstd::cAsciiString("LATE")), nullptr);
}

TEST_F(cSystem, CleanupCalledDuringTheTearDownDoesNothing)
{
  add(new cEagerWork);
  add(new cEagerWork);
  mpi::cSystem::cleanup();
  EXPECT_EQ(textOfAppFailure(), noApp);
}

TEST_F(cSystem, AnAllocationFaultWhileBuildingLeavesNoRootAndTheNextCallTriesAgain)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations can't be made to fail under this sanitizer";
  }
  unsigned int numFailures = 0;
  for (unsigned int n = 1;; ++n)
  {
    bool failed = false;
    bool hasFired = false;
    {
      support::cAllocationFault fault(n);
      try
      {
        mpi::system();
      }
      catch (std::bad_alloc const&)
      {
        failed = true;
      }
      hasFired = fault.hasFired();
    }
    EXPECT_EQ(failed, hasFired) << "allocation " << n;
    if (failed)
    {
      ++numFailures;
      EXPECT_EQ(textOfAppFailure(), noApp);
      mpi::system();
      EXPECT_EQ(mpi::cSystem::exec(), 0u);
    }
    mpi::cSystem::cleanup();
    if (!hasFired)
    {
      break;
    }
  }
  EXPECT_GE(numFailures, 2u) << "the members and the facade are allocated";
}

// What happens at the end of a process shows in a child that ends.
class cSystemExit : public testing::Test
{
protected:
  cSystemExit() { mpi::cSystem::cleanup(); }
};

TEST_F(cSystemExit, WithoutCleanupTheExitHandlersTearTheRootDown)
{
  EXPECT_EXIT(
      {
        add(new cLateWork);
        exit(3);
      },
      testing::ExitedWithCode(3), "^cLateWork:5: late work goes\r\n$");
}

TEST_F(cSystemExit, WithoutCleanupTheExtensionsGoFirstToo)
{
  EXPECT_EXIT(
      {
        add(new cLateWork);
        addExtension();
        exit(3);
      },
      testing::ExitedWithCode(3),
      "^cLateExtension:6: extension goes beside 1 jobs and a language\r\ncLateWork:5: late work goes\r\n$");
}

TEST_F(cSystemExit, CleanupThenExitTearsDownOnce)
{
  EXPECT_EXIT(
      {
        add(new cLateWork);
        mpi::cSystem::cleanup();
        fprintf(stderr, "cleaned\n");
        exit(0);
      },
      testing::ExitedWithCode(0), "^cLateWork:5: late work goes\r\ncleaned\n$");
}

TEST_F(cSystemExit, CleanupTwiceThenExit)
{
  EXPECT_EXIT(
      {
        add(new cLateWork);
        mpi::cSystem::cleanup();
        mpi::cSystem::cleanup();
        fprintf(stderr, "cleaned\n");
        exit(0);
      },
      testing::ExitedWithCode(0), "^cLateWork:5: late work goes\r\ncleaned\n$");
}

TEST_F(cSystemExit, ARootBuiltAfterCleanupIsTornDownAtExit)
{
  EXPECT_EXIT(
      {
        mpi::system();
        mpi::cSystem::cleanup();
        add(new cLateWork);
        fprintf(stderr, "built\n");
        exit(0);
      },
      testing::ExitedWithCode(0), "^built\ncLateWork:5: late work goes\r\n$");
}

TEST_F(cSystemExit, AProcessThatNeverAsksForTheRootEndsWithoutOne)
{
  EXPECT_EXIT(exit(0), testing::ExitedWithCode(0), "^$");
}

TEST_F(cSystemExit, BehindTheExitHandlersARootIsBuiltAnew)
{
  // A stream of one's own is flushed after all exit handlers have run.
  EXPECT_EXIT(
      {
        cookie_io_functions_t functions = {};
        functions.write = [](void*, char const*, size_t length) -> ssize_t {
          mpi::system().out << "built behind the handlers\n";
          return static_cast<ssize_t>(length);
        };
        FILE* pStream = fopencookie(nullptr, "w", functions);
        fputs("something to flush", pStream);
        add(new cLateWork);
        exit(0);
      },
      testing::ExitedWithCode(0), "^cLateWork:5: late work goes\r\nbuilt behind the handlers\r\n$");
}
