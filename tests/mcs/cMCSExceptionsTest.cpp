#include "mcs/cMCSExceptions.h"

#include "mcs/cComponentLocation.h"
#include "mcs/cNoPublicInterfaceException.h"
#include "mcs/cNoSuchModuleException.h"
#include "mcs/cRMIException.h"
#include "mcs/cUnmatchedInterfaceException.h"
#include "rmi/cConnectable.h"
#include "std/cOutOfBoundsException.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

using mcs::cComponentAddr;
using mcs::cComponentLocation;
using mcs::cMCSExceptions;
using support::messageOf;
using support::toString;

namespace
{
cComponentLocation const Bench(cComponentAddr(1, 5), mstd::cAsciiString("bench"), mstd::cAsciiString("left"), 812);

std::string keyOf(mstd::cAbstractException const& e)
{
  return (e.liMessage()->isTranslatable() ? "$MTR$" : "") + toString(e.liMessage()->key());
}

/// Type, message and history of what `action` raises as exactly an `E`.
template <class E, class Action>
std::string raisedBy(Action const& action)
{
  E const e = support::caught<E>(action);
  EXPECT_EQ(typeid(E), typeid(e));
  std::string text = toString(e.typeName()) + ": " + messageOf(e);
  if (e.history() != nullptr)
  {
    text += " <- " + messageOf(*e.history());
  }
  EXPECT_STREQ(e.sourceFileName(), "");
  EXPECT_EQ(e.sourceFileLine(), 0u);
  return text;
}

TEST(cMCSExceptions, TellsWhatIsNoCoreExtension)
{
  EXPECT_EQ(raisedBy<mstd::cRuntimeException>([] { cMCSExceptions::throwNoCoreExtension(mucs::cString("meter")); }),
            "cRuntimeException: Module (\"meter\") does not provide core extension functionality.");
}

TEST(cMCSExceptions, TellsTheMissingInterfaceAndItsCause)
{
  mstd::cAsciiString const name("meter");
  EXPECT_EQ(raisedBy<mstd::cRuntimeException>([&] { cMCSExceptions::throwNoSuchInterface(name, nullptr); }),
            "cRuntimeException: No such interface (\"meter\")!");
  std::unique_ptr<mstd::cOutOfBoundsException> cause(new mstd::cOutOfBoundsException("container", "operation"));
  mstd::cRuntimeException const e =
      support::caught<mstd::cRuntimeException>([&] { cMCSExceptions::throwNoSuchInterface(name, cause.get()); });
  cause.reset();
  EXPECT_EQ(messageOf(e), "No such interface (\"meter\")!");
  ASSERT_NE(e.history(), nullptr) << "a copy of it";
  EXPECT_EQ(toString(e.history()->typeName()), "cOutOfBoundsException");
}

TEST(cMCSExceptions, TellsTheIdThatIsTaken)
{
  EXPECT_EQ(raisedBy<mstd::cRuntimeException>([] { cMCSExceptions::throwComponentIdNotUnique(4294967295u); }),
            "cRuntimeException: Component id (4294967295) not unique!");
}

TEST(cMCSExceptions, TellsTheInterfaceThatCannotBeRead)
{
  EXPECT_EQ(
      raisedBy<mstd::cRuntimeException>([] { cMCSExceptions::throwInterfaceLoadError(mstd::cAsciiString("meter")); }),
      "cRuntimeException: Unable to deserialize interface description of \"meter\"!");
}

TEST(cMCSExceptions, TellsTheModuleThatIsMissing)
{
  EXPECT_EQ(raisedBy<mcs::cNoSuchModuleException>([] { cMCSExceptions::throwNoSuchModule(cComponentAddr(1, 5)); }),
            "cNoSuchModuleException: Module (1:5) not found!");
  EXPECT_EQ(raisedBy<mcs::cNoSuchModuleException>([] { cMCSExceptions::throwNoSuchModule(Bench); }),
            "cNoSuchModuleException: Module (1:5-812@bench:left) not found!");
  EXPECT_EQ(
      raisedBy<mcs::cNoSuchModuleException>([] { cMCSExceptions::throwNoSuchModule(mstd::cAsciiString("meter")); }),
      "cNoSuchModuleException: Module (meter) not found!");
}

TEST(cMCSExceptions, TellsOfAnInterfaceThatIsNotPublic)
{
  mrmi::cConnectable const connectable;
  EXPECT_EQ(raisedBy<mcs::cNoPublicInterfaceException>([&] { cMCSExceptions::throwNoPublicInterface(connectable); }),
            "cNoPublicInterfaceException: No public interface!");
}

TEST(cMCSExceptions, TellsOfAnUnmatchedInterface)
{
  EXPECT_EQ(raisedBy<mcs::cUnmatchedInterfaceException>([] { cMCSExceptions::throwUnmatchedInterface(); }),
            "cUnmatchedInterfaceException: Unmatched interface!");
}

TEST(cMCSExceptions, TellsOfALibraryInTheWordsGiven)
{
  mucs::cLIMessage problem;
  problem << "$MTR$The file \"%file%\" is too old!"
          << "meter";
  mcs::cModuleLoadException const e = support::caught<mcs::cModuleLoadException>([&] {
    cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::InvalidModule, mucs::cString("libmeter.so"), problem);
  });
  EXPECT_EQ(messageOf(e), "The file \"meter\" is too old!");
  EXPECT_EQ(toString(e.fileName()), "libmeter.so");
  EXPECT_EQ(e.kindOfProblem(), mcs::cModuleLoadException::InvalidModule);
}

TEST(cMCSExceptions, HaveKeysThatTranslatorsFind)
{
  EXPECT_EQ(keyOf(mcs::cNoPublicInterfaceException()), "$MTR$No public interface!");
  EXPECT_EQ(keyOf(mcs::cUnmatchedInterfaceException()), "$MTR$Unmatched interface!");
  EXPECT_EQ(keyOf(mcs::cNoSuchModuleException(cComponentAddr())), "$MTR$Module (%addr%) not found!");
  EXPECT_EQ(
      keyOf(support::caught<mstd::cRuntimeException>([] { cMCSExceptions::throwNoCoreExtension(mucs::cString("x")); })),
      "$MTR$Module (\"%name%\") does not provide core extension functionality.");
  EXPECT_EQ(keyOf(support::caught<mstd::cRuntimeException>(
                [] { cMCSExceptions::throwNoSuchInterface(mstd::cAsciiString("x")); })),
            "$MTR$No such interface (\"%interface%\")!");
  EXPECT_EQ(keyOf(support::caught<mstd::cRuntimeException>([] { cMCSExceptions::throwComponentIdNotUnique(1); })),
            "$MTR$Component id (%id%) not unique!");
  EXPECT_EQ(keyOf(support::caught<mstd::cRuntimeException>(
                [] { cMCSExceptions::throwInterfaceLoadError(mstd::cAsciiString("x")); })),
            "$MTR$Unable to deserialize interface description of \"%name%\"!");
}

TEST(cMCSExceptions, StandInTheTreeUnderWhoeverIsAtFault)
{
  EXPECT_EQ(mcs::cNoPublicInterfaceException().type(), mstd::cAbstractException::Bug);
  EXPECT_EQ(mcs::cNoSuchModuleException(cComponentAddr()).type(), mstd::cAbstractException::Bug);
  EXPECT_EQ(mcs::cUnmatchedInterfaceException().type(), mstd::cAbstractException::Runtime);
  EXPECT_EQ(mcs::cRMIException(1, mcs::cRMIException::CallSlot, mstd::cAsciiString("x")).type(),
            mstd::cAbstractException::Runtime);
  EXPECT_EQ(
      mcs::cModuleLoadException(mcs::cModuleLoadException::NotLoadable, mucs::cString(), mucs::cLIMessage()).type(),
      mstd::cAbstractException::Runtime);
}

TEST(cNoSuchModuleException, KeepsTheAddressIfItWasOne)
{
  EXPECT_TRUE(mcs::cNoSuchModuleException(cComponentAddr(1, 5)).address() == cComponentAddr(1, 5));
  EXPECT_TRUE(mcs::cNoSuchModuleException(Bench).address() == cComponentAddr(1, 5));
  mcs::cNoSuchModuleException const byName(mstd::cAsciiString("1:5"));
  EXPECT_FALSE(byName.address().valid());
  cComponentAddr invalid(3, 4);
  invalid.invalidate();
  EXPECT_TRUE(mcs::cNoSuchModuleException(invalid).address() == invalid);
}

TEST(cModuleLoadException, KeepsFileProblemAndKind)
{
  EXPECT_EQ(static_cast<int>(mcs::cModuleLoadException::NotLoadable), 0);
  EXPECT_EQ(static_cast<int>(mcs::cModuleLoadException::NotAvailable), 1);
  EXPECT_EQ(static_cast<int>(mcs::cModuleLoadException::InvalidModule), 2);
  mucs::cLIMessage problem;
  problem << "$MTR$File %file% is not a plugin!"
          << "meter";
  mcs::cModuleLoadException const e(mcs::cModuleLoadException::NotAvailable, mucs::cString("libmeter.so"), problem);
  EXPECT_EQ(toString(e.typeName()), "cModuleLoadException");
  EXPECT_EQ(toString(e.problem()), "File meter is not a plugin!");
  EXPECT_EQ(keyOf(e), "$MTR$File %file% is not a plugin!");
  EXPECT_EQ(messageOf(e), "File meter is not a plugin!");
  EXPECT_EQ(e.history(), nullptr);
}

// --- the shape of all of them --------------------------------------------------------------------------------------

mucs::cLIMessage longProblem()
{
  mucs::cLIMessage problem;
  problem << "$MTR$A problem with a text that is longer than any buffer inside of a string: %what%!"
          << "this one";
  return problem;
}

/// Everything that a chain with exceptions of these classes tells.
std::string contentOf(mstd::cAbstractException const& e)
{
  std::string text = toString(e.typeName()) + "|" + messageOf(e) + "|" + e.what();
  if (auto const* module = dynamic_cast<mcs::cNoSuchModuleException const*>(&e))
  {
    text += "|" + toString(module->address().toString());
  }
  if (auto const* load = dynamic_cast<mcs::cModuleLoadException const*>(&e))
  {
    text += "|" + toString(load->fileName()) + "|" + toString(load->problem()) + "|" +
            std::to_string(load->kindOfProblem());
  }
  if (auto const* bounds = dynamic_cast<mstd::cOutOfBoundsException const*>(&e))
  {
    text += "|" + toString(bounds->container()) + "|" + toString(bounds->operation());
  }
  if (auto const* rmi = dynamic_cast<mcs::cRMIException const*>(&e))
  {
    text += "|" + toString(rmi->location().toString()) + "|" + std::to_string(rmi->interfaceIndex()) + "|" +
            std::to_string(rmi->interfaceKey()) + "|" + std::to_string(rmi->operation()) + "|" +
            toString(rmi->signalSlotName());
  }
  if (e.history() != nullptr)
  {
    text += " <- " + contentOf(*e.history());
  }
  return text;
}

mcs::cRMIException rmiFailure()
{
  return mcs::cRMIException(Bench, 3, mcs::cRMIException::ConnectSignal, mstd::cAsciiString("changed"));
}

mcs::cModuleLoadException loadFailure()
{
  return mcs::cModuleLoadException(mcs::cModuleLoadException::InvalidModule, mucs::cString("/lib/libmeter.so"),
                                   longProblem());
}

template <class E>
void expectShape(E const& example, E const& other)
{
  std::string const content = contentOf(example);
  std::string const otherContent = contentOf(other);
  ASSERT_NE(content, otherContent) << "else swapping shows nothing";
  SCOPED_TRACE(content);

  E const copy(example);
  EXPECT_EQ(contentOf(copy), content);
  std::unique_ptr<mstd::cAbstractException> const clone(example.createObject());
  mstd::cAbstractException const& cloned = *clone;
  EXPECT_EQ(typeid(cloned), typeid(E));
  EXPECT_EQ(contentOf(*clone), content);

  E target(other);
  target = example;
  EXPECT_EQ(contentOf(target), content);
  E const& self = target;
  target = self;
  EXPECT_EQ(contentOf(target), content);

  E source(other);
  target.swap(source);
  EXPECT_EQ(contentOf(target), otherContent);
  EXPECT_EQ(contentOf(source), content);
}

TEST(cMCSExceptions, AreCopiedClonedAssignedAndExchanged)
{
  expectShape(mcs::cNoSuchModuleException(Bench), mcs::cNoSuchModuleException(mstd::cAsciiString("meter")));
  expectShape(rmiFailure(), mcs::cRMIException(7, mcs::cRMIException::CallSlot, mstd::cAsciiString("read")));
  expectShape(loadFailure(),
              mcs::cModuleLoadException(mcs::cModuleLoadException::NotLoadable, mucs::cString(), mucs::cLIMessage()));
  mcs::cNoPublicInterfaceException otherWords;
  otherWords.setMsg(longProblem());
  expectShape(mcs::cNoPublicInterfaceException(), otherWords);
  mcs::cUnmatchedInterfaceException otherText;
  otherText.setMessage(longProblem());
  expectShape(mcs::cUnmatchedInterfaceException(), otherText);
}

/// Copies and assigns with every single allocation failing, and with all from some point on.
template <class E>
void expectCopyingNeverFails(E const& example, E const& other)
{
  SCOPED_TRACE(contentOf(example));
  for (bool bAllLater : {false, true})
  {
    unsigned int n = 1;
    for (bool hasFired = true; hasFired; ++n)
    {
      support::cAllocationFault fault(n, bAllLater);
      E const copy(example);
      fault.disarm();
      hasFired = fault.hasFired();
      EXPECT_EQ(copy.hasOutOfMemoryCondition(), hasFired) << n;
      EXPECT_EQ(contentOf(copy) == contentOf(example) && copy.isRemote(), !hasFired) << n;
    }
    EXPECT_GT(n, 3u);
    n = 1;
    for (bool hasFired = true; hasFired; ++n)
    {
      E target(other);
      support::cAllocationFault fault(n, bAllLater);
      target = example;
      fault.disarm();
      hasFired = fault.hasFired();
      // A location does not come along, so that there may have been no memory for one does not show.
      EXPECT_TRUE(hasFired || contentOf(target) == contentOf(example)) << n;
      EXPECT_TRUE(hasFired || !target.hasOutOfMemoryCondition()) << n;
      EXPECT_FALSE(target.isRemote());
    }
  }
}

TEST(cMCSExceptions, AreCopiedWithoutMemory)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the allocations are not seen here";
  }
  auto const whole = [](auto e) {
    e.link(mstd::cOutOfBoundsException("container", "operation"));
    e.setRemoteInfo(Bench);
    return e;
  };
  expectCopyingNeverFails(whole(mcs::cNoSuchModuleException(Bench)),
                          mcs::cNoSuchModuleException(mstd::cAsciiString("x")));
  expectCopyingNeverFails(whole(rmiFailure()),
                          mcs::cRMIException(7, mcs::cRMIException::CallSlot, mstd::cAsciiString("x")));
  expectCopyingNeverFails(whole(loadFailure()), mcs::cModuleLoadException(mcs::cModuleLoadException::NotLoadable,
                                                                          mucs::cString(), mucs::cLIMessage()));
  expectCopyingNeverFails(whole(mcs::cNoPublicInterfaceException()), mcs::cNoPublicInterfaceException());
  expectCopyingNeverFails(whole(mcs::cUnmatchedInterfaceException()), mcs::cUnmatchedInterfaceException());
}
} // namespace
