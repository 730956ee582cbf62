#include "pi/cLocalEventLoop.h"

#include "pi/cSystem.h"
#include "pi/cWorkQueue.h"

namespace mpi
{

cLocalEventLoop::cLocalEventLoop(cWorkQueue* pQueue) : mpQueue(pQueue != nullptr ? pQueue : &system().wq)
{
  ++mpQueue->miLocalLoops;
}

cLocalEventLoop::~cLocalEventLoop()
{
  --mpQueue->miLocalLoops;
}

unsigned int cLocalEventLoop::process()
{
  return mpQueue->process();
}

} // namespace mpi
