#include "pi/cAbstractClassLoader.h"

namespace mpi
{

cAbstractClassLoader::cAbstractClassLoader(mucs::cString const& libFileName)
    : miReferences(0), mLibFileName(libFileName)
{
}

cAbstractClassLoader::~cAbstractClassLoader() {}

} // namespace mpi
