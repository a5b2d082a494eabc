// SPDX-License-Identifier: MIT
#include "core/telemetry_file.h"

#include <cstdint>

#include "core/error.h"

namespace morvane {

TelemetryFile::TelemetryFile(const std::string& path, FileFormat format) : format_(format), bytes_(path) {
  if (format == FileFormat::ZEB) zeb_ = std::make_unique<ZebText>(bytes_);
}

const ZebText& TelemetryFile::zeb() const {
  if (!zeb_) raise(ErrorNumber::BadFileName, path() + " is not a ZEB file");
  return *zeb_;
}

int32_t TelemetryFile::Get_Packet_Count() const {
  if (zeb_) return rounded_frame_count(static_cast<double>(zeb_->item_count()) / kZebItemsPerRecord - 1);
  return rounded_frame_count(static_cast<double>(bytes_.size()) / frame_count_divisor(format_));
}

void TelemetryFile::refresh() {
  bytes_.refresh();
  if (zeb_) zeb_->rescan();
}

uint8_t TelemetryFile::packet_byte(const Packet_Entry& entry, int k, bool byte_reverse) const {
  if (zeb_) return zeb_->packet_byte(entry.Packet_Frame, k);
  const int64_t offset = byte_reverse ? swapped_byte_offset(k) : k;
  return byte_at(entry.Packet_Position + offset);
}

int32_t TelemetryFile::packet_word(const Packet_Entry& entry, int k, bool byte_reverse) const {
  if (zeb_) return packet_byte(entry, k, false) * 256 + packet_byte(entry, k + 1, false);
  return Get_Word(static_cast<int64_t>(entry.Packet_Position) + k, byte_reverse);
}

int64_t largest_supported_size(FileFormat format) {
  if (!is_binary(format)) return INT64_MAX;
  // The last frame's packets start at most 250 bytes into it; that position must stay a
  // 32-bit signed number.
  const int64_t stride = frame_stride(format);
  const int64_t frames = (INT32_MAX - 250) / stride + 1;
  return frames * frame_count_divisor(format);
}

}  // namespace morvane
