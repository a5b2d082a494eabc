// SPDX-License-Identifier: MIT
#include "packet_encoders.h"

namespace morvane::sim {

void encode_housekeeping(SimPacket& p, int sub_type, int mode, int line, const std::vector<uint8_t>& sensor_bytes) {
  p.put_word(word_at::kSubType, sub_type);
  p.bytes[word_at::kHkModeByte] = static_cast<uint8_t>(mode);
  p.put_word(word_at::kHkLine, line);
  for (size_t i = 0; i < sensor_bytes.size(); ++i) p.bytes[word_at::kHkSensors + i] = sensor_bytes[i];
}

void encode_registers(SimPacket& p, const std::array<int, 16>& registers) {
  for (int i = 0; i < 16; ++i) p.put_word(word_at::kHkRegisters + 2 * i, registers[static_cast<size_t>(i)]);
}

void encode_auxiliary(SimPacket& p, const std::vector<AuxReading>& readings) {
  p.put_word(word_at::kSubType, selector_value(LabelCode::AuxiliaryData));
  p.put_word(word_at::kAuxCount, static_cast<int>(readings.size()));
  int at = word_at::kAuxReadings;
  for (const AuxReading& r : readings) {
    p.put_word(at, (r.time >> 16) & 0xFFFF);
    p.put_word(at + 2, r.time & 0xFFFF);
    p.put_word(at + 4, r.channel);
    p.put_word(at + 6, r.word);
    at += 8;
  }
}

void encode_event(SimPacket& p, int event_class, int id, const std::vector<int>& words) {
  p.event_class = event_class;
  p.put_word(word_at::kClass, event_class << 8);
  p.put_word(word_at::kEventId, id);
  int at = word_at::kEventWords;
  for (int w : words) {
    p.put_word(at, w & 0xFFFF);
    at += 2;
  }
}

void encode_acceptance(SimPacket& p, int event_class, int packet_id, int sequence_control) {
  p.event_class = event_class;
  p.put_word(word_at::kClass, event_class << 8);
  p.put_word(word_at::kTcPacketId, packet_id);
  p.put_word(word_at::kTcSequence, sequence_control);
}

void encode_accepted(SimPacket& p, int packet_id, int sequence_control, int command) {
  encode_acceptance(p, selector_value(LabelCode::AcceptanceSuccess), packet_id, sequence_control);
  p.put_word(word_at::kTcCommand, command);
}

void encode_rejected(SimPacket& p, int packet_id, int sequence_control, int failure_code, int command, int detail1,
                     int detail2) {
  encode_acceptance(p, selector_value(LabelCode::AcceptanceFailure), packet_id, sequence_control);
  p.put_word(word_at::kTcFailure, failure_code);
  p.put_word(word_at::kTcFailure + 2, command);
  p.put_word(word_at::kTcFailure + 4, detail1);
  p.put_word(word_at::kTcFailure + 6, detail2);
}

void encode_rf_calibration(SimPacket& p, int drive_word, const std::array<int, 18>& sweep, int frequency_count) {
  static_assert(word_at::kRfSweep + 2 * 18 == word_at::kRfFrequency);
  std::vector<int> words{drive_word};
  words.insert(words.end(), sweep.begin(), sweep.end());
  words.push_back(0x1000 | (frequency_count & 0x0FFF));
  encode_event(p, selector_value(LabelCode::NormalProgressEvent), 55113, words);
}

void encode_memory_dump(SimPacket& p, int memory_type, const std::vector<MemoryBlock>& blocks) {
  p.put_word(word_at::kMemoryHeader, (memory_type << 8) | static_cast<int>(blocks.size()));
  int at = word_at::kDumpBlocks;
  for (const MemoryBlock& block : blocks) {
    p.put_word(at, block.page);
    p.put_word(at + 2, block.address);
    p.put_word(at + 4, static_cast<int>(block.words.size()));
    at += 6;
    for (int w : block.words) {
      p.put_word(at, w);
      at += 2;
    }
  }
}

void encode_checksum_report(SimPacket& p, int memory_type, const std::vector<ChecksumRow>& rows) {
  p.event_class = selector_value(p.label);  // 10, as an event or as an acceptance report
  p.put_word(word_at::kClass, p.event_class << 8);
  p.put_word(word_at::kMemoryHeader, (memory_type << 8) | static_cast<int>(rows.size()));
  int at = word_at::kDumpBlocks;  // row r at word 4r + 6
  for (const ChecksumRow& row : rows) {
    p.put_word(at, row.page);
    p.put_word(at + 2, row.address);
    p.put_word(at + 4, row.length);
    p.put_word(at + 6, row.checksum);
    at += 8;
  }
}

void encode_gc_spectrum(SimPacket& p, const std::vector<uint16_t>& bins) {
  const auto count = static_cast<int>(bins.size());
  p.put_word(word_at::kSubType, selector_value(LabelCode::GcSpectrum));
  p.put_word(word_at::kSpectrumFirstUnit, 1);
  p.put_word(word_at::kSpectrumUnits, count);
  p.put_word(word_at::kSpectrumOverflow, 0xFFFF);
  p.put_word(word_at::kSpectrumBinCount, count);
  for (int b = 0; b < count; ++b) p.put_word(word_at::kSpectrumBins + 2 * b, bins[static_cast<size_t>(b)]);
}

void encode_isotope_sub_packet(SimPacket& p, int number, int flag_word, int first_bin,
                               const std::vector<uint16_t>& bins) {
  const auto count = static_cast<int>(bins.size());
  p.put_word(word_at::kSubType, selector_value(LabelCode::IsotopeSpectrum));
  p.put_word(word_at::kSpectrumFlags, flag_word);
  p.put_word(word_at::kSpectrumFirstUnit, number);
  p.put_word(word_at::kSpectrumUnits, count);
  p.put_word(word_at::kSpectrumOverflow, 0xFFFF);  // no overflow
  p.put_word(word_at::kSpectrumOverflow + 2, 0);
  p.put_word(word_at::kSpectrumFirstBin, first_bin);
  p.put_word(word_at::kSpectrumBinCount, count);
  for (int j = 0; j < count; ++j) p.put_word(word_at::kSpectrumBins + 2 * j, bins[static_cast<size_t>(j)]);
}

}  // namespace morvane::sim
