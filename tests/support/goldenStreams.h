#ifndef MORTISE_TESTS_SUPPORT_GOLDENSTREAMS_H
#define MORTISE_TESTS_SUPPORT_GOLDENSTREAMS_H

#include "std/tArray.h"
#include "std/tAutoPtr.h"
#include "support/streamItems.h"

#include <string>
#include <vector>

namespace support
{

/// A stream that an independent program has written, and what is on it.
struct cGoldenStream
{
  std::string name;
  tItems items;
  std::string bytes;
};

/// The cases of tests/reference/streams.golden.
std::vector<cGoldenStream> const& goldenStreams();

/// Bytes as a deserializer takes them over.
mstd::tAutoPtr<mstd::tArray<char>> ownedArrayOf(std::string const& bytes);

} // namespace support

#endif
