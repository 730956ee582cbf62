#ifndef MORTISE_EXAMPLES_PLANT_CQUIET_H
#define MORTISE_EXAMPLES_PLANT_CQUIET_H

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"

/// While it lives, what the library writes to the debug output is dropped.
class cQuiet : public mpi::cAbstractOut
{
public:
  cQuiet() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(this); }
  ~cQuiet() override { mpi::system().out.link(mpFormer); }

  void printChar(char) override {}

private:
  mpi::cAbstractOut* mpFormer;
};

#endif
