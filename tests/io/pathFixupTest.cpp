#include "io/pathFixup.h"

#include "pi/cSystem.h"
#include "support/cAllocationFault.h"
#include "support/pathText.h"

#include <gtest/gtest.h>
#include <new>
#include <string>

using support::latin;
using support::wide;

namespace
{

/// The normal form, with a "!" in front if the path climbs above its own start.
std::string fixed(std::string const& text)
{
  mucs::cString path(wide(text));
  bool isEscaped = true;
  mio::fixupPath(path, isEscaped, nullptr);
  return (isEscaped ? "!" : "") + latin(path);
}

/// Drive letter, if any, "|" and text that setPath() makes.
std::string made(std::string const& text, bool doFixup = true)
{
  mucs::cString result("old");
  char const letter = mio::setPath(wide(text), result, doFixup, nullptr);
  return std::string(letter != 0 ? 1 : 0, letter) + "|" + latin(result);
}

std::string component(std::string const& text)
{
  mucs::cString result("old");
  mio::storePathComponent(wide(text), result);
  return latin(result);
}

/// The process's table of fixed-up paths for the length of a test.
class cProcessTable
{
public:
  cProcessTable() { mpi::system().caches.createPathFixupHash(); }
  cProcessTable(cProcessTable const&) = delete;
  cProcessTable& operator=(cProcessTable const&) = delete;
  ~cProcessTable() { mpi::system().caches.clear(); }

  mio::tPathHash& operator*() const { return *mpi::system().caches.hasPathFixupHash(); }
  mio::tPathHash* operator->() const { return &**this; }
};

} // namespace

TEST(pathFixup, TheDriveLetterIsAnAsciiLetterWithAColonInUpperCase)
{
  EXPECT_EQ(mio::driveLetter("A:"), 'A');
  EXPECT_EQ(mio::driveLetter("Z:/x"), 'Z');
  EXPECT_EQ(mio::driveLetter("a:"), 'A');
  EXPECT_EQ(mio::driveLetter("z:x"), 'Z');
  for (char const* text : {"", "a", ":", "::", "1:", "@:", "[:", "`:", "{:", "/c:", "cc:", "a;", "\xe9:"})
  {
    EXPECT_EQ(mio::driveLetter(text), 0) << text;
  }
  mucs::cString beyond;
  beyond.append(0x141); // its low byte is that of A
  beyond.append(':');
  EXPECT_EQ(mio::driveLetter(beyond), 0);
}

TEST(pathFixup, ATextIsRelativeUnlessItBeginsWithASlashOrADriveLetter)
{
  EXPECT_TRUE(mio::isRelative(""));
  EXPECT_TRUE(mio::isRelative("a/b"));
  EXPECT_TRUE(mio::isRelative("../a"));
  EXPECT_TRUE(mio::isRelative("1:/a"));
  EXPECT_FALSE(mio::isRelative("/"));
  EXPECT_FALSE(mio::isRelative("/a"));
  EXPECT_FALSE(mio::isRelative("C:/a"));
  EXPECT_FALSE(mio::isRelative("c:a"));
}

TEST(pathFixup, ALeadingBackslashMakesATextRelative)
{
  EXPECT_TRUE(mio::isRelative("\\a"));
}

TEST(pathFixup, ThePathComponentEndsBehindTheLastSeparator)
{
  EXPECT_EQ(mio::pathComponentLength(""), 0u);
  EXPECT_EQ(mio::pathComponentLength("name"), 0u);
  EXPECT_EQ(mio::pathComponentLength("a/b"), 2u);
  EXPECT_EQ(mio::pathComponentLength("a\\b"), 2u);
  EXPECT_EQ(mio::pathComponentLength("a/b\\c/d"), 6u);
  EXPECT_EQ(mio::pathComponentLength("/"), 1u);
  EXPECT_EQ(mio::pathComponentLength("a/"), 2u);
}

TEST(pathFixup, TheColonOfADriveLetterIsASeparatorAndNoOtherColonIs)
{
  EXPECT_EQ(mio::pathComponentLength("C:x"), 2u);
  EXPECT_EQ(mio::pathComponentLength("c:"), 2u);
  EXPECT_EQ(mio::pathComponentLength("C:/x"), 3u);
  EXPECT_EQ(mio::pathComponentLength("1:x"), 0u);
  EXPECT_EQ(mio::pathComponentLength("ab:x"), 0u);
  EXPECT_EQ(mio::pathComponentLength("/C:x"), 1u);
}

TEST(pathFixup, ALastComponentOfOneOrTwoDotsBelongsToThePath)
{
  EXPECT_EQ(mio::pathComponentLength("."), 1u);
  EXPECT_EQ(mio::pathComponentLength(".."), 2u);
  EXPECT_EQ(mio::pathComponentLength("a/."), 3u);
  EXPECT_EQ(mio::pathComponentLength("a\\.."), 4u);
  EXPECT_EQ(mio::pathComponentLength("C:.."), 4u);
  EXPECT_EQ(mio::pathComponentLength("..."), 0u);
  EXPECT_EQ(mio::pathComponentLength("a/..."), 2u);
  EXPECT_EQ(mio::pathComponentLength("a/.b"), 2u);
  EXPECT_EQ(mio::pathComponentLength("a/b."), 2u);
  EXPECT_EQ(mio::pathComponentLength(".x"), 0u);
}

TEST(pathFixup, AStoredPathComponentEndsInASeparator)
{
  EXPECT_EQ(component("name"), "");
  EXPECT_EQ(component(""), "");
  EXPECT_EQ(component("a/b"), "a/");
  EXPECT_EQ(component("a\\b"), "a\\");
  EXPECT_EQ(component("C:x"), "C:/");
  EXPECT_EQ(component(".."), "../");
  EXPECT_EQ(component("a/.."), "a/../");
  EXPECT_EQ(component("a/"), "a/");
}

TEST(pathFixup, APathComponentCanReplaceItsOwnPath)
{
  mucs::cString path("a/b");
  mio::storePathComponent(path, path);
  EXPECT_EQ(latin(path), "a/");
}

TEST(pathFixup, AnEmptyTextIsSetAsTheDirectoryItself)
{
  EXPECT_EQ(made(""), "|./");
  EXPECT_EQ(made("", false), "|./");
  EXPECT_EQ(made(".", false), "|./");
}

TEST(pathFixup, SettingTurnsBackslashesAndClosesWithASlash)
{
  EXPECT_EQ(made("a\\b"), "|a/b/");
  EXPECT_EQ(made("a\\b\\", false), "|a/b/");
  EXPECT_EQ(made("a/"), "|a/");
  EXPECT_EQ(made("\\a"), "|/a/");
  std::string const manyComponents = "\\a\\bc\\def\\ghij\\klmno\\p\\q\\r\\s\\t\\u\\v\\w\\x";
  EXPECT_EQ(made(manyComponents), "|/a/bc/def/ghij/klmno/p/q/r/s/t/u/v/w/x/");
}

TEST(pathFixup, SettingTakesTheDriveLetterOutOfTheText)
{
  EXPECT_EQ(made("C:\\x"), "C|/x/");
  EXPECT_EQ(made("c:x"), "C|x/");
  EXPECT_EQ(made("c:"), "C|/");
  EXPECT_EQ(made("C:D:x", false), "C|D:x/");
}

TEST(pathFixup, SettingWithoutFixupKeepsWhatTheTextSays)
{
  EXPECT_EQ(made("a//./../b", false), "|a//./../b/");
  EXPECT_EQ(made("C:../a", false), "C|../a/");
}

TEST(pathFixup, AnEscapeTakesTheDriveLetterAway)
{
  EXPECT_EQ(made("C:../a"), "|../a/");
  EXPECT_EQ(made("C:a/../.."), "|../");
  EXPECT_EQ(made("C:/../a"), "C|/");
}

TEST(pathFixup, APathCanBeSetFromItself)
{
  mucs::cString path("c:\\a");
  EXPECT_EQ(mio::setPath(path, path, true, nullptr), 'C');
  EXPECT_EQ(latin(path), "/a/");
}

TEST(pathFixup, AbsolutePathsLoseClimbsRunsOfSlashesAndDots)
{
  EXPECT_EQ(fixed("/a/b/../c/"), "/a/c/");
  EXPECT_EQ(fixed("/a//b/./"), "/a/b/");
  EXPECT_EQ(fixed("/"), "/");
  EXPECT_EQ(fixed("///"), "/");
  EXPECT_EQ(fixed("/./"), "/");
  EXPECT_EQ(fixed("/a/b/c/../../d/"), "/a/d/");
}

TEST(pathFixup, AClimbAboveTheRootLosesWhatStandsBehindIt)
{
  EXPECT_EQ(fixed("/../x/"), "/");
  EXPECT_EQ(fixed("/a/../../b/c/"), "/");
  EXPECT_EQ(fixed("C:/../x/"), "C:/"); // the letter in the text makes it absolute
}

TEST(pathFixup, ALeadingDotStaysAndAnInnerOneGoes)
{
  EXPECT_EQ(fixed("./a/"), "./a/");
  EXPECT_EQ(fixed("a/./b/"), "a/b/");
  EXPECT_EQ(fixed("././a/"), "./a/");
  EXPECT_EQ(fixed(".//a/"), "./a/");
}

TEST(pathFixup, ARelativeClimbStaysAndIsReported)
{
  EXPECT_EQ(fixed("../a/"), "!../a/");
  EXPECT_EQ(fixed("a/../../"), "!../");
  EXPECT_EQ(fixed("../../a/../.././b/"), "!../../../b/");
  EXPECT_EQ(fixed("../a/../b/"), "!../b/");
}

TEST(pathFixup, AClimbOverTheOnlyComponentLeavesTheDirectoryItself)
{
  EXPECT_EQ(fixed("a/../"), "./");
  EXPECT_EQ(fixed("a/../b/"), "b/");
  EXPECT_EQ(fixed("a/.././b/"), "b/");
}

TEST(pathFixup, AClimbBehindALeadingDotReplacesItWithoutBeingReported)
{
  EXPECT_EQ(fixed("./../"), "../");
  EXPECT_EQ(fixed("./../a/../"), "../");
  EXPECT_EQ(fixed("./../../"), "!../../");
  EXPECT_EQ(fixed("./a/../"), "./");
}

TEST(pathFixup, ASlashBehindAnEmptiedResultStays)
{
  EXPECT_EQ(fixed("a/..//b/"), "/b/");
}

TEST(pathFixup, TheKeysAreFoundAtTheEndOfNames)
{
  EXPECT_EQ(fixed("a./b/"), "ab/");
  EXPECT_EQ(fixed("a../b/"), "b/");
  EXPECT_EQ(fixed("/x/a../b/"), "/x/b/");
  EXPECT_EQ(fixed("a.../b/"), "b/");
  EXPECT_EQ(fixed(".../b/"), "b/");
  EXPECT_EQ(made("/x/a."), "|/x/a");
  EXPECT_EQ(made("/x/a.."), "|/x/");
}

TEST(pathFixup, ABackslashEndsAComponentThatAClimbTakesAway)
{
  EXPECT_EQ(fixed("a\\b/../c/"), "a\\c/");
  EXPECT_EQ(fixed("../a\\../../b/"), "!../../b/");
}

TEST(pathFixup, ATextWithoutASlashAtItsEndKeepsItsLastWord)
{
  EXPECT_EQ(fixed("a/b"), "a/b");
  EXPECT_EQ(fixed("a/.."), "a/..");
  EXPECT_EQ(fixed("/a/../x.y"), "/x.y");
  EXPECT_EQ(fixed(""), "./");
  EXPECT_EQ(fixed("."), ".");
}

TEST(pathFixup, PathsOfAllLengthsAroundABlockAreFixedAlike)
{
  for (unsigned int length = 0; length < 70; ++length)
  {
    std::string const name(length + 1, 'n');
    EXPECT_EQ(fixed("/x/../" + name + "/"), "/" + name + "/");
    EXPECT_EQ(fixed("/" + name + "//../y/" + name), "/y/" + name);
    EXPECT_EQ(made("x:" + name + "\\y\\.\\" + name), "X|" + name + "/y/" + name + "/");
    EXPECT_EQ(fixed(name), name);
  }
}

TEST(pathFixup, CodePointsThatShareBitsWithASlashAreNone)
{
  for (unsigned int code : {0x12fu, 0x2f00u, 0x2f2fu, 0x2f0000u, 0x2f000000u, 0x8000002fu, 0xffffff2fu, 0xffff002fu,
                            0x15cu, 0x5c5cu, 0x8000005cu, 0xffffff5cu})
  {
    mucs::cString path;
    for (unsigned int i = 0; i < 20; ++i)
    {
      path.append(code);
    }
    path.append('/');
    mucs::cString const original(path);
    bool isEscaped = true;
    mio::fixupPath(path, isEscaped, nullptr);
    EXPECT_TRUE(path == original) << code;
    EXPECT_FALSE(isEscaped);
    EXPECT_EQ(mio::setPath(original, path, true, nullptr), 0);
    EXPECT_TRUE(path == original) << code;
  }
}

TEST(pathFixup, FixingUpWithoutATableAllocatesNothing)
{
  mucs::cString path("/a/b/../c//d/./");
  bool isEscaped = false;
  mpi::system();
  support::cAllocationFault fault(0);
  mio::fixupPath(path, isEscaped, nullptr);
  unsigned int const count = fault.count();
  fault.disarm();
  EXPECT_EQ(count, 0u);
  EXPECT_EQ(latin(path), "/a/c/d/");
}

TEST(pathFixup, TheCallersTableIsFilledUnderTheOriginalText)
{
  mio::tPathHash table;
  mucs::cString path("a/../b/");
  bool isEscaped = false;
  mio::fixupPath(path, isEscaped, &table);
  EXPECT_EQ(latin(path), "b/");
  ASSERT_NE(table.has("a/../b/"), nullptr);
  EXPECT_EQ(latin(*table.has("a/../b/")), "b/");
  EXPECT_EQ(table.length(), 1u);
}

TEST(pathFixup, TheCallersTableIsNotRead)
{
  mio::tPathHash table;
  table["a/../b/"] = "wrong/";
  mucs::cString path("a/../b/");
  bool isEscaped = false;
  mio::fixupPath(path, isEscaped, &table);
  EXPECT_EQ(latin(path), "b/");
  EXPECT_EQ(latin(*table.has("a/../b/")), "b/");
}

TEST(pathFixup, TheProcessesTableIsFilledAndRead)
{
  cProcessTable table;
  EXPECT_EQ(fixed("a/../b/"), "b/");
  ASSERT_NE(table->has("a/../b/"), nullptr);
  EXPECT_EQ(latin(*table->has("a/../b/")), "b/");
  *table->has("a/../b/") = "kept/";
  EXPECT_EQ(fixed("a/../b/"), "kept/");
  EXPECT_EQ(table->length(), 1u);
}

TEST(pathFixup, AStoredTextMayBeLongerThanThePath)
{
  cProcessTable table;
  (*table)["a/"] = "a longer text than that of the path/";
  EXPECT_EQ(fixed("a/"), "a longer text than that of the path/");
  (*table)["b/"] = "";
  EXPECT_EQ(fixed("b/"), "");
}

TEST(pathFixup, APathFromTheTableReportsNoEscape)
{
  cProcessTable table;
  EXPECT_EQ(fixed("../a/"), "!../a/");
  EXPECT_EQ(fixed("../a/"), "../a/");
  EXPECT_EQ(made("C:../a"), "C|../a/");
}

TEST(pathFixup, BothTablesAreFilledUnlessTheProcessesKnowsThePath)
{
  cProcessTable table;
  mio::tPathHash own;
  bool isEscaped = false;
  mucs::cString path("x//");
  mio::fixupPath(path, isEscaped, &own);
  EXPECT_EQ(table->length(), 1u);
  EXPECT_EQ(own.length(), 1u);
  own.clear();
  path = "x//";
  mio::fixupPath(path, isEscaped, &own);
  EXPECT_EQ(latin(path), "x/");
  EXPECT_EQ(own.length(), 0u);
}

TEST(pathFixup, TheProcessesTableMayBeTheCallers)
{
  cProcessTable table;
  bool isEscaped = false;
  mucs::cString path("x//");
  mio::fixupPath(path, isEscaped, &*table);
  EXPECT_EQ(latin(path), "x/");
  EXPECT_EQ(latin(*table->has("x//")), "x/");
  EXPECT_EQ(table->length(), 1u);
}

TEST(pathFixup, WithoutMemoryThePathAndWhatTheTablesSayStay)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  unsigned int failed = 0;
  for (unsigned int nth = 1; failed + 1 == nth; ++nth)
  {
    cProcessTable table;
    mio::tPathHash own;
    mucs::cString path("../a/../a path that is longer than a small block/./");
    mucs::cString const original(path);
    bool isEscaped = false;
    support::cAllocationFault fault(nth);
    try
    {
      mio::fixupPath(path, isEscaped, &own);
      fault.disarm();
      EXPECT_TRUE(isEscaped);
    }
    catch (std::bad_alloc const&)
    {
      fault.disarm();
      ++failed;
      EXPECT_TRUE(path == original) << nth;
      EXPECT_FALSE(isEscaped) << nth;
      for (mio::tPathHash* each : {&*table, &own})
      {
        mucs::cString const* const stored = each->has(original);
        EXPECT_TRUE(stored == nullptr || latin(*stored) == "../a path that is longer than a small block/") << nth;
      }
    }
  }
  EXPECT_GT(failed, support::cAllocationFault::seesMalloc() ? 4u : 0u);
}

TEST(pathFixup, APathThatFitsItsPoolOnErasingIsFixedAlike)
{
  mucs::cString path("/a long component that goes/../b/");
  path.setFitOnErase(true);
  bool isEscaped = true;
  mio::fixupPath(path, isEscaped, nullptr);
  EXPECT_EQ(latin(path), "/b/");
  EXPECT_FALSE(isEscaped);
  EXPECT_TRUE(path.fitOnErase());
}
