#include "pi/cAbstractClassLoader.h"

#include "io/cFs.h"
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
#include "std/exceptionMessage.h"
#include "support/cAllocationFault.h"
#include "support/cByteEnDec.h"
#include "support/cCaptureOut.h"
#include "support/cTempDir.h"
#include "support/cTestModule.h"
#include "support/exceptionText.h"
#include "support/fileContents.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <dlfcn.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
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

TEST_F(cLinuxClassLoader, LooksForTheVersionOfTheModuleFirst)
{
  EXPECT_EQ(invalid("noVersions"), "Invalid module. Missing moduleVersion section!");
}

TEST_F(cLinuxClassLoader, HasKeysThatTranslatorsFind)
{
  auto const keyOf = [](auto const& action) {
    mucs::cLIMessage const problem = caught<cModuleLoadException>(action).problem();
    return (problem.isTranslatable() ? "$MTR$" : "") + toString(problem.key());
  };
  auto const keyOfFile = [&](char const* pModule) { return keyOf([&] { load(pModule); }); };
  EXPECT_EQ(keyOfFile("none"), "$MTR$Unable to load plugin. OS returned %oserror%!");
  EXPECT_EQ(keyOfFile("noInit"), "$MTR$Invalid module. Missing moduleInit section!");
  EXPECT_EQ(keyOfFile("noVersion"), "$MTR$Invalid module. Missing moduleVersion section!");
  EXPECT_EQ(keyOfFile("noKroVersion"), "$MTR$Invalid module. Missing kroVersion section!");
  mstd::tAutoPtr<cAbstractClassLoader> const component = load("component");
  EXPECT_EQ(keyOf([&] { component->instance(mFrame); }), "$MTR$File %file% is not a plugin!");
  mstd::tAutoPtr<cAbstractClassLoader> const plugIn = load("plugIn");
  EXPECT_EQ(keyOf([&] { plugIn->instance(mFrame, mManager); }), "$MTR$cClassLoader: No component!");
  mstd::tAutoPtr<cAbstractClassLoader> const null = load("null");
  EXPECT_EQ(keyOf([&] { null->instance(mFrame); }), "$MTR$Plugin (%file%) does not provide functionality!");
  EXPECT_EQ(keyOf([&] { null->instance(mFrame, mManager); }), "$MTR$cClassLoader: No instance!");
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
  mstd::cRuntimeException const raised = caught<mstd::cRuntimeException>([&] { loader->instance(mFrame); });
  EXPECT_EQ(support::messageOf(raised), "The module \"throwing\" is out of order!");
  EXPECT_STREQ(raised.sourceFileName(), "throwing.cpp");
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

// Its entry points are gone with it, also those that tell the versions.
TEST_F(cLinuxClassLoader, IsUnloadedByALaterFileThatCannotBeLoaded)
{
  support::cTempDir const dir;
  mpi::cLinuxClassLoader loader(cTestModule("both").file());
  EXPECT_EQ(caught<cModuleLoadException>([&] { loader.loadLibrary(dir.name("none")); }).kindOfProblem(),
            cModuleLoadException::NotLoadable);
  EXPECT_FALSE(cTestModule("both").isMapped());
  EXPECT_EQ(undelivered(loader, [&] { loader.instance(mFrame); }),
            "File " + cTestModule("both").path() + " is not a plugin!");
  EXPECT_EQ(undelivered(loader, [&] { loader.instance(mFrame, mManager); }), "cClassLoader: No component!");
  cVersion version(7, 8);
  loader.getModuleVersion(version.first, version.second);
  loader.getModuleKROVersion(version.first, version.second);
  EXPECT_EQ(version, cVersion(7, 8));
}

TEST_F(cLinuxClassLoader, GivesItsHoldOnALibraryBackOnce)
{
  mpi::cLinuxClassLoader const other(cTestModule("plugIn").file());
  {
    mpi::cLinuxClassLoader loader(cTestModule("plugIn").file());
    loader.unloadLibrary();
    loader.unloadLibrary();
    EXPECT_TRUE(cTestModule("plugIn").isMapped());
  }
  EXPECT_TRUE(cTestModule("plugIn").isMapped());
}

TEST_F(cLinuxClassLoader, KeepsWhatALibraryExportsToItself)
{
  mstd::tAutoPtr<cAbstractClassLoader> const loader = load("both");
  for (char const* const name : {"moduleInitPlugIn", "moduleInitComponent", "moduleVersion", "kroVersion"})
  {
    EXPECT_EQ(::dlsym(RTLD_DEFAULT, name), nullptr) << name;
  }
}

// What is broken -----------------------------------------------------------------------------------------------------

namespace
{
/// A file of its own for each broken library.
class cBrokenLibrary
{
public:
  explicit cBrokenLibrary(std::string const& contents) : mFile(mDir.path() + "/libbroken.so")
  {
    support::putFile(file(), contents);
  }

  mucs::cString file() const { return mucs::cString(mFile.c_str()); }
  /// True if the file can be loaded. Otherwise the reason names the file, and nothing of it stays.
  bool isLoadable()
  {
    try
    {
      cPlatform::createClassLoader(file());
      return true;
    }
    catch (cModuleLoadException const& e)
    {
      mReason = toString(e.problem());
      EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotLoadable);
      EXPECT_THAT(mReason, HasSubstr(mFile + ": "));
      EXPECT_FALSE(cTestModule::isMapped("/libbroken.so"));
    }
    return false;
  }
  std::string const& reason() const { return mReason; }

private:
  support::cTempDir mDir;
  std::string mFile;
  std::string mReason;
};

std::string contentsOf(char const* pModule)
{
  return support::fileBytes(cTestModule(pModule).file());
}

size_t countDescriptors()
{
  std::filesystem::directory_iterator const descriptors("/proc/self/fd");
  return static_cast<size_t>(std::distance(begin(descriptors), end(descriptors)));
}

unsigned long long mappedBytes()
{
  std::istringstream maps(support::fileBytes(mucs::cString("/proc/self/maps")));
  unsigned long long result = 0;
  for (std::string line; std::getline(maps, line);)
  {
    size_t end = 0;
    unsigned long long const start = std::stoull(line, &end, 16);
    result += std::stoull(line.substr(end + 1), nullptr, 16) - start;
  }
  return result;
}

size_t countMappings()
{
  std::string const maps = support::fileBytes(mucs::cString("/proc/self/maps"));
  return static_cast<size_t>(std::count(maps.begin(), maps.end(), '\n'));
}
} // namespace

TEST_F(cLinuxClassLoader, RefusesWhatIsNoLibrary)
{
  for (std::string const& contents : {std::string(), std::string("MZ"),
                                      std::string("\x7f"
                                                  "ELF"),
                                      std::string(100000, 'x'), std::string(100000, '\0')})
  {
    EXPECT_FALSE(cBrokenLibrary(contents).isLoadable()) << contents.substr(0, 10);
  }
}

// Where only what is behind the segments is missing, as the names for a debugger, the library is whole for the loader.
TEST_F(cLinuxClassLoader, RefusesALibraryThatIsCutOffWhereverThatIs)
{
  std::string const whole = contentsOf("plugIn");
  size_t const step = whole.size() / 300;
  size_t needed = 0;
  unsigned int refused = 0;
  for (size_t length = 0; length < whole.size(); length += step)
  {
    if (cBrokenLibrary(whole.substr(0, length)).isLoadable())
    {
      needed = needed == 0 ? length : needed;
    }
    else
    {
      EXPECT_EQ(needed, 0u) << length;
      ++refused;
    }
  }
  EXPECT_GT(refused, 50u);
  EXPECT_TRUE(cBrokenLibrary(whole).isLoadable());
}

TEST_F(cLinuxClassLoader, RefusesALibraryThatTellsOfSegmentsItDoesNotHave)
{
  std::string contents = contentsOf("plugIn");
  ElfW(Ehdr) header;
  std::memcpy(&header, contents.data(), sizeof header);
  header.e_phnum = 65535;
  std::memcpy(&contents[0], &header, sizeof header);
  EXPECT_FALSE(cBrokenLibrary(contents).isLoadable());
  header.e_phnum = 4;
  header.e_phoff = contents.size() - sizeof(ElfW(Phdr));
  std::memcpy(&contents[0], &header, sizeof header);
  EXPECT_FALSE(cBrokenLibrary(contents).isLoadable());
  header.e_phoff = static_cast<decltype(header.e_phoff)>(-1);
  std::memcpy(&contents[0], &header, sizeof header);
  EXPECT_FALSE(cBrokenLibrary(contents).isLoadable());
}

TEST_F(cLinuxClassLoader, RefusesALibraryForAnotherProcessor)
{
  std::string contents = contentsOf("plugIn");
  ElfW(Ehdr) header;
  std::memcpy(&header, contents.data(), sizeof header);
  header.e_machine = header.e_machine == EM_AARCH64 ? EM_PPC64 : EM_AARCH64;
  std::memcpy(&contents[0], &header, sizeof header);
  EXPECT_FALSE(cBrokenLibrary(contents).isLoadable());
  contents = contentsOf("plugIn");
  contents[EI_CLASS] = contents[EI_CLASS] == ELFCLASS64 ? ELFCLASS32 : ELFCLASS64;
  cBrokenLibrary otherClass(contents);
  EXPECT_FALSE(otherClass.isLoadable());
  EXPECT_THAT(otherClass.reason(), HasSubstr("wrong ELF class"));
}

TEST_F(cLinuxClassLoader, RefusesADirectory)
{
  support::cTempDir const dir;
  cModuleLoadException const e = failureOf(mucs::cString(dir.path().c_str()));
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotLoadable);
  EXPECT_THAT(toString(e.problem()), HasSubstr("irectory"));
}

// Opening it would wait for somebody who writes.
TEST_F(cLinuxClassLoader, RefusesAPipe)
{
  support::cTempDir const dir;
  std::string const pipe = dir.path() + "/libpipe.so";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(toString(failureOf(mucs::cString(pipe.c_str())).problem()),
            "Unable to load plugin. OS returned " + pipe + ": not a regular file!");
}

// It is searched for among the libraries of the system, whatever is here.
TEST_F(cLinuxClassLoader, DoesNotLookAtAFileHereForANameWithoutAFolder)
{
  support::cTempDir const dir;
  std::filesystem::path const former = std::filesystem::current_path();
  std::filesystem::current_path(dir.path());
  support::putFile(mucs::cString("libmortise-nowhere.so"), contentsOf("plugIn").substr(0, 1000));
  EXPECT_THAT(toString(failureOf(mucs::cString("libmortise-nowhere.so")).problem()),
              HasSubstr("No such file or directory"));
  std::filesystem::current_path(former);
}

TEST_F(cLinuxClassLoader, RefusesAFileThatMayNotBeRead)
{
  support::cTempDir const dir;
  std::string const file = dir.path() + "/libclosed.so";
  std::filesystem::copy_file(cTestModule("plugIn").path(), file);
  ASSERT_EQ(chmod(dir.path().c_str(), 0755), 0);
  ASSERT_EQ(chmod(file.c_str(), 0), 0);
  bool const isRoot = geteuid() == 0; // who may read everything
  ASSERT_EQ(isRoot ? seteuid(65534) : 0, 0);
  std::string const reason = toString(failureOf(mucs::cString(file.c_str())).problem());
  ASSERT_EQ(isRoot ? seteuid(0) : 0, 0);
  EXPECT_THAT(reason, HasSubstr("Permission denied"));
}

// The empty name is that of the program for the system, and the program is no module.
TEST_F(cLinuxClassLoader, RefusesTheEmptyName)
{
  EXPECT_EQ(toString(failureOf(mucs::cString()).problem()), "Invalid module. Missing moduleInit section!");
}

TEST_F(cLinuxClassLoader, NamesTheSymbolThatNobodyHas)
{
  cModuleLoadException const e = failureOf(cTestModule("needingSymbol").file());
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotLoadable);
  EXPECT_THAT(toString(e.problem()), HasSubstr("mortiseTestHelp"));
  EXPECT_THAT(toString(e.problem()), HasSubstr("needingSymbol"));
  EXPECT_FALSE(cTestModule("needingSymbol").isMapped());
}

TEST_F(cLinuxClassLoader, NamesTheLibraryThatIsMissing)
{
  cModuleLoadException const e = failureOf(cTestModule("needingLibrary").file());
  EXPECT_EQ(e.kindOfProblem(), cModuleLoadException::NotLoadable);
  EXPECT_THAT(toString(e.problem()), HasSubstr("libmortise-test-helper.so"));
  EXPECT_FALSE(cTestModule("needingLibrary").isMapped());
}

TEST_F(cLinuxClassLoader, UnloadsTheLibrariesThatAModuleNeedsWithIt)
{
  {
    mstd::tAutoPtr<cAbstractClassLoader> const loader = load("helped");
    mstd::tAutoPtr<mcs::cAbstractPlugIn> const plugIn(loader->instance(mFrame));
    EXPECT_EQ(toString(plugIn->info().name()), "helped");
    EXPECT_TRUE(cTestModule("helper").isMapped());
  }
  EXPECT_FALSE(cTestModule("helped").isMapped());
  EXPECT_FALSE(cTestModule("helper").isMapped());
}

// What is not the library's own does not make it a module.
TEST_F(cLinuxClassLoader, DoesNotTakeEntryPointsOfOtherLibraries)
{
  EXPECT_EQ(invalid("entriesOfAnother"), "Invalid module. Missing moduleInit section!");
}

TEST_F(cLinuxClassLoader, KeepsOfNoFailureAnything)
{
  support::cTempDir const dir;
  std::string const whole = contentsOf("plugIn");
  auto const failAll = [&] {
    for (char const* const module : {"noInit", "noVersion", "noKroVersion", "needingSymbol", "needingLibrary", "none"})
    {
      EXPECT_THROW(load(module), cModuleLoadException) << module;
    }
    EXPECT_FALSE(cBrokenLibrary(whole.substr(0, whole.size() / 8)).isLoadable());
    EXPECT_THROW(cPlatform::createClassLoader(mucs::cString(dir.path().c_str())), cModuleLoadException);
  };
  failAll();
  size_t const descriptors = countDescriptors();
  size_t const mappings = countMappings();
  for (unsigned int i = 0; i < 100; ++i)
  {
    failAll();
  }
  EXPECT_EQ(countDescriptors(), descriptors);
  EXPECT_LE(countMappings(), mappings + 2); // the heap's
}

TEST_F(cLinuxClassLoader, TakesNamesThroughTheEncoderOfTheFileSystem)
{
  support::cTempDir const dir;
  std::string const utf8 = dir.path() + "/libm\xc3\xb6.so";
  std::filesystem::copy_file(cTestModule("plugIn").path(), utf8);
  mucs::cString name = dir.name("libm");
  name.append(0xf6);
  EXPECT_NO_THROW(cPlatform::createClassLoader(name + mucs::cString(".so")));
  // Also in what the system says.
  mucs::cString reason;
  failureOf(name).problem().untranslated(reason);
  EXPECT_TRUE(reason == mucs::cString("Unable to load plugin. OS returned ") + name +
                            mucs::cString(": cannot open shared object file: No such file or directory!"));

  mio::cFs const former(mpi::system().fs);
  support::cByteEnDec const encoder;
  mpi::system().fs = mio::cFs(encoder);
  std::string const bytes = dir.path() + "/libm\xf6.so";
  std::filesystem::rename(utf8, bytes);
  EXPECT_NO_THROW(cPlatform::createClassLoader(name + mucs::cString(".so")));
  mpi::system().fs = former;
}

namespace
{
// Its names cannot be read back.
class cOneWay : public support::cByteEnDec
{
public:
  using support::cByteEnDec::decode;
  void decode(mstd::tConstArrayRef<char> const&, mucs::cString&) const override
  {
    throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$No text!"), nullptr, 0);
  }
};
} // namespace

TEST_F(cLinuxClassLoader, TellsAReasonThatTheEncoderCannotReadByItsBytes)
{
  mio::cFs const former(mpi::system().fs);
  cOneWay const encoder;
  mpi::system().fs = mio::cFs(encoder);
  mucs::cString name("/nowhere/");
  name.append(0xf6);
  std::string const reason = toString(failureOf(name).problem());
  mpi::system().fs = former;
  EXPECT_EQ(
      reason,
      "Unable to load plugin. OS returned /nowhere/?: cannot open shared object file: No such file or directory!");
}

TEST_F(cLinuxClassLoader, HoldsAThousandLibrariesAtOnce)
{
  unsigned int const Libraries = 1000;
  support::cTempDir const dir;
  for (unsigned int i = 0; i < Libraries; ++i)
  {
    std::filesystem::copy_file(cTestModule("sameNameA").path(), dir.path() + "/lib" + std::to_string(i) + ".so");
  }
  size_t const descriptors = countDescriptors();
  {
    unsigned int made = 0;
    unsigned int total = 0;
    mFrame.addRef(made, true, false);
    std::vector<std::unique_ptr<cAbstractClassLoader>> loaders;
    std::vector<std::unique_ptr<mcs::cAbstractPlugIn>> plugIns;
    for (unsigned int i = 0; i < Libraries; ++i)
    {
      loaders.emplace_back(cPlatform::createClassLoader(dir.name("lib" + std::to_string(i) + ".so")).release());
      mFrame.restartReading();
      plugIns.emplace_back(loaders.back()->instance(mFrame));
      total += made;
    }
    EXPECT_EQ(total, Libraries); // each counts for itself
    EXPECT_EQ(countDescriptors(), descriptors);
    EXPECT_TRUE(cTestModule::isMapped("/lib999.so"));
    plugIns.clear();
  }
  EXPECT_THAT(support::fileBytes(mucs::cString("/proc/self/maps")), Not(HasSubstr(dir.path())));
}

TEST_F(cLinuxClassLoader, GrowsNotInTenThousandRounds)
{
#if defined(MORTISE_TEST_EXHAUSTIVE)
  unsigned int const Rounds = 10000;
#else
  unsigned int const Rounds = 1000;
#endif
  takeNotes();
  auto const round = [&](char const* pModule) {
    mstd::tAutoPtr<cAbstractClassLoader> const loader = load(pModule);
    mNotes = mstd::cAsciiString();
    mFrame.restartReading();
    mstd::tAutoPtr<mcs::cAbstractComponent> const component(loader->instance(mFrame, mManager));
    EXPECT_EQ(toString(mNotes), "component made;");
    component->setClassLoader(loader.get(), mstd::cAsciiString("round"));
  };
  for (unsigned int i = 0; i < 100; ++i)
  {
    round("component");
  }
  countDescriptors(); // looking takes memory, too: the first look is not one of those compared
  mappedBytes();
  size_t const descriptors = countDescriptors();
  size_t const mappings = countMappings();
  unsigned long long const memory = mappedBytes();
  support::cBlockBalance const balance;
  for (unsigned int i = 0; i < Rounds; ++i)
  {
    round("component");
  }
  EXPECT_EQ(countDescriptors(), descriptors);
  if (support::cAllocationFault::seesMalloc()) // a sanitizer keeps what is given back
  {
    EXPECT_EQ(countMappings(), mappings);
    EXPECT_LE(mappedBytes(), memory + Rounds * 7);
    EXPECT_LE(balance.blocks(), 10);
  }
}

// Not a failure of the loader: the library goes when the thread does.
TEST_F(cLinuxClassLoader, LeavesALibraryThatAThreadStillHoldsToThatThread)
{
  std::thread([&] {
    {
      mstd::tAutoPtr<cAbstractClassLoader> const loader = load("threadLocal");
      mstd::tAutoPtr<mcs::cAbstractPlugIn>(loader->instance(mFrame));
    }
    EXPECT_TRUE(cTestModule("threadLocal").isMapped());
  }).join();
  load("plugIn"); // the loader sweeps when it unloads the next
  EXPECT_FALSE(cTestModule("threadLocal").isMapped());
}
