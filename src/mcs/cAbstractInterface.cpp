#include "mcs/cAbstractInterface.h"

#include "rmi/cPublicSignal.h"
#include "rmi/cPublicSlot.h"
#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"
#include "sa/cContext.h"

namespace mcs
{
namespace
{
/// One unnamed context with all of them, also if there are none.
template <class Public>
void storeAll(mstd::tPtrList<Public> const* pAll, msa::cAbstractSerializer& serializer)
{
  msa::cContext context(serializer.newContext(nullptr));
  if (pAll != nullptr)
  {
    for (Public const* const one : *pAll)
    {
      *one >> serializer;
    }
  }
  context.release();
}
} // namespace

cAbstractInterface::cAbstractInterface(cInterfaceDesc const& desc) : mDesc(desc)
{
  sigInterfaceChanged.setInvocationBehavior(mrmi::cAbstractSignal::IgnoreIfUnconnected);
}

cAbstractInterface::~cAbstractInterface() {}

bool cAbstractInterface::matches(cInterfaceDesc const& desc) const
{
  return desc.type() != mDesc.type() && desc.name() == mDesc.name();
}

void cAbstractInterface::store(msa::cAbstractSerializer& serializer) const
{
  mDesc >> serializer;
  storeAll(hasPublicSlots(), serializer);
  storeAll(hasPublicSignals(), serializer);
}

void cAbstractInterface::load(msa::cAbstractDeserializer& deserializer, mrmi::cAbstractRMIFactory& factory)
{
  clear();
  cInterfaceDesc desc;
  desc << deserializer;
  mDesc.swap(desc);
  try
  {
    loadPublic(deserializer, factory);
  }
  catch (...)
  {
    mDesc.swap(desc);
    clear(); // half an interface would be taken for a whole one
    throw;
  }
}

void cAbstractInterface::loadPublic(msa::cAbstractDeserializer& deserializer, mrmi::cAbstractRMIFactory& factory)
{
  {
    msa::cContext slots(deserializer.getContext(nullptr));
    while (!deserializer.eoc())
    {
      registerRemoteSlot(deserializer, factory);
    }
    slots.release();
  }
  msa::cContext signals(deserializer.getContext(nullptr));
  while (!deserializer.eoc())
  {
    registerRemoteSignal(deserializer, factory);
  }
  signals.release();
}

} // namespace mcs
