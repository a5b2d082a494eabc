// SPDX-License-Identifier: MIT
// trend: calibrated housekeeping values of chosen sensors over every housekeeping packet.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "json_text.h"
#include "commands.h"
#include "core/number_text.h"
#include "decoders/trend_series.h"

namespace morvane::cli {

namespace {

struct TrendOptions {
  FileOptions file;
  std::string sensors;
  std::string cold_junction = "on";
};

void run_trend(const TrendOptions& options) {
  const Session session = open_session(options.file);
  const auto series = trend_series(session, parse_sensor_list(options.sensors, session.config.Sensor_Count()),
                                   options.cold_junction == "on");
  if (options.file.json) {
    // Streamed: a file of a million housekeeping packets gives a million points a sensor.
    std::cout << "{\n  \"sensors\": [";
    for (size_t s = 0; s < series.size(); ++s) {
      const TrendSeries& one = series[s];
      std::cout << (s ? "," : "") << "\n    {\"number\": " << one.number << ", \"name\": " << json_text(one.name)
                << ", \"unit\": " << json_text(one.unit) << ", \"points\": [";
      for (size_t p = 0; p < one.size(); ++p) {
        std::cout << (p ? ", " : "") << '[' << one.time(p) << ", " << json_text(one.value(p)) << ']';
      }
      std::cout << "]}";
    }
    std::cout << (series.empty() ? "]\n}\n" : "\n  ]\n}\n");
    return;
  }
  std::cout << "Lander time";
  for (const auto& one : series) std::cout << '\t' << one.name << " (" << one.unit << ')';
  std::cout << '\n';
  const size_t points = series.empty() ? 0 : series.front().size();
  for (size_t p = 0; p < points; ++p) {
    std::cout << series.front().time(p);
    for (const auto& one : series) std::cout << '\t' << general_text(one.value(p));
    std::cout << '\n';
  }
}

}  // namespace

void add_trend_command(CLI::App& app) {
  auto options = std::make_shared<TrendOptions>();
  CLI::App* command = app.add_subcommand("trend", "Calibrated housekeeping values of sensors over the whole file");
  add_file_options(command, options->file);
  command->add_option("--sensors", options->sensors, "Sensor numbers, comma-separated, or all")->required();
  command->add_option("--cold-junction", options->cold_junction, "Add the cold-junction term to thermocouples")
      ->check(CLI::IsMember({"on", "off"}));
  command->callback([options] { run_trend(*options); });
}

}  // namespace morvane::cli
