#ifndef MORTISE_PI_PIBYTEORDER_H
#define MORTISE_PI_PIBYTEORDER_H

#include "pi/piTypes.h"

/// \file
/// Between the processor's byte order and little-endian, the order of everything that leaves the process.

namespace mpi
{
inline constexpr piUInt16 littleEndianToPlatformType16(piUInt16 iValue)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return __builtin_bswap16(iValue);
#else
  return iValue;
#endif
}

inline constexpr piUInt32 littleEndianToPlatformType32(piUInt32 iValue)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return __builtin_bswap32(iValue);
#else
  return iValue;
#endif
}

inline constexpr piUInt64 littleEndianToPlatformType64(piUInt64 iValue)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return __builtin_bswap64(iValue);
#else
  return iValue;
#endif
}

inline constexpr piUInt16 platformTypeToLittleEndian16(piUInt16 iValue)
{
  return littleEndianToPlatformType16(iValue);
}

inline constexpr piUInt32 platformTypeToLittleEndian32(piUInt32 iValue)
{
  return littleEndianToPlatformType32(iValue);
}

inline constexpr piUInt64 platformTypeToLittleEndian64(piUInt64 iValue)
{
  return littleEndianToPlatformType64(iValue);
}
} // namespace mpi

#endif
