#ifndef MORTISE_RMI_LOCALSIGNAL1_H
#define MORTISE_RMI_LOCALSIGNAL1_H

#include "rmi/cAbstractSlotCall1.h"
#include "rmi/tLocalSignal.h"

namespace mrmi
{
/// Signal with one argument: a member of the class that emits it, called like a function. `R` is always piVoid.
/// What slots may do while it runs is told at cLocalSignalBase.
template <typename R, typename A1>
class MORTISE_API localSignal1 : public tLocalSignal<cAbstractSlotCall1<R, A1>, A1>
{
};
} // namespace mrmi

#endif
