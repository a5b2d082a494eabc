// SPDX-License-Identifier: MIT
#include "decoders/information_translation.h"

#include <string>

#include "core/conversion.h"
#include "core/number_text.h"
#include "decoders/memory_layout.h"

namespace morvane {

namespace {

std::string dec(int64_t number) { return std::to_string(number); }

// The translator of one packet: its words, the lines being filled and the colour shortcuts.
class Translator {
 public:
  Translator(const Configuration& config, const InformationWords& words, Drawing& memory)
      : config_(config), words_(words), memory_(memory) {}

  Translation translate(LabelCode label) {
    switch (label) {
      case LabelCode::AcceptanceSuccess: acceptance_success(); break;
      case LabelCode::AcceptanceFailure: acceptance_failure(); break;
      case LabelCode::UnknownAcceptance:
        line(1, "Unknown Acceptance Packet");
        line(2, "I haven't a clue what's happening");
        break;
      case LabelCode::NormalProgressEvent: progress_event(); break;
      case LabelCode::WarningAnomalousEvent: anomalous_event(); break;
      case LabelCode::UnknownProgressEvent: line(1, "An unknown progress event occurred"); break;
      case LabelCode::MemoryDump: memory_dump(); break;
      case LabelCode::NpeMemoryChecksum: memory_checksum(); break;
      case LabelCode::Empty: line(1, "Looks like an empty packet, perhaps Morvane is bored"); break;
      case LabelCode::Unknown: line(1, "Unknown packet - user to interpret"); break;
      default: break;  // the acceptance class " Memory Checksum         " and the other lists' labels
    }
    return lines_;
  }

 private:
  int32_t W(int n) const { return words_.word(n); }
  const std::string& H(int n) const { return words_.hex(n); }
  void line(int i, std::string text) { lines_[static_cast<size_t>(i - 1)].text = std::move(text); }
  void colour(int i, Colour c) { lines_[static_cast<size_t>(i - 1)].colour = c; }
  void all_red() {
    for (auto& l : lines_) l.colour = kRed;
  }
  std::string result(int n) const { return get_line_result(config_, W(10), W(n)); }

  void acceptance_success() {
    line(1, "Packet ID of accepted packet         " + H(9));
    line(2, "Sequence control accepted packet " + H(10));
  }

  void acceptance_failure() {
    all_red();
    line(1, "Packet ID of rejected packet         " + H(9));
    line(2, "Sequence control rejected packet " + H(10));
    const int type = W(12) / 256, sub_type = W(12) - type * 256;
    line(4,
         "TC type  " + dec(type) + "    TC sub-type " + dec(sub_type) + "    -    " + telecommand_name(type, sub_type));
    switch (W(11)) {
      case 1:
        line(3, "Incomplete packet ");
        line(5, dec(W(13)) + " bytes in header, " + dec(W(14)) + " bytes actually received");
        break;
      case 2:
        line(3, "Incorrect Checksum ");
        line(5, "Checksum received: " + H(13) + "  Calculated checksum: " + H(14));
        break;
      case 3: line(3, "Incorrect Application ID"); break;
      case 4: line(3, "Invalid Command Code"); break;
      case 5:
        line(3, "Not allowed in this mode/state");
        line(5, "Current operating mode or SD2 status " + dec(W(13)));
        break;
      case 6:
        line(3, "Packet data field inconsistent");
        line(5, "Further manual decoding necessary");
        break;
      default:
        line(3, "Error code, " + dec(W(11)) + ", not known");
        line(5, "You'll have to sort out what's happening");
        break;
    }
  }

  void unknown_event_id() {
    line(1, "Unknown Event ID");
    line(2, "You're on you own for this one");
  }

  void progress_event() {
    const int32_t id = W(9);
    if (id - kFirstEventId < 0 || id - kFirstEventId > kEventIdSpan) {
      unknown_event_id();
      return;
    }
    switch (id) {
      case 55001: power_on(); break;
      case 55005: {
        const int32_t mode = W(10) / 256;
        line(1, "Operating mode selection");
        line(2, "Current mode  " + dec(mode) + " at line " + dec(W(10) - 256 * mode));
        line(3, "Selected mode " + dec(W(11) / 256));
        line(4, "Mode parameters   " + H(12) + "   " + H(13) + "   " + H(14));
        break;
      }
      case 55010:
        line(1, "SD2 Backup RAM Received");
        line(2, "SD2 status " + H(10));
        line(3, "Drill depth   " + H(11));
        line(4, "Carousel position " + H(12) + " Oven number " + H(13));
        break;
      case 55011:
        line(1, "Morvane Backup RAM Received");
        // No blank before the calibration word's text: the line has always read so.
        line(2, "Carousel use state " + H(10) + "         RF Calibration word" + H(11));
        line(3, "Docking station motor,     upper position " + H(12) + ",   lower position " + H(13));
        line(4, "Docking station sensor value,   docked " + H(14) + ",         undocked " + H(15));
        break;
      case 55103: {
        line(1, "WGA memory check at " + dec(int64_t{W(10)} * 256 + W(11)) + " seconds");
        int64_t errors = 0;
        for (int n = 14; n <= 32; ++n) errors += W(n);
        line(2, errors < 1 ? "No errors in WGA memory map detected" : "Errors in WGA memory map detected");
        break;
      }
      case 55107: line(1, "Mode " + dec(W(10)) + " execution just completed"); break;
      case 55113: line(1, "RF Calibration report"); break;
      case 55114: line(1, "Docking station sensor data"); break;
      default: unknown_event_id(); break;
    }
  }

  void power_on() {
    line(1, "Morvane Power-on start");
    bool normal = W(10) == kPowerOnPattern;
    for (int n = 11; n <= 27; ++n) normal = normal && W(n) == 0;
    if (normal) {
      line(2, "Normal startup - no anomalies detected");
    } else {
      line(2, "Anomalies detected, there are lots of start-up parameters - use the TC/TM document");
      colour(2, kRed);
    }
    line(3, "Selected RAM data page  " + dec(W(28)));
    line(4, "Selected RAM code page " + dec(W(29)));
  }

  void anomalous_event() {
    all_red();
    switch (W(9)) {
      case 0:
        line(1, "Connection Test");
        line(3, "All OK");
        colour(1, kBlack);
        colour(3, kBlack);
        break;
      case 55002:
        line(1, "Morvane Failure");
        line(2, "DAC Control Register                     " + H(11));
        line(3, "PWM Control Register                   " + H(12));
        line(4, "Valve Control Register                   " + H(13));
        line(5, "Critical Functions Control Register " + H(14));
        break;
      case 55003: line(1, "Morvane Timeout"); break;
      case 55004: line(1, "RSST checksum failure"); break;
      case 55006: line(1, "Memory check failure"); break;
      case 55007:
        line(1, "Safe limit violation");
        line(2, Get_Sensor_Name(config_, W(10)) + " reading exceeded safe limit");
        line(3, "Sensor ADC reading " + H(11) + "    -   " + result(11));
        line(4, "Maximum safe limit " + H(12) + "(hex)  -   " + result(12));
        line(5, "Minimum safe limit " + H(13) + "(hex)  -   " + result(13));
        break;
      case 55008:
        line(1, "Operating limit excursion");
        line(2, Get_Sensor_Name(config_, W(10)) + " reading exceeded normal operating limit");
        line(3, "Sensor ADC reading " + H(11) + "(hex)    -   " + result(11));
        operating_limit_lines();
        break;
      case 55009:
        line(1, "Operating limit return");
        line(2, Get_Sensor_Name(config_, W(10)) + " reading returned to normal operating range");
        line(3, "Sensor ADC reading " + H(11) + "    -   " + result(11));
        operating_limit_lines();
        break;
      case 55101: line(1, "Monitor mode event - Timed out"); break;
      case 55102: line(1, "WGA communication error"); break;
      case 55104: line(1, "Scan function in WGA does not match that written"); break;
      case 55105: line(1, "HT did not ramp to required value within timeout period"); break;
      case 55106: line(1, "Docking station failed to dock/undock"); break;
      case 55108:
        line(1, "Parameters for a mode event are incorrect");
        line(2, "Operating mode " + dec(W(10)) + ", at line number " + dec(W(11)));
        line(4, "Mode event parameters causing problem");
        line(5, H(12) + "   " + H(13) + "   " + H(14) + "   " + H(15) + "   " + H(16) + "   " + H(17));
        break;
      case 55109: line(1, "No RAM page available for science spectra storage"); break;
      case 55110: line(1, "Spectra storage data page is full"); break;
      case 55111: line(1, "Science data packets buffer is full"); break;
      case 55112: line(1, "No RAM page available for Science data packet storage"); break;
      default: line(1, "Unknown cause of anomalous warning packet"); break;
    }
  }

  void operating_limit_lines() {
    line(4, "Maximum operating limit " + H(12) + "(hex)  -   " + result(12));
    line(5, "Minimum operating limit  " + H(13) + "(hex)  -   " + result(13));
  }

  static std::string memory_type(int type) {
    switch (type) {
      case kMemoryTypePROM: return "PROM";
      case kMemoryTypeEEPROM: return "EEPROM";
      case kMemoryTypeRAM: return "RAM";
      default: return "";
    }
  }

  void memory_dump() {
    const int blocks = W(9) % 256, type = W(9) / 256;
    line(1, "Memory dump          Total of " + dec(blocks) + " blocks of memory");
    const std::string name = memory_type(type);
    if (name.empty()) {
      line(2, "Unknown memory type");
      colour(2, kRed);
    } else {
      line(2, "Memory type - " + name);
    }
    Display_Memory_Data(words_, memory_);
  }

  void memory_checksum() {
    const int reports = W(9) % 256, type = W(9) / 256;
    std::string name = memory_type(type);
    if (name.empty()) name = "Unknown memory type";
    line(1, "Memory Checksum packet of " + name + ".    " + dec(reports) +
                (reports == 1 ? " Checksum report." : " Checksum reports."));
    Display_Memory_Checksum(words_, memory_);
  }

  const Configuration& config_;
  const InformationWords& words_;
  Drawing& memory_;
  Translation lines_{};
};

}  // namespace

Translation Translate_Information(const Configuration& config, LabelCode label, const InformationWords& words,
                                  Drawing& memory) {
  return Translator(config, words, memory).translate(label);
}

std::string operating_mode_name(int mode) {
  // Modes 0..16 by number.
  static constexpr const char* kModes[] = {
      "Standby", "Ground Test", "Post Launch", "Cruise Phase",
      "Instrument Checkout", "HTO Conditioning", "MTO Conditioning", "CASE Conditioning",
      "Survival Evaluation", "Helium Tank Rupture", "Dynamic Pre-operations", "Calibration",
      "Ice Core Analysis (HTO)", "Atmosphere Analysis", "Silicate Analysis", "Ice Core Analysis (MTO)",
      "Additional Science",
  };
  if (mode >= 0 && mode <= 16) return kModes[mode];
  return mode == 255 ? "Safe" : "";
}

std::string telecommand_name(int type, int sub_type) {
  switch (type) {
    case 6:
      if (sub_type == 2) return "Load memory";
      if (sub_type == 5) return "Dump memory";
      if (sub_type == 9) return "Check memory";
      return "";
    case 17: return sub_type == 17 ? "Connection test" : "";  // named with sub-type 17 only, on purpose
    case 193: return operating_mode_name(sub_type);
    case 194: return sub_type == 1 ? "Hazardous Function" : "";
    case 195: return sub_type == 1 ? "Parameter update" : "";
    default: return "";
  }
}

std::string Get_Sensor_Name(const Configuration& config, int32_t sensor_id) {
  std::string name = "Unknown sensor";
  for (const auto& row : config.Sensor_Table) {
    if (row.Channel_ID == sensor_id) name = row.Sensor_Name;  // the last match wins
  }
  return name;
}

std::string get_line_result(const Configuration& config, int32_t sensor_id, int32_t adc_word) {
  int row_number = 255;
  for (int r = 1; r <= config.Sensor_Count(); ++r) {
    if (config.sensor(r).Channel_ID == sensor_id) row_number = r;  // the last match wins
  }
  // 65535 rather than 65536: 0xFFFF reads as 0 and 0x8000 as -32767. Kept as the program always did.
  const int32_t signed_value = adc_word > 32767 ? adc_word - 65535 : adc_word;
  double voltage = signed_value * 10.0 / 32768.0;
  double value = 0;
  std::string unit;
  Convert_Sensor(config, row_number, voltage, value, unit);
  return format_pattern(value, "0.000") + " " + unit;
}

}  // namespace morvane
