#ifndef MORTISE_EXAMPLES_PLANT_CMODULE_H
#define MORTISE_EXAMPLES_PLANT_CMODULE_H

#include "mcs/cComponentAddr.h"
#include "rmi/cConnectable.h"
#include "rmi/localSignal1.h"
#include "std/cAsciiString.h"
#include "std/tPtrVector.h"
#include "ucs/cString.h"

namespace mcs
{
class cAbstractComponent;
class cInterfaceDep;
class cModuleMgr;
} // namespace mcs

namespace mio
{
class cSearchPaths;
}

namespace msa
{
class cReferenceFrame;
}

namespace mucs
{
class cLIMessage;
}

/// One module of the program: found, loaded, and watched while it is there. Of what is in it the program knows nothing.
class cModule : public mrmi::cConnectable
{
public:
  /// `manager` must outlive this object.
  cModule(mcs::cModuleMgr& manager, char const* pName);
  ~cModule() override;

  /// What happens to the module, for people.
  mrmi::localSignal1<piVoid, mucs::cLIMessage const&> sigTold;

  /// Loads the library, makes its component with `frame` and adds it to the manager. What fails raises an exception
  /// and leaves nothing loaded.
  void start(mio::cSearchPaths const& paths, msa::cReferenceFrame& frame);
  /// Asks for the removal of the component.
  void remove();

  bool isThere() const { return mAddress.valid(); }
  mstd::cAsciiString const& name() const { return mName; }
  mcs::cComponentAddr const& address() const { return mAddress; }

private:
  /// Tells of the matches of one dependency.
  class cDepWatch;

  void sltRemoved(mcs::cAbstractComponent& component);
  void tellMatched(mcs::cInterfaceDep const& dep, mcs::cComponentAddr const& provider);
  void tellLost(mcs::cInterfaceDep const& dep);

  mcs::cModuleMgr& mManager;
  mstd::cAsciiString const mName;
  mcs::cComponentAddr mAddress; // not valid while there is no component
  mstd::tPtrVector<cDepWatch> mWatches;
};

#endif
