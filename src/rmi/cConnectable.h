#ifndef MORTISE_RMI_CCONNECTABLE_H
#define MORTISE_RMI_CCONNECTABLE_H

#include "pi/piTypes.h"
#include "std/tAutoPtr.h"
#include "std/tPtrList.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
class cReferenceFrame;
} // namespace msa

namespace mstd
{
class cAsciiString;
}

namespace mrmi
{
class cAbstractRMIFactory;
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
/// It can publish slots and signals under a name, with a description of their types, and so be called by name: with the
/// arguments in a reference frame, or in a stream. Names need not be unique; the first one of a name is found.
///
/// A slot that is called by name may clear() its connectable, and destroy it: published slots and their slot calls that
/// go meanwhile are destroyed when the outermost of the calls by name at this connectable returns. That holds for
/// invokeIndirectSlot(), invokeIndirectRemoteSlot() and callPublicSlot(). Not supported are: a slot call got by
/// tryFindSlot() that is called directly and destroys itself; a public description, a pointer to a slot call or a
/// connection with ResolveOnConnect that is used after clear(); an asking of a signal for its public name after the
/// connectable that published it is gone or was cleared.
///
/// Ownership: neither signals nor connected slot calls are owned here, but the descriptions of what is published, and
///            the published slot calls with them. Entries that belong to a slot call live inside of it, so
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
  /// detachAllSignals(), then forgets every entry, and all published slots and signals. Their lists stay, empty.
  void clear();
  /// Makes every entry of `oldSignal` one of `newSignal`, in its place. Raises std::bad_alloc and changes nothing then.
  void reAssign(cAbstractSignal& oldSignal, cAbstractSignal& newSignal);

  /// A free number, 0 at first.
  unsigned int index() const { return miIndex; }
  void setIndex(unsigned int index) { miIndex = index; }

  /// \name Publishing
  /// Each of these makes the list if there is none yet, and appends to it. A failure raises what the stream, the
  /// factory or the memory raises, and publishes nothing; a slot call that was handed over is destroyed then.
  /// @{
  /// Publishes a slot. `returnType` and `paramTypes` are free text for the description. No slot call is an assertion
  /// failure.
  cPublicSlot& registerSlot(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                            mstd::cAsciiString const& paramTypes, mstd::cAsciiString const& description,
                            mstd::tAutoPtr<cAbstractSlotCall> call);
  /// Publishes a signal, which must outlive its use by name.
  cPublicSignal& registerSignal(mstd::cAsciiString const& name, mstd::cAsciiString const& returnType,
                                mstd::cAsciiString const& paramTypes, unsigned int type,
                                mstd::cAsciiString const& description, cAbstractSignal& signal);
  /// Publishes a slot of another process: the description comes from the stream, the slot call from the factory.
  cPublicSlot& registerRemoteSlot(msa::cAbstractDeserializer& deserializer, cAbstractRMIFactory& factory);
  /// Publishes a slot of another process without a description.
  cPublicSlot& registerRemoteSlot(mstd::cAsciiString const& name, mstd::tAutoPtr<cAbstractSlotCall> call);
  /// Publishes a signal of another process: the description comes from the stream, the signal from the factory, which
  /// is asked for the one of index().
  cPublicSignal& registerRemoteSignal(msa::cAbstractDeserializer& deserializer, cAbstractRMIFactory& factory);
  /// The list, which is made if there is none yet. It owns its elements, and is owned by the connectable.
  mstd::tPtrList<cPublicSlot>& codRSlots();
  mstd::tPtrList<cPublicSignal>& codRSignals();
  /// The list, null if nothing was ever registered.
  mstd::tPtrList<cPublicSlot> const* hasPublicSlots() const { return mpPublicSlots; }
  mstd::tPtrList<cPublicSignal> const* hasPublicSignals() const { return mpPublicSignals; }
  /// @}

  /// \name Search
  /// In the order of registration; O(number of slots or signals).
  /// @{
  /// cNoSuchSlotException if there is none.
  cPublicSlot& findPublicSlot(mstd::cAsciiString const& name) const;
  /// Null if there is none.
  cAbstractSlotCall* tryFindSlot(mstd::cAsciiString const& name) const;
  /// Null if there is none.
  cPublicSlot* tryFindPublicSlot(cAbstractSlotCall const& call) const;
  /// "unknown" if there is none.
  mstd::cAsciiString publicSlotName(cAbstractSlotCall const& call) const;
  /// cNoSuchSignalException if there is none.
  cAbstractSignal& findSignal(mstd::cAsciiString const& name);
  cPublicSignal& findPublicSignal(mstd::cAsciiString const& name) const;
  /// @}

  /// \name Calls by name
  /// What the slot raises goes through.
  /// @{
  /// Calls the slot with the arguments and the return value that `frame` refers to. Without such a slot it raises
  /// cNoSuchSlotException, which tells the types in the frame.
  void invokeIndirectSlot(mstd::cAsciiString const& name, msa::cReferenceFrame& frame) const;
  /// Calls the slot with the arguments from a stream, and lets it write its results to another one. Without such a slot
  /// it raises cNoSuchSlotException.
  void invokeIndirectRemoteSlot(mstd::cAsciiString const& name, msa::cAbstractDeserializer& arguments,
                                msa::cAbstractSerializer& results) const;
  /// Calls a slot call that was found here before.
  void callPublicSlot(cAbstractSlotCall const& call, msa::cReferenceFrame& frame) const;
  /// @}

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
  class cRunning;

  void append(cEntry& entry);
  void unlink(cEntry& entry);
  void removeEntry(cEntry& entry);
  void removeHeapEntries(cAbstractSignal& signal);
  void removeAllEntries();
  cPublicSlot* findSlotOf(mstd::cAsciiString const& name) const;
  cPublicSignal* findSignalOf(mstd::cAsciiString const& name) const;
  void dropPublicSlots();

  cEntry mSignals;                                // head of the ring of entries
  unsigned int miHeapEntries;                     // those of the ring that belong to no slot call
  mstd::tPtrList<cPublicSlot>* mpPublicSlots;     // owned; null until the first slot is registered
  mstd::tPtrList<cPublicSignal>* mpPublicSignals; // owned; null until the first signal is registered
  bool mDetaching;
  unsigned int miIndex;
  cWalk* mpWalk;               // innermost walk of detachAllSignals()
  mutable cRunning* mpRunning; // innermost call by name that runs
};
} // namespace mrmi

#endif
