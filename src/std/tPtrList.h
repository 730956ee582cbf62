#ifndef MORTISE_STD_TPTRLIST_H
#define MORTISE_STD_TPTRLIST_H

#include "std/tAutoPtr.h"
#include "std/tList.h"

#include <utility>

namespace mstd
{

/// List of pointers that releases, in the way of its kind, what they lead to when an element is removed.
///
/// Ownership: kind() `Object` deletes through the destructor of `T`, `Array` with `delete[]`, `NotOwned` does nothing.
///            An element may be null. When adding an owned pointer fails, the pointer stays the caller's.
/// Errors:    as tList. A list that owns cannot be copied: that raises cBugException.
template <class T>
class MORTISE_API tPtrList : public tList<T*>
{
public:
  /// Not the numbers of tAutoPtrType::PointerType.
  enum Kind
  {
    NotOwned = 0,
    Object = 1,
    Array = 2
  };

  typedef typename tList<T*>::iterator iterator;
  typedef typename tList<T*>::const_iterator const_iterator;

  explicit tPtrList(Kind eKind) noexcept : mKind(eKind) {}

  /// Copies the pointers of a list that does not own. Any other: cBugException.
  tPtrList(tPtrList const& rSource) : tList<T*>(copyable(rSource)), mKind(rSource.mKind) {}

  /// Releases what is still held, with the hook of this class: a class derived from this one with a hook of its own
  /// calls clear() in its own destructor.
  ~tPtrList() override
  {
    // The base's destructor cannot reach this class's hook any more. Again, if an object that goes adds another one.
    while (!this->empty())
    {
      this->clear();
    }
  }

  tPtrList& operator=(tPtrList const& rSource)
  {
    if (this != &rSource)
    {
      tPtrList copy(rSource);
      this->clear();
      swap(copy);
    }
    return *this;
  }

  Kind kind() const noexcept { return mKind; }

  using tList<T*>::append;

  /// Takes the object over, also when this fails (it is then released). Its type has to suit the kind of the list.
  iterator append(tAutoPtr<T> pObject)
  {
    if (pObject.get() != nullptr && kindOf(pObject.type()) != mKind)
    {
      cSTDExceptions::throwAssertionFailed("kindOf(pObject.type()) == mKind", "std/tPtrList", __LINE__);
    }
    iterator const added = tList<T*>::append(pObject.get());
    pObject.release();
    return added;
  }

  /// Exchanges elements and kind.
  void swap(tPtrList& rOther) noexcept
  {
    tList<T*>::swap(rOther);
    std::swap(mKind, rOther.mKind);
  }

protected:
  /// Releases what the element leads to, and clears the element.
  void beforeNodeDestroy(tListElementNodeType<T*>& rNode) const override
  {
    static_assert(sizeof(T) > 0, "an owner needs the complete type of what it releases");
    if (mKind == NotOwned)
    {
      return;
    }
    T* const object = rNode.value();
    // Cleared first: the destructor of the object may come back to this list.
    rNode.value() = nullptr;
    if (mKind == Object)
    {
      delete object;
    }
    else
    {
      delete[] object;
    }
  }

private:
  static tPtrList const& copyable(tPtrList const& rSource)
  {
    if (rSource.mKind != NotOwned)
    {
      cSTDExceptions::throwAssertionFailed("mKind == NotOwned", "std/tPtrList", __LINE__);
    }
    return rSource;
  }

  static Kind kindOf(tAutoPtrType::PointerType eType)
  {
    return eType == tAutoPtrType::Object ? Object : eType == tAutoPtrType::Array ? Array : NotOwned;
  }

  Kind mKind;
};

template <class T>
inline void swap(tPtrList<T>& rLeft, tPtrList<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mstd

#endif
