// SPDX-License-Identifier: MIT
// concise: the types of the source packets in one frame, the eight slots of the concise view.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "usage_error.h"
#include "decoders/concise_frame.h"

namespace morvane::cli {

namespace {

struct ConciseOptions {
  FileOptions file;
  int32_t frame = 1;
};

}  // namespace

void add_concise_command(CLI::App& app) {
  auto options = std::make_shared<ConciseOptions>();
  CLI::App* command = app.add_subcommand("concise", "The packet types of one frame, as the concise view shows them");
  add_file_options(command, options->file);
  command->add_option("--frame", options->frame, "Frame number, from 1")->check(whole_number_from_one());
  command->callback([options] {
    const Session session = open_session(options->file, false);
    check_frame_number(session, options->frame);
    const ConciseSlots slots = Show_Lander_Packet(session, options->frame);
    if (options->file.json) {
      print_json(Json{{"frame", options->frame}, {"slots", slots}});
    } else {
      std::cout << "Lander Packet Number " << options->frame << '\n';
      for (const std::string& slot : slots) std::cout << slot << '\n';
    }
  });
}

}  // namespace morvane::cli
