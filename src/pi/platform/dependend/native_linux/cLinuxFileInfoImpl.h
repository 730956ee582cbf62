#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFILEINFOIMPL_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFILEINFOIMPL_H

#include "io/cAbstractFileInfoImpl.h"
#include "pi/platform/dependend/native_linux/cLinuxPath.h"
#include "ucs/cString.h"

namespace mpi
{

/// Answers about a path by looking at it, each time anew.
///
/// Errors: mstd::cOSErrorException "stat", and "readlink" for a link that can't be read. A path that doesn't exist is
///         noticed by the questions, not by the constructor.
class cLinuxFileInfoImpl : public mio::cAbstractFileInfoImpl
{
public:
  /// Keeps the encoder of `fs`, which outlives all handles.
  cLinuxFileInfoImpl(mio::cFs const& fs, mucs::cString const& path);
  ~cLinuxFileInfoImpl() override;

  /// To the second.
  mstd::cDateTime timeStamp(mio::cFileInfoFlags::TimeStamp stamp, bool followLinks) const override;
  mucs::cString filePath() const override;
  mucs::cString readLink() const override;
  unsigned long long size(bool followLinks) const override;
  mio::cFileInfoFlags::Type type(bool followLinks) const override;
  /// A name that begins with "." is hidden, but not the names "." and "..".
  mio::cPermissions readPermissions(bool followLinks) const override;

private:
  void look(struct stat& info, bool followLinks) const;

  mucs::cAbstractEnDec const& mEndec;
  mucs::cString msPath;
  cLinuxPath mPath;
};

/// Puts the time of `info` that `stamp` selects into `dateTime`: to the second, and not before 1970.
void createLinuxTSFromStat(struct stat const& info, mstd::cDateTime& dateTime,
                           mio::cFileInfoFlags::TimeStamp const& stamp);

/// The bits that the system knows, of permissions in our order.
mode_t linuxModeOf(mio::cPermissions const& permissions);

} // namespace mpi

#endif
