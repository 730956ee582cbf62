#include "std/tVector.h"

#include "std/cSTDExceptions.h"
#include "std/tBounds.h"

#include <new>

namespace mstd
{

namespace
{

// The number of pointers that a pool of `iCapacity` really has room for: up to 64 the next multiple of a quarter of the
// highest power of two in it, above that the next power of two.
unsigned long long room(unsigned int iCapacity)
{
  if (iCapacity < 4)
  {
    return iCapacity;
  }
  unsigned int const highestBit = 31u - static_cast<unsigned int>(__builtin_clz(iCapacity));
  unsigned long long const unit = 1ull << (iCapacity <= 64 ? highestBit - 2 : highestBit);
  return (iCapacity + unit - 1) & ~(unit - 1);
}

} // namespace

unsigned int cVectorPool::required(unsigned int iNewSize, unsigned int iStep)
{
  unsigned int const step = iStep == 0 ? 1 : iStep;
  unsigned int iRequired = iNewSize / step * step;
  if (iRequired == 0)
  {
    iRequired = step;
  }
  if (iNewSize > iRequired)
  {
    iRequired += step;
  }
  if (!(iRequired >= iNewSize))
  {
    cSTDExceptions::throwAssertionFailed("iRequired >= iNewSize", "std/tVector", __LINE__);
  }
  return iRequired;
}

bool cVectorPool::hasSameRoom(unsigned int iCapacity, unsigned int iOther) noexcept
{
  return iCapacity != 0 && iOther != 0 && room(iCapacity) == room(iOther);
}

void* cVectorPool::allocate(unsigned int iCapacity)
{
  unsigned long long const bytes = room(iCapacity) * sizeof(void*);
  if (bytes > static_cast<unsigned long long>(PTRDIFF_MAX))
  {
    cSTDExceptions::throwBadAlloc();
  }
  return ::operator new(static_cast<decltype(sizeof(0))>(bytes));
}

void cVectorPool::release(void* pPool) noexcept
{
  ::operator delete(pPool);
}

void cVectorPool::throwIndexOutOfRange(char const* operation, unsigned int iIndex, unsigned int iLength)
{
  tBounds::throwIndexOutOfRange("tVector", operation, iIndex, iLength);
}

void cVectorPool::throwInsertOutOfRange(unsigned int iIndex, unsigned int iLength)
{
  tBounds::throwValueOutOfRange("tVector", "insert", iIndex, iLength);
}

} // namespace mstd
