#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXDIRIMPL_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXDIRIMPL_H

#include "io/cAbstractDirImpl.h"
#include "io/cFs.h"
#include "pi/platform/dependend/native_linux/cLinuxPath.h"
#include "ucs/cString.h"

namespace mpi
{

/// A walk through the entries of a directory, in the system's order.
///
/// Names are read ahead, up to some ten thousand bytes of them; what changes in the directory is seen from there on.
/// The descriptor is held only until the last name has been read, for a small directory only in the constructor.
///
/// Errors: mstd::cOSErrorException "opendir", also from the copy, and "readdir" behind the last name that could
///         be read; the walk then stands where it was and may be tried again.
class cLinuxDirImpl : public mio::cAbstractDirImpl
{
public:
  /// Stands at the first entry, or at the end. `flags` are mio::DirFlags. A missing "/" is put behind `path`.
  cLinuxDirImpl(mio::cFs const& fs, mucs::cString const& path, int flags);
  cLinuxDirImpl& operator=(cLinuxDirImpl const&) = delete;
  ~cLinuxDirImpl() override;

  /// Does nothing at the end.
  void setNext() override;
  /// An empty path at the end.
  mio::cDirInfo element() const override;
  bool isEnd() const override;
  /// Opens the directory again, unless this is at the end.
  mstd::tAutoPtr<mio::cAbstractDirImpl> createCopy() const override;

private:
  /// The system's stream, closed when it goes.
  class cStream
  {
  public:
    cStream() : mpDir(0) {}
    cStream(cStream const&) = delete;
    cStream& operator=(cStream const&) = delete;
    ~cStream() { close(); }

    bool open(cLinuxPath const& path);
    void close();
    DIR* get() const { return mpDir; }

  private:
    DIR* mpDir;
  };

  /// What stands in front of each name in mNames.
  struct tRecord
  {
    long long iNext;      // where the system goes on behind the name
    unsigned int iLength; // of the name, which has no 0 behind it
  };
  static unsigned int const recordSize = sizeof(tRecord);

  cLinuxDirImpl(cLinuxDirImpl const& other);

  void open();
  void setUpElement();
  bool fill();
  void readOn();
  dirent const* readVisible();
  void append(char const* name, unsigned int iLength, long long iNext);
  tRecord record() const;
  char const* name() const;
  bool isHidden(char const* name) const;

  mio::cFs mFs;
  mucs::cString msPath;            // with a "/" at the end
  mutable mucs::cString msElement; // begins with msPath; memory for what element() makes
  cLinuxPath mPath;
  cStream mStream;           // closed as soon as the last name has been read
  mstd::tArray<char> mNames; // records, each with its name behind it
  unsigned int miCurrent;    // where the record of the element begins
  unsigned int miUsed;       // bytes of mNames
  int miError;               // of the read behind mNames, 0 for none
  bool mIsEnd;
  bool mHideDot;
  bool mHideDotDot;
};

} // namespace mpi

#endif
