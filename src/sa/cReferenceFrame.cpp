#include "sa/cReferenceFrame.h"

#include "sa/cSAExceptions.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/cSTDExceptions.h"

#include <string.h>
#include <utility>

namespace msa
{

/// The span of a store() or load().
class cReferenceFrame::cStreaming
{
public:
  explicit cStreaming(cReferenceFrame const& frame) : mFrame(frame)
  {
    if (frame.mIsStreaming)
    {
      cSTDExceptions::throwAssertionFailed("!mIsStreaming", "sa/cReferenceFrame", __LINE__);
    }
    frame.mIsStreaming = true;
  }
  cStreaming(cStreaming const&) = delete;
  cStreaming& operator=(cStreaming const&) = delete;
  ~cStreaming() { mFrame.mIsStreaming = false; }

private:
  cReferenceFrame const& mFrame;
};

cReferenceFrame::cReferenceFrame(cReferenceFrame const& other) : cReferenceFrame()
{
  append_net(other);
}

cReferenceFrame& cReferenceFrame::operator=(cReferenceFrame const& other)
{
  cReferenceFrame copy(other);
  swap(copy);
  return *this;
}

cReferenceFrame::~cReferenceFrame()
{
  cList::clear(); // while the nodes can still tell this list how they go
}

void cReferenceFrame::swap(cReferenceFrame& other) noexcept
{
  if (this != &other)
  {
    cList::swap(other);
    // What was in the places of the one is now in the list of the other, and moves over to its places.
    cPlace places[InlineReferences];
    other.moveNodes(mPlaces, places);
    moveNodes(other.mPlaces, mPlaces);
    other.moveNodes(places, other.mPlaces);
    std::swap(miInline, other.miInline);
    other.mReadPos = other.cList::begin();
  }
  mReadPos = cList::begin();
}

// Moves the nodes of this list that stand in the places `pFrom`.
void cReferenceFrame::moveNodes(cPlace* pFrom, cPlace* pTo) noexcept
{
  piAddress const from = reinterpret_cast<piAddress>(pFrom);
  iterator it = cList::begin();
  while (it != cList::end())
  {
    cElementNode& node = static_cast<cElementNode&>(*it.node());
    ++it;
    piAddress const offset = reinterpret_cast<piAddress>(&node) - from;
    if (offset < InlineReferences * sizeof(cPlace))
    {
      static_cast<cNode&>(node).moveTo(pTo[offset / sizeof(cPlace)].mBytes);
    }
  }
}

void cReferenceFrame::append(cReferenceFrame const& other)
{
  if (other.empty())
  {
    return;
  }
  cReferenceFrame copy(*this);
  copy.append_net(other);
  swap(copy);
}

void cReferenceFrame::append_net(cReferenceFrame const& other)
{
  // Node that owns a reference which made itself.
  class cCloneNode : public cElementNode
  {
  public:
    explicit cCloneNode(cAbstractTypeReference& source) : cElementNode(nullptr) { value() = source.create(); }
    ~cCloneNode() override { delete value(); }
  };

  bool const isFirst = empty();
  cReferenceFrame clones;
  for (cAbstractTypeReference* reference : other)
  {
    cElementNode* const node = new cCloneNode(*reference);
    node->linkBefore(*clones.cList::end().node());
  }
  splice(clones);
  if (isFirst)
  {
    mReadPos = cList::begin();
  }
}

void cReferenceFrame::restartReading()
{
  // Frames may be nested deeper than the stack, stand in several places, and contain themselves: each one that is met
  // first goes to the end of a chain, on which the walk follows. The last one leads to itself.
  cReferenceFrame* last = this;
  mpNextRestarted = this;
  for (cReferenceFrame* frame = this;; frame = frame->mpNextRestarted)
  {
    frame->mReadPos = frame->cList::begin();
    for (cAbstractTypeReference* reference : *frame)
    {
      cReferenceFrame* const nested = reference->isSubReferenceFrame();
      if (nested != nullptr && nested->mpNextRestarted == nullptr)
      {
        last->mpNextRestarted = nested;
        nested->mpNextRestarted = nested;
        last = nested;
      }
    }
    if (frame == last)
    {
      break;
    }
  }
  cReferenceFrame* frame = this;
  while (frame != last)
  {
    cReferenceFrame* const next = frame->mpNextRestarted;
    frame->mpNextRestarted = nullptr;
    frame = next;
  }
  last->mpNextRestarted = nullptr;
}

void cReferenceFrame::checkName(cAbstractTypeReference& reference, char const* pMangledName, char const* pName)
{
  if (strcmp(reference.mangeledTypeName(), pMangledName) != 0)
  {
    cSAExceptions::throwTypeMissmatch(reference.typeName(), pName, mstd::cAsciiString());
  }
}

void cReferenceFrame::store(cAbstractSerializer& serializer) const
{
  cStreaming const streaming(*this);
  try
  {
    for (cAbstractTypeReference* reference : *this)
    {
      reference->store(serializer);
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    cSAExceptions::throwSerializationError(e, "cReferenceFrame");
  }
}

namespace
{

bool isSelected(cAbstractTypeReference const& reference, bool bAlterable, bool bReadable)
{
  return (!bAlterable || reference.alterable()) && (!bReadable || reference.readable());
}

} // namespace

void cReferenceFrame::store(cAbstractSerializer& serializer, bool bAlterable, bool bReadable) const
{
  cStreaming const streaming(*this);
  try
  {
    for (cAbstractTypeReference* reference : *this)
    {
      if (isSelected(*reference, bAlterable, bReadable))
      {
        reference->store(serializer);
      }
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    cSAExceptions::throwSerializationError(e, "cReferenceFrame::storeAlterable");
  }
}

void cReferenceFrame::load(cAbstractDeserializer& deserializer)
{
  cStreaming const streaming(*this);
  try
  {
    for (cAbstractTypeReference* reference : *this)
    {
      reference->load(deserializer);
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    cSAExceptions::throwDeserializationError(e, "cReferenceFrame");
  }
}

void cReferenceFrame::load(cAbstractDeserializer& deserializer, bool bAlterable, bool bReadable)
{
  cStreaming const streaming(*this);
  try
  {
    for (cAbstractTypeReference* reference : *this)
    {
      if (isSelected(*reference, bAlterable, bReadable))
      {
        reference->load(deserializer);
      }
    }
  }
  catch (mstd::cAbstractException const& e)
  {
    cSAExceptions::throwDeserializationError(e, "cReferenceFrame::load-alterables");
  }
}

void cReferenceFrame::loadLast(cAbstractDeserializer& deserializer)
{
  cStreaming const streaming(*this);
  try
  {
    cList::last()->load(deserializer);
  }
  catch (mstd::cAbstractException const& e)
  {
    cSAExceptions::throwDeserializationError(e, "cReferenceFrame::loadFirst");
  }
}

cReferenceFrame const& operator>>(cReferenceFrame const& frame, cAbstractSerializer& serializer)
{
  frame.store(serializer);
  return frame;
}

cAbstractDeserializer& operator<<(cReferenceFrame& frame, cAbstractDeserializer& deserializer)
{
  frame.load(deserializer);
  return deserializer;
}

} // namespace msa
