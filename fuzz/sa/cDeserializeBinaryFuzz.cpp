#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "sa/cContext.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "std/cAbstractException.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "ucs/cLIMessage.h"

#include <stddef.h>
#include <stdint.h>

namespace
{
/// Stack traces of refused streams are many, and nobody reads them here.
class cNoOut : public mpi::cAbstractOut
{
public:
  void printChar(char) override {}
};

template <class F>
void survive(F const& f)
{
  try
  {
    f();
  }
  catch (mstd::cAbstractException const&)
  {
    // refused
  }
}
} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* pData, size_t iSize)
{
  static cNoOut none;
  mpi::system().out.link(&none);
  mstd::tAutoPtr<mstd::tArray<char>> bytes(new mstd::tArray<char>);
  bytes->append(reinterpret_cast<char const*>(pData), static_cast<unsigned int>(iSize));
  msa::cDeserializeBinary deserializer(bytes);
  survive([&] {
    msa::cSerializeBinary target;
    target.setPreferNoLabels(false);
    deserializer.reserialize(target);
  });
  survive([&] { deserializer.tryFindLabel("val"); });
  survive([&] {
    mucs::cLIMessage message;
    message << deserializer;
    mstd::cAsciiString text;
    message.untranslated(text);
  });
  survive([&] {
    while (!deserializer.eoc())
    {
      msa::cContext context(deserializer.getContext(nullptr));
      deserializer.getNextLabelName();
      context.release();
    }
  });
  mpi::system().out.link(nullptr);
  return 0;
}
