#ifndef MORTISE_STD_TARRAYREF_H
#define MORTISE_STD_TARRAYREF_H

#include "std/tAbstractArrayProxy.h"
#include "std/tConstArrayRef.h"

#include <type_traits>

namespace mstd
{
/// View for reading and writing on a part of anything that is an array proxy.
///
/// What the view inserts or removes is inserted in or removed from the target, and the view's length follows. Other
/// views of the target are not adjusted.
///
/// Ownership: does not keep its target alive; the target has to outlive the view.
/// Errors:    places outside of the view raise cOutOfRangeException or cOutOfBoundsException; besides, what the target
///            raises. A failure leaves the view as it was.
/// Cost:      making and copying a view is O(1); changes cost what the target takes.
template <class T, class Traits>
class MORTISE_API tArrayRef : public tAbstractArrayProxy<T>
{
  template <class U>
  using tOnlyForChar = typename std::enable_if<std::is_same<U, char>::value, int>::type;

public:
  typedef T value_type;

  /// View that is not set, of length 0.
  tArrayRef() : mpData(nullptr), mStart(0), mLength(0), mBlockSize(0) {}
  tArrayRef(tArrayRef const&) = default;
  /// View on all of `proxy`.
  tArrayRef(tAbstractArrayProxy<T>& proxy) : tArrayRef() { set(proxy); }
  /// View on `proxy` from `start` to its end.
  tArrayRef(tAbstractArrayProxy<T>& proxy, unsigned int start) : tArrayRef() { set(proxy, start); }
  /// View on the `iSize` elements of `proxy` from `start` on.
  tArrayRef(tAbstractArrayProxy<T>& proxy, unsigned int start, unsigned int iSize) : tArrayRef()
  {
    set(proxy, start, iSize);
  }
  ~tArrayRef() override {}

  /// Refers to the same elements as `other`; touches no data.
  tArrayRef& operator=(tArrayRef const&) = default;
  void swap(tArrayRef& other) noexcept;

  /// Refers to the `iSize` elements of `proxy` from `start` on. Errors: the range is not within `proxy` (container
  /// "tConstArrayRef", the name that both views share here); the view stays as it was.
  void set(tAbstractArrayProxy<T>& proxy, unsigned int start, unsigned int iSize);
  /// Refers to all that `proxy` has from `start` on. Errors: a start behind the end is a size out of range.
  void set(tAbstractArrayProxy<T>& proxy, unsigned int start = 0);
  /// Makes the view unset and empty; touches no data.
  void clear();
  /// Whether the view refers to something.
  bool isSet() const { return mpData != nullptr; }

  unsigned int length() const { return mLength; }
  /// The same as length().
  unsigned int size() const { return mLength; }
  bool empty() const { return mLength == 0; }
  /// One element; valid until the next access or change. Errors: cOutOfRangeException.
  T& at(unsigned int index)
  {
    checkIndex(index);
    return mpData->proxyAt(mStart + index);
  }
  T const& at(unsigned int index) const
  {
    checkIndex(index);
    return static_cast<tAbstractArrayProxy<T> const*>(mpData)->proxyAt(mStart + index);
  }
  /// The same as at(), checked.
  T& operator[](unsigned int index) { return at(index); }
  T const& operator[](unsigned int index) const { return at(index); }

  /// Puts a zero-terminated text behind the last element of the view. Null, or a view that is not set, is an assertion
  /// failure.
  template <class U = T, tOnlyForChar<U> = 0>
  void append(char const* pData)
  {
    checkAppend(pData);
    append(pData, cArrayMemory::textLength(pData));
  }
  /// Puts one element behind the last of the view. A view that is not set is an assertion failure.
  void append(T const& value);
  /// Puts `iSize` elements behind the last of the view. Null, or a view that is not set, is an assertion failure.
  void append(T const* pData, unsigned int iSize);
  /// Removes the `iSize` elements from `start` on. A view that is not set is an assertion failure.
  void erase(unsigned int start, unsigned int iSize);
  /// Keeps the first `iLength` elements. Returns at once for an empty view. Errors: a length that is not below the
  /// present one is an index out of range.
  void truncate(unsigned int iLength);

  /// As tConstArrayRef::find().
  unsigned int find(T const* needle, unsigned int needleLength, bool& found, unsigned int start = 0,
                    unsigned int iSize = 0) const;

  // as array proxy
  T const& proxyAt(unsigned int index) const override { return at(index); }
  unsigned int proxyLength() const override { return mLength; }
  void proxyCopyPartTo(T* target, unsigned int start, unsigned int iSize) const override;
  /// Null only for a view that is not set.
  T const* proxyProvideData(unsigned int start, unsigned int iSize) const override;
  unsigned int proxyPreferredBlockSize() const override { return mBlockSize; }
  tAbstractConstArrayProxy<T> const* constProxyPhysical(unsigned int& offset) const override;
  T& proxyAt(unsigned int index) override { return at(index); }
  T* proxyProvideWriteableData(unsigned int start, unsigned int iSize) override;
  void proxyPatchData(unsigned int start, unsigned int iSize, T const* source) override;
  /// Removes from, or inserts elements of undefined value at, the end of the view; the others stay.
  void proxySetSize(unsigned int iSize) override;
  void proxyInsert(unsigned int position, T const* source, unsigned int iSize) override;
  void proxyInsertDefaultObjects(unsigned int position, unsigned int iSize) override;
  void proxyErase(unsigned int start, unsigned int iSize) override { erase(start, iSize); }
  tAbstractArrayProxy<T>* proxyPhysical(unsigned int& offset) override;

private:
  void checkIndex(unsigned int index) const
  {
    if (__builtin_expect(index >= mLength, 0))
    {
      tBounds::throwIndexOutOfRange("tArrayRef", "at", index, mLength);
    }
  }
  void checkTarget() const
  {
    if (mpData == nullptr)
    {
      cSTDExceptions::throwAssertionFailed("mpData != 0", "std/tArrayRef", __LINE__);
    }
  }
  void checkAppend(T const* pData) const
  {
    checkTarget();
    if (pData == nullptr)
    {
      cSTDExceptions::throwAssertionFailed("pData != 0", "std/tArrayRef", __LINE__);
    }
  }
  void checkInsert(unsigned int position) const
  {
    if (position > mLength)
    {
      tBounds::throwValueOutOfRange("tArrayRef", "insert", position, mLength);
    }
    checkTarget();
  }

  tAbstractArrayProxy<T>* mpData;
  unsigned int mStart;
  unsigned int mLength;
  unsigned int mBlockSize;
};

// ---------------------------------------------------------------------------------------------------------------------

template <class T, class Traits>
void tArrayRef<T, Traits>::swap(tArrayRef& other) noexcept
{
  tArrayRef const copy(other);
  other = *this;
  *this = copy;
}

template <class T, class Traits>
void tArrayRef<T, Traits>::set(tAbstractArrayProxy<T>& proxy, unsigned int start, unsigned int iSize)
{
  tBounds::startSize2End(proxy.proxyLength(), start, iSize, "tConstArrayRef", "set");
  unsigned int offset = 0;
  tAbstractArrayProxy<T>* const pData = proxy.proxyPhysical(offset);
  unsigned int const blockSize = pData == nullptr ? 0 : pData->proxyPreferredBlockSize();
  mpData = pData;
  mStart = offset + start;
  mLength = iSize;
  mBlockSize = blockSize;
}

template <class T, class Traits>
void tArrayRef<T, Traits>::set(tAbstractArrayProxy<T>& proxy, unsigned int start)
{
  unsigned int const total = proxy.proxyLength();
  if (start > total)
  {
    tBounds::throwSizeOutOfRange("tConstArrayRef", "set", start, total);
  }
  set(proxy, start, total - start);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::clear()
{
  *this = tArrayRef();
}

template <class T, class Traits>
void tArrayRef<T, Traits>::append(T const& value)
{
  checkAppend(&value);
  append(&value, 1);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::append(T const* pData, unsigned int iSize)
{
  checkAppend(pData);
  unsigned int const newLength = cArrayMemory::addLengths(mLength, iSize);
  mpData->proxyInsert(mStart + mLength, pData, iSize);
  set(*mpData, mStart, newLength);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::erase(unsigned int start, unsigned int iSize)
{
  tBounds::startSize2End(mLength, start, iSize, "tArrayRef", "erase");
  checkTarget();
  mpData->proxyErase(mStart + start, iSize);
  set(*mpData, mStart, mLength - iSize);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::truncate(unsigned int iLength)
{
  if (mLength == 0)
  {
    return;
  }
  if (iLength >= mLength)
  {
    tBounds::throwIndexOutOfRange("tArrayRef", "truncate", iLength, mLength);
  }
  erase(iLength, mLength - iLength);
}

template <class T, class Traits>
unsigned int tArrayRef<T, Traits>::find(T const* needle, unsigned int needleLength, bool& found, unsigned int start,
                                        unsigned int iSize) const
{
  return tConstArrayRef<T, Traits>(*this).find(needle, needleLength, found, start, iSize);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::proxyCopyPartTo(T* target, unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tArrayRef", "copyPartTo");
  if (mpData != nullptr)
  {
    mpData->proxyCopyPartTo(target, mStart + start, iSize);
  }
}

template <class T, class Traits>
T const* tArrayRef<T, Traits>::proxyProvideData(unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tArrayRef", "provideData");
  return mpData == nullptr ? nullptr : mpData->proxyProvideData(mStart + start, iSize);
}

template <class T, class Traits>
tAbstractConstArrayProxy<T> const* tArrayRef<T, Traits>::constProxyPhysical(unsigned int& offset) const
{
  offset = mStart;
  return mpData;
}

template <class T, class Traits>
T* tArrayRef<T, Traits>::proxyProvideWriteableData(unsigned int start, unsigned int iSize)
{
  tBounds::startSize2End(mLength, start, iSize, "tArrayRef", "proxyProvideWriteableData");
  return mpData == nullptr ? nullptr : mpData->proxyProvideWriteableData(mStart + start, iSize);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::proxyPatchData(unsigned int start, unsigned int iSize, T const* source)
{
  tBounds::startSize2End(mLength, start, iSize, "tArrayRef", "proxyPatchData");
  if (mpData != nullptr)
  {
    mpData->proxyPatchData(mStart + start, iSize, source);
  }
}

template <class T, class Traits>
void tArrayRef<T, Traits>::proxySetSize(unsigned int iSize)
{
  if (iSize < mLength)
  {
    erase(iSize, mLength - iSize);
  }
  else if (iSize > mLength)
  {
    proxyInsertDefaultObjects(mLength, iSize - mLength);
  }
}

template <class T, class Traits>
void tArrayRef<T, Traits>::proxyInsert(unsigned int position, T const* source, unsigned int iSize)
{
  checkInsert(position);
  unsigned int const newLength = cArrayMemory::addLengths(mLength, iSize);
  mpData->proxyInsert(mStart + position, source, iSize);
  set(*mpData, mStart, newLength);
}

template <class T, class Traits>
void tArrayRef<T, Traits>::proxyInsertDefaultObjects(unsigned int position, unsigned int iSize)
{
  checkInsert(position);
  unsigned int const newLength = cArrayMemory::addLengths(mLength, iSize);
  mpData->proxyInsertDefaultObjects(mStart + position, iSize);
  set(*mpData, mStart, newLength);
}

template <class T, class Traits>
tAbstractArrayProxy<T>* tArrayRef<T, Traits>::proxyPhysical(unsigned int& offset)
{
  offset = mStart;
  return mpData;
}

extern template class MORTISE_API tArrayRef<char, tArrayByteLevelTraits<char>>;
} // namespace mstd

#endif
