// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "sim_packet.h"

namespace morvane::sim {

// Where things lie in a packet, as byte offsets from its first byte (words high byte first).
// The header (identifier, flags and sequence count, length, lander time, sub-second word) is
// written by start_packet.
namespace word_at {
inline constexpr int kClass = 14;        // events and acceptance reports: the class, high byte
inline constexpr int kSubType = 16;      // housekeeping and science packets
inline constexpr int kEventId = 16;      // events: the event identifier
inline constexpr int kEventWords = 18;   // events: the event's own words
inline constexpr int kHkModeByte = 18;   // housekeeping: the mode, one byte
inline constexpr int kHkLine = 20;       // housekeeping: the line of the running sequence
inline constexpr int kHkSensors = 22;    // housekeeping: sensor s's byte at 21 + s
inline constexpr int kHkRegisters = 64;  // complete housekeeping: 16 register words
inline constexpr int kAuxCount = 18;     // auxiliary: the number of readings
inline constexpr int kAuxReadings = 20;  // auxiliary: reading i (from 1) at 12 + 8 i
inline constexpr int kTcPacketId = 16;   // acceptance reports: the telecommand's packet ID
inline constexpr int kTcSequence = 18;   //   its sequence control
inline constexpr int kTcCommand = 20;    //   accepted: its type and sub-type
inline constexpr int kTcFailure = 20;    //   rejected: the failure code, the command, two details
inline constexpr int kMemoryHeader = 16;  // dumps and checksum reports: memory type and count
inline constexpr int kDumpBlocks = 18;    // dumps: blocks of page, address, word count, words
inline constexpr int kRfDrive = 18;       // RF calibration: the drive amplitude word
inline constexpr int kRfSweep = 20;       //   the sweep across the resonance, 18 words
inline constexpr int kRfFrequency = 56;   //   the frequency found, under a "locked" flag
inline constexpr int kSpectrumFlags = 18;      // spectra: scan flags (0x4000 ended, 0x8000 data lost)
inline constexpr int kSpectrumFirstUnit = 20;  //   first detector unit of the sub-packet
inline constexpr int kSpectrumUnits = 22;      //   detector units in it
inline constexpr int kSpectrumOverflow = 24;
inline constexpr int kSpectrumFirstBin = 28;
inline constexpr int kSpectrumBinCount = 30;
inline constexpr int kSpectrumBins = 32;
}  // namespace word_at

// The selector value (sub-type or class) of a label, from the packet-kind table.
constexpr int selector_value(LabelCode label) { return label_rule(label).selector_value; }

// One timed reading of an auxiliary packet.
struct AuxReading {
  int32_t time = 0;
  int channel = 0;
  int word = 0;
};

void encode_housekeeping(SimPacket& p, int sub_type, int mode, int line, const std::vector<uint8_t>& sensor_bytes);
void encode_registers(SimPacket& p, const std::array<int, 16>& registers);
void encode_auxiliary(SimPacket& p, const std::vector<AuxReading>& readings);
void encode_event(SimPacket& p, int event_class, int id, const std::vector<int>& words);
// An acceptance report's class and the telecommand it concerns (a report of an unknown class
// carries no more).
void encode_acceptance(SimPacket& p, int event_class, int packet_id, int sequence_control);
void encode_accepted(SimPacket& p, int packet_id, int sequence_control, int command);
void encode_rejected(SimPacket& p, int packet_id, int sequence_control, int failure_code, int command, int detail1,
                     int detail2);
void encode_rf_calibration(SimPacket& p, int drive_word, const std::array<int, 18>& sweep, int frequency_count);

// A memory block of a dump: where it lies and its words.
struct MemoryBlock {
  int page = 0;
  int address = 0;
  std::vector<int> words;
};
void encode_memory_dump(SimPacket& p, int memory_type, const std::vector<MemoryBlock>& blocks);
// A checksum report's row r (from 1) covers `length` words from address.
struct ChecksumRow {
  int page = 0;
  int address = 0;
  int length = 0;
  int checksum = 0;
};
void encode_checksum_report(SimPacket& p, int memory_type, const std::vector<ChecksumRow>& rows);

void encode_gc_spectrum(SimPacket& p, const std::vector<uint16_t>& bins);
// Sub-packet `number` of an isotope spectrum: its bins from first_bin, the scan flags.
void encode_isotope_sub_packet(SimPacket& p, int number, int flag_word, int first_bin,
                               const std::vector<uint16_t>& bins);

}  // namespace morvane::sim
