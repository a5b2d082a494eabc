// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <initializer_list>
#include <vector>

#include "instrument_physics.h"
#include "random.h"
#include "sensor_codec.h"
#include "sim/telemetry_writer.h"
#include "sim_packet.h"

namespace morvane::sim {

// The instrument as the ground sees it: a stream of source packets in time order. It lives a
// cycle of three hours over and over (power-on, cruise checks with two short form tests,
// instrument checkout with two more, an atmosphere analysis with chromatograms and isotope
// spectra, a calibration with docking, memory reports, an anomaly drill, safe and standby),
// so that any file of one cycle or more holds every kind of packet.
class Simulated_Instrument {
 public:
  static constexpr int64_t kCycleSeconds = sim::kCycleSeconds;
  static constexpr int32_t kStartTime = kFirstLanderTime;  // lander time of the first power-on

  explicit Simulated_Instrument(uint64_t seed);

  // The next packet the instrument sends.
  Sim_Packet next();

  // The scripted test (index into scripted_tests()) that test run r carried out.
  int scripted_test_of_run(int run) const { return test_runs_[static_cast<size_t>(run)]; }

 private:
  struct Action {
    int64_t time;
    std::function<void()> run;
  };
  struct Reading {
    int32_t time = 0;
    int channel = 0;
    uint16_t word = 0;
  };

  void plan_cycle();
  void at(int64_t offset, std::function<void()> run);
  void plan_test(int scripted);
  void plan_spectrum(int64_t offset, int first_bin, int bins, int sub_packets);

  // Packets, sent at the current action's time.
  void emit(Sim_Packet packet);
  Sim_Packet start(int identifier, int flags, int& counter, int length, LabelCode label);
  void housekeeping(int sub_type);
  void auxiliary(std::initializer_list<int> sensors);
  void test_packet(int run, int number, bool lost);
  void gc_spectrum();
  void event(int event_class, int id, const std::vector<int>& words);
  void limit_event(int id, int sensor, double value, double low, double high);
  void rf_calibration(int frequency_count);
  void telecommand(int type, int sub_type, int failure_code = 0);
  void select_mode(int mode);
  void memory_dump(int memory_type, int cycle);
  void checksum_report(bool as_event, int memory_type, int reports);
  void power_on(int cycle);

  // A reading of sensor s now, with its noise, as an ADC word.
  uint16_t adc_reading(int s);
  double measure(int s);

  Instrument_Physics physics_;
  Sensor_Codec codec_;
  Random random_;
  std::deque<Sim_Packet> out_;
  std::vector<Action> actions_;
  size_t next_action_ = 0;
  int64_t now_ = kStartTime;
  int64_t cycle_start_ = kStartTime;
  int cycle_ = 0;

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
