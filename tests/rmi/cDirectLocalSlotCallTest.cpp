#include "rmi/cDirectLocalSlotCall0.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cDirectLocalSlotCall2.h"
#include "rmi/cDirectLocalSlotCall3.h"
#include "rmi/localSignal0.h"
#include "std/cBugException.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>

using support::messageOf;

namespace
{
class cReceiver : public mrmi::cConnectable
{
public:
  void sltNone() { mLog += "0"; }
  void sltOne(int a) { mLog += std::to_string(a); }
  void sltTwo(int a, int b) { mLog += std::to_string(a + b); }
  void sltThree(int a, int b, int c) { mLog += std::to_string(a + b + c); }
  virtual void sltVirtual() { mLog += "base"; }
  std::string mLog;
};

class cDerived : public cReceiver
{
public:
  void sltVirtual() override { mLog += "derived"; }
};

/// Not at the start of its class.
class cPadding
{
public:
  virtual ~cPadding() {}
  int miPadding = 1;
};
class cSecondBase : public cPadding, public mrmi::cConnectable
{
public:
  void sltNone() { mLog += "0"; }
  std::string mLog;
};

template <typename T>
T& anyReference()
{
  static char place;
  return reinterpret_cast<T&>(place);
}

template <class Call>
std::string callRefMessage(Call const& call)
{
  return messageOf(support::caught<mstd::cBugException>([&] { call.callRef(anyReference<msa::cReferenceFrame>()); }));
}
std::string streamCallMessage(mrmi::cAbstractSlotCall const& call)
{
  return messageOf(support::caught<mstd::cBugException>(
      [&] { call.call(anyReference<msa::cAbstractDeserializer>(), anyReference<msa::cAbstractSerializer>()); }));
}
} // namespace

TEST(cDirectLocalSlotCall, CallsTheMemberFunctionOfTheReceiver)
{
  cReceiver receiver;
  mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(receiver, &cReceiver::sltNone).call();
  mrmi::cDirectLocalSlotCall1<cReceiver, piVoid, int>(receiver, &cReceiver::sltOne).call(1);
  mrmi::cDirectLocalSlotCall2<cReceiver, piVoid, int, int>(receiver, &cReceiver::sltTwo).call(1, 2);
  mrmi::cDirectLocalSlotCall3<cReceiver, piVoid, int, int, int>(receiver, &cReceiver::sltThree).call(1, 2, 3);
  EXPECT_EQ("0136", receiver.mLog);
}

TEST(cDirectLocalSlotCall, TheArgumentsOfTheTemplateCanBeDeduced)
{
  cDerived receiver;
  mrmi::cDirectLocalSlotCall0 const byReference(receiver, &cReceiver::sltNone);
  mrmi::cDirectLocalSlotCall0 const byPointer(&receiver, &cReceiver::sltNone);
  EXPECT_TRUE((std::is_same<mrmi::cDirectLocalSlotCall0<cDerived, piVoid> const, decltype(byReference)>::value));
  EXPECT_TRUE((std::is_same<mrmi::cDirectLocalSlotCall0<cDerived, piVoid> const, decltype(byPointer)>::value));
  mrmi::cDirectLocalSlotCall1(receiver, &cReceiver::sltOne).call(1);
  mrmi::cDirectLocalSlotCall2(receiver, &cReceiver::sltTwo).call(1, 2);
  mrmi::cDirectLocalSlotCall3(receiver, &cReceiver::sltThree).call(1, 2, 3);
  EXPECT_EQ("136", receiver.mLog);
}

TEST(cDirectLocalSlotCall, AVirtualSlotIsThatOfTheMostDerivedClass)
{
  cDerived receiver;
  mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(receiver, &cReceiver::sltVirtual).call();
  EXPECT_EQ("derived", receiver.mLog);
}

TEST(cDirectLocalSlotCall, TheConnectableMayBeAnyBaseOfTheReceiver)
{
  cSecondBase receiver;
  mrmi::localSignal0<piVoid> signal;
  signal.connect(mrmi::cDirectLocalSlotCall0(receiver, &cSecondBase::sltNone));
  signal();
  EXPECT_EQ("0", receiver.mLog);
  signal.disconnect(receiver);
  EXPECT_FALSE(signal.isConnected());
}

TEST(cDirectLocalSlotCall, ANullReceiverIsAnAssertionFailure)
{
  support::cCaptureOut capture;
  cReceiver* const none = nullptr;
  mstd::cBugException const e = support::caught<mstd::cBugException>(
      [&] { mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>(none, &cReceiver::sltNone); });
  EXPECT_NE(std::string::npos, messageOf(e).find("(pObject != 0)!"));
}

TEST(cDirectLocalSlotCall, CallRefOfArity0HasATextOfItsOwn)
{
  cReceiver receiver;
  EXPECT_EQ("Indirect slots cannot be called by reference!",
            callRefMessage(mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::sltNone)));
}

TEST(cDirectLocalSlotCall, CallRefOfTheOtherAritiesTellsOfTheConnection)
{
  cReceiver receiver;
  char const* const text = "Indirect connections not possible with explicit local signals!";
  EXPECT_EQ(text, callRefMessage(mrmi::cDirectLocalSlotCall1(receiver, &cReceiver::sltOne)));
  EXPECT_EQ(text, callRefMessage(mrmi::cDirectLocalSlotCall2(receiver, &cReceiver::sltTwo)));
  EXPECT_EQ(text, callRefMessage(mrmi::cDirectLocalSlotCall3(receiver, &cReceiver::sltThree)));
}

TEST(cDirectLocalSlotCall, ACallThroughStreamsIsRefused)
{
  cReceiver receiver;
  char const* const text = "Slots connected to an explicit local signal cannot be called indirectly!";
  EXPECT_EQ(text, streamCallMessage(mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::sltNone)));
  EXPECT_EQ(text, streamCallMessage(mrmi::cDirectLocalSlotCall1(receiver, &cReceiver::sltOne)));
  EXPECT_EQ(text, streamCallMessage(mrmi::cDirectLocalSlotCall2(receiver, &cReceiver::sltTwo)));
  EXPECT_EQ(text, streamCallMessage(mrmi::cDirectLocalSlotCall3(receiver, &cReceiver::sltThree)));
  EXPECT_EQ("", receiver.mLog);
}

TEST(cDirectLocalSlotCall, AConnectedInstanceIsACallOfTheSameSlot)
{
  cReceiver receiver;
  mrmi::localSignal0<piVoid> signal;
  std::unique_ptr<mrmi::cAbstractSlotCall0<piVoid>> const call(
      mrmi::cDirectLocalSlotCall0(receiver, &cReceiver::sltNone).createConnectedInstance(signal));
  call->call();
  EXPECT_EQ("0", receiver.mLog);
  EXPECT_NE(nullptr, (dynamic_cast<mrmi::cDirectLocalSlotCall0<cReceiver, piVoid>*>(call.get())));
  EXPECT_FALSE(signal.isConnected());
}
