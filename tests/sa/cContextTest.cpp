#include "sa/cContext.h"

#include "sa/cAbstractContextData.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

struct cCounts
{
  int released = 0;
  int destroyed = 0;
};

class cCountedData : public msa::cAbstractContextData
{
public:
  explicit cCountedData(cCounts& counts) : mCounts(counts) {}
  ~cCountedData() override { ++mCounts.destroyed; }
  void release() override { ++mCounts.released; }

private:
  cCounts& mCounts;
};

msa::cContextRef made(cCounts& counts)
{
  return msa::cContextRef(new cCountedData(counts));
}

std::string const NoReference = "cContextRef::unguardImpl(): no valid reference!";

} // namespace

TEST(cContext, TheEndOfTheScopeDestroysWithoutACommit)
{
  cCounts counts;
  {
    msa::cContext context(made(counts));
    EXPECT_EQ(counts.destroyed, 0);
  }
  EXPECT_EQ(counts.released, 0);
  EXPECT_EQ(counts.destroyed, 1);
}

TEST(cContext, ReleaseCommitsAndKeepsTheData)
{
  cCounts counts;
  {
    msa::cContext context(made(counts));
    context.release();
    EXPECT_EQ(counts.released, 1);
    EXPECT_EQ(counts.destroyed, 0);
    context.release();
    EXPECT_EQ(counts.released, 2); // what a second one means is up to the format
  }
  EXPECT_EQ(counts.destroyed, 1);
}

TEST(cContext, UnsetDestroysAtOnceAndOnlyOnce)
{
  cCounts counts;
  {
    msa::cContext context(made(counts));
    context.unset();
    EXPECT_EQ(counts.destroyed, 1);
    context.unset();
    EXPECT_EQ(support::bugMessageOf([&] { context.release(); }), NoReference);
  }
  EXPECT_EQ(counts.destroyed, 1);
  EXPECT_EQ(counts.released, 0);
}

TEST(cContext, CopyingTransfers)
{
  cCounts counts;
  {
    msa::cContext first(made(counts));
    msa::cContext second(first);
    EXPECT_EQ(support::bugMessageOf([&] { msa::cContext third(first); }), NoReference);
    first.unset();
    EXPECT_EQ(counts.destroyed, 0);
    second.release();
  }
  EXPECT_EQ(counts.released, 1);
  EXPECT_EQ(counts.destroyed, 1);
}

TEST(cContext, AssigningDoesNothing)
{
  cCounts one;
  cCounts two;
  {
    msa::cContext first(made(one));
    msa::cContext second(made(two));
    EXPECT_EQ(&(first = second), &first);
    EXPECT_EQ(one.destroyed, 0);
    EXPECT_EQ(two.destroyed, 0);
    second.release();
  }
  EXPECT_EQ(one.released, 0);
  EXPECT_EQ(one.destroyed, 1);
  EXPECT_EQ(two.released, 1);
  EXPECT_EQ(two.destroyed, 1);
}

TEST(cContext, UnguardGivesTheDataUp)
{
  cCounts counts;
  msa::cAbstractContextData* data = nullptr;
  {
    msa::cContext context(made(counts));
    data = context.unguard();
    EXPECT_EQ(support::bugMessageOf([&] { context.unguard(); }), NoReference);
  }
  EXPECT_EQ(counts.destroyed, 0);
  delete data;
}

TEST(cContext, AnEmptyHandleMakesNoGuard)
{
  cCounts counts;
  msa::cContextRef ref(made(counts));
  msa::cContext context(ref);
  EXPECT_EQ(support::bugMessageOf([&] { msa::cContext other(ref); }), NoReference);
}
