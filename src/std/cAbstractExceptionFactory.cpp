#include "std/cAbstractExceptionFactory.h"

#include "std/cAbstractException.h"

namespace mstd
{
cAbstractExceptionFactory::~cAbstractExceptionFactory() {}
} // namespace mstd
