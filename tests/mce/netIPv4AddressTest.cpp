#include "mce/net++/cNetAbstractIPv4Address.h"

#include "std/cRuntimeException.h"
#include "support/cPlainIPv4Address.h"
#include "support/exceptionText.h"

#include <gtest/gtest.h>

#include <random>

using support::caught;
using support::cPlainIPv4Address;

namespace
{
mstd::cAsciiString ascii(std::string const& text)
{
  mstd::cAsciiString result;
  result.append(text.data(), static_cast<unsigned int>(text.size()));
  return result;
}

/// What reading `text` gives: the numbers, or the message of the failure, behind which the address has to be as it was.
std::string read(std::string const& text)
{
  cPlainIPv4Address address(0xDEADBEEF, 4711);
  mce::cNetAbstractAddress& base = address;
  try
  {
    base.fromString(ascii(text));
  }
  catch (mstd::cRuntimeException const& e)
  {
    EXPECT_EQ(address.miSets, 0u);
    return support::messageOf(e);
  }
  EXPECT_EQ(address.miSets, 1u);
  char line[64];
  snprintf(line, sizeof(line), "%08X %u", address.miIp, address.miPort);
  return line;
}

TEST(cNetAbstractIPv4Address, IsOfItsType)
{
  cPlainIPv4Address address;
  cPlainIPv4Address const& constant = address;
  EXPECT_STREQ(address.addrType().c_str(), "TcpIpv4");
  EXPECT_EQ(&address.ipAddress(), &address);
  EXPECT_EQ(&constant.ipAddress(), &address);
  EXPECT_EQ(static_cast<mce::cNetAbstractAddress&>(address).isIPAddress(), &address);
  EXPECT_EQ(static_cast<mce::cNetAbstractAddress const&>(address).isIPAddress(), &address);
  static_assert(std::is_base_of<mce::cNetAbstractIPAddress, mce::cNetAbstractIPv4Address>::value, "");
}

TEST(cNetAbstractIPv4Address, PutsTheFirstNumberIntoTheLowestByte)
{
  EXPECT_EQ(read("10.0.0.1"), "0100000A 0");
  EXPECT_EQ(read("1.2.3.4"), "04030201 0");
  EXPECT_EQ(read("255.255.255.255"), "FFFFFFFF 0");
  EXPECT_EQ(read("0.0.0.0"), "00000000 0");
  EXPECT_EQ(read("010.000.0000.01"), "0100000A 0");
}

TEST(cNetAbstractIPv4Address, WritesItsNumbersAndItsPortIfAsked)
{
  cPlainIPv4Address const address(0x0100000A, 0);
  EXPECT_STREQ(address.toString(0).c_str(), "10.0.0.1");
  EXPECT_STREQ(address.toString(1).c_str(), "10.0.0.1:0");
  EXPECT_STREQ(address.toString(2).c_str(), "10.0.0.1");
  EXPECT_STREQ(address.toString(3).c_str(), "10.0.0.1:0");
  EXPECT_STREQ(address.toString(-1).c_str(), "10.0.0.1:0");
  EXPECT_STREQ(cPlainIPv4Address(0xFF806401, 65535).toString(1).c_str(), "1.100.128.255:65535");
}

TEST(cNetAbstractIPv4Address, WritesThePortThatItReports)
{
  class cOtherPort : public cPlainIPv4Address
  {
  public:
    unsigned int port() const override { return 99; }
  };
  cOtherPort address;
  address.setAddress(0, 5);
  EXPECT_STREQ(address.toString(1).c_str(), "0.0.0.0:99");
}

TEST(cNetAbstractIPv4Address, ReadsThePort)
{
  EXPECT_EQ(read("10.0.0.1:8080"), "0100000A 8080");
  EXPECT_EQ(read("10.0.0.1:0"), "0100000A 0");
  EXPECT_EQ(read("10.0.0.1:65535"), "0100000A 65535");
  EXPECT_EQ(read("10.0.0.1:80.90:7"), "0100000A 80");
}

TEST(cNetAbstractIPv4Address, RefusesPortsOutOfRange)
{
  EXPECT_EQ(read("10.0.0.1:65536"), "Given port number (65536) is not in range of 0..65535");
  EXPECT_EQ(read("10.0.0.1:4294967297"), "Given port number (4294967297) is not in range of 0..65535");
  EXPECT_EQ(read("10.0.0.1:-1"), "Given port number (-1) is not in range of 0..65535");
  EXPECT_EQ(read("10.0.0.1:"), "Expecting port number!");
  EXPECT_EQ(read("10.0.0.1:."), "Expecting port number!");
}

TEST(cNetAbstractIPv4Address, RefusesNumbersOutOfRange)
{
  EXPECT_EQ(read("10.0.0.256"), "IP number part (256) is not in range of 0..255!");
  EXPECT_EQ(read("256.0.0.1"), "IP number part (256) is not in range of 0..255!");
  EXPECT_EQ(read("10.-1.0.1"), "IP number part (-1) is not in range of 0..255!");
  EXPECT_EQ(read("10.0.4294967295.1"), "IP number part (-1) is not in range of 0..255!");
  EXPECT_EQ(read("10.0.2147483648.1"), "IP number part (-2147483648) is not in range of 0..255!");
  EXPECT_EQ(read("10.0.4294967297.1"), "0101000A 0") << "the low 32 bits count";
}

TEST(cNetAbstractIPv4Address, ExpectsFourNumbers)
{
  EXPECT_EQ(read(""), "Expecting an unsigned decimal number!");
  EXPECT_EQ(read("10"), "Expecting an unsigned decimal number!");
  EXPECT_EQ(read("10.0.0"), "Expecting an unsigned decimal number!");
  EXPECT_EQ(read("10.0.0."), "Expecting an unsigned decimal number!");
  EXPECT_EQ(read("10.0..1"), "Expecting an unsigned decimal number!");
  EXPECT_EQ(read("...."), "Expecting an unsigned decimal number!");
}

TEST(cNetAbstractIPv4Address, IgnoresWhatStandsInThePlaceOfAColon)
{
  EXPECT_EQ(read("10.0.0.1.7"), "0100000A 0");
  EXPECT_EQ(read("10.0.0.1.7:80"), "0100000A 0");
  EXPECT_EQ(read("10.0.0.1.any.thing"), "0100000A 0");
  EXPECT_EQ(read("10.0.0.1."), "0100000A 0");
  EXPECT_EQ(read("..10...0.0.1"), "0100000A 0") << "points in a row are one";
  EXPECT_EQ(read("10.0.0.1.:80"), "0100000A 80");
}

TEST(cNetAbstractIPv4Address, LeavesWrongDigitsToTheirFailure)
{
  for (char const* text : {"10.0.x.1", "a.b.c.d", "10.0.0x10.1", "10.0.<16>1.1", "10.0.0.1:0x50", "10:0.0.1",
                           "10.0.0.1::80", "10.0.0.1:http", "10.0.0.1 ", "+1.0.0.1", ":80"})
  {
    std::string const message = read(text);
    EXPECT_EQ(message.find("Invalid"), 0u) << text << ": " << message;
  }
}

TEST(cNetAbstractIPv4Address, FailsWithTranslatableMessages)
{
  for (char const* text : {"", "10.0.0.256", "10.0.0.1:", "10.0.0.1:65536"})
  {
    cPlainIPv4Address address;
    mstd::cRuntimeException const e = caught<mstd::cRuntimeException>([&] { address.fromString(ascii(text)); });
    EXPECT_TRUE(e.liMessage()->isTranslatable()) << text;
    EXPECT_EQ(e.history(), nullptr);
  }
}

// --- a model of the text ---------------------------------------------------------------------------------------------

/// Splits, converts and judges with nothing but strings and integers; "" is a failure of a digit.
class cModel
{
public:
  explicit cModel(std::string const& text) : mText(text) {}

  std::string read()
  {
    unsigned int ip = 0;
    for (unsigned int i = 0; i < 4; ++i)
    {
      std::string const token = next();
      if (token.empty())
      {
        return "Expecting an unsigned decimal number!";
      }
      unsigned long long number = 0;
      if (!convert(token, number))
      {
        return "";
      }
      unsigned int const low = static_cast<unsigned int>(number);
      if (low > 255)
      {
        return "IP number part (" + std::to_string(static_cast<int>(low)) + ") is not in range of 0..255!";
      }
      ip += low << (8 * i);
    }
    unsigned long long port = 0;
    if (next() == ":")
    {
      std::string const token = next();
      if (token.empty())
      {
        return "Expecting port number!";
      }
      if (!convert(token, port))
      {
        return "";
      }
      if (port > 65535)
      {
        return "Given port number (" + std::to_string(static_cast<long long>(port)) + ") is not in range of 0..65535";
      }
    }
    char line[64];
    snprintf(line, sizeof(line), "%08X %llu", ip, port);
    return line;
  }

private:
  std::string next()
  {
    while (mAt < mText.size() && mText[mAt] == '.')
    {
      ++mAt;
    }
    std::size_t const start = mAt;
    if (mAt < mText.size() && mText[mAt] == ':')
    {
      ++mAt;
    }
    else
    {
      mAt = std::min(mText.find_first_of(".:", mAt), mText.size());
    }
    return mText.substr(start, mAt - start);
  }
  static bool convert(std::string const& token, unsigned long long& number)
  {
    std::size_t at = token.find_first_not_of(' ');
    bool bNegative = false;
    for (; at < token.size() && token[at] == '-'; ++at)
    {
      bNegative = !bNegative;
    }
    number = 0;
    for (; at < token.size(); ++at)
    {
      if (token[at] < '0' || token[at] > '9')
      {
        return false;
      }
      number = number * 10 + static_cast<unsigned int>(token[at] - '0');
    }
    number = bNegative ? 0 - number : number;
    return true;
  }

  std::string mText;
  std::size_t mAt = 0;
};

TEST(cNetAbstractIPv4Address, ReadsRandomTextsAsAPlainModelDoes)
{
  unsigned int const seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  auto const below = [&](unsigned int n) { return static_cast<unsigned int>(random() % n); };
  static char const* const Parts[] = {"0",
                                      "1",
                                      "9",
                                      "255",
                                      "256",
                                      "10",
                                      "007",
                                      "65535",
                                      "65536",
                                      "-",
                                      "-1",
                                      "--3",
                                      "4294967296",
                                      "0x1",
                                      "abc",
                                      "",
                                      "99999999999999999999",
                                      ".",
                                      ":",
                                      "..",
                                      "::",
                                      "1 ",
                                      "\x80",
                                      "18446744073709551617"};
  unsigned int numRead = 0;
  for (unsigned int i = 0; i < 30000; ++i)
  {
    std::string text;
    unsigned int const parts = below(8);
    for (unsigned int p = 0; p < parts; ++p)
    {
      text += below(4) != 0 ? std::to_string(below(300)) : Parts[below(sizeof(Parts) / sizeof(*Parts))];
      text += below(12) == 0 ? "" : p == 3 || below(10) == 0 ? ":" : ".";
    }
    std::string const expected = cModel(text).read();
    std::string const actual = read(text);
    if (expected.empty())
    {
      ASSERT_EQ(actual.find("Invalid"), 0u) << text << ": " << actual;
    }
    else
    {
      ASSERT_EQ(actual, expected) << text;
    }
    numRead += expected.find(' ') == 8 ? 1 : 0;
  }
  EXPECT_GT(numRead, 500u);
}

TEST(cNetAbstractIPv4Address, ReadsWhatItHasWritten)
{
  unsigned int const seed = std::random_device{}();
  SCOPED_TRACE("seed " + std::to_string(seed));
  std::mt19937 random(seed);
  for (unsigned int i = 0; i < 10000; ++i)
  {
    cPlainIPv4Address const address(static_cast<unsigned int>(random()), static_cast<unsigned int>(random()) % 65536);
    cPlainIPv4Address again;
    again.fromString(address.toString(1));
    ASSERT_EQ(again.miIp, address.miIp);
    ASSERT_EQ(again.miPort, address.miPort);
    again.fromString(address.toString(0));
    ASSERT_EQ(again.miIp, address.miIp);
    ASSERT_EQ(again.miPort, 0u);
  }
}
} // namespace
