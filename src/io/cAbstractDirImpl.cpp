#include "io/cAbstractDirImpl.h"

namespace mio
{

cAbstractDirImpl::cAbstractDirImpl(cFs const& fs, mucs::cString const& path)
{
  static_cast<void>(fs);
  static_cast<void>(path);
}

cAbstractDirImpl::~cAbstractDirImpl() {}

} // namespace mio
