#include "pi/cSystemImpl.h"

namespace
{

unsigned int const defaultBase = 10;

} // namespace

cSystemImpl::cSystemImpl() : mNumberFormat(defaultBase), mFs(mEnDec), mLocale(0), mpApp(0) {}

cSystemImpl::~cSystemImpl()
{
  // The queue is a member that outlives the debug output, but the work in it may want to write when it goes.
  mWorkQueue.clear();
}
