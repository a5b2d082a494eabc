// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "core/ntype_table.h"

namespace morvane::sim {

// The instrument's analogue front end, run backwards: what a sensor's engineering value becomes
// as a housekeeping byte or a 16-bit ADC word, so that the workstation's conversions give the
// value back. Thermocouples measure against the cold junction (the board, sensor 28).
class SensorCodec {
 public:
  SensorCodec();

  // Thermocouple output for a temperature, microvolts, from the N-type table the configuration
  // writes (the same table the workstation reads).
  double emf(double celsius) const { return ntype_.NType_Reverse_Lookup(celsius); }
  // The same from a dense precomputed table: for the many housekeeping bytes, whose step is
  // several degrees anyway.
  double fast_emf(double celsius) const;

  // Volts at the ADC for sensor s (1..36) reading value; junction is the cold-junction
  // temperature for thermocouple channels. Sensors outside 1..36 give 0.
  double volts(int s, double value, double junction) const;

  // The housekeeping byte of sensor s: the ADC step below the voltage, held to the byte range the
  // workstation decodes for that sensor (unsigned for 28 and 29, -45..210 for 32..36). The cold
  // junction is given as its thermocouple output (fast_emf), the same for a whole packet.
  uint8_t hk_byte(int s, double value, double junction_emf) const;
  // The board temperature a housekeeping byte of sensor 28 decodes to.
  double hk_board_temperature(uint8_t byte) const;

  // The 16-bit ADC word (two's complement, +-10 V full scale) of sensor s reading value.
  uint16_t adc_word(int s, double value, double junction) const;
  // The ADC word of a voltage.
  static uint16_t adc_word(double volts);

 private:
  NTypeTable ntype_;
  std::array<double, 37> hk_step_{};  // volts of one housekeeping byte step, by sensor
  std::vector<double> emf_table_;     // every half degree from kFastLowest
  static constexpr double kFastLowest = -270.0;
};

}  // namespace morvane::sim
