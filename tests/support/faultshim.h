#ifndef MORTISE_TESTS_SUPPORT_FAULTSHIM_H
#define MORTISE_TESTS_SUPPORT_FAULTSHIM_H

#include <functional>
#include <string>

namespace support
{

/// Makes the file system misbehave, for the whole process, while an object of this class lives.
///
/// The source beside this header takes the place of the C library's calls for files and directories, also for the
/// library under test. Without a living object they are the C library's own; with one each call is counted, and those
/// that were asked for fail, come short, or find that something has happened just before them.
///
/// Linked into a test program it is in force as it stands. As a shared library it goes first in the link order, or
/// into LD_PRELOAD.
///
/// One object at a time, on one thread. What the C library calls inside itself isn't seen.
class cFaultShim
{
public:
  enum tCall
  {
    Open, ///< open and openat
    Close,
    Read,
    Write,
    Seek,
    Truncate, ///< ftruncate
    Stat,     ///< stat and fstatat
    LStat,
    FStat,
    MkDir,  ///< and mkdirat
    RmDir,  ///< and unlinkat for directories
    Unlink, ///< and unlinkat for others
    Rename, ///< and renameat
    SymLink,
    ReadLink,
    ChMod,
    GetCwd,
    OpenDir, ///< opendir and fdopendir
    ReadDir,
    Dup,
    MMap,
    NumCalls
  };

  cFaultShim();
  cFaultShim(cFaultShim const&) = delete;
  cFaultShim& operator=(cFaultShim const&) = delete;
  ~cFaultShim();

  /// After `skip` more calls of that kind, `times` of them fail with the error number. A close that fails closes.
  void fail(tCall call, int iError, unsigned int times = 1, unsigned int skip = 0);
  /// After `skip` more calls of any kind, one fails.
  void failNth(unsigned int skip, int iError);
  /// Each read (or write) moves at most so many bytes from now on.
  void limitRead(unsigned long long iBytes);
  void limitWrite(unsigned long long iBytes);
  /// So many bytes can be written yet; then writes fail with ENOSPC.
  void limitSpace(unsigned long long iBytes);
  /// Runs `action` just before a call of that kind, after `skip` more of them. Calls inside the action are not counted
  /// and don't fail.
  void before(tCall call, std::function<void()> action, unsigned int skip = 0);

  unsigned int numCalls(tCall call) const;
  unsigned int numCalls() const;
  /// Faults that have come.
  unsigned int numFaults() const;
  /// The largest number of bytes that one read or write asked for.
  unsigned long long largestBlock() const;
  /// The path of the last open.
  std::string lastPath() const;
  /// The flags and the mode of the last open.
  int lastFlags() const;
  unsigned int lastMode() const;

  /// The descriptors that this process holds.
  static unsigned int numDescriptors();
};

} // namespace support

#endif
