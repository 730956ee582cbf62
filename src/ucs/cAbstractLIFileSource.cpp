#include "ucs/cAbstractLIFileSource.h"

namespace mucs
{
cAbstractLIFileSource::~cAbstractLIFileSource() = default;
} // namespace mucs
