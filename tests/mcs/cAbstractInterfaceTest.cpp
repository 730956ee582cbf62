#include "mcs/cAbstractInterface.h"

#include "rmi/cAbstractRMIFactory.h"
#include "rmi/cDirectLocalSlotCall1.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/signal0.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "std/cBugException.h"
#include "std/cRuntimeException.h"
#include "support/cCaptureOut.h"
#include "support/cPublishing.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

using mcs::cInterfaceDesc;
using support::toString;

namespace
{
cInterfaceDesc described(cInterfaceDesc::InterfaceType eType, char const* name, char const* author = "Ann",
                         unsigned int iVersion = 1, char const* description = "reads figures")
{
  return cInterfaceDesc(eType, mstd::cAsciiString(name), mstd::cAsciiString(author), iVersion,
                        mstd::cAsciiString(description));
}

class cInterface : public mcs::cAbstractInterface
{
public:
  explicit cInterface(cInterfaceDesc const& d = described(cInterfaceDesc::Providing, "meter")) : cAbstractInterface(d)
  {
  }
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}

  void publishSlot(char const* name)
  {
    registerSlot(name, "piVoid", "int", "a slot",
                 mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(*this, [] {})));
  }
  void publishSignal(char const* name, unsigned int iType = 0)
  {
    registerSignal(name, "piVoid", "", iType, "a signal", mSignal);
  }

  mrmi::signal0<piVoid> mSignal;
};

/// Makes stand-ins, as many as it is allowed to.
class cFactory : public mrmi::cAbstractRMIFactory
{
public:
  mstd::tAutoPtr<mrmi::cAbstractSlotCall> createRemoteSlotCall(mrmi::cConnectable& connectable) override
  {
    refuse();
    mpConnectable = &connectable;
    mDescSeen = toString(static_cast<mcs::cAbstractInterface&>(connectable).desc().name());
    return mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(connectable, [this] { ++miCalls; }));
  }
  mrmi::cAbstractSignal* createRemoteSignal(unsigned int index) override
  {
    refuse();
    mIndexes.push_back(index);
    mSignals.emplace_back(new mrmi::signal0<piVoid>);
    return mSignals.back().get();
  }

  unsigned int miAllowed = 1000;
  unsigned int miCalls = 0;
  mrmi::cConnectable* mpConnectable = nullptr;
  std::string mDescSeen;
  std::vector<unsigned int> mIndexes;
  std::vector<std::unique_ptr<mrmi::signal0<piVoid>>> mSignals;

private:
  void refuse()
  {
    if (miAllowed-- == 0)
    {
      throw std::string("no more");
    }
  }
};

std::string stored(mcs::cAbstractInterface const& interface)
{
  msa::cSerializeBinary serializer;
  interface.store(serializer);
  return support::written(serializer);
}

void load(mcs::cAbstractInterface& interface, std::string const& bytes, cFactory& factory)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  interface.load(deserializer, factory);
  EXPECT_TRUE(deserializer.eoc());
}

/// The names of all that is public, slots before signals.
std::string publicNames(mrmi::cConnectable const& connectable)
{
  std::string names;
  if (connectable.hasPublicSlots() != nullptr)
  {
    for (mrmi::cPublicSlot const* slot : *connectable.hasPublicSlots())
    {
      names += toString(slot->name()) + "()";
    }
  }
  if (connectable.hasPublicSignals() != nullptr)
  {
    for (mrmi::cPublicSignal const* signal : *connectable.hasPublicSignals())
    {
      names += toString(signal->name()) + "!";
    }
  }
  return names;
}

TEST(cAbstractInterface, KeepsACopyOfItsDescription)
{
  std::unique_ptr<cInterfaceDesc> given(new cInterfaceDesc(described(cInterfaceDesc::Requiring, "meter")));
  cInterface const interface(*given);
  given.reset();
  EXPECT_TRUE(interface.desc() == described(cInterfaceDesc::Requiring, "meter"));
  EXPECT_EQ(toString(interface.desc().description()), "reads figures");
}

TEST(cAbstractInterface, MatchesTheOtherTypeOfTheSameName)
{
  cInterface const interface(described(cInterfaceDesc::Providing, "meter"));
  EXPECT_TRUE(interface.matches(described(cInterfaceDesc::Requiring, "meter")));
  EXPECT_TRUE(interface.matches(described(cInterfaceDesc::Requiring, "meter", "Bob", 9, "other")))
      << "author, version and description count for nothing";
  EXPECT_FALSE(interface.matches(described(cInterfaceDesc::Requiring, "Meter")));
  EXPECT_FALSE(interface.matches(described(cInterfaceDesc::Providing, "other")));

  cInterface const other(described(cInterfaceDesc::Requiring, "meter"));
  EXPECT_TRUE(other.matches(interface.desc()));
}

TEST(cAbstractInterface, NeverMatchesItsOwnType)
{
  for (cInterfaceDesc::InterfaceType eType : {cInterfaceDesc::Providing, cInterfaceDesc::Requiring})
  {
    cInterface const interface(described(eType, "meter"));
    EXPECT_FALSE(interface.matches(interface.desc()));
    EXPECT_FALSE(interface.matches(described(eType, "meter")));
  }
}

class cListener : public mrmi::cConnectable
{
public:
  void sltChanged(mcs::cAbstractInterface const& interface) { mpLast = &interface; }
  mcs::cAbstractInterface const* mpLast = nullptr;
};

TEST(cAbstractInterface, MayTellOfItsChangeToNobody)
{
  cInterface interface;
  interface.sigInterfaceChanged(interface); // raises nothing
  cListener listener;
  interface.sigInterfaceChanged.connect(mrmi::cDirectLocalSlotCall1(listener, &cListener::sltChanged));
  EXPECT_EQ(listener.mpLast, nullptr);
  interface.sigInterfaceChanged(interface);
  EXPECT_EQ(listener.mpLast, &interface);
}

TEST(cAbstractInterface, StoresTwoEmptyContextsIfNothingIsPublic)
{
  msa::cSerializeBinary expected;
  cInterface const interface;
  interface.desc() >> expected;
  for (int i = 0; i < 2; ++i)
  {
    msa::cContext context(expected.newContext(nullptr));
    context.release();
  }
  EXPECT_EQ(stored(interface), support::written(expected));
}

TEST(cAbstractInterface, StoresDescriptionSlotsAndSignalsInTheirOrder)
{
  cInterface interface;
  interface.publishSlot("read");
  interface.publishSignal("changed", 5);
  interface.publishSlot("reset");
  interface.publishSignal("gone");

  msa::cSerializeBinary expected;
  interface.desc() >> expected;
  {
    msa::cContext context(expected.newContext(nullptr));
    for (mrmi::cPublicSlot const* slot : *interface.hasPublicSlots())
    {
      *slot >> expected;
    }
    context.release();
  }
  {
    msa::cContext context(expected.newContext(nullptr));
    for (mrmi::cPublicSignal const* signal : *interface.hasPublicSignals())
    {
      *signal >> expected;
    }
    context.release();
  }
  EXPECT_EQ(publicNames(interface), "read()reset()changed!gone!");
  EXPECT_EQ(stored(interface), support::written(expected));
}

TEST(cAbstractInterface, BecomesAStandInForWhatIsOnTheStream)
{
  cInterface original(described(cInterfaceDesc::Requiring, "meter", "Ann", 3, "far"));
  original.publishSlot("read");
  original.publishSlot("reset");
  original.publishSignal("changed", 5);

  cFactory factory; // outlives the stand-in: the signals are its own
  cInterface standIn(described(cInterfaceDesc::Providing, "old", "Bob", 9, "near"));
  standIn.setIndex(17);
  standIn.publishSlot("oldSlot");
  standIn.publishSignal("oldSignal");
  load(standIn, stored(original), factory);

  EXPECT_TRUE(standIn.desc() == original.desc());
  EXPECT_EQ(toString(standIn.desc().description()), "far");
  EXPECT_EQ(publicNames(standIn), "read()reset()changed!") << "what was public before is gone";
  mrmi::cPublicSlot const& slot = standIn.findPublicSlot("reset");
  EXPECT_EQ(toString(slot.returnTypeName()), "piVoid");
  EXPECT_EQ(toString(slot.paramTypeNames()), "int");
  EXPECT_EQ(toString(slot.description()), "a slot");
  EXPECT_EQ(standIn.findPublicSignal("changed").type(), 5u);
  EXPECT_EQ(stored(standIn), stored(original));

  EXPECT_EQ(factory.mpConnectable, &standIn);
  EXPECT_EQ(factory.mDescSeen, "meter") << "the factory finds the description that was read";
  EXPECT_EQ(factory.mIndexes, std::vector<unsigned int>{17u});
  piVoid result;
  msa::cReferenceFrame frame;
  frame.addRef(result, true, false);
  standIn.invokeIndirectSlot("read", frame);
  EXPECT_EQ(factory.miCalls, 1u);
  EXPECT_EQ(&standIn.findSignal("changed"), factory.mSignals[0].get());
}

TEST(cAbstractInterface, LosesItsConnectionsWhenItIsLoaded)
{
  cInterface standIn;
  mrmi::localSignal0<piVoid> signal;
  bool called = false;
  signal.connect(support::cPokeCall(standIn, [&] { called = true; }));
  signal.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
  cFactory factory;
  load(standIn, stored(cInterface()), factory);
  signal();
  EXPECT_FALSE(called);
}

TEST(cAbstractInterface, CanBeLoadedAgain)
{
  cInterface original;
  original.publishSlot("read");
  original.publishSignal("changed");
  cFactory factory;
  cInterface standIn;
  for (int i = 0; i < 3; ++i)
  {
    load(standIn, stored(original), factory);
    EXPECT_EQ(publicNames(standIn), "read()changed!");
  }
}

TEST(cAbstractInterface, TakesWhateverContextsComeNext)
{
  // A writer may name them: their order is what counts.
  msa::cSerializeBinary serializer;
  described(cInterfaceDesc::Requiring, "named") >> serializer;
  for (char const* name : {"Slots", "Signals"})
  {
    msa::cContext context(serializer.newContext(name));
    context.release();
  }
  cFactory factory;
  cInterface standIn;
  load(standIn, support::written(serializer), factory);
  EXPECT_EQ(toString(standIn.desc().name()), "named");
  EXPECT_EQ(publicNames(standIn), "");
}

/// A stand-in that has something to lose.
class cVictim
{
public:
  cVictim() : mInterface(described(cInterfaceDesc::Providing, "old", "Bob", 9, "near"))
  {
    mInterface.publishSlot("oldSlot");
    mInterface.publishSignal("oldSignal");
  }

  void expectNothingHalf() const
  {
    EXPECT_EQ(publicNames(mInterface), "");
    EXPECT_TRUE(mInterface.desc() == described(cInterfaceDesc::Providing, "old", "Bob", 9));
    EXPECT_EQ(toString(mInterface.desc().description()), "near");
  }

  cFactory mFactory;
  cInterface mInterface;
};

TEST(cAbstractInterface, HasNothingHalfRegisteredAfterATruncatedStream)
{
  cInterface original(described(cInterfaceDesc::Requiring, "meter"));
  original.publishSlot("read");
  original.publishSlot("reset");
  original.publishSignal("changed");
  original.publishSignal("gone");
  std::string const whole = stored(original);
  support::cCaptureOut const mute;
  unsigned int accepted = 0;
  for (size_t length = 0; length < whole.size(); ++length)
  {
    SCOPED_TRACE(length);
    cVictim victim;
    try
    {
      load(victim.mInterface, whole.substr(0, length), victim.mFactory);
      // The length of a context is not checked against the data: the last one may end behind any whole record.
      std::string const names = publicNames(victim.mInterface);
      EXPECT_TRUE(names == "read()reset()" || names == "read()reset()changed!") << names;
      ++accepted;
    }
    catch (mstd::cAbstractException const&)
    {
      victim.expectNothingHalf();
    }
    load(victim.mInterface, whole, victim.mFactory);
    EXPECT_EQ(publicNames(victim.mInterface), "read()reset()changed!gone!") << "it is of use afterwards";
  }
  EXPECT_EQ(accepted, 2u);
}

TEST(cAbstractInterface, HasNothingHalfRegisteredIfTheFactoryFails)
{
  cInterface original(described(cInterfaceDesc::Requiring, "meter"));
  original.publishSlot("read");
  original.publishSlot("reset");
  original.publishSignal("changed");
  for (unsigned int allowed = 0; allowed < 3; ++allowed)
  {
    cVictim victim;
    victim.mFactory.miAllowed = allowed;
    EXPECT_THROW(load(victim.mInterface, stored(original), victim.mFactory), std::string);
    victim.expectNothingHalf();
  }
}

TEST(cAbstractInterface, KeepsItsDescriptionIfTheTypeOnTheStreamIsNone)
{
  msa::cSerializeBinary serializer;
  2u >> serializer;
  mstd::cAsciiString("forged") >> serializer;
  mstd::cAsciiString("Eve") >> serializer;
  1u >> serializer;
  mstd::cAsciiString() >> serializer;
  cVictim victim;
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>(
      [&] { load(victim.mInterface, support::written(serializer), victim.mFactory); });
  EXPECT_EQ(support::messageOf(e), "Unable to deserialize interface description of \"forged\"!");
  victim.expectNothingHalf();
}

TEST(cAbstractInterface, SurvivesEveryChangedByte)
{
  cInterface original(described(cInterfaceDesc::Requiring, "meter"));
  original.publishSlot("read");
  original.publishSignal("changed");
  std::string const whole = stored(original);
  support::cCaptureOut const mute;
  unsigned int refused = 0;
  for (size_t i = 0; i < whole.size(); ++i)
  {
    for (int change : {0x01, 0x80, 0xFF})
    {
      std::string bytes = whole;
      bytes[i] = static_cast<char>(bytes[i] ^ change);
      cVictim victim;
      mstd::tArray<char> const data = support::arrayOf(bytes);
      msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
      try
      {
        victim.mInterface.load(deserializer, victim.mFactory);
      }
      catch (mstd::cAbstractException const&)
      {
        ++refused;
        victim.expectNothingHalf();
      }
    }
  }
  EXPECT_GT(refused, 100u);
}
} // namespace
