#include "pi/cGlobalCaches.h"

namespace mpi
{

cGlobalCaches::cGlobalCaches() = default;

cGlobalCaches::~cGlobalCaches() = default;

void cGlobalCaches::createPathFixupHash()
{
  mpPathFixupHash.reinit(new tPathFixupHash());
}

void cGlobalCaches::clear()
{
  mpPathFixupHash.reinit(0);
}

} // namespace mpi
