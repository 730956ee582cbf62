#include "support/bench.h"

#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "ucs/cEnDecUTF16.h"
#include "ucs/cEnDecUTF8.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <glib.h>
#include <iconv.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

#include <QtCore/QList>
#include <QtCore/QString>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

// Every contender turns 256 KiB of text into a fresh target, from bytes to 32-bit code points or back; the count of
// bytes is that of the encoded side. Peers that hold text in another form take the way through it.

namespace
{
unsigned int const Size = 256 * 1024;

std::string repeat(char const* text)
{
  std::string result;
  while (result.size() < Size)
  {
    result += text;
  }
  return result;
}

std::string const& ascii()
{
  static std::string const text =
      repeat("The quick brown fox jumps over the lazy dog, and then it sleeps until noon. ");
  return text;
}
std::string const& european()
{
  static std::string const text =
      repeat("Zwölf große Boxkämpfer jagen Viktor quer über den Sylter Deich; señor, où êtes-vous? ");
  return text;
}
std::string const& cjk()
{
  static std::string const text = repeat("天地玄黃宇宙洪荒日月盈昃辰宿列張寒來暑往秋收冬藏");
  return text;
}

typedef mstd::tArray<char> tBytes;
typedef mstd::tConstArrayRef<char> tView;

tBytes bytesOf(std::string const& text)
{
  tBytes bytes;
  bytes.append(text.data(), static_cast<unsigned int>(text.size()));
  return bytes;
}

mucs::cString pointsOf(std::string const& text)
{
  tBytes const bytes = bytesOf(text);
  tView view;
  view.set(bytes, 0, bytes.length());
  mucs::cString points;
  points.fromUTF8(view);
  return points;
}

std::u32string ucs4Of(std::string const& text)
{
  return QString::fromStdString(text).toStdU32String();
}

void decodeOurs(benchmark::State& state, std::string const& text)
{
  tBytes const bytes = bytesOf(text);
  tView view;
  view.set(bytes, 0, bytes.length());
  mucs::cEnDecUTF8 const encoder;
  for (auto _ : state)
  {
    mucs::cString points;
    encoder.decode(view, points);
    benchmark::DoNotOptimize(points.length());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void decodeQt(benchmark::State& state, std::string const& text)
{
  for (auto _ : state)
  {
    QList<uint> const points = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4();
    benchmark::DoNotOptimize(points.size());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void decodeIcu(benchmark::State& state, std::string const& text)
{
  for (auto _ : state)
  {
    icu::UnicodeString const units = icu::UnicodeString::fromUTF8(text);
    std::vector<UChar32> points(text.size());
    UErrorCode error = U_ZERO_ERROR;
    benchmark::DoNotOptimize(units.toUTF32(points.data(), static_cast<int32_t>(points.size()), error));
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void decodeGlib(benchmark::State& state, std::string const& text)
{
  for (auto _ : state)
  {
    gunichar* const points = g_utf8_to_ucs4(text.data(), static_cast<glong>(text.size()), nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(points);
    g_free(points);
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

/// Converts between two encodings that iconv knows by name.
void convertIconv(benchmark::State& state, char const* to, char const* from, char const* data, size_t size,
                  size_t counted, size_t room)
{
  iconv_t const conversion = iconv_open(to, from);
  for (auto _ : state)
  {
    std::vector<char> target(room);
    char* in = const_cast<char*>(data);
    char* out = target.data();
    size_t inLeft = size;
    size_t outLeft = target.size();
    if (iconv(conversion, &in, &inLeft, &out, &outLeft) != 0)
    {
      state.SkipWithError("iconv failed");
    }
    benchmark::DoNotOptimize(out);
  }
  iconv_close(conversion);
  state.SetBytesProcessed(state.iterations() * counted);
}

void decodeIconv(benchmark::State& state, std::string const& text)
{
  convertIconv(state, "UCS-4LE", "UTF-8", text.data(), text.size(), text.size(), text.size() * 4);
}

void encodeOurs(benchmark::State& state, std::string const& text)
{
  mucs::cString const points = pointsOf(text);
  mucs::cEnDecUTF8 const encoder;
  for (auto _ : state)
  {
    tBytes bytes;
    encoder.encode(points, bytes);
    benchmark::DoNotOptimize(bytes.length());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void encodeQt(benchmark::State& state, std::string const& text)
{
  std::u32string const points = ucs4Of(text);
  for (auto _ : state)
  {
    QByteArray const bytes = QString::fromUcs4(points.data(), static_cast<qsizetype>(points.size())).toUtf8();
    benchmark::DoNotOptimize(bytes.size());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void encodeIcu(benchmark::State& state, std::string const& text)
{
  std::u32string const points = ucs4Of(text);
  for (auto _ : state)
  {
    std::string bytes;
    icu::UnicodeString::fromUTF32(reinterpret_cast<UChar32 const*>(points.data()), static_cast<int32_t>(points.size()))
        .toUTF8String(bytes);
    benchmark::DoNotOptimize(bytes.size());
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void encodeGlib(benchmark::State& state, std::string const& text)
{
  std::u32string const points = ucs4Of(text);
  for (auto _ : state)
  {
    gchar* const bytes = g_ucs4_to_utf8(reinterpret_cast<gunichar const*>(points.data()),
                                        static_cast<glong>(points.size()), nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(bytes);
    g_free(bytes);
  }
  state.SetBytesProcessed(state.iterations() * text.size());
}

void encodeIconv(benchmark::State& state, std::string const& text)
{
  std::u32string const points = ucs4Of(text);
  convertIconv(state, "UTF-8", "UCS-4LE", reinterpret_cast<char const*>(points.data()), points.size() * 4, text.size(),
               text.size() + 16);
}

std::u16string utf16Of(std::string const& text)
{
  return QString::fromStdString(text).toStdU16String();
}
} // namespace

BENCH("text", "UTF-8 to code points, ASCII", "mortise")
{
  decodeOurs(state, ascii());
}
BENCH("text", "UTF-8 to code points, ASCII", "Qt")
{
  decodeQt(state, ascii());
}
BENCH("text", "UTF-8 to code points, ASCII", "ICU")
{
  decodeIcu(state, ascii());
}
BENCH("text", "UTF-8 to code points, ASCII", "GLib")
{
  decodeGlib(state, ascii());
}
BENCH("text", "UTF-8 to code points, ASCII", "iconv")
{
  decodeIconv(state, ascii());
}
BENCH("text", "UTF-8 to code points, European", "mortise")
{
  decodeOurs(state, european());
}
BENCH("text", "UTF-8 to code points, European", "Qt")
{
  decodeQt(state, european());
}
BENCH("text", "UTF-8 to code points, European", "ICU")
{
  decodeIcu(state, european());
}
BENCH("text", "UTF-8 to code points, European", "GLib")
{
  decodeGlib(state, european());
}
BENCH("text", "UTF-8 to code points, European", "iconv")
{
  decodeIconv(state, european());
}
BENCH("text", "UTF-8 to code points, CJK", "mortise")
{
  decodeOurs(state, cjk());
}
BENCH("text", "UTF-8 to code points, CJK", "Qt")
{
  decodeQt(state, cjk());
}
BENCH("text", "UTF-8 to code points, CJK", "ICU")
{
  decodeIcu(state, cjk());
}
BENCH("text", "UTF-8 to code points, CJK", "GLib")
{
  decodeGlib(state, cjk());
}
BENCH("text", "UTF-8 to code points, CJK", "iconv")
{
  decodeIconv(state, cjk());
}

BENCH("text", "code points to UTF-8, ASCII", "mortise")
{
  encodeOurs(state, ascii());
}
BENCH("text", "code points to UTF-8, ASCII", "Qt")
{
  encodeQt(state, ascii());
}
BENCH("text", "code points to UTF-8, ASCII", "ICU")
{
  encodeIcu(state, ascii());
}
BENCH("text", "code points to UTF-8, ASCII", "GLib")
{
  encodeGlib(state, ascii());
}
BENCH("text", "code points to UTF-8, ASCII", "iconv")
{
  encodeIconv(state, ascii());
}
BENCH("text", "code points to UTF-8, European", "mortise")
{
  encodeOurs(state, european());
}
BENCH("text", "code points to UTF-8, European", "Qt")
{
  encodeQt(state, european());
}
BENCH("text", "code points to UTF-8, European", "ICU")
{
  encodeIcu(state, european());
}
BENCH("text", "code points to UTF-8, European", "GLib")
{
  encodeGlib(state, european());
}
BENCH("text", "code points to UTF-8, European", "iconv")
{
  encodeIconv(state, european());
}
BENCH("text", "code points to UTF-8, CJK", "mortise")
{
  encodeOurs(state, cjk());
}
BENCH("text", "code points to UTF-8, CJK", "Qt")
{
  encodeQt(state, cjk());
}
BENCH("text", "code points to UTF-8, CJK", "ICU")
{
  encodeIcu(state, cjk());
}
BENCH("text", "code points to UTF-8, CJK", "GLib")
{
  encodeGlib(state, cjk());
}
BENCH("text", "code points to UTF-8, CJK", "iconv")
{
  encodeIconv(state, cjk());
}

BENCH("text", "UTF-16LE to code points", "mortise")
{
  std::u16string const units = utf16Of(european());
  tBytes bytes;
  bytes.append(reinterpret_cast<char const*>(units.data()), static_cast<unsigned int>(units.size() * 2));
  tView view;
  view.set(bytes, 0, bytes.length());
  mucs::cEnDecUTF16 const encoder(1);
  for (auto _ : state)
  {
    mucs::cString points;
    encoder.decode(view, points);
    benchmark::DoNotOptimize(points.length());
  }
  state.SetBytesProcessed(state.iterations() * units.size() * 2);
}

BENCH("text", "UTF-16LE to code points", "Qt")
{
  std::u16string const units = utf16Of(european());
  QString const text = QString::fromStdU16String(units);
  for (auto _ : state)
  {
    QList<uint> const points = text.toUcs4();
    benchmark::DoNotOptimize(points.size());
  }
  state.SetBytesProcessed(state.iterations() * units.size() * 2);
}

BENCH("text", "UTF-16LE to code points", "ICU")
{
  std::u16string const units = utf16Of(european());
  for (auto _ : state)
  {
    std::vector<UChar32> points(units.size());
    int32_t length = 0;
    UErrorCode error = U_ZERO_ERROR;
    u_strToUTF32(points.data(), static_cast<int32_t>(points.size()), &length, units.data(),
                 static_cast<int32_t>(units.size()), &error);
    benchmark::DoNotOptimize(length);
  }
  state.SetBytesProcessed(state.iterations() * units.size() * 2);
}

BENCH("text", "UTF-16LE to code points", "GLib")
{
  std::u16string const units = utf16Of(european());
  for (auto _ : state)
  {
    gunichar* const points = g_utf16_to_ucs4(reinterpret_cast<gunichar2 const*>(units.data()),
                                             static_cast<glong>(units.size()), nullptr, nullptr, nullptr);
    benchmark::DoNotOptimize(points);
    g_free(points);
  }
  state.SetBytesProcessed(state.iterations() * units.size() * 2);
}

BENCH("text", "UTF-16LE to code points", "iconv")
{
  std::u16string const units = utf16Of(european());
  convertIconv(state, "UCS-4LE", "UTF-16LE", reinterpret_cast<char const*>(units.data()), units.size() * 2,
               units.size() * 2, units.size() * 4);
}

BENCH("text", "code points to UTF-16LE", "mortise")
{
  mucs::cString const points = pointsOf(european());
  mucs::cEnDecUTF16 const encoder(1);
  unsigned int length = 0;
  for (auto _ : state)
  {
    tBytes bytes;
    encoder.encode(points, bytes);
    benchmark::DoNotOptimize(length = bytes.length());
  }
  state.SetBytesProcessed(state.iterations() * length);
}

BENCH("text", "code points to UTF-16LE", "Qt")
{
  std::u32string const points = ucs4Of(european());
  qsizetype length = 0;
  for (auto _ : state)
  {
    QString const text = QString::fromUcs4(points.data(), static_cast<qsizetype>(points.size()));
    benchmark::DoNotOptimize(length = text.size());
  }
  state.SetBytesProcessed(state.iterations() * length * 2);
}

BENCH("text", "code points to UTF-16LE", "ICU")
{
  std::u32string const points = ucs4Of(european());
  int32_t length = 0;
  for (auto _ : state)
  {
    std::vector<UChar> units(points.size() * 2);
    UErrorCode error = U_ZERO_ERROR;
    u_strFromUTF32(units.data(), static_cast<int32_t>(units.size()), &length,
                   reinterpret_cast<UChar32 const*>(points.data()), static_cast<int32_t>(points.size()), &error);
    benchmark::DoNotOptimize(length);
  }
  state.SetBytesProcessed(state.iterations() * length * 2);
}

BENCH("text", "code points to UTF-16LE", "GLib")
{
  std::u32string const points = ucs4Of(european());
  glong length = 0;
  for (auto _ : state)
  {
    gunichar2* const units = g_ucs4_to_utf16(reinterpret_cast<gunichar const*>(points.data()),
                                             static_cast<glong>(points.size()), nullptr, &length, nullptr);
    benchmark::DoNotOptimize(units);
    g_free(units);
  }
  state.SetBytesProcessed(state.iterations() * length * 2);
}

BENCH("text", "code points to UTF-16LE", "iconv")
{
  std::u32string const points = ucs4Of(european());
  convertIconv(state, "UTF-16LE", "UCS-4LE", reinterpret_cast<char const*>(points.data()), points.size() * 4,
               points.size() * 2, points.size() * 4);
}

BENCH("text", "message with two parameters, read untranslated", "mortise")
{
  mucs::cString const name("fox");
  for (auto _ : state)
  {
    mucs::cLIMessage message;
    message << "$MTR$File %file% has %count% lines" << name << 42;
    mucs::cString text;
    message.untranslated(text);
    benchmark::DoNotOptimize(text.length());
  }
}
