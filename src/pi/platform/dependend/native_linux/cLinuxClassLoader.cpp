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
namespace
{
[[noreturn]] void throwInvalid(mucs::cString const& fileName, mucs::cLIMessage const& problem)
{
  mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::InvalidModule, fileName, problem);
}

[[noreturn]] void throwUnavailable(mucs::cString const& fileName, mucs::cLIMessage const& problem)
{
  mcs::cMCSExceptions::throwModuleLoad(mcs::cModuleLoadException::NotAvailable, fileName, problem);
}
} // namespace

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
bool cLinuxClassLoader::find(char const* pName, Function*& rpFound) const
{
  rpFound = reinterpret_cast<Function*>(::dlsym(mpHandle, pName));
  return rpFound != nullptr;
}

void cLinuxClassLoader::loadLibrary(mucs::cString const& fileName)
{
  unloadLibrary();
  mpInitPlugIn = nullptr; // those of the former library lead nowhere
  mpInitComponent = nullptr;
  mpModuleVersion = nullptr;
  mpKROVersion = nullptr;
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
  bool const isPlugIn = find("moduleInitPlugIn", mpInitPlugIn);
  if (!find("moduleInitComponent", mpInitComponent) && !isPlugIn)
  {
    throwInvalid(fileName, mstd::exceptionMessage("$MTR$Invalid module. Missing moduleInit section!"));
  }
  if (!find("moduleVersion", mpModuleVersion))
  {
    throwInvalid(fileName, mstd::exceptionMessage("$MTR$Invalid module. Missing moduleVersion section!"));
  }
  if (!find("kroVersion", mpKROVersion))
  {
    throwInvalid(fileName, mstd::exceptionMessage("$MTR$Invalid module. Missing kroVersion section!"));
  }
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
    throwUnavailable(libFileName(), mstd::exceptionMessage("$MTR$File %file% is not a plugin!", libFileName()));
  }
  mcs::cAbstractPlugIn* result = nullptr;
  mpInitPlugIn(result, frame);
  if (result == nullptr)
  {
    throwUnavailable(libFileName(),
                     mstd::exceptionMessage("$MTR$Plugin (%file%) does not provide functionality!", libFileName()));
  }
  incRef();
  return result;
}

mcs::cAbstractComponent* cLinuxClassLoader::instance(msa::cReferenceFrame& frame, mcs::cModuleMgr& manager)
{
  if (mpInitComponent == nullptr)
  {
    throwUnavailable(libFileName(), mstd::exceptionMessage("$MTR$cClassLoader: No component!"));
  }
  mcs::cAbstractComponent* result = nullptr;
  mpInitComponent(result, frame, manager);
  if (result == nullptr)
  {
    throwUnavailable(libFileName(), mstd::exceptionMessage("$MTR$cClassLoader: No instance!"));
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
