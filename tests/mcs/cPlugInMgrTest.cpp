#include "mcs/cPlugInMgr.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/cModuleLoadException.h"
#include "mcs/cPlugInGuard.h"
#include "pi/cAbstractClassLoader.h"
#include "sa/cReferenceFrame.h"
#include "sa/containerStream.h"
#include "std/cRuntimeException.h"
#include "std/tVector.h"
#include "support/cAllocationFault.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <exception>
#include <new>
#include <string>
#include <vector>

using mcs::cAbstractPlugIn;
using mcs::cModuleLoadException;
using mcs::cPlugInGuard;
using mcs::cPlugInMgr;
using support::caught;
using support::cTestModule;
using support::toString;

namespace
{
// Plug-in that is linked into the program.
class cOwnPlugIn : public cAbstractPlugIn
{
public:
  cOwnPlugIn(msa::cReferenceFrame& frame, std::string* pEvents = nullptr, char const* pName = "own")
      : cAbstractPlugIn(frame), mpEvents(pEvents)
  {
    moduleInfo().setName(mstd::cAsciiString(pName));
  }
  ~cOwnPlugIn() override
  {
    if (mpEvents != nullptr)
    {
      *mpEvents += toString(info().name()) + " gone;";
    }
  }

private:
  std::string* mpEvents;
};

// Class loader without a library that says when it goes.
class cFakeLoader : public mpi::cAbstractClassLoader
{
public:
  explicit cFakeLoader(std::string& events) : cAbstractClassLoader(mucs::cString("fake")), mEvents(events) {}
  ~cFakeLoader() override { mEvents += "loader gone with " + std::to_string(numReferences()) + ";"; }
  cAbstractPlugIn* instance(msa::cReferenceFrame&) override { return nullptr; }
  mcs::cAbstractComponent* instance(msa::cReferenceFrame&, mcs::cModuleMgr&) override { return nullptr; }
  void getModuleVersion(unsigned int&, unsigned int&) const override {}
  void getModuleKROVersion(unsigned int&, unsigned int&) const override {}

private:
  std::string& mEvents;
};

mstd::tAutoPtr<cPlugInGuard> guarded(cAbstractPlugIn* pPlugIn)
{
  return mstd::tAutoPtr<cPlugInGuard>(new cPlugInGuard(mstd::tAutoPtr<cAbstractPlugIn>(pPlugIn)));
}

std::vector<cAbstractPlugIn*> contents(cPlugInMgr const& manager)
{
  std::vector<cAbstractPlugIn*> result;
  for (cPlugInGuard* const guard : manager.plugIns())
  {
    result.push_back(guard->plugIn());
  }
  return result;
}

} // namespace

TEST(cAbstractPlugIn, IsAPlugInAndNothingElse)
{
  msa::cReferenceFrame frame;
  cOwnPlugIn const plugIn(frame);
  EXPECT_TRUE(plugIn.isPlugIn());
  EXPECT_FALSE(plugIn.isComponent());
  EXPECT_FALSE(plugIn.isCoreExtension());
  EXPECT_EQ(toString(plugIn.pluginTypeName()), "none");
  EXPECT_TRUE(plugIn.isStatic());
}

TEST(cAbstractPlugIn, HasNoCoreExtension)
{
  msa::cReferenceFrame frame;
  cOwnPlugIn const plugIn(frame, nullptr, "pump");
  EXPECT_EQ(support::messageOf(caught<mstd::cRuntimeException>([&] { plugIn.coreExtension(); })),
            "Module (\"pump\") does not provide core extension functionality.");
}

TEST(cPlugInGuard, DeletesThePlugInAndThenItsLoader)
{
  std::string events;
  msa::cReferenceFrame frame;
  {
    mpi::cAbstractClassLoader* const loader = new cFakeLoader(events);
    cOwnPlugIn* const plugIn = new cOwnPlugIn(frame, &events);
    loader->incRef();
    plugIn->setClassLoader(loader, mstd::cAsciiString());
    cPlugInGuard const guard{mstd::tAutoPtr<cAbstractPlugIn>(plugIn)};
    EXPECT_EQ(guard.plugIn(), plugIn);
    EXPECT_EQ(toString(guard->info().name()), "own");
    EXPECT_EQ(events, "");
  }
  EXPECT_EQ(events, "own gone;loader gone with 0;");
}

TEST(cPlugInGuard, DoesNothingWithoutAPlugIn)
{
  cPlugInGuard const guard{mstd::tAutoPtr<cAbstractPlugIn>()};
  EXPECT_EQ(guard.plugIn(), nullptr);
}

TEST(cPlugInGuard, DeletesAPlugInThatHasNoLoader)
{
  std::string events;
  msa::cReferenceFrame frame;
  guarded(new cOwnPlugIn(frame, &events)).reinit(nullptr);
  EXPECT_EQ(events, "own gone;");
}

TEST(cPlugInMgr, IsEmptyAtFirst)
{
  cPlugInMgr const manager;
  EXPECT_TRUE(manager.plugIns().empty());
}

TEST(cPlugInMgr, LoadsAPlugInByItsPlainName)
{
  cPlugInMgr manager;
  mstd::cAsciiString notes;
  msa::cReferenceFrame frame;
  frame.addRef(notes, true, true);
  {
    mstd::tAutoPtr<cPlugInGuard> const guard = manager.loadPlugIn(cTestModule("plugIn").name(), frame);
    cAbstractPlugIn& plugIn = *guard->plugIn();
    EXPECT_EQ(toString(plugIn.info().name()), "plug-in");
    EXPECT_TRUE(plugIn.info().context().empty());
    ASSERT_FALSE(plugIn.isStatic());
    EXPECT_EQ(plugIn.classLoader()->libFileName(), cTestModule("plugIn").file());
    EXPECT_EQ(plugIn.classLoader()->numReferences(), 1u);
    EXPECT_EQ(toString(notes), "plug-in made;");
    EXPECT_TRUE(manager.plugIns().empty());
    EXPECT_TRUE(cTestModule("plugIn").isMapped());
  }
  EXPECT_EQ(toString(notes), "plug-in made;plug-in gone;");
  EXPECT_FALSE(cTestModule("plugIn").isMapped());
}

TEST(cPlugInMgr, GivesAnEmptyFrameToAPlugInThatIsLoadedWithoutOne)
{
  cPlugInMgr manager;
  EXPECT_EQ(toString((*manager.loadPlugIn(cTestModule("plugIn").name()))->info().name()), "plug-in");
}

TEST(cPlugInMgr, LeavesTheNameThatItIsGivenAlone)
{
  cPlugInMgr manager;
  mucs::cString const name = cTestModule("plugIn").name();
  mucs::cString const before = name;
  manager.loadPlugIn(name);
  EXPECT_EQ(name, before);
}

TEST(cPlugInMgr, KeepsAPlugInThatIsRegistered)
{
  cPlugInMgr manager;
  {
    mstd::tAutoPtr<cPlugInGuard> const guard = manager.loadPlugIn(cTestModule("plugIn").name());
    manager.registerPlugIn(guard);
    EXPECT_EQ(guard.get(), nullptr);
  }
  ASSERT_EQ(manager.plugIns().length(), 1u);
  EXPECT_TRUE(cTestModule("plugIn").isMapped());
  manager.unloadPlugIn(contents(manager).front());
  EXPECT_TRUE(manager.plugIns().empty());
  EXPECT_FALSE(cTestModule("plugIn").isMapped());
}

TEST(cPlugInMgr, KeepsTheOrderOfRegistration)
{
  msa::cReferenceFrame frame;
  cPlugInMgr manager;
  cOwnPlugIn* const first = new cOwnPlugIn(frame);
  cOwnPlugIn* const second = new cOwnPlugIn(frame);
  manager.registerPlugIn(guarded(second));
  manager.registerPlugIn(guarded(first));
  EXPECT_EQ(contents(manager), (std::vector<cAbstractPlugIn*>{second, first}));
}

TEST(cPlugInMgr, UnloadsThePlugInThatItIsAskedFor)
{
  std::string events;
  msa::cReferenceFrame frame;
  cPlugInMgr manager;
  cOwnPlugIn* const first = new cOwnPlugIn(frame, &events, "first");
  cOwnPlugIn* const second = new cOwnPlugIn(frame, &events, "second");
  manager.registerPlugIn(guarded(first));
  manager.registerPlugIn(guarded(second));
  manager.unloadPlugIn(first);
  EXPECT_EQ(events, "first gone;");
  EXPECT_EQ(contents(manager), (std::vector<cAbstractPlugIn*>{second}));
}

TEST(cPlugInMgr, UnloadsEveryEntryOfThePointer)
{
  cPlugInMgr manager;
  msa::cReferenceFrame frame;
  cOwnPlugIn* const plugIn = new cOwnPlugIn(frame);
  manager.registerPlugIn(guarded(nullptr));
  manager.registerPlugIn(guarded(plugIn));
  manager.registerPlugIn(guarded(nullptr));
  manager.unloadPlugIn(nullptr);
  EXPECT_EQ(contents(manager), (std::vector<cAbstractPlugIn*>{plugIn}));
}

TEST(cPlugInMgr, IgnoresAPlugInThatItDoesNotHave)
{
  msa::cReferenceFrame frame;
  cOwnPlugIn stranger(frame);
  cPlugInMgr manager;
  manager.unloadPlugIn(&stranger);
  manager.unloadPlugIn(nullptr);
  manager.registerPlugIn(guarded(new cOwnPlugIn(frame)));
  manager.unloadPlugIn(&stranger);
  EXPECT_EQ(manager.plugIns().length(), 1u);
}

TEST(cPlugInMgr, UnloadsAllFromFirstToLast)
{
  std::string events;
  msa::cReferenceFrame frame;
  cPlugInMgr manager;
  for (char const* const name : {"a", "b", "c"})
  {
    manager.registerPlugIn(guarded(new cOwnPlugIn(frame, &events, name)));
  }
  manager.unloadAll();
  EXPECT_EQ(events, "a gone;b gone;c gone;");
  EXPECT_TRUE(manager.plugIns().empty());
  manager.unloadAll();
}

TEST(cPlugInMgr, TakesItsPlugInsAlongFromFirstToLast)
{
  std::string events;
  msa::cReferenceFrame frame;
  {
    cPlugInMgr manager;
    for (char const* const name : {"a", "b", "c"})
    {
      manager.registerPlugIn(guarded(new cOwnPlugIn(frame, &events, name)));
    }
  }
  EXPECT_EQ(events, "a gone;b gone;c gone;");
}

TEST(cPlugInMgr, UnloadsTheLibraryOfAModuleThatIsNoPlugIn)
{
  cPlugInMgr manager;
  cModuleLoadException const raised =
      caught<cModuleLoadException>([&] { manager.loadPlugIn(cTestModule("component").name()); });
  EXPECT_EQ(raised.kindOfProblem(), cModuleLoadException::NotAvailable);
  EXPECT_EQ(toString(raised.fileName()), cTestModule("component").path());
  EXPECT_EQ(support::messageOf(raised), "File " + cTestModule("component").path() + " is not a plugin!");
  EXPECT_FALSE(cTestModule("component").isMapped());
  EXPECT_THROW(manager.loadPlugIn(cTestModule("null").name()), cModuleLoadException);
  EXPECT_FALSE(cTestModule("null").isMapped());
  EXPECT_TRUE(manager.plugIns().empty());
}

TEST(cPlugInMgr, PassesOnWhatTheLoaderSays)
{
  cPlugInMgr manager;
  EXPECT_EQ(
      caught<cModuleLoadException>([&] { manager.loadPlugIn(cTestModule("noKroVersion").name()); }).kindOfProblem(),
      cModuleLoadException::InvalidModule);
  EXPECT_EQ(caught<cModuleLoadException>([&] { manager.loadPlugIn(cTestModule("none").name()); }).kindOfProblem(),
            cModuleLoadException::NotLoadable);
}

// The class of the exception, its texts and its parameters are all the framework's, so nothing of it has gone.
TEST(cPlugInMgr, LetsAnExceptionOfTheFrameworkOutOfALibraryThatIsGone)
{
  cPlugInMgr manager;
  unsigned int what = 0;
  msa::cReferenceFrame frame;
  frame.addRef(what, false, true);
  std::string message;
  mstd::tAutoPtr<mstd::cAbstractException> copy;
  try
  {
    manager.loadPlugIn(cTestModule("throwing").name(), frame);
  }
  catch (mstd::cRuntimeException const& e)
  {
    EXPECT_FALSE(cTestModule("throwing").isMapped());
    message = support::messageOf(e);
    EXPECT_STREQ(e.sourceFileName(), "throwing.cpp");
    copy.reinit(e.createObject());
  }
  EXPECT_EQ(message, "The module \"throwing\" is out of order!");
  EXPECT_EQ(support::messageOf(*copy), message);
}

// A type that both sides have is compared by its name.
TEST(cPlugInMgr, LetsANumberOutOfALibraryThatIsGone)
{
  cPlugInMgr manager;
  unsigned int what = 2;
  msa::cReferenceFrame frame;
  frame.addRef(what, false, true);
  EXPECT_EQ(caught<int>([&] { manager.loadPlugIn(cTestModule("throwing").name(), frame); }), 42);
  EXPECT_FALSE(cTestModule("throwing").isMapped());
}

// Values that the module has assigned are those of the program.
TEST(cPlugInMgr, LeavesValuesOfTheFrameworkBehindThatAModuleHasSet)
{
  mstd::cAsciiString ascii;
  mucs::cString text;
  mucs::cLIMessage message;
  mstd::tVector<mstd::cAsciiString> texts;
  msa::cReferenceFrame frame;
  frame.addRef(ascii, true, true).addRef(text, true, true).addRef(message, true, true).addRef(texts, true, true);
  cPlugInMgr().loadPlugIn(cTestModule("leaving").name(), frame);
  ASSERT_FALSE(cTestModule("leaving").isMapped());
  EXPECT_EQ(toString(ascii), "left by a module");
  EXPECT_EQ(toString(text), "left by a module, too");
  EXPECT_EQ(toString(message), "17 left by a module");
  ASSERT_EQ(texts.length(), 100u);
  texts.append(ascii);
  EXPECT_EQ(toString(texts[99]), "one of many");
  texts.clear();
}

// The trap: the exception is found by its base class, and then the library goes with the code and the type of the
// object. Whoever makes modules throws exceptions of the framework, as above; whoever loads modules of others holds the
// loader by himself until the exception is handled, see
// cLinuxClassLoader.LetsExceptionsOfTheModuleItselfThroughWhileItLives.
TEST(cPlugInMgrDeathTest, CannotHandleAnExceptionWhoseClassIsGoneWithItsLibrary)
{
  testing::FLAGS_gtest_death_test_style = "threadsafe";
  auto const fall = [] {
    cPlugInMgr manager;
    unsigned int what = 1;
    msa::cReferenceFrame frame;
    frame.addRef(what, false, true);
    try
    {
      manager.loadPlugIn(cTestModule("throwing").name(), frame);
    }
    catch (std::exception const& e)
    {
      fputs(e.what(), stderr);
    }
  };
  EXPECT_DEATH(fall(), "");
}

// Wherever memory runs out, the library has gone again and nothing is left.
TEST(cPlugInMgr, LeavesNothingBehindWhenMemoryRunsOut)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen under this sanitizer";
  }
  mucs::cString const name = cTestModule("plugIn").name();
  cPlugInMgr().loadPlugIn(name);
  unsigned int failures = 0;
  bool isEnough = false;
  for (unsigned int nth = 1; nth < 1000 && !isEnough; ++nth)
  {
    {
      support::cAllocationFault const fault(nth);
      try
      {
        cPlugInMgr().loadPlugIn(name); // the system does without some of its memory
        isEnough = !fault.hasFired();
      }
      catch (std::bad_alloc const&)
      {
        ++failures;
      }
      catch (cModuleLoadException const&)
      {
        ++failures; // the system's own
      }
    }
    ASSERT_FALSE(cTestModule("plugIn").isMapped()) << nth;
  }
  EXPECT_TRUE(isEnough);
  EXPECT_GT(failures, 3u);
}
