// SPDX-License-Identifier: MIT
// The short form test sequences. Reading k (1..232) goes to auxiliary packet (k - 1) / 29 + 1;
// the evaluation takes each item's samples from fixed reading numbers, so the order below is
// the contract:
//   1-10     first sensor sweep: pressure gauges, AD590, docking station, nanotip current,
//            detector voltage, RF amplitude ("EAFT" reads gauge 2 before gauge 1)
//   11-12    +5 V and +28 V rails
//   13-26    injector valves 1-3: currents before (13, 14), while on (15, 16), after (17, 18)...
//   25-110   twelve valves, 7 readings each from 25: currents before, the switching slot
//            (channel 0), two pairs of currents while on; the next valve's "before" is this one's
//            "after"
//   109-158  six heaters, 8 readings each from 109: currents before, temperature, two pairs of
//            currents while on (with dwells), temperature, then the next heater
//   159-178  large reactors: five temperatures, all on, dwell, five temperatures; then the
//            small reactors the same way
//   "Cruise Phase": 179-218 five L-valves like the heaters (the last one without its "after"
//            currents), 219-228 final sensor sweep, 229-230 rails, 231-232 currents
//   "EAFT":  179-206 L-valves 1+2 and 5+6 switched in pairs, then L-valve 7; 207-216 final
//            sensor sweep, 217-218 rails, 219-220 currents, 221-232 the reactors cooling
#include "short_test_script.h"

#include <stdexcept>

#include "sim/instrument_model.h"

namespace morvane::sim {

namespace {

constexpr int kCurrent5V = 136, kCurrent28V = 144, kRail5V = 130, kRail28V = 131, kSwitchSlot = 0;
constexpr int kValves[] = {1, 2, 3, 4, 7, 8, 9, 10, 11, 13, 15, 16};
constexpr int kHeaters[] = {16, 17, 18, 19, 21, 8};  // manifolds, GC, ion trap, transfer pipe, reactor 8
constexpr int kLargeReactors[] = {1, 2, 4, 5, 6};
constexpr int kSmallReactors[] = {7, 9, 10, 20, 27};
constexpr int kLValves[] = {11, 12, 13, 14, 15};
constexpr int kHeaterDwell = 18, kReactorDwell = 60, kLValveDwell = 10;

int channel_of(int sensor) { return kSensors[static_cast<size_t>(sensor - 1)].channel_id; }

class Script {
 public:
  void read(int channel) { steps_.push_back({TestStep::Kind::Read, channel, {}, 0}); }
  void read_sensor(int sensor) { read(channel_of(sensor)); }
  void currents() { read(kCurrent5V), read(kCurrent28V); }
  void on(Load::Kind kind, int number) { steps_.push_back({TestStep::Kind::SwitchOn, 0, {kind, number}, 0}); }
  void off(Load::Kind kind, int number) { steps_.push_back({TestStep::Kind::SwitchOff, 0, {kind, number}, 0}); }
  void wait(int seconds) { steps_.push_back({TestStep::Kind::Wait, 0, {}, seconds}); }
  std::vector<TestStep> done() {
    int readings = 0;
    for (const auto& s : steps_) readings += s.kind == TestStep::Kind::Read;
    if (readings != 232) throw std::logic_error("a short form test takes 232 readings");
    return std::move(steps_);
  }

 private:
  std::vector<TestStep> steps_;
};

// Sensor sweep: pressures, AD590, docking, nanotip, detector, RF.
void sensor_sweep(Script& s, bool eaft) {
  const int gauges[] = {eaft ? 23 : 22, eaft ? 22 : 23, 24, 25, 26};
  for (int sensor : gauges) s.read_sensor(sensor);
  for (int sensor : {28, 29, 30, 31, 36}) s.read_sensor(sensor);
}

// A heated item measured like a heater: temperature, on, two pairs of currents with dwells,
// temperature, off (its "after" currents are the next item's "before").
void heated_item(Script& s, int sensor, int dwell) {
  s.read_sensor(sensor);
  s.on(Load::Kind::Heater, sensor);
  s.currents();
  s.wait(dwell);
  s.currents();
  s.wait(dwell);
  s.read_sensor(sensor);
  s.off(Load::Kind::Heater, sensor);
}

void reactors(Script& s, const int (&sensors)[5]) {
  for (int r : sensors) s.read_sensor(r);
  for (int r : sensors) s.on(Load::Kind::Heater, r);
  s.wait(kReactorDwell);
  for (int r : sensors) s.read_sensor(r);
  for (int r : sensors) s.off(Load::Kind::Heater, r);
}

// L-valves switched together, measured once for the group.
void l_valve_group(Script& s, std::initializer_list<int> sensors, bool after_currents) {
  for (int v : sensors) s.read_sensor(v);
  for (int v : sensors) s.on(Load::Kind::Heater, v);
  s.currents();
  s.wait(kLValveDwell + 2);
  s.currents();
  s.wait(kLValveDwell + 2);
  for (int v : sensors) s.read_sensor(v);
  for (int v : sensors) s.off(Load::Kind::Heater, v);
  if (after_currents) s.currents();
}

}  // namespace

std::vector<TestStep> test_script(std::string_view mode) {
  const bool eaft = mode == "EAFT";
  Script s;
  sensor_sweep(s, eaft);  // 1-10
  s.read(kRail5V);        // 11
  s.read(kRail28V);       // 12
  s.currents();           // 13, 14
  for (int injector = 1; injector <= 3; ++injector) {
    s.on(Load::Kind::Injector, injector);
    s.currents();  // while on: one 5 V and one 28 V sample
    s.off(Load::Kind::Injector, injector);
    s.currents();  // after (the next one's before)
  }
  for (int valve : kValves) {  // from 25
    s.on(Load::Kind::Valve, valve);
    s.read(kSwitchSlot);
    s.currents();
    s.currents();
    s.off(Load::Kind::Valve, valve);
    s.currents();
  }
  for (int heater : kHeaters) {  // from 109
    heated_item(s, heater, kHeaterDwell);
    s.currents();
  }
  reactors(s, kLargeReactors);  // 159-168
  reactors(s, kSmallReactors);  // 169-178
  if (!eaft) {
    s.currents();  // 179, 180
    for (int v : kLValves) {
      heated_item(s, v, kLValveDwell);
      // The last L-valve's "after" samples are the final sweep's first two readings.
      if (v != kLValves[4]) s.currents();
    }
    sensor_sweep(s, false);  // 219-228
    s.read(kRail5V);         // 229
    s.read(kRail28V);        // 230
    s.currents();            // 231, 232
  } else {
    s.currents();                                   // 179, 180
    l_valve_group(s, {11, 12}, true);               // 181-190
    l_valve_group(s, {13, 14}, true);               // 191-200
    l_valve_group(s, {15}, false);                  // 201-206
    sensor_sweep(s, true);                          // 207-216
    s.read(kRail5V);                                // 217
    s.read(kRail28V);                               // 218
    s.currents();                                   // 219, 220
    for (int r : kLargeReactors) s.read_sensor(r);  // 221-232: cooling down
    for (int r : kSmallReactors) s.read_sensor(r);
    s.read_sensor(16);
    s.read_sensor(18);
  }
  return s.done();
}

}  // namespace morvane::sim
