// SPDX-License-Identifier: MIT
#include "cycle_timeline.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "sim/instrument_model.h"
#include "sim/short_form_tests.h"
#include "sim/telemetry_writer.h"

namespace morvane::sim {

EventWord reading_of(int sensor) { return {EventWord::Source::Reading, sensor}; }
EventWord current_mode() { return {EventWord::Source::Mode, 0}; }

namespace {

EventWord word(int value) { return {EventWord::Source::Constant, value}; }

std::vector<EventWord> words(std::initializer_list<int> values) {
  std::vector<EventWord> out;
  for (int v : values) out.push_back(word(v));
  return out;
}

LimitValue fixed(double value) { return {LimitValue::Kind::Fixed, value, 0}; }

// Builds one cycle's timeline in planning order; sorted by time at the end.
class TimelineBuilder {
 public:
  TimelineBuilder(int first_test_run, int first_spectrum) : next_test_run_(first_test_run), next_spectrum_(first_spectrum) {}

  void at(int64_t offset, Happening what) { timeline_.happenings.push_back({offset, std::move(what)}); }

  void test(int scripted);
  void spectrum(int64_t offset, int first_bin, int bins, int sub_packets);

  CycleTimeline finish() {
    std::stable_sort(timeline_.happenings.begin(), timeline_.happenings.end(),
                     [](const TimedHappening& a, const TimedHappening& b) { return a.offset < b.offset; });
    return std::move(timeline_);
  }

 private:
  CycleTimeline timeline_;
  int next_test_run_;
  int next_spectrum_;
};

// A short form test: its script's readings two seconds apart, a packet after every 29th, the RF
// calibration after reading 80, and the scripted fault.
void TimelineBuilder::test(int scripted) {
  const ScriptedTest& test = scripted_tests()[static_cast<size_t>(scripted)];
  const int run = next_test_run_++;
  timeline_.test_runs.push_back(scripted);
  const bool faulty_cruise = !test.healthy && test.mode == "Cruise Phase";
  const bool faulty_eaft = !test.healthy && test.mode == "EAFT";

  int64_t t = test.start_offset;
  at(t - 1, happen::TestStart{faulty_cruise, faulty_eaft});
  int k = 0;
  for (const TestStep& step : test_script(test.mode)) {
    switch (step.kind) {
      case TestStep::Kind::Read: {
        if (k > 0) t += kReadingInterval;
        const int reading = ++k;
        at(t, happen::TestReading{reading, step.channel});
        if (reading % 29 == 0) {
          const int number = reading / 29;
          at(t + 1, happen::TestPacket{run, number, number == test.missing_packet});
        }
        if (reading == 80) at(t + 1, happen::RfCalibration{faulty_eaft ? kRfFaultyCount : kRfNominalCount});
        if (reading == 218 && faulty_cruise) {
          // The detector voltage sags.
          at(t + 1, happen::HighVoltage{1.2});
          at(t + 1, happen::Event{2, 55105, {word(0x0001), reading_of(31)}});
          at(t + 1, happen::LimitEvent{55008, 31, fixed(1.2), 1.8, 2.5});
        }
        break;
      }
      case TestStep::Kind::SwitchOn:
      case TestStep::Kind::SwitchOff:
        at(t, happen::TestSwitch{step.load, step.kind == TestStep::Kind::SwitchOn});
        break;
      case TestStep::Kind::Wait: t += step.seconds; break;
    }
  }
  at(t + 5, happen::TestEnd{test.mode == "EAFT" ? kCheckout : kCruisePhase, faulty_cruise});
}

// An isotope spectrum: the scan, then a sub-packet every four seconds.
void TimelineBuilder::spectrum(int64_t offset, int first_bin, int bins, int sub_packets) {
  if ((bins + kMaxBins - 1) / kMaxBins != sub_packets || first_bin + bins > 1025) {
    throw std::logic_error("a spectrum's sub-packets must hold its bins");
  }
  const int spectrum = next_spectrum_++;
  ++timeline_.spectra;
  at(offset, happen::IsotopeScan{first_bin, bins});
  for (int k = 1; k <= sub_packets; ++k) {
    at(offset + 4 * k, happen::IsotopeSubPacket{spectrum, first_bin, bins, sub_packets, k});
  }
}

}  // namespace

CycleTimeline cycle_timeline(int cycle, int first_test_run, int first_spectrum) {
  TimelineBuilder plan(first_test_run, first_spectrum);
  using namespace happen;

  // Power-on and the cruise checks.
  plan.at(0, PowerOn{cycle});
  for (int64_t s = 0; s < kCycleSeconds; s += 8) plan.at(s, Housekeeping{s % 32 == 0 ? 2 : 1});
  plan.at(2, Telecommand{17, 17});
  plan.at(3, Event{2, 0, words({0, 0})});  // the connection test's answer
  plan.at(10, Event{1, 55010, words({0x0003, 0x0000, 0x0004, 0x0002})});
  plan.at(12, Event{1, 55011, words({0x0001, 0x1000 | kRfNominalCount, 0x0C80, 0x0140, 0x02D0, 0x0A20})});
  plan.at(20, Telecommand{6, 9});
  plan.at(22, ChecksumReport{true, kEepromType, 3});
  plan.at(24, ChecksumReport{false, kPromType, 2});
  plan.at(60, SelectMode{kCruisePhase});
  plan.at(300, Telecommand{194, 1});  // high voltage enabled
  plan.at(300, IonTrap{true});

  // Cruise checks and the instrument checkout: the four short form tests.
  plan.test(0);
  plan.test(1);
  plan.at(2350, SelectMode{kCheckout});
  plan.test(2);
  plan.test(3);

  // Atmosphere analysis: heaters up, carrier gas on, chromatograms and isotope spectra.
  plan.at(4350, SelectMode{kAtmosphere});
  for (int h : {16, 18, 19, 21}) plan.at(4360, Heater{h, true});
  plan.at(4500, GcFlow{true});
  plan.at(4700, Heater{16, false});  // the manifold is warm; its power goes to the oven
  plan.at(4700, Heater{3, true});
  for (int64_t s = 4400; s < 6900; s += 30) {
    plan.at(s, Auxiliary{{18, 19, 16, 21, 3, 22, 23, 24, 26, 28, 30, 31, 36, 34, 35}});
  }
  plan.at(4600, RfCalibration{kRfNominalCount});
  // The oven overshoots its operating limit for a while.
  plan.at(5300, LimitEvent{55008, 3, {LimitValue::Kind::AtLeast, 440.0, 12.0}, -20.0, 440.0});
  plan.at(5500, LimitEvent{55009, 3, {LimitValue::Kind::AtMost, 436.0, 0.0}, -20.0, 440.0});
  for (int i = 0; i < 7; ++i) plan.at(4800 + 300 * i, GcSpectrum{});
  plan.spectrum(4950, 0, 330, 3);
  plan.spectrum(5250, 35, 990, 9);   // up to bin 1024
  plan.spectrum(5550, 400, 110, 1);  // a spectrum in one packet
  plan.spectrum(5850, 0, 1025, 10);  // the longest: ten sub-packets
  plan.spectrum(6150, 200, 440, 4);
  for (int h : {16, 18, 19, 21, 3}) plan.at(6900, Heater{h, false});
  plan.at(6900, GcFlow{false});
  plan.at(6900, Event{1, 55107, words({kAtmosphere})});

  // Calibration: RF report, undocking and docking again.
  plan.at(7000, SelectMode{kCalibration});
  plan.at(7010, RfCalibration{kRfNominalCount});
  plan.at(7100, DockingTarget{27.9});
  plan.at(7130, Event{1, 55114, {reading_of(29), word(0x0145), word(0x02D0)}});
  if (cycle % 2 == 1) plan.at(7300, Event{2, 55106, {word(0x0002), reading_of(29)}});
  plan.at(7400, DockingTarget{14.3});
  plan.at(7440, Event{1, 55114, {reading_of(29), word(0x0C80), word(0x02D0)}});

  // Memory: dumps of each memory type, checksum reports as events and as acceptance reports.
  plan.at(7600, Telecommand{6, 5});
  plan.at(7602, MemoryDump{kPromType, cycle});
  plan.at(7604, MemoryDump{kEepromType, cycle});
  plan.at(7606, MemoryDump{kRamType, cycle});
  plan.at(7650, Telecommand{6, 9});
  plan.at(7652, ChecksumReport{true, kRamType, 5});
  plan.at(7654, ChecksumReport{true, kPromType, 1});
  plan.at(7656, ChecksumReport{false, kEepromType, 4});
  plan.at(7658, ChecksumReport{false, kRamType, 5});
  {
    // Seconds since power-on in words 10 (x 256) and 11, error counts in words 14..32.
    constexpr int kSeconds = 7700;
    std::vector<EventWord> report(23, word(0));
    report[0] = word(kSeconds / 256);
    report[1] = word(kSeconds % 256);
    if (cycle % 3 == 2) report[4] = word(2);
    plan.at(kSeconds, Event{1, 55103, std::move(report)});
  }

  // The anomaly drill: every rejection code, every warning, and packets no table names.
  const std::pair<int, int> rejected[] = {{6, 2}, {195, 1}, {17, 17}, {194, 1}, {193, 12}, {6, 5}, {193, 255}};
  for (int code = 1; code <= 7; ++code) {
    plan.at(8000 + 10 * code, Telecommand{rejected[code - 1].first, rejected[code - 1].second, code});
  }
  const int warnings[] = {55002, 55003, 55004, 55006, 55007, 55101, 55102, 55104, 55108, 55109, 55110, 55111, 55112};
  for (int i = 0; i < 13; ++i) {
    const int id = warnings[i];
    const int64_t when = 8100 + 10 * i;
    if (id == 55002) {
      plan.at(when, Event{2, id, words({0x0001, 0x0A3F, 0x1C07, 0x0012, 0x0004})});  // DAC, PWM, valve, critical
    } else if (id == 55007) {
      plan.at(when, LimitEvent{id, 21, fixed(188.0), -20.0, 180.0});
    } else if (id == 55108) {
      std::vector<EventWord> w = words({0, 17, 0x00C1, 0x0D00, 0x0000, 0x0032, 0xFFFF, 0x0001});
      w[0] = current_mode();
      plan.at(when, Event{2, id, std::move(w)});
    } else {
      plan.at(when, Event{2, id, words({0x0000, 0x0000})});
    }
  }
  plan.at(8300, Event{1, 55050, words({0x0000})});  // an identifier the ground does not know
  plan.at(8310, Event{1, 55002, words({0x0000})});  // a warning's identifier in a progress event
  plan.at(8320, Event{3, 55005, words({0x0000})});  // an event class nobody defined
  plan.at(8330, UnknownAcceptance{});
  plan.at(8340, Housekeeping{3});  // a housekeeping sub-type the ground has no name for
  plan.at(8350, UnknownScience{});

  plan.at(9000, SelectMode{kSafe});
  plan.at(9000, IonTrap{false});
  plan.at(9600, SelectMode{kStandby});
  return plan.finish();
}

}  // namespace morvane::sim
