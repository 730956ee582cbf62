// What components and their manager write to the debug output: from where, in which order, and under its lock.

#include "mcs/cInterfaceDep.h"
#include "mp/cLocker.h"
#include "support/cCaptureOut.h"
#include "support/cTestComponent.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <future>

using mcs::cComponentAddr;
using mcs::cInterfaceDep;
using support::cTestComponent;

namespace
{
/// Looks, while characters are written, whether others can write, too.
class cWatchingOut : public support::cCaptureOut
{
public:
  void printChar(char c) override
  {
    if (mOnChar)
    {
      mOnChar();
    }
    mLockFree = mLockFree || isLockFree();
    cCaptureOut::printChar(c);
  }

  static bool isLockFree()
  {
    return std::async(std::launch::async,
                      [] {
                        mp::cLocker& locker = *mpi::system().out.mutex();
                        bool const locked = locker.doTryLock();
                        if (locked)
                        {
                          locker.doUnlock();
                        }
                        return locked;
                      })
        .get();
  }

  std::function<void()> mOnChar;
  bool mLockFree = false;
};

class ComponentMessages : public ::testing::Test
{
protected:
  void expectOneLine(std::string const& text, std::string const& file) const
  {
    ASSERT_EQ(mOut.lines().size(), 1u);
    EXPECT_EQ(mOut.lines()[0].text, text);
    EXPECT_EQ(mOut.lines()[0].file, file);
    EXPECT_GT(mOut.lines()[0].line, 0u);
    EXPECT_FALSE(mOut.mLockFree) << "while the line was written";
    EXPECT_TRUE(cWatchingOut::isLockFree()) << "behind the line";
  }

  cWatchingOut mOut;
  mcs::cModuleMgr mManager{mpi::system().extensions};
  support::cPasses mPasses;
  cTestComponent mFirst{mManager, "first"};
  cTestComponent mSecond{mManager, "second"};
};
} // namespace

TEST_F(ComponentMessages, TellOfADependencyThatIsAddedWhenItsOwnerIsMarked)
{
  mOut.mOnChar = [&] {
    EXPECT_TRUE(mFirst.interfaceDepModified());
    EXPECT_EQ(mFirst.interfaceDeps().length(), 1u);
  };
  cInterfaceDep dependency(mFirst, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  expectOneLine("cAbstractComponent::addInterfaceDep...", "mcs/cAbstractComponent");
}

TEST_F(ComponentMessages, TellOfADependencyBeforeItIsSearched)
{
  mManager.addComponent(mSecond.provide("x"), cComponentAddr());
  cInterfaceDep dependency(mFirst, support::wantedInterface("x"), nullptr, cInterfaceDep::saUseFirstBest);
  mOut.clear();
  mOut.mOnChar = [&] { EXPECT_FALSE(dependency.matched()); };
  mFirst.recalcInterfaceDeps();
  EXPECT_TRUE(dependency.matched());
  expectOneLine("cAbstractComponent::Recalcing deps...", "mcs/cAbstractComponent");
}

TEST_F(ComponentMessages, TellOfAReferrerBeforeItIsMarked)
{
  mManager.addComponent(mFirst, cComponentAddr());
  mManager.addComponent(mSecond, cComponentAddr());
  mFirst.addLocalRequiredComponent(&mSecond);
  mPasses.settle();
  mSecond.removeLater();
  mOut.mOnChar = [&] { EXPECT_FALSE(mFirst.toRemove()); };
  mPasses.run();
  EXPECT_TRUE(mFirst.toRemove());
  expectOneLine("cModuleMgr: Mark referencing component for removal... (" +
                    support::toString(mFirst.location().toString()) + ")",
                "mcs/cModuleMgr");
  mOut.mOnChar = nullptr;
  mPasses.settle();
}

TEST_F(ComponentMessages, TellOfAReferrerAgainInEachPassThatFindsIt)
{
  mManager.addComponent(mFirst, cComponentAddr());
  mManager.addComponent(mSecond, cComponentAddr());
  mFirst.addLocalRequiredComponent(&mSecond);
  mPasses.settle();
  mSecond.removeLater();
  mPasses.run(); // finds the first
  mPasses.run(); // finds it still, though it goes with this pass
  EXPECT_EQ(mOut.lines().size(), 2u);
  EXPECT_EQ(mPasses.settle(), 1u);
  EXPECT_TRUE(mManager.components().empty());
}
