#include "io/cAbstractFsImpl.h"

#include "io/cIOExceptions.h"
#include "ucs/cAbstractEnDec.h"

namespace mio
{

cAbstractFsImpl::cAbstractFsImpl(cFs& fs) : mpFs(&fs), mStandIn(fs, cFs::cNoImpl()), mpNext(0), mppLink(0)
{
  join(fs);
}

cAbstractFsImpl::~cAbstractFsImpl()
{
  leave();
}

void cAbstractFsImpl::join(cFs& fs) noexcept
{
  mpNext = fs.mpFirst;
  mppLink = &fs.mpFirst;
  if (mpNext != 0)
  {
    mpNext->mppLink = &mpNext;
  }
  fs.mpFirst = this;
}

void cAbstractFsImpl::leave() noexcept
{
  if (mppLink == 0)
  {
    return;
  }
  *mppLink = mpNext;
  if (mpNext != 0)
  {
    mpNext->mppLink = mppLink;
  }
  mpNext = 0;
  mppLink = 0;
  mpFs = &mStandIn;
}

bool cAbstractFsImpl::isUsed() const
{
  return true;
}

bool cAbstractFsImpl::matches(mucs::cString& path, Operation operation)
{
  static_cast<void>(path);
  static_cast<void>(operation);
  return true;
}

void cAbstractFsImpl::bind(mstd::tAutoPtr<cAbstractFsImpl> pImpl)
{
  static_cast<void>(pImpl);
  cIOExceptions::throwBindNotSupported();
}

void cAbstractFsImpl::unbind(mucs::cString const& path)
{
  static_cast<void>(path);
  cIOExceptions::throwBindNotSupported();
}

} // namespace mio
