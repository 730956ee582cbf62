#ifndef GREETER_CGREETER_H
#define GREETER_CGREETER_H

#include "mcs/cAbstractComponent.h"
#include "mcs/cAbstractInterface.h"
#include "std/cAsciiString.h"

/// What the module offers to others.
class cGreeterInterface : public mcs::cAbstractInterface
{
public:
  cGreeterInterface();

  /// Slot "greet".
  mstd::cAsciiString greet(mstd::cAsciiString const& name);

  // Told to the side that searches for an interface; this one is found.
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}
};

/// The component of this module.
class cGreeter : public mcs::cAbstractComponent
{
public:
  /// The frame holds what the program passes on when it loads the module.
  cGreeter(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame);
};

#endif
