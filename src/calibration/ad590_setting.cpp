// SPDX-License-Identifier: MIT
#include "calibration/ad590_setting.h"

#include "core/free_format_reader.h"
#include "core/number_text.h"

namespace morvane {

AD590_Cal::AD590_Cal(const Configuration& config)
    : temperature_(config.NType.NType_Lookup(config.AD590_EMF)), text_(format_pattern(temperature_, "0.00")) {}

bool AD590_Cal::Command1_Click(Configuration& config, std::string_view text) {
  double value = 0;
  if (!parse_number(text, value)) return false;
  temperature_ = value;
  config.AD590_EMF = config.NType.NType_Reverse_Lookup(temperature_);
  return true;
}

}  // namespace morvane
