#include "rmi/cAbstractSignal.h"

#include "rmi/cConnectable.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <type_traits>

using mrmi::cAbstractSignal;

namespace
{
class cPlainSignal : public cAbstractSignal
{
public:
  void notifyConnectableDestroyed(mrmi::cConnectable&) override {}
  void connect(mrmi::cConnectable&, mstd::cAsciiString const&, SlotResolving) override {}
  void disconnect(mrmi::cConnectable const&) override {}
  void addParameterInfo(mrmi::cPublicSignal&) override {}
  using cAbstractSignal::checkNIC;
};
} // namespace

TEST(cAbstractSignal, AFreshOneThrowsIfUnconnectedAndIsNotPublic)
{
  cPlainSignal const signal;
  EXPECT_EQ(cAbstractSignal::ThrowIfUnconnected, signal.invocationBehavior());
  EXPECT_FALSE(signal.isPublicSignal());
}

TEST(cAbstractSignal, TheBehaviourCanBeSet)
{
  cPlainSignal signal;
  signal.setInvocationBehavior(cAbstractSignal::IgnoreIfUnconnected);
  EXPECT_EQ(cAbstractSignal::IgnoreIfUnconnected, signal.invocationBehavior());
}

TEST(cAbstractSignal, ACopyHasTheBehaviour)
{
  cPlainSignal signal;
  signal.setInvocationBehavior(cAbstractSignal::IgnoreIfUnconnected);
  cPlainSignal const copy(signal);
  EXPECT_EQ(cAbstractSignal::IgnoreIfUnconnected, copy.invocationBehavior());
  EXPECT_FALSE(copy.isPublicSignal());
}

TEST(cAbstractSignal, SwapExchangesTheBehaviours)
{
  cPlainSignal a;
  cPlainSignal b;
  a.setInvocationBehavior(cAbstractSignal::IgnoreIfUnconnected);
  a.swap(b);
  EXPECT_EQ(cAbstractSignal::ThrowIfUnconnected, a.invocationBehavior());
  EXPECT_EQ(cAbstractSignal::IgnoreIfUnconnected, b.invocationBehavior());
}

TEST(cAbstractSignal, TheTypeStringsAreEmpty)
{
  cPlainSignal const signal;
  EXPECT_EQ("", support::toString(signal.parametersTypeString()));
  EXPECT_EQ("", support::toString(signal.returnTypeString()));
}

TEST(cAbstractSignal, TheNameOfOneThatIsNotPublicIsABug)
{
  cPlainSignal const signal;
  mstd::cBugException const e = support::caught<mstd::cBugException>([&] { signal.publicSignalName(); });
  EXPECT_EQ("Signal is not a public one!", support::messageOf(e));
}

TEST(cAbstractSignal, CheckNICDoesNothingForZero)
{
  support::cCaptureOut capture;
  cPlainSignal::checkNIC(0);
  EXPECT_EQ("", capture.text());
}

TEST(cAbstractSignal, CheckNICWritesLineAndTraceWithTheirMarks)
{
  support::cCaptureOut capture;
  cPlainSignal::checkNIC(1);
  ASSERT_GE(capture.lines().size(), 4u);
  EXPECT_EQ(">>>>>>>>> delete this situation in signal!", capture.lines()[0].text);
  EXPECT_EQ("rmi/cAbstractSignal", capture.lines()[0].file);
  EXPECT_EQ(81u, capture.lines()[0].line);
  for (std::size_t i = 1; i < capture.lines().size(); ++i)
  {
    EXPECT_EQ("rmi/cAbstractSignal", capture.lines()[i].file);
    EXPECT_EQ(82u, capture.lines()[i].line);
  }
  // The name of checkNIC() itself may be missing: a compiler may split the function in two, one of them hidden.
  EXPECT_TRUE(capture.contains("CheckNICWritesLineAndTraceWithTheirMarks_Test::TestBody()")) << capture.text();
  EXPECT_EQ(nullptr, mpi::system().out.debugFileName());
}

TEST(cAbstractSignal, CheckNICLetsNoFailureOfTheOutputOut)
{
  class cFailingOut : public mpi::cAbstractOut
  {
  public:
    void printChar(char) override { throw std::runtime_error("disk full"); }
  };
  cFailingOut out;
  mpi::cAbstractOut* const former = mpi::system().out.linked();
  mpi::system().out.link(&out);
  EXPECT_NO_THROW(cPlainSignal::checkNIC(2));
  mpi::system().out.link(former);
}
