// A module that calls what is not its own.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

extern "C" unsigned int mortiseTestHelp();

namespace
{
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame)
  {
    moduleInfo().setName(mstd::cAsciiString(mortiseTestHelp() == 1 ? "helped" : "not helped"));
  }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
