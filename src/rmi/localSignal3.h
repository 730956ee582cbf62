#ifndef MORTISE_RMI_LOCALSIGNAL3_H
#define MORTISE_RMI_LOCALSIGNAL3_H

#include "rmi/cAbstractSlotCall3.h"
#include "rmi/tLocalSignal.h"

namespace mrmi
{
/// Signal with three arguments: a member of the class that emits it, called like a function. `R` is always piVoid.
/// What slots may do while it runs is told at cLocalSignalBase.
template <typename R, typename A1, typename A2, typename A3>
class MORTISE_API localSignal3 : public tLocalSignal<cAbstractSlotCall3<R, A1, A2, A3>, A1, A2, A3>
{
};
} // namespace mrmi

#endif
