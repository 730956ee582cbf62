#include "sa/cAbstractContextData.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "support/survive.h"
#include "ucs/cString.h"

#include <stddef.h>
#include <stdint.h>

#include <vector>

namespace
{
template <class T>
void load(msa::cDeserializeBinary& deserializer)
{
  T value = T();
  value << deserializer;
}

/// One reading operation. A refused one must leave the position where it was.
void perform(unsigned int iOperation, msa::cDeserializeBinary& d, std::vector<msa::cAbstractContextData*>& open)
{
  switch (iOperation % 24)
  {
  case 0:
    return load<bool>(d);
  case 1:
    return load<unsigned char>(d);
  case 2:
    return load<signed char>(d);
  case 3:
    return load<unsigned short>(d);
  case 4:
    return load<short>(d);
  case 5:
    return load<unsigned int>(d);
  case 6:
    return load<int>(d);
  case 7:
    return load<unsigned long long>(d);
  case 8:
    return load<long long>(d);
  case 9:
    return load<double>(d);
  case 10:
    return load<mstd::cAsciiString>(d);
  case 11:
    return load<mucs::cString>(d);
  case 12: {
    mstd::tArray<char> block;
    return d.loadBlock(block);
  }
  case 13:
  case 14:
  case 15: {
    msa::cContext context(d.getContext(iOperation % 24 == 15 ? "rec" : nullptr));
    open.push_back(context.unguard());
    return;
  }
  case 16: // an open context is left unread, as a reader that gives up leaves it
  case 17: // or committed
    if (!open.empty())
    {
      if (iOperation % 24 == 17)
      {
        open.back()->release();
      }
      delete open.back();
      open.pop_back();
    }
    return;
  case 18:
    d.tryFindLabel("val");
    return;
  case 19:
    d.findLabel("a");
    return;
  case 20:
    d.getNextContextTypeName();
    return;
  case 21:
    d.getNextLabelName();
    return;
  case 22: {
    msa::cSerializeBinary target;
    return d.reserialize(target);
  }
  case 23:
    d.rewind();
    return;
  }
}
} // namespace

// The first byte tells how many operations follow, each a byte; what is behind them is the stream.
extern "C" int LLVMFuzzerTestOneInput(uint8_t const* pData, size_t iSize)
{
  if (iSize == 0 || iSize - 1 < pData[0])
  {
    return 0;
  }
  support::cQuiet const quiet;
  mstd::tAutoPtr<mstd::tArray<char>> bytes(new mstd::tArray<char>);
  bytes->append(reinterpret_cast<char const*>(pData) + 1 + pData[0], static_cast<unsigned int>(iSize - 1 - pData[0]));
  msa::cDeserializeBinary deserializer(bytes);
  std::vector<msa::cAbstractContextData*> open;
  for (unsigned int i = 0; i < pData[0]; ++i)
  {
    unsigned int const pos = deserializer.currentPos();
    bool done = false;
    support::survive([&] {
      perform(pData[1 + i], deserializer, open);
      done = true;
    });
    if (!done && deserializer.currentPos() != pos)
    {
      __builtin_trap();
    }
    support::survive([&] { deserializer.eoc(); });
    support::survive([&] { deserializer.isContext(); });
    support::survive([&] { deserializer.isLabel(); });
  }
  for (; !open.empty(); open.pop_back())
  {
    delete open.back();
  }
  return 0;
}
