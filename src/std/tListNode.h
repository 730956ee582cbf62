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
  /// The place of a node, by which a walk tells at one look what it may do with it.
  enum Place : unsigned char
  {
    Between = 0, ///< an element
    AtHead = 1,
    AtTail = 2
  };

  /// A sentinel, not yet linked.
  explicit tListNodeBaseType(Place ePlace) noexcept
      : mpPrevious(nullptr), mpNext(nullptr), mbEraseLater(false), mbLinked(false), mPlace(ePlace)
  {
  }
  tListNodeBaseType(tListNodeBaseType const&) = delete;
  tListNodeBaseType& operator=(tListNodeBaseType const&) = delete;
  virtual ~tListNodeBaseType() { unlink(); }

  /// This node as an element, or null if it is a sentinel.
  virtual tListElementNodeType<T>* isElementNode() { return nullptr; }

  /// The same answers without a virtual call, for walks.
  bool isElement() const noexcept { return mPlace == Between; }
  bool isHead() const noexcept { return mPlace == AtHead; }
  bool isTail() const noexcept { return mPlace == AtTail; }

  /// The neighbours: null before the head and behind the tail. A node that was unlinked keeps its last ones, so that a
  /// walk can leave an element that is just being destroyed.
  tListNodeBaseType* previous() const noexcept { return mpPrevious; }
  tListNodeBaseType* next() const noexcept { return mpNext; }

  /// True if the node waits for the sweep of its list's owner.
  bool isMarked() const noexcept { return mbEraseLater; }
  void mark() noexcept { mbEraseLater = true; }

  /// Makes this head and that tail an empty list.
  void linkSentinels(tListNodeBaseType& rTail) noexcept
  {
    mpNext = &rTail;
    rTail.mpPrevious = this;
  }

  /// Links this node, which must not be linked, in front of `rNode`.
  void linkBefore(tListNodeBaseType& rNode) noexcept
  {
    mpPrevious = rNode.mpPrevious;
    mpNext = &rNode;
    mpPrevious->mpNext = this;
    rNode.mpPrevious = this;
    mbLinked = true;
  }

  /// Takes this node out of its list; without effect on a sentinel and on a node that is not in a list.
  void unlink() noexcept
  {
    if (mbLinked)
    {
      mpPrevious->mpNext = mpNext;
      mpNext->mpPrevious = mpPrevious;
      mbLinked = false;
    }
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

private:
  tListNodeBaseType* mpPrevious;
  tListNodeBaseType* mpNext;
  bool mbEraseLater;
  bool mbLinked; // an element in a list
  Place const mPlace;
};

/// Node that holds an element of a list.
template <class T>
class MORTISE_API tListElementNodeType : public tListNodeBaseType<T>
{
public:
  explicit tListElementNodeType(T const& rValue) : tListNodeBaseType<T>(tListNodeBaseType<T>::Between), mValue(rValue)
  {
  }

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
