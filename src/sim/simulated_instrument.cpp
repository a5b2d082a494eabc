// SPDX-License-Identifier: MIT
#include "simulated_instrument.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include "sim/instrument_model.h"
#include "sim/short_form_tests.h"
#include "test_script.h"

namespace morvane::sim {

namespace {

constexpr int kTelecommandId = 0x1F3D;  // packet ID word of the telecommands being verified
constexpr int kStandalone = 3;          // segmentation flags of a packet that is not split
constexpr int kMaxBins = 110;           // bins a spectrum sub-packet carries (252 bytes)
constexpr int kPromType = 150, kEepromType = 151, kRamType = 152;
constexpr int kCruisePhase = 3, kCheckout = 4, kAtmosphere = 13, kCalibration = 11, kSafe = 255, kStandby = 0;

// Nominal and faulty RF calibration results (12-bit counts: 388.6 kHz + 0.071875 kHz a count).
constexpr int kRfNominalCount = 2002;  // 532.49 kHz
constexpr int kRfFaultyCount = 1597;   // 503.38 kHz

// Spectra bin coding: 12-bit mantissa, 4-bit binary exponent.
uint16_t bin_word(double counts) {
  auto c = static_cast<uint64_t>(std::max(0.0, std::round(counts)));
  int exponent = 0;
  while ((c >> exponent) > 4095 && exponent < 15) ++exponent;
  const uint64_t mantissa = std::min<uint64_t>(c >> exponent, 4095);
  return static_cast<uint16_t>((mantissa << 4) | static_cast<uint64_t>(exponent));
}

double gaussian(double x, double centre, double width) {
  const double z = (x - centre) / width;
  return z * z > 100.0 ? 0.0 : std::exp(-0.5 * z * z);  // far tails are nothing, and slow to compute
}

// The heaters the valve and PWM enable registers show, bit 0 first.
constexpr int kValveBits[16] = {1, 2, 4, 6, 7, 8, 9, 10, 11, 13, 14, 15, 16, 17, 18, 19};
constexpr int kPwmBits[16] = {1, 2, 4, 5, 6, 7, 8, 9, 10, 27, 18, 16, 17, 19, 21, 3};

}  // namespace

Simulated_Instrument::Simulated_Instrument(uint64_t seed) : physics_(kStartTime), random_(stream_seed(seed, 1)) {}

Sim_Packet Simulated_Instrument::next() {
  while (out_.empty()) {
    if (next_action_ == actions_.size()) plan_cycle();
    Action& action = actions_[next_action_++];
    now_ = action.time;
    physics_.advance_to(now_);
    action.run();
  }
  Sim_Packet packet = out_.front();
  out_.pop_front();
  return packet;
}

void Simulated_Instrument::at(int64_t offset, std::function<void()> run) {
  actions_.push_back({cycle_start_ + offset, std::move(run)});
}

void Simulated_Instrument::plan_cycle() {
  actions_.clear();
  next_action_ = 0;
  const int cycle = cycle_;

  const int64_t cycle_start = cycle_start_;
  at(0, [this, cycle] { power_on(cycle); });
  for (int64_t s = 0; s < kCycleSeconds; s += 8) at(s, [this, s] { housekeeping(s % 32 == 0 ? 2 : 1); });
  at(2, [this] { telecommand(17, 17); });
  at(3, [this] { event(2, 0, {0, 0}); });  // the connection test's answer
  at(10, [this] { event(1, 55010, {0x0003, 0x0000, 0x0004, 0x0002}); });
  at(12, [this] { event(1, 55011, {0x0001, 0x1000 | kRfNominalCount, 0x0C80, 0x0140, 0x02D0, 0x0A20}); });
  at(20, [this] { telecommand(6, 9); });
  at(22, [this] { checksum_report(true, kEepromType, 3); });
  at(24, [this] { checksum_report(false, kPromType, 2); });
  at(60, [this] { select_mode(kCruisePhase); });
  at(300, [this] {
    telecommand(194, 1);  // high voltage enabled
    physics_.set_ion_trap(true);
  });

  // Cruise checks and the instrument checkout: the four short form tests.
  plan_test(0);
  plan_test(1);
  at(2350, [this] { select_mode(kCheckout); });
  plan_test(2);
  plan_test(3);

  // Atmosphere analysis: heaters up, carrier gas on, chromatograms and isotope spectra.
  at(4350, [this] { select_mode(kAtmosphere); });
  at(4360, [this] {
    for (int h : {16, 18, 19, 21}) physics_.set_heater(h, true);
  });
  at(4500, [this] { physics_.set_gc_flow(true); });
  at(4700, [this] {
    physics_.set_heater(16, false);  // the manifold is warm; its power goes to the oven
    physics_.set_heater(3, true);
  });
  for (int64_t s = 4400; s < 6900; s += 30) {
    at(s, [this] { auxiliary({18, 19, 16, 21, 3, 22, 23, 24, 26, 28, 30, 31, 36, 34, 35}); });
  }
  at(4600, [this] { rf_calibration(kRfNominalCount); });
  // The oven overshoots its operating limit for a while.
  at(5300, [this] { limit_event(55008, 3, std::max(physics_.value(3), 440.0) + 12.0, -20.0, 440.0); });
  at(5500, [this] { limit_event(55009, 3, std::min(physics_.value(3), 436.0), -20.0, 440.0); });
  for (int i = 0; i < 7; ++i) at(4800 + 300 * i, [this] { gc_spectrum(); });
  plan_spectrum(4950, 0, 330, 3);
  plan_spectrum(5250, 35, 990, 9);   // up to bin 1024
  plan_spectrum(5550, 400, 110, 1);  // a spectrum in one packet
  plan_spectrum(5850, 0, 1025, 10);  // the longest: ten sub-packets
  plan_spectrum(6150, 200, 440, 4);
  at(6900, [this] {
    for (int h : {16, 18, 19, 21, 3}) physics_.set_heater(h, false);
    physics_.set_gc_flow(false);
    event(1, 55107, {kAtmosphere});
  });

  // Calibration: RF report, undocking and docking again.
  at(7000, [this] { select_mode(kCalibration); });
  at(7010, [this] { rf_calibration(kRfNominalCount); });
  at(7100, [this] { physics_.set_docking_target(27.9); });
  at(7130, [this] { event(1, 55114, {adc_reading(29), 0x0145, 0x02D0}); });
  if (cycle % 2 == 1) at(7300, [this] { event(2, 55106, {0x0002, adc_reading(29)}); });
  at(7400, [this] { physics_.set_docking_target(14.3); });
  at(7440, [this] { event(1, 55114, {adc_reading(29), 0x0C80, 0x02D0}); });

  // Memory: dumps of each memory type, checksum reports as events and as acceptance reports.
  at(7600, [this] { telecommand(6, 5); });
  at(7602, [this, cycle] { memory_dump(kPromType, cycle); });
  at(7604, [this, cycle] { memory_dump(kEepromType, cycle); });
  at(7606, [this, cycle] { memory_dump(kRamType, cycle); });
  at(7650, [this] { telecommand(6, 9); });
  at(7652, [this] { checksum_report(true, kRamType, 5); });
  at(7654, [this] { checksum_report(true, kPromType, 1); });
  at(7656, [this] { checksum_report(false, kEepromType, 4); });
  at(7658, [this] { checksum_report(false, kRamType, 5); });
  at(7700, [this, cycle, cycle_start] {
    // Seconds since power-on in words 10 (x 256) and 11, error counts in words 14..32.
    const auto seconds = static_cast<int>(now_ - cycle_start);
    std::vector<int> words(23, 0);
    words[0] = seconds / 256;
    words[1] = seconds % 256;
    if (cycle % 3 == 2) words[4] = 2;
    event(1, 55103, words);
  });

  // The anomaly drill: every rejection code, every warning, and packets no table names.
  const std::pair<int, int> rejected[] = {{6, 2}, {195, 1}, {17, 17}, {194, 1}, {193, 12}, {6, 5}, {193, 255}};
  for (int code = 1; code <= 7; ++code) {
    const int type = rejected[code - 1].first, sub_type = rejected[code - 1].second;
    at(8000 + 10 * code, [this, type, sub_type, code] { telecommand(type, sub_type, code); });
  }
  const int warnings[] = {55002, 55003, 55004, 55006, 55007, 55101, 55102, 55104, 55108, 55109, 55110, 55111, 55112};
  for (int i = 0; i < 13; ++i) {
    const int id = warnings[i];
    at(8100 + 10 * i, [this, id] {
      if (id == 55002) {
        event(2, id, {0x0001, 0x0A3F, 0x1C07, 0x0012, 0x0004});  // DAC, PWM, valve, critical functions
      } else if (id == 55007) {
        limit_event(id, 21, 188.0, -20.0, 180.0);
      } else if (id == 55108) {
        event(2, id, {mode_, 17, 0x00C1, 0x0D00, 0x0000, 0x0032, 0xFFFF, 0x0001});
      } else {
        event(2, id, {0x0000, 0x0000});
      }
    });
  }
  at(8300, [this] { event(1, 55050, {0x0000}); });  // an identifier the ground does not know
  at(8310, [this] { event(1, 55002, {0x0000}); });  // a warning's identifier in a progress event
  at(8320, [this] { event(3, 55005, {0x0000}); });  // an event class nobody defined
  at(8330, [this] {
    // An acceptance report of an unknown class.
    Sim_Packet p = start(kAcceptanceId, kStandalone, acceptance_sequence_, 24, LabelCode::UnknownAcceptance);
    p.event_class = 5;
    p.put_word(14, 5 << 8);
    p.put_word(16, kTelecommandId);
    p.put_word(18, 0xC000 | (telecommand_sequence_ & 0x3FFF));
    emit(p);
  });
  at(8340, [this] { housekeeping(3); });  // a housekeeping sub-type the ground has no name for
  at(8350, [this] {
    Sim_Packet p = start(kScienceId, kStandalone, science_sequence_, 24, LabelCode::ScienceUnknown);
    p.put_word(16, 4);
    emit(p);
  });

  at(9000, [this] {
    select_mode(kSafe);
    physics_.set_ion_trap(false);
  });
  at(9600, [this] { select_mode(kStandby); });

  std::stable_sort(actions_.begin(), actions_.end(), [](const Action& a, const Action& b) { return a.time < b.time; });
  cycle_start_ += kCycleSeconds;
  ++cycle_;
}

void Simulated_Instrument::plan_test(int scripted) {
  const Scripted_Test& test = scripted_tests()[static_cast<size_t>(scripted)];
  const int run = static_cast<int>(test_runs_.size());
  test_runs_.push_back(scripted);
  const bool faulty_cruise = !test.healthy && test.mode == "Cruise Phase";
  const bool faulty_eaft = !test.healthy && test.mode == "EAFT";

  int64_t t = test.start_offset;
  at(t - 1, [this, faulty_cruise, faulty_eaft] {
    readings_ = {};
    if (faulty_cruise) physics_.set_heater_open(18, true);  // the GC heater
    if (faulty_eaft) physics_.set_heater_open(9, true);     // reactor 9
  });
  int k = 0;
  for (const Test_Step& step : test_script(test.mode)) {
    switch (step.kind) {
      case Test_Step::Kind::Read: {
        if (k > 0) t += kReadingInterval;
        const int reading = ++k;
        const int channel = step.channel;
        at(t, [this, reading, channel] {
          line_ = reading;
          Reading& r = readings_[static_cast<size_t>(reading)];
          r.time = static_cast<int32_t>(now_);
          r.channel = channel;
          r.word = channel == 0 ? 0 : adc_reading(sensor_of_channel(channel));
        });
        if (reading % 29 == 0) {
          const int number = reading / 29;
          const bool lost = number == test.missing_packet;
          at(t + 1, [this, run, number, lost] { test_packet(run, number, lost); });
        }
        if (reading == 80) {
          const int count = faulty_eaft ? kRfFaultyCount : kRfNominalCount;
          at(t + 1, [this, count] { rf_calibration(count); });
        }
        if (reading == 218 && faulty_cruise) {
          at(t + 1, [this] {
            physics_.set_high_voltage(1.2);
            event(2, 55105, {0x0001, adc_reading(31)});
            limit_event(55008, 31, 1.2, 1.8, 2.5);
          });
        }
        break;
      }
      case Test_Step::Kind::SwitchOn:
      case Test_Step::Kind::SwitchOff: {
        const Load load = step.load;
        const bool on = step.kind == Test_Step::Kind::SwitchOn;
        at(t, [this, load, on] {
          if (load.kind == Load::Kind::Heater) physics_.set_heater(load.number, on);
          if (load.kind == Load::Kind::Valve) physics_.set_valve(load.number, on);
          if (load.kind == Load::Kind::Injector) physics_.set_injector(load.number, on);
        });
        break;
      }
      case Test_Step::Kind::Wait: t += step.seconds; break;
    }
  }
  const int mode = test.mode == "EAFT" ? kCheckout : kCruisePhase;
  at(t + 5, [this, faulty_cruise, mode] {
    physics_.set_heater_open(18, false);
    physics_.set_heater_open(9, false);
    if (faulty_cruise) {
      physics_.set_high_voltage(2.1);
      limit_event(55009, 31, 2.1, 1.8, 2.5);
    }
    line_ = 0;
    event(1, 55107, {mode});
  });
}

void Simulated_Instrument::plan_spectrum(int64_t offset, int first_bin, int bins, int sub_packets) {
  if ((bins + kMaxBins - 1) / kMaxBins != sub_packets || first_bin + bins > 1025) {
    throw std::logic_error("a spectrum's sub-packets must hold its bins");
  }
  const int spectrum = spectrum_runs_++;
  at(offset, [this, first_bin, bins] {
    // An isotope scan of a carbon dioxide atmosphere: masses 10..55 over bins 0..1024.
    struct Peak {
      double mass, height;
    };
    static constexpr Peak kPeaks[] = {{12, 4.0e4}, {14, 2.0e4}, {16, 1.2e5},  {18, 3.0e5},  {19, 2.4e2}, {20, 6.0e2},
                                      {22, 1.8e4}, {28, 2.0e6}, {29, 1.46e4}, {32, 5.0e5},  {33, 4.0e2}, {34, 2.0e3},
                                      {40, 2.4e4}, {44, 9.0e6}, {45, 1.07e5}, {46, 3.69e4}, {47, 4.0e2}, {48, 1.5e1}};
    // Relative abundances, scaled so that the largest peak stays below the graph's top scale of
    // 100 000 counts a bin.
    const double scale = (0.8 + 0.4 * random_.uniform()) / 125;
    spectrum_words_.assign(1025, 0);
    for (int b = first_bin; b < first_bin + bins; ++b) {
      const double mass = 10.0 + b * 45.0 / 1024.0;
      double counts = 30.0;
      for (const Peak& p : kPeaks) counts += scale * p.height * gaussian(mass, p.mass, 0.12);
      counts += random_.noise(std::sqrt(counts));
      spectrum_words_[static_cast<size_t>(b)] = bin_word(counts);
    }
    data_loss_sub_packet_ = random_.chance(0.1) ? 1 + random_.below(std::max(1, (bins + kMaxBins - 1) / kMaxBins)) : 0;
  });
  for (int k = 1; k <= sub_packets; ++k) {
    at(offset + 4 * k, [this, spectrum, first_bin, bins, sub_packets, k] {
      const int first = first_bin + kMaxBins * (k - 1);
      const int n = std::min(kMaxBins, first_bin + bins - first);
      const int flags = sub_packets == 1 ? 3 : k == 1 ? 2 : k == sub_packets ? 1 : 0;
      Sim_Packet p = start(kScienceId, flags, science_sequence_, 32 + 2 * n, LabelCode::IsotopeSpectrum);
      p.spectrum = spectrum;
      p.put_word(16, 3);
      int flag_word = k == sub_packets ? 0x4000 : 0;  // the detector's scan ended
      if (k == data_loss_sub_packet_) flag_word |= 0x8000;
      p.put_word(18, flag_word);
      p.put_word(20, k);       // first detector unit of the sub-packet
      p.put_word(22, n);       // detector units in it
      p.put_word(24, 0xFFFF);  // no overflow
      p.put_word(26, 0);
      p.put_word(28, first);
      p.put_word(30, n);
      for (int j = 0; j < n; ++j) p.put_word(32 + 2 * j, spectrum_words_[static_cast<size_t>(first + j)]);
      emit(p);
    });
  }
}

void Simulated_Instrument::emit(Sim_Packet packet) {
  if (packet.identifier() == kScienceId) last_science_time_ = now_;
  out_.push_back(packet);
}

Sim_Packet Simulated_Instrument::start(int identifier, int flags, int& counter, int length, LabelCode label) {
  const int sequence = counter;
  counter = (counter + 1) & 0x3FFF;
  return start_packet(identifier, flags, sequence, length, static_cast<int32_t>(now_), random_.below(65536), label);
}

double Simulated_Instrument::measure(int s) {
  return physics_.value(s) + random_.noise(Instrument_Physics::noise_sigma(s));
}

uint16_t Simulated_Instrument::adc_reading(int s) {
  return codec_.adc_word(s, measure(s), physics_.board_temperature());
}

void Simulated_Instrument::housekeeping(int sub_type) {
  const bool complete = sub_type == 2;
  const LabelCode label = sub_type == 1 ? LabelCode::Concise
                          : complete    ? LabelCode::Complete
                                        : LabelCode::HousekeepingUnknown;
  Sim_Packet p = start(kHousekeepingId, kStandalone, hk_sequence_, complete ? 96 : 58, label);
  p.put_word(16, sub_type);
  p.bytes[18] = static_cast<uint8_t>(mode_);
  p.put_word(20, line_);
  const double junction_emf = codec_.fast_emf(physics_.board_temperature());
  for (int s = 1; s <= static_cast<int>(kSensors.size()); ++s) {
    p.bytes[static_cast<size_t>(21 + s)] = codec_.hk_byte(s, measure(s), junction_emf);
  }
  if (!complete) {
    emit(p);
    return;
  }
  int valves = 0, pwm = 0;
  for (int bit = 0; bit < 16; ++bit) {
    if (physics_.valve_on(kValveBits[bit])) valves |= 1 << bit;
    if (physics_.heater_on(kPwmBits[bit])) pwm |= 1 << bit;
  }
  const int critical = (physics_.ion_trap_on() ? 0x0004 : 0) | (mode_ == kCalibration ? 0x0001 : 0);
  const int hv_dac = physics_.ion_trap_on() ? static_cast<int>(std::lround(physics_.value(31) / 2.5 * 4095)) : 0;
  memory_test_address_ = (memory_test_address_ + 0x40) & 0xFFFF;
  const int words[16] = {0x0100 | (hk_sequence_ % 8),
                         valves,
                         critical,
                         pwm,
                         hv_dac,
                         valves,
                         critical,
                         pwm,
                         0xA500 | (physics_.ion_trap_on() ? 1 : 0),
                         0x1F00 | (telecommand_sequence_ & 0xFF),
                         0x1F00 | ((telecommand_sequence_ + 255) & 0xFF),
                         (mode_ << 8) | (line_ & 0xFF),
                         now_ - last_science_time_ < 32 ? 1 : 0,
                         memory_test_address_,
                         random_.chance(0.1) ? 1 : 0,
                         random_.below(3)};
  for (int i = 0; i < 16; ++i) p.put_word(64 + 2 * i, words[i]);
  emit(p);
}

void Simulated_Instrument::auxiliary(std::initializer_list<int> sensors) {
  const int count = static_cast<int>(sensors.size());
  Sim_Packet p = start(kScienceId, kStandalone, science_sequence_, 20 + 8 * count, LabelCode::AuxiliaryData);
  p.put_word(16, 1);
  p.put_word(18, count);
  int i = 0;
  for (int s : sensors) {
    ++i;
    const auto time = static_cast<int32_t>(now_ - (count - i));  // one reading a second
    p.put_word(12 + 8 * i, (time >> 16) & 0xFFFF);
    p.put_word(14 + 8 * i, time & 0xFFFF);
    p.put_word(16 + 8 * i, kSensors[static_cast<size_t>(s - 1)].channel_id);
    p.put_word(18 + 8 * i, adc_reading(s));
  }
  emit(p);
}

void Simulated_Instrument::test_packet(int run, int number, bool lost) {
  Sim_Packet p = start(kScienceId, kStandalone, science_sequence_, 252, LabelCode::AuxiliaryData);
  p.lost = lost;
  p.test = run;
  p.test_packet = number;
  p.put_word(16, 1);
  p.put_word(18, 29);
  for (int j = 1; j <= 29; ++j) {
    const Reading& r = readings_[static_cast<size_t>((number - 1) * 29 + j)];
    p.put_word(12 + 8 * j, (r.time >> 16) & 0xFFFF);
    p.put_word(14 + 8 * j, r.time & 0xFFFF);
    p.put_word(16 + 8 * j, r.channel);
    p.put_word(18 + 8 * j, r.word);
  }
  emit(p);
}

void Simulated_Instrument::gc_spectrum() {
  // A chromatogram: a few eluting compounds on a slowly rising baseline.
  struct Peak {
    double bin, width, height;
  };
  static constexpr Peak kPeaks[] = {
      {12, 1.8, 4.2e5}, {27, 2.5, 6.0e4}, {41, 3.0, 1.5e5}, {66, 3.5, 9.0e3}, {90, 4.0, 2.2e4}};
  Sim_Packet p = start(kScienceId, kStandalone, science_sequence_, 32 + 2 * kMaxBins, LabelCode::GcSpectrum);
  p.put_word(16, 2);
  p.put_word(20, 1);
  p.put_word(22, kMaxBins);
  p.put_word(24, 0xFFFF);
  p.put_word(30, kMaxBins);
  const double scale = 0.7 + 0.6 * random_.uniform();
  for (int b = 0; b < kMaxBins; ++b) {
    double counts = 200.0 + 2.0 * b;
    for (const Peak& peak : kPeaks) counts += scale * peak.height * gaussian(b, peak.bin, peak.width);
    counts += random_.noise(std::sqrt(counts));
    p.put_word(32 + 2 * b, bin_word(counts));
  }
  emit(p);
}

void Simulated_Instrument::event(int event_class, int id, const std::vector<int>& words) {
  const LabelCode label = event_class == 1    ? LabelCode::NormalProgressEvent
                          : event_class == 2  ? LabelCode::WarningAnomalousEvent
                          : event_class == 10 ? LabelCode::NpeMemoryChecksum
                                              : LabelCode::UnknownProgressEvent;
  const int needed = 18 + 2 * static_cast<int>(words.size());
  Sim_Packet p = start(kEventId, kStandalone, event_sequence_, needed, label);
  p.event_class = event_class;
  p.put_word(14, event_class << 8);
  p.put_word(16, id);
  int offset = 18;
  for (int w : words) {
    p.put_word(offset, w & 0xFFFF);
    offset += 2;
  }
  emit(p);
}

void Simulated_Instrument::limit_event(int id, int sensor, double value, double low, double high) {
  // Limits are checked on the raw ADC words; the words convert without a cold junction.
  const int channel = kSensors[static_cast<size_t>(sensor - 1)].channel_id;
  event(2, id,
        {channel, codec_.adc_word(sensor, value, 0.0), codec_.adc_word(sensor, high, 0.0),
         codec_.adc_word(sensor, low, 0.0)});
}

void Simulated_Instrument::rf_calibration(int frequency_count) {
  // Words 10..28: the drive amplitude and a sweep across the resonance; word 29 (packet bytes
  // 56-57) holds the frequency found, 12 bits, under a "locked" flag.
  Sim_Packet p = start(kEventId, kStandalone, event_sequence_, 58, LabelCode::NormalProgressEvent);
  p.event_class = 1;
  p.put_word(14, 1 << 8);
  p.put_word(16, 55113);
  p.put_word(18, codec_.adc_word(36, 640.0, 0.0));
  for (int i = 0; i < 18; ++i) {
    const double response = 3000.0 * gaussian(i, 9.0, 3.0) + random_.noise(20.0);
    p.put_word(20 + 2 * i, static_cast<int>(std::max(0.0, response)));
  }
  p.put_word(56, 0x1000 | (frequency_count & 0x0FFF));
  emit(p);
}

void Simulated_Instrument::telecommand(int type, int sub_type, int failure_code) {
  telecommand_sequence_ = (telecommand_sequence_ + 1) & 0x3FFF;
  const int packet_id = kTelecommandId;
  const int sequence_control = 0xC000 | telecommand_sequence_;
  const int command = (type << 8) | sub_type;
  if (failure_code == 0) {
    Sim_Packet p = start(kAcceptanceId, kStandalone, acceptance_sequence_, 24, LabelCode::AcceptanceSuccess);
    p.event_class = 1;
    p.put_word(14, 1 << 8);
    p.put_word(16, packet_id);
    p.put_word(18, sequence_control);
    p.put_word(20, command);
    emit(p);
    return;
  }
  int detail1 = 0, detail2 = 0;
  if (failure_code == 1) detail1 = 24, detail2 = 18;          // bytes announced, bytes received
  if (failure_code == 2) detail1 = 0x3A7C, detail2 = 0x3A5C;  // checksum received, calculated
  if (failure_code == 5) detail1 = mode_;                     // the mode that refused it
  Sim_Packet p = start(kAcceptanceId, kStandalone, acceptance_sequence_, 28, LabelCode::AcceptanceFailure);
  p.event_class = 2;
  p.put_word(14, 2 << 8);
  p.put_word(16, packet_id);
  p.put_word(18, sequence_control);
  p.put_word(20, failure_code);
  p.put_word(22, command);
  p.put_word(24, detail1);
  p.put_word(26, detail2);
  emit(p);
}

void Simulated_Instrument::select_mode(int mode) {
  telecommand(193, mode);
  event(1, 55005, {(mode_ << 8) | (line_ & 0xFF), mode << 8, 0x0000, 0x0001, 0x0000});
  mode_ = mode;
  line_ = 0;
}

void Simulated_Instrument::memory_dump(int memory_type, int cycle) {
  // Two blocks: a page and address, the number of words, the words.
  Sim_Packet p = start(kDumpId, kStandalone, dump_sequence_, 64, LabelCode::MemoryDump);
  p.put_word(16, (memory_type << 8) | 2);
  Random contents(static_cast<uint64_t>(memory_type) * 7919 + static_cast<uint64_t>(cycle % 5));
  int offset = 18;
  const int base = memory_type == kRamType ? 0x8000 : memory_type == kEepromType ? 0x4000 : 0x0000;
  for (int block = 0; block < 2; ++block) {
    const int words = block == 0 ? 8 : 9;
    p.put_word(offset, memory_type - 149);                // page
    p.put_word(offset + 2, base + 0x0100 * (block + 1));  // address
    p.put_word(offset + 4, words);
    offset += 6;
    for (int w = 0; w < words; ++w, offset += 2) p.put_word(offset, static_cast<int>(contents.next() & 0xFFFF));
  }
  emit(p);
}

void Simulated_Instrument::checksum_report(bool as_event, int memory_type, int reports) {
  const int length = 18 + 8 * reports;
  Sim_Packet p = as_event ? start(kEventId, kStandalone, event_sequence_, length, LabelCode::NpeMemoryChecksum)
                          : start(kAcceptanceId, kStandalone, acceptance_sequence_, length, LabelCode::MemoryChecksum);
  p.event_class = 10;
  p.put_word(14, 10 << 8);
  p.put_word(16, (memory_type << 8) | reports);
  Random contents(static_cast<uint64_t>(memory_type) * 104729 + static_cast<uint64_t>(reports));
  for (int r = 1; r <= reports; ++r) {
    const int first = 2 * (4 * r + 6) - 2;  // word 4r + 6
    p.put_word(first, memory_type - 149);
    p.put_word(first + 2, 0x0400 * (r - 1));
    p.put_word(first + 4, 0x0400);
    p.put_word(first + 6, static_cast<int>(contents.next() & 0xFFFF));
  }
  emit(p);
}

void Simulated_Instrument::power_on(int cycle) {
  // A restart: counters from zero, every load off.
  hk_sequence_ = event_sequence_ = acceptance_sequence_ = dump_sequence_ = science_sequence_ = 0;
  for (int s = 1; s <= 27; ++s) physics_.set_heater(s, false);
  for (int v = 1; v <= Instrument_Physics::kValves; ++v) physics_.set_valve(v, false);
  for (int i = 1; i <= Instrument_Physics::kInjectors; ++i) physics_.set_injector(i, false);
  physics_.set_ion_trap(false);
  physics_.set_gc_flow(false);
  mode_ = kStandby;
  line_ = 0;
  // Word 10 the power-on pattern, words 11..27 start-up anomalies (every fourth start reports
  // one), words 28 and 29 the RAM data and code pages.
  std::vector<int> words(20, 0);
  words[0] = 0xAA00;
  if (cycle % 4 == 3) words[5] = 0x0004;
  words[18] = 2;
  words[19] = 1;
  event(1, 55001, words);
}

}  // namespace morvane::sim
