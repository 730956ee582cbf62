#include "io/cFs.h"

#include "io/cAbstractDirImpl.h"
#include "io/cAbstractFileImpl.h"
#include "io/cAbstractFileInfoImpl.h"
#include "io/cFile.h"
#include "io/cPath.h"
#include "io/cProxyFs.h"
#include "pi/cSystem.h"
#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "support/cForwardFs.h"
#include "support/cTempDir.h"
#include "support/cTraceFs.h"
#include "support/messageOf.h"
#include "ucs/cEnDecUTF8.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace
{

using mio::cAbstractFsImpl;
using mio::cFs;
using support::cTraceFs;
using support::messageOf;
using support::toText;

typedef mstd::tAutoPtr<cAbstractFsImpl> tImpl;
typedef std::vector<std::string> tRecord;

static_assert(!std::is_polymorphic<cFs>::value, "a handle is a plain value");
static_assert(std::is_polymorphic<cAbstractFsImpl>::value, "what stands behind it is not");

cTraceFs* install(cFs& fs, std::string const& name, tRecord& record)
{
  cTraceFs* const pImpl = new cTraceFs(fs, name, "", record);
  fs.setImpl(tImpl(pImpl));
  return pImpl;
}

TEST(cFs, AFreshOneHasTheSystemsEncoder)
{
  EXPECT_EQ(&cFs().endec(), &mpi::system().defaults.enDec);
  EXPECT_EQ(&mpi::system().fs.endec(), &mpi::system().defaults.enDec);
}

TEST(cFs, AnEncoderCanBeGivenAndIsSharedByCopies)
{
  mucs::cEnDecUTF8 enDec;
  cFs fs(enDec);
  cFs copy(fs);
  cFs assigned;
  assigned = copy;
  EXPECT_EQ(&fs.endec(), &enDec);
  EXPECT_EQ(&copy.endec(), &enDec);
  EXPECT_EQ(&assigned.endec(), &enDec);
}

TEST(cFs, EveryOperationIsForwardedUnchanged)
{
  tRecord record;
  cFs fs;
  cTraceFs* const pImpl = install(fs, "fs", record);
  cFs const& constFs = fs;
  mstd::cDateTime time;
  cFs platform;
  mio::cFile device(platform, "/device");
  EXPECT_TRUE(constFs.exists("/a", false, &time, mio::cFileInfoFlags::LastAccess));
  EXPECT_TRUE(constFs.exists("/a"));
  fs.remove("/a");
  EXPECT_EQ(toText(constFs.cwd().path()), "/cwd/of/fs/");
  fs.mkdir("/a");
  fs.rename("/a", "/b");
  EXPECT_TRUE(constFs.supportsSymLinks());
  fs.createSymLink("/a", "/b");
  fs.setPermissions("/a", mio::cPermissions(8), false);
  fs.setPermissions("/a", mio::cPermissions(8));
  fs.createFileImpl(device, "/a");
  EXPECT_EQ(pImpl->mpLastFs, &fs);
  EXPECT_EQ(pImpl->mpLastDevice, &device);
  cFs copy(fs);
  copy.createDirectoryImpl("/a", 5);
  EXPECT_EQ(pImpl->mpLastFs, &copy);
  constFs.createFileInfoImpl("/a");
  EXPECT_EQ(pImpl->mpLastFs, &fs);
  EXPECT_EQ(record, (tRecord{"fs exists /a time 0", "fs exists /a followed 1", "fs remove /a", "fs cwd", "fs mkdir /a",
                             "fs rename /a /b", "fs supportsSymLinks", "fs createSymLink /a /b",
                             "fs setPermissions /a 8", "fs setPermissions /a 8 followed", "fs createFileImpl /a",
                             "fs createDirImpl /a 5", "fs createFileInfoImpl /a"}));
}

TEST(cFs, ThePlatformMountsNothing)
{
  cFs fs;
  tRecord record;
  char const* const text = "Bind / unbind not supported for filesystem implementation!";
  EXPECT_EQ(messageOf<mstd::cBugException>([&] { fs.bind(tImpl(new cTraceFs(fs, "new", "", record))); }), text);
  EXPECT_EQ(messageOf<mstd::cBugException>([&] { fs.unbind("/a"); }), text);
  EXPECT_EQ(record, tRecord{"new gone"});
}

TEST(cFs, TheImplementationGoesWithTheLastHandle)
{
  tRecord record;
  auto pFirst = std::make_unique<cFs>();
  install(*pFirst, "fs", record);
  auto pSecond = std::make_unique<cFs>(*pFirst);
  pFirst.reset();
  pSecond->mkdir("/a");
  EXPECT_EQ(record, tRecord{"fs mkdir /a"});
  pSecond.reset();
  EXPECT_EQ(record, (tRecord{"fs mkdir /a", "fs gone"}));
}

TEST(cFs, AnImplementationKnowsItsHandleWhileItLives)
{
  tRecord record;
  mucs::cEnDecUTF8 enDec;
  auto pFirst = std::make_unique<cFs>(enDec);
  cTraceFs* const pImpl = install(*pFirst, "fs", record);
  EXPECT_EQ(&pImpl->fs(), pFirst.get());
  cFs second(*pFirst);
  EXPECT_EQ(&pImpl->fs(), pFirst.get());
  pFirst.reset();
  EXPECT_EQ(&pImpl->fs().endec(), &enDec);
  EXPECT_NE(&pImpl->fs(), &second);
}

TEST(cFs, ThePlatformWorksOnWhenTheFirstHandleIsGone)
{
  support::cTempDir dir;
  auto pFirst = std::make_unique<cFs>();
  cFs second(*pFirst);
  pFirst.reset();
  second.mkdir(dir.name("a"));
  EXPECT_TRUE(second.exists(dir.name("a")));
}

TEST(cFs, MountedImplementationsOutliveTheHandleTheyWereMadeFor)
{
  tRecord record;
  mucs::cEnDecUTF8 enDec;
  auto pFirst = std::make_unique<cFs>(enDec);
  pFirst->installProxy();
  cTraceFs* const pMine = new cTraceFs(*pFirst, "mine", "/m/", record);
  cTraceFs* const pOther = new cTraceFs(*pFirst, "other", "/o/", record);
  pFirst->bind(tImpl(pMine));
  pFirst->bind(tImpl(pOther));
  cFs second(*pFirst);
  pFirst.reset();
  EXPECT_EQ(&pMine->fs().endec(), &enDec);
  EXPECT_EQ(&pOther->fs().endec(), &enDec);
  second.remove("/o/x");
  second.unbind("/m/");
  EXPECT_EQ(record, (tRecord{"other remove /o/x", "mine gone"}));
}

TEST(cFs, SwappedHandlesTakeTheirImplementationsAlong)
{
  tRecord record;
  cFs left;
  cFs right;
  cTraceFs* const pLeft = install(left, "left", record);
  cTraceFs* const pRight = install(right, "right", record);
  left.swap(right);
  left.mkdir("/a");
  right.mkdir("/a");
  EXPECT_EQ(record, (tRecord{"right mkdir /a", "left mkdir /a"}));
  EXPECT_EQ(&pLeft->fs(), &right);
  EXPECT_EQ(&pRight->fs(), &left);
  swap(left, left);
  EXPECT_EQ(&pRight->fs(), &left);
}

TEST(cFs, AssigningSharesAndLetsTheOldOneGo)
{
  tRecord record;
  cFs left;
  cFs right;
  install(left, "left", record);
  cTraceFs* const pRight = install(right, "right", record);
  left = right;
  EXPECT_EQ(record, tRecord{"left gone"});
  left.mkdir("/a");
  EXPECT_EQ(record, (tRecord{"left gone", "right mkdir /a"}));
  right = left; // the same already
  EXPECT_EQ(&pRight->fs(), &right);
}

TEST(cFs, WithoutAnImplementationNoHandleIsMade)
{
  cFs fs;
  EXPECT_THROW(fs.setImpl(tImpl()), mstd::cBugException);
  EXPECT_TRUE(fs.supportsSymLinks());
}

TEST(cFs, CopiesMadeBeforeStayWithWhatTheyHave)
{
  tRecord record;
  cFs fs;
  cFs const before(fs);
  install(fs, "fs", record);
  EXPECT_TRUE(before.exists("/"));
  EXPECT_EQ(record, tRecord());
  EXPECT_TRUE(fs.exists("/"));
  EXPECT_EQ(record.size(), 1u);
}

TEST(cFs, AProxyStandsInFrontOfWhatWasThere)
{
  tRecord record;
  cFs fs;
  cTraceFs* const pNative = install(fs, "native", record);
  fs.installProxy();
  fs.bind(tImpl(new cTraceFs(fs, "mine", "/m/", record)));
  fs.installProxy(); // stands already: what is mounted stays
  fs.mkdir("/m/a");
  fs.mkdir("/a");
  EXPECT_EQ(record, (tRecord{"mine mkdir /m/a", "native mkdir /a"}));
  pNative->mIsUsed = true;
  EXPECT_ANY_THROW(fs.unbind(mucs::cString()));
}

TEST(cFs, APathIsMadeOneDirectoryAtATimeWithoutSlashes)
{
  support::cTempDir dir;
  cFs fs;
  support::cForwardFs* const pImpl = new support::cForwardFs(fs);
  fs.setImpl(tImpl(pImpl));
  fs.createPath(mio::cPath(dir.name("a/b/")));
  EXPECT_EQ(pImpl->made(), (tRecord{dir.path() + "/a", dir.path() + "/a/b"}));
}

TEST(cFs, TheBaseOfAnImplementationIsInUseTakesAllAndMountsNothing)
{
  cFs fs;
  mio::cProxyFs proxy(fs); // keeps the forms of the base
  tRecord record;
  class cBase : public cTraceFs
  {
  public:
    using cTraceFs::cTraceFs;
    bool baseIsUsed() const { return cAbstractFsImpl::isUsed(); }
    bool baseMatches(mucs::cString& path) { return cAbstractFsImpl::matches(path, OpUnbind); }
  } base(fs, "base", "", record);
  mucs::cString path("/x");
  EXPECT_TRUE(base.baseIsUsed());
  EXPECT_TRUE(base.baseMatches(path));
  EXPECT_EQ(toText(path), "/x");
  EXPECT_THROW(base.bind(tImpl()), mstd::cBugException);
  EXPECT_THROW(base.unbind(path), mstd::cBugException);
}

TEST(cFs, OperationsHaveTheirNumbers)
{
  EXPECT_EQ(cAbstractFsImpl::OpExists, 0);
  EXPECT_EQ(cAbstractFsImpl::OpRemove, 1);
  EXPECT_EQ(cAbstractFsImpl::OpCwd, 2);
  EXPECT_EQ(cAbstractFsImpl::OpMkdir, 3);
  EXPECT_EQ(cAbstractFsImpl::OpRename, 4);
  EXPECT_EQ(cAbstractFsImpl::OpSupportsSymLinks, 5);
  EXPECT_EQ(cAbstractFsImpl::OpSetPermissions, 7);
  EXPECT_EQ(cAbstractFsImpl::OpCreateDir, 8);
  EXPECT_EQ(cAbstractFsImpl::OpCreateFileInfo, 9);
  EXPECT_EQ(cAbstractFsImpl::OpCreateFile, 10);
  EXPECT_EQ(cAbstractFsImpl::OpBind, 11);
  EXPECT_EQ(cAbstractFsImpl::OpUnbind, 12);
}

TEST(cFs, TheSystemsFileSystemIsNewInEachRoot)
{
  tRecord record;
  install(mpi::system().fs, "fs", record);
  mpi::cSystem::cleanup();
  EXPECT_EQ(record, tRecord{"fs gone"});
  EXPECT_TRUE(mpi::system().fs.exists("/"));
  EXPECT_EQ(record, tRecord{"fs gone"});
}

} // namespace
