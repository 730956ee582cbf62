#include "sa/cAbstractTypeReference.h"

namespace msa
{

cAbstractTypeReference::~cAbstractTypeReference() {}

} // namespace msa
