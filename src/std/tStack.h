#ifndef MORTISE_STD_TSTACK_H
#define MORTISE_STD_TSTACK_H

#include "std/cSTDExceptions.h"
#include "std/tVector.h"

namespace mstd
{

/// Last-in, first-out container.
///
/// Ownership: owns copies of what is pushed.
/// Errors:    top() and pop() of an empty stack raise cOutOfBoundsException; no memory raises std::bad_alloc and leaves
///            the stack as it was.
/// Validity:  a reference to an element holds until that element is popped.
/// Threads:   no lock.
template <class T>
class MORTISE_API tStack
{
public:
  /// Puts a copy of `rValue` on top.
  void push(T const& rValue) { mElements.append(rValue); }

  /// The element pushed last.
  T& top()
  {
    check("top");
    return mElements.at(mElements.length() - 1);
  }
  T const& top() const
  {
    check("top");
    return mElements.at(mElements.length() - 1);
  }

  /// Removes the element pushed last.
  void pop()
  {
    check("pop");
    mElements.erase(mElements.length() - 1);
  }

  bool empty() const noexcept { return mElements.empty(); }
  unsigned int length() const noexcept { return mElements.length(); }
  void clear() { mElements.clear(); }

private:
  void check(char const* operation) const
  {
    if (mElements.empty())
    {
      cSTDExceptions::throwOutOfBounds("tStack", operation);
    }
  }

  tVector<T> mElements;
};

} // namespace mstd

#endif
