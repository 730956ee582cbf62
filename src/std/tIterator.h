#ifndef MORTISE_STD_TITERATOR_H
#define MORTISE_STD_TITERATOR_H

#include "pi/piTypes.h"
#include "std/cSTDExceptions.h"

namespace mstd
{

/// What the iterators of a list have in common: the current node, which may be none.
///
/// `Node` tells how to get along a chain: it has a type `Type` and the static functions next(), previous(),
/// isElement(), value(), isMarked() and mark(). Every step and every access is checked; a breach raises
/// cOutOfBoundsException. Validity: an iterator holds until its node is erased; marking a node does not invalidate
/// anything.
template <class T, class Node>
class MORTISE_API tIteratorBase
{
public:
  typedef typename Node::Type NodeType;

  tIteratorBase() noexcept : mpNode(nullptr) {}
  explicit tIteratorBase(NodeType* pNode) noexcept : mpNode(pNode) {}
  tIteratorBase(tIteratorBase const&) noexcept = default;
  tIteratorBase& operator=(tIteratorBase const&) noexcept = default;
  virtual ~tIteratorBase() {}

  bool operator==(tIteratorBase const& rOther) const noexcept { return mpNode == rOther.mpNode; }
  bool operator!=(tIteratorBase const& rOther) const noexcept { return mpNode != rOther.mpNode; }

  /// The current node, null if there is none.
  NodeType* node() const noexcept { return mpNode; }

  /// True if the current node is marked for the next sweep; false without a node.
  bool isMarked() const noexcept { return mpNode != nullptr && Node::isMarked(*mpNode); }

protected:
  // The checks ask for the place of the node and not for its neighbour: behind an access to the element, the compiler
  // sees that the step cannot fail any more.
  void stepForward()
  {
    if (__builtin_expect(mpNode == nullptr || Node::isTail(*mpNode), 0))
    {
      fail("cIteratorBase::operator++()");
    }
    mpNode = &present(Node::next(*mpNode));
  }

  void stepBack()
  {
    if (__builtin_expect(mpNode == nullptr || Node::isHead(*mpNode), 0))
    {
      fail("cIteratorBase::operator--()");
    }
    mpNode = &present(Node::previous(*mpNode));
  }

  T& value(char const* operation) const
  {
    if (__builtin_expect(mpNode == nullptr || !Node::isElement(*mpNode), 0))
    {
      fail(operation);
    }
    return Node::value(*mpNode);
  }

  [[noreturn]] static void fail(char const* operation) { cSTDExceptions::throwOutOfBounds("tList", operation); }

private:
  // Between the sentinels there is always a neighbour; the next check of the node for null is then spared.
  static NodeType& present(NodeType* pNode) noexcept
  {
    if (pNode == nullptr)
    {
      __builtin_unreachable();
    }
    return *pNode;
  }

  NodeType* mpNode;
};

/// Iterator that may change the element.
template <class T, class Node>
class MORTISE_API tIterator : public tIteratorBase<T, Node>
{
public:
  typedef typename Node::Type NodeType;

  tIterator() noexcept {}
  explicit tIterator(NodeType* pNode) noexcept : tIteratorBase<T, Node>(pNode) {}

  /// Steps to the next node. From the last element to the end is legal; past the end is not.
  tIterator& operator++()
  {
    this->stepForward();
    return *this;
  }
  tIterator operator++(int)
  {
    tIterator const old(*this);
    this->stepForward();
    return old;
  }

  /// Steps to the node before. From the first element it leads to the head, which has no value.
  tIterator& operator--()
  {
    this->stepBack();
    return *this;
  }
  tIterator operator--(int)
  {
    tIterator const old(*this);
    this->stepBack();
    return old;
  }

  T& operator*() const { return this->value("tIterator::operator*()"); }
  T* operator->() const { return &this->value("tIterator::operator*()"); }

  /// Marks the node for the next sweep and does nothing else: the node stays in the list and walks still reach it.
  void eraseLater()
  {
    if (this->node() == nullptr)
    {
      this->fail("iterator::eraseLater()");
    }
    Node::mark(*this->node());
  }
};

/// Iterator that only reads the element.
template <class T, class Node>
class MORTISE_API tConstIterator : public tIteratorBase<T, Node>
{
public:
  typedef typename Node::Type NodeType;

  tConstIterator() noexcept {}
  explicit tConstIterator(NodeType* pNode) noexcept : tIteratorBase<T, Node>(pNode) {}
  tConstIterator(tIterator<T, Node> const& rSource) noexcept : tIteratorBase<T, Node>(rSource) {}

  /// As the operators of tIterator.
  tConstIterator& operator++()
  {
    this->stepForward();
    return *this;
  }
  tConstIterator operator++(int)
  {
    tConstIterator const old(*this);
    this->stepForward();
    return old;
  }
  tConstIterator& operator--()
  {
    this->stepBack();
    return *this;
  }
  tConstIterator operator--(int)
  {
    tConstIterator const old(*this);
    this->stepBack();
    return old;
  }

  T const& operator*() const { return this->value("iterator::operator*()"); }
  T const* operator->() const { return &this->value("iterator::operator*()"); }
};

} // namespace mstd

#endif
