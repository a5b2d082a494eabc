// SPDX-License-Identifier: MIT
// Telemetry files of every format damaged in the ways files are damaged: cut short anywhere,
// bytes flipped, runs overwritten, a ZEB item that is no number or does not fit, an empty file.
// The same seed gives the same files, so a failure can be repeated.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/file_format.h"
#include "sim/telemetry_writer.h"
#include "test_files.h"

namespace morvane::testing {

struct Mutant {
  FileFormat format;
  std::string path;
  std::string how;  // what was done to it, for a failure's message
};

// count damaged copies of a small simulated file of the format, written under folder.
inline std::vector<Mutant> write_mutants(const std::string& folder, FileFormat format, int count,
                                         uint32_t seed = 17) {
  const std::string tag(format_tag(format));
  const std::string original = folder + "/original." + tag;
  sim::TelemetryOptions options;
  options.format = format;
  options.frames = format == FileFormat::ZEB ? 300 : 400;
  sim::write_telemetry(original, options);
  const std::string bytes = read_file(original);
  std::mt19937 random(seed + static_cast<uint32_t>(format));
  const auto anywhere = [&](size_t size) { return std::uniform_int_distribution<size_t>(0, size - 1)(random); };
  const char* const kZebItems[] = {"99999999999", "-70000", "65536", "abc", "1e308", "-", "4.5e9", ""};

  std::vector<Mutant> mutants;
  for (int i = 0; i < count; ++i) {
    std::string damaged = bytes;
    std::string how;
    switch (i % 5) {
      case 0:
        damaged.resize(anywhere(damaged.size()));
        how = "cut to " + std::to_string(damaged.size()) + " bytes";
        break;
      case 1:
        for (int flips = 0; flips < 64; ++flips) damaged[anywhere(damaged.size())] ^= static_cast<char>(1 << (flips % 8));
        how = "64 bits flipped";
        break;
      case 2: {
        const size_t at = anywhere(damaged.size());
        for (size_t k = at; k < std::min(damaged.size(), at + 600); ++k) damaged[k] = '\xFF';
        how = "600 bytes of 0xFF from " + std::to_string(at);
        break;
      }
      case 3:
        if (format == FileFormat::ZEB) {
          for (int items = 0; items < 8; ++items) {
            size_t at = damaged.find(',', anywhere(damaged.size()));
            if (at == std::string::npos) continue;
            const size_t end = damaged.find_first_of(",\r\n", at + 1);
            if (end == std::string::npos) continue;
            damaged.replace(at + 1, end - at - 1, kZebItems[items % 8]);
          }
          how = "ZEB items out of range or no numbers";
        } else {
          for (size_t k = 0; k < damaged.size(); k += 97) damaged[k] = static_cast<char>(random());
          how = "every 97th byte random";
        }
        break;
      default:
        damaged = i % 2 ? std::string() : bytes.substr(0, 7);
        how = damaged.empty() ? "empty" : "7 bytes";
        break;
    }
    const std::string path = folder + "/mutant" + std::to_string(i) + "." + tag;
    write_file(path, damaged);
    mutants.push_back({format, path, tag + " " + how});
  }
  return mutants;
}

inline constexpr FileFormat kAllFormats[] = {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM,
                                             FileFormat::ZEB};

}  // namespace morvane::testing
