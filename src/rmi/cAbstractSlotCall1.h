#ifndef MORTISE_RMI_CABSTRACTSLOTCALL1_H
#define MORTISE_RMI_CABSTRACTSLOTCALL1_H

#include "rmi/tAbstractSlotCall.h"

namespace mrmi
{
/// Call of a slot with one argument. A slot call of an application derives from this and implements call(), callRef()
/// and createConnectedInstance().
template <typename R, typename A1>
class MORTISE_API cAbstractSlotCall1 : public tAbstractSlotCall<cAbstractSlotCall1<R, A1>, R, A1>
{
protected:
  cAbstractSlotCall1(cConnectable& object, cAbstractSignal* pSignal)
      : tAbstractSlotCall<cAbstractSlotCall1<R, A1>, R, A1>(object, pSignal)
  {
  }
};
} // namespace mrmi

#endif
