// SPDX-License-Identifier: MIT
// export: the four export dialogs from the command line. OUT is the file the dialog writes for
// the same choices; an entry the dialog refuses prints the dialog's message.
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <sstream>

#include "cli_common.h"
#include "json_text.h"
#include "commands.h"
#include "export/export_presenter.h"

namespace morvane::cli {

namespace {

struct ExportOptions {
  FileOptions file;
  bool all = false;
  std::optional<std::string> from;
  std::optional<std::string> to;
  std::string delimiter;
  std::string format;
  std::string out;
  std::string sensors = "all";
  std::optional<std::string> ad590;
};

struct ExportCommand {
  ExportKind kind;
  const char* name;
  const char* description;
  std::vector<std::string> formats;  // the data format options, in their order
};

const ExportCommand kCommands[] = {
    {ExportKind::Housekeeping, "hk", "Housekeeping packets", {"raw", "calibrated", "calibrated-ad590"}},
    {ExportKind::Auxiliary,
     "aux",
     "Science auxiliary data (a range of science entries)",
     {"adc", "voltage", "calibrated", "calibrated-ad590"}},
    {ExportKind::DS_Calibration, "dscal", "Docking-station calibration data", {"distance", "adc", "voltage"}},
    {ExportKind::Spectra, "spectra", "Science spectra", {"raw", "excel"}},
};

int index_of(const std::vector<std::string>& names, const std::string& name) {
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] == name) return static_cast<int>(i);
  }
  return 0;  // CLI11 has checked the name
}

// The ticked sensors of --sensors: "all", or sensor numbers separated by commas.
std::vector<bool> sensor_selection(const std::string& list, size_t sensor_count) {
  if (list == "all") return std::vector<bool>(sensor_count, true);
  std::vector<bool> ticked(sensor_count, false);
  std::stringstream items(list);
  std::string item;
  while (std::getline(items, item, ',')) {
    size_t used = 0;
    long number = 0;
    try {
      number = std::stol(item, &used);
    } catch (const std::exception&) {
      used = 0;
    }
    if (used == 0 || used != item.size() || number < 1 || number > static_cast<long>(sensor_count)) {
      throw CommandError("--sensors: \"" + item + "\" is not a sensor number (1.." + std::to_string(sensor_count) +
                         ")");
    }
    ticked[static_cast<size_t>(number - 1)] = true;
  }
  return ticked;
}

void run_export(const ExportCommand& command, ExportOptions options) {
  if (!options.all && !options.from) throw CLI::ValidationError("give --all, or --from and --to");
  // The dialog names the file it was loaded from by its full path.
  options.file.file = std::filesystem::absolute(options.file.file).string();
  Session session = open_session(options.file);
  if (const auto refused = export_guard(session, command.kind)) throw CommandError(*refused);

  ExportPresenter dialog(command.kind, session);
  dialog.format = index_of(command.formats, options.format);
  dialog.delimiter = index_of({"tab", "comma", "semicolon"}, options.delimiter);
  if (command.kind == ExportKind::Housekeeping) {
    dialog.sensors = sensor_selection(options.sensors, dialog.sensors.size());
  }
  if (options.ad590) dialog.ad590_text = *options.ad590;
  if (!options.all) {
    dialog.range().Check2_Click(false);
    dialog.range().set_from_text(*options.from);
    dialog.range().set_to_text(*options.to);
  }
  const ExportPresenter::Validation validation = dialog.Command1_Click();
  if (!validation.request) throw CommandError(validation.message);

  const ExportFileType type = export_file_type(options.out);
  dialog.check_fits(options.out, type, *validation.request);  // before a file is made
  const auto output = open_export_output(options.out, type, validation.request->delimiter, dialog.texts().sheet_name);
  const ExportResult result = dialog.write(session, *validation.request, *output);
  const char* type_name = type == ExportFileType::Workbook ? "xlsx" : "text";
  // With the export on standard output, the account of it goes to the error stream.
  std::ostream& account = options.out == "-" ? std::cerr : std::cout;
  if (options.file.json) {
    account << json_text(Json{{"out", options.out},
                              {"file_type", type_name},
                              {"from", validation.request->range.from},
                              {"to", validation.request->range.to},
                              {"lines", output->lines()},
                              {"rows", result.rows}},
                         2)
            << '\n';
  } else {
    account << options.out << ": " << output->lines() << " lines (" << result.rows << " data rows, " << type_name
            << ")\n";
  }
}

}  // namespace

void add_export_command(CLI::App& app) {
  CLI::App* group = app.add_subcommand("export", "Export a range of entries as the export dialogs do");
  group->require_subcommand(1);
  for (const ExportCommand& command : kCommands) {
    auto options = std::make_shared<ExportOptions>();
    CLI::App* sub = group->add_subcommand(command.name, command.description);
    add_file_options(sub, options->file);
    CLI::Option* all = sub->add_flag("--all", options->all, "Every entry (the All box)");
    CLI::Option* from = sub->add_option("--from", options->from, "First entry, as typed in From (1-based)");
    CLI::Option* to = sub->add_option("--to", options->to, "Last entry, as typed in To");
    all->excludes(from)->excludes(to);
    from->needs(to);
    to->needs(from);
    sub->add_option("--delimiter", options->delimiter, "Cell delimiter of a text file")
        ->required()
        ->check(CLI::IsMember({"tab", "comma", "semicolon"}));
    sub->add_option("--format", options->format, "Data format")->required()->check(CLI::IsMember(command.formats));
    sub->add_option("-o,--out", options->out, "Output file (- for standard output); a name ending in .xlsx writes a workbook")->required();
    if (command.kind == ExportKind::Housekeeping) {
      sub->add_option("--sensors", options->sensors, "Sensor columns: all, or numbers separated by commas");
    }
    if (command.kind == ExportKind::Auxiliary) {
      sub->add_option("--ad590", options->ad590, "AD590 temperature, degrees C (format calibrated-ad590)");
    }
    const ExportCommand* chosen = &command;
    sub->callback([chosen, options] { run_export(*chosen, *options); });
  }
}

}  // namespace morvane::cli
