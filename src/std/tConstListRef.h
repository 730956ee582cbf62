#ifndef MORTISE_STD_TCONSTLISTREF_H
#define MORTISE_STD_TCONSTLISTREF_H

#include "pi/piTypes.h"
#include "std/cSTDExceptions.h"
#include "std/tAutoPtr.h"

#include <type_traits>
#include <utility>

namespace mstd
{

/// Base of what is a place in a sequence that is only read from front to end, such as the listing of a directory.
///
/// A class `T` that derives from it has `element() const`, `setNext()`, `isEnd() const`, `operator==` and a copy
/// constructor that makes an independent walk from the same place; then tConstListRef<T> makes a list of it.
class MORTISE_API tConstListRefNode
{
protected:
  tConstListRefNode() = default;
  tConstListRefNode(tConstListRefNode const&) = default;
  tConstListRefNode& operator=(tConstListRefNode const&) = default;
  ~tConstListRefNode() = default;
};

/// A sequence that is walked like a constant list, also by the range-based loop:
/// \code
/// for (mio::cDirInfo const& entry : mpi::system().fs.openDir("/etc/", mio::DirHideDot | mio::DirHideDotDot))
/// \endcode
///
/// Ownership: the list owns a copy of the place it was made from, and each iterator a place of its own. An iterator
///            stays good when the list goes.
/// Errors:    a step or an access behind the end raises cOutOfBoundsException; besides, what the place raises.
/// Cost:      begin() and each copy of an iterator copy the place; end() copies nothing.
template <typename T>
class tConstListRef
{
  static_assert(std::is_base_of<tConstListRefNode, T>::value, "a list is made of places");

public:
  typedef typename std::decay<decltype(std::declval<T const&>().element())>::type value_type;

  class const_iterator
  {
    /// An element for the time of an access to one of its members.
    class cElement
    {
    public:
      explicit cElement(value_type const& value) : mValue(value) {}
      value_type const* operator->() const { return &mValue; }

    private:
      value_type mValue;
    };

  public:
    /// Behind the end of every list.
    const_iterator() {}
    /// At `node`, of which it keeps a copy.
    explicit const_iterator(T const& node) : mpNode(new T(node)) {}
    const_iterator(const_iterator const& other) : mpNode(other.mpNode ? new T(*other.mpNode) : nullptr) {}
    const_iterator(const_iterator&& other) = default;
    const_iterator& operator=(const_iterator const& other)
    {
      const_iterator copy(other);
      mpNode = copy.mpNode;
      return *this;
    }
    const_iterator& operator=(const_iterator&& other) = default;

    value_type operator*() const { return present("tConstListRef::operator*()").element(); }
    cElement operator->() const { return cElement(**this); }

    const_iterator& operator++()
    {
      present("tConstListRef::operator++()").setNext();
      return *this;
    }
    const_iterator operator++(int)
    {
      const_iterator old(*this);
      ++*this;
      return old;
    }

    /// Two that are behind the end are equal, whatever they walked over.
    bool operator==(const_iterator const& other) const
    {
      return isEnd() || other.isEnd() ? isEnd() == other.isEnd() : *mpNode == *other.mpNode;
    }
    bool operator!=(const_iterator const& other) const { return !(*this == other); }
    bool isEnd() const { return !mpNode || mpNode->isEnd(); }

  private:
    T& present(char const* operation) const
    {
      if (isEnd())
      {
        cSTDExceptions::throwOutOfBounds("tConstListRef", operation);
      }
      return *mpNode;
    }

    tAutoPtr<T> mpNode; // null behind the end
  };
  typedef const_iterator iterator;

  /// List from the place of `node`, which is copied, to the end.
  explicit tConstListRef(T const& node) : mNode(node) {}

  const_iterator begin() const { return const_iterator(mNode); }
  const_iterator end() const { return const_iterator(); }
  bool empty() const { return mNode.isEnd(); }

private:
  T mNode;
};

} // namespace mstd

#endif
