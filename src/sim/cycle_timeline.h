// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <variant>
#include <vector>

#include "test_script.h"

namespace morvane::sim {

// What the instrument does in one three-hour cycle and when, as data: the simulated instrument
// plays these happenings in time order, and the packet encoders turn the ones that send
// something into packets. Nothing here draws a random number or builds a byte.

// A word of an event packet: a constant, the ADC word of a sensor read at that moment, or the
// operating mode the instrument is in at that moment.
struct Event_Word {
  enum class Source { Constant, Reading, Mode };
  Source source = Source::Constant;
  int value = 0;  // the constant, or the sensor read
};
Event_Word reading_of(int sensor);
Event_Word current_mode();

// The value a limit event reports: `value` itself (fixed), or the sensor's value at that moment
// held at or above `value` and raised by `margin` (at least), or held at or below `value` (at most).
struct Limit_Value {
  enum class Kind { Fixed, AtLeast, AtMost };
  Kind kind = Kind::Fixed;
  double value = 0;
  double margin = 0;
};

namespace happen {

struct Power_On {
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
  std::vector<Event_Word> words;
};
struct Limit_Event {
  int id = 0;
  int sensor = 0;
  Limit_Value value;
  double low = 0, high = 0;
};
struct Checksum_Report {
  bool as_event = false;  // a progress event, or else an acceptance report
  int memory_type = 0;
  int reports = 0;
};
struct Memory_Dump {
  int memory_type = 0;
  int cycle = 0;
};
struct Select_Mode {
  int mode = 0;
};
struct Ion_Trap {
  bool on = false;
};
struct Heater {
  int sensor = 0;  // heaters are named by their thermocouple sensor
  bool on = false;
};
struct Gc_Flow {
  bool on = false;
};
struct Docking_Target {
  double millimetres = 0;
};
struct Auxiliary {
  std::vector<int> sensors;  // one reading a second, the last one now
};
struct Rf_Calibration {
  int frequency_count = 0;
};
struct Gc_Spectrum {};
// The detector scans an isotope spectrum; its sub-packets follow.
struct Isotope_Scan {
  int first_bin = 0, bins = 0;
};
struct Isotope_Sub_Packet {
  int spectrum = 0;  // the run of spectra, counted over the whole file
  int first_bin = 0, bins = 0;
  int sub_packets = 0;
  int number = 0;  // 1..sub_packets
};
// A packet no table of the ground names: an acceptance report of an unknown class, or a science
// packet of an unknown sub-type.
struct Unknown_Acceptance {};
struct Unknown_Science {};

// Short form tests: the start (readings cleared, the scripted fault set), each reading, each
// load switched, each packet of 29 readings, and the end (faults cleared, the mode's end event).
struct Test_Start {
  bool faulty_cruise = false;  // the GC heater is open
  bool faulty_eaft = false;    // reactor 9's heater is open
};
struct Test_Reading {
  int reading = 0;  // 1..232
  int channel = 0;  // 0: a slot with no measurement
};
struct Test_Switch {
  Load load;
  bool on = false;
};
struct Test_Packet {
  int run = 0;     // the test run, counted over the whole file
  int number = 0;  // 1..8
  bool lost = false;
};
struct High_Voltage {
  double kilovolts = 0;
};
struct Test_End {
  int mode = 0;
  bool faulty_cruise = false;
};

}  // namespace happen

using Happening =
    std::variant<happen::Power_On, happen::Housekeeping, happen::Telecommand, happen::Event, happen::Limit_Event,
                 happen::Checksum_Report, happen::Memory_Dump, happen::Select_Mode, happen::Ion_Trap, happen::Heater,
                 happen::Gc_Flow, happen::Docking_Target, happen::Auxiliary, happen::Rf_Calibration,
                 happen::Gc_Spectrum, happen::Isotope_Scan, happen::Isotope_Sub_Packet, happen::Unknown_Acceptance,
                 happen::Unknown_Science, happen::Test_Start, happen::Test_Reading, happen::Test_Switch,
                 happen::Test_Packet, happen::High_Voltage, happen::Test_End>;

struct Timed_Happening {
  int64_t offset = 0;  // seconds from the cycle's power-on
  Happening what;
};

// One cycle: its happenings in time order (those at the same second in the order they were
// planned), and the scripted tests (indices into scripted_tests()) its test runs carry out.
struct Cycle_Timeline {
  std::vector<Timed_Happening> happenings;
  std::vector<int> test_runs;
  int spectra = 0;  // isotope spectra scanned
};

// Cycle `cycle` (from 0) of the instrument. Test runs and spectra are numbered over the whole
// file, from first_test_run and first_spectrum.
Cycle_Timeline cycle_timeline(int cycle, int first_test_run, int first_spectrum);

// Operating modes the cycle selects, and constants its happenings share with the encoders.
inline constexpr int kStandby = 0, kCruisePhase = 3, kCheckout = 4, kCalibration = 11, kAtmosphere = 13,
                     kSafe = 255;
inline constexpr int kPromType = 150, kEepromType = 151, kRamType = 152;
// RF calibration results (12-bit counts: 388.6 kHz + 0.071875 kHz a count).
inline constexpr int kRfNominalCount = 2002;  // 532.49 kHz
inline constexpr int kRfFaultyCount = 1597;   // 503.38 kHz
inline constexpr int kMaxBins = 110;          // bins a spectrum sub-packet carries (252 bytes)

}  // namespace morvane::sim
