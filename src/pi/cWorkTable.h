#ifndef MORTISE_PI_CWORKTABLE_H
#define MORTISE_PI_CWORKTABLE_H

#include "pi/piTypes.h"
#include "std/tList.h"
#include "std/tSharedObject.h"

namespace mpi
{

class cWork;

// The entries of a work queue once more, as arrays beside its list, so that a walk passes over the many items that have
// nothing to do without touching them. Each entry has a key that tells when its work has to be looked at; the work
// keeps it up to date. Indexes follow the order of the list; an entry that leaves the list leaves a gap, which lasts
// until the gaps outnumber the entries.
class cWorkTable
{
public:
  typedef mstd::tList<mstd::tSharedObject<cWork>>::iterator tEntry;
  typedef tEntry::NodeType tNode;

  // Keys that are no planned time. A time so close to the epoch only has its work looked at in vain.
  static piUInt64 const Dead = 0;
  static piUInt64 const Event = 1;
  static piUInt64 const NoEvent = ~0ULL - 1;
  static piUInt64 const Stopped = ~0ULL;

  struct cSlot
  {
    cWork* mpWork; // null: dropped, or a gap
    tNode* mpNode; // null: a gap
    bool mOwned;
    bool mMarked;
  };

  cWorkTable() = default;
  cWorkTable(cWorkTable const&) = delete;
  cWorkTable& operator=(cWorkTable const&) = delete;
  ~cWorkTable();

  unsigned int length() const { return miLength; }
  piUInt64* keys() { return mpKeys; }
  void setKey(unsigned int index, piUInt64 iKey) { mpKeys[index] = iKey; }
  cSlot& slot(unsigned int index) { return mpSlots[index]; }
  tEntry entry(unsigned int index) const { return tEntry(mpSlots[index].mpNode); }

  // Makes room, so that the next append() can't fail. std::bad_alloc. Returns true if the keys may have moved.
  bool reserve();
  unsigned int append(cWork& work, tEntry const& entry, bool bOwned, piUInt64 iKey);

  // Marks the entry, here and in the list, for the sweep.
  void mark(unsigned int index);
  bool hasMarked() const { return miMarked != 0; }
  // Begins a sweep: where to look for the first mark.
  unsigned int takeFirstMarked();
  // Turns a marked entry into a gap.
  void makeGap(unsigned int index);
  // Closes the gaps if there are many; true if entries have moved.
  bool closeGaps();

private:
  piUInt64* mpKeys = nullptr;
  cSlot* mpSlots = nullptr;
  unsigned int miLength = 0;
  unsigned int miCapacity = 0;
  unsigned int miMarked = 0;
  unsigned int miFirstMarked = ~0u;
  unsigned int miGaps = 0;
};

} // namespace mpi

#endif
