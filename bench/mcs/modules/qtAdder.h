#ifndef MORTISE_BENCH_MCS_MODULES_QTADDER_H
#define MORTISE_BENCH_MCS_MODULES_QTADDER_H

#include "cAdder.h"

#include <QtCore/QtPlugin>

#define MORTISE_BENCH_ADDER "mortise.bench.cAdder"
Q_DECLARE_INTERFACE(cAdder, MORTISE_BENCH_ADDER)

#endif
