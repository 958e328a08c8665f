// Plays inputs once each, in the order of their names, through the entry function that a fuzzer
// calls: so the inputs once found are tested on every target, with any compiler.

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> InputsIn(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    if (entry.is_regular_file()) inputs.push_back(entry.path());
  }
  std::sort(inputs.begin(), inputs.end());
  return inputs;
}

void Play(const std::filesystem::path& input) {
  // At once: the last name printed is the one that fails.
  std::cout << input.filename().string() << std::endl;
  std::ifstream file(input, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(file), {}};
  const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
  LLVMFuzzerTestOneInput(data.data(), data.size());
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 2) {
    std::cerr << "usage: " << arguments[0] << " FOLDER\n";
    return 2;
  }
  const std::vector<std::filesystem::path> inputs = InputsIn(arguments[1]);
  for (const auto& input : inputs) Play(input);
  std::cout << inputs.size() << " inputs\n";
  return inputs.empty() ? 1 : 0;  // an empty folder tests nothing
}
