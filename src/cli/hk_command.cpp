// SPDX-License-Identifier: MIT
// hk: the housekeeping view's sensor page (and register page) of one housekeeping packet.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "decoders/drawing_text.h"
#include "decoders/housekeeping_presenter.h"

namespace morvane::cli {

namespace {

struct HkOptions {
  FileOptions file;
  int32_t index = 1;
  bool registers = false;
};

Json sensors_json(const Configuration& config, const DecodedHousekeeping& decoded) {
  Json sensors = Json::array();
  for (int s = 1; s <= config.Sensor_Count(); ++s) {
    const DecodedSensor& r = decoded.sensor(s);
    sensors.push_back(Json{{"number", s},
                           {"name", config.sensor(s).Sensor_Name},
                           {"raw", r.raw},
                           {"voltage", r.voltage},
                           {"voltage_upper", r.voltage_upper},
                           {"value", r.value},
                           {"value_upper", r.value_upper},
                           {"unit", r.unit}});
  }
  return sensors;
}

Json lines_json(const std::vector<SensorLine>& lines) {
  Json json = Json::array();
  for (const auto& line : lines) {
    json.push_back(Json{{"row", line.row},
                        {"column", line.column},
                        {"sensor", line.sensor},
                        {"name", line.name},
                        {"value_text", line.value_text},
                        {"step_text", line.step_text},
                        {"unit", line.unit},
                        {"group", line.group}});
  }
  return json;
}

Json registers_json(const RegisterPage& page) {
  Json texts = Json::array();
  for (const auto& text : page.drawing) texts.push_back(Json{{"text", text.text}, {"x", text.x}, {"y", text.y}});
  return Json{{"words", page.Register_Words}, {"texts", texts}};
}

void print_hk_json(const Session& session, const HousekeepingPresenter& state, const SensorPage& page,
                   const RegisterPage* registers) {
  const Packet_Entry& entry = session.catalogue.HK_List.at(session.Current_HK_Index);
  const HKHeader& h = page.header;
  Json json{{"index", session.Current_HK_Index},
            {"hk_count", session.catalogue.HK_Count()},
            {"label", label_text(entry.Label)},
            {"sequence_count", entry.Sequence_Count},
            {"lander_time", entry.Lander_Time},
            {"mode_number", state.Mode_Number},
            {"mode_name", state.Mode_Name},
            {"line_number", state.Line_Number},
            {"cold_junction_term", page.decoded.cold_junction_term},
            {"more_visible", page.more_visible},
            {"header",
             {{"packet_type", h.packet_type},
              {"packet_number", h.packet_number},
              {"sequence", h.sequence},
              {"lander_time", h.lander_time},
              {"packet_count", h.packet_count},
              {"mode", h.mode},
              {"line", h.line}}},
            {"sensors", sensors_json(session.config, page.decoded)},
            {"lines", lines_json(page.lines)}};
  if (registers) json["registers"] = registers_json(*registers);
  if (page.mode_error) json["mode_error"] = page.mode_error->message();
  print_json(json);
}

void print_hk_text(const SensorPage& page, const RegisterPage* registers) {
  const HKHeader& h = page.header;
  std::ostream& out = std::cout;
  out << h.packet_type << '\n'
      << kHKHeaderCaptions[0] << "  " << h.packet_number << '\n'
      << kHKHeaderCaptions[1] << "  " << h.sequence << '\n'
      << kHKHeaderCaptions[2] << "  " << h.lander_time << '\n'
      << kHKHeaderCaptions[3] << "  " << h.packet_count << '\n'
      << kHKHeaderCaptions[4] << "  " << h.mode << '\n'
      << kHKHeaderCaptions[5] << "  " << h.line << "\n\n"
      << kSensorReadingsCaption << '\n'
      << drawing_as_text(page.drawing);
  if (registers) out << '\n' << drawing_as_text(registers->drawing);
}

void run_hk(const HkOptions& options) {
  Session session = open_session(options.file);
  const int32_t count = session.catalogue.HK_Count();
  if (options.index < 1 || options.index > count) {
    throw CommandError("--index " + std::to_string(options.index) + ": the file holds " + std::to_string(count) +
                       " housekeeping packets");
  }
  HousekeepingPresenter state;
  const SensorPage page = state.VScroll1_Change(session, options.index);
  std::unique_ptr<RegisterPage> registers;
  if (options.registers) {
    if (!page.more_visible) {
      throw CommandError("housekeeping packet " + std::to_string(options.index) +
                         " is not a complete packet: only complete packets have the register page");
    }
    registers = std::make_unique<RegisterPage>(std::get<RegisterPage>(state.Command1_Click(session)));
  }
  if (options.file.json) {
    print_hk_json(session, state, page, registers.get());
  } else {
    print_hk_text(page, registers.get());
  }
  // The page is shown; a mode that could not be read still ends the command with its error.
  if (page.mode_error) throw *page.mode_error;
}

}  // namespace

void add_hk_command(CLI::App& app) {
  auto options = std::make_shared<HkOptions>();
  CLI::App* command = app.add_subcommand("hk", "The housekeeping view of one housekeeping packet");
  add_file_options(command, options->file);
  command->add_option("--index", options->index, "Housekeeping packet number (1-based)")->required();
  command->add_flag("--registers", options->registers, "Also the register page (complete packets)");
  command->callback([options] { run_hk(*options); });
}

}  // namespace morvane::cli
