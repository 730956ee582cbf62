#include "mce/net++/cNetAbstractIPv4Address.h"
#include "std/cAsciiString.h"
#include "std/cRuntimeException.h"
#include "support/cPlainIPv4Address.h"

#include <cstdint>
#include <cstdlib>

// The bytes are the text of an address. What is read is written and read again the same; a text that is refused leaves
// the address as it was.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  mstd::cAsciiString text;
  text.append(reinterpret_cast<char const*>(data), static_cast<unsigned int>(size));
  support::cPlainIPv4Address address(0xDEADBEEF, 4711);
  try
  {
    address.fromString(text);
  }
  catch (mstd::cRuntimeException const&)
  {
    if (address.miSets != 0 || address.miIp != 0xDEADBEEF || address.miPort != 4711)
    {
      std::abort();
    }
    return 0;
  }
  support::cPlainIPv4Address again;
  again.fromString(address.toString(support::cPlainIPv4Address::WithPort));
  if (address.miPort > 65535 || again.miIp != address.miIp || again.miPort != address.miPort)
  {
    std::abort();
  }
  return 0;
}
