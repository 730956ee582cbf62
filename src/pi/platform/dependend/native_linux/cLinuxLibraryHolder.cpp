#include "pi/cLibraryHolder.h"

#include "io/cFs.h"
#include "pi/cSystem.h"
#include "std/cAsciiString.h"
#include "std/tArray.h"
#include "std/tVector.h"
#include "ucs/cAbstractEnDec.h"

#include <cxxabi.h>
#include <dlfcn.h>
#include <elf.h>
#include <errno.h>
#include <link.h>
#include <stdlib.h>
#include <string.h>

namespace mpi
{
namespace
{

/// What a loaded library says of itself.
class cDynamic
{
public:
  explicit cDynamic(link_map const& map)
      : mMap(map), mpTexts(pointer<char>(DT_STRTAB)), mpSymbols(pointer<ElfW(Sym)>(DT_SYMTAB))
  {
  }

  bool staysByItself() const
  {
    ElfW(Dyn) const* const flags = entry(DT_FLAGS_1);
    return flags != nullptr && (flags->d_un.d_val & DF_1_NODELETE) != 0;
  }

  /// Calls `body` with each symbol that it has or needs.
  template <class Body>
  void forEachSymbol(Body const& body) const
  {
    unsigned int const count = mpSymbols != nullptr && mpTexts != nullptr ? countSymbols() : 0;
    for (unsigned int i = 1; i < count; ++i)
    {
      body(mpSymbols[i], mpTexts + mpSymbols[i].st_name);
    }
  }

  /// The name by which others need it.
  char const* name() const
  {
    ElfW(Dyn) const* const own = entry(DT_SONAME);
    if (own != nullptr && mpTexts != nullptr)
    {
      return mpTexts + own->d_un.d_val;
    }
    char const* const slash = ::strrchr(mMap.l_name, '/');
    return slash != nullptr ? slash + 1 : mMap.l_name;
  }

  bool needs(char const* pName) const
  {
    for (ElfW(Dyn) const* each = mMap.l_ld; mpTexts != nullptr && each->d_tag != DT_NULL; ++each)
    {
      if (each->d_tag == DT_NEEDED && ::strcmp(mpTexts + each->d_un.d_val, pName) == 0)
      {
        return true;
      }
    }
    return false;
  }

private:
  ElfW(Dyn) const* entry(ElfW(Sxword) iTag) const
  {
    ElfW(Dyn) const* each = mMap.l_ld;
    while (each != nullptr && each->d_tag != DT_NULL && each->d_tag != iTag)
    {
      ++each;
    }
    return each != nullptr && each->d_tag == iTag ? each : nullptr;
  }

  template <class T>
  T const* pointer(ElfW(Sxword) iTag) const
  {
    ElfW(Dyn) const* const found = entry(iTag);
    if (found == nullptr)
    {
      return nullptr;
    }
    // The loader has written the address into the entry, unless the entry can't be written to.
    ElfW(Addr) const address = found->d_un.d_ptr;
    return reinterpret_cast<T const*>(address < mMap.l_addr ? address + mMap.l_addr : address);
  }

  unsigned int countSymbols() const
  {
    if (Elf32_Word const* const table = pointer<Elf32_Word>(DT_HASH))
    {
      return table[1];
    }
    Elf32_Word const* const table = pointer<Elf32_Word>(DT_GNU_HASH);
    if (table == nullptr)
    {
      return 0;
    }
    // Counts of buckets, of the symbols in front that have no place in it, and of words of the filter.
    Elf32_Word const* const buckets = table + 4 + table[2] * (sizeof(ElfW(Addr)) / sizeof *table);
    Elf32_Word const* const chains = buckets + table[0];
    unsigned int const first = table[1];
    unsigned int last = 0;
    for (unsigned int i = 0; i < table[0]; ++i)
    {
      last = buckets[i] > last ? buckets[i] : last;
    }
    if (last < first)
    {
      return first;
    }
    while ((chains[last - first] & 1) == 0)
    {
      ++last;
    }
    return last + 1;
  }

  link_map const& mMap;
  char const* mpTexts;
  ElfW(Sym) const* mpSymbols;
};

class cReadableSymbol
{
public:
  explicit cReadableSymbol(char const* pSymbol) : mpText(abi::__cxa_demangle(pSymbol, nullptr, nullptr, nullptr)) {}
  cReadableSymbol(cReadableSymbol const&) = delete;
  cReadableSymbol& operator=(cReadableSymbol const&) = delete;
  ~cReadableSymbol() { ::free(mpText); }
  /// Null if it was no symbol of C++.
  char const* text() const { return mpText; }

private:
  char* mpText;
};

mucs::cString textOf(char const* pText)
{
  return mucs::cString(mstd::cAsciiString(pText), '?');
}

/// Keeps a library while it is looked at.
class cLook
{
public:
  explicit cLook(char const* pName) : mpHandle(::dlopen(pName, RTLD_LAZY | RTLD_NOLOAD)) {}
  cLook(cLook const&) = delete;
  cLook& operator=(cLook const&) = delete;
  ~cLook()
  {
    if (mpHandle != nullptr)
    {
      ::dlclose(mpHandle);
    }
  }
  link_map const* map() const
  {
    link_map* result = nullptr;
    return mpHandle != nullptr && ::dlinfo(mpHandle, RTLD_DI_LINKMAP, &result) == 0 ? result : nullptr;
  }

private:
  void* mpHandle;
};

} // namespace

bool cLibraryHolder::find(mucs::cString const& fileName, mstd::tVector<cLibraryHolder>& holders)
{
  mstd::tArray<char> name;
  mpi::system().fs.endec().encodeCString(fileName, name);
  mstd::tVector<cLibraryHolder> found;
  cLook const look(&name[0]);
  link_map const* const map = look.map();
  if (map != nullptr)
  {
    cDynamic const library(*map);
    if (library.staysByItself())
    {
      found.append(cLibraryHolder(Link, mucs::cString()));
    }
    bool usesThreads = false;
    library.forEachSymbol([&](ElfW(Sym) const& symbol, char const* pName) {
      if (symbol.st_shndx != SHN_UNDEF && ELF32_ST_BIND(symbol.st_info) == STB_GNU_UNIQUE)
      {
        cReadableSymbol const readable(pName);
        found.append(cLibraryHolder(UniqueSymbol, textOf(readable.text() != nullptr ? readable.text() : pName)));
      }
      usesThreads = usesThreads || ::strcmp(pName, "__cxa_thread_atexit") == 0 ||
                    ::strcmp(pName, "__cxa_thread_atexit_impl") == 0;
    });
    if (usesThreads)
    {
      found.append(cLibraryHolder(Thread, mucs::cString()));
    }
    link_map const* other = map;
    while (other->l_prev != nullptr)
    {
      other = other->l_prev;
    }
    for (; other != nullptr; other = other->l_next)
    {
      if (other != map && cDynamic(*other).needs(library.name()))
      {
        char const* const file = other->l_name[0] != 0 ? other->l_name : ::program_invocation_name;
        found.append(cLibraryHolder(Library, textOf(file)));
      }
    }
  }
  holders.swap(found);
  return map != nullptr;
}

} // namespace mpi
