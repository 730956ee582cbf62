#include "pi/cAbstractClassLoader.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/cModuleLoadException.h"
#include "mcs/cModuleMgr.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "pi/piVersion.h"
#include "pi/platform/dependend/native_linux/cLinuxClassLoader.h"
#include "sa/cReferenceFrame.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cTempDir.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

using mcs::cModuleLoadException;
using mpi::cAbstractClassLoader;
using mpi::cPlatform;
using support::caught;
using support::cTestModule;
using support::toString;
using testing::HasSubstr;

namespace
{
mstd::tAutoPtr<cAbstractClassLoader> load(char const* pModule)
{
  return cPlatform::createClassLoader(cTestModule(pModule).file());
}

/// The failure to load this file: every one has the same text as its problem and as its message.
cModuleLoadException failureOf(mucs::cString const& file)
{
  cModuleLoadException const e = caught<cModuleLoadException>([&] { cPlatform::createClassLoader(file); });
  EXPECT_EQ(support::messageOf(e), toString(e.problem()));
  EXPECT_EQ(e.fileName(), file);
  return e;
}

std::string invalid(char const* pModule)
{
  cModuleLoadException const e = failureOf(cTestModule(pModule).file());
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::InvalidModule);
  EXPECT_FALSE(cTestModule(pModule).isMapped());
  return toString(e.problem());
}

/// Runs `action`, which asks a module for what it does not deliver.
template <class Action>
std::string undelivered(cAbstractClassLoader const& loader, Action const& action)
{
  cModuleLoadException const e = caught<cModuleLoadException>(action);
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotAvailable);
  EXPECT_EQ(e.fileName(), loader.libFileName());
  EXPECT_EQ(support::messageOf(e), toString(e.problem()));
  EXPECT_TRUE(loader.isUnused());
  return toString(e.problem());
}

typedef std::pair<unsigned int, unsigned int> cVersion;

class cLinuxClassLoader : public testing::Test
{
protected:
  mcs::cModuleMgr mManager{mpi::system().extensions};
  msa::cReferenceFrame mFrame;
  mstd::cAsciiString mNotes;

  /// The life of what the modules make is written down.
  void takeNotes() { mFrame.addRef(mNotes, true, true); }
};
} // namespace

TEST_F(cLinuxClassLoader, MapsTheLibraryForAsLongAsItLives)
{
  EXPECT_FALSE(cTestModule("component").isMapped());
  {
    mstd::tAutoPtr<cAbstractClassLoader> const loader = load("component");
    EXPECT_TRUE(cTestModule("component").isMapped());
    EXPECT_EQ(loader->libFileName(), cTestModule("component").file());
  }
  EXPECT_FALSE(cTestModule("component").isMapped());
}

TEST_F(cLinuxClassLoader, IsUnusedUntilItMakesSomething)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("both");
  EXPECT_TRUE(loader->isUnused());
  EXPECT_EQ(loader->numReferences(), 0u);
  mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
  EXPECT_FALSE(loader->isUnused());
  mstd::tAutoPtr<mcs::cAbstractComponent> const component(loader->instance(mFrame, mManager));
  EXPECT_EQ(loader->numReferences(), 2u);
  loader->decRef();
  EXPECT_FALSE(loader->isUnused());
  loader->decRef();
  EXPECT_TRUE(loader->isUnused());
}

TEST_F(cLinuxClassLoader, CountsWithoutALowerBound)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("both");
  loader->decRef();
  EXPECT_EQ(loader->numReferences(), 4294967295u);
  loader->incRef();
  EXPECT_TRUE(loader->isUnused());
}

TEST_F(cLinuxClassLoader, GetsItsReferenceBackFromAModuleThatKnowsIt)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("both");
  {
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
    plugIn->setClassLoader(loader.get(), mstd::cAsciiString("place"));
    EXPECT_EQ(plugIn->classLoader(), loader.get());
    EXPECT_FALSE(plugIn->isStatic());
    EXPECT_EQ(toString(plugIn->info().context()), "place");
    EXPECT_EQ(loader->numReferences(), 1u);
  }
  EXPECT_TRUE(loader->isUnused());
}

TEST_F(cLinuxClassLoader, MakesThePlugInOfALibraryWithPlugInAlone)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("plugIn");
  takeNotes();
  {
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
    EXPECT_EQ(toString(plugIn->info().name()), "plug-in");
    EXPECT_TRUE(plugIn->isPlugIn());
    EXPECT_EQ(toString(mNotes), "plug-in made;");
  }
  EXPECT_EQ(toString(mNotes), "plug-in made;plug-in gone;");
  loader->decRef();
  EXPECT_EQ(undelivered(*loader, [&] { loader->instance(mFrame, mManager); }), "cClassLoader: No component!");
}

TEST_F(cLinuxClassLoader, MakesTheComponentOfALibraryWithComponentAlone)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("component");
  takeNotes();
  EXPECT_EQ(undelivered(*loader, [&] { loader->instance(mFrame); }),
            "File " + cTestModule("component").path() + " is not a plugin!");
  mstd::tAutoPtr<mcs::cAbstractComponent> const component(loader->instance(mFrame, mManager));
  EXPECT_EQ(toString(component->info().name()), "component");
  EXPECT_EQ(&component->moduleMgr(), &mManager);
  EXPECT_EQ(toString(mNotes), "component made;");
}

TEST_F(cLinuxClassLoader, MakesBothOfALibraryWithBoth)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("both");
  takeNotes();
  {
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
    mFrame.restartReading();
    mstd::tAutoPtr<mcs::cAbstractComponent> const component(loader->instance(mFrame, mManager));
  }
  EXPECT_EQ(toString(mNotes), "plug-in made;component made;component gone;plug-in gone;");
}

TEST_F(cLinuxClassLoader, RefusesALibraryThatMakesNothing)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("null");
  EXPECT_EQ(undelivered(*loader, [&] { loader->instance(mFrame); }),
            "Plugin (" + cTestModule("null").path() + ") does not provide functionality!");
  EXPECT_EQ(undelivered(*loader, [&] { loader->instance(mFrame, mManager); }), "cClassLoader: No instance!");
}

TEST_F(cLinuxClassLoader, HandsTheVersionsThrough)
{
  cVersion version;
  load("component")->getModuleVersion(version.first, version.second);
  EXPECT_EQ(version, cVersion(1, 2));
  load("both")->getModuleVersion(version.first, version.second);
  EXPECT_EQ(version, cVersion(5, 4294967295u));
  load("both")->getModuleKROVersion(version.first, version.second);
  EXPECT_EQ(version, cVersion(MORTISE_VERSION_MAJOR, MORTISE_VERSION_MINOR));
}

TEST_F(cLinuxClassLoader, LeavesVersionsAloneThatTheLibraryDoesNotTell)
{
  cVersion version(7, 8);
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("null");
  loader->getModuleVersion(version.first, version.second);
  loader->getModuleKROVersion(version.first, version.second);
  EXPECT_EQ(version, cVersion(7, 8));
}

TEST_F(cLinuxClassLoader, RefusesALibraryWithoutAnyInit)
{
  EXPECT_EQ(invalid("noInit"), "Invalid module. Missing moduleInit section!");
}

TEST_F(cLinuxClassLoader, RefusesALibraryWithoutModuleVersion)
{
  EXPECT_EQ(invalid("noVersion"), "Invalid module. Missing moduleVersion section!");
}

TEST_F(cLinuxClassLoader, RefusesALibraryWithoutKroVersion)
{
  EXPECT_EQ(invalid("noKroVersion"), "Invalid module. Missing kroVersion section!");
}

TEST_F(cLinuxClassLoader, TellsWhatTheSystemSaysOfAMissingFile)
{
  support::cTempDir const dir;
  cModuleLoadException const e = failureOf(dir.name("libnone.so"));
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotLoadable);
  EXPECT_EQ(toString(e.problem()), "Unable to load plugin. OS returned " + dir.path() +
                                       "/libnone.so: cannot open shared object file: No such file or directory!");
}

TEST_F(cLinuxClassLoader, CountsNothingWhenAnEntryThrows)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("throwing");
  unsigned int what = 0;
  mFrame.addRef(what, false, true);
  mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { loader->instance(mFrame); });
  EXPECT_EQ(support::messageOf(e), "The module \"throwing\" is out of order!");
  EXPECT_STREQ(e.sourceFileName(), "throwing.cpp");
  EXPECT_TRUE(loader->isUnused());
  mFrame.restartReading();
  EXPECT_THROW(loader->instance(mFrame, mManager), mstd::cRuntimeException);
  EXPECT_TRUE(loader->isUnused());
}

// While the loader lives, so does everything of the library that an exception needs.
TEST_F(cLinuxClassLoader, LetsExceptionsOfTheModuleItselfThroughWhileItLives)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("throwing");
  unsigned int what = 1;
  mFrame.addRef(what, false, true);
  std::string text;
  try
  {
    loader->instance(mFrame);
  }
  catch (std::exception const& e)
  {
    text = e.what();
  }
  EXPECT_EQ(text, "an exception of the module's own");
  what = 2;
  mFrame.restartReading();
  EXPECT_EQ(caught<int>([&] { loader->instance(mFrame, mManager); }), 42);
  EXPECT_TRUE(loader->isUnused());
}

TEST_F(cLinuxClassLoader, RunsStaticObjectsWhileTheFrameworkIsThere)
{
  support::cCaptureOut out;
  {
    mstd::tAutoPtr<cAbstractClassLoader> const loader = load("staticObject");
    EXPECT_EQ(out.text(), "static object made\r\n");
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
  }
  EXPECT_EQ(out.text(), "static object made\r\nplug-in gone\r\nstatic object gone\r\n");
}

TEST_F(cLinuxClassLoader, KeepsClassesOfTheSameNameApart)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loaderA = load("sameNameA");
  mstd::tAutoPtr<cAbstractClassLoader> const loaderB = load("sameNameB");
  unsigned int made = 0;
  mFrame.addRef(made, true, false);
  std::vector<std::string> seen;
  for (cAbstractClassLoader* const loader : {loaderA.get(), loaderA.get(), loaderB.get(), loaderA.get()})
  {
    mFrame.restartReading();
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
    seen.push_back(toString(plugIn->pluginTypeName()) + std::to_string(made));
  }
  EXPECT_EQ(seen, (std::vector<std::string>{"A1", "A2", "B1", "A3"}));
}

TEST_F(cLinuxClassLoader, SharesALibraryThatIsLoadedTwice)
{
  mstd::tAutoPtr<cAbstractClassLoader> first = load("sameNameA");
  {
    mstd::tAutoPtr<cAbstractClassLoader> const second = load("sameNameA");
    unsigned int made = 0;
    mFrame.addRef(made, true, false);
    mstd::tAutoPtr<mcs::cAbstractPlugIn>(first->instance(mFrame));
    mFrame.restartReading();
    mstd::tAutoPtr<mcs::cAbstractPlugIn>(second->instance(mFrame));
    EXPECT_EQ(made, 2u);
    EXPECT_EQ(first->numReferences(), 1u);
    EXPECT_EQ(second->numReferences(), 1u);
  }
  EXPECT_TRUE(cTestModule("sameNameA").isMapped());
  first.reinit(nullptr);
  EXPECT_FALSE(cTestModule("sameNameA").isMapped());
}

TEST_F(cLinuxClassLoader, GoesWithItsLibraryWhateverTheCountSays)
{
  mstd::tAutoPtr<cAbstractClassLoader> loader = load("null");
  loader->incRef();
  loader.reinit(nullptr);
  EXPECT_FALSE(cTestModule("null").isMapped());
}

TEST_F(cLinuxClassLoader, LoadsAnotherLibraryInPlaceOfTheFirst)
{
  mpi::cLinuxClassLoader loader(cTestModule("component").file());
  loader.loadLibrary(cTestModule("plugIn").file());
  EXPECT_FALSE(cTestModule("component").isMapped());
  EXPECT_TRUE(cTestModule("plugIn").isMapped());
  EXPECT_EQ(loader.libFileName(), cTestModule("component").file());
  mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader.instance(mFrame));
  EXPECT_EQ(toString(plugIn->info().name()), "plug-in");
}

// The entry points of the former library that the new one lacks are gone as well.
TEST_F(cLinuxClassLoader, KeepsALibraryThatTurnsOutToBeNoModuleWhenItIsLoadedLater)
{
  mpi::cLinuxClassLoader loader(cTestModule("plugIn").file());
  EXPECT_THROW(loader.loadLibrary(cTestModule("noKroVersion").file()), cModuleLoadException);
  EXPECT_TRUE(cTestModule("noKroVersion").isMapped());
  EXPECT_FALSE(cTestModule("plugIn").isMapped());
  EXPECT_EQ(toString(caught<cModuleLoadException>([&] { loader.instance(mFrame, mManager); }).problem()),
            "cClassLoader: No instance!");
  EXPECT_THROW(loader.instance(mFrame), cModuleLoadException);
  loader.unloadLibrary();
  EXPECT_FALSE(cTestModule("noKroVersion").isMapped());
  loader.unloadLibrary();
}

TEST_F(cLinuxClassLoader, IsUnloadedByALaterFileThatCannotBeLoaded)
{
  support::cTempDir const dir;
  mpi::cLinuxClassLoader loader(cTestModule("plugIn").file());
  EXPECT_EQ(caught<cModuleLoadException>([&] { loader.loadLibrary(dir.name("none")); }).kindOfProblem(),
            cModuleLoadException::NotLoadable);
  EXPECT_FALSE(cTestModule("plugIn").isMapped());
}
