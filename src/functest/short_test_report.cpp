// SPDX-License-Identifier: MIT
#include "functest/short_test_report.h"

#include <algorithm>
#include <sstream>

#include "core/number_text.h"

namespace morvane {

namespace {

Cell plain(std::string text) { return Cell{std::move(text), false}; }

Cell limits_cell(const ItemRow& row, int pair) {
  return row.checked[static_cast<size_t>(pair - 1)] ? plain(limits_text(row.limits.pair(pair))) : plain("");
}

ReportTable sensor_table(const ShortTestEvaluation& test) {
  ReportTable table{kShortTestTabs[0], {"Sensor", "Initial", "Final", "Unit", "Limits", "Record", "Test Result"}, {}};
  for (const SensorRow& row : test.sensors) {
    table.rows.push_back({plain(row.name), row.initial, row.final, plain(row.unit), plain(limits_text(row.limits)),
                          plain(std::to_string(row.record)), row.result});
  }
  return table;
}

ReportTable current_table(const char* title, const char* item_heading, const std::vector<ItemRow>& rows) {
  ReportTable table{title,
                     {item_heading, "28V Current (mA)", "Limits", "5V Current (mA)", "Limits", "Record", "Test Result"},
                     {}};
  for (const ItemRow& row : rows) {
    table.rows.push_back({plain(row.name), row.rise_28v, limits_cell(row, 2), row.rise_5v, limits_cell(row, 1),
                          plain(std::to_string(row.record)), row.result});
  }
  return table;
}

ReportTable heated_table(const char* title, const char* item_heading, const std::vector<ItemRow>& rows) {
  ReportTable table{title,
                     {item_heading, "28V Current (mA)", "Limits", "5V Current (mA)", "Limits", "Initial (oC)",
                      "Final (oC)", "Increase (oC)", "Limits", "Record", "Test Result"},
                     {}};
  for (const ItemRow& row : rows) {
    table.rows.push_back({plain(row.name), row.rise_28v, limits_cell(row, 2), row.rise_5v, limits_cell(row, 1),
                          row.initial, row.final, row.increase, limits_cell(row, 3), plain(std::to_string(row.record)),
                          row.result});
  }
  return table;
}

ReportTable rails_table(const ShortTestEvaluation& test) {
  ReportTable table{kRailsHeading, {"Item", "Value", "Unit", "Limits", "Record", "Test Result"}, {}};
  for (const RailRow& row : test.rails) {
    table.rows.push_back({plain(row.name), row.value, plain(row.unit), plain(limits_text(row.limits)),
                          plain(std::to_string(row.record)), row.result});
  }
  return table;
}

ReportTable subsystem_table(const ShortTestEvaluation& test) {
  ReportTable table{"Sub-systems", {kSubsystemHeadings[0], kSubsystemHeadings[1]}, {}};
  for (const SubsystemRow& row : test.subsystems) table.rows.push_back({plain(row.name), row.result});
  return table;
}

std::string html_escaped(const std::string& text) {
  std::string out;
  for (const char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string html_cell(const char* tag, const Cell& cell) {
  std::string open = std::string("<") + tag + (cell.red ? " class=\"fail\"" : "") + ">";
  return open + html_escaped(cell.text) + "</" + tag + ">";
}

}  // namespace

std::string limits_text(const LimitPair& limits) {
  return general_text(limits.min) + " .. " + general_text(limits.max);
}

TestReport make_test_report(const ShortTestEvaluation& test, const TestReportSource& source) {
  TestReport report;
  report.title = "Short form functional test";
  report.heading = {
      {"File", plain(source.file_name)},
      {"File type", plain(source.file_type)},
      {"Test", plain(std::to_string(source.test_number) + " of " + std::to_string(source.test_count) +
                     " (science entry " + std::to_string(source.science_index) + ", sequence count " +
                     std::to_string(test.packets.Start_Sequence) + ")")},
      {"Test start", plain(test.start_label)},
      {"Mode", plain(test.mode_title)},
      {"Limit file", plain(test.ranges_path)},
      {"Reference temperature", plain(format_pattern(test.Reference_Temperature, "0.00") + " oC (AD590)")},
      {"RF frequency", plain(test.rf_frequency_text() + (test.readings.RF_Found ? " kHz" : ""))},
      {"Packets", test.packet_message},
      {"Test Result", test.overall},
  };
  // What made the report, so that a printed copy can be matched with its file and program.
  const std::pair<const char*, const std::string*> provenance[] = {
      {"Evaluated", &source.evaluated_at},
      {"Program", &source.program_version},
      {"File SHA-256", &source.file_sha256},
  };
  for (const auto& [label, text] : provenance) {
    if (!text->empty()) report.heading.emplace_back(label, plain(*text));
  }
  report.tables.push_back(sensor_table(test));
  report.tables.push_back(current_table(kShortTestTabs[1], kValveHeadings[0], test.valves));
  report.tables.push_back(current_table(kShortTestTabs[2], kInjectorValveHeadings[0], test.injector_valves));
  report.tables.push_back(heated_table(kShortTestTabs[3], kHeatedItemHeadings[0], test.heaters));
  report.tables.push_back(heated_table(kShortTestTabs[4], kHeatedItemHeadings[1], test.large_reactors));
  report.tables.push_back(heated_table(kShortTestTabs[5], kHeatedItemHeadings[2], test.small_reactors));
  report.tables.push_back(heated_table(kShortTestTabs[6], kHeatedItemHeadings[3], test.l_valves));
  report.tables.push_back(rails_table(test));
  report.tables.push_back(subsystem_table(test));
  return report;
}

std::string test_report_text(const TestReport& report) {
  std::ostringstream out;
  out << report.title << '\n' << std::string(report.title.size(), '=') << '\n';
  size_t label_width = 0;
  for (const auto& [label, cell] : report.heading) label_width = std::max(label_width, label.size());
  for (const auto& [label, cell] : report.heading) {
    out << label << ':' << std::string(label_width - label.size() + 2, ' ') << cell.text << '\n';
  }
  for (const ReportTable& table : report.tables) {
    std::vector<size_t> widths(table.headings.size());
    for (size_t c = 0; c < widths.size(); ++c) {
      widths[c] = table.headings[c].size();
      for (const auto& row : table.rows) widths[c] = std::max(widths[c], row[c].text.size());
    }
    const auto line = [&](const auto& texts) {
      std::string text;
      for (size_t c = 0; c < widths.size(); ++c) {
        const std::string& cell = texts[c];
        text += cell + (c + 1 < widths.size() ? std::string(widths[c] - cell.size() + 2, ' ') : "");
      }
      while (!text.empty() && text.back() == ' ') text.pop_back();
      out << "  " << text << '\n';
    };
    out << '\n' << table.title << '\n';
    line(table.headings);
    for (const auto& row : table.rows) {
      std::vector<std::string> texts;
      for (const Cell& cell : row) texts.push_back(cell.text);
      line(texts);
    }
  }
  return out.str();
}

std::string test_report_html(const TestReport& report) {
  std::ostringstream out;
  out << "<!DOCTYPE html>\n<html><head><meta charset=\"utf-8\"><title>" << html_escaped(report.title)
      << "</title>\n<style>\n"
      << "body { font-family: sans-serif; font-size: 10pt; }\n"
      << "table { border-collapse: collapse; margin-bottom: 1em; }\n"
      << "th, td { border: 1px solid #999; padding: 2px 6px; text-align: left; }\n"
      << "th { background: #eee; }\n"
      << "table.heading td, table.heading th { border: none; }\n"
      << ".fail { color: rgb(255, 0, 0); font-weight: bold; }\n"
      << "h2 { font-size: 11pt; margin: 1em 0 0.3em; page-break-after: avoid; }\n"
      << "</style></head>\n<body>\n<h1>" << html_escaped(report.title) << "</h1>\n<table class=\"heading\">\n";
  for (const auto& [label, cell] : report.heading) {
    out << "<tr><th>" << html_escaped(label) << "</th>" << html_cell("td", cell) << "</tr>\n";
  }
  out << "</table>\n";
  for (const ReportTable& table : report.tables) {
    out << "<h2>" << html_escaped(table.title) << "</h2>\n<table>\n<tr>";
    for (const std::string& heading : table.headings) out << "<th>" << html_escaped(heading) << "</th>";
    out << "</tr>\n";
    for (const auto& row : table.rows) {
      out << "<tr>";
      for (const Cell& cell : row) out << html_cell("td", cell);
      out << "</tr>\n";
    }
    out << "</table>\n";
  }
  out << "</body></html>\n";
  return out.str();
}

}  // namespace morvane
