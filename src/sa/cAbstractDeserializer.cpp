#include "sa/cAbstractDeserializer.h"

namespace msa
{

cAbstractDeserializer::~cAbstractDeserializer() {}

void cAbstractDeserializer::load(unsigned short& iValue)
{
  unsigned int iWide = 0;
  load(iWide);
  iValue = static_cast<unsigned short>(iWide);
}

void cAbstractDeserializer::load(short& iValue)
{
  int iWide = 0;
  load(iWide);
  iValue = static_cast<short>(iWide);
}

} // namespace msa
