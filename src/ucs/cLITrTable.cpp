#include "ucs/cLITrTable.h"

#include "mp/cLocker.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/containerStream.h"
#include "std/cSTDExceptions.h"
#include "ucs/cLIMessage.h"

#include <string.h>

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
void put(mstd::tPtrVector<T>& aPlaces, unsigned int iPlace, mstd::tAutoPtr<T> pObject)
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
/// The first entry of each key, by a hash of the whole key. It knows no more than the lists do; whenever it can't be
/// sure to know the first one it is of no use, and the lists tell.
class cLITrTable::cIndex
{
public:
  cIndex() : mpSlots(new cSlot[FirstSize]()), miSize(FirstSize), miUsed(0), mpGone(newState(mpSlots)) {}
  cIndex(cIndex const&) = delete;
  cIndex& operator=(cIndex const&) = delete;
  ~cIndex()
  {
    delete[] mpSlots;
    cLITrItem::leave(mpGone);
  }

  /// Makes room for one more entry. At most half of the slots are used.
  void reserve()
  {
    if (mpGone->mIsGone || miUsed < miSize / 2)
    {
      return;
    }
    cSlot* const pOld = mpSlots;
    unsigned int const iOldSize = miSize;
    mpSlots = newSlots(2ull * miSize);
    miSize *= 2;
    for (unsigned int i = 0; i < iOldSize && !mpGone->mIsGone; ++i)
    {
      if (pOld[i].mpItem != 0)
      {
        put(pOld[i]);
      }
    }
    delete[] pOld;
  }

  /// Adds an entry for which there is room.
  void add(cLITrItem& rItem)
  {
    if (mpGone->mIsGone || !isPlain(rItem.key()))
    {
      return;
    }
    rItem.mGoneMark.set(mpGone);
    cSlot const slot = {hash(rItem.key()), &rItem};
    if (put(slot))
    {
      ++miUsed;
    }
  }

  cLITrItem const* find(mstd::cAsciiString const& sKey) const
  {
    if (mpGone->mIsGone || !isPlain(sKey))
    {
      return 0;
    }
    unsigned int const iHash = hash(sKey);
    for (unsigned int i = iHash;; ++i)
    {
      cSlot const& rSlot = mpSlots[i & (miSize - 1)];
      if (rSlot.mpItem == 0 || isSame(rSlot, iHash, sKey))
      {
        return rSlot.mpItem;
      }
    }
  }

private:
  enum
  {
    FirstSize = 16,
    MaxProbes = 256 // reached only by keys that are made for it
  };

  struct cSlot
  {
    unsigned int miHash;
    cLITrItem const* mpItem; // not owned; null: unused
  };

  /// Releases `pSlots` on failure.
  static cLITrItem::cGoneState* newState(cSlot* pSlots)
  {
    try
    {
      return new cLITrItem::cGoneState{1, false};
    }
    catch (...)
    {
      delete[] pSlots;
      throw;
    }
  }

  static cSlot* newSlots(unsigned long long iSize)
  {
    if (iSize > 0x80000000ull)
    {
      cSTDExceptions::throwBadAlloc();
    }
    return new cSlot[static_cast<unsigned int>(iSize)]();
  }

  /// Two keys with a 0 byte may be equal without having the same bytes.
  static bool isPlain(mstd::cAsciiString const& sKey) { return memchr(sKey.c_str(), 0, sKey.length()) == 0; }

  static bool isSame(cSlot const& rSlot, unsigned int iHash, mstd::cAsciiString const& sKey)
  {
    return rSlot.miHash == iHash && rSlot.mpItem->key().length() == sKey.length() &&
           memcmp(rSlot.mpItem->key().c_str(), sKey.c_str(), sKey.length()) == 0;
  }

  static unsigned int hash(mstd::cAsciiString const& sKey)
  {
    unsigned long long const cFactor = 0x9E3779B97F4A7C15ull;
    char const* pKey = sKey.c_str();
    unsigned int iLeft = sKey.length();
    unsigned long long iHash = iLeft * cFactor;
    unsigned long long iPart = 0;
    for (; iLeft > sizeof iPart; iLeft -= sizeof iPart, pKey += sizeof iPart)
    {
      memcpy(&iPart, pKey, sizeof iPart);
      iHash = (iHash ^ iPart) * cFactor;
      iHash ^= iHash >> 32;
    }
    iPart = 0;
    memcpy(&iPart, pKey, iLeft);
    iHash = (iHash ^ iPart) * cFactor;
    return static_cast<unsigned int>(iHash >> 32);
  }

  /// Puts an entry into a free slot, unless its key is there already; true if it did.
  bool put(cSlot const& rSlot)
  {
    for (unsigned int i = 0; i < MaxProbes; ++i)
    {
      cSlot& rPlace = mpSlots[(rSlot.miHash + i) & (miSize - 1)];
      if (rPlace.mpItem == 0)
      {
        rPlace = rSlot;
        return true;
      }
      if (isSame(rPlace, rSlot.miHash, rSlot.mpItem->key()))
      {
        return false;
      }
    }
    mpGone->mIsGone = true; // it is as if the entry were
    return false;
  }

  cSlot* mpSlots;
  unsigned int miSize; // a power of two
  unsigned int miUsed;
  cLITrItem::cGoneState* mpGone; // once it says so, the index is of no use any more
};

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
  cLITrItem& rItem = *pItem;
  if (!mpIndex)
  {
    mpIndex.reinit(new cIndex);
  }
  mpIndex->reserve();
  store(pItem);
  mpIndex->add(rItem);
}

/// Takes an entry over into the levels.
void cLITrTable::store(mstd::tAutoPtr<cLITrItem>& pItem)
{
  unsigned int const iPlace1 = hashKey1(pItem->key());
  unsigned int const iPlace2 = hashKey2(pItem->key());
  // What is new is complete before anything that is there changes, which is the last step.
  tPlaces* const pPlaces = find(*this, iPlace1);
  if (pPlaces == 0)
  {
    mstd::tAutoPtr<tPlaces> pNew(new tPlaces);
    put(*pNew, iPlace2, createItems(pItem));
    put(*this, iPlace1, pNew);
    return;
  }
  tItems* const pItems = find(*pPlaces, iPlace2);
  if (pItems == 0)
  {
    put(*pPlaces, iPlace2, createItems(pItem));
    return;
  }
  pItems->append(pItem);
}

cLITrItem const* cLITrTable::hasTranslation(mstd::cAsciiString const& sKey) const
{
  cLITrItem const* const pIndexed = mpIndex ? mpIndex->find(sKey) : 0;
  if (pIndexed != 0)
  {
    return pIndexed;
  }
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
  mpIndex.reinit(0);
}

void cLITrTable::swap(cLITrTable& tOther) noexcept
{
  if (this == &tOther)
  {
    return;
  }
  tPtrVector::swap(tOther);
  cIndex* const pIndex = mpIndex.release();
  mpIndex.reinit(tOther.mpIndex.release());
  tOther.mpIndex.reinit(pIndex);
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
