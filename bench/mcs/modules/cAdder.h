#ifndef MORTISE_BENCH_MCS_MODULES_CADDER_H
#define MORTISE_BENCH_MCS_MODULES_CADDER_H

/// What every module of the benchmark offers, in the way of its framework.
class cAdder
{
public:
  virtual ~cAdder() {}
  virtual unsigned int add(unsigned int iValue) = 0;
};

#endif
