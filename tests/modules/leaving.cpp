// A module that leaves something in what it is given.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"
#include "sa/cReferenceFrame.h"
#include "sa/containerStream.h"
#include "std/cAsciiString.h"
#include "std/tVector.h"
#include "ucs/cLIMessage.h"
#include "ucs/cString.h"

namespace
{
class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame)
  {
    frame.readNext<mstd::cAsciiString>() = "left by a module";
    frame.readNext<mucs::cString>() = mucs::cString("left by a module, too");
    frame.readNext<mucs::cLIMessage>() << "$MTR$%what% left by a module" << 17;
    mstd::tVector<mstd::cAsciiString>& texts = frame.readNext<mstd::tVector<mstd::cAsciiString>>();
    for (unsigned int i = 0; i < 100; ++i)
    {
      texts.append(mstd::cAsciiString("one of many"));
    }
  }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
