#ifndef MORTISE_PI_PITYPES_H
#define MORTISE_PI_PITYPES_H

#include <stdint.h>

/// Marks what the shared library exports; everything else stays hidden inside it.
#if defined(MORTISE_STATIC)
#define MORTISE_API
#else
#define MORTISE_API __attribute__((visibility("default")))
#endif

// Lengths, indexes, ids and flags are plain `unsigned int` on every processor; a width is
// spelled out below only where it is part of a record or of the wire.
typedef bool piBool;
typedef signed char piChar;
typedef unsigned char piUChar;
typedef int16_t piInt16;
typedef uint16_t piUInt16;
typedef int32_t piInt32;
typedef uint32_t piUInt32;
typedef long long piInt64;
typedef unsigned long long piUInt64;
typedef double piDouble;

/// A code address: as wide as a pointer of the processor.
typedef uintptr_t piAddress;

/// The empty type that stands for "no value" in signals and argument lists. A slot whose
/// result type is `piVoid` is written as an ordinary `void` member function.
struct MORTISE_API piVoid
{
};

static_assert(sizeof(unsigned int) == 4, "lengths, ids and flags are 32 bits wide");
static_assert(sizeof(piInt64) == 8, "times and file offsets are 64 bits wide");

#endif
