#include "std/cAbstractTokenSpec.h"

namespace mstd
{

cAbstractTokenSpec::~cAbstractTokenSpec() = default;

} // namespace mstd
