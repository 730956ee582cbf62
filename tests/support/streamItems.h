#ifndef MORTISE_TESTS_SUPPORT_STREAMITEMS_H
#define MORTISE_TESTS_SUPPORT_STREAMITEMS_H

#include "sa/cAbstractDeserializer.h"
#include "sa/cAbstractSerializer.h"

#include <cstdint>
#include <string>
#include <vector>

namespace support
{

/// One thing on a stream: a value, a label, or a context with what is in it.
struct cItem
{
  std::string kind;                 ///< as in tests/reference/stream_model.py: "piInt32", "cString8", "context", ...
  std::string bytes;                ///< of texts, blocks, labels and context names
  std::vector<unsigned int> points; ///< of strings of code points
  std::uint64_t number = 0;         ///< bits of a number
  bool named = false;               ///< of a context
  std::vector<cItem> items;         ///< of a context

  bool operator==(cItem const& other) const;
  bool operator!=(cItem const& other) const { return !(*this == other); }
};

typedef std::vector<cItem> tItems;

/// Writes one item. A "cString8" needs a binary serializer, whose mode it sets.
void write(cItem const& item, msa::cAbstractSerializer& serializer);
void write(tItems const& items, msa::cAbstractSerializer& serializer);
/// Reads an item of the same kind, and returns what it reads. A label must come right next.
cItem readLike(cItem const& item, msa::cAbstractDeserializer& deserializer);
tItems readLike(tItems const& items, msa::cAbstractDeserializer& deserializer);

/// The items of a listing, up to its end or an "end" that closes no context.
tItems parse(std::vector<std::string> const& lines, size_t& line);
std::string fromHex(std::string const& hex);
std::string toHex(std::string const& bytes);

/// What a serializer that writes to its own buffer has written.
std::string bytesOf(msa::cAbstractSerializer& serializer);

} // namespace support

#endif
