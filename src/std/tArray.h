#ifndef MORTISE_STD_TARRAY_H
#define MORTISE_STD_TARRAY_H

#include "std/cArrayMemory.h"
#include "std/cSTDExceptions.h"
#include "std/tAbstractArrayProxy.h"
#include "std/tArrayTraits.h"
#include "std/tBounds.h"

#include <string.h>
#include <type_traits>

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

namespace mstd
{
/// Contiguous array of plain values that grows in sectors of a power of two.
///
/// The elements are moved with memory copies and are never constructed or destroyed. By default every erase
/// trims the pool to the length; turn that off with setFitOnErase(false) where much is erased.
///
/// With tArrayAsciiStringTraits a 0 stands behind the last element at all times.
///
/// Units:       lengths, positions and the capacity count elements.
/// Ownership:   owns its pool. Pointers given in are only read during the call and may point into the
///              array itself.
/// Errors:      cOutOfRangeException and cOutOfBoundsException (container "tArray") for places outside of the array,
///              std::bad_alloc if memory or 32 bits do not suffice. A failed operation leaves the array as it was.
/// Invalidated: any change of the length ends the life of pointers and references into the pool.
/// Threads:     no lock; an array and the views of it belong to one thread at a time.
/// Cost:        append is O(1) amortized, insert and erase are O(elements behind the place). The block
///              behind a large pool is somewhat larger than the capacity, see cArrayMemory.
template <class T, class Traits>
class MORTISE_API tArray : public tAbstractArrayProxy<T>
{
  enum
  {
    Terminated = tArrayTerminated<Traits>::value,
    DefaultGrowStep = 5
  };
  static_assert(std::is_trivially_copyable<T>::value, "elements are moved with plain memory copies");
  static_assert(!Terminated || std::is_same<T, char>::value, "only strings of char are terminated");
  template <class U>
  using tOnlyForChar = typename std::enable_if<std::is_same<U, char>::value, int>::type;
  template <class U>
  using tOnlyForBytes = typename std::enable_if<std::is_same<U, char>::value && !Terminated, int>::type;

public:
  typedef T value_type;

  /// Empty array, with the default sector of 32 elements and fit on erase.
  tArray() : tArray(0u) {}
  /// Array of `iLength` elements of undefined value.
  explicit tArray(unsigned int iLength);
  /// Copies the contents, the grow step and fit on erase; the capacity is the length in whole sectors.
  tArray(tArray const& other);
  /// Takes everything from `other` and leaves it an empty array with default settings.
  tArray(tArray&& other);
  /// Byte array with the characters of a zero-terminated text, without the zero; null is an empty text.
  template <class U = T, tOnlyForBytes<U> = 0>
  tArray(char const* text) : tArray(0u)
  {
    append(text);
  }
  ~tArray() override { destroy(); }

  /// Takes contents and settings over.
  tArray& operator=(tArray const& other);
  tArray& operator=(tArray&& other) noexcept;
  void swap(tArray& other) noexcept;

  unsigned int length() const { return mLength; }
  /// The same as length().
  unsigned int size() const { return mLength; }
  bool empty() const { return mLength == 0; }
  /// Elements that the pool holds before it has to grow, without the terminator.
  unsigned int capacity() const { return mCapacity; }

  /// The sector size as a power of two.
  unsigned int growStep() const { return mGrowStep; }
  /// Sets the sector to 2^(lowest 8 bits of `iGrowStep`) elements. From 2^32 on there are no sectors and the
  /// pool follows the length. The present pool stays as it is.
  void setGrowStep(unsigned int iGrowStep) { mGrowStep = iGrowStep; }
  bool fitOnErase() const { return mFitOnErase; }
  /// Whether an erase, a truncate and a setSize() make the pool exactly as large as the length.
  void setFitOnErase(bool fit) { mFitOnErase = fit; }

  /// One element. Errors: cOutOfRangeException.
  T& at(unsigned int index)
  {
    checkIndex(index);
    return mpPool[index];
  }
  T const& at(unsigned int index) const
  {
    checkIndex(index);
    return mpPool[index];
  }
  /// The same as at(), checked.
  T& operator[](unsigned int index) { return at(index); }
  T const& operator[](unsigned int index) const { return at(index); }

  /// The first element. Without a pool, an empty array without terminator, it is null if `allowNull`,
  /// else an assertion fails.
  T* data(bool allowNull = false)
  {
    checkPool(allowNull);
    return mpPool;
  }
  T const* data(bool allowNull = false) const
  {
    checkPool(allowNull);
    return mpPool;
  }
  /// The element at `start`, after a check that `size` elements follow from there.
  T* data(unsigned int start, unsigned int iSize, bool allowNull = false)
  {
    return const_cast<T*>(static_cast<tArray const*>(this)->data(start, iSize, allowNull));
  }
  T const* data(unsigned int start, unsigned int iSize, bool allowNull = false) const
  {
    tBounds::startSize2End(mLength, start, iSize, "tArray", "data");
    checkPool(allowNull);
    return place(start);
  }

  /// Sets the length. The contents are undefined afterwards: they are lost whenever the pool is replaced, which
  /// with fit on erase is at every other size. After std::bad_alloc the array is empty.
  void setSize(unsigned int iSize);

  /// Puts one element behind the last. A store of element and terminator while the pool has room.
  void append(T const& value)
  {
    T const copy = value; // may live in the pool that is about to move
    unsigned int const end = mLength;
    if (__builtin_expect(end >= mCapacity, 0))
    {
      growForOne();
    }
    storeLast(mpPool + end, copy);
    mLength = end + 1;
  }
  /// Puts `iSize` elements behind the last. Null is an assertion failure unless `iSize` is 0.
  void append(T const* pData, unsigned int iSize);
  /// Puts `iSize` elements of undefined value behind the last and returns where they are, for a caller who writes them
  /// at once; null if the array is empty then and has no pool.
  T* extend(unsigned int iSize)
  {
    unsigned int const end = mLength;
    if (__builtin_expect(iSize > mCapacity - end, 0))
    {
      resizePool(cArrayMemory::addLengths(end, iSize), false);
    }
    T* const pPool = mpPool;
    mLength = end + iSize;
    if (Terminated)
    {
      pPool[end + iSize] = T();
      return pPool + end;
    }
    return pPool == nullptr ? nullptr : pPool + end;
  }
  /// Puts the characters of a zero-terminated text behind the last; null appends nothing.
  template <class U = T, tOnlyForChar<U> = 0>
  void append(char const* text)
  {
    append(text, cArrayMemory::textLength(text));
  }

  /// Puts `iSize` elements in front of the one at `position`. Errors: a position above the length is a
  /// value out of range. Null is an assertion failure unless `iSize` is 0.
  void insert(unsigned int position, T const* pData, unsigned int iSize);
  /// Puts the characters of a zero-terminated text in front of the one at `position`; null inserts nothing.
  template <class U = T, tOnlyForChar<U> = 0>
  void insert(unsigned int position, char const* text)
  {
    insert(position, text, cArrayMemory::textLength(text));
  }

  /// Removes the `iSize` elements from `start` on, then fits the pool.
  void erase(unsigned int start, unsigned int iSize);
  /// Removes the last `count` elements, then fits the pool. Errors: a count above the length is a size out of range.
  void erase(unsigned int count);
  /// Keeps the first `iLength` elements, then fits the pool. Errors: above the length it is a value out of range.
  void truncate(unsigned int iLength)
  {
    if (iLength <= mLength && !mFitOnErase && holdsSectorsFor(iLength))
    {
      mLength = iLength;
      terminate(iLength);
      return;
    }
    truncatePool(iLength);
  }
  /// Removes all elements and gives the pool back, whatever fit on erase says. Nothing happens to an empty array.
  void clear();
  /// Sets every element to `value`.
  void fill(T const& value);

  /// Searches the elements from `start` on, `iSize` of them; all that are left if `iSize` is 0 or above that.
  /// Returns the index of the first match and sets `found`; without a match the result means nothing. Null for the
  /// needle is never found, an empty needle at once. In a terminated array an element 0 in needle and data
  /// ends the comparison. Errors: a start behind the end.
  unsigned int find(T const* needle, unsigned int needleLength, bool& found, unsigned int start = 0,
                    unsigned int iSize = 0) const;

  /// Replaces each `needle` from `start` on and goes on behind the replacement. Nothing happens for an empty
  /// needle. Errors: a start behind the end. Cost: O(length), one allocation if something is found.
  void replace(T const* needle, unsigned int needleLength, T const* replacement, unsigned int replacementLength,
               unsigned int start = 0);
  /// Makes each element `from` a `to`, from `start` on. Nothing happens to an empty array. Errors: a start that is
  /// no index.
  void replace(T const& from, T const& to, unsigned int start = 0);

  /// Whether these are the contents; never for null. In a terminated array the comparison ends at an element 0.
  bool isEqual(T const* pData, unsigned int iLength) const;
  bool operator==(tArray const& other) const { return isSame(other.mpPool, other.mLength); }
  bool operator!=(tArray const& other) const { return !isSame(other.mpPool, other.mLength); }

  // as array proxy
  T const& proxyAt(unsigned int index) const override { return at(index); }
  unsigned int proxyLength() const override { return mLength; }
  void proxyCopyPartTo(T* target, unsigned int start, unsigned int iSize) const override;
  T const* proxyProvideData(unsigned int start, unsigned int iSize) const override;
  unsigned int proxyPreferredBlockSize() const override { return 0; }
  tAbstractConstArrayProxy<T> const* constProxyPhysical(unsigned int& offset) const override;
  T& proxyAt(unsigned int index) override { return at(index); }
  T* proxyProvideWriteableData(unsigned int start, unsigned int iSize) override;
  void proxyPatchData(unsigned int start, unsigned int iSize, T const* source) override;
  void proxySetSize(unsigned int iSize) override { setSize(iSize); }
  void proxyInsert(unsigned int position, T const* source, unsigned int iSize) override
  {
    insert(position, source, iSize);
  }
  void proxyInsertDefaultObjects(unsigned int position, unsigned int iSize) override { openGap(position, iSize); }
  void proxyErase(unsigned int start, unsigned int iSize) override { erase(start, iSize); }
  tAbstractArrayProxy<T>* proxyPhysical(unsigned int& offset) override;

protected:
  /// `iSize`, or 1 for 0, rounded up to whole sectors; 0 if the sector size is 0. Errors: std::bad_alloc if 32 bits
  /// do not hold the result.
  unsigned int sizeToSectors(unsigned int iSize) const;
  /// Gives the pool room for `iSize` elements, in whole sectors without ever shrinking, or `exact`ly. The
  /// length stays; a terminator is written at `iSize`.
  void resizePool(unsigned int iSize, bool exact);
  /// Frees the pool and leaves the object without one: only for destruction, or before a new pool is set up.
  void destroy() noexcept;

private:
  /// Array of undefined contents with the settings of another.
  tArray(tArray const& settings, unsigned int iLength, unsigned int iCapacity);
  void checkIndex(unsigned int index) const
  {
    if (__builtin_expect(index >= mLength, 0))
    {
      tBounds::throwIndexOutOfRange("tArray", "at", index, mLength);
    }
  }
  void checkPool(bool allowNull) const
  {
    if (__builtin_expect(mpPool == nullptr, 0) && !allowNull)
    {
      cSTDExceptions::throwAssertionFailed("mpPool != 0", "std/tArray", __LINE__);
    }
  }
  static void checkSource(T const* pData, unsigned int iSize)
  {
    if (__builtin_expect(pData == nullptr, 0) && iSize != 0)
    {
      cSTDExceptions::throwAssertionFailed("pData != 0", "std/tArray", __LINE__);
    }
  }
  T* place(unsigned int index) { return mpPool == nullptr ? nullptr : mpPool + index; }
  T const* place(unsigned int index) const { return mpPool == nullptr ? nullptr : mpPool + index; }
  static void move(T* target, T const* source, unsigned int count)
  {
    if (count != 0)
    {
      memmove(static_cast<void*>(target), source, static_cast<size_t>(count) * sizeof(T));
    }
  }
  /// Writes an element and, where there is one, the terminator behind it.
  static void storeLast(T* place, T const& value)
  {
#if __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__
    if constexpr (Terminated != 0)
    {
      piUInt16 const both = static_cast<unsigned char>(value); // one store instead of two
      memcpy(place, &both, sizeof(both));
      return;
    }
#endif
    *place = value;
    if (Terminated)
    {
      place[1] = T();
    }
  }
  void terminate(unsigned int index)
  {
    if (Terminated)
    {
      mpPool[index] = T();
    }
  }
  /// Elements of the block behind a pool of that capacity.
  static unsigned long long poolElements(unsigned int iCapacity)
  {
    return iCapacity == 0 ? 0 : static_cast<unsigned long long>(iCapacity) + Terminated;
  }
  unsigned int wantedCapacity(unsigned int iSize, bool exact) const;
  /// Whether the pool has the whole sectors that `iSize` elements want, so that it may stay.
  bool holdsSectorsFor(unsigned int iSize) const
  {
    unsigned int const shift = mGrowStep & 0xFF;
    unsigned long long const mask = (1ull << (shift & 31)) - 1;
    return shift < 32 && (((iSize == 0 ? 1 : iSize) + mask) & ~mask) <= mCapacity;
  }
  void truncatePool(unsigned int iLength);
  void setCapacity(unsigned int iCapacity);
  void growForOne();
  /// Index of `pData` in the own pool, or a negative number if it points elsewhere.
  long long indexInPool(T const* pData) const;
  void openGap(unsigned int position, unsigned int iSize);
  /// Makes room that shortenTo() may want, so that it can't fail any more.
  void prepareShorten(unsigned int iLength);
  void shortenTo(unsigned int iLength);
  unsigned int findFrom(T const* needle, unsigned int needleLength, bool& found, unsigned int start,
                        unsigned int end) const;
  bool isSame(T const* pData, unsigned int iLength) const;

  T* mpPool;
  unsigned int mCapacity;
  unsigned int mGrowStep;
  unsigned int mLength;
  bool mFitOnErase;
};

// ---------------------------------------------------------------------------------------------------------------------

template <class T, class Traits>
tArray<T, Traits>::tArray(unsigned int iLength)
    : mpPool(nullptr), mCapacity(0), mGrowStep(DefaultGrowStep), mLength(0), mFitOnErase(true)
{
  resizePool(iLength, false);
  mLength = iLength;
}

template <class T, class Traits>
tArray<T, Traits>::tArray(tArray const& other)
    : tAbstractArrayProxy<T>(other), mpPool(nullptr), mCapacity(0), mGrowStep(other.mGrowStep), mLength(0),
      mFitOnErase(other.mFitOnErase)
{
  resizePool(other.mLength, false);
  move(mpPool, other.mpPool, other.mLength);
  mLength = other.mLength;
}

template <class T, class Traits>
tArray<T, Traits>::tArray(tArray&& other) : tArray(0u)
{
  swap(other);
}

template <class T, class Traits>
tArray<T, Traits>& tArray<T, Traits>::operator=(tArray const& other)
{
  tArray copy(other);
  swap(copy);
  return *this;
}

template <class T, class Traits>
tArray<T, Traits>& tArray<T, Traits>::operator=(tArray&& other) noexcept
{
  swap(other);
  return *this;
}

template <class T, class Traits>
void tArray<T, Traits>::swap(tArray& other) noexcept
{
  T* const pPool = mpPool;
  unsigned int const iCapacity = mCapacity;
  unsigned int const iGrowStep = mGrowStep;
  unsigned int const iLength = mLength;
  bool const fit = mFitOnErase;
  mpPool = other.mpPool;
  mCapacity = other.mCapacity;
  mGrowStep = other.mGrowStep;
  mLength = other.mLength;
  mFitOnErase = other.mFitOnErase;
  other.mpPool = pPool;
  other.mCapacity = iCapacity;
  other.mGrowStep = iGrowStep;
  other.mLength = iLength;
  other.mFitOnErase = fit;
}

template <class T, class Traits>
void tArray<T, Traits>::setSize(unsigned int iSize)
{
  mLength = 0;
  terminate(0);
  unsigned int const wanted = wantedCapacity(iSize, mFitOnErase);
  if (wanted > mCapacity || (mFitOnErase && wanted < mCapacity))
  {
    mpPool = static_cast<T*>(cArrayMemory::replace(mpPool, poolElements(mCapacity), poolElements(wanted),
                                                   static_cast<unsigned int>(sizeof(T))));
    mCapacity = wanted;
  }
  mLength = iSize;
  terminate(iSize);
}

template <class T, class Traits>
void tArray<T, Traits>::append(T const* pData, unsigned int iSize)
{
  checkSource(pData, iSize);
  if (iSize <= mCapacity - mLength)
  {
    move(place(mLength), pData, iSize);
  }
  else
  {
    long long const own = indexInPool(pData);
    resizePool(cArrayMemory::addLengths(mLength, iSize), false);
    move(mpPool + mLength, own < 0 ? pData : mpPool + own, iSize);
  }
  mLength += iSize;
  terminate(mLength);
}

template <class T, class Traits>
void tArray<T, Traits>::insert(unsigned int position, T const* pData, unsigned int iSize)
{
  checkSource(pData, iSize);
  long long const own = indexInPool(pData);
  openGap(position, iSize);
  if (own < 0)
  {
    move(place(position), pData, iSize);
    return;
  }
  // what stood behind the position has moved up with the gap
  unsigned int const start = static_cast<unsigned int>(own);
  unsigned int const before = start >= position ? 0 : (iSize < position - start ? iSize : position - start);
  move(mpPool + position, mpPool + start, before);
  move(mpPool + position + before, mpPool + start + before + iSize, iSize - before);
}

template <class T, class Traits>
void tArray<T, Traits>::erase(unsigned int start, unsigned int iSize)
{
  unsigned int const end = tBounds::startSize2End(mLength, start, iSize, "tArray", "erase");
  prepareShorten(mLength - iSize);
  move(place(start), place(end), mLength - end);
  shortenTo(mLength - iSize);
}

template <class T, class Traits>
void tArray<T, Traits>::erase(unsigned int count)
{
  if (count > mLength)
  {
    tBounds::throwSizeOutOfRange("tArray", "erase", count, mLength);
  }
  prepareShorten(mLength - count);
  shortenTo(mLength - count);
}

template <class T, class Traits>
void tArray<T, Traits>::truncatePool(unsigned int iLength)
{
  if (iLength > mLength)
  {
    tBounds::throwValueOutOfRange("tArray", "truncate", iLength, mLength);
  }
  prepareShorten(iLength);
  shortenTo(iLength);
}

template <class T, class Traits>
void tArray<T, Traits>::clear()
{
  if (mLength != 0)
  {
    mLength = 0;
    resizePool(0, true);
  }
}

template <class T, class Traits>
void tArray<T, Traits>::fill(T const& value)
{
  T const copy = value;
  if (sizeof(T) == 1 && mLength != 0)
  {
    unsigned char byte;
    memcpy(&byte, &copy, 1);
    memset(static_cast<void*>(mpPool), byte, mLength);
    return;
  }
  for (unsigned int i = 0; i < mLength; ++i)
  {
    mpPool[i] = copy;
  }
}

template <class T, class Traits>
unsigned int tArray<T, Traits>::find(T const* needle, unsigned int needleLength, bool& found, unsigned int start,
                                     unsigned int iSize) const
{
  found = false;
  unsigned int const left = start < mLength ? mLength - start : 0;
  if (iSize == 0 || iSize > left)
  {
    iSize = left;
  }
  unsigned int const end = tBounds::startSize2End(mLength, start, iSize, "tArray", "find");
  return findFrom(needle, needleLength, found, start, end);
}

template <class T, class Traits>
unsigned int tArray<T, Traits>::findFrom(T const* needle, unsigned int needleLength, bool& found, unsigned int start,
                                         unsigned int end) const
{
  found = false;
  if (mpPool == nullptr || needle == nullptr || end - start < needleLength)
  {
    return start;
  }
  unsigned int count = end - start;
  if (Terminated)
  {
    // Comparison ends at a zero, so what the needle has behind one does not matter; but it has to find room.
    void const* const zero = needleLength == 0 ? nullptr : memchr(needle, 0, needleLength);
    if (zero != nullptr)
    {
      unsigned int const compared = static_cast<unsigned int>(static_cast<T const*>(zero) - needle) + 1;
      count -= needleLength - compared;
      needleLength = compared;
    }
  }
  void const* const match =
      cArrayMemory::findElements(mpPool + start, count, needle, needleLength, static_cast<unsigned int>(sizeof(T)));
  if (match == nullptr)
  {
    return start;
  }
  found = true;
  return static_cast<unsigned int>(static_cast<T const*>(match) - mpPool);
}

template <class T, class Traits>
void tArray<T, Traits>::replace(T const* needle, unsigned int needleLength, T const* replacement,
                                unsigned int replacementLength, unsigned int start)
{
  if (needleLength == 0)
  {
    return;
  }
  if (replacement == nullptr)
  {
    replacementLength = 0;
  }
  bool found;
  unsigned int const first = find(needle, needleLength, found, start);
  if (!found)
  {
    return;
  }
  unsigned long long newLength = mLength;
  for (unsigned int at = first; found; at = findFrom(needle, needleLength, found, at + needleLength, mLength))
  {
    newLength = newLength - needleLength + replacementLength;
  }
  if (newLength > 0xFFFFFFFFull)
  {
    cSTDExceptions::throwBadAlloc();
  }
  unsigned int const length = static_cast<unsigned int>(newLength);
  // The pool ends as a row of single erases and inserts would leave it.
  unsigned int iCapacity = wantedCapacity(length, mFitOnErase && replacementLength == 0);
  if (!mFitOnErase)
  {
    unsigned int const once = wantedCapacity(mLength - needleLength + replacementLength, false);
    iCapacity = iCapacity < once ? once : iCapacity;
    iCapacity = iCapacity < mCapacity ? mCapacity : iCapacity;
  }
  tArray result(*this, length, iCapacity);
  unsigned int from = 0;
  unsigned int to = 0;
  unsigned int at = first;
  do
  {
    move(result.place(to), mpPool + from, at - from);
    to += at - from;
    move(result.place(to), replacement, replacementLength);
    to += replacementLength;
    from = at + needleLength;
    at = findFrom(needle, needleLength, found, from, mLength);
  } while (found);
  move(result.place(to), mpPool + from, mLength - from);
  swap(result);
}

template <class T, class Traits>
void tArray<T, Traits>::replace(T const& from, T const& to, unsigned int start)
{
  if (mLength == 0)
  {
    return;
  }
  if (start >= mLength)
  {
    tBounds::throwIndexOutOfRange("tArray", "replace", start, mLength);
  }
  T const wanted = from;
  T const value = to;
  for (unsigned int i = start; i < mLength; ++i)
  {
    if (memcmp(&mpPool[i], &wanted, sizeof(T)) == 0)
    {
      mpPool[i] = value;
    }
  }
}

template <class T, class Traits>
bool tArray<T, Traits>::isEqual(T const* pData, unsigned int iLength) const
{
  return pData != nullptr && isSame(pData, iLength);
}

template <class T, class Traits>
bool tArray<T, Traits>::isSame(T const* pData, unsigned int iLength) const
{
  if (iLength != mLength)
  {
    return false;
  }
  if (mLength == 0)
  {
    return true;
  }
  if (Terminated)
  {
    return strncmp(reinterpret_cast<char const*>(mpPool), reinterpret_cast<char const*>(pData), mLength) == 0;
  }
  return memcmp(mpPool, pData, static_cast<size_t>(mLength) * sizeof(T)) == 0;
}

template <class T, class Traits>
void tArray<T, Traits>::proxyCopyPartTo(T* target, unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tArray", "copyPartTo");
  move(target, place(start), iSize);
}

template <class T, class Traits>
T const* tArray<T, Traits>::proxyProvideData(unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tArray", "provideData");
  checkPool(false);
  return mpPool + start;
}

template <class T, class Traits>
tAbstractConstArrayProxy<T> const* tArray<T, Traits>::constProxyPhysical(unsigned int& offset) const
{
  offset = 0;
  return this;
}

template <class T, class Traits>
T* tArray<T, Traits>::proxyProvideWriteableData(unsigned int start, unsigned int iSize)
{
  tBounds::startSize2End(mLength, start, iSize, "tArray", "proxyProvideWriteableData");
  checkPool(false);
  return mpPool + start;
}

template <class T, class Traits>
void tArray<T, Traits>::proxyPatchData(unsigned int start, unsigned int iSize, T const* source)
{
  tBounds::startSize2End(mLength, start, iSize, "tArray", "proxyPatchData");
  move(place(start), source, iSize);
}

template <class T, class Traits>
tAbstractArrayProxy<T>* tArray<T, Traits>::proxyPhysical(unsigned int& offset)
{
  offset = 0;
  return this;
}

template <class T, class Traits>
unsigned int tArray<T, Traits>::sizeToSectors(unsigned int iSize) const
{
  unsigned int const shift = mGrowStep & 0xFFu;
  if (shift >= 32)
  {
    return 0;
  }
  unsigned int const mask = (1u << shift) - 1;
  return cArrayMemory::addLengths(iSize == 0 ? 1 : iSize, mask) & ~mask;
}

template <class T, class Traits>
unsigned int tArray<T, Traits>::wantedCapacity(unsigned int iSize, bool exact) const
{
  if (iSize == 0 && !Terminated)
  {
    return 0;
  }
  unsigned int const wanted = exact ? 0 : sizeToSectors(iSize);
  if (wanted != 0)
  {
    return wanted;
  }
  return iSize == 0 ? 1 : iSize;
}

template <class T, class Traits>
void tArray<T, Traits>::setCapacity(unsigned int iCapacity)
{
  mpPool = static_cast<T*>(cArrayMemory::resize(mpPool, poolElements(mCapacity), poolElements(iCapacity),
                                                static_cast<unsigned int>(sizeof(T))));
  mCapacity = iCapacity;
}

template <class T, class Traits>
void tArray<T, Traits>::resizePool(unsigned int iSize, bool exact)
{
  unsigned int const wanted = wantedCapacity(iSize, exact);
  if (wanted > mCapacity || (exact && wanted < mCapacity))
  {
    setCapacity(wanted);
  }
  terminate(iSize);
}

template <class T, class Traits>
void tArray<T, Traits>::destroy() noexcept
{
  cArrayMemory::release(mpPool);
  mpPool = nullptr;
  mCapacity = 0;
  mLength = 0;
}

template <class T, class Traits>
tArray<T, Traits>::tArray(tArray const& settings, unsigned int iLength, unsigned int iCapacity)
    : mpPool(nullptr), mCapacity(0), mGrowStep(settings.mGrowStep), mLength(iLength), mFitOnErase(settings.mFitOnErase)
{
  setCapacity(iCapacity);
  terminate(iLength);
}

template <class T, class Traits>
__attribute__((noinline)) void tArray<T, Traits>::growForOne()
{
  setCapacity(wantedCapacity(cArrayMemory::addLengths(mLength, 1), false));
}

template <class T, class Traits>
long long tArray<T, Traits>::indexInPool(T const* pData) const
{
  piAddress const at = reinterpret_cast<piAddress>(pData);
  piAddress const begin = reinterpret_cast<piAddress>(mpPool);
  if (mpPool == nullptr || at < begin || (at - begin) / sizeof(T) >= static_cast<piAddress>(mLength) + Terminated)
  {
    return -1;
  }
  return static_cast<long long>((at - begin) / sizeof(T));
}

template <class T, class Traits>
void tArray<T, Traits>::openGap(unsigned int position, unsigned int iSize)
{
  if (position > mLength)
  {
    tBounds::throwValueOutOfRange("tArray", "insert", position, mLength);
  }
  unsigned int const newLength = cArrayMemory::addLengths(mLength, iSize);
  resizePool(newLength, false);
  if (mpPool != nullptr)
  {
    move(mpPool + position + iSize, mpPool + position, mLength - position);
  }
  mLength = newLength;
}

template <class T, class Traits>
void tArray<T, Traits>::prepareShorten(unsigned int iLength)
{
  unsigned int const wanted = wantedCapacity(iLength, mFitOnErase);
  if (wanted > mCapacity)
  {
    setCapacity(wanted);
  }
}

template <class T, class Traits>
void tArray<T, Traits>::shortenTo(unsigned int iLength)
{
  mLength = iLength;
  resizePool(iLength, mFitOnErase);
}

extern template class MORTISE_API tArray<char, tArrayAsciiStringTraits<char>>;
extern template class MORTISE_API tArray<char, tArrayByteLevelTraits<char>>;
extern template class MORTISE_API tArray<unsigned int, tArrayByteLevelTraits<unsigned int>>;
extern template class MORTISE_API tArray<unsigned short, tArrayByteLevelTraits<unsigned short>>;

/// Writes the grow step and the contents, as one block. Fit on erase does not travel.
MORTISE_API msa::cAbstractSerializer& operator>>(tArray<char> const& array, msa::cAbstractSerializer& serializer);
/// Reads into a fresh array and takes that over; a failure leaves `array` as it was.
MORTISE_API msa::cAbstractDeserializer& operator<<(tArray<char>& array, msa::cAbstractDeserializer& deserializer);
} // namespace mstd

#endif
