#include "mce/net++/cNetAbstractIPCapInfo.h"

namespace mce
{

cNetAbstractIPCapInfo::~cNetAbstractIPCapInfo() {}

} // namespace mce
