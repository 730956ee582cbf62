#include "pi/cAbstractRunnableImpl.h"

namespace mpi
{

cAbstractRunnableImpl::~cAbstractRunnableImpl() = default;

} // namespace mpi
