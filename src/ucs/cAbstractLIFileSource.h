#ifndef MORTISE_UCS_CABSTRACTLIFILESOURCE_H
#define MORTISE_UCS_CABSTRACTLIFILESOURCE_H

#include "pi/piTypes.h"
#include "std/tArrayTraits.h"

namespace mucs
{
class cString;

/// Where translation and locale files come from. Without one they are files of the system's file system; an application
/// that carries its texts in an archive or in the program itself gives one of its own.
class MORTISE_API cAbstractLIFileSource
{
public:
  virtual ~cAbstractLIFileSource();
  /// Replaces `aBytes` by the whole content of the file. Raises what it likes if that can't be had.
  virtual void read(cString const& sFile, mstd::tArray<char>& aBytes) = 0;
};
} // namespace mucs

#endif
