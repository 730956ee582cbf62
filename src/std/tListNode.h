#ifndef MORTISE_STD_TLISTNODE_H
#define MORTISE_STD_TLISTNODE_H

#include "pi/piTypes.h"

namespace mstd
{

template <class T>
class tListElementNodeType;

/// Node of a doubly linked list: one of the two sentinels, or, derived, an element.
///
/// A node's destructor unlinks it. Nothing here fails.
template <class T>
class MORTISE_API tListNodeBaseType
{
public:
  tListNodeBaseType() noexcept : tListNodeBaseType(false) {}
  tListNodeBaseType(tListNodeBaseType const&) = delete;
  tListNodeBaseType& operator=(tListNodeBaseType const&) = delete;
  virtual ~tListNodeBaseType() { unlink(); }

  /// This node as an element, or null if it is a sentinel.
  virtual tListElementNodeType<T>* isElementNode() { return nullptr; }

  /// The same answer without a virtual call, for walks.
  bool isElement() const noexcept { return mbElement; }

  /// Null for the head of a list and for a node that is not linked.
  tListNodeBaseType* previous() const noexcept { return mpPrevious; }
  /// Null for the tail of a list and for a node that is not linked.
  tListNodeBaseType* next() const noexcept { return mpNext; }

  /// True if the node waits for the sweep of its list's owner.
  bool isMarked() const noexcept { return mbEraseLater; }
  void mark() noexcept { mbEraseLater = true; }

  /// Links this node, which must not be linked, in front of `rNode`.
  void linkBefore(tListNodeBaseType& rNode) noexcept
  {
    mpPrevious = rNode.mpPrevious;
    mpNext = &rNode;
    if (mpPrevious != nullptr)
    {
      mpPrevious->mpNext = this;
    }
    rNode.mpPrevious = this;
  }

  /// Links this node, which must not be linked, behind `rNode`.
  void linkAfter(tListNodeBaseType& rNode) noexcept
  {
    mpPrevious = &rNode;
    mpNext = rNode.mpNext;
    if (mpNext != nullptr)
    {
      mpNext->mpPrevious = this;
    }
    rNode.mpNext = this;
  }

  /// Takes this node out of its list; without effect if it is not in one.
  void unlink() noexcept
  {
    if (mpPrevious != nullptr)
    {
      mpPrevious->mpNext = mpNext;
    }
    if (mpNext != nullptr)
    {
      mpNext->mpPrevious = mpPrevious;
    }
    mpPrevious = nullptr;
    mpNext = nullptr;
  }

  /// Moves the linked run from `rFirst` to `rLast` in front of this node, in its order.
  void takeRun(tListNodeBaseType& rFirst, tListNodeBaseType& rLast) noexcept
  {
    rFirst.mpPrevious->mpNext = rLast.mpNext;
    rLast.mpNext->mpPrevious = rFirst.mpPrevious;
    rFirst.mpPrevious = mpPrevious;
    rLast.mpNext = this;
    mpPrevious->mpNext = &rFirst;
    mpPrevious = &rLast;
  }

protected:
  explicit tListNodeBaseType(bool bElement) noexcept
      : mpPrevious(nullptr), mpNext(nullptr), mbEraseLater(false), mbElement(bElement)
  {
  }

private:
  tListNodeBaseType* mpPrevious;
  tListNodeBaseType* mpNext;
  bool mbEraseLater;
  bool const mbElement;
};

/// Node that holds an element of a list.
template <class T>
class MORTISE_API tListElementNodeType : public tListNodeBaseType<T>
{
public:
  explicit tListElementNodeType(T const& rValue) : tListNodeBaseType<T>(true), mValue(rValue) {}

  /// Leaves the list before the value goes, so that nobody who walks it from the value's destructor meets the rest.
  ~tListElementNodeType() override { this->unlink(); }

  tListElementNodeType<T>* isElementNode() override { return this; }

  T& value() noexcept { return mValue; }
  T const& value() const noexcept { return mValue; }

private:
  T mValue;
};

} // namespace mstd

#endif
