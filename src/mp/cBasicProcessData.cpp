#include "mp/cBasicProcessData.h"

namespace mp
{

cBasicProcessData::cBasicProcessData() : cAbstractProcessData(0) {}

cBasicProcessData::~cBasicProcessData() = default;

} // namespace mp
