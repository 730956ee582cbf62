#include "support/goldenStreams.h"

#include <fstream>

namespace support
{

std::vector<cGoldenStream> const& goldenStreams()
{
  static std::vector<cGoldenStream> const all = [] {
    std::ifstream file(std::string(MORTISE_TEST_DATA_DIR) + "/streams.golden");
    std::vector<cGoldenStream> result;
    std::vector<std::string> listing;
    for (std::string line; std::getline(file, line);)
    {
      if (line.compare(0, 5, "case ") == 0)
      {
        result.push_back({line.substr(5), {}, ""});
        listing.clear();
      }
      else if (line.compare(0, 6, "bytes ") == 0)
      {
        size_t at = 0;
        result.back().items = parse(listing, at);
        result.back().bytes = fromHex(line.substr(6));
      }
      else
      {
        listing.push_back(line);
      }
    }
    return result;
  }();
  return all;
}

mstd::tAutoPtr<mstd::tArray<char>> ownedArrayOf(std::string const& bytes)
{
  mstd::tAutoPtr<mstd::tArray<char>> array(new mstd::tArray<char>);
  array->append(bytes.data(), static_cast<unsigned int>(bytes.size()));
  return array;
}

} // namespace support
