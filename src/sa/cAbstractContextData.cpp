#include "sa/cAbstractContextData.h"

namespace msa
{

cAbstractContextData::~cAbstractContextData() {}

} // namespace msa
