#ifndef MORTISE_IO_CFS_H
#define MORTISE_IO_CFS_H

#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"
#include "std/tSharedObject.h"

namespace mstd
{
class cDateTime;
template <typename T>
class tConstListRef;
} // namespace mstd

namespace mucs
{
class cAbstractEnDec;
class cString;
} // namespace mucs

namespace mio
{

class cAbstractDirImpl;
class cAbstractFileImpl;
class cAbstractFileInfoImpl;
class cAbstractFsImpl;
class cAbstractIOBlockDevice;
class cDir;
class cFile;
class cFileInfo;
class cPath;
class cPermissions;

/// The file system, as everybody uses it: a cheap handle on an implementation. A fresh one stands for the file system
/// of the platform; setImpl() and installProxy() put something else behind it.
///
/// Copying shares the implementation and the encoder, which turns names into the bytes of the operating system and
/// back.
///
/// Ownership: the implementation lives until the last handle on it goes. The encoder stays its owner's and has to
///            outlive all handles.
/// Errors:    those of the implementation. The platform's raises mstd::cOSErrorException with the name of the system
///            call and its error number.
/// Threads:   no lock, and the handles are no thread-safe counters: one thread, that of the work queue.
class MORTISE_API cFs
{
public:
  /// The platform's file system, with the default encoder of mpi::system().
  cFs();
  /// The platform's file system, with an encoder that has to outlive all copies of this handle.
  explicit cFs(mucs::cAbstractEnDec const& endec);
  cFs(cFs const& other);
  ~cFs();
  cFs& operator=(cFs const& other);
  void swap(cFs& other) noexcept;

  /// Puts `pImpl` behind this handle. Copies made before, and what was opened through them, stay with the
  /// implementation they have; so an application does this to mpi::system().fs at its start. Null: assertion.
  void setImpl(mstd::tAutoPtr<cAbstractFsImpl> pImpl);
  /// Puts a cProxyFs in front of the implementation, which becomes its native one; bind() and unbind() then work. Does
  /// nothing if a cProxyFs stands there already. As with setImpl(), copies made before don't take part.
  void installProxy();

  /// Whether something stands at `path`. With `pDateTime` and if it does, the time that `stamp` selects goes there.
  bool exists(mucs::cString const& path, bool followLinks = true, mstd::cDateTime* pDateTime = 0,
              cFileInfoFlags::TimeStamp stamp = cFileInfoFlags::LastModification) const;
  /// Removes a file, a link or an empty directory. Nothing there is no error.
  void remove(mucs::cString const& path);
  /// The working directory.
  cPath cwd() const;
  /// Makes one directory; its parent has to exist.
  void mkdir(mucs::cString const& path);
  void rename(mucs::cString const& from, mucs::cString const& to);
  bool supportsSymLinks() const;
  /// Makes `link`, which leads to `target`.
  void createSymLink(mucs::cString const& target, mucs::cString const& link);
  void setPermissions(mucs::cString const& path, cPermissions const& permissions, bool followLinks = true);
  /// Mounts an implementation, where the one behind this handle can: see cProxyFs and installProxy(). Others raise
  /// cBugException.
  void bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl);
  /// Takes away what is mounted for `path`.
  void unbind(mucs::cString const& path);

  // What cFile, cDir and cFileInfo are made of.
  mstd::tAutoPtr<cAbstractFileImpl> createFileImpl(cAbstractIOBlockDevice& device, mucs::cString const& path);
  mstd::tAutoPtr<cAbstractDirImpl> createDirectoryImpl(mucs::cString const& path, int flags) const;
  mstd::tAutoPtr<cAbstractFileInfoImpl> createFileInfoImpl(mucs::cString const& path) const;

  mucs::cAbstractEnDec const& endec() const;

  /// An open file. It refers to this handle and must not outlive it. All three raise what cFile::open() raises.
  cFile fileOpenRead(mucs::cString const& path);
  cFile fileOpenWrite(mucs::cString const& path, CreateMode create, WriteMode write);
  cFile openFile(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write);
  /// True for a plain file, or with `followLinks` for a link that leads to one.
  bool fileExists(mucs::cString const& path, bool followLinks = true) const;
  /// True for a link that leads nowhere.
  bool isDeadSymLink(mucs::cString const& path) const;
  cFileInfo fileInfo(mucs::cString const& path) const;
  /// What stands in a directory, to be walked over. `flags` are DirFlags.
  mstd::tConstListRef<cDir> openDir(mucs::cString const& path, int flags) const;

  /// Makes a directory and all that lead to it, as far as they are missing. Something else in the way raises
  /// mstd::cRuntimeException that holds the item's name behind it; what was made until then stays.
  void createPath(cPath const& path);
  /// The path of `name` in the directory `path` if that is a plain file; otherwise the empty string.
  mucs::cString tryFindInPath(cPath const& path, mucs::cString const& name) const;
  /// Removes what stands at `path`, a directory with all that is in it. A link inside is removed, never followed; a
  /// link at `path` itself is followed only if told so: what is in its directory goes, the directory stays. Nothing
  /// there is no error. A failure leaves what is not yet removed.
  ///
  /// Cost: a tree of any depth; it takes no call stack, and at most a few dozen listings are open at a time.
  void removeRecursive(mucs::cString const& path, bool followLinks);

private:
  friend class cAbstractFsImpl;

  struct cNoImpl
  {
  };
  cFs(cFs const& encoderOf, cNoImpl);

  void install(mstd::tSharedObject<cAbstractFsImpl>& pImpl);
  void dismiss() noexcept;
  void adoptImpls() noexcept;

  mstd::tSharedObject<cAbstractFsImpl> mpImpl;
  mstd::tSharedObject<mucs::cAbstractEnDec const> mpEnDec;
  cAbstractFsImpl* mpFirst; // of the implementations made for this handle, whichever handle holds them now
};

inline void swap(cFs& left, cFs& right) noexcept
{
  left.swap(right);
}

} // namespace mio

#endif
