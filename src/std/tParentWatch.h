#ifndef MORTISE_STD_TPARENTWATCH_H
#define MORTISE_STD_TPARENTWATCH_H

#include "std/cSTDExceptions.h"
#include "std/tList.h"

namespace mstd
{

/// Node of a tree of objects that do not own one another. Each object has one as a member.
///
/// Ownership: none. A watch that goes hands its children to its parent.
/// Errors:    no memory raises std::bad_alloc and changes nothing.
/// Threads:   no lock.
/// Cost:      changing the parent is O(1), ending a watch linear in its own children. Neither depends on the number of
///            siblings.
template <class T>
class MORTISE_API tParentWatch
{
public:
  /// Stands for `pObject`; a root without children.
  explicit tParentWatch(T* pObject) noexcept : mpObject(pObject), mpParent(nullptr) {}
  tParentWatch(tParentWatch const&) = delete;
  tParentWatch& operator=(tParentWatch const&) = delete;
  ~tParentWatch() { unlinkAndReparentChildren(); }

  /// The object that this stands for. None: cBugException.
  T& object() const
  {
    if (mpObject == nullptr)
    {
      cSTDExceptions::throwAssertionFailed("mpObject != 0", "std/tParentWatch", __LINE__);
    }
    return *mpObject;
  }

  /// The watch above, null for a root.
  tParentWatch* parent() const noexcept { return mpParent; }

  /// The watches below, in the order of being added.
  tList<tParentWatch*> const& children() const noexcept { return mChildren; }

  /// Leaves the old parent and becomes the last child of `pParent`, or a root for null. The watch itself as the parent
  /// changes nothing. A watch below this one is allowed and closes a ring: who climbs has to expect that.
  void setParent(tParentWatch* pParent)
  {
    if (pParent == this)
    {
      return;
    }
    if (pParent == nullptr)
    {
      unlink();
      return;
    }
    Position const position = pParent->mChildren.append(this);
    unlink();
    mpParent = pParent;
    mPosition = position;
  }

  /// Makes `rChild` the last child of this watch.
  void addChild(tParentWatch& rChild) { rChild.setParent(this); }

  /// Takes this watch out of the tree: its children become, in their order, the last ones of its parent, or roots if
  /// there is none. Called when the object goes. Allocates nothing.
  void unlinkAndReparentChildren() noexcept
  {
    tParentWatch* const parent = mpParent;
    unlink();
    if (parent != nullptr && parent->mpParent == this)
    {
      // A ring of two: the parent would become its own child.
      parent->unlink();
    }
    for (tParentWatch* child : mChildren)
    {
      child->mpParent = parent;
    }
    if (parent != nullptr)
    {
      parent->mChildren.splice(mChildren);
    }
    else
    {
      for (tParentWatch* child : mChildren)
      {
        child->mPosition = Position();
      }
      mChildren.clear();
    }
  }

private:
  typedef typename tList<tParentWatch*>::iterator Position;

  void unlink()
  {
    if (mpParent != nullptr)
    {
      mpParent->mChildren.erase(mPosition);
      mpParent = nullptr;
      mPosition = Position();
    }
  }

  T* mpObject;
  tParentWatch* mpParent;
  tList<tParentWatch*> mChildren;
  Position mPosition; // of this watch in mpParent->mChildren; spares the search, nodes keep their place when spliced
};

} // namespace mstd

#endif
