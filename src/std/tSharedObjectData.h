#ifndef MORTISE_STD_TSHAREDOBJECTDATA_H
#define MORTISE_STD_TSHAREDOBJECTDATA_H

#include "pi/piTypes.h"

namespace mstd
{

/// Control block that the strong handles and the watches of one object share.
///
/// Every handle counts in the total; a strong one counts twice. The object lives while there is a strong handle, the
/// block while there is any handle. No count is atomic: the handles of one object belong to one thread.
class MORTISE_API tSharedObjectData
{
public:
  /// Block of a first strong handle.
  explicit tSharedObjectData(bool bDeleteObject) noexcept
      : mbDeleteObject(bDeleteObject), miStrongCount(1), miTotalCount(1)
  {
  }
  tSharedObjectData(tSharedObjectData const&) = delete;
  tSharedObjectData& operator=(tSharedObjectData const&) = delete;

  bool isLive() const noexcept { return miStrongCount != 0; }
  unsigned int strongCount() const noexcept { return miStrongCount; }
  unsigned int totalCount() const noexcept { return miTotalCount; }

  void addStrong() noexcept
  {
    ++miStrongCount;
    ++miTotalCount;
  }
  void addWatch() noexcept { ++miTotalCount; }

  /// Ends the claim of one strong handle on the object and returns whether the object is to be deleted now. The
  /// handle goes on counting in the total until releaseTotal(), so that the block outlives the deletion even if the
  /// object's destructor releases the last watches.
  bool releaseStrong() noexcept
  {
    bool const last = miStrongCount == 1;
    if (miStrongCount != 0)
    {
      --miStrongCount;
    }
    return last && mbDeleteObject;
  }

  /// Ends the count of one handle in the total; the last one deletes the block.
  void releaseTotal() noexcept
  {
    if (--miTotalCount == 0)
    {
      destroy();
    }
  }

  /// cBugException.
  [[noreturn]] static void throwWrongSharedObjectDereference();

private:
  ~tSharedObjectData() = default;
  // Out of line, where no compiler follows the counts of several handles and takes a live block for a dead one.
  void destroy() noexcept;

  bool const mbDeleteObject;
  unsigned int miStrongCount;
  unsigned int miTotalCount;
};

} // namespace mstd

#endif
