#include "io/cAbstractFileInfoImpl.h"

namespace mio
{

cAbstractFileInfoImpl::cAbstractFileInfoImpl(cFs const& fs)
{
  static_cast<void>(fs);
}

cAbstractFileInfoImpl::~cAbstractFileInfoImpl() {}

} // namespace mio
