#include "cAdder.h"

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"

namespace
{
class cModule : public mcs::cAbstractPlugIn, public cAdder
{
public:
  explicit cModule(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame), miSum(0) {}
  unsigned int add(unsigned int iValue) override { return miSum += iValue; }

private:
  unsigned int miSum;
};
} // namespace

MORTISE_MODULE(1, 0, cModule);
