#include "rmi/cAbstractRMIFactory.h"

namespace mrmi
{
cAbstractRMIFactory::~cAbstractRMIFactory() {}
} // namespace mrmi
