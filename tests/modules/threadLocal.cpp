// A module that stays for as long as a thread lives that has used it.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

namespace
{
struct cGoing
{
  ~cGoing() { miGone = miUsed + 1; }
  unsigned int miUsed = 0;
  unsigned int volatile miGone = 0;
};

thread_local cGoing going;

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame) { ++going.miUsed; }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
