#ifndef MORTISE_MCS_FINDREQUIREMENTCYCLE_H
#define MORTISE_MCS_FINDREQUIREMENTCYCLE_H

#include "std/tList.h"
#include "ucs/cLIMessage.h"

namespace mcs
{
class cAbstractComponent;
class cModuleMgr;

/// Looks for components that require each other in a circle, none of which could ever be removed: to ask before
/// cModuleMgr::removeAllComponentsNow(), which does not end then.
///
/// Replaces `cycle` by the members of one circle: each requires the next one, the last one the first; the first is the
/// one that was added first. Which circle is found, if there are several, depends only on the orders in which
/// components and requirements were added. False, and an empty list, if there is none.
///
/// Only components of this manager count, as only those hold others up; pointers to others are not followed.
/// O(n + r log n) for n components and r requirements, and memory for both; no recursion.
MORTISE_API bool findRequirementCycle(cModuleMgr const& manager, mstd::tList<cAbstractComponent*>& cycle);

/// The same for the circles that hold up the removal of `component`: it is a member, or required, over however many
/// others, by one.
MORTISE_API bool findRequirementCycle(cModuleMgr const& manager, cAbstractComponent const& component,
                                      mstd::tList<cAbstractComponent*>& cycle);

/// The circle in a sentence, or a sentence that there is none.
MORTISE_API mucs::cLIMessage requirementCycleMessage(mstd::tList<cAbstractComponent*> const& cycle);

} // namespace mcs

#endif
