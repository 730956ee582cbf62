#include "mcs/cAbstractInterfaceProvider.h"

#include "mcs/cAbstractInterface.h"
#include "mcs/cNoPublicInterfaceException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cOutOfRangeException.h"
#include "std/cRuntimeException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

using mcs::cAbstractInterface;
using mcs::cInterfaceDesc;
using support::toString;
typedef mcs::cAbstractInterfaceProvider cProvider;

namespace
{
cInterfaceDesc describe(char const* name, cInterfaceDesc::InterfaceType eType = cInterfaceDesc::Providing)
{
  return cInterfaceDesc(eType, mstd::cAsciiString(name), mstd::cAsciiString("Ann"), 1, mstd::cAsciiString());
}

class cInterface : public cAbstractInterface
{
public:
  explicit cInterface(char const* name, cInterfaceDesc::InterfaceType eType = cInterfaceDesc::Providing,
                      std::vector<std::string>* pDeaths = nullptr)
      : cAbstractInterface(describe(name, eType)), mpDeaths(pDeaths)
  {
  }
  ~cInterface() override
  {
    if (mpDeaths != nullptr)
    {
      mpDeaths->push_back(toString(desc().name()));
    }
  }
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}

private:
  std::vector<std::string>* mpDeaths;
};

mstd::tAutoPtr<cAbstractInterface> handedOver(cAbstractInterface* pInterface)
{
  return mstd::tAutoPtr<cAbstractInterface>(pInterface);
}

mstd::cAsciiString const Meter("meter");
mstd::cAsciiString const Unknown("unknown");

TEST(cAbstractInterfaceProvider, HasNoBaseAndADestructorThatIsVirtual)
{
  EXPECT_TRUE(std::has_virtual_destructor<cProvider>::value);
  EXPECT_FALSE((std::is_base_of<mrmi::cConnectable, cProvider>::value));
  EXPECT_FALSE(std::is_copy_constructible<cProvider>::value);
}

TEST(cAbstractInterfaceProvider, FindsNothingIfItIsEmpty)
{
  cProvider provider;
  cProvider const& constant = provider;
  cInterface const stranger("meter");
  EXPECT_EQ(provider.numInterfaces(), 0u);
  EXPECT_EQ(provider.tryFindInterface(Meter), nullptr);
  EXPECT_EQ(constant.tryFindInterface(Meter), nullptr);
  EXPECT_EQ(provider.hasMatchingInterface(describe("meter")), nullptr);
  EXPECT_EQ(constant.hasMatchingInterface(describe("meter")), nullptr);
  EXPECT_EQ(constant.hasInterface(stranger), nullptr);
  mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> const all = provider.interfaces();
  ASSERT_TRUE(all);
  EXPECT_TRUE(all->empty());
}

/// The message of what `action` raises, and what stands behind it.
template <class Action>
std::string failureOf(Action const& action)
{
  support::cCaptureOut const mute; // range failures come with a stack trace
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>(action);
  EXPECT_EQ(toString(e.typeName()), "cRuntimeException");
  std::string text = support::messageOf(e);
  for (mstd::cAbstractException const* cause = e.history(); cause != nullptr; cause = cause->history())
  {
    text += " <- " + toString(cause->typeName());
  }
  return text;
}

TEST(cAbstractInterfaceProvider, TellsByIndexWhatTheFailedCheckWas)
{
  for (unsigned int iLength : {0u, 2u})
  {
    cProvider provider;
    for (unsigned int i = 0; i < iLength; ++i)
    {
      provider.addInterface(handedOver(new cInterface("meter")));
    }
    for (unsigned int iIndex : {iLength, iLength + 1, 4294967295u})
    {
      std::string const byConst = failureOf([&] { provider.interface(iIndex); });
      EXPECT_EQ(byConst.find("No such interface (\"given by index\")! <- cOutOf"), 0u) << byConst;
      EXPECT_EQ(failureOf([&] { provider.getInterface(iIndex); }),
                "No such interface (\"given by index\")! <- cOutOfRangeException");
    }
  }
}

TEST(cAbstractInterfaceProvider, NamesTheRangeOfGetInterface)
{
  cProvider provider;
  provider.addInterface(handedOver(new cInterface("a")));
  provider.addInterface(handedOver(new cInterface("b")));
  support::cCaptureOut const mute;
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([&] { provider.getInterface(7); });
  mstd::cOutOfRangeException const* const cause = dynamic_cast<mstd::cOutOfRangeException const*>(e.history());
  ASSERT_NE(cause, nullptr);
  EXPECT_EQ(toString(cause->container()), "cAbstractInterfaceProvider");
  EXPECT_EQ(toString(cause->operation()), "getInterface");
  EXPECT_EQ(cause->outOfRangeType(), cSTDExceptions::IndexOutOfRange);
  EXPECT_EQ(cause->errornousValue(), 7);
  EXPECT_EQ(cause->minValue(), 0);
  EXPECT_EQ(cause->maxValue(), 1);
  EXPECT_EQ(cause->history(), nullptr);
}

TEST(cAbstractInterfaceProvider, GivesItsInterfacesInTheOrderOfRegistration)
{
  cInterface borrowed("borrowed");
  cProvider provider;
  cInterface* const owned = new cInterface("owned");
  EXPECT_EQ(&provider.addInterface(borrowed), &borrowed);
  EXPECT_EQ(&provider.addInterface(handedOver(owned)), owned);
  EXPECT_EQ(&provider.addInterface(borrowed), &borrowed) << "nobody looks for duplicates";

  EXPECT_EQ(provider.numInterfaces(), 3u);
  cAbstractInterface* const expected[] = {&borrowed, owned, &borrowed};
  for (unsigned int i = 0; i < 3; ++i)
  {
    EXPECT_EQ(&provider.interface(i), expected[i]);
    EXPECT_EQ(&provider.getInterface(i), expected[i]);
  }
  unsigned int i = 0;
  mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> const all = provider.interfaces();
  for (cAbstractInterface* interface : *all)
  {
    ASSERT_LT(i, 3u);
    EXPECT_EQ(interface, expected[i++]);
  }
  EXPECT_EQ(i, 3u);
}

TEST(cAbstractInterfaceProvider, GivesAListThatOwnsNothing)
{
  std::vector<std::string> deaths;
  cProvider provider;
  provider.addInterface(handedOver(new cInterface("a", cInterfaceDesc::Providing, &deaths)));
  {
    mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> const first = provider.interfaces();
    mstd::tAutoPtr<mstd::tPtrList<cAbstractInterface>> const second = provider.interfaces();
    EXPECT_NE(first.get(), second.get());
    first->clear();
  }
  EXPECT_TRUE(deaths.empty());
  EXPECT_EQ(provider.numInterfaces(), 1u);
}

TEST(cAbstractInterfaceProvider, FindsTheFirstOfAName)
{
  cInterface other("other");
  cInterface first("meter");
  cInterface second("meter");
  cProvider provider;
  cProvider const& constant = provider;
  provider.addInterface(other);
  provider.addInterface(first);
  provider.addInterface(second);
  EXPECT_EQ(provider.tryFindInterface(Meter), &first);
  EXPECT_EQ(constant.tryFindInterface(Meter), &first);
  EXPECT_EQ(&provider.findInterface(Meter), &first);
  EXPECT_EQ(&constant.findInterface(Meter), &first);
  EXPECT_EQ(provider.tryFindInterface(Unknown), nullptr);
  EXPECT_EQ(failureOf([&] { provider.findInterface(Unknown); }), "No such interface (\"unknown\")!");
  EXPECT_EQ(failureOf([&] { constant.findInterface(Unknown); }), "No such interface (\"unknown\")!");
}

TEST(cAbstractInterfaceProvider, FindsTheFirstThatMatches)
{
  cInterface ownType("meter", cInterfaceDesc::Requiring);
  cInterface otherName("other");
  cInterface first("meter");
  cInterface second("meter");
  cProvider provider;
  cProvider const& constant = provider;
  for (cInterface* interface : {&ownType, &otherName, &first, &second})
  {
    provider.addInterface(*interface);
  }
  cInterfaceDesc const wanted = describe("meter", cInterfaceDesc::Requiring);
  EXPECT_EQ(provider.hasMatchingInterface(wanted), &first);
  EXPECT_EQ(constant.hasMatchingInterface(wanted), &first);
  EXPECT_EQ(&constant.getMatchingInterface(wanted), &first);
  EXPECT_EQ(constant.hasMatchingInterface(describe("meter")), &ownType);
  cInterfaceDesc const missing = describe("missing", cInterfaceDesc::Requiring);
  EXPECT_EQ(provider.hasMatchingInterface(missing), nullptr);
  EXPECT_EQ(failureOf([&] { constant.getMatchingInterface(missing); }), "No such interface (\"missing\")!");
}

TEST(cAbstractInterfaceProvider, FindsAnInterfaceByWhatItIs)
{
  cInterface first("meter");
  cInterface second("meter");
  cInterface const stranger("meter");
  cProvider provider;
  provider.addInterface(first);
  provider.addInterface(second);
  cProvider const& constant = provider;
  mrmi::cConnectable const& seen = second;
  EXPECT_EQ(constant.hasInterface(seen), &second);
  EXPECT_EQ(&constant.findInterface(seen), &second);
  EXPECT_EQ(constant.hasInterface(stranger), nullptr);
  mcs::cNoPublicInterfaceException const e =
      support::caught<mcs::cNoPublicInterfaceException>([&] { constant.findInterface(stranger); });
  EXPECT_EQ(support::messageOf(e), "No public interface!");
}

TEST(cAbstractInterfaceProvider, RemovesNothing)
{
  std::vector<std::string> deaths;
  cInterface borrowed("borrowed", cInterfaceDesc::Providing, &deaths);
  cInterface const stranger("stranger");
  cProvider provider;
  provider.addInterface(borrowed);
  cAbstractInterface& owned =
      provider.addInterface(handedOver(new cInterface("owned", cInterfaceDesc::Providing, &deaths)));
  provider.removeInterface(borrowed);
  provider.removeInterface(owned);
  provider.removeInterface(const_cast<cInterface&>(stranger));
  EXPECT_EQ(provider.numInterfaces(), 2u);
  EXPECT_EQ(&provider.findInterface(mstd::cAsciiString("borrowed")), &borrowed);
  EXPECT_EQ(&provider.findInterface(mstd::cAsciiString("owned")), &owned);
  EXPECT_TRUE(deaths.empty());
}

TEST(cAbstractInterfaceProvider, DestroysWhatItOwnsInTheOrderOfRegistration)
{
  std::vector<std::string> deaths;
  cInterface borrowed("borrowed", cInterfaceDesc::Providing, &deaths);
  {
    cProvider provider;
    provider.addInterface(handedOver(new cInterface("a", cInterfaceDesc::Providing, &deaths)));
    provider.addInterface(borrowed);
    provider.addInterface(handedOver(new cInterface("b", cInterfaceDesc::Providing, &deaths)));
    provider.addInterface(handedOver(new cInterface("c", cInterfaceDesc::Providing, &deaths)));
  }
  EXPECT_EQ(deaths, (std::vector<std::string>{"a", "b", "c"}));
}

TEST(cAbstractInterfaceProvider, RefusesNoInterface)
{
  cProvider provider;
  support::expectAssertion([&] { provider.addInterface(mstd::tAutoPtr<cAbstractInterface>()); }, "mpPointer != 0",
                           "std/tAutoPtr");
  EXPECT_EQ(provider.numInterfaces(), 0u);
}

TEST(cAbstractInterfaceProvider, StaysIfThereIsNoMemoryForAnEntry)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  unsigned int failures = 0;
  for (unsigned int n = 1;; ++n)
  {
    std::vector<std::string> deaths;
    deaths.reserve(4);
    cInterface borrowed("borrowed");
    cProvider provider;
    mstd::tAutoPtr<cAbstractInterface> owned(new cInterface("owned", cInterfaceDesc::Providing, &deaths));
    support::cAllocationFault fault(n);
    bool hasThrown = false;
    try
    {
      provider.addInterface(borrowed);
      provider.addInterface(owned);
    }
    catch (std::bad_alloc const&)
    {
      hasThrown = true;
    }
    fault.disarm();
    EXPECT_EQ(hasThrown, fault.hasFired());
    for (unsigned int i = 0; i < provider.numInterfaces(); ++i)
    {
      EXPECT_EQ(toString(provider.interface(i).desc().name()), i == 0 ? "borrowed" : "owned");
    }
    if (!hasThrown)
    {
      EXPECT_EQ(provider.numInterfaces(), 2u);
      break;
    }
    EXPECT_LT(provider.numInterfaces(), 2u);
    EXPECT_EQ(deaths.size() + (owned ? 1 : 0), 1u) << "it is destroyed once, or still its owner's";
    ++failures;
  }
  EXPECT_GE(failures, 2u);
}
} // namespace
