#ifndef MORTISE_PI_PIBYTEORDER_H
#define MORTISE_PI_PIBYTEORDER_H

#include "pi/piTypes.h"

namespace mpi
{
/// Turns a 16-bit value that was read as little-endian into the processor's byte order; the same
/// function serves for the way back.
inline constexpr piUInt16 littleEndianToPlatformType16(piUInt16 iValue)
{
#if __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
  return static_cast<piUInt16>((iValue << 8) | (iValue >> 8));
#else
  return iValue;
#endif
}
} // namespace mpi

#endif
