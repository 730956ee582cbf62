#include "ucs/cLITrTable.h"

#include "support/cAllocationFault.h"
#include "support/cCaptureOut.h"
#include "support/expectFailure.h"
#include "textSupport.h"
#include "ucs/cLIMessage.h"

#include <gtest/gtest.h>

#include <string.h>

#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace
{

using mucs::cLIMessage;
using mucs::cLITrItem;
using mucs::cLITrTable;
using mucs::cString;

std::string found(cLITrTable const& table, char const* key)
{
  cLITrItem const* const pItem = table.hasTranslation(key);
  return pItem != nullptr ? support::ascii(pItem->translation()) : "(none)";
}

/// Which places are used, with the keys in their order: "4:[-,[ab,ba]] ".
std::string levels(cLITrTable const& table)
{
  std::string text;
  for (unsigned int i = 0; i < table.length(); ++i)
  {
    cLITrTable::tPlaces const* const pPlaces = table.at(i);
    if (pPlaces == nullptr)
    {
      continue;
    }
    text += std::to_string(i) + ":[";
    for (unsigned int j = 0; j < pPlaces->length(); ++j)
    {
      text += j != 0 ? "," : "";
      cLITrTable::tItems const* const pItems = pPlaces->at(j);
      if (pItems == nullptr)
      {
        text += "-";
        continue;
      }
      std::string keys;
      for (cLITrItem const* pItem : *pItems)
      {
        keys += (keys.empty() ? "" : ",") + std::string(pItem->key().c_str());
      }
      text += "(" + keys + ")";
    }
    text += "] ";
  }
  return text;
}

// --- places ----------------------------------------------------------------------------------------------------------

TEST(cLITrTable, TheFirstPlaceIsTheLengthModulo25)
{
  EXPECT_EQ(cLITrTable::hashKey1(""), 0u);
  EXPECT_EQ(cLITrTable::hashKey1("abc"), 3u);
  EXPECT_EQ(cLITrTable::hashKey1(std::string(24, 'x').c_str()), 24u);
  EXPECT_EQ(cLITrTable::hashKey1(std::string(25, 'x').c_str()), 0u);
  EXPECT_EQ(cLITrTable::hashKey1(std::string(51, 'x').c_str()), 1u);
}

TEST(cLITrTable, TheSecondPlaceIsTheFirstPlusTheMiddleByteModulo23)
{
  EXPECT_EQ(cLITrTable::hashKey2(""), 0u);
  EXPECT_EQ(cLITrTable::hashKey2("a"), ('a' + 'a') % 23u);
  EXPECT_EQ(cLITrTable::hashKey2("ab"), ('a' + 'b') % 23u);
  EXPECT_EQ(cLITrTable::hashKey2("abc"), ('a' + 'b') % 23u);
  EXPECT_EQ(cLITrTable::hashKey2("abcd"), ('a' + 'c') % 23u);
  EXPECT_EQ(cLITrTable::hashKey2("abcde"), ('a' + 'c') % 23u);
}

TEST(cLITrTable, BytesOfAKeyCountAsUnsigned)
{
  EXPECT_EQ(cLITrTable::hashKey2("\xFF\x80"), (255 + 128) % 23u);
  cLITrTable table;
  table.addTranslation("\xFF\x80", "x");
  EXPECT_EQ(found(table, "\xFF\x80"), "x");
}

TEST(cLITrTable, IsEmptyAtFirst)
{
  cLITrTable const table;
  EXPECT_EQ(table.length(), 0u);
  EXPECT_EQ(table.hasTranslation(""), nullptr);
  EXPECT_EQ(table.hasTranslation("a"), nullptr);
}

TEST(cLITrTable, VectorsAreAsLongAsTheirHighestPlaceAndUnusedPlacesAreNull)
{
  cLITrTable table;
  table.addTranslation("abc", "1"); // 3, ('a' + 'b') % 23 = 11
  ASSERT_EQ(table.length(), 4u);
  EXPECT_EQ(table.at(0), nullptr);
  EXPECT_EQ(table.at(2), nullptr);
  ASSERT_NE(table.at(3), nullptr);
  ASSERT_EQ(table.at(3)->length(), 12u);
  EXPECT_EQ(table.at(3)->at(0), nullptr);
  ASSERT_NE(table.at(3)->at(11), nullptr);
  EXPECT_EQ(table.at(3)->at(11)->length(), 1u);

  table.addTranslation("a", "2"); // 1, 10: in front of what is there
  EXPECT_EQ(table.length(), 4u);
  EXPECT_EQ(table.at(1)->length(), 11u);

  table.addTranslation("ccc", "3"); // 3, 14: behind what is there
  EXPECT_EQ(table.at(3)->length(), 15u);
  EXPECT_EQ(table.at(3)->at(12), nullptr);
  EXPECT_EQ(found(table, "abc"), "1");
  EXPECT_EQ(found(table, "a"), "2");
  EXPECT_EQ(found(table, "ccc"), "3");
}

TEST(cLITrTable, ThereAreAtMost25By23Lists)
{
  cLITrTable table;
  for (unsigned int i = 0; i < 5000; ++i)
  {
    std::string const key = std::string(i % 60, static_cast<char>('A' + i % 57)) + std::to_string(i);
    table.addTranslation(key.c_str(), cString(key.c_str()));
  }
  EXPECT_EQ(table.length(), 25u);
  for (unsigned int i = 0; i < table.length(); ++i)
  {
    ASSERT_NE(table.at(i), nullptr);
    EXPECT_LE(table.at(i)->length(), 23u);
  }
  for (unsigned int i = 0; i < 5000; ++i)
  {
    std::string const key = std::string(i % 60, static_cast<char>('A' + i % 57)) + std::to_string(i);
    ASSERT_EQ(found(table, key.c_str()), key);
  }
}

// --- entries ---------------------------------------------------------------------------------------------------------

TEST(cLITrTable, KeysOfEqualLengthAndSumShareAListAndAreBothFound)
{
  cLITrTable table;
  table.addTranslation("ab", "first");
  table.addTranslation("ba", "second");
  EXPECT_EQ(table.at(2)->at(cLITrTable::hashKey2("ab"))->length(), 2u);
  EXPECT_EQ(levels(table), "2:[-,-,-,-,-,-,-,-,-,-,-,(ab,ba)] ");
  EXPECT_EQ(found(table, "ab"), "first");
  EXPECT_EQ(found(table, "ba"), "second");
}

TEST(cLITrTable, AnEmptyKeyStandsInTheListAtZeroZero)
{
  cLITrTable table;
  table.addTranslation("", "nothing");
  ASSERT_EQ(table.length(), 1u);
  ASSERT_EQ(table.at(0)->length(), 1u);
  EXPECT_EQ(table.at(0)->at(0)->first()->translation(), cString("nothing"));
  EXPECT_EQ(found(table, ""), "nothing");
}

TEST(cLITrTable, TheFirstEntryOfAKeyWinsAndTheOthersAreKept)
{
  cLITrTable table;
  table.addTranslation("key", "first");
  table.addTranslation("key", "second");
  EXPECT_EQ(found(table, "key"), "first");
  EXPECT_EQ(levels(table).substr(levels(table).find('(')), "(key,key)] ");
}

TEST(cLITrTable, AKeyIsMissedOnEachLevel)
{
  cLITrTable table;
  table.addTranslation("abc", "1");                    // 3, 11
  table.addTranslation("abcde", "2");                  // 5, 12
  EXPECT_EQ(table.hasTranslation("abcdefg"), nullptr); // beyond the first level
  EXPECT_EQ(table.hasTranslation("abcd"), nullptr);    // unused on the first level
  EXPECT_EQ(table.hasTranslation("azz"), nullptr);     // beyond the second level: ('a' + 'z') % 23 = 12
  EXPECT_EQ(table.hasTranslation("aac"), nullptr);     // unused on the second level
  EXPECT_EQ(table.hasTranslation("abd"), nullptr);     // not in the list
}

TEST(cLITrTable, AnEntryIsTakenOver)
{
  cLITrTable table;
  mstd::tAutoPtr<cLITrItem> pItem(new cLITrItem("key", "text"));
  cLITrItem const* const pKept = pItem.get();
  table.addTranslation(pItem);
  EXPECT_EQ(pItem.get(), nullptr);
  EXPECT_EQ(table.hasTranslation("key"), pKept);
}

TEST(cLITrTable, NoEntryIsAnAssertionFailure)
{
  cLITrTable table;
  support::expectAssertion([&] { table.addTranslation(mstd::tAutoPtr<cLITrItem>()); }, "mpPointer != 0",
                           "std/tAutoPtr");
  EXPECT_EQ(table.length(), 0u);
}

TEST(cLITrTable, CanBeClearedAndFilledAgain)
{
  cLITrTable table;
  table.addTranslation("key", "old");
  table.clear();
  EXPECT_EQ(table.length(), 0u);
  EXPECT_EQ(found(table, "key"), "(none)");
  table.addTranslation("key", "new");
  EXPECT_EQ(found(table, "key"), "new");
}

TEST(cLITrTable, SwapsItsEntries)
{
  cLITrTable a;
  cLITrTable b;
  a.addTranslation("one", "1");
  b.addTranslation("three", "3");
  cLITrItem const* const pOne = a.hasTranslation("one");
  a.swap(b);
  EXPECT_EQ(found(a, "one"), "(none)");
  EXPECT_EQ(found(a, "three"), "3");
  EXPECT_EQ(b.hasTranslation("one"), pOne);
  EXPECT_EQ(found(b, "three"), "(none)");
}

TEST(cLITrTable, TheFreeSwapIsTheSame)
{
  cLITrTable a;
  cLITrTable b;
  a.addTranslation("one", "1");
  b.addTranslation("three", "3");
  using std::swap;
  swap(a, b);
  a.addTranslation("one", "new");
  EXPECT_EQ(found(a, "one"), "new");
  EXPECT_EQ(found(b, "one"), "1");
  EXPECT_EQ(found(b, "three"), "(none)");
}

TEST(cLITrTable, CannotBeCopied)
{
  EXPECT_FALSE(std::is_copy_constructible<cLITrTable>::value);
  EXPECT_FALSE(std::is_copy_assignable<cLITrTable>::value);
}

TEST(cLITrTable, IsAsItWasWhenThereIsNoMemoryForAnEntry)
{
  if (!support::cAllocationFault::seesNew())
  {
    GTEST_SKIP() << "a sanitizer has an allocator of its own";
  }
  mstd::cAsciiString const sOld("abc");
  cString const sText("text");
  // into a new place of both levels, of the second, and into a list that is there
  for (char const* key : {"abcdefghi", "ccc", "cba"})
  {
    mstd::cAsciiString const sKey(key);
    bool isDone = false;
    for (unsigned int iNth = 1; !isDone; ++iNth)
    {
      cLITrTable table;
      table.addTranslation(sOld, "old");
      std::string const before = levels(table);
      unsigned int const iLength = table.length();
      unsigned int const iPlaces = table.at(3)->length();
      bool isRefused = false;
      {
        support::cAllocationFault fault(iNth);
        try
        {
          table.addTranslation(sKey, sText);
        }
        catch (std::bad_alloc const&)
        {
          isRefused = true;
        }
        isDone = !fault.hasFired();
      }
      EXPECT_NE(isRefused, isDone) << key << " " << iNth;
      if (isRefused)
      {
        EXPECT_EQ(levels(table), before) << key << " " << iNth;
        EXPECT_EQ(table.length(), iLength) << key << " " << iNth;
        EXPECT_EQ(table.at(3)->length(), iPlaces) << key << " " << iNth;
        EXPECT_EQ(table.hasTranslation(sKey), nullptr) << key << " " << iNth;
      }
      ASSERT_LT(iNth, 100u);
    }
  }
}

// --- entries that are changed behind the table's back
// -----------------------------------------------------------------

TEST(cLITrTable, EntriesThatAreRemovedOnALevelAreNotFound)
{
  cLITrTable table;
  for (unsigned int i = 0; i < 100; ++i)
  {
    table.addTranslation(std::to_string(i).c_str(), cString(std::to_string(i).c_str()));
  }
  table.addTranslation("ab", "first");
  table.addTranslation("ba", "second");
  table.addTranslation("ab", "third");
  cLITrTable::tItems& items = *table.at(2)->at(cLITrTable::hashKey2("ab"));
  while (items.first()->translation() != "first")
  {
    items.erase(items.begin());
  }
  items.erase(items.begin());
  EXPECT_EQ(found(table, "ab"), "third");
  EXPECT_EQ(found(table, "ba"), "second");
  EXPECT_EQ(found(table, "7"), "7");
  delete table.at(1);
  table.at(1) = nullptr;
  EXPECT_EQ(found(table, "7"), "(none)");
  EXPECT_EQ(found(table, "ba"), "second");
  table.addTranslation("7", "again");
  EXPECT_EQ(found(table, "7"), "again");
  table.clear();
  EXPECT_EQ(found(table, "7"), "(none)");
  table.addTranslation("7", "new");
  EXPECT_EQ(found(table, "7"), "new");
}

TEST(cLITrTable, EntriesThatAreAddedOnALevelAreFound)
{
  cLITrTable table;
  table.addTranslation("ab", "1");
  table.at(2)->at(cLITrTable::hashKey2("ab"))->append(new cLITrItem("ba", "2"));
  EXPECT_EQ(found(table, "ba"), "2");
}

TEST(cLITrTable, ACopyOfAnEntryMayGo)
{
  cLITrTable table;
  table.addTranslation("ab", "1");
  {
    cLITrItem copy(*table.hasTranslation("ab"));
    cLITrItem assigned;
    assigned = copy;
    EXPECT_EQ(assigned.translation(), cString("1"));
  }
  EXPECT_EQ(found(table, "ab"), "1");
}

TEST(cLITrTable, AnEntryMayOutliveItsTable)
{
  cLITrItem* pItem = nullptr;
  {
    cLITrTable table;
    table.addTranslation("ab", "1");
    table.addTranslation("ab", "2");
    cLITrTable::tItems& items = *table.at(2)->at(cLITrTable::hashKey2("ab"));
    pItem = *items.begin();
    *items.begin() = nullptr; // taken out of the list
    items.erase(items.begin());
    EXPECT_EQ(found(table, "ab"), "1"); // still there for who took it
    delete *items.begin();
    *items.begin() = nullptr;
    items.erase(items.begin());
    EXPECT_EQ(found(table, "ab"), "(none)");
  }
  {
    cLITrTable other;
    other.addTranslation(mstd::tAutoPtr<cLITrItem>(pItem));
    EXPECT_EQ(found(other, "ab"), "1");
  }
}

TEST(cLITrTable, ATableWhoseLevelsWentElsewhereMayGo)
{
  cLITrTable a;
  {
    cLITrTable b;
    b.addTranslation("ab", "1");
    static_cast<mstd::tPtrVector<cLITrTable::tPlaces>&>(a).swap(b);
  }
  EXPECT_EQ(found(a, "ab"), "1");
  a.clear();
  EXPECT_EQ(found(a, "ab"), "(none)");
}

TEST(cLITrTable, KeysMayHoldZeroBytes)
{
  cLITrTable table;
  mstd::cAsciiString sKey("ab");
  sKey.at(1) = 0;
  table.addTranslation("ab", "1");
  table.addTranslation(sKey, "2");
  cLITrItem const* const pItem = table.hasTranslation(sKey);
  ASSERT_NE(pItem, nullptr);
  EXPECT_EQ(pItem->translation(), cString("2"));
  EXPECT_EQ(found(table, "ab"), "1");
}

TEST(cLITrTable, KeysThatDifferBehindAZeroByteAreEqual)
{
  mstd::cAsciiString sFirst("axb");
  mstd::cAsciiString sSecond("axc");
  sFirst.at(1) = 0;
  sSecond.at(1) = 0;
  ASSERT_TRUE(sFirst == sSecond);
  cLITrTable table;
  table.addTranslation(sFirst, "1");
  table.addTranslation(sSecond, "2");
  ASSERT_NE(table.hasTranslation(sSecond), nullptr);
  EXPECT_EQ(table.hasTranslation(sSecond)->translation(), cString("1"));
}

/// What the table takes of a key of up to eight bytes to find it.
unsigned int hashOf(std::string const& key)
{
  unsigned long long const factor = 0x9E3779B97F4A7C15ull;
  unsigned long long bytes = 0;
  memcpy(&bytes, key.data(), key.size());
  return static_cast<unsigned int>(((key.size() * factor) ^ bytes) * factor >> 32);
}

TEST(cLITrTable, KeysThatAreMadeToCollideAreFound)
{
  std::vector<std::string> keys;
  for (unsigned int i = 0; keys.size() < 400; ++i)
  {
    std::string const key = std::to_string(i);
    if (hashOf(key) % 1024 == 0)
    {
      keys.push_back(key);
    }
  }
  cLITrTable table;
  for (std::string const& key : keys)
  {
    table.addTranslation(key.c_str(), cString(key.c_str()));
  }
  for (std::string const& key : keys)
  {
    table.addTranslation(key.c_str(), "never found");
  }
  for (std::string const& key : keys)
  {
    ASSERT_EQ(found(table, key.c_str()), key);
  }
}

TEST(cLITrTable, TheFirstOfAKeyCountsAlsoWhenTheTableHasGrownSince)
{
  std::vector<std::string> keys;
  for (unsigned int i = 0; keys.size() < 300; ++i)
  {
    std::string const key = std::to_string(i);
    if (hashOf(key) % 1024 == 0)
    {
      keys.push_back(key);
    }
  }
  cLITrTable table;
  for (std::string const& key : keys)
  {
    table.addTranslation(key.c_str(), cString(key.c_str()));
  }
  for (unsigned int i = 0; i < 2000; ++i) // makes room for those that found none
  {
    table.addTranslation(("other " + std::to_string(i)).c_str(), "x");
  }
  for (std::string const& key : keys)
  {
    table.addTranslation(key.c_str(), "never found");
    ASSERT_EQ(found(table, key.c_str()), key);
  }
}

TEST(cLITrTable, KeysOfTheSameHashAreToldApart)
{
  std::map<unsigned int, std::string> keys;
  std::string first;
  std::string second;
  for (unsigned int i = 0; first.empty() && i < 2000000; ++i)
  {
    std::string const key = std::to_string(i);
    auto const inserted = keys.emplace(hashOf(key), key);
    if (!inserted.second)
    {
      first = inserted.first->second;
      second = key;
    }
  }
  ASSERT_FALSE(first.empty());
  cLITrTable table;
  table.addTranslation(first.c_str(), "1");
  EXPECT_EQ(found(table, second.c_str()), "(none)");
  table.addTranslation(second.c_str(), "2");
  EXPECT_EQ(found(table, first.c_str()), "1");
  EXPECT_EQ(found(table, second.c_str()), "2");
}

// --- messages --------------------------------------------------------------------------------------------------------

TEST(cLITrTable, TranslatesAMessageWithItsParameters)
{
  cLITrTable table;
  table.addTranslation("A %x% b %y%", "%y% dann %x%");
  cString sOut("before");
  EXPECT_TRUE(table.translation(cLIMessage() << "$MTR$A %x% b %y%" << 1 << 2, sOut));
  EXPECT_EQ(sOut, cString("2 dann 1"));
}

TEST(cLITrTable, WithoutAnEntryAMessageStaysUntranslated)
{
  cLITrTable table;
  cString sOut("before");
  EXPECT_FALSE(table.translation(cLIMessage() << "$MTR$A %x%" << 1, sOut));
  EXPECT_EQ(sOut, cString("A 1"));
}

TEST(cLITrTable, AMessageNotToBeTranslatedIsFoundAndKeepsItsWording)
{
  cLITrTable table;
  table.addTranslation("Value %v%", "Wert %v%");
  cString sOut;
  EXPECT_TRUE(table.translation(cLIMessage() << "$MNTR$Value %v%" << 3, sOut));
  EXPECT_EQ(sOut, cString("Value 3"));
}

TEST(cLITrTable, ParametersAreNotTranslated)
{
  cLITrTable table;
  table.addTranslation("%a% and more", "%a% und mehr");
  table.addTranslation("cat", "Katze");
  cString sOut;
  EXPECT_TRUE(table.translation(cLIMessage() << "$MTR$%a% and more"
                                             << "cat",
                                sOut));
  EXPECT_EQ(sOut, cString("cat und mehr"));
}

// --- statistics ------------------------------------------------------------------------------------------------------

TEST(cLITrTable, StatisticsOfAnEmptyTable)
{
  support::cCaptureOut out;
  cLITrTable().printStatistics();
  EXPECT_EQ(out.text(), "Number of translations  : 0\r\n"
                        "h1-places               : 0 unused / 0 used (0%)\r\n"
                        "h2-places               : 0 unused / 0 used (0%)\r\n"
                        "Number of used lists    : 0\r\n"
                        "Number of collisions    : 0\r\n");
  ASSERT_EQ(out.lines().size(), 5u);
  for (support::cCaptureOut::cLine const& line : out.lines())
  {
    EXPECT_EQ(line.file, "ucs/cLITrTable");
  }
  EXPECT_EQ(mpi::system().out.debugFileName(), nullptr);
}

TEST(cLITrTable, StatisticsNameCollisions)
{
  cLITrTable table;
  table.addTranslation("ab", "1");
  table.addTranslation("ba", "2");
  table.addTranslation("ab", "3");
  table.addTranslation("abc", "4"); // 3, 11
  table.addTranslation("", "5");
  table.addTranslation("ccc", "6"); // 3, 14
  support::cCaptureOut out;
  table.printStatistics();
  EXPECT_EQ(out.text(), "Warning: List at /2/11 contains collisions (3 translations)\r\n"
                        "         * First key is \"ab\"\r\n"
                        "Number of translations  : 6\r\n"
                        "h1-places               : 1 unused / 3 used (75%)\r\n"
                        "h2-places               : 24 unused / 4 used (14%)\r\n"
                        "Number of used lists    : 4\r\n"
                        "Number of collisions    : 2\r\n");
}

TEST(cLITrTable, StatisticsNameListsWithoutEntries)
{
  cLITrTable table;
  table.addTranslation("", "1");
  table.at(0)->at(0)->clear();
  support::cCaptureOut out;
  table.printStatistics();
  EXPECT_EQ(out.text(), "Unused list detected: /0/0\r\n"
                        "Number of translations  : 0\r\n"
                        "h1-places               : 0 unused / 1 used (100%)\r\n"
                        "h2-places               : 0 unused / 1 used (100%)\r\n"
                        "Number of used lists    : 0\r\n"
                        "Number of collisions    : 0\r\n");
}

} // namespace
