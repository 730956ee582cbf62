#include "support/bench.h"

#include "std/cAsciiString.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/tConstArrayRef.h"

#include <absl/strings/numbers.h>
#include <absl/strings/str_cat.h>
#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <random>
#include <string>
#include <vector>

// Every case walks the same 1,024 numbers; a number counts as one item.

namespace
{
size_t const Count = 1024;

std::vector<long long> const& integers()
{
  static std::vector<long long> const numbers = [] {
    std::mt19937_64 random(1);
    std::vector<long long> result;
    for (size_t i = 0; i < Count; ++i)
    {
      result.push_back(static_cast<long long>(random() >> (random() % 60)) * (random() % 2 != 0 ? 1 : -1));
    }
    return result;
  }();
  return numbers;
}

std::vector<double> const& doubles()
{
  static std::vector<double> const numbers = [] {
    std::mt19937_64 random(2);
    std::uniform_real_distribution<double> range(-1e6, 1e6);
    std::vector<double> result;
    for (size_t i = 0; i < Count; ++i)
    {
      result.push_back(range(random));
    }
    return result;
  }();
  return numbers;
}

std::vector<std::string> integerTexts(int iBase)
{
  std::vector<std::string> texts;
  for (long long number : integers())
  {
    std::array<char, 72> buffer;
    texts.emplace_back(buffer.data(), std::to_chars(buffer.begin(), buffer.end(), number, iBase).ptr);
  }
  return texts;
}

std::vector<std::string> doubleTexts()
{
  std::vector<std::string> texts;
  for (double number : doubles())
  {
    texts.push_back(fmt::format("{:.10f}", number));
  }
  return texts;
}

std::vector<mstd::cAsciiString> asStrings(std::vector<std::string> const& texts)
{
  std::vector<mstd::cAsciiString> strings;
  for (std::string const& text : texts)
  {
    strings.emplace_back(text.c_str());
  }
  return strings;
}

void countItems(benchmark::State& state)
{
  state.SetItemsProcessed(state.iterations() * Count);
}

void integersToText(benchmark::State& state, unsigned int iBase)
{
  mstd::cNumberConversionFormat const format(iBase);
  mstd::cAsciiString text;
  text.setFitOnErase(false);
  for (auto _ : state)
  {
    for (long long number : integers())
    {
      text.truncate(0);
      mstd::cNumberConversion::toString(text, number, format);
      benchmark::DoNotOptimize(text.c_str());
    }
  }
  countItems(state);
}

void integersToChars(benchmark::State& state, int iBase)
{
  std::array<char, 72> buffer;
  for (auto _ : state)
  {
    for (long long number : integers())
    {
      benchmark::DoNotOptimize(std::to_chars(buffer.begin(), buffer.end(), number, iBase).ptr);
      benchmark::ClobberMemory();
    }
  }
  countItems(state);
}

void textToIntegers(benchmark::State& state, unsigned int iBase)
{
  std::vector<mstd::cAsciiString> const texts = asStrings(integerTexts(static_cast<int>(iBase)));
  mstd::cNumberConversionFormat format(iBase);
  format.setBaseDetectionEnabled(false);
  for (auto _ : state)
  {
    for (mstd::cAsciiString const& text : texts)
    {
      benchmark::DoNotOptimize(mstd::cNumberConversion::fromString(text, format));
    }
  }
  countItems(state);
}

void integersFromChars(benchmark::State& state, int iBase)
{
  std::vector<std::string> const texts = integerTexts(iBase);
  for (auto _ : state)
  {
    for (std::string const& text : texts)
    {
      long long number = 0;
      std::from_chars(text.data(), text.data() + text.size(), number, iBase);
      benchmark::DoNotOptimize(number);
    }
  }
  countItems(state);
}
} // namespace

BENCH("numbers", "integer to text, base 10", "mortise")
{
  integersToText(state, 10);
}
BENCH("numbers", "integer to text, base 10", "std::to_chars")
{
  integersToChars(state, 10);
}
BENCH("numbers", "integer to text, base 10", "fmt")
{
  for (auto _ : state)
  {
    for (long long number : integers())
    {
      fmt::format_int const text(number);
      benchmark::DoNotOptimize(text.data());
    }
  }
  countItems(state);
}
BENCH("numbers", "integer to text, base 10", "Abseil")
{
  for (auto _ : state)
  {
    for (long long number : integers())
    {
      std::string const text = absl::StrCat(number);
      benchmark::DoNotOptimize(text.data());
    }
  }
  countItems(state);
}
BENCH("numbers", "integer to text, base 16", "mortise")
{
  integersToText(state, 16);
}
BENCH("numbers", "integer to text, base 16", "std::to_chars")
{
  integersToChars(state, 16);
}
BENCH("numbers", "integer to text, base 7", "mortise")
{
  integersToText(state, 7);
}
BENCH("numbers", "integer to text, base 7", "std::to_chars")
{
  integersToChars(state, 7);
}

BENCH("numbers", "text to integer, base 10", "mortise")
{
  textToIntegers(state, 10);
}
BENCH("numbers", "text to integer, base 10", "std::from_chars")
{
  integersFromChars(state, 10);
}
BENCH("numbers", "text to integer, base 10", "Abseil")
{
  std::vector<std::string> const texts = integerTexts(10);
  for (auto _ : state)
  {
    for (std::string const& text : texts)
    {
      long long number = 0;
      benchmark::DoNotOptimize(absl::SimpleAtoi(text, &number));
      benchmark::DoNotOptimize(number);
    }
  }
  countItems(state);
}
BENCH("numbers", "text to integer, base 16", "mortise")
{
  textToIntegers(state, 16);
}
BENCH("numbers", "text to integer, base 16", "std::from_chars")
{
  integersFromChars(state, 16);
}
BENCH("numbers", "text to integer, base 7", "mortise")
{
  textToIntegers(state, 7);
}
BENCH("numbers", "text to integer, base 7", "std::from_chars")
{
  integersFromChars(state, 7);
}

// The peers named for doubles are the C library's; the shortest-form algorithms of others give other digits.

BENCH("numbers", "double to text, 14 digits", "mortise")
{
  mstd::cNumberConversionFormat const format(10);
  mstd::cAsciiString text;
  text.setFitOnErase(false);
  for (auto _ : state)
  {
    for (double number : doubles())
    {
      text.truncate(0);
      mstd::cNumberConversion::toStringFromDouble(text, number, format);
      benchmark::DoNotOptimize(text.c_str());
    }
  }
  countItems(state);
}
BENCH("numbers", "double to text, 14 digits", "snprintf")
{
  std::array<char, 512> buffer;
  for (auto _ : state)
  {
    for (double number : doubles())
    {
      benchmark::DoNotOptimize(std::snprintf(buffer.data(), buffer.size(), "%.14f", number));
      benchmark::ClobberMemory();
    }
  }
  countItems(state);
}

BENCH("numbers", "text to double", "mortise")
{
  std::vector<mstd::cAsciiString> const texts = asStrings(doubleTexts());
  mstd::cNumberConversionFormat const format(10);
  for (auto _ : state)
  {
    for (mstd::cAsciiString const& text : texts)
    {
      benchmark::DoNotOptimize(mstd::cNumberConversion::fromStringToDouble(text, format));
    }
  }
  countItems(state);
}
BENCH("numbers", "text to double", "strtod")
{
  std::vector<std::string> const texts = doubleTexts();
  for (auto _ : state)
  {
    for (std::string const& text : texts)
    {
      benchmark::DoNotOptimize(std::strtod(text.c_str(), nullptr));
    }
  }
  countItems(state);
}
