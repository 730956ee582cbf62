#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "support/survive.h"

#include <stddef.h>
#include <stdint.h>

// A whole stream of foreign bytes: copied, searched, walked.
extern "C" int LLVMFuzzerTestOneInput(uint8_t const* pData, size_t iSize)
{
  support::cQuiet const quiet;
  mstd::tAutoPtr<mstd::tArray<char>> bytes(new mstd::tArray<char>);
  bytes->append(reinterpret_cast<char const*>(pData), static_cast<unsigned int>(iSize));
  msa::cDeserializeBinary deserializer(bytes);
  support::survive([&] {
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    deserializer.reserialize(target);
  });
  support::survive([&] { deserializer.tryFindLabel("val"); });
  support::survive([&] {
    while (!deserializer.eoc())
    {
      msa::cContext context(deserializer.getContext(nullptr));
      deserializer.getNextLabelName();
      context.release();
    }
  });
  return 0;
}
