#include "pi/platform/dependend/native_linux/cLinuxClassLoader.h"

#include "io/cFs.h"
#include "mcs/cMCSExceptions.h"
#include "mcs/cModuleLoadException.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"
#include "std/exceptionMessage.h"
#include "std/tConstArrayRef.h"
#include "ucs/cAbstractEnDec.h"

#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <string.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mpi
{
namespace
{
// The start of a library, as far as the loader goes by it.
struct cLibraryStart
{
  ElfW(Ehdr) mHeader;
  ElfW(Phdr) mSegments[16]; // more than most have
};

// What is wrong with a file that the dynamic loader would not survive, or null. It maps what the file says of itself,
// so that a library whose end is missing is a bus error, and opening a pipe waits for a writer. Whatever the loader
// finds by itself is left to it.
char const* fatalDamage(char const* pName)
{
  if (::strchr(pName, '/') == nullptr)
  {
    return nullptr; // it is searched for
  }
  int const descriptor = ::open(pName, O_RDONLY | O_CLOEXEC | O_NONBLOCK);
  if (descriptor < 0)
  {
    return nullptr;
  }
  char const* damage = nullptr;
  struct stat status;
  cLibraryStart start;
  ssize_t got = 0;
  if (::fstat(descriptor, &status) != 0)
  {
    // The loader has the same question.
  }
  else if (!S_ISREG(status.st_mode))
  {
    damage = S_ISDIR(status.st_mode) ? nullptr : "not a regular file";
  }
  else if ((got = ::pread(descriptor, &start, sizeof start, 0)) >= static_cast<ssize_t>(sizeof start.mHeader) &&
           ::memcmp(start.mHeader.e_ident, ELFMAG, SELFMAG) == 0 &&
           start.mHeader.e_ident[EI_CLASS] == (sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32))
  {
    unsigned long long const size = static_cast<unsigned long long>(status.st_size);
    for (unsigned int i = 0; i < start.mHeader.e_phnum && damage == nullptr; ++i)
    {
      ElfW(Phdr) segment;
      ssize_t read = sizeof segment;
      unsigned long long const place = start.mHeader.e_phoff + i * sizeof segment;
      if (place >= sizeof start.mHeader && place <= static_cast<unsigned long long>(got) - sizeof segment)
      {
        ::memcpy(&segment, reinterpret_cast<char const*>(&start) + place, sizeof segment);
      }
      else
      {
        read = ::pread(descriptor, &segment, sizeof segment, static_cast<off_t>(place));
      }
      if (read != static_cast<ssize_t>(sizeof segment) ||
          (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset)))
      {
        damage = "file too short";
      }
    }
  }
  ::close(descriptor);
  return damage;
}

[[noreturn]] void throwNotLoadable(mucs::cString const& fileName, mstd::cAsciiString const& bytes)
{
  mucs::cString error;
  try
  {
    mpi::system().fs.endec().decode(mstd::tConstArrayRef<char>(bytes), error); // names of files are in it
  }
  catch (mstd::cAbstractException const&)
  {
    error = mucs::cString(bytes, '?');
  }
  mcs::cMCSExceptions::throwModuleLoad(
      mcs::cModuleLoadException::NotLoadable, fileName,
      mstd::exceptionMessage("$MTR$Unable to load plugin. OS returned %oserror%!", error));
}

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
  // The search goes on in the libraries that this one needs; what they export does not make it a module.
  void* const symbol = ::dlsym(mpHandle, pName);
  Dl_info info;
  void* library = nullptr;
  link_map* ownLibrary = nullptr;
  bool const isOwn = symbol != nullptr && ::dlinfo(mpHandle, RTLD_DI_LINKMAP, &ownLibrary) == 0 &&
                     ::dladdr1(symbol, &info, &library, RTLD_DL_LINKMAP) != 0 && library == ownLibrary;
  rpFound = isOwn ? reinterpret_cast<Function*>(symbol) : nullptr;
  return isOwn;
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
  if (char const* const damage = fatalDamage(&name[0]))
  {
    throwNotLoadable(fileName, mstd::cAsciiString(&name[0]) + ": " + damage);
  }
  mpHandle = ::dlopen(&name[0], RTLD_NOW);
  if (mpHandle == nullptr)
  {
    throwNotLoadable(fileName, mstd::cAsciiString(::dlerror()));
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
