#ifndef MORTISE_SA_CREFERENCEFRAME_H
#define MORTISE_SA_CREFERENCEFRAME_H

#include "sa/cAbstractTypeReference.h"
#include "sa/cTypeReference.h"
#include "std/tPtrList.h"

#include <new>
#include <type_traits>
#include <typeinfo>

namespace msa
{

class cAbstractDeserializer;
class cAbstractSerializer;

/// Typed argument list: references to variables of any type, in order, with a reading position.
///
/// The arguments of a call come first, in the order of the parameters, and the return value comes last:
///
///     msa::cReferenceFrame frame;
///     frame.addRef(iCount, false, true).addRef(sName, false, true).addRef(result, true, false);
///
/// A stream holds the values one behind the other and nothing of the frame itself, so reader and writer have to agree
/// on its shape.
///
/// Ownership: owns the references, and refers to the variables, which must outlive it. The list that it is made of is
///            its own affair, since a reference lives in the node of the list, and the first few nodes in the frame.
/// Errors:    reading behind the last reference raises mstd::cOutOfBoundsException. What fails leaves the frame as it
///            was, also the reading position.
/// Validity:  references to a reference end with swap(), append() and assignment.
/// Threads:   belongs to the thread of the call.
/// Cost:      the first InlineReferences references take no memory, each further one an allocation; a copy takes two
///            for each reference.
class MORTISE_API cReferenceFrame : private mstd::tPtrList<cAbstractTypeReference>
{
  typedef mstd::tPtrList<cAbstractTypeReference> cList;

public:
  enum
  {
    InlineReferences = 4 ///< three arguments and the return value
  };

  typedef cList::const_iterator const_iterator;

  /// Empty.
  cReferenceFrame() noexcept
      : cList(cList::Object), mReadPos(cList::end()), mpNextRestarted(nullptr), mIsStreaming(false), miInline(0)
  {
  }
  /// Refers to the same variables; the reading position is at the start.
  cReferenceFrame(cReferenceFrame const& other);
  cReferenceFrame& operator=(cReferenceFrame const& other);
  ~cReferenceFrame() override;

  /// Exchanges the references, and sets both reading positions to the start.
  void swap(cReferenceFrame& other) noexcept;

  /// Appends a reference to `value`, whose type has stream operators. `bAlterable`: the receiver may write to it, and
  /// its value then goes back to the caller. `bReadable`: it has a value on entry. The reading position of a frame that
  /// was empty is then the first reference.
  template <class T>
  cReferenceFrame& addRef(T& value, bool bAlterable, bool bReadable);
  /// Appends a nested frame. Frames that come to contain themselves can be read and not be streamed.
  cReferenceFrame& addRef(cReferenceFrame& frame, bool bAlterable, bool bReadable)
  {
    return addRef<cReferenceFrame>(frame, bAlterable, bReadable);
  }
  /// Appends copies of the references of `other`. The reading position goes to the start, unless `other` is empty.
  void append(cReferenceFrame const& other);
  /// The same, but the reading position stays.
  void append_net(cReferenceFrame const& other);

  using cList::empty;
  using cList::kind;
  using cList::length;
  const_iterator begin() const { return cList::begin(); }
  const_iterator end() const noexcept { return cList::end(); }

  /// True while there is a reference at the reading position.
  bool canRead() const noexcept { return mReadPos != const_cast<cReferenceFrame*>(this)->cList::end(); }
  /// The reference at the reading position.
  cAbstractTypeReference& currentReference() const { return **mReadPos; }
  /// Goes to the next reference, whatever the type of this one.
  void skipNext() { ++mReadPos; }
  /// The variable at the reading position, which has to be a `T`; then goes to the next reference. Another type raises
  /// mstd::cTypeMissmatchException. The argument only names the type.
  template <class T>
  T& readNext(T const* pTag = nullptr);
  /// Sets the reading position to the start, here and in all nested frames, at any depth. O(number of references), and
  /// no stack for nested frames.
  void restartReading();

  /// \name Streams
  /// A failure of a reference comes as a mstd::cRuntimeException with the failure linked behind it. What was written or
  /// read before it stays. A frame that is to be streamed while it is being streamed, because it contains itself, is an
  /// assertion failure. Each level of nested frames takes some stack.
  /// @{
  /// Writes all values.
  void store(cAbstractSerializer& serializer) const;
  /// Writes the values of those references that are alterable, if `bAlterable` is set, and readable, if `bReadable` is
  /// set. False selects nothing: it is no filter.
  void store(cAbstractSerializer& serializer, bool bAlterable, bool bReadable) const;
  /// Reads all values.
  void load(cAbstractDeserializer& deserializer);
  /// Reads the values of the references that store() with the same flags writes.
  void load(cAbstractDeserializer& deserializer, bool bAlterable, bool bReadable);
  /// Reads the value of the last reference, the return value.
  void loadLast(cAbstractDeserializer& deserializer);
  /// @}

private:
  typedef mstd::tListElementNodeType<cAbstractTypeReference*> cElementNode;

  // Node made by addRef(): its reference is a part of it.
  class cNode : public cElementNode
  {
  public:
    cNode() : cElementNode(nullptr) {}
    // Makes the same node anew at `pPlace`, in the same place of the list, and destroys this one.
    virtual void moveTo(void* pPlace) noexcept = 0;
  };

  template <class T>
  class tNode : public cNode
  {
  public:
    tNode(T& value, bool bAlterable, bool bReadable) : mReference(value, bAlterable, bReadable)
    {
      this->value() = &mReference;
    }
    void moveTo(void* pPlace) noexcept override;

  private:
    cTypeReference<T> mReference;
  };

  // The memory of this one is a part of the frame, and so is not given back when the list destroys the node.
  template <class T>
  class tInlineNode : public tNode<T>
  {
  public:
    using tNode<T>::tNode;
    static void operator delete(void*) noexcept {}
  };

  struct cPlace
  {
    alignas(tInlineNode<piVoid>) unsigned char mBytes[sizeof(tInlineNode<piVoid>)];
  };

  void beforeNodeDestroy(cElementNode&) const override {} // nodes take their references along
  void moveNodes(cPlace* pFrom, cPlace* pTo) noexcept;
  static void checkName(cAbstractTypeReference& reference, char const* pMangledName, char const* pName);

  class cStreaming;

  iterator mReadPos;
  cReferenceFrame* mpNextRestarted; // chain of those that a restart has met; null in all others
  mutable bool mIsStreaming;
  unsigned int miInline; // places taken
  cPlace mPlaces[InlineReferences];
};

/// store() and load() of all values.
MORTISE_API cReferenceFrame const& operator>>(cReferenceFrame const& frame, cAbstractSerializer& serializer);
MORTISE_API cAbstractDeserializer& operator<<(cReferenceFrame& frame, cAbstractDeserializer& deserializer);

// ---------------------------------------------------------------------------------------------------------------------

template <class T>
void cReferenceFrame::tNode<T>::moveTo(void* pPlace) noexcept
{
  cElementNode* const moved =
      ::new (pPlace) tInlineNode<T>(mReference.value(), mReference.alterable(), mReference.readable());
  moved->linkBefore(*this);
  this->~tNode();
}

template <class T>
cReferenceFrame& cReferenceFrame::addRef(T& value, bool bAlterable, bool bReadable)
{
  static_assert(!std::is_const<T>::value, "a frame refers to variables");
  static_assert(sizeof(tInlineNode<T>) == sizeof(cPlace), "nodes of all types share the places of the frame");
  cElementNode* node;
  if (__builtin_expect(miInline < InlineReferences, 1))
  {
    node = ::new (mPlaces[miInline].mBytes) tInlineNode<T>(value, bAlterable, bReadable);
    ++miInline;
  }
  else
  {
    node = new tNode<T>(value, bAlterable, bReadable);
  }
  bool const isFirst = empty();
  node->linkBefore(*cList::end().node());
  if (isFirst)
  {
    mReadPos = cList::begin();
  }
  return *this;
}

// The cast is right by name where the type's run-time information exists twice, once for each library that uses it.
template <class T>
__attribute__((no_sanitize("vptr"))) T& cReferenceFrame::readNext(T const*)
{
  cAbstractTypeReference& reference = currentReference();
  if (__builtin_expect(&typeid(reference) != &typeid(cTypeReference<T>), 0) &&
      dynamic_cast<cTypeReference<T>*>(&reference) == nullptr)
  {
    checkName(reference, typeid(T).name(), tTypeName<T>::name());
  }
  skipNext();
  return static_cast<cTypeReference<T>&>(reference).value();
}

} // namespace msa

#endif
