#ifndef MORTISE_STD_TVECTOR_H
#define MORTISE_STD_TVECTOR_H

#include "pi/piTypes.h"
#include "std/cSTDExceptions.h"

#include <string.h>
#include <utility>

namespace mstd
{

/// The part of tVector that does not depend on the element type: arithmetic and memory of pools of cell pointers.
///
/// A pool has more room than the capacity that the vector reports: the capacity grows by a fixed step, the memory
/// behind it up to the next power of two. So a growing vector moves each pointer about once on average, however small
/// its step is, and the memory follows from the capacity alone.
class MORTISE_API cVectorPool
{
public:
  /// The capacity that `iNewSize` elements need at steps of `iStep` (0 is taken as 1): the next whole number of steps,
  /// at least one. A result that passes 32 bits raises cBugException.
  static unsigned int required(unsigned int iNewSize, unsigned int iStep);

  /// True if pools of the two capacities are the same piece of memory; false if either is 0.
  static bool hasSameRoom(unsigned int iCapacity, unsigned int iOther) noexcept;

  /// Memory for `iCapacity` pointers, uninitialized. Raises std::bad_alloc.
  static void* allocate(unsigned int iCapacity);
  static void release(void* pPool) noexcept;

  [[noreturn]] static void throwIndexOutOfRange(char const* operation, unsigned int iIndex, unsigned int iLength);
  [[noreturn]] static void throwInsertOutOfRange(unsigned int iIndex, unsigned int iLength);
};

/// Vector that keeps each element in a heap cell of its own, so that an element never moves while it lives.
///
/// Growth adds `step()` elements at a time and touches only the pool of cell pointers, so `T` may be as expensive to
/// copy as it likes and need not be assignable or default-constructible.
///
/// Ownership: owns copies of what is appended. Elements leave in index order, each through notifyElementRemoved().
/// Errors:    an index that is not there raises cOutOfRangeException; no memory raises std::bad_alloc. Whatever fails
///            leaves the vector as it was. Destructors of elements must not throw.
/// Validity:  references and pointers to an element hold until that very element is removed, also across swap().
/// Threads:   no lock.
/// Cost:      append() allocates one cell; at() is two loads; insert() and erase() are O(n) pointers.
template <class T>
class MORTISE_API tVector
{
public:
  enum
  {
    DefaultStep = 10
  };

  /// Empty, without a pool.
  tVector() noexcept : mppPool(nullptr), miCapacity(0), miLength(0), miStep(DefaultStep) {}

  /// Copies each element and takes the step over; the capacity is the smallest that fits (0 for an empty source).
  tVector(tVector const& rSource) : tVector()
  {
    miStep = rSource.miStep;
    copyElements(rSource);
  }

  /// Removes every element, with the hook of this class: a derived class with a hook of its own calls clear() in its
  /// own destructor.
  virtual ~tVector();

  /// As the copy constructor; the old elements leave through the hook.
  tVector& operator=(tVector const& rSource)
  {
    if (this != &rSource)
    {
      tVector copy(rSource);
      clear();
      exchange(copy);
    }
    return *this;
  }

  /// The element at `iIndex`. Out of range: cOutOfRangeException ("tVector", "at").
  T& at(unsigned int iIndex)
  {
    check(iIndex);
    return *mppPool[iIndex];
  }
  T const& at(unsigned int iIndex) const
  {
    check(iIndex);
    return *mppPool[iIndex];
  }
  T& operator[](unsigned int iIndex) { return at(iIndex); }
  T const& operator[](unsigned int iIndex) const { return at(iIndex); }

  unsigned int length() const noexcept { return miLength; }
  unsigned int size() const noexcept { return miLength; }
  bool empty() const noexcept { return miLength == 0; }

  /// Number of elements that fit before the pool grows.
  unsigned int capacity() const noexcept { return miCapacity; }

  /// Number of elements by which the pool grows.
  unsigned int step() const noexcept { return miStep; }
  /// Sets the step for growth from now on; the pool stays as it is. 0 is taken as 1.
  void setStep(unsigned int iStep) noexcept { miStep = iStep == 0 ? 1 : iStep; }

  /// Makes room for `iSize` elements: the capacity becomes the next whole number of steps, at least one. A larger pool
  /// is kept unless `bExact`. When an exact pool shrinks below the length, the elements from `iSize` on are removed,
  /// the last one first. A capacity that passes 32 bits raises cBugException, no memory std::bad_alloc; both change
  /// nothing.
  void resizePool(unsigned int iSize, bool bExact);

  /// Adds a copy of `rValue` at the end and returns it. `rValue` may be an element of this vector.
  T& append(T const& rValue)
  {
    unsigned int const required = nextRequired();
    if (required > miCapacity)
    {
      return appendGrowing(rValue, required);
    }
    T* const cell = new T(rValue);
    mppPool[miLength++] = cell;
    return *cell;
  }

  /// Adds a copy of `rValue` before the element at `iIndex`, or at the end if `iIndex` is the length. A larger index:
  /// cOutOfRangeException ("tVector", "insert").
  T& insert(unsigned int iIndex, T const& rValue);

  /// Removes the element at `iIndex`, through the hook. Out of range: cOutOfRangeException ("tVector", "erase").
  void erase(unsigned int iIndex);

  /// Removes every element, through the hook, and keeps the pool. While the hook runs the vector is empty already; what
  /// the hook adds stays.
  void clear();

  /// Exchanges pool, capacity, length and step; elements keep their addresses.
  void swap(tVector& rOther) noexcept { exchange(rOther); }

protected:
  /// Called for each element just before it is destroyed. An exception from it leaves this and the following elements
  /// in the vector. Empty here.
  virtual void notifyElementRemoved(T& rElement) { static_cast<void>(rElement); }

private:
  void check(unsigned int iIndex) const
  {
    if (__builtin_expect(iIndex >= miLength, 0))
    {
      cVectorPool::throwIndexOutOfRange("at", iIndex, miLength);
    }
  }

  // The capacity needed for one more element; the usual cases of cVectorPool::required() without a call.
  unsigned int nextRequired() const
  {
    if (miLength < miCapacity && (miStep == DefaultStep ? miCapacity % DefaultStep : miCapacity % miStep) == 0)
    {
      return miCapacity;
    }
    if (miLength + 1 == 0)
    {
      cSTDExceptions::throwBadAlloc();
    }
    return cVectorPool::required(miLength + 1, miStep);
  }

  T& appendGrowing(T const& rValue, unsigned int iCapacity);
  void copyElements(tVector const& rSource);

  void exchange(tVector& rOther) noexcept
  {
    std::swap(mppPool, rOther.mppPool);
    std::swap(miCapacity, rOther.miCapacity);
    std::swap(miLength, rOther.miLength);
    std::swap(miStep, rOther.miStep);
  }

  // A pool that is not yet the vector's; the owner of a piece of memory while a cell is being made.
  class cNewPool
  {
  public:
    explicit cNewPool(unsigned int iCapacity) : mppPool(static_cast<T**>(cVectorPool::allocate(iCapacity))) {}
    cNewPool(cNewPool const&) = delete;
    cNewPool& operator=(cNewPool const&) = delete;
    ~cNewPool() { cVectorPool::release(mppPool); }
    T** get() const { return mppPool; }
    void exchange(T**& rppPool) { std::swap(mppPool, rppPool); }

  private:
    T** mppPool;
  };

  void movePool(cNewPool& rPool, unsigned int iCapacity)
  {
    if (miLength != 0)
    {
      memcpy(rPool.get(), mppPool, miLength * sizeof(T*));
    }
    rPool.exchange(mppPool);
    miCapacity = iCapacity;
  }

  T** mppPool;             // miCapacity cells, of which the first miLength are set
  unsigned int miCapacity; // as reported; see cVectorPool
  unsigned int miLength;
  unsigned int miStep; // never 0
};

template <class T>
inline void swap(tVector<T>& rLeft, tVector<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

// ---------------------------------------------------------------------------------------------------------------------

template <class T>
tVector<T>::~tVector()
{
  for (unsigned int i = 0; i < miLength; ++i)
  {
    T* const cell = mppPool[i];
    tVector::notifyElementRemoved(*cell);
    mppPool[i] = nullptr;
    delete cell;
  }
  cVectorPool::release(mppPool);
}

template <class T>
void tVector<T>::resizePool(unsigned int iSize, bool bExact)
{
  unsigned int const required = cVectorPool::required(iSize, miStep);
  if (miCapacity == required || (miCapacity > required && !bExact))
  {
    return;
  }
  if (cVectorPool::hasSameRoom(miCapacity, required) && miLength <= iSize)
  {
    miCapacity = required;
    return;
  }
  cNewPool pool(required);
  while (miLength > iSize)
  {
    erase(miLength - 1);
  }
  movePool(pool, required);
}

template <class T>
T& tVector<T>::appendGrowing(T const& rValue, unsigned int iCapacity)
{
  if (cVectorPool::hasSameRoom(miCapacity, iCapacity))
  {
    T* const cell = new T(rValue);
    miCapacity = iCapacity;
    mppPool[miLength++] = cell;
    return *cell;
  }
  // The pool before the cell: a value whose copy takes the source's object over must not be lost for lack of a pool.
  cNewPool pool(iCapacity);
  T* const cell = new T(rValue);
  movePool(pool, iCapacity);
  mppPool[miLength++] = cell;
  return *cell;
}

template <class T>
T& tVector<T>::insert(unsigned int iIndex, T const& rValue)
{
  if (iIndex > miLength)
  {
    cVectorPool::throwInsertOutOfRange(iIndex, miLength);
  }
  T& element = append(rValue);
  for (unsigned int i = miLength - 1; i > iIndex; --i)
  {
    mppPool[i] = mppPool[i - 1];
  }
  mppPool[iIndex] = &element;
  return element;
}

template <class T>
void tVector<T>::erase(unsigned int iIndex)
{
  if (iIndex >= miLength)
  {
    cVectorPool::throwIndexOutOfRange("erase", iIndex, miLength);
  }
  T* const cell = mppPool[iIndex];
  notifyElementRemoved(*cell);
  // The hook may have changed the vector; only the cell tells where the element is now.
  if (iIndex >= miLength || mppPool[iIndex] != cell)
  {
    iIndex = 0;
    while (iIndex < miLength && mppPool[iIndex] != cell)
    {
      ++iIndex;
    }
    if (iIndex == miLength)
    {
      return;
    }
  }
  --miLength;
  for (unsigned int i = iIndex; i < miLength; ++i)
  {
    mppPool[i] = mppPool[i + 1];
  }
  mppPool[miLength] = nullptr;
  delete cell;
}

template <class T>
void tVector<T>::clear()
{
  // The elements leave from a vector of their own, so that a hook or a destructor that comes back here meets an empty
  // vector and not one with holes.
  class cLeaving
  {
  public:
    explicit cLeaving(tVector& rVector) : mVector(rVector), miDone(0)
    {
      mElements.miStep = rVector.miStep;
      mElements.exchange(rVector);
    }
    cLeaving(cLeaving const&) = delete;
    cLeaving& operator=(cLeaving const&) = delete;
    ~cLeaving()
    {
      unsigned int const left = mElements.miLength - miDone;
      for (unsigned int i = 0; i < left; ++i)
      {
        mElements.mppPool[i] = mElements.mppPool[i + miDone];
      }
      mElements.miLength = left;
      if (mVector.mppPool == nullptr)
      {
        mElements.exchange(mVector);
      }
    }
    void run()
    {
      while (miDone < mElements.miLength)
      {
        T* const cell = mElements.mppPool[miDone];
        mVector.notifyElementRemoved(*cell);
        mElements.mppPool[miDone] = nullptr;
        ++miDone;
        delete cell;
      }
    }

  private:
    tVector& mVector;
    tVector mElements;
    unsigned int miDone;
  };
  cLeaving leaving(*this);
  leaving.run();
}

template <class T>
void tVector<T>::copyElements(tVector const& rSource)
{
  if (rSource.miLength == 0)
  {
    return;
  }
  resizePool(rSource.miLength, false);
  for (unsigned int i = 0; i < rSource.miLength; ++i)
  {
    mppPool[i] = new T(*rSource.mppPool[i]);
    miLength = i + 1;
  }
}

} // namespace mstd

#endif
