#include "std/cUTF8StringTokenizer.h"

#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "support/messageOf.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>
#include <string>

using mstd::cUTF8StringTokenizer;
using mstd::cUTF8StringTokenizerContext;

namespace
{

typedef mstd::tArray<char> tBytes;

std::string str(tBytes const& text)
{
  return std::string(text.data(true), text.length());
}

std::string utf8(mucs::cString const& text)
{
  return str(text.toUTF8());
}

mucs::cString decoded(char const* text)
{
  mucs::cString result;
  tBytes const bytes(text);
  result.fromUTF8(mstd::tConstArrayRef<char>(bytes));
  return result;
}

} // namespace

TEST(cUTF8StringTokenizer, TokensAreDecoded)
{
  tBytes const input("gr\xC3\xBC\xC3\x9F = \xE2\x82\xAC 5");
  cUTF8StringTokenizerContext context;
  context.addSeparator(" ");
  context.addKey("=", 4);
  cUTF8StringTokenizer tokenizer(input, &context);
  mucs::cString token;
  unsigned int id = 9;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(token.length(), 4u);
  EXPECT_EQ(token.at(2), 0xFCu);
  EXPECT_EQ(id, 0u);
  EXPECT_EQ(tokenizer.expectToken(token), 4u);
  EXPECT_TRUE(token == "=");
  mucs::cString amount;
  tokenizer >> token >> amount;
  EXPECT_EQ(utf8(token), "\xE2\x82\xAC");
  EXPECT_TRUE(amount == "5");
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { tokenizer.expectToken(token); }),
            "Unexpected end of input!");
}

TEST(cUTF8StringTokenizer, TextsOfTheContextAreKeptAsUTF8)
{
  cUTF8StringTokenizerContext context;
  EXPECT_EQ(str(context.addSeparator(decoded("\xC3\xA4")).text()), "\xC3\xA4");
  EXPECT_EQ(str(context.addSeparator("\xC3\xB6").text()), "\xC3\xB6");
  EXPECT_EQ(str(context.addKey(decoded("\xE2\x82\xAC"), 1).text()), "\xE2\x82\xAC");
  EXPECT_EQ(str(context.addKey("\xE2\x82\xAD", 2).text()), "\xE2\x82\xAD");
  context.setSingleQuote(decoded("\xC2\xA7"));
  EXPECT_EQ(str(context.singleQuote()), "\xC2\xA7");
  EXPECT_FALSE(context.spec(0).isKey());
  EXPECT_EQ(context.spec(3).id(), 2u);
  tBytes const input("x\xC3\xA4y\xC3\xB6z\xE2\x82\xAC\xE2\x82\xADw");
  cUTF8StringTokenizer tokenizer(input, &context);
  std::string seen;
  mucs::cString token;
  unsigned int id = 0;
  while (tokenizer.getNextToken(token, id))
  {
    seen += utf8(token) + ":" + std::to_string(id) + " ";
  }
  EXPECT_EQ(seen, "x:0 y:0 z:0 \xE2\x82\xAC:1 \xE2\x82\xAD:2 w:0 ");
}

TEST(cUTF8StringTokenizer, BytesAreHandedOutToo)
{
  tBytes const input("a b");
  cUTF8StringTokenizerContext context;
  context.addSeparator(" ");
  mstd::tConstArrayRef<char> const view(input);
  cUTF8StringTokenizer tokenizer(view);
  tokenizer.setContext(&context);
  tBytes token;
  unsigned int id = 0;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "a");
  EXPECT_EQ(tokenizer.expectToken(token), 0u);
  EXPECT_EQ(str(token), "b");
}

TEST(cUTF8StringTokenizer, QuotesOfSeveralBytesAreRemoved)
{
  tBytes const input("a\xC2\xA7=b\xC2\xA7\xC2\xA7=c");
  cUTF8StringTokenizerContext context;
  context.addKey("=", 1);
  context.setSingleQuote(decoded("\xC2\xA7"));
  cUTF8StringTokenizer tokenizer(input, &context);
  mucs::cString token;
  EXPECT_EQ(tokenizer.expectToken(token), 0u);
  EXPECT_EQ(utf8(token), "a\xC2\xA7=b\xC2\xA7\xC2\xA7=c") << "each key stands directly behind a quote";
  tokenizer.removeQuotes(token);
  EXPECT_EQ(utf8(token), "a=b\xC2\xA7=c");
  tBytes bytes("\xC2\xA7\xC2\xA7");
  tokenizer.removeQuotes(bytes);
  EXPECT_EQ(str(bytes), "\xC2\xA7");
  tokenizer.setContext(nullptr);
  mucs::cString untouched = decoded("\xC2\xA7");
  tokenizer.removeQuotes(untouched);
  EXPECT_EQ(utf8(untouched), "\xC2\xA7");
}

TEST(cUTF8StringTokenizer, ATokenThatIsNoUTF8FailsAndIsSteppedOver)
{
  tBytes const input("ok \xFC\x80\x80 next");
  cUTF8StringTokenizerContext context;
  context.addSeparator(" ");
  cUTF8StringTokenizer tokenizer(input, &context);
  mucs::cString token;
  tokenizer >> token;
  EXPECT_THROW(tokenizer >> token, mstd::cRuntimeException);
  EXPECT_TRUE(token == "ok");
  tokenizer >> token;
  EXPECT_TRUE(token == "next");
}

TEST(cUTF8StringTokenizer, AStringModeIsJustAnotherContext)
{
  tBytes const input("\"gr\xC3\xBC\xC3\x9F \\\"dich\\\"\" = \"=\"");
  cUTF8StringTokenizerContext plain;
  plain.addSeparator(" ");
  plain.addKey("\"", 1);
  plain.addKey("=", 2);
  cUTF8StringTokenizerContext quoted;
  quoted.addKey("\"", 1);
  quoted.setSingleQuote(mucs::cString("\\"));
  cUTF8StringTokenizer tokenizer(input, &plain);
  auto const readString = [&] {
    mucs::cString text;
    mucs::cString quote;
    EXPECT_EQ(tokenizer.expectToken(quote), 1u);
    tokenizer.setContext(&quoted);
    tokenizer >> text;
    tokenizer.removeQuotes(text);
    EXPECT_EQ(tokenizer.expectToken(quote), 1u);
    tokenizer.setContext(&plain);
    return utf8(text);
  };
  EXPECT_EQ(readString(), "gr\xC3\xBC\xC3\x9F \"dich\"");
  mucs::cString token;
  EXPECT_EQ(tokenizer.expectToken(token), 2u);
  EXPECT_EQ(readString(), "=");
}
