#include "pi/cWorkTable.h"

#include "std/cArrayMemory.h"

namespace mpi
{

cWorkTable::~cWorkTable()
{
  mstd::cArrayMemory::release(mpKeys);
  mstd::cArrayMemory::release(mpSlots);
}

bool cWorkTable::reserve()
{
  if (miLength < miCapacity)
  {
    return false;
  }
  // Doubled, so that adding stays O(1). The keys move last, when nothing can fail any more.
  unsigned long long const iWanted = miCapacity != 0 ? miCapacity * 2ULL : 16;
  mpSlots = static_cast<cSlot*>(mstd::cArrayMemory::resize(mpSlots, miCapacity, iWanted, sizeof(cSlot)));
  mpKeys = static_cast<piUInt64*>(mstd::cArrayMemory::resize(mpKeys, miCapacity, iWanted, sizeof(piUInt64)));
  miCapacity = static_cast<unsigned int>(iWanted);
  return true;
}

unsigned int cWorkTable::append(cWork& work, tEntry const& entry, bool bOwned, piUInt64 iKey)
{
  unsigned int const index = miLength++;
  mpKeys[index] = iKey;
  mpSlots[index] = cSlot{&work, entry.node(), bOwned, false};
  return index;
}

void cWorkTable::mark(unsigned int index)
{
  cSlot& slot = mpSlots[index];
  if (!slot.mMarked)
  {
    slot.mMarked = true;
    slot.mpNode->mark();
    ++miMarked;
    if (index < miFirstMarked)
    {
      miFirstMarked = index;
    }
  }
}

unsigned int cWorkTable::takeFirstMarked()
{
  unsigned int const index = miFirstMarked;
  miFirstMarked = ~0u;
  return index;
}

void cWorkTable::makeGap(unsigned int index)
{
  mpSlots[index] = cSlot{nullptr, nullptr, false, false};
  mpKeys[index] = Stopped;
  --miMarked;
  ++miGaps;
}

bool cWorkTable::closeGaps()
{
  while (miLength != 0 && mpSlots[miLength - 1].mpNode == nullptr)
  {
    --miLength;
    --miGaps;
  }
  if (miGaps <= miLength / 2)
  {
    return false;
  }
  unsigned int iTo = 0;
  for (unsigned int i = 0; i < miLength; ++i)
  {
    if (mpSlots[i].mpNode != nullptr)
    {
      mpSlots[iTo] = mpSlots[i];
      mpKeys[iTo] = mpKeys[i];
      if (mpSlots[iTo].mMarked && iTo < miFirstMarked)
      {
        miFirstMarked = iTo;
      }
      ++iTo;
    }
  }
  miLength = iTo;
  miGaps = 0;
  return true;
}

} // namespace mpi
