#ifndef MORTISE_STD_TAUTOPTR_H
#define MORTISE_STD_TAUTOPTR_H

#include "pi/piTypes.h"
#include "std/cSTDExceptions.h"

#include <type_traits>

namespace mstd
{

/// How an owner releases what its pointer leads to.
class MORTISE_API tAutoPtrType
{
public:
  enum PointerType
  {
    Object = 0,  ///< one object, released with `delete`
    Array = 1,   ///< an array, released with `delete[]`, last element first
    NotOwned = 2 ///< never released
  };
};

/// Owning pointer that knows whether it holds one object, an array or something that it does not own.
///
/// Ownership: copying transfers, whether the source is a constant, a variable or a temporary: the source is left
///            empty. Passing one by value therefore hands the object over, and returning one works.
///            An object is deleted through the destructor of `T`, so a base class needs a virtual one; an array has
///            to be held by a pointer to its real element type.
/// Errors:    reading through an empty pointer raises cBugException. Nothing else fails.
/// Threads:   no lock.
template <class T>
class MORTISE_API tAutoPtr
{
public:
  /// Empty, of type `Object`.
  tAutoPtr() noexcept : mpPointer(nullptr), mType(tAutoPtrType::Object) {}

  /// Takes `pPointer` over in the way that `eType` tells. Null is allowed.
  explicit tAutoPtr(T* pPointer, tAutoPtrType::PointerType eType = tAutoPtrType::Object) noexcept
      : mpPointer(pPointer), mType(eType)
  {
  }

  /// Takes over pointer and type; `rSource` is left empty.
  tAutoPtr(tAutoPtr const& rSource) noexcept : tAutoPtr() { take(rSource); }
  tAutoPtr(tAutoPtr&& rSource) noexcept : tAutoPtr() { take(rSource); }

  /// The same from a pointer to a derived class.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  tAutoPtr(tAutoPtr<U> const& rSource) noexcept : tAutoPtr()
  {
    take(rSource);
  }

  /// Releases what is held.
  virtual ~tAutoPtr()
  {
    releaseHeld();
    mpPointer = nullptr;
    mType = tAutoPtrType::Object;
  }

  /// Releases what is held (unless the source holds the same pointer) and takes over pointer and type of `rSource`,
  /// which is left empty. Self-assignment changes nothing.
  tAutoPtr& operator=(tAutoPtr const& rSource)
  {
    assign(rSource);
    return *this;
  }
  tAutoPtr& operator=(tAutoPtr&& rSource)
  {
    assign(rSource);
    return *this;
  }
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  tAutoPtr& operator=(tAutoPtr<U> const& rSource)
  {
    tAutoPtrType::PointerType const type = rSource.type();
    reinit(rSource.release(), type);
    return *this;
  }

  /// Releases what is held if it is another pointer than `pPointer`, then holds `pPointer` as `eType`. With the pointer
  /// that is held already only the type changes. While the old object's destructor runs it is still the one held.
  virtual void reinit(T* pPointer, tAutoPtrType::PointerType eType)
  {
    if (mpPointer != pPointer)
    {
      releaseHeld();
    }
    mpPointer = pPointer;
    mType = eType;
  }

  /// reinit() with a single object, or with null to become empty.
  void reinit(T* pPointer) { reinit(pPointer, tAutoPtrType::Object); }

  /// Gives the pointer up without releasing it: it is the caller's now, and this is empty and of type `Object`. An
  /// operation on constants too, as copying is.
  T* release() const noexcept
  {
    T* const pointer = mpPointer;
    mpPointer = nullptr;
    mType = tAutoPtrType::Object;
    return pointer;
  }

  /// The pointer, still owned by this; null when empty.
  T* get() const noexcept { return mpPointer; }
  tAutoPtrType::PointerType type() const noexcept { return mType; }
  explicit operator bool() const noexcept { return mpPointer != nullptr; }

  /// What the pointer leads to. Empty: cBugException.
  T& operator*() const { return *checked(); }
  T* operator->() const { return checked(); }

private:
  template <class U>
  void take(tAutoPtr<U> const& rSource) noexcept
  {
    mType = rSource.type();
    mpPointer = rSource.release();
  }

  void assign(tAutoPtr const& rSource)
  {
    if (this != &rSource)
    {
      tAutoPtrType::PointerType const type = rSource.mType;
      reinit(rSource.release(), type);
    }
  }

  void releaseHeld()
  {
    static_assert(sizeof(T) > 0, "an owner needs the complete type of what it releases");
    if (mpPointer != nullptr)
    {
      switch (mType)
      {
      case tAutoPtrType::Object:
        delete mpPointer;
        break;
      case tAutoPtrType::Array:
        delete[] mpPointer;
        break;
      case tAutoPtrType::NotOwned:
        break;
      }
    }
  }

  T* checked() const
  {
    if (mpPointer == nullptr)
    {
      cSTDExceptions::throwAssertionFailed("mpPointer != 0", "std/tAutoPtr", __LINE__);
    }
    return mpPointer;
  }

  // Mutable, since a constant source gives its pointer up too: that is what lets a temporary be passed on.
  mutable T* mpPointer;
  mutable tAutoPtrType::PointerType mType;
};

} // namespace mstd

#endif
