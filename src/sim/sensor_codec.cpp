// SPDX-License-Identifier: MIT
#include "sensor_codec.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "sim/instrument_model.h"

namespace morvane::sim {

namespace {

constexpr double kFastHighest = 1300.0;
constexpr double kFastStep = 0.5;

bool is_thermocouple_sensor(int s) { return (s >= 1 && s <= 21) || s == 27; }

}  // namespace

SensorCodec::SensorCodec() {
  for (size_t s = 1; s <= kSensors.size(); ++s)
    hk_step_[s] = std::ldexp(10.0 / 32768.0, kSensors[s - 1].scale_exponent);
  ntype_.set_points(std::vector<std::pair<double, double>>(kNTypePoints.begin(), kNTypePoints.end()));
  const int steps = static_cast<int>((kFastHighest - kFastLowest) / kFastStep) + 1;
  emf_table_.reserve(static_cast<size_t>(steps));
  for (int i = 0; i < steps; ++i) emf_table_.push_back(emf(kFastLowest + i * kFastStep));
}

double SensorCodec::fast_emf(double celsius) const {
  const double position = (std::clamp(celsius, kFastLowest, kFastHighest) - kFastLowest) / kFastStep;
  const size_t i = std::min(static_cast<size_t>(position), emf_table_.size() - 2);
  const double fraction = position - static_cast<double>(i);
  return emf_table_[i] + (emf_table_[i + 1] - emf_table_[i]) * fraction;
}

double SensorCodec::volts(int s, double value, double junction) const {
  if (is_thermocouple_sensor(s)) return (emf(value) - emf(junction)) / 10000.0;  // the channel's gain of 100
  if (s >= 22 && s <= 26) {
    const PressureDesign& p = kPressureSensors[static_cast<size_t>(s - 22)];
    const double bar = s == 26 ? value / 1000.0 : value;
    return (bar * (p.atmosphere - p.vacuum) + p.vacuum) / 10.0;
  }
  switch (s) {
    case 28: return (value + 273.0) / 100.0;
    case 29: return value / 5.2;
    case 30: return value / 100.0;
    case 31: return value;
    case 32: return value / 2.0;
    case 33: return value / 10.0;
    case 34:
    case 35: return value / 1000.0;
    case 36: return value / 100.0;
    default: return 0.0;
  }
}

uint8_t SensorCodec::hk_byte(int s, double value, double junction_emf) const {
  if (s < 1 || s > static_cast<int>(kSensors.size())) return 0;
  const double v = is_thermocouple_sensor(s) ? (fast_emf(value) - junction_emf) / 10000.0 : volts(s, value, 0.0);
  // The step below the voltage: the workstation shows the byte's value and the top of its step,
  // so the true value lies between the two.
  const double raw = std::floor(v / hk_step_[static_cast<size_t>(s)] + 1e-9);
  int lowest = -128, highest = 127;
  if (s == 28 || s == 29) lowest = 0, highest = 255;
  if (s >= 32 && s <= 36) lowest = -45, highest = 210;
  return static_cast<uint8_t>(static_cast<int>(std::clamp(raw, double(lowest), double(highest))) & 0xFF);
}

double SensorCodec::hk_board_temperature(uint8_t byte) const { return byte * hk_step_[28] * 100.0 - 273.0; }

uint16_t SensorCodec::adc_word(double volts) {
  const double count = std::clamp(std::round(volts * 32768.0 / 10.0), -32768.0, 32767.0);
  return static_cast<uint16_t>(static_cast<int>(count) & 0xFFFF);
}

uint16_t SensorCodec::adc_word(int s, double value, double junction) const {
  return adc_word(volts(s, value, junction));
}

}  // namespace morvane::sim
