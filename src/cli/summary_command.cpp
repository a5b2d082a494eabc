// SPDX-License-Identifier: MIT
// summary: the counts and list lines of the summary view. The lists of a large file are
// streamed rather than built as one JSON tree.
#include <iostream>
#include <memory>

#include "cli_common.h"
#include "json_text.h"
#include "commands.h"
#include "decoders/summary_lines.h"

namespace morvane::cli {

namespace {

struct SummaryOptions {
  FileOptions file;
  bool counts_only = false;
};

Json counts_json(const Session& session) {
  const Catalogue& c = session.catalogue;
  const CatalogueCounters& n = c.counters;
  return Json{{"hk_count", c.HK_Count()},
              {"science_count", c.Science_Count()},
              {"information_count", c.Information_Count()},
              {"complete_count", n.Complete_Count()},
              {"concise_count", n.Concise_Count()},
              {"auxiliary_count", n.Auxiliary_Count()},
              {"gc_spectrum_count", n.GC_Spectrum_Count()},
              {"isotope_packet_count", n.Isotope_Packet_Count()},
              {"isotope_spectrum_count", n.Isotope_Spectrum_Count()},
              {"progress_event_count", n.Progress_Event_Count()},
              {"warning_event_count", n.Warning_Event_Count()},
              {"memory_checksum_count", n.Memory_Checksum_Count()},
              {"memory_dump_count", n.Memory_Dump_Count()},
              {"acceptance_success_count", n.Acceptance_Success_Count()},
              {"acceptance_failure_count", n.Acceptance_Failure_Count()},
              {"unknown_count", n.Unknown_Count()},
              {"empty_count", n.Empty_Count()}};
}

std::string entry_json(const Packet_Entry& e) {
  return json_text(Json{{"packet_frame", e.Packet_Frame},
              {"packet_length", e.Packet_Length},
              {"packet_position", e.Packet_Position},
              {"sequence_count", e.Sequence_Count},
              {"segment_flags", e.Segment_Flags},
              {"lander_time", e.Lander_Time},
              {"label", label_text(e.Label)}});
}

using LineFunction = std::string (*)(int32_t, const Packet_Entry&);

void stream_entries(std::ostream& out, const EntryList& list) {
  out << '[';
  for (int32_t i = 1; i <= list.size(); ++i) out << (i > 1 ? "," : "") << "\n    " << entry_json(list[i]);
  out << (list.empty() ? "]" : "\n  ]");
}

void stream_lines(std::ostream& out, const EntryList& list, LineFunction line) {
  out << '[';
  for (int32_t i = 1; i <= list.size(); ++i) out << (i > 1 ? "," : "") << "\n      " << json_text(line(i, list[i]));
  out << (list.empty() ? "]" : "\n    ]");
}

void print_summary_json(const Session& session, bool counts_only) {
  Json head{{"file_name", session.File_Name},
            {"file_type", format_tag(session.File_Type)},
            {"packet_count", session.Packet_Count},
            {"counts", counts_json(session)}};
  if (counts_only) {
    print_json(head);
    return;
  }
  std::string text = json_text(head, 2);
  text.pop_back();  // the closing brace: the lists follow
  while (!text.empty() && text.back() == '\n') text.pop_back();
  std::ostream& out = std::cout;
  const Catalogue& c = session.catalogue;
  out << text << ",\n  \"hk\": ";
  stream_entries(out, c.HK_List);
  out << ",\n  \"science\": ";
  stream_entries(out, c.Science_List);
  out << ",\n  \"information\": ";
  stream_entries(out, c.Information_List);
  out << ",\n  \"lines\": {\n    \"hk\": ";
  stream_lines(out, c.HK_List, hk_list_line);
  out << ",\n    \"science\": ";
  stream_lines(out, c.Science_List, science_list_line);
  out << ",\n    \"information\": ";
  stream_lines(out, c.Information_List, information_list_line);
  out << "\n  }\n}\n";
}

void print_list_text(std::ostream& out, const char* title, const EntryList& list, LineFunction line) {
  out << '\n' << title << '\n';
  for (const char* heading : kSummaryHeadings) out << heading << "   ";
  out << '\n';
  for (int32_t i = 1; i <= list.size(); ++i) out << line(i, list[i]) << '\n';
}

void print_summary_text(const Session& session, bool counts_only) {
  std::ostream& out = std::cout;
  out << "File: " << session.File_Name << '\n' << "Type: " << format_tag(session.File_Type) << '\n';
  for (const auto& count : summary_counts(session)) {
    out << count.caption;
    if (!count.value.empty()) out << "  " << count.value;
    out << '\n';
  }
  if (counts_only) return;
  const Catalogue& c = session.catalogue;
  print_list_text(out, "Housekeeping", c.HK_List, hk_list_line);
  print_list_text(out, "Science", c.Science_List, science_list_line);
  print_list_text(out, "Information", c.Information_List, information_list_line);
}

}  // namespace

void add_summary_command(CLI::App& app) {
  auto options = std::make_shared<SummaryOptions>();
  CLI::App* command = app.add_subcommand("summary", "Counts and list lines of every packet in a file");
  add_file_options(command, options->file);
  command->add_flag("--counts", options->counts_only, "Only the file, the frame count and the counts");
  command->callback([options] {
    // The summary needs no sensor table; without configuration the housekeeping bytes are skipped.
    const Session session = open_session(options->file, false);
    if (options->file.json) {
      print_summary_json(session, options->counts_only);
    } else {
      print_summary_text(session, options->counts_only);
    }
  });
}

}  // namespace morvane::cli
