#ifndef MORTISE_MCS_CCOMPONENTDIAGNOSIS_H
#define MORTISE_MCS_CCOMPONENTDIAGNOSIS_H

#include "std/tList.h"
#include "ucs/cLIMessage.h"

namespace mcs
{
class cAbstractComponent;

/// Why a component is not announced, and why it is not removed: as data for programs, as sentences for people.
///
/// It tells of the moment at which it is made, and changes nothing.
///
/// Validity: the components that it names must still be there when they are used.
/// Cost:     as findRequirementCycle() for a component that waits for its removal, else O(components).
class MORTISE_API cComponentDiagnosis
{
public:
  enum Announcement
  {
    Announced = 0,         ///< there is nothing to explain
    NotAdded = 1,          ///< it is in no manager
    AnnouncedNext = 2,     ///< the next pass announces it
    Delayed = 3,           ///< it delays its announcement itself, by cAbstractComponent::delayAnnouncement()
    RemovedUnannounced = 4 ///< it is to be removed, and never will be
  };

  enum Removal
  {
    NotRequested = 0,      ///< nobody wants it to go
    RemovedNext = 1,       ///< the next pass removes it
    WaitsForReferrers = 2, ///< others require it, and go first
    WaitsForItself = 3,    ///< it is in a circle of requirements, or required by one: it never goes
    NotInManager = 4       ///< it is in no manager, never was or no longer
  };

  explicit cComponentDiagnosis(cAbstractComponent const& component);

  Announcement announcement() const { return mAnnouncement; }
  Removal removal() const { return mRemoval; }
  /// The components that require it directly, in the order of the manager.
  mstd::tList<cAbstractComponent*> const& referrers() const { return mReferrers; }
  /// For WaitsForItself the circle, as findRequirementCycle() gives it.
  mstd::tList<cAbstractComponent*> const& cycle() const { return mCycle; }
  mucs::cLIMessage const& announcementMessage() const { return mAnnouncementMessage; }
  mucs::cLIMessage const& removalMessage() const { return mRemovalMessage; }

private:
  void examineAnnouncement(cAbstractComponent const& component, bool bInManager);
  void examineRemoval(cAbstractComponent const& component, bool bInManager);

  Announcement mAnnouncement;
  Removal mRemoval;
  mstd::tList<cAbstractComponent*> mReferrers;
  mstd::tList<cAbstractComponent*> mCycle;
  mucs::cLIMessage mAnnouncementMessage;
  mucs::cLIMessage mRemovalMessage;
};

} // namespace mcs

#endif
