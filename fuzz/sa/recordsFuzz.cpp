#include "rmi/cAbstractSlotCall.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/signal0.h"
#include "sa/cDeserializeBinary.h"
#include "std/cAbstractExceptionFactory.h"
#include "std/cAsciiString.h"
#include "std/cBugException.h"
#include "std/cBuildInfo.h"
#include "std/cDateTime.h"
#include "std/cRuntimeException.h"
#include "std/tArray.h"
#include "support/survive.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

#include <stddef.h>
#include <stdint.h>

namespace
{
class cFactory : public mstd::cAbstractExceptionFactory
{
public:
  mstd::tAutoPtr<mstd::cAbstractException> createException(mstd::cAsciiString const& sName) const override
  {
    if (sName == "cBugException")
    {
      return mstd::tAutoPtr<mstd::cAbstractException>(new mstd::cBugException);
    }
    if (sName == "cRuntimeException")
    {
      return mstd::tAutoPtr<mstd::cAbstractException>(new mstd::cRuntimeException);
    }
    throw 0; // anything says that the name is unknown
  }
};

template <class T>
void load(msa::cDeserializeBinary& deserializer)
{
  support::survive([&] {
    deserializer.rewind();
    T value;
    value << deserializer;
  });
}
} // namespace

// The same bytes as each of the records that come from files and other processes.
extern "C" int LLVMFuzzerTestOneInput(uint8_t const* pData, size_t iSize)
{
  support::cQuiet const quiet;
  mstd::tAutoPtr<mstd::tArray<char>> bytes(new mstd::tArray<char>);
  bytes->append(reinterpret_cast<char const*>(pData), static_cast<unsigned int>(iSize));
  msa::cDeserializeBinary deserializer(bytes);
  support::survive([&] {
    mstd::tAutoPtr<mstd::cAbstractException> const e =
        mstd::cAbstractException::createFromStream(deserializer, cFactory());
    mucs::cString text;
    if (e)
    {
      e->createMessage(text, ", ", mstd::cAbstractException::WithHistory);
    }
  });
  support::survive([&] {
    deserializer.rewind();
    mucs::cLIMessage message;
    message << deserializer;
    mucs::cString text;
    message.untranslated(text);
  });
  support::survive([&] {
    deserializer.rewind();
    mrmi::signal0<piVoid> signal;
    mrmi::cPublicSignal const record(deserializer, signal);
  });
  support::survive([&] {
    deserializer.rewind();
    mrmi::cPublicSlot const record(deserializer, mstd::tAutoPtr<mrmi::cAbstractSlotCall>());
  });
  load<mstd::cBuildInfo>(deserializer);
  load<mstd::cDateTime>(deserializer);
  load<mstd::tArray<char>>(deserializer);
  return 0;
}
