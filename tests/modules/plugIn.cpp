// A module with a plug-in alone.

#include "cLife.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

namespace
{
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame), mLife(frame, "plug-in")
  {
    moduleInfo().setName(mstd::cAsciiString("plug-in"));
  }

private:
  cLife mLife;
};
} // namespace

MORTISE_MODULE(3, 4, cPlugIn);
