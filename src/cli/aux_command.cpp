// SPDX-License-Identifier: MIT
// aux: the auxiliary view of one auxiliary science packet.
#include <iostream>
#include <memory>
#include <optional>

#include "calibration/ad590_setting.h"
#include "cli_common.h"
#include "commands.h"
#include "decoders/auxiliary_presenter.h"
#include "decoders/drawing_text.h"

namespace morvane::cli {

namespace {

struct AuxOptions {
  FileOptions file;
  int32_t index = 1;
  std::optional<std::string> ad590;
};

Json readings_json(const std::vector<AuxRow>& rows) {
  Json json = Json::array();
  for (const auto& row : rows) {
    json.push_back(Json{{"sensor", row.sensor},
                        {"name", row.name},
                        {"channel_id", row.channel_id},
                        {"word", row.word},
                        {"time", row.time},
                        {"adc_voltage_text", row.adc_voltage_text},
                        {"value_text", row.value_text},
                        {"unit", row.unit},
                        {"adc_voltage", row.adc_voltage},
                        {"value", row.value}});
  }
  return json;
}

void print_aux_text(const AuxOpening& opening, const AuxPage& page) {
  std::ostream& out = std::cout;
  out << kAuxiliaryLabelCaptions[0] << "  " << page.aux_number << '\n'
      << kAuxiliaryStaticTexts[1] << "  " << opening.packet_count << '\n'
      << kAuxiliaryLabelCaptions[1] << "  " << page.sequence << '\n'
      << kAuxiliaryLabelCaptions[2] << "  " << page.lander_time << '\n'
      << kAuxiliaryStaticTexts[2] << "  " << opening.ad590_text << '\n'
      << kAuxiliaryStaticTexts[3] << "\n\n"
      << kAuxiliaryStaticTexts[0] << "  " << page.channel_count << '\n'
      << drawing_as_text(page.table.drawing, 90, 220);
}

void run_aux(const AuxOptions& options) {
  Session session = open_session(options.file);
  if (options.ad590) AD590_Cal(session.config).Command1_Click(session.config, *options.ad590);
  AuxiliaryPresenter state;
  const AuxOpening opening = state.Form_Load(session);
  if (options.index < 1 || options.index > opening.scroll_maximum) {
    throw CommandError("--index " + std::to_string(options.index) + ": the file holds " + opening.packet_count +
                       " auxiliary data packets");
  }
  const AuxPage page = state.VScroll1_Change(session, options.index);
  const Packet_Entry& entry = session.catalogue.Science_List.at(state.Aux_Index[static_cast<size_t>(options.index - 1)]);
  if (options.file.json) {
    Json json{{"aux_number", state.Current_Aux_Number},
              {"auxiliary_count", session.catalogue.counters.Auxiliary_Count()},
              {"sequence_count", entry.Sequence_Count},
              {"lander_time", entry.Lander_Time},
              {"channel_count", state.Channel_Count()},
              {"ad590_text", opening.ad590_text},
              {"science_index", state.Aux_Index[static_cast<size_t>(options.index - 1)]},
              {"readings", readings_json(page.table.rows)}};
    if (page.table.error) json["table_error"] = page.table.error->message();
    print_json(json);
  } else {
    print_aux_text(opening, page);
  }
  // The table is shown as far as it goes; a reading of no sensor still ends the command with its error.
  if (page.table.error) throw *page.table.error;
}

}  // namespace

void add_aux_command(CLI::App& app) {
  auto options = std::make_shared<AuxOptions>();
  CLI::App* command = app.add_subcommand("aux", "The auxiliary view of one auxiliary data packet");
  add_file_options(command, options->file);
  command->add_option("--index", options->index, "Auxiliary packet number (1-based, auxiliary packets only)")->required();
  command->add_option("--ad590", options->ad590, "AD590 temperature (degrees C), set as the AD590 dialog sets it")
      ->check(CLI::Number);
  command->callback([options] { run_aux(*options); });
}

}  // namespace morvane::cli
