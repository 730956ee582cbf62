#ifndef MORTISE_SA_CCONTEXT_H
#define MORTISE_SA_CCONTEXT_H

#include "pi/piTypes.h"
#include "sa/cContextRef.h"

namespace msa
{

class cAbstractContextData;

/// Guard that a caller keeps on the stack while a context is open. Without a release() the end of its scope takes
/// everything back that was done in the context.
///
/// Guards of nested contexts must go in the reverse order of their making, as the scopes of a block do.
class MORTISE_API cContext
{
public:
  /// Takes the context over.
  cContext(cContextRef context) : mpData(context.unguardImpl()) {}
  /// Takes the context over and leaves `other` without one. An empty guard raises mstd::cBugException.
  cContext(cContext& other) : mpData(other.unguard()) {}
  ~cContext() { unset(); }

  /// Does nothing: an open context stays with the scope that opened it.
  cContext& operator=(cContext&) { return *this; }

  /// Commits the context; it is closed at the end of the guard. An empty guard raises mstd::cBugException.
  void release();
  /// Closes the context now, and leaves the guard empty.
  void unset();
  /// Gives the context's data up to the caller. An empty guard raises mstd::cBugException.
  cAbstractContextData* unguard();

private:
  cAbstractContextData* mpData;
};

} // namespace msa

#endif
