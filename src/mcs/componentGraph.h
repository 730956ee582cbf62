#ifndef MORTISE_MCS_COMPONENTGRAPH_H
#define MORTISE_MCS_COMPONENTGRAPH_H

#include "std/cAsciiString.h"

namespace mcs
{
class cModuleMgr;

/// The components of a manager as a graph in the dot language of Graphviz, as mpi::cWqDebug::dot() gives the work of a
/// queue: `dot -Tsvg` draws it.
///
/// Components are boxes with their name, location and state: white before their announcement, blue behind it, red if
/// they are to be removed. Interfaces are ellipses at their component. A dependency is an arrow from its owner: to the
/// interface that it has matched, or dashed to a note with the name that is wanted. A requirement is a bold arrow.
/// Dependencies without an owner are not in the picture, since the manager does not know them.
///
/// Names are escaped, and may hold any character.
MORTISE_API mstd::cAsciiString componentGraph(cModuleMgr const& manager);

} // namespace mcs

#endif
