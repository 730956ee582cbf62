#include "rmi/cSlotCallPool.h"

#include "std/cSTDExceptions.h"

#include <stdlib.h>
#include <string.h>

namespace mrmi
{
namespace
{
unsigned int const FirstHeapCapacity = 10;
} // namespace

cSlotCallPool::~cSlotCallPool()
{
  if (mpCalls != &mpFirst)
  {
    ::free(mpCalls);
  }
}

void cSlotCallPool::insert(unsigned int index, cAbstractSlotCall* call)
{
  if (miLength == miCapacity)
  {
    grow();
  }
  ::memmove(mpCalls + index + 1, mpCalls + index, (miLength - index) * sizeof(cAbstractSlotCall*));
  mpCalls[index] = call;
  ++miLength;
}

void cSlotCallPool::grow()
{
  unsigned int const limit = static_cast<unsigned int>(-1) / sizeof(cAbstractSlotCall*);
  if (miCapacity > limit / 2)
  {
    cSTDExceptions::throwBadAlloc();
  }
  unsigned int const capacity = miCapacity < FirstHeapCapacity ? FirstHeapCapacity : miCapacity * 2;
  void* const old = mpCalls != &mpFirst ? mpCalls : 0;
  cAbstractSlotCall** const calls =
      static_cast<cAbstractSlotCall**>(::realloc(old, capacity * sizeof(cAbstractSlotCall*)));
  if (calls == 0)
  {
    cSTDExceptions::throwBadAlloc();
  }
  if (old == 0)
  {
    calls[0] = mpFirst;
  }
  mpCalls = calls;
  miCapacity = capacity;
}
} // namespace mrmi
