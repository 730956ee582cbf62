// Random scripts run on real signals and on a plain model of them; both write a trace, and the traces must be the same.

#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cUnconnectedSignalException.h"
#include "rmi/localSignal0.h"
#include "rmi/localSignal1.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace
{
unsigned int const SignalCount = 3;
unsigned int const ReceiverCount = 4;
unsigned int const SlotCount = 2; // of each receiver
unsigned int const MostSlotRuns = 60;
unsigned int const MostDepth = 5;

enum Command
{
  ConnectBack,
  ConnectFront,
  Disconnect,
  RenewReceiver, // destroys it, and makes a new one
  RenewSignal,   // not while it runs
  ClearReceiver,
  DetachReceiver,
  Emit,
  EmitAndCatch,
  Throw,
  SetThrowing,
  SetIgnoring,
  CommandCount
};

struct cStep
{
  Command mCommand;
  unsigned int mSignal;
  unsigned int mReceiver;
  unsigned int mSlot;
};

/// What to do from outside, and what the n-th slot that runs does.
struct cScript
{
  std::vector<cStep> mSteps;
  std::vector<std::vector<cStep>> mSlotSteps;
};

struct cScriptError
{
};

/// Runs a script. What signals do is left to the derived classes.
class cWorld
{
public:
  explicit cWorld(cScript const& script) : mScript(script), mRuns(0), mDepth(0) {}
  virtual ~cWorld() {}

  std::string run()
  {
    for (cStep const& step : mScript.mSteps)
    {
      guarded([&] { execute(step); });
      mTrace += '[';
      for (unsigned int s = 0; s < SignalCount; ++s)
      {
        mTrace += std::to_string(slotCount(s)) + '/' + std::to_string(running(s)) + ' ';
      }
      mTrace += ']';
    }
    // The calling orders that are left.
    mRuns = MostSlotRuns;
    for (unsigned int s = 0; s < SignalCount; ++s)
    {
      guarded([&] { emit(s); });
    }
    return mTrace;
  }

  void slotRuns(unsigned int receiver, unsigned int slot)
  {
    mTrace += static_cast<char>('a' + receiver * SlotCount + slot);
    if (mRuns >= MostSlotRuns || mDepth >= MostDepth)
    {
      return;
    }
    struct cDepth
    {
      unsigned int& mDepth;
      explicit cDepth(unsigned int& depth) : mDepth(depth) { ++mDepth; }
      ~cDepth() { --mDepth; }
    } const depth(mDepth);
    for (cStep const& step : mScript.mSlotSteps[mRuns++])
    {
      execute(step);
    }
  }

protected:
  virtual void connect(unsigned int signal, unsigned int receiver, unsigned int slot, bool isFront) = 0;
  virtual void disconnect(unsigned int signal, unsigned int receiver) = 0;
  virtual void renewReceiver(unsigned int receiver) = 0;
  virtual void renewSignal(unsigned int signal) = 0;
  virtual void clearReceiver(unsigned int receiver) = 0;
  virtual void detachReceiver(unsigned int receiver) = 0;
  virtual void emit(unsigned int signal) = 0;
  virtual void setThrowing(unsigned int signal, bool isThrowing) = 0;
  virtual unsigned int slotCount(unsigned int signal) const = 0;
  virtual unsigned int running(unsigned int signal) const = 0;
  virtual bool catchUnconnected() = 0; // in a catch clause: true if that is what it is

private:
  template <class Action>
  void guarded(Action action)
  {
    try
    {
      action();
    }
    catch (cScriptError const&)
    {
      mTrace += '!';
    }
    catch (...)
    {
      if (!catchUnconnected())
      {
        throw;
      }
      mTrace += '?';
    }
  }

  void execute(cStep const& step)
  {
    switch (step.mCommand)
    {
    case ConnectBack:
    case ConnectFront:
      connect(step.mSignal, step.mReceiver, step.mSlot, step.mCommand == ConnectFront);
      break;
    case Disconnect:
      disconnect(step.mSignal, step.mReceiver);
      break;
    case RenewReceiver:
      renewReceiver(step.mReceiver);
      break;
    case RenewSignal:
      if (running(step.mSignal) == 0)
      {
        renewSignal(step.mSignal);
      }
      break;
    case ClearReceiver:
      clearReceiver(step.mReceiver);
      break;
    case DetachReceiver:
      detachReceiver(step.mReceiver);
      break;
    case Emit:
      mTrace += '(';
      emit(step.mSignal);
      mTrace += ')';
      break;
    case EmitAndCatch:
      mTrace += '{';
      guarded([&] { emit(step.mSignal); });
      mTrace += '}';
      break;
    case Throw:
      throw cScriptError();
    case SetThrowing:
    case SetIgnoring:
      setThrowing(step.mSignal, step.mCommand == SetThrowing);
      break;
    case CommandCount:
      break;
    }
  }

  cScript const& mScript;
  unsigned int mRuns;
  unsigned int mDepth;
  std::string mTrace;
};

/// The algorithm in its plainest form: values in vectors, no lifetimes.
class cModelWorld : public cWorld
{
public:
  explicit cModelWorld(cScript const& script) : cWorld(script) {}

protected:
  void connect(unsigned int signal, unsigned int receiver, unsigned int slot, bool isFront) override
  {
    cModelSignal& s = mSignals[signal];
    cModelCall const call = {receiver, slot, isFront && s.mRunning != 0};
    s.mCalls.insert(isFront ? s.mCalls.begin() : s.mCalls.end(), call);
  }
  void disconnect(unsigned int signal, unsigned int receiver) override
  {
    std::vector<cModelCall> kept;
    for (cModelCall const& call : mSignals[signal].mCalls)
    {
      if (call.mReceiver != receiver)
      {
        kept.push_back(call);
      }
    }
    mSignals[signal].mCalls = kept;
  }
  void renewReceiver(unsigned int receiver) override { detachReceiver(receiver); }
  void clearReceiver(unsigned int receiver) override { detachReceiver(receiver); }
  void detachReceiver(unsigned int receiver) override
  {
    for (unsigned int s = 0; s < SignalCount; ++s)
    {
      disconnect(s, receiver);
    }
  }
  void renewSignal(unsigned int signal) override { mSignals[signal] = cModelSignal(); }
  void emit(unsigned int signal) override
  {
    cModelSignal& s = mSignals[signal];
    struct cRunning
    {
      unsigned int& mCount;
      explicit cRunning(unsigned int& count) : mCount(count) { ++mCount; }
      ~cRunning() { --mCount; }
    } const runs(s.mRunning);
    if (s.mCalls.empty())
    {
      if (s.mIsThrowing)
      {
        throw cUnconnected();
      }
      return;
    }
    if (s.mCalls.size() == 1)
    {
      s.mCalls[0].mCalled = true;
      slotRuns(s.mCalls[0].mReceiver, s.mCalls[0].mSlot);
      return;
    }
    for (cModelCall& call : s.mCalls)
    {
      call.mCalled = false;
    }
    std::size_t i = 0;
    while (i < s.mCalls.size())
    {
      if (s.mCalls[i].mCalled)
      {
        ++i;
        continue;
      }
      s.mCalls[i].mCalled = true;
      slotRuns(s.mCalls[i].mReceiver, s.mCalls[i].mSlot);
    }
  }
  void setThrowing(unsigned int signal, bool isThrowing) override { mSignals[signal].mIsThrowing = isThrowing; }
  unsigned int slotCount(unsigned int signal) const override
  {
    return static_cast<unsigned int>(mSignals[signal].mCalls.size());
  }
  unsigned int running(unsigned int signal) const override { return mSignals[signal].mRunning; }
  bool catchUnconnected() override
  {
    try
    {
      throw;
    }
    catch (cUnconnected const&)
    {
      return true;
    }
    catch (...)
    {
      return false;
    }
  }

private:
  struct cUnconnected
  {
  };
  struct cModelCall
  {
    unsigned int mReceiver;
    unsigned int mSlot;
    bool mCalled;
  };
  struct cModelSignal
  {
    std::vector<cModelCall> mCalls;
    unsigned int mRunning = 0;
    bool mIsThrowing = true;
  };

  cModelSignal mSignals[SignalCount];
};

class cReceiver : public mrmi::cConnectable
{
public:
  cReceiver(cWorld& world, unsigned int number) : mWorld(world), mNumber(number) {}
  // The receiver may die while these run, so nothing is touched afterwards.
  void sltFirst() { mWorld.slotRuns(mNumber, 0); }
  void sltSecond() { mWorld.slotRuns(mNumber, 1); }
  void sltFirstWith(std::string const&) { mWorld.slotRuns(mNumber, 0); }
  void sltSecondWith(std::string const&) { mWorld.slotRuns(mNumber, 1); }

private:
  cWorld& mWorld;
  unsigned int mNumber;
};

class cRealWorld : public cWorld
{
public:
  explicit cRealWorld(cScript const& script) : cWorld(script)
  {
    for (unsigned int r = 0; r < ReceiverCount; ++r)
    {
      mReceivers[r].reset(new cReceiver(*this, r));
    }
    for (unsigned int s = 0; s < SignalCount; ++s)
    {
      renewSignal(s);
    }
  }

protected:
  // Signal 0 has an argument, the others have none.
  void connect(unsigned int signal, unsigned int receiver, unsigned int slot, bool isFront) override
  {
    mrmi::cAbstractSignal::ConnectionPolicy const policy =
        isFront ? mrmi::cAbstractSignal::Prepend : mrmi::cAbstractSignal::Append;
    cReceiver& object = *mReceivers[receiver];
    if (signal == 0)
    {
      mWithArgument->connect(
          mrmi::cDirectLocalSlotCall1(object, slot == 0 ? &cReceiver::sltFirstWith : &cReceiver::sltSecondWith),
          policy);
    }
    else
    {
      mPlain[signal]->connect(
          mrmi::cDirectLocalSlotCall0(object, slot == 0 ? &cReceiver::sltFirst : &cReceiver::sltSecond), policy);
    }
  }
  void disconnect(unsigned int signal, unsigned int receiver) override
  {
    base(signal).disconnect(*mReceivers[receiver]);
  }
  void renewReceiver(unsigned int receiver) override
  {
    mReceivers[receiver].reset();
    mReceivers[receiver].reset(new cReceiver(*this, receiver));
  }
  void clearReceiver(unsigned int receiver) override { mReceivers[receiver]->clear(); }
  void detachReceiver(unsigned int receiver) override { mReceivers[receiver]->detachAllSignals(); }
  void renewSignal(unsigned int signal) override
  {
    if (signal == 0)
    {
      mWithArgument.reset(new mrmi::localSignal1<piVoid, std::string const&>);
    }
    else
    {
      mPlain[signal].reset(new mrmi::localSignal0<piVoid>);
    }
  }
  void emit(unsigned int signal) override
  {
    if (signal != 0)
    {
      (*mPlain[signal])();
    }
    else if (slotCount(0) % 2 == 0)
    {
      (*mWithArgument)("argument");
    }
    else
    {
      mWithArgument->invoke("argument");
    }
  }
  void setThrowing(unsigned int signal, bool isThrowing) override
  {
    base(signal).setInvocationBehavior(isThrowing ? mrmi::cAbstractSignal::ThrowIfUnconnected
                                                  : mrmi::cAbstractSignal::IgnoreIfUnconnected);
  }
  unsigned int slotCount(unsigned int signal) const override { return base(signal).slotCount(); }
  unsigned int running(unsigned int signal) const override { return base(signal).nestedInvocationCount(); }
  bool catchUnconnected() override
  {
    try
    {
      throw;
    }
    catch (mrmi::cUnconnectedSignalException const&)
    {
      return true;
    }
    catch (...)
    {
      return false;
    }
  }

private:
  mrmi::cLocalSignalBase& base(unsigned int signal) const
  {
    if (signal == 0)
    {
      return *mWithArgument;
    }
    return *mPlain[signal];
  }

  std::unique_ptr<cReceiver> mReceivers[ReceiverCount];
  std::unique_ptr<mrmi::localSignal1<piVoid, std::string const&>> mWithArgument;
  std::unique_ptr<mrmi::localSignal0<piVoid>> mPlain[SignalCount];
};

class cScriptMaker
{
public:
  explicit cScriptMaker(unsigned int seed) : mRandom(seed) {}

  cScript make()
  {
    cScript script;
    // Some connections first, so that there is something to run.
    unsigned int const connections = below(8);
    for (unsigned int i = 0; i < connections; ++i)
    {
      script.mSteps.push_back(step(below(2) == 0 ? ConnectBack : ConnectFront));
    }
    unsigned int const steps = 2 + below(10);
    for (unsigned int i = 0; i < steps; ++i)
    {
      script.mSteps.push_back(step(randomCommand(false)));
    }
    script.mSlotSteps.resize(MostSlotRuns);
    unsigned int const liveliness = 1 + below(3);
    for (std::vector<cStep>& slot : script.mSlotSteps)
    {
      unsigned int const count = below(liveliness + 1);
      for (unsigned int i = 0; i < count; ++i)
      {
        slot.push_back(step(randomCommand(true)));
      }
    }
    return script;
  }

private:
  unsigned int below(unsigned int limit) { return static_cast<unsigned int>(mRandom() % limit); }

  Command randomCommand(bool isInSlot)
  {
    if (!isInSlot && below(3) == 0)
    {
      return EmitAndCatch;
    }
    Command const command = static_cast<Command>(below(CommandCount));
    // Exceptions end much: not too many of them.
    return command == Throw && below(3) != 0 ? ConnectBack : command;
  }

  cStep step(Command command) { return cStep{command, below(SignalCount), below(ReceiverCount), below(SlotCount)}; }

  std::mt19937 mRandom;
};

unsigned int firstSeed()
{
  char const* const wanted = std::getenv("MORTISE_TEST_SEED");
  return wanted != nullptr ? static_cast<unsigned int>(std::strtoul(wanted, nullptr, 10)) : std::random_device()();
}
} // namespace

TEST(SignalModel, RandomScriptsRunAsThePlainModelSays)
{
  unsigned int const seed = firstSeed();
  std::printf("MORTISE_TEST_SEED=%u\n", seed);
  RecordProperty("seed", std::to_string(seed));
  cScriptMaker maker(seed);
  unsigned long long events = 0;
  for (unsigned int i = 0; i < 100000; ++i)
  {
    cScript const script = maker.make();
    std::string const expected = cModelWorld(script).run();
    ASSERT_EQ(expected, cRealWorld(script).run()) << "script " << i << " of seed " << seed;
    events += expected.size();
  }
  // The scripts do something.
  EXPECT_GT(events, 100000u * 50u);
}

TEST(SignalModel, TheModelKnowsTheOrderOfAConnectionAtTheFront)
{
  // A script whose trace is known by hand: a and c on signal 1, a puts e at the front.
  cScript script;
  script.mSteps = {{ConnectBack, 1, 0, 0}, {ConnectBack, 1, 1, 0}, {Emit, 1, 0, 0}, {Emit, 1, 0, 0}};
  script.mSlotSteps.resize(MostSlotRuns);
  script.mSlotSteps[0] = {{ConnectFront, 1, 2, 0}};
  std::string const expected = "[0/0 1/0 0/0 ][0/0 2/0 0/0 ](ac)[0/0 3/0 0/0 ](eac)[0/0 3/0 0/0 ]?eac?";
  EXPECT_EQ(expected, cModelWorld(script).run());
  EXPECT_EQ(expected, cRealWorld(script).run());
}
