#ifndef MORTISE_STD_TPTRVECTOR_H
#define MORTISE_STD_TPTRVECTOR_H

#include "std/tAutoPtr.h"
#include "std/tVector.h"

namespace mstd
{

/// Vector of pointers that releases, in the way of its type, what they lead to when an entry is removed.
///
/// Ownership: type() `Object` deletes through the destructor of `T`, `Array` with `delete[]`, `NotOwned` does nothing.
///            An entry may be null. When adding an owned pointer fails, the pointer stays the caller's.
/// Errors:    as tVector. A vector that owns cannot be copied: that raises cBugException.
template <class T>
class MORTISE_API tPtrVector : public tVector<T*>
{
public:
  explicit tPtrVector(tAutoPtrType::PointerType eType = tAutoPtrType::Object) noexcept : mType(eType) {}

  /// Copies the pointers of a vector that does not own. Any other: cBugException.
  tPtrVector(tPtrVector const& rSource) : tVector<T*>(copyable(rSource)), mType(rSource.mType) {}

  /// Releases what is still held, with the hook of this class: a class derived from this one with a hook of its own
  /// calls clear() in its own destructor.
  ~tPtrVector() override
  {
    // The base's destructor cannot reach this class's hook any more. Again, if an object that goes adds another one.
    while (!this->empty())
    {
      this->clear();
    }
  }

  tPtrVector& operator=(tPtrVector const& rSource)
  {
    if (this != &rSource)
    {
      tPtrVector copy(rSource);
      this->clear();
      swap(copy);
    }
    return *this;
  }

  tAutoPtrType::PointerType type() const noexcept { return mType; }

  using tVector<T*>::append;

  /// Takes the object over, also when this fails (it is then released). Its type has to be that of the vector.
  T*& append(tAutoPtr<T> pObject)
  {
    if (pObject.get() != nullptr && pObject.type() != mType)
    {
      cSTDExceptions::throwAssertionFailed("pObject.type() == mType", "std/tPtrVector", __LINE__);
    }
    T*& entry = tVector<T*>::append(pObject.get());
    pObject.release();
    return entry;
  }

  /// Makes the length `iSize`, with null for new entries. Entries that stay keep their order and pointers; those cut
  /// off are dropped without being released or notified: what they led to is the caller's from then on. The step is 10
  /// afterwards, whatever it was. References to entries become invalid.
  virtual void resize(unsigned int iSize);

  /// Exchanges entries and type.
  void swap(tPtrVector& rOther) noexcept
  {
    tVector<T*>::swap(rOther);
    std::swap(mType, rOther.mType);
  }

protected:
  /// Releases what the entry leads to, and clears the entry.
  void notifyElementRemoved(T*& rpElement) override { releaseElement(rpElement); }

private:
  static tPtrVector const& copyable(tPtrVector const& rSource)
  {
    if (rSource.mType != tAutoPtrType::NotOwned)
    {
      cSTDExceptions::throwAssertionFailed("mType == tAutoPtrType::NotOwned", "std/tPtrVector", __LINE__);
    }
    return rSource;
  }

  void releaseElement(T*& rpElement) const
  {
    static_assert(sizeof(T) > 0, "an owner needs the complete type of what it releases");
    if (mType == tAutoPtrType::NotOwned)
    {
      return;
    }
    T* const object = rpElement;
    // Cleared first: the destructor of the object may come back to this vector.
    rpElement = nullptr;
    if (mType == tAutoPtrType::Object)
    {
      delete object;
    }
    else
    {
      delete[] object;
    }
  }

  tAutoPtrType::PointerType mType;
};

template <class T>
inline void swap(tPtrVector<T>& rLeft, tPtrVector<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

// ---------------------------------------------------------------------------------------------------------------------

template <class T>
void tPtrVector<T>::resize(unsigned int iSize)
{
  tPtrVector temporary(tAutoPtrType::NotOwned);
  unsigned int const oldLength = this->length();
  if (oldLength != 0)
  {
    temporary.resizePool(oldLength, false);
  }
  temporary.resizePool(iSize, false);
  for (unsigned int i = 0; i < iSize; ++i)
  {
    temporary.tVector<T*>::append(i < oldLength ? this->at(i) : nullptr);
  }
  // Only the entries change hands: the temporary goes with the old ones and, not owning, leaves the objects alone.
  tVector<T*>::swap(temporary);
}

} // namespace mstd

#endif
