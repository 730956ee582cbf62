#ifndef MORTISE_SA_BINARYNUMBER_H
#define MORTISE_SA_BINARYNUMBER_H

#include "pi/piByteOrder.h"

#include <string.h>

/// \file
/// Numbers as they stand in the binary form: little-endian and at any address.

namespace msa
{
namespace binary
{

inline char* put16(char* p, unsigned int iValue)
{
  piUInt16 const iWire = mpi::platformTypeToLittleEndian16(static_cast<piUInt16>(iValue));
  memcpy(p, &iWire, sizeof(iWire));
  return p + sizeof(iWire);
}

inline char* put32(char* p, unsigned int iValue)
{
  piUInt32 const iWire = mpi::platformTypeToLittleEndian32(iValue);
  memcpy(p, &iWire, sizeof(iWire));
  return p + sizeof(iWire);
}

inline char* put64(char* p, unsigned long long iValue)
{
  piUInt64 const iWire = mpi::platformTypeToLittleEndian64(iValue);
  memcpy(p, &iWire, sizeof(iWire));
  return p + sizeof(iWire);
}

/// An id and a payload of 1, 2, 4 or 8 bytes.
template <unsigned int PayloadSize>
inline void putNumber(char* p, unsigned int iId, unsigned long long iPayload)
{
  if (PayloadSize == 4)
  {
    put64(p, iId | iPayload << 32); // one store
    return;
  }
  p = put32(p, iId);
  if (PayloadSize == 1)
  {
    *p = static_cast<char>(iPayload);
  }
  else if (PayloadSize == 2)
  {
    put16(p, static_cast<unsigned int>(iPayload));
  }
  else
  {
    put64(p, iPayload);
  }
}

inline unsigned int get32(char const* p)
{
  piUInt32 iWire;
  memcpy(&iWire, p, sizeof(iWire));
  return mpi::littleEndianToPlatformType32(iWire);
}

/// A number of 1, 2, 4 or 8 bytes.
inline unsigned long long getNumber(char const* p, unsigned int iSize)
{
  if (iSize == 4)
  {
    return get32(p);
  }
  if (iSize == 8)
  {
    piUInt64 iWire;
    memcpy(&iWire, p, sizeof(iWire));
    return mpi::littleEndianToPlatformType64(iWire);
  }
  if (iSize == 2)
  {
    piUInt16 iWire;
    memcpy(&iWire, p, sizeof(iWire));
    return mpi::littleEndianToPlatformType16(iWire);
  }
  return static_cast<unsigned char>(*p);
}

/// The 64 bits of a double, with the sign in the highest on every processor.
inline unsigned long long bitsOf(double dValue)
{
  unsigned long long iBits;
  static_assert(sizeof(iBits) == sizeof(dValue), "doubles travel as their image of 64 bits");
  memcpy(&iBits, &dValue, sizeof(iBits));
#if defined(__FLOAT_WORD_ORDER__) && __FLOAT_WORD_ORDER__ != __BYTE_ORDER__
  iBits = iBits << 32 | iBits >> 32;
#endif
  return iBits;
}

inline double doubleOf(unsigned long long iBits)
{
#if defined(__FLOAT_WORD_ORDER__) && __FLOAT_WORD_ORDER__ != __BYTE_ORDER__
  iBits = iBits << 32 | iBits >> 32;
#endif
  double dValue;
  memcpy(&dValue, &iBits, sizeof(dValue));
  return dValue;
}

} // namespace binary
} // namespace msa

#endif
