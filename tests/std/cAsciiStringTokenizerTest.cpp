#include "std/cAsciiStringTokenizer.h"

#include "std/cRuntimeException.h"
#include "support/messageOf.h"

#include <gtest/gtest.h>
#include <string>

using mstd::cAsciiString;
using mstd::cAsciiStringTokenizer;
using mstd::cAsciiStringTokenizerContext;

namespace
{

std::string str(cAsciiString const& text)
{
  return std::string(text.c_str(), text.length());
}

/// All tokens that are left, each as "text:id ".
std::string rest(cAsciiStringTokenizer& tokenizer)
{
  std::string result;
  cAsciiString token;
  unsigned int id = 0;
  while (tokenizer.getNextToken(token, id))
  {
    result += str(token) + ":" + std::to_string(id) + " ";
  }
  return result;
}

} // namespace

TEST(cAsciiStringTokenizer, WordsAndKeysComeInTurn)
{
  cAsciiString const input("a=b");
  cAsciiStringTokenizerContext context;
  context.addSeparator(" ");
  context.addKey("=", 7);
  cAsciiStringTokenizer tokenizer(input);
  tokenizer.setContext(&context);
  EXPECT_EQ(tokenizer.context(), &context);
  cAsciiString token;
  unsigned int id = 99;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "a");
  EXPECT_EQ(id, 0u);
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "=");
  EXPECT_EQ(id, 7u);
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "b");
  EXPECT_EQ(id, 0u);
  id = 99;
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(id, 0u);
  EXPECT_EQ(str(token), "b") << "a token is kept at the end";
}

TEST(cAsciiStringTokenizer, TwoSeparatorsInARowYieldNoEmptyToken)
{
  cAsciiString const input("  a  ,b , , c");
  cAsciiStringTokenizerContext context;
  cAsciiStringTokenizerContext::cTokenSpec& blank = context.addSeparator(" ");
  cAsciiStringTokenizerContext::cTokenSpec& comma = context.addSeparator(",");
  cAsciiStringTokenizer tokenizer(input, &context);
  EXPECT_EQ(rest(tokenizer), "a:0 b:0 c:0 ");
  EXPECT_EQ(blank.numHints(), 7u);
  EXPECT_EQ(comma.numHints(), 3u);
}

TEST(cAsciiStringTokenizer, SeparatorsAtTheEndYieldNoToken)
{
  cAsciiString const input("ab  ");
  cAsciiStringTokenizerContext context;
  cAsciiStringTokenizerContext::cTokenSpec& blank = context.addSeparator(" ");
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token;
  unsigned int id = 0;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "ab");
  EXPECT_EQ(tokenizer.position(), 2u);
  EXPECT_EQ(blank.numHints(), 0u) << "a separator that ends a word is met by the next call";
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(tokenizer.position(), 4u);
  EXPECT_EQ(blank.numHints(), 2u);
  EXPECT_EQ(str(token), "ab");
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(blank.numHints(), 2u);
}

TEST(cAsciiStringTokenizer, AKeyBehindAWordIsHintedWhenItIsDelivered)
{
  cAsciiString const input("word;");
  cAsciiStringTokenizerContext context;
  cAsciiStringTokenizerContext::cTokenSpec& key = context.addKey(";", 3);
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token;
  unsigned int id = 0;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(key.numHints(), 0u);
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(id, 3u);
  EXPECT_EQ(key.numHints(), 1u);
}

TEST(cAsciiStringTokenizer, AnEmptyInputEndsAtOnce)
{
  cAsciiString const input;
  cAsciiStringTokenizerContext context;
  context.addKey("=", 1);
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token("kept");
  unsigned int id = 99;
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(id, 0u);
  EXPECT_EQ(support::messageOf<mstd::cRuntimeException>([&] { tokenizer.expectToken(token); }),
            "Unexpected end of input!");
  EXPECT_EQ(str(token), "kept");
  tokenizer >> token;
  EXPECT_EQ(str(token), "kept");
}

TEST(cAsciiStringTokenizer, ExpectTokenGivesTheId)
{
  cAsciiString const input("x=");
  cAsciiStringTokenizerContext context;
  context.addKey("=", 5);
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token;
  EXPECT_EQ(tokenizer.expectToken(token), 0u);
  EXPECT_EQ(str(token), "x");
  EXPECT_EQ(tokenizer.expectToken(token), 5u);
  EXPECT_THROW(tokenizer.expectToken(token), mstd::cRuntimeException);
}

TEST(cAsciiStringTokenizer, TokensAreReadAsFromAStream)
{
  cAsciiString const input("one two three");
  cAsciiStringTokenizerContext context;
  context.addSeparator(" ");
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString a;
  cAsciiString b;
  tokenizer >> a >> b;
  EXPECT_EQ(str(a), "one");
  EXPECT_EQ(str(b), "two");
}

TEST(cAsciiStringTokenizer, AQuotedKeyStaysInItsWord)
{
  cAsciiString const input("say \\\"hi\\\" now\"rest");
  cAsciiStringTokenizerContext context;
  context.addKey("\"", 1);
  context.setSingleQuote("\\");
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token;
  unsigned int id = 99;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "say \\\"hi\\\" now");
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "say \"hi\" now");
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(id, 1u);
}

TEST(cAsciiStringTokenizer, AQuotedSeparatorIsSteppedOverWithTheOneBehindIt)
{
  // the parser took the quote away with a key, so the next call begins directly behind it
  cAsciiString const input("q-x - y");
  cAsciiStringTokenizerContext context;
  context.setSingleQuote("q");
  cAsciiStringTokenizerContext::cTokenSpec& key = context.addKey("q", 1);
  cAsciiStringTokenizerContext::cTokenSpec& dash = context.addSeparator("-");
  cAsciiStringTokenizer tokenizer(input, &context);
  EXPECT_EQ(rest(tokenizer), "q:1 -x :0  y:0 ");
  EXPECT_EQ(key.numHints(), 1u);
  EXPECT_EQ(dash.numHints(), 1u);
  cAsciiString const doubled("q--x");
  cAsciiStringTokenizer second(doubled, &context);
  EXPECT_EQ(rest(second), "q:1 x:0 ");
  EXPECT_EQ(dash.numHints(), 2u) << "the quoted one is not counted";
}

TEST(cAsciiStringTokenizer, RemoveQuotesKeepsTheSecondOfTwo)
{
  cAsciiString const input;
  cAsciiStringTokenizerContext context;
  cAsciiStringTokenizer tokenizer(input, &context);
  cAsciiString token("\\a\\\\b");
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "\\a\\\\b") << "no quote is set";
  context.setSingleQuote("\\");
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "a\\b");
  token = "\\\\\\x\\";
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "\\x");
  token = "plain";
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "plain");
  token = "";
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "");
  context.setSingleQuote("''");
  token = "a''''b'c''";
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "a''b'c");
}

TEST(cAsciiStringTokenizer, OuterCountersCountLinesInWhateverContext)
{
  unsigned int numCR = 0;
  unsigned int numLF = 0;
  cAsciiStringTokenizerContext text;
  text.addSeparator(" ");
  text.addSeparator("\r").leaveCount(&numCR);
  text.addSeparator("\n").leaveCount(&numLF);
  text.addKey("/*", 1);
  cAsciiStringTokenizerContext comment;
  comment.addSeparator("\r").leaveCount(&numCR);
  comment.addSeparator("\n").leaveCount(&numLF);
  comment.addKey("*/", 2);
  cAsciiString const input("a\r\nb /* c\r\n\r\nd */\n e\r\n");
  cAsciiStringTokenizer tokenizer(input, &text);
  std::string words;
  cAsciiString token;
  unsigned int id = 0;
  while (tokenizer.getNextToken(token, id))
  {
    if (id == 1)
    {
      tokenizer.setContext(&comment);
    }
    else if (id == 2)
    {
      tokenizer.setContext(&text);
    }
    else if (tokenizer.context() == &text)
    {
      words += str(token);
    }
  }
  EXPECT_EQ(words, "abe");
  EXPECT_EQ(numCR, 4u);
  EXPECT_EQ(numLF, 5u);
}

TEST(cAsciiStringTokenizer, AnotherContextCountsFromTheNextToken)
{
  cAsciiString const input("a b,c d,e");
  cAsciiStringTokenizerContext blanks;
  blanks.addSeparator(" ");
  cAsciiStringTokenizerContext commas;
  commas.addSeparator(",");
  cAsciiStringTokenizer tokenizer(input, &blanks);
  cAsciiString token;
  tokenizer >> token;
  EXPECT_EQ(str(token), "a");
  tokenizer.setContext(&commas);
  tokenizer >> token;
  EXPECT_EQ(str(token), " b");
  tokenizer >> token;
  EXPECT_EQ(str(token), "c d");
  tokenizer.setContext(nullptr);
  tokenizer >> token;
  EXPECT_EQ(str(token), ",e");
}

TEST(cAsciiStringTokenizer, AnEmptyTextNeverOccurs)
{
  cAsciiString const input("ab");
  cAsciiStringTokenizerContext context;
  cAsciiStringTokenizerContext::cTokenSpec& separator = context.addSeparator("");
  cAsciiStringTokenizerContext::cTokenSpec& key = context.addKey("", 1);
  cAsciiStringTokenizer tokenizer(input, &context);
  EXPECT_EQ(rest(tokenizer), "ab:0 ");
  EXPECT_EQ(separator.numHints(), 0u);
  EXPECT_EQ(key.numHints(), 0u);
}

TEST(cAsciiStringTokenizer, ZeroBytesAreTextAsAnyOther)
{
  cAsciiString input;
  input.append("a\0b\0\0c", 6);
  cAsciiString zeros;
  zeros.append("\0\0", 2);
  cAsciiStringTokenizerContext context;
  context.addSeparator(zeros);
  cAsciiStringTokenizer tokenizer(input, &context);
  EXPECT_EQ(rest(tokenizer), std::string("a\0b:0 c:0 ", 10));
}
