// SPDX-License-Identifier: MIT
// functest: the short form tests of a file as the selection list shows them, or the evaluation
// of one of them as its view shows it, with a printable report.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "commands.h"
#include "usage_error.h"
#include "functest/report_provenance.h"
#include "functest/short_message_load.h"
#include "functest/short_test_evaluation.h"
#include "core/safe_file.h"
#include "functest/short_test_report.h"
#include "core/program_version.h"

namespace morvane::cli {

namespace {

struct FunctestOptions {
  FileOptions file;
  std::string mode;
  int32_t test = 0;  // 0: the list
  std::string format;  // "text", "html", or empty: by the report's extension, else text
  std::string report;
  bool verdict_exit = false;  // exit status 3 when the evaluated test fails
};

std::string mode_text(const std::string& option) { return option == "eaft" ? "EAFT" : "Cruise Phase"; }

Json colour_of(const Cell& cell) { return cell.red ? colour_json(255, 0, 0) : colour_json(0, 0, 0); }

Json limits_json(const LimitPair& limits) { return Json{{"min", limits.min}, {"max", limits.max}}; }

// Each test of the list by meaning, beside its display line.
Json list_entries_json(const Session& session, const ShortTestList& list) {
  Json entries = Json::array();
  for (int32_t n = 1; n <= list.Test_Count(); ++n) {
    const int32_t index = science_index_of_line(list, n);
    const Packet_Entry& entry = session.catalogue.Science_List.at(index);
    entries.push_back(Json{{"number", n},
                           {"sequence_count", entry.Sequence_Count},
                           {"lander_time", entry.Lander_Time},
                           {"science_index", index}});
  }
  return entries;
}

void print_list(const Session& session, const ShortTestList& list, bool json) {
  if (json) {
    print_json(Json{{"label1", list.Label1},
                    {"label2", list.Label2},
                    {"lines", list.lines},
                    {"tests", list.Test_Index},
                    {"entries", list_entries_json(session, list)}});
    return;
  }
  std::cout << list.Label1 << '\n';
  if (!list.lines.empty()) std::cout << "      " << kTestListSequenceHeading << "   " << kTestListTimeHeading << '\n';
  for (const std::string& line : list.lines) std::cout << line << '\n';
  std::cout << list.Label2 << '\n';
}

Json item_json(const ItemRow& row, bool temperatures) {
  Json item{{"name", row.name}, {"rise_28v", row.rise_28v.text}, {"rise_5v", row.rise_5v.text}};
  if (temperatures) {
    item["initial"] = row.initial.text;
    item["final"] = row.final.text;
    item["increase"] = row.increase.text;
  }
  item["result"] = row.result.text;
  item["result_colour"] = colour_of(row.result);
  item["record"] = row.record;
  Json limits = Json::object();
  if (row.checked[0]) limits["rise_5v"] = limits_json(row.limits.pair(1));
  if (row.checked[1]) limits["rise_28v"] = limits_json(row.limits.pair(2));
  if (row.checked[2]) limits["increase"] = limits_json(row.limits.pair(3));
  item["limits"] = limits;
  return item;
}

Json items_json(const std::vector<ItemRow>& rows, bool temperatures) {
  Json items = Json::array();
  for (const ItemRow& row : rows) items.push_back(item_json(row, temperatures));
  return items;
}

Json evaluation_json(const ShortTestEvaluation& test, const TestReportSource& source) {
  Json sensors = Json::array();
  for (const SensorRow& row : test.sensors) {
    sensors.push_back(Json{{"name", row.name},
                           {"initial", row.initial.text},
                           {"final", row.final.text},
                           {"result", row.result.text},
                           {"unit", row.unit},
                           {"result_colour", colour_of(row.result)},
                           {"record", row.record},
                           {"limits", limits_json(row.limits)}});
  }
  Json rails = Json::array();
  for (const RailRow& row : test.rails) {
    rails.push_back(Json{{"name", row.name},
                         {"value", row.value.text},
                         {"result", row.result.text},
                         {"unit", row.unit},
                         {"result_colour", colour_of(row.result)},
                         {"record", row.record},
                         {"limits", limits_json(row.limits)}});
  }
  Json subsystems = Json::array();
  for (const SubsystemRow& row : test.subsystems) {
    subsystems.push_back(Json{{"name", row.name}, {"result", row.result.text}, {"result_colour", colour_of(row.result)}});
  }
  return Json{{"file", source.file_name},
              {"file_type", source.file_type},
              {"test", source.test_number},
              {"science_index", source.science_index},
              {"limit_file", test.ranges_path},
              {"start_label", test.start_label},
              {"mode_title", test.mode_title},
              {"sensors", sensors},
              {"valves", items_json(test.valves, false)},
              {"injector_valves", items_json(test.injector_valves, false)},
              {"heaters", items_json(test.heaters, true)},
              {"large_reactors", items_json(test.large_reactors, true)},
              {"small_reactors", items_json(test.small_reactors, true)},
              {"l_valves", items_json(test.l_valves, true)},
              {"rails", rails},
              {"subsystems", subsystems},
              {"overall", test.overall.text},
              {"overall_colour", colour_of(test.overall)},
              {"packet_message", test.packet_message.text},
              {"packet_message_colour", colour_of(test.packet_message)},
              {"rf_frequency_text", test.rf_frequency_text()},
              {"reference_temperature", test.Reference_Temperature},
              {"cold_junction", test.Cold_Junction},
              {"evaluated_at", source.evaluated_at},
              {"program_version", source.program_version},
              {"file_sha256", source.file_sha256}};
}

bool wants_html(const FunctestOptions& options, const std::string& path) {
  if (!options.format.empty()) return options.format == "html";
  const auto ends_with = [&](const char* suffix) {
    const std::string s = suffix;
    return path.size() >= s.size() && path.compare(path.size() - s.size(), s.size(), s) == 0;
  };
  return ends_with(".html") || ends_with(".htm");
}

void run_functest(const FunctestOptions& options) {
  if (options.test == 0 && !options.report.empty()) throw CommandError("--report needs --test N");
  // The list needs no configuration; the evaluation needs the sensor table and the limit files.
  Session session = open_session(options.file, options.test != 0);
  session.Test_Mode = mode_text(options.mode);
  const ShortTestList list = find_short_tests(session);
  if (options.test == 0) {
    print_list(session, list, options.file.json);
    return;
  }
  if (options.test < 1 || options.test > list.Test_Count()) {
    const int32_t count = list.Test_Count();
    throw CommandError("test " + std::to_string(options.test) + " is beyond the list of " + std::to_string(count) +
                       (count == 1 ? " test" : " tests"));
  }
  session.Current_Science_Index = science_index_of_line(list, options.test);
  const ShortTestEvaluation test = open_short_test(session);
  TestReportSource source;
  source.file_name = session.File_Name;
  source.file_type = std::string(format_tag(session.File_Type));
  source.test_number = options.test;
  source.test_count = list.Test_Count();
  source.science_index = session.Current_Science_Index;
  stamp_report_source(source, kProgramVersion);
  const TestReport report = make_test_report(test, source);
  if (!options.report.empty()) {
    // Replaces the file only once the whole report is on the disk ("-" is standard output).
    replace_file(options.report, wants_html(options, options.report) ? test_report_html(report) : test_report_text(report));
  }
  if (options.file.json) {
    print_json(evaluation_json(test, source));
  } else if (options.report.empty()) {
    std::cout << (options.format == "html" ? test_report_html(report) : test_report_text(report));
  }
  if (options.verdict_exit && !test.passed()) set_exit_status(kVerdictFailedStatus);
}

}  // namespace

void add_functest_command(CLI::App& app) {
  auto options = std::make_shared<FunctestOptions>();
  CLI::App* command = app.add_subcommand("functest", "Short form tests of a file, or the evaluation of one");
  add_file_options(command, options->file);
  command->add_option("--mode", options->mode, "Test mode: cruise (Cruise Phase) or eaft (EAFT)")
      ->required()
      ->transform(CLI::IsMember({"cruise", "eaft"}, CLI::ignore_case));
  command->add_option("--test", options->test, "Evaluate test N of the list (from 1)")->check(whole_number_from_one());
  command->add_option("--format", options->format, "Report format: text or html")
      ->check(CLI::IsMember({"text", "html"}));
  command->add_option("--report", options->report,
                      "Write the printable report of --test N to this file (HTML for .html/.htm or --format html)");
  command->add_flag("--verdict-exit", options->verdict_exit,
                    "With --test N: exit status 3 when the overall result is Fail (the output is the same)");
  command->callback([options] { run_functest(*options); });
}

}  // namespace morvane::cli
