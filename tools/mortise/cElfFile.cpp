#include "cElfFile.h"

#include <algorithm>
#include <elf.h>
#include <errno.h>
#include <fcntl.h>
#include <stdio.h>
#include <string.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>

#ifndef EM_RISCV
#define EM_RISCV 243
#endif
#ifndef EM_LOONGARCH
#define EM_LOONGARCH 258
#endif

namespace
{
// No library has tables near this size; a sparse file may claim any.
uint64_t const LargestTable = 256u << 20;

struct cMachine
{
  uint16_t miNumber;
  char const* mpName;
};

cMachine const Machines[] = {{EM_X86_64, "x86-64"},  {EM_386, "x86"},       {EM_AARCH64, "ARM64"},
                             {EM_ARM, "ARM"},        {EM_RISCV, "RISC-V"},  {EM_PPC, "PowerPC"},
                             {EM_PPC64, "PowerPC"},  {EM_S390, "S/390"},    {EM_MIPS, "MIPS"},
                             {EM_SPARC, "SPARC"},    {EM_SPARCV9, "SPARC"}, {EM_IA_64, "Itanium"},
                             {EM_68K, "68000"},      {EM_SH, "SuperH"},     {EM_LOONGARCH, "LoongArch"},
                             {EM_PARISC, "PA-RISC"}, {EM_ALPHA, "Alpha"}};

bool startsWith(char const* pStart, size_t length, char const* pMagic)
{
  return length >= strlen(pMagic) && memcmp(pStart, pMagic, strlen(pMagic)) == 0;
}
} // namespace

struct cElfFile::cTypes32
{
  typedef Elf32_Ehdr tHeader;
  typedef Elf32_Phdr tSegment;
  typedef Elf32_Dyn tEntry;
  typedef Elf32_Sym tSymbol;
};

struct cElfFile::cTypes64
{
  typedef Elf64_Ehdr tHeader;
  typedef Elf64_Phdr tSegment;
  typedef Elf64_Dyn tEntry;
  typedef Elf64_Sym tSymbol;
};

// Reads the structures of one size of words.
template <class Types>
class cElfFile::cReader
{
  typedef typename Types::tHeader tHeader;
  typedef typename Types::tSegment tSegment;
  typedef typename Types::tEntry tEntry;
  typedef typename Types::tSymbol tSymbol;
  typedef decltype(tSymbol::st_value) tWord;

public:
  explicit cReader(cElfFile& file) : mFile(file) {}

  bool read()
  {
    tHeader header;
    if (!mFile.readBytes(0, sizeof header, &header))
    {
      return mFile.fail(Truncated, "is truncated: its header is not whole");
    }
    return readSegments(header) && readEntries() && readNames() && readSymbols();
  }

private:
  // A number of the file, in the order of bytes of this machine.
  template <class T>
  T host(T number) const
  {
    static_assert(std::is_integral<T>::value, "fields are numbers");
    bool const bIsHere = mFile.mOrder == (__BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB);
    if (!bIsHere)
    {
      unsigned char* const pBytes = reinterpret_cast<unsigned char*>(&number);
      std::reverse(pBytes, pBytes + sizeof number);
    }
    return number;
  }

  template <class T>
  bool readTable(uint64_t offset, uint64_t count, std::vector<T>& table, char const* pWhat)
  {
    if (count > LargestTable / sizeof(T))
    {
      return mFile.fail(Damaged, std::string("is damaged: ") + pWhat + " would be larger than any");
    }
    if (offset > mFile.miSize || count * sizeof(T) > mFile.miSize - offset)
    {
      return mFile.fail(
          Truncated,
          std::string("is truncated or damaged: ") + pWhat + " goes on to byte " +
              (offset > UINT64_MAX - count * sizeof(T) ? "2^64" : std::to_string(offset + count * sizeof(T))) +
              ", and the file has " + std::to_string(mFile.miSize));
    }
    table.resize(static_cast<size_t>(count));
    if (count != 0 && !mFile.readBytes(offset, count * sizeof(T), table.data()))
    {
      return mFile.fail(Truncated, std::string("is truncated: ") + pWhat + " cannot be read");
    }
    return true;
  }

  bool readSegments(tHeader const& header)
  {
    uint16_t const type = host(header.e_type);
    if (type != ET_DYN)
    {
      char const* const pType = type == ET_REL    ? "an object file, which is yet to be linked"
                                : type == ET_EXEC ? "a program"
                                : type == ET_CORE ? "a core dump"
                                                  : "an ELF file of an unknown type";
      return mFile.fail(NoLibrary, std::string("is ") + pType + ", not a shared library");
    }
    if (host(header.e_phentsize) != sizeof(tSegment) && host(header.e_phnum) != 0)
    {
      return mFile.fail(Damaged, "is damaged: its segments have a wrong size");
    }
    if (!readTable(host(header.e_phoff), host(header.e_phnum), mSegments, "the list of its segments"))
    {
      return false;
    }
    bool bLoads = false;
    for (tSegment const& segment : mSegments)
    {
      if (host(segment.p_type) != PT_LOAD)
      {
        continue;
      }
      bLoads = true;
      uint64_t const offset = host(segment.p_offset);
      uint64_t const size = host(segment.p_filesz);
      if (offset > mFile.miSize || size > mFile.miSize - offset)
      {
        return mFile.fail(Truncated, "is truncated: a segment has " + std::to_string(size) + " bytes from byte " +
                                         std::to_string(offset) + " on, and the file has " +
                                         std::to_string(mFile.miSize));
      }
      if (size > host(segment.p_memsz))
      {
        return mFile.fail(Damaged, "is damaged: a segment is larger in the file than in memory");
      }
    }
    return bLoads || mFile.fail(Damaged, "is damaged: it has nothing to load");
  }

  bool readEntries()
  {
    for (tSegment const& segment : mSegments)
    {
      if (host(segment.p_type) == PT_DYNAMIC)
      {
        return readTable(host(segment.p_offset), host(segment.p_filesz) / sizeof(tEntry), mEntries,
                         "its dynamic section");
      }
    }
    return mFile.fail(Damaged, "has no dynamic section: there is nothing in it that could be loaded");
  }

  // The value of the first entry with this tag.
  bool find(int64_t tag, uint64_t& rValue) const
  {
    for (tEntry const& entry : mEntries)
    {
      if (host(entry.d_tag) == DT_NULL)
      {
        break;
      }
      if (host(entry.d_tag) == tag)
      {
        rValue = host(entry.d_un.d_val);
        return true;
      }
    }
    return false;
  }

  // Where in the file an address stands that the library has in memory, and how many bytes of its segment follow.
  bool place(uint64_t address, uint64_t& rOffset, uint64_t& rBytes) const
  {
    for (tSegment const& segment : mSegments)
    {
      uint64_t const start = host(segment.p_vaddr);
      uint64_t const size = host(segment.p_filesz);
      if (host(segment.p_type) == PT_LOAD && address >= start && address - start < size)
      {
        rOffset = host(segment.p_offset) + (address - start);
        rBytes = size - (address - start);
        return true;
      }
    }
    return false;
  }

  bool nameAt(uint64_t index, std::string_view& rName) const
  {
    if (index >= mFile.mNames.size())
    {
      return false;
    }
    char const* const pName = mFile.mNames.data() + index;
    void const* const pEnd = memchr(pName, 0, mFile.mNames.size() - static_cast<size_t>(index));
    if (pEnd == nullptr)
    {
      return false;
    }
    rName = std::string_view(pName, static_cast<size_t>(static_cast<char const*>(pEnd) - pName));
    return true;
  }

  bool readNames()
  {
    uint64_t address = 0;
    uint64_t size = 0;
    uint64_t offset = 0;
    uint64_t bytes = 0;
    if (!find(DT_STRTAB, address) || !find(DT_STRSZ, size) || !place(address, offset, bytes) || size > bytes)
    {
      return mFile.fail(Damaged, "is damaged: its names are not where they should be");
    }
    if (!readTable(offset, size, mFile.mNames, "the list of its names"))
    {
      return false;
    }
    uint64_t budget = LargestTable; // names may overlap, again and again
    for (tEntry const& entry : mEntries)
    {
      int64_t const tag = host(entry.d_tag);
      if (tag == DT_NULL)
      {
        break;
      }
      uint64_t const value = host(entry.d_un.d_val);
      if (tag == DT_FLAGS_1)
      {
        mFile.mNoDelete = (value & DF_1_NODELETE) != 0;
        mFile.mNoOpen = (value & DF_1_NOOPEN) != 0;
        if ((value & DF_1_PIE) != 0)
        {
          return mFile.fail(NoLibrary, "is a program, not a shared library");
        }
      }
      std::string_view name;
      if (tag != DT_NEEDED && tag != DT_SONAME && tag != DT_RPATH && tag != DT_RUNPATH)
      {
        continue;
      }
      if (!nameAt(value, name) || name.size() > budget)
      {
        return mFile.fail(Damaged, "is damaged: the name of a library is not among its names");
      }
      budget -= name.size();
      (tag == DT_NEEDED    ? mFile.mNeeded.emplace_back()
       : tag == DT_SONAME  ? mFile.mSoName
       : tag == DT_RUNPATH ? mFile.mRunPath
                           : mFile.mRPath) = name;
    }
    return true;
  }

  // The number of symbols is told by the table that finds them.
  bool countSymbols(uint64_t& rCount)
  {
    uint64_t address = 0;
    uint64_t offset = 0;
    uint64_t bytes = 0;
    std::vector<uint32_t> words;
    if (find(DT_GNU_HASH, address) && place(address, offset, bytes))
    {
      if (!readTable(offset, 4, words, "its hash table"))
      {
        return false;
      }
      uint64_t const buckets = host(words[0]);
      uint64_t const first = host(words[1]);
      uint64_t const start = offset + 16 + uint64_t(host(words[2])) * sizeof(tWord);
      if (bytes < 16 || start - offset > bytes || buckets > (bytes - (start - offset)) / 4)
      {
        return mFile.fail(Damaged, "is damaged: its hash table does not fit into its segment");
      }
      uint64_t const chains = start + 4 * buckets;
      if (!readTable(start, buckets, words, "its hash table"))
      {
        return false;
      }
      uint64_t last = 0;
      for (uint32_t word : words)
      {
        last = std::max<uint64_t>(last, host(word));
      }
      rCount = first;
      if (last < first)
      {
        return true; // nothing is exported
      }
      if (!readTable(chains, (bytes - (chains - offset)) / 4, words, "its hash table"))
      {
        return false;
      }
      for (uint64_t i = last - first; i < words.size(); ++i)
      {
        if ((host(words[static_cast<size_t>(i)]) & 1) != 0)
        {
          rCount = first + i + 1;
          return true;
        }
      }
      return mFile.fail(Damaged, "is damaged: its hash table has no end");
    }
    if (find(DT_HASH, address) && place(address, offset, bytes))
    {
      if (!readTable(offset, 2, words, "its hash table"))
      {
        return false;
      }
      rCount = host(words[1]);
      return true;
    }
    return mFile.fail(Damaged, "is damaged: it has no hash table, so that no symbol could be found in it");
  }

  bool readSymbols()
  {
    uint64_t address = 0;
    uint64_t offset = 0;
    uint64_t bytes = 0;
    uint64_t count = 0;
    if (!countSymbols(count))
    {
      return false;
    }
    if (!find(DT_SYMTAB, address) || !place(address, offset, bytes))
    {
      return mFile.fail(Damaged, "is damaged: its symbols are not where they should be");
    }
    std::vector<tSymbol> table;
    if (!readTable(offset, count, table, "the list of its symbols"))
    {
      return false;
    }
    mFile.mSymbols.reserve(table.size());
    uint64_t budget = LargestTable;
    for (size_t i = 1; i < table.size(); ++i) // the first one is none
    {
      unsigned char const binding = table[i].st_info >> 4;
      unsigned char const type = table[i].st_info & 0xF;
      unsigned char const visibility = table[i].st_other & 3;
      cSymbol symbol;
      if (!nameAt(host(table[i].st_name), symbol.mName) || symbol.mName.size() > budget)
      {
        return mFile.fail(Damaged, "is damaged: the name of a symbol is not among its names");
      }
      budget -= symbol.mName.size();
      if (binding == STB_LOCAL || visibility == STV_HIDDEN || visibility == STV_INTERNAL)
      {
        continue;
      }
      symbol.mDefined = host(table[i].st_shndx) != SHN_UNDEF;
      symbol.mWeak = binding == STB_WEAK;
      symbol.mUnique = binding == STB_GNU_UNIQUE;
      symbol.mCallable = type == STT_FUNC || type == STT_NOTYPE || type == STT_GNU_IFUNC;
      mFile.mSymbols.push_back(symbol);
    }
    return true;
  }

  cElfFile& mFile;
  std::vector<tSegment> mSegments;
  std::vector<tEntry> mEntries;
};

cElfFile::cElfFile(std::string const& path)
    : mPath(path), miDescriptor(-1), miSize(0), mProblem(None), mClass(0), mOrder(0), miMachine(0), mNoDelete(false),
      mNoOpen(false)
{
}

cElfFile::~cElfFile()
{
  if (miDescriptor >= 0)
  {
    close(miDescriptor);
  }
}

bool cElfFile::fail(Problem eProblem, std::string const& explanation)
{
  mProblem = eProblem;
  mExplanation = explanation;
  return false;
}

bool cElfFile::readBytes(uint64_t offset, uint64_t size, void* pBytes)
{
  char* pTo = static_cast<char*>(pBytes);
  while (size != 0)
  {
    ssize_t const got = pread(miDescriptor, pTo, static_cast<size_t>(size), static_cast<off_t>(offset));
    if (got < 0 && errno == EINTR)
    {
      continue;
    }
    if (got <= 0)
    {
      return false;
    }
    pTo += got;
    offset += static_cast<uint64_t>(got);
    size -= static_cast<uint64_t>(got);
  }
  return true;
}

std::string cElfFile::unlikeElf(char const* pStart, size_t length) const
{
  if (length == 0)
  {
    return "is empty";
  }
  char const* pKind = "";
  if (startsWith(pStart, length, "!<arch>\n") || startsWith(pStart, length, "!<thin>\n"))
  {
    pKind = ", but a static library";
  }
  else if (startsWith(pStart, length, "#!"))
  {
    pKind = ", but a script";
  }
  else if (startsWith(pStart, length, "/* GNU ld script"))
  {
    pKind = ", but a script for the linker";
  }
  else if (startsWith(pStart, length, "MZ"))
  {
    pKind = ", but a library or program for Windows";
  }
  else if (startsWith(pStart, length, "\xCF\xFA\xED\xFE") || startsWith(pStart, length, "\xCA\xFE\xBA\xBE"))
  {
    pKind = ", but a library or program for macOS";
  }
  else if (startsWith(pStart, length, "BC\xC0\xDE"))
  {
    pKind = ", but what a compiler has left for the linker";
  }
  return std::string("is not an ELF file") + pKind;
}

bool cElfFile::readHeader()
{
  // Opening a pipe would wait for its writer.
  miDescriptor = open(mPath.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  struct stat status;
  if (miDescriptor < 0 || fstat(miDescriptor, &status) != 0)
  {
    return fail(Unreadable, std::string("cannot be read: ") + strerror(errno));
  }
  if (!S_ISREG(status.st_mode))
  {
    return S_ISDIR(status.st_mode) ? fail(Directory, "is a directory") : fail(NotRegular, "is not a regular file");
  }
  miSize = static_cast<uint64_t>(status.st_size);
  char start[EI_NIDENT + 4];
  size_t const length = static_cast<size_t>(std::min<uint64_t>(miSize, sizeof start));
  if (!readBytes(0, length, start))
  {
    return fail(Unreadable, std::string("cannot be read: ") + strerror(errno));
  }
  if (!startsWith(start, length, ELFMAG))
  {
    bool const bBegins = length > 0 && length < SELFMAG && memcmp(start, ELFMAG, length) == 0;
    return bBegins ? fail(Truncated, "is truncated: it has " + std::to_string(length) + " bytes")
                   : fail(NotElf, unlikeElf(start, length));
  }
  if (length < sizeof start)
  {
    return fail(Truncated, "is truncated: its header is not whole");
  }
  mClass = static_cast<unsigned char>(start[EI_CLASS]);
  mOrder = static_cast<unsigned char>(start[EI_DATA]);
  if ((mClass != ELFCLASS32 && mClass != ELFCLASS64) || (mOrder != ELFDATA2LSB && mOrder != ELFDATA2MSB) ||
      start[EI_VERSION] != EV_CURRENT)
  {
    return fail(Damaged, "is damaged: its header has numbers that mean nothing");
  }
  unsigned char const low = static_cast<unsigned char>(start[EI_NIDENT + (mOrder == ELFDATA2LSB ? 2 : 3)]);
  unsigned char const high = static_cast<unsigned char>(start[EI_NIDENT + (mOrder == ELFDATA2LSB ? 3 : 2)]);
  miMachine = static_cast<uint16_t>(low | high << 8);
  return true;
}

bool cElfFile::read()
{
  if (!readHeader())
  {
    return false;
  }
  return mClass == ELFCLASS64 ? cReader<cTypes64>(*this).read() : cReader<cTypes32>(*this).read();
}

std::string cElfFile::processor() const
{
  std::string name = "processor " + std::to_string(miMachine);
  for (cMachine const& machine : Machines)
  {
    if (machine.miNumber == miMachine)
    {
      name = machine.mpName;
    }
  }
  name += mClass == ELFCLASS64 ? ", 64 bits" : ", 32 bits";
  return mOrder == ELFDATA2MSB ? name + ", big-endian" : name;
}

bool cElfFile::isForProcessorOf(cElfFile const& other) const
{
  return miMachine == other.miMachine && mClass == other.mClass && mOrder == other.mOrder;
}

cElfFile::cSymbol const* cElfFile::exported(std::string_view name) const
{
  for (cSymbol const& symbol : mSymbols)
  {
    if (symbol.mDefined && symbol.mName == name)
    {
      return &symbol;
    }
  }
  return nullptr;
}
