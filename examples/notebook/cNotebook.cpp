#include "cNotebook.h"

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"

void cNotebook::append(mstd::tAutoPtr<cEntry> pEntry)
{
  pEntry->setNumber(miNext);
  mEntries.append(pEntry);
  miNext++;
}

cEntry* cNotebook::find(unsigned int iNumber) const
{
  for (unsigned int i = 0; i < mEntries.length(); i++)
  {
    if (mEntries.at(i)->number() == iNumber)
    {
      return mEntries.at(i);
    }
  }
  return nullptr;
}

bool cNotebook::remove(unsigned int iNumber)
{
  for (unsigned int i = 0; i < mEntries.length(); i++)
  {
    if (mEntries.at(i)->number() == iNumber)
    {
      mEntries.erase(i);
      return true;
    }
  }
  return false;
}

msa::cAbstractSerializer& cNotebook::operator>>(msa::cAbstractSerializer& serializer) const
{
  msa::cContext context(serializer.newContext("notebook"));
  Version >> serializer.newLabel("version");
  miNext >> serializer.newLabel("next");
  msa::cContext entries(serializer.newLabel("entries").newContext("entries"));
  for (unsigned int i = 0; i < mEntries.length(); i++)
  {
    *mEntries.at(i) >> serializer;
  }
  entries.release();
  entries.unset();
  context.release();
  return serializer;
}

msa::cAbstractDeserializer& cNotebook::operator<<(msa::cAbstractDeserializer& deserializer)
{
  msa::cContext context(deserializer.getContext("notebook"));
  miVersion << deserializer.findLabel("version");
  miNext << deserializer.findLabel("next");
  msa::cContext entries(deserializer.findLabel("entries").getContext("entries"));
  while (!deserializer.eoc())
  {
    mstd::tAutoPtr<cEntry> pEntry = cEntry::create(deserializer.getNextContextTypeName());
    if (pEntry)
    {
      *pEntry << deserializer;
      mEntries.append(pEntry);
      continue;
    }
    msa::cContext unknown(deserializer.getContext(nullptr));
    unknown.release();
    miSkipped++;
  }
  entries.release();
  entries.unset();
  context.release();
  return deserializer;
}
