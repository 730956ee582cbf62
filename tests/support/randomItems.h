#ifndef MORTISE_TESTS_SUPPORT_RANDOMITEMS_H
#define MORTISE_TESTS_SUPPORT_RANDOMITEMS_H

#include "support/streamItems.h"

#include <random>

namespace support
{

/// Names of the labels and contexts of randomItems(), and one that it never takes, at the end.
extern char const* const RandomNames[5];

/// Contexts as deep as `depth` with values of all kinds and labels between them. The same on every processor.
tItems randomItems(std::mt19937& random, unsigned int depth);

} // namespace support

#endif
