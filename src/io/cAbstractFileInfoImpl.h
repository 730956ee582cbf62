#ifndef MORTISE_IO_CABSTRACTFILEINFOIMPL_H
#define MORTISE_IO_CABSTRACTFILEINFOIMPL_H

#include "io/ioTypes.h"
#include "pi/piTypes.h"

namespace mstd
{
class cDateTime;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

class cFs;
class cPermissions;

/// What stands behind a cFileInfo. Each question looks anew; the bool tells whether symbolic links are followed.
class MORTISE_API cAbstractFileInfoImpl
{
public:
  explicit cAbstractFileInfoImpl(cFs const& fs);
  cAbstractFileInfoImpl(cAbstractFileInfoImpl const&) = default;
  cAbstractFileInfoImpl& operator=(cAbstractFileInfoImpl const&) = delete;
  virtual ~cAbstractFileInfoImpl();

  virtual mstd::cDateTime timeStamp(cFileInfoFlags::TimeStamp stamp, bool followLinks) const = 0;
  virtual mucs::cString filePath() const = 0;
  /// Where the link leads; empty if it is none.
  virtual mucs::cString readLink() const = 0;
  virtual unsigned long long size(bool followLinks) const = 0;
  virtual cFileInfoFlags::Type type(bool followLinks) const = 0;
  virtual cPermissions readPermissions(bool followLinks) const = 0;
};

} // namespace mio

#endif
