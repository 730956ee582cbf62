#ifndef MORTISE_EXAMPLES_PLANT_SHARED_COFFER_H
#define MORTISE_EXAMPLES_PLANT_SHARED_COFFER_H

#include "mcs/cAbstractInterface.h"

/// What a module offers: an interface that has the slots and signals which its derived class publishes.
class cOffer : public mcs::cAbstractInterface
{
public:
  /// The module `pModule`, whose interface has the name with "plant." in front of it.
  cOffer(char const* pModule, char const* pDescription)
      : cAbstractInterface(mcs::cInterfaceDesc(mcs::cInterfaceDesc::Providing,
                                               mstd::cAsciiString("plant.") + mstd::cAsciiString(pModule), "mortise", 1,
                                               pDescription)),
        mModule(pModule)
  {
  }

  mstd::cAsciiString const& module() const { return mModule; }

  /// The program is about to remove its modules.
  virtual void shortlyRemove() {}

  // A providing side is not told who uses it.
  void interfaceMatched() override {}
  void interfaceUnmatched() override {}

private:
  mstd::cAsciiString mModule;
};

#endif
