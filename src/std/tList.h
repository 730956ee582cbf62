#ifndef MORTISE_STD_TLIST_H
#define MORTISE_STD_TLIST_H

#include "std/cSTDExceptions.h"
#include "std/tIterator.h"
#include "std/tListNode.h"

namespace mstd
{

/// Doubly linked list with checked iterators, whose nodes can be marked during a walk and swept afterwards.
///
/// While a list is being walked, perhaps from a callback inside the walk, elements are removed with
/// `iterator::eraseLater()`: the node stays linked and walks still reach it, until the owner of the list calls
/// eraseMarked(). A walker that is not to see such elements tests their value, or isMarked().
///
/// Ownership: owns copies of what is added. Elements leave in list order, each through beforeNodeDestroy().
/// Errors:    a step or an access beyond the elements raises cOutOfBoundsException; no memory raises std::bad_alloc.
///            Whatever fails leaves the list as it was. Destructors of elements must not throw.
/// Validity:  iterators and references hold until their node is erased, also when the node moves to another list.
/// Threads:   no lock.
/// Cost:      the empty list allocates nothing; adding allocates one node; length() is O(n).
template <class T>
class MORTISE_API tList
{
public:
  /// How the iterators of a list handle its nodes.
  template <class List, class Value>
  struct tListItNode
  {
    typedef tListNodeBaseType<Value> Type;

    static Type* next(Type const& rNode) noexcept { return rNode.next(); }
    static Type* previous(Type const& rNode) noexcept { return rNode.previous(); }
    static bool isHead(Type const& rNode) noexcept { return rNode.isHead(); }
    static bool isTail(Type const& rNode) noexcept { return rNode.isTail(); }
    static bool isElement(Type const& rNode) noexcept { return rNode.isElement(); }
    static Value& value(Type& rNode) noexcept { return static_cast<tListElementNodeType<Value>&>(rNode).value(); }
    static bool isMarked(Type const& rNode) noexcept { return rNode.isMarked(); }
    static void mark(Type& rNode) noexcept { rNode.mark(); }
  };

  typedef tIterator<T, tListItNode<tList, T>> iterator;
  typedef tConstIterator<T, tListItNode<tList, T>> const_iterator;

  /// Empty.
  tList() noexcept : mHead(Node::AtHead), mTail(Node::AtTail) { mHead.linkSentinels(mTail); }

  /// Copies the values, not the marks.
  tList(tList const& rSource) : tList() { copyElements(rSource); }

  /// Removes every element, with the hook of this class: a derived class with a hook of its own calls clear() in its
  /// own destructor.
  virtual ~tList()
  {
    while (mHead.next() != &mTail)
    {
      tListElementNodeType<T>& node = element(*mHead.next());
      tList::beforeNodeDestroy(node);
      destroy(node);
    }
  }

  /// As the copy constructor; the old elements leave through the hook.
  tList& operator=(tList const& rSource)
  {
    if (this != &rSource)
    {
      tList copy(rSource);
      clear();
      splice(copy);
    }
    return *this;
  }

  /// The first node behind the head: the first element, or end().
  iterator begin()
  {
    iterator first(&mHead);
    return ++first;
  }
  const_iterator begin() const
  {
    const_iterator first(&head());
    return ++first;
  }
  /// The tail.
  iterator end() noexcept { return iterator(&mTail); }
  const_iterator end() const noexcept { return const_iterator(&tail()); }

  bool empty() const noexcept { return mHead.next() == &mTail; }

  /// Number of elements, marked ones included. O(n).
  unsigned int length() const noexcept
  {
    unsigned int count = 0;
    for (Node const* node = mHead.next(); node != &mTail; node = node->next())
    {
      ++count;
    }
    return count;
  }

  /// The first and the last element. Empty list: cOutOfBoundsException.
  T& first() { return *begin(); }
  T const& first() const { return *begin(); }
  T& last() { return *iterator(mTail.previous()); }
  T const& last() const { return *const_iterator(tail().previous()); }

  /// The first element that equals `rValue`, or end(). O(n).
  iterator find(T const& rValue)
  {
    iterator it = begin();
    while (it != end() && !(*it == rValue))
    {
      ++it;
    }
    return it;
  }
  const_iterator find(T const& rValue) const { return const_cast<tList*>(this)->find(rValue); }

  /// Adds a copy of `rValue` at the end, and returns where it is. `rValue` may be an element of this list.
  iterator append(T const& rValue) { return insertBefore(mTail, rValue); }

  /// Adds a copy of `rValue` at the front.
  iterator prepend(T const& rValue) { return insertBefore(*mHead.next(), rValue); }

  /// Adds a copy of `rValue` before the node of `before`, which is one of this list. No node, or the head:
  /// cOutOfBoundsException.
  iterator insert(const_iterator const& before, T const& rValue)
  {
    Node* const node = before.node();
    if (node == nullptr || node->isHead())
    {
      cSTDExceptions::throwOutOfBounds("tList", "tList::insert()");
    }
    return insertBefore(*node, rValue);
  }

  /// Adds copies of the values of `rOther` at the end, in their order: all of them or, on failure, none. A list given
  /// itself gets the elements that it had once more. Marks are not copied.
  void append_net(tList const& rOther)
  {
    tList copy(rOther);
    splice(copy);
  }

  /// Moves all nodes of `rOther`, with their marks, in their order to the end of this list. Nothing is copied, and no
  /// hook is called. Iterators stay valid. Without effect on the list itself. O(1).
  void splice(tList& rOther) noexcept
  {
    if (this != &rOther && !rOther.empty())
    {
      mTail.takeRun(*rOther.mHead.next(), *rOther.mTail.previous());
    }
  }

  /// Removes the element at `position`, which is in this list, through the hook, and returns the position behind it. No
  /// element there: cOutOfBoundsException.
  iterator erase(iterator const& position)
  {
    Node* const node = position.node();
    if (node == nullptr || !node->isElement())
    {
      cSTDExceptions::throwOutOfBounds("tList", "tList::erase()");
    }
    tListElementNodeType<T>& gone = element(*node);
    beforeNodeDestroy(gone);
    iterator behind(node->next());
    destroy(gone);
    return behind;
  }

  /// The sweep: removes each marked element, through the hook. The marked nodes leave the list together before the
  /// first one is destroyed, so hooks and destructors may use the list, and sweep it too. Should a hook throw, the
  /// nodes that are not yet destroyed return to the end of the list, still marked.
  void eraseMarked()
  {
    tList marked;
    for (Node* node = mHead.next(); node != &mTail;)
    {
      Node* const next = node->next();
      if (node->isMarked())
      {
        node->unlink();
        node->linkBefore(marked.mTail);
      }
      node = next;
    }
    destroyAll(marked);
  }

  /// Removes every element, through the hook. As in eraseMarked(), they leave the list first.
  void clear()
  {
    tList leaving;
    leaving.splice(*this);
    destroyAll(leaving);
  }

  /// Exchanges the elements; iterators go with them, except that end() stays with its list.
  void swap(tList& rOther) noexcept
  {
    if (this != &rOther)
    {
      tList other;
      other.splice(rOther);
      rOther.splice(*this);
      splice(other);
    }
  }

protected:
  /// Called for each element just before its node is destroyed. Must not throw. Empty here.
  virtual void beforeNodeDestroy(tListElementNodeType<T>& rNode) const { static_cast<void>(rNode); }

private:
  typedef tListNodeBaseType<T> Node;

  static tListElementNodeType<T>& element(Node& rNode) { return static_cast<tListElementNodeType<T>&>(rNode); }

  // Not inline: a compiler that sees the sentinels beside it takes the node for one of them and warns.
  __attribute__((noinline)) static void destroy(tListElementNodeType<T>& rNode) { delete &rNode; }

  // Iterators of a constant list walk the same nodes; what they give out is constant.
  Node& head() const noexcept { return const_cast<Node&>(mHead); }
  Node& tail() const noexcept { return const_cast<Node&>(mTail); }

  iterator insertBefore(Node& rNode, T const& rValue)
  {
    Node* const node = new tListElementNodeType<T>(rValue);
    node->linkBefore(rNode);
    return iterator(node);
  }

  void copyElements(tList const& rSource)
  {
    for (Node* node = rSource.mHead.next(); node != &rSource.mTail; node = node->next())
    {
      insertBefore(mTail, element(*node).value());
    }
  }

  // Destroys the nodes of `rNodes` through the hook of this list.
  void destroyAll(tList& rNodes)
  {
    class cReturnRest
    {
    public:
      cReturnRest(tList& rList, tList& rRest) : mList(rList), mRest(rRest) {}
      cReturnRest(cReturnRest const&) = delete;
      cReturnRest& operator=(cReturnRest const&) = delete;
      ~cReturnRest() { mList.splice(mRest); }

    private:
      tList& mList;
      tList& mRest;
    };
    cReturnRest const rest(*this, rNodes);
    while (!rNodes.empty())
    {
      tListElementNodeType<T>& node = element(*rNodes.mHead.next());
      beforeNodeDestroy(node);
      destroy(node);
    }
  }

  Node mHead;
  Node mTail;
};

template <class T>
inline void swap(tList<T>& rLeft, tList<T>& rRight) noexcept
{
  rLeft.swap(rRight);
}

} // namespace mstd

#endif
