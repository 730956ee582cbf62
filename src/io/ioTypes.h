/// What the names of the file system mean: how a file is opened, where a position counts from, what a path can be.
#ifndef MORTISE_IO_IOTYPES_H
#define MORTISE_IO_IOTYPES_H

#include "pi/piTypes.h"

namespace mio
{

/// What a file is opened for.
enum OpenMode
{
  OpenReadOnly = 0,
  OpenWriteOnly = 1,
  OpenReadWrite = 2
};

/// Whether opening for writing makes a missing file. The two creating values do the same.
enum CreateMode
{
  CreateNever = 0,
  CreateAlways = 1,
  CreateIfMissing = 2
};

/// What opening for writing does to the content that is there.
enum WriteMode
{
  WriteAppend = 0,
  WriteTruncate = 1,
  WriteInPlace = 2 ///< Neither: what is there stays, and writing begins at its start.
};

/// Where an offset of seek() counts from.
enum SeekMode
{
  SeekFromStart = 0,
  SeekFromCurrent = 1,
  SeekFromEnd = 2
};

/// The words in which a file system answers about a path.
class MORTISE_API cFileInfoFlags
{
public:
  /// Which of the times of a path.
  enum TimeStamp
  {
    LastAccess = 0,
    LastModification = 1,
    LastStatusChange = 2
  };

  /// What stands at a path.
  enum Type
  {
    File = 0,
    Directory = 1,
    CharacterDevice = 2,
    BlockDevice = 3,
    Fifo = 4,
    SymLink = 5,
    Socket = 6
  };
};

/// The flags of a directory listing.
enum DirFlags
{
  DirShowAll = 0,
  DirHideDot = 1,
  DirHideDotDot = 2
};

} // namespace mio

#endif
