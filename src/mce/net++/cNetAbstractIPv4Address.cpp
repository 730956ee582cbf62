#include "mce/net++/cNetAbstractIPv4Address.h"

#include "mce/net++/cNETExceptions.h"
#include "std/cAsciiStringTokenizer.h"
#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"

namespace mce
{
namespace
{
enum
{
  Colon = 1,
  Parts = 4,
  BitsOfPart = 8
};

mstd::cNumberConversionFormat plainDecimal()
{
  mstd::cNumberConversionFormat format(10);
  format.setBaseDetectionEnabled(false);
  return format;
}

/// Empty at the end.
mstd::cAsciiString next(mstd::cAsciiStringTokenizer& tokenizer, unsigned int& iId)
{
  mstd::cAsciiString token;
  tokenizer.getNextToken(token, iId);
  return token;
}
} // namespace

cNetAbstractIPv4Address::~cNetAbstractIPv4Address() {}

mstd::cAsciiString cNetAbstractIPv4Address::addrType() const
{
  return mstd::cAsciiString("TcpIpv4");
}

void cNetAbstractIPv4Address::fromString(mstd::cAsciiString const& text)
{
  mstd::cAsciiStringTokenizerContext context;
  context.addSeparator(mstd::cAsciiString("."));
  context.addKey(mstd::cAsciiString(":"), Colon);
  mstd::cAsciiStringTokenizer tokenizer(text, &context);
  mstd::cNumberConversionFormat const format = plainDecimal();

  unsigned int ip = 0;
  unsigned int id = 0;
  for (unsigned int i = 0; i < Parts; ++i)
  {
    mstd::cAsciiString const part = next(tokenizer, id);
    if (part.empty())
    {
      cNETExceptions::throwExpectingNumber();
    }
    unsigned int const number = static_cast<unsigned int>(mstd::cNumberConversion::fromString(part, format));
    if (number > 255)
    {
      cNETExceptions::throwNumberOutOfRange(static_cast<int>(number));
    }
    ip |= number << (BitsOfPart * i);
  }

  unsigned int port = 0;
  next(tokenizer, id);
  if (id == Colon)
  {
    mstd::cAsciiString const digits = next(tokenizer, id);
    if (digits.empty())
    {
      cNETExceptions::throwExpectingPort();
    }
    long long const number = mstd::cNumberConversion::fromString(digits, format);
    if (number < 0 || number >= 65536)
    {
      cNETExceptions::throwPortOutOfRange(number);
    }
    port = static_cast<unsigned int>(number);
  }
  setAddress(ip, port);
}

mstd::cAsciiString cNetAbstractIPv4Address::toString(int iFlags) const
{
  mstd::cNumberConversionFormat const decimal(10);
  unsigned int ip = 0;
  unsigned int ignored = 0;
  getAddress(ip, ignored);
  mstd::cAsciiString text;
  for (unsigned int i = 0; i < Parts; ++i)
  {
    if (i != 0)
    {
      text += '.';
    }
    text.addUNum32((ip >> (BitsOfPart * i)) & 0xFF, decimal);
  }
  if ((iFlags & WithPort) != 0)
  {
    text += ':';
    text.addUNum32(port(), decimal);
  }
  return text;
}

} // namespace mce
