// SPDX-License-Identifier: MIT
#include "instrument_physics.h"

#include <cmath>

namespace morvane::sim {

namespace {

// A heated item: where its heater drives it, how fast, and what the heater draws (mA).
struct ThermalDesign {
  int sensor;
  double setpoint;
  double time_constant;
  double draw_5v;
  double draw_28v;
};

// Large reactors (ovens) reach a few hundred degrees in minutes; small reactors are quicker;
// the latching valves and the manifolds, chromatograph and ion trap are gentler. The draws keep
// the 28 V current of any mode below the 256 mA its housekeeping byte can show.
constexpr std::array<ThermalDesign, 22> kThermal = {{
    {1, 450, 180, 2.0, 20},  {2, 450, 180, 2.0, 20},  {3, 450, 180, 2.0, 20},  {4, 450, 190, 2.0, 20},
    {5, 450, 190, 2.0, 20},  {6, 450, 200, 2.0, 20},  {7, 350, 90, 1.5, 15},   {8, 200, 200, 5.0, 33},
    {9, 350, 90, 1.5, 15},   {10, 350, 100, 1.5, 15}, {11, 110, 60, 7.0, 25},  {12, 110, 60, 7.0, 25},
    {13, 110, 65, 7.0, 25},  {14, 110, 65, 7.0, 25},  {15, 110, 70, 7.0, 25},  {16, 120, 300, 5.0, 30},
    {17, 120, 300, 5.0, 30}, {18, 180, 400, 5.0, 35}, {19, 150, 600, 5.0, 32}, {20, 350, 100, 1.5, 15},
    {21, 130, 300, 5.0, 30}, {27, 350, 110, 1.5, 15},
}};

constexpr double kValveDraw5V = 8.0, kValveDraw28V = 25.0;
constexpr double kInjectorDraw5V = 6.0, kInjectorDraw28V = 20.0;
constexpr double kIonTrapDraw5V = 25.0, kIonTrapDraw28V = 30.0;
constexpr double kBase5V = 138.0, kBase28V = 82.0;

constexpr double kBoardTimeConstant = 3000.0;
constexpr double kLineTimeConstant = 500.0;
constexpr double kTrapTimeConstant = 300.0;
constexpr double kDockingTimeConstant = 20.0;
constexpr double kPi = 3.14159265358979323846;

double decay(double dt, double time_constant) { return std::exp(-dt / time_constant); }
double relax(double value, double target, double factor) { return target + (value - target) * factor; }

}  // namespace

InstrumentPhysics::InstrumentPhysics(int64_t start_time)
    : time_(start_time), board_(19.5), trap_pressure_(18.0), docking_(14.3) {
  for (const auto& d : kThermal) temperature_[static_cast<size_t>(d.sensor)] = board_;
  // Gas left in the lines since the last run: it is pumped away over the first hour.
  line_pressure_ = {0.0, 0.45, 0.40, 0.30};
}

const InstrumentPhysics::Decay& InstrumentPhysics::decay_for(double dt) {
  if (decay_.dt == dt) return decay_;
  decay_.dt = dt;
  for (size_t i = 0; i < kThermal.size(); ++i) decay_.thermal[i] = decay(dt, kThermal[i].time_constant);
  decay_.board = decay(dt, kBoardTimeConstant);
  decay_.line = decay(dt, kLineTimeConstant);
  decay_.trap = decay(dt, kTrapTimeConstant);
  decay_.docking = decay(dt, kDockingTimeConstant);
  return decay_;
}

void InstrumentPhysics::advance_to(int64_t t) {
  if (t <= time_) return;
  const Decay& f = decay_for(static_cast<double>(t - time_));
  time_ = t;
  const double day = std::sin(2.0 * kPi * static_cast<double>(t % 86400) / 86400.0);
  const double board_target = 27.0 + (ion_trap_on_ ? 2.0 : 0.0) + 1.5 * day;
  board_ = relax(board_, board_target, f.board);
  for (size_t i = 0; i < kThermal.size(); ++i) {
    const ThermalDesign& d = kThermal[i];
    const auto s = static_cast<size_t>(d.sensor);
    const bool heating = heater_on_[s] && !heater_open_[s];
    temperature_[s] = relax(temperature_[s], heating ? d.setpoint : board_, f.thermal[i]);
  }
  line_pressure_[1] = relax(line_pressure_[1], 0.012, f.line);
  line_pressure_[2] = relax(line_pressure_[2], gc_flow_ ? 0.30 : 0.008, f.line);
  line_pressure_[3] = relax(line_pressure_[3], gc_flow_ ? 0.10 : 0.004, f.line);
  trap_pressure_ = relax(trap_pressure_, gc_flow_ ? 2.5 : 0.9, f.trap);
  docking_ = relax(docking_, docking_target_, f.docking);
}

void InstrumentPhysics::set_heater(int sensor, bool on) { heater_on_[static_cast<size_t>(sensor)] = on; }

void InstrumentPhysics::set_valve(int valve, bool on) {
  // Each opening lets a little gas from the supply into the manifold.
  if (on && !valve_on_[static_cast<size_t>(valve)]) line_pressure_[1] += 0.015;
  valve_on_[static_cast<size_t>(valve)] = on;
}

void InstrumentPhysics::set_injector(int injector, bool on) {
  if (on && !injector_on_[static_cast<size_t>(injector)]) line_pressure_[2] += 0.04;
  injector_on_[static_cast<size_t>(injector)] = on;
}

double InstrumentPhysics::current_5v() const {
  double ma = kBase5V + (ion_trap_on_ ? kIonTrapDraw5V : 0.0);
  for (const auto& d : kThermal) {
    const auto s = static_cast<size_t>(d.sensor);
    if (heater_on_[s] && !heater_open_[s]) ma += d.draw_5v;
  }
  for (int v = 1; v <= kValves; ++v) ma += valve_on_[static_cast<size_t>(v)] ? kValveDraw5V : 0.0;
  for (int i = 1; i <= kInjectors; ++i) ma += injector_on_[static_cast<size_t>(i)] ? kInjectorDraw5V : 0.0;
  return ma;
}

double InstrumentPhysics::current_28v() const {
  double ma = kBase28V + (ion_trap_on_ ? kIonTrapDraw28V : 0.0);
  for (const auto& d : kThermal) {
    const auto s = static_cast<size_t>(d.sensor);
    if (heater_on_[s] && !heater_open_[s]) ma += d.draw_28v;
  }
  for (int v = 1; v <= kValves; ++v) ma += valve_on_[static_cast<size_t>(v)] ? kValveDraw28V : 0.0;
  for (int i = 1; i <= kInjectors; ++i) ma += injector_on_[static_cast<size_t>(i)] ? kInjectorDraw28V : 0.0;
  return ma;
}

double InstrumentPhysics::value(int s) const {
  if ((s >= 1 && s <= 21) || s == 27) return temperature_[static_cast<size_t>(s)];
  switch (s) {
    case 22: return 1.85 * (273.15 + board_) / 298.15;  // the helium supply, warming with the board
    case 23:
    case 24:
    case 25: return line_pressure_[static_cast<size_t>(s - 22)];
    case 26: return trap_pressure_;
    case 28: return board_;
    case 29: return docking_;
    case 30: return ion_trap_on_ ? 2.2 : 0.0;
    case 31: return ion_trap_on_ ? high_voltage_ : 0.0;
    case 32: return 5.02 - 0.0004 * (current_5v() - 140.0);
    case 33: return 28.3 - 0.002 * (current_28v() - 100.0);
    case 34: return current_5v();
    case 35: return current_28v();
    case 36: return ion_trap_on_ ? 640.0 : 0.0;
    default: return 0.0;
  }
}

double InstrumentPhysics::noise_sigma(int s) {
  if ((s >= 1 && s <= 21) || s == 27) return 0.3;
  switch (s) {
    case 22:
    case 23:
    case 24:
    case 25: return 0.002;
    case 26: return 0.05;
    case 28: return 0.05;
    case 29: return 0.03;
    case 30: return 0.02;
    case 31: return 0.005;
    case 32: return 0.005;
    case 33: return 0.02;
    case 34: return 0.3;
    case 35: return 0.4;
    case 36: return 1.5;
    default: return 0.0;
  }
}

}  // namespace morvane::sim
