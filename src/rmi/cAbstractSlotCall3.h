#ifndef MORTISE_RMI_CABSTRACTSLOTCALL3_H
#define MORTISE_RMI_CABSTRACTSLOTCALL3_H

#include "rmi/tAbstractSlotCall.h"

namespace mrmi
{
/// Call of a slot with three arguments. A slot call of an application derives from this and implements call(),
/// callRef() and createConnectedInstance().
template <typename R, typename A1, typename A2, typename A3>
class MORTISE_API cAbstractSlotCall3 : public tAbstractSlotCall<cAbstractSlotCall3<R, A1, A2, A3>, R, A1, A2, A3>
{
protected:
  cAbstractSlotCall3(cConnectable& object, cAbstractSignal* pSignal)
      : tAbstractSlotCall<cAbstractSlotCall3<R, A1, A2, A3>, R, A1, A2, A3>(object, pSignal)
  {
  }
};
} // namespace mrmi

#endif
