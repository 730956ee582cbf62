#ifndef MORTISE_TOOLS_CSTREAMFILE_H
#define MORTISE_TOOLS_CSTREAMFILE_H

#include "std/tArray.h"

#include <stdio.h>
#include <string>

/// The bytes of a file, or of standard input.
class cStreamFile
{
public:
  /// "-" is standard input.
  explicit cStreamFile(std::string const& path);

  /// Whether all of it could be read; if not, error() says why.
  bool read();

  std::string const& name() const { return mName; }
  std::string const& error() const { return mError; }
  mstd::tArray<char> const& data() const { return mData; }

private:
  bool readAll(FILE* pFile);

  std::string mPath;
  std::string mName;
  std::string mError;
  mstd::tArray<char> mData;
};

#endif
