#include "cGreeter.h"

#include "mcs/module.h"
#include "rmi/tPublishedSlot.h"

cGreeterInterface::cGreeterInterface()
    : cAbstractInterface(
          mcs::cInterfaceDesc(mcs::cInterfaceDesc::Providing, "greeter", "Your name", 1, "Greets by name"))
{
  mrmi::publishSlot(*this, "greet", &cGreeterInterface::greet, "name", "makes a greeting");
}

mstd::cAsciiString cGreeterInterface::greet(mstd::cAsciiString const& name)
{
  mstd::cAsciiString greeting("Hello, ");
  greeting += name;
  greeting += "!";
  return greeting;
}

cGreeter::cGreeter(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame) : cAbstractComponent(manager, frame)
{
  moduleInfo().setName("greeter");
  moduleInfo().setAuthor("Your name");
  moduleInfo().setDescription("Greets by name");
  addInterface(mstd::tAutoPtr<mcs::cAbstractInterface>(new cGreeterInterface));
}

MORTISE_MODULE(1, 0, cGreeter);
