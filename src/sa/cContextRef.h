#ifndef MORTISE_SA_CCONTEXTREF_H
#define MORTISE_SA_CCONTEXTREF_H

#include "pi/piTypes.h"

namespace msa
{

class cAbstractContextData;

/// Carries a context out of a function that returns a cContextRef by value.
struct MORTISE_API cContextRefRef
{
  cAbstractContextData* mpData;
};

/// Transfer handle on an open context: what newContext() and getContext() return, and a cContext takes.
///
/// Ownership: owns the context's data. Every way of handing the handle on takes the data out of it and leaves it empty.
/// Errors:    handing on an empty handle raises mstd::cBugException.
class MORTISE_API cContextRef
{
public:
  /// Takes `pData` over.
  explicit cContextRef(cAbstractContextData* pData) : mpData(pData) {}
  cContextRef(cContextRef& other) : mpData(other.unguardImpl()) {}
  cContextRef(cContextRefRef const& carrier) : mpData(carrier.mpData) {}
  cContextRef& operator=(cContextRef const&) = delete;
  /// Closes the context, without a commit, if it was not handed on.
  ~cContextRef();

  operator cContextRefRef() { return cContextRefRef{unguardImpl()}; }

  /// Gives the data up to the caller.
  cAbstractContextData* unguardImpl();

private:
  cAbstractContextData* mpData;
};

} // namespace msa

#endif
