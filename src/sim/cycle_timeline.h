// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "short_test_script.h"

namespace morvane::sim {

// What the instrument does in one three-hour cycle and when, as data: the simulated instrument
// plays these happenings in time order, and the packet encoders turn the ones that send
// something into packets. Nothing here draws a random number or builds a byte.

// A word of an event packet: a constant, the ADC word of a sensor read at that moment, or the
// operating mode the instrument is in at that moment.
struct EventWord {
  enum class Source { Constant, Reading, Mode };
  Source source = Source::Constant;
  int value = 0;  // the constant, or the sensor read
};
EventWord reading_of(int sensor);
EventWord current_mode();

// The value a limit event reports: `value` itself (fixed), or the sensor's value at that moment
// held at or above `value` and raised by `margin` (at least), or held at or below `value` (at most).
struct LimitValue {
  enum class Kind { Fixed, AtLeast, AtMost };
  Kind kind = Kind::Fixed;
  double value = 0;
  double margin = 0;
};

namespace happen {

struct PowerOn {
  int cycle = 0;
};
struct Housekeeping {
  int sub_type = 1;  // 1 concise, 2 complete, 3 one the ground has no name for
};
struct Telecommand {
  int type = 0, sub_type = 0;
  int failure_code = 0;  // 0: accepted
};
struct Event {
  int event_class = 1;
  int id = 0;
  std::vector<EventWord> words;
};
struct LimitEvent {
  int id = 0;
  int sensor = 0;
  LimitValue value;
  double low = 0, high = 0;
};
struct ChecksumReport {
  bool as_event = false;  // a progress event, or else an acceptance report
  int memory_type = 0;
  int reports = 0;
};
struct MemoryDump {
  int memory_type = 0;
  int cycle = 0;
};
struct SelectMode {
  int mode = 0;
};
struct IonTrap {
  bool on = false;
};
struct Heater {
  int sensor = 0;  // heaters are named by their thermocouple sensor
  bool on = false;
};
struct GcFlow {
  bool on = false;
};
struct DockingTarget {
  double millimetres = 0;
};
struct Auxiliary {
  std::vector<int> sensors;  // one reading a second, the last one now
};
struct RfCalibration {
  int frequency_count = 0;
};
struct GcSpectrum {};
// The detector scans an isotope spectrum; its sub-packets follow.
struct IsotopeScan {
  int first_bin = 0, bins = 0;
};
struct IsotopeSubPacket {
  int spectrum = 0;  // the run of spectra, counted over the whole file
  int first_bin = 0, bins = 0;
  int sub_packets = 0;
  int number = 0;  // 1..sub_packets
};
// A packet no table of the ground names: an acceptance report of an unknown class, or a science
// packet of an unknown sub-type.
struct UnknownAcceptance {};
struct UnknownScience {};

// Short form tests: the start (readings cleared, the scripted fault set), each reading, each
// load switched, each packet of 29 readings, and the end (faults cleared, the mode's end event).
struct TestStart {
  bool faulty_cruise = false;  // the GC heater is open
  bool faulty_eaft = false;    // reactor 9's heater is open
};
struct TestReading {
  int reading = 0;  // 1..232
  int channel = 0;  // 0: a slot with no measurement
};
struct TestSwitch {
  Load load;
  bool on = false;
};
struct TestPacket {
  int run = 0;     // the test run, counted over the whole file
  int number = 0;  // 1..8
  bool lost = false;
};
struct HighVoltage {
  double kilovolts = 0;
};
struct TestEnd {
  int mode = 0;
  bool faulty_cruise = false;
};

}  // namespace happen

using Happening =
    std::variant<happen::PowerOn, happen::Housekeeping, happen::Telecommand, happen::Event, happen::LimitEvent,
                 happen::ChecksumReport, happen::MemoryDump, happen::SelectMode, happen::IonTrap, happen::Heater,
                 happen::GcFlow, happen::DockingTarget, happen::Auxiliary, happen::RfCalibration,
                 happen::GcSpectrum, happen::IsotopeScan, happen::IsotopeSubPacket, happen::UnknownAcceptance,
                 happen::UnknownScience, happen::TestStart, happen::TestReading, happen::TestSwitch,
                 happen::TestPacket, happen::HighVoltage, happen::TestEnd>;

struct TimedHappening {
  int64_t offset = 0;  // seconds from the cycle's power-on
  Happening what;
};

// One cycle: its happenings in time order (those at the same second in the order they were
// planned), and the scripted tests (indices into scripted_tests()) its test runs carry out.
struct CycleTimeline {
  std::vector<TimedHappening> happenings;
  std::vector<int> test_runs;
  int spectra = 0;  // isotope spectra scanned
};

// Cycle `cycle` (from 0) of the instrument. Test runs and spectra are numbered over the whole
// file, from first_test_run and first_spectrum.
CycleTimeline cycle_timeline(int cycle, int first_test_run, int first_spectrum);

// Operating modes the cycle selects, and constants its happenings share with the encoders.
inline constexpr int kStandby = 0, kCruisePhase = 3, kCheckout = 4, kCalibration = 11, kAtmosphere = 13,
                     kSafe = 255;
inline constexpr int kPromType = 150, kEepromType = 151, kRamType = 152;
// RF calibration results (12-bit counts: 388.6 kHz + 0.071875 kHz a count).
inline constexpr int kRfNominalCount = 2002;  // 532.49 kHz
inline constexpr int kRfFaultyCount = 1597;   // 503.38 kHz
inline constexpr int kMaxBins = 110;          // bins a spectrum sub-packet carries (252 bytes)

}  // namespace morvane::sim
