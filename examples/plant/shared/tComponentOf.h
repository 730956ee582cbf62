#ifndef MORTISE_EXAMPLES_PLANT_SHARED_TCOMPONENTOF_H
#define MORTISE_EXAMPLES_PLANT_SHARED_TCOMPONENTOF_H

#include "cSettings.h"
#include "mcs/cAbstractComponent.h"

/// The component that offers one interface, an `Offer`, which is made from its component and the settings.
///
/// The interface is a member and only lent to the component: its dependencies must go before the component does, and
/// what a component owns as an interface goes last of all.
template <class Offer>
class tComponentOf : public mcs::cAbstractComponent
{
public:
  tComponentOf(mcs::cModuleMgr& manager, msa::cReferenceFrame& frame)
      : cAbstractComponent(manager, frame), mOffer(*this, cSettings(frame))
  {
    moduleInfo().setName(mOffer.module());
    moduleInfo().setAuthor(mOffer.desc().author());
    moduleInfo().setDescription(mOffer.desc().description());
    addInterface(mOffer);
  }

  void notifyShortlyRemove() override { mOffer.shortlyRemove(); }

private:
  Offer mOffer;
};

#endif
