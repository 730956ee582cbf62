/// The dialect of paths, as work on plain strings: drive letters, the split of path and name, the normal form.
///
/// A path in its own form uses `/` alone, ends in `/` and holds no drive letter. Every string is a path: nothing here
/// fails but for std::bad_alloc, which leaves the target as it was.
#ifndef MORTISE_IO_PATHFIXUP_H
#define MORTISE_IO_PATHFIXUP_H

#include "pi/cGlobalCaches.h"
#include "pi/piTypes.h"
#include "ucs/cString.h"

namespace mio
{

/// Table from the text of a path to its normal form.
typedef mpi::cGlobalCaches::tPathFixupHash tPathHash;

/// The letter, in upper case, of a text that begins with an ASCII letter and `:`; otherwise 0.
MORTISE_API char driveLetter(mucs::cString const& sPath);

/// Whether a text has neither a drive letter nor `/` as its first character. A leading `\` makes it relative.
MORTISE_API bool isRelative(mucs::cString const& sPath);

/// Number of leading characters up to and including the last separator: `/`, `\`, or the colon of a drive letter. The
/// whole length if what follows it is "." or "..", since such a text names a directory.
MORTISE_API unsigned int pathComponentLength(mucs::cString const& sPath);

/// Replaces `sOut` by the path component of `sIn`, with a `/` behind it unless it ends in `/` or a backslash; empty
/// without a path component. Both may be the same string.
MORTISE_API void storePathComponent(mucs::cString const& sIn, mucs::cString& sOut);

/// Replaces `sOut` by `sIn` in the form of a directory path, and returns the drive letter, which `sOut` does not hold:
/// each backslash becomes `/`, an empty text ".", and a missing `/` is put at the end. Both may be the same string.
///
/// With `doFixup` fixupPath() follows, and 0 is returned if the path climbs above its own start.
MORTISE_API char setPath(mucs::cString const& sIn, mucs::cString& sOut, bool doFixup, tPathHash* pCache);

/// Brings a path to its normal form, in place: without repeated slashes, without "./" behind its start, and without
/// "../" but for those at the start of a relative path.
///
/// What stands behind a climb above the root of an absolute path is lost with it. A single leading component that "../"
/// takes away leaves nothing; if nothing is left at all, the path becomes "./". The keys "../", "./" and `/` are found
/// wherever they stand, also at the end of a name: `a./b/` becomes `ab/`.
///
/// `isEscaped` tells whether a relative path climbs above its own start; a drive letter means nothing then. A path that
/// the process's table knows is taken from there, and `isEscaped` is false: the table keeps the text alone.
///
/// The result is stored under the original text in `pCache`, unless that is null, and in the process's table if there
/// is one; only the latter is read.
///
/// Cost: linear in the length, without an allocation where nothing is stored; one look-up if the process's table knows
///       the path.
MORTISE_API void fixupPath(mucs::cString& sPath, bool& isEscaped, tPathHash* pCache);

} // namespace mio

#endif
