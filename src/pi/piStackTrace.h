#ifndef MORTISE_PI_PISTACKTRACE_H
#define MORTISE_PI_PISTACKTRACE_H

#include "pi/piTypes.h"

namespace mstd
{
class cAsciiString;
} // namespace mstd

// Counts of all functions here are clamped to the range 1 to 128. None of them reports a failure of the
// platform: what it can't tell is left out. Function names are known for what its binary exports; a program shows its
// own names when it is linked with its symbols exported (-rdynamic).

/// Fills `frames` with the return addresses of the calling functions, innermost first. The array must hold
/// `count` elements after clamping; whatever lies behind the frames found is 0, the last element always.
/// Allocates nothing after the first call in the process.
MORTISE_API void piBackTrace(piAddress* frames, unsigned int count);

/// The stack of up to `count` levels as text: two line feeds, then one line for each level, innermost first, each
/// indented by two blanks more than the one before. Ends with the level of a function named exactly "main".
/// Raises std::bad_alloc.
MORTISE_API mstd::cAsciiString piStackTrace(unsigned int count);

/// Writes the name of level i to `out[i]`, in the order of piStackTrace(count). `out` must hold `count` strings,
/// and at least one. Strings without a level are left as they were.
MORTISE_API void piStackTrace(unsigned int count, mstd::cAsciiString* out);

/// Prints a trace of 128 levels to the standard error stream. A call from inside itself does nothing, so a fault
/// while dumping doesn't recur.
MORTISE_API void piStackDump();

/// Replaces `name` by the full signature of the function that contains `address`, and returns true; or by "0x" and
/// the address in base 16, and returns false. Raises std::bad_alloc, with `name` unchanged.
MORTISE_API bool piResolveAddress(piAddress address, mstd::cAsciiString& name);

#endif
