// Two modules are made of this; each has a class of the same name, and a variable in it of its own.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"
#include "sa/cReferenceFrame.h"

class cSameName : public mcs::cAbstractPlugIn
{
public:
  explicit cSameName(msa::cReferenceFrame& frame);
  mstd::cAsciiString pluginTypeName() const override;

private:
  static unsigned int miMade;
};

unsigned int cSameName::miMade = 0;

cSameName::cSameName(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame)
{
  ++miMade;
  if (frame.canRead())
  {
    frame.readNext<unsigned int>() = miMade;
  }
}

mstd::cAsciiString cSameName::pluginTypeName() const
{
  return mstd::cAsciiString(MORTISE_TEST_TYPE_NAME);
}

MORTISE_MODULE(1, 0, cSameName);
