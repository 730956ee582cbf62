#ifndef MORTISE_TESTS_SUPPORT_SURVIVE_H
#define MORTISE_TESTS_SUPPORT_SURVIVE_H

#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "std/cAbstractException.h"

namespace support
{

/// Runs what may refuse hostile input: an exception of the library is as good as a result, any other one is a finding.
template <class F>
void survive(F const& f)
{
  try
  {
    f();
  }
  catch (mstd::cAbstractException const&)
  {
    // refused
  }
}

/// Drops the debug output for its life: refused input writes many stack traces, and nobody reads them.
class cQuiet
{
public:
  cQuiet() : mpFormer(mpi::system().out.linked()) { mpi::system().out.link(&mNowhere); }
  cQuiet(cQuiet const&) = delete;
  cQuiet& operator=(cQuiet const&) = delete;
  ~cQuiet() { mpi::system().out.link(mpFormer); }

private:
  class cNowhere : public mpi::cAbstractOut
  {
  public:
    void printChar(char) override {}
  };

  mpi::cAbstractOut* mpFormer;
  cNowhere mNowhere;
};

} // namespace support

#endif
