#ifndef MORTISE_EXAMPLES_PLANT_SHARED_COFFER_H
#define MORTISE_EXAMPLES_PLANT_SHARED_COFFER_H

#include "mcs/cAbstractInterface.h"

/// What a module offers: an interface that has the slots and signals which its derived class publishes.
class cOffer : public mcs::cAbstractInterface
{
public:
  cOffer(char const* pName, char const* pDescription)
      : cAbstractInterface(mcs::cInterfaceDesc(mcs::cInterfaceDesc::Providing, pName, "mortise", 1, pDescription))
  {
  }

  /// The program is about to remove its modules.
  virtual void shortlyRemove() {}

  // A providing side is not told who uses it.
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}
};

#endif
