#include "support/bench.h"

#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "std/tHash.h"
#include "std/tList.h"
#include "std/tVector.h"
#include "ucs/cString.h"

#include <absl/container/flat_hash_map.h>
#include <glib.h>

#include <QtCore/QByteArray>
#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QString>

#include <cstring>
#include <list>
#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

namespace
{
template <class String, class Append>
void appendCharacters(benchmark::State& state, unsigned int iCount, Append const& append)
{
  for (auto _ : state)
  {
    String text{};
    for (unsigned int i = 0; i < iCount; ++i)
    {
      append(text, static_cast<char>('a' + (i & 15)));
    }
    benchmark::DoNotOptimize(&text);
  }
  state.SetItemsProcessed(state.iterations() * iCount);
}

void appendOurs(benchmark::State& state, unsigned int iCount)
{
  appendCharacters<mstd::cAsciiString>(state, iCount, [](mstd::cAsciiString& text, char c) { text += c; });
}
void appendStd(benchmark::State& state, unsigned int iCount)
{
  appendCharacters<std::string>(state, iCount, [](std::string& text, char c) { text += c; });
}
void appendQt(benchmark::State& state, unsigned int iCount)
{
  appendCharacters<QByteArray>(state, iCount, [](QByteArray& text, char c) { text += c; });
}
void appendGlib(benchmark::State& state, unsigned int iCount)
{
  for (auto _ : state)
  {
    GString* const text = g_string_new(nullptr);
    for (unsigned int i = 0; i < iCount; ++i)
    {
      g_string_append_c(text, static_cast<char>('a' + (i & 15)));
    }
    benchmark::DoNotOptimize(text);
    g_string_free(text, TRUE);
  }
  state.SetItemsProcessed(state.iterations() * iCount);
}

std::string key(unsigned int i)
{
  std::string text = std::to_string(i * 2654435761u);
  return std::string(20 - text.size(), 'k') + text;
}

/// The order of the look-ups is random, and the same for all.
std::vector<unsigned int> order(unsigned int iCount)
{
  std::mt19937 random(3);
  std::vector<unsigned int> result;
  for (unsigned int i = 0; i < 4096; ++i)
  {
    result.push_back(random() % iCount);
  }
  return result;
}

/// `make(text)` makes a key, `insert(key)` fills the table, `find(key)` looks one up.
template <class Key, class Insert, class Find>
void lookUp(benchmark::State& state, unsigned int iCount, Key const& make, Insert const& insert, Find const& find)
{
  // The keys that are looked up are not those that were inserted: some peers would share their text, and compare
  // addresses.
  std::vector<decltype(make(std::string()))> keys;
  for (unsigned int i = 0; i < iCount; ++i)
  {
    insert(make(key(i)));
    keys.push_back(make(key(i)));
  }
  std::vector<unsigned int> const indexes = order(iCount);
  for (auto _ : state)
  {
    for (unsigned int index : indexes)
    {
      benchmark::DoNotOptimize(find(keys[index]));
    }
  }
  state.SetItemsProcessed(state.iterations() * indexes.size());
}

void lookUpOurs(benchmark::State& state, unsigned int iCount)
{
  mstd::tHash<mucs::cString, mucs::cString, mstd::tArrayHashTraits<1024u>> table;
  lookUp(
      state, iCount, [](std::string const& text) { return mucs::cString(text.c_str()); },
      [&](mucs::cString const& k) { table[k] = k; }, [&](mucs::cString const& k) { return table.has(k); });
}
void lookUpQt(benchmark::State& state, unsigned int iCount)
{
  QHash<QString, QString> table;
  lookUp(
      state, iCount, [](std::string const& text) { return QString::fromStdString(text); },
      [&](QString const& k) { table.insert(k, k); }, [&](QString const& k) { return table.constFind(k); });
}
void lookUpStd(benchmark::State& state, unsigned int iCount)
{
  std::unordered_map<std::u32string, std::u32string> table;
  lookUp(
      state, iCount, [](std::string const& text) { return std::u32string(text.begin(), text.end()); },
      [&](std::u32string const& k) { table[k] = k; }, [&](std::u32string const& k) { return table.find(k); });
}
void lookUpAbseil(benchmark::State& state, unsigned int iCount)
{
  absl::flat_hash_map<std::u32string, std::u32string> table;
  lookUp(
      state, iCount, [](std::string const& text) { return std::u32string(text.begin(), text.end()); },
      [&](std::u32string const& k) { table[k] = k; }, [&](std::u32string const& k) { return table.find(k); });
}

unsigned int const SearchSize = 64u << 20;
char const Needle[] = "sixteen of them!";

/// Text that has the needle's letters everywhere and the needle itself only at the end.
std::string const& haystack()
{
  static std::string const text = [] {
    std::mt19937 random(4);
    std::string result(SearchSize, ' ');
    for (char& c : result)
    {
      c = "abcdefghijklmnopqrstuvwxyz    !"[random() % 31];
    }
    result.replace(result.size() - 16, 16, Needle, 16);
    return result;
  }();
  return text;
}

unsigned int const Elements = 10000;
} // namespace

BENCH("containers", "append a character, 1 KiB", "mortise")
{
  appendOurs(state, 1u << 10);
}
BENCH("containers", "append a character, 1 KiB", "std::string")
{
  appendStd(state, 1u << 10);
}
BENCH("containers", "append a character, 1 KiB", "QByteArray")
{
  appendQt(state, 1u << 10);
}
BENCH("containers", "append a character, 1 KiB", "GString")
{
  appendGlib(state, 1u << 10);
}
BENCH("containers", "append a character, 64 KiB", "mortise")
{
  appendOurs(state, 1u << 16);
}
BENCH("containers", "append a character, 64 KiB", "std::string")
{
  appendStd(state, 1u << 16);
}
BENCH("containers", "append a character, 64 KiB", "QByteArray")
{
  appendQt(state, 1u << 16);
}
BENCH("containers", "append a character, 64 KiB", "GString")
{
  appendGlib(state, 1u << 16);
}
BENCH("containers", "append a character, 1 MiB", "mortise")
{
  appendOurs(state, 1u << 20);
}
BENCH("containers", "append a character, 1 MiB", "std::string")
{
  appendStd(state, 1u << 20);
}
BENCH("containers", "append a character, 1 MiB", "QByteArray")
{
  appendQt(state, 1u << 20);
}
BENCH("containers", "append a character, 1 MiB", "GString")
{
  appendGlib(state, 1u << 20);
}
BENCH("containers", "append a character, 64 MiB", "mortise")
{
  appendOurs(state, 1u << 26);
}
BENCH("containers", "append a character, 64 MiB", "std::string")
{
  appendStd(state, 1u << 26);
}
BENCH("containers", "append a character, 64 MiB", "QByteArray")
{
  appendQt(state, 1u << 26);
}
BENCH("containers", "append a character, 64 MiB", "GString")
{
  appendGlib(state, 1u << 26);
}

BENCH("containers", "search 16 bytes in 64 MiB", "mortise")
{
  mstd::tArray<char> bytes;
  bytes.append(haystack().data(), SearchSize);
  for (auto _ : state)
  {
    bool found = false;
    benchmark::DoNotOptimize(bytes.find(Needle, 16, found));
    if (!found)
    {
      state.SkipWithError("not found");
    }
  }
  state.SetBytesProcessed(state.iterations() * SearchSize);
}
BENCH("containers", "search 16 bytes in 64 MiB", "std::string")
{
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(haystack().find(Needle));
  }
  state.SetBytesProcessed(state.iterations() * SearchSize);
}
BENCH("containers", "search 16 bytes in 64 MiB", "limit: memmem")
{
  std::string const& text = haystack();
  for (auto _ : state)
  {
    benchmark::DoNotOptimize(memmem(text.data(), text.size(), Needle, 16));
  }
  state.SetBytesProcessed(state.iterations() * SearchSize);
}

BENCH("containers", "vector append, each", "mortise")
{
  for (auto _ : state)
  {
    mstd::tVector<int> numbers;
    for (unsigned int i = 0; i < Elements; ++i)
    {
      numbers.append(static_cast<int>(i));
    }
    benchmark::DoNotOptimize(&numbers);
  }
  state.SetItemsProcessed(state.iterations() * Elements);
}
BENCH("containers", "vector append, each", "std::vector of unique_ptr")
{
  for (auto _ : state)
  {
    std::vector<std::unique_ptr<int>> numbers;
    for (unsigned int i = 0; i < Elements; ++i)
    {
      numbers.push_back(std::make_unique<int>(static_cast<int>(i)));
    }
    benchmark::DoNotOptimize(&numbers);
  }
  state.SetItemsProcessed(state.iterations() * Elements);
}

BENCH("containers", "list walk, each", "mortise")
{
  mstd::tList<int> numbers;
  for (unsigned int i = 0; i < Elements; ++i)
  {
    numbers.append(static_cast<int>(i));
  }
  for (auto _ : state)
  {
    int sum = 0;
    for (int number : numbers)
    {
      sum += number;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * Elements);
}
BENCH("containers", "list walk, each", "std::list")
{
  std::list<int> numbers;
  for (unsigned int i = 0; i < Elements; ++i)
  {
    numbers.push_back(static_cast<int>(i));
  }
  for (auto _ : state)
  {
    int sum = 0;
    for (int number : numbers)
    {
      sum += number;
    }
    benchmark::DoNotOptimize(sum);
  }
  state.SetItemsProcessed(state.iterations() * Elements);
}
BENCH("containers", "list walk, each", "GList")
{
  GList* numbers = nullptr;
  for (unsigned int i = 0; i < Elements; ++i)
  {
    numbers = g_list_prepend(numbers, GINT_TO_POINTER(static_cast<int>(i)));
  }
  for (auto _ : state)
  {
    int sum = 0;
    for (GList const* node = numbers; node != nullptr; node = node->next)
    {
      sum += GPOINTER_TO_INT(node->data);
    }
    benchmark::DoNotOptimize(sum);
  }
  g_list_free(numbers);
  state.SetItemsProcessed(state.iterations() * Elements);
}

// The table has 1,024 buckets for life, so look-ups slow down from some thousand keys on.

BENCH("containers", "hash lookup, 100 keys", "mortise")
{
  lookUpOurs(state, 100);
}
BENCH("containers", "hash lookup, 100 keys", "QHash of QString")
{
  lookUpQt(state, 100);
}
BENCH("containers", "hash lookup, 1,000 keys", "mortise")
{
  lookUpOurs(state, 1000);
}
BENCH("containers", "hash lookup, 1,000 keys", "QHash of QString")
{
  lookUpQt(state, 1000);
}
BENCH("containers", "hash lookup, 10,000 keys", "mortise")
{
  lookUpOurs(state, 10000);
}
BENCH("containers", "hash lookup, 10,000 keys", "QHash of QString")
{
  lookUpQt(state, 10000);
}
BENCH("containers", "hash lookup, 100,000 keys (growth)", "mortise")
{
  lookUpOurs(state, 100000);
}
BENCH("containers", "hash lookup, 100,000 keys (growth)", "QHash of QString")
{
  lookUpQt(state, 100000);
}
BENCH("containers", "hash lookup, 1,000 keys (32-bit characters)", "mortise")
{
  lookUpOurs(state, 1000);
}
BENCH("containers", "hash lookup, 1,000 keys (32-bit characters)", "std::unordered_map")
{
  lookUpStd(state, 1000);
}
BENCH("containers", "hash lookup, 1,000 keys (32-bit characters)", "Abseil")
{
  lookUpAbseil(state, 1000);
}
