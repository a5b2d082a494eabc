// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/catalogue.h"
#include "core/configuration.h"
#include "core/error.h"
#include "core/session.h"
#include "decoders/drawing.h"

namespace morvane {

inline constexpr const char* kAuxiliaryCaption = "Auxiliary Data Packet";
// The view's static texts and the captions beside its value labels.
inline constexpr const char* kAuxiliaryStaticTexts[] = {
    "Sensor readings", "Number of Auxiliary Data Packets", "AD590 compensation temperature",
    "N.B. Housekeeping data is not used to compensate for the effect of the cold junction"};
inline constexpr const char* kAuxiliaryLabelCaptions[] = {"Aux Data number", "Sequence Control", "Lander Time"};
inline constexpr const char* kAuxiliaryHeadings[] = {"Component", "Reading", "Units", "Lander time(s)",
                                                     "Chan. ID", "Word", "ADC Voltage(V)"};

// An auxiliary packet carries at most this many readings.
inline constexpr int kMaxAuxReadings = 29;

// One timed channel reading of an auxiliary packet.
struct AuxReading {
  int32_t Reading_Time = 0;  // lander time, seconds
  int32_t Channel_ID = 0;    // 0..65535
  int32_t Reading_Word = 0;  // 0..65535
};

// An ADC word in volts: the word as a signed 16-bit count x 10 / 32768 (0x8000 is -10 V).
double ADC_Voltage(int32_t word);

// Aux_Index: the science list indices of the auxiliary packets, in file order.
std::vector<int32_t> build_aux_index(const Catalogue& catalogue);

// The readings of an auxiliary packet of a binary file: the count at byte 18, then 8 bytes a
// reading from byte 20 (time high and low, channel ID, word). A time high word above 32767
// counts as -1 (such a time is low - 65536). More than 29 readings is "Subscript out of range";
// a count above 32767 "Overflow".
std::vector<AuxReading> Load_Lander_Data(const Session& session, const Packet_Entry& entry);

// The AD590 compensation temperature: the celsius that the N-type table gives for AD590_EMF, "0.00".
std::string ad590_temperature_text(const Configuration& config);

// One row of the readings table.
struct AuxRow {
  int sensor = 0;  // by the channel ID, the last matching sensor
  std::string name;
  int32_t channel_id = 0;
  int32_t word = 0;
  int32_t time = 0;
  double adc_voltage = 0;        // uncorrected
  std::string adc_voltage_text;  // "0.00000"
  double value = 0;              // thermocouple channels corrected by AD590_EMF / 10000 volts
  std::string value_text;        // "0.00"
  std::string unit;
};

// The row of reading number i (1-based, for the message) as the table shows it. A channel ID that
// names no sensor is "Subscript out of range".
AuxRow aux_row(const Configuration& config, const AuxReading& reading, int i);

struct AuxTable {
  Drawing drawing;  // headings and rows, right-aligned columns
  std::vector<AuxRow> rows;
  // A reading whose channel ID names no sensor ends the table with "Subscript out of range": the
  // rows before it stay, so the view shows what it can and reports this error.
  std::optional<RuntimeError> error;
};
// Lays out the readings up to the first whose channel ID names no sensor.
AuxTable draw_aux_table(const Configuration& config, const std::vector<AuxReading>& readings);

// What the view shows for one packet: the table and the value labels.
struct AuxPage {
  AuxTable table;
  std::string aux_number;     // "Aux Data number"
  std::string sequence;       // "Sequence Control"
  std::string lander_time;    // "Lander Time"
  std::string channel_count;  // the number of readings
};

// What the view sets when it opens, before it draws the first packet.
struct AuxOpening {
  std::string packet_count;  // "Number of Auxiliary Data Packets"
  int32_t scroll_maximum = 0;
  int32_t scroll_value = 0;
  std::string ad590_text;  // "AD590 compensation temperature", refreshed only on opening
};

// The state of one auxiliary view. The view calls Form_Load, sets what it returns, then shows
// Update_Auxiliary_Packet_Info; each scroll calls VScroll1_Change. The readings stay from one
// packet to the next: ZEB records carry none, so a ZEB file keeps the readings shown before.
class AuxiliaryPresenter {
 public:
  std::vector<int32_t> Aux_Index;
  int32_t Current_Aux_Number = 1;  // the first auxiliary packet unless the current science entry is one
  std::vector<AuxReading> readings;

  // Builds Aux_Index and picks the packet of Current_Science_Index. A file without auxiliary
  // packets is "Subscript out of range" with a message saying so.
  AuxOpening Form_Load(const Session& session);
  // Shows auxiliary packet `value` (1-based); Current_Science_Index is not written back.
  AuxPage VScroll1_Change(const Session& session, int32_t value);
  // Loads (binary files) and lays out packet Aux_Index(Current_Aux_Number); AD590_EMF is read afresh.
  // The labels are filled even when the table stops at a reading of no sensor (page.table.error).
  AuxPage Update_Auxiliary_Packet_Info(const Session& session);

  int32_t Channel_Count() const { return static_cast<int32_t>(readings.size()); }
};

}  // namespace morvane
