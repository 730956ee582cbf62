#ifndef MORTISE_RMI_CLOCALSIGNALBASE_H
#define MORTISE_RMI_CLOCALSIGNALBASE_H

#include "pi/piTypes.h"
#include "rmi/cAbstractSignal.h"
#include "rmi/cAbstractSlotCall.h"
#include "rmi/cSlotCallPool.h"

namespace mrmi
{
/// All of a local signal that does not depend on its arguments: the slot calls, and their life and death. Use
/// localSignal0 to localSignal3.
///
/// An invocation calls the slots in their order, on the caller's thread, each to its end. Slots may connect,
/// disconnect and destroy receivers, and call the signal again:
/// - A slot that is disconnected before its turn is not called.
/// - A slot that is appended is called in the same invocation if that began with more than one slot.
/// - A slot that is put at the front is not called in the invocation that runs.
/// - After a nested invocation the outer one has nothing left to call.
/// An exception from a slot ends the invocation, goes to the caller, and the slots behind it are not called.
/// A signal may not be destroyed by its own slots: that is reported on the debug output, and the invocation ends.
///
/// Ownership: owns its slot calls.
/// Threads:   no lock; a signal, its slot calls and their receivers belong to one thread.
/// Cost:      an invocation allocates nothing. Connecting allocates the slot call, and now and then the pool.
class MORTISE_API cLocalSignalBase : public cAbstractSignal
{
public:
  cLocalSignalBase();
  cLocalSignalBase(cLocalSignalBase const&) = delete; // a slot call belongs to one signal
  cLocalSignalBase& operator=(cLocalSignalBase const&) = delete;
  ~cLocalSignalBase() override;

  void notifyConnectableDestroyed(cConnectable& connectable) override;
  /// cBugException always: a local signal takes no connection by name.
  void connect(cConnectable& connectable, mstd::cAsciiString const& slotName, SlotResolving resolving) override;
  /// Drops all calls to `connectable` at once, the others keep their order. O(number of slots).
  void disconnect(cConnectable const& connectable) override;
  /// Does nothing: a local signal describes nothing of itself.
  void addParameterInfo(cPublicSignal& publicSignal) override;

  /// True if there is any slot call.
  bool isConnected() const { return mSlots.length() != 0; }
  /// Number of slot calls.
  unsigned int slotCount() const { return mSlots.length(); }
  /// Number of invocations now running, which is more than 1 if slots call the signal again.
  unsigned int nestedInvocationCount() const { return mNIC; }

protected:
  /// Takes over `call`, which was made for this signal. If that fails the call is destroyed, and nothing has changed.
  void adopt(cAbstractSlotCall* call, ConnectionPolicy policy);

  /// Calls the slots. The way to a single slot is small enough to be inlined.
  /// What the destructor does; that of a derived class may do it before.
  void destroyCalls();

  template <typename Call, typename... A>
  void invokeSlots(A&... args);

private:
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdangling-pointer" // the destructor takes the pointer back
#endif
  // Counts an invocation, and learns if the signal goes while it runs.
  class cInvocation
  {
  public:
    explicit cInvocation(cLocalSignalBase& signal)
        : mpSignal(&signal), mpOuter(signal.mpInvocation), miOuterCount(signal.mNIC)
    {
      signal.mNIC = miOuterCount + 1;
      signal.mpInvocation = this;
    }
    cInvocation(cInvocation const&) = delete;
    cInvocation& operator=(cInvocation const&) = delete;
    ~cInvocation()
    {
      if (mpSignal != 0)
      {
        mpSignal->mNIC = miOuterCount; // invocations nest, so this counts down
        mpSignal->mpInvocation = mpOuter;
      }
    }

    bool isSignalGone() const { return mpSignal == 0; }

  private:
    friend class cLocalSignalBase;
    cLocalSignalBase* mpSignal; // null: gone
    cInvocation* mpOuter;
    unsigned int miOuterCount;
  };
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ >= 12
#pragma GCC diagnostic pop
#endif

  template <typename Call, typename... A>
  void invokeNoneOrMany(A&... args);
  void throwIfUnconnected() const;
  void removeCalls(cConnectable const& connectable);
  static void release(cAbstractSlotCall& call);
  static void destroyCall(cAbstractSlotCall* call);

  cSlotCallPool mSlots;
  unsigned int mNIC;
  cInvocation* mpInvocation; // the innermost one that runs
};

// ---------------------------------------------------------------------------------------------------------------------

template <typename Call, typename... A>
inline void cLocalSignalBase::invokeSlots(A&... args)
{
  if (mSlots.length() != 1)
  {
    invokeNoneOrMany<Call>(args...);
    return;
  }
  // Nothing is looked at behind the call, so whatever the slot connects waits for the next invocation.
  cInvocation invocation(*this);
  cAbstractSlotCall* const single = mSlots[0];
  single->mCalled = true;
  static_cast<Call*>(single)->call(args...);
}

template <typename Call, typename... A>
__attribute__((noinline)) void cLocalSignalBase::invokeNoneOrMany(A&... args)
{
  cInvocation invocation(*this);
  unsigned int const count = mSlots.length();
  if (count == 0)
  {
    throwIfUnconnected();
    return;
  }

  for (unsigned int i = 0; i < count; ++i)
  {
    mSlots[i]->mCalled = false;
  }
  // Slots may change the pool: so the length is read anew, and the same index is looked at again after a call.
  unsigned int i = 0;
  while (i < mSlots.length())
  {
    cAbstractSlotCall* const next = mSlots[i];
    if (next->mCalled)
    {
      ++i;
      continue;
    }
    next->mCalled = true;
    static_cast<Call*>(next)->call(args...);
    if (invocation.isSignalGone())
    {
      return;
    }
  }
}
} // namespace mrmi

#endif
