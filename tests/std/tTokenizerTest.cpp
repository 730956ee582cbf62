#include "std/tTokenizer.h"

#include "std/cAsciiString.h"
#include "std/cAsciiStringTokenizer.h"
#include "std/tArray.h"
#include "std/tConstArrayRef.h"
#include "support/cBlockDeviceProxy.h"
#include "support/cTokenizerModel.h"
#include "ucs/cString.h"

#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace
{

typedef mstd::tArray<char> tBytes;
typedef mstd::tTokenizer<mstd::tConstArrayRef<char>, tBytes> tByteTokenizer;
typedef mstd::tTokenizerContext<tBytes> tByteContext;
typedef support::cTokenizerModel cModel;

tBytes bytes(std::string const& text)
{
  tBytes result;
  result.append(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

std::string str(tBytes const& text)
{
  return std::string(text.data(true), text.length());
}

/// A context for both sides of a comparison.
struct cPair
{
  cModel::cContext model;
  tByteContext real;

  void add(std::string const& text, bool isKey, unsigned int id)
  {
    model.specs.push_back(cModel::cSpec{text, isKey, isKey ? id : 0, 0});
    if (isKey)
    {
      real.addKey(bytes(text), id);
    }
    else
    {
      real.addSeparator(bytes(text));
    }
  }
  void setQuote(std::string const& quote)
  {
    model.quote = quote;
    real.setSingleQuote(bytes(quote));
  }
};

class cRandomText
{
public:
  explicit cRandomText(unsigned int seed) : mRandom(seed) {}

  unsigned int below(unsigned int n) { return static_cast<unsigned int>(mRandom() % n); }
  std::string text(std::string const& alphabet, unsigned int maxLength)
  {
    std::string result;
    for (unsigned int n = below(maxLength + 1); n != 0; --n)
    {
      result += alphabet[below(static_cast<unsigned int>(alphabet.size()))];
    }
    return result;
  }

private:
  std::mt19937_64 mRandom;
};

/// Runs both over `input`, changing between the contexts at random, and compares whatever can be seen.
void compare(std::string const& input, mstd::tAbstractConstArrayProxy<char> const& source, std::vector<cPair>& contexts,
             cRandomText& random)
{
  cModel model(input);
  tByteTokenizer real{mstd::tConstArrayRef<char>(source)};
  std::string expected = "before";
  tBytes token("before");
  for (bool more = true; more;)
  {
    cPair& context = contexts[random.below(static_cast<unsigned int>(contexts.size()))];
    real.setContext(&context.real);
    unsigned int expectedId = 99;
    unsigned int id = 98;
    more = model.getNextToken(context.model, expected, expectedId);
    ASSERT_EQ(real.getNextToken(token, id), more);
    ASSERT_EQ(str(token), expected);
    ASSERT_EQ(id, expectedId);
    ASSERT_EQ(real.position(), static_cast<unsigned int>(model.position()));
    tBytes unquoted(token);
    real.removeQuotes(unquoted);
    ASSERT_EQ(str(unquoted), cModel::removeQuotes(expected, context.model.quote));
  }
  for (cPair& context : contexts)
  {
    for (unsigned int i = 0; i < context.real.length(); ++i)
    {
      ASSERT_EQ(context.real.spec(i).numHints(), context.model.specs[i].hints);
    }
  }
}

void fillRandomly(cPair& context, cRandomText& random, std::string const& alphabet)
{
  for (unsigned int n = random.below(6); n != 0; --n)
  {
    context.add(random.text(alphabet, 3), random.below(2) == 0, 1 + random.below(9));
  }
  if (random.below(2) == 0)
  {
    context.setQuote(random.text(alphabet, 2));
  }
}

} // namespace

TEST(tTokenizerModel, AgreesWithThePlainModelOnShortInput)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  cRandomText random(seed);
  for (int i = 0; i < 40000 && !HasFailure(); ++i)
  {
    std::string const alphabet = std::string("ab\\ cdef").substr(0, 2 + random.below(7));
    std::vector<cPair> contexts(1 + random.below(2));
    for (cPair& context : contexts)
    {
      fillRandomly(context, random, alphabet);
    }
    std::string const input = random.text(alphabet, 30);
    SCOPED_TRACE("input \"" + input + "\"");
    compare(input, bytes(input), contexts, random);
  }
}

TEST(tTokenizerModel, AgreesWithThePlainModelOnInputReadInBlocks)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  cRandomText random(seed);
  for (int i = 0; i < 5000 && !HasFailure(); ++i)
  {
    std::vector<cPair> contexts(1 + random.below(2));
    for (cPair& context : contexts)
    {
      fillRandomly(context, random, "ab\\ ");
    }
    std::string const input = random.text("ab\\ ", 30);
    support::cBlockDeviceProxy const device(input, 1 + random.below(5));
    compare(input, device, contexts, random);
  }
}

TEST(tTokenizerModel, AgreesWithThePlainModelWhereTextsStandFarApart)
{
  unsigned int const seed = std::random_device()();
  SCOPED_TRACE("seed " + std::to_string(seed));
  cRandomText random(seed);
  for (int i = 0; i < 2500 && !HasFailure(); ++i)
  {
    std::vector<cPair> contexts(1 + random.below(3));
    for (cPair& context : contexts)
    {
      fillRandomly(context, random, "ab\\");
    }
    std::string input;
    for (unsigned int n = random.below(12); n != 0; --n)
    {
      input += std::string(random.below(400), '.') + random.text("ab\\", 12);
    }
    compare(input, bytes(input), contexts, random);
  }
}

TEST(tTokenizerModel, AgreesWhereQuotedOccurrencesOfALongTextOverlap)
{
  // "b" with a hundred "a" on either side stands at 1 and 102, both times behind the quote, and at 252. Who begins
  // between the first two steps over the second, and with it over the beginning of the third.
  std::string const run(100, 'a');
  std::string const input = "b" + run + "b" + run + "b" + std::string(149, 'a') + "b" + run;
  std::vector<cPair> contexts(1);
  contexts[0].add(run + "b" + run, true, 1);
  contexts[0].add("ab", true, 2);
  contexts[0].setQuote("b");
  cRandomText random(1);
  compare(input, bytes(input), contexts, random);
}

TEST(tTokenizer, WithoutAContextTheRestIsOneToken)
{
  tBytes const input("a b=c");
  tByteTokenizer tokenizer{mstd::tConstArrayRef<char>(input)};
  EXPECT_EQ(tokenizer.context(), nullptr);
  tBytes token;
  unsigned int id = 5;
  EXPECT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "a b=c");
  EXPECT_EQ(id, 0u);
  tokenizer.removeQuotes(token);
  EXPECT_EQ(str(token), "a b=c");
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
}

TEST(tTokenizer, OfTwoTextsAtOnePlaceTheOneAddedFirstCounts)
{
  tBytes const input("abc");
  for (bool longFirst : {false, true})
  {
    tByteContext context;
    context.addKey(longFirst ? "ab" : "a", 1);
    context.addKey(longFirst ? "a" : "ab", 2);
    tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(input), &context);
    tBytes token;
    unsigned int id = 0;
    ASSERT_TRUE(tokenizer.getNextToken(token, id));
    EXPECT_EQ(str(token), longFirst ? "ab" : "a");
    EXPECT_EQ(id, 1u);
  }
}

TEST(tTokenizer, ATextThatRunsIntoTheBestOneIsNotLookedFor)
{
  // "xa" fits into what "abc" leaves of the input, "xab" begins at the same place but does not
  tBytes const input("..xabc");
  tByteContext context;
  context.addKey("abc", 1);
  context.addKey("xa", 2);
  tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(input), &context);
  tBytes token;
  unsigned int id = 0;
  ASSERT_TRUE(tokenizer.getNextToken(token, id));
  EXPECT_EQ(str(token), "..");
  tByteContext overlapping;
  overlapping.addKey("abc", 1);
  overlapping.addKey("xab", 2);
  tByteTokenizer second(mstd::tConstArrayRef<char>(input), &overlapping);
  ASSERT_TRUE(second.getNextToken(token, id));
  EXPECT_EQ(str(token), "..x") << "the window of three ends behind the a";
}

TEST(tTokenizer, TextsOfCodePointsAreSplitToo)
{
  mucs::cString const path("../a/./b");
  typedef mstd::tTokenizer<mstd::tConstArrayRef<unsigned int>, mucs::cString> tPathTokenizer;
  mstd::tTokenizerContext<mucs::cString> context;
  context.addKey("../", 2);
  context.addKey("./", 3);
  context.addKey("/", 4);
  tPathTokenizer tokenizer(mstd::tConstArrayRef<unsigned int>(path), &context);
  std::string seen;
  mucs::cString token;
  unsigned int id = 0;
  while (tokenizer.getNextToken(token, id))
  {
    seen += std::string(token.ascii('?').c_str()) + ":" + std::to_string(id) + " ";
  }
  EXPECT_EQ(seen, "../:2 a:0 /:4 ./:3 b:0 ");
}

TEST(tTokenizer, ProcessCountsWhatTheRestHolds)
{
  tBytes const input("a,b=c,,d=\\=e");
  tByteContext context;
  context.setSingleQuote("\\");
  tByteContext::cTokenSpec& comma = context.addSeparator(",");
  tByteContext::cTokenSpec& equals = context.addKey("=", 1);
  tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(input), &context);
  tokenizer.process();
  EXPECT_EQ(comma.numHints(), 3u);
  EXPECT_EQ(equals.numHints(), 2u);
  EXPECT_EQ(tokenizer.position(), input.length());
}

TEST(tTokenizer, RareTextsDoNotMakeARunQuadratic)
{
  // Searched anew for each of the words, 64 texts that never come would take minutes.
  std::string input;
  for (int i = 0; i < 100000; ++i)
  {
    input += "a ";
  }
  tByteContext context;
  for (int i = 0; i < 64; ++i)
  {
    context.addKey(bytes("keyword" + std::to_string(i)), 1);
  }
  tByteContext::cTokenSpec& blank = context.addSeparator(" ");
  tBytes const source = bytes(input);
  tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(source), &context);
  tokenizer.process();
  EXPECT_EQ(blank.numHints(), 100000u);
}

TEST(tTokenizer, QuotedTextsDoNotMakeARunQuadratic)
{
  std::string input;
  for (int i = 0; i < 60000; ++i)
  {
    input += "\\ab ";
  }
  tByteContext context;
  context.setSingleQuote("\\");
  context.addKey("ab", 1);
  context.addKey("a", 2);
  tByteContext::cTokenSpec& b = context.addKey("b", 3);
  context.addSeparator(" ");
  tBytes const source = bytes(input);
  tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(source), &context);
  tokenizer.process();
  EXPECT_EQ(b.numHints(), 60000u);
}

TEST(tTokenizer, MoreFarTextsThanAreRememberedStillAreFound)
{
  std::string const filler(300, '.');
  tByteContext context;
  std::string input;
  for (int i = 0; i < 1100; ++i)
  {
    context.addKey(bytes("<" + std::to_string(i) + ">"), static_cast<unsigned int>(i + 1));
  }
  for (int i = 0; i < 3; ++i)
  {
    input += filler + "<" + std::to_string(i * 500) + ">";
  }
  tBytes const source = bytes(input);
  tByteTokenizer tokenizer(mstd::tConstArrayRef<char>(source), &context);
  tBytes token;
  unsigned int id = 0;
  for (unsigned int i = 0; i < 3; ++i)
  {
    ASSERT_TRUE(tokenizer.getNextToken(token, id));
    EXPECT_EQ(str(token), filler);
    ASSERT_TRUE(tokenizer.getNextToken(token, id));
    EXPECT_EQ(id, i * 500 + 1);
  }
  EXPECT_FALSE(tokenizer.getNextToken(token, id));
}
