#ifndef MORTISE_MCS_COMPONENTNAME_H
#define MORTISE_MCS_COMPONENTNAME_H

#include "std/cAsciiString.h"
#include "std/tList.h"

namespace mcs
{
class cAbstractComponent;

/// How people are told which component is meant: its name, or its context if it has none, and its address in brackets,
/// "history (1:3)". "1:3" if there are only numbers. Context and address may be missing, too; then "unnamed".
MORTISE_API mstd::cAsciiString componentName(cAbstractComponent const& component);

/// The names of several components with `pSeparator` between them.
MORTISE_API mstd::cAsciiString componentNames(mstd::tList<cAbstractComponent*> const& components,
                                              char const* pSeparator);

} // namespace mcs

#endif
