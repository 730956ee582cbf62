#include "io/cAbstractFileImpl.h"

#include "io/cIOExceptions.h"
#include "std/cSTDExceptions.h"

#include <utility>

namespace mio
{

cAbstractFileImpl::cAbstractFileImpl(cFs& fs, cAbstractIOBlockDevice& device) : mrFs(fs), mpBD(&device) {}

cAbstractFileImpl::cAbstractFileImpl(cAbstractFileImpl const& other) : mrFs(other.mrFs), mpBD(0)
{
  cIOExceptions::throwFileImplCopied();
}

cAbstractFileImpl::~cAbstractFileImpl() {}

cAbstractIOBlockDevice& cAbstractFileImpl::bd() const
{
  if (mpBD == 0)
  {
    cSTDExceptions::throwAssertionFailed("mpBD != 0", "io/cAbstractFileImpl", __LINE__);
  }
  return *mpBD;
}

void cAbstractFileImpl::swapBD(cAbstractFileImpl& other)
{
  std::swap(mpBD, other.mpBD);
}

} // namespace mio
