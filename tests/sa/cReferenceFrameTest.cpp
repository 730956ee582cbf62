#include "sa/cReferenceFrame.h"

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "sa/cSerializeToTypeString.h"
#include "std/cOutOfBoundsException.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tArrayRef.h"
#include "std/tConstArrayRef.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/foreignType.h"
#include "support/rangeChecks.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>

namespace
{

struct cSeenTwice // also in support/foreignType.cpp
{
  int miValue;
};

/// A value that can't be stored and can't be loaded.
struct cStubborn
{
};

[[noreturn]] void refuse()
{
  throw mstd::cRuntimeException(mucs::cLIMessage("stubborn"), nullptr, 0);
}

msa::cAbstractSerializer& operator>>(cStubborn const&, msa::cAbstractSerializer&)
{
  refuse();
}

msa::cAbstractDeserializer& operator<<(cStubborn&, msa::cAbstractDeserializer&)
{
  refuse();
}

/// Values of a frame as text, read from its start.
std::string valuesOf(msa::cReferenceFrame& frame)
{
  std::string text;
  frame.restartReading();
  while (frame.canRead())
  {
    text += std::to_string(frame.readNext<int>()) + " ";
  }
  frame.restartReading();
  return text;
}

std::string bytesOf(msa::cSerializeBinary& stream)
{
  mstd::tArrayRef<char> const bytes = stream.data();
  std::string text;
  for (unsigned int i = 0; i < bytes.length(); ++i)
  {
    text += bytes[i];
  }
  return text;
}

std::string typesOf(msa::cReferenceFrame const& frame)
{
  msa::cSerializeToTypeString types;
  frame.store(types);
  return support::toString(types.typeString());
}

class cReferenceFrameOf : public ::testing::Test
{
protected:
  int mInts[8] = {10, 11, 12, 13, 14, 15, 16, 17};
  piVoid mVoid;

  void fill(msa::cReferenceFrame& frame, unsigned int iCount, unsigned int iFirst = 0)
  {
    for (unsigned int i = 0; i < iCount; ++i)
    {
      frame.addRef(mInts[iFirst + i], true, true);
    }
  }
};

} // namespace

MORTISE_TYPE_NAME(cStubborn, "cStubborn")

typedef cReferenceFrameOf cReferenceFrame;

TEST_F(cReferenceFrame, AnEmptyOneHasNothingToRead)
{
  msa::cReferenceFrame frame;
  EXPECT_TRUE(frame.empty());
  EXPECT_FALSE(frame.canRead());
  EXPECT_EQ(0u, frame.length());
  EXPECT_TRUE(frame.begin() == frame.end());
  EXPECT_EQ("bounds tList/tIterator::operator*()", support::failureOf([&] { frame.currentReference(); }));
  EXPECT_EQ("bounds tList/tIterator::operator*()", support::failureOf([&] { frame.readNext<int>(); }));
  EXPECT_EQ("bounds tList/cIteratorBase::operator++()", support::failureOf([&] { frame.skipNext(); }));
}

TEST_F(cReferenceFrame, ItsReferencesGoWithIt)
{
  EXPECT_EQ(mstd::tPtrList<msa::cAbstractTypeReference>::Object, msa::cReferenceFrame().kind());
  EXPECT_TRUE((std::is_base_of<mstd::tPtrList<msa::cAbstractTypeReference>, msa::cReferenceFrame>::value));
  support::cBlockBalance balance;
  {
    msa::cReferenceFrame frame;
    fill(frame, 8);
    msa::cReferenceFrame copy(frame);
    EXPECT_EQ(8u, copy.length());
  }
  EXPECT_EQ(0, balance.blocks());
}

TEST_F(cReferenceFrame, TheFirstReferencesTakeNoMemory)
{
  support::cAllocationFault count(0);
  {
    msa::cReferenceFrame frame;
    fill(frame, msa::cReferenceFrame::InlineReferences);
    EXPECT_EQ(0u, count.count());
    if (support::cAllocationFault::seesNew())
    {
      fill(frame, 1, 4);
      EXPECT_EQ(1u, count.count());
    }
  }
}

TEST_F(cReferenceFrame, AddRefChainsAndReadingBeginsAtTheFirstReference)
{
  int iCount = 3;
  bool bFlag = true;
  msa::cReferenceFrame frame;
  frame.addRef(iCount, false, true).addRef(bFlag, true, true).addRef(mVoid, true, false);
  EXPECT_EQ(3u, frame.length());
  EXPECT_TRUE(frame.canRead());
  EXPECT_EQ(&iCount, &frame.readNext<int>());
  EXPECT_EQ(&bFlag, &frame.readNext<bool>());
  EXPECT_EQ(&mVoid, &frame.readNext<piVoid>());
  EXPECT_FALSE(frame.canRead());
}

TEST_F(cReferenceFrame, AReferenceAddedBehindTheReadingPositionAtTheEndIsNotTheNextOne)
{
  msa::cReferenceFrame frame;
  fill(frame, 1);
  frame.readNext<int>();
  fill(frame, 1, 1);
  EXPECT_FALSE(frame.canRead());
  EXPECT_EQ("10 11 ", valuesOf(frame));
}

TEST_F(cReferenceFrame, AReferenceTellsItsFlagsAndNames)
{
  int iValue = 0;
  msa::cReferenceFrame frame;
  frame.addRef(iValue, true, false).addRef(iValue, false, true);
  EXPECT_TRUE(frame.currentReference().alterable());
  EXPECT_FALSE(frame.currentReference().readable());
  EXPECT_STREQ("piInt32", frame.currentReference().typeName());
  EXPECT_STREQ(typeid(int).name(), frame.currentReference().mangeledTypeName());
  EXPECT_EQ(nullptr, frame.currentReference().isSubReferenceFrame());
  frame.skipNext();
  EXPECT_FALSE(frame.currentReference().alterable());
  EXPECT_TRUE(frame.currentReference().readable());
}

TEST_F(cReferenceFrame, WhatIsWrittenThroughItChangesTheVariable)
{
  msa::cReferenceFrame frame;
  fill(frame, 1);
  frame.readNext(static_cast<int const*>(nullptr)) = 77;
  EXPECT_EQ(77, mInts[0]);
}

TEST_F(cReferenceFrame, ReadingAnotherTypeTellsBothAndStays)
{
  msa::cReferenceFrame frame;
  fill(frame, 1);
  mstd::cTypeMissmatchException const e =
      support::caught<mstd::cTypeMissmatchException>([&] { frame.readNext<double>(); });
  EXPECT_EQ("cTypeMissmatchException", support::toString(e.typeName()));
  EXPECT_EQ("piInt32", support::toString(e.assignedType()));
  EXPECT_EQ("piDouble", support::toString(e.expectedType()));
  EXPECT_EQ(&mInts[0], &frame.readNext<int>());
}

TEST_F(cReferenceFrame, ATypeThatTwoLibrariesHaveIsTakenByItsName)
{
  msa::cReferenceFrame frame;
  int& iForeign = support::addForeign(frame);
  iForeign = 5;
  ASSERT_STREQ(typeid(cSeenTwice).name(), frame.currentReference().mangeledTypeName());
  msa::cAbstractTypeReference& reference = frame.currentReference();
  ASSERT_NE(&typeid(reference), &typeid(msa::cTypeReference<cSeenTwice>));
  EXPECT_EQ(5, frame.readNext<cSeenTwice>().miValue);
  frame.restartReading();
  EXPECT_THROW(frame.readNext<cStubborn>(), mstd::cTypeMissmatchException);
}

TEST_F(cReferenceFrame, SkippingOverTheLastReferenceStandsAtTheEnd)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  frame.skipNext();
  EXPECT_TRUE(frame.canRead());
  frame.skipNext();
  EXPECT_FALSE(frame.canRead());
  EXPECT_EQ("bounds tList/cIteratorBase::operator++()", support::failureOf([&] { frame.skipNext(); }));
  EXPECT_EQ("bounds tList/tIterator::operator*()", support::failureOf([&] { frame.readNext<int>(); }));
  EXPECT_FALSE(frame.canRead());
}

TEST_F(cReferenceFrame, ACopyRefersToTheSameVariablesAndReadsForItself)
{
  for (unsigned int iCount : {2u, 8u})
  {
    msa::cReferenceFrame frame;
    fill(frame, iCount);
    frame.skipNext();
    msa::cReferenceFrame copy(frame);
    EXPECT_EQ(&mInts[0], &copy.readNext<int>());
    EXPECT_EQ(&mInts[1], &frame.readNext<int>());
    copy.restartReading();
    EXPECT_EQ(&mInts[0], &copy.readNext<int>());
    EXPECT_EQ(iCount == 2u, !frame.canRead());
  }
}

TEST_F(cReferenceFrame, ACopyKeepsTheFlags)
{
  msa::cReferenceFrame frame;
  frame.addRef(mInts[0], true, false);
  frame.addRef(mInts[1], false, true);
  msa::cReferenceFrame const copy(frame);
  std::vector<bool> flags;
  for (msa::cAbstractTypeReference* pReference : copy)
  {
    flags.push_back(pReference->alterable());
    flags.push_back(pReference->readable());
  }
  EXPECT_EQ((std::vector<bool>{true, false, false, true}), flags);
}

TEST_F(cReferenceFrame, AssignmentReplacesTheReferences)
{
  msa::cReferenceFrame frame;
  fill(frame, 3);
  msa::cReferenceFrame other;
  fill(other, 6, 2);
  other.skipNext();
  frame = other;
  EXPECT_EQ("12 13 14 15 16 17 ", valuesOf(frame));
  EXPECT_EQ(&mInts[3], &other.readNext<int>());
  msa::cReferenceFrame& same = frame;
  frame = same;
  EXPECT_EQ("12 13 14 15 16 17 ", valuesOf(frame));
  frame = msa::cReferenceFrame();
  EXPECT_TRUE(frame.empty());
  fill(frame, 1);
  EXPECT_EQ("10 ", valuesOf(frame));
}

TEST_F(cReferenceFrame, SwapExchangesFramesOfAllSizesAndStartsBothAnew)
{
  for (unsigned int iLeft = 0; iLeft <= 6; ++iLeft)
  {
    for (unsigned int iRight = 0; iRight <= 6; ++iRight)
    {
      std::string ofLeft, ofRight;
      msa::cReferenceFrame left;
      {
        msa::cReferenceFrame right;
        fill(left, iLeft);
        fill(right, iRight, 1);
        ofLeft = valuesOf(left);
        ofRight = valuesOf(right);
        if (iLeft > 0)
        {
          left.skipNext();
        }
        if (iRight > 0)
        {
          right.skipNext();
        }
        left.swap(right);
        EXPECT_EQ(iRight > 0, left.canRead());
        EXPECT_EQ(iLeft > 0, right.canRead());
        if (right.canRead())
        {
          EXPECT_EQ(&mInts[0], &right.readNext<int>());
        }
        EXPECT_EQ(ofLeft, valuesOf(right));
        // both have their places, and room for more
        fill(right, 2);
        EXPECT_EQ(ofLeft + "10 11 ", valuesOf(right));
      }
      EXPECT_EQ(ofRight, valuesOf(left));
      fill(left, 2);
      EXPECT_EQ(ofRight + "10 11 ", valuesOf(left));
    }
  }
}

TEST_F(cReferenceFrame, SwapWithItselfOnlyStartsAnew)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  frame.skipNext();
  frame.swap(frame);
  EXPECT_EQ(&mInts[0], &frame.readNext<int>());
  EXPECT_EQ(2u, frame.length());
}

TEST_F(cReferenceFrame, AppendOfAnEmptyFrameLeavesTheReadingPosition)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  frame.skipNext();
  frame.append(msa::cReferenceFrame());
  EXPECT_EQ(&mInts[1], &frame.readNext<int>());
}

TEST_F(cReferenceFrame, AppendOfAnyOtherSetsItToTheStart)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  msa::cReferenceFrame other;
  fill(other, 3, 5);
  frame.skipNext();
  frame.append(other);
  EXPECT_EQ(&mInts[0], &frame.readNext<int>());
  EXPECT_EQ("10 11 15 16 17 ", valuesOf(frame));
  EXPECT_EQ("15 16 17 ", valuesOf(other));
  frame.append(frame);
  EXPECT_EQ("10 11 15 16 17 10 11 15 16 17 ", valuesOf(frame));
}

TEST_F(cReferenceFrame, AppendNetLeavesTheReadingPosition)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  frame.skipNext();
  frame.append_net(frame);
  EXPECT_EQ(&mInts[1], &frame.readNext<int>());
  EXPECT_EQ("10 11 10 11 ", valuesOf(frame));
  msa::cReferenceFrame fresh;
  fresh.append_net(frame);
  EXPECT_EQ(&mInts[0], &fresh.readNext<int>());
}

TEST_F(cReferenceFrame, AFailureOfMemoryLeavesTheFrameAsItWas)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "this build cannot make an allocation fail";
  }
  msa::cReferenceFrame other;
  fill(other, 6, 1);
  for (int iOperation = 0; iOperation < 4; ++iOperation)
  {
    unsigned int iFailures = 0;
    for (unsigned int iNth = 1;; ++iNth)
    {
      support::cBlockBalance balance;
      bool bFired = false;
      {
        msa::cReferenceFrame frame;
        fill(frame, 4);
        frame.skipNext();
        support::cAllocationFault fault(iNth);
        try
        {
          switch (iOperation)
          {
          case 0:
            frame.append(other);
            break;
          case 1:
            frame.append_net(other);
            break;
          case 2:
            frame = other;
            break;
          case 3:
            frame.addRef(mInts[0], true, true);
            break;
          }
        }
        catch (std::bad_alloc const&)
        {
          ++iFailures;
        }
        bFired = fault.hasFired();
        fault.disarm();
        if (bFired)
        {
          EXPECT_EQ(&mInts[1], &frame.readNext<int>());
          EXPECT_EQ("10 11 12 13 ", valuesOf(frame));
        }
      }
      EXPECT_EQ(0, balance.blocks());
      if (!bFired)
      {
        EXPECT_EQ(iNth - 1, iFailures);
        break;
      }
    }
    EXPECT_GT(iFailures, 0u);
  }
}

TEST_F(cReferenceFrame, ANestedFrameIsFoundAndStarted)
{
  msa::cReferenceFrame innermost;
  fill(innermost, 2, 4);
  msa::cReferenceFrame inner;
  fill(inner, 1, 2);
  inner.addRef(innermost, false, true);
  msa::cReferenceFrame frame;
  fill(frame, 1);
  frame.addRef(inner, true, false);
  frame.skipNext();
  EXPECT_EQ(&inner, frame.currentReference().isSubReferenceFrame());
  EXPECT_STREQ("cReferenceFrame", frame.currentReference().typeName());
  EXPECT_TRUE(frame.currentReference().alterable());
  EXPECT_FALSE(frame.currentReference().readable());
  EXPECT_EQ(&inner, &frame.readNext<msa::cReferenceFrame>());
  inner.skipNext();
  inner.skipNext();
  innermost.skipNext();
  frame.restartReading();
  EXPECT_TRUE(frame.canRead());
  EXPECT_EQ(&mInts[2], &inner.readNext<int>());
  EXPECT_EQ(&mInts[4], &innermost.readNext<int>());
  // a copy refers to the same nested frames
  msa::cReferenceFrame copy(frame);
  copy.skipNext();
  EXPECT_EQ(&inner, copy.currentReference().isSubReferenceFrame());
  copy.restartReading();
  EXPECT_EQ(&mInts[4], &innermost.readNext<int>());
}

TEST_F(cReferenceFrame, ARestartReachesNestedFramesAtAnyDepth)
{
  std::deque<msa::cReferenceFrame> frames(200000);
  for (size_t i = 0; i + 1 < frames.size(); ++i)
  {
    frames[i].addRef(frames[i + 1], true, true);
    frames[i].skipNext();
  }
  fill(frames.back(), 2);
  frames.back().skipNext();
  frames.front().restartReading();
  for (msa::cReferenceFrame& frame : frames)
  {
    ASSERT_EQ(*frame.begin(), &frame.currentReference());
  }
}

TEST_F(cReferenceFrame, ANestedFrameInManyPlacesIsRestartedOnce)
{
  std::deque<msa::cReferenceFrame> frames(60); // 2^59 ways lead to the last one
  for (size_t i = 0; i + 1 < frames.size(); ++i)
  {
    frames[i].addRef(frames[i + 1], true, true).addRef(frames[i + 1], true, true);
  }
  fill(frames.back(), 2);
  frames.back().skipNext();
  frames.front().restartReading();
  EXPECT_EQ(&mInts[0], &frames.back().readNext<int>());
  // each walk begins anew, wherever it begins
  frames[30].skipNext();
  frames.front().restartReading();
  EXPECT_EQ(&mInts[0], &frames.back().readNext<int>());
  EXPECT_EQ(*frames[30].begin(), &frames[30].currentReference());
  frames[31].skipNext();
  frames[30].restartReading();
  EXPECT_EQ(&mInts[0], &frames.back().readNext<int>());
  EXPECT_EQ(*frames[31].begin(), &frames[31].currentReference());
}

TEST_F(cReferenceFrame, AFrameThatContainsItselfIsReadAndNotStreamed)
{
  msa::cReferenceFrame inner;
  msa::cReferenceFrame frame;
  frame.addRef(inner, true, true);
  inner = frame;
  fill(inner, 1);
  inner.skipNext();
  frame.restartReading();
  EXPECT_EQ(&inner, &inner.readNext<msa::cReferenceFrame>());
  EXPECT_EQ(&mInts[0], &inner.readNext<int>());
  EXPECT_FALSE(inner.canRead());

  support::cCaptureOut mute;
  auto const check = [](std::string const& message, auto const& action) {
    mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>(action);
    EXPECT_EQ(message, support::messageOf(e));
    ASSERT_NE(nullptr, e.history());
    EXPECT_NE(std::string::npos, support::messageOf(*e.history()).find("(!mIsStreaming)!"));
    EXPECT_EQ(nullptr, e.history()->history());
  };
  msa::cSerializeBinary stream;
  msa::cDeserializeBinary reader;
  for (int i = 0; i < 2; ++i) // the failure of the first time is over at the second one
  {
    check("Serialization error (cReferenceFrame)!", [&] { inner.store(stream); });
    check("Serialization error (cReferenceFrame::storeAlterable)!", [&] { inner.store(stream, true, true); });
    check("Deserialization error in (cReferenceFrame)!", [&] { inner.load(reader); });
    check("Deserialization error in (cReferenceFrame::load-alterables)!", [&] { inner.load(reader, true, true); });
  }
  msa::cReferenceFrame last;
  last.addRef(last, true, true);
  check("Deserialization error in (cReferenceFrame::loadFirst)!", [&] { last.loadLast(reader); });
  EXPECT_EQ("", bytesOf(stream));
}

TEST_F(cReferenceFrame, StoreWritesTheValuesOneBehindTheOther)
{
  bool bFlag = true;
  msa::cReferenceFrame nested;
  fill(nested, 1, 7);
  msa::cReferenceFrame frame;
  frame.addRef(mInts[3], true, true).addRef(nested, true, true).addRef(bFlag, true, true).addRef(mVoid, true, false);
  msa::cSerializeBinary stream;
  msa::cReferenceFrame const& constant = frame;
  EXPECT_EQ(&constant, &(constant >> stream));
  msa::cSerializeBinary expected;
  13 >> expected;
  17 >> expected;
  true >> expected;
  EXPECT_EQ(bytesOf(expected), bytesOf(stream));

  mInts[3] = mInts[7] = 0;
  bFlag = false;
  mstd::tArray<char> bytes;
  stream.swapData(bytes);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  msa::cAbstractDeserializer& deserializer = reader;
  EXPECT_EQ(&deserializer, &(frame << deserializer));
  EXPECT_EQ(13, mInts[3]);
  EXPECT_EQ(17, mInts[7]);
  EXPECT_TRUE(bFlag);
  EXPECT_TRUE(reader.eoc());
}

TEST_F(cReferenceFrame, FlagsSelectAndFalseSelectsNothing)
{
  msa::cReferenceFrame frame;
  frame.addRef(mInts[0], false, false).addRef(mInts[1], false, true);
  frame.addRef(mInts[2], true, false).addRef(mInts[3], true, true);
  struct
  {
    bool bAlterable;
    bool bReadable;
    std::vector<int> values;
  } const cases[] = {
      {false, false, {10, 11, 12, 13}}, {false, true, {11, 13}}, {true, false, {12, 13}}, {true, true, {13}}};
  for (auto const& c : cases)
  {
    msa::cSerializeBinary stream;
    frame.store(stream, c.bAlterable, c.bReadable);
    msa::cSerializeBinary expected;
    for (int iValue : c.values)
    {
      iValue >> expected;
    }
    EXPECT_EQ(bytesOf(expected), bytesOf(stream));
    for (int& iValue : mInts)
    {
      iValue += 100;
    }
    int iLoaded = 0;
    mstd::tArray<char> bytes;
    stream.swapData(bytes);
    msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
    frame.load(reader, c.bAlterable, c.bReadable);
    EXPECT_TRUE(reader.eoc());
    for (int i = 0; i < 8; ++i)
    {
      iLoaded += mInts[i] < 100 ? 1 : 0;
      mInts[i] = 10 + i;
    }
    EXPECT_EQ(static_cast<int>(c.values.size()), iLoaded);
  }
}

TEST_F(cReferenceFrame, AnAnswerToTwoReadableArgumentsAndAReturnValueIsOneValue)
{
  int iResult = 0;
  msa::cReferenceFrame frame;
  frame.addRef(mInts[0], false, true).addRef(mInts[1], false, true).addRef(iResult, true, false);
  msa::cSerializeBinary stream;
  42 >> stream;
  43 >> stream;
  mstd::tArray<char> bytes;
  stream.swapData(bytes);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  frame.load(reader, true, false);
  EXPECT_EQ(42, iResult);
  EXPECT_EQ(10, mInts[0]);
  EXPECT_EQ(11, mInts[1]);
  int iRest = 0;
  iRest << reader;
  EXPECT_EQ(43, iRest);
}

TEST_F(cReferenceFrame, LoadLastReadsTheReturnValueOnly)
{
  msa::cReferenceFrame frame;
  fill(frame, 2);
  msa::cSerializeBinary stream;
  42 >> stream;
  mstd::tArray<char> bytes;
  stream.swapData(bytes);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  frame.loadLast(reader);
  EXPECT_EQ(10, mInts[0]);
  EXPECT_EQ(42, mInts[1]);
}

TEST_F(cReferenceFrame, AFailureWhileStreamingNamesTheOperationAndTheCause)
{
  cStubborn stubborn;
  msa::cReferenceFrame frame;
  fill(frame, 1);
  frame.addRef(stubborn, true, true);
  auto const check = [](std::string const& message, auto const& action) {
    mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>(action);
    EXPECT_EQ(message, support::messageOf(e));
    ASSERT_NE(nullptr, e.history());
    EXPECT_EQ("stubborn", support::messageOf(*e.history()));
    EXPECT_EQ(nullptr, e.history()->history());
  };
  msa::cSerializeBinary stream;
  check("Serialization error (cReferenceFrame)!", [&] { frame.store(stream); });
  check("Serialization error (cReferenceFrame)!", [&] { frame >> stream; });
  check("Serialization error (cReferenceFrame::storeAlterable)!", [&] { frame.store(stream, false, false); });
  // what came before the failure is in the stream
  msa::cSerializeBinary values;
  for (int i = 0; i < 3; ++i)
  {
    10 >> values;
  }
  EXPECT_EQ(bytesOf(values), bytesOf(stream));
  mstd::tArray<char> bytes;
  values.swapData(bytes);
  msa::cDeserializeBinary reader((mstd::tConstArrayRef<char>(bytes)));
  check("Deserialization error in (cReferenceFrame)!", [&] { frame.load(reader); });
  check("Deserialization error in (cReferenceFrame)!", [&] { frame << reader; });
  check("Deserialization error in (cReferenceFrame::load-alterables)!", [&] { frame.load(reader, false, false); });
  check("Deserialization error in (cReferenceFrame::loadFirst)!", [&] { frame.loadLast(reader); });
}

TEST_F(cReferenceFrame, LoadLastOfAnEmptyFrameFails)
{
  msa::cReferenceFrame frame;
  msa::cDeserializeBinary reader;
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([&] { frame.loadLast(reader); });
  EXPECT_EQ("Deserialization error in (cReferenceFrame::loadFirst)!", support::messageOf(e));
  ASSERT_NE(nullptr, e.history());
  EXPECT_EQ("cOutOfBoundsException", support::toString(e.history()->typeName()));
}

TEST_F(cReferenceFrame, ItsTypeStringNamesAllReferencesButThoseToNothing)
{
  mstd::cAsciiString sText;
  msa::cReferenceFrame frame;
  EXPECT_EQ("", typesOf(frame));
  frame.addRef(mVoid, true, false);
  EXPECT_EQ("", typesOf(frame));
  frame.addRef(mInts[0], true, true).addRef(sText, true, true);
  EXPECT_EQ("piInt32, cAsciiString", typesOf(frame));
}
