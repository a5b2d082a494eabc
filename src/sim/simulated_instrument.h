// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <vector>

#include "cycle_timeline.h"
#include "instrument_physics.h"
#include "random.h"
#include "sensor_codec.h"
#include "sim/telemetry_writer.h"
#include "sim_packet.h"

namespace morvane::sim {

// The instrument as the ground sees it: a stream of source packets in time order. It lives a
// cycle of three hours over and over (cycle_timeline says what happens when), so that any file
// of one cycle or more holds every kind of packet. Playing a happening moves the physics on,
// takes the readings it needs and hands them to the packet encoders.
class SimulatedInstrument {
 public:
  static constexpr int64_t kCycleSeconds = sim::kCycleSeconds;
  static constexpr int32_t kStartTime = kFirstLanderTime;  // lander time of the first power-on

  explicit SimulatedInstrument(uint64_t seed);

  // The next packet the instrument sends.
  SimPacket next();

  // The scripted test (index into scripted_tests()) that test run r carried out.
  int scripted_test_of_run(int run) const { return test_runs_[static_cast<size_t>(run)]; }

 private:
  struct Reading {
    int32_t time = 0;
    int channel = 0;
    uint16_t word = 0;
  };

  void plan_next_cycle();

  void play(const happen::PowerOn& h);
  void play(const happen::Housekeeping& h);
  void play(const happen::Telecommand& h);
  void play(const happen::Event& h);
  void play(const happen::LimitEvent& h);
  void play(const happen::ChecksumReport& h);
  void play(const happen::MemoryDump& h);
  void play(const happen::SelectMode& h);
  void play(const happen::IonTrap& h) { physics_.set_ion_trap(h.on); }
  void play(const happen::Heater& h) { physics_.set_heater(h.sensor, h.on); }
  void play(const happen::GcFlow& h) { physics_.set_gc_flow(h.on); }
  void play(const happen::DockingTarget& h) { physics_.set_docking_target(h.millimetres); }
  void play(const happen::Auxiliary& h);
  void play(const happen::RfCalibration& h);
  void play(const happen::GcSpectrum& h);
  void play(const happen::IsotopeScan& h);
  void play(const happen::IsotopeSubPacket& h);
  void play(const happen::UnknownAcceptance& h);
  void play(const happen::UnknownScience& h);
  void play(const happen::TestStart& h);
  void play(const happen::TestReading& h);
  void play(const happen::TestSwitch& h);
  void play(const happen::TestPacket& h);
  void play(const happen::HighVoltage& h) { physics_.set_high_voltage(h.kilovolts); }
  void play(const happen::TestEnd& h);

  // Packets, sent now.
  void emit(SimPacket packet);
  SimPacket start(LabelCode label, int flags, int& counter, int length);
  void event(int event_class, int id, const std::vector<int>& words);
  void limit_event(int id, int sensor, double value, double low, double high);
  void telecommand(int type, int sub_type, int failure_code = 0);

  // A reading of sensor s now, with its noise, as an ADC word.
  uint16_t adc_reading(int s);
  double measure(int s);

  InstrumentPhysics physics_;
  SensorCodec codec_;
  Random random_;
  std::deque<SimPacket> out_;
  CycleTimeline timeline_;
  size_t next_happening_ = 0;
  int64_t now_ = kStartTime;
  int64_t cycle_start_ = kStartTime;  // of the cycle being played
  int cycle_ = 0;                     // the next cycle to plan

  int mode_ = 0;
  int line_ = 0;
  int hk_sequence_ = 0, event_sequence_ = 0, acceptance_sequence_ = 0, dump_sequence_ = 0, science_sequence_ = 0;
  int telecommand_sequence_ = 0;
  int memory_test_address_ = 0;
  int64_t last_science_time_ = 0;
  std::vector<int> test_runs_;           // the scripted test of each run
  std::array<Reading, 233> readings_{};  // the running test's readings 1..232
  int spectrum_runs_ = 0;
  std::vector<uint16_t> spectrum_words_;  // the bins of the spectrum being sent
  int data_loss_sub_packet_ = 0;
};

}  // namespace morvane::sim
