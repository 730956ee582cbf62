#ifndef MORTISE_SA_CABSTRACTCONTEXTDATA_H
#define MORTISE_SA_CABSTRACTCONTEXTDATA_H

#include "pi/piTypes.h"

namespace msa
{

/// What a format keeps of one open context. Destroying it closes the context: with all that is in it after a
/// release(), as if it had never been opened without one.
class MORTISE_API cAbstractContextData
{
public:
  cAbstractContextData() {}
  cAbstractContextData(cAbstractContextData const&) = delete;
  cAbstractContextData& operator=(cAbstractContextData const&) = delete;
  virtual ~cAbstractContextData();

  /// Commits the context.
  virtual void release() = 0;
};

} // namespace msa

#endif
