#ifndef MORTISE_TESTS_UNLOAD_PROBE_H
#define MORTISE_TESTS_UNLOAD_PROBE_H

/// \file
/// What the test program, which knows nothing of the library, and the module that uses the library tell each other.

/// Is told what goes, while it goes.
typedef void (*tNote)(char const* event);

/// The module's only entry: builds the root, leaves things in it, and returns whether it was a fresh one.
typedef bool (*tBuildRoot)(tNote note);

#endif
