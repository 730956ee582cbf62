#ifndef MORTISE_STD_TSHAREDOBJECTWATCH_H
#define MORTISE_STD_TSHAREDOBJECTWATCH_H

#include "std/tSharedObject.h"
#include "std/tSharedObjectData.h"

#include <type_traits>

namespace mstd
{

/// Weak handle: knows a shared object without keeping it alive, and reads as null once that is gone.
///
/// Ownership: none; a `tSharedObject` made from the watch keeps the object alive while it is used.
/// Threads:   as tSharedObject.
/// Cost:      allocates nothing.
template <class T>
class MORTISE_API tSharedObjectWatch
{
public:
  /// Watches nothing.
  tSharedObjectWatch() noexcept : mpData(nullptr), mpObject(nullptr) {}

  /// Watches the object of `rObject`; an empty handle gives an empty watch.
  template <class U, class = std::enable_if_t<std::is_convertible_v<U*, T*>>>
  tSharedObjectWatch(tSharedObject<U> const& rObject) noexcept : mpData(rObject.mpData), mpObject(rObject.get())
  {
    share();
  }

  tSharedObjectWatch(tSharedObjectWatch const& rSource) noexcept : mpData(rSource.mpData), mpObject(rSource.mpObject)
  {
    share();
  }

  ~tSharedObjectWatch() { reset(); }

  tSharedObjectWatch& operator=(tSharedObjectWatch const& rSource) noexcept
  {
    tSharedObjectWatch copy(rSource);
    swap(copy);
    return *this;
  }

  /// The object, null if it is gone. Valid as long as somebody holds the object.
  T* get() const noexcept { return isValid() ? mpObject : nullptr; }
  bool isValid() const noexcept { return mpData != nullptr && mpData->isLive(); }
  explicit operator bool() const noexcept { return isValid(); }

  void swap(tSharedObjectWatch& rOther) noexcept
  {
    tSharedObjectData* const data = mpData;
    T* const object = mpObject;
    mpData = rOther.mpData;
    mpObject = rOther.mpObject;
    rOther.mpData = data;
    rOther.mpObject = object;
  }

  /// Watches nothing from now on.
  void reset() noexcept
  {
    tSharedObjectData* const data = mpData;
    mpData = nullptr;
    mpObject = nullptr;
    if (data != nullptr)
    {
      data->releaseTotal();
    }
  }

  /// True if both lead to the same live object, or both to none.
  template <class U>
  bool operator==(tSharedObjectWatch<U> const& rOther) const noexcept
  {
    return get() == rOther.get();
  }
  template <class U>
  bool operator!=(tSharedObjectWatch<U> const& rOther) const noexcept
  {
    return !(*this == rOther);
  }

private:
  template <class U>
  friend class tSharedObject;

  void share() noexcept
  {
    if (mpData != nullptr)
    {
      mpData->addWatch();
    }
  }

  tSharedObjectData* mpData;
  T* mpObject;
};

template <class T>
inline void swap(tSharedObjectWatch<T>& rLeft, tSharedObjectWatch<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mstd

#endif
