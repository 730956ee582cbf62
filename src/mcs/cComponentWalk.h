#ifndef MORTISE_MCS_CCOMPONENTWALK_H
#define MORTISE_MCS_CCOMPONENTWALK_H

#include "std/tPtrList.h"

namespace mcs
{
class cAbstractComponent;
class cManagedComponent;
class cModuleMgr;
class cModuleMgrImpl;

/// A walk along the components of a manager that calls them, or whose callers' slots do anything they like.
///
/// Components may be added meanwhile, which the walk then reaches, and the list may be swept by a call from inside. The
/// walk goes on behind the component that stood in front of a swept one then, and what was swept lives until the
/// outermost walk ends, so that whoever is called with a component can use it to the end of his call.
///
/// Walks of one manager end in the reverse order of their beginning, as scopes do.
class cComponentWalk
{
public:
  /// Begins at the first component.
  explicit cComponentWalk(cModuleMgr const& manager);
  explicit cComponentWalk(cModuleMgrImpl& impl);
  cComponentWalk(cComponentWalk const&) = delete;
  cComponentWalk& operator=(cComponentWalk const&) = delete;
  /// Destroys what was swept meanwhile, unless there is a walk around this one.
  ~cComponentWalk();

  bool isEnd() const;
  void next();

  /// The component at which the walk stands; never in a walk that stands at its end or at a swept component.
  cAbstractComponent& component() const;
  /// True if the component is swept, and possibly destroyed, if it is not owned. next() leads on.
  bool isGone() const { return mGone; }
  /// True if its entry is marked, and goes with the next sweep.
  bool isMarked() const { return mPosition.isMarked(); }
  void eraseLater() { mPosition.eraseLater(); }

private:
  friend class cModuleMgrImpl;

  void leaveMarked();

  cModuleMgrImpl& mImpl;
  mstd::tPtrList<cManagedComponent>::iterator mPosition;
  bool mGone;
  cComponentWalk* mpOuter;
};

} // namespace mcs

#endif
