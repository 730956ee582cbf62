#include "mcs/cAbstractInterface.h"
#include "mcs/cComponentLocation.h"
#include "mcs/cModuleInfo.h"
#include "mcs/cRMIException.h"
#include "rmi/cAbstractRMIFactory.h"
#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "rmi/signal0.h"
#include "sa/cDeserializeBinary.h"
#include "sa/cSerializeBinary.h"
#include "support/cPublishing.h"
#include "support/streamBytes.h"
#include "support/survive.h"

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

namespace
{
class cInterface : public mcs::cAbstractInterface
{
public:
  cInterface() : cAbstractInterface(mcs::cInterfaceDesc()) {}
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}
};

class cFactory : public mrmi::cAbstractRMIFactory
{
public:
  mstd::tAutoPtr<mrmi::cAbstractSlotCall> createRemoteSlotCall(mrmi::cConnectable& connectable) override
  {
    return mstd::tAutoPtr<mrmi::cAbstractSlotCall>(new support::cPokeCall(connectable, [] {}));
  }
  mrmi::cAbstractSignal* createRemoteSignal(unsigned int) override
  {
    mSignals.emplace_back(new mrmi::signal0<piVoid>);
    return mSignals.back().get();
  }

private:
  std::vector<std::unique_ptr<mrmi::signal0<piVoid>>> mSignals;
};

void require(bool bHolds)
{
  if (!bHolds)
  {
    abort();
  }
}

bool hasNothingPublic(mcs::cAbstractInterface const& interface)
{
  return (interface.hasPublicSlots() == nullptr || interface.hasPublicSlots()->empty()) &&
         (interface.hasPublicSignals() == nullptr || interface.hasPublicSignals()->empty());
}

std::string stored(mcs::cAbstractInterface const& interface)
{
  msa::cSerializeBinary serializer;
  interface.store(serializer);
  return support::written(serializer);
}

void load(mcs::cAbstractInterface& interface, cFactory& factory, std::string const& bytes)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
  interface.load(deserializer, factory);
}

// What could be loaded can be stored, and comes back as the same; what could not has left nothing.
void checkInterface(std::string const& bytes)
{
  cFactory factory;
  cInterface interface;
  bool isLoaded = false;
  support::survive([&] {
    load(interface, factory, bytes);
    isLoaded = true;
  });
  if (!isLoaded)
  {
    require(hasNothingPublic(interface) && interface.desc() == mcs::cInterfaceDesc());
    return;
  }
  std::string const again = stored(interface);
  cInterface second;
  load(second, factory, again);
  require(stored(second) == again);
}

template <class T>
void checkValue(std::string const& bytes, bool bNoLabels)
{
  mstd::tArray<char> const data = support::arrayOf(bytes);
  support::survive([&] {
    msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
    deserializer.setPreferNoLabels(bNoLabels);
    T value;
    value << deserializer;
    value.toString();
  });
}

// The text of a location that was read prints as something that can be read, and stays from then on.
void checkText(std::string const& bytes)
{
  mcs::cComponentLocation place;
  bool isRead = false;
  support::survive([&] {
    place.fromString(mstd::cAsciiString(bytes.c_str()));
    isRead = true;
  });
  require(!isRead || mcs::cComponentLocation(place.toString()) == place);
}
} // namespace

// The same bytes as each of the records that modules and their interfaces leave on a stream, and as the text of a
// place.
extern "C" int LLVMFuzzerTestOneInput(unsigned char const* pData, std::size_t iSize)
{
  support::cQuiet const quiet;
  std::string const bytes(reinterpret_cast<char const*>(pData), iSize);
  checkInterface(bytes);
  for (bool bNoLabels : {false, true})
  {
    checkValue<mcs::cComponentAddr>(bytes, bNoLabels);
    checkValue<mcs::cComponentLocation>(bytes, bNoLabels);
    checkValue<mcs::cModuleInfo>(bytes, bNoLabels);
    support::survive([&] {
      mstd::tArray<char> const data = support::arrayOf(bytes);
      msa::cDeserializeBinary deserializer{mstd::tConstArrayRef<char>(data)};
      deserializer.setPreferNoLabels(bNoLabels);
      mcs::cRMIException e(0, mcs::cRMIException::CallSlot, mstd::cAsciiString());
      e.load(deserializer);
      mstd::cAsciiString text;
      e.liMessage()->untranslated(text);
    });
  }
  checkText(bytes);
  return 0;
}
