#ifndef MORTISE_MEMFS_CMEMFILEINFOIMPL_H
#define MORTISE_MEMFS_CMEMFILEINFOIMPL_H

#include "io/cAbstractFileInfoImpl.h"
#include "memfs/cMemTree.h"

namespace mmem
{

/// What stands at a path of a memory file system.
class cMemFileInfoImpl : public mio::cAbstractFileInfoImpl
{
public:
  cMemFileInfoImpl(mio::cFs const& fs, mstd::tSharedObject<cMemTree> const& pTree, mucs::cString const& path);
  ~cMemFileInfoImpl() override;

  mstd::cDateTime timeStamp(mio::cFileInfoFlags::TimeStamp stamp, bool followLinks) const override;
  mucs::cString filePath() const override;
  mucs::cString readLink() const override;
  unsigned long long size(bool followLinks) const override;
  mio::cFileInfoFlags::Type type(bool followLinks) const override;
  mio::cPermissions readPermissions(bool followLinks) const override;

private:
  cMemNode::cHandle look(bool followLinks) const;

  mstd::tSharedObject<cMemTree> mpTree;
  mucs::cString mPath;
};

} // namespace mmem

#endif
