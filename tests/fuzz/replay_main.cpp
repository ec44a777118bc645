// Replays the saved corpus of one harness through it, in an ordinary build: every input that
// once mattered to a fuzzer is run again by every test run, so a fault found once stays fixed.
//   halvard-fuzz-replay NAME FOLDER

#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#define HALVARD_FUZZ_TARGET(name) extern "C" int FuzzOne_##name(const uint8_t*, size_t);
#include "fuzz_targets.inc"
#undef HALVARD_FUZZ_TARGET

int main(int argc, char** argv) {
  using Harness = int (*)(const uint8_t*, size_t);
  const std::map<std::string, Harness> harnesses = {
#define HALVARD_FUZZ_TARGET(name) {#name, FuzzOne_##name},
#include "fuzz_targets.inc"
#undef HALVARD_FUZZ_TARGET
  };
  if (argc != 3 || !harnesses.count(argv[1])) {
    std::fprintf(stderr, "usage: %s NAME FOLDER (NAME: a harness of tests/fuzz)\n", argv[0]);
    return 2;
  }
  std::vector<std::filesystem::path> inputs;
  for (const auto& entry : std::filesystem::directory_iterator(argv[2])) {
    if (entry.is_regular_file()) inputs.push_back(entry.path());
  }
  if (inputs.empty()) {
    std::fprintf(stderr, "%s: no saved inputs\n", argv[2]);
    return 1;
  }
  for (const auto& input : inputs) {
    std::ifstream in(input, std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(in), {}};
    harnesses.at(argv[1])(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size());
  }
  std::printf("%zu inputs of %s replayed\n", inputs.size(), argv[1]);
  return 0;
}
