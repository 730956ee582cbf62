#include "sa/containerStream.h"

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cRuntimeException.h"
#include "std/cTypeMissmatchException.h"
#include "std/tArray.h"
#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/exceptionText.h"
#include "support/streamBytes.h"

#include <gtest/gtest.h>

#include <new>
#include <string>
#include <vector>

using support::bytes;
using support::word;

namespace
{

/// Reads an int32, and fails for a 13.
struct cElement
{
  cElement(int value = 0) : miValue(value) {}
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const
  {
    if (miValue == 13)
    {
      throw std::string("unlucky");
    }
    return miValue >> serializer;
  }
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer)
  {
    miValue << deserializer;
    if (miValue == 13)
    {
      throw std::string("unlucky");
    }
    return deserializer;
  }
  int miValue;
};

/// Goes back instead of forth.
struct cBackwards
{
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer)
  {
    deserializer.rewind();
    return deserializer;
  }
};

template <class tContainer>
class containerStream : public testing::Test
{
};

typedef testing::Types<mstd::tVector<cElement>, mstd::tList<cElement>> tContainers;
TYPED_TEST_SUITE(containerStream, tContainers, );

template <class T>
std::vector<int> valuesOf(mstd::tVector<T> const& vector)
{
  std::vector<int> values;
  for (unsigned int i = 0; i < vector.length(); ++i)
  {
    values.push_back(vector.at(i).miValue);
  }
  return values;
}

template <class T>
std::vector<int> valuesOf(mstd::tList<T> const& list)
{
  std::vector<int> values;
  for (T const& element : list)
  {
    values.push_back(element.miValue);
  }
  return values;
}

template <class tContainer>
std::string streamOf(std::vector<int> const& values)
{
  tContainer container;
  for (int value : values)
  {
    container.append(cElement(value));
  }
  msa::cSerializeBinary serializer;
  EXPECT_EQ(&(container >> serializer), &serializer);
  return support::written(serializer);
}

std::string const EmptyContainer =
    bytes("0C 00 00 00 04 00 00 00 1F 00 00 00 08 00 00 00 01 00 00 00 0A 00 00 00 07 00 00 00 'unknown'");

} // namespace

TYPED_TEST(containerStream, NoElementsAreAContextWithoutContent)
{
  EXPECT_EQ(streamOf<TypeParam>({}), EmptyContainer);
  mstd::tArray<char> data = support::arrayOf(EmptyContainer);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  TypeParam container;
  container.append(cElement(1));
  EXPECT_EQ(&(container << deserializer), &deserializer);
  EXPECT_EQ(valuesOf(container), std::vector<int>{});
  EXPECT_EQ(deserializer.currentPos(), EmptyContainer.size());
}

TYPED_TEST(containerStream, TheElementsStandInTheirOrder)
{
  std::string expected = EmptyContainer + word(5) + word(1) + word(5) + word(2);
  expected.replace(8, 4, word(0x1F + 16));
  EXPECT_EQ(streamOf<TypeParam>({1, 2}), expected);
  mstd::tArray<char> data = support::arrayOf(expected);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  TypeParam container;
  container << deserializer;
  EXPECT_EQ(valuesOf(container), (std::vector<int>{1, 2}));
}

TYPED_TEST(containerStream, TheNameOfTheContextIsNotChecked)
{
  for (char const* name : {"other", "", static_cast<char const*>(nullptr)})
  {
    msa::cSerializeBinary serializer;
    {
      msa::cContext context(serializer.newContext(name));
      7 >> serializer;
      context.release();
    }
    msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
    TypeParam container;
    container << deserializer;
    EXPECT_EQ(valuesOf(container), std::vector<int>{7});
  }
}

TYPED_TEST(containerStream, AnElementThatCannotBeReadLeavesTargetAndPosition)
{
  std::string stream = streamOf<TypeParam>({1, 2, 3});
  for (unsigned int at = 0; at < 3; ++at)
  {
    std::string broken = stream;
    broken.replace(broken.size() - 4 * (2 * (2 - at) + 1), 4, word(13));
    mstd::tArray<char> data = support::arrayOf(word(5) + word(0) + broken);
    msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
    int first = 1;
    first << deserializer;
    TypeParam container;
    container.append(cElement(77));
    EXPECT_THROW(container << deserializer, std::string);
    EXPECT_EQ(valuesOf(container), std::vector<int>{77});
    EXPECT_EQ(deserializer.currentPos(), 8u);
    broken.replace(broken.size() - 4 * (2 * (2 - at) + 2), 4, word(4));
    mstd::tArray<char> other = support::arrayOf(broken);
    deserializer.setData(other);
    support::cCaptureOut mute;
    EXPECT_THROW(container << deserializer, mstd::cTypeMissmatchException);
    EXPECT_EQ(valuesOf(container), std::vector<int>{77});
    EXPECT_EQ(deserializer.currentPos(), 0u);
  }
}

TYPED_TEST(containerStream, AnElementThatCannotBeWrittenRollsBack)
{
  TypeParam container;
  container.append(cElement(1));
  container.append(cElement(13));
  msa::cSerializeBinary serializer;
  5 >> serializer;
  EXPECT_THROW(container >> serializer, std::string);
  EXPECT_EQ(serializer.currentPos(), 8u);
}

TYPED_TEST(containerStream, OutOfMemoryLeavesTheTarget)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "allocations are not seen here";
  }
  std::string const stream = streamOf<TypeParam>({1, 2, 3});
  mstd::tArray<char> data = support::arrayOf(stream);
  unsigned int fired = 0;
  for (unsigned int nth = 1;; ++nth)
  {
    msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
    TypeParam container;
    container.append(cElement(77));
    bool failed = false;
    {
      support::cAllocationFault fault(nth);
      try
      {
        container << deserializer;
      }
      catch (std::bad_alloc const&)
      {
        failed = true;
      }
    }
    if (!failed)
    {
      EXPECT_EQ(valuesOf(container), (std::vector<int>{1, 2, 3}));
      break;
    }
    ++fired;
    EXPECT_EQ(valuesOf(container), std::vector<int>{77});
    EXPECT_EQ(deserializer.currentPos(), 0u);
  }
  EXPECT_GE(fired, 2u);
}

TEST(containerStreamOfVectors, VectorsNest)
{
  mstd::tVector<mstd::tVector<int>> outer;
  mstd::tVector<int> inner;
  outer.append(inner);
  inner.append(1);
  inner.append(2);
  outer.append(inner);
  msa::cSerializeBinary serializer;
  outer >> serializer;
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  mstd::tVector<mstd::tVector<int>> read;
  read << deserializer;
  ASSERT_EQ(read.length(), 2u);
  EXPECT_EQ(read.at(0).length(), 0u);
  ASSERT_EQ(read.at(1).length(), 2u);
  EXPECT_EQ(read.at(1).at(0), 1);
  EXPECT_EQ(read.at(1).at(1), 2);
}

TEST(containerStreamOfVectors, TheVectorThatWasReadGrowsByTen)
{
  msa::cSerializeBinary serializer;
  mstd::tVector<int>() >> serializer;
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  mstd::tVector<int> vector;
  vector.setStep(77);
  vector << deserializer;
  EXPECT_EQ(vector.step(), 10u);
}

TEST(containerStreamOfVectors, ElementsThatReadNothingDoNotReadForEver)
{
  support::cCaptureOut mute;
  mstd::tArray<char> data = support::arrayOf(streamOf<mstd::tVector<cElement>>({1, 2}));
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  mstd::tVector<piVoid> nothing;
  mstd::cRuntimeException const e = support::caught<mstd::cRuntimeException>([&] { nothing << deserializer; });
  EXPECT_EQ(support::messageOf(e), "Invalid type id (12) while deserializing!");
  EXPECT_EQ(nothing.length(), 0u);
  EXPECT_EQ(deserializer.currentPos(), 0u);
  mstd::tList<cBackwards> backwards;
  EXPECT_THROW(backwards << deserializer, mstd::cRuntimeException);
  EXPECT_EQ(deserializer.currentPos(), 0u);
}

TEST(containerStreamOfVectors, ElementsThatReadNothingHaveAnEmptyContext)
{
  mstd::tVector<piVoid> nothing;
  msa::cSerializeBinary serializer;
  nothing >> serializer;
  EXPECT_EQ(support::written(serializer), EmptyContainer);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  EXPECT_NO_THROW(nothing << deserializer);
}

TEST(containerStreamOfVectors, LabelsBehindTheLastElementAreItsEnd)
{
  msa::cSerializeBinary serializer;
  {
    msa::cContext context(serializer.newContext(nullptr));
    7 >> serializer;
    serializer.newLabel("late");
    context.release();
  }
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  mstd::tVector<int> vector;
  vector << deserializer;
  EXPECT_EQ(vector.length(), 1u);
}

TEST(containerStreamOfArrays, AnArrayIsItsGrowStepAndItsBlock)
{
  mstd::tArray<char> array = support::arrayOf("abc");
  array.setGrowStep(7);
  msa::cSerializeBinary serializer;
  EXPECT_EQ(&(array >> serializer), &serializer);
  EXPECT_EQ(support::written(serializer), bytes("04 00 00 00 07 00 00 00 01 00 00 00 03 00 00 00 'abc'"));
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  mstd::tArray<char> read = support::arrayOf("before");
  read << deserializer;
  EXPECT_EQ(support::stringOf(read), "abc");
  EXPECT_EQ(read.growStep(), 7u);
}

TEST(containerStreamOfArrays, WithLabelsTheyStandInFront)
{
  msa::cSerializeBinary serializer;
  serializer.setPreferNoLabels(false);
  mstd::tArray<char>() >> serializer;
  EXPECT_EQ(support::written(serializer), bytes("0D 00 00 00 0A 00 00 00 04 00 00 00 'Grow' 04 00 00 00 05 00 00 00"
                                                "0D 00 00 00 0A 00 00 00 04 00 00 00 'Data' 01 00 00 00 00 00 00 00"));
}

TEST(containerStreamOfArrays, WithLabelsTheOrderDoesNotMatter)
{
  msa::cSerializeBinary serializer;
  serializer.newLabel("Data");
  serializer.storeBlock("abc", 3);
  serializer.newLabel("Grow");
  9u >> serializer;
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  deserializer.setPreferNoLabels(false);
  mstd::tArray<char> read;
  read << deserializer;
  EXPECT_EQ(support::stringOf(read), "abc");
  EXPECT_EQ(read.growStep(), 9u);
}

TEST(containerStreamOfArrays, AFailureLeavesTheTarget)
{
  msa::cSerializeBinary serializer;
  9u >> serializer;
  1 >> serializer;
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  mstd::tArray<char> read = support::arrayOf("before");
  EXPECT_THROW(read << deserializer, mstd::cTypeMissmatchException);
  EXPECT_EQ(support::stringOf(read), "before");
  EXPECT_EQ(read.growStep(), 5u);
}
