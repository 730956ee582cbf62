// A module with a component alone.

#include "cLife.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/module.h"

namespace
{
class cComponent : public mcs::cAbstractComponent
{
public:
  cComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame)
      : cAbstractComponent(manager, frame), mLife(frame, "component")
  {
    moduleInfo().setName(mstd::cAsciiString("component"));
  }

private:
  cLife mLife;
};
} // namespace

MORTISE_MODULE(1, 2, cComponent);
