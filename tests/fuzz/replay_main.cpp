// SPDX-License-Identifier: MIT
// Runs a fuzz target's entry point over every file of the folders given (a folder that is not
// there counts as empty), as libFuzzer does when handed them: a crash, a sanitizer report or an
// unexpected exception fails the run. Used by the tests to replay seeds and past findings.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

int main(int argc, char** argv) {
  std::vector<std::filesystem::path> inputs;
  for (int i = 1; i < argc; ++i) {
    if (!std::filesystem::is_directory(argv[i])) continue;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(argv[i])) {
      if (entry.is_regular_file()) inputs.push_back(entry.path());
    }
  }
  std::sort(inputs.begin(), inputs.end());
  for (const auto& path : inputs) {
    std::ifstream in(path, std::ios::binary);
    const std::vector<uint8_t> bytes((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());
    std::cout << path.string() << '\n' << std::flush;  // the input a failure came from
    LLVMFuzzerTestOneInput(bytes.data(), bytes.size());
  }
  std::cout << inputs.size() << " inputs replayed\n";
  return inputs.empty() ? 1 : 0;
}
