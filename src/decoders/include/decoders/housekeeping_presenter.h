// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "core/error.h"
#include "core/session.h"
#include "decoders/drawing.h"
#include "decoders/hk_registers.h"
#include "decoders/hk_sensors.h"

namespace morvane {

inline constexpr const char* kHousekeepingCaption = "Housekeeping";
inline constexpr const char* kMoreButton = "More...";     // on the sensor page
inline constexpr const char* kSensorsButton = "Sensors";  // on the register page
inline constexpr const char* kSensorReadingsCaption = "Sensor readings";

// The header labels of the view and, in the comments, the static captions beside them.
struct HKHeader {
  std::string packet_type;    // "Packet type - " followed by the entry's label
  std::string packet_number;  // "HK Packet number"
  std::string sequence;       // "Sequence Control"
  std::string lander_time;    // "Lander Time"
  std::string packet_count;   // "Number of Housekeeping Packets"
  std::string mode;           // "Mode": the number, "  -  ", the name
  std::string line;           // "Line"
};
inline constexpr const char* kHKHeaderCaptions[] = {"HK Packet number", "Sequence Control", "Lander Time",
                                                    "Number of Housekeeping Packets", "Mode", "Line"};

// Everything the sensor page shows for one packet, and the packet as decoded.
struct SensorPage {
  DecodedHousekeeping decoded;
  Drawing drawing;
  std::vector<SensorLine> lines;  // page order
  HKHeader header;
  bool more_visible = false;  // the register page exists for " Complete " packets only
  // Reading the mode failed (a line high byte of 128 overflows): the page and the other labels
  // are complete, the mode and line labels keep the previous packet's texts, and the view shows
  // this error as a message and carries on.
  std::optional<RuntimeError> mode_error;
};

// What the view sets its scroll bar to; the bar's change then redraws (VScroll1_Change).
struct ScrollSetting {
  int32_t maximum = 1;
  int32_t value = 1;
};

// The state of one housekeeping view and its operations. The view owns one, calls these from its
// event handlers and paints what they return. The current entry is the session's Current_HK_Index,
// shared with the summary view. Mode and line stay from packet to packet: ZEB records never carry
// them, so a ZEB file shows mode 0 with an empty name and line 0 until a binary packet was read.
class HousekeepingPresenter {
 public:
  bool Showing_Registers = false;
  uint8_t Mode_Number = 0;
  std::string Mode_Name;
  int16_t Line_Number = 0;
  double Cold_Junction_Term = 0;

  // Form_Load: the scroll bar (at least 1 even with no packets) and the page of Current_HK_Index,
  // or nothing when the file has no housekeeping packets.
  static ScrollSetting Form_Load_scroll(const Session& session);
  std::optional<SensorPage> Form_Load(Session& session);
  // UpdateRealtime: the bar moves to the newest packet. Update: to Current_HK_Index.
  static ScrollSetting UpdateRealtime(const Session& session);
  static ScrollSetting Update(const Session& session);

  // VScroll1_Change: shows entry `value` (it becomes Current_HK_Index), always on the sensor page.
  SensorPage VScroll1_Change(Session& session, int32_t value);
  // Command1_Click: switches between the sensor and the register page.
  std::variant<SensorPage, RegisterPage> Command1_Click(Session& session);
  // The button's caption for the page now shown.
  const char* button_caption() const { return Showing_Registers ? kSensorsButton : kMoreButton; }

  // Decodes Current_HK_Index, keeps it in the shared sensor records and lays out the sensor page;
  // binary files also refresh the mode and line. Errors other than the mode's end the operation.
  SensorPage Update_Sensor_readings(Session& session);

  std::string mode_text() const;  // Mode_Number & "  -  " & Mode_Name
};

}  // namespace morvane
