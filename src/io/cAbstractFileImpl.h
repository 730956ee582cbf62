#ifndef MORTISE_IO_CABSTRACTFILEIMPL_H
#define MORTISE_IO_CABSTRACTFILEIMPL_H

#include "io/ioTypes.h"
#include "pi/piTypes.h"
#include "std/tAutoPtr.h"

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

class cAbstractIOBlockDevice;
class cFs;

/// What stands behind a cFile.
class MORTISE_API cAbstractFileImpl
{
public:
  /// Both stay their owners' and outlive the implementation.
  cAbstractFileImpl(cFs& fs, cAbstractIOBlockDevice& device);
  /// Must not be used, and throws 12: a copy needs a device of its own, see deepCopy().
  cAbstractFileImpl(cAbstractFileImpl const& other);
  cAbstractFileImpl& operator=(cAbstractFileImpl const&) = delete;
  virtual ~cAbstractFileImpl();

  /// The same file for another device, at the same position.
  virtual mstd::tAutoPtr<cAbstractFileImpl> deepCopy(cAbstractIOBlockDevice& device) const = 0;
  virtual mucs::cString name() const = 0;
  virtual void remove() = 0;
  virtual void setRemoveOnClose() = 0;
  /// Takes setRemoveOnClose() back.
  virtual void release() = 0;
  virtual void rename(mucs::cString const& name) = 0;
  virtual mstd::cDateTime lastModified() const = 0;
  virtual void open(mucs::cString const& name, OpenMode mode, CreateMode create, WriteMode write, bool followLinks) = 0;
  virtual void close() = 0;
  virtual void truncate(unsigned int size) = 0;
  /// The number of bytes done; less than asked for at the end of the file.
  virtual unsigned long long readBytes(char* pData, unsigned long long count) = 0;
  virtual unsigned long long writeBytes(char const* pData, unsigned long long count) = 0;
  virtual void mmap() = 0;
  virtual void seek(long long offset, SeekMode mode) = 0;
  virtual unsigned long long pos() const = 0;
  virtual void flush() = 0;
  virtual void munmap() = 0;

  cFs& fs() const { return mrFs; }
  /// The device that owns this implementation.
  cAbstractIOBlockDevice& bd() const;
  /// Exchanges the devices: what two devices do that exchange their implementations.
  void swapBD(cAbstractFileImpl& other);

private:
  cFs& mrFs;
  cAbstractIOBlockDevice* mpBD;
};

} // namespace mio

#endif
