#include "sa/cAbstractSerializer.h"

namespace msa
{

cAbstractSerializer::~cAbstractSerializer() {}

void cAbstractSerializer::store(unsigned short iValue)
{
  store(static_cast<unsigned int>(iValue));
}

void cAbstractSerializer::store(short iValue)
{
  store(static_cast<int>(iValue));
}

} // namespace msa
