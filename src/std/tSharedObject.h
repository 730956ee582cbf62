#ifndef MORTISE_STD_TSHAREDOBJECT_H
#define MORTISE_STD_TSHAREDOBJECT_H

#include "std/cSTDExceptions.h"
#include "std/tAutoPtr.h"
#include "std/tSharedObjectData.h"

#include <type_traits>

namespace mstd
{

template <class T>
class tSharedObjectWatch;

/// Strong handle on an object that several owners share: the last one deletes it, unless it is only borrowed.
///
/// Ownership: the object dies with its last strong handle, through the destructor of the type of that handle; a base
///            class therefore needs a virtual one. A handle made not to delete only lets watches know when it goes.
/// Errors:    reading through a handle without a live object raises cBugException.
/// Threads:   no lock and no atomic: copy and release on one thread, or under the caller's lock.
/// Cost:      one allocation for the first handle of an object; copying allocates nothing.
template <class T>
class MORTISE_API tSharedObject
{
public:
  /// Empty.
  tSharedObject() noexcept : mpData(nullptr), mpObject(nullptr) {}

  /// First handle of `pObject`; null gives an empty one. If there is no memory for the control block, an object that
  /// was to be deleted is deleted at once.
  explicit tSharedObject(T* pObject, bool bDeleteObject = true) : tSharedObject()
  {
    adopt(tAutoPtr<T>(pObject, bDeleteObject ? tAutoPtrType::Object : tAutoPtrType::NotOwned));
  }

  /// First handle of the object of `pObject`, owning if that is. An array: cBugException.
  explicit tSharedObject(tAutoPtr<T> pObject) : tSharedObject() { adopt(pObject); }

  /// Handle on the object of `rWatch`, empty if that is dead.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  explicit tSharedObject(tSharedObjectWatch<U> const& rWatch) noexcept : mpData(rWatch.mpData), mpObject(rWatch.get())
  {
    share();
  }

  tSharedObject(tSharedObject const& rSource) noexcept : mpData(rSource.mpData), mpObject(rSource.get()) { share(); }
  tSharedObject(tSharedObject&& rSource) noexcept : mpData(rSource.mpData), mpObject(rSource.mpObject)
  {
    rSource.mpData = nullptr;
    rSource.mpObject = nullptr;
  }

  /// One more handle on the object of a handle on a derived class.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  tSharedObject(tSharedObject<U> const& rSource) noexcept : mpData(rSource.mpData), mpObject(rSource.get())
  {
    share();
  }

  ~tSharedObject() { reset(); }

  /// Takes part in the object of `source`; the object held before may go.
  tSharedObject& operator=(tSharedObject const& rSource) noexcept
  {
    tSharedObject copy(rSource);
    swap(copy);
    return *this;
  }
  tSharedObject& operator=(tSharedObject&& rSource) noexcept
  {
    tSharedObject moved(static_cast<tSharedObject&&>(rSource));
    swap(moved);
    return *this;
  }

  /// The object, null if there is none.
  T* get() const noexcept { return isValid() ? mpObject : nullptr; }
  bool isValid() const noexcept { return mpData != nullptr && mpData->isLive(); }
  explicit operator bool() const noexcept { return isValid(); }

  /// The object. None: cBugException.
  T& operator*() const { return *checked(); }
  T* operator->() const { return checked(); }

  void swap(tSharedObject& rOther) noexcept
  {
    tSharedObjectData* const data = mpData;
    T* const object = mpObject;
    mpData = rOther.mpData;
    mpObject = rOther.mpObject;
    rOther.mpData = data;
    rOther.mpObject = object;
  }

  /// Lets the object go and becomes empty. The object's destructor meets this handle empty, and may release watches and
  /// handles as it likes.
  void reset() noexcept
  {
    static_assert(sizeof(T) > 0, "an owner needs the complete type of what it releases");
    tSharedObjectData* const data = mpData;
    T* const object = mpObject;
    mpData = nullptr;
    mpObject = nullptr;
    if (data != nullptr)
    {
      if (data->releaseStrong())
      {
        destroy(object);
      }
      data->releaseTotal();
    }
  }

  /// True if both lead to the same object, or both to none.
  template <class U>
  bool operator==(tSharedObject<U> const& rOther) const noexcept
  {
    return get() == rOther.get();
  }
  template <class U>
  bool operator!=(tSharedObject<U> const& rOther) const noexcept
  {
    return !(*this == rOther);
  }

private:
  template <class U>
  friend class tSharedObject;
  template <class U>
  friend class tSharedObjectWatch;

  void adopt(tAutoPtr<T> const& pObject)
  {
    if (pObject.get() == nullptr)
    {
      return;
    }
    if (pObject.type() == tAutoPtrType::Array)
    {
      cSTDExceptions::throwAssertionFailed("pObject.type() != tAutoPtrType::Array", "std/tSharedObject", __LINE__);
    }
    mpData = new tSharedObjectData(pObject.type() == tAutoPtrType::Object);
    mpObject = pObject.release();
  }

  // Not inline: a compiler that cannot know the counts takes the objects of other handles for deleted and warns.
  __attribute__((noinline)) static void destroy(T* pObject) noexcept { delete pObject; }

  // A handle on nothing keeps no control block, so that it never holds up the block of a dead object.
  void share() noexcept
  {
    if (mpObject == nullptr)
    {
      mpData = nullptr;
    }
    else
    {
      mpData->addStrong();
    }
  }

  T* checked() const
  {
    if (__builtin_expect(!isValid(), 0))
    {
      tSharedObjectData::throwWrongSharedObjectDereference();
    }
    return mpObject;
  }

  tSharedObjectData* mpData;
  T* mpObject;
};

template <class T>
inline void swap(tSharedObject<T>& rLeft, tSharedObject<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mstd

#endif
