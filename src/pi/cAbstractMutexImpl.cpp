#include "pi/cAbstractMutexImpl.h"

namespace mpi
{

cAbstractMutexImpl::~cAbstractMutexImpl() = default;

} // namespace mpi
