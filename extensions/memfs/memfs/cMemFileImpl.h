#ifndef MORTISE_MEMFS_CMEMFILEIMPL_H
#define MORTISE_MEMFS_CMEMFILEIMPL_H

#include "io/cAbstractFileImpl.h"
#include "memfs/cMemTree.h"

namespace mmem
{

/// A file of a memory file system. Copies share the position, as they do on the platform.
class cMemFileImpl : public mio::cAbstractFileImpl
{
public:
  cMemFileImpl(mio::cFs& fs, mio::cAbstractIOBlockDevice& device, mstd::tSharedObject<cMemTree> const& pTree,
               mucs::cString const& path);
  /// Closes, without a word to the device, which may be half gone.
  ~cMemFileImpl() override;

  mstd::tAutoPtr<mio::cAbstractFileImpl> deepCopy(mio::cAbstractIOBlockDevice& device) const override;
  mucs::cString name() const override;
  void remove() override;
  void setRemoveOnClose() override;
  void release() override;
  void rename(mucs::cString const& name) override;
  mstd::cDateTime lastModified() const override;
  void open(mucs::cString const& name, mio::OpenMode mode, mio::CreateMode create, mio::WriteMode write,
            bool followLinks) override;
  void close() override;
  void truncate(unsigned int size) override;
  unsigned long long readBytes(char* pData, unsigned long long count) override;
  unsigned long long writeBytes(char const* pData, unsigned long long count) override;
  void mmap() override;
  void seek(long long offset, mio::SeekMode mode) override;
  unsigned long long pos() const override;
  void flush() override;
  void munmap() override;

private:
  /// What all copies of an open file share.
  class cOpen
  {
  public:
    cOpen(mstd::tSharedObject<cMemTree> const& pTree, cMemNode::cHandle const& pNode);
    cOpen(cOpen const&) = delete;
    cOpen& operator=(cOpen const&) = delete;
    ~cOpen();

    mstd::tSharedObject<cMemTree> mpTree;
    cMemNode::cHandle mpNode;
    unsigned long long miPos;
    bool mIsReadable;
    bool mIsWriteable;
    bool mDoesAppend;
  };

  cOpen& opened(char const* operation) const;

  mstd::tSharedObject<cMemTree> mpTree;
  mstd::tSharedObject<cOpen> mpOpen; // empty when closed
  mucs::cString mName;
  bool mRemoveOnClose;
  bool mIsMapped;
};

} // namespace mmem

#endif
