#ifndef MORTISE_RMI_CSLOTCALLPOOL_H
#define MORTISE_RMI_CSLOTCALLPOOL_H

#include "pi/piTypes.h"

namespace mrmi
{
class cAbstractSlotCall;

/// The slot calls of a signal in their calling order.
///
/// Most signals have one slot, so the first place is inside the pool and takes no memory of its own.
///
/// Ownership: the pool holds pointers only; its signal deletes the calls.
/// Errors:    insert() raises std::bad_alloc and changes nothing then.
class MORTISE_API cSlotCallPool
{
public:
  cSlotCallPool() : mpCalls(&mpFirst), miLength(0), miCapacity(1), mpFirst(0) {}
  cSlotCallPool(cSlotCallPool const&) = delete;
  cSlotCallPool& operator=(cSlotCallPool const&) = delete;
  ~cSlotCallPool();

  unsigned int length() const { return miLength; }
  /// Not checked: `index` must be below length().
  cAbstractSlotCall* operator[](unsigned int index) const { return mpCalls[index]; }
  /// Puts `call` in front of the element `index`, or at the end if `index` is length().
  void insert(unsigned int index, cAbstractSlotCall* call);
  void set(unsigned int index, cAbstractSlotCall* call) { mpCalls[index] = call; }
  /// Cuts the end off; never grows.
  void cut(unsigned int length) { miLength = length; }

private:
  void grow();

  cAbstractSlotCall** mpCalls; // &mpFirst, or on the heap
  unsigned int miLength;
  unsigned int miCapacity;
  cAbstractSlotCall* mpFirst;
};
} // namespace mrmi

#endif
