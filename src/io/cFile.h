#ifndef MORTISE_IO_CFILE_H
#define MORTISE_IO_CFILE_H

#include "io/cAbstractIOBlockDevice.h"
#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

namespace mstd
{
class cDateTime;
class cTime;
} // namespace mstd

namespace mucs
{
class cString;
} // namespace mucs

namespace mio
{

class cAbstractFileImpl;
class cFs;
class cReadAhead;

/// File of a file system. It may be opened and closed again and again.
///
/// Reading lines reads blocks from a file that has a size and a position. What is read beyond a line stays out of
/// sight: pos(), seek(), read(), write() and all else find the file right behind the line; copies of the file, which
/// share its position, do so too; and what this process changes in any file meanwhile is read anew. Only changes that
/// other processes make to bytes of at most 64 KiB behind the line may be missed until the next of the
/// operations above; what they append is always found.
///
/// Ownership: refers to its file system's handle, which has to outlive it, and owns its descriptor.
/// Errors:    open() raises mstd::cRuntimeException with the cause behind it, everything else what the file system
///            raises: mstd::cOSErrorException. A closed file raises that for each operation but name(), remove(),
///            rename(), close(), setRemoveOnClose() and release().
/// Threads:   one object belongs to one thread.
class MORTISE_API cFile : public cAbstractIOBlockDevice
{
public:
  /// Opens a file of the system's file system, links followed.
  cFile(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write);
  cFile(char const* path, OpenMode mode, CreateMode create, WriteMode write);
  /// Does not open. `fs` has to outlive the file.
  cFile(cFs& fs, mucs::cString const& path);
  /// The same file once more: a copy of an open file has a descriptor of its own and shares the position. Changes in
  /// the window of `other` are written before.
  cFile(cFile const& other);
  /// Takes the open file over and leaves a closed one.
  cFile(cFile&& other);
  /// Closes, and so writes what the window holds. What goes wrong then is told to the debug output.
  ~cFile() override;
  cFile& operator=(cFile const& other);
  void swap(cFile& other) noexcept;

  cFs& fs() const;

  // as device
  bool readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                    unsigned int timeoutMs) override;
  bool readTextLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator) override;
  bool readTextLine(mstd::tArray<char>& line, unsigned int timeoutMs) override;
  unsigned long long read(void* pTarget, unsigned long long size) override;
  unsigned long long write(void const* pSource, unsigned long long size) override;
  mucs::cString name() const override;
  void seek(long long offset, SeekMode mode) override;
  unsigned long long pos() const override;
  void truncate(unsigned int size) override;
  /// Maps a file that is open for reading only. Views provide all of it in one block from then on.
  void mmap() override;

  /// Removes the file from its directory.
  virtual void remove();
  /// Removes the file when it is closed.
  virtual void setRemoveOnClose();
  /// Takes setRemoveOnClose() back.
  virtual void release();
  virtual void rename(mucs::cString const& name);
  virtual mstd::cDateTime lastModified() const;
  /// Closes what is open, and opens the file at `path`.
  virtual void open(mucs::cString const& path, OpenMode mode, CreateMode create, WriteMode write, bool followLinks);
  /// Writes what the window holds, and closes. Does nothing to a closed file.
  virtual void close();
  /// Writes what the window holds. The position stays.
  virtual void flush();

private:
  enum Kind
  {
    Unknown,
    Regular,  // has a size, and a position that can be set: what was read too much can be given back
    Irregular // what is read is gone
  };

  static cFile const& settled(cFile const& file);
  bool isShared() const;
  void leaveSharers() noexcept;
  /// Goes back to where the reader is, if more than that was read.
  void giveBack() const
  {
    if (__builtin_expect(mpReadAhead.get() != nullptr, 0))
    {
      seekReader();
    }
  }
  void seekReader() const;
  bool readAhead();
  bool readLine(mstd::tArray<char>& line, mstd::cTime const* pStart, unsigned int timeoutMs);
  bool readLine(mstd::tArray<char>& line, mstd::tArray<char> const& terminator, bool keepTerminator,
                mstd::cTime const* pStart, unsigned int timeoutMs);
  void forgetFile();

  mstd::tAutoPtr<cAbstractFileImpl> mpImpl;
  mstd::tAutoPtr<cReadAhead> mpReadAhead; // null until a line is read
  mutable unsigned int* mpSharers;        // number of open files that share the position; null if there never were two
  Kind mKind;
};

} // namespace mio

#endif
