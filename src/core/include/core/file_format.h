// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace morvane {

// The five telemetry formats. The format of a file is never detected: the user names it.
enum class FileFormat { CSS, QM, GRM, FM, ZEB };

// "CSS", "QM", "GRM", "FM", "ZEB".
std::string_view format_tag(FileFormat format);
// A tag as the user types it (any case); nullopt for anything else.
std::optional<FileFormat> parse_format_tag(std::string_view tag);

inline bool is_binary(FileFormat format) { return format != FileFormat::ZEB; }
inline bool has_282_byte_frames(FileFormat format) {
  return format == FileFormat::CSS || format == FileFormat::QM;
}
inline bool has_280_byte_frames(FileFormat format) {
  return format == FileFormat::GRM || format == FileFormat::FM;
}

// The length that divides a binary file's size into frames: 282, or 256 for GRM/FM (those are
// counted with 256 although their frames lie 280 bytes apart; the extra frames read as zeros).
int frame_count_divisor(FileFormat format);
// The distance between frame starts: 282 or 280 (0 for ZEB).
int frame_stride(FileFormat format);

// The frame count of a file of length bytes: length / divisor rounded up, except that a fraction
// below 0.001 is dropped. For ZEB pass the item count; the count is items / 136 - 1, rounded up
// the same way (an empty ZEB file therefore counts -1 records).
int rounded_frame_count(double exact);

}  // namespace morvane
