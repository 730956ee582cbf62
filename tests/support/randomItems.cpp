#include "support/randomItems.h"

#include <cstdint>

namespace support
{

char const* const RandomNames[5] = {"a", "b", "ab", "", "other"};

tItems randomItems(std::mt19937& random, unsigned int depth)
{
  static char const* const kinds[] = {"piUChar",   "piChar",   "piUInt16", "piInt16",  "piUInt32", "piInt32",
                                      "piUInt64",  "piInt64",  "piBool",   "piDouble", "rawBytes", "cAsciiString",
                                      "cString32", "cString8", "label",    "label",    "context",  "context"};
  static unsigned int const bits[] = {8, 8, 16, 16, 32, 32, 64, 64, 1};
  tItems items;
  for (unsigned int left = random() % 8; left != 0; --left)
  {
    unsigned int const kind = random() % 18;
    cItem item;
    item.kind = kinds[kind];
    std::uint64_t const high = random(); // apart, as compilers differ in what they call first
    std::uint64_t const number = high << 32 | random();
    if (kind < 9)
    {
      item.number = bits[kind] == 64 ? number : number & ((std::uint64_t(1) << bits[kind]) - 1);
      bool const isSigned = item.kind[2] == 'I' || item.kind == "piChar";
      if (isSigned && bits[kind] < 64 && (item.number >> (bits[kind] - 1)) != 0)
      {
        item.number |= ~std::uint64_t(0) << bits[kind];
      }
    }
    else if (item.kind == "piDouble")
    {
      item.number = number & ~(std::uint64_t(1) << 62);
    }
    else if (item.kind == "label")
    {
      item.bytes = RandomNames[random() % 4];
    }
    else if (item.kind == "context")
    {
      if (depth == 0)
      {
        continue;
      }
      item.named = random() % 2 != 0;
      item.bytes = item.named ? RandomNames[random() % 4] : "";
      item.items = randomItems(random, depth - 1);
    }
    else if (item.kind[0] == 'c' && item.kind[1] == 'S')
    {
      for (unsigned int i = random() % 6; i != 0; --i)
      {
        item.points.push_back(1 + random() % 200000);
      }
      for (unsigned int& point : item.points)
      {
        point = point < 200000 ? point : 1;
      }
    }
    else
    {
      for (unsigned int i = random() % 12; i != 0; --i)
      {
        item.bytes += static_cast<char>(random());
      }
    }
    items.push_back(item);
  }
  return items;
}

} // namespace support
