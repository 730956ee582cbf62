#include "mp/cAbstractProcess.h"

#include "mp/cBasicProcessData.h"
#include "mp/cLocker.h"
#include "support/cCaptureOut.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace
{

class cProcess : public mp::cAbstractProcess
{
public:
  cProcess() = default;
  explicit cProcess(mp::cAbstractProcessData& data) : cAbstractProcess(data) {}
  void work() override {}
  mp::cAbstractPollable* isPollable() override { return nullptr; }
  mp::cAbstractRunnable* isRunnable() override { return nullptr; }
  void interrupt(bool) override {}
};

/// Data that tells when it goes.
class cTellingData : public mp::cBasicProcessData
{
public:
  explicit cTellingData(bool& rGone) : mGone(rGone) {}
  ~cTellingData() override { mGone = true; }

private:
  bool& mGone;
};

} // namespace

TEST(cAbstractProcess, IsAbstractAndNotCopied)
{
  EXPECT_TRUE(std::is_abstract<mp::cAbstractProcess>::value);
  EXPECT_FALSE(std::is_copy_constructible<cProcess>::value);
}

TEST(cAbstractProcess, HasBasicDataOfItsOwnByDefault)
{
  cProcess process;
  EXPECT_NE(dynamic_cast<mp::cBasicProcessData*>(&process.processData()), nullptr);
  EXPECT_FALSE(process.isRunning());
  EXPECT_FALSE(process.isFinished());
  cProcess other;
  EXPECT_NE(&process.processData(), &other.processData());
}

TEST(cAbstractProcess, ForwardsToTheDataItWasGiven)
{
  support::cCaptureOut capture;
  mp::cBasicProcessData data;
  cProcess process(data);
  EXPECT_EQ(&process.processData(), &data);
  data.restart();
  EXPECT_TRUE(process.isRunning());
  EXPECT_FALSE(process.isFinished());
  process.processData().setFinished();
  EXPECT_FALSE(process.isRunning());
  EXPECT_TRUE(process.isFinished());
}

TEST(cAbstractProcess, DoesNotOwnTheDataItWasGiven)
{
  bool gone = false;
  {
    cTellingData data(gone);
    {
      cProcess process(data);
    }
    EXPECT_FALSE(gone);
  }
  EXPECT_TRUE(gone);
}

TEST(cAbstractProcess, SetsItsDataFreeWhenItGoes)
{
  mp::cLocker locker;
  mp::cBasicProcessData data;
  {
    cProcess process(data);
    data.setContext(mp::cAbstractProcess::RunnableContext, &locker, &locker);
  }
  EXPECT_EQ(data.context(), 0);
  EXPECT_EQ(data.locker(), nullptr);
  EXPECT_EQ(data.secondLocker(), nullptr);
}
