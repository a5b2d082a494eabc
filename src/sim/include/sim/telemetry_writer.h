// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "core/file_format.h"
#include "core/packet_entry.h"

namespace morvane::sim {

// What to write. A seed always gives the same file.
struct TelemetryOptions {
  FileFormat format = FileFormat::CSS;
  // Neither frames nor size: one cycle of the instrument (about 600 frames, 1560 ZEB records), so
  // that every kind of packet and all four short form tests are in and the file ends in the quiet
  // of standby rather than inside a test or a spectrum.
  int64_t frames = 0;  // frames (ZEB: records) to write
  uint64_t size = 0;   // binary: as many whole frames as fit; ZEB: records until this many bytes
  uint64_t seed = 1;
  bool byte_reverse = true;  // words low byte first, the order the workstation starts up reading
  int spectra_kept = 16;     // isotope spectra whose bins the summary keeps
};

// The lander time of the simulated instrument's first packet, and the length of its cycle.
inline constexpr int32_t kFirstLanderTime = 61200000;
inline constexpr int32_t kCycleSeconds = 3 * 3600;

// A short form test as written: its first packet.
struct WrittenTest {
  int scripted = 0;  // index into scripted_tests()
  int32_t sequence_count = 0;
  int32_t lander_time = 0;
  int32_t frame = 0;  // frame (ZEB: record) the first packet is in
};

// An isotope spectrum as written: where its first sub-packet is and the bin words sent.
struct WrittenSpectrum {
  int32_t sequence_count = 0;
  int32_t lander_time = 0;
  int32_t frame = 0;
  int sub_packets = 0;
  int first_bin = 0;
  std::vector<uint16_t> bin_words;  // bins first_bin, first_bin + 1, ... as coded in the packets
};

// What a file holds, as the catalogue will find it.
struct TelemetrySummary {
  FileFormat format = FileFormat::CSS;
  int64_t frames = 0;  // frames (ZEB: records) written
  uint64_t bytes = 0;
  // Catalogue entries of each label in the frames written. A GRM or FM file is counted in 256-byte
  // units, so the workstation finds more frames than were written: those read as zeros, one empty
  // slot each, which these counts leave out.
  std::array<int64_t, kLabelCount> labels{};
  int64_t spectrum_starts = 0;  // isotope sub-packets with segmentation flag value 2 (first)
  int64_t spectrum_ends = 0;    // ... with flag value 1 (last)
  std::vector<WrittenTest> tests;
  std::vector<WrittenSpectrum> spectra;  // the first spectra_kept

  int64_t count(LabelCode label) const { return labels[static_cast<size_t>(label)]; }
};

// Writes a telemetry file of the simulated instrument; a file that cannot be written is a
// RuntimeError naming it. Returns what was written.
TelemetrySummary write_telemetry(const std::string& path, const TelemetryOptions& options);

// The same telemetry a frame (ZEB: a record) at a time, for a feed that writes as it goes.
class TelemetryStream {
 public:
  explicit TelemetryStream(const TelemetryOptions& options);
  ~TelemetryStream();
  TelemetryStream(const TelemetryStream&) = delete;
  TelemetryStream& operator=(const TelemetryStream&) = delete;

  // Binary formats: the next frame, frame_stride(format) bytes.
  void next_frame(std::vector<uint8_t>& frame);
  // ZEB: the header record's line, then each record's line (136 items and a line break).
  std::string zeb_header() const;
  void next_record(std::string& line);
  // The lander time of the next packet to go out.
  int32_t next_lander_time();

  // What was handed out so far (bytes not counted: the caller writes them).
  const TelemetrySummary& summary() const;

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace morvane::sim
