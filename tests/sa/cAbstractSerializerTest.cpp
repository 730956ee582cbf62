#include "sa/cAbstractSerializer.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tArrayRef.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <utility>

namespace
{

/// Writes down which operation was called with what. Leaves the 16-bit ones to the base.
class cRecorder : public msa::cAbstractSerializer
{
public:
  using msa::cAbstractSerializer::store;
  void storeBlock(char const* data, unsigned int size) override { add(data == nullptr ? "null " : "block ", size); }
  void store(unsigned char value) override { add("uchar ", value); }
  void store(signed char value) override { add("char ", value); }
  void store(unsigned int value) override { add("uint32 ", value); }
  void store(int value) override { add("int32 ", value); }
  void store(unsigned long long value) override { add("uint64 ", value); }
  void store(long long value) override { add("int64 ", value); }
  void store(bool value) override { add("bool ", value ? 1 : 0); }
  void store(double value) override { add("double ", value); }
  void store(mstd::cAsciiString const& value) override { mLog += std::string("ascii ") + value.c_str() + ";"; }
  void store(mucs::cString const& value) override { add("string ", value.length()); }
  void rewind() override {}
  void clear() override {}
  msa::cContextRef newContext(char const*) override { return msa::cContextRef(nullptr); }
  void releaseCurrentContext() override {}
  msa::cAbstractSerializer& newLabel(mstd::cAsciiString const&) override { return *this; }
  mstd::tArrayRef<char> data() override { return mstd::tArrayRef<char>(); }
  void swapData(mstd::tArray<char>&) override {}

  std::string mLog;

private:
  template <class T>
  void add(char const* name, T value)
  {
    mLog += name + std::to_string(value) + ";";
  }
};

template <class T, class = void>
struct tHasOperator : std::false_type
{
};

template <class T>
struct tHasOperator<T, decltype(void(std::declval<T const&>() >> std::declval<msa::cAbstractSerializer&>()))>
    : std::true_type
{
};

} // namespace

TEST(cAbstractSerializer, LabelsArePreferredAtFirst)
{
  cRecorder serializer;
  EXPECT_FALSE(serializer.noLabelsPreferred());
  serializer.setPreferNoLabels(true);
  EXPECT_TRUE(serializer.noLabelsPreferred());
  serializer.setPreferNoLabels(false);
  EXPECT_FALSE(serializer.noLabelsPreferred());
}

TEST(cAbstractSerializer, ShortValuesAreWidenedWithTheirSign)
{
  cRecorder serializer;
  serializer.store(static_cast<short>(-5));
  serializer.store(static_cast<short>(0x7FFF));
  serializer.store(static_cast<unsigned short>(0xFFFE));
  EXPECT_EQ(serializer.mLog, "int32 -5;int32 32767;uint32 65534;");
}

TEST(cAbstractSerializer, EachTypeOfTheLanguageWritesItselfByItsOwnOperation)
{
  cRecorder recorder;
  msa::cAbstractSerializer& serializer = recorder;
  EXPECT_EQ(&(true >> serializer), &serializer);
  static_cast<unsigned short>(1) >> serializer;
  static_cast<short>(-2) >> serializer;
  3u >> serializer;
  -4 >> serializer;
  5ull >> serializer;
  -6ll >> serializer;
  static_cast<unsigned char>(7) >> serializer;
  static_cast<signed char>(-8) >> serializer;
  0.5 >> serializer;
  EXPECT_EQ(recorder.mLog, "bool 1;uint32 1;int32 -2;uint32 3;int32 -4;uint64 5;int64 -6;uchar 7;char -8;double "
                           "0.500000;");
}

TEST(cAbstractSerializer, AnEmptyArrayIsABlockOfNothing)
{
  cRecorder serializer;
  mstd::tArray<char> array;
  array >> serializer;
  array.setFitOnErase(false);
  array.append('x');
  array >> serializer;
  array.truncate(0); // has memory, but nothing in it
  array >> serializer;
  std::string const step = "uint32 " + std::to_string(array.growStep()) + ";";
  EXPECT_EQ(serializer.mLog, step + "null 0;" + step + "block 1;" + step + "null 0;");
}

TEST(cAbstractSerializer, NoValueWritesNothing)
{
  cRecorder serializer;
  EXPECT_EQ(&(piVoid() >> serializer), &serializer);
  EXPECT_EQ(serializer.mLog, "");
}

TEST(cAbstractSerializer, TypesWhoseWidthDiffersBetweenProcessorsHaveNoOperator)
{
  EXPECT_TRUE(tHasOperator<int>::value);
  EXPECT_TRUE(tHasOperator<piVoid>::value);
  EXPECT_FALSE(tHasOperator<long>::value);
  EXPECT_FALSE(tHasOperator<unsigned long>::value);
  EXPECT_FALSE(tHasOperator<char>::value);
  EXPECT_FALSE(tHasOperator<wchar_t>::value);
  EXPECT_FALSE(tHasOperator<float>::value);
  EXPECT_FALSE(tHasOperator<char const*>::value);
}
