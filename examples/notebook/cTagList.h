#ifndef MORTISE_EXAMPLES_NOTEBOOK_CTAGLIST_H
#define MORTISE_EXAMPLES_NOTEBOOK_CTAGLIST_H

#include "cEntry.h"
#include "std/tVector.h"

/// A name and the tags that belong to it.
class cTagList : public cEntry
{
public:
  static constexpr char const* Kind = "tags";

  char const* kind() const override { return Kind; }
  mucs::cString line() const override;

  void append(mucs::cString const& tag) { mTags.append(tag); }

protected:
  void storeMembers(msa::cAbstractSerializer& serializer) const override;
  void loadMembers(msa::cAbstractDeserializer& deserializer) override;

private:
  mstd::tVector<mucs::cString> mTags;
};

#endif
