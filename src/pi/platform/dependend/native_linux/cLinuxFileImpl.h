#ifndef MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFILEIMPL_H
#define MORTISE_PI_PLATFORM_DEPENDEND_NATIVE_LINUX_CLINUXFILEIMPL_H

#include "io/cAbstractFileImpl.h"
#include "ucs/cString.h"

#include <stddef.h>

namespace mpi
{

/// A file behind a descriptor.
///
/// Errors:    mstd::cOSErrorException with the name of the system call, its error number and the name of the file.
///            What needs a descriptor raises it with the number EBADFD if there is none.
/// Ownership: owns the descriptor and the mapping. The destructor gives both back, and removes the file if that
///            was asked for, without a word and without touching the device: whoever wants to hear of failures, or has
///            something to write out, calls close().
class cLinuxFileImpl : public mio::cAbstractFileImpl
{
public:
  /// Not open. `name` is what remove() and rename() act on.
  cLinuxFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device, mucs::cString const& name);
  /// The same file for another device, over a descriptor of its own that shares the position. The mapping isn't copied.
  cLinuxFileImpl(cLinuxFileImpl const& other, mio::cAbstractIOBlockDevice& device);
  cLinuxFileImpl(cLinuxFileImpl const&) = delete;
  cLinuxFileImpl& operator=(cLinuxFileImpl const&) = delete;
  ~cLinuxFileImpl() override;

  mstd::tAutoPtr<mio::cAbstractFileImpl> deepCopy(mio::cAbstractIOBlockDevice& device) const override;
  /// What was opened, or the name that rename() gave it since.
  mucs::cString name() const override;
  /// A failure has the code -1.
  void remove() override;
  void setRemoveOnClose() override;
  void release() override;
  void rename(mucs::cString const& name) override;
  /// To the second.
  mstd::cDateTime lastModified() const override;
  /// Closes what is open first. A failure leaves the file closed, with the name that it had.
  void open(mucs::cString const& name, mio::OpenMode mode, mio::CreateMode create, mio::WriteMode write,
            bool followLinks) override;
  /// Does nothing to a file that isn't open. If what the device holds back can't be written the file stays open.
  void close() override;
  void truncate(unsigned int size) override;
  /// Reads blocks of up to 128 MiB until one comes short. Interruptions are borne up to three times in a call; one more
  /// ends it with what was read so far.
  unsigned long long readBytes(char* pData, unsigned long long count) override;
  /// As readBytes(). What was written before a failure stays written.
  unsigned long long writeBytes(char const* pData, unsigned long long count) override;
  /// Maps the whole file, as it is long now. A mapping that the system refuses counts as one, at the address -1.
  void mmap() override;
  void seek(long long offset, mio::SeekMode mode) override;
  unsigned long long pos() const override;
  /// Hands what the device holds back to the system, which is not made to write it to the disk.
  void flush() override;
  void munmap() override;

private:
  void requireOpen(char const* operation) const;

  int miFD; // 0: closed, so descriptor 0 can't be held
  bool mIsWriteable;
  bool mRemoveOnClose;
  mucs::cString msName;
  void* mpMapping; // null: not mapped
  size_t mMappedSize;
};

} // namespace mpi

#endif
