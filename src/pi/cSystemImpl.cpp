#include "pi/cSystemImpl.h"

namespace
{

unsigned int const defaultBase = 10;

} // namespace

cSystemImpl::cSystemImpl() : mNumberFormat(defaultBase), mFs(mEnDec), mLocale(0), mpApp(0) {}

cSystemImpl::~cSystemImpl()
{
  // At the end of a process without a clean-up, too, the extensions go while everything that they may use is alive.
  mExtensions.clear();
  mCaches.clear();
  // The queue is a member that outlives the debug output, but the work in it may want to write when it goes.
  mWorkQueue.clear();
}
