// SPDX-License-Identifier: MIT
// info: one information packet as its window shows it: labels, raw words, translation lines and
// the memory dump or checksum table.
#include <iostream>
#include <map>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "decoders/information_presenter.h"

namespace morvane::cli {

namespace {

struct InfoOptions {
  FileOptions file;
  int32_t index = 0;
};

Json colour_of(Colour c) { return colour_json(c.red, c.green, c.blue); }

void print_info_json(const InformationPresenter& view, int32_t index) {
  const InformationLabels& labels = view.labels();
  Json words = Json::array();
  for (const auto& word : view.raw_dump()) words.push_back(word.text);
  Json translation = Json::array();
  for (const auto& line : view.translation())
    translation.push_back({{"text", line.text}, {"colour", colour_of(line.colour)}});
  Json memory = Json::array();
  for (const auto& text : view.memory()) {
    memory.push_back({{"text", text.text}, {"x", text.x}, {"y", text.y}, {"colour", colour_of(text.colour)}});
  }
  print_json(Json{{"index", index},
                  {"label2", labels.Label2},
                  {"label3", labels.Label3},
                  {"label5", labels.Label5},
                  {"label7", labels.Label7},
                  {"label9", labels.Label9},
                  {"words", words},
                  {"translation", translation},
                  {"memory", memory}});
}

std::string colour_note(Colour c) {
  if (c == kRed) return "   [red]";
  if (c == kBlue) return "   [blue]";
  return "";
}

// Texts that share a row, left to right, two blanks apart.
void print_rows(std::ostream& out, const Drawing& drawing) {
  std::map<int, std::map<int, std::string>> rows;
  for (const auto& text : drawing) rows[text.y][text.x] = text.text;
  for (const auto& [y, row] : rows) {
    std::string line;
    for (const auto& [x, text] : row) line += (line.empty() ? "" : "  ") + text;
    out << line << '\n';
  }
}

void print_info_text(const InformationPresenter& view) {
  std::ostream& out = std::cout;
  const InformationLabels& labels = view.labels();
  out << labels.Label3 << "    " << labels.Label2 << '\n'
      << kPacketTypeHeading << ' ' << labels.Label5 << '\n'
      << kSequenceHeading << "  " << labels.Label7 << '\n'
      << kLanderTimeHeading << "  " << labels.Label9 << '\n'
      << '\n'
      << kRawDataHeading << '\n';
  print_rows(out, view.raw_dump());
  out << '\n';
  for (const auto& line : view.translation()) out << line.text << colour_note(line.colour) << '\n';
  print_rows(out, view.memory());
}

}  // namespace

void add_info_command(CLI::App& app) {
  auto options = std::make_shared<InfoOptions>();
  CLI::App* command = app.add_subcommand("info", "One information packet: raw words and translation");
  add_file_options(command, options->file);
  command->add_option("--index", options->index, "Entry number in the information list (from 1)")->required();
  command->callback([options] {
    Session session = open_session(options->file);
    const int32_t count = session.catalogue.Information_Count();
    if (options->index < 1 || options->index > count) {
      throw CommandError("--index " + std::to_string(options->index) + " is outside the information list (1.." +
                         std::to_string(count) + ")");
    }
    InformationPresenter view;
    view.show(session, options->index);
    if (options->file.json) {
      print_info_json(view, options->index);
    } else {
      print_info_text(view);
    }
  });
}

}  // namespace morvane::cli
