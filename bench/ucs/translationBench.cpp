#include "support/bench.h"

#include "std/cAsciiString.h"
#include "ucs/cLILocale.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <libintl.h>
#include <locale.h>

#include <QtCore/QString>
#include <QtCore/QTranslator>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

// 5,000 messages, each with two parameters, are asked for in an order that is no order, again and again. Every
// contender looks up the wording in the other language and puts two texts into it. Peers get their texts ready in the
// form that they take; here they are in the message. A message is read soon after it was made, so what is asked for is
// made ready shortly before, a hundred at a time, and for peers as well. Each result is a string of the contender's
// own.

namespace
{
unsigned int const Count = 5000;

/// Key number `index` with `a` and `b` as its placeholders: a sentence as programs have them.
std::string sentence(unsigned int index, std::string const& a, std::string const& b, bool isOther)
{
  static char const* const verbs[] = {"open",  "read", "write", "remove", "rename",
                                      "parse", "send", "find",  "load",   "close"};
  static char const* const nouns[] = {
      "file",    "directory",   "device", "message", "module", "locale",  "connection", "stream",  "record", "archive",
      "picture", "certificate", "table",  "user",    "key",    "printer", "queue",      "service", "index",  "folder"};
  static char const* const ends[] = {"",           " any more",    " in time", " at all", " again",
                                     " from here", " as expected", " twice",   " yet",    " without help"};
  static char const* const starts[] = {"Unable to ", "Cannot ", "Failed to "};
  unsigned int const iNoun = index / 10 % 20;
  unsigned int const iEnd = index / 200 % 10;
  std::string text = isOther ? "Es ging nicht: " : starts[index / 2000];
  text += verbs[index % 10];
  text += std::string(isOther ? " die " : " the ") + nouns[iNoun] + " \"" + a + "\"" + ends[iEnd];
  text += (isOther ? ": Fehler " : ": error ") + b + "!";
  return text;
}

std::string const& fileName()
{
  static std::string const text = "/home/user/letter.txt";
  return text;
}
std::string const& errorText()
{
  static std::string const text = "17";
  return text;
}

/// The order in which messages are asked for.
std::vector<unsigned int> const& order()
{
  static std::vector<unsigned int> const numbers = [] {
    std::vector<unsigned int> result;
    for (unsigned int i = 0; i < Count; ++i)
    {
      result.push_back(i * 2237 % Count);
    }
    return result;
  }();
  return numbers;
}

/// Calls `translate` with one message after the other.
template <class Translate>
void run(benchmark::State& state, Translate translate)
{
  unsigned int const* const pFirst = order().data();
  unsigned int i = 0;
  for (auto _ : state)
  {
    translate(pFirst[i]);
    if (++i == Count)
    {
      i = 0;
    }
  }
}

/// Calls `translate` with what `prepare`, which does not count, makes of one message after the other.
template <class Prepare, class Translate>
void runPrepared(benchmark::State& state, Prepare prepare, Translate translate)
{
  unsigned int const Batch = 100; // divides Count
  std::vector<decltype(prepare(0u))> batch;
  unsigned int i = 0;
  for (auto _ : state)
  {
    if (i % Batch == 0)
    {
      state.PauseTiming();
      batch.clear();
      i %= Count;
      for (unsigned int j = 0; j < Batch; ++j)
      {
        batch.push_back(prepare(order()[i + j]));
      }
      state.ResumeTiming();
    }
    translate(batch[i % Batch]);
    ++i;
  }
}

void check(std::string const& text, unsigned int index)
{
  if (text != sentence(index, fileName(), errorText(), true))
  {
    throw std::runtime_error("wrong translation: " + text);
  }
}

// ---------------------------------------------------------------------------------------------------------------- ours

mucs::cLILocale& locale()
{
  static mucs::cLILocale* const pLocale = [] {
    mucs::cLILocale* const pNew = new mucs::cLILocale("bench");
    for (unsigned int i = 0; i < Count; ++i)
    {
      pNew->translator().addTranslation(sentence(i, "%file%", "%error%", false).c_str(),
                                        mucs::cString(sentence(i, "%file%", "%error%", true).c_str()));
    }
    return pNew;
  }();
  return *pLocale;
}

std::vector<std::string> const& keys()
{
  static std::vector<std::string> const all = [] {
    std::vector<std::string> result;
    for (unsigned int i = 0; i < Count; ++i)
    {
      result.push_back("$MTR$" + sentence(i, "%file%", "%error%", false));
    }
    return result;
  }();
  return all;
}

mucs::cLIMessage message(unsigned int index)
{
  mucs::cLIMessage result;
  result << keys()[index].c_str() << fileName().c_str() << errorText().c_str();
  return result;
}

BENCH("translation", "message with two parameters among 5,000 keys", "mortise")
{
  mucs::cLILocale const& german = locale();
  for (unsigned int i = 0; i < Count; ++i)
  {
    check(german.translate(message(i)).ascii('?').c_str(), i);
  }
  runPrepared(state, message, [&](mucs::cLIMessage const& ready) {
    mucs::cString text;
    german.translate(ready, text, nullptr);
    benchmark::DoNotOptimize(text.data());
  });
}

BENCH("translation", "make and translate a message with two parameters", "mortise")
{
  mucs::cLILocale const& german = locale();
  std::vector<std::string> const& all = keys();
  run(state, [&](unsigned int index) {
    mucs::cLIMessage made;
    made << all[index].c_str() << fileName().c_str() << errorText().c_str();
    mucs::cString text;
    german.translate(made, text, nullptr);
    benchmark::DoNotOptimize(text.data());
  });
}

BENCH("translation", "find a key among 5,000", "mortise")
{
  mucs::cLITrTable const& table = locale().translator();
  std::vector<mstd::cAsciiString> wanted;
  for (std::string const& key : keys())
  {
    wanted.push_back(mstd::cAsciiString(key.c_str() + 5));
  }
  run(state, [&](unsigned int index) { benchmark::DoNotOptimize(table.hasTranslation(wanted[index])); });
}

// ------------------------------------------------------------------------------------------------------------- gettext

void put32(std::string& bytes, std::uint32_t value)
{
  bytes.append(reinterpret_cast<char const*>(&value), sizeof value);
}

/// A catalogue as msgfmt makes it, with its hash table, on disk for as long as the process lives.
class cCatalogue
{
public:
  cCatalogue()
  {
    std::vector<std::pair<std::string, std::string>> entries = {{"", "Content-Type: text/plain; charset=UTF-8\n"}};
    for (unsigned int i = 0; i < Count; ++i)
    {
      entries.emplace_back(sentence(i, "%s", "%s", false), sentence(i, "%s", "%s", true));
    }
    std::sort(entries.begin(), entries.end());
    std::uint32_t const n = static_cast<std::uint32_t>(entries.size());
    std::uint32_t slots = n * 4 / 3;
    while (!isPrime(slots))
    {
      ++slots;
    }
    std::vector<std::uint32_t> table(slots, 0);
    for (std::uint32_t i = 0; i < n; ++i)
    {
      std::uint32_t const hash = hashOf(entries[i].first);
      std::uint32_t slot = hash % slots;
      while (table[slot] != 0)
      {
        slot = (slot + 1 + hash % (slots - 2)) % slots;
      }
      table[slot] = i + 1;
    }
    std::uint32_t const header = 28;
    std::uint32_t const texts = header + n * 16 + slots * 4;
    std::string places;
    std::string content;
    for (int side = 0; side < 2; ++side)
    {
      for (auto const& entry : entries)
      {
        std::string const& text = side == 0 ? entry.first : entry.second;
        put32(places, static_cast<std::uint32_t>(text.size()));
        put32(places, texts + static_cast<std::uint32_t>(content.size()));
        content.append(text.c_str(), text.size() + 1);
      }
    }
    std::string file;
    for (std::uint32_t const word : {0x950412deu, 0u, n, header, header + n * 8, slots, header + n * 16})
    {
      put32(file, word);
    }
    file += places;
    for (std::uint32_t const entry : table)
    {
      put32(file, entry);
    }
    file += content;

    std::string pattern = (std::filesystem::temp_directory_path() / "mortise-bench-XXXXXX").string();
    if (mkdtemp(&pattern[0]) == nullptr)
    {
      throw std::runtime_error("no temporary directory");
    }
    mPath = pattern;
    std::filesystem::create_directories(mPath + "/xx/LC_MESSAGES");
    std::ofstream(mPath + "/xx/LC_MESSAGES/bench.mo", std::ios::binary) << file;
    setlocale(LC_MESSAGES, "C.UTF-8");
    setenv("LANGUAGE", "xx", 1);
    bindtextdomain("bench", mPath.c_str());
    bind_textdomain_codeset("bench", "UTF-8");
  }
  ~cCatalogue() { std::filesystem::remove_all(mPath); }

private:
  static bool isPrime(std::uint32_t value)
  {
    for (std::uint32_t i = 2; i * i <= value; ++i)
    {
      if (value % i == 0)
      {
        return false;
      }
    }
    return true;
  }
  static std::uint32_t hashOf(std::string const& text)
  {
    std::uint32_t hash = 0;
    for (unsigned char const c : text)
    {
      hash = (hash << 4) + c;
      if (std::uint32_t const high = hash & 0xF0000000u)
      {
        hash ^= high >> 24;
        hash ^= high;
      }
    }
    return hash;
  }

  std::string mPath;
};

std::vector<std::string> const& printfKeys()
{
  static std::vector<std::string> const all = [] {
    static cCatalogue const catalogue;
    std::vector<std::string> result;
    for (unsigned int i = 0; i < Count; ++i)
    {
      result.push_back(sentence(i, "%s", "%s", false));
    }
    return result;
  }();
  return all;
}

#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
std::string gettextTranslated(char const* key)
{
  char buffer[512];
  int const length = snprintf(buffer, sizeof buffer, dgettext("bench", key), fileName().c_str(), errorText().c_str());
  return std::string(buffer, static_cast<size_t>(length));
}
#pragma GCC diagnostic pop

void checkGettext()
{
  for (unsigned int i = 0; i < Count; ++i)
  {
    check(gettextTranslated(printfKeys()[i].c_str()), i);
  }
}

BENCH("translation", "message with two parameters among 5,000 keys", "gettext, snprintf")
{
  checkGettext();
  runPrepared(
      state, [](unsigned int index) { return printfKeys()[index]; },
      [](std::string const& key) {
        std::string text = gettextTranslated(key.c_str());
        benchmark::DoNotOptimize(text.data());
      });
}

BENCH("translation", "make and translate a message with two parameters", "gettext, snprintf")
{
  checkGettext();
  std::vector<std::string> const& all = printfKeys();
  run(state, [&](unsigned int index) {
    std::string text = gettextTranslated(all[index].c_str());
    benchmark::DoNotOptimize(text.data());
  });
}

BENCH("translation", "find a key among 5,000", "gettext")
{
  std::vector<std::string> const& all = printfKeys();
  run(state, [&](unsigned int index) { benchmark::DoNotOptimize(dgettext("bench", all[index].c_str())); });
}

// --------------------------------------------------------------------------------------------------------- QTranslator

void putBig32(std::string& bytes, std::uint32_t value)
{
  for (int shift = 24; shift >= 0; shift -= 8)
  {
    bytes += static_cast<char>(value >> shift);
  }
}

std::uint32_t qtHash(std::string const& text)
{
  std::uint32_t hash = 0;
  for (unsigned char const c : text)
  {
    hash = (hash << 4) + c;
    std::uint32_t const high = hash & 0xF0000000u;
    hash ^= high >> 24;
    hash &= ~high;
  }
  return hash != 0 ? hash : 1;
}

std::string qtMarked(unsigned int index, bool isOther)
{
  return sentence(index, "%1", "%2", isOther);
}

/// A file as lrelease makes it.
std::string qtFile()
{
  std::string messages;
  std::vector<std::pair<std::uint32_t, std::uint32_t>> hashes;
  for (unsigned int i = 0; i < Count; ++i)
  {
    std::string const source = qtMarked(i, false);
    std::string wide;
    for (char const c : qtMarked(i, true))
    {
      wide += '\0';
      wide += c;
    }
    hashes.emplace_back(qtHash(source), static_cast<std::uint32_t>(messages.size()));
    messages += '\x03';
    putBig32(messages, static_cast<std::uint32_t>(wide.size()));
    messages += wide;
    messages += '\x06';
    putBig32(messages, static_cast<std::uint32_t>(source.size()));
    messages += source;
    messages += '\x07';
    putBig32(messages, 5);
    messages += "bench";
    messages += '\x01';
  }
  std::sort(hashes.begin(), hashes.end());
  std::string file("\x3C\xB8\x64\x18\xCA\xEF\x9C\x95\xCD\x21\x1C\xBF\x60\xA1\xBD\xDD", 16);
  file += '\x42';
  putBig32(file, Count * 8);
  for (auto const& hash : hashes)
  {
    putBig32(file, hash.first);
    putBig32(file, hash.second);
  }
  file += '\x69';
  putBig32(file, static_cast<std::uint32_t>(messages.size()));
  return file + messages;
}

struct cQtPeer
{
  cQtPeer() : data(qtFile()), name(QString::fromStdString(fileName())), error(QString::fromStdString(errorText()))
  {
    if (!translator.load(reinterpret_cast<uchar const*>(data.data()), static_cast<int>(data.size())))
    {
      throw std::runtime_error("QTranslator does not load");
    }
    for (unsigned int i = 0; i < Count; ++i)
    {
      keys.push_back(qtMarked(i, false));
    }
  }

  QString translated(std::string const& key) const
  {
    return translator.translate("bench", key.c_str()).arg(name, error);
  }

  std::string data;
  QTranslator translator;
  QString name;
  QString error;
  std::vector<std::string> keys;
};

cQtPeer const& qtPeer()
{
  static cQtPeer const peer;
  return peer;
}

void checkQt()
{
  for (unsigned int i = 0; i < Count; ++i)
  {
    check(qtPeer().translated(qtPeer().keys[i]).toStdString(), i);
  }
}

BENCH("translation", "message with two parameters among 5,000 keys", "QTranslator, arg")
{
  checkQt();
  cQtPeer const& peer = qtPeer();
  runPrepared(
      state, [&](unsigned int index) { return peer.keys[index]; },
      [&](std::string const& key) {
        QString const text = peer.translated(key);
        benchmark::DoNotOptimize(text.constData());
      });
}

BENCH("translation", "make and translate a message with two parameters", "QTranslator, arg")
{
  checkQt();
  cQtPeer const& peer = qtPeer();
  run(state, [&](unsigned int index) {
    QString const text = peer.translated(peer.keys[index]);
    benchmark::DoNotOptimize(text.constData());
  });
}

BENCH("translation", "find a key among 5,000", "QTranslator")
{
  cQtPeer const& peer = qtPeer();
  run(state, [&](unsigned int index) {
    QString const text = peer.translator.translate("bench", peer.keys[index].c_str());
    benchmark::DoNotOptimize(text.constData());
  });
}
} // namespace
