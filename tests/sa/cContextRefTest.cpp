#include "sa/cContextRef.h"

#include "sa/cAbstractContextData.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

namespace
{

/// Counts what happens to it.
class cCountedData : public msa::cAbstractContextData
{
public:
  explicit cCountedData(int& iDestroyed) : miDestroyed(iDestroyed) {}
  ~cCountedData() override { ++miDestroyed; }
  void release() override {}

private:
  int& miDestroyed;
};

std::string const NoReference = "cContextRef::unguardImpl(): no valid reference!";

msa::cContextRef passedOn(msa::cAbstractContextData* data)
{
  msa::cContextRef ref(data);
  return msa::cContextRef(ref);
}

msa::cContextRef carried(msa::cAbstractContextData* data)
{
  msa::cContextRef ref(data);
  msa::cContextRefRef const carrier = ref;
  return carrier;
}

} // namespace

TEST(cContextRef, DestroysTheDataIfItStillHoldsIt)
{
  int destroyed = 0;
  {
    msa::cContextRef ref(new cCountedData(destroyed));
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(cContextRef, ACopyTakesTheDataAndASecondTransferFails)
{
  int destroyed = 0;
  {
    msa::cContextRef ref(new cCountedData(destroyed));
    msa::cContextRef copy(ref);
    EXPECT_EQ(support::bugMessageOf([&] { msa::cContextRef again(ref); }), NoReference);
    EXPECT_EQ(support::bugMessageOf([&] { static_cast<void>(msa::cContextRefRef(ref)); }), NoReference);
    EXPECT_EQ(support::bugMessageOf([&] { ref.unguardImpl(); }), NoReference);
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 1);
}

TEST(cContextRef, TheDataGetsOutOfAFunctionByValue)
{
  int destroyed = 0;
  {
    msa::cContextRef first(passedOn(new cCountedData(destroyed)));
    msa::cContextRef second(carried(new cCountedData(destroyed)));
    EXPECT_EQ(destroyed, 0);
  }
  EXPECT_EQ(destroyed, 2);
}

TEST(cContextRef, UnguardingGivesTheDataUp)
{
  int destroyed = 0;
  msa::cAbstractContextData* data = nullptr;
  {
    msa::cContextRef ref(new cCountedData(destroyed));
    data = ref.unguardImpl();
  }
  EXPECT_EQ(destroyed, 0);
  delete data;
  EXPECT_EQ(destroyed, 1);
}
