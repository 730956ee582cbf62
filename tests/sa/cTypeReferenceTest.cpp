#include "sa/cTypeReference.h"

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/tArrayRef.h"
#include "support/streamBytes.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <typeinfo>

namespace
{

struct cPoint
{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const
  {
    miX >> serializer;
    return miY >> serializer;
  }
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer)
  {
    miX << deserializer;
    return miY << deserializer;
  }
  int miX = 0;
  int miY = 0;
};

struct cNameless
{
  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const { return serializer; }
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer) { return deserializer; }
};

template <class T>
std::string nameOf()
{
  return msa::tTypeName<T>::name();
}

} // namespace

MORTISE_TYPE_NAME(cPoint, "cPoint")

TEST(cTypeReference, StoresAndLoadsTheVariableItself)
{
  cPoint from;
  from.miX = 1;
  from.miY = 2;
  cPoint to;
  msa::cTypeReference<cPoint> source(from, false, true);
  msa::cTypeReference<cPoint> target(to, true, false);
  msa::cSerializeBinary serializer;
  from.miX = 3; // what the variable is at the time of the call
  source.store(serializer);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(serializer.ownData())};
  target.load(deserializer);
  EXPECT_EQ(to.miX, 3);
  EXPECT_EQ(to.miY, 2);
  EXPECT_EQ(&source.value(), &from);
}

TEST(cTypeReference, CreateCopiesAllFields)
{
  int value = 5;
  for (int flags = 0; flags < 4; ++flags)
  {
    msa::cTypeReference<int> reference(value, (flags & 1) != 0, (flags & 2) != 0);
    std::unique_ptr<msa::cAbstractTypeReference> const copy(reference.create());
    EXPECT_EQ(copy->alterable(), (flags & 1) != 0);
    EXPECT_EQ(copy->readable(), (flags & 2) != 0);
    EXPECT_EQ(copy->isSubReferenceFrame(), nullptr);
    EXPECT_EQ(&static_cast<msa::cTypeReference<int>&>(*copy).value(), &value);
  }
}

TEST(cTypeReference, TellsBothNamesOfTheType)
{
  int value = 5;
  msa::cTypeReference<int> reference(value, true, true);
  EXPECT_EQ(std::string(reference.mangeledTypeName()), typeid(int).name());
  EXPECT_EQ(std::string(reference.typeName()), "piInt32");
  cPoint point;
  EXPECT_EQ(std::string(msa::cTypeReference<cPoint>(point, true, true).typeName()), "cPoint");
  cNameless nameless;
  EXPECT_EQ(std::string(msa::cTypeReference<cNameless>(nameless, true, true).typeName()), typeid(cNameless).name());
}

TEST(cTypeReference, TheTypesOfTheSystemHaveTheirNames)
{
  EXPECT_EQ(nameOf<piVoid>(), "piVoid");
  EXPECT_EQ(nameOf<msa::cReferenceFrame>(), "cReferenceFrame");
  EXPECT_EQ(nameOf<unsigned char>(), "piUChar");
  EXPECT_EQ(nameOf<signed char>(), "piChar");
  EXPECT_EQ(nameOf<unsigned short>(), "piUInt16");
  EXPECT_EQ(nameOf<short>(), "piInt16");
  EXPECT_EQ(nameOf<unsigned int>(), "piUInt32");
  EXPECT_EQ(nameOf<int>(), "piInt32");
  EXPECT_EQ(nameOf<unsigned long long>(), "piUInt64");
  EXPECT_EQ(nameOf<long long>(), "piInt64");
  EXPECT_EQ(nameOf<bool>(), "piBool");
  EXPECT_EQ(nameOf<double>(), "piDouble");
  EXPECT_EQ(nameOf<mstd::cAsciiString>(), "cAsciiString");
  EXPECT_EQ(nameOf<mucs::cString>(), "cString");
}

TEST(cTypeReference, AReferenceToNoValueStoresAndLoadsNothing)
{
  piVoid none;
  msa::cTypeReference<piVoid> reference(none, true, true);
  msa::cSerializeBinary serializer;
  reference.store(serializer);
  EXPECT_EQ(serializer.currentPos(), 0u);
  msa::cDeserializeBinary deserializer;
  EXPECT_NO_THROW(reference.load(deserializer));
  EXPECT_EQ(std::string(reference.typeName()), "piVoid");
}
