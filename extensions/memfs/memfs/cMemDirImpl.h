#ifndef MORTISE_MEMFS_CMEMDIRIMPL_H
#define MORTISE_MEMFS_CMEMDIRIMPL_H

#include "io/cAbstractDirImpl.h"
#include "io/cFs.h"
#include "memfs/cMemTree.h"

namespace mmem
{

/// The names in a directory of a memory file system, as they were when the listing began, sorted. Copies share them.
class cMemDirImpl : public mio::cAbstractDirImpl
{
public:
  cMemDirImpl(mio::cFs const& fs, mstd::tSharedObject<cMemTree> const& pTree, mucs::cString const& path, int flags);
  cMemDirImpl(cMemDirImpl const& other);
  ~cMemDirImpl() override;

  void setNext() override;
  mio::cDirInfo element() const override;
  bool isEnd() const override;
  mstd::tAutoPtr<mio::cAbstractDirImpl> createCopy() const override;

private:
  typedef mstd::tVector<mucs::cString> cNames;

  mio::cFs mFs;
  mstd::tSharedObject<cMemTree> mpTree;
  mucs::cString mPath; // ends in a slash
  mstd::tSharedObject<cNames> mpNames;
  unsigned int miIndex;
};

} // namespace mmem

#endif
