#ifndef MORTISE_MP_CBASICPROCESSDATA_H
#define MORTISE_MP_CBASICPROCESSDATA_H

#include "mp/cAbstractProcessData.h"

namespace mp
{

/// Process data without an owner's locker.
class MORTISE_API cBasicProcessData : public cAbstractProcessData
{
public:
  cBasicProcessData();
  ~cBasicProcessData() override;
};

} // namespace mp

#endif
