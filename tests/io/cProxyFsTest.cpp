#include "io/cProxyFs.h"

#include "io/cFile.h"
#include "io/cFs.h"
#include "std/cBugException.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "support/cTraceFs.h"
#include "support/messageOf.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace
{

using mio::cAbstractFsImpl;
using mio::cProxyFs;
using support::cTraceFs;
using support::messageOf;
using support::toText;

typedef mstd::tAutoPtr<cAbstractFsImpl> tImpl;
typedef std::vector<std::string> tRecord;

class cProxyFsTest : public testing::Test
{
protected:
  cTraceFs* make(std::string const& name, std::string const& prefix)
  {
    return new cTraceFs(mFs, name, prefix, mRecord);
  }
  cTraceFs* bind(std::string const& name, std::string const& prefix)
  {
    cTraceFs* const pImpl = make(name, prefix);
    mProxy.bind(tImpl(pImpl));
    return pImpl;
  }
  cTraceFs* bindNative(std::string const& name)
  {
    cTraceFs* const pImpl = make(name, "");
    pImpl->mIsNative = true;
    mProxy.bind(tImpl(pImpl));
    return pImpl;
  }
  /// What was recorded since the last call.
  tRecord record()
  {
    tRecord const taken = mRecord;
    mRecord.clear();
    return taken;
  }

  typedef std::pair<char const*, std::function<void()>> tCall;
  /// Each operation on the path "/m/x"; those on two paths on "/m/x" and "/m/y".
  std::vector<tCall> calls()
  {
    return {
        {"exists /m/x followed time 2",
         [this] {
           mstd::cDateTime time;
           mProxy.exists("/m/x", true, &time, mio::cFileInfoFlags::LastStatusChange);
         }},
        {"remove /m/x", [this] { mProxy.remove("/m/x"); }},
        {"mkdir /m/x", [this] { mProxy.mkdir("/m/x"); }},
        {"rename /m/x /m/y", [this] { mProxy.rename("/m/x", "/m/y"); }},
        {"createSymLink /m/x /m/y", [this] { mProxy.createSymLink("/m/x", "/m/y"); }},
        {"setPermissions /m/x 8 followed", [this] { mProxy.setPermissions("/m/x", mio::cPermissions(8), true); }},
        {"createDirImpl /m/x 3", [this] { mProxy.createDirImpl(mFs, "/m/x", 3); }},
        {"createFileInfoImpl /m/x", [this] { mProxy.createFileInfoImpl(mFs, "/m/x"); }},
        {"createFileImpl /m/x", [this] { mProxy.createFileImpl(mFs, mDevice, "/m/x"); }},
    };
  }

  tRecord mRecord;
  mio::cFs mFs;
  mio::cFile mDevice{mFs, "/nowhere"};
  cProxyFs mProxy{mFs};
};

TEST_F(cProxyFsTest, WithoutAnybodyEveryOperationNamesThePath)
{
  for (tCall const& call : calls())
  {
    std::string const second = call.first[0] == 'r' && call.first[2] == 'n' ? "/m/y" : "/m/x";
    std::string const path = std::string(call.first).substr(0, 13) == "createSymLink" ? "/m/y" : second;
    EXPECT_EQ(messageOf<mstd::cBugException>(call.second),
              "ProxyFs has not valid filesystem for " + path + " and no registered filesystems at all!")
        << call.first;
  }
}

TEST_F(cProxyFsTest, WithoutAnybodyWhatHasNoPathSaysSo)
{
  EXPECT_EQ(messageOf<mstd::cBugException>([this] { mProxy.cwd(); }), "ProxyFs has not valid filesystems!");
  EXPECT_EQ(messageOf<mstd::cBugException>([this] { mProxy.supportsSymLinks(); }),
            "ProxyFs has not valid filesystems!");
  EXPECT_EQ(messageOf<mstd::cBugException>([this] { mProxy.nativeFs(); }), "ProxyFs has not valid filesystems!");
}

TEST_F(cProxyFsTest, EachOperationGoesToTheDelegateThatTakesThePath)
{
  bind("other", "/o/");
  bind("mine", "/m/");
  bindNative("native");
  for (tCall const& call : calls())
  {
    call.second();
    EXPECT_EQ(record(), tRecord{std::string("mine ") + call.first});
  }
}

TEST_F(cProxyFsTest, EachOperationGoesToTheNativeOneIfNobodyTakesThePath)
{
  bind("other", "/o/");
  cTraceFs* const pNative = bindNative("native");
  for (tCall const& call : calls())
  {
    call.second();
    EXPECT_EQ(record(), tRecord{std::string("native ") + call.first});
  }
  EXPECT_EQ(toText(mProxy.cwd().path()), "/cwd/of/native/");
  EXPECT_TRUE(mProxy.supportsSymLinks());
  EXPECT_EQ(record(), (tRecord{"native cwd", "native supportsSymLinks"}));
  EXPECT_EQ(&mProxy.nativeFs(), pNative);
}

TEST_F(cProxyFsTest, TheDelegateGetsThePathThatItMadeOfIt)
{
  bind("mine", "/m/")->mRewritten = "/inside/";
  mProxy.remove("/m/x");
  mProxy.rename("/m/x", "/m/y");
  mProxy.createSymLink("/m/x", "/m/y");
  mProxy.createFileInfoImpl(mFs, "/m/x");
  EXPECT_EQ(record(), (tRecord{"mine remove /inside/x", "mine rename /inside/x /inside/y",
                               "mine createSymLink /inside/x /inside/y", "mine createFileInfoImpl /inside/x"}));
}

TEST_F(cProxyFsTest, TheCallersPathStaysAsItIs)
{
  bind("mine", "/m/")->mRewritten = "/inside/";
  mucs::cString const path("/m/x");
  mProxy.mkdir(path);
  EXPECT_EQ(toText(path), "/m/x");
}

TEST_F(cProxyFsTest, DelegatesAreToldWhatAPathIsWantedFor)
{
  cTraceFs* const pAsked = bind("asked", "/never/");
  pAsked->mDoesRecordMatches = true;
  bindNative("native");
  char const* const numbers[] = {"0", "1", "3", "4", "4", "7", "8", "9", "10"};
  unsigned int i = 0;
  for (tCall const& call : calls())
  {
    call.second();
    EXPECT_EQ(record().front(), std::string("asked matches /m/x ") + numbers[i]) << call.first;
    ++i;
  }
  mProxy.rename("/m/x", "/m/y");
  EXPECT_EQ(record(), (tRecord{"asked matches /m/x 4", "asked matches /m/y 4", "native rename /m/x /m/y"}));
  mProxy.cwd();
  mProxy.supportsSymLinks();
  mProxy.unbind("/m/x");
  EXPECT_EQ(record(), (tRecord{"asked matches  2", "native cwd", "asked matches  5", "native supportsSymLinks",
                               "asked matches /m/x 12"}));
  cTraceFs* const pBound = make("bound", "");
  pBound->mDoesRecordMatches = true;
  mProxy.bind(tImpl(pBound));
  EXPECT_EQ(record(), tRecord{"bound matches  11"});
}

TEST_F(cProxyFsTest, TheHandleOfTheCallIsHandedOn)
{
  cTraceFs* const pMine = bind("mine", "/m/");
  mio::cFs other;
  mProxy.createDirImpl(other, "/m/x", 0);
  EXPECT_EQ(pMine->mpLastFs, &other);
  mProxy.createFileInfoImpl(mFs, "/m/x");
  EXPECT_EQ(pMine->mpLastFs, &mFs);
  mProxy.createFileImpl(other, mDevice, "/m/x");
  EXPECT_EQ(pMine->mpLastFs, &other);
  EXPECT_EQ(pMine->mpLastDevice, &mDevice);
}

TEST_F(cProxyFsTest, WhatWasBoundEarlierIsAskedEarlier)
{
  bind("first", "/m/");
  bind("second", "/m/x");
  mProxy.remove("/m/x");
  EXPECT_EQ(record(), tRecord{"first remove /m/x"});
}

TEST_F(cProxyFsTest, OfTwoNativeOnesTheFirstServesAsFallBackAndTheSecondIsAskedFirst)
{
  cTraceFs* const pFirst = bindNative("first");
  bindNative("second");
  EXPECT_EQ(&mProxy.nativeFs(), pFirst);
  mProxy.remove("/anything");
  EXPECT_EQ(record(), tRecord{"second remove /anything"});
  mProxy.supportsSymLinks(); // the second takes no empty path
  EXPECT_EQ(record(), tRecord{"first supportsSymLinks"});
}

TEST_F(cProxyFsTest, ADelegateThatTakesTheEmptyPathHasTheWorkingDirectory)
{
  bindNative("native");
  bind("mine", "/m/")->mTakesEmpty = true;
  EXPECT_EQ(toText(mProxy.cwd().path()), "/cwd/of/mine/");
}

TEST_F(cProxyFsTest, ARenameFromADelegateToTheNativeOneChangesNothing)
{
  bind("mine", "/m/")->mRewritten = "/inside/";
  bindNative("native");
  char const* const text = "Rename across filesystem boundaries is not supported (/inside/x -> /n/y";
  EXPECT_EQ(messageOf<mstd::cRuntimeException>([this] { mProxy.rename("/m/x", "/n/y"); }), text);
  EXPECT_EQ(messageOf<mstd::cRuntimeException>([this] { mProxy.createSymLink("/m/x", "/n/y"); }), text);
  EXPECT_EQ(record(), tRecord());
}

TEST_F(cProxyFsTest, ARenameFromADelegateToNowhereCrossesABoundaryToo)
{
  bind("mine", "/m/");
  EXPECT_THROW(mProxy.rename("/m/x", "/n/y"), mstd::cRuntimeException);
  EXPECT_THROW(mProxy.rename("/n/y", "/m/x"), mstd::cRuntimeException);
}

TEST_F(cProxyFsTest, UnbindingTakesAllDelegatesOfThePath)
{
  bind("first", "/m/");
  bind("other", "/o/");
  bind("second", "/m/");
  mProxy.unbind("/m/");
  EXPECT_EQ(record(), (tRecord{"first gone", "second gone"}));
  mProxy.remove("/o/x");
  EXPECT_EQ(record(), tRecord{"other remove /o/x"});
}

TEST_F(cProxyFsTest, WhatIsInUseStaysWithAllOthersAndAllGoTogetherLater)
{
  bind("first", "/m/");
  cTraceFs* const pUsed = bind("used", "/m/");
  bind("third", "/m/");
  pUsed->mIsUsed = true;
  EXPECT_EQ(messageOf<mstd::cRuntimeException>([this] { mProxy.unbind("/m/"); }), "Filesystem (/m/) is in use!");
  mProxy.remove("/m/x");
  EXPECT_EQ(record(), tRecord{"first remove /m/x"});
  pUsed->mIsUsed = false;
  mProxy.unbind("/m/");
  EXPECT_EQ(record(), (tRecord{"first gone", "used gone", "third gone"}));
}

TEST_F(cProxyFsTest, WhatAFailedUnbindingFoundGoesWithTheNextThatSucceeds)
{
  bind("first", "/m/");
  bind("used", "/m/")->mIsUsed = true;
  bind("other", "/o/");
  EXPECT_THROW(mProxy.unbind("/m/"), mstd::cRuntimeException);
  mProxy.unbind("/o/");
  EXPECT_EQ(record(), (tRecord{"first gone", "other gone"}));
  mProxy.remove("/m/x");
  EXPECT_EQ(record(), tRecord{"used remove /m/x"});
}

TEST_F(cProxyFsTest, AMessageAboutUseNamesThePathOfTheCaller)
{
  cTraceFs* const pUsed = bind("used", "/m/");
  pUsed->mIsUsed = true;
  pUsed->mRewritten = "/inside/";
  EXPECT_EQ(messageOf<mstd::cRuntimeException>([this] { mProxy.unbind("/m/x"); }), "Filesystem (/m/x) is in use!");
}

TEST_F(cProxyFsTest, UnbindingTheEmptyPathClearsTheNativeOne)
{
  bind("mine", "/m/");
  bindNative("native");
  mProxy.unbind(mucs::cString());
  EXPECT_EQ(record(), tRecord{"native gone"});
  EXPECT_THROW(mProxy.nativeFs(), mstd::cBugException);
  mProxy.unbind(mucs::cString()); // nobody left to go
  EXPECT_EQ(record(), tRecord());
}

TEST_F(cProxyFsTest, ANativeOneInUseStays)
{
  cTraceFs* const pNative = bindNative("native");
  pNative->mIsUsed = true;
  EXPECT_EQ(messageOf<mstd::cRuntimeException>([this] { mProxy.unbind(mucs::cString()); }),
            "Native filesystem  is in use!");
  EXPECT_EQ(&mProxy.nativeFs(), pNative);
}

TEST_F(cProxyFsTest, TheNativeOneStaysIfADelegateTakesTheEmptyPath)
{
  bindNative("native");
  bind("mine", "/m/")->mTakesEmpty = true;
  mProxy.unbind(mucs::cString());
  EXPECT_EQ(record(), tRecord{"mine gone"});
  mProxy.nativeFs();
}

TEST_F(cProxyFsTest, APathThatADelegateEmptiedMeansTheNativeOne)
{
  class cEmptying : public cTraceFs
  {
  public:
    using cTraceFs::cTraceFs;
    bool matches(mucs::cString& path, Operation operation) override
    {
      if (operation == OpUnbind)
      {
        path.clear();
      }
      return false;
    }
  };
  mProxy.bind(tImpl(new cEmptying(mFs, "emptying", "", mRecord)));
  bindNative("native");
  mProxy.unbind("/m/");
  EXPECT_EQ(record(), tRecord{"native gone"});
}

TEST_F(cProxyFsTest, UnbindingAPathThatNobodyTakesDoesNothing)
{
  bind("mine", "/m/");
  bindNative("native");
  mProxy.unbind("/elsewhere");
  EXPECT_EQ(record(), tRecord());
  mProxy.nativeFs();
}

TEST_F(cProxyFsTest, TheNativeOneGoesBeforeTheTable)
{
  {
    cProxyFs proxy(mFs);
    proxy.bind(tImpl(make("mine", "/m/")));
    cTraceFs* const pNative = make("native", "");
    pNative->mIsNative = true;
    proxy.bind(tImpl(pNative));
  }
  EXPECT_EQ(record(), (tRecord{"native gone", "mine gone"}));
}

TEST_F(cProxyFsTest, ItIsInUseAndTakesEveryPathItself)
{
  mucs::cString path("/x");
  EXPECT_TRUE(mProxy.isUsed());
  EXPECT_TRUE(mProxy.matches(path, cAbstractFsImpl::OpRemove));
  EXPECT_TRUE(mProxy.matches(path, cAbstractFsImpl::OpBind));
  EXPECT_EQ(toText(path), "/x");
}

TEST_F(cProxyFsTest, NothingCannotBeBound)
{
  EXPECT_ANY_THROW(mProxy.bind(tImpl()));
}

} // namespace
