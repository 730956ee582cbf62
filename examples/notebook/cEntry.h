#ifndef MORTISE_EXAMPLES_NOTEBOOK_CENTRY_H
#define MORTISE_EXAMPLES_NOTEBOOK_CENTRY_H

#include "std/cAsciiString.h"
#include "std/cDateTime.h"
#include "std/tAutoPtr.h"
#include "ucs/cString.h"

namespace msa
{
class cAbstractDeserializer;
class cAbstractSerializer;
} // namespace msa

/// One entry of a notebook. It is stored as a context named after its kind; each member stands behind a label. A reader
/// looks for the labels that it knows, so members may be added and left out, and may change their order.
class cEntry
{
public:
  cEntry() : miNumber(0) {}
  virtual ~cEntry() = default;

  /// An entry of the kind, or nothing if this program knows no such kind.
  static mstd::tAutoPtr<cEntry> create(mstd::cAsciiString const& sKind);

  virtual char const* kind() const = 0;
  /// What a list shows of it, in one line.
  virtual mucs::cString line() const = 0;

  unsigned int number() const { return miNumber; }
  void setNumber(unsigned int iNumber) { miNumber = iNumber; }
  mucs::cString const& text() const { return mText; }
  void setText(mucs::cString const& text) { mText = text; }
  mstd::cDateTime const& created() const { return mCreated; }

  msa::cAbstractSerializer& operator>>(msa::cAbstractSerializer& serializer) const;
  /// The kind must be that of the next context.
  msa::cAbstractDeserializer& operator<<(msa::cAbstractDeserializer& deserializer);

protected:
  virtual void storeMembers(msa::cAbstractSerializer& serializer) const = 0;
  virtual void loadMembers(msa::cAbstractDeserializer& deserializer) = 0;

private:
  unsigned int miNumber;
  mstd::cDateTime mCreated; // now, until it is loaded
  mucs::cString mText;
};

#endif
