#include "mcs/cComponentWalk.h"

#include "mcs/cManagedComponent.h"
#include "mcs/cModuleMgr.h"
#include "mcs/cModuleMgrImpl.h"

namespace mcs
{

cComponentWalk::cComponentWalk(cModuleMgr const& manager) : cComponentWalk(*manager.mpImpl) {}

cComponentWalk::cComponentWalk(cModuleMgrImpl& impl)
    : mImpl(impl), mPosition(impl.components().begin()), mGone(false), mpOuter(impl.mpWalk)
{
  impl.mpWalk = this;
}

cComponentWalk::~cComponentWalk()
{
  mImpl.mpWalk = mpOuter;
  if (mpOuter == nullptr)
  {
    mImpl.bury();
  }
}

bool cComponentWalk::isEnd() const
{
  return mPosition == mImpl.components().end();
}

void cComponentWalk::next()
{
  ++mPosition;
  mGone = false;
}

cAbstractComponent& cComponentWalk::component() const
{
  return *(*mPosition)->component();
}

void cComponentWalk::leaveMarked()
{
  while (mPosition.isMarked())
  {
    --mPosition;
    mGone = true;
  }
}

} // namespace mcs
