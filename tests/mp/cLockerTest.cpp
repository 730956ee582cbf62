#include "mp/cLocker.h"

#include "std/cBugException.h"

#include <gtest/gtest.h>

#include <memory>
#include <thread>
#include <type_traits>

using mp::cLocker;

namespace
{

/// Whether another thread could take the lock now.
bool isFree(cLocker& locker)
{
  bool taken = false;
  std::thread other([&] {
    taken = locker.doTryLock();
    if (taken)
    {
      locker.doUnlock();
    }
  });
  other.join();
  return taken;
}

} // namespace

TEST(cLocker, OneThreadMayTakeItTwiceAndASecondOnlyWhenBothAreReleased)
{
  cLocker locker;
  locker.doLock();
  locker.doLock();
  EXPECT_FALSE(isFree(locker));
  locker.doUnlock();
  EXPECT_FALSE(isFree(locker));
  locker.doUnlock();
  EXPECT_TRUE(isFree(locker));
}

TEST(cLocker, TryingTellsTheOutcome)
{
  cLocker locker;
  EXPECT_TRUE(locker.doTryLock());
  EXPECT_TRUE(locker.doTryLock());
  EXPECT_FALSE(isFree(locker));
  locker.doUnlock();
  locker.doUnlock();
  EXPECT_TRUE(isFree(locker));
}

TEST(cLocker, ACopyHasNoMutexAndLockingItIsInvalid)
{
  cLocker locker;
  locker.doLock();
  cLocker copy(locker);
  EXPECT_THROW(copy.doLock(), mstd::cBugException);
  EXPECT_THROW(copy.doTryLock(), mstd::cBugException);
  EXPECT_THROW(copy.doUnlock(), mstd::cBugException);
  EXPECT_FALSE(isFree(locker)) << "the original is as it was";
  locker.doUnlock();
  EXPECT_TRUE(isFree(locker));
}

TEST(cLocker, AssignmentDoesNothing)
{
  cLocker first;
  cLocker second;
  second.doLock();
  first = second;
  EXPECT_TRUE(isFree(first)) << "the target keeps its own mutex";
  EXPECT_FALSE(isFree(second));
  cLocker const copy(second);
  first = copy;
  first.doLock();
  first.doUnlock();
  second.doUnlock();
}

TEST(cLocker, AClassWithALockerStaysCopyable)
{
  struct cOwner
  {
    cLocker mLocker;
    int mValue = 0;
  };
  EXPECT_TRUE(std::is_copy_constructible<cOwner>::value);
  EXPECT_TRUE(std::is_copy_assignable<cOwner>::value);
}

TEST(cLock, HoldsTheLockForItsScope)
{
  cLocker locker;
  {
    cLocker::cLock lock(&locker);
    EXPECT_TRUE(lock.isLocked());
    EXPECT_FALSE(isFree(locker));
    {
      cLocker::cLock again(locker.lock());
      EXPECT_TRUE(again.isLocked());
    }
    EXPECT_FALSE(isFree(locker));
  }
  EXPECT_TRUE(isFree(locker));
}

TEST(cLock, ANullLockerSaysLockedAndHoldsNothing)
{
  cLocker::cLock lock(static_cast<cLocker*>(nullptr));
  EXPECT_TRUE(lock.isLocked());
}

TEST(cLock, TryingIsATrueGuardWhenItSucceeds)
{
  cLocker locker;
  {
    cLocker::cLock lock(locker.tryLock());
    EXPECT_TRUE(lock.isLocked());
    EXPECT_FALSE(isFree(locker));
  }
  EXPECT_TRUE(isFree(locker));
}

TEST(cLock, AFailedTryDoesNotUnlock)
{
  cLocker locker;
  locker.doLock();
  bool locked = true;
  std::thread other([&] {
    cLocker::cLock lock(locker.tryLock());
    locked = lock.isLocked();
  });
  other.join();
  EXPECT_FALSE(locked);
  EXPECT_FALSE(isFree(locker));
  locker.doUnlock();
  EXPECT_TRUE(isFree(locker));
}

TEST(cUnlock, LetsOthersInBetweenAndHoldsTheLockAgainAfterwards)
{
  cLocker locker;
  cLocker::cLock lock(&locker);
  {
    cLocker::cUnlock gap(&locker);
    EXPECT_TRUE(isFree(locker));
  }
  EXPECT_FALSE(isFree(locker));
  {
    cLocker::cUnlock gap(locker.unlock());
    EXPECT_TRUE(isFree(locker));
  }
  EXPECT_FALSE(isFree(locker));
}

TEST(cUnlock, ANullLockerIsLeftAlone)
{
  auto pGap = std::make_unique<cLocker::cUnlock>(static_cast<cLocker*>(nullptr));
  EXPECT_NO_THROW(pGap.reset());
}

TEST(cUnlock, GivesUpOneOfTwoHoldsOnly)
{
  cLocker locker;
  cLocker::cLock first(&locker);
  cLocker::cLock second(&locker);
  cLocker::cUnlock gap(&locker);
  EXPECT_FALSE(isFree(locker));
}

TEST(cLocker, GuardsProtectACounter)
{
  cLocker locker;
  unsigned int counter = 0;
  auto const count = [&] {
    for (int i = 0; i < 10000; ++i)
    {
      cLocker::cLock lock(&locker);
      ++counter;
    }
  };
  std::thread first(count);
  std::thread second(count);
  first.join();
  second.join();
  EXPECT_EQ(counter, 20000u);
}
