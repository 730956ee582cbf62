#include "mcs/cComponentDiagnosis.h"

#include "mcs/cAbstractComponent.h"
#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mcs/componentName.h"
#include "mcs/findRequirementCycle.h"

namespace mcs
{
namespace
{
bool isInManager(cAbstractComponent const& component)
{
  for (cManagedComponent* const managed : component.moduleMgr().components())
  {
    if (managed->component() == &component)
    {
      return true;
    }
  }
  return false;
}
} // namespace

cComponentDiagnosis::cComponentDiagnosis(cAbstractComponent const& component)
    : mAnnouncement(Announced), mRemoval(NotRequested)
{
  bool const inManager = isInManager(component);
  component.moduleMgr().componentsReferencedBy(component, mReferrers);
  examineAnnouncement(component, inManager);
  examineRemoval(component, inManager);
}

void cComponentDiagnosis::examineAnnouncement(cAbstractComponent const& component, bool bInManager)
{
  mstd::cAsciiString const name = componentName(component);
  if (component.announced())
  {
    mAnnouncement = Announced;
    mAnnouncementMessage << "$MTR$%component% is announced." << name;
  }
  else if (!bInManager)
  {
    mAnnouncement = NotAdded;
    mAnnouncementMessage << "$MTR$%component% is not announced, since it is in no manager." << name;
  }
  else if (component.toRemove())
  {
    mAnnouncement = RemovedUnannounced;
    mAnnouncementMessage << "$MTR$%component% will not be announced, since it is to be removed." << name;
  }
  else if (component.delayAnnouncement())
  {
    mAnnouncement = Delayed;
    mAnnouncementMessage << "$MTR$%component% is not announced, since it delays its announcement itself." << name;
  }
  else
  {
    mAnnouncement = AnnouncedNext;
    mAnnouncementMessage << "$MTR$%component% is announced in the next pass." << name;
  }
}

void cComponentDiagnosis::examineRemoval(cAbstractComponent const& component, bool bInManager)
{
  mstd::cAsciiString const name = componentName(component);
  if (!bInManager)
  {
    mRemoval = NotInManager;
    mRemovalMessage << "$MTR$%component% cannot be removed, since it is in no manager." << name;
  }
  else if (!component.toRemove())
  {
    mRemoval = NotRequested;
    mRemovalMessage << "$MTR$%component% stays, since nobody has asked for its removal." << name;
  }
  else if (mReferrers.empty())
  {
    mRemoval = RemovedNext;
    mRemovalMessage << "$MTR$%component% is removed in the next pass." << name;
  }
  else if (findRequirementCycle(component.moduleMgr(), component, mCycle))
  {
    mRemoval = WaitsForItself;
    mstd::tList<cAbstractComponent*> closed(mCycle);
    closed.append(mCycle.first());
    mRemovalMessage << "$MTR$%component% will never be removed, since components require each other in a circle: "
                       "%components%."
                    << name << componentNames(closed, " -> ");
  }
  else
  {
    mRemoval = WaitsForReferrers;
    mRemovalMessage << "$MTR$%component% is removed after those that require it: %components%." << name
                    << componentNames(mReferrers, ", ");
  }
}

} // namespace mcs
