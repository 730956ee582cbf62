#include "pi/cLibraryHolder.h"

#include "mcs/cAbstractPlugIn.h"
#include "pi/cAbstractClassLoader.h"
#include "pi/cPlatform.h"
#include "sa/cReferenceFrame.h"
#include "std/tVector.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <errno.h>

#include <string>
#include <thread>
#include <utility>
#include <vector>

using mpi::cLibraryHolder;
using support::cTestModule;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{
typedef std::vector<std::pair<cLibraryHolder::Reason, std::string>> cHolders;

/// The reasons, and the sentences about them.
cHolders holdersOf(char const* pModule, bool bExpected = true)
{
  mstd::tVector<cLibraryHolder> holders;
  holders.append(cLibraryHolder(cLibraryHolder::Library, mucs::cString("from before")));
  EXPECT_EQ(cLibraryHolder::find(cTestModule(pModule).file(), holders), bExpected);
  cHolders result;
  for (unsigned int i = 0; i < holders.length(); ++i)
  {
    result.emplace_back(holders[i].reason(), support::toString(holders[i].message()));
  }
  return result;
}

mstd::tAutoPtr<mpi::cAbstractClassLoader> load(char const* pModule)
{
  return mpi::cPlatform::createClassLoader(cTestModule(pModule).file());
}
} // namespace

TEST(cLibraryHolder, NobodyHoldsALibraryThatIsNotLoaded)
{
  EXPECT_THAT(holdersOf("component", false), IsEmpty());
  EXPECT_THAT(holdersOf("none", false), IsEmpty());
}

TEST(cLibraryHolder, NobodyElseHoldsALibraryThatALoaderHas)
{
  {
    mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = load("component");
    EXPECT_THAT(holdersOf("component"), IsEmpty());
  }
  EXPECT_FALSE(cTestModule("component").isMapped()); // the question holds nothing
}

TEST(cLibraryHolder, NamesTheLibraryThatNeedsIt)
{
  mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = load("helped");
  EXPECT_THAT(holdersOf("helper"),
              ElementsAre(Pair(cLibraryHolder::Library, "The library " + cTestModule("helped").path() + " needs it.")));
  EXPECT_THAT(holdersOf("helped"), IsEmpty());
}

TEST(cLibraryHolder, NamesTheProgramThatNeedsIt)
{
  mstd::tVector<cLibraryHolder> holders;
  ASSERT_TRUE(cLibraryHolder::find(mucs::cString("libmortise.so.0"), holders) ||
              cLibraryHolder::find(mucs::cString("libmortise.so"), holders));
  std::vector<std::string> names;
  for (unsigned int i = 0; i < holders.length(); ++i)
  {
    names.push_back(support::toString(holders[i].name()));
  }
  EXPECT_THAT(names, Contains(program_invocation_name));
}

TEST(cLibraryHolder, TellsOfALibraryThatIsLinkedToStay)
{
  load("noDelete");
  EXPECT_TRUE(cTestModule("noDelete").isMapped());
  EXPECT_THAT(holdersOf("noDelete"),
              ElementsAre(Pair(cLibraryHolder::Link, "It is linked so that it stays in memory.")));
}

TEST(cLibraryHolder, TellsOfThreadsThatMayHoldALibrary)
{
  std::thread([] {
    {
      mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = load("threadLocal");
      msa::cReferenceFrame frame;
      delete loader->instance(frame);
    }
    EXPECT_THAT(holdersOf("threadLocal"),
                ElementsAre(Pair(cLibraryHolder::Thread,
                                 "Every thread that has used a variable of its own in it keeps it until its end.")));
  }).join();
  EXPECT_THAT(holdersOf("threadLocal"), Contains(Pair(cLibraryHolder::Thread, testing::_)));
  EXPECT_FALSE(cTestModule("threadLocal").isMapped()); // to close it again is all that it waited for
}

#if defined(__GNUC__) && !defined(__clang__)
TEST(cLibraryHolder, NamesTheSymbolOfWhichThereIsOnlyOne)
{
  {
    mstd::tAutoPtr<mpi::cAbstractClassLoader> const loader = load("uniqueSymbol");
    msa::cReferenceFrame frame;
    delete loader->instance(frame);
  }
  EXPECT_TRUE(cTestModule("uniqueSymbol").isMapped());
  EXPECT_THAT(holdersOf("uniqueSymbol"), ElementsAre(Pair(cLibraryHolder::UniqueSymbol,
                                                          "It has the unique symbol mortiseTestUses()::uses, which the "
                                                          "process keeps until its end.")));
}
#endif
