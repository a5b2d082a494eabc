// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "core/configuration.h"

namespace morvane {

inline constexpr const char* kAD590Caption = "AD590 Calibration";
inline constexpr const char* kAD590Label = "AD590 Temperature";
inline constexpr const char* kAD590Explanation = "Temperature of AD590 to use on the Auxiliary data display";

// The AD590 temperature dialog without its window. The setting is kept as the N-type voltage of
// the temperature (AD590_EMF, microvolts), so reopening shows the temperature computed back
// from that voltage.
class AD590_Cal {
 public:
  // Form_Load: the temperature that the N-type table gives for AD590_EMF (0.00 at start-up).
  explicit AD590_Cal(const Configuration& config);

  double temperature() const { return temperature_; }
  // Text1 as the dialog opens: the temperature in "0.00".
  const std::string& text() const { return text_; }

  // Accept: a numeric text becomes the temperature and AD590_EMF its N-type voltage; anything
  // else is ignored without a message. The dialog closes either way. Returns whether the
  // setting changed.
  bool Command1_Click(Configuration& config, std::string_view text);

 private:
  double temperature_ = 0;
  std::string text_;
};

}  // namespace morvane
