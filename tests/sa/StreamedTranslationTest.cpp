// Translation tables on a stream.

#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/tAutoPtr.h"
#include "support/exceptionText.h"
#include "support/goldenStreams.h"
#include "support/streamBytes.h"
#include "support/streamItems.h"
#include "support/survive.h"
#include "ucs/cLITrTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace
{

using mucs::cLITrItem;
using mucs::cLITrTable;
using mucs::cString;
using support::cItem;
using support::tItems;
using support::word;

std::string bytesOf(cLITrTable const& table)
{
  msa::cSerializeBinary serializer;
  table >> serializer;
  return support::written(serializer);
}

std::string bytesOf(tItems const& items)
{
  msa::cSerializeBinary serializer;
  support::write(items, serializer);
  return support::written(serializer);
}

void read(cLITrTable& table, std::string const& bytes)
{
  msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytes));
  table << deserializer;
  EXPECT_TRUE(deserializer.eoc());
}

std::string found(cLITrTable const& table, char const* key)
{
  cLITrItem const* const pItem = table.hasTranslation(key);
  return pItem != nullptr ? support::toString(pItem->translation()) : "(none)";
}

cItem unused(bool isUnused)
{
  cItem item;
  item.kind = "piBool";
  item.number = isUnused;
  return item;
}

cItem named(char const* kind, std::string const& bytes)
{
  cItem item;
  item.kind = kind;
  item.bytes = bytes;
  return item;
}

cItem context(char const* name, tItems const& items)
{
  cItem item;
  item.kind = "context";
  item.named = name != nullptr;
  item.bytes = name != nullptr ? name : "";
  item.items = items;
  return item;
}

/// An entry on a stream.
tItems entry(std::string const& key, std::string const& translation)
{
  cItem text;
  text.kind = "cString32";
  text.points.assign(translation.begin(), translation.end());
  return {named("label", "Translation"), context(nullptr, {named("cAsciiString", key), text})};
}

tItems operator+(tItems left, tItems const& right)
{
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

tItems operator*(unsigned int count, cItem const& item)
{
  return tItems(count, item);
}

TEST(StreamedTranslation, AnItemIsItsKeyAndItsTranslation)
{
  msa::cSerializeBinary serializer;
  cLITrItem const item("Yes", cString(L"J\xE4"));
  EXPECT_EQ(&(item >> serializer), &serializer);
  std::string const expected = word(10) + word(3) + "Yes" + word(11) + word(2) + word('J') + word(0xE4);
  EXPECT_EQ(support::toHex(support::written(serializer)), support::toHex(expected));

  cLITrItem back("x", "y");
  msa::cDeserializeBinary deserializer(support::ownedArrayOf(expected));
  EXPECT_EQ(&(back << deserializer), &deserializer);
  EXPECT_STREQ(back.key().c_str(), "Yes");
  EXPECT_EQ(back.translation(), cString(L"J\xE4"));
}

TEST(StreamedTranslation, AnItemThatCannotBeReadStaysAsItWas)
{
  support::cQuiet const quiet;
  cLITrItem item("x", "y");
  msa::cDeserializeBinary deserializer(support::ownedArrayOf(word(10) + word(3) + "Yes" + word(4) + word(0)));
  EXPECT_THROW(item << deserializer, mstd::cAbstractException);
  EXPECT_STREQ(item.key().c_str(), "x");
  EXPECT_EQ(item.translation(), cString("y"));
}

TEST(StreamedTranslation, AnEmptyTableIsAContextWithNothingInIt)
{
  std::string const expected = word(12) + word(4) + word(31) + word(8) + word(1) + word(10) + word(7) + "unknown";
  EXPECT_EQ(support::toHex(bytesOf(cLITrTable())), support::toHex(expected));
  cLITrTable table;
  table.addTranslation("a", "b");
  read(table, expected);
  EXPECT_EQ(table.length(), 0u);
}

TEST(StreamedTranslation, TheBytesOfATableWithOneEntry)
{
  // The key has the length 1 and the bytes 0x5C + 0x5C, which is 0 modulo 23.
  cLITrTable table;
  table.addTranslation("\x5C", "x");
  std::string const entryBytes = word(10) + word(1) + "\x5C" + word(11) + word(1) + word('x');
  std::string const item = word(13) + word(10) + word(11) + "Translation" + word(12) + word(4) +
                           word(16 + static_cast<unsigned int>(entryBytes.size())) + word(8) + word(0) + entryBytes;
  auto const list = [](std::string const& content) {
    return word(12) + word(4) + word(16 + 15 + static_cast<unsigned int>(content.size())) + word(8) + word(1) +
           word(10) + word(7) + "unknown" + content;
  };
  std::string const used = word(8) + word(0);
  std::string const place2 = used + word(13) + word(10) + word(4) + "Hash" + list(item);
  std::string const place1 = used + word(13) + word(10) + word(9) + "Hash-Part" + list(place2);
  std::string const expected = list(word(8) + word(1) + place1);
  EXPECT_EQ(support::toHex(bytesOf(table)), support::toHex(expected));
}

TEST(StreamedTranslation, LevelsAreContextsWithMarksForUnusedPlaces)
{
  cLITrTable table;
  table.addTranslation("ab", "1");  // 2, 11
  table.addTranslation("ba", "2");  // 2, 11
  table.addTranslation("cc", "3");  // 2, 14
  table.addTranslation("", "none"); // 0, 0
  tItems const lists2 = 11 * unused(true) + tItems{unused(false), named("label", "Hash")} +
                        tItems{context("unknown", entry("ab", "1") + entry("ba", "2"))} + 2 * unused(true) +
                        tItems{unused(false), named("label", "Hash"), context("unknown", entry("cc", "3"))};
  tItems const lists0 = {unused(false), named("label", "Hash"), context("unknown", entry("", "none"))};
  tItems const places = tItems{unused(false), named("label", "Hash-Part"), context("unknown", lists0)} +
                        1 * unused(true) +
                        tItems{unused(false), named("label", "Hash-Part"), context("unknown", lists2)};
  EXPECT_EQ(support::toHex(bytesOf(table)), support::toHex(bytesOf({context("unknown", places)})));
}

TEST(StreamedTranslation, ComesBackWithAllLevels)
{
  cLITrTable table;
  for (unsigned int i = 0; i < 1000; ++i)
  {
    std::string const key = std::string(i % 40, static_cast<char>('a' + i % 26)) + std::to_string(i % 700);
    table.addTranslation(key.c_str(), cString(std::to_string(i).c_str()));
  }
  std::string const bytes = bytesOf(table);
  cLITrTable back;
  back.addTranslation("gone afterwards", "x");
  read(back, bytes);
  EXPECT_EQ(support::toHex(bytesOf(back)), support::toHex(bytes));
  EXPECT_EQ(found(back, "gone afterwards"), "(none)");
  EXPECT_EQ(found(back, "0"), "0");
}

TEST(StreamedTranslation, NamesOfContextsAndLabelsDoNotMatterToTheReader)
{
  tItems const list = {named("label", "x"), context("y", {named("cAsciiString", "a"), entry("", "1")[1].items[1]})};
  tItems const places = {unused(false),
                         context(nullptr, 10 * unused(true) + tItems{unused(false)} + tItems{context("z", list)})};
  cLITrTable table;
  read(table, bytesOf({context(nullptr, 1 * unused(true) + places)}));
  EXPECT_EQ(found(table, "a"), "1");
}

TEST(StreamedTranslation, EntriesAtAWrongPlaceAreFound)
{
  tItems const list = {unused(false), named("label", "Hash"), context("unknown", entry("a long key", "1"))};
  cLITrTable table;
  read(table, bytesOf({context("unknown", 300 * unused(true) + tItems{unused(false), context("unknown", list)})}));
  EXPECT_EQ(found(table, "a long key"), "1");
  EXPECT_EQ(table.length(), 11u);
}

TEST(StreamedTranslation, WhatCannotBeReadLeavesTheTableAsItWas)
{
  support::cQuiet const quiet;
  cLITrTable full;
  full.addTranslation("ab", "1");
  full.addTranslation("abc", "2");
  std::string const bytes = bytesOf(full);
  unsigned int iRefused = 0;
  for (size_t iLength = 0; iLength < bytes.size(); ++iLength)
  {
    cLITrTable table;
    table.addTranslation("old", "here");
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytes.substr(0, iLength)));
    try
    {
      table << deserializer;
    }
    catch (mstd::cAbstractException const&)
    {
      ++iRefused;
      EXPECT_EQ(found(table, "old"), "here") << iLength;
      EXPECT_EQ(found(table, "ab"), "(none)") << iLength;
    }
  }
  EXPECT_GT(iRefused, 0u);

  for (tItems const& bad : {tItems{unused(false), unused(true)}, tItems{named("cAsciiString", "x")},
                            tItems{unused(false), context("unknown", {unused(false), unused(false)})}})
  {
    cLITrTable table;
    table.addTranslation("old", "here");
    msa::cDeserializeBinary deserializer(support::ownedArrayOf(bytesOf({context("unknown", bad)})));
    EXPECT_THROW(table << deserializer, mstd::cAbstractException);
    EXPECT_EQ(found(table, "old"), "here");
  }
}

} // namespace
