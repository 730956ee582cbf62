// A module with a component and a plug-in.

#include "cLife.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

namespace
{
template <unsigned int iNumber>
class cComponent : public mcs::cAbstractComponent
{
public:
  cComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame)
      : cAbstractComponent(manager, frame), mLife(frame, "component")
  {
  }

private:
  cLife mLife;
};

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame), mLife(frame, "plug-in") {}

private:
  cLife mLife;
};
} // namespace

MORTISE_MODULE(5, 4294967295, cPlugIn, cComponent<5>);
