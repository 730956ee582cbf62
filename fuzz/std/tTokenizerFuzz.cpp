#include "std/cUTF8StringTokenizer.h"
#include "support/cTokenizerModel.h"

#include <cstdint>
#include <cstdlib>
#include <string>

// Byte 0: length of the quote and number of texts; byte 1: lengths of the texts; then the texts and the input. The
// tokens must be those of the plain model, and together with the separators they must make up the input.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  if (size < 2)
  {
    return 0;
  }
  char const* text = reinterpret_cast<char const*>(data);
  std::string rest(text + 2, size - 2);
  auto const take = [&rest](std::size_t length) {
    std::string const head = rest.substr(0, length);
    rest.erase(0, length);
    return head;
  };
  auto const bytes = [](std::string const& from) {
    mstd::tArray<char> to;
    to.append(from.data(), static_cast<unsigned int>(from.size()));
    return to;
  };
  support::cTokenizerModel::cContext plain;
  mstd::tTokenizerContext<mstd::tArray<char>> context;
  plain.quote = take(data[0] & 3);
  context.setSingleQuote(bytes(plain.quote));
  for (unsigned int i = 0; i < data[0] >> 4; ++i)
  {
    bool const isKey = (i & 1) != 0;
    std::string const spec = take(1 + (data[1] >> i & 3));
    plain.specs.push_back({spec, isKey, isKey ? i : 0, 0});
    isKey ? context.addKey(bytes(spec), i) : context.addSeparator(bytes(spec));
  }
  mstd::tArray<char> const input = bytes(rest);
  support::cTokenizerModel model(rest);
  mstd::cUTF8StringTokenizer tokenizer(input, &context);
  std::string expected;
  mstd::tArray<char> token;
  unsigned int expectedId = 0;
  unsigned int id = 0;
  for (bool more = true; more;)
  {
    more = model.getNextToken(plain, expected, expectedId);
    if (tokenizer.getNextToken(token, id) != more || id != expectedId ||
        (more && std::string(token.data(true), token.length()) != expected) ||
        tokenizer.position() != static_cast<unsigned int>(model.position()))
    {
      std::abort();
    }
    tokenizer.removeQuotes(token);
    if (more &&
        std::string(token.data(true), token.length()) != support::cTokenizerModel::removeQuotes(expected, plain.quote))
    {
      std::abort();
    }
  }
  return 0;
}
