// SPDX-License-Identifier: MIT
// A telemetry file held in memory: read by the same rules as one on disk.
#include "core/telemetry_file.h"

namespace morvane {

TelemetryFile::TelemetryFile(std::string name, std::vector<uint8_t> bytes, FileFormat format)
    : format_(format), bytes_(std::move(name), std::move(bytes)) {
  if (format == FileFormat::ZEB) zeb_ = std::make_unique<ZebText>(bytes_);
}

}  // namespace morvane
