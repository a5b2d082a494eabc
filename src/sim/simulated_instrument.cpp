// SPDX-License-Identifier: MIT
#include "simulated_instrument.h"

#include <algorithm>
#include <cmath>
#include <variant>

#include "sim/instrument_model.h"
#include "sim/short_form_tests.h"
#include "packet_encoders.h"

namespace morvane::sim {

namespace {

constexpr int kTelecommandId = 0x1F3D;  // packet ID word of the telecommands being verified
constexpr int kStandalone = 3;          // segmentation flags of a packet that is not split

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

SimulatedInstrument::SimulatedInstrument(uint64_t seed) : physics_(kStartTime), random_(stream_seed(seed, 1)) {}

SimPacket SimulatedInstrument::next() {
  while (out_.empty()) {
    if (next_happening_ == timeline_.happenings.size()) plan_next_cycle();
    const TimedHappening& happening = timeline_.happenings[next_happening_++];
    now_ = cycle_start_ + happening.offset;
    physics_.advance_to(now_);
    std::visit([this](const auto& what) { play(what); }, happening.what);
  }
  SimPacket packet = out_.front();
  out_.pop_front();
  return packet;
}

void SimulatedInstrument::plan_next_cycle() {
  timeline_ = cycle_timeline(cycle_, static_cast<int>(test_runs_.size()), spectrum_runs_);
  test_runs_.insert(test_runs_.end(), timeline_.test_runs.begin(), timeline_.test_runs.end());
  spectrum_runs_ += timeline_.spectra;
  next_happening_ = 0;
  cycle_start_ = kStartTime + cycle_ * kCycleSeconds;
  ++cycle_;
}

void SimulatedInstrument::emit(SimPacket packet) {
  if (packet.kind() == PacketKind::Science) last_science_time_ = now_;
  out_.push_back(packet);
}

SimPacket SimulatedInstrument::start(LabelCode label, int flags, int& counter, int length) {
  const int sequence = counter;
  counter = (counter + 1) & 0x3FFF;
  return start_packet(label, flags, sequence, length, static_cast<int32_t>(now_), random_.below(65536));
}

double SimulatedInstrument::measure(int s) {
  return physics_.value(s) + random_.noise(InstrumentPhysics::noise_sigma(s));
}

uint16_t SimulatedInstrument::adc_reading(int s) {
  return codec_.adc_word(s, measure(s), physics_.board_temperature());
}

void SimulatedInstrument::play(const happen::PowerOn& h) {
  // A restart: counters from zero, every load off.
  hk_sequence_ = event_sequence_ = acceptance_sequence_ = dump_sequence_ = science_sequence_ = 0;
  for (int s = 1; s <= 27; ++s) physics_.set_heater(s, false);
  for (int v = 1; v <= InstrumentPhysics::kValves; ++v) physics_.set_valve(v, false);
  for (int i = 1; i <= InstrumentPhysics::kInjectors; ++i) physics_.set_injector(i, false);
  physics_.set_ion_trap(false);
  physics_.set_gc_flow(false);
  mode_ = kStandby;
  line_ = 0;
  // Word 10 the power-on pattern, words 11..27 start-up anomalies (every fourth start reports
  // one), words 28 and 29 the RAM data and code pages.
  std::vector<int> words(20, 0);
  words[0] = 0xAA00;
  if (h.cycle % 4 == 3) words[5] = 0x0004;
  words[18] = 2;
  words[19] = 1;
  event(1, 55001, words);
}

void SimulatedInstrument::play(const happen::Housekeeping& h) {
  const bool complete = h.sub_type == selector_value(LabelCode::Complete);
  const LabelCode label = label_of(PacketKind::Housekeeping, h.sub_type, FormatFamily::Frames282);
  SimPacket p = start(label, kStandalone, hk_sequence_, complete ? 96 : 58);
  const double junction_emf = codec_.fast_emf(physics_.board_temperature());
  std::vector<uint8_t> sensor_bytes(kSensors.size());
  for (int s = 1; s <= static_cast<int>(kSensors.size()); ++s) {
    sensor_bytes[static_cast<size_t>(s - 1)] = codec_.hk_byte(s, measure(s), junction_emf);
  }
  encode_housekeeping(p, h.sub_type, mode_, line_, sensor_bytes);
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
  const std::array<int, 16> registers{0x0100 | (hk_sequence_ % 8),
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
  encode_registers(p, registers);
  emit(p);
}

void SimulatedInstrument::play(const happen::Telecommand& h) { telecommand(h.type, h.sub_type, h.failure_code); }

void SimulatedInstrument::play(const happen::Event& h) {
  // Readings are taken before the packet is started, as the instrument samples, then reports.
  std::vector<int> words;
  words.reserve(h.words.size());
  for (const EventWord& w : h.words) {
    switch (w.source) {
      case EventWord::Source::Constant: words.push_back(w.value); break;
      case EventWord::Source::Reading: words.push_back(adc_reading(w.value)); break;
      case EventWord::Source::Mode: words.push_back(mode_); break;
    }
  }
  event(h.event_class, h.id, words);
}

void SimulatedInstrument::play(const happen::LimitEvent& h) {
  double value = h.value.value;
  if (h.value.kind == LimitValue::Kind::AtLeast) value = std::max(physics_.value(h.sensor), value) + h.value.margin;
  if (h.value.kind == LimitValue::Kind::AtMost) value = std::min(physics_.value(h.sensor), value) - h.value.margin;
  limit_event(h.id, h.sensor, value, h.low, h.high);
}

void SimulatedInstrument::play(const happen::ChecksumReport& h) {
  const int length = 18 + 8 * h.reports;
  SimPacket p = h.as_event
                     ? start(LabelCode::NpeMemoryChecksum, kStandalone, event_sequence_, length)
                     : start(LabelCode::MemoryChecksum, kStandalone, acceptance_sequence_, length);
  Random contents(static_cast<uint64_t>(h.memory_type) * 104729 + static_cast<uint64_t>(h.reports));
  std::vector<ChecksumRow> rows;
  for (int r = 1; r <= h.reports; ++r) {
    rows.push_back({h.memory_type - 149, 0x0400 * (r - 1), 0x0400, static_cast<int>(contents.next() & 0xFFFF)});
  }
  encode_checksum_report(p, h.memory_type, rows);
  emit(p);
}

void SimulatedInstrument::play(const happen::MemoryDump& h) {
  // Two blocks: a page and address, the number of words, the words.
  SimPacket p = start(LabelCode::MemoryDump, kStandalone, dump_sequence_, 64);
  Random contents(static_cast<uint64_t>(h.memory_type) * 7919 + static_cast<uint64_t>(h.cycle % 5));
  const int base = h.memory_type == kRamType ? 0x8000 : h.memory_type == kEepromType ? 0x4000 : 0x0000;
  std::vector<MemoryBlock> blocks(2);
  for (int block = 0; block < 2; ++block) {
    MemoryBlock& b = blocks[static_cast<size_t>(block)];
    b.page = h.memory_type - 149;
    b.address = base + 0x0100 * (block + 1);
    b.words.resize(block == 0 ? 8 : 9);
    for (int& w : b.words) w = static_cast<int>(contents.next() & 0xFFFF);
  }
  encode_memory_dump(p, h.memory_type, blocks);
  emit(p);
}

void SimulatedInstrument::play(const happen::SelectMode& h) {
  telecommand(193, h.mode);
  event(1, 55005, {(mode_ << 8) | (line_ & 0xFF), h.mode << 8, 0x0000, 0x0001, 0x0000});
  mode_ = h.mode;
  line_ = 0;
}

void SimulatedInstrument::play(const happen::Auxiliary& h) {
  const int count = static_cast<int>(h.sensors.size());
  SimPacket p = start(LabelCode::AuxiliaryData, kStandalone, science_sequence_, 20 + 8 * count);
  std::vector<AuxReading> readings;
  int i = 0;
  for (int s : h.sensors) {
    ++i;
    const auto time = static_cast<int32_t>(now_ - (count - i));  // one reading a second
    readings.push_back({time, kSensors[static_cast<size_t>(s - 1)].channel_id, adc_reading(s)});
  }
  encode_auxiliary(p, readings);
  emit(p);
}

void SimulatedInstrument::play(const happen::RfCalibration& h) {
  // The drive amplitude and a sweep across the resonance, then the frequency found.
  SimPacket p = start(LabelCode::NormalProgressEvent, kStandalone, event_sequence_, 58);
  const int drive = codec_.adc_word(36, 640.0, 0.0);
  std::array<int, 18> sweep{};
  for (int i = 0; i < 18; ++i) {
    const double response = 3000.0 * gaussian(i, 9.0, 3.0) + random_.noise(20.0);
    sweep[static_cast<size_t>(i)] = static_cast<int>(std::max(0.0, response));
  }
  encode_rf_calibration(p, drive, sweep, h.frequency_count);
  emit(p);
}

void SimulatedInstrument::play(const happen::GcSpectrum&) {
  // A chromatogram: a few eluting compounds on a slowly rising baseline.
  struct Peak {
    double bin, width, height;
  };
  static constexpr Peak kPeaks[] = {
      {12, 1.8, 4.2e5}, {27, 2.5, 6.0e4}, {41, 3.0, 1.5e5}, {66, 3.5, 9.0e3}, {90, 4.0, 2.2e4}};
  SimPacket p = start(LabelCode::GcSpectrum, kStandalone, science_sequence_, 32 + 2 * kMaxBins);
  const double scale = 0.7 + 0.6 * random_.uniform();
  std::vector<uint16_t> bins(kMaxBins);
  for (int b = 0; b < kMaxBins; ++b) {
    double counts = 200.0 + 2.0 * b;
    for (const Peak& peak : kPeaks) counts += scale * peak.height * gaussian(b, peak.bin, peak.width);
    counts += random_.noise(std::sqrt(counts));
    bins[static_cast<size_t>(b)] = bin_word(counts);
  }
  encode_gc_spectrum(p, bins);
  emit(p);
}

void SimulatedInstrument::play(const happen::IsotopeScan& h) {
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
  for (int b = h.first_bin; b < h.first_bin + h.bins; ++b) {
    const double mass = 10.0 + b * 45.0 / 1024.0;
    double counts = 30.0;
    for (const Peak& p : kPeaks) counts += scale * p.height * gaussian(mass, p.mass, 0.12);
    counts += random_.noise(std::sqrt(counts));
    spectrum_words_[static_cast<size_t>(b)] = bin_word(counts);
  }
  const int sub_packets = std::max(1, (h.bins + kMaxBins - 1) / kMaxBins);
  data_loss_sub_packet_ = random_.chance(0.1) ? 1 + random_.below(sub_packets) : 0;
}

void SimulatedInstrument::play(const happen::IsotopeSubPacket& h) {
  const int first = h.first_bin + kMaxBins * (h.number - 1);
  const int n = std::min(kMaxBins, h.first_bin + h.bins - first);
  const int flags = h.sub_packets == 1 ? 3 : h.number == 1 ? 2 : h.number == h.sub_packets ? 1 : 0;
  SimPacket p = start(LabelCode::IsotopeSpectrum, flags, science_sequence_, 32 + 2 * n);
  p.spectrum = h.spectrum;
  int flag_word = h.number == h.sub_packets ? 0x4000 : 0;  // the detector's scan ended
  if (h.number == data_loss_sub_packet_) flag_word |= 0x8000;
  const auto from = spectrum_words_.begin() + first;
  encode_isotope_sub_packet(p, h.number, flag_word, first, std::vector<uint16_t>(from, from + n));
  emit(p);
}

void SimulatedInstrument::play(const happen::UnknownAcceptance&) {
  SimPacket p = start(LabelCode::UnknownAcceptance, kStandalone, acceptance_sequence_, 24);
  encode_acceptance(p, 5, kTelecommandId, 0xC000 | (telecommand_sequence_ & 0x3FFF));
  emit(p);
}

void SimulatedInstrument::play(const happen::UnknownScience&) {
  SimPacket p = start(LabelCode::ScienceUnknown, kStandalone, science_sequence_, 24);
  p.put_word(word_at::kSubType, 4);
  emit(p);
}

void SimulatedInstrument::play(const happen::TestStart& h) {
  readings_ = {};
  if (h.faulty_cruise) physics_.set_heater_open(18, true);  // the GC heater
  if (h.faulty_eaft) physics_.set_heater_open(9, true);     // reactor 9
}

void SimulatedInstrument::play(const happen::TestReading& h) {
  line_ = h.reading;
  Reading& r = readings_[static_cast<size_t>(h.reading)];
  r.time = static_cast<int32_t>(now_);
  r.channel = h.channel;
  r.word = h.channel == 0 ? 0 : adc_reading(sensor_of_channel(h.channel));
}

void SimulatedInstrument::play(const happen::TestSwitch& h) {
  if (h.load.kind == Load::Kind::Heater) physics_.set_heater(h.load.number, h.on);
  if (h.load.kind == Load::Kind::Valve) physics_.set_valve(h.load.number, h.on);
  if (h.load.kind == Load::Kind::Injector) physics_.set_injector(h.load.number, h.on);
}

void SimulatedInstrument::play(const happen::TestPacket& h) {
  // 29 readings of the running test, as an auxiliary packet.
  SimPacket p = start(LabelCode::AuxiliaryData, kStandalone, science_sequence_, 252);
  p.lost = h.lost;
  p.test = h.run;
  p.test_packet = h.number;
  std::vector<AuxReading> readings;
  for (int j = 1; j <= 29; ++j) {
    const Reading& r = readings_[static_cast<size_t>((h.number - 1) * 29 + j)];
    readings.push_back({r.time, r.channel, r.word});
  }
  encode_auxiliary(p, readings);
  emit(p);
}

void SimulatedInstrument::play(const happen::TestEnd& h) {
  physics_.set_heater_open(18, false);
  physics_.set_heater_open(9, false);
  if (h.faulty_cruise) {
    physics_.set_high_voltage(2.1);
    limit_event(55009, 31, 2.1, 1.8, 2.5);
  }
  line_ = 0;
  event(1, 55107, {h.mode});
}

void SimulatedInstrument::event(int event_class, int id, const std::vector<int>& words) {
  const LabelCode label = label_of(PacketKind::ProgressEvent, event_class, FormatFamily::Frames282);
  const int needed = 18 + 2 * static_cast<int>(words.size());
  SimPacket p = start(label, kStandalone, event_sequence_, needed);
  encode_event(p, event_class, id, words);
  emit(p);
}

void SimulatedInstrument::limit_event(int id, int sensor, double value, double low, double high) {
  // Limits are checked on the raw ADC words; the words convert without a cold junction.
  const int channel = kSensors[static_cast<size_t>(sensor - 1)].channel_id;
  event(2, id,
        {channel, codec_.adc_word(sensor, value, 0.0), codec_.adc_word(sensor, high, 0.0),
         codec_.adc_word(sensor, low, 0.0)});
}

void SimulatedInstrument::telecommand(int type, int sub_type, int failure_code) {
  telecommand_sequence_ = (telecommand_sequence_ + 1) & 0x3FFF;
  const int sequence_control = 0xC000 | telecommand_sequence_;
  const int command = (type << 8) | sub_type;
  if (failure_code == 0) {
    SimPacket p = start(LabelCode::AcceptanceSuccess, kStandalone, acceptance_sequence_, 24);
    encode_accepted(p, kTelecommandId, sequence_control, command);
    emit(p);
    return;
  }
  int detail1 = 0, detail2 = 0;
  if (failure_code == 1) detail1 = 24, detail2 = 18;          // bytes announced, bytes received
  if (failure_code == 2) detail1 = 0x3A7C, detail2 = 0x3A5C;  // checksum received, calculated
  if (failure_code == 5) detail1 = mode_;                     // the mode that refused it
  SimPacket p = start(LabelCode::AcceptanceFailure, kStandalone, acceptance_sequence_, 28);
  encode_rejected(p, kTelecommandId, sequence_control, failure_code, command, detail1, detail2);
  emit(p);
}

}  // namespace morvane::sim
