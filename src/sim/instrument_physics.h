// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace morvane::sim {

// What the simulated instrument's sensors would read: temperatures that follow their heaters,
// pressures that settle, supply currents that rise with every load switched on. Time is lander
// seconds; the state moves only forward, by advance_to.
class InstrumentPhysics {
 public:
  static constexpr int kValves = 19;  // V1..V16, then VA, VB, VC
  static constexpr int kInjectors = 3;

  explicit InstrumentPhysics(int64_t start_time);

  int64_t time() const { return time_; }
  // Lets the state evolve to time t (no effect for a t in the past).
  void advance_to(int64_t t);

  // Heaters are named by the thermocouple sensor that watches them (1..21, 27).
  void set_heater(int sensor, bool on);
  bool heater_on(int sensor) const { return heater_on_[static_cast<size_t>(sensor)]; }
  // A broken heater: switched on it draws nothing and stays cold.
  void set_heater_open(int sensor, bool open) { heater_open_[static_cast<size_t>(sensor)] = open; }
  void set_valve(int valve, bool on);
  bool valve_on(int valve) const { return valve_on_[static_cast<size_t>(valve)]; }
  void set_injector(int injector, bool on);
  bool injector_on(int injector) const { return injector_on_[static_cast<size_t>(injector)]; }
  // The ion trap's electronics: nanotip emission, detector high voltage, RF drive.
  void set_ion_trap(bool on) { ion_trap_on_ = on; }
  bool ion_trap_on() const { return ion_trap_on_; }
  void set_high_voltage(double kilovolts) { high_voltage_ = kilovolts; }
  // Carrier gas through the chromatograph.
  void set_gc_flow(bool on) { gc_flow_ = on; }
  bool gc_flow() const { return gc_flow_; }
  void set_docking_target(double millimetres) { docking_target_ = millimetres; }

  // The true engineering value of sensor s (1..36) now, in the unit its conversion gives.
  double value(int s) const;
  double board_temperature() const { return board_; }
  double current_5v() const;
  double current_28v() const;
  // The measurement noise of sensor s, in its unit.
  static double noise_sigma(int s);

 private:
  // The decay factors of the last step length: most steps are the housekeeping period.
  struct Decay {
    double dt = -1;
    std::array<double, 22> thermal{};
    double board = 0, line = 0, trap = 0, docking = 0;
  };
  const Decay& decay_for(double dt);

  Decay decay_;
  int64_t time_;
  double board_;
  std::array<double, 37> temperature_{};  // by sensor number
  std::array<bool, 37> heater_on_{};
  std::array<bool, 37> heater_open_{};
  std::array<bool, kValves + 1> valve_on_{};
  std::array<bool, kInjectors + 1> injector_on_{};
  std::array<double, 4> line_pressure_{};  // gauges 2..4 in bar (index 1..3)
  double trap_pressure_;                   // gauge 5, mbar
  double docking_;
  double docking_target_ = 14.3;
  double high_voltage_ = 2.1;
  bool ion_trap_on_ = false;
  bool gc_flow_ = false;
};

}  // namespace morvane::sim
