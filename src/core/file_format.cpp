// SPDX-License-Identifier: MIT
#include "core/file_format.h"

#include <algorithm>
#include <cctype>
#include <cmath>

#include "core/arithmetic.h"

namespace morvane {

std::string_view format_tag(FileFormat format) {
  switch (format) {
    case FileFormat::CSS: return "CSS";
    case FileFormat::QM: return "QM";
    case FileFormat::GRM: return "GRM";
    case FileFormat::FM: return "FM";
    case FileFormat::ZEB: return "ZEB";
  }
  return "";
}

std::optional<FileFormat> parse_format_tag(std::string_view tag) {
  std::string upper(tag);
  std::transform(upper.begin(), upper.end(), upper.begin(),
                 [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
  for (FileFormat format : {FileFormat::CSS, FileFormat::QM, FileFormat::GRM, FileFormat::FM, FileFormat::ZEB}) {
    if (format_tag(format) == upper) return format;
  }
  return std::nullopt;
}

int frame_count_divisor(FileFormat format) {
  return has_282_byte_frames(format) ? 282 : has_280_byte_frames(format) ? 256 : 0;
}

int frame_stride(FileFormat format) {
  return has_282_byte_frames(format) ? 282 : has_280_byte_frames(format) ? 280 : 0;
}

int rounded_frame_count(double exact) {
  double count = exact;
  if (count != std::floor(count)) count = std::floor(count + 0.999);
  return to_int32(count);
}

}  // namespace morvane
