// SPDX-License-Identifier: MIT
// convert: one sensor voltage to its engineering value, as the general tests dialog does it.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "core/conversion.h"
#include "core/number_text.h"

namespace morvane::cli {

namespace {

struct ConvertOptions {
  int sensor = 0;
  double voltage = 0;
  std::string base;
  bool json = false;
};

void run_convert(const ConvertOptions& options) {
  const Configuration config = load_cli_configuration(options.base, true);
  double voltage = options.voltage;
  double value = 0;
  std::string unit;
  Convert_Sensor(config, options.sensor, voltage, value, unit);
  if (options.json) {
    print_json(Json{{"sensor", options.sensor},
                    {"voltage", options.voltage},
                    {"value", value},
                    {"unit", unit},
                    {"value_text", general_text(value)}});
  } else {
    std::cout << general_text(value) << ' ' << unit << '\n';
  }
}

}  // namespace

void add_convert_command(CLI::App& app) {
  auto options = std::make_shared<ConvertOptions>();
  CLI::App* command = app.add_subcommand("convert", "Convert a sensor voltage to its engineering value");
  command->add_option("--sensor", options->sensor, "Sensor number")->required()->check(CLI::Range(-32768, 32767));
  command->add_option("--voltage", options->voltage, "Voltage (V)")->required();
  add_base_option(command, options->base);
  command->add_flag("--json", options->json, "Print JSON for scripts");
  command->callback([options] { run_convert(*options); });
}

}  // namespace morvane::cli
