// Runs a fuzz target over saved inputs, without a fuzzer: every file of the folders given, and the empty input.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int main(int argc, char** argv)
{
  unsigned int inputs = 0;
  LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(""), 0);
  for (int i = 1; i < argc; i++)
  {
    for (auto const& entry : std::filesystem::directory_iterator(argv[i]))
    {
      std::ifstream file(entry.path(), std::ios::binary);
      std::vector<char> const bytes((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
      LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(bytes.data()), bytes.size());
      inputs++;
    }
  }
  std::printf("%u inputs\n", inputs);
  return inputs == 0; // a target without seeds has lost its folder
}
