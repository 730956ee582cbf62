#ifndef MORTISE_RMI_CCONNECTABLE_H
#define MORTISE_RMI_CCONNECTABLE_H

#include "pi/piTypes.h"

namespace mstd
{
template <typename T>
class tPtrList;
}

namespace mrmi
{
class cAbstractSignal;
class cAbstractSlotCall;
class cLocalSignalBase;
class cPublicSignal;
class cPublicSlot;

/// Base of every class that has slots.
///
/// A connectable lists the signals that hold slot calls to it, one entry for each slot call, so that both ends of a
/// connection may die at any moment, also while the signal runs: a dying connectable takes its slot calls out of all
/// signals, a dying signal takes its entries out of the connectables.
///
/// Ownership: neither signals nor slot calls are owned here. Entries that belong to a slot call live inside of it, so
///            connecting and disconnecting allocate nothing on this side.
/// Threads:   no lock; a connectable, its signals and their slot calls belong to one thread.
class MORTISE_API cConnectable
{
public:
  cConnectable();
  cConnectable(cConnectable const&) = delete; // connections belong to one object
  cConnectable& operator=(cConnectable const&) = delete;
  /// Detaches from all signals. What a signal's notifyConnectableDestroyed() throws goes to the debug output.
  virtual ~cConnectable();

  /// True if `call`, which may not be null, says that it is for this object.
  bool operator==(cAbstractSlotCall const* call) const;

  /// Appends an entry for a signal that holds a call to this object. Raises std::bad_alloc and changes nothing then.
  /// Slot calls do this by themselves.
  void notifySignalAttached(cAbstractSignal& signal);
  /// Removes every entry of the signal. While detachAllSignals() runs it does nothing. O(number of entries).
  void notifySignalDetached(cAbstractSignal& signal);
  /// Tells each signal, once for each of its entries, that it is to drop its calls to this object.
  /// O(number of entries).
  void detachAllSignals();
  /// detachAllSignals(), then forgets every entry.
  void clear();
  /// Makes every entry of `oldSignal` one of `newSignal`, in its place. Raises std::bad_alloc and changes nothing then.
  void reAssign(cAbstractSignal& oldSignal, cAbstractSignal& newSignal);

  /// A free number, 0 at first.
  unsigned int index() const { return miIndex; }
  void setIndex(unsigned int index) { miIndex = index; }

private:
  friend class cAbstractSlotCall;
  friend class cLocalSignalBase;

  // One entry of the list of signals. Those of slot calls are members of the call, all others stand on the heap.
  struct cEntry
  {
    cEntry* prev; // null in an entry that is in no list
    cEntry* next;
    cAbstractSignal* signal;
    cAbstractSlotCall* call; // null: on the heap
  };

  // Position of a walk along the list, told of every entry that leaves it.
  struct cWalk
  {
    cEntry* pos;
    cWalk* outer;
  };

  class cDetaching;

  void append(cEntry& entry);
  void unlink(cEntry& entry);
  void removeEntry(cEntry& entry);
  void removeAllEntries();

  cEntry mSignals;                                // head of the ring of entries
  mstd::tPtrList<cPublicSlot>* mpPublicSlots;     // owned; null until the first slot is registered
  mstd::tPtrList<cPublicSignal>* mpPublicSignals; // owned; null until the first signal is registered
  bool mDetaching;
  unsigned int miIndex;
  cWalk* mpWalk; // innermost walk of detachAllSignals()
};
} // namespace mrmi

#endif
