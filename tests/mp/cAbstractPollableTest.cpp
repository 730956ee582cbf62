#include "mp/cAbstractPollable.h"

#include "mp/cBasicProcessData.h"
#include "mp/cLocker.h"
#include "std/cBugException.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>

namespace
{

class cPollable : public mp::cAbstractPollable
{
public:
  cPollable() = default;
  explicit cPollable(mp::cAbstractProcessData& data) : cAbstractPollable(data) {}
  void work() override { ++mNumCalls; }

  unsigned int mNumCalls = 0;
};

} // namespace

TEST(cAbstractPollable, TheWorkStaysPure)
{
  EXPECT_TRUE(std::is_abstract<mp::cAbstractPollable>::value);
}

TEST(cAbstractPollable, IsPollableAndNoThread)
{
  mp::cBasicProcessData data;
  cPollable process(data);
  mp::cAbstractProcess& base = process;
  EXPECT_EQ(base.isPollable(), static_cast<mp::cAbstractPollable*>(&process));
  EXPECT_EQ(base.isRunnable(), nullptr);
}

TEST(cAbstractPollable, CannotBeInterrupted)
{
  mp::cBasicProcessData data;
  cPollable process(data);
  process.interrupt(false);
  process.interrupt(true);
  EXPECT_FALSE(data.isCanceled());
  EXPECT_FALSE(data.isFinished());
  process.work();
  EXPECT_EQ(process.mNumCalls, 1u);
}

TEST(cAbstractPollable, TakesTheDataWithoutAnyLocker)
{
  mp::cLocker locker;
  mp::cBasicProcessData data;
  data.setContext(mp::cAbstractProcess::NoContext, &locker, &locker);
  cPollable process(data);
  EXPECT_EQ(data.context(), 1);
  EXPECT_EQ(data.locker(), nullptr);
  EXPECT_EQ(data.secondLocker(), nullptr);
}

TEST(cAbstractPollable, WithDataOfItsOwnItIsPollableToo)
{
  cPollable process;
  EXPECT_EQ(process.processData().context(), 1);
}

TEST(cAbstractPollable, DataServesOneProcessAtATime)
{
  mp::cBasicProcessData data;
  cPollable first(data);
  try
  {
    cPollable second(data);
    FAIL();
  }
  catch (mstd::cBugException const& e)
  {
    mucs::cString text;
    e.createMessage(text, mucs::cString(""), 0, nullptr);
    EXPECT_STREQ(text.ascii('?').c_str(), "Never use process data for more than one process!");
  }
  EXPECT_EQ(data.context(), 1) << "the first process still has it";
  EXPECT_THROW(cPollable third(data), mstd::cBugException);
}

TEST(cAbstractPollable, ANextProcessMayUseTheDataOfOneThatIsGone)
{
  mp::cBasicProcessData data;
  {
    cPollable first(data);
  }
  EXPECT_EQ(data.context(), 0);
  EXPECT_NO_THROW(cPollable second(data));
}
