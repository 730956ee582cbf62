#ifndef MORTISE_STD_DEBUGLINES_H
#define MORTISE_STD_DEBUGLINES_H

// Debug output from places where a failure of the debug output itself must not matter: constructors of exceptions,
// throw functions, destructors. Each function writes one message under the lock of the output, and lets no exception
// out.

namespace mstd
{
/// `text` as one line, marked with `file` and `line`. `file` must be a literal.
void writeDebugLine(char const* file, unsigned int line, char const* text) noexcept;
/// Stack trace of up to 128 frames. A failure inside of it does not start another trace.
void writeDebugStackTrace(char const* file, unsigned int line) noexcept;
/// The exception that is being handled, which goes no further. To be called in a catch clause only.
void writeCaughtException(char const* file, unsigned int line) noexcept;
} // namespace mstd

#endif
