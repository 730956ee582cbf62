#ifndef MORTISE_TOOLS_CELFFILE_H
#define MORTISE_TOOLS_CELFFILE_H

#include <stdint.h>
#include <string>
#include <string_view>
#include <vector>

/// What an ELF file says of itself to the dynamic loader: of either size of words, in either order of bytes. Nothing in
/// the file is believed: whatever leads out of it, or to more than memory should be spent on, is damage.
class cElfFile
{
public:
  enum Problem
  {
    None,
    Unreadable,
    Directory,
    NotRegular,
    NotElf,
    Truncated,
    Damaged,
    NoLibrary ///< an object file, a program, a core dump
  };

  struct cSymbol
  {
    std::string_view mName; // of the table of this file
    bool mDefined;
    bool mWeak;
    bool mUnique;
    bool mCallable; // a function, or of no type
  };

  explicit cElfFile(std::string const& path);
  cElfFile(cElfFile const&) = delete; // symbols refer to its names
  cElfFile& operator=(cElfFile const&) = delete;
  ~cElfFile();

  /// The header alone; false if there is a problem.
  bool readHeader();
  /// All of it.
  bool read();

  Problem problem() const { return mProblem; }
  /// What is wrong, as the end of a sentence that begins with the name of the file.
  std::string const& explanation() const { return mExplanation; }

  std::string const& path() const { return mPath; }
  /// For people, like "x86-64, 64 bits".
  std::string processor() const;
  bool isForProcessorOf(cElfFile const& other) const;
  std::string const& soName() const { return mSoName; }
  /// The libraries that it needs, in the order in which they are searched.
  std::vector<std::string> const& needed() const { return mNeeded; }
  std::string const& rPath() const { return mRPath; }
  std::string const& runPath() const { return mRunPath; }
  bool isNeverUnloaded() const { return mNoDelete; }
  bool isNeverOpened() const { return mNoOpen; }
  /// What it exports and what it wants.
  std::vector<cSymbol> const& symbols() const { return mSymbols; }
  /// The symbol that it exports under this name, or null.
  cSymbol const* exported(std::string_view name) const;

private:
  template <class Types>
  class cReader;
  struct cTypes32;
  struct cTypes64;

  bool fail(Problem eProblem, std::string const& explanation);
  bool readBytes(uint64_t offset, uint64_t size, void* pBytes);
  std::string unlikeElf(char const* pStart, size_t length) const;

  std::string mPath;
  int miDescriptor;
  uint64_t miSize;
  Problem mProblem;
  std::string mExplanation;
  unsigned char mClass;
  unsigned char mOrder;
  uint16_t miMachine;
  std::string mSoName;
  std::vector<std::string> mNeeded;
  std::string mRPath;
  std::string mRunPath;
  bool mNoDelete;
  bool mNoOpen;
  std::vector<char> mNames;
  std::vector<cSymbol> mSymbols;
};

#endif
