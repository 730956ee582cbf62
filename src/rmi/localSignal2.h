#ifndef MORTISE_RMI_LOCALSIGNAL2_H
#define MORTISE_RMI_LOCALSIGNAL2_H

#include "rmi/cAbstractSlotCall2.h"
#include "rmi/tLocalSignal.h"

namespace mrmi
{
/// Signal with two arguments: a member of the class that emits it, called like a function. `R` is always piVoid.
/// What slots may do while it runs is told at cLocalSignalBase.
template <typename R, typename A1, typename A2>
class MORTISE_API localSignal2 : public tLocalSignal<cAbstractSlotCall2<R, A1, A2>, A1, A2>
{
};
} // namespace mrmi

#endif
