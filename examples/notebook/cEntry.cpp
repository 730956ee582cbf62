#include "cEntry.h"

#include "cNote.h"
#include "cTagList.h"
#include "cTask.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"

mstd::tAutoPtr<cEntry> cEntry::create(mstd::cAsciiString const& sKind)
{
  if (sKind == cNote::Kind)
  {
    return mstd::tAutoPtr<cEntry>(new cNote);
  }
  if (sKind == cTask::Kind)
  {
    return mstd::tAutoPtr<cEntry>(new cTask);
  }
  if (sKind == cTagList::Kind)
  {
    return mstd::tAutoPtr<cEntry>(new cTagList);
  }
  return mstd::tAutoPtr<cEntry>();
}

msa::cAbstractSerializer& cEntry::operator>>(msa::cAbstractSerializer& serializer) const
{
  msa::cContext context(serializer.newContext(kind()));
  miNumber >> serializer.newLabel("number");
  mCreated >> serializer.newLabel("created");
  mText >> serializer.newLabel("text");
  storeMembers(serializer);
  context.release();
  return serializer;
}

msa::cAbstractDeserializer& cEntry::operator<<(msa::cAbstractDeserializer& deserializer)
{
  msa::cContext context(deserializer.getContext(kind()));
  miNumber << deserializer.findLabel("number");
  mCreated << deserializer.findLabel("created");
  mText << deserializer.findLabel("text");
  loadMembers(deserializer);
  context.release();
  return deserializer;
}
