// SPDX-License-Identifier: MIT
// raw: the raw view of one frame, its labels and its hexadecimal words (ZEB: the record's items)
// with the place and colour the view draws each in.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "usage_error.h"
#include "decoders/raw_frame.h"

namespace morvane::cli {

namespace {

struct RawOptions {
  FileOptions file;
  int32_t frame = 1;
};

void print_raw_text(const RawFrame& frame) {
  std::cout << frame.label1 << '\n' << frame.label2 << '\n';
  for (size_t i = 0; i < frame.words.size(); ++i) {
    const int column = static_cast<int>(i % kRawWordsPerRow);
    if (column > 0) std::cout << (column == 4 ? "  " : " ");
    std::cout << frame.words[i].text;
    if (column == kRawWordsPerRow - 1 || i + 1 == frame.words.size()) std::cout << '\n';
  }
}

Json raw_json(const RawFrame& frame) {
  Json words = Json::array();
  for (const PlacedText& word : frame.words) {
    words.push_back(Json{{"text", word.text},
                         {"x", word.x},
                         {"y", word.y},
                         {"colour", colour_json(word.colour.red, word.colour.green, word.colour.blue)}});
  }
  return Json{{"frame", frame.frame}, {"label1", frame.label1}, {"label2", frame.label2}, {"words", words}};
}

}  // namespace

void add_raw_command(CLI::App& app) {
  auto options = std::make_shared<RawOptions>();
  CLI::App* command = app.add_subcommand("raw", "The hexadecimal words of one frame, as the raw view shows them");
  add_file_options(command, options->file);
  command->add_option("--frame", options->frame, "Frame (ZEB: record) number, from 1")->check(whole_number_from_one());
  command->callback([options] {
    const Session session = open_session(options->file, false);
    check_frame_number(session, options->frame);
    const RawFrame frame = Display_Raw_Frame(session, options->frame);
    if (options->file.json) {
      print_json(raw_json(frame));
    } else {
      print_raw_text(frame);
    }
  });
}

}  // namespace morvane::cli
