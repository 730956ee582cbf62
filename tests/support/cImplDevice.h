#ifndef MORTISE_TESTS_SUPPORT_CIMPLDEVICE_H
#define MORTISE_TESTS_SUPPORT_CIMPLDEVICE_H

#include "io/cAbstractFileImpl.h"
#include "io/cAbstractIOBlockDevice.h"
#include "io/cFs.h"
#include "ucs/cString.h"

namespace support
{

/// The plainest device over the file implementation of a file system: every operation goes straight there.
class cImplDevice : public mio::cAbstractIOBlockDevice
{
public:
  cImplDevice(mio::cFs& fs, mucs::cString const& name) : mpImpl(fs.createFileImpl(*this, name)), miMeasured(0) {}
  /// A deep copy.
  cImplDevice(cImplDevice const& other) : mio::cAbstractIOBlockDevice(), mpImpl(other->deepCopy(*this)), miMeasured(0)
  {
  }
  cImplDevice& operator=(cImplDevice const&) = delete;

  mio::cAbstractFileImpl* operator->() const { return mpImpl.get(); }
  /// Gives the implementation up.
  void drop() { mpImpl.reinit(0); }
  /// How often the size was asked of the implementation: each seeks to the end.
  unsigned int numMeasured() const { return miMeasured; }

  mucs::cString name() const override { return mpImpl->name(); }
  void seek(long long offset, mio::SeekMode mode) override
  {
    miMeasured += mode == mio::SeekFromEnd;
    mpImpl->seek(offset, mode);
  }
  unsigned long long pos() const override { return mpImpl->pos(); }
  void truncate(unsigned int size) override { mpImpl->truncate(size); }
  void mmap() override { mpImpl->mmap(); }
  unsigned long long read(void* pTarget, unsigned long long size) override
  {
    return mpImpl->readBytes(static_cast<char*>(pTarget), size);
  }
  unsigned long long write(void const* pSource, unsigned long long size) override
  {
    return mpImpl->writeBytes(static_cast<char const*>(pSource), size);
  }

private:
  mstd::tAutoPtr<mio::cAbstractFileImpl> mpImpl;
  unsigned int miMeasured;
};

} // namespace support

#endif
