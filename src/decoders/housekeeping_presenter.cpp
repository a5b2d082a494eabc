// SPDX-License-Identifier: MIT
#include "decoders/housekeeping_presenter.h"

#include <algorithm>

#include "decoders/hk_mode.h"

namespace morvane {

ScrollSetting HousekeepingPresenter::Form_Load_scroll(const Session& session) {
  const int32_t count = session.catalogue.HK_Count();
  return {std::max(count, 1), count < 1 ? 1 : session.Current_HK_Index};
}

std::optional<SensorPage> HousekeepingPresenter::Form_Load(Session& session) {
  if (session.catalogue.HK_Count() < 1) return std::nullopt;
  return Update_Sensor_readings(session);
}

ScrollSetting HousekeepingPresenter::UpdateRealtime(const Session& session) {
  return {session.catalogue.HK_Count(), session.catalogue.HK_Count()};
}

ScrollSetting HousekeepingPresenter::Update(const Session& session) {
  return {session.catalogue.HK_Count(), session.Current_HK_Index};
}

SensorPage HousekeepingPresenter::VScroll1_Change(Session& session, int32_t value) {
  session.Current_HK_Index = value;
  Showing_Registers = false;
  return Update_Sensor_readings(session);
}

std::variant<SensorPage, RegisterPage> HousekeepingPresenter::Command1_Click(Session& session) {
  if (!Showing_Registers) {
    RegisterPage page = Show_HK_Extra(session, session.Current_HK_Index);
    Showing_Registers = true;
    return page;
  }
  Showing_Registers = false;
  return Update_Sensor_readings(session);
}

std::string HousekeepingPresenter::mode_text() const { return std::to_string(Mode_Number) + "  -  " + Mode_Name; }

SensorPage HousekeepingPresenter::Update_Sensor_readings(Session& session) {
  const int32_t index = session.Current_HK_Index;
  const Packet_Entry& entry = session.catalogue.HK_List.at(index);
  SensorPage page;
  page.decoded = decode_housekeeping(session.config, session.HK_Sensor_Data, index);
  // The records hold the packet the view decoded last, as they always have (see the step).
  keep_in_sensor_records(session.config, page.decoded);
  Cold_Junction_Term = page.decoded.cold_junction_term;
  SensorLayout layout = draw_sensor_page(session.config, page.decoded);
  page.drawing = std::move(layout.drawing);
  page.lines = std::move(layout.lines);

  page.header.packet_type = "Packet type - " + std::string(label_text(entry.Label));
  page.header.packet_number = std::to_string(index);
  page.header.sequence = std::to_string(entry.Sequence_Count);
  page.header.lander_time = std::to_string(entry.Lander_Time);
  page.header.packet_count = std::to_string(session.catalogue.HK_Count());
  page.more_visible = entry.Label == LabelCode::Complete;

  if (is_binary(session.File_Type)) {
    try {
      const ModeData mode = Load_Mode_Data(session, index);
      Mode_Number = mode.Mode_Number;
      Mode_Name = mode.Mode_Name;
      Line_Number = mode.Line_Number;
    } catch (const RuntimeError& error) {
      page.mode_error = error;
    }
  }
  page.header.mode = mode_text();
  page.header.line = std::to_string(Line_Number);
  return page;
}

}  // namespace morvane
