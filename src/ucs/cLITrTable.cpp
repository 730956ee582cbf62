#include "ucs/cLITrTable.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/containerStream.h"
#include "std/cSTDExceptions.h"
#include "ucs/cLIMessage.h"

#include <utility>

namespace
{
typedef mucs::cLITrTable::tItems tItems;
typedef mucs::cLITrTable::tPlaces tPlaces;

char const cPlacesLabel[] = "Hash-Part";
char const cItemsLabel[] = "Hash";
char const cItemLabel[] = "Translation";

/// A new list with one entry.
mstd::tAutoPtr<tItems> createItems(mstd::tAutoPtr<mucs::cLITrItem>& pItem)
{
  mstd::tAutoPtr<tItems> pItems(new tItems(tItems::Object));
  pItems->append(pItem);
  return pItems;
}

/// Puts an object into a place that is empty or does not exist yet.
template <typename T>
void store(mstd::tPtrVector<T>& aPlaces, unsigned int iPlace, mstd::tAutoPtr<T> pObject)
{
  if (aPlaces.length() <= iPlace)
  {
    aPlaces.resize(iPlace + 1);
  }
  aPlaces.at(iPlace) = pObject.release();
}

template <typename T>
T* find(mstd::tPtrVector<T> const& aPlaces, unsigned int iPlace)
{
  return iPlace < aPlaces.length() ? aPlaces.at(iPlace) : 0;
}

void write(tItems const& aItems, msa::cAbstractSerializer& sSerializer)
{
  msa::cContext cList(sSerializer.newContext(msa::ContainerContextName));
  for (mucs::cLITrItem const* pItem : aItems)
  {
    sSerializer.newLabel(cItemLabel);
    msa::cContext cItem(sSerializer.newContext(0));
    *pItem >> sSerializer;
    cItem.release();
  }
  cList.release();
}

void write(tPlaces const& aPlaces, msa::cAbstractSerializer& sSerializer)
{
  msa::cContext cPlaces(sSerializer.newContext(msa::ContainerContextName));
  for (unsigned int i = 0; i < aPlaces.length(); ++i)
  {
    bool const isUnused = aPlaces.at(i) == 0;
    sSerializer.store(isUnused);
    if (!isUnused)
    {
      sSerializer.newLabel(cItemsLabel);
      write(*aPlaces.at(i), sSerializer);
    }
  }
  cPlaces.release();
}

void readItems(mucs::cLITrTable& tTable, msa::cAbstractDeserializer& sDeserializer)
{
  msa::cContext cList(sDeserializer.getContext(0));
  while (!sDeserializer.eoc())
  {
    mstd::tAutoPtr<mucs::cLITrItem> pItem(new mucs::cLITrItem);
    msa::cContext cItem(sDeserializer.getContext(0));
    *pItem << sDeserializer;
    cItem.release();
    tTable.addTranslation(pItem);
  }
  cList.release();
}

bool readIsUnused(msa::cAbstractDeserializer& sDeserializer)
{
  bool isUnused = false;
  sDeserializer.load(isUnused);
  return isUnused;
}

void readPlaces(mucs::cLITrTable& tTable, msa::cAbstractDeserializer& sDeserializer)
{
  msa::cContext cPlaces(sDeserializer.getContext(0));
  while (!sDeserializer.eoc())
  {
    if (!readIsUnused(sDeserializer))
    {
      readItems(tTable, sDeserializer);
    }
  }
  cPlaces.release();
}

/// How many places of one level are used.
struct cUsage
{
  unsigned int miUnused = 0;
  unsigned int miUsed = 0;

  void count(bool isUsed) { ++(isUsed ? miUsed : miUnused); }
  unsigned int percentage() const
  {
    unsigned int const iPlaces = miUnused + miUsed;
    return iPlaces == 0 ? 0 : static_cast<unsigned int>(100ull * miUsed / iPlaces);
  }
};

mpi::cAbstractOut& operator<<(mpi::cAbstractOut& oOut, cUsage const& rUsage)
{
  return oOut << rUsage.miUnused << " unused / " << rUsage.miUsed << " used (" << rUsage.percentage() << "%)\n";
}
} // namespace

namespace mucs
{
cLITrTable::cLITrTable() = default;

cLITrTable::~cLITrTable() = default;

unsigned int cLITrTable::hashKey1(mstd::cAsciiString const& sKey)
{
  return sKey.length() % NumHash1;
}

unsigned int cLITrTable::hashKey2(mstd::cAsciiString const& sKey)
{
  unsigned int const iLength = sKey.length();
  if (iLength == 0)
  {
    return 0;
  }
  char const* const pKey = sKey.c_str();
  return (static_cast<unsigned char>(pKey[0]) + static_cast<unsigned char>(pKey[iLength / 2])) % NumHash2;
}

void cLITrTable::addTranslation(mstd::cAsciiString const& sKey, cString const& sTranslation)
{
  addTranslation(mstd::tAutoPtr<cLITrItem>(new cLITrItem(sKey, sTranslation)));
}

void cLITrTable::addTranslation(mstd::tAutoPtr<cLITrItem> pItem)
{
  unsigned int const iPlace1 = hashKey1(pItem->key());
  unsigned int const iPlace2 = hashKey2(pItem->key());
  // What is new is complete before anything that is there changes, which is the last step.
  tPlaces* const pPlaces = find(*this, iPlace1);
  if (pPlaces == 0)
  {
    mstd::tAutoPtr<tPlaces> pNew(new tPlaces);
    store(*pNew, iPlace2, createItems(pItem));
    store(*this, iPlace1, pNew);
    return;
  }
  tItems* const pItems = find(*pPlaces, iPlace2);
  if (pItems == 0)
  {
    store(*pPlaces, iPlace2, createItems(pItem));
    return;
  }
  pItems->append(pItem);
}

cLITrItem const* cLITrTable::hasTranslation(mstd::cAsciiString const& sKey) const
{
  tPlaces const* const pPlaces = find(*this, hashKey1(sKey));
  if (pPlaces == 0)
  {
    return 0;
  }
  tItems const* const pItems = find(*pPlaces, hashKey2(sKey));
  if (pItems == 0)
  {
    return 0;
  }
  for (cLITrItem const* pItem : *pItems)
  {
    if (pItem->key() == sKey)
    {
      return pItem;
    }
  }
  return 0;
}

bool cLITrTable::translation(cLIMessage const& mMessage, cString& sOut) const
{
  cLITrItem const* const pItem = hasTranslation(mMessage.key());
  if (pItem == 0)
  {
    mMessage.untranslated(sOut);
    return false;
  }
  mMessage.translate(pItem->translation(), sOut);
  return true;
}

void cLITrTable::clear()
{
  tPtrVector::clear();
}

void cLITrTable::swap(cLITrTable& tOther) noexcept
{
  tPtrVector::swap(tOther);
}

void cLITrTable::printStatistics() const
{
  mpi::cAbstractOut& out = mpi::system().out;
  mp::cLocker::cLock lock(out.mutex());
  out.debugMessage("ucs/cLITrTable", __LINE__);
  unsigned int iTranslations = 0;
  unsigned int iLists = 0;
  unsigned int iCollisions = 0;
  cUsage places1;
  cUsage places2;
  for (unsigned int i = 0; i < length(); ++i)
  {
    tPlaces const* const pPlaces = at(i);
    places1.count(pPlaces != 0);
    for (unsigned int j = 0; pPlaces != 0 && j < pPlaces->length(); ++j)
    {
      tItems const* const pItems = pPlaces->at(j);
      places2.count(pItems != 0);
      if (pItems == 0)
      {
        continue;
      }
      unsigned int const iItems = pItems->length();
      if (iItems == 0)
      {
        out << "Unused list detected: /" << i << "/" << j << "\n";
        continue;
      }
      ++iLists;
      iTranslations += iItems;
      iCollisions += iItems - 1;
      if (iItems > 1)
      {
        out << "Warning: List at /" << i << "/" << j << " contains collisions (" << iItems << " translations)\n";
        out << "         * First key is \"" << pItems->first()->key() << "\"\n";
      }
    }
  }
  out << "Number of translations  : " << iTranslations << "\n";
  out << "h1-places               : " << places1;
  out << "h2-places               : " << places2;
  out << "Number of used lists    : " << iLists << "\n";
  out << "Number of collisions    : " << iCollisions << "\n";
  out << mpi::cAbstractOut::clearDebugMessage();
}

// On each level a mark tells whether a place is unused.
msa::cAbstractSerializer& cLITrTable::operator>>(msa::cAbstractSerializer& sSerializer) const
{
  msa::cContext cPlaces(sSerializer.newContext(msa::ContainerContextName));
  for (unsigned int i = 0; i < length(); ++i)
  {
    bool const isUnused = at(i) == 0;
    sSerializer.store(isUnused);
    if (!isUnused)
    {
      sSerializer.newLabel(cPlacesLabel);
      write(*at(i), sSerializer);
    }
  }
  cPlaces.release();
  return sSerializer;
}

msa::cAbstractDeserializer& cLITrTable::operator<<(msa::cAbstractDeserializer& sDeserializer)
{
  cLITrTable tRead;
  msa::cContext cPlaces(sDeserializer.getContext(0));
  while (!sDeserializer.eoc())
  {
    if (!readIsUnused(sDeserializer))
    {
      readPlaces(tRead, sDeserializer);
    }
  }
  cPlaces.release();
  swap(tRead);
  return sDeserializer;
}
} // namespace mucs
