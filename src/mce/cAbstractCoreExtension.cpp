#include "mce/cAbstractCoreExtension.h"

namespace mce
{

cAbstractCoreExtension::~cAbstractCoreExtension() {}

void cAbstractCoreExtension::provides(mstd::tVector<mstd::cAsciiString>&) const {}

} // namespace mce
