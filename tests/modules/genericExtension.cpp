// A module with a core extension that reports itself, and no more.

#include "mce/cGenericPlugIn.h"
#include "mcs/module.h"
#include "std/cAsciiString.h"

namespace
{
class cPlugIn : public mce::cGenericPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cGenericPlugIn(frame, mstd::cAsciiString("generic")) {}
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
