#ifndef MORTISE_EXAMPLES_NOTEBOOK_CNOTEBOOKFILE_H
#define MORTISE_EXAMPLES_NOTEBOOK_CNOTEBOOKFILE_H

#include "std/cAsciiString.h"
#include "std/tArray.h"

class cNotebook;

namespace mucs
{
class cString;
}

/// The file that holds a notebook: the notebook as a stream with labels and, from version 2 on, a check sum over it,
/// behind the label "crc32".
///
/// While the object lives, no other process has the file open for a change. A change is written to another file first,
/// which takes the place of the old one when all of it is on the disk; whatever happens, one of the two is there whole.
class cNotebookFile
{
public:
  /// For a change other processes are waited for.
  cNotebookFile(mstd::cAsciiString const& sPath, bool bChange);
  cNotebookFile(cNotebookFile const&) = delete;
  cNotebookFile& operator=(cNotebookFile const&) = delete;
  ~cNotebookFile();

  bool exists() const;
  /// Throws mstd::cOSErrorException if the file can't be read, mstd::cRuntimeException if it is damaged.
  void load(cNotebook& notebook) const;
  /// Throws mstd::cOSErrorException; the file is then as it was.
  void save(cNotebook const& notebook) const;

private:
  static void parse(mstd::tArray<char> const& bytes, cNotebook& notebook);
  static unsigned int crc32(char const* pBytes, unsigned int iSize);
  void read(mstd::tArray<char>& bytes) const;
  void write(char const* pBytes, unsigned int iSize) const;
  [[noreturn]] void throwDamaged(mucs::cString const& reason) const;
  [[noreturn]] void fail(char const* operation) const;

  mstd::cAsciiString mName; // as the user calls it
  mstd::cAsciiString mPath; // without symbolic links
  int miFolder;
};

#endif
