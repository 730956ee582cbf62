#ifndef MORTISE_RMI_CABSTRACTSLOTCALL2_H
#define MORTISE_RMI_CABSTRACTSLOTCALL2_H

#include "rmi/tAbstractSlotCall.h"

namespace mrmi
{
/// Call of a slot with two arguments. A slot call of an application derives from this and implements call(), callRef()
/// and createConnectedInstance().
template <typename R, typename A1, typename A2>
class MORTISE_API cAbstractSlotCall2 : public tAbstractSlotCall<cAbstractSlotCall2<R, A1, A2>, R, A1, A2>
{
protected:
  cAbstractSlotCall2(cConnectable& object, cAbstractSignal* pSignal)
      : tAbstractSlotCall<cAbstractSlotCall2<R, A1, A2>, R, A1, A2>(object, pSignal)
  {
  }
};
} // namespace mrmi

#endif
