#include "pi/cDebugLevel.h"

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"

cDebugLevel::cDebugLevel()
{
  mpi::system().out << mpi::cAbstractOut::indent();
}

cDebugLevel::~cDebugLevel()
{
  mpi::system().out << mpi::cAbstractOut::unindent();
}
