// A module whose objects cannot be made.

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractPlugIn.h"
#include "mcs/module.h"
#include "sa/cReferenceFrame.h"
#include "std/cRuntimeException.h"
#include "std/exceptionMessage.h"

#include <exception>

namespace
{
// Its code and its type go with the module.
class cOwnException : public std::exception
{
public:
  char const* what() const noexcept override { return "an exception of the module's own"; }
};

// Throws what the frame asks for: an exception of the framework, one of the module's own, or a number.
[[noreturn]] void fail(msa::cReferenceFrame& frame)
{
  switch (frame.readNext<unsigned int>())
  {
  case 0:
    throw mstd::cRuntimeException(mstd::exceptionMessage("$MTR$The module \"%name%\" is out of order!", "throwing"),
                                  "throwing.cpp", 27);
  case 1:
    throw cOwnException();
  default:
    throw 42;
  }
}

class cPlugIn : public mcs::cAbstractPlugIn
{
public:
  explicit cPlugIn(msa::cReferenceFrame& frame) : cAbstractPlugIn(frame) { fail(frame); }
};

class cComponent : public mcs::cAbstractComponent
{
public:
  cComponent(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame) : cAbstractComponent(manager, frame)
  {
    fail(frame);
  }
};
} // namespace

MORTISE_MODULE(1, 0, cPlugIn, cComponent);
