#include "rmi/tPublishedSlot.h"

#include "rmi/cCallParameterMissmatchException.h"
#include "rmi/cConnectable.h"
#include "rmi/cPublicSlot.h"
#include "rmi/localSignal1.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cBugException.h"
#include "std/cOutOfBoundsException.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/expectFailure.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

namespace
{

using support::caught;
using support::messageOf;
using support::toString;

struct cPoint
{
  int miX = 0;
  int miY = 0;
};

msa::cAbstractSerializer& operator>>(cPoint const& point, msa::cAbstractSerializer& serializer)
{
  point.miX >> serializer;
  return point.miY >> serializer;
}

msa::cAbstractDeserializer& operator<<(cPoint& point, msa::cAbstractDeserializer& deserializer)
{
  point.miX << deserializer;
  return point.miY << deserializer;
}

class cDevice : public mrmi::cConnectable
{
public:
  cDevice()
  {
    mrmi::publishSlot(*this, "reset", &cDevice::reset, "", "forgets the value");
    mrmi::publishSlot(*this, "value", &cDevice::value);
    mrmi::publishSlot(*this, "setValue", &cDevice::setValue, "value");
    mrmi::publishSlot(*this, "scale", &cDevice::scale, "factor, value", "multiplies the value");
    mrmi::publishSlot(*this, "join", &cDevice::join, "first,second, third");
    mrmi::publishSlot(*this, "swap", &cDevice::swap);
    mrmi::publishSlot(*this, "mirror", &cDevice::mirror);
    mrmi::publishSlot(*this, "fail", &cDevice::fail);
  }

  void reset() { miValue = 0; }
  int value() const { return miValue; }
  void setValue(int iValue) { miValue = iValue; }
  bool scale(int iFactor, int& iValue) const
  {
    iValue *= iFactor;
    return iFactor != 0;
  }
  mstd::cAsciiString const& join(mstd::cAsciiString const& sFirst, mstd::cAsciiString sSecond, bool bTwice) noexcept
  {
    mpFirst = &sFirst;
    msJoined = sFirst;
    msJoined.append(sSecond.c_str());
    sSecond.append("changed");
    if (bTwice)
    {
      msJoined.append(sSecond.c_str());
    }
    return msJoined;
  }
  void swap(int& iFirst, double dBetween, int& iSecond)
  {
    int const iFormer = iFirst;
    iFirst = iSecond;
    iSecond = iFormer + static_cast<int>(dBetween);
  }
  cPoint mirror(cPoint const& point) const
  {
    cPoint mirrored;
    mirrored.miX = point.miY;
    mirrored.miY = point.miX;
    return mirrored;
  }
  int fail(int& iValue)
  {
    iValue = 99;
    throw mstd::cRuntimeException(mucs::cLIMessage("the slot's own failure"), nullptr, 0);
  }

  int miValue = 7;
  mstd::cAsciiString const* mpFirst = nullptr;
  mstd::cAsciiString msJoined;
};

/// Calls a slot of the device the way another process does: by streams made from the frame, and read back into it.
void callRemotely(cDevice const& device, char const* pName, msa::cReferenceFrame& frame)
{
  msa::cSerializeBinary arguments;
  frame.store(arguments, false, true);
  msa::cDeserializeBinary received((mstd::tConstArrayRef<char>(arguments.ownData())));
  msa::cSerializeBinary results;
  device.invokeIndirectRemoteSlot(pName, received, results);
  EXPECT_TRUE(received.eoc());
  msa::cDeserializeBinary answer((mstd::tConstArrayRef<char>(results.ownData())));
  frame.load(answer, true, false);
  EXPECT_TRUE(answer.eoc());
}

void callHere(cDevice const& device, char const* pName, msa::cReferenceFrame& frame)
{
  device.invokeIndirectSlot(pName, frame);
}

struct cWay
{
  char const* mpName;
  void (*mCall)(cDevice const&, char const*, msa::cReferenceFrame&);
};

class tPublishedSlot : public testing::TestWithParam<cWay>
{
public:
  void call(char const* pName, msa::cReferenceFrame& frame) { GetParam().mCall(mDevice, pName, frame); }

  cDevice mDevice;
};

INSTANTIATE_TEST_SUITE_P(Ways, tPublishedSlot,
                         testing::Values(cWay{"ByFrame", callHere}, cWay{"ByStream", callRemotely}),
                         [](testing::TestParamInfo<cWay> const& way) { return std::string(way.param.mpName); });

/// Chain of an exception: class and message of each.
std::vector<std::string> chainOf(mstd::cAbstractException const& e)
{
  std::vector<std::string> chain;
  for (mstd::cAbstractException const* p = &e; p != nullptr; p = p->history())
  {
    chain.push_back(toString(p->typeName()) + ": " + messageOf(*p));
  }
  return chain;
}

TEST_P(tPublishedSlot, WithoutArgumentsAndResult)
{
  piVoid nothing;
  msa::cReferenceFrame frame;
  frame.addRef(nothing, true, false);
  call("reset", frame);
  EXPECT_EQ(mDevice.miValue, 0);
}

TEST_P(tPublishedSlot, ConstMemberFunctionGivesItsResult)
{
  int iResult = 0;
  msa::cReferenceFrame frame;
  frame.addRef(iResult, true, false);
  call("value", frame);
  EXPECT_EQ(iResult, 7);
}

TEST_P(tPublishedSlot, WithOneArgument)
{
  int iValue = 12;
  piVoid nothing;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(nothing, true, false);
  call("setValue", frame);
  EXPECT_EQ(mDevice.miValue, 12);
  EXPECT_EQ(iValue, 12);
}

TEST_P(tPublishedSlot, AltersTheCallersVariableAndGivesAResult)
{
  int iFactor = 3;
  int iValue = 5;
  bool bResult = false;
  msa::cReferenceFrame frame;
  frame.addRef(iFactor, false, true).addRef(iValue, true, true).addRef(bResult, true, false);
  call("scale", frame);
  EXPECT_EQ(iFactor, 3);
  EXPECT_EQ(iValue, 15);
  EXPECT_TRUE(bResult);
  call("scale", frame);
  EXPECT_EQ(iValue, 45);
}

TEST_P(tPublishedSlot, ThreeArgumentsByReferenceToConstAndByValue)
{
  mstd::cAsciiString sFirst("ab");
  mstd::cAsciiString sSecond("cd");
  bool bTwice = true;
  mstd::cAsciiString sResult("old");
  msa::cReferenceFrame frame;
  frame.addRef(sFirst, false, true).addRef(sSecond, false, true).addRef(bTwice, false, true);
  frame.addRef(sResult, true, false);
  call("join", frame);
  EXPECT_EQ(toString(sResult), "abcdcdchanged");
  EXPECT_EQ(toString(sFirst), "ab");
  EXPECT_EQ(toString(sSecond), "cd"); // the slot had a copy
}

TEST_P(tPublishedSlot, AlterableArgumentsComeBackInOrder)
{
  int iFirst = 1;
  double dBetween = 10.0;
  int iSecond = 2;
  piVoid nothing;
  msa::cReferenceFrame frame;
  frame.addRef(iFirst, true, true).addRef(dBetween, false, true).addRef(iSecond, true, true);
  frame.addRef(nothing, true, false);
  call("swap", frame);
  EXPECT_EQ(iFirst, 2);
  EXPECT_EQ(iSecond, 11);
  EXPECT_EQ(dBetween, 10.0);
}

TEST_P(tPublishedSlot, TypesOfTheApplicationTravel)
{
  cPoint point;
  point.miX = 1;
  point.miY = 2;
  cPoint result;
  msa::cReferenceFrame frame;
  frame.addRef(point, false, true).addRef(result, true, false);
  call("mirror", frame);
  EXPECT_EQ(result.miX, 2);
  EXPECT_EQ(result.miY, 1);
}

TEST_P(tPublishedSlot, FailureOfTheSlotGoesThroughUnchanged)
{
  int iValue = 1;
  int iResult = 5;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, true, true).addRef(iResult, true, false);
  auto const e = caught<mstd::cRuntimeException>([&] { call("fail", frame); });
  EXPECT_EQ(chainOf(e), std::vector<std::string>{"cRuntimeException: the slot's own failure"});
  EXPECT_EQ(iResult, 5);
}

TEST(tPublishedSlotCall, ArgumentsByReferenceAreTheCallersVariables)
{
  cDevice device;
  mstd::cAsciiString sFirst("ab");
  mstd::cAsciiString sSecond;
  bool bTwice = false;
  mstd::cAsciiString sResult;
  msa::cReferenceFrame frame;
  frame.addRef(sFirst, false, true).addRef(sSecond, false, true).addRef(bTwice, false, true);
  frame.addRef(sResult, true, false);
  device.invokeIndirectSlot("join", frame);
  EXPECT_EQ(device.mpFirst, &sFirst);
}

TEST(tPublishedSlotCall, ResultsAreTheAlterableArgumentsAndThenTheReturnValue)
{
  cDevice device;
  msa::cSerializeBinary arguments;
  3 >> arguments;
  5 >> arguments;
  msa::cDeserializeBinary received((mstd::tConstArrayRef<char>(arguments.ownData())));
  msa::cSerializeBinary results;
  device.invokeIndirectRemoteSlot("scale", received, results);
  msa::cDeserializeBinary answer((mstd::tConstArrayRef<char>(results.ownData())));
  int iValue = 0;
  bool bResult = false;
  iValue << answer;
  bResult << answer;
  EXPECT_EQ(iValue, 15);
  EXPECT_TRUE(bResult);
  EXPECT_TRUE(answer.eoc());
}

TEST(tPublishedSlotCall, MissmatchInTheFrameTellsDefinitionAndCause)
{
  cDevice device;
  bool bFactor = true;
  int iValue = 5;
  bool bResult = false;
  msa::cReferenceFrame frame;
  frame.addRef(bFactor, false, true).addRef(iValue, true, true).addRef(bResult, true, false);
  auto const e = caught<mrmi::cCallParameterMissmatchException>([&] { device.invokeIndirectSlot("scale", frame); });
  EXPECT_EQ(toString(e.slotName()), "scale");
  std::vector<std::string> const chain = chainOf(e);
  ASSERT_EQ(chain.size(), 3u);
  EXPECT_EQ(chain[0].find("cCallParameterMissmatchException: "), 0u) << chain[0];
  EXPECT_EQ(chain[1], "cRuntimeException: Definition: \"piBool scale(piInt32, piInt32)\"");
  mstd::cTypeMissmatchException const* const cause =
      dynamic_cast<mstd::cTypeMissmatchException const*>(e.history()->history());
  ASSERT_NE(cause, nullptr);
  EXPECT_EQ(toString(cause->typeName()), "cTypeMissmatchException");
  EXPECT_NE(chain[2].find("piBool"), std::string::npos) << chain[2];
  EXPECT_NE(chain[2].find("piInt32"), std::string::npos) << chain[2];
  EXPECT_EQ(iValue, 5);
}

TEST(tPublishedSlotCall, MissmatchInALaterArgumentCallsNothing)
{
  cDevice device;
  mstd::cAsciiString sFirst;
  mstd::cAsciiString sSecond;
  int iTwice = 0;
  mstd::cAsciiString sResult;
  msa::cReferenceFrame frame;
  frame.addRef(sFirst, false, true).addRef(sSecond, false, true).addRef(iTwice, false, true);
  frame.addRef(sResult, true, false);
  auto const e = caught<mrmi::cCallParameterMissmatchException>([&] { device.invokeIndirectSlot("join", frame); });
  EXPECT_EQ(chainOf(e)[1], "cRuntimeException: Definition: \"cAsciiString join(cAsciiString, cAsciiString, piBool)\"");
  EXPECT_EQ(device.mpFirst, nullptr);
}

TEST(tPublishedSlotCall, MissmatchInTheStreamTellsDefinitionAndCauseAndWritesNothing)
{
  cDevice device;
  for (bool isShort : {false, true})
  {
    msa::cSerializeBinary arguments;
    3 >> arguments;
    if (!isShort)
    {
      true >> arguments;
    }
    msa::cDeserializeBinary received((mstd::tConstArrayRef<char>(arguments.ownData())));
    msa::cSerializeBinary results;
    auto const e = caught<mrmi::cCallParameterMissmatchException>(
        [&] { device.invokeIndirectRemoteSlot("scale", received, results); });
    std::vector<std::string> const chain = chainOf(e);
    ASSERT_EQ(chain.size(), 3u);
    EXPECT_EQ(chain[1], "cRuntimeException: Definition: \"piBool scale(piInt32, piInt32)\"");
    EXPECT_EQ(chain[2].find(isShort ? "cRuntimeException: " : "cTypeMissmatchException: "), 0u) << chain[2];
    EXPECT_EQ(results.ownData().length(), 0u);
  }
}

TEST(tPublishedSlotCall, CallRefChecksTheResultItself)
{
  cDevice device;
  int iValue = 1;
  int iResult = 0;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(iResult, true, false);
  auto const* const pCall = dynamic_cast<mrmi::cAbstractSlotCall1<piVoid, int> const*>(device.tryFindSlot("setValue"));
  ASSERT_NE(pCall, nullptr);
  EXPECT_EQ(chainOf(caught<mrmi::cCallParameterMissmatchException>([&] { pCall->callRef(frame); })).size(), 3u);
  EXPECT_EQ(device.miValue, 7);
}

TEST(tPublishedSlotCall, FrameWithoutARightReturnValueIsABug)
{
  char const* const Missing = "Missing return value on reference frame while indirect slot call!";
  cDevice device;
  int iFactor = 3;
  int iValue = 5;
  bool bResult = false;
  piVoid nothing;

  msa::cReferenceFrame empty;
  msa::cReferenceFrame tooShort;
  tooShort.addRef(iFactor, false, true).addRef(bResult, true, false);
  msa::cReferenceFrame noResult;
  noResult.addRef(iFactor, false, true).addRef(iValue, true, true);
  msa::cReferenceFrame tooLong;
  tooLong.addRef(iFactor, false, true).addRef(iValue, true, true).addRef(bResult, false, true);
  tooLong.addRef(bResult, true, false);
  for (msa::cReferenceFrame* pFrame : {&empty, &tooShort, &noResult, &tooLong})
  {
    auto const e = caught<mstd::cBugException>([&] { device.invokeIndirectSlot("scale", *pFrame); });
    EXPECT_EQ(messageOf(e), Missing);
    ASSERT_NE(e.history(), nullptr);
    EXPECT_EQ(toString(e.history()->typeName()), "cOutOfBoundsException");
  }
  msa::cReferenceFrame wrong;
  wrong.addRef(iFactor, false, true).addRef(iValue, true, true).addRef(nothing, true, false);
  auto const e = caught<mstd::cBugException>([&] { device.invokeIndirectSlot("scale", wrong); });
  EXPECT_EQ(messageOf(e), Missing);
  ASSERT_NE(e.history(), nullptr);
  EXPECT_EQ(toString(e.history()->typeName()), "cTypeMissmatchException");
  EXPECT_EQ(iValue, 5);
}

TEST(tPublishedSlotCall, WrongFrameOfASlotWithoutArgumentsIsTheFramesOwnFailure)
{
  cDevice device;
  int iValue = 3;
  piVoid nothing;
  msa::cReferenceFrame frame;
  EXPECT_EQ(caught<mstd::cOutOfBoundsException>([&] { device.invokeIndirectSlot("reset", frame); }).history(), nullptr);
  frame.addRef(iValue, false, true);
  EXPECT_EQ(caught<mstd::cTypeMissmatchException>([&] { device.invokeIndirectSlot("reset", frame); }).history(),
            nullptr);
  msa::cReferenceFrame tooLong;
  tooLong.addRef(nothing, true, false).addRef(iValue, false, true);
  EXPECT_EQ(caught<mstd::cOutOfBoundsException>([&] { device.invokeIndirectSlot("reset", tooLong); }).history(),
            nullptr);
  EXPECT_EQ(device.miValue, 7);
}

TEST(tPublishedSlotCall, ReadingPositionBeforeTheCallDoesNotMatter)
{
  cDevice device;
  int iValue = 4;
  piVoid nothing;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, false, true).addRef(nothing, true, false);
  frame.skipNext();
  device.invokeIndirectSlot("setValue", frame);
  EXPECT_EQ(device.miValue, 4);
}

TEST(tPublishedSlotCall, IsATemplateForSignals)
{
  cDevice device;
  mrmi::localSignal1<piVoid, int> signal;
  signal.connect(mrmi::tPublishedSlot<cDevice, void (cDevice::*)(int), void, int>(device, &cDevice::setValue));
  signal(33);
  EXPECT_EQ(device.miValue, 33);
}

TEST(publishSlot, DescribesNamesTypesAndParameters)
{
  cDevice device;
  mrmi::cPublicSlot const& scale = device.findPublicSlot("scale");
  EXPECT_EQ(toString(scale.returnTypeName()), "piBool");
  EXPECT_EQ(toString(scale.paramTypeNames()), "piInt32, piInt32");
  EXPECT_EQ(toString(scale.description()), "multiplies the value");
  ASSERT_EQ(scale.parameters().length(), 2u);
  EXPECT_EQ(toString(scale.parameters().at(0).typeName()), "piInt32");
  EXPECT_EQ(toString(scale.parameters().at(0).description()), "factor");
  EXPECT_FALSE(scale.parameters().at(0).isAlterable());
  EXPECT_FALSE(scale.parameters().at(0).isVoid());
  EXPECT_EQ(toString(scale.parameters().at(1).description()), "value");
  EXPECT_TRUE(scale.parameters().at(1).isAlterable());
  EXPECT_EQ(toString(scale.returnValue().typeName()), "piBool");
  EXPECT_TRUE(scale.returnValue().isAlterable());
  EXPECT_FALSE(scale.returnValue().isVoid());
  EXPECT_EQ(scale.slot()->publicSlot(), &scale);

  mrmi::cPublicSlot const& join = device.findPublicSlot("join");
  EXPECT_EQ(toString(join.returnTypeName()), "cAsciiString");
  EXPECT_EQ(toString(join.paramTypeNames()), "cAsciiString, cAsciiString, piBool");
  EXPECT_EQ(toString(join.parameters().at(2).description()), "third");
  EXPECT_FALSE(join.parameters().at(0).isAlterable()); // a reference to const is only read
  EXPECT_EQ(toString(join.description()), "");
}

TEST(publishSlot, DescribesASlotWithoutArgumentsAndResult)
{
  cDevice device;
  mrmi::cPublicSlot const& reset = device.findPublicSlot("reset");
  EXPECT_EQ(toString(reset.returnTypeName()), "piVoid");
  EXPECT_EQ(toString(reset.paramTypeNames()), "");
  EXPECT_TRUE(reset.parameters().empty());
  EXPECT_EQ(toString(reset.returnValue().typeName()), "piVoid");
  EXPECT_FALSE(reset.returnValue().isAlterable());
  EXPECT_TRUE(reset.returnValue().isVoid());
  EXPECT_EQ(toString(device.findPublicSlot("setValue").parameters().at(0).description()), "value");
  EXPECT_EQ(toString(device.findPublicSlot("swap").parameters().at(0).description()), "");
}

TEST(publishSlot, AnotherNumberOfNamesIsAnAssertion)
{
  cDevice device;
  unsigned int const before = device.codRSlots().length();
  for (char const* pNames : {"one", "one, two, three"})
  {
    support::expectAssertion([&] { mrmi::publishSlot(device, "again", &cDevice::scale, pNames); },
                             "parameterNames.empty() || countNames(parameterNames) == parameters",
                             "rmi/tPublishedSlot");
  }
  support::expectAssertion([&] { mrmi::publishSlot(device, "again", &cDevice::reset, "one"); },
                           "parameterNames.empty() || countNames(parameterNames) == parameters", "rmi/tPublishedSlot");
  EXPECT_EQ(device.codRSlots().length(), before);
}

TEST(publishSlot, PublishesNothingWhenMemoryRunsOut)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "the sanitizer hides the allocations";
  }
  cDevice device;
  unsigned int const before = device.codRSlots().length();
  mstd::cAsciiString const sName("again");
  mstd::cAsciiString const sNames("factor, value");
  unsigned int failures = 0;
  for (unsigned int nth = 1;; ++nth)
  {
    bool failed = false;
    support::cAllocationFault fault(nth);
    try
    {
      mrmi::publishSlot(device, sName, &cDevice::scale, sNames);
    }
    catch (std::bad_alloc const&)
    {
      failed = true;
    }
    bool const fired = fault.hasFired();
    fault.disarm();
    if (!fired)
    {
      break;
    }
    ++failures;
    EXPECT_TRUE(failed) << nth;
    ASSERT_EQ(device.codRSlots().length(), before) << nth;
  }
  EXPECT_GT(failures, 3u);
  EXPECT_EQ(device.codRSlots().length(), before + 1);
}

} // namespace
