#include "std/cNumberConversion.h"
#include "std/cNumberConversionFormat.h"
#include "std/cRuntimeException.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>

using mstd::cAsciiString;
using mstd::cNumberConversion;
using mstd::cNumberConversionFormat;

// Byte 0: base and detection, byte 1: width or precision, byte 2: flags of fractions, then the text; its first eight
// bytes are also taken as a double. What is read as a whole number is read the same when it has been written.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  if (size < 3)
  {
    return 0;
  }
  cNumberConversionFormat format(2 + data[0] % 35);
  format.setBaseDetectionEnabled(data[0] >= 128);
  format.setPrecision(data[1]);
  format.setRemoveTrailingZeros((data[2] & 1) != 0);
  format.setIgnoreLeadingSpaces((data[2] & 2) != 0);
  cAsciiString text;
  text.append(reinterpret_cast<char const*>(data + 3), static_cast<unsigned int>(size - 3));
  try
  {
    long long const value = cNumberConversion::fromString(text, format);
    cNumberConversionFormat plain(format.base());
    plain.setBaseDetectionEnabled(false);
    plain.setFixedWidth(data[1]);
    if (cNumberConversion::fromString(cNumberConversion::toString(value, plain), plain) != value)
    {
      std::abort();
    }
  }
  catch (mstd::cRuntimeException const&)
  {
  }
  double fraction = 0;
  try
  {
    fraction = cNumberConversion::fromStringToDouble(text, format);
  }
  catch (mstd::cRuntimeException const&)
  {
    std::memcpy(&fraction, data + 3, size - 3 < sizeof(fraction) ? size - 3 : sizeof(fraction));
  }
  cAsciiString const written = cNumberConversion::toStringFromDouble(fraction, format);
  if (fraction - fraction == 0) // finite
  {
    cNumberConversion::fromStringToDouble(written, format);
  }
  return 0;
}
