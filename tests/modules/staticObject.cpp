// A module with a static object that uses the framework while the library is loaded and while it goes.

#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"
#include "pi/cAbstractOut.h"
#include "pi/cSystem.h"
#include "std/tVector.h"
#include "ucs/cString.h"

namespace
{
void say(char const* pText)
{
  mpi::system().out.debugMessage("modules/staticObject", 1) << pText << "\n" << mpi::cAbstractOut::clearDebugMessage();
}

class cStaticObject
{
public:
  cStaticObject()
  {
    mTexts.append(mucs::cString("held until the library goes"));
    say("static object made");
  }
  ~cStaticObject() { say(mTexts.length() == 1 ? "static object gone" : "static object damaged"); }

private:
  mstd::tVector<mucs::cString> mTexts;
} staticObject;

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame) {}
  ~cPlugIn() override { say("plug-in gone"); }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn);
