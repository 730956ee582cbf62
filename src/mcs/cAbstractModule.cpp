#include "mcs/cAbstractModule.h"

#include "pi/cAbstractClassLoader.h"

namespace mcs
{

cAbstractModule::cAbstractModule() : mpClassLoader(nullptr) {}

cAbstractModule::cAbstractModule(msa::cReferenceFrame&) : mpClassLoader(nullptr) {}

cAbstractModule::~cAbstractModule()
{
  if (mpClassLoader != nullptr)
  {
    mpClassLoader->decRef();
    mpClassLoader = nullptr;
  }
}

void cAbstractModule::storeSettings(msa::cAbstractSerializer&) const {}

void cAbstractModule::loadSettings(msa::cAbstractDeserializer&) {}

void cAbstractModule::applySettings() {}

void cAbstractModule::setClassLoader(mpi::cAbstractClassLoader* pLoader, mstd::cAsciiString const& context)
{
  mInfo.setContext(context);
  mpClassLoader = pLoader;
}

} // namespace mcs
