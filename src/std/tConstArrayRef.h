#ifndef MORTISE_STD_TCONSTARRAYREF_H
#define MORTISE_STD_TCONSTARRAYREF_H

#include "std/cArrayMemory.h"
#include "std/cSTDExceptions.h"
#include "std/tAbstractConstArrayProxy.h"
#include "std/tArrayTraits.h"
#include "std/tBounds.h"

#include <string.h>

namespace mstd
{
/// Searches `iSize` elements from `start` on of a proxy whose data is best visited in blocks of `blockSize`, 0 for
/// any size. A window is never larger than the block or the needle, so the memory that a search of a
/// device needs is bounded, and windows overlap, so a match across a border is seen. Returns the index in the
/// proxy and sets `found`.
template <class T>
unsigned int findInProxy(tAbstractConstArrayProxy<T> const& proxy, unsigned int blockSize, T const* needle,
                         unsigned int needleLength, bool& found, unsigned int start, unsigned int iSize)
{
  found = false;
  if (needle == nullptr || needleLength == 0)
  {
    return start;
  }
  unsigned int const limit = blockSize == 0 ? iSize : (needleLength < blockSize ? blockSize : needleLength);
  unsigned int position = start;
  for (unsigned int left = iSize; left >= needleLength;)
  {
    unsigned int const window = left < limit ? left : limit;
    T const* const pData = proxy.proxyProvideData(position, window);
    void const* const match =
        cArrayMemory::findElements(pData, window, needle, needleLength, static_cast<unsigned int>(sizeof(T)));
    if (match != nullptr)
    {
      found = true;
      return position + static_cast<unsigned int>(static_cast<T const*>(match) - pData);
    }
    unsigned int const step = window - needleLength + 1;
    position += step;
    left -= step;
  }
  return start;
}

/// View for reading on a part of anything that is an array proxy.
///
/// A view of a view refers straight to the storage, so chains never form. It holds the proxy and not its pool:
/// what happens to the contents is seen, also after the pool has moved.
///
/// Ownership: does not keep its target alive; the target has to outlive the view.
/// Errors:    places outside of the view raise cOutOfRangeException or cOutOfBoundsException; when the target has
///            become shorter than the view, the target raises them.
/// Cost:      making and copying a view is O(1); nothing is copied.
template <class T, class Traits>
class MORTISE_API tConstArrayRef : public tAbstractConstArrayProxy<T>
{
public:
  typedef T value_type;

  /// View that is not set, of length 0.
  tConstArrayRef() : mpData(nullptr), mStart(0), mLength(0), mBlockSize(0) {}
  tConstArrayRef(tConstArrayRef const&) = default;
  /// View on all of `proxy`.
  tConstArrayRef(tAbstractConstArrayProxy<T> const& proxy) : tConstArrayRef() { set(proxy); }
  /// View on `proxy` from `start` to its end.
  tConstArrayRef(tAbstractConstArrayProxy<T> const& proxy, unsigned int start) : tConstArrayRef() { set(proxy, start); }
  /// View on the `iSize` elements of `proxy` from `start` on.
  tConstArrayRef(tAbstractConstArrayProxy<T> const& proxy, unsigned int start, unsigned int iSize) : tConstArrayRef()
  {
    set(proxy, start, iSize);
  }
  ~tConstArrayRef() override {}

  /// Refers to the same elements as `other`; touches no data.
  tConstArrayRef& operator=(tConstArrayRef const&) = default;
  void swap(tConstArrayRef& other) noexcept;

  /// Refers to the `iSize` elements of `proxy` from `start` on. The view may be part of itself. Errors: the range is
  /// not within `proxy`; the view stays as it was.
  void set(tAbstractConstArrayProxy<T> const& proxy, unsigned int start, unsigned int iSize);
  /// Refers to all that `proxy` has from `start` on. Errors: a start behind the end is a size out of range.
  void set(tAbstractConstArrayProxy<T> const& proxy, unsigned int start = 0);
  /// Makes the view unset and empty; touches no data.
  void clear();
  /// Whether the view refers to something.
  bool isSet() const { return mpData != nullptr; }

  unsigned int length() const { return mLength; }
  /// The same as length().
  unsigned int size() const { return mLength; }
  bool empty() const { return mLength == 0; }
  /// One element; valid until the next access or change. Errors: cOutOfRangeException.
  T const& at(unsigned int index) const
  {
    if (__builtin_expect(index >= mLength, 0))
    {
      tBounds::throwIndexOutOfRange("tArrayRef", "at", index, mLength);
    }
    return mpData->proxyAt(mStart + index);
  }
  /// The same as at(), checked.
  T const& operator[](unsigned int index) const { return at(index); }

  /// Searches the elements from `start` on, `iSize` of them; all that are left if `iSize` is 0 or above that.
  /// Returns the index of the first match and sets `found`; without a match the result means nothing. A needle that is
  /// empty or null is not found. Errors: a start behind the end.
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

private:
  tAbstractConstArrayProxy<T> const* mpData;
  unsigned int mStart;
  unsigned int mLength;
  unsigned int mBlockSize;
};

// ---------------------------------------------------------------------------------------------------------------------

template <class T, class Traits>
void tConstArrayRef<T, Traits>::swap(tConstArrayRef& other) noexcept
{
  tConstArrayRef const copy(other);
  other = *this;
  *this = copy;
}

template <class T, class Traits>
void tConstArrayRef<T, Traits>::set(tAbstractConstArrayProxy<T> const& proxy, unsigned int start, unsigned int iSize)
{
  tBounds::startSize2End(proxy.proxyLength(), start, iSize, "tConstArrayRef", "set");
  unsigned int offset = 0;
  tAbstractConstArrayProxy<T> const* const pData = proxy.constProxyPhysical(offset);
  unsigned int const blockSize = pData == nullptr ? 0 : pData->proxyPreferredBlockSize();
  mpData = pData;
  mStart = offset + start;
  mLength = iSize;
  mBlockSize = blockSize;
}

template <class T, class Traits>
void tConstArrayRef<T, Traits>::set(tAbstractConstArrayProxy<T> const& proxy, unsigned int start)
{
  unsigned int const total = proxy.proxyLength();
  if (start > total)
  {
    tBounds::throwSizeOutOfRange("tConstArrayRef", "set", start, total);
  }
  set(proxy, start, total - start);
}

template <class T, class Traits>
void tConstArrayRef<T, Traits>::clear()
{
  *this = tConstArrayRef();
}

template <class T, class Traits>
unsigned int tConstArrayRef<T, Traits>::find(T const* needle, unsigned int needleLength, bool& found,
                                             unsigned int start, unsigned int iSize) const
{
  found = false;
  if (mpData == nullptr)
  {
    return 0;
  }
  unsigned int const left = start < mLength ? mLength - start : 0;
  if (iSize == 0 || iSize > left)
  {
    iSize = left;
  }
  tBounds::startSize2End(mLength, start, iSize, "tConstArrayRef", "find");
  return findInProxy(*mpData, mBlockSize, needle, needleLength, found, mStart + start, iSize) - mStart;
}

template <class T, class Traits>
void tConstArrayRef<T, Traits>::proxyCopyPartTo(T* target, unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tConstArrayRef", "copyPartTo");
  if (mpData != nullptr)
  {
    mpData->proxyCopyPartTo(target, mStart + start, iSize);
  }
}

template <class T, class Traits>
T const* tConstArrayRef<T, Traits>::proxyProvideData(unsigned int start, unsigned int iSize) const
{
  tBounds::startSize2End(mLength, start, iSize, "tConstArrayRef", "provideData");
  return mpData == nullptr ? nullptr : mpData->proxyProvideData(mStart + start, iSize);
}

template <class T, class Traits>
tAbstractConstArrayProxy<T> const* tConstArrayRef<T, Traits>::constProxyPhysical(unsigned int& offset) const
{
  offset = mStart;
  return mpData;
}

extern template class MORTISE_API tConstArrayRef<char, tArrayAsciiStringTraits<char>>;
extern template class MORTISE_API tConstArrayRef<char, tArrayByteLevelTraits<char>>;
} // namespace mstd

#endif
