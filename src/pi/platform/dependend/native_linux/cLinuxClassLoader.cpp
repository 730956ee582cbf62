#include "pi/platform/dependend/native_linux/cLinuxClassLoader.h"

#include "io/cFs.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/cModuleLoadException.h"
#include "pi/cSystem.h"
#include "std/exceptionMessage.h"
#include "ucs/cAbstractEnDec.h"

#include <dlfcn.h>

namespace mpi
{

cLinuxClassLoader::cLinuxClassLoader(mucs::cString const& fileName)
    : cAbstractClassLoader(fileName), mpInitPlugIn(nullptr), mpInitComponent(nullptr), mpModuleVersion(nullptr),
      mpKROVersion(nullptr), mpHandle(nullptr)
{
  try
  {
    loadLibrary(fileName);
  }
  catch (...)
  {
    unloadLibrary();
    throw;
  }
}

cLinuxClassLoader::~cLinuxClassLoader()
{
  unloadLibrary();
}

template <typename Function>
Function* cLinuxClassLoader::find(char const* pName) const
{
  return reinterpret_cast<Function*>(::dlsym(mpHandle, pName));
}

template <typename Function>
Function* cLinuxClassLoader::require(char const* pName, char const* pProblem, mucs::cString const& fileName) const
{
  Function* const function = find<Function>(pName);
  if (function == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::InvalidModule, fileName,
                                         mstd::exceptionMessage(pProblem));
  }
  return function;
}

void cLinuxClassLoader::loadLibrary(mucs::cString const& fileName)
{
  unloadLibrary();
  mstd::tArray<char> name;
  mpi::system().fs.endec().encodeCString(fileName, name);
  mpHandle = ::dlopen(&name[0], RTLD_NOW);
  if (mpHandle == nullptr)
  {
    char const* const error = ::dlerror();
    mcs::cMCSExceptions::throwModuleLoad(
        mcs::cModuleLoadException::NotLoadable, fileName,
        mstd::exceptionMessage("$MTR$Unable to load plugin. OS returned %oserror%!", error != nullptr ? error : ""));
  }
  mpInitPlugIn = find<mcs::tModuleInitPlugIn>("moduleInitPlugIn");
  mpInitComponent = find<mcs::tModuleInitComponent>("moduleInitComponent");
  if (mpInitPlugIn == nullptr && mpInitComponent == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::InvalidModule, fileName,
                                         mstd::exceptionMessage("$MTR$Invalid module. Missing moduleInit section!"));
  }
  mpModuleVersion =
      require<mcs::tModuleVersion>("moduleVersion", "$MTR$Invalid module. Missing moduleVersion section!", fileName);
  mpKROVersion =
      require<mcs::tModuleVersion>("kroVersion", "$MTR$Invalid module. Missing kroVersion section!", fileName);
}

void cLinuxClassLoader::unloadLibrary()
{
  if (mpHandle != nullptr)
  {
    ::dlclose(mpHandle);
    mpHandle = nullptr;
  }
}

mcs::cAbstractPlugIn* cLinuxClassLoader::instance(msa::cReferenceFrame& frame)
{
  if (mpInitPlugIn == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::NotAvailable, libFileName(),
                                         mstd::exceptionMessage("$MTR$File %file% is not a plugin!", libFileName()));
  }
  mcs::cAbstractPlugIn* result = nullptr;
  mpInitPlugIn(result, frame);
  if (result == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(
        mcs::cModuleLoadException::NotAvailable, libFileName(),
        mstd::exceptionMessage("$MTR$Plugin (%file%) does not provide functionality!", libFileName()));
  }
  incRef();
  return result;
}

mcs::cAbstractComponent* cLinuxClassLoader::instance(msa::cReferenceFrame& frame, mcs::cModuleMgr& manager)
{
  if (mpInitComponent == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::NotAvailable, libFileName(),
                                         mstd::exceptionMessage("$MTR$cClassLoader: No component!"));
  }
  mcs::cAbstractComponent* result = nullptr;
  mpInitComponent(result, frame, manager);
  if (result == nullptr)
  {
    mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::NotAvailable, libFileName(),
                                         mstd::exceptionMessage("$MTR$cClassLoader: No instance!"));
  }
  incRef();
  return result;
}

void cLinuxClassLoader::getModuleVersion(unsigned int& iMajor, unsigned int& iMinor) const
{
  if (mpModuleVersion != nullptr)
  {
    mpModuleVersion(iMajor, iMinor);
  }
}

void cLinuxClassLoader::getModuleKROVersion(unsigned int& iMajor, unsigned int& iMinor) const
{
  if (mpKROVersion != nullptr)
  {
    mpKROVersion(iMajor, iMinor);
  }
}

} // namespace mpi
