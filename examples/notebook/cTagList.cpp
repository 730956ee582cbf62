#include "cTagList.h"

#include "sa/containerStream.h"

mucs::cString cTagList::line() const
{
  mucs::cString line(text());
  for (unsigned int i = 0; i < mTags.length(); i++)
  {
    line += mucs::cString(i == 0 ? ": " : ", ");
    line += mTags.at(i);
  }
  return line;
}

void cTagList::storeMembers(msa::cAbstractSerializer& serializer) const
{
  mTags >> serializer.newLabel("tags");
}

void cTagList::loadMembers(msa::cAbstractDeserializer& deserializer)
{
  mTags << deserializer.findLabel("tags");
}
