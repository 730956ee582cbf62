// A module with a variable of which the whole process has only one, so that it stays.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

inline unsigned int& mortiseTestUses()
{
  static unsigned int uses = 0;
  return uses;
}

namespace
{
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame) { ++mortiseTestUses(); }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
