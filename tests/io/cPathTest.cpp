#include "io/cPath.h"

#include "io/cFs.h"
#include "pi/cPlatform.h"
#include "pi/cSystem.h"
#include "support/cAllocationFault.h"
#include "support/cTempDir.h"
#include "support/pathText.h"

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <new>
#include <string>
#include <type_traits>
#include <utility>

using mio::cPath;
using support::held;
using support::latin;

namespace
{

/// Takes the process to a fresh directory and back.
class cFreshWorkingDirectory
{
public:
  cFreshWorkingDirectory() : mOld(std::filesystem::current_path()) { std::filesystem::current_path(mDirectory.path()); }
  cFreshWorkingDirectory(cFreshWorkingDirectory const&) = delete;
  cFreshWorkingDirectory& operator=(cFreshWorkingDirectory const&) = delete;
  ~cFreshWorkingDirectory() { std::filesystem::current_path(mOld); }

  /// As the system tells it, with a slash at its end.
  std::string path() const { return std::filesystem::canonical(mDirectory.path()).string() + "/"; }

private:
  support::cTempDir mDirectory;
  std::filesystem::path mOld;
};

std::string wentTo(char const* from, char const* to)
{
  cPath path(from);
  path.cd(mucs::cString(to));
  return held(path);
}

std::string absolute(cPath path, cPath const& base)
{
  EXPECT_EQ(&path.makeAbsolute(base), &path);
  return held(path);
}

std::string relative(cPath path, cPath const& base)
{
  path.makeRelative(base);
  return held(path);
}

} // namespace

TEST(cPath, WithoutATextItIsTheWorkingDirectory)
{
  cFreshWorkingDirectory const directory;
  EXPECT_EQ(held(cPath()), "|" + directory.path());
}

TEST(cPath, TheWorkingDirectoryGoesThroughTheGivenTable)
{
  cFreshWorkingDirectory const directory;
  cPath::tHash table;
  EXPECT_EQ(held(cPath(&table)), "|" + directory.path());
  EXPECT_EQ(table.length(), 1u);
}

TEST(cPath, IsMadeFromATextAndNormalisedIfTold)
{
  EXPECT_EQ(held(cPath("")), "|./");
  EXPECT_EQ(held(cPath("a\\b")), "|a/b/");
  EXPECT_EQ(held(cPath("C:\\x")), "C|/x/");
  EXPECT_EQ(held(cPath("c:x")), "C|x/");
  EXPECT_EQ(held(cPath("/a/b/../c")), "|/a/c/");
  EXPECT_EQ(held(cPath("/a/b/../c", false)), "|/a/b/../c/");
  EXPECT_EQ(held(cPath("a/..")), "|./");
}

TEST(cPath, SetReplacesTextAndDriveLetter)
{
  cPath path("C:/a");
  path.set("b//c");
  EXPECT_EQ(held(path), "|b/c/");
  path.set("d:\\e//f", false);
  EXPECT_EQ(held(path), "D|/e//f/");
  cPath::tHash table;
  path.set("g//h", true, &table);
  EXPECT_EQ(held(path), "|g/h/");
  ASSERT_NE(table.has("g//h/"), nullptr);
  path.set(path.unixEquivalent());
  EXPECT_EQ(held(path), "|g/h/");
}

TEST(cPath, FixupNormalisesAndDropsTheLetterOfAPathThatEscapes)
{
  cPath path("C:/a/./b/..", false);
  path.fixup();
  EXPECT_EQ(held(path), "C|/a/");
  cPath escaping("C:a/../../b", false);
  EXPECT_EQ(held(escaping), "C|a/../../b/");
  cPath::tHash table;
  escaping.fixup(&table);
  EXPECT_EQ(held(escaping), "|../b/");
  EXPECT_EQ(table.length(), 1u);
}

TEST(cPath, ADriveLetterMakesItAbsoluteWhateverItsText)
{
  EXPECT_TRUE(cPath("c:x").isAbsolute());
  EXPECT_TRUE(cPath("c:/x").isAbsolute());
  EXPECT_TRUE(cPath("/x").isAbsolute());
  EXPECT_TRUE(cPath("x").isRelative());
  EXPECT_TRUE(cPath("").isRelative());
  EXPECT_FALSE(cPath("x").isAbsolute());
  EXPECT_FALSE(cPath("c:x").isRelative());
  EXPECT_TRUE(mio::isRelative(cPath("c:x").unixEquivalent()));
}

TEST(cPath, ItsTextsShowOrHideTheDriveLetter)
{
  cPath const path("c:\\x\\y");
  EXPECT_EQ(path.driveLetter(), 'C');
  EXPECT_EQ(latin(path.unixEquivalent()), "/x/y/");
  EXPECT_EQ(latin(path.path()), "C:/x/y/");
  EXPECT_EQ(latin(cPath("c:x").path()), "C:x/");
  EXPECT_EQ(latin(cPath("/x").path()), "/x/");
  EXPECT_EQ(cPath("/x").driveLetter(), 0);
}

TEST(cPath, TheSystemsFormHasTheSystemsDelimiter)
{
  std::string expected("C:/x/y/");
  for (char& c : expected)
  {
    c = c == '/' ? mpi::cPlatform::osSpecificPathDelimiter() : c;
  }
  EXPECT_EQ(latin(cPath("c:/x/y").osPath()), expected);
}

TEST(cPath, PartsEndBehindEachSlash)
{
  cPath const path("/a/bc");
  EXPECT_EQ(latin(path.getParts(0)), "/");
  EXPECT_EQ(latin(path.getParts(1)), "/a/");
  EXPECT_EQ(latin(path.getParts(2)), "/a/bc/");
  EXPECT_EQ(latin(path.getParts(3)), "");
  EXPECT_EQ(latin(path.getParts(0xFFFFFFFFu)), "");
  EXPECT_EQ(latin(cPath("a/b").getParts(0)), "a/");
  EXPECT_EQ(latin(cPath("c:/a").getParts(0)), "C:/");
  EXPECT_EQ(latin(cPath("a//b", false).getParts(1)), "a//");
}

TEST(cPath, EachComponentIsAPartWithoutSlashes)
{
  cPath const path("/a//bc", false);
  EXPECT_EQ(latin(path.getPart(0)), "a");
  EXPECT_EQ(latin(path.getPart(1)), "bc");
  EXPECT_EQ(latin(path.getPart(2)), "");
  EXPECT_EQ(latin(path.getPart(0xFFFFFFFFu)), "");
  EXPECT_EQ(latin(cPath("c:/a").getPart(0)), "C:");
  EXPECT_EQ(latin(cPath("c:/a").getPart(1)), "a");
  EXPECT_EQ(latin(cPath("/").getPart(0)), "");
}

TEST(cPath, AComponentThatABackslashEndsIsCountedToo)
{
  cPath path("a");
  path.cd("b\\");
  EXPECT_EQ(held(path), "|a/b\\");
  EXPECT_EQ(latin(path.getPart(1)), "b\\");
  EXPECT_EQ(latin(path.getPart(2)), "");
}

TEST(cPath, GoingToARelativePathAppendsItAsItIs)
{
  EXPECT_EQ(wentTo("/a", "b"), "|/a/b/");
  EXPECT_EQ(wentTo("/a", "b/"), "|/a/b/");
  EXPECT_EQ(wentTo("/a", "b\\"), "|/a/b\\");
  EXPECT_EQ(wentTo("/a", "..//./x"), "|/a/..//./x/");
  EXPECT_EQ(wentTo("/a", "\\x"), "|/a/\\x/");
  EXPECT_EQ(wentTo("C:/a", "b"), "C|/a/b/");
}

TEST(cPath, GoingNowhereChangesNothing)
{
  EXPECT_EQ(wentTo("/a", ""), "|/a/");
}

TEST(cPath, GoingToAnAbsolutePathSetsIt)
{
  EXPECT_EQ(wentTo("/a", "/b/../c"), "|/c/");
  EXPECT_EQ(wentTo("/a", "d:x"), "D|x/");
  EXPECT_EQ(wentTo("C:/a", "/b"), "|/b/");
}

TEST(cPath, GoingToAPathUsesItsLetterToo)
{
  cPath path("/a");
  path.cd(cPath("b/c"));
  EXPECT_EQ(held(path), "|/a/b/c/");
  path.cd(cPath("c:x"));
  EXPECT_EQ(held(path), "C|x/");
}

TEST(cPath, CanGoToItself)
{
  cPath path("a");
  path.cd(path.unixEquivalent());
  EXPECT_EQ(held(path), "|a/a/");
  path.cd(path);
  EXPECT_EQ(held(path), "|a/a/a/a/");
}

TEST(cPath, AFileIsResolvedAgainstTheDirectory)
{
  EXPECT_EQ(latin(cPath("/a/b").relativeTo("c/d.e")), "/a/b/c/d.e");
  EXPECT_EQ(latin(cPath("/a/b").relativeTo("../d.e")), "/a/d.e");
  EXPECT_EQ(latin(cPath("/a/b").relativeTo("d.e")), "/a/b/d.e");
  EXPECT_EQ(latin(cPath("/a//b", false).relativeTo("./d.e")), "/a/b/d.e");
  EXPECT_EQ(latin(cPath("C:/a").relativeTo("d")), "C:/a/d");
  EXPECT_EQ(latin(cPath("/a/b").relativeTo("..")), "/a/");
  EXPECT_EQ(latin(cPath("/a/b").relativeTo("")), "/a/b/");
}

TEST(cPath, AFileWithAnAbsolutePathComesBackUnchanged)
{
  EXPECT_EQ(latin(cPath("/a").relativeTo("/x//y/../z")), "/x//y/../z");
  EXPECT_EQ(latin(cPath("/a").relativeTo("c:z")), "c:z");
}

TEST(cPath, AFileOfARelativeDirectoryCountsFromTheWorkingDirectory)
{
  cFreshWorkingDirectory const directory;
  EXPECT_EQ(latin(cPath("a").relativeTo("b/c")), directory.path() + "a/b/c");
  EXPECT_EQ(latin(cPath("a").relativeTo("../c")), directory.path() + "c");
}

TEST(cPath, ARelativePathIsMadeAbsolute)
{
  EXPECT_EQ(absolute(cPath("b/c"), cPath("/a")), "|/a/b/c/");
  EXPECT_EQ(absolute(cPath("../c"), cPath("/a/b")), "|/a/c/");
  EXPECT_EQ(absolute(cPath("../../c"), cPath("/a")), "|/");
  EXPECT_EQ(absolute(cPath("b"), cPath("a")), "|a/b/");
}

TEST(cPath, AnAbsolutePathStaysWhenMadeAbsolute)
{
  EXPECT_EQ(absolute(cPath("/b//c", false), cPath("/a")), "|/b//c/");
  EXPECT_EQ(absolute(cPath("c:x"), cPath("D:/a")), "C|x/");
}

TEST(cPath, TheLetterOfTheBaseBecomesThatOfTheAbsolutePath)
{
  EXPECT_EQ(absolute(cPath("b"), cPath("C:/a")), "C|/a/b/");
  EXPECT_EQ(absolute(cPath("b"), cPath("C:a")), "C|a/b/");
}

TEST(cPath, AnAbsolutePathThatEscapesHasNoLetter)
{
  EXPECT_EQ(absolute(cPath("../../b"), cPath("C:a")), "|../b/");
}

TEST(cPath, MakingAbsoluteFillsTheTableAndTakesItselfAsBase)
{
  cPath::tHash table;
  cPath path("b");
  path.makeAbsolute(cPath("/a/./"), &table);
  EXPECT_EQ(held(path), "|/a/b/");
  EXPECT_EQ(table.length(), 1u);
  cPath own("a");
  own.makeAbsolute(own);
  EXPECT_EQ(held(own), "|a/a/");
}

TEST(cPath, TheWayFromABaseClimbsAndGoesDown)
{
  EXPECT_EQ(relative(cPath("/a/b/c"), cPath("/a")), "|b/c/");
  EXPECT_EQ(relative(cPath("/a"), cPath("/a/b/c")), "|../../");
  EXPECT_EQ(relative(cPath("/a/x/y"), cPath("/a/b/c")), "|../../x/y/");
  EXPECT_EQ(relative(cPath("/a/b"), cPath("/a/b")), "|./");
  EXPECT_EQ(relative(cPath("/"), cPath("/")), "|./");
  EXPECT_EQ(relative(cPath("/ab"), cPath("/a")), "|../ab/");
  EXPECT_EQ(relative(cPath("/a"), cPath("/ab")), "|../a/");
}

TEST(cPath, ADotLeftInTheBaseNeedsNoClimb)
{
  EXPECT_EQ(relative(cPath("/a"), cPath("/a/./b/.", false)), "|../");
  EXPECT_EQ(relative(cPath("/a/b"), cPath("/a/./b", false)), "|../b/");
  EXPECT_EQ(relative(cPath("/a/./b", false), cPath("/a")), "|./b/");
}

TEST(cPath, BothKindsOfSeparatorsDivideTheComponentsOfTheWay)
{
  cPath path("/a");
  path.cd("b\\c");
  cPath base("/a");
  base.cd("b\\\\d\\");
  EXPECT_EQ(relative(path, base), "|../c/");
}

TEST(cPath, TheWayNeedsTwoAbsolutePaths)
{
  EXPECT_EQ(relative(cPath("/a//b", false), cPath("a")), "|/a//b/");
  EXPECT_EQ(relative(cPath("a/b"), cPath("/a")), "|a/b/");
}

TEST(cPath, TheWayLooksAtNoDriveLetter)
{
  EXPECT_EQ(relative(cPath("C:/a/b"), cPath("D:/a")), "C|b/");
  EXPECT_EQ(relative(cPath("C:a/b"), cPath("/a")), "C|b/");
}

TEST(cPath, TheWayFromItselfIsTheDirectoryItself)
{
  cPath path("/a/b");
  path.makeRelative(path);
  EXPECT_EQ(held(path), "|./");
}

TEST(cPath, MakesItsDirectoryAndTellsWhetherItExists)
{
  support::cTempDir const directory;
  cPath path(directory.name("made"));
  EXPECT_FALSE(path.exists());
  path.mkdir();
  EXPECT_TRUE(std::filesystem::is_directory(directory.path() + "/made"));
  EXPECT_TRUE(path.exists());

  mio::cFs fs;
  path.cd("deeper");
  EXPECT_FALSE(path.exists(&fs));
  path.mkdir(&fs);
  EXPECT_TRUE(path.exists(&fs));
}

TEST(cPath, ADeadLinkLeadsToNoDirectory)
{
  support::cTempDir const directory;
  std::filesystem::create_symlink("nowhere", directory.path() + "/link");
  EXPECT_FALSE(cPath(directory.name("link")).exists());
}

TEST(cPath, TwoSpellingsOfOneDirectoryAreEqual)
{
  EXPECT_TRUE(cPath("/a/b/") == cPath("/a/x/../b/", false));
  EXPECT_FALSE(cPath("/a/b/") != cPath("/a/x/../b/", false));
  EXPECT_TRUE(cPath("a\\b") == cPath("a//b/", false));
  EXPECT_FALSE(cPath("C:/a/") == cPath("D:/a/"));
  EXPECT_TRUE(cPath("C:/a/") != cPath("D:/a/"));
  EXPECT_FALSE(cPath("C:/a/") == cPath("/a/"));
  EXPECT_TRUE(cPath("c:/a") == cPath("C:\\a"));
  EXPECT_FALSE(cPath("/a/") == cPath("/a/b/"));
}

TEST(cPath, ComparingLeavesBothAsTheyAre)
{
  cPath const left("C:a/../..", false);
  cPath const right("C:b/../..", false);
  EXPECT_TRUE(left == right);
  EXPECT_EQ(held(left), "C|a/../../");
  EXPECT_EQ(held(right), "C|b/../../");
}

TEST(cPath, IsSwappedCopiedAndMovedAsAWhole)
{
  cPath left("C:/a");
  cPath right("b");
  swap(left, right);
  EXPECT_EQ(held(left), "|b/");
  EXPECT_EQ(held(right), "C|/a/");
  left = right;
  EXPECT_EQ(held(left), "C|/a/");
  cPath moved(std::move(left));
  EXPECT_EQ(held(moved), "C|/a/");
  static_assert(!std::is_convertible<char const*, cPath>::value, "a text is no path by itself");
}

TEST(cPath, WithoutMemoryItStaysAsItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  cPath const base("C:/base/of/everything/that/is/relative");
  mucs::cString const text("D:some/../text/that needs a block/./of its own");
  for (unsigned int operation = 0; operation < 6; ++operation)
  {
    unsigned int failed = 0;
    for (unsigned int nth = 1; failed + 1 == nth; ++nth)
    {
      cPath::tHash table;
      cPath path(operation == 4 ? "/base/to be made/../relative" : "a/../to be kept", false);
      std::string const before = held(path);
      support::cAllocationFault fault(nth);
      try
      {
        switch (operation)
        {
        case 0:
          path.set(text, true, &table);
          break;
        case 1:
          path.fixup(&table);
          break;
        case 2:
          path.cd(text);
          break;
        case 3:
          path.makeAbsolute(base, &table);
          break;
        case 4:
          path.makeRelative(base);
          break;
        default:
          cPath(text, true, &table).swap(path);
          break;
        }
        fault.disarm();
        EXPECT_NE(held(path), before) << operation;
      }
      catch (std::bad_alloc const&)
      {
        fault.disarm();
        EXPECT_EQ(held(path), before) << operation << ", " << nth;
        ++failed;
      }
    }
    if (support::cAllocationFault::seesMalloc())
    {
      EXPECT_GT(failed, 0u) << operation;
    }
  }
}

TEST(cPath, ATextThatFailsToBeSetLeavesAnEmptyTargetEmpty)
{
  if (!support::cAllocationFault::seesMalloc())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  unsigned int failed = 0;
  for (unsigned int nth = 1; failed + 1 == nth; ++nth)
  {
    cPath::tHash table;
    mucs::cString target;
    support::cAllocationFault fault(nth);
    try
    {
      mio::setPath("a//text that is set", target, true, &table);
      fault.disarm();
      EXPECT_EQ(latin(target), "a/text that is set/");
    }
    catch (std::bad_alloc const&)
    {
      fault.disarm();
      EXPECT_TRUE(target.empty());
      ++failed;
    }
  }
  EXPECT_GT(failed, 2u);
}
