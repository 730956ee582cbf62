#include "pi/piByteOrder.h"

#include <gtest/gtest.h>

#include <string.h>

namespace
{

template <class T>
T fromBytes(char const* bytes)
{
  T value;
  memcpy(&value, bytes, sizeof(value));
  return value;
}

char const* const Bytes = "\x01\x02\x03\x04\x05\x06\x07\x88";

} // namespace

TEST(piByteOrder, TheFirstByteIsTheLowest)
{
  EXPECT_EQ(mpi::littleEndianToPlatformType16(fromBytes<piUInt16>(Bytes)), 0x0201u);
  EXPECT_EQ(mpi::littleEndianToPlatformType32(fromBytes<piUInt32>(Bytes)), 0x04030201u);
  EXPECT_EQ(mpi::littleEndianToPlatformType64(fromBytes<piUInt64>(Bytes)), 0x8807060504030201ull);
}

TEST(piByteOrder, BothWaysAreTheReverseOfEachOther)
{
  EXPECT_EQ(mpi::platformTypeToLittleEndian16(0x0201), fromBytes<piUInt16>(Bytes));
  EXPECT_EQ(mpi::platformTypeToLittleEndian32(0x04030201u), fromBytes<piUInt32>(Bytes));
  EXPECT_EQ(mpi::platformTypeToLittleEndian64(0x8807060504030201ull), fromBytes<piUInt64>(Bytes));
}
